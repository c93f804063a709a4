/**
 * Plane primitives: lines, segments, and whole elements mirrored, moved, turned, reversed and taken into the frame of
 * a clothoid.
 *
 * The functions work in whatever plane their values are in. Those that look at the turning sense `dir` mean the
 * calculation plane, (x, -y) of the survey plane, where +1 curves towards +y and angles run anticlockwise from +x;
 * CDchgSpace takes a record from one plane to the other. Lengths are metres, angles radians.
 *
 * A line record is four reals: a point (x, y) and a unit direction (ux, uy). Coefficients of a straight are written in
 * the form a x + b y + c = 0 of the plane that the record is in: normalised (a = dy/L, b = -dx/L,
 * c = (dx y0 - dy x0)/L, L the chord) by CDchgSpace and CDSinAbs, without the division by L by CDmirA, CDmoveA, CDrot
 * and CDturnA. The construction functions write another form, see ali_KCalCst.
 *
 * In every function the output record may be the input record itself. Formulas are those of plane analytic geometry;
 * the clothoid's own are given in clothoid.h.
 */
#ifndef FENMARK_ALIGNMENT_PRIMITIVES_H
#define FENMARK_ALIGNMENT_PRIMITIVES_H

#include "fenmark/alignment/record.h"

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Points and lines, in either plane ---- */

/** Line from (x0, y0) towards (x1, y1). Returns 0, or 1 when the points are less than 1e-7 apart: nothing is written.
 */
FENMARK_ALIGNMENT_API int CDlinstd(double x0, double y0, double x1, double y1, double line[4]);

/**
 * Direction of a line in [0, 2 pi), 0 for a direction of no length. Returns 0; -1, nothing written, for no finite
 * values.
 */
FENMARK_ALIGNMENT_API int CDlineang(const double line[4], double* angle);

/**
 * Angle from the line (x0, y0)->(x1, y1) to the line (x2, y2)->(x3, y3), in [0, 2 pi). A difference of directions
 * below 1.389e-6 in magnitude, before or after it is brought into range, is 0. A line of less than 1e-7 counts as
 * direction 0.
 */
FENMARK_ALIGNMENT_API double CDbtwang(double x0, double y0, double x1, double y1, double x2, double y2, double x3,
                                      double y3);

/**
 * Crossing of two unbounded lines. Returns 0, or 1 when they are parallel (determinant of the directions below 1e-7):
 * nothing is written.
 */
FENMARK_ALIGNMENT_API int CDlincros(const double line1[4], const double line2[4], double* x, double* y);

/**
 * Distance of p from a line; 0 when its square is below 1e-8, so below 1e-4 m. Returns 0; -1, nothing written, for no
 * finite values.
 */
FENMARK_ALIGNMENT_API int CDpldist(const double line[4], const double p[2], double* d);

/**
 * Foot of the perpendicular from p on a line, the angle at the line's point taken by CDbtwang. Returns 0; -1, nothing
 * written, for values that are not finite.
 */
FENMARK_ALIGNMENT_API int CDpojpoi(const double line[4], const double p[2], double foot[2]);

/**
 * Where p lies on the segment a, b, judged by distances alone (p is taken to lie on the line): 2 within 1e-5 of b,
 * else 1 within 1e-5 of a, else 0 nearer to either end than the ends are to one another, else -1.
 */
FENMARK_ALIGNMENT_API int CDpoiinseg(const double a[2], const double b[2], const double p[2]);

/**
 * Whether p lies on the short line a, b: 1 within 1e-5 of a, else 2 within 1e-5 of b; -1 outside the box of a and b
 * widened by 2; else 0 when |p - a|^2 - t^2 <= 16 with t the scalar product (b - a).(p - a), which is not divided by
 * the line's length, and -1 otherwise.
 */
FENMARK_ALIGNMENT_API int CDpoionls(double px, double py, double ax, double ay, double bx, double by);

