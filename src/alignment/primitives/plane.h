/**
 * Angles, tolerances and small vector arithmetic of the plane primitives and the tangent solvers.
 *
 * Everything here is plain plane geometry and holds in either plane; angles run from +x towards +y.
 */
#ifndef FENMARK_ALIGNMENT_PRIMITIVES_PLANE_H
#define FENMARK_ALIGNMENT_PRIMITIVES_PLANE_H

#include <cmath>
#include <numbers>

namespace fenmark::alignment::plane {

inline constexpr double pi = std::numbers::pi;
inline constexpr double two_pi = 2.0 * std::numbers::pi;

/** Two points or lengths nearer than this are the same, metres. */
inline constexpr double length_step = 1e-5;
/** Two directions nearer than this are the same, radians. */
inline constexpr double angle_step = 1.389e-6;
/** Determinant of two unit directions below which lines are parallel; also the shortest line, metres. */
inline constexpr double direction_zero = 1e-7;
/** Shortest vector that still has a direction, metres; also the zero of a discriminant. */
inline constexpr double parameter_zero = 1e-10;
/** Squared distance from a line that counts as on it, square metres. */
inline constexpr double squared_distance_zero = 1e-8;
/** A tangent this near to a full turn is 0, radians. */
inline constexpr double full_turn_snap = 1e-5;

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

/** Direction of a vector in [0, 2 pi), by quadrant; 0 for the zero vector. */
inline double direction(double dx, double dy) {
    const double acute = std::atan2(std::fabs(dy), std::fabs(dx));
    if (dx < 0.0) {
        return dy < 0.0 ? pi + acute : pi - acute;
    }
    // A y of one last bit below 0 would give 2 pi itself.
    const double angle = dy < 0.0 ? two_pi - acute : acute;
    return angle < two_pi ? angle : 0.0;
}
inline double direction(Vec v) {
    return direction(v.x, v.y);
}

/** An angle brought into [0, 2 pi). */
inline double wrapped(double angle) {
    if (angle >= 0.0 && angle < two_pi) {
        return angle;
    }
    double folded = std::fmod(angle, two_pi);
    if (folded < 0.0) {
        folded += two_pi;
    }
    return folded >= two_pi ? 0.0 : folded;
}

/** An angle brought into (-pi, pi]. */
inline double wrappedSigned(double angle) {
    const double folded = wrapped(angle);
    return folded > pi ? folded - two_pi : folded;
}

} // namespace fenmark::alignment::plane

#endif
