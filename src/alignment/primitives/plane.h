/**
 * Angles and small vector arithmetic of the plane primitives and the tangent solvers.
 *
 * Everything here is plain plane geometry and holds in either plane; angles run from +x towards +y.
 */
#pragma once

#include "alignment/calelm/tolerances.h"

#include <cmath>

namespace fenmark::alignment::plane {

/** A point or a vector. */
struct Vec {
    double x = 0.0;
    double y = 0.0;
};

inline Vec operator+(Vec a, Vec b) {
    return {a.x + b.x, a.y + b.y};
}
inline Vec operator-(Vec a, Vec b) {
    return {a.x - b.x, a.y - b.y};
}
inline Vec operator*(double k, Vec a) {
    return {k * a.x, k * a.y};
}
inline double dot(Vec a, Vec b) {
    return a.x * b.x + a.y * b.y;
}
/** Positive when b lies anticlockwise of a. */
inline double cross(Vec a, Vec b) {
    return a.x * b.y - a.y * b.x;
}
inline double norm(Vec a) {
    return std::sqrt(a.x * a.x + a.y * a.y);
}
inline double distance(Vec a, Vec b) {
    return norm(b - a);
}
inline Vec unit(double angle) {
    return {std::cos(angle), std::sin(angle)};
}
inline Vec turned(Vec a, double cosine, double sine) {
    return {a.x * cosine - a.y * sine, a.x * sine + a.y * cosine};
}
inline Vec turned(Vec a, double angle) {
    return turned(a, std::cos(angle), std::sin(angle));
}

/**
 * Direction of a vector in [0, 2 pi), by quadrant; 0 for the zero vector.
 *
 * directionOf in calelm/planes.h has the same value but for the last bit: it adds 2 pi to a negative atan2, this one adds
 * or takes an acute angle. Which of the two a function calls decides the last digit of its azimuths, so both stay.
 */
inline double direction(double dx, double dy) {
    const double acute = std::atan2(std::fabs(dy), std::fabs(dx));
    if (dx < 0.0) {
        return dy < 0.0 ? kPi + acute : kPi - acute;
    }
    // A y of one last bit below 0 would give 2 pi itself.
    const double angle = dy < 0.0 ? kTwoPi - acute : acute;
    return angle < kTwoPi ? angle : 0.0;
}
inline double direction(Vec v) {
    return direction(v.x, v.y);
}

/** An angle brought into [0, 2 pi). */
inline double wrapped(double angle) {
    if (angle >= 0.0 && angle < kTwoPi) {
        return angle;
    }
    double folded = std::fmod(angle, kTwoPi);
    if (folded < 0.0) {
        folded += kTwoPi;
    }
    return folded >= kTwoPi ? 0.0 : folded;
}

/** An angle brought into (-pi, pi]. */
inline double wrappedSigned(double angle) {
    const double folded = wrapped(angle);
    return folded > kPi ? folded - kTwoPi : folded;
}

/** Angle run from p to q about the centre in the sense of dir, in [0, 2 pi). */
inline double sweepBetween(Vec centre, Vec p, Vec q, double dir) {
    const Vec from = p - centre;
    const Vec to = q - centre;
    return wrapped(dir * std::atan2(cross(from, to), dot(from, to)));
}

} // namespace fenmark::alignment::plane
