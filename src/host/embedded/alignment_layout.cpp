// How the embedded host lays a fixed line, curve or spiral.
//
// Symbols: t direction at the start, c direction of the chord, tau turn. The mirror image of a curve over the same
// chord starts in the direction 2 c - t.
#include "host/embedded/alignment_layout.h"

#include "host/embedded/drawing_names.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace fenmark::host::embedded {

namespace {

constexpr double kPi = 3.141592653589793;
// A half circle's chord may exceed its diameter by this share, as the ends of survey coordinates come out of rounding.
constexpr double kHalfCircleRounding = 1e-9;

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

// End tangent of the last element that has one. A curve that winds up beyond what a real holds has none.
std::optional<double> tangentBefore(std::span<const Element> before) {
    for (std::size_t i = before.size(); i-- > 0;) {
        if (before[i].length > 0.0 && std::isfinite(before[i].endDirection())) {
            return before[i].endDirection();
        }
    }
    return std::nullopt;
}

bool joins(double tangent, double direction) {
    return std::abs(wrapped(direction - tangent)) <= kBrokenJoint;
}

bool isRadius(double radius) {
    return radius > 0.0 && std::isfinite(radius);
}

bool isLength(double length) {
    return length > 0.0 && std::isfinite(length);
}

// Of a spiral: one of them may be infinite.
bool areRadii(double startRadius, double endRadius) {
    return startRadius > 0.0 && endRadius > 0.0 && !(std::isinf(startRadius) && std::isinf(endRadius));
}

bool givenClockwise(std::int16_t direction, PositiveRadius sense) {
    return (direction == -1) != (sense == PositiveRadius::Right);
}

void turnOver(Element& element) {
    element.clockwise = !element.clockwise;
    element.otherSense = !element.otherSense;
}

// The spirals at the end of a chain that continue the element before them, turned over; empty if there are none.
std::vector<Element> turnedOver(std::span<const Element> before) {
    std::size_t first = before.size();
    while (first > 0 && before[first - 1].continuing) {
        --first;
    }
    std::vector<Element> turned(before.begin() + static_cast<std::ptrdiff_t>(first), before.end());
    for (std::size_t i = 0; i < turned.size(); ++i) {
        Element& element = turned[i];
        turnOver(element);
        if (i > 0) {
            element.start = turned[i - 1].end;
            element.direction = wrapped(turned[i - 1].endDirection());
        }
        element.end = poseOnElement(element, element.length).point;
    }
    return turned;
}

// Whether the curve before was taken the other way.
bool otherSenseBefore(std::span<const Element> before) {
    const auto curve = std::find_if(before.rbegin(), before.rend(),
                                    [](const Element& element) { return element.type != ElementType::Straight; });
    return curve != before.rend() && curve->otherSense;
}

} // namespace

Laid layLine(std::span<const Element> before, const PlanPoint& start, const PlanPoint& end, PositiveRadius sense) {
    const std::optional<double> tangent = tangentBefore(before);
    const auto lineFrom = [&](const PlanPoint& from) {
        Element element;
        element.type = ElementType::Straight;
        element.start = from;
        element.end = end;
        element.length = distanceTo(from, end);
        element.direction = element.length > 0.0 ? directionTo(from, end) : tangent.value_or(0.0);
        return element;
    };
    Laid laid{lineFrom(start), {}};
    if (sense == PositiveRadius::Auto && tangent && !joins(*tangent, laid.element.direction)) {
        std::vector<Element> turned = turnedOver(before);
        if (!turned.empty()) {
            const Element element = lineFrom(turned.back().end);
            if (joins(turned.back().endDirection(), element.direction)) {
                return {element, std::move(turned)};
            }
        }
    }
    return laid;
}

std::optional<Laid> layCurve(std::span<const Element> before, const PlanPoint& start, const PlanPoint& end,
                             double radius, std::int16_t direction, PositiveRadius sense) {
    if (!isRadius(radius)) {
        return std::nullopt;
    }
    const std::optional<double> tangent = tangentBefore(before);
    // Nothing if the chord is too long.
    const auto arcFrom = [&](const PlanPoint& from, bool otherSense) -> std::optional<Element> {
        const double chord = distanceTo(from, end);
        if (!(chord <= 2.0 * radius * (1.0 + kHalfCircleRounding))) {
            return std::nullopt;
        }
        const double half = std::asin(std::min(chord / (2.0 * radius), 1.0));
        const double along = chord > 0.0 ? directionTo(from, end) : tangent.value_or(0.0);
        Element element;
        element.type = ElementType::Arc;
        element.clockwise = givenClockwise(direction, sense) != otherSense;
        element.otherSense = otherSense;
        element.start = from;
        element.end = end;
        element.direction = wrapped(along + (element.clockwise ? half : -half));
        element.length = 2.0 * half * radius;
        element.startRadius = radius;
        element.endRadius = radius;
        return element;
    };

    const std::optional<Element> given = arcFrom(start, false);
    if (sense == PositiveRadius::Auto && tangent && !(given && joins(*tangent, given->direction))) {
        const std::optional<Element> other = arcFrom(start, true);
        if (other && joins(*tangent, other->direction)) {
            return Laid{*other, {}};
        }
        std::vector<Element> turned = turnedOver(before);
        if (!turned.empty()) {
            const Element& last = turned.back();
            const std::optional<Element> behind = arcFrom(last.end, last.otherSense);
            if (behind && joins(last.endDirection(), behind->direction)) {
                return Laid{*behind, std::move(turned)};
            }
        }
    }
    return given ? std::optional(Laid{*given, {}}) : std::nullopt;
}

std::optional<Laid> laySpiral(std::span<const Element> before, std::int32_t elementBefore, const PlanPoint& start,
                              const PlanPoint& pi, double startRadius, double endRadius, double length,
                              std::int16_t direction, PositiveRadius sense) {
    const auto known =
        std::find_if(before.begin(), before.end(), [&](const Element& element) { return element.id == elementBefore; });
    if (known == before.end() || !isLength(length) || !areRadii(startRadius, endRadius)) {
        return std::nullopt;
    }
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
    element.continuing = true; // unless the PI tells otherwise

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
            turnOver(element);
            element.continuing = false;
        } else if (!notFound) {
            element.direction = towards;
            element.continuing = false;
        }
    }
    if (element.continuing && sense == PositiveRadius::Auto && otherSenseBefore(upToKnown)) {
        turnOver(element);
    }
    element.direction = wrapped(element.direction);
    element.end = poseOnElement(element, length).point;
    return laid;
}

Refusal whyCurveRefused(double radius) {
    return isRadius(radius) ? Refusal::ChordBeyondDiameter : Refusal::ArcWithoutRadius;
}

Refusal whySpiralRefused(double startRadius, double endRadius, double length) {
    if (!areRadii(startRadius, endRadius)) {
        return Refusal::ClothoidWithoutRadius;
    }
    return isLength(length) ? Refusal::NothingBefore : Refusal::ClothoidWithoutLength;
}

std::vector<BrokenJoint> brokenJoints(const Alignment& alignment) {
    std::vector<BrokenJoint> joints;
    double station = alignment.startStation;
    std::optional<double> tangent;
    for (const Element& element : alignment.elements) {
        if (!(element.length > 0.0)) {
            continue;
        }
        if (tangent) {
            const double angle = wrapped(element.direction - *tangent);
            if (std::abs(angle) > kBrokenJoint) {
                joints.push_back({alignment.name, station, angle});
            }
        }
        tangent = element.endDirection();
        station += element.length;
    }
    return joints;
}

} // namespace fenmark::host::embedded
