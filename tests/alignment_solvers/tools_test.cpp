// The inner tools: positions on elements, cuts with circles, common tangents.
#include "alignment/primitives/tools.h"
#include "alignment/tangent/solver_tools.h"

#include "support/exact_chain.h"

#include <fenmark/alignment.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>

namespace {

using namespace fenmark;
using namespace fenmark::alignment;

constexpr double kPi = std::numbers::pi;
constexpr double kPointTolerance = 1e-9;
constexpr double kUnwritten = -777.0;

Calelm straight_from_to(double x0, double y0, double x1, double y1) {
    Calelm s{};
    s.type = element::kStraight;
    s.sx = x0;
    s.sy = y0;
    s.ex = x1;
    s.ey = y1;
    return s;
}

int where(double x, double y, const Calelm& e) {
    const double p[2] = {x, y};
    return elementPosition(p, e);
}

TEST(ElementPosition, TellsBeforeInsideAndBeyondAlongAStraightInAnyDirection) {
    for (const double angle : {0.0, 1e-9, 0.4, kPi / 2, 2.0, kPi, 4.0, 3 * kPi / 2, 6.0}) {
        const double c = std::cos(angle), s = std::sin(angle);
        const Calelm line = straight_from_to(3, 4, 3 + 100 * c, 4 + 100 * s);
        EXPECT_EQ(-1, where(3 - 2e-5 * c, 4 - 2e-5 * s, line)) << angle;
        EXPECT_EQ(0, where(3 - 0.5e-5 * c, 4 - 0.5e-5 * s, line)) << "a last bit at the start decides nothing";
        EXPECT_EQ(0, where(3 + 50 * c, 4 + 50 * s, line)) << angle;
        EXPECT_EQ(0, where(3 + 100 * c, 4 + 100 * s, line)) << "a straight that ends at the point holds it";
        EXPECT_EQ(1, where(3 + 100.00002 * c, 4 + 100.00002 * s, line)) << angle;
    }
}

TEST(ElementPosition, NoStraightAndNoKnownTypeGiveNinetyNine) {
    EXPECT_EQ(99, where(0, 0, straight_from_to(5, 5, 5, 5)));
    Calelm e = straight_from_to(0, 0, 10, 0);
    e.type = element::kClothoid;
    EXPECT_EQ(99, where(5, 0, e));
    e.type = 0;
    EXPECT_EQ(99, where(5, 0, e));
    EXPECT_EQ(99, where(std::numeric_limits<double>::quiet_NaN(), 0, straight_from_to(0, 0, 10, 0)));
}

Calelm arc_from(double dir, double from, double sweep) {
    Calelm arc{};
    arc.type = element::kArc;
    arc.dir = dir;
    arc.par = 100.0;
    arc.k1 = 10.0;
    arc.k2 = 20.0;
    arc.sx = 10 + 100 * std::cos(from);
    arc.sy = 20 + 100 * std::sin(from);
    arc.ex = 10 + 100 * std::cos(from + dir * sweep);
    arc.ey = 20 + 100 * std::sin(from + dir * sweep);
    return arc;
}

TEST(ArcPosition, TellsBeforeInsideAndBeyondInBothSenses) {
    for (const double dir : {1.0, -1.0}) {
        for (const double from : {0.0, 1.0, 3.0, 6.0}) {
            const Calelm arc = arc_from(dir, from, 1.2);
            const auto at = [&](double turn) {
                return where(10 + 100 * std::cos(from + dir * turn), 20 + 100 * std::sin(from + dir * turn), arc);
            };
            EXPECT_EQ(0, at(0.6));
            EXPECT_EQ(0, at(0.0));
            EXPECT_EQ(0, at(1.2));
            EXPECT_EQ(1, at(1.2 + 1e-3));
            EXPECT_EQ(1, at(1.2 + kPi - 1e-3)) << "within half a circle after the end is beyond";
            EXPECT_EQ(-1, at(1.2 + kPi + 1e-3)) << "further on is before";
            EXPECT_EQ(-1, at(-1e-3));
        }
    }
}

TEST(ArcPosition, PointOffTheCircleGivesNinetyNine) {
    const Calelm arc = arc_from(1.0, 0.0, 1.2);
    EXPECT_EQ(99, where(10 + 100.00002, 20, arc));
    EXPECT_EQ(0, where(10 + 100.000005, 20, arc));
}

TEST(SignedDistance, IsPositiveOnTheLeftOfTheCalculationPlane) {
    const double line[4] = {1, 1, 0, 1};
    const double left[2] = {-2, 7}, right[2] = {5, -3};
    EXPECT_NEAR(3.0, signedDistance(left, line), kPointTolerance);
    EXPECT_NEAR(-4.0, signedDistance(right, line), kPointTolerance);
}

TEST(LineCircleRoots, GivesTheFurtherCutFirst) {
    const double line[4] = {-10, 3, 1, 0};
    const double centre[2] = {0, 0};
    double p1[2], p2[2];
    ASSERT_EQ(0, lineCircleRoots(line, centre, 5.0, p1, p2));
    EXPECT_NEAR(4.0, p1[0], kPointTolerance);
    EXPECT_NEAR(-4.0, p2[0], kPointTolerance);
    EXPECT_NEAR(3.0, p1[1], kPointTolerance);
}

TEST(LineCircleRoots, OfADirectionOfAnyLengthAreOnTheCircle) {
    for (const double size : {0.25, 2.0, 10.0}) {
        const double line[4] = {-10, 3, 0.6 * size, -0.8 * size};
        const double centre[2] = {-8, 1};
        double p1[2], p2[2];
        ASSERT_EQ(0, lineCircleRoots(line, centre, 5.0, p1, p2));
        for (const double* p : {p1, p2}) {
            EXPECT_NEAR(5.0, std::hypot(p[0] + 8, p[1] - 1), kPointTolerance) << size;
            EXPECT_NEAR(0.0, 0.8 * (p[0] + 10) + 0.6 * (p[1] - 3), kPointTolerance) << size;
        }
        EXPECT_GT(p1[0], p2[0]);
    }
}

TEST(LineCircleRoots, TouchIsADoublePointAndAMissGivesMinusOne) {
    const double centre[2] = {0, 0};
    double p1[2] = {kUnwritten, kUnwritten}, p2[2] = {kUnwritten, kUnwritten};
    const double miss[4] = {-10, 5.001, 1, 0};
    EXPECT_EQ(-1, lineCircleRoots(miss, centre, 5.0, p1, p2));
    EXPECT_EQ(kUnwritten, p1[0]);
    const double touch[4] = {-10, 5.0 + 1e-12, 1, 0};
    ASSERT_EQ(0, lineCircleRoots(touch, centre, 5.0, p1, p2));
    EXPECT_EQ(p1[0], p2[0]);
    EXPECT_NEAR(0.0, p1[0], kPointTolerance);
}

TEST(CircleCross, GivesBothCutsTheLeftOneFirst) {
    double p1[2], p2[2];
    ASSERT_EQ(0, circleCross(0, 0, 5, 6, 0, 5, p1, p2));
    // Seen from circle 2 to circle 1, along -x, left is -y.
    EXPECT_NEAR(3.0, p1[0], kPointTolerance);
    EXPECT_NEAR(-4.0, p1[1], kPointTolerance);
    EXPECT_NEAR(4.0, p2[1], kPointTolerance);
}

TEST(CircleCross, TouchingCirclesGiveOneAndTheSamePointTwice) {
    for (const double d : {15.0, 5.0}) { // from outside, from inside
        double p1[2], p2[2];
        ASSERT_EQ(1, circleCross(0, 0, 10, d, 0, 5, p1, p2)) << d;
        EXPECT_NEAR(10.0, p1[0], kPointTolerance);
        EXPECT_NEAR(0.0, p1[1], kPointTolerance);
        EXPECT_EQ(p1[0], p2[0]);
        EXPECT_EQ(p1[1], p2[1]);
    }
}

TEST(CircleCross, CirclesApartInsideOneAnotherOrConcentricGiveMinusOneAndZeros) {
    struct Row {
        double r1, d, r2;
    };
    for (const Row& row : {Row{10, 16, 5}, Row{10, 2, 5}, Row{10, 0, 10}, Row{10, 0, 5}}) {
        double p1[2] = {kUnwritten, kUnwritten}, p2[2] = {kUnwritten, kUnwritten};
        EXPECT_EQ(-1, circleCross(0, 0, row.r1, row.d, 0, row.r2, p1, p2)) << row.d;
        EXPECT_EQ(0.0, p1[0]);
        EXPECT_EQ(0.0, p1[1]);
        EXPECT_EQ(0.0, p2[0]);
        EXPECT_EQ(0.0, p2[1]);
    }
    double p1[2], p2[2];
    EXPECT_EQ(-1, circleCross(std::numeric_limits<double>::quiet_NaN(), 0, 1, 0, 0, 1, p1, p2));
}

TEST(CircleCross, SmallCirclesHaveTheirOwnTouchScale) {
    double p1[2], p2[2];
    // W = 16 area^2 of the triangle; for r = 0.5 a touch is below 1.5e-8 / 16.
    EXPECT_EQ(1, circleCross(0, 0, 0.5, 1.0 - 1e-10, 0, 0.5, p1, p2));
    EXPECT_EQ(0, circleCross(0, 0, 0.5, 1.0 - 1e-8, 0, 0.5, p1, p2));
    // From a radius of 1 m on it is below 1.5e-6.
    EXPECT_EQ(1, circleCross(0, 0, 1.0, 2.0 - 1e-8, 0, 1.0, p1, p2));
    EXPECT_EQ(1, circleCross(0, 0, 1.0, 2.0 - 9.2e-8, 0, 1.0, p1, p2));
    EXPECT_EQ(0, circleCross(0, 0, 1.0, 2.0 - 9.6e-8, 0, 1.0, p1, p2));
    EXPECT_EQ(0, circleCross(0, 0, 0.999, 1.998 - 1e-8, 0, 0.999, p1, p2));
}

TEST(LineCircleCross, CountsTheCuts) {
    Calelm arc = arc_from(1.0, 0.0, 1.0);
    arc.k1 = arc.k2 = 0.0;
    arc.par = 5.0;
    double p1[2], p2[2];
    const double a[2] = {-10, 3}, b[2] = {10, 3};
    ASSERT_EQ(2, lineCircleCross(arc, a, b, p1, p2));
    EXPECT_NEAR(4.0, p1[0], kPointTolerance);
    EXPECT_NEAR(-4.0, p2[0], kPointTolerance);
    const double c[2] = {-10, 5}, d[2] = {10, 5};
    ASSERT_EQ(1, lineCircleCross(arc, c, d, p1, p2));
    EXPECT_NEAR(0.0, p1[0], kPointTolerance);
    const double e[2] = {-10, 5.1}, f[2] = {10, 5.1};
    EXPECT_EQ(-1, lineCircleCross(arc, e, f, p1, p2));
    EXPECT_EQ(-1, lineCircleCross(arc, a, a, p1, p2)) << "no line";
}

// A tangent whose feet lie on the circles and whose radii stand square on it.
void expect_tangent(const double* foot1, double x1, double y1, double r1, const double* foot2, double x2, double y2,
                    double r2) {
    const double tx = foot2[0] - foot1[0], ty = foot2[1] - foot1[1];
    EXPECT_NEAR(r1, std::hypot(foot1[0] - x1, foot1[1] - y1), kPointTolerance);
    EXPECT_NEAR(r2, std::hypot(foot2[0] - x2, foot2[1] - y2), kPointTolerance);
    EXPECT_NEAR(0.0, (foot1[0] - x1) * tx + (foot1[1] - y1) * ty, 1e-6);
    EXPECT_NEAR(0.0, (foot2[0] - x2) * tx + (foot2[1] - y2) * ty, 1e-6);
}

double side_of(const double* from, const double* to, double x, double y) {
    return (to[0] - from[0]) * (y - from[1]) - (to[1] - from[1]) * (x - from[0]);
}

TEST(InnerTangent, ALeftArcOnTheFirstCircleHasItOnItsLeft) {
    for (const double dir : {1.0, -1.0}) {
        double foot1[2], foot2[2];
        ASSERT_EQ(0, innerTangent(3, 4, 20, 80, -30, 35, foot1, foot2, dir));
        expect_tangent(foot1, 3, 4, 20, foot2, 80, -30, 35);
        EXPECT_GT(dir * side_of(foot1, foot2, 3, 4), 0.0);
        EXPECT_LT(dir * side_of(foot1, foot2, 80, -30), 0.0);
    }
}

TEST(InnerTangent, OverlappingOrConcentricCirclesGiveMinusOne) {
    double foot1[2] = {kUnwritten, kUnwritten}, foot2[2];
    EXPECT_EQ(-1, innerTangent(0, 0, 20, 30, 0, 11, foot1, foot2, 1.0));
    EXPECT_EQ(-1, innerTangent(0, 0, 0, 0, 0, 0, foot1, foot2, 1.0));
    EXPECT_EQ(kUnwritten, foot1[0]);
    EXPECT_EQ(0, innerTangent(0, 0, 20, 31, 0, 11, foot1, foot2, 1.0)) << "a touch still has one";
}

TEST(OuterTangent, FirstHasBothCirclesOnTheRightAndSecondOnTheLeft) {
    for (const double r2 : {35.0, 10.0, 20.0}) {
        double a1[2], a2[2], b1[2], b2[2];
        ASSERT_EQ(0, outerTangent(3, 4, 20, 80, -30, r2, a1, a2, b1, b2));
        expect_tangent(a1, 3, 4, 20, a2, 80, -30, r2);
        expect_tangent(b1, 3, 4, 20, b2, 80, -30, r2);
        EXPECT_LT(side_of(a1, a2, 3, 4), 0.0);
        EXPECT_LT(side_of(a1, a2, 80, -30), 0.0);
        EXPECT_GT(side_of(b1, b2, 3, 4), 0.0);
        EXPECT_GT(side_of(b1, b2, 80, -30), 0.0);
    }
}

TEST(OuterTangent, CircleInsideTheOtherGivesMinusOneWhicheverIsLarger) {
    double a1[2] = {kUnwritten, kUnwritten}, a2[2], b1[2], b2[2];
    EXPECT_EQ(-1, outerTangent(0, 0, 5, 10, 0, 20, a1, a2, b1, b2));
    EXPECT_EQ(-1, outerTangent(0, 0, 20, 10, 0, 5, a1, a2, b1, b2));
    EXPECT_EQ(-1, outerTangent(0, 0, 5, 0, 0, 5, a1, a2, b1, b2)) << "concentric";
    EXPECT_EQ(kUnwritten, a1[0]);
}

TEST(GivenElements, AreOfTheirTypeFiniteAndOfASize) {
    constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    const Calelm arc = arc_from(1.0, 0.0, 1.2);
    const Calelm line = straight_from_to(3, 4, 10, 4);
    EXPECT_TRUE(isGivenArc(arc));
    EXPECT_TRUE(isGivenStraight(line));
    const auto with = [](Calelm e, auto change) {
        change(e);
        return e;
    };
    for (const std::int16_t type : {std::int16_t{0}, element::kStraight, element::kClothoid}) {
        EXPECT_FALSE(isGivenArc(with(arc, [&](Calelm& e) { e.type = type; }))) << type;
    }
    for (const std::int16_t type : {std::int16_t{0}, element::kArc, element::kClothoid}) {
        EXPECT_FALSE(isGivenStraight(with(line, [&](Calelm& e) { e.type = type; }))) << type;
    }
    for (const double bad : {kNan, kInfinity, -kInfinity}) {
        for (double Calelm::*field :
             {&Calelm::sx, &Calelm::sy, &Calelm::ex, &Calelm::ey, &Calelm::k1, &Calelm::k2, &Calelm::par}) {
            EXPECT_FALSE(isGivenArc(with(arc, [&](Calelm& e) { e.*field = bad; }))) << bad;
        }
        for (double Calelm::*field : {&Calelm::sx, &Calelm::sy, &Calelm::ex, &Calelm::ey}) {
            EXPECT_FALSE(isGivenStraight(with(line, [&](Calelm& e) { e.*field = bad; }))) << bad;
        }
    }
    for (const double size : {0.0, -100.0}) {
        EXPECT_FALSE(isGivenArc(with(arc, [&](Calelm& e) { e.par = size; })));
    }
    EXPECT_TRUE(isGivenArc(with(arc, [](Calelm& e) { e.par = 1e-3; })));
    for (const double dir : {0.0, 0.5, 2.0, kNan}) {
        EXPECT_FALSE(isGivenArc(with(arc, [&](Calelm& e) { e.dir = dir; }))) << dir;
    }
    EXPECT_TRUE(isGivenStraight(straight_from_to(0, 0, 1.1e-7, 0)));
    EXPECT_FALSE(isGivenStraight(straight_from_to(0, 0, 0.9e-7, 0)));
}

TEST(CentresBesideLine, LieAtTheOffsetOnBothSidesTheLeftAndTheNearerFirst) {
    for (const double angle : {0.0, 0.7, 2.9, 4.0}) {
        const Vec u{std::cos(angle), std::sin(angle)};
        const CalcRecord line = straightBetween({100, -50}, Vec{100, -50} + 30.0 * u);
        const Vec centre = Vec{100, -50} + 40.0 * u + 5.0 * Vec{-u.y, u.x};
        const Candidates found = centresBesideLine(line, 20.0, centre, 33.0);
        ASSERT_EQ(4U, found.count);
        for (std::size_t i = 0; i < found.count; ++i) {
            const Vec way = found.points[i] - Vec{100, -50};
            EXPECT_NEAR(i < 2 ? 20.0 : -20.0, plane::cross(u, way), kPointTolerance) << angle << ' ' << i;
            EXPECT_NEAR(33.0, plane::distance(found.points[i], centre), kPointTolerance) << angle << ' ' << i;
        }
        for (const std::size_t i : {0U, 2U}) {
            EXPECT_LT(plane::distance(found.points[i], {100, -50}), plane::distance(found.points[i + 1], {100, -50}));
        }
        EXPECT_EQ(2U, centresBesideLine(line, 29.0, centre, 33.0).count) << "out of reach on the right";
    }
}

// Half the distance of the exact cuts is 1 um to some dm; circleCross takes the nearer ones for a touch.
TEST(CentresBetween, AreExactHoweverNearToATouchTheCirclesAre) {
    for (const double radius : {80.0, 400.0, 3000.0}) {
        for (const double half : {1e-6, 1e-3, 0.01, 0.1, 0.5}) {
            const double r2 = 0.6 * radius;
            const double D = std::sqrt(radius * radius - half * half) + std::sqrt(r2 * r2 - half * half);
            const Vec c1{7, -3};
            const Vec c2 = c1 + D * Vec{0.8, 0.6};
            const Candidates found = centresBetween(c1, radius, c2, r2);
            ASSERT_GE(found.count, 2U) << radius << ' ' << half;
            for (std::size_t i = found.count - 2; i < found.count; ++i) {
                EXPECT_NEAR(radius, plane::distance(found.points[i], c1), 1e-8) << radius << ' ' << half;
                EXPECT_NEAR(r2, plane::distance(found.points[i], c2), 1e-8) << radius << ' ' << half;
            }
            EXPECT_NEAR(2.0 * half, plane::distance(found.points[found.count - 2], found.points[found.count - 1]),
                        1e-3 * half + 3e-6);
        }
        // Apart by so little that the square distance misses by less than the length step.
        const double r2 = 0.6 * radius;
        const Candidates missed = centresBetween({0, 0}, radius, {radius + r2 + 2e-9, 0}, r2);
        ASSERT_GE(missed.count, 1U) << radius;
        for (const Vec centre : missed) {
            EXPECT_NEAR(radius, centre.x, 1e-8) << radius;
            EXPECT_EQ(0.0, centre.y) << radius;
        }
        EXPECT_EQ(0U, centresBetween({0, 0}, radius, {radius + r2 + 0.01, 0}, r2).count) << radius;
    }
}

} // namespace
