// IP lines, width-stake lines and continuous lines become polylines of straight chords.
#include "output/drawing_output.h"
#include "sima/reader/sima_reader.h"

namespace fenmark::output {

namespace {

std::string_view layerOfRouteType(const sima::SimaReader& reader, std::int32_t routeType) {
    switch (routeType) {
    case 1:
        return reader.ipLayer;
    case 4:
    case 5:
        return reader.wideStakeLayer;
    case 6:
        return reader.continuousLayer;
    default:
        return {};
    }
}

} // namespace

void DrawingOutput::createRoutePolyline(sima::SimaReader& reader, const sima::SimaAlignment& route) {
    host::DrawingWriter& drawing = host_.drawingWriter();
    host::ObjectDataWriter& rows = host_.objectDataWriter();
    rows.definePolylineTable(); // also for a route without elements
    const std::string_view fileName = fileNameOf(reader);
    if (route.entities.empty()) {
        return;
    }

    // The last element is the one that the final point opened: it has a start and no end.
    const std::size_t count = route.entities.size() - 1;
    vertices_.reserve(count + 1);
    for (std::size_t i = 0; i < count; ++i) {
        vertices_.push_back(route.entities[i].startPoint());
    }
    // A route of one point has no element left, and gives one vertex at the origin, on purpose.
    vertices_.push_back(count > 0 ? route.entities[count - 1].endPoint() : host::MdGePoint3d{});

    const host::MdDbObjectId id = drawing.appendPolyline(vertices_);
    drawing.convertToLightweight(id);
    if (!id.isValid()) {
        return;
    }
    drawing.setPolylineLayer(id, layerOfRouteType(reader, route.routeType));
    rows.writeRouteRow(id, fileName, route);
    ++reader.polylinesCreated;
    reader.countRouteCreated(route.routeType);
}

} // namespace fenmark::output
