/**
 * What the tangent solvers share: records in and out of the calculation plane, clothoids built from their flat end, and
 * the candidate centres that two loci give. All values are in the calculation plane unless said otherwise.
 */
#pragma once

#include "fenmark/alignment/record.h"

#include "alignment/primitives/plane.h"
#include "alignment/primitives/tools.h"
#include "alignment/tangent/calc_record.h"
#include "alignment/tangent/chain_check.h"

#include <array>
#include <cstddef>
#include <span>

namespace fenmark::alignment {

/** A record that can serve as a given straight: its type, finite and longer than 1e-7 m. Survey plane. */
bool isGivenStraight(const Calelm& e);

/** A record that can serve as a given arc: its type, a positive radius, a sense of +1 or -1, finite. Survey plane. */
bool isGivenArc(const Calelm& e);

/** Unit direction of a straight; the straight is longer than 1e-7 m. */
Vec unitAlong(const CalcRecord& straight);

/** A straight, an arc and a clothoid to be completed, from their ends. */
CalcRecord straightBetween(Vec from, Vec to);
CalcRecord arcBetween(Vec from, Vec to, double radius, double dir);

/** A point rounded to the length step, 1e-5 m. */
Vec roundedPoint(Vec p);

/** Values of the standard clothoid of a parameter at a radius: end point, tau, shift dR and centre abscissa Xm. */
struct ClothoidEnd {
    double X = 0.0;
    double Y = 0.0;
    double tau = 0.0;
    double dR = 0.0;
    double Xm = 0.0;
};

ClothoidEnd clothoidEnd(double parameter, double radius);

/** Whether a clothoid of this parameter may end at this finite radius: positive, finite, R/A above 0.56. */
bool clothoidFits(double parameter, double radius);

/** The clothoid that leaves the line through `flat` with direction u and turns to dir, up to the radius. */
CalcRecord clothoidFromLine(Vec flat, Vec u, double dir, double parameter, double radius, const ClothoidEnd& values);

/** The clothoid that turns to dir from the radius on and runs out into the line through `flat` with direction u. */
CalcRecord clothoidIntoLine(Vec flat, Vec u, double dir, double parameter, double radius, const ClothoidEnd& values);

/** A common tangent of two circles in the direction of travel: the feet of the centres on it and its unit direction. */
struct CommonTangent {
    Vec foot1;
    Vec foot2;
    Vec t;
};

/**
 * The tangent for travel from the circle (c1, p1), turning dir1, to the circle (c2, p2), turning dir2: an outer one for
 * equal senses, an inner one otherwise, a left circle on its left. False where there is none or its feet coincide.
 */
bool commonTangent(Vec c1, double p1, double dir1, Vec c2, double p2, double dir2, CommonTangent& tangent);

/** Up to four centres, in the order in which they are tried. */
struct Candidates {
    std::array<Vec, 4> points{};
    std::size_t count = 0;

    void add(Vec p) { points[count++] = p; }
    const Vec* begin() const { return points.data(); }
    const Vec* end() const { return points.data() + count; }
};

/** A centre to try, and which chains to take there. */
struct Attempt {
    Given pass = Given::Cut;
    Vec centre;
};

/** The passes over the candidates: chains that only cut the given elements come first. */
inline constexpr Given kCutFirst[] = {Given::Cut, Given::Anywhere};
/** The same, and in the end those that leave more than a half circle of a given arc. */
inline constexpr Given kLongArcsLast[] = {Given::Cut, Given::Anywhere, Given::CutLong};

/** Every candidate in every pass. */
struct Attempts {
    std::array<Attempt, 12> items{};
    std::size_t count = 0;

    const Attempt* begin() const { return items.data(); }
    const Attempt* end() const { return items.data() + count; }
};

Attempts eachPass(const Candidates& centres, std::span<const Given> passes);

/**
 * Centres at the distance `offset` from a straight and at `distance` from a centre: on the offset to the left of travel
 * the cut nearer to the straight's start, then the other; then the same on the right.
 */
Candidates centresBesideLine(const CalcRecord& straight, double offset, Vec centre, double distance);

/**
 * Centres at the distances d1 from c1 and d2 from c2, in the order of circleCross. Where that takes two near points
 * for one touch, this one comes first and the two exact points follow.
 */
Candidates centresBetween(Vec c1, double d1, Vec c2, double d2);

} // namespace fenmark::alignment
