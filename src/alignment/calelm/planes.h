// Angles and points between the survey plane (x north, y east, angles clockwise on the map) and the calculation plane
// (y negated, angles from +x towards +y). In names, the endings Survey and Calc say which plane a value is in.
#pragma once

#include "alignment/calelm/tolerances.h"

namespace fenmark::alignment {

struct Point {
    double x = 0.0;
    double y = 0.0;
};

// Angle to the other plane; nearer to 0 than the length step it collapses to exactly 0.
inline double otherPlaneAngle(double a) {
    if (std::fabs(a) < kPlaneAngleZero) {
        return 0.0;
    }
    return a > 0.0 ? kTwoPi - a : -a;
}

// Direction of the vector (dx, dy), [0, 2 pi); 0 for the zero vector. plane::direction differs from it in the last bit.
inline double directionOf(double dx, double dy) {
    if (dx == 0.0 && dy == 0.0) {
        return 0.0;
    }
    double a = std::atan2(dy, dx);
    if (a < 0.0) {
        a += kTwoPi;
    }
    // A negative angle of less than half a last bit is raised to 2 pi itself; -0.0 becomes 0.0.
    return a >= kTwoPi ? 0.0 : a + 0.0;
}

// Whether a clothoid of these end radii is flatter at its end, so that a calculation runs on its reversed copy.
inline bool flattensTowardsEnd(double r1, double r2) {
    return r2 == 0.0 || (r1 > 0.0 && r2 > r1);
}

// Standard station of a radius on the clothoid of parameter A: A^2 / R, 0 for an infinite radius.
inline double standardStation(double A, double R) {
    return R == 0.0 ? 0.0 : A * A / R;
}

inline bool samePoint(double dx, double dy) {
    return std::fabs(dx) < kSameLength && std::fabs(dy) < kSameLength;
}

} // namespace fenmark::alignment
