/**
 * Walking along a built element: station to point, station and offset to point, point to station, length, and what
 * stands on these.
 *
 * Points and angles are in the survey plane (x north, y east; azimuths in radians) except for chk_ang. A station is the
 * distance in metres along the element from its start.
 */
#ifndef FENMARK_ALIGNMENT_WALKING_H
#define FENMARK_ALIGNMENT_WALKING_H

#include "fenmark/alignment/record.h"

#ifdef __cplusplus
extern "C" {
#endif

/** Point and tangent at the station s, by rec->type; -1 for any other type. */
FENMARK_ALIGNMENT_API int ali_onl(const Calelm* rec, double s, double point[2], double* tangent);

/**
 * On a straight: point rounded to 1e-5, tangent to 1.389e-6.
 * @return 0; -1, nothing written, for equal ends, s < 0, or s beyond the chord by more than 1e-5. A stored len that
 *         exceeds the chord by rounding alone (5e-5 after a move) is on the straight
 */
FENMARK_ALIGNMENT_API int ali_onlS(const Calelm* rec, double s, double point[2], double* tangent);

/**
 * On an arc: point rounded to 1e-5, tangent to 1.389e-6. A negative s is not refused and lies before the start.
 * The arc runs from its start to its end about its centre in the sense of dir. The ends are rounded, and so this length
 * may differ from len by up to 5e-5; the longer of the two counts. Of a full circle, whose ends are one point, no
 * length
 * is certain.
 * @return 0; -1 when the radius rounds to 0 or less, or s, rounded to 1e-5, is beyond that length. The outputs are not
 *         to be used then
 */
FENMARK_ALIGNMENT_API int ali_onlR(const Calelm* rec, double s, double point[2], double* tangent);

/**
 * On a clothoid: neither point nor tangent is rounded. A negative s is not refused. Up to 1.67e-3 A metres from
 * infinite radius the point is the start of the standard clothoid, status 0, and so up to 0.67 m off at A = 400;
 * fmk_chainAtStation of fenmark/curve.h has the true one.
 * @return 0; -1 when s is beyond the length (outputs still written, on the continued curve), or the element is shorter
 *         than 1e-5 (nothing written), or nothing can be computed (values that are not finite)
 */
FENMARK_ALIGNMENT_API int ali_onlA(const Calelm* rec, double s, double point[2], double* tangent);

/**
 * The point at the distance d from the point at the station s, in the direction tangent - angle: angle = pi / 2 is
 * square to the left of the direction of travel, 3 pi / 2 square to the right.
 * @return 0, or the status of ali_onlS; on failure nothing is written
 */
FENMARK_ALIGNMENT_API int ali_oflS(const Calelm* rec, double s, double angle, double d, double point[2]);
/** As ali_oflS, on an arc. */
FENMARK_ALIGNMENT_API int ali_oflR(const Calelm* rec, double s, double angle, double d, double point[2]);
/** As ali_oflS, on a clothoid. */
FENMARK_ALIGNMENT_API int ali_oflA(const Calelm* rec, double s, double angle, double d, double point[2]);

/** Station and foot of the perpendicular from p, by rec->type; -1 for any other type. */
FENMARK_ALIGNMENT_API int ali_proj(const Calelm* rec, const double p[2], double* station, double foot[2]);

/**
 * On a straight; station and foot rounded to 1e-5.
 * @return 0; -1, nothing written, when the foot lies off the element by more than 1e-5
 */
FENMARK_ALIGNMENT_API int ali_projS(const Calelm* rec, const double p[2], double* station, double foot[2]);

/**
 * On an arc; station rounded to 1e-5, the foot rounded relative to the centre. Note the order of the outputs.
 * @return 0; -1, nothing written, when the foot lies off the arc, p is the centre, or p is the start or the end (an end
 *         of the element is refused)
 */
FENMARK_ALIGNMENT_API int ali_projR(const Calelm* rec, const double p[2], double foot[2], double* station);

/**
 * On a clothoid, by bisection; good to the larger of 1 mm and 1e-4 times the distance. Note the order of the outputs.
 * fmk_chainLocate of fenmark/curve.h finds the exact foot, also beside infinite radius.
 * @return 0; -1, nothing written, when no foot lies on the element
 */
FENMARK_ALIGNMENT_API int ali_projA(const Calelm* rec, const double p[2], double foot[2], double* station);

/** Length by rec->type. A whole circle gives the length 0 and the status 1; -1 for any other type. */
FENMARK_ALIGNMENT_API int ali_getl(const Calelm* rec, double* length);

/**
 * Chord rounded to 1e-5. Returns 0; -1, with the length 0, when the ends agree within 1e-5 in both coordinates or are
 * no
 * finite numbers.
 */
FENMARK_ALIGNMENT_API int ali_getlS(const Calelm* rec, double* length);

/**
 * Arc length from the end points and the centre, rounded to 1e-5; len is not consulted, and an arc of more than a half
 * circle gives the length of its complement.
 * @return 0; 1, with 2 pi R, when the ends agree within 1e-5 (a whole circle); -1, nothing written, for par = 0, a dir
 *         other than +1 and -1, or values that are not finite
 */
FENMARK_ALIGNMENT_API int ali_getlR(const Calelm* rec, double* length);

/** |A^2 / r2 - A^2 / r1|, an infinite radius counting 0; not rounded. Returns 0, whatever the values are. */
FENMARK_ALIGNMENT_API int ali_getlA(const Calelm* rec, double* length);

/** Distance rounded to 1e-5, or -1 when the points agree within 1e-5 in both coordinates. */
FENMARK_ALIGNMENT_API double ali_getlPP(const double p[2], const double q[2]);

/**
 * Foot test of the clothoid search. Calculation plane, in the clothoid's own frame: a is a clothoid as CDAinAbs gives
 * it, q a point as CDPinAbs gives it, s a distance from the flat end.
 * cosine becomes that of the angle between the tangent at s and the direction from q to the point at s.
 *
 * @return 0 the point at s is the foot (|cosine| <= 1e-4); 1 the foot lies before s; -1 after s; 2 q lies within 1e-3
 *         of the curve's point (cosine 0)
 */
FENMARK_ALIGNMENT_API int chk_ang(const Calelm* a, const double q[2], double s, double* cosine);

/**
 * Distance of every entry's point to a chain of n elements: to the foot on the first element, in order, that has one;
 * -1.0 when none has. Elements of unknown type are skipped. Returns 1.
 */
FENMARK_ALIGNMENT_API int Calc_moni(AliMoniList* list, int n, const Calelm* elements);

/** The same for one point. Returns 1; -1, with the distance -1.0, when no element answers or n <= 0. */
FENMARK_ALIGNMENT_API int get_moniDist(const double p[2], int n, const Calelm* elements, double* distance);

/**
 * Whether two clothoids lie on one standard clothoid.
 * @return 0 they do not; -1 they do, and the flatter end of b is no further from the common origin than that of a; -2
 * they
 *         do, and it is further, or one flattens while the other sharpens
 */
FENMARK_ALIGNMENT_API int CDsameA(const Calelm* a, const Calelm* b);

/**
 * Whether e2 goes on where e1 ends: 0; -1 when e1's end and e2's start are more than 0.001 apart, or the chords of the
 * last tenth of e1 and the first tenth of e2 differ by 0.5 rad or more.
 */
FENMARK_ALIGNMENT_API int jointCheck(const Calelm* e1, const Calelm* e2);

#ifdef __cplusplus
}
#endif

#endif
