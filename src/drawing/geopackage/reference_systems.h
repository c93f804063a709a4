// The reference systems that a drawing's coordinates may be in: none, or a plane rectangular zone of JGD2011.
#pragma once

#include <cstdint>
#include <string>

namespace fenmark::drawing {

inline constexpr std::int32_t kUndefinedSrs = -1; // undefined cartesian, as GeoPackage has it
inline constexpr int kZoneCount = 19;
// EPSG codes of zone 1 in JGD2011, JGD2000 and the Tokyo datum; the other zones follow.
inline constexpr std::int32_t kFirstOfDatum[] = {6669, 2443, 30161};

// EPSG 6669 to 6687 for the zones 1 to 19; kUndefinedSrs for any other.
std::int32_t srsOfZone(int zone);
// True for the EPSG code of a zone in any of these datums.
bool isPlaneRectangular(std::int64_t srs);
std::string nameOfZone(int zone);
// The system's definition as well-known text. Origins after notice 9 of 2002 of the Ministry of Land.
std::string definitionOfZone(int zone);

} // namespace fenmark::drawing
