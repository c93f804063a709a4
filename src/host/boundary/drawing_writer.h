// The boundary towards the host's drawing database.
#pragma once

#include "values/drawing_values.h"

#include <string>
#include <string_view>
#include <vector>

namespace fenmark::host {

// Holds no state: every operation works on the drawing that is current when it is called. A failed host call is not
// reported; the sign of failure is an identifier that is not valid.
class DrawingWriter {
  public:
    virtual ~DrawingWriter() = default;

    virtual MdDbObjectId appendPoint(const MdGePoint3d& point, std::string_view layerName) = 0;
    virtual MdDbObjectId appendPointXyz(double x, double y, double z, std::string_view layerName) = 0;
    // A 2D polyline of straight chords; the vertex list is taken over and left empty.
    virtual MdDbObjectId appendPolyline(std::vector<MdGePoint3d>& vertices) = 0;
    // Replaces the 2D polyline by a lightweight one under the same identifier.
    virtual void convertToLightweight(MdDbObjectId id) = 0;
    virtual void setPolylineLayer(MdDbObjectId id, std::string_view layerName) = 0;
    // False, and nothing done, if the identifier cannot be opened as a lightweight polyline.
    virtual bool setLotPolyline(MdDbObjectId id, std::string_view layerName, bool closed) = 0;
    // Names of all layers in table order.
    virtual std::vector<std::string> listLayers() = 0;
    // Empty if the name cannot be read.
    virtual std::string getCurrentLayerName() = 0;
};

} // namespace fenmark::host
