// The choice of a section's alignment, and its error block.
#include "output/result_points.h"

#include <cstdio>
#include <string>

namespace fenmark::output {

host::MdDbObjectId alignmentOfSection(const sima::SimaReader& reader, bool routeFound, std::int32_t routeNumber) {
    if (reader.forceChosenAlignment || !routeFound)
        return reader.alignmentId;
    return reader.alignmentIdOfRoute(routeNumber);
}

void logStationOutside(sima::SimaReader& reader, std::string_view title, std::int32_t line, std::string_view source) {
    char number[16];
    std::snprintf(number, sizeof number, "%.5d", line);
    std::string detail = number;
    detail += "行目 ";
    detail += source;
    reader.log.errorBlock(title, detail);
}

} // namespace fenmark::output
