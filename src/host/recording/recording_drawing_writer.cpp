// Points and polylines of a recorded drawing.
#include "host/recording/recording_drawing_writer.h"

#include <memory>
#include <memory_resource>

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
    points_.push_back({id, {x, y, z}, kept(layerName)});
    return id;
}

MdDbObjectId RecordingDrawingWriter::appendPolyline(std::vector<MdGePoint3d>& vertices) {
    calls_.add(Call::AppendPolyline);
    MdDbObjectId id;
    if (!failPolylines) {
        id = ids_.next();
        polylines_.push_back({id, kept(vertices), kept(currentLayer), false, false});
    }
    vertices.clear();
    return id;
}

void RecordingDrawingWriter::convertToLightweight(MdDbObjectId id) {
    calls_.add(Call::ConvertToLightweight);
    if (RecordedPolyline* const polyline = find(id)) {
        polyline->lightweight = true;
    }
}

void RecordingDrawingWriter::setPolylineLayer(MdDbObjectId id, std::string_view layerName) {
    calls_.add(Call::SetPolylineLayer);
    if (RecordedPolyline* const polyline = find(id)) {
        polyline->layer = kept(layerName);
    }
}

bool RecordingDrawingWriter::setLotPolyline(MdDbObjectId id, std::string_view layerName, bool closed) {
    calls_.add(Call::SetLotPolyline);
    RecordedPolyline* const polyline = find(id);
    if (failLotPolylines || polyline == nullptr || !polyline->lightweight) {
        return false;
    }
    polyline->layer = kept(layerName);
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

RecordedPolyline* RecordingDrawingWriter::find(MdDbObjectId id) {
    if (!polylines_.empty() && polylines_.back().id == id) {
        return &polylines_.back(); // mostly asked for
    }
    std::size_t first = 0;
    for (std::size_t count = polylines_.size(); count > 0;) {
        const std::size_t half = count / 2;
        if (polylines_.at(first + half).id.asUint64() < id.asUint64()) {
            first += half + 1;
            count -= half + 1;
        } else {
            count = half;
        }
    }
    return first < polylines_.size() && polylines_.at(first).id == id ? &polylines_.at(first) : nullptr;
}

std::string_view RecordingDrawingWriter::kept(std::string_view layerName) {
    if (lastLayer_ != layerName || lastLayer_.data() == nullptr) {
        lastLayer_ = *layerNames_.emplace(layerName).first;
    }
    return lastLayer_;
}

std::span<const MdGePoint3d> RecordingDrawingWriter::kept(std::span<const MdGePoint3d> vertices) {
    MdGePoint3d* const copy =
        std::pmr::polymorphic_allocator<MdGePoint3d>(vertices_.resource()).allocate(vertices.size());
    std::uninitialized_copy(vertices.begin(), vertices.end(), copy);
    return {copy, vertices.size()};
}

} // namespace fenmark::host
