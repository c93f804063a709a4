/**
 * The element record, the export macro and the plain value types of the alignment library.
 */
#ifndef FENMARK_ALIGNMENT_RECORD_H
#define FENMARK_ALIGNMENT_RECORD_H

#include <stdint.h>

#if defined(FENMARK_ALIGNMENT_BUILD)
#define FENMARK_ALIGNMENT_API __attribute__((visibility("default")))
#else
#define FENMARK_ALIGNMENT_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

/**
 * One horizontal alignment element: a straight (type 1), a circular arc (type 2) or a clothoid (type 3).
 *
 * Points are in the survey plane (x north, y east, metres), angles are azimuths in radians. Radii and parameters
 * are positive; a radius of 0 is infinite; the turning sense lies in dir alone.
 */
typedef struct Calelm {
    int16_t type; /**< 1 straight, 2 arc, 3 clothoid; 0 is an empty record */
    double sx;    /**< start point, x, metres */
    double sy;    /**< start point, y, metres */
    double ex;    /**< end point, x, metres */
    double ey;    /**< end point, y, metres */
    double dir;   /**< turning sense: +1 left, -1 right; 1 for a straight */
    double par;   /**< arc: radius R; clothoid: parameter A; straight: 0 (metres) */
    double r1;    /**< clothoid: radius at the start, 0 infinite; else 0 */
    double r2;    /**< clothoid: radius at the end, 0 infinite; else 0 */
    double len;   /**< length, metres */
    double sang;  /**< tangent at the start, azimuth, radians in [0, 2 pi) */
    double eang;  /**< tangent at the end, azimuth, radians in [0, 2 pi) */
    double k1;    /**< straight: coefficient a; arc: centre x; clothoid: tau of the sharper end */
    double k2;    /**< straight: coefficient b; arc: centre y; clothoid: shift of the sharper end */
    double k3;    /**< straight: coefficient c; arc: sweep; clothoid: Xm of the sharper end */
} Calelm;

#ifdef __cplusplus
}
#endif

#endif