/**
 * Crossing of the segments a, b and c, d. Returns 0 inside both; 11 at a, 12 at b, 21 at c, 22 at d (an end of the
 * second segment is reported first, even when the point lies off the first segment's ends); -1 no crossing;
 * 1 parallel or a segment of less than 1e-7. The point is written for 0, 11, 12, 21 and 22 only.
 */
FENMARK_ALIGNMENT_API int CDsegcros(const double a[2], const double b[2], const double c[2], const double d[2],
                                    double out[2]);

/** Adds (dx, dy) to two points in place. Returns 0; -1, nothing written, for values that are not finite. */
FENMARK_ALIGNMENT_API int CDmove(double dx, double dy, double* x1, double* y1, double* x2, double* y2);

/** Point (x + dx, y + dy). Returns 0; -1, nothing written, for values that are not finite. */
FENMARK_ALIGNMENT_API int CDmoveP(double x, double y, double dx, double dy, double* ox, double* oy);

/**
 * p turned about c by the angle of the given cosine and sine. Returns 0; -1, nothing written, for values that are not
 * finite.
 */
FENMARK_ALIGNMENT_API int CDrotpoi(const double c[2], double cosine, double sine, const double p[2], double out[2]);

/**
 * Angle mirrored in the y axis: pi - a, plus 2 pi when negative. Returns 0; -1, nothing written, for no finite
 * values.
 */
FENMARK_ALIGNMENT_API int CDmirAng(double a, double* out);

/* ---- Whole records ---- */

/**
 * The record in the other plane, survey to calculation or back: y values negated, tangents by ali_CExAng, centre y of
 * an arc negated, coefficients of a straight rewritten normalised. A straight of no length has no
 * coefficients. Returns 0; -1, nothing written, for such a one and for values that are not finite.
 */
FENMARK_ALIGNMENT_API int CDchgSpace(const Calelm* in, Calelm* out);

/**
 * Mirror in the y axis: x and dir negated, tangents to pi - a; k fields of an unknown type are not written. Returns
 * 0; -1, nothing written, for values that are not finite.
 */
FENMARK_ALIGNMENT_API int CDmirA(const Calelm* in, Calelm* out);

/** Translation by (dx, dy). Returns 0; -1, nothing written, for values that are not finite. */
FENMARK_ALIGNMENT_API int CDmoveA(const Calelm* in, Calelm* out, double dx, double dy);

/**
 * Turn about a pivot by theta, anticlockwise positive. A tangent within 1e-5 of 2 pi becomes 0. Returns 0; -1,
 * nothing written, for values that are not finite.
 */
FENMARK_ALIGNMENT_API int CDrot(const Calelm* in, Calelm* out, const double pivot[2], double theta);

/** CDrot about the element's own start. Returns 0; -1, nothing written, for values that are not finite. */
FENMARK_ALIGNMENT_API int CDturnA(const Calelm* in, Calelm* out, double theta);

/**
 * Turn about the element's own end. The k fields are copied, so those of a straight or an arc are stale. Returns 0;
 * -1, nothing written, for values that are not finite.
 */
FENMARK_ALIGNMENT_API int CDturnAe(const Calelm* in, Calelm* out, double theta);

/**
 * Reverses a record in place (ends, radii and tangents exchanged, tangents turned by pi, dir negated, k fields
 * untouched) when force is not 0, or when r2 is 0, or when r1 > 0 and r2 > r1. Without force a clothoid so comes to
 * run from its flat to its sharp end; straights and arcs, whose r2 is 0, are reversed too.
 * Returns 1 when it reversed, else 0, whatever the values are.
 */
FENMARK_ALIGNMENT_API int CDreverA(Calelm* rec, int force);

/**
 * Whether an arc in the calculation plane turns in its own sense by less than a half circle: 0, or -1 when the sweep
 * is within 1.389e-6 of pi, above pi, or below 1.389e-6. Uses the end points, the centre (k1, k2) and dir.
 */
