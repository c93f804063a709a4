// The elements of a recorded alignment as they were added, and the curve that they make.
#pragma once

#include "values/drawing_values.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace fenmark::host {

// One element: what the host was given, and the curve laid from it. Drawing axes, metres, radians; curvatures are 1/m,
// positive for a turn to the left (anticlockwise).
struct RecordedElement {
    char type = 'S'; // 'S' straight, 'R' arc, 'A' clothoid
    std::int32_t id = 0;
    MdGePoint3d start;
    MdGePoint3d end; // as given; a clothoid is given none
    MdGePoint3d pi;  // clothoid
    double radius = 0.0;
    double startRadius = 0.0;
    double endRadius = 0.0;
    double length = 0.0; // clothoid: as given
    std::int16_t direction = 0;
    std::int32_t elementBefore = 0;
    std::int32_t spiralKind = 0;

    PlanPoint laidEnd;
    double laidLength = 0.0;
    double startAngle = 0.0; // anticlockwise from +x
    double endAngle = 0.0;
    double startCurvature = 0.0;
    double endCurvature = 0.0;
};

// Statuses are 0 for success. Refused are an arc without radius or with a chord longer than its diameter, and a
// clothoid without length, with two infinite radii, with values that no double can follow, or behind an unknown element.
class RecordedChain {
  public:
    std::int32_t addLine(const MdGePoint3d& start, const MdGePoint3d& end);
    // The shorter arc; clockwise for direction -1.
    std::int32_t addArc(const MdGePoint3d& start, const MdGePoint3d& end, double radius, std::int16_t direction);
    // Starts towards the PI if that lies where the clothoid's tangents meet, within 1 % or 10 mm; otherwise continues
    // the last tangent of the element before.
    std::int32_t addSpiral(std::int32_t elementBefore, const MdGePoint3d& start, const MdGePoint3d& pi,
                           double startRadius, double endRadius, double length, std::int16_t direction,
                           std::int32_t spiralKind);
    void removeAt(std::size_t index);

    const std::vector<RecordedElement>& elements() const { return elements_; }
    const RecordedElement& last() const { return elements_.back(); }
    double length() const { return ends_.empty() ? 0.0 : ends_.back(); }
    // The point at a distance from the chain's start, moved sideways to the right of travel. False beyond 1e-6 m
    // outside either end.
    bool pointAt(double distance, double offset, PlanPoint& point) const;

  private:
    void add(RecordedElement element);
    // From start to end; the end tangent of the element before where they are one point of the plan.
    double directionOf(const MdGePoint3d& start, const MdGePoint3d& end) const;

    std::vector<RecordedElement> elements_;
    std::vector<double> ends_; // length of the chain up to the end of each element
    std::int32_t lastId_ = 0;
};

} // namespace fenmark::host
