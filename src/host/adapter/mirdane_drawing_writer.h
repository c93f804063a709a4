// The drawing database over the host's own classes. Finds the working database anew for every operation.
#pragma once

#include "host/boundary/drawing_writer.h"

namespace fenmark::host {

class MirdaneDrawingWriter : public DrawingWriter {
  public:
    MdDbObjectId appendPoint(const MdGePoint3d& point, std::string_view layerName) override;
    MdDbObjectId appendPointXyz(double x, double y, double z, std::string_view layerName) override;
    MdDbObjectId appendPolyline(std::vector<MdGePoint3d>& vertices) override;
    void convertToLightweight(MdDbObjectId id) override;
    void setPolylineLayer(MdDbObjectId id, std::string_view layerName) override;
    bool setLotPolyline(MdDbObjectId id, std::string_view layerName, bool closed) override;
    std::vector<std::string> listLayers() override;
    std::string getCurrentLayerName() override;
};

} // namespace fenmark::host
