// An element between its two ends, and its image on the other side of its chord.
#pragma once

#include "host/embedded/drawing_names.h"

namespace fenmark::host::embedded {

// An angle (radians) brought into (-pi, pi].
double wrapped(double angle);

double directionTo(const PlanPoint& from, const PlanPoint& to);
double distanceTo(const PlanPoint& from, const PlanPoint& to);

// The element with the other turning sense from the same start in the same direction; its end is left as it was.
Element turnedOver(const Element& element);
// The element with the other turning sense over the same chord: both ends stay.
Element mirrored(const Element& element);

// Direction and length of the shorter arc between the two ends of an element that has them, its sense and its radius.
// A chord that exceeds the diameter by at most 2 mm gets the half circle over it, whose radius is half the chord. False
// if the chord is longer. An arc without a chord takes the other direction.
[[nodiscard]] bool spanArc(Element& arc, double directionOfNoChord);
// The same for a line, which takes the other direction if it has no length.
void spanLine(Element& line, double directionOfNoLength);

} // namespace fenmark::host::embedded
