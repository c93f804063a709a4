/**
 * Searches on exact curves: the nearest point, all feet of perpendiculars, the crossings of two curves.
 */
#ifndef FENMARK_CURVE_SEARCH_H
#define FENMARK_CURVE_SEARCH_H

#include "fenmark/curve/element.h"

#ifdef __cplusplus
extern "C" {
#endif

/** A place of a curve, seen from a point beside it. */
typedef struct FmkFoot {
    double along;      /**< length from the start, metres */
    FmkPoint point;    /**< on the curve */
    double offset;     /**< distance of the given point, metres, positive where it lies to the right of travel */
    int perpendicular; /**< 1; 0 at an end that the given point lies beyond */
} FmkFoot;

/** The point of the curve that lies nearest, of all its windings and both ends. */
FENMARK_ALIGNMENT_API int fmk_curveNearest(const FmkCurve* curve, const FmkPoint* point, FmkFoot* foot);

/**
 * Every place where the way to the point is perpendicular to the curve, by length: places nearer and farther than all
 * about them. There may be none.
 *
 * @param feet room for `room` feet
 * @param count how many were written
 * @return FMK_OK; FMK_INCOMPLETE where there may be more than there is room for: then those about the nearest are written
 */
FENMARK_ALIGNMENT_API int fmk_curveFeet(const FmkCurve* curve, const FmkPoint* point, FmkFoot* feet, size_t room,
                                        size_t* count);

/** A point that two curves have in common. */
typedef struct FmkCrossing {
    double alongFirst;  /**< length from the first's start, metres */
    double alongSecond; /**< length from the second's start, metres */
    FmkPoint point;
    double angle; /**< from the first's direction to the second's, radians, -pi to pi, positive to the right */
    int tangent;  /**< 1 where the curves touch, or run into each other, without an angle */
} FmkCrossing;

/**
 * All crossings of two curves, by length along the first.
 *
 * Curves that run alike within `tolerance` metres of each other touch there, which is one crossing; 1e-9 serves surveys.
 * Of curves that are one over some length the ends of that are written, and `overlap` is 1.
 *
 * @param found room for `room` crossings
 * @param count how many were written
 * @param overlap 1 or 0; may be null
 * @return FMK_OK; FMK_INCOMPLETE where there are more than there is room for, or both wind about each other so often that
 *     the search was given up
 */
FENMARK_ALIGNMENT_API int fmk_curveCrossings(const FmkCurve* first, const FmkCurve* second, double tolerance,
                                             FmkCrossing* found, size_t room, size_t* count, int* overlap);

#ifdef __cplusplus
}
#endif

#endif
