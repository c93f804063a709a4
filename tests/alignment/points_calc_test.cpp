// The primitives on bare points and angles of the calculation plane.
#include "support_alignment.h"

using namespace fenmark::alignment_test;

namespace {

constexpr double kOrigin[2] = {0.0, 0.0};

// The centre as the quadratic for cy gives it, side by comparison of coordinates: p at the origin, chord not along an
// axis. The reference for ali_KEnCen, which takes the half chord instead.
void centreByQuadratic(const double q[2], double dir, double R, double out[2]) {
    const double d = q[0];
    const double e = q[1];
    const double a4 = 4.0 * d * d + 4.0 * e * e;
    const double b = 4.0 * (d * d - e * e) * e - 8.0 * d * d * e;
    const double c = 4.0 * d * d * e * e + (d * d - e * e) * (d * d - e * e) - 4.0 * d * d * R * R;
    const double root = std::sqrt(std::fabs(b * b - 4.0 * a4 * c));
    const double low = (-b - root) / (2.0 * a4);
    const double high = (-b + root) / (2.0 * a4);
    const bool left_is_high = d > 0.0;
    const bool left = dir == 1.0;
    out[1] = left == left_is_high ? high : low;
    out[0] = (d * d + e * e - 2.0 * e * out[1]) / (2.0 * d);
}

} // namespace

TEST(Angles, BroughtIntoRangeWithTwoPiLeftAsItIs) {
    EXPECT_EQ(ali_KAdjAng(kTwoPi), kTwoPi);
    EXPECT_EQ(ali_KAdjAng(-kTwoPi), 0.0);
    EXPECT_NEAR(ali_KAdjAng(7.0), 7.0 - kTwoPi, kAngleBits);
    EXPECT_NEAR(ali_KAdjAng(-1.0), kTwoPi - 1.0, kAngleBits);
    EXPECT_EQ(ali_KAdjAng(std::nextafter(kTwoPi, 7.0)), std::nextafter(kTwoPi, 7.0) - kTwoPi);
    const double huge = ali_KAdjAng(1e300);
    EXPECT_TRUE(huge >= 0.0 && huge <= kTwoPi);
    EXPECT_TRUE(std::isnan(ali_KAdjAng(kNotANumber)));
    EXPECT_TRUE(std::isnan(ali_KAdjAng(kInfinity)));
}

TEST(Angles, DirectionLiesInRangeAndEqualPointsGiveZero) {
    const double p[2] = {5.0, 7.0};
    EXPECT_EQ(ali_KGetAng(p, p), 0.0);
    const double east[2] = {0.0, -1.0};
    EXPECT_DOUBLE_EQ(ali_KGetAng(kOrigin, east), 1.5 * kPi);
    const double hair[2] = {1.0, -1e-300};
    EXPECT_EQ(ali_KGetAng(kOrigin, hair), 0.0);
    const double negative_zero[2] = {1.0, -0.0};
    EXPECT_FALSE(std::signbit(ali_KGetAng(kOrigin, negative_zero)));
    Random random(53101);
    SCOPED_TRACE(random.trace());
    for (int i = 0; i < 1000; ++i) {
        const double q[2] = {random.uniform(-1.0, 1.0), random.uniform(-1.0, 1.0)};
        const double a = ali_KGetAng(kOrigin, q);
        EXPECT_GE(a, 0.0);
        EXPECT_LT(a, kTwoPi);
        EXPECT_NEAR(std::cos(a) * std::hypot(q[0], q[1]), q[0], kAngleBits);
        EXPECT_NEAR(std::sin(a) * std::hypot(q[0], q[1]), q[1], kAngleBits);
    }
}

TEST(LineCoefficients, FormMHoldsInBothPlanes) {
    Random random(53102);
    SCOPED_TRACE(random.trace());
    for (const Place place : kPlaces) {
        for (int i = 0; i < 500; ++i) {
            const double p[2] = {place.x + random.uniform(-100.0, 100.0), place.y + random.uniform(-100.0, 100.0)};
            const double q[2] = {p[0] + random.uniform(50.0, 100.0), p[1] + random.uniform(-100.0, 100.0)};
            double a = 0.0;
            double b = 0.0;
            double c = 0.0;
            ASSERT_EQ(ali_KCalCst(p, q, &a, &b, &c), 0);
            EXPECT_NEAR(a * a + b * b, 1.0, 1e-14);
            // The rounded coefficients are off by half a step over the chord, which the distance from the origin
            // magnifies.
            const double allowed = 1e-5 * (1.0 + std::hypot(p[0], p[1]) / 50.0);
            EXPECT_NEAR(a * p[0] - b * p[1], c, allowed);
            EXPECT_NEAR(a * q[0] + b * -q[1], c, allowed);
        }
    }
    double a = 9.0;
    double b = 9.0;
    double c = 9.0;
    EXPECT_EQ(ali_KCalCst(kOrigin, kOrigin, &a, &b, &c), -1);
    EXPECT_EQ(a, 9.0);
}

