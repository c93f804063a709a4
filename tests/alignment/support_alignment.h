// Tolerances, random elements and readable helpers of the alignment tests.
#pragma once

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>
#include <string>

#include "fenmark/alignment.h"
#include "support/random.h"

namespace fenmark::alignment_test {

inline constexpr double kPi = std::numbers::pi;
inline constexpr double kTwoPi = 2.0 * std::numbers::pi;

// Rounding of a result to its step: half a step, and the last bits of the value.
inline constexpr double kLengthRounding = 5.1e-6;
inline constexpr double kAngleRounding = 7e-7;
// Values that the same formula gives by another way: last bits at coordinates of some 10 km.
inline constexpr double kLengthBits = 1e-9;
inline constexpr double kAngleBits = 1e-12;
// A clothoid's point: the series stops at a change of 1e-4 m, which leaves about 1e-5 m.
inline constexpr double kClothoidPoint = 2e-5;
// A tangent against an integration of curvature, radians.
inline constexpr double tangent = 1e-9;
// A foot that the bisection found: millimetres.
inline constexpr double kFootStation = 2e-3;
// A crossing that a subdivision found: a chord of 1e-4 m, and the length it covers.
inline constexpr double kCrossing = 3e-4;
// Figures given to five decimals.
inline constexpr double kFiveDecimals = 5e-6;

inline constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();
inline constexpr double kInfinity = std::numeric_limits<double>::infinity();

inline double angleBetween(double a, double b) {
    const double d = std::fabs(std::remainder(a - b, kTwoPi));
    return d;
}

using test::Random;

// The two places at which every random test runs: near the origin, and where survey coordinates are large.
struct Place {
    double x;
    double y;
};
inline constexpr Place kPlaces[] = {{0.0, 0.0}, {-36000.0, 12000.0}};

inline Calelm straightRecord(double sx, double sy, double ex, double ey) {
    Calelm rec;
    initCalelm(&rec);
    rec.sx = sx;
    rec.sy = sy;
    rec.ex = ex;
    rec.ey = ey;
    EXPECT_EQ(ali_makS(&rec), 0);
    return rec;
}

inline Calelm arcRecord(double sx, double sy, double ex, double ey, double dir, double R) {
    Calelm rec;
    initCalelm(&rec);
    rec.type = ALI_ARC;
    rec.sx = sx;
    rec.sy = sy;
    rec.ex = ex;
    rec.ey = ey;
    rec.dir = dir;
    rec.par = R;
    EXPECT_EQ(ali_makR(&rec), 0);
    return rec;
}

// An arc of any sweep, laid from its start.
inline Calelm arcFrom(double sx, double sy, double azimuth, double dir, double R, double length) {
    Calelm rec;
    initCalelm(&rec);
    rec.type = ALI_ARC;
    rec.sx = sx;
    rec.sy = sy;
    rec.sang = azimuth;
    rec.dir = dir;
    rec.par = R;
    rec.len = length;
    EXPECT_EQ(ali_makangR(&rec, 1), 0);
    return rec;
}

inline Calelm clothoidSizes(double dir, double A, double r1, double r2) {
    Calelm rec;
    initCalelm(&rec);
    rec.type = ALI_CLOTHOID;
    rec.dir = dir;
    rec.par = A;
    rec.r1 = r1;
    rec.r2 = r2;
    return rec;
}

inline Calelm clothoidFrom(double sx, double sy, double azimuth, double dir, double A, double r1, double r2) {
    Calelm rec = clothoidSizes(dir, A, r1, r2);
    rec.sx = sx;
    rec.sy = sy;
    rec.sang = azimuth;
    EXPECT_EQ(ali_makangA(&rec, 1), 0);
    return rec;
}

// Radii and parameter of a clothoid of survey size: A 30 to 400, sharper radius above 0.56 A, the flatter end infinite
// or up to ten times that, in either order.
inline Calelm randomClothoidSizes(Random& random) {
    const double A = random.uniform(30.0, 400.0);
    const double sharp = A * random.uniform(0.6, 4.0);
    const double flat = random.whole(0, 1) == 0 ? 0.0 : sharp * random.uniform(1.3, 10.0);
    const bool grows = random.whole(0, 1) == 0;
    return clothoidSizes(random.sign(), A, grows ? flat : sharp, grows ? sharp : flat);
}

inline Calelm randomClothoid(Random& random, Place place) {
    const Calelm sizes = randomClothoidSizes(random);
    return clothoidFrom(place.x + random.uniform(-500.0, 500.0), place.y + random.uniform(-500.0, 500.0),
                        random.uniform(0.01, 6.27), sizes.dir, sizes.par, sizes.r1, sizes.r2);
}

inline Calelm randomArc(Random& random, Place place, double most_sweep) {
    const double R = random.uniform(20.0, 600.0);
    return arcFrom(place.x + random.uniform(-500.0, 500.0), place.y + random.uniform(-500.0, 500.0),
                   random.uniform(0.01, 6.27), random.sign(), R, R * random.uniform(0.05, most_sweep));
}

inline Calelm randomStraight(Random& random, Place place) {
    const double x = place.x + random.uniform(-500.0, 500.0);
    const double y = place.y + random.uniform(-500.0, 500.0);
    return straightRecord(x, y, x + random.uniform(-400.0, 400.0), y + random.uniform(-400.0, 400.0));
}

inline ::testing::AssertionResult sameBits(const Calelm& a, const Calelm& b) {
    const bool same = a.type == b.type && a.sx == b.sx && a.sy == b.sy && a.ex == b.ex && a.ey == b.ey &&
                      a.dir == b.dir && a.par == b.par && a.r1 == b.r1 && a.r2 == b.r2 && a.len == b.len &&
                      a.sang == b.sang && a.eang == b.eang && a.k1 == b.k1 && a.k2 == b.k2 && a.k3 == b.k3;
    return same ? ::testing::AssertionSuccess() : ::testing::AssertionFailure() << "the records differ";
}

} // namespace fenmark::alignment_test
