// Whether the points of a route lie on the alignment that was made of it.
#pragma once

#include "drawing/element.h"
#include "drawing/values.h"

#include <cstddef>
#include <functional>
#include <span>

namespace fenmark::host::embedded {

// True if each point lies within the tolerance (metres, in plan) of an end of an element or of a straight. Goes once
// along both, in order, and so needs no geometry prepared: a route that fits nowhere, or not in order, is answered with
// false, and the alignment itself must be asked.
bool fitsInOrder(std::span<const drawing::Element> elements, std::span<const MdGePoint3d> points, double tolerance);

// The larger distance (metres, in plan) of the first point from where the alignment begins and of the last from where it
// ends: a clothoid that is too long leads past its point without lying off it. 0 without elements or points.
double offAtEnds(std::span<const drawing::Element> elements, std::span<const MdGePoint3d> points);

// How far the farthest point lies off the alignment, metres in plan.
struct FarthestPoint {
    double distance = 0.0;
    bool atLeast = false; // not every point was looked at
};

// The first and the last point are measured as offAtEnds does, the others to wherever the alignment is nearest, as
// distanceFrom says. That is asked of kMostAsked points at most, those that lie farthest from their joints: on curves that
// wind over each other it costs milliseconds.
inline constexpr std::size_t kMostAsked = 400;
FarthestPoint farthestPoint(std::span<const drawing::Element> elements, std::span<const MdGePoint3d> points,
                            const std::function<double(const MdGePoint3d&)>& distanceFrom);

} // namespace fenmark::host::embedded
