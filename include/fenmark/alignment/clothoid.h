/**
 * Clothoid relations, and the primitives on bare points and angles of the calculation plane.
 *
 * The standard clothoid starts at the origin with infinite radius along +x and curves towards +y. With the parameter
 * A, the length L from the origin, the radius R there and the tangent angle tau:
 *
 *     A^2 = R L,   tau = L^2 / (2 A^2) = A^2 / (2 R^2) = L / (2 R)
 *     shift     dR = Y + R cos tau - R     (offset of the osculating circle from the x axis)
 *     Xm           = X - R sin tau         (x of the osculating circle's centre)
 *
 * A radius of 0 stands for an infinite radius. Lengths and radii are metres, angles radians. Series and relations are
 * those of the clothoid tables [Kasper 1968].
 */
#ifndef FENMARK_ALIGNMENT_CLOTHOID_H
#define FENMARK_ALIGNMENT_CLOTHOID_H

#include "fenmark/alignment/record.h"

#ifdef __cplusplus
extern "C" {
#endif

/**
 * Point of the standard clothoid at the tangent angle tau, by the power series of the Fresnel integrals.
 *
 * The series stops when both coordinates change by less than 1e-4 m; the change has then been added already, so the
 * result is far more exact than that for usual elements. tau < 1.389e-6, also a negative one, gives (0, 0).
 * Values that are not finite, and angles far beyond any real element, give values that are not numbers.
 *
 * So the first 1.67e-3 A metres of a clothoid are its origin, with the status 0: 0.67 m at A = 400, and points there
 * are off
 * by as much. fmk_curvePose of fenmark/curve.h has them.
 *
 * @return 0, whatever the values are
 */
FENMARK_ALIGNMENT_API int CDAcalxy(double A, double tau, double* X, double* Y);

/**
 * Point of the standard clothoid at the radius R; (0, 0) for R = 0. Returns 0, whatever the values are. See CDAcalxy.
 */
FENMARK_ALIGNMENT_API int CDRcalxy(double A, double R, double* X, double* Y);

/**
 * Point of the standard clothoid at the length L; (0, 0) for L < 1e-5. Returns 0, whatever the values are. See
 * CDAcalxy.
 */
FENMARK_ALIGNMENT_API int CDLcalxy(double A, double L, double* X, double* Y);

/** Tangent angle at the radius R: A^2 / (2 R^2), 0 for R = 0. Returns 0; -1 for no finite value. */
FENMARK_ALIGNMENT_API int CDRang(double A, double R, double* tau);

/** Tangent angle at the length L: L^2 / (2 A^2), 0 for L < 1e-5. Returns 0; -1 for no finite value. */
FENMARK_ALIGNMENT_API int CDLang(double A, double L, double* tau);

/**
 * Radius at the tangent angle tau: sqrt(A^2 / (2 tau)), 0 (infinite) for tau < 1.389e-6. Returns 0; -1 for no finite
 * value.
 */
FENMARK_ALIGNMENT_API int CDAngR(double A, double tau, double* R);

/** Length from the origin to the radius R: A^2 / R, 0 for R = 0. Returns 0; -1 for no finite value. */
FENMARK_ALIGNMENT_API int CDRlen(double A, double R, double* L);

/** Tangent angle, shift dR and Xm at the radius R; three zeros for |R| <= 1e-5. Returns 0; -1 for no finite
 * values. */
FENMARK_ALIGNMENT_API int AelmAtri(double A, double R, double* tau, double* dR, double* Xm);

/**
 * The seven characteristic values of the clothoid that ends at the radius R. With H = R cos tau + Y:
 * [0] D - (H / cos tau - R) / sin tau, D being [2]; [1] (H / cos tau - R) / sin tau * cos tau;
 * [2] D = H tan tau + (X - R sin tau); [3] H / cos tau - R; [4] chord from the origin; [5] Xm; [6] H = R + dR.
 * R = 0 gives seven zeros. Returns 0; -1, nothing written, for no finite values.
 */
FENMARK_ALIGNMENT_API int CDcharLmA(double A, double R, double values[7]);

/** -1 when A = 0, or when R is not 0 and R / A <= 0.56 (or either is not a number); else 0. */
FENMARK_ALIGNMENT_API int CDchkAR(double A, double R);

/**
 * High-precision evaluation at the tangent angle tau, thirteen values:
 * [0] A; [1] L = A sqrt(2 tau); [2] R = A / sqrt(2 tau), 0 when tau < 1e-8; [3] 1 / R; [4] X; [5] Y; [6] tau;
 * [7] long tangent X + Y tan tau; [8] tangent length X - Y / tan tau; [9] short tangent Y / sin tau, 0 when tau < 1e-8
 * ([8] is then X); [10] Y / cos tau; [11] shift dR; [12] Xm.
 *
 * Good to 1e-8 of A up to 25 rad; above, the terms of the series cancel, and beyond 30 rad it is refused.
 *
 * @return 0; -1, nothing written, when A <= 0 or tau < 0, or when a value is not finite or tau is beyond 30
 */
FENMARK_ALIGNMENT_API int clothoidElements(double A, double tau, double values[13]);

/* ---- primitives: points and angles of the calculation plane ------------------------------------------------- */

/**
 * Angle brought into range: above 2 pi it is lowered by 2 pi until it is at most 2 pi, a negative one is raised until
 * it is not negative. 2 pi itself stays 2 pi. An angle that is not finite gives a value that is not a number.
 */
FENMARK_ALIGNMENT_API double ali_KAdjAng(double a);

/** Direction from p to q, [0, 2 pi); 0 for exactly equal points. */
FENMARK_ALIGNMENT_API double ali_KGetAng(const double p[2], const double q[2]);

/**
 * Line coefficients of form M through two points of the calculation plane: with dx = qx - px, dy = qy - py, the values
 * a = dy, b = dx, c = dy px - dx py are rounded to 1e-5, then divided by sqrt(a^2 + b^2).
 * The line satisfies a x - b y = c in the calculation plane, a x + b y = c in the survey plane.
 *
 * @return 0; -1, nothing written, when a and b both round to 0
 */
FENMARK_ALIGNMENT_API int ali_KCalCst(const double p[2], const double q[2], double* a, double* b, double* c);

/**
 * The point at the distance d from p towards q, and the direction from p to q.
 *
 * @param limit not 0: d may exceed the chord by no more than 1e-5 m (stations are rounded to 1e-5, chords are not)
 * @return 0; -1, nothing written, when p and q agree within 1e-5 in both coordinates, d < 0, or d is beyond the limit
 */
FENMARK_ALIGNMENT_API int ali_KGetPnt(const double p[2], const double q[2], double d, int limit, double out[2],
                                      double* angle);

/** p + d (cos a, sin a). out may be p. */
FENMARK_ALIGNMENT_API void ali_KMovPnt(double out[2], const double p[2], double d, double a);

/** p turned about c by theta, counter-clockwise. out may be p or c. */
FENMARK_ALIGNMENT_API void ali_KRotPnt(double out[2], const double p[2], const double c[2], double theta);

/**
 * Centre of the arc of radius R from p to q that turns left (dir = 1) or right (otherwise), at most a half circle.
 * A chord longer than 2 R still gives a centre (the root is taken of the absolute value).
 *
 * Equal points count as a chord towards +y.
 *
 * @return 0; -1, nothing written, when a value is not finite
 */
FENMARK_ALIGNMENT_API int ali_KEnCen(const double p[2], const double q[2], double dir, double R, double* cx,
                                     double* cy);

/**
 * Tangents at p and q, sweep and length of the arc from p to q about (cx, cy), taken as the one of at most a half
 * circle. A tangent within 1.389e-6 of 2 pi becomes 0. The length R * sweep is not rounded. Returns 0, whatever the
 * values are.
 */
FENMARK_ALIGNMENT_API int ali_KEnAng(const double p[2], const double q[2], double dir, double R, double cx, double cy,
                                     double* sang, double* eang, double* sweep, double* length);

/**
 * Arc length from p to q about c in the sense of dir (counter-clockwise unless dir = -1), radius R. Not rounded.
 * Equal directions give 0, and 2 pi R for dir = -1. Returns 0, whatever the values are.
 */
FENMARK_ALIGNMENT_API int ali_KEnPncl(double dir, double R, const double c[2], const double p[2], const double q[2],
                                      double* length);

/**
 * p turned about c through theta: counter-clockwise for dir = 1, clockwise for anything else. Returns 0, whatever the
 * values are.
 */
FENMARK_ALIGNMENT_API int ali_KEnPntb(double dir, const double c[2], const double p[2], double theta, double out[2]);

/**
 * The point (cx - R sin t', cy + R cos t') with t' = t for dir = 1 and t' = t +- pi otherwise. The radial angle is
 * t' + pi / 2, the sense opposite to that of ali_KEnAng: with the known point given as c, this yields the centre of an
 * arc that has the tangent t there. Returns 0, whatever the values are.
 */
FENMARK_ALIGNMENT_API int ali_KEnPntc(double dir, const double c[2], double t, double R, double out[2]);

#ifdef __cplusplus
}
#endif

#endif
