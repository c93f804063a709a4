/**
 * Tangent solvers: elements fitted between two given ones, so that every joint of the chain coincides and is tangent.
 *
 * The capitals before "mak" name what is made, those behind it the given elements, in the order of travel: S a
 * straight, R an arc, A a clothoid. All records are in the survey plane (x north, y east, metres; tangents are
 * azimuths in radians; dir +1 turns left of travel, -1 right). Given records are complete, as the construction
 * functions leave them: type, ends, tangents, and for an arc par, dir and the centre. Of a record to be made only the
 * size is read: `par` in metres, the radius of an arc or the parameter A of a clothoid, above 0, and R/A above 0.56 at
 * every end of finite radius; `dir` of an arc only where stated. Everything else of it is written, type included.
 *
 * On success (0) the end of the first and the start of the second given element have moved to the tangent points, the
 * other two ends and their tangents are as they were, and the whole chain has been checked in place: joints within
 * 1e-5 m, tangents within 1e-5 rad, sizes and turning senses as given. A chain that does not pass is never a success.
 * Every failure gives -1 and leaves every record as it was: elements of another type or without length, radii or
 * parameters of 0, values that are not finite, elements too far from or too near to one another, a tangent point
 * before the start of the first or beyond the end of the second element, a made arc of half a circle or more, a given
 * arc that keeps more than half a circle (ali_RmakRR, ali_SmakRR, ali_SAmakRR, ali_ASAmakRR, ali_ARAAmakSR and
 * chainWorker cut such arcs, too, where no shorter chain is found). Nothing distinguishes the reasons. Sides and modes
 * are read as signed 16-bit values, so 65535 is -1.
 *
 * All solvers are closed formulas; none iterates. Where the geometry has several solutions they are tried in a fixed
 * order. Between two straights, and in ali_RmakSR and ali_RAmakSR, given elements are only cut: one that is too short
 * by more than 1e-4 m fails. The others lengthen a given element, an arc to a half circle at most, where no chain that
 * only cuts is found.
 *
 * Sources: plane geometry of circles and common tangents; for clothoids the shift relations dR = Y + R cos tau - R and
 * Xm = X - R sin tau [Kasper 1968]: a circle eased by a clothoid lies R + dR beside the clothoid's tangent at infinite
 * radius, and Xm along it.
 */
#ifndef FENMARK_ALIGNMENT_TANGENT_H
#define FENMARK_ALIGNMENT_TANGENT_H

#include "fenmark/alignment/record.h"

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Between two straights: s1 is travelled first, s2 last --------------------------------------------------- */

/*
 * The intersection point IP of the two lines must lie on s1 or beyond its end, and not before the start of s2; a point
 * within 1e-5 m of an end counts as on the straight. Tangent points must lie on the straights as given: a tangent
 * length longer than a line fails. Lines whose directions have a determinant below 1e-7 are parallel and fail. The
 * curve turns to the side that s2 lies on.
 */

/**
 * Arc of radius r->par between two straights. Tangent length T = R tan(theta / 2), theta the deflection.
 * Chain s1, r, s2. Returns 0 or -1.
 */
FENMARK_ALIGNMENT_API int ali_RmakSS(Calelm* s1, Calelm* s2, Calelm* r);

/**
 * Two clothoids of parameters a1->par and a2->par between two straights, joined where both have the radius
 * R = sqrt((A1^2 + A2^2) / (2 theta)), so that tau1 + tau2 = theta. Tangent lengths by the law of sines in the triangle
 * of the end tangents. Chain s1, a1, a2, s2. Returns 0 or -1.
 */
FENMARK_ALIGNMENT_API int ali_AAmakSS(Calelm* s1, Calelm* s2, Calelm* a1, Calelm* a2);

