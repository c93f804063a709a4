// The host geometry that the drawing output calls directly.
#include "host/boundary/geometry.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>

namespace fenmark {
namespace {

using host::MdGeContext;
using host::MdGeLine3d;
using host::MdGePoint3d;

constexpr double kAngleTolerance = 1e-15; // radians
constexpr double kPointTolerance = 1e-9;  // metres

TEST(HostPoints, AreEqualWithinTheToleranceInAllThreeCoordinates) {
    const MdGePoint3d point{100.0, 200.0, 5.0};
    const double tolerance = MdGeContext::gTol;
    EXPECT_EQ(tolerance, 1e-10);
    EXPECT_TRUE(point.isEqualTo({100.0, 200.0, 5.0}, tolerance));
    EXPECT_TRUE((MdGePoint3d{0.0, 0.0, 0.0}).isEqualTo({tolerance, -tolerance, tolerance}, tolerance));
    EXPECT_FALSE((MdGePoint3d{0.0, 0.0, 0.0}).isEqualTo({2.0 * tolerance, 0.0, 0.0}, tolerance));
    EXPECT_FALSE(point.isEqualTo({100.0, 200.0, 5.001}, tolerance)) << "heights count";
    EXPECT_FALSE(point.isEqualTo({100.0, std::nan(""), 5.0}, tolerance));
}

TEST(HostAngles, RunAnticlockwiseFromPlusXInOneTurn) {
    const MdGePoint3d o{10.0, 20.0, 3.0};
    EXPECT_EQ(host::mdutAngle(o, {11.0, 20.0, 9.0}), 0.0);
    EXPECT_NEAR(host::mdutAngle(o, {10.0, 21.0, 3.0}), std::numbers::pi / 2, kAngleTolerance);
    EXPECT_NEAR(host::mdutAngle(o, {9.0, 20.0, 3.0}), std::numbers::pi, kAngleTolerance);
    EXPECT_NEAR(host::mdutAngle(o, {10.0, 19.0, 3.0}), 1.5 * std::numbers::pi, kAngleTolerance);
    EXPECT_EQ(host::mdutAngle(o, o), 0.0);
}

TEST(HostAngles, NeverReachTheFullTurn) {
    const double angle = host::mdutAngle({0.0, 0.0, 0.0}, {1.0, -1e-300, 0.0});
    EXPECT_EQ(angle, 0.0);
    EXPECT_LT(host::mdutAngle({0.0, 0.0, 0.0}, {1.0, -1e-10, 0.0}), 2.0 * std::numbers::pi);
    EXPECT_FALSE(std::signbit(host::mdutAngle({0.0, 0.0, 0.0}, {1.0, -0.0, 0.0})));
}

TEST(HostAngles, DegreesConvertInTheOrderOfTheirOperations) {
    EXPECT_EQ(host::degreesToRadians(1.0), 1.0 / 180.0 * 3.141592653589793);
    EXPECT_EQ(host::radiansToDegrees(0.3), 0.3 * 180.0 / 3.141592653589793);
}

TEST(HostPolar, MovesInThePlanAndKeepsTheHeight) {
    const MdGePoint3d moved = host::mdutPolar({1.0, 2.0, 7.5}, std::numbers::pi / 6, 10.0);
    EXPECT_NEAR(moved.x, 1.0 + 10.0 * std::sqrt(3.0) / 2.0, kPointTolerance);
    EXPECT_NEAR(moved.y, 7.0, kPointTolerance);
    EXPECT_EQ(moved.z, 7.5);
}

TEST(HostLines, MeetBeyondThePointsThatSetThem) {
    const MdGeLine3d first({0.0, 0.0, 0.0}, {1.0, 1.0, 0.0});
    const MdGeLine3d second({100.0, 0.0, 0.0}, {99.0, 1.0, 0.0});
    MdGePoint3d point;
    ASSERT_TRUE(first.intersectWith(second, point, MdGeContext::gTol));
    EXPECT_NEAR(point.x, 50.0, kPointTolerance);
    EXPECT_NEAR(point.y, 50.0, kPointTolerance);
    EXPECT_EQ(point.z, 0.0);
}

TEST(HostLines, MeetAtSurveyCoordinatesOfOneHeight) {
    const MdGePoint3d pi{60295.494, -39525.623, 12.3};
    const MdGeLine3d first(host::mdutPolar(pi, 1.0, 300.0), host::mdutPolar(pi, 1.0, 290.0));
    const MdGeLine3d second(host::mdutPolar(pi, 1.2, 300.0), host::mdutPolar(pi, 1.2, 310.0));
    MdGePoint3d point;
    ASSERT_TRUE(first.intersectWith(second, point, MdGeContext::gTol));
    EXPECT_NEAR(point.x, pi.x, 1e-7);
    EXPECT_NEAR(point.y, pi.y, 1e-7);
    EXPECT_NEAR(point.z, pi.z, kPointTolerance);
}

TEST(HostLines, ThatDoNotMeetLeaveThePointAsItWas) {
    const MdGePoint3d before{1.0, 2.0, 3.0};
    MdGePoint3d point = before;
    const MdGeLine3d line({0.0, 0.0, 0.0}, {10.0, 0.0, 0.0});
    const MdGeLine3d parallel({0.0, 5.0, 0.0}, {10.0, 5.0, 0.0});
    const MdGeLine3d higher({5.0, -5.0, 0.001}, {5.0, 5.0, 0.001});
    const MdGeLine3d pointLike({5.0, 5.0, 0.0}, {5.0, 5.0, 0.0});
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const MdGeLine3d notANumber({nan, 0.0, 0.0}, {1.0, 1.0, 0.0});
    for (const MdGeLine3d& other : {parallel, higher, pointLike, line, notANumber, MdGeLine3d()}) {
        EXPECT_FALSE(line.intersectWith(other, point, MdGeContext::gTol));
        EXPECT_EQ(point, before);
    }
}

TEST(HostLines, OfMillimetresMeetAsLongOnes) {
    for (const double length : {1e-6, 0.005, 0.05, 500.0}) {
        const MdGeLine3d first({3.0, 4.0, 0.0}, {3.0, 4.0 + length, 0.0});
        const MdGeLine3d second({9.0, 7.0, 0.0}, {9.0 + length, 7.0, 0.0});
        MdGePoint3d point;
        ASSERT_TRUE(first.intersectWith(second, point, MdGeContext::gTol)) << length;
        EXPECT_NEAR(point.x, 3.0, kPointTolerance) << length;
        EXPECT_NEAR(point.y, 7.0, kPointTolerance) << length;
    }
}

TEST(HostLines, MeetUpToTheirDistanceWhateverTheirAngle) {
    for (const double angle : {0.01, 0.5, std::numbers::pi / 2, 3.0}) {
        for (const double distance : {-1.5e-10, -0.9e-10, 0.9e-10, 1.5e-10}) {
            const MdGeLine3d first({0.0, 0.0, 0.0}, {1.0, 0.0, 0.0});
            const MdGeLine3d second({0.0, 0.0, distance}, {std::cos(angle), std::sin(angle), distance});
            MdGePoint3d point;
            EXPECT_EQ(first.intersectWith(second, point, MdGeContext::gTol), std::abs(distance) < 1e-10)
                << angle << ' ' << distance;
        }
    }
}

TEST(HostLines, ThatMeetBeyondTheNumbersDoNotMeet) {
    constexpr double kFar = 1.7e308;
    const MdGePoint3d before{1.0, 2.0, 3.0};
    MdGePoint3d point = before;
    const MdGeLine3d slant({0.0, 0.0, 0.0}, {1.0, 1.0, 0.0});
    const MdGeLine3d upright({kFar, 0.0, 0.0}, {kFar, 1.0, 0.0});
    EXPECT_FALSE(slant.intersectWith(upright, point, MdGeContext::gTol));
    EXPECT_EQ(point, before);
}

TEST(HostLines, MeetInSpaceInEveryDirection) {
    const MdGePoint3d at{3.0, -2.0, 5.0};
    const MdGePoint3d ways[] = {{1.0, 2.0, 3.0},   {-2.0, 1.0, 0.5}, {0.5, -3.0, 2.0},
                                {4.0, 0.25, -1.0}, {0.0, 0.0, 1.0},  {-1.0, -1.0, 4.0}};
    for (const MdGePoint3d& a : ways) {
        for (const MdGePoint3d& b : ways) {
            const MdGeLine3d first({at.x - 2.0 * a.x, at.y - 2.0 * a.y, at.z - 2.0 * a.z},
                                   {at.x - a.x, at.y - a.y, at.z - a.z});
            const MdGeLine3d second({at.x + 3.0 * b.x, at.y + 3.0 * b.y, at.z + 3.0 * b.z},
                                    {at.x + b.x, at.y + b.y, at.z + b.z});
            MdGePoint3d point;
            ASSERT_EQ(first.intersectWith(second, point, 1e-9), &a != &b);
            if (&a != &b) {
                EXPECT_TRUE(point.isEqualTo(at, kPointTolerance)) << point.x << ' ' << point.y << ' ' << point.z;
            }
        }
    }
}

TEST(HostLines, MeetInSpace) {
    const MdGeLine3d first({0.0, 0.0, 0.0}, {1.0, 1.0, 1.0});
    const MdGeLine3d second({4.0, 0.0, 2.0}, {3.0, 1.0, 2.0});
    MdGePoint3d point;
    ASSERT_TRUE(first.intersectWith(second, point, MdGeContext::gTol));
    EXPECT_NEAR(point.x, 2.0, kPointTolerance);
    EXPECT_NEAR(point.y, 2.0, kPointTolerance);
    EXPECT_NEAR(point.z, 2.0, kPointTolerance);
}

} // namespace
} // namespace fenmark
