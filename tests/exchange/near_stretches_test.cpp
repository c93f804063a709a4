// Which stretches of an alignment lie near a place, and how much is looked at to find them.
#include "exchange/plan/near_stretches.h"
#include "sample_drawing.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <utility>
#include <vector>

namespace fenmark::exchange {
namespace {

using Stretch = std::pair<double, double>; // stations from and to

constexpr double kShortest = 80.0;         // metres
constexpr std::size_t kEnough = 1'000'000; // looks

struct Found {
    std::vector<Stretch> stretches;
    std::size_t looks = 0;
    bool complete = false;
};

drawing::Extent square(const host::PlanPoint& middle, double side) {
    drawing::Extent extent;
    extent.add(middle.x - side / 2.0, middle.y - side / 2.0);
    extent.add(middle.x + side / 2.0, middle.y + side / 2.0);
    return extent;
}

Found stretchesIn(const drawing::Extent& place, const drawing::AlignmentGeometry& geometry,
                  std::size_t looks = kEnough) {
    Found found;
    std::size_t left = looks;
    const auto isNear = [&](const drawing::Extent& box) {
        return box.minX <= place.maxX && box.maxX >= place.minX && box.minY <= place.maxY && box.maxY >= place.minY;
    };
    const auto take = [&](double from, double to) {
        found.stretches.emplace_back(from, to);
        return true;
    };
    found.complete = NearStretches{isNear, take, kShortest, &left}.find(geometry);
    found.looks = looks - left;
    return found;
}

// A straight of 24 km, and a clothoid that winds up behind it.
class StretchesOf : public ::testing::Test {
  protected:
    StretchesOf() {
        addChain(drawing, {{ElementType::Straight, 24'000.0, kStraight, kStraight, false},
                           {ElementType::Clothoid, 90'000.0, kStraight, 30.0, true}});
        drawing.setStartStation(0, 1000.0);
    }
    const drawing::AlignmentGeometry& geometry() const { return drawing.geometry(0); }

    Drawing drawing;
};

TEST_F(StretchesOf, NearAPlaceAreFoundWithoutWalkingTheWholeAlignment) {
    for (const double station : {1000.0, 9000.0, 17'530.0, 24'990.0}) {
        const Found found = stretchesIn(square(*geometry().pointAt(station), 160.0), geometry());
        EXPECT_TRUE(found.complete);
        double length = 0.0;
        bool within = false;
        for (const auto& [from, to] : found.stretches) {
            EXPECT_LE(to - from, kShortest);
            length += to - from;
            within = within || (from <= station && station <= to);
        }
        EXPECT_TRUE(within) << station;
        EXPECT_LE(length, 160.0 * std::sqrt(2.0) + 4.0 * kShortest) << station;
        EXPECT_LE(found.looks, 60U) << station;
    }
    const Found nothing = stretchesIn(square({-9000.0, 60'000.0}, 160.0), geometry());
    EXPECT_TRUE(nothing.complete);
    EXPECT_TRUE(nothing.stretches.empty());
}

TEST_F(StretchesOf, AreInOrderAndLeaveNoStationNearThePlaceOut) {
    std::mt19937 random(20'260'411);
    std::uniform_real_distribution<double> anywhere(geometry().startStation(), geometry().endStation());
    for (int i = 0; i < 40; ++i) {
        const drawing::Extent place = square(*geometry().pointAt(anywhere(random)), 160.0);
        const Found found = stretchesIn(place, geometry());
        ASSERT_TRUE(found.complete);
        auto stretch = found.stretches.begin();
        for (double station = geometry().startStation(); station <= geometry().endStation(); station += 7.0) {
            const auto at = geometry().pointAt(station);
            if (!at || at->x < place.minX || at->x > place.maxX || at->y < place.minY || at->y > place.maxY) {
                continue;
            }
            while (stretch != found.stretches.end() && stretch->second < station) {
                ++stretch;
            }
            ASSERT_TRUE(stretch != found.stretches.end() && stretch->first <= station) << i << ' ' << station;
        }
    }
}

TEST_F(StretchesOf, EndWithTheLooksOrWhenNoMoreAreTaken) {
    const drawing::Extent everything = square({0.0, 0.0}, 1e6);
    const Found all = stretchesIn(everything, geometry());
    EXPECT_TRUE(all.complete);
    EXPECT_GE(all.stretches.size(), 114'000 / kShortest);
    const Found some = stretchesIn(everything, geometry(), all.looks / 2);
    EXPECT_FALSE(some.complete);
    EXPECT_EQ(some.looks, all.looks / 2);
    EXPECT_LT(some.stretches.size(), all.stretches.size());
    EXPECT_TRUE(stretchesIn(everything, geometry(), all.looks).complete);
    std::size_t left = kEnough;
    int taken = 0;
    const NearStretches three{[](const drawing::Extent&) { return true; },
                              [&taken](double, double) { return ++taken < 3; }, kShortest, &left};
    EXPECT_FALSE(three.find(geometry()));
    EXPECT_EQ(taken, 3);
}

} // namespace
} // namespace fenmark::exchange
