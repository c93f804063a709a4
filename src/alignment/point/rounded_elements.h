/**
 * Elements whose points are rounded to 1e-5, as the builders from a point write them.
 *
 * Vec values and angles are in the calculation plane, records in the survey plane.
 */
#pragma once

#include "alignment/compound/laying.h"

namespace fenmark::alignment::laying {

/**
 * Writes an arc of par and dir of the record about a centre, from p to q: tangents and sweep by ali_KEnAng, length
 * rounded to 1e-5. False, record untouched, when it would be empty or turn by more than the longest sweep given.
 */
bool roundedArc(Vec centre, Vec p, Vec q, double longest, Calelm& arc);

/** Writes a straight from p to q with a given azimuth and length. False, record untouched, when it has no length. */
bool straightAlong(Vec p, Vec q, double azimuth, double length, Calelm& straight);

/**
 * Azimuth of a direction rounded to 1.389e-6. Where the rounding alone would carry it below 1e-5, and so to 0, it stays
 * unrounded: a straight that runs a millimetre off north in a hundred metres keeps its direction.
 */
double roundedAzimuth(double direction);

/**
 * Whether a given element that was cut still has its tangent at the end that stays, beyond what the rounding of its
 * points and of its azimuth explains.
 */
bool keepsTangent(const Calelm& before, const Calelm& after, bool atEnd);

} // namespace fenmark::alignment::laying
