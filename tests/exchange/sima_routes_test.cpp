// The limits by which an alignment becomes the points and records of a route.
#include "exchange/sima_routes.h"
#include "sample_drawing.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <numbers>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace fenmark::exchange {
namespace {

constexpr double kNoRadius = drawing::kInfiniteRadius;

struct Route {
    std::size_t steps = 0;
    std::size_t added = 0; // points
    bool merged = false;
    std::vector<std::string> records; // but for straights

    bool operator==(const Route&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Route& route) {
    out << route.steps << " steps, " << route.added << " points added" << (route.merged ? ", merged" : "");
    for (const std::string& record : route.records) {
        out << ' ' << record;
    }
    return out;
}

// The elements as an alignment of a drawing that has coordinate points at some places.
Route routeOf(const std::vector<Element>& elements, const std::vector<PlanPoint>& places,
              const std::vector<double>& heights = {}) {
    Drawing drawing;
    drawing.addTable("JSIMA_V3_Point");
    const std::size_t road = drawing.addAlignment(drawing.addSite("S"), "C", "0", "", "");
    for (const Element& element : elements) {
        drawing.addElement(road, element);
    }
    int number = 0;
    for (const PlanPoint& place : places) {
        const double height = heights.empty() ? 0.0 : heights[drawing.entityCount()];
        drawing.addPoint({place.x, place.y, height}, 0);
        drawing.setRow(drawing.entityCount() - 1, 0, ++number, "P", "座標", "a.sim");
    }
    SimaPointTable points(drawing);
    const std::optional<SimaRoute> made = simaRouteOf(drawing.alignment(road), points);
    Route route{made->steps.size(), points.added(), made->mergedStraights, {}};
    for (const SimaRoute::Step& step : made->steps) {
        if (!step.record.empty()) {
            route.records.push_back(step.record);
        }
    }
    return route;
}

Element straightFrom(const PlanPoint& start, double direction, double length) {
    Element element;
    element.start = start;
    element.direction = direction;
    element.length = length;
    element.end = drawing::poseOnElement(element, length).point;
    return element;
}

TEST(SimaRoutes, APointIsThatOfAJointWithinATenthOfAMicrometre) {
    const Element straight = straightFrom({10.0, 20.0}, 0.0, 40.0);
    for (const double away : {0.9e-7, 1.1e-7}) {
        const bool same = away < 1e-7;
        const Route wanted{2, same ? 0U : 1U, false, {}};
        EXPECT_EQ(routeOf({straight}, {{10.0, 20.0}, {50.0 + away, 20.0}}), wanted) << away;
        EXPECT_EQ(routeOf({straight}, {{10.0, 20.0 - away}, {50.0, 20.0}}), wanted) << away;
    }
}

TEST(SimaRoutes, AGapOfMoreThanAMicrometreIsFilled) {
    const Element first = straightFrom({0.0, 0.0}, 0.0, 10.0);
    for (const double gap : {0.9e-6, 1.1e-6}) {
        const bool filled = gap > 1e-6;
        Route wanted{filled ? 4U : 3U, filled ? 4U : 3U, !filled, {}};
        EXPECT_EQ(routeOf({first, straightFrom({10.0, gap}, 0.0, 10.0)}, {}), wanted) << gap;
        wanted.merged = true; // all in one line
        EXPECT_EQ(routeOf({first, straightFrom({10.0 + gap, 0.0}, 0.0, 10.0)}, {}), wanted) << gap;
    }
}

// A reader makes one of two straights that differ by a degree at most, without looking across the seam of a whole turn.
TEST(SimaRoutes, StraightsThatAReaderMergesAreKnown) {
    const double degree = std::numbers::pi / 180.0;
    const auto merged = [](double before, double behind) {
        const Element first = straightFrom({0.0, 0.0}, before, 10.0);
        return routeOf({first, straightFrom(first.end, behind, 10.0)}, {}).merged;
    };
    for (const double direction : {0.5, 2.0, 4.0, 6.0, -0.5, -3.0}) {
        for (const double side : {-1.0, 1.0}) {
            EXPECT_TRUE(merged(direction, direction + side * 0.99999 * degree)) << direction;
            EXPECT_FALSE(merged(direction, direction + side * 1.00001 * degree)) << direction;
            EXPECT_TRUE(merged(direction, direction + side * 2.0 * std::numbers::pi)) << direction;
        }
    }
    EXPECT_FALSE(merged(0.2 * degree, -0.2 * degree)) << "across the seam";
    EXPECT_TRUE(merged(0.0, 0.2 * degree)) << "the seam itself is the begin of a turn";
    EXPECT_FALSE(merged(0.0, -0.2 * degree));
    const Element first = straightFrom({0.0, 0.0}, 0.0, 10.0);
    const Element arc = following(first, ElementType::Arc, 1.0, 1000.0, 1000.0, false);
    EXPECT_FALSE(routeOf({first, arc, straightFrom(arc.end, arc.endDirection(), 10.0)}, {}).merged);
}

TEST(SimaRoutes, AnArcIsCutWhereItTurnsByMoreThan171Degrees) {
    const double widest = 0.95 * std::numbers::pi;
    const Element first = straightFrom({0.0, 0.0}, 0.0, 10.0);
    for (const int parts : {1, 2, 3}) {
        for (const double share : {-1e-6, 1e-6}) {
            const Element arc =
                following(first, ElementType::Arc, 100.0 * (widest * parts + share), 100.0, 100.0, true);
            const std::size_t cut = static_cast<std::size_t>(parts) + (share > 0.0 ? 1U : 0U);
            const Route wanted{2 + cut, 2 + cut, false, std::vector<std::string>(cut, "C01,1,-100.000,")};
            EXPECT_EQ(routeOf({first, arc}, {}), wanted) << parts << ' ' << share;
        }
    }
}

// Along its chord the end may lie elsewhere, as an import lays the clothoid by parameter and radii; across it would turn.
TEST(SimaRoutes, AClothoidEndsAtAPointThatLaysItInTheSamePlace) {
    const Element first = straightFrom({0.0, 0.0}, 0.3, 10.0);
    const Element clothoid = following(first, ElementType::Clothoid, 36.0, kNoRadius, 100.0, true);
    const double chord = std::hypot(clothoid.end.x - clothoid.start.x, clothoid.end.y - clothoid.start.y);
    const double c = (clothoid.end.x - clothoid.start.x) / chord;
    const double s = (clothoid.end.y - clothoid.start.y) / chord;
    const struct {
        double along, across;
        bool taken;
    } kCases[] = {
        {0.0, 0.0, true},      {0.499, 0.0, true},  {-0.499, 0.0, true},  {0.501, 0.0, false},
        {-0.501, 0.0, false},  {0.0, 4.9e-7, true}, {0.0, -4.9e-7, true}, {0.0, 5.1e-7, false},
        {0.0, -5.1e-7, false}, {0.3, 4.9e-7, true}, {0.3, 5.2e-7, false},
    };
    for (const auto& [along, across, taken] : kCases) {
        const PlanPoint place{clothoid.end.x + along * c - across * s, clothoid.end.y + along * s + across * c};
        const Route wanted{3, taken ? 0U : 1U, false, {"C02,60.000,0,-100.000,"}};
        EXPECT_EQ(routeOf({first, clothoid}, {first.start, first.end, place}), wanted) << along << ' ' << across;
    }
}

// A reader finds no PI between points of different heights, and then continues the element before.
TEST(SimaRoutes, AClothoidEndsAtAPointOfAnotherHeightOnlyIfItContinuesTheElementBefore) {
    const Element first = straightFrom({30.0, 20.0}, 0.3, 10.0);
    for (const double kink : {-0.1, -1e-4, 0.0, 1e-4, 0.1}) {
        Element before = first;
        before.direction += kink; // which the clothoid begins with
        const Element clothoid = following(before, ElementType::Clothoid, 36.0, kNoRadius, 100.0, true);
        for (const double rise : {-2.0, 0.0, 2.0}) {
            const bool taken = rise == 0.0 || kink == 0.0;
            const Route wanted{3, taken ? 0U : 1U, false, {"C02,60.000,0,-100.000,"}};
            EXPECT_EQ(routeOf({first, clothoid}, {first.start, first.end, clothoid.end}, {5.0, 5.0, 5.0 + rise}),
                      wanted)
                << kink << ' ' << rise;
        }
    }
}

// Where elements leave a gap a reader lays a straight: the clothoid behind it continues that, and straights that it meets in
// one line become one.
TEST(SimaRoutes, AGapIsAStraightToWhatFollows) {
    const Element first = straightFrom({30.0, 20.0}, 0.3, 10.0);
    Element before = straightFrom(first.end, 0.8, 25.0); // fills the gap
    for (const double kink : {0.0, 0.1}) {
        before.direction = 0.8 + kink;
        const Element clothoid = following(before, ElementType::Clothoid, 36.0, kNoRadius, 100.0, true);
        const Route wanted{4, kink == 0.0 ? 0U : 1U, false, {"C02,60.000,0,-100.000,"}};
        EXPECT_EQ(routeOf({first, clothoid}, {first.start, first.end, before.end, clothoid.end}, {5.0, 5.0, 5.0, 7.0}),
                  wanted)
            << kink;
    }
    for (const double turn : {0.0, 0.5}) {
        const Element gap = straightFrom(first.end, 0.3 + turn, 25.0);
        const Element last = straightFrom(gap.end, 0.3 + 2.0 * turn, 10.0);
        EXPECT_EQ(routeOf({first, last}, {}), (Route{4, 4, turn == 0.0, {}})) << turn;
        const Element inLine = straightFrom(gap.end, 0.3 + turn, 10.0);
        EXPECT_EQ(routeOf({first, inLine}, {}), (Route{4, 4, true, {}})) << turn;
    }
}

TEST(SimaRoutes, AParameterIsWrittenAsAWholeMillimetreWhereItDiffersByABillionthAtMost) {
    const Element first = straightFrom({0.0, 0.0}, 0.0, 10.0);
    for (const double wanted : {60.0, 250.125}) {
        for (const double share : {-1.1e-9, -0.9e-9, 0.0, 0.9e-9, 1.1e-9}) {
            const double parameter = wanted * (1.0 + share);
            const Element clothoid =
                following(first, ElementType::Clothoid, parameter * parameter / 200.0, kNoRadius, 200.0, false);
            const Route route = routeOf({first, clothoid}, {});
            ASSERT_EQ(route.records.size(), 1U);
            const std::string whole = wanted == 60.0 ? "C02,60.000,0,200.000," : "C02,250.125,0,200.000,";
            EXPECT_EQ(route.records[0] == whole, std::abs(share) < 1e-9) << route.records[0] << ' ' << share;
        }
    }
}

} // namespace
} // namespace fenmark::exchange
