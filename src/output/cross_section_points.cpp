// Cross-section results become points at their offsets from the alignment, each section with one on the centre line.
#include "output/drawing_output.h"
#include "output/result_points.h"
#include "output/wall_shift.h"
#include "sima/text/number.h"
#include "sima/text/string_table.h"

namespace fenmark::output {

void DrawingOutput::createCrossSectionPoints(sima::SimaReader& reader, const sima::IntersectionData& section) {
    if (!reader.options.flag(sima::ImportKind::CrossSections)) {
        return;
    }
    const host::MdDbObjectId alignment = alignmentOfSection(reader, section.routeFound, section.routeNumber);
    host::DrawingWriter& drawing = host_.drawingWriter();
    host::ObjectDataWriter& rows = host_.objectDataWriter();
    rows.definePointTable();
    const std::string_view fileName = fileNameOf(reader);
    const std::unique_ptr<host::CorridorUtility> corridor = host_.makeCorridorUtility();
    corridor->connect();

    const auto addPoint = [&](const host::PlanPoint& at, double height, std::string_view name) {
        const host::MdDbObjectId id = drawing.appendPoint({at.x, at.y, height}, reader.pointLayer);
        rows.writeResultRow(id, fileName, section.routeNumber, name, true);
        ++reader.crossSectionPointsCreated;
    };

    for (const sima::IntersectionData::SubEntity& subEntity : section.subEntities) {
        host::PlanPoint centre;
        if (corridor->pointAtStation(alignment, subEntity.station, centre) != 0) {
            logStationOutside(reader, sima::kMessageCrossSectionOutside, subEntity.sourceLine, subEntity.sourceText);
            continue;
        }
        // The shift works on copies: the section stays as it was read.
        distances_ = subEntity.distances;
        heights_ = subEntity.heights;
        shiftCrossSectionWalls(distances_, heights_, reader.shiftDistance);

        bool needsCentre = true;
        for (std::size_t j = 0; j < distances_.size(); ++j) {
            host::PlanPoint position;
            if (corridor->pointAtStationOffset(alignment, subEntity.station, distances_[j], position) != 0) {
                continue; // an offset that the host refuses is passed over in silence
            }
            if (distances_[j] == 0.0) {
                needsCentre = false;
            }
            const std::string_view pointName = sima::trim(subEntity.pointNames[j]);
            addPoint(position, heights_[j], pointName.empty() ? subEntity.sectionName : pointName);
        }
        if (needsCentre) {
            addPoint(centre, subEntity.groundHeight, subEntity.sectionName);
        }
    }
    corridor->disconnect();
}

} // namespace fenmark::output
