// Coordinate records become points.
#include "output/drawing_output.h"
#include "sima/reader/sima_reader.h"

namespace fenmark::output {

void DrawingOutput::createCoordinatePoints(sima::SimaReader& reader, std::span<const sima::SimaPoint> points) {
    if (!reader.options.flag(sima::ImportKind::Coordinates)) {
        return;
    }
    host::DrawingWriter& drawing = host_.drawingWriter();
    host::ObjectDataWriter& rows = host_.objectDataWriter();
    rows.definePointTable();
    const std::string_view fileName = fileNameOf(reader);
    for (const sima::SimaPoint& point : points) {
        // The identifier is not tested: a point counts whatever became of it.
        const host::MdDbObjectId id = drawing.appendPointXyz(point.x, point.y, point.z, reader.pointLayer);
        rows.writeCoordinateRow(id, fileName, point);
        ++reader.coordinatePointsCreated;
    }
}

} // namespace fenmark::output