/**
 * Clothoid, arc of radius r->par, clothoid between two straights. With d = dR2 - dR1 the tangent lengths are
 * (R + dR1) tan(theta / 2) + Xm1 + d / sin theta and (R + dR1) tan(theta / 2) + Xm2 - d cos theta / sin theta. Fails
 * when the clothoids alone turn through theta or more. Chain s1, a1, r, a2, s2. Returns 0 or -1.
 */
FENMARK_ALIGNMENT_API int ali_ARAmakSS(Calelm* s1, Calelm* s2, Calelm* a1, Calelm* r, Calelm* a2);

/* ---- Between a straight and an arc --------------------------------------------------------------------------- */

/**
 * Arc r2 of radius r2->par between straight s and arc r1. Side -1: chain s, r2, r1; side +1: chain r1, r2, s; any other
 * side fails. An arc that turns as r1 is tried first, then one that turns the other way. The tangent point may not lie
 * beyond that end of s which is moved, nor off r1. The centre of r2 lies R2 beside s and |R1 - R2| or R1 + R2 from the
 * centre of r1. Returns 0 or -1.
 */
FENMARK_ALIGNMENT_API int ali_RmakSR(int side, Calelm* s, Calelm* r1, Calelm* r2);

/**
 * Arc r1 of radius r1->par and clothoid a of parameter a->par between straight s and arc r. Side -1: chain s, r1, a, r;
 * side +1: chain r, a, r1, s. Mode -1: the clothoid runs from one radius to the other, both arcs turn alike. Mode 0: it
 * runs from infinite radius at the flatter arc to the sharper one; an arc r1 that turns as r is tried first, then one
 * that turns the other way. Any other side or mode fails. The tangent point may not lie beyond that end of s which is
 * moved, nor the clothoid's end off r. The distance of the centres is that of CDOODistForRAR. Returns 0 or -1.
 */
FENMARK_ALIGNMENT_API int ali_RAmakSR(int side, int mode, Calelm* s, Calelm* r, Calelm* r1, Calelm* a);

/**
 * The worker behind ali_ARAAmakSR: its chain in the order s, a1, r1, a2, a3, r. Survey plane. Returns 0 or -1.
 */
FENMARK_ALIGNMENT_API int chainWorker(Calelm* s, Calelm* r, Calelm* a1, Calelm* r1, Calelm* a2, Calelm* a3);

/**
 * Clothoid a1, arc r1 of radius r1->par, clothoids a2 and a3 between straight s and arc r. a1 is flat at s, a2 and a3
 * meet at infinite radius, a3 ends on r, which may turn either way. Side 1: chain s, a1, r1, a2, a3, r; any other side:
 * chain r, a3, a2, r1, a1, s. The curve at s turns to the side of s on which r begins (seen along side 1); where that
 * gives no chain, to the other. s may be lengthened at the end that is moved. Returns 0 or -1.
 */
FENMARK_ALIGNMENT_API int ali_ARAAmakSR(int side, Calelm* s, Calelm* r, Calelm* a1, Calelm* r1, Calelm* a2, Calelm* a3);

/* ---- Between two arcs: r1 is travelled first, r2 last, but for ali_SAmakRR ------------------------------------- */

/**
 * Arc r3 of radius r3->par and turning sense r3->dir between two arcs: it touches a given arc of its own sense from
 * inside (centres |R3 - R| apart) and one of the other sense from outside (R3 + R). The tangent points are rounded to
 * 1e-5 m. For all senses equal and R3 above both radii the least possible radius is (D + R1 + R2) / 2, D the distance
 * of the centres. Chain r1, r3, r2. Returns 0 or -1.
 */
FENMARK_ALIGNMENT_API int ali_RmakRR(Calelm* r1, Calelm* r2, Calelm* r3);

/**
 * Straight between two arcs: their outer common tangent for equal senses, which fails when the radii differ by the
 * distance D of the centres or more; the inner one for opposite senses, which fails when R1 + R2 >= D, also in the
 * limit. Ends and length of s are rounded to 1e-5 m. Chain r1, s, r2. Returns 0 or -1.
 */
