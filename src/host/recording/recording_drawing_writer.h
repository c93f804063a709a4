// The recording double of the drawing: points and polylines kept column by column, so that a million of them are small.
#pragma once

#include "host/boundary/drawing_writer.h"
#include "host/recording/call_log.h"
#include "host/recording/column.h"
#include "host/recording/text_pool.h"

#include <cstddef>
#include <cstdint>
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
    std::span<const MdGePoint3d> vertices;
    std::string_view layer; // "0" until a layer is set
    bool lightweight = false;
    bool closed = false;
};

// Hands out the identifiers of one recorded drawing: 1, 2, 3, ...
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

    std::size_t pointCount() const { return pointIds_.size(); }
    RecordedPoint point(std::size_t index) const;
    std::size_t polylineCount() const { return polylineIds_.size(); }
    RecordedPolyline polyline(std::size_t index) const;

    // The drawing as the test wants it.
    std::vector<std::string> layers{"0"};
    std::string currentLayer = "0";
    // What fails: the append then gives a null identifier; the lot polyline then cannot be opened.
    bool failPoints = false;
    bool failPolylines = false;
    bool failLotPolylines = false;

  private:
    struct PolylineState {
        std::uint32_t layer = 0;
        bool lightweight = false;
        bool closed = false;
    };
    PolylineState* find(MdDbObjectId id);

    CallLog& calls_;
    IdSource& ids_;
    TextPool layerNames_;
    SequenceColumn<1> pointIds_;
    SequenceColumn<0> pointLayers_;
    Column<MdGePoint3d> points_;
    SequenceColumn<1> polylineIds_; // rising, so that a look-up can halve
    Column<PolylineState> polylines_;
    SpanColumn<MdGePoint3d> vertices_;
};

} // namespace fenmark::host
