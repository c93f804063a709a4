// What longitudinal and cross-section results share: the alignment they lie on, and the log block of a station outside.
#pragma once

#include "sima/reader/sima_reader.h"

#include <cstdint>
#include <string_view>

namespace fenmark::output {

// The alignment of the route that the section names, if the route was found; otherwise, and always if the user said so,
// the alignment that the user chose.
host::MdDbObjectId alignmentOfSection(const sima::SimaReader& reader, bool routeFound, std::int32_t routeNumber);

inline constexpr std::string_view kLongitudinalOutside =
    "ErrX001 次の縦断成果を作成できませんでした。（線形範囲外の測点です）";
inline constexpr std::string_view kCrossSectionOutside =
    "ErrX001 次の横断成果を作成できませんでした。（線形範囲外の測点です）";

// Adds the error block of a result whose station the alignment does not have.
void logStationOutside(sima::SimaReader& reader, std::string_view title, std::int32_t line, std::string_view source);

} // namespace fenmark::output