TEST(LineCoefficients, RoundedBeforeTheyAreNormalised) {
    const double q[2] = {3.000004, 4.000006};
    double a = 0.0;
    double b = 0.0;
    double c = 0.0;
    ali_KCalCst(kOrigin, q, &a, &b, &c);
    const double length = std::sqrt(3.0 * 3.0 + 4.00001 * 4.00001);
    EXPECT_NEAR(a, 4.00001 / length, 1e-15);
    EXPECT_NEAR(b, 3.0 / length, 1e-15);
}

TEST(PointOnLine, DistanceZeroIsTheFirstPoint) {
    const double p[2] = {-36000.123456789, 12000.987654321};
    const double q[2] = {-35000.0, 12500.0};
    double out[2];
    double angle = 0.0;
    EXPECT_EQ(ali_KGetPnt(p, q, 0.0, 1, out, &angle), 0);
    EXPECT_EQ(out[0], p[0]);
    EXPECT_EQ(out[1], p[1]);
    EXPECT_EQ(angle, ali_KGetAng(p, q));
}

TEST(PointOnLine, RefusalsWriteNothing) {
    const double q[2] = {10.0, 0.0};
    const double near[2] = {0.9e-5, -0.9e-5};
    double out[2] = {9.0, 9.0};
    double angle = 9.0;
    EXPECT_EQ(ali_KGetPnt(kOrigin, near, 0.0, 0, out, &angle), -1);
    EXPECT_EQ(ali_KGetPnt(kOrigin, q, -1e-12, 0, out, &angle), -1);
    EXPECT_EQ(ali_KGetPnt(kOrigin, q, 10.001, 1, out, &angle), -1);
    EXPECT_EQ(ali_KGetPnt(kOrigin, q, kNotANumber, 0, out, &angle), -1);
    EXPECT_EQ(ali_KGetPnt(kOrigin, q, kInfinity, 0, out, &angle), -1);
    EXPECT_EQ(out[0], 9.0);
    EXPECT_EQ(angle, 9.0);
    EXPECT_EQ(ali_KGetPnt(kOrigin, q, 10.001, 0, out, &angle), 0);
    EXPECT_NEAR(out[0], 10.001, kLengthBits);
    // A station rounded to the step may exceed the chord by that much.
    EXPECT_EQ(ali_KGetPnt(kOrigin, q, 10.000009, 1, out, &angle), 0);
}

TEST(PointMotion, MoveAndTurn) {
    double out[2];
    const double p[2] = {2.0, 1.0};
    ali_KMovPnt(out, p, 10.0, kPi / 2.0);
    EXPECT_NEAR(out[0], 2.0, kLengthBits);
    EXPECT_NEAR(out[1], 11.0, kLengthBits);
    ali_KRotPnt(out, p, kOrigin, kPi / 2.0);
    EXPECT_NEAR(out[0], -1.0, kLengthBits);
    EXPECT_NEAR(out[1], 2.0, kLengthBits);
    ali_KRotPnt(out, p, p, 1.0);
    EXPECT_EQ(out[0], p[0]);
    EXPECT_EQ(out[1], p[1]);
    ali_KEnPntb(1.0, kOrigin, p, kPi / 2.0, out);
    EXPECT_NEAR(out[0], -1.0, kLengthBits);
    ali_KEnPntb(-1.0, kOrigin, p, kPi / 2.0, out);
    EXPECT_NEAR(out[0], 1.0, kLengthBits);
    ali_KEnPntb(0.5, kOrigin, p, kPi / 2.0, out); // anything but 1 turns clockwise
    EXPECT_NEAR(out[0], 1.0, kLengthBits);
}

TEST(ArcCentre, EqualsTheQuadratic) {
    Random random(53103);
    SCOPED_TRACE(random.trace());
    for (int i = 0; i < 2000; ++i) {
        const double R = random.uniform(20.0, 500.0);
        const double half = random.uniform(0.05, 1.5);
        const double azimuth = random.uniform(0.0, kTwoPi);
        const double q[2] = {2.0 * R * std::sin(half) * std::cos(azimuth),
                             2.0 * R * std::sin(half) * std::sin(azimuth)};
        if (std::fabs(q[0]) < 1.0 || std::fabs(q[1]) < 1.0) {
            continue; // near an axis the quadratic loses its digits
        }
        const double dir = random.sign();
        double expected[2];
        centreByQuadratic(q, dir, R, expected);
        double cx = 0.0;
        double cy = 0.0;
        ASSERT_EQ(ali_KEnCen(kOrigin, q, dir, R, &cx, &cy), 0);
        EXPECT_NEAR(cx, expected[0], 1e-6);
        EXPECT_NEAR(cy, expected[1], 1e-6);
    }
}