FENMARK_ALIGNMENT_API int CDvalidArc(const Calelm* rec);

/**
 * The frame of a clothoid is that of the standard clothoid: origin at infinite radius, tangent along +x, curving
 * towards +y. An element comes into it by a mirror in the y axis if the clothoid's dir is -1, a translation of the
 * clothoid's start to the standard point of radius r1, and a turn about it of the clothoid's chord to the standard
 * chord from r1 to r2. The clothoid given is in the calculation plane and runs from its flat to its sharp end.
 */

/**
 * A clothoid in its own frame; its tangents are there the standard tau of r1 and r2. Returns 0; -1, nothing written,
 * for values that are not finite.
 */
FENMARK_ALIGNMENT_API int CDAinAbs(const Calelm* a, Calelm* out);

/**
 * A straight in the frame of clothoid a, coefficients normalised. Returns 0; -1, nothing written, for no finite
 * values.
 */
FENMARK_ALIGNMENT_API int CDSinAbs(const Calelm* a, const Calelm* s, Calelm* out);

/** An arc in the frame of clothoid a. Returns 0; -1, nothing written, for values that are not finite. */
FENMARK_ALIGNMENT_API int CDRinAbs(const Calelm* a, const Calelm* r, Calelm* out);

/** A point in the frame of clothoid a. Returns 0; -1, nothing written, for values that are not finite. */
FENMARK_ALIGNMENT_API int CDPinAbs(const Calelm* a, const double p[2], double out[2]);

/**
 * A point of the frame of clothoid a back in the calculation plane. Returns 0; -1, nothing written, for no finite
 * values.
 */
FENMARK_ALIGNMENT_API int CDP2Cal(const Calelm* a, const double p[2], double out[2]);

/**
 * Origin of the frame of clothoid a in the calculation plane, and the direction of its tangent there, radians. For an
 * element that starts at infinite radius (r1 < 1e-5) these are its start and sang. Returns 0, whatever the values are.
 */
FENMARK_ALIGNMENT_API int CDgetOrgA(const Calelm* a, double out[2], double* angle);

/**
 * Crossing of a clothoid in its own frame with a line in that frame, walked to from an end by steps of the distance to
 * the line: side 1 from the start upwards, any other from the end downwards. L is the standard station of the
 * crossing, A^2/R, metres from the origin. Good to 1e-4 m divided by the sine of the crossing angle.
 * Returns 0; -1 when the walk moves away from the line; -2 when it passes the other end. Nothing is written then.
 */
FENMARK_ALIGNMENT_API int CDAcrosS(const Calelm* a, int side, const double line[4], double out[2], double* L);

/**
 * Distance of the centres of two arcs that clothoid a (par and dir) demands between them. Mode 0: the clothoid runs
 * from infinite radius to the smaller of the two radii; mode -1: from one radius to the other. Modes are read as
 * signed 16-bit values. Uses par and dir of the arcs. Any plane.
 * Returns 0; -1 in mode -1 for arcs of different dir: nothing is written. Any other mode writes nothing. The 0 comes
 * whatever the values are.
 */
FENMARK_ALIGNMENT_API int CDOODistForRAR(const Calelm* r1, const Calelm* a, int mode, const Calelm* r2, double* d);

/**
 * Lays clothoid a (par) between two arcs of given centres and radii, calculation plane. Mode 0: flat end at infinite
 * radius; a negative mode: at the larger radius. Writes the clothoid's dir, ends, r1 and r2, the first arc's end and
 * the second arc's start. With equal radii the second arc is the sharper.
 * Returns 0; 1 when the centres are too near one another for a common tangent (only dir of a is written then); -1 when
 * CDvalidArc refuses the first arc, with everything written.
 */
FENMARK_ALIGNMENT_API int CDsetAToRAR(int mode, Calelm* r1, Calelm* r2, Calelm* a);

#ifdef __cplusplus
}
#endif

#endif
