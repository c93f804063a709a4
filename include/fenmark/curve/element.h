/**
 * One exact curve: its poses, parts and copies, its box, and the line drawn for it.
 */
#ifndef FENMARK_CURVE_ELEMENT_H
#define FENMARK_CURVE_ELEMENT_H

#include "fenmark/curve/status.h"

#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

/** A point of the survey plane, metres. */
typedef struct FmkPoint {
    double x; /**< north */
    double y; /**< east */
} FmkPoint;

/** A point with a direction of travel. */
typedef struct FmkPose {
    FmkPoint point;
    double azimuth; /**< radians, clockwise from north; any number of full circles */
} FmkPose;

/**
 * A curve whose curvature changes evenly along its length: a straight where both curvatures are 0, an arc where they are
 * equal, a clothoid otherwise. A clothoid of parameter A has |endCurvature - startCurvature| = length / A^2.
 */
typedef struct FmkCurve {
    FmkPose start;
    double length;         /**< metres, not negative */
    double startCurvature; /**< 1/m, positive to the right */
    double endCurvature;   /**< 1/m, positive to the right */
} FmkCurve;

/** The smallest box around a curve, metres. */
typedef struct FmkBox {
    double minX;
    double minY;
    double maxX;
    double maxY;
} FmkBox;

/**
 * The pose at a length from the start, metres. Lengths outside 0 to the curve's length continue the curve beyond its ends.
 * FMK_TOO_LARGE where that leaves the range of doubles.
 */
FENMARK_ALIGNMENT_API int fmk_curvePose(const FmkCurve* curve, double along, FmkPose* pose);

/** The same for `count` lengths. Nothing is written unless all of them have an answer. */
FENMARK_ALIGNMENT_API int fmk_curvePoses(const FmkCurve* curve, const double* along, size_t count, FmkPose* poses);

/** The curvature at a length from the start, 1/m. */
FENMARK_ALIGNMENT_API int fmk_curveCurvature(const FmkCurve* curve, double along, double* curvature);

/** The pose `offset` metres to the right of the curve, with the curve's azimuth. */
FENMARK_ALIGNMENT_API int fmk_curveParallelPose(const FmkCurve* curve, double along, double offset, FmkPose* pose);

/** An azimuth brought to 0 <= azimuth < 2 pi. */
FENMARK_ALIGNMENT_API int fmk_wrapAzimuth(double azimuth, double* wrapped);

/** The part between two lengths from the start; FMK_BAD_VALUE unless 0 <= from <= to <= length. */
FENMARK_ALIGNMENT_API int fmk_curvePart(const FmkCurve* curve, double from, double to, FmkCurve* part);

/** Both parts of a curve cut at a length from its start; FMK_BAD_VALUE outside the curve. */
FENMARK_ALIGNMENT_API int fmk_curveSplit(const FmkCurve* curve, double along, FmkCurve* first, FmkCurve* second);

/** The same points, travelled in the other direction. Reversed twice is the same curve, but for a full circle. */
FENMARK_ALIGNMENT_API int fmk_curveReversed(const FmkCurve* curve, FmkCurve* reversed);

/** Mirrored about the chord: both end points stay, and the curve turns to the other side. */
FENMARK_ALIGNMENT_API int fmk_curveMirroredAboutChord(const FmkCurve* curve, FmkCurve* mirrored);

/** Mirrored about the line through a point with an azimuth. */
FENMARK_ALIGNMENT_API int fmk_curveMirroredAboutAxis(const FmkCurve* curve, const FmkPose* axis, FmkCurve* mirrored);

/** Turned about a point by an angle (radians, clockwise on the map), then moved. */
FENMARK_ALIGNMENT_API int fmk_curveMoved(const FmkCurve* curve, const FmkPoint* about, double angle,
                                         const FmkPoint* shift, FmkCurve* moved);

/**
 * The parallel of a straight or an arc as a curve. FMK_NO_SOLUTION for a clothoid, whose parallel is no such curve (take
 * fmk_curveParallelPose or fmk_curveLine), and where the offset reaches an arc's centre.
 */
FENMARK_ALIGNMENT_API int fmk_curveParallel(const FmkCurve* curve, double offset, FmkCurve* parallel);

/** The smallest box around the curve. */
FENMARK_ALIGNMENT_API int fmk_curveBox(const FmkCurve* curve, FmkBox* box);

/**
 * The curve, or its parallel at an offset, as a line of points whose chords lie within a tolerance of it.
 *
 * @param tolerance metres, positive
 * @param offset metres to the right
 * @param points room for the points, which lie on the curve; the first and the last are its ends
 * @param along the points' lengths from the start; may be null
 * @param room how many points there is room for, at least 2; 10,000 serve any curve of survey size
 * @param count how many points were written
 * @param error a bound on how far the chords lie from the curve, metres; may be null
 * @return FMK_OK; FMK_COARSER where the room made the line coarser than the tolerance
 */
FENMARK_ALIGNMENT_API int fmk_curveLine(const FmkCurve* curve, double tolerance, double offset, FmkPoint* points,
                                        double* along, size_t room, size_t* count, double* error);

#ifdef __cplusplus
}
#endif

#endif
