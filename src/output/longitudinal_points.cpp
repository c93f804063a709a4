// Longitudinal results become points on the alignment, at the ground's height.
#include "output/drawing_output.h"
#include "output/result_points.h"
#include "output/wall_shift.h"
#include "sima/text/string_table.h"

namespace fenmark::output {

void DrawingOutput::createLongitudinalPoints(sima::SimaReader& reader, const sima::HSeriesData& section) {
    if (!reader.options.flag(sima::ImportKind::Longitudinal)) {
        return;
    }
    const host::MdDbObjectId alignment = alignmentOfSection(reader, section.routeFound, section.routeNumber);
    host::DrawingWriter& drawing = host_.drawingWriter();
    host::ObjectDataWriter& rows = host_.objectDataWriter();
    rows.definePointTable();
    const std::string_view fileName = fileNameOf(reader);
    const std::unique_ptr<host::CorridorUtility> corridor = host_.makeCorridorUtility();
    corridor->connect();

    // The shift works on a copy of the stations: the section stays as it was read.
    distances_.clear();
    for (const sima::VerticalData& vertical : section.verticals) {
        distances_.push_back(vertical.station);
    }
    shiftStations(distances_, reader.shiftDistance);

    for (std::size_t i = 0; i < section.verticals.size(); ++i) {
        const sima::VerticalData& vertical = section.verticals[i];
        host::PlanPoint position;
        if (corridor->pointAtStation(alignment, distances_[i], position) != 0) {
            // The number is that of the last line read, the section's end; a cross section's is its own line. Both
            // are so on purpose.
            logStationOutside(reader, sima::kMessageLongitudinalOutside, reader.lineNumber, vertical.sourceText);
            continue;
        }
        const host::MdDbObjectId id =
            drawing.appendPoint({position.x, position.y, vertical.groundHeight}, reader.pointLayer);
        rows.writeLongitudinalRow(id, fileName, section.routeNumber, vertical);
        ++reader.longitudinalPointsCreated;
    }
    corridor->disconnect();
}

} // namespace fenmark::output
