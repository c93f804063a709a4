// The choice of a section's alignment, and its error block.
#include "output/result_points.h"

#include "sima/text/string_table.h"
#include "sima/validators/validators.h"

namespace fenmark::output {

host::MdDbObjectId alignmentOfSection(const sima::SimaReader& reader, bool routeFound, std::int32_t routeNumber) {
    if (reader.forceChosenAlignment || !routeFound) {
        return reader.alignmentId;
    }
    return reader.alignmentIdOfRoute(routeNumber);
}

void logStationOutside(sima::SimaReader& reader, int message, std::int32_t line, std::string_view source) {
    sima::reportRecord(reader.log, "ErrX001", sima::resourceText(message), line, source);
}

} // namespace fenmark::output
