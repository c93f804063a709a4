// Whether the points of a route lie on the alignment that was made of it.
#include "host/embedded/route_fit.h"

#include <gtest/gtest.h>

#include <limits>
#include <numbers>
#include <vector>

namespace fenmark::host::embedded {
namespace {

using drawing::Element;
using drawing::ElementType;

constexpr double kTolerance = 0.010; // metres

Element straightEast(double from, double to) {
    Element element;
    element.start = {from, 0.0};
    element.end = {to, 0.0};
    element.length = to - from;
    return element;
}

// A quarter of a circle of 100 m about (to, 100), turning left out of a straight to the east.
Element quarterLeft(double from) {
    Element element;
    element.type = ElementType::Arc;
    element.start = {from, 0.0};
    element.end = {from + 100.0, 100.0};
    element.length = 50.0 * std::numbers::pi;
    element.startRadius = element.endRadius = 100.0;
    return element;
}

TEST(RouteFit, PointsOfMergedStraightsAndOfJointsFit) {
    const std::vector<Element> chain{straightEast(0.0, 100.0), straightEast(100.0, 150.0), quarterLeft(150.0)};
    const std::vector<MdGePoint3d> points{{0, 0, 0},   {0.005, 0.0099, 0}, {40, 0.009, 7}, {60, -0.009, 0}, {100, 0, 0},
                                          {125, 0, 0}, {149.995, 0, -3},   {150, 0, 0},    {250, 100, 0}};
    EXPECT_TRUE(fitsInOrder(chain, points, kTolerance));
    EXPECT_TRUE(fitsInOrder(chain, {}, kTolerance));
    EXPECT_FALSE(fitsInOrder({}, points, kTolerance));
}

TEST(RouteFit, PointsAsideBeyondOrOutOfOrderDoNot) {
    const std::vector<Element> chain{straightEast(0.0, 100.0), quarterLeft(100.0)};
    const double middle = 100.0 / std::numbers::sqrt2;
    for (const MdGePoint3d& point : std::vector<MdGePoint3d>{{40, 0.011, 0},
                                                             {40, -0.011, 0},
                                                             {-0.011, 0, 0},
                                                             {200.011, 100, 0},
                                                             {100.0 + middle, 100.0 - middle, 0}, // within the arc
                                                             {std::numeric_limits<double>::quiet_NaN(), 0, 0}}) {
        EXPECT_FALSE(fitsInOrder(chain, std::vector{point}, kTolerance)) << point.x << " " << point.y;
    }
    EXPECT_FALSE(fitsInOrder(chain, std::vector<MdGePoint3d>{{200, 100, 0}, {0, 0, 0}}, kTolerance));
}

TEST(RouteFit, ElementsThatAreNoPartOfTheAlignmentHoldNoPoint) {
    Element unusable = straightEast(0.0, 100.0);
    unusable.length = std::numeric_limits<double>::infinity();
    EXPECT_FALSE(fitsInOrder(std::vector{unusable}, std::vector<MdGePoint3d>{{0, 0, 0}}, kTolerance));
    EXPECT_TRUE(
        fitsInOrder(std::vector{unusable, straightEast(0.0, 10.0)}, std::vector<MdGePoint3d>{{0, 0, 0}}, kTolerance));
}

TEST(RouteFit, TheEndsLieAsFarOffAsTheFartherOne) {
    const std::vector<Element> chain{straightEast(0.0, 100.0), quarterLeft(100.0)};
    const auto off = [&](const MdGePoint3d& first, const MdGePoint3d& last) {
        return offAtEnds(chain, std::vector<MdGePoint3d>{first, {100, 0, 0}, last});
    };
    EXPECT_EQ(off({0, 0, 0}, {200, 100, 9}), 0.0);
    EXPECT_DOUBLE_EQ(off({3, 4, 0}, {200, 100, 0}), 5.0);
    EXPECT_DOUBLE_EQ(off({3, 4, 0}, {200, 90, 0}), 10.0) << "past its point, and not off it";
    EXPECT_EQ(offAtEnds({}, std::vector<MdGePoint3d>{{3, 4, 0}}), 0.0);
    EXPECT_EQ(offAtEnds(chain, {}), 0.0);
    Element unusable = straightEast(0.0, 100.0);
    unusable.length = std::numeric_limits<double>::infinity();
    const std::vector<MdGePoint3d> ends{{0, 0, 0}, {10, 0, 0}};
    EXPECT_EQ(offAtEnds(std::vector{unusable, straightEast(0.0, 10.0), unusable}, ends), 0.0);
    EXPECT_EQ(offAtEnds(std::vector{unusable}, ends), 0.0) << "it has no ends";
}

TEST(RouteFit, TheFarthestPointIsSoughtAmongThoseFarFromTheirJoints) {
    // Every joint on a line to the east, every point so far beside its joint, and half as far off the alignment.
    std::vector<Element> chain;
    std::vector<MdGePoint3d> points{{0, 0, 0}};
    for (int i = 1; i <= 3 * static_cast<int>(kMostAsked); ++i) {
        chain.push_back(straightEast(i - 1, i));
        points.push_back({static_cast<double>(i), 0, 0});
    }
    std::size_t asked = 0;
    const auto farthest = [&] {
        asked = 0;
        return farthestPoint(chain, points, [&](const MdGePoint3d& point) {
            ++asked;
            return point.y / 2.0;
        });
    };
    EXPECT_EQ(farthest().distance, 0.0);
    EXPECT_EQ(asked, 0U);
    points[700].y = 8.0;
    points[20].y = 6.0;
    points[21].y = 3.0;
    EXPECT_EQ(farthest().distance, 4.0);
    EXPECT_EQ(asked, 2U) << "the third cannot lie farther off than 3 m";
    EXPECT_FALSE(farthest().atLeast);
    points.back().y = 7.0;
    EXPECT_EQ(farthest().distance, 7.0) << "from the end itself";
    points.back().y = points[700].y = 0.0;

    for (std::size_t i = 1; i <= kMostAsked + 1; ++i) {
        points[i].y = 10.0 + 0.001 * static_cast<double>(i);
    }
    const double highest = points[kMostAsked + 1].y;
    EXPECT_EQ(farthest().distance, highest / 2.0);
    EXPECT_TRUE(farthest().atLeast);
    EXPECT_EQ(asked, kMostAsked);
    points[1].y = 0.0;
    EXPECT_FALSE(farthest().atLeast) << "the last one of them is looked at";
    EXPECT_EQ(farthestPoint({}, points, {}).distance, 0.0);
}

} // namespace
} // namespace fenmark::host::embedded
