// Small plan geometry that the exchange formats share.
#pragma once

#include "drawing/drawing.h"
#include "values/drawing_values.h"

#include <span>
#include <vector>

namespace fenmark::exchange {

// Area within a ring of vertices, square metres, positive if they run anticlockwise. The ring closes itself.
double signedArea(std::span<const host::MdGePoint3d> ring);

// A place for a label inside a ring: its centroid, or if that lies outside, the middle of the widest part of the
// horizontal line through the ring's middle height.
host::PlanPoint labelPoint(std::span<const host::MdGePoint3d> ring);

// 1, 2 or 5 times a power of ten, at least as large as wanted: a step of a grid or a scale.
[[nodiscard]] double roundStep(double wanted);

// The smallest box around the alignment.
[[nodiscard]] drawing::Extent boxOf(const drawing::Alignment& alignment);

// The alignment as one line within 1 mm of the true curve, as far as the points that are left allow.
std::vector<host::PlanPoint> lineOfAlignment(const drawing::Alignment& alignment, drawing::LinePoints& points);

} // namespace fenmark::exchange
