// Main lines, centre lines and continuous lines with curves become alignments of the chosen site.
#include "output/chain_cleaning.h"
#include "output/drawing_output.h"
#include "sima/reader/sima_reader.h"

namespace fenmark::output {

host::MdDbObjectId DrawingOutput::createRouteAlignment(sima::SimaReader& reader, const sima::SimaAlignment& route) {
    sima::Array<sima::EntityData> elements = route.entities;
    // The last element is the one that the final point opened: it has a start and no end.
    if (!elements.empty()) {
        elements.pop_back();
    }
    removeZeroLengthElements(elements);
    mergeStraights(elements);
    if (settings_.planTangents) {
        for (sima::EntityData& element : elements) {
            element.startZ = element.endZ = 0.0; // heights stay behind anyway; only the PIs look at them
        }
    }

    const std::unique_ptr<host::CorridorUtility> corridor = host_.makeCorridorUtility();
    corridor->connect();
    const host::MdDbObjectId id =
        corridor->createAlignment(route.routeName, reader.siteName, route.alignmentName, route.startStation, elements);
    corridor->disconnect();
    elements = {}; // before anybody looks at the alignment, which may be a long one
    if (id.isValid()) {
        reader.createdAlignmentNames.push_back(route.routeName);
        ++reader.alignmentsCreated;
        reader.countRouteCreated(route.routeType);
        if (settings_.alignmentMade) {
            settings_.alignmentMade(id, route);
        }
    }
    return id;
}

} // namespace fenmark::output
