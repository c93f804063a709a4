// One element of an alignment as the drawing keeps it: a straight, an arc or a clothoid.
//
// Plane: the drawing's (x east, y north, metres). Directions are radians anticlockwise from +x, curvatures 1/m and
// positive where the curve turns left. Every element is the curve of linear curvature, evaluated by src/curve.
#pragma once

#include "curve/curve.h"
#include "drawing/values.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <vector>

namespace fenmark::drawing {

// How far the line drawn for an alignment may lie from the true curve, metres.
inline constexpr double kLineTolerance = 1e-3;
// The most points that one element is drawn with. No element of a survey reaches it.
inline constexpr std::size_t kMostElementPoints = curve::kMostLinePoints;
// The points of all elements of an alignment together, which no survey reaches either. Elements behind them are drawn with
// kFewestElementPoints at most.
inline constexpr std::size_t kMostAlignmentPoints = 1'000'000;
inline constexpr std::size_t kFewestElementPoints = 64;
// The points of all elements of a drawing that have more than the usual number: a file of 100 kB names thousands of them, and
// would be drawn with gigabytes. Behind them each has the usual number at most.
inline constexpr std::size_t kMostDrawingPoints = 2'000'000;
inline constexpr std::size_t kUsualElementPoints = 1'000;
inline constexpr double kInfiniteRadius = std::numeric_limits<double>::infinity();

enum class ElementType : char { Straight = 'S', Arc = 'R', Clothoid = 'A' };

// One element as it was laid.
struct Element {
    std::int32_t id = 0; // of its own within the alignment, counted from 1
    ElementType type = ElementType::Straight;
    bool clockwise = false; // turns right, seen along the travel
    PlanPoint start;
    PlanPoint end;
    double direction = 0.0;               // of travel, at the start
    double length = 0.0;                  // metres
    double startRadius = kInfiniteRadius; // positive; infinite where straight
    double endRadius = kInfiniteRadius;
    // How it was laid, as the elements behind it want to know; not kept with the drawing.
    bool continuing = false; // a spiral along the element before, since its PI did not give its start
    bool otherSense = false; // turns the other way than it was given

    double startCurvature() const { return (clockwise ? -1.0 : 1.0) / startRadius; }
    double endCurvature() const { return (clockwise ? -1.0 : 1.0) / endRadius; }
    double turn() const { return 0.5 * (startCurvature() + endCurvature()) * length; }
    double endDirection() const { return direction + turn(); }
    // The middle of an arc's circle.
    PlanPoint centre() const;
    // Where the tangents at both ends meet; nothing if they are parallel.
    std::optional<PlanPoint> pi() const;
};

struct Pose {
    PlanPoint point;
    double direction = 0.0;
};

struct ElementBox {
    double minX = 0.0;
    double minY = 0.0;
    double maxX = 0.0;
    double maxY = 0.0;
};

// The element for src/curve. Both planes count angles from +x towards +y, one seen from above and the other mirrored,
// so coordinates, directions and curvatures pass as they are; only the side of an offset changes: what is right in the
// drawing is left there. This is the one place where the planes meet.
curve::Curve curveOf(const Element& element);
inline curve::Point curvePoint(const PlanPoint& point) {
    return {point.x, point.y};
}
inline PlanPoint planPoint(const curve::Point& point) {
    return {point.x, point.y};
}
inline double curveOffset(double rightInDrawing) {
    return -rightInDrawing;
}

// Whether all values are finite and the whole curve lies within what a real holds. What is not usable is kept in the
// drawing, and neither drawn (but for its ends) nor asked for stations.
bool isUsable(const Element& element);

// The pose at a length along one element; the start's for an element that is not usable.
Pose poseOnElement(const Element& element, double along);

// The smallest box around the element; nothing if it is not usable.
std::optional<ElementBox> boxOfElement(const Element& element);

// The element as a line whose points lie on the curve and whose chords lie within the tolerance (metres) of it, with
// kMostElementPoints at most, or with `left` where fewer are left, but not with less than kFewestElementPoints. First and
// last point are the element's ends. Returns how far the element's part may lie from the curve: the tolerance, or more
// where the points did not suffice.
double appendElementLine(const Element& element, double tolerance, std::vector<PlanPoint>& line,
                         std::size_t left = kMostElementPoints);

// The points that are left for the lines of a drawing's alignments, one behind the other.
class LinePoints {
  public:
    void beginAlignment() { alignment_ = kMostAlignmentPoints; }
    // For the next element.
    std::size_t left() const { return std::min(alignment_, std::max(drawing_, kUsualElementPoints)); }
    // The element's line, as appendElementLine with what is left.
    double append(const Element& element, double tolerance, std::vector<PlanPoint>& line);

  private:
    std::size_t alignment_ = kMostAlignmentPoints;
    std::size_t drawing_ = kMostDrawingPoints;
};

} // namespace fenmark::drawing
