// The host's geometry that the logic calls directly, as this project implements it.
#pragma once

#include "values/drawing_values.h"

namespace fenmark::host {

// The one tolerance that is ever passed: points and lines that agree within it (metres) are the same.
struct MdGeContext {
    static constexpr double gTol = 1e-10;
};

// An unbounded line through two points in space.
class MdGeLine3d {
  public:
    MdGeLine3d() = default;
    MdGeLine3d(const MdGePoint3d& first, const MdGePoint3d& second) { set(first, second); }

    void set(const MdGePoint3d& first, const MdGePoint3d& second);

    // True and the meeting point if the lines meet within the tolerance (metres); otherwise false, and the point is
    // left as it was. Parallel and skew lines do not meet.
    bool intersectWith(const MdGeLine3d& other, MdGePoint3d& point, double tolerance) const;

  private:
    MdGePoint3d origin_;
    MdGePoint3d direction_;
};

// The point moved by the distance (metres) along the angle (radians, anticlockwise from +x) in the xy plane. The
// result keeps the z of the point it starts from.
MdGePoint3d mdutPolar(const MdGePoint3d& point, double angle, double distance);

// Direction from the first point to the second in the xy plane: radians in [0, 2 pi), anticlockwise from +x; 0 for
// equal points.
double mdutAngle(const MdGePoint3d& first, const MdGePoint3d& second);

} // namespace fenmark::host
