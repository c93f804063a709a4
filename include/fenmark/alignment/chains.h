/**
 * Chains between fixed elements, refitted after the clothoid between them has changed, and small tests of points.
 *
 * A chain is an array of records in the survey plane (x north, y east, metres; tangents are azimuths, radians) in the
 * order of travel, with an arc or a straight at each end and clothoids between: rf is a fixed arc, sf a fixed straight.
 *
 *     ..._rfAArf   [0] arc, [1] clothoid, [2] clothoid, [3] arc
 *     ..._rfArf    [0] arc, [1] clothoid, [2] arc
 *     ..._rfAsf    [0] straight, [1] clothoid, [2] arc at side 1; [0] arc, [1] clothoid, [2] straight at any other side
 *
 * dl is the gap left in the chain, metres, as the builders of compound.h return it. alimake_* fit the end elements to the
 * clothoid; moveR_dl0_* move an element by the gap, so that it is 0. The way of work is: build the clothoid
 * (ali_makRAR, ali_makRAAR, ali_makSAR), close the gap (moveR_dl0_*), fit the ends (alimake_*).
 *
 * Statuses are in the low 16 bits, read as signed. After a failure every record is as it was before the call unless
 * stated otherwise.
 */
#ifndef FENMARK_ALIGNMENT_CHAINS_H
#define FENMARK_ALIGNMENT_CHAINS_H

#include "fenmark/alignment/record.h"

