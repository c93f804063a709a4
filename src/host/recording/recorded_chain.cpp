// Laying and evaluating recorded chains.
//
// Curves are those of the survey plane, read in drawing axes: both planes have (cos, sin) of the direction for a unit
// vector, so that the same values serve, with angles and curvatures positive to the left.
#include "host/recording/recorded_chain.h"

#include "curve/curve.h"
#include "host/boundary/geometry.h"

#include <algorithm>
#include <cmath>

namespace fenmark::host {

namespace {

constexpr std::int32_t kRefused = 1;
constexpr double kStationTolerance = 1e-6;    // metres
constexpr double kChordTolerance = 1e-9;      // of the diameter
constexpr double kPiTolerance = 0.01;         // of the tangent's length
constexpr double kPiDistanceTolerance = 0.01; // metres
constexpr double kSmallTurn = 1e-12;          // radians

double planDistance(const MdGePoint3d& a, const MdGePoint3d& b) {
    return std::hypot(b.x - a.x, b.y - a.y);
}

double turnSign(std::int16_t direction) {
    return direction == -1 ? -1.0 : 1.0;
}

double curvatureOf(double radius) {
    return std::isinf(radius) ? 0.0 : 1.0 / radius;
}

curve::Curve curveOf(const RecordedElement& element) {
    return {{{element.start.x, element.start.y}, element.startAngle},
            element.laidLength,
            element.startCurvature,
            element.endCurvature};
}

} // namespace

std::int32_t RecordedChain::addLine(const MdGePoint3d& start, const MdGePoint3d& end) {
    RecordedElement element;
    element.type = 'S';
    element.start = start;
    element.end = end;
    element.laidEnd = {end.x, end.y};
    element.laidLength = planDistance(start, end);
    element.startAngle = element.endAngle = directionOf(start, end);
    add(element);
    return 0;
}

std::int32_t RecordedChain::addArc(const MdGePoint3d& start, const MdGePoint3d& end, double radius,
                                   std::int16_t direction) {
    const double chord = planDistance(start, end);
    if (!(radius > 0.0) || !(chord <= 2.0 * radius * (1.0 + kChordTolerance))) {
        return kRefused;
    }
    RecordedElement element;
    element.type = 'R';
    element.start = start;
    element.end = end;
    element.radius = radius;
    element.direction = direction;
    element.laidEnd = {end.x, end.y};
    const double halfSweep = std::asin(std::min(1.0, chord / (2.0 * radius)));
    const double sign = turnSign(direction);
    const double chordAngle = directionOf(start, end);
    element.laidLength = 2.0 * halfSweep * radius;
    element.startAngle = chordAngle - sign * halfSweep;
    element.endAngle = chordAngle + sign * halfSweep;
    element.startCurvature = element.endCurvature = sign / radius;
    add(element);
    return 0;
}

std::int32_t RecordedChain::addSpiral(std::int32_t elementBefore, const MdGePoint3d& start, const MdGePoint3d& pi,
                                      double startRadius, double endRadius, double length, std::int16_t direction,
                                      std::int32_t spiralKind) {
    const auto before = std::find_if(elements_.begin(), elements_.end(),
                                     [&](const RecordedElement& element) { return element.id == elementBefore; });
    if (before == elements_.end() || !(length > 0.0) || !(startRadius > 0.0) || !(endRadius > 0.0) ||
        (std::isinf(startRadius) && std::isinf(endRadius))) {
        return kRefused;
    }
    RecordedElement element;
    element.type = 'A';
    element.start = start;
    element.pi = pi;
    element.startRadius = startRadius;
    element.endRadius = endRadius;
    element.length = length;
    element.direction = direction;
    element.elementBefore = elementBefore;
    element.spiralKind = spiralKind;
    element.laidLength = length;
    element.startCurvature = turnSign(direction) * curvatureOf(startRadius);
    element.endCurvature = turnSign(direction) * curvatureOf(endRadius);

    if (!curve::isUsable(curveOf(element))) {
        return kRefused;
    }
    // In the frame of its first tangent the curve ends at (u, v) with the angle turn; its tangents meet at (t, 0).
    const curve::Pose local = curve::endPose({{}, length, element.startCurvature, element.endCurvature});
    const double tangent =
        std::abs(local.azimuth) > kSmallTurn ? local.point.x - local.point.y / std::tan(local.azimuth) : length / 2.0;
    const double miss = std::abs(planDistance(start, pi) - std::abs(tangent));
    const double tolerance = std::max(kPiTolerance * std::abs(tangent), kPiDistanceTolerance);
    if (miss <= tolerance) {
        element.startAngle = tangent >= 0.0 ? mdutAngle(start, pi) : mdutAngle(pi, start);
    } else {
        element.startAngle = before->endAngle;
    }
    const curve::Pose end = curve::endPose(curveOf(element));
    element.laidEnd = {end.point.x, end.point.y};
    element.endAngle = end.azimuth;
    add(element);
    return 0;
}

void RecordedChain::removeAt(std::size_t index) {
    elements_.erase(elements_.begin() + static_cast<std::ptrdiff_t>(index));
    ends_.clear();
    for (const RecordedElement& element : elements_) {
        ends_.push_back(length() + element.laidLength);
    }
}

bool RecordedChain::pointAt(double distance, double offset, PlanPoint& point) const {
    if (elements_.empty() || !(distance >= -kStationTolerance && distance <= length() + kStationTolerance)) {
        return false;
    }
    const double within = std::clamp(distance, 0.0, length());
    const auto found = std::upper_bound(ends_.begin(), ends_.end(), within);
    const std::size_t index = std::min(static_cast<std::size_t>(found - ends_.begin()), elements_.size() - 1);
    const RecordedElement& element = elements_[index];
    const double along = within - (index == 0 ? 0.0 : ends_[index - 1]);
    if (!curve::isUsable(curveOf(element)) || !std::isfinite(offset)) {
        return false;
    }
    const curve::Pose pose = curve::parallelPose(curveOf(element), along, -offset);
    point = {pose.point.x, pose.point.y};
    return true;
}

double RecordedChain::directionOf(const MdGePoint3d& start, const MdGePoint3d& end) const {
    if (planDistance(start, end) > 0.0) {
        return mdutAngle(start, end);
    }
    return elements_.empty() ? 0.0 : last().endAngle;
}

void RecordedChain::add(RecordedElement element) {
    element.id = ++lastId_;
    ends_.push_back(length() + element.laidLength);
    elements_.push_back(element);
}

} // namespace fenmark::host
