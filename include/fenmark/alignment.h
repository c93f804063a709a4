/**
 * @file
 * Fenmark alignment geometry library: straights, circular arcs and clothoids.
 *
 * A flat set of functions on caller-owned records. The library keeps no state, uses no locale, prints nothing, and
 * may be called from many threads on different records. It allocates only for the stacks of two searches
 * (ali_intpAA, ali_intpRA), and only for elements far beyond real ones. Plain C99 and C++; every function has C
 * linkage.
 *
 * ## Families
 *
 * | Header         | What it does                                          | Functions                                 |
 * | -------------- | ----------------------------------------------------- | ----------------------------------------- |
 * | record.h       | the element record Calelm, lists with fixed slots     | initCalelm                                |
 * | conventions.h  | the two planes, rounding, equal points, status texts  | ali_CEx*, ali_CAround*, ali_statusText    |
 * | clothoid.h     | clothoid relations; primitives on points and angles   | CDAcalxy, CDRcalxy ..., ali_K*            |
 * | primitives.h   | lines, segments; records mirrored, moved, turned      | CD*                                       |
 * | construction.h | records from two points, or from a point and tangent  | ali_mak, ali_makS, ali_makangA ...        |
 * | walking.h      | station to point, point to station, length            | ali_onl*, ali_ofl*, ali_proj*, ali_getl*  |
 * | movement.h     | parallel and turned copies                            | ali_pmov*, ali_tmov*, ali_paraS           |
 * | intersection.h | where two elements meet                               | ali_intp*                                 |
 * | tangent.h      | curves tangent to given elements                      | ali_*mak*                                 |
 * | chains.h       | refits and checks of short chains                     | alimake_rf*, moveR_dl0_*, chk_*, gc_*     |
 * | compound.h     | compound curves                                       | ali_makRAR, ali_makSAR ...                |
 * | ip.h           | curves at an intersection point                       | ali_IPset*                                |
 * | point.h        | elements through a point                              | ali_makr*_P, ali_maks*_P                  |
 *
 * ## Planes
 *
 * - The survey plane has x north and y east, as in survey practice. Its angles are azimuths: from north, clockwise on
 *   the map. Every record and point that crosses an ali_ function is in this plane.
 * - The calculation plane is the survey plane with y negated. It is right-handed: angles run from +x towards +y, and
 *   every formula is the ordinary one. ali_K* take bare points and angles of this plane; the CD* record operations run
 *   on records that the caller has taken there with CDchgSpace.
 *
 * ## Signs
 *
 * - dir = +1 is a left curve: seen along the direction of travel the centre lies on the left. dir = -1 is a right
 *   curve. A straight has 1.
 * - An element is directed from (sx, sy) to (ex, ey); sang and eang point forwards along it.
 * - Radii and parameters are positive. A radius of 0 is infinite. A clothoid may sharpen (r1 flatter) or flatten
 *   (r2 flatter); no field says which but the radii themselves.
 *
 * ## Units, angles and rounding
 *
 * Metres and radians. Stored tangents lie in [0, 2 pi) but for the rounding (2 pi itself rounds up by 6.4e-7). Two
 * steps exist: lengths are rounded to 1e-5 m and angles to 1.389e-6 rad, floor-based, and each function says what
 * it rounds. Clothoids are not rounded at all. The digits are the same with g++ and clang at every level of
 * optimisation, with and without -march=native; -ffast-math is refused. Two points are the same when both
 * coordinates differ by less than 1e-5.
 *
 * The line coefficients k1 to k3 of a straight exist in two forms. Form M, from the construction functions: a x + b
 * y = c in the survey plane, rounded before it is normalised. Form C, from CDchgSpace and CDSinAbs: a x + b y + c =
 * 0 in the plane that the record is in.
 *
 * ## Statuses
 *
 * Functions that can fail return an int whose low 16 bits, read as a signed value, are the status: 0 done, -1 no
 * result, further values as each function says; ali_statusText gives them in words. On failure outputs are left
 * unwritten unless stated otherwise. Values that are not numbers, infinite or absurd end in a status, never in a hang,
 * and a status of 0 or more never comes with values that are not finite. Functions that always return 0 are the
 * exception; where they are declared it says so. Two equal results are equal in every byte: what lies between the
 * fields of a record is 0.
 *
 * ## What these functions cannot, and what can
 *
 * These functions keep to steps, series and tolerances that were settled long ago, and their digits do not change. The
 * exact curves of fenmark/curve.h, in the same plane and units, have no such limits:
 *
 * | Here                                                                         | Take instead                     |
 * | ---------------------------------------------------------------------------- | -------------------------------- |
 * | the first 1.67e-3 A metres of a clothoid are one point (0.67 m at A = 400)   | fmk_chainAtStation, fmk_curvePose |
 * | a foot on a clothoid is good to 1e-3 m                                       | fmk_chainLocate, fmk_curveNearest |
 * | a straight and a clothoid that cross below some 5 degrees: up to 0.98 m off, and a touch is taken for one point | fmk_curveCrossings |
 * | crossings of clothoids are good to about 1e-4 m, two at most                 | fmk_curveCrossings               |
 * | radii at or below 0.56 A are refused                                         | fmk_fitG1, fmk_chainFromCurves   |
 *
 * fmk_chainFromRecords makes a chain of the records of this library.
 *
 * ## A complete example
 *
 * A clothoid from a tangent into an arc of 100 m radius, a stake every 10 m, and the station of a measured point:
 *
 * @code{.c}
 * #include <fenmark/alignment.h>
 * #include <stdio.h>
 *
 * int main(void) {
 *     Calelm spiral;
 *     initCalelm(&spiral);
 *     spiral.type = ALI_CLOTHOID;
 *     spiral.sx = -36000.0; // x is north
 *     spiral.sy = 12000.0;  // y is east
 *     spiral.sang = 0.5;    // azimuth of the tangent, radians
 *     spiral.dir = -1.0;    // turns right
 *     spiral.par = 80.0;    // A
 *     spiral.r1 = 0.0;      // from infinite radius
 *     spiral.r2 = 100.0;    // to 100 m
 *     int status = ali_mak(&spiral, 1); // from its start and the tangent there
 *     if (status != 0) {
 *         printf("%s\n", ali_statusText("ali_makangA", status));
 *         return 1;
 *     }
 *     for (double s = 0.0; s <= spiral.len; s += 10.0) {
 *         double p[2], azimuth;
 *         if (ali_onl(&spiral, s, p, &azimuth) == 0)
 *             printf("%6.2f  x %.4f  y %.4f  azimuth %.6f\n", s, p[0], p[1], azimuth);
 *     }
 *     const double measured[2] = {-35970.0, 12020.0};
 *     double station, foot[2];
 *     if (ali_proj(&spiral, measured, &station, foot) == 0)
 *         printf("station %.3f, %.3f m off\n", station, ali_CDist2P(measured, foot));
 *     return 0;
 * }
 * @endcode
 */
#ifndef FENMARK_ALIGNMENT_H
#define FENMARK_ALIGNMENT_H

#include "fenmark/alignment/record.h"

#include "fenmark/alignment/chains.h"
#include "fenmark/alignment/clothoid.h"
#include "fenmark/alignment/compound.h"
#include "fenmark/alignment/construction.h"
#include "fenmark/alignment/conventions.h"
#include "fenmark/alignment/intersection.h"
#include "fenmark/alignment/ip.h"
#include "fenmark/alignment/movement.h"
#include "fenmark/alignment/point.h"
#include "fenmark/alignment/primitives.h"
#include "fenmark/alignment/tangent.h"
#include "fenmark/alignment/walking.h"

#endif
