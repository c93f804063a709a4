// Points and polylines of a recorded drawing.
#include "host/recording/recording_drawing_writer.h"

namespace fenmark::host {

MdDbObjectId RecordingDrawingWriter::appendPoint(const MdGePoint3d& point, std::string_view layerName) {
    const MdDbObjectId id = appendPointXyz(point.x, point.y, point.z, layerName);
    calls_.replaceLast(Call::AppendPoint);
    return id;
}

MdDbObjectId RecordingDrawingWriter::appendPointXyz(double x, double y, double z, std::string_view layerName) {
    calls_.add(Call::AppendPointXyz);
    if (failPoints) {
        return {};
    }
    const MdDbObjectId id = ids_.next();
    pointIds_.push_back(id.asUint64());
    points_.push_back({x, y, z});
    pointLayers_.push_back(layerNames_.intern(layerName));
    return id;
}

MdDbObjectId RecordingDrawingWriter::appendPolyline(std::vector<MdGePoint3d>& vertices) {
    calls_.add(Call::AppendPolyline);
    MdDbObjectId id;
    if (!failPolylines) {
        id = ids_.next();
        polylineIds_.push_back(id.asUint64());
        vertices_.push_back(vertices);
        polylines_.push_back({layerNames_.intern(currentLayer), false, false});
    }
    vertices.clear();
    return id;
}

void RecordingDrawingWriter::convertToLightweight(MdDbObjectId id) {
    calls_.add(Call::ConvertToLightweight);
    if (PolylineState* const polyline = find(id)) {
        polyline->lightweight = true;
    }
}

void RecordingDrawingWriter::setPolylineLayer(MdDbObjectId id, std::string_view layerName) {
    calls_.add(Call::SetPolylineLayer);
    if (PolylineState* const polyline = find(id)) {
        polyline->layer = layerNames_.intern(layerName);
    }
}

bool RecordingDrawingWriter::setLotPolyline(MdDbObjectId id, std::string_view layerName, bool closed) {
    calls_.add(Call::SetLotPolyline);
    PolylineState* const polyline = find(id);
    if (failLotPolylines || polyline == nullptr || !polyline->lightweight) {
        return false;
    }
    polyline->layer = layerNames_.intern(layerName);
    polyline->closed = closed;
    return true;
}

std::vector<std::string> RecordingDrawingWriter::listLayers() {
    calls_.add(Call::ListLayers);
    return layers;
}

std::string RecordingDrawingWriter::getCurrentLayerName() {
    calls_.add(Call::GetCurrentLayerName);
    return currentLayer;
}

RecordedPoint RecordingDrawingWriter::point(std::size_t index) const {
    const auto layer = static_cast<std::uint32_t>(pointLayers_.at(index));
    return {MdDbObjectId(pointIds_.at(index)), points_[index], layerNames_[layer]};
}

RecordedPolyline RecordingDrawingWriter::polyline(std::size_t index) const {
    const MdDbObjectId id(polylineIds_.at(index));
    const PolylineState& state = polylines_[index];
    return {id, vertices_[index], layerNames_[state.layer], state.lightweight, state.closed};
}

RecordingDrawingWriter::PolylineState* RecordingDrawingWriter::find(MdDbObjectId id) {
    const std::uint64_t wanted = id.asUint64();
    std::size_t first = 0;
    std::size_t last = polylineIds_.size();
    if (last > 0 && polylineIds_.at(last - 1) == wanted) {
        first = last - 1; // mostly the newest is meant
    }
    while (first < last) {
        const std::size_t middle = first + (last - first) / 2;
        if (polylineIds_.at(middle) < wanted) {
            first = middle + 1;
        } else {
            last = middle;
        }
    }
    return first < polylineIds_.size() && polylineIds_.at(first) == wanted ? &polylines_[first] : nullptr;
}

} // namespace fenmark::host
