// Lines and areas of the drawing as pixels of a view, cut to what can be seen of them.
//
// What lies far outside the view is cut off before it reaches the painter, whose coordinates are small numbers: a line
// of a hundred kilometres seen at a millimetre for each pixel stays a line.
#pragma once

#include "desk/plan/view_transform.h"
#include "drawing/alignment_geometry.h"

#include <QPolygonF>

#include <cstddef>
#include <span>
#include <vector>

namespace fenmark::desk {

// How far a drawn curve may lie from the true one.
inline constexpr double kChordPixels = 0.25;

// The view, and so much around it that what is cut off there leaves nothing to be seen.
QRectF clipOf(const ViewTransform& view);

QPolygonF pixelsOf(std::span<const host::MdGePoint3d> vertices, const ViewTransform& view);

// The parts of a line within the rectangle.
std::vector<QPolygonF> clippedLine(const QPolygonF& line, bool closed, const QRectF& to);
// The part of an area within the rectangle, which may run along its edges; empty if there is none.
QPolygonF clippedArea(const QPolygonF& area, const QRectF& to);

// How many places of curves may still be looked at for one picture, or for one search in it. Only curves that wind up
// take so many; such a curve is a line of drawing::kFewestElementPoints where they are spent.
struct CurveBudget {
    std::size_t left = 400'000;
};

// The parts of an element within the rectangle (pixels), as lines within kChordPixels of the true curve.
std::vector<QPolygonF> elementPixels(const drawing::Element& element, const ViewTransform& view, const QRectF& within,
                                     CurveBudget& budget);

// Distance of a pixel from a line, in pixels; infinite for a line without points.
double distanceToLine(const QPolygonF& line, const QPointF& pixel, bool closed);

} // namespace fenmark::desk
