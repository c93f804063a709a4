/**
 * Movement of built elements into new records, without rebuilding them: parallel, turned, square to the element.
 *
 * All arguments are in the survey plane: metres; azimuths, clockwise on the map, radians. rec and out may be the same.
 * An angle below 1e-5 in magnitude counts as 0. Moved points are rounded to 1e-5 (y on its negated value).
 */
#ifndef FENMARK_ALIGNMENT_MOVEMENT_H
#define FENMARK_ALIGNMENT_MOVEMENT_H

#include "fenmark/alignment/record.h"

#ifdef __cplusplus
extern "C" {
#endif

/**
 * Moves by d along the azimuth angle, by rec->type. Returns 0; -1, nothing written, for any other type and for values
 * that are not finite.
 */
FENMARK_ALIGNMENT_API int ali_pmov(const Calelm* rec, double d, double angle, Calelm* out);
/** Straight: k1 to k3 (form M) from the unrounded moved points. Returns 0, whatever the values are. */
FENMARK_ALIGNMENT_API int ali_pmovS(const Calelm* rec, double d, double angle, Calelm* out);
/** Arc: the centre is moved and rounded too. Returns 0, whatever the values are. */
FENMARK_ALIGNMENT_API int ali_pmovR(const Calelm* rec, double d, double angle, Calelm* out);
/** Clothoid: k1 to k3 are local values and stay. Returns 0, whatever the values are. */
FENMARK_ALIGNMENT_API int ali_pmovA(const Calelm* rec, double d, double angle, Calelm* out);

/**
 * Turns by angle (clockwise on the map) about c, by rec->type. The tangents are rounded to 1.389e-6. An angle below
 * 1e-5 in magnitude is added to the tangents but does not turn the points.
 * Returns 0; -1, nothing written, for any other type and for values that are not finite.
 */
FENMARK_ALIGNMENT_API int ali_tmov(const Calelm* rec, const double c[2], double angle, Calelm* out);
/** Straight: k1 to k3 (form M) from the unrounded turned points. Returns 0, whatever the values are. */
FENMARK_ALIGNMENT_API int ali_tmovS(const Calelm* rec, const double c[2], double angle, Calelm* out);
/** Arc: the centre is turned and rounded too. Returns 0, whatever the values are. */
FENMARK_ALIGNMENT_API int ali_tmovR(const Calelm* rec, const double c[2], double angle, Calelm* out);
/** Clothoid: k1 to k3 stay. Returns 0, whatever the values are. */
FENMARK_ALIGNMENT_API int ali_tmovA(const Calelm* rec, const double c[2], double angle, Calelm* out);

/** A straight moved d to its left (negative: to its right). Returns 0, whatever the values are. */
FENMARK_ALIGNMENT_API int ali_paraS(const Calelm* rec, double d, Calelm* out);

/**
 * The end points of a curve moved d square to their tangents, away from the centre. par, the angles and k stay: the
 * caller rebuilds the curve with its new radius. Returns 0, whatever the values are.
 */
FENMARK_ALIGNMENT_API int para_pmovr(const Calelm* rec, double d, Calelm* out);

/**
 * ali_pmov in place on n records; a record of unknown type, or that comes out not finite, keeps its value. Returns 1,
 * also for n <= 0.
 */
FENMARK_ALIGNMENT_API int many_ali_pmov(int n, Calelm* recs, double d, double angle);

/**
 * ali_tmov in place on n records; a record of unknown type, or that comes out not finite, keeps its value. Returns 1,
 * also for n <= 0.
 */
FENMARK_ALIGNMENT_API int many_ali_tmov(int n, Calelm* recs, const double c[2], double angle);

#ifdef __cplusplus
}
#endif

#endif
