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

} // namespace
} // namespace fenmark::host::embedded