FENMARK_ALIGNMENT_API int ali_SmakRR(Calelm* r1, Calelm* r2, Calelm* s);

/**
 * Arc r3 of radius r3->par and clothoid a of parameter a->par between two arcs of equal sense. r3 takes their sense; it
 * touches one arc from inside, and the clothoid runs from its radius to that of the other arc. Side -1: chain
 * r1, a, r3, r2; side +1: chain r1, r3, a, r2. The mode must be -1; a mode of 0 fails, and so do arcs of unequal sense.
 * R3 must differ from both radii by 1e-5 m. Returns 0 or -1.
 */
FENMARK_ALIGNMENT_API int ali_ARmakRR(int side, int mode, Calelm* r1, Calelm* r2, Calelm* r3, Calelm* a);

/**
 * Clothoid a1, arc r3 of radius r3->par, clothoid a2 between two arcs. Modes as in CDOODistForRAR, one for each
 * clothoid: -1 from radius to radius, for two arcs of one sense; 0 from infinite radius at the flatter arc to the
 * sharper. With mode1 -1 r3 takes the sense of r1, else with mode2 -1 that of r2, else r3->dir is read. R3 must differ
 * from both radii by 1e-5 m. The centre of r3 is a cut of two circles about the given centres; the cut left of the
 * direction from r2's to r1's centre (calculation plane) is tried first. Chain r1, a1, r3, a2, r2. Returns 0 or -1.
 */
FENMARK_ALIGNMENT_API int ali_ARAmakRR(int mode1, int mode2, Calelm* r1, Calelm* r2, Calelm* a1, Calelm* r3,
                                       Calelm* a2);

/**
 * Straight s and clothoid a of parameter a->par between two arcs; the clothoid lies at r2. Side 1: chain r1, s, a, r2.
 * Any other side: chain r2, a, s, r1, which begins with r2. The line is the common tangent of r1's circle and of the
 * circle R2 + dR about r2's centre. Returns 0 or -1.
 */
FENMARK_ALIGNMENT_API int ali_SAmakRR(int side, Calelm* r1, Calelm* r2, Calelm* s, Calelm* a);

/**
 * Straight s between two arcs, eased at both ends by the clothoids a1 and a2. Fails when the two clothoids leave no
 * length for s. Chain r1, a1, s, a2, r2. Returns 0 or -1.
 */
FENMARK_ALIGNMENT_API int ali_ASAmakRR(Calelm* r1, Calelm* r2, Calelm* a1, Calelm* s, Calelm* a2);

/* ---- Cross lines ----------------------------------------------------------------------------------------------- */

/**
 * Straight across an element: with P and t the point and the azimuth at `station` metres from the element's start, it
 * runs from P - h (cos(t - angle), sin(t - angle)) to P + h (cos(t - angle), sin(t - angle)), h = halfLength in
 * metres, angle in radians. An angle of pi/2 gives a line square to the element, from its right to its left side.
 * Dispatches on the element's type. Returns 0; -1 for any other type; the status of ali_onl for a station off the
 * element; -1 for a line without length. s is written on success only.
 */
FENMARK_ALIGNMENT_API int ali_Smak(const Calelm* element, double station, double angle, double halfLength, Calelm* s);
/** As ali_Smak, across a straight. */
FENMARK_ALIGNMENT_API int ali_SmakS(const Calelm* element, double station, double angle, double halfLength, Calelm* s);
/** As ali_Smak, across an arc. A negative station lies before the arc's start and is not refused. */
FENMARK_ALIGNMENT_API int ali_SmakR(const Calelm* element, double station, double angle, double halfLength, Calelm* s);
/** As ali_Smak, across a clothoid. */
FENMARK_ALIGNMENT_API int ali_SmakA(const Calelm* element, double station, double angle, double halfLength, Calelm* s);

#ifdef __cplusplus
}
#endif

#endif
