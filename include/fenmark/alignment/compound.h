/**
 * Compound builders: the clothoids between fixed arcs or a fixed straight and arc, and chains that data leave no choice
 * about.
 *
 * All records and points are in the survey plane (x north, y east, metres; tangents are azimuths, radians), but for
 * setAOR_P. R an arc, A a clothoid, S a straight, in the order of travel. Arcs and straights are given complete, as the
 * construction functions leave them; of a clothoid `par` alone is read, and every other field is written.
 *
 * With the parameter A at the radius R, dR the shift and Xm the abscissa of the circle's centre (see clothoid.h), the
 * offset circle of an arc has the radius rho = R + dR: the tangent at the clothoid's origin touches it. Two offset
 * circles, or an offset circle and a line, so fix the tangent, and the clothoids are built from it (the method of the
 * clothoid tables [Kasper 1968]). Elements that are fixed leave a gap between what was built on one and on the other. It
 * is returned as D, and the functions of chains.h close it.
 *
 * All are closed in form. They return 0, or a status in the low 16 bits, read as signed: -1, or the code of a
 * construction function. After a failure every record is as it was before the call, and no output is written.
 */
#ifndef FENMARK_ALIGNMENT_COMPOUND_H
#define FENMARK_ALIGNMENT_COMPOUND_H

#include "fenmark/alignment/record.h"

#ifdef __cplusplus
extern "C" {
#endif

/**
 * The clothoid between two arcs of equal dir, egg-shaped: from the radius of r1 to that of r2. It is built on the arc of
 * the larger radius exactly, tangent to the outer tangent of the offset circles.
 *
 * @param a      par given; written whole
 * @param D      distance from the clothoid's sharp end to the smaller circle, measured along the common tangent,
 *               metres, not negative: by so much the smaller arc has to be moved. 0 when the arcs stand as a demands
 * @param angle  azimuth of the common tangent in the sense of travel, radians
 * @return 0; -1 for radii that differ by less than 1e-5, for equal centres, for unequal dir, when one offset circle
 *         lies inside the other; 1 when the smaller circle is out of reach of the clothoid along the tangent
 */
FENMARK_ALIGNMENT_API int ali_makRAR(const Calelm* r1, Calelm* a, const Calelm* r2, double* D, double* angle);

/**
 * The two clothoids of an S-shaped curve between two arcs of opposite dir: a1 from the radius of r1 to infinite radius,
 * a2 from infinite radius to that of r2, both on the inner tangent of the offset circles.
 *
 * @param a1, a2 par given; written whole
 * @param D      distance between the two flat ends along the tangent, metres, not negative: 0 when the arcs stand as
 *               the parameters demand
 * @return 0; -1 for equal dir, or when the circles or their offset circles do not lie apart; the code of
 *         ali_makangA when it is below 0
 */
FENMARK_ALIGNMENT_API int ali_makRAAR(const Calelm* r1, Calelm* a1, Calelm* a2, const Calelm* r2, double* D);

/**
 * The clothoid between a straight and an arc, built on the arc, its flat end parallel to the straight.
 *
 * @param side  1: the order of travel is s, a, r; any other value: r, a, s
 * @param a     par given; written whole
 * @param D     distance between the clothoid's flat end and the straight, |distance of the arc's centre from the line
 *              - rho|, metres
 * @return 0; -1 for records of other types, for an arc whose centre does not lie on that side of the line to which the
 *         arc turns, for A = 0 or R / A <= 0.56
 */
FENMARK_ALIGNMENT_API int ali_makSAR(int side, const Calelm* s, Calelm* a, const Calelm* r, double* D);

/**
 * Three arcs and four clothoids: r1, a1, a2, r2, a3, a4, r3, with r2 turning against the other two. r2 is moved to
 * where the clothoids demand it. r1 keeps its start and r3 its end; their other ends, and both ends of r2, go to the
 * clothoids.
 *
 * @param D     the larger of the two gaps at the points of inflection, metres; next to nothing, since r2 was placed
 * @param r2    par given, dir given or 0; written whole
 * @param a1 to a4  par given; written whole
 * @return 0; -1 when r1 and r3 turn unlike, r2 turns as they do, no place for r2 exists, or the chain at every such
 *         place would not be tangent with arcs of at most a half circle; or the code of a construction function
 */
FENMARK_ALIGNMENT_API int ali_mak3R4A(double* D, Calelm* r1, Calelm* a1, Calelm* a2, Calelm* r2, Calelm* a3, Calelm* a4,
                                      Calelm* r3);

/**
 * Arc, clothoid, arc, with the second arc through a point. The clothoid runs from infinite radius to the smaller of the
 * two radii: its flat end touches the arc of the larger radius, where the curvature jumps.
 *
 * @param p     point on the circle of r2, survey plane
 * @param mode  -1 (or 65535): the chain runs r2, a, r1; any other value: r1, a, r2
 * @param r1    the given arc; cut at the clothoid
 * @param a     par given; written whole, dir that of the arc of the smaller radius
 * @param r2    par, dir and len given; written whole. len counts from the clothoid on, metres; with 0 the arc reaches p
 * @return 0; -1 when there is no such chain, or it would not be tangent with arcs of less than a half circle; or the
 *         code of a construction function
 */
FENMARK_ALIGNMENT_API int ali_makAOR_P(const double p[2], int mode, Calelm* r1, Calelm* a, Calelm* r2);

/**
 * The worker of ali_makAOR_P: all values in the calculation plane, the chain runs r1, a, r2. Writes the ends of the
 * records, radii and dir of a, and the centre of r2; tangents and lengths stay. a->dir counts, see CDOODistForRAR.
 *
 * @return 0; -1 when there is no such place or no tangent chain: the records are then as
 *         before
 */
FENMARK_ALIGNMENT_API int setAOR_P(const double p[2], Calelm* r1, Calelm* a, Calelm* r2);

#ifdef __cplusplus
}
#endif

#endif
