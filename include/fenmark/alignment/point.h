/**
 * Elements fitted from a given element to a given point.
 *
 * All records and points are in the survey plane (x north, y east, metres; tangents are azimuths, radians). The small
 * letter behind "mak" says how: with r the given element is an arc, with s a straight. The given element is cut (or
 * lengthened) where the new one joins; its other end and the tangent there stay. An arc is lengthened to a half circle
 * at most; of an arc that was longer, more may stay. A new arc that reaches a point is at most a half circle.
 *
 * `end` is 1 or any other value. Unless stated otherwise, 1 means that the given element comes first and the new one
 * follows; any other value means that the new one comes first and the given one follows. All chains are built in the
 * order of travel.
 *
 * Geometry: tangents to a circle or to the offset circle of radius rho = R + dR (see compound.h), and the triangle of
 * two centres and the point. Of two mirrored solutions the one that continues the given element's travel is taken.
 *
 * Returned is 0, or a status in the low 16 bits, read as signed: -1, or the code of a construction function. After a
 * failure all records are unchanged and no output is written. A chain that is not tangent (joints within 1e-5 m, 1e-4
 * where both sides are rounded; tangents within 1e-5 rad) is never a success; neither is a new arc that misses the
 * point by more than 1e-5 m beyond rounding.
 */
#ifndef FENMARK_ALIGNMENT_POINT_H
#define FENMARK_ALIGNMENT_POINT_H

#include "fenmark/alignment/record.h"

#ifdef __cplusplus
extern "C" {
#endif

/**
 * Straight s tangent to arc r, on the line to the point. s gets the length that it brings (s->len > 0): it is not led
 * to the point itself. End 1: r, s; any other: s, r. Points and lengths are rounded to 1e-5.
 * @return 0; -1 when p lies inside the circle, s->len is not positive, or r would have to be lengthened beyond a half
 * circle
 */
FENMARK_ALIGNMENT_API int ali_makrS_P(const double p[2], int end, Calelm* r, Calelm* s);

/**
 * Arc r2 (par and dir given) tangent to arc r1, from the joint to p. End 1: r1, r2; any other: r2, r1. With equal dir
 * r2 touches from inside, with opposite dir from outside. Points and lengths are rounded to 1e-5.
 * @return 0; -1 when a radius is 0, when r1 >= 2 r2, when p is out of reach, or when r2 would exceed a half circle
 */
FENMARK_ALIGNMENT_API int ali_makrR_P(const double p[2], int end, Calelm* r1, Calelm* r2);

/**
 * Arc r1 (par given, made) that turns against the given arc r2 and joins it, with its other end at p. End 1: r2, r1;
 * any other: r1, r2. par of r2 is rounded to 1.389e-6, its moved end to 1e-5 (ali_makangR).
 * @return 0; -1 when p is out of reach, or no tangent chain with r1 of at most a half circle exists
 */
FENMARK_ALIGNMENT_API int ali_makrR_P_S(const double p[2], int end, Calelm* r1, Calelm* r2);

/**
 * Straight s through p, clothoid a (par given) and arc r. Here end 1 means s, a, r, with s from p on; any other end
 * means r, a, s, with s ending at p. s gets the length that it brings, which must be the distance from p to the
 * clothoid's flat end, within 1e-4 m; a length of 0 stands for as long as needed.
 * @return 0; -1 when p lies within the offset circle, s->len does not lead to the clothoid, or r would have to
 *         be lengthened beyond a half circle
 */
FENMARK_ALIGNMENT_API int ali_makrAS_P(const double p[2], int end, Calelm* r, Calelm* a, Calelm* s);

/**
 * Egg-shaped clothoid a (par given) and arc r2 (par given) of the same turn as arc r1, r2 reaching p. End 1: r1, a, r2;
 * any other: r2, a, r1. r2->dir may be 0, otherwise it must be that of r1. r1's par is rounded to 1.389e-6, its moved
 * end to 1e-5 (ali_makangR).
 * @param D      gap of ali_makRAR, next to nothing here, metres
 * @param angle  azimuth of the common tangent, radians
 */
FENMARK_ALIGNMENT_API int ali_makrAR_P(const double p[2], int end, Calelm* r1, Calelm* a, Calelm* r2, double* D,
                                       double* angle);

/**
 * Two clothoids (par given) that meet at infinite radius, and arc r2 (par given) that turns against arc r1 and reaches
 * p. End 1: r1, a1, a2, r2; any other: r2, a2, a1, r1. r2->dir may be 0, otherwise it must be opposite to that of r1.
 * r1 is rounded as by ali_makrAR_P.
 * @param D  gap of ali_makRAAR, next to nothing here, metres
 */
FENMARK_ALIGNMENT_API int ali_makrAAR_P(const double p[2], int end, Calelm* r1, Calelm* a1, Calelm* a2, Calelm* r2,
                                        double* D);

/**
 * Arc r (par, dir, len given) tangent to straight s, its circle through p. End 1: s, r; any other: r, s. r keeps its
 * length, whether p lies on that stretch of the circle or not; with a length of 0 it reaches p. The contact is the one
 * from which p lies within a half circle; where that lies off the straight's side that stays, an arc long enough to
 * reach p beyond a half circle is joined at the other. Points and lengths are rounded to 1e-5, tangents to 1.389e-6.
 * @return 0; -1 when p is farther from the line than 2 par, or lies on the side away from dir, or the contact lies off
 *         the straight's side that stays
 */
FENMARK_ALIGNMENT_API int ali_maksR_P(const double p[2], int end, Calelm* s, Calelm* r);

/**
 * Clothoid a (par given) and arc r (par, dir given) tangent to straight s, the circle of r through p. End 1: s, a, r;
 * any other: r, a, s. s is cut at the clothoid's flat end. r keeps its length when len is above 0, otherwise it reaches
 * p. The centre lies behind p in the sense of travel away from s; ahead of it only where that gives no chain and r
 * itself reaches p.
 * @return 0; -1 when the line offset by R + dR to the side of dir passes p at more than R, or the clothoid would begin
 *         off the straight's side that stays
 */
FENMARK_ALIGNMENT_API int ali_maksAR_P(const double p[2], int end, Calelm* s, Calelm* a, Calelm* r);

#ifdef __cplusplus
}
#endif

#endif
