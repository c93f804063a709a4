// Laying and evaluating recorded chains.
//
// Symbols: kappa curvature, changing linearly with the length s; phi the tangent's angle, phi' = kappa. The position
// is the integral of (cos phi, sin phi), taken by five-point Gauss-Legendre panels of at most 0.2 radians.
#include "host/recording/recorded_chain.h"

#include "host/boundary/geometry.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace fenmark::host {

namespace {

constexpr std::int32_t kRefused = 1;
constexpr double kStationTolerance = 1e-6;    // metres
constexpr double kChordTolerance = 1e-9;      // of the diameter
constexpr double kPiTolerance = 0.01;         // of the tangent's length
constexpr double kPiDistanceTolerance = 0.01; // metres
constexpr double kPanelAngle = 0.2;           // radians
constexpr double kMaxPanels = 10000.0;
constexpr double kSmallTurn = 1e-12; // radians

struct Pose {
    double x = 0.0;
    double y = 0.0;
    double angle = 0.0;
};

Pose advance(const Pose& from, double startCurvature, double rate, double length) {
    static constexpr std::array<double, 5> kNode = {-0.9061798459386640, -0.5384693101056831, 0.0, 0.5384693101056831,
                                                    0.9061798459386640};
    static constexpr std::array<double, 5> kWeight = {0.2369268850561891, 0.4786286704993665, 0.5688888888888889,
                                                      0.4786286704993665, 0.2369268850561891};
    const auto angleAt = [&](double s) { return from.angle + s * (startCurvature + rate * s / 2.0); };
    const double most = std::max(std::abs(startCurvature), std::abs(startCurvature + rate * length)) * std::abs(length);
    const int panels = 1 + static_cast<int>(std::min(most / kPanelAngle, kMaxPanels));
    const double half = length / (2.0 * panels);
    double x = 0.0;
    double y = 0.0;
    for (int panel = 0; panel < panels; ++panel) {
        const double middle = half * (2 * panel + 1);
        for (std::size_t i = 0; i < kNode.size(); ++i) {
            const double angle = angleAt(middle + half * kNode[i]);
            x += kWeight[i] * std::cos(angle);
            y += kWeight[i] * std::sin(angle);
        }
    }
    return {from.x + half * x, from.y + half * y, angleAt(length)};
}

double planDistance(const MdGePoint3d& a, const MdGePoint3d& b) {
    return std::hypot(b.x - a.x, b.y - a.y);
}

double turnSign(std::int16_t direction) {
    return direction == -1 ? -1.0 : 1.0;
}

double curvatureOf(double radius) {
    return std::isinf(radius) ? 0.0 : 1.0 / radius;
}

double rateOf(const RecordedElement& element) {
    return element.laidLength > 0.0 ? (element.endCurvature - element.startCurvature) / element.laidLength : 0.0;
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

    // In the frame of its first tangent the curve ends at (u, v) with the angle turn; its tangents meet at (t, 0).
    const Pose local = advance({}, element.startCurvature, rateOf(element), length);
    const double tangent =
        std::abs(local.angle) > kSmallTurn ? local.x - local.y / std::tan(local.angle) : length / 2.0;
    const double miss = std::abs(planDistance(start, pi) - std::abs(tangent));
    const double tolerance = std::max(kPiTolerance * std::abs(tangent), kPiDistanceTolerance);
    if (miss <= tolerance) {
        element.startAngle = tangent >= 0.0 ? mdutAngle(start, pi) : mdutAngle(pi, start);
    } else {
        element.startAngle = before->endAngle;
    }
    const Pose end = advance({start.x, start.y, element.startAngle}, element.startCurvature, rateOf(element), length);
    element.laidEnd = {end.x, end.y};
    element.endAngle = end.angle;
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
    const Pose pose =
        advance({element.start.x, element.start.y, element.startAngle}, element.startCurvature, rateOf(element), along);
    point = {pose.x + offset * std::sin(pose.angle), pose.y - offset * std::cos(pose.angle)};
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
