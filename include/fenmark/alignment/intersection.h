/**
 * Where two elements meet.
 *
 * Elements and points are in the survey plane (x north, y east, metres); stations are metres from each element's own
 * start. Each function gives up to two points: p1 with the stations a on the first element and b on the second, p2 with
 * c and d in the same order. Two clothoids depart from this: see ali_intpAA.
 * Outputs that a result does not announce are left unwritten, unless stated otherwise.
 *
 * Results of the family functions (but for ali_intpSS):
 *    0  one point, in p1, a, b
 *    1  one point of tangency, or two that coincide (then p1, a, b and p2, c, d are both written)
 *    2  two points
 *   <0  none
 */
#ifndef FENMARK_ALIGNMENT_INTERSECTION_H
#define FENMARK_ALIGNMENT_INTERSECTION_H

#include "fenmark/alignment/record.h"

#ifdef __cplusplus
extern "C" {
#endif

/**
 * Intersection of any two elements, by their types. Stations stay with e1 and e2 whatever their order, except for two
 * clothoids, whose order is that of ali_intpAA.
 *
 * @return 0 one point (also a touch); 1 two points; negative: none, as the family function said; -1 for a type outside
 *         1..3. Two straights give 0 only when the crossing lies on both, else -1
 */
FENMARK_ALIGNMENT_API int ali_intp(const Calelm* e1, const Calelm* e2, double p1[2], double* a, double* b, double p2[2],
                                   double* c, double* d);

/**
 * Crossing of two unbounded lines, with signed stations; point and stations rounded to 1e-5. Both records must come
 * from a construction (line coefficients of form M).
 *
 * @return 0 the crossing lies on both; 1 not on the second; 2 not on the first; 3 on neither (all outputs written in
 *         these cases); -1 the lines are one; -2 parallel; -3 an element's ends agree within 1e-5
 */
FENMARK_ALIGNMENT_API int ali_intpSS(const Calelm* e1, const Calelm* e2, double p1[2], double* a, double* b);

/**
 * Straight s and arc r. Stations are rounded to 1e-5, points are not; the lower station on s comes first.
 * @return 0, 1, 2 as above; -1 the line misses the circle, or an element has no size; -2 it meets the circle outside
 * the
 *         elements
 */
FENMARK_ALIGNMENT_API int ali_intpSR(const Calelm* s, const Calelm* r, double p1[2], double* a, double* b, double p2[2],
                                     double* c, double* d);

/**
 * Two arcs. Stations and points are rounded to 1e-5; the lower station on r1 comes first.
 * @return 0, 1, 2 as above; -1 the circles lie apart, or one inside the other, or an arc has no radius; -2 they are the
 *         same circle, or meet outside the elements; -3 they are concentric
 */
FENMARK_ALIGNMENT_API int ali_intpRR(const Calelm* r1, const Calelm* r2, double p1[2], double* a, double* b,
                                     double p2[2], double* c, double* d);

/**
 * Arc r and clothoid a, by subdivision of the clothoid with tangent triangles; good to about 1e-4 m, two points at
 * most. fmk_curveCrossings of fenmark/curve.h has all of them, exactly.
 * @return 0, 1 (a touch, one point), 2; -1 none, r1 = r2 on the clothoid, or a sweep k3 <= 0
 */
FENMARK_ALIGNMENT_API int ali_intpRA(const Calelm* r, const Calelm* aElm, double p1[2], double* a, double* b,
                                     double p2[2], double* c, double* d);

/**
 * Straight s and clothoid a, by a walk from both ends of the clothoid; good to about 1e-4 m over the sine of the
 * crossing angle. A line whose parallel tangent passes within 1 m of it counts as touching there: result 1, one point.
 * So crossings below some 5 degrees are lost to a touch up to 0.98 m off, and a line that crosses twice near its
 * touch gives one point. fmk_curveCrossings of fenmark/curve.h has every crossing, and says which are touches.
 * @return 0, 1, 2; -1 none, or r1 = r2 on the clothoid
 */
FENMARK_ALIGNMENT_API int ali_intpSA(const Calelm* s, const Calelm* aElm, double p1[2], double* a, double* b,
                                     double p2[2], double* c, double* d);

/**
 * Two clothoids, by subdivision of both with tangent triangles; good to about 1e-4 m. Two elements of one clothoid give
 * two points of their common stretch. fmk_curveCrossings of fenmark/curve.h has all crossings, exactly.
 *
 * The order of the stations departs from that of all other pairs: a is the station of p1 on e1, b that of p2 on e1,
 * c that of p1 on e2, d that of p2 on e2.
 *
 * @return 0, 1 (a touch, one point), 2; -1 none, or r1 = r2 on either
 */
FENMARK_ALIGNMENT_API int ali_intpAA(const Calelm* e1, const Calelm* e2, double p1[2], double* a, double* b,
                                     double p2[2], double* c, double* d);

#ifdef __cplusplus
}
#endif

#endif
