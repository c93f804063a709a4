// Crossings of two curves: laid through a common point, and against a walk along both.
#include "support_curve.h"

#include <algorithm>
#include <array>

namespace fenmark::curve_test {

namespace {

constexpr double kPlace = 1e-8; // metres

// A curve of the given shape whose pose at `along` is the given one.
Curve laidThrough(Curve shape, double along, const Pose& pose) {
    shape.start = {};
    const Pose there = poseAt(shape, along);
    const Curve turned = moved(shape, {0.0, 0.0}, pose.azimuth - there.azimuth, {0.0, 0.0});
    const Point at = pointAt(turned, along);
    return moved(turned, {0.0, 0.0}, 0.0, {pose.point.x - at.x, pose.point.y - at.y});
}

std::string both(int i, const Curve& a, const Curve& b) {
    return "case " + std::to_string(i) + " " + testing::PrintToString(a) + " " + testing::PrintToString(b);
}

void expectCommonPoints(const Crossings& all, const Curve& a, const Curve& b, const std::string& what) {
    for (const Crossing& crossing : all.found) {
        ASSERT_GE(crossing.alongFirst, 0.0) << what;
        ASSERT_LE(crossing.alongFirst, a.length) << what;
        ASSERT_GE(crossing.alongSecond, 0.0) << what;
        ASSERT_LE(crossing.alongSecond, b.length) << what;
        ASSERT_LE(distance(pointAt(a, crossing.alongFirst), crossing.point), kPlace) << what;
        ASSERT_LE(distance(pointAt(b, crossing.alongSecond), crossing.point), kPlace) << what;
    }
}

} // namespace

TEST(Crossings, FindTheCommonPointAtAnyAngle) {
    RandomCurves random(11);
    for (int i = 0; i < cases(4000); ++i) {
        const Curve first = random.curve(1e3);
        const double s = random.uniform(0.02, 0.98) * first.length;
        const double angle = random.sign() * random.scaled(1e-5, 1.57);
        Pose pose = poseAt(first, s);
        pose.azimuth += angle;
        const Curve shape = random.curve();
        const Curve second = laidThrough(shape, random.uniform(0.02, 0.98) * shape.length, pose);
        const Crossings all = crossings(first, second);
        const std::string what = both(i, first, second) + " at " + std::to_string(s);
        expectCommonPoints(all, first, second, what);
        double nearest = 1e300;
        for (const Crossing& crossing : all.found) {
            nearest = std::min(nearest, distance(crossing.point, pose.point));
        }
        if (!all.complete) {
            continue; // spirals that wind about each other
        }
        // The place is known to the coordinates' last bits over the angle.
        ASSERT_LE(nearest, 1e-11 * 4e3 / std::abs(angle)) << what << " angle " << angle;
    }
}

TEST(Crossings, TellTouches) {
    RandomCurves random(12);
    int touches = 0;
    for (int i = 0; i < cases(1000); ++i) {
        const Curve first = random.curve(1e3);
        const double s = random.uniform(0.1, 0.9) * first.length;
        Pose pose = poseAt(first, s);
        pose.azimuth += random.pick(2) == 0 ? 0.0 : kPi;
        const Curve shape = random.curve();
        const double t = random.uniform(0.1, 0.9) * shape.length;
        const Curve second = laidThrough(shape, t, pose);
        const Crossings all = crossings(first, second);
        const std::string what = both(i, first, second) + " at " + std::to_string(s);
        expectCommonPoints(all, first, second, what);
        double nearest = 1e300;
        for (const Crossing& crossing : all.found) {
            nearest = std::min(nearest, distance(crossing.point, pose.point));
            touches += crossing.tangent ? 1 : 0;
        }
        // Curves of nearly the same curvature run within the tolerance of each other for a while.
        const double bend = std::abs(std::abs(curvatureAt(first, s)) - std::abs(curvatureAt(second, t)));
        if (!all.overlap) {
            ASSERT_LE(nearest, 0.1 + 3.0 * std::sqrt(2e-9 / std::max(bend, 1e-12))) << what;
        }
    }
    EXPECT_GT(touches, cases(1000) / 2);
}

TEST(Crossings, AreAllOfThem) {
    RandomCurves random(13);
    for (int i = 0; i < cases(1000); ++i) {
        const Curve first = random.curve(1e3);
        const Pose pose = poseAt(first, random.uniform(0.0, 1.0) * first.length);
        const Curve shape = random.curve();
        if (turnOf(first) > 60.0 || turnOf(shape) > 60.0) {
            continue;
        }
        const Curve second =
            laidThrough(shape, random.uniform(0.0, 1.0) * shape.length,
                        {{pose.point.x + random.uniform(-5.0, 5.0), pose.point.y}, random.uniform(-4.0, 4.0)});
        const Crossings all = crossings(first, second);
        const std::string what = both(i, first, second);
        expectCommonPoints(all, first, second, what);
        ASSERT_TRUE(all.complete) << what;
        // Crossings of the chords of both, far enough from the chords' ends to be sure of.
        const auto parts1 = static_cast<std::size_t>(100.0 + 20.0 * turnOf(first));
        const auto parts2 = static_cast<std::size_t>(100.0 + 20.0 * turnOf(second));
        std::vector<Point> a;
        std::vector<Point> b;
        for (std::size_t k = 0; k <= parts1; ++k) {
            a.push_back(pointAt(first, first.length * static_cast<double>(k) / static_cast<double>(parts1)));
        }
        for (std::size_t k = 0; k <= parts2; ++k) {
            b.push_back(pointAt(second, second.length * static_cast<double>(k) / static_cast<double>(parts2)));
        }
        for (std::size_t k = 0; k < parts1; ++k) {
            for (std::size_t l = 0; l < parts2; ++l) {
                const Point u{a[k + 1].x - a[k].x, a[k + 1].y - a[k].y};
                const Point v{b[l + 1].x - b[l].x, b[l + 1].y - b[l].y};
                const Point w{b[l].x - a[k].x, b[l].y - a[k].y};
                const double sine = u.x * v.y - u.y * v.x;
                const double s = (w.x * v.y - w.y * v.x) / sine;
                const double t = (w.x * u.y - w.y * u.x) / sine;
                const bool steep = std::abs(sine) > 0.2 * std::hypot(u.x, u.y) * std::hypot(v.x, v.y);
                if (steep && s > 0.2 && s < 0.8 && t > 0.2 && t < 0.8) {
                    const Point place{a[k].x + s * u.x, a[k].y + s * u.y};
                    double nearest = 1e300;
                    for (const Crossing& crossing : all.found) {
                        nearest = std::min(nearest, distance(crossing.point, place));
                    }
                    ASSERT_LE(nearest, 0.2 * (std::hypot(u.x, u.y) + std::hypot(v.x, v.y))) << what;
                }
            }
        }
    }
}

TEST(Crossings, OfStraightsAndCircles) {
    const Curve east = straight({{0.0, -10.0}, 0.5 * kPi}, 20.0);
    const Curve north = straight({{-10.0, 2.0}, 0.0}, 20.0);
    const Crossings one = crossings(east, north);
    ASSERT_EQ(one.found.size(), 1u);
    EXPECT_NEAR(one.found[0].alongFirst, 12.0, 1e-12);
    EXPECT_NEAR(one.found[0].alongSecond, 10.0, 1e-12);
    EXPECT_NEAR(one.found[0].angle, -0.5 * kPi, 1e-12);
    const Curve circle = arc({{3.0, 4.0}, std::atan2(4.0, 3.0) - 0.5 * kPi}, 10.0 * kPi, -0.2); // about the origin
    EXPECT_EQ(crossings(east, circle).found.size(), 2u);
    const Crossings touch = crossings(straight({{5.0, -10.0}, 0.5 * kPi}, 20.0), circle);
    ASSERT_EQ(touch.found.size(), 1u);
    EXPECT_TRUE(touch.found[0].tangent);
    EXPECT_EQ(crossings(circle, arc({{4.0, 5.0}, 0.0}, 10.0 * kPi, -0.2)).found.size(), 2u);
    EXPECT_EQ(crossings(circle, arc({{10.0, 5.0}, 0.0}, 10.0 * kPi, -0.2)).found.size(), 1u);
    EXPECT_TRUE(crossings(circle, arc({{10.0, 5.0}, 0.0}, 10.0 * kPi, -0.2)).found[0].tangent);
    const Crossings along = crossings(east, straight({{0.0, 5.0}, 0.5 * kPi}, 20.0));
    ASSERT_EQ(along.found.size(), 2u);
    EXPECT_TRUE(along.overlap);
    EXPECT_EQ(along.found[0].alongFirst, 15.0);
    EXPECT_EQ(along.found[1].alongFirst, 20.0);
    EXPECT_TRUE(crossings(circle, part(circle, 2.0, 9.0)).overlap);
}

TEST(Crossings, OfACurveWithItsOwnPartAreAnOverlap) {
    RandomCurves random(14);
    for (int i = 0; i < cases(500); ++i) {
        const Curve whole = random.clothoid(1e3);
        if (turnOf(whole) > 20.0) {
            continue;
        }
        Curve piece = part(whole, 0.2 * whole.length, 0.7 * whole.length);
        if (random.pick(2) == 0) {
            piece = reversed(piece);
        }
        const Crossings all = crossings(whole, piece);
        ASSERT_TRUE(all.overlap) << both(i, whole, piece);
        ASSERT_GE(all.found.size(), 2u) << both(i, whole, piece);
        // Seen from the part it runs from its very start to its very end.
        const Crossings own = crossings(piece, whole);
        ASSERT_TRUE(own.overlap) << both(i, whole, piece);
        ASSERT_NEAR(own.found.front().alongFirst, 0.0, 1e-6) << both(i, whole, piece);
        ASSERT_NEAR(own.found.back().alongFirst, piece.length, 1e-6) << both(i, whole, piece);
    }
}

// Nearly circles that wind more than once: an end of the part has a foot on every turn, and the nearest of them may be
// the wrong one.
TEST(Crossings, OfACurveThatWindsOnNearlyOneCircleWithItsPartAreAnOverlap) {
    for (const double change : {0.0, 1e-13, 4e-13, -4e-13, 1e-12, 1e-11}) {
        for (const double turns : {1.2, 1.8, 2.6}) {
            const double curvature = 0.028;
            const double length = turns * 2.0 * kPi / curvature;
            const Curve whole{{{-180.0, -372.0}, 7.1}, length, curvature, curvature + change};
            for (double from = 0.0; from < 0.5; from += 0.05) {
                const Curve piece = part(whole, from * length, (from + 0.5) * length);
                for (const Curve& other : {piece, reversed(piece)}) {
                    const Crossings all = crossings(whole, other);
                    EXPECT_TRUE(all.overlap) << both(0, whole, other);
                    EXPECT_GE(all.found.size(), 2u) << both(0, whole, other);
                    expectCommonPoints(all, whole, other, both(0, whole, other));
                }
            }
        }
    }
}

TEST(Crossings, NeighboursOfAnAlignmentTouchAtTheirJoint) {
    // Straight, clothoid, arc: the curvatures agree at the joints.
    const Curve first = straight({{100.0, 200.0}, 0.3}, 80.0);
    const Curve second{endPose(first), 60.0, 0.0, 0.01};
    const Curve third = arc(endPose(second), 90.0, 0.01);
    const auto [before, behind] = split(second, 20.0); // two parts of one clothoid
    for (const auto& [a, b] : {std::pair(first, second), std::pair(second, third), std::pair(before, behind)}) {
        const Crossings all = crossings(a, b);
        ASSERT_EQ(all.found.size(), 1u);
        EXPECT_TRUE(all.found[0].tangent);
        EXPECT_FALSE(all.overlap);
        EXPECT_NEAR(all.found[0].alongFirst, a.length, 0.5);
        EXPECT_NEAR(all.found[0].alongSecond, 0.0, 0.5);
    }
}

TEST(Crossings, OfSpiralsThatWindThousandsOfTimesEnd) {
    const Curve spiral{{{0.0, 0.0}, 0.0}, 1e5, 0.0, 5.0};
    const Curve other{{{10.0, 3.0}, 1.0}, 1e5, 0.0, -4.0};
    const Crossings all = crossings(spiral, other);
    EXPECT_LE(all.found.size(), kMostCrossings);
    const Crossings line = crossings(spiral, straight({{-500.0, 10.0}, 0.1}, 1000.0));
    EXPECT_GE(line.found.size(), 1u);
    expectCommonPoints(line, spiral, straight({{-500.0, 10.0}, 0.1}, 1000.0), "spiral and straight");
}

// A straight at a distance from the centre, and a circle about a place as far off: every radius in closed form.
TEST(Crossings, OfCirclesOfAnyRadiusAreExact) {
    for (const double radius : {0.5, 1.0, 10.0, 50.0, 100.0, 200.0, 1000.0, 1e4, 9e4}) {
        for (const double side : {1.0, -1.0}) {
            const Curve circle = arc({{0.0, -side * radius}, 0.0}, 0.9999 * kTwoPi * radius, side / radius);
            const double aside = 0.6 * radius;
            const Curve line = straight({{-2.0 * radius, aside}, 0.0}, 4.0 * radius);
            const double within = 1e-11 * radius + 1e-11;
            for (const bool lineFirst : {true, false}) {
                const Crossings all = lineFirst ? crossings(line, circle) : crossings(circle, line);
                ASSERT_EQ(all.found.size(), 2u) << radius << ' ' << side << ' ' << lineFirst;
                for (const Crossing& crossing : all.found) {
                    EXPECT_NEAR(std::abs(crossing.point.x), 0.8 * radius, within) << radius << ' ' << side;
                    EXPECT_NEAR(crossing.point.y, aside, within) << radius << ' ' << side;
                    EXPECT_NEAR(lineFirst ? crossing.alongFirst : crossing.alongSecond, 2.0 * radius + crossing.point.x,
                                within);
                }
            }
            // Circles of 5/4 and 3/4 of it whose centres lie its double apart.
            const Curve other = arc({{1.25 * radius, -side * 0.75 * radius}, 0.0}, 0.9999 * kTwoPi * 0.75 * radius,
                                    side / (0.75 * radius));
            const Crossings both = crossings(circle, other);
            ASSERT_EQ(both.found.size(), 2u) << radius << ' ' << side;
            for (const Crossing& crossing : both.found) {
                EXPECT_NEAR(crossing.point.x, 0.8 * radius, within) << radius << ' ' << side;
                EXPECT_NEAR(std::abs(crossing.point.y), aside, within) << radius << ' ' << side;
            }
        }
    }
}

// The parabolas of both over their chord: two crossings at the distance d from the middle, where the gap is dk d^2 / 2.
TEST(Crossings, OfNearlyParallelCurvesStayTwoHoweverNearTheyLie) {
    for (const double gap : {1.2e-9, 1.5e-9, 1.9e-9, 1e-8, 1e-6, 1e-4}) {
        for (const double bend : {0.02, 1e-3, 1e-4}) {
            const double apart = 2.0 * std::sqrt(2.0 * gap / bend);
            const Curve line = straight({{-10.0, gap}, 0.0}, 20.0);
            // From the inflection on, so that no closed form has it; its curvature at the middle is the bend.
            const Curve clothoid{{{0.0, 0.0}, 0.0}, 20.0, 0.0, 2.0 * bend};
            const Pose middle = poseAt(clothoid, 10.0);
            const Curve turned = moved(clothoid, middle.point, -middle.azimuth, {-middle.point.x, -middle.point.y});
            const Crossings all = crossings(line, turned);
            ASSERT_EQ(all.found.size(), 2u) << gap << ' ' << bend;
            EXPECT_NEAR(all.found[1].alongFirst - all.found[0].alongFirst, apart, 0.02 * apart) << gap << ' ' << bend;
            for (const Crossing& crossing : all.found) {
                EXPECT_FALSE(crossing.tangent) << gap << ' ' << bend;
                EXPECT_NEAR(crossing.point.y, gap, 1e-11);
            }
        }
    }
}

TEST(Crossings, ATouchLiesWhereTheCurvesAreParallel) {
    for (const double sharp : {0.01, -0.01, 0.03}) {
        for (const double bend : {-0.02, 0.02, 0.0}) {
            const Curve clothoid{{{3.0, 4.0}, 0.7}, 80.0, 0.0, sharp};
            const Pose there = poseAt(clothoid, 40.0);
            const Curve even = laidThrough({{}, 60.0, bend, bend}, 25.0, there);
            for (const bool first : {true, false}) {
                const Crossings all = first ? crossings(clothoid, even) : crossings(even, clothoid);
                ASSERT_EQ(all.found.size(), 1u) << sharp << ' ' << bend;
                EXPECT_TRUE(all.found[0].tangent) << sharp << ' ' << bend;
                EXPECT_NEAR(first ? all.found[0].alongFirst : all.found[0].alongSecond, 40.0, 1e-6) << sharp << bend;
                EXPECT_NEAR(first ? all.found[0].alongSecond : all.found[0].alongFirst, 25.0, 1e-6) << sharp << bend;
            }
        }
    }
}

// Thousands of turns that lie apart, or inside of all turns of the other, need a few looks.
TEST(Crossings, OfSpiralsThatLieApartAreKnownToBeNone) {
    const Curve ring{{{0.0, 0.0}, 0.0}, 3000.0 * kTwoPi * 950.0, 1.0 / 1000.0, 1.0 / 900.0};
    const Curve beside{{{9000.0, 0.0}, 0.0}, 3000.0 * kTwoPi * 950.0, 1.0 / 1000.0, 1.0 / 900.0};
    const Curve inside{{{0.0, 900.0}, 0.0}, 3000.0 * kTwoPi * 95.0, 1.0 / 100.0, 1.0 / 90.0};
    for (const auto& [a, b] : {std::pair(ring, beside), std::pair(ring, inside), std::pair(inside, ring)}) {
        const Crossings all = crossings(a, b);
        EXPECT_TRUE(all.complete);
        EXPECT_TRUE(all.found.empty());
    }
}

} // namespace fenmark::curve_test
