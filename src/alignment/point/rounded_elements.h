/**
 * Elements whose points are rounded to 1e-5, as the builders from a point write them.
 *
 * Vec values and angles are in the calculation plane, records in the survey plane.
 */
#ifndef FENMARK_ALIGNMENT_POINT_ROUNDED_ELEMENTS_H
#define FENMARK_ALIGNMENT_POINT_ROUNDED_ELEMENTS_H

#include "alignment/compound/laying.h"

namespace fenmark::alignment::laying {

/**
 * Writes an arc of par and dir of the record about a centre, from p to q: tangents and sweep by ali_KEnAng, length
 * rounded to 1e-5. False, record untouched, when it would be empty or turn by more than the longest sweep told.
 */
bool roundedArc(Vec centre, Vec p, Vec q, double longest, Calelm& arc);

/** Writes a straight from p to q with a given direction and length. False, record untouched, when it has no length. */
bool straightAlong(Vec p, Vec q, double direction, double length, Calelm& straight);

/**
 * Whether a given element that was cut still has its tangent at the end that stays, beyond what the rounding of its
 * points explains.
 */
bool keepsTangent(const Calelm& before, const Calelm& after, bool atEnd);

} // namespace fenmark::alignment::laying

#endif
