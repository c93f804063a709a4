/**
 * Statuses of the exact curves, and the export macro.
 */
#ifndef FENMARK_CURVE_STATUS_H
#define FENMARK_CURVE_STATUS_H

#include "fenmark/alignment/record.h"

#ifdef __cplusplus
extern "C" {
#endif

/** What a function of this library returns. */
enum {
    FMK_OK = 0,         /**< done */
    FMK_COARSER = 1,    /**< done, but the line has as many points as there is room for and is coarser than asked for */
    FMK_INCOMPLETE = 2, /**< done, but there is more than was found or than there is room for */
    FMK_NO_POINTER = -1,   /**< a pointer that must not be null is null */
    FMK_NOT_FINITE = -2,   /**< a value is not a number, or infinite */
    FMK_BAD_VALUE = -3,    /**< a length, radius, parameter, tolerance or count is negative or too small */
    FMK_TOO_LARGE = -4,    /**< the answer lies beyond the range of doubles */
    FMK_NO_SOLUTION = -5,  /**< no curve of this kind does what is asked */
    FMK_NO_TURN = -6,      /**< the tangents lie on one line: nothing to round, or a way back */
    FMK_TOO_SHORT = -7,    /**< the clothoids together turn more than the tangents do */
    FMK_OVERLAP = -8,      /**< tangent lengths do not fit between neighbouring points */
    FMK_OUT_OF_MEMORY = -9 /**< no memory */
};

/** A status in words; never null, and for a value that is none "unknown status". */
FENMARK_ALIGNMENT_API const char* fmk_statusText(int status);

#ifdef __cplusplus
}
#endif

#endif