TEST(ArcCentre, LiesOnTheSideOfDirForChordsNearAnAxisToo) {
    for (const double small : {0.0, 1e-7, 0.9e-5, 1e-5, 2e-5, 1e-3}) {
        for (const double sx : {-1.0, 1.0}) {
            for (const double sy : {-1.0, 1.0}) {
                for (const bool along_y : {false, true}) {
                    for (const double dir : {-1.0, 1.0}) {
                        const double q[2] = {sx * (along_y ? small : 100.0), sy * (along_y ? 100.0 : small)};
                        double cx = 0.0;
                        double cy = 0.0;
                        ASSERT_EQ(ali_KEnCen(kOrigin, q, dir, 80.0, &cx, &cy), 0);
                        EXPECT_GT(dir * (q[0] * cy - q[1] * cx), 0.0);
                        EXPECT_NEAR(std::hypot(cx, cy), 80.0, kLengthBits);
                        EXPECT_NEAR(std::hypot(cx - q[0], cy - q[1]), 80.0, kLengthBits);
                    }
                }
            }
        }
    }
}

TEST(ArcCentre, AChordLongerThanTheDiameterKeepsACentre) {
    const double q[2] = {100.0, 0.0};
    double cx = 0.0;
    double cy = 0.0;
    EXPECT_EQ(ali_KEnCen(kOrigin, q, 1.0, 49.0, &cx, &cy), 0);
    EXPECT_NEAR(cx, 50.0, kLengthBits);
    EXPECT_NEAR(cy, std::sqrt(50.0 * 50.0 - 49.0 * 49.0), kLengthBits);
    EXPECT_EQ(ali_KEnCen(kOrigin, q, 1.0, kNotANumber, &cx, &cy), -1);
}

TEST(ArcAngles, AtMostAHalfCircleWithTangentsSnappedAtAFullTurn) {
    const double p[2] = {0.0, -10.0};
    const double q[2] = {10.0, 0.0};
    double sang = 0.0;
    double eang = 0.0;
    double sweep = 0.0;
    double length = 0.0;
    EXPECT_EQ(ali_KEnAng(p, q, 1.0, 10.0, 0.0, 0.0, &sang, &eang, &sweep, &length), 0);
    EXPECT_EQ(sang, 0.0);
    EXPECT_NEAR(eang, kPi / 2.0, kAngleBits);
    EXPECT_NEAR(sweep, kPi / 2.0, kAngleBits);
    EXPECT_NEAR(length, 5.0 * kPi, kLengthBits);
    ali_KEnAng(p, q, -1.0, 10.0, 0.0, 0.0, &sang, &eang, &sweep, &length);
    EXPECT_NEAR(sang, kPi, kAngleBits);
    EXPECT_NEAR(eang, 1.5 * kPi, kAngleBits);
    EXPECT_NEAR(sweep, kPi / 2.0, kAngleBits);
}

TEST(ArcLength, EqualDirectionsGiveNothingOrAFullCircle) {
    const double p[2] = {10.0, 0.0};
    const double q[2] = {0.0, 10.0};
    double length = 9.0;
    EXPECT_EQ(ali_KEnPncl(1.0, 10.0, kOrigin, p, p, &length), 0);
    EXPECT_EQ(length, 0.0);
    ali_KEnPncl(-1.0, 10.0, kOrigin, p, p, &length);
    EXPECT_EQ(length, kTwoPi * 10.0);
    ali_KEnPncl(1.0, 10.0, kOrigin, p, q, &length);
    EXPECT_NEAR(length, 5.0 * kPi, kLengthBits);
    ali_KEnPncl(-1.0, 10.0, kOrigin, p, q, &length);
    EXPECT_NEAR(length, 15.0 * kPi, kLengthBits);
}

TEST(ArcPoint, OfATangentHasTheSenseOppositeToThatOfTheTangents) {
    // About a known point it gives the centre of the arc that has this tangent there.
    const double p[2] = {5.0, 5.0};
    double out[2];
    ali_KEnPntc(1.0, p, 0.0, 10.0, out);
    EXPECT_NEAR(out[0], 5.0, kLengthBits);
    EXPECT_NEAR(out[1], 15.0, kLengthBits);
    ali_KEnPntc(-1.0, p, 0.0, 10.0, out);
    EXPECT_NEAR(out[1], -5.0, kLengthBits);
    ali_KEnPntc(-1.0, p, 4.0, 10.0, out);
    EXPECT_NEAR(out[0], 5.0 - 10.0 * std::sin(4.0 - kPi), kLengthBits);
    EXPECT_NEAR(out[1], 5.0 + 10.0 * std::cos(4.0 - kPi), kLengthBits);
}