#ifdef __cplusplus
extern "C" {
#endif

/**
 * Lays both clothoids of an S-shaped curve anew (ali_makRAAR) and fits both arcs to them. An arc whose outer end and
 * tangent allow it is cut there; otherwise it is built from the clothoid on with its own length.
 *
 * @param dl  out: the gap from the end of [1] to the start of [2], positive along the tangent, negative when the
 *            clothoids overlap
 * @return 0; the status of ali_makRAAR, or -1 when no arc of its radius spans from its outer end to the clothoid, or it
 *         can be neither cut nor built: nothing is changed then
 */
FENMARK_ALIGNMENT_API int alimake_rfAArf(Calelm chain[4], double* dl);

/**
 * Fits the first arc to the clothoid, and, when |*dl| < 1e-6, the last one too. Returns 0; -1, nothing changed, when no
 * arc of its radius spans from its outer end to the clothoid, or it can be neither cut nor built.
 */
FENMARK_ALIGNMENT_API int alimake_rfArf(Calelm chain[3], const double* dl);

/**
 * Fits the straight and the arc to the clothoid between them.
 *
 * @param dl    the gap between the clothoid's flat end and the straight: below 1e-6 in magnitude the straight is led to
 *              the clothoid; otherwise it keeps its end
 * @param side  1: straight, clothoid, arc; any other value: arc, clothoid, straight
 * @return 0 both were cut where they lie; -3 the straight's direction had to change: it is built from the clothoid on
 *         with its own length; -2 the same for the arc (and not -3 when both were); -1 the straight or the
 *         arc cannot be built. With -1 the records are unchanged. With -3 the straight, with -2 the arc, is
 *         unchanged when it cannot be built from the clothoid either
 */
FENMARK_ALIGNMENT_API int alimake_rfAsf(Calelm chain[3], double dl, int side);

/**
 * Moves an arc by the gap along the tangent at the inflection, so that the clothoids of an S-shaped curve can meet:
 * side 1 moves [3], any other [0]. dl is the signed gap of alimake_rfAArf and becomes 0. The clothoids stay: run
 * alimake_rfAArf after it. Returns 0; -1, nothing changed, for a record that is no arc or a gap that is not a number.
 */
FENMARK_ALIGNMENT_API int moveR_dl0_rfAArf(int side, double* dl, Calelm chain[4]);

/**
 * Builds an arc at the other arc and the clothoid, so that an egg-shaped curve closes. Side 1: [2] is built from the end
 * of [1] on. Any other side: [1] is built back from the start of [2], and [0] back from there. The arc built anew takes
 * the length of the clothoid. dl becomes 0. Returns 0; -1, nothing changed, when an element cannot be built.
 */
FENMARK_ALIGNMENT_API int moveR_dl0_rfArf(int side, double* dl, Calelm chain[3]);

/**
 * Moves the straight or the arc square to the clothoid's flat end by the gap, lays the clothoid anew, and fits the
 * chain.
 *
 * @param moverSide    1 moves record [2], any other value record [0]
 * @param elementSide  1: straight, clothoid, arc; any other value: arc, clothoid, straight
 * @param dl            the gap of ali_makSAR, not negative; becomes 0
 * @return status of alimake_rfAsf (0, -2, -3); -1, nothing changed, when a step fails
 */
FENMARK_ALIGNMENT_API int moveR_dl0_rfAsf(int moverSide, int elementSide, double* dl, Calelm chain[3]);

/**
 * Arc arc2 of given radius inside arc3, touching it, and joined to arc1 by a clothoid: arc1, clothoid, arc2, arc3.
 * All values are in the calculation plane. Writes the clothoid's ends, radii and dir, the end of arc1, both ends and
 * the centre of arc2, and the start of arc3; tangents and lengths are left to the construction functions. dir of arc2
 * is that of arc3, or 0.
 *
 * @param mode  0: the clothoid runs from infinite radius to the smaller radius; -1 (or 65535): between the two radii
 * @return 0; -1 or 1 when no place exists; -1 when a sweep is empty or not below a half circle. The records are then
 *         unchanged
 */
FENMARK_ALIGNMENT_API int ARmakRR(int mode, Calelm* arc1, Calelm* arc3, Calelm* arc2, Calelm* clothoid);

/** 0 when |a - b| is less than one second of arc (4.84813681109536e-6 rad), else -1. The angles are not wrapped. */
FENMARK_ALIGNMENT_API int chk_CSameAng(double a, double b);

/**
 * The first of the n - 1 lines through consecutive points of a list that p is not farther from than tol (height of the
 * triangle by Heron's formula; a point beyond an end, on the line's continuation, passes). Any plane, metres.
 * @return 0 and the index of the line's first point; -1, index unwritten, for none or n < 2
 */
FENMARK_ALIGNMENT_API int chk_on_tangent(int n, const AliIpEntry* list, const double p[2], int* index, double tol);

/**
 * Where p stands to a list of n points: 2 (index n - 1) within 6 tol of the last in both coordinates, else 1 (index 0)
 * within 6 tol of the first, else 3 and the index of chk_on_tangent, else 0 (index unwritten; also for n < 1).
 */
FENMARK_ALIGNMENT_API int chk_tangent(int n, const AliIpEntry* list, const double p[2], int* index, double tol);

/**
 * Foot of the perpendicular from p on the line of a segment (x0, y0, x1, y1). Within half a degree of an axis the line
 * counts as parallel to it, through the mean of the ends. Any plane. out is always written.
 * @return 1 when the foot lies on the segment (distances to the ends add up to its length within 1e-4), else -1;
 *         flag gets the same value
 */
FENMARK_ALIGNMENT_API int cplnrm(double out[2], const double p[2], const double segment[4], int* flag);

/** Crossing of the unbounded lines a, b and c, d, any plane. Returns 0; 1, nothing written, for a determinant of the
 * spans below 1e-7. */
FENMARK_ALIGNMENT_API int gc_intpSS(const double a[2], const double b[2], const double c[2], const double d[2],
                                    double out[2]);

/** 0 when p is not farther than tol from the unbounded line through a and b (Heron's formula), else -1. */
FENMARK_ALIGNMENT_API int gc_poionl(double px, double py, double ax, double ay, double bx, double by, double tol);

#ifdef __cplusplus
}
#endif

#endif
