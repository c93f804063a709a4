// Points, lines and segments.
#include "support/exact_chain.h"

#include <fenmark/alignment.h>

#include <limits>

namespace {

constexpr double kPi = std::numbers::pi;
// Results of plain plane geometry near the origin, metres and radians.
constexpr double kPointTolerance = 1e-9;
constexpr double kAngleTolerance = 1e-12;
constexpr double kUnwritten = -777.0;

TEST(CDlinstd, GivesPointAndUnitDirection) {
    double line[4];
    ASSERT_EQ(0, CDlinstd(1, 2, 4, 6, line));
    EXPECT_EQ(1.0, line[0]);
    EXPECT_EQ(2.0, line[1]);
    EXPECT_NEAR(0.6, line[2], kAngleTolerance);
    EXPECT_NEAR(0.8, line[3], kAngleTolerance);
}

TEST(CDlinstd, PointsNearerThanTheDirectionZeroGiveOneAndWriteNothing) {
    double line[4] = {kUnwritten, kUnwritten, kUnwritten, kUnwritten};
    EXPECT_EQ(1, CDlinstd(5, 5, 5 + 0.9e-7, 5, line));
    EXPECT_EQ(1, CDlinstd(5, 5, std::numeric_limits<double>::quiet_NaN(), 5, line));
    for (const double value : line) {
        EXPECT_EQ(kUnwritten, value);
    }
    EXPECT_EQ(0, CDlinstd(0, 0, 1.1e-7, 0, line));
}

TEST(CDlineang, TellsEveryQuadrant) {
    for (const double expected : {0.0, 0.3, kPi / 2, 2.0, kPi, 3.5, 3 * kPi / 2, 6.0}) {
        const double line[4] = {7, 8, std::cos(expected), std::sin(expected)};
        double angle = kUnwritten;
        EXPECT_EQ(0, CDlineang(line, &angle));
        EXPECT_NEAR(expected, angle, kAngleTolerance);
    }
    const double hairBelow[4] = {0, 0, 1.0, -1e-300};
    double angle = kUnwritten;
    CDlineang(hairBelow, &angle);
    EXPECT_EQ(0.0, angle) << "in [0, 2 pi), never 2 pi itself";
}

double between(double direction1, double direction2) {
    return CDbtwang(0, 0, std::cos(direction1), std::sin(direction1), 3, 4, 3 + std::cos(direction2),
                    4 + std::sin(direction2));
}

TEST(CDbtwang, IsTheSecondDirectionMinusTheFirstInRange) {
    EXPECT_NEAR(1.0, between(0.5, 1.5), kAngleTolerance);
    EXPECT_NEAR(2 * kPi - 1.0, between(1.5, 0.5), kAngleTolerance);
    EXPECT_NEAR(kPi, between(0.25, 0.25 + kPi), kAngleTolerance);
}

TEST(CDbtwang, IdenticalDirectionsGiveExactlyZero) {
    EXPECT_EQ(0.0, CDbtwang(0, 0, 3, 7, 0, 0, 3, 7));
}

TEST(CDbtwang, DirectionsCloserThanTheAngleStepGiveExactlyZero) {
    constexpr double kBelow = 1.3e-6;
    constexpr double kAbove = 1.5e-6;
    EXPECT_EQ(0.0, between(1.0, 1.0 + kBelow));
    EXPECT_EQ(0.0, between(1.0, 1.0 - kBelow));
    EXPECT_NEAR(kAbove, between(1.0, 1.0 + kAbove), kAngleTolerance);
    EXPECT_NEAR(2 * kPi - kAbove, between(1.0, 1.0 - kAbove), kAngleTolerance);
}

TEST(CDbtwang, DirectionsOnEitherSideOfTheAxisAreOneDirection) {
    EXPECT_EQ(0.0, between(-5e-7, 5e-7));
    EXPECT_EQ(0.0, between(5e-7, -5e-7));
}

TEST(CDbtwang, LineWithoutLengthCountsAsDirectionZero) {
    EXPECT_NEAR(0.7, CDbtwang(1, 1, 1, 1, 0, 0, std::cos(0.7), std::sin(0.7)), kAngleTolerance);
    EXPECT_NEAR(2 * kPi - 0.7, CDbtwang(0, 0, std::cos(0.7), std::sin(0.7), 1, 1, 1, 1), kAngleTolerance);
}

TEST(CDlincros, FindsTheCrossingOfUnboundedLines) {
    const double line1[4] = {0, 0, 1, 0};
    const double line2[4] = {5, 5, std::sqrt(0.5), std::sqrt(0.5)};
    double x = kUnwritten, y = kUnwritten;
    ASSERT_EQ(0, CDlincros(line1, line2, &x, &y));
    EXPECT_NEAR(0.0, x, kPointTolerance);
    EXPECT_NEAR(0.0, y, kPointTolerance);
}

TEST(CDlincros, ParallelLinesGiveOneAndWriteNothing) {
    const double line1[4] = {0, 0, 1, 0};
    const double line2[4] = {0, 1, std::cos(0.9e-7), std::sin(0.9e-7)};
    const double line3[4] = {0, 1, std::cos(1.1e-7), std::sin(1.1e-7)};
    double x = kUnwritten, y = kUnwritten;
    EXPECT_EQ(1, CDlincros(line1, line2, &x, &y));
    EXPECT_EQ(kUnwritten, x);
    EXPECT_EQ(kUnwritten, y);
    EXPECT_EQ(0, CDlincros(line1, line3, &x, &y));
}

TEST(CDpldist, IsZeroBelowATenthOfAMillimetre) {
    const double line[4] = {0, 0, 1, 0};
    double d = kUnwritten;
    const double near[2] = {5, 0.99e-4};
    EXPECT_EQ(0, CDpldist(line, near, &d));
    EXPECT_EQ(0.0, d);
    const double off[2] = {5, 1.01e-4};
    CDpldist(line, off, &d);
    EXPECT_NEAR(1.01e-4, d, kPointTolerance);
    const double other[2] = {-400, -30};
    CDpldist(line, other, &d);
    EXPECT_NEAR(30.0, d, kPointTolerance);
}

TEST(CDpojpoi, GivesTheFootOfThePerpendicular) {
    const double line[4] = {10, 20, 0.6, 0.8};
    // 5 m on along the line and 2 m to its left.
    const double p[2] = {10 + 5 * 0.6 - 2 * 0.8, 20 + 5 * 0.8 + 2 * 0.6};
    double foot[2];
    EXPECT_EQ(0, CDpojpoi(line, p, foot));
    EXPECT_NEAR(13.0, foot[0], kPointTolerance);
    EXPECT_NEAR(24.0, foot[1], kPointTolerance);
    const double start[2] = {10, 20};
    CDpojpoi(line, start, foot);
    EXPECT_EQ(10.0, foot[0]);
    EXPECT_EQ(20.0, foot[1]);
}

TEST(CDpoiinseg, PointAtBothEndsOfAnEmptySegmentIsToldAsItsEnd) {
    const double a[2] = {3, 3};
    EXPECT_EQ(2, CDpoiinseg(a, a, a));
}

TEST(CDpoiinseg, TellsEndStartInsideAndOutside) {
    const double a[2] = {0, 0}, b[2] = {10, 0};
    const auto at = [&](double x, double y) {
        const double p[2] = {x, y};
        return CDpoiinseg(a, b, p);
    };
    EXPECT_EQ(2, at(10 - 0.9e-5, 0));
    EXPECT_EQ(0, at(10 - 1.1e-5, 0));
    EXPECT_EQ(1, at(0.9e-5, 0));
    EXPECT_EQ(0, at(5, 0));
    EXPECT_EQ(-1, at(10.1, 0));
    EXPECT_EQ(-1, at(-0.1, 0));
    EXPECT_EQ(0, at(5, 5)) << "distances alone are looked at, not whether the point lies on the line";
}

TEST(CDpoionls, TellsEndsAndTheNeighbourhoodOfALine) {
    EXPECT_EQ(1, CDpoionls(1e-5, 0, 0, 0, 10, 0));
    EXPECT_EQ(2, CDpoionls(10, 1e-5, 0, 0, 10, 0));
    EXPECT_EQ(0, CDpoionls(5, 0, 0, 0, 10, 0));
    EXPECT_EQ(-1, CDpoionls(12.1, 0, 0, 0, 10, 0)) << "outside the widened box";
    EXPECT_EQ(0, CDpoionls(11.9, 0, 0, 0, 10, 0));
    EXPECT_EQ(-1, CDpoionls(5, 2.1, 0, 0, 10, 0));
}

TEST(CDpoionls, ScalarProductIsNotDividedByTheLength) {
    // Half way along a line of 0.5 m the product is small against the distance; along one of 10 m it is far larger.
    EXPECT_EQ(0, CDpoionls(0.25, 1.9, 0, 0, 0.5, 0));
    EXPECT_EQ(0, CDpoionls(5, 1.9, 0, 0, 10, 0)) << "1.9 m off, yet 25 + 3.61 - 2500 is below 16";
    // Nearly square to the line 4.6 m off its start, inside the widened box: 20.8 less next to nothing is above 16.
    EXPECT_EQ(-1, CDpoionls(-1.99, 4.1, 0, 0, 5, 2.4));
}

int crossing(const double (&s)[8], double out[2]) {
    return CDsegcros(&s[0], &s[2], &s[4], &s[6], out);
}

TEST(CDsegcros, TellsWhereTheCrossingLies) {
    struct Row {
        double segments[8];
        int expected;
        bool written;
    };
    const Row rows[] = {
        {{0, 0, 10, 0, 5, -5, 5, 5}, 0, true},     // inside both
        {{0, 0, 10, 0, 0, -5, 0, 5}, 11, true},    // at a
        {{0, 0, 10, 0, 10, -5, 10, 5}, 12, true},  // at b
        {{0, 0, 10, 0, 5, 0, 5, 5}, 21, true},     // at c
        {{0, 0, 10, 0, 5, -5, 5, 0}, 22, true},    // at d
        {{0, 0, 10, 0, 0, 0, 0, 5}, 21, true},     // at a and c: the answer is the second segment's end
        {{0, 0, 10, 0, 15, 0, 15, 5}, 21, true},   // at c, off the first segment
        {{0, 0, 10, 0, 15, -5, 15, 0}, 22, true},  // at d, off the first segment
        {{0, 0, 10, 0, 15, -5, 15, 5}, -1, false}, // off the first
        {{0, 0, 10, 0, 5, 1, 5, 5}, -1, false},    // off the second
        {{0, 0, 10, 0, 0, 1, 0, 5}, -1, false},    // at a, off the second
        {{0, 0, 10, 0, 0, 1, 10, 1}, 1, false},    // parallel
        {{0, 0, 0, 0, 5, -5, 5, 5}, 1, false},     // no first segment
        {{0, 0, 10, 0, 5, 5, 5, 5}, 1, false},     // no second segment
    };
    for (const Row& row : rows) {
        double out[2] = {kUnwritten, kUnwritten};
        EXPECT_EQ(row.expected, crossing(row.segments, out)) << &row - rows;
        EXPECT_EQ(row.written, out[0] != kUnwritten) << &row - rows;
        EXPECT_EQ(row.written, out[1] != kUnwritten) << &row - rows;
    }
}

TEST(CDmove, ShiftsBothPointsInPlace) {
    double x1 = 1, y1 = 2, x2 = 3, y2 = 4;
    EXPECT_EQ(0, CDmove(10, 20, &x1, &y1, &x2, &y2));
    EXPECT_EQ(11, x1);
    EXPECT_EQ(22, y1);
    EXPECT_EQ(13, x2);
    EXPECT_EQ(24, y2);
}

TEST(CDmoveP, GivesAShiftedCopy) {
    double x = kUnwritten, y = kUnwritten;
    EXPECT_EQ(0, CDmoveP(1, 2, 0.5, -0.5, &x, &y));
    EXPECT_EQ(1.5, x);
    EXPECT_EQ(1.5, y);
}

TEST(CDrotpoi, TurnsAboutAPoint) {
    const double c[2] = {1, 1}, p[2] = {3, 1};
    double out[2];
    EXPECT_EQ(0, CDrotpoi(c, 0.0, 1.0, p, out));
    EXPECT_NEAR(1.0, out[0], kPointTolerance);
    EXPECT_NEAR(3.0, out[1], kPointTolerance);
}

TEST(CDmirAng, MirrorsInTheYAxis) {
    double a = kUnwritten;
    EXPECT_EQ(0, CDmirAng(1.0, &a));
    EXPECT_NEAR(kPi - 1.0, a, kAngleTolerance);
    CDmirAng(4.0, &a);
    EXPECT_NEAR(3 * kPi - 4.0, a, kAngleTolerance);
    CDmirAng(kPi, &a);
    EXPECT_EQ(0.0, a);
}

} // namespace
