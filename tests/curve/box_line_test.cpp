// Boxes and lines, against many points of the curve.
#include "support_curve.h"

#include <algorithm>

namespace fenmark::curve_test {

namespace {

constexpr double kPlace = 1e-9;

double toSegment(const Point& p, const Point& a, const Point& b) {
    const double dx = b.x - a.x;
    const double dy = b.y - a.y;
    const double squared = dx * dx + dy * dy;
    const double share = squared > 0.0 ? std::clamp(((p.x - a.x) * dx + (p.y - a.y) * dy) / squared, 0.0, 1.0) : 0.0;
    return std::hypot(p.x - a.x - share * dx, p.y - a.y - share * dy);
}

} // namespace

TEST(Box, HoldsTheCurveAndIsTouchedOnEverySide) {
    RandomCurves random(3);
    for (int i = 0; i < cases(2000); ++i) {
        const Curve curve = random.curve(1e3);
        const Box box = boxOf(curve);
        Box seen{1e300, 1e300, -1e300, -1e300};
        const int parts = 1000 + static_cast<int>(30.0 * turnOf(curve));
        for (int part = 0; part <= parts; ++part) {
            const Point point = pointAt(curve, curve.length * part / parts);
            seen.minX = std::min(seen.minX, point.x);
            seen.minY = std::min(seen.minY, point.y);
            seen.maxX = std::max(seen.maxX, point.x);
            seen.maxY = std::max(seen.maxY, point.y);
        }
        // The walk misses an extreme by the rise of the curve over half a part.
        const double step = curve.length / parts;
        const double missed = kPlace + 0.5 * step * step * turnOf(curve) / std::max(curve.length, 1e-9);
        const std::string what = "case " + std::to_string(i) + testing::PrintToString(curve);
        ASSERT_LE(box.minX, seen.minX + kPlace) << what;
        ASSERT_LE(box.minY, seen.minY + kPlace) << what;
        ASSERT_GE(box.maxX, seen.maxX - kPlace) << what;
        ASSERT_GE(box.maxY, seen.maxY - kPlace) << what;
        ASSERT_NEAR(box.minX, seen.minX, missed) << what;
        ASSERT_NEAR(box.minY, seen.minY, missed) << what;
        ASSERT_NEAR(box.maxX, seen.maxX, missed) << what;
        ASSERT_NEAR(box.maxY, seen.maxY, missed) << what;
    }
}

TEST(Line, LiesWithinTheToleranceWithFewPoints) {
    RandomCurves random(4);
    for (int i = 0; i < cases(1000); ++i) {
        const Curve curve = random.curve(1e3);
        const double tolerance = random.scaled(1e-4, 1.0);
        const double offset = random.pick(2) == 0 ? 0.0 : random.uniform(-20.0, 20.0);
        const Line line = lineOf(curve, tolerance, kMostLinePoints, offset);
        const std::string what = "case " + std::to_string(i) + testing::PrintToString(curve) + std::to_string(offset);
        ASSERT_GE(line.points.size(), 2u) << what;
        ASSERT_EQ(line.points.size(), line.along.size()) << what;
        ASSERT_EQ(line.along.front(), 0.0);
        ASSERT_EQ(line.along.back(), curve.length);
        ASSERT_EQ(line.withinTolerance, line.error <= tolerance);
        ASSERT_TRUE(line.withinTolerance || line.points.size() == kMostLinePoints) << what;
        double worst = 0.0;
        for (std::size_t chord = 1; chord < line.points.size(); ++chord) {
            ASSERT_GT(line.along[chord], line.along[chord - 1]) << what;
            for (const double share : {0.21, 0.42, 0.5, 0.58, 0.79}) {
                const double along = line.along[chord - 1] + share * (line.along[chord] - line.along[chord - 1]);
                worst = std::max(worst, toSegment(parallelPose(curve, along, offset).point, line.points[chord - 1],
                                                  line.points[chord]));
            }
        }
        ASSERT_LE(worst, line.error + kPlace) << what;
        // Not many more points than needed: of a long line without an offset the worst chord uses most of the tolerance.
        if (offset == 0.0 && line.points.size() > 20 && line.withinTolerance &&
            tolerance * turnOf(curve) < 0.05 * curve.length) {
            ASSERT_GT(worst, 0.4 * tolerance) << what;
        }
    }
}

TEST(Line, SaysWhenItIsCoarser) {
    const Curve spiral{{{0.0, 0.0}, 0.0}, 1e5, 0.0, 10.0};
    const Line line = lineOf(spiral, 1e-3);
    EXPECT_EQ(line.points.size(), kMostLinePoints);
    EXPECT_FALSE(line.withinTolerance);
    EXPECT_GT(line.error, 1e-3);
    const Line few = lineOf(arc({{0.0, 0.0}, 0.0}, 100.0, 0.01), 1e-6, 5);
    EXPECT_EQ(few.points.size(), 5u);
    EXPECT_FALSE(few.withinTolerance);
    EXPECT_EQ(lineOf(straight({{0.0, 0.0}, 0.0}, 100.0), 1e-3).points.size(), 2u);
}

// Points: 1 + the next whole number above 1.08 int sqrt(|k|) ds / sqrt(8 tolerance), of which sqrt(k) has the mean
// 2/3 (r0^2 + r0 r1 + r1^2) / (r0 + r1) where the curvatures' roots at the ends are r0 and r1. Of an arc the chords are even
// and the bound is 1.03 k l^2 / 8 for a chord l.
TEST(Line, HasThePointsThatItsCurvatureAsksFor) {
    const struct {
        double length, first, last, tolerance;
        std::size_t points;
    } lines[] = {{1000.0, 0.01, 0.01, 1e-5, 12'076},  {1000.0, 0.01, 0.01, 1e-3, 1'209},
                 {1000.0, -0.01, -0.01, 1e-3, 1'209}, {900.0, 0.0, 0.04, 1e-3, 1'450},
                 {900.0, 0.04, 0.0, 1e-3, 1'450},     {900.0, 0.01, 0.04, 1e-3, 1'692},
                 {1800.0, -0.04, 0.04, 1e-3, 2'899},  {0.9, 0.01, 0.04, 1e-9, 1'692}};
    for (const auto& [length, first, last, tolerance, points] : lines) {
        const Line line = lineOf({{{5.0, 7.0}, 0.3}, length, first, last}, tolerance, 20'000);
        EXPECT_EQ(line.points.size(), points) << length << ' ' << first << ' ' << last;
        EXPECT_TRUE(line.withinTolerance);
        if (first == last) {
            const double chord = length / static_cast<double>(points - 1);
            const double bound = 1.03 * std::abs(first) * chord * chord / 8.0;
            EXPECT_NEAR(line.error, bound, 1e-4 * bound) << length;
        }
    }
}

// No constant of the way to a line has a size: powers of four, whose roots are exact, change no bit of it.
TEST(Line, OfACurveMadeSmallerIsTheLineMadeSmaller) {
    RandomCurves random(41);
    for (int i = 0; i < cases(200); ++i) {
        const Curve curve = random.curve(1e3);
        const double tolerance = random.scaled(1e-3, 1.0);
        const double offset = i % 3 == 0 ? 0.0 : random.uniform(-30.0, 30.0);
        const Line whole = lineOf(curve, tolerance, 500, offset);
        for (const double scale : {0x1.0p-12, 0x1.0p-2, 0x1.0p10}) {
            const Curve other{{{scale * curve.start.point.x, scale * curve.start.point.y}, curve.start.azimuth},
                              scale * curve.length,
                              curve.startCurvature / scale,
                              curve.endCurvature / scale};
            const Line line = lineOf(other, scale * tolerance, 500, scale * offset);
            ASSERT_EQ(line.along.size(), whole.along.size()) << i << testing::PrintToString(curve) << offset;
            ASSERT_EQ(line.withinTolerance, whole.withinTolerance);
            ASSERT_EQ(line.error, scale * whole.error) << i << testing::PrintToString(curve) << offset;
            for (std::size_t k = 0; k < line.along.size(); ++k) {
                ASSERT_EQ(line.along[k], scale * whole.along[k]) << i;
                ASSERT_LE(distance(line.points[k], {scale * whole.points[k].x, scale * whole.points[k].y}),
                          scale * kPlace);
            }
        }
    }
}

// An offset so large that the parallel's stretch is beyond all numbers.
TEST(Line, WithoutAnyDensityHasEvenPoints) {
    for (const double length : {0.005, 0.5, 50.0}) {
        const Line line = lineOf(arc({{0.0, 0.0}, 0.0}, length, 1e200), 1e-3, 101, 1e200);
        ASSERT_EQ(line.along.size(), 101u) << length;
        for (std::size_t k = 0; k < line.along.size(); ++k) {
            EXPECT_NEAR(line.along[k], length * static_cast<double>(k) / 100.0, 1e-15 * length);
        }
        EXPECT_FALSE(line.withinTolerance);
    }
}

} // namespace fenmark::curve_test
