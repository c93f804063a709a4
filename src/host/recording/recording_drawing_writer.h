// The recording double of the drawing: points and polylines in the order in which they came.
#pragma once

#include "host/boundary/drawing_writer.h"
#include "host/recording/call_log.h"
#include "host/recording/record_list.h"
#include "host/recording/record_memory.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace fenmark::host {

struct RecordedPoint {
    MdDbObjectId id;
    MdGePoint3d position; // drawing axes, metres
    std::string_view layer;
};

struct RecordedPolyline {
    MdDbObjectId id;
    std::span<const MdGePoint3d> vertices; // hold as long as the drawing
    std::string_view layer;                // "0" until a layer is set
    bool lightweight = false;
    bool closed = false;
};

// The identifiers of one recorded drawing: 1, 2, 3, ...
class IdSource {
  public:
    MdDbObjectId next() { return MdDbObjectId(++last_); }

  private:
    std::uint64_t last_ = 0;
};

class RecordingDrawingWriter : public DrawingWriter {
  public:
    RecordingDrawingWriter(CallLog& calls, IdSource& ids) : calls_(calls), ids_(ids) {}
    RecordingDrawingWriter(const RecordingDrawingWriter&) = delete;
    RecordingDrawingWriter& operator=(const RecordingDrawingWriter&) = delete;

    MdDbObjectId appendPoint(const MdGePoint3d& point, std::string_view layerName) override;
    MdDbObjectId appendPointXyz(double x, double y, double z, std::string_view layerName) override;
    MdDbObjectId appendPolyline(std::vector<MdGePoint3d>& vertices) override;
    void convertToLightweight(MdDbObjectId id) override;
    void setPolylineLayer(MdDbObjectId id, std::string_view layerName) override;
    bool setLotPolyline(MdDbObjectId id, std::string_view layerName, bool closed) override;
    std::vector<std::string> listLayers() override;
    std::string getCurrentLayerName() override;

    // std::out_of_range beyond the end.
    std::size_t pointCount() const { return points_.size(); }
    const RecordedPoint& point(std::size_t index) const { return points_.at(index); }
    std::size_t polylineCount() const { return polylines_.size(); }
    const RecordedPolyline& polyline(std::size_t index) const { return polylines_.at(index); }

    // What the test sets the drawing to.
    std::vector<std::string> layers{"0"};
    std::string currentLayer = "0";
    // What fails: the append then gives a null identifier; the lot polyline then cannot be opened.
    bool failPoints = false;
    bool failPolylines = false;
    bool failLotPolylines = false;

  private:
    RecordedPolyline* find(MdDbObjectId id);
    // The name, kept once.
    std::string_view kept(std::string_view layerName);
    std::span<const MdGePoint3d> kept(std::span<const MdGePoint3d> vertices);

    CallLog& calls_;
    IdSource& ids_;
    std::set<std::string, std::less<>> layerNames_;
    std::string_view lastLayer_;
    RecordMemory vertices_;
    RecordList<RecordedPoint> points_;
    RecordList<RecordedPolyline> polylines_; // identifiers rise, so that a look-up can halve
};

} // namespace fenmark::host
