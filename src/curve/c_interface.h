// What the functions of the C interface share: values taken over and checked, and exceptions turned into statuses.
#pragma once

#include "curve/curve.h"
#include "fenmark/curve.h"

#include <cmath>
#include <new>

namespace fenmark::curve {

inline Point valueOf(const FmkPoint& point) {
    return {point.x, point.y};
}
inline Pose valueOf(const FmkPose& pose) {
    return {valueOf(pose.point), pose.azimuth};
}
inline Curve valueOf(const FmkCurve& curve) {
    return {valueOf(curve.start), curve.length, curve.startCurvature, curve.endCurvature};
}
inline FmkPoint recordOf(const Point& point) {
    return {point.x, point.y};
}
inline FmkPose recordOf(const Pose& pose) {
    return {recordOf(pose.point), pose.azimuth};
}
inline FmkCurve recordOf(const Curve& curve) {
    return {recordOf(curve.start), curve.length, curve.startCurvature, curve.endCurvature};
}

// FMK_OK for a curve that may be computed on.
[[nodiscard]] inline int statusOf(const Curve& curve) {
    if (!isFinite(curve.start) || !std::isfinite(curve.length) || !std::isfinite(curve.startCurvature) ||
        !std::isfinite(curve.endCurvature)) {
        return FMK_NOT_FINITE;
    }
    if (curve.length < 0.0) {
        return FMK_BAD_VALUE;
    }
    return isUsable(curve) ? FMK_OK : FMK_TOO_LARGE;
}

// Runs the body of an exported function; memory that runs out becomes a status.
template <typename Body>
[[nodiscard]] int guarded(const Body& body) noexcept {
    try {
        return body();
    } catch (const std::bad_alloc&) {
        return FMK_OUT_OF_MEMORY;
    } catch (...) {
        return FMK_TOO_LARGE; // a container of more elements than there can be
    }
}

} // namespace fenmark::curve
