// Plane rectangular coordinates to longitude and latitude.
//
// The nineteen zones of the plane rectangular system: a transverse Mercator projection on the ellipsoid of GRS 80 with
// the scale 0.9999 on the central meridian, each with an origin of its own (Ministry of Land, Infrastructure, Transport
// and Tourism, notice no. 9 of 2002). By [Karney 2011], as GeographicLib has it.
#pragma once

#include "values/drawing_values.h"

#include <optional>

namespace GeographicLib {
class TransverseMercator;
}

namespace fenmark::exchange {

struct LongitudeLatitude {
    double longitude = 0.0; // degrees, east
    double latitude = 0.0;  // degrees, north
};

class PlaneZone {
  public:
    // 1 to 19.
    explicit PlaneZone(int zone);

    // From metres east (x) and north (y) of the zone's origin. Nothing farther than some 3,000 km east or west of it
    // and 5,000 km north or south, where no point of the zone can be, and for what is no number.
    std::optional<LongitudeLatitude> geographic(double x, double y) const;
    // The way back: metres east (x) and north (y). Nothing beyond the same reach, and for what is no number.
    std::optional<host::PlanPoint> plane(const LongitudeLatitude& at) const;

  private:
    const GeographicLib::TransverseMercator* projection_;
    double longitude_; // of the central meridian, degrees
    double northing_;  // of the origin's parallel on it, metres
};

} // namespace fenmark::exchange
