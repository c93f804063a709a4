// Parts and copies of a curve: cut, reversed, mirrored, moved, and the parallels that are curves themselves.
#include "curve/curve.h"

#include "curve/unit_chord.h"

#include <cmath>

namespace fenmark::curve {

Curve part(const Curve& curve, double from, double to) {
    return {poseAt(curve, from), to - from, curve.length > 0.0 ? curvatureAt(curve, from) : curve.startCurvature,
            curve.length > 0.0 ? curvatureAt(curve, to) : curve.endCurvature};
}

std::pair<Curve, Curve> split(const Curve& curve, double along) {
    return {part(curve, 0.0, along), part(curve, along, curve.length)};
}

Curve reversed(const Curve& curve) {
    Pose start = endPose(curve);
    start.azimuth += kPi;
    return {start, curve.length, -curve.endCurvature, -curve.startCurvature};
}

Curve mirroredAboutChord(const Curve& curve) {
    // The chord leaves the start's tangent by some angle; the mirrored curve leaves the chord by as much.
    const double turn = turnAt(curve, curve.length);
    const double a = curve.startCurvature * curve.length;
    const Complex chord = unitChord(a, turn - a);
    Curve mirrored = curve;
    mirrored.start.azimuth += 2.0 * std::atan2(chord.im, chord.re);
    mirrored.startCurvature = -curve.startCurvature;
    mirrored.endCurvature = -curve.endCurvature;
    return mirrored;
}

Curve mirroredAboutAxis(const Curve& curve, const Pose& axis) {
    const Complex direction = onUnitCircle(axis.azimuth);
    const double dx = curve.start.point.x - axis.point.x;
    const double dy = curve.start.point.y - axis.point.y;
    const double right = dy * direction.re - dx * direction.im;
    Curve mirrored = curve;
    mirrored.start.point.x += 2.0 * right * direction.im;
    mirrored.start.point.y -= 2.0 * right * direction.re;
    mirrored.start.azimuth = 2.0 * axis.azimuth - curve.start.azimuth;
    mirrored.startCurvature = -curve.startCurvature;
    mirrored.endCurvature = -curve.endCurvature;
    return mirrored;
}

Curve moved(const Curve& curve, const Point& about, double angle, const Point& shift) {
    Curve result = curve;
    const Complex turned = onUnitCircle(angle) * Complex{curve.start.point.x - about.x, curve.start.point.y - about.y};
    result.start.point = {about.x + turned.re + shift.x, about.y + turned.im + shift.y};
    result.start.azimuth += angle;
    return result;
}

std::optional<Curve> parallelCurve(const Curve& curve, double offset) {
    if (curve.startCurvature != curve.endCurvature) {
        return std::nullopt;
    }
    const double share = 1.0 - curve.startCurvature * offset; // of the radius that is left
    if (!(share > 0.0)) {
        return std::nullopt;
    }
    const double curvature = curve.startCurvature / share;
    return arc(parallelPose(curve, 0.0, offset), curve.length * share, curvature);
}

} // namespace fenmark::curve
