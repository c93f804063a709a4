// The heights that coordinate points on an alignment have: its formation (計画高), where a file gives heights.
//
// The results of sections hold the ground alone. Files from design programs give the points of the centre line with
// their heights, and so does a route's list of main points and stakes.
#pragma once

#include "drawing/drawing.h"
#include "exchange/results.h"

#include <cstddef>
#include <vector>

namespace fenmark::exchange {

// Of the coordinate points within 5 mm of the alignment that have a height, in the order of stations; of several at one
// station the first in the drawing. Points at a height of exactly 0 have none that anybody gave.
[[nodiscard]] std::vector<LongitudinalPoint> plannedHeights(const drawing::Drawing& drawing, std::size_t alignment);

} // namespace fenmark::exchange
