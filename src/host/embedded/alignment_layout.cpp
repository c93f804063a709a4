// How the embedded host lays a fixed line, curve or spiral.
//
// Symbols: t direction at the start, c direction of the chord, tau turn. The mirror image of a curve over the same
// chord starts in the direction 2 c - t.
#include "host/embedded/alignment_layout.h"

#include "host/embedded/drawing.h"

#include <algorithm>
#include <cmath>

namespace fenmark::host::embedded {

namespace {

constexpr double kPi = 3.141592653589793;

// Brought into (-pi, pi].
double wrapped(double angle) {
    const double rest = std::remainder(angle, 2.0 * kPi);
    return rest <= -kPi ? kPi : rest;
}

double directionTo(const PlanPoint& from, const PlanPoint& to) {
    return std::atan2(to.y - from.y, to.x - from.x);
}

double distanceTo(const PlanPoint& from, const PlanPoint& to) {
    return std::hypot(to.x - from.x, to.y - from.y);
}

// End tangent of the last element that has one.
std::optional<double> tangentBefore(std::span<const Element> before) {
    for (std::size_t i = before.size(); i-- > 0;) {
        if (before[i].length > 0.0)
            return before[i].endDirection();
    }
    return std::nullopt;
}

bool joins(double tangent, double direction) {
    return std::abs(wrapped(direction - tangent)) <= kBrokenJoint;
}

bool givenClockwise(std::int16_t direction, PositiveRadius sense) {
    return (direction == -1) != (sense == PositiveRadius::Right);
}

} // namespace

Element layLine(std::span<const Element> before, const PlanPoint& start, const PlanPoint& end) {
    Element element;
    element.type = ElementType::Straight;
    element.start = start;
    element.end = end;
    element.length = distanceTo(start, end);
    element.direction = element.length > 0.0 ? directionTo(start, end) : tangentBefore(before).value_or(0.0);
    return element;
}

std::optional<Laid> layCurve(std::span<const Element> before, const PlanPoint& start, const PlanPoint& end,
                             double radius, std::int16_t direction, PositiveRadius sense) {
    const double chord = distanceTo(start, end);
    if (!(radius > 0.0) || !std::isfinite(radius) || !(chord <= 2.0 * radius))
        return std::nullopt;
    const std::optional<double> tangent = tangentBefore(before);
    const double half = std::asin(std::min(chord / (2.0 * radius), 1.0));
    const double along = chord > 0.0 ? directionTo(start, end) : tangent.value_or(0.0);

    Laid laid;
    bool clockwise = givenClockwise(direction, sense);
    const auto first = [&](bool right) { return along + (right ? half : -half); };
    if (sense == PositiveRadius::Auto && tangent && !joins(*tangent, first(clockwise)) &&
        joins(*tangent, first(!clockwise))) {
        clockwise = !clockwise;
        laid.otherSense = true;
    }
    Element& element = laid.element;
    element.type = ElementType::Arc;
    element.clockwise = clockwise;
    element.start = start;
    element.end = end;
    element.direction = wrapped(first(clockwise));
    element.length = 2.0 * half * radius;
    element.startRadius = radius;
    element.endRadius = radius;
    return laid;
}

std::optional<Laid> laySpiral(std::span<const Element> before, std::int32_t elementBefore, const PlanPoint& start,
                              const PlanPoint& pi, double startRadius, double endRadius, double length,
                              std::int16_t direction, PositiveRadius sense) {
    const auto known =
        std::find_if(before.begin(), before.end(), [&](const Element& element) { return element.id == elementBefore; });
    if (known == before.end() || !(length > 0.0) || !std::isfinite(length) || !(startRadius > 0.0) ||
        !(endRadius > 0.0) || (std::isinf(startRadius) && std::isinf(endRadius)))
        return std::nullopt;
    const auto upToKnown = before.first(static_cast<std::size_t>(known - before.begin()) + 1);
    const std::optional<double> tangent = tangentBefore(upToKnown);

    Laid laid;
    Element& element = laid.element;
    element.type = ElementType::Clothoid;
    element.clockwise = givenClockwise(direction, sense);
    element.start = start;
    element.length = length;
    element.startRadius = startRadius;
    element.endRadius = endRadius;
    element.direction = tangent.value_or(0.0);

    // The curve laid from the origin along +x tells its own PI and chord.
    const PlanPoint end = poseOnElement(
                              [&] {
                                  Element atOrigin = element;
                                  atOrigin.start = {};
                                  atOrigin.direction = 0.0;
                                  return atOrigin;
                              }(),
                              length)
                              .point;
    const double turn = element.turn();
    const double toPi = (end.x * std::sin(turn) - end.y * std::cos(turn)) / std::sin(turn); // not finite if parallel
    const double given = distanceTo(start, pi);
    const bool takesPi = sense != PositiveRadius::Right && std::isfinite(toPi) &&
                         std::abs(given - std::abs(toPi)) <= std::max(kPiShare * std::abs(toPi), kPiDistance);
    if (takesPi && given > 0.0) {
        const double towards = toPi < 0.0 ? directionTo(pi, start) : directionTo(start, pi);
        const double mirrored = towards + 2.0 * std::atan2(end.y, end.x);
        // The origin of the drawing stands for a PI that was not found, and may lie in the right distance by chance.
        const bool notFound = pi.x == 0.0 && pi.y == 0.0 && tangent && !joins(*tangent, towards);
        if (sense == PositiveRadius::Auto && tangent && !joins(*tangent, towards) && joins(*tangent, mirrored)) {
            element.clockwise = !element.clockwise;
            laid.otherSense = true;
        } else if (!notFound) {
            element.direction = towards;
        }
    }
    element.direction = wrapped(element.direction);
    element.end = poseOnElement(element, length).point;
    return laid;
}

std::vector<BrokenJoint> brokenJoints(const Alignment& alignment) {
    std::vector<BrokenJoint> joints;
    double station = alignment.startStation;
    std::optional<double> tangent;
    for (const Element& element : alignment.elements) {
        if (!(element.length > 0.0))
            continue;
        if (tangent) {
            const double angle = wrapped(element.direction - *tangent);
            if (std::abs(angle) > kBrokenJoint)
                joints.push_back({alignment.name, station, angle});
        }
        tangent = element.endDirection();
        station += element.length;
    }
    return joints;
}

} // namespace fenmark::host::embedded
