/**
 * Conventions that all families share: the two planes, the rounding steps, the comparison of points, and the texts of
 * the status codes.
 *
 * Planes. The survey plane has x north and y east; its angles are azimuths, clockwise on the map. The calculation
 * plane is the survey plane with y negated; it is right-handed, and its angles run from +x towards +y.
 */
#ifndef FENMARK_ALIGNMENT_CONVENTIONS_H
#define FENMARK_ALIGNMENT_CONVENTIONS_H

#include "fenmark/alignment/record.h"

#ifdef __cplusplus
extern "C" {
#endif

/** Point from one plane to the other: (x, y) goes to (x, -y). Serves both ways; out and in may be the same. */
FENMARK_ALIGNMENT_API void ali_CExCoord(double out[2], const double in[2]);

/**
 * Angle from one plane to the other, radians: 0 for |a| < 1e-5, 2 pi - a for a > 0, -a otherwise.
 * An angle nearer to 0 than 1e-5 becomes exactly 0. Serves both ways.
 */
FENMARK_ALIGNMENT_API double ali_CExAng(double a);

/** Length rounded to the length step, 1e-5 m: floor(v / 1e-5 + 0.5) * 1e-5. A tie goes upwards, for negatives too. */
FENMARK_ALIGNMENT_API double ali_CAroundNum(double v);

/** Angle rounded to the angle step, 1.389e-6 rad: floor(v / 1.389e-6 + 0.5) * 1.389e-6. */
FENMARK_ALIGNMENT_API double ali_CAroundAng(double v);

/** 0 when both coordinates of p and q differ by less than 1e-5, else 1 (also for values that are not numbers). */
FENMARK_ALIGNMENT_API int ali_CSamePoint(const double p[2], const double q[2]);

/** Distance of two points, metres, not rounded. */
FENMARK_ALIGNMENT_API double ali_CDist2P(const double p[2], const double q[2]);

/** 0 when both coordinates of p and q differ by less than tol, else -1. */
FENMARK_ALIGNMENT_API int gc_samePoint(const double p[2], const double q[2], double tol);

/**
 * What a status of a function means, as an English text that lives as long as the library. Never null.
 *
 * @param function name of an exported function, as "ali_intpSS"; null or an unknown name gives the general meaning
 * @param status   result of that function; only its low 16 bits count, read as a signed value
 */
FENMARK_ALIGNMENT_API const char* ali_statusText(const char* function, int status);

#ifdef __cplusplus
}
#endif

#endif
