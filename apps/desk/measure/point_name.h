// The name of the coordinate point at a place, by the index of the plan: as the area tables name corners.
#pragma once

#include "desk/plan/plan_index.h"
#include "drawing/drawing.h"

#include <string>

namespace fenmark::desk {

// Of the coordinate point within 5 mm in both directions, the nearest; empty if there is none. Time does not grow with
// the drawing.
std::string pointNameAt(const drawing::Drawing& drawing, const PlanIndex& index, double x, double y);

} // namespace fenmark::desk
