/**
 * @file
 * Exact curves: straights, circular arcs and clothoids as one kind, the curve of linear curvature.
 *
 * Part of the Fenmark alignment library since version 1.1. Nothing here is rounded, and work does not depend on how far a
 * curve turns. Plain C99 and C++; every function has C linkage. The library keeps no state and may be called from many
 * threads.
 *
 * | Header         | What it does                                                                             |
 * | -------------- | ---------------------------------------------------------------------------------------- |
 * | curve/status.h  | statuses and their texts                                                                |
 * | curve/element.h | one curve: pose at a length, parts and copies, box, line within a tolerance              |
 * | curve/search.h  | nearest point, all feet, crossings of two curves                                         |
 * | curve/fit.h     | curves through poses, at intersection points, through a point                            |
 * | curve/chain.h   | chains: distance and station, located points, joints, lines, crossings, stakes           |
 * | curve/profile.h | longitudinal profile, crossfall, points in space                                         |
 *
 * ## Plane, units and signs
 *
 * The survey plane, x north and y east, metres. Azimuths are radians clockwise from north; they are never wrapped, so that
 * they run on through full circles. Curvatures are 1/m, positive where the curve turns to the right. Offsets are metres,
 * positive to the right of travel.
 *
 * ## Accuracy
 *
 * Positions are good to 1e-13 of the curve's length, and to the last bit of the coordinates far from the origin.
 *
 * ## Statuses
 *
 * Every function returns a status: 0 done, negative failed, positive done with something to say. On failure outputs are
 * left unwritten unless stated otherwise. Values that are not numbers, infinite, or too large to answer within doubles end
 * in a status; they are never computed on.
 *
 * ## A complete example
 *
 * The clothoid between two poses, its points every 10 m, and where a measured point lies beside it:
 *
 * @code{.c}
 * #include <fenmark/curve.h>
 * #include <stdio.h>
 *
 * int main(void) {
 *     const FmkPose from = {{-36000.0, 12000.0}, 0.5};
 *     const FmkPose to = {{-35945.0, 12045.0}, 0.9};
 *     FmkCurve curve;
 *     int status = fmk_fitG1(&from, &to, &curve);
 *     if (status != FMK_OK) {
 *         printf("%s\n", fmk_statusText(status));
 *         return 1;
 *     }
 *     for (double s = 0.0; s <= curve.length; s += 10.0) {
 *         FmkPose pose;
 *         if (fmk_curvePose(&curve, s, &pose) == FMK_OK)
 *             printf("%6.2f  x %.4f  y %.4f  azimuth %.6f\n", s, pose.point.x, pose.point.y, pose.azimuth);
 *     }
 *     const FmkPoint measured = {-35970.0, 12020.0};
 *     FmkFoot foot;
 *     if (fmk_curveNearest(&curve, &measured, &foot) == FMK_OK)
 *         printf("at %.3f, %.3f m to the right\n", foot.along, foot.offset);
 *     return 0;
 * }
 * @endcode
 */
#ifndef FENMARK_CURVE_H
#define FENMARK_CURVE_H

#include "fenmark/curve/chain.h"
#include "fenmark/curve/element.h"
#include "fenmark/curve/fit.h"
#include "fenmark/curve/profile.h"
#include "fenmark/curve/search.h"
#include "fenmark/curve/status.h"

#endif
