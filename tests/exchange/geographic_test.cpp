// The zones of the plane rectangular system, there and back.
#include "exchange/geographic.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace fenmark::exchange {
namespace {

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

TEST(PlaneZones, GoBackToTheSamePlace) {
    for (int zone = 1; zone <= 19; ++zone) {
        const PlaneZone plane(zone);
        for (const double east : {-150000.0, -36000.123, 0.0, 80000.5}) {
            for (const double north : {-200000.0, 0.0, 12345.678, 300000.0}) {
                const auto ground = plane.geographic(east, north);
                ASSERT_TRUE(ground) << zone;
                const auto back = plane.plane(*ground);
                ASSERT_TRUE(back) << zone;
                EXPECT_NEAR(back->x, east, 1e-6) << zone;
                EXPECT_NEAR(back->y, north, 1e-6) << zone;
            }
        }
    }
}

TEST(PlaneZones, ScaleTheirMeridianByNineThousandNineHundredNinetyNine) {
    // Zone 9 has its origin at 36 degrees north, 139 degrees 50 minutes east. A minute of latitude there measures
    // 1,849.37 m on the ellipsoid of GRS 80 (meridian radius 6,357,935 m at 36 degrees and half a minute).
    const PlaneZone plane(9);
    const auto origin = plane.plane({139.0 + 50.0 / 60.0, 36.0});
    ASSERT_TRUE(origin);
    EXPECT_NEAR(origin->x, 0.0, 1e-6);
    EXPECT_NEAR(origin->y, 0.0, 1e-6);
    const auto minute = plane.plane({139.0 + 50.0 / 60.0, 36.0 + 1.0 / 60.0});
    ASSERT_TRUE(minute);
    constexpr double kSemiMajor = 6378137.0;
    constexpr double kEccentricity2 = 0.00669438002290; // squared
    const double sine = std::sin((36.0 + 0.5 / 60.0) * std::acos(-1.0) / 180.0);
    const double radius = kSemiMajor * (1.0 - kEccentricity2) / std::pow(1.0 - kEccentricity2 * sine * sine, 1.5);
    EXPECT_NEAR(minute->y, 0.9999 * radius * std::acos(-1.0) / 180.0 / 60.0, 1e-5);
    EXPECT_NEAR(minute->x, 0.0, 1e-6);
}

TEST(PlaneZones, TakeLongitudesAroundTheDateLine) {
    const PlaneZone plane(9);
    const auto here = plane.plane({140.0, 36.0});
    const auto around = plane.plane({140.0 - 360.0, 36.0});
    ASSERT_TRUE(here && around);
    EXPECT_NEAR(here->x, around->x, 1e-6);
}

TEST(PlaneZones, HaveNothingOutOfReach) {
    const PlaneZone plane(9);
    EXPECT_FALSE(plane.plane({kNan, 36.0}));
    EXPECT_FALSE(plane.plane({140.0, kNan}));
    EXPECT_FALSE(plane.plane({140.0, 91.0}));
    EXPECT_FALSE(plane.plane({-40.0, 36.0}));
    EXPECT_FALSE(plane.plane({139.8, -80.0})) << "farther south than the reach";
    EXPECT_FALSE(plane.plane({179.0, 5.0})) << "farther east than the reach";
    EXPECT_FALSE(plane.geographic(1e9, 0.0));
    EXPECT_FALSE(plane.geographic(kNan, 0.0));
}

} // namespace
} // namespace fenmark::exchange
