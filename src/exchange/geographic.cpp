// Plane rectangular coordinates to longitude and latitude.
#include "exchange/geographic.h"

#include <GeographicLib/TransverseMercator.hpp>

#include <array>
#include <cmath>
#include <cstddef>

namespace fenmark::exchange {

namespace {

constexpr double kEquatorialRadius = 6378137.0;
constexpr double kFlattening = 1.0 / 298.257222101;
constexpr double kCentralScale = 0.9999;
constexpr double kFarthestEast = 3.0e6;  // metres from the central meridian
constexpr double kFarthestNorth = 5.0e6; // metres from the origin

struct Origin {
    int latitude;         // whole degrees
    int longitude;        // whole degrees
    int longitudeMinutes; // beyond them
};

// Of the zones 1 to 19.
constexpr std::array<Origin, 19> kOrigins = {{
    {33, 129, 30}, {33, 131, 0},  {36, 132, 10}, {33, 133, 30}, {36, 134, 20}, {36, 136, 0},  {36, 137, 10},
    {36, 138, 30}, {36, 139, 50}, {40, 140, 50}, {44, 140, 15}, {44, 142, 15}, {44, 144, 15}, {26, 142, 0},
    {26, 127, 30}, {26, 124, 0},  {26, 131, 0},  {20, 136, 0},  {26, 154, 0},
}};

const GeographicLib::TransverseMercator& projection() {
    static const GeographicLib::TransverseMercator made(kEquatorialRadius, kFlattening, kCentralScale);
    return made;
}

} // namespace

PlaneZone::PlaneZone(int zone) : projection_(&projection()) {
    const Origin& origin = kOrigins.at(static_cast<std::size_t>(zone - 1));
    longitude_ = origin.longitude + origin.longitudeMinutes / 60.0;
    double east = 0.0;
    projection_->Forward(longitude_, origin.latitude, longitude_, east, northing_);
}

std::optional<LongitudeLatitude> PlaneZone::geographic(double x, double y) const {
    if (!(std::abs(x) <= kFarthestEast && std::abs(y) <= kFarthestNorth)) {
        return std::nullopt;
    }
    LongitudeLatitude at;
    projection_->Reverse(longitude_, x, y + northing_, at.latitude, at.longitude);
    return at;
}

std::optional<host::PlanPoint> PlaneZone::plane(const LongitudeLatitude& at) const {
    constexpr double kFarthestLongitude = 40.0; // degrees from the central meridian, beyond which the reach ends anyway
    if (!(std::abs(std::remainder(at.longitude - longitude_, 360.0)) <= kFarthestLongitude &&
          std::abs(at.latitude) <= 90.0)) {
        return std::nullopt;
    }
    host::PlanPoint point;
    projection_->Forward(longitude_, at.latitude, at.longitude, point.x, point.y);
    point.y -= northing_;
    if (!(std::abs(point.x) <= kFarthestEast && std::abs(point.y) <= kFarthestNorth)) {
        return std::nullopt;
    }
    return point;
}

} // namespace fenmark::exchange
