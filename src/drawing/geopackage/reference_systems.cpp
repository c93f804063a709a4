// The nineteen plane rectangular zones of JGD2011.
#include "drawing/geopackage/reference_systems.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>

namespace fenmark::drawing {

namespace {

constexpr std::int32_t kFirstEpsg = kFirstOfDatum[0];

// Origin of a zone: latitude and longitude in degrees, as text so that every digit stands.
struct Zone {
    const char* roman;
    const char* latitude;
    const char* longitude;
};

constexpr std::array<Zone, kZoneCount> kZones = {{
    {"I", "33", "129.5"},
    {"II", "33", "131"},
    {"III", "36", "132.166666666667"},
    {"IV", "33", "133.5"},
    {"V", "36", "134.333333333333"},
    {"VI", "36", "136"},
    {"VII", "36", "137.166666666667"},
    {"VIII", "36", "138.5"},
    {"IX", "36", "139.833333333333"},
    {"X", "40", "140.833333333333"},
    {"XI", "44", "140.25"},
    {"XII", "44", "142.25"},
    {"XIII", "44", "144.25"},
    {"XIV", "26", "142"},
    {"XV", "26", "127.5"},
    {"XVI", "26", "124"},
    {"XVII", "26", "131"},
    {"XVIII", "20", "136"},
    {"XIX", "26", "154"},
}};

} // namespace

bool isPlaneRectangular(std::int64_t srs) {
    return std::any_of(std::begin(kFirstOfDatum), std::end(kFirstOfDatum),
                       [srs](std::int64_t first) { return srs >= first && srs < first + kZoneCount; });
}

std::int32_t srsOfZone(int zone) {
    return zone >= 1 && zone <= kZoneCount ? kFirstEpsg + zone - 1 : kUndefinedSrs;
}

std::string nameOfZone(int zone) {
    return std::string("JGD2011 / Japan Plane Rectangular CS ") + kZones[static_cast<std::size_t>(zone - 1)].roman;
}

std::string definitionOfZone(int zone) {
    const Zone& origin = kZones[static_cast<std::size_t>(zone - 1)];
    return "PROJCS[\"" + nameOfZone(zone) +
           "\",GEOGCS[\"JGD2011\",DATUM[\"Japanese_Geodetic_Datum_2011\",SPHEROID[\"GRS 1980\",6378137,298.257222101,"
           "AUTHORITY[\"EPSG\",\"7019\"]],AUTHORITY[\"EPSG\",\"1128\"]],PRIMEM[\"Greenwich\",0,AUTHORITY[\"EPSG\","
           "\"8901\"]],UNIT[\"degree\",0.0174532925199433,AUTHORITY[\"EPSG\",\"9122\"]],AUTHORITY[\"EPSG\",\"6668\"]],"
           "PROJECTION[\"Transverse_Mercator\"],PARAMETER[\"latitude_of_origin\"," +
           origin.latitude + "],PARAMETER[\"central_meridian\"," + origin.longitude +
           "],PARAMETER[\"scale_factor\",0.9999],PARAMETER[\"false_easting\",0],PARAMETER[\"false_northing\",0],UNIT["
           "\"metre\",1,AUTHORITY[\"EPSG\",\"9001\"]],AXIS[\"X\",NORTH],AXIS[\"Y\",EAST],AUTHORITY[\"EPSG\",\"" +
           std::to_string(srsOfZone(zone)) + "\"]]";
}

} // namespace fenmark::drawing
