// Host geometry: lines in space and directions in the plan.
//
// A line is a point p and a unit direction u. Two lines (p, u) and (q, v) have the common normal n = u x v; they are
// parallel where n vanishes, and their distance is |(q - p) . n| / |n|.
#include "host/boundary/geometry.h"

#include <cmath>
#include <numbers>

namespace fenmark::host {

namespace {

MdGePoint3d difference(const MdGePoint3d& a, const MdGePoint3d& b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}

double dot(const MdGePoint3d& a, const MdGePoint3d& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

MdGePoint3d cross(const MdGePoint3d& a, const MdGePoint3d& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

} // namespace

void MdGeLine3d::set(const MdGePoint3d& first, const MdGePoint3d& second) {
    origin_ = first;
    direction_ = difference(second, first);
    const double length = std::sqrt(dot(direction_, direction_));
    // Two equal points give a line without direction, which meets nothing.
    direction_ =
        length > 0.0 ? MdGePoint3d{direction_.x / length, direction_.y / length, direction_.z / length} : MdGePoint3d{};
}

bool MdGeLine3d::intersectWith(const MdGeLine3d& other, MdGePoint3d& point, double tolerance) const {
    const MdGePoint3d normal = cross(direction_, other.direction_);
    const double sine = std::sqrt(dot(normal, normal));
    if (!(sine > tolerance)) { // also for lines that are not finite
        return false;
    }
    const MdGePoint3d between = difference(other.origin_, origin_);
    const double distance = std::abs(dot(between, normal)) / sine;
    if (!(distance <= tolerance)) {
        return false;
    }
    const double along = dot(cross(between, other.direction_), normal) / (sine * sine);
    if (!std::isfinite(along)) {
        return false;
    }
    point = {origin_.x + along * direction_.x, origin_.y + along * direction_.y, origin_.z + along * direction_.z};
    return true;
}

MdGePoint3d mdutPolar(const MdGePoint3d& point, double angle, double distance) {
    return {point.x + distance * std::cos(angle), point.y + distance * std::sin(angle), point.z};
}

double mdutAngle(const MdGePoint3d& first, const MdGePoint3d& second) {
    constexpr double kFullTurn = 2.0 * std::numbers::pi;
    double angle = std::atan2(second.y - first.y, second.x - first.x);
    if (angle < 0.0) {
        angle += kFullTurn;
    }
    // A direction just below +x rounds up to the full turn, and -0.0 is no angle of its own.
    return angle > 0.0 && angle < kFullTurn ? angle : 0.0;
}

} // namespace fenmark::host
