// What holds between a curve and its copies, and between one way to a pose and another.
#include "curve/chain.h"
#include "support/exact_chain.h"
#include "support_curve.h"

#include <algorithm>
#include <span>

namespace fenmark::curve_test {

namespace {

constexpr double kShare = 4e-13; // of the length, and of what the turn allows

double allowed(const Curve& curve) {
    return kShare * curve.length * (1.0 + 1e-2 * turnOf(curve)) + 1e-9 * 1e-1;
}

} // namespace

TEST(Identities, PlainAndPreparedCurvesAgree) {
    RandomCurves random(21);
    for (int i = 0; i < cases(2000); ++i) {
        const Curve curve = random.curve(1e4);
        const PreparedCurve prepared(curve);
        for (const double share : {0.0, 1e-6, 0.3, 0.9, 1.0, 1.4, -0.3}) {
            const double along = share * curve.length;
            ASSERT_LE(distance(pointAt(curve, along), prepared.pointAt(along)), allowed(curve))
                << i << testing::PrintToString(curve);
            const Frame frame = prepared.frameAt(along);
            ASSERT_EQ(frame.point, prepared.pointAt(along));
            const double azimuth = azimuthAt(curve, along);
            ASSERT_NEAR(frame.tangent.x, std::cos(azimuth), 1e-14 * (4.0 + turnOf(curve))) << i;
            ASSERT_NEAR(frame.tangent.y, std::sin(azimuth), 1e-14 * (4.0 + turnOf(curve))) << i;
        }
        ASSERT_EQ(prepared.pointAt(0.0), curve.start.point) << i << testing::PrintToString(curve);
        ASSERT_EQ(pointAt(curve, 0.0), curve.start.point) << i;
    }
}

// Where a prepared curve's way to a point no longer serves so far beyond its ends, the plain way does.
TEST(Identities, PlainAndPreparedCurvesAgreeFarBeyondTheirEnds) {
    for (const double first : {0.01, -0.01}) {
        const Curve egg{{{10.0, 20.0}, 0.4}, 20.0, first, first * (1.0 - 1.0 / 60.0)};
        const PreparedCurve prepared(egg);
        for (const double lengths : {-3.0, 2.0, 60.0, 110.0, 118.0, 119.0, 119.9, 130.0}) {
            const double along = lengths * egg.length;
            ASSERT_LE(distance(pointAt(egg, along), prepared.pointAt(along)), 1e-9) << lengths;
            const exact::Pose there =
                exact::advance({10.0L, 20.0L, 0.4L}, -static_cast<exact::Real>(first),
                               (first - static_cast<exact::Real>(egg.endCurvature)) / 20.0L, along);
            ASSERT_LE(distance(pointAt(egg, along), {static_cast<double>(there.x), static_cast<double>(there.y)}), 1e-9)
                << lengths;
        }
    }
}

// Whatever number is taken for a special case, round ones meet it.
TEST(Identities, CurvesOfRoundNumbersAreExactHoweverTheyAreAsked) {
    const double curvatures[] = {0.0, 0.01, -0.01, 0.1, -0.1, 0.5, 1.0, -1.0, 1.1, 2.0, 5.5};
    for (const double length : {0.01, 0.1, 1.0, 1.1, 2.0, 10.0}) {
        for (const double first : curvatures) {
            for (const double last : curvatures) {
                const Curve curve{{{0.0, 0.0}, 0.5}, length, first, last};
                const PreparedCurve prepared(curve);
                Chain chain;
                ASSERT_EQ(chain.set(std::span(&curve, 1)), ChainStatus::Ok);
                for (const double share : {0.1, 0.5, 1.0}) {
                    const double along = share * length;
                    const exact::Pose there = exact::advance({0.0L, 0.0L, 0.5L}, -static_cast<exact::Real>(first),
                                                             (first - static_cast<exact::Real>(last)) / length, along);
                    const Point expected{static_cast<double>(there.x), static_cast<double>(there.y)};
                    const double within = 1e-12 * length;
                    ASSERT_LE(distance(pointAt(curve, along), expected), within) << testing::PrintToString(curve);
                    ASSERT_LE(distance(prepared.pointAt(along), expected), within) << testing::PrintToString(curve);
                    ASSERT_LE(distance(prepared.frameAt(along).point, expected), within)
                        << testing::PrintToString(curve);
                    ASSERT_LE(distance(*chain.pointAt(along), expected), within) << testing::PrintToString(curve);
                    ASSERT_NEAR(wrappedTurn(azimuthAt(curve, along) - static_cast<double>(there.azimuth)), 0.0, 1e-12);
                }
            }
        }
    }
}

TEST(Identities, WithoutALengthThereIsNoTurn) {
    for (const double length : {0.0, 1e-300, 0.1, 1.0}) {
        const Curve curve{{{0.0, 0.0}, 0.5}, length, 0.25, 0.75};
        EXPECT_EQ(turnAt(curve, 0.0), 0.0) << length;
        EXPECT_NEAR(turnAt(curve, length), 0.5 * length, 1e-16) << length;
        EXPECT_NEAR(turnAt(curve, 0.5 * length), 0.1875 * length, 1e-16) << length;
        EXPECT_NEAR(distance(endPose(curve).point, {}), length, 0.02 * length) << length;
    }
}

TEST(Identities, SplitAndJoined) {
    RandomCurves random(22);
    for (int i = 0; i < cases(2000); ++i) {
        const Curve curve = random.curve(1e4);
        const double at = random.uniform(0.0, 1.0) * curve.length;
        const auto [first, second] = split(curve, at);
        ASSERT_EQ(first.start, curve.start);
        ASSERT_EQ(first.length + second.length, curve.length - at + at);
        ASSERT_EQ(second.endCurvature, curve.endCurvature);
        ASSERT_LE(distance(endPose(second).point, endPose(curve).point), allowed(curve))
            << testing::PrintToString(curve);
        const double beyond = at + 0.5 * (curve.length - at);
        ASSERT_LE(distance(pointAt(second, beyond - at), pointAt(curve, beyond)), allowed(curve));
        ASSERT_LE(distance(pointAt(first, 0.5 * at), pointAt(curve, 0.5 * at)), allowed(curve));
    }
}

TEST(Identities, ReversedTwiceAndMirroredTwice) {
    RandomCurves random(23);
    for (int i = 0; i < cases(2000); ++i) {
        const Curve curve = random.curve(1e4);
        const Curve back = reversed(curve);
        ASSERT_LE(distance(endPose(back).point, curve.start.point), allowed(curve))
            << i << testing::PrintToString(curve);
        ASSERT_LE(distance(pointAt(back, 0.3 * curve.length), pointAt(curve, curve.length - 0.3 * curve.length)),
                  allowed(curve));
        const Curve again = reversed(back);
        ASSERT_EQ(again.startCurvature, curve.startCurvature);
        ASSERT_NEAR(std::remainder(again.start.azimuth - curve.start.azimuth, kTwoPi), 0.0,
                    1e-14 * (4.0 + turnOf(curve)));

        const Curve mirrored = mirroredAboutChord(curve);
        ASSERT_EQ(mirrored.start.point, curve.start.point);
        const Point end = endPose(curve).point;
        ASSERT_LE(distance(endPose(mirrored).point, end), 10.0 * allowed(curve)) << i << testing::PrintToString(curve);
        const Curve twice = mirroredAboutChord(mirrored);
        ASSERT_EQ(twice.endCurvature, curve.endCurvature);
        ASSERT_LE(distance(pointAt(twice, 0.5 * curve.length), pointAt(curve, 0.5 * curve.length)),
                  10.0 * allowed(curve));

        const Pose axis = random.pose(1e3);
        const Curve across = mirroredAboutAxis(curve, axis);
        const Curve home = mirroredAboutAxis(across, axis);
        ASSERT_LE(distance(home.start.point, curve.start.point), 1e-10);
        ASSERT_LE(distance(endPose(home).point, end), 1e-9);
    }
}

TEST(Identities, ParallelThereAndBack) {
    RandomCurves random(24);
    for (int i = 0; i < cases(1000); ++i) {
        const Curve circle = arc(random.pose(1e3), random.scaled(1.0, 500.0), random.sign() / random.scaled(20.0, 1e3));
        const double offset = random.uniform(-15.0, 15.0);
        const auto there = parallelCurve(circle, offset);
        ASSERT_TRUE(there);
        const auto back = parallelCurve(*there, -offset);
        ASSERT_TRUE(back);
        ASSERT_NEAR(back->length, circle.length, 1e-11);
        ASSERT_LE(distance(endPose(*back).point, endPose(circle).point), 1e-10);
        ASSERT_LE(distance(endPose(*there).point, parallelPose(circle, circle.length, offset).point), 1e-10);
    }
    EXPECT_FALSE(parallelCurve(arc({{0.0, 0.0}, 0.0}, 10.0, 0.1), 10.0));
    EXPECT_FALSE(parallelCurve({{{0.0, 0.0}, 0.0}, 10.0, 0.0, 0.1}, 1.0));
}

TEST(Identities, TheLengthIsThatOfItsPoints) {
    // The derivative of the point by the length is the unit tangent.
    RandomCurves random(25);
    for (int i = 0; i < cases(500); ++i) {
        const Curve curve = random.curve(0.0);
        const PreparedCurve prepared(curve);
        const double along = random.uniform(0.1, 0.9) * curve.length;
        const double h = 1e-4 / (1.0 + turnOf(curve)) * curve.length;
        const Point a = prepared.pointAt(along - h);
        const Point b = prepared.pointAt(along + h);
        const Frame frame = prepared.frameAt(along);
        ASSERT_NEAR((b.x - a.x) / (2.0 * h), frame.tangent.x, 1e-6) << testing::PrintToString(curve);
        ASSERT_NEAR((b.y - a.y) / (2.0 * h), frame.tangent.y, 1e-6) << testing::PrintToString(curve);
    }
}

} // namespace fenmark::curve_test
