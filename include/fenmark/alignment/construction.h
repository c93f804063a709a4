/**
 * Construction: completes a record from two end points, or from one end point with its tangent.
 *
 * All values are in the survey plane: x north, y east, metres; azimuths, radians.
 * Each function returns a status: 0 done, 2 done but the end point at the sharper end was moved (ali_makA alone),
 * -1 bad input.
 */
#ifndef FENMARK_ALIGNMENT_CONSTRUCTION_H
#define FENMARK_ALIGNMENT_CONSTRUCTION_H

#include "fenmark/alignment/record.h"

#ifdef __cplusplus
extern "C" {
#endif

/**
 * Builds by rec->type: mode 0 calls ali_makS, ali_makR or ali_makA; modes 1 and 2 call ali_makangS, ali_makangR or
 * ali_makangA with the mode as the end.
 *
 * @return status of the builder; -1, record unchanged, for a type outside 1..3 or a mode outside 0..2
 */
FENMARK_ALIGNMENT_API int ali_mak(Calelm* rec, int mode);

/**
 * Straight between its end points. Needs sx, sy, ex, ey; writes type, len (to 1e-5), sang = eang (to 1.389e-6), k1 to
 * k3 (form M), dir = 1 and zero par, r1, r2.
 *
 * @return 0; -1, record unchanged, when the end points agree within 1e-5 in both coordinates
 */
FENMARK_ALIGNMENT_API int ali_makS(Calelm* rec);

/**
 * Arc of at most a half circle between its end points. Needs sx, sy, ex, ey, dir, par; writes len (to 1e-5), sang,
 * eang, k1 and k2 (centre), k3 (sweep) and zero r1, r2. Does not set type.
 *
 * @return 0; -1, record unchanged, when the end points agree within 1e-5 in both coordinates, par = 0, 2 par is less
 *         than the chord, or dir is neither +1 nor -1
 */
FENMARK_ALIGNMENT_API int ali_makR(Calelm* rec);

/**
 * Clothoid between its end points. Needs sx, sy, ex, ey, dir, par (A), r1, r2; len on entry is ignored.
 * The flatter end is the anchor; the two points give the direction of the chord; A, r1, r2 and dir give the shape.
 * Writes len, sang, eang, k1 to k3, unrounded. Does not set type.
 *
 * @return 0; 2 when the computed point at the sharper end differs from the given one by more than 1e-5 and replaced
 *         it; -1 when A = 0, a radius is at or below 0.56 A, or the element has no length. The record then keeps its
 *         supplied fields, with len, k1, k2, k3 = 1 and sang, eang = pi
 */
FENMARK_ALIGNMENT_API int ali_makA(Calelm* rec);

/**
 * Straight from one end. end 1: start point and sang are given; end 2: end point and eang. Needs len > 0. Writes the
 * other point (to 1e-5), the other angle and k1 to k3 (form M), nothing else.
 *
 * @return 0; -1, record unchanged, for len <= 0 or another end
 */
FENMARK_ALIGNMENT_API int ali_makangS(Calelm* rec, int end);

/**
 * Arc from one end, of any sweep up to a full circle; fmk_chainFromCurves of fenmark/curve.h takes longer ones too.
 * end 1: start point and sang are given; end 2: end point and eang. Needs dir, par, len. Writes the other point and
 * len (to 1e-5), the other tangent and par (to 1.389e-6: the radius too is rounded to the angle step), the centre
 * k1, k2 and the sweep k3.
 *
 * @return 0; -1, record unchanged, for another end, a dir other than +1 and -1, par or len not above 0, or
 *         values that are not finite
 */
FENMARK_ALIGNMENT_API int ali_makangR(Calelm* rec, int end);

/**
 * Clothoid from one end. end 1: start point and sang are given; end 2: end point and eang. Needs dir, par (A), r1, r2.
 * Writes the other point, the other tangent, len and k1 to k3.
 *
 * @return 0, also for the empty element of equal lengths (a point, with len and k1 to k3 zero); -1, record unchanged,
 *         for another end, A = 0, a radius at or below 0.56 A, a dir other than +1 and -1, or values that are not
 *         finite
 */
FENMARK_ALIGNMENT_API int ali_makangA(Calelm* rec, int end);

#ifdef __cplusplus
}
#endif

#endif
