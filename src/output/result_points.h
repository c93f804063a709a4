// What longitudinal and cross-section results share: the alignment they lie on, and the log block of a station outside.
#pragma once

#include "sima/reader/sima_reader.h"

#include <cstdint>
#include <string_view>

namespace fenmark::output {

// The alignment of the route that the section names, if the route was found; otherwise, and always if the user said so,
// the alignment that the user chose.
host::MdDbObjectId alignmentOfSection(const sima::SimaReader& reader, bool routeFound, std::int32_t routeNumber);

// Adds the error block of a result whose station the alignment does not have. The message is given by its id.
void logStationOutside(sima::SimaReader& reader, int message, std::int32_t line, std::string_view source);

} // namespace fenmark::output
