/**
 * Fitting exact curves: through poses, at intersection points, through a point.
 */
#ifndef FENMARK_CURVE_FIT_H
#define FENMARK_CURVE_FIT_H

#include "fenmark/curve/element.h"

#ifdef __cplusplus
extern "C" {
#endif

/**
 * The shortest curve from one pose to another: a straight, an arc or a clothoid. Any azimuths.
 *
 * FMK_BAD_VALUE where both points are the same. After [Bertolazzi 2015].
 */
FENMARK_ALIGNMENT_API int fmk_fitG1(const FmkPose* from, const FmkPose* to, FmkCurve* curve);

/**
 * Three curves from one pose to another with given curvatures (1/m) at both; the curvature is continuous throughout.
 *
 * @param curves room for three
 */
FENMARK_ALIGNMENT_API int fmk_fitG2(const FmkPose* from, double fromCurvature, const FmkPose* to, double toCurvature,
                                    FmkCurve* curves);

/** An intersection point and the curve that is wanted there. */
typedef struct FmkIp {
    FmkPoint point;
    double radius; /**< of the arc, metres; 0 lays nothing */
    double enterA; /**< parameter of the clothoid before it, metres; 0 for none */
    double leaveA; /**< parameter of the clothoid behind it, metres; 0 for none */
} FmkIp;

/** What was built at an intersection point. */
typedef struct FmkIpCurve {
    int status;          /**< FMK_OK, or why there is nothing that fits */
    double turn;         /**< of the tangents, radians, positive to the right */
    double enterTangent; /**< metres from the first curve's start to the intersection point */
    double leaveTangent; /**< metres from there to the last curve's end */
    size_t count;        /**< of the curves */
    FmkCurve curves[3];  /**< clothoid, arc, clothoid: those that are there */
} FmkIpCurve;

/**
 * The curve at one intersection point between two tangents. Returns its status; FMK_OVERLAP where a tangent length exceeds
 * the way to the neighbour, with the curve all the same. `curve` is written for every status from FMK_NO_SOLUTION on.
 */
FENMARK_ALIGNMENT_API int fmk_curveAtIp(const FmkPoint* before, const FmkIp* ip, const FmkPoint* after,
                                        FmkIpCurve* curve);

/**
 * The whole alignment by its beginning, intersection points and end.
 *
 * @param points the beginning, the intersection points, the end: at least 2. Of the first and the last only the point counts
 * @param count how many points
 * @param ips room for count - 2, each with a status of its own; may be null. Written also when a status of them is no success
 * @param curves room for the curves, straights included; 4 count serve any alignment
 * @param room how many curves there is room for
 * @param written how many were written
 * @return FMK_OK; the first status of an intersection point that failed; FMK_BAD_VALUE for points that are the same or too
 *     little room
 */
FENMARK_ALIGNMENT_API int fmk_curvesByIps(const FmkIp* points, size_t count, FmkIpCurve* ips, FmkCurve* curves,
                                          size_t room, size_t* written);

/**
 * The curve between two tangents that goes through a point: an arc where both parameters are 0, an arc between clothoids
 * of these parameters (metres) otherwise. Of several the one of the largest radius. FMK_NO_SOLUTION where none does.
 */
FENMARK_ALIGNMENT_API int fmk_curveThrough(const FmkPoint* before, const FmkPoint* ip, const FmkPoint* after,
                                           const FmkPoint* through, double enterA, double leaveA, FmkIpCurve* curve);

#ifdef __cplusplus
}
#endif

#endif
