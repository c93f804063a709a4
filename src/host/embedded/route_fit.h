// Whether the points of a route lie on the alignment that was made of it.
#pragma once

#include "drawing/element.h"
#include "drawing/values.h"

#include <span>

namespace fenmark::host::embedded {

// True if each point lies within the tolerance (metres, in plan) of an end of an element or of a straight. Goes once
// along both, in order, and so needs no geometry prepared: a route that fits nowhere, or not in order, is answered with
// false, and the alignment itself must be asked.
bool fitsInOrder(std::span<const drawing::Element> elements, std::span<const MdGePoint3d> points, double tolerance);

// The larger distance (metres, in plan) of the first point from where the alignment begins and of the last from where it
// ends: a clothoid that is too long leads past its point without lying off it. 0 without elements or points.
double offAtEnds(std::span<const drawing::Element> elements, std::span<const MdGePoint3d> points);

} // namespace fenmark::host::embedded
