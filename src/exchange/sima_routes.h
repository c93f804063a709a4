// An alignment as the points and element records of a route.
#pragma once

#include "exchange/sima_points.h"

#include <optional>
#include <string>
#include <vector>

namespace fenmark::exchange {

struct SimaRoute {
    struct Step {
        SimaPointTable::Index point;
        std::string record; // of the element that begins there; empty for a straight, and behind the last
    };
    std::vector<Step> steps;
    bool mergedStraights = false; // two straights that a reader makes one, since they differ by 1 degree at most
};

// Points that are not there are added. Nothing for an alignment that begins with a clothoid: readers of this system
// break off there.
std::optional<SimaRoute> simaRouteOf(const drawing::Alignment& alignment, SimaPointTable& points);

} // namespace fenmark::exchange
