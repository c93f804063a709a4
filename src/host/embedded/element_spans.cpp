// An element between its two ends, and its image on the other side of its chord.
//
// The image of a curve over the same chord starts in the direction 2 c - t, where t is the direction at the start and c
// that of the chord.
#include "host/embedded/element_spans.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace fenmark::host::embedded {

namespace {

// A half circle's chord may exceed its diameter by this much, metres: both ends come from coordinates in millimetres.
constexpr double kHalfCircleExcess = 0.002;

} // namespace

double wrapped(double angle) {
    const double rest = std::remainder(angle, 2.0 * std::numbers::pi);
    return rest <= -std::numbers::pi ? std::numbers::pi : rest;
}

double directionTo(const PlanPoint& from, const PlanPoint& to) {
    return std::atan2(to.y - from.y, to.x - from.x);
}

double distanceTo(const PlanPoint& from, const PlanPoint& to) {
    return std::hypot(to.x - from.x, to.y - from.y);
}

Element turnedOver(const Element& element) {
    Element turned = element;
    turned.clockwise = !element.clockwise;
    turned.otherSense = !element.otherSense;
    return turned;
}

Element mirrored(const Element& element) {
    Element image = turnedOver(element);
    image.direction = wrapped(2.0 * directionTo(element.start, element.end) - element.direction);
    return image;
}

bool spanArc(Element& arc, double directionOfNoChord) {
    const double chord = distanceTo(arc.start, arc.end);
    if (!(chord <= 2.0 * arc.startRadius + kHalfCircleExcess)) {
        return false;
    }
    // Never less than what reaches over the chord.
    const double radius = std::max(arc.startRadius, 0.5 * chord);
    const double half = std::asin(chord / (2.0 * radius));
    const double along = chord > 0.0 ? directionTo(arc.start, arc.end) : directionOfNoChord;
    arc.direction = wrapped(along + (arc.clockwise ? half : -half));
    arc.length = 2.0 * half * radius;
    arc.startRadius = radius;
    arc.endRadius = radius;
    return true;
}

void spanLine(Element& line, double directionOfNoLength) {
    line.length = distanceTo(line.start, line.end);
    line.direction = line.length > 0.0 ? directionTo(line.start, line.end) : directionOfNoLength;
}

} // namespace fenmark::host::embedded
