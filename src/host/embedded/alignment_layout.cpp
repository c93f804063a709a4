// How the embedded host lays a fixed line, curve or spiral.
#include "host/embedded/alignment_layout.h"

#include "host/embedded/drawing_names.h"
#include "host/embedded/element_spans.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace fenmark::host::embedded {

namespace {

// End tangent of the last element that has one: a curve that winds up beyond what a real holds has none. An element of no
// length has taken that of the one before.
std::optional<double> tangentBefore(std::span<const Element> before) {
    for (std::size_t i = before.size(); i-- > 0;) {
        if (std::isfinite(before[i].endDirection())) {
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

// The end of a spiral laid from the origin along +x.
PlanPoint endFromOrigin(const Element& spiral) {
    Element atOrigin = spiral;
    atOrigin.start = {};
    atOrigin.direction = 0.0;
    return poseOnElement(atOrigin, spiral.length).point;
}

} // namespace

Element layLine(std::span<const Element> before, const PlanPoint& start, const PlanPoint& end) {
    Element element;
    element.type = ElementType::Straight;
    element.start = start;
    element.end = end;
    spanLine(element, tangentBefore(before).value_or(0.0));
    return element;
}

std::optional<Element> layCurve(std::span<const Element> before, const PlanPoint& start, const PlanPoint& end,
                                double radius, std::int16_t direction, PositiveRadius sense) {
    if (!isRadius(radius)) {
        return std::nullopt;
    }
    Element element;
    element.type = ElementType::Arc;
    element.clockwise = givenClockwise(direction, sense);
    element.start = start;
    element.end = end;
    element.startRadius = radius;
    element.endRadius = radius;
    const double tangent = tangentBefore(before).value_or(0.0);
    if (spanArc(element, tangent)) {
        return element;
    }
    // Spirals without a PI may have to be turned over yet, and then end elsewhere: the last, or the last two, and so on.
    constexpr std::size_t kMostTurnedOver = 4;
    for (std::size_t count = 1; sense == PositiveRadius::Auto && count <= std::min(before.size(), kMostTurnedOver) &&
                                before[before.size() - count].continuing;
         ++count) {
        const std::span<const Element> run = before.last(count);
        Pose pose{run.front().start, run.front().direction};
        for (const Element& spiral : run) {
            Element other = turnedOver(spiral);
            other.start = pose.point;
            other.direction = pose.direction;
            pose = poseOnElement(other, other.length);
        }
        element.start = pose.point;
        if (spanArc(element, tangent)) {
            return element;
        }
    }
    return std::nullopt;
}

std::optional<Element> laySpiral(std::span<const Element> before, std::int32_t elementBefore, const PlanPoint& start,
                                 const PlanPoint& pi, double startRadius, double endRadius, double length,
                                 std::int16_t direction, PositiveRadius sense) {
    // The element before is nearly always the last one.
    const auto known = std::find_if(before.rbegin(), before.rend(),
                                    [&](const Element& element) { return element.id == elementBefore; });
    if (known == before.rend() || !isLength(length) || !areRadii(startRadius, endRadius)) {
        return std::nullopt;
    }
    const auto upToKnown = before.first(static_cast<std::size_t>(before.rend() - known));
    const std::optional<double> tangent = tangentBefore(upToKnown);

    // As the direction argument says, which is the sense that the PI belongs to.
    Element element;
    element.type = ElementType::Clothoid;
    element.clockwise = direction == -1;
    element.start = start;
    element.length = length;
    element.startRadius = startRadius;
    element.endRadius = endRadius;

    // The curve laid from the origin along +x gives its own PI and chord.
    const PlanPoint end = endFromOrigin(element);
    const double turn = element.turn();
    const double toPi = (end.x * std::sin(turn) - end.y * std::cos(turn)) / std::sin(turn); // not finite if parallel
    const double given = distanceTo(start, pi);
    const double towards = toPi < 0.0 ? directionTo(pi, start) : directionTo(start, pi);
    // The origin of the drawing stands for a PI that was not found, and may lie in the right distance by chance.
    const bool notFound = pi.x == 0.0 && pi.y == 0.0 && tangent && !joins(*tangent, towards) &&
                          !joins(*tangent, towards + 2.0 * std::atan2(end.y, end.x));
    const bool takesPi = given > 0.0 && std::isfinite(toPi) && !notFound &&
                         std::abs(given - std::abs(toPi)) <= std::max(kPiShare * std::abs(toPi), kPiDistance);
    element.continuing = !takesPi;
    element.direction = wrapped(takesPi ? towards : tangent.value_or(0.0));
    element.end = poseOnElement(element, length).point;
    if (sense == PositiveRadius::Right) {
        if (takesPi) {
            element = mirrored(element);
        } else {
            element.clockwise = !element.clockwise;
            element.end = poseOnElement(element, length).point;
        }
        element.otherSense = false; // as the setting says
    }
    return element;
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

namespace {

bool hasImage(const Element& element) {
    return element.type != ElementType::Straight && !element.continuing;
}

// A spiral without a PI would know its direction with one. Otherwise a joint that meets with the images of its elements
// is a matter of the turning sense.
Remedy remedyFor(const Element& before, const Element& behind, const LayoutSettings& settings) {
    if ((before.continuing || behind.continuing) && !settings.planTangents) {
        return Remedy::PlanTangents;
    }
    for (const bool turnBefore : {false, true}) {
        for (const bool turnBehind : {false, true}) {
            if ((turnBefore && !hasImage(before)) || (turnBehind && !hasImage(behind))) {
                continue;
            }
            const Element first = turnBefore ? mirrored(before) : before;
            const Element last = turnBehind ? mirrored(behind) : behind;
            if (!joins(first.endDirection(), last.direction)) {
                continue;
            }
            if (settings.positiveRadius != PositiveRadius::Auto) {
                return Remedy::PositiveRadiusAuto;
            }
            const bool other = hasImage(first) ? first.otherSense : last.otherSense;
            if (!hasImage(first) || !hasImage(last) || first.otherSense == last.otherSense) {
                return other ? Remedy::PositiveRadiusRight : Remedy::PositiveRadiusLeft;
            }
        }
    }
    return Remedy::None;
}

} // namespace

std::vector<BrokenJoint> brokenJoints(const Alignment& alignment, const LayoutSettings& settings) {
    std::vector<BrokenJoint> joints;
    double station = alignment.startStation;
    const Element* before = nullptr;
    for (const Element& element : alignment.elements) {
        if (!(element.length > 0.0)) {
            continue;
        }
        if (before != nullptr) {
            const double angle = wrapped(element.direction - before->endDirection());
            if (std::abs(angle) > kBrokenJoint) {
                joints.push_back({alignment.name, station, angle, remedyFor(*before, element, settings)});
            }
        }
        before = &element;
        station += element.length;
    }
    return joints;
}

} // namespace fenmark::host::embedded
