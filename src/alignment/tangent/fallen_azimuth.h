/**
 * Azimuths that fell to an axis. An angle below 1e-5 becomes 0 when it changes plane, and half a turn when the element
 * is run the other way. So of two tangents at one joint one may read 0 and the other 1e-5 and a little more. Survey
 * plane.
 */
#pragma once

#include "fenmark/alignment/record.h"

#include <span>

namespace fenmark::alignment {

/** How far a record's tangents may be off its curve because one of them fell, radians; 0 where none did. */
double lostByFalling(const Calelm& e);

/**
 * Where the tangents at a joint differ by more than 1e-5, but by no more than that and the rounding step of a
 * straight's azimuth, and one of them fell, that one is raised again: a straight to its own azimuth, any other element
 * to its neighbour's tangent.
 */
void levelJoint(Calelm& before, Calelm& after);

/**
 * A given record keeps its far tangent (its end tangent when atEnd): where only one of the two fell, it is brought near
 * to the given value again.
 */
void levelFarEnd(Calelm& e, bool atEnd, double given);

/** The same at every joint of a chain, and at its two ends against the given records before they were cut. */
void levelChain(std::span<Calelm> chain, const Calelm& firstBefore, const Calelm& lastBefore);

} // namespace fenmark::alignment
