/**
 * Tools that the compound, chain, IP and point builders share: offset circles, clothoids built from their origin, arcs
 * cut at a point, and the check of a finished chain.
 *
 * Symbols: A parameter, R radius, tau tangent angle, X, Y point of the standard clothoid, dR shift, Xm abscissa of the
 * circle's centre, rho = R + dR radius of the offset circle. `dir` is +1 for a left and -1 for a right curve.
 * Vec values are in the calculation plane, (x, -y) of the survey plane, where angles run anticlockwise from +x; every
 * Calelm is in the survey plane.
 */
#pragma once

#include "fenmark/alignment/record.h"

#include "alignment/primitives/plane.h"
#include "alignment/tangent/chain_check.h"

#include <initializer_list>
#include <span>

namespace fenmark::alignment::laying {

using plane::Vec;

/** What a clothoid of parameter A does to a circle of radius R. All 0, and rho = R, for R <= 1e-5. */
struct Offset {
    double tau = 0.0;
    double shift = 0.0;
    double xm = 0.0;
    double rho = 0.0;
};
Offset offsetOf(double parameter, double radius);

/** The vector turned a quarter to the left. */
inline Vec leftOf(Vec v) {
    return {-v.y, v.x};
}

inline Vec startOf(const Calelm& e) {
    return {e.sx, -e.sy};
}
inline Vec endOf(const Calelm& e) {
    return {e.ex, -e.ey};
}
inline Vec centreOf(const Calelm& arc) {
    return {arc.k1, -arc.k2};
}
inline Vec fromSurvey(const double p[2]) {
    return {p[0], -p[1]};
}

inline void setStart(Calelm& e, Vec p) {
    e.sx = p.x;
    e.sy = -p.y;
}
inline void setEnd(Calelm& e, Vec p) {
    e.ex = p.x;
    e.ey = -p.y;
}
/** Both coordinates rounded to 1e-5 m, in the calculation plane. */
Vec rounded(Vec p);

inline bool finite(Vec p) {
    return std::isfinite(p.x) && std::isfinite(p.y);
}
inline bool isTurn(double dir) {
    return dir == 1.0 || dir == -1.0;
}

/**
 * A clothoid built from the origin of its standard frame: `axis` is the unit tangent there, towards the sharper end, and
 * `turn` the sense (+1 left) in which it bends when run that way. flat and sharp are the two radii, 0 infinite. With
 * sharpFirst the record runs against the axis. Writes the whole record with ali_makA.
 *
 * @return 0; -1, record untouched, for sizes that no clothoid has
 */
int layClothoid(Vec origin, Vec axis, double turn, double parameter, double flat, double sharp, bool sharpFirst,
                Calelm& clothoid);

/** Two arcs of one turning sense and different radii as an egg-shaped clothoid of parameter A sees them. */
struct EggTangent {
    Vec direction; ///< common outer tangent of the offset circles, in the sense of travel
    Vec origin;    ///< of the clothoid's standard frame, such that it lies on the circle of the larger radius exactly
};
/** False when one offset circle lies inside the other, so that they have no common tangent. */
bool eggTangent(Vec centre1, double radius1, Vec centre2, double radius2, double dir, double parameter,
                EggTangent& tangent);
/** The egg-shaped clothoid from radius1 to radius2 at that tangent; the status is that of layClothoid. */
int layEgg(const EggTangent& tangent, double radius1, double radius2, double dir, double parameter, Calelm& clothoid);

/**
 * The points at the distances d1 from c1 and d2 from c2, left and right of the direction from c1 to c2. Circles that
 * miss one another by no more than 1e-6 m touch: both points are then one. False when there are none. circleCross
 * has other limits for a touch and another order of its points.
 */
bool circleCrossLeftRight(Vec c1, double d1, Vec c2, double d2, Vec& left, Vec& right);

/** Whether p lies on a circle as well as rounded records do, within 1e-4 m. */
bool onCircle(Vec centre, double radius, Vec p);

using plane::sweepBetween;

/** The longest sweep that a cut may leave of an arc: its own or, when it is lengthened, a half circle. */
double longestSweep(const Calelm& arc);

/**
 * Cuts or lengthens an arc at q, a point of its circle: q becomes its end, or its start when keepEnd. The part that
 * stays is rebuilt with ali_makR, or about its centre where it is a half circle or more.
 * @return 0; -1, record untouched, when q would turn the arc round, leave nothing of it or more than longestSweep
 */
int cutArc(Calelm& arc, bool keepEnd, Vec q);

/** As cutArc, by ali_makangR for any sweep: the radius is rounded to 1.389e-6 and the new end to 1e-5. */
int cutArcFromKeptEnd(Calelm& arc, bool keepEnd, Vec q);

/**
 * Whether a clothoid leaves one arc and reaches the next along their tangents, all three records in the calculation
 * plane, with centres, radii, dir and ends written. The start of the first arc must lie on its circle, and no end of the
 * clothoid be lost at its origin.
 */
bool joinsInCalculationPlane(const Calelm& arc1, const Calelm& clothoid, const Calelm& arc2);

/** Arc or clothoid run the other way. Survey plane; twice is the same element. */
Calelm reversed(const Calelm& e);

/** Levels the azimuths at the joints of finished records (see levelJoint) and returns whether they are a tangent chain.
 */
bool finishTangentChain(std::span<Calelm> chain, double jointTolerance);

/** The same for records that lie apart, in the order of travel; up to 4. */
bool finishTangentChain(std::initializer_list<Calelm*> chain, double jointTolerance);

/** Whether two azimuths agree within the tolerance, across the turn at 2 pi too. */
bool sameDirection(double a, double b, double tolerance = kTangentTolerance);

} // namespace fenmark::alignment::laying
