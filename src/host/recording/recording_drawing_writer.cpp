// Points and polylines of a recorded drawing.
#include "host/recording/recording_drawing_writer.h"

#include <algorithm>

namespace fenmark::host {

MdDbObjectId RecordingDrawingWriter::appendPoint(const MdGePoint3d& point, std::string_view layerName) {
    const MdDbObjectId id = appendPointXyz(point.x, point.y, point.z, layerName);
    calls_.replaceLast(Call::AppendPoint);
    return id;
}

MdDbObjectId RecordingDrawingWriter::appendPointXyz(double x, double y, double z, std::string_view layerName) {
    calls_.add(Call::AppendPointXyz);
    if (failPoints)
        return {};
    const MdDbObjectId id = ids_.next();
    pointIds_.push_back(id.asUint64());
    xs_.push_back(x);
    ys_.push_back(y);
    zs_.push_back(z);
    pointLayers_.push_back(layerNames_.intern(layerName));
    return id;
}

MdDbObjectId RecordingDrawingWriter::appendPolyline(std::vector<MdGePoint3d>& vertices) {
    calls_.add(Call::AppendPolyline);
    MdDbObjectId id;
    if (!failPolylines) {
        id = ids_.next();
        polylineIds_.push_back(id.asUint64());
        vertices_.insert(vertices_.end(), vertices.begin(), vertices.end());
        vertexEnds_.push_back(vertices_.size());
        polylines_.push_back({layerNames_.intern(currentLayer), false, false});
    }
    vertices.clear();
    return id;
}

void RecordingDrawingWriter::convertToLightweight(MdDbObjectId id) {
    calls_.add(Call::ConvertToLightweight);
    if (PolylineState* const polyline = find(id))
        polyline->lightweight = true;
}

void RecordingDrawingWriter::setPolylineLayer(MdDbObjectId id, std::string_view layerName) {
    calls_.add(Call::SetPolylineLayer);
    if (PolylineState* const polyline = find(id))
        polyline->layer = layerNames_.intern(layerName);
}

bool RecordingDrawingWriter::setLotPolyline(MdDbObjectId id, std::string_view layerName, bool closed) {
    calls_.add(Call::SetLotPolyline);
    PolylineState* const polyline = find(id);
    if (failLotPolylines || polyline == nullptr || !polyline->lightweight)
        return false;
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
    return {MdDbObjectId(pointIds_.at(index)), {xs_[index], ys_[index], zs_[index]}, layerNames_[pointLayers_[index]]};
}

RecordedPolyline RecordingDrawingWriter::polyline(std::size_t index) const {
    const PolylineState& state = polylines_.at(index);
    const std::size_t begin = index == 0 ? 0 : vertexEnds_[index - 1];
    const std::span<const MdGePoint3d> vertices(vertices_.data() + begin, vertexEnds_[index] - begin);
    return {MdDbObjectId(polylineIds_[index]), vertices, layerNames_[state.layer], state.lightweight, state.closed};
}

RecordingDrawingWriter::PolylineState* RecordingDrawingWriter::find(MdDbObjectId id) {
    const auto found = std::lower_bound(polylineIds_.begin(), polylineIds_.end(), id.asUint64());
    if (found == polylineIds_.end() || *found != id.asUint64())
        return nullptr;
    return &polylines_[static_cast<std::size_t>(found - polylineIds_.begin())];
}

} // namespace fenmark::host
