// Arcs that join a given arc directly and reach a point.
//
// Symbols: P the point, C and R centre and radius of the given arc, C' and R' of the new one, D = |P - C|, d = |C' -
// C|, beta the angle at C between C->P and C->C'. Axes: calculation plane for every Vec, survey plane for the records.
// Derivation: in the triangle C, C', P the sides are d (R' - R or R - R' for one turn, R + R' for opposite turns), R'
// and D, so cos beta = (d^2 + D^2 - R'^2) / (2 d D). The arcs touch on the line of the centres. Of the two mirrored
// triangles one continues the travel.
// Source: plane trigonometry.
#include "fenmark/alignment/point.h"

#include "alignment/calelm/answer.h"
#include "alignment/calelm/rounding.h"
#include "alignment/compound/laying.h"
#include "alignment/point/rounded_elements.h"
#include "alignment/primitives/tools.h"

#include <algorithm>

using namespace fenmark::alignment;
using namespace fenmark::alignment::laying;

namespace {

// A new arc turns by no more, beyond the rounding of its ends, radians.
constexpr double kHalfCircle = kPi + kSameAngle;

// Joint and new centre of the tangent pair; records are only tried, so both mirrored places can be.
struct Pair {
    Calelm given;
    Calelm made;
};

// Chain of the pair in the order of travel.
bool pairIsTangent(Pair& pair, bool givenFirst, double tolerance) {
    return givenFirst ? finishTangentChain({&pair.given, &pair.made}, tolerance)
                      : finishTangentChain({&pair.made, &pair.given}, tolerance);
}

// The joint on the line of the centres, seen from the given arc's centre.
Vec jointOf(Vec given, double radius, Vec made, bool inside, double madeRadius) {
    const Vec between = made - given;
    // A larger arc that encloses the given one touches it on the side away from its own centre.
    const double towards = inside && madeRadius > radius ? -1.0 : 1.0;
    return given + (towards * radius / plane::norm(between)) * between;
}

} // namespace

extern "C" {

int ali_makrR_P(const double p[2], int end, Calelm* r1, Calelm* r2) {
    return fenmark::alignment::answerInPlace({r1, r2}, [&]() -> int {
        const bool givenFirst = signed16(end) == 1;
        const double R = r1->par;
        const double made = r2->par;
        if (!isTurn(r1->dir) || !isTurn(r2->dir) || !(R > 0.0) || !(made > 0.0) || !(R < 2.0 * made)) {
            return -1;
        }
        const Vec centre = centreOf(*r1);
        const Vec point = fromSurvey(p);
        const double D = plane::distance(centre, point);
        const bool inside = r1->dir == r2->dir;
        const double d = inside ? std::fabs(made - R) : made + R;
        const bool inReach = inside ? std::fabs(D - R) <= 2.0 * d + kSameLength
                                    : R <= D + kSameLength && D <= 2.0 * made + R + kSameLength;
        Vec left;
        Vec right;
        // The point at the centre has no direction; arcs of one turn and equal radius are one circle.
        if (!inReach || !(d >= kSameLength) || !(D >= kSameLength) ||
            !circleCrossLeftRight(centre, d, point, made, left, right)) {
            return -1;
        }
        const double side = inside && R < made ? r1->dir : -r1->dir;
        const bool leftFirst = (givenFirst ? side : -side) > 0.0;
        const Vec keptPoint = rounded(givenFirst ? startOf(*r1) : endOf(*r1));
        const Vec newPoint = rounded(point);
        for (const Vec newCentre : {leftFirst ? left : right, leftFirst ? right : left}) {
            const Vec joint = rounded(jointOf(centre, R, newCentre, inside, made));
            Pair pair{*r1, *r2};
            if (roundedArc(centre, givenFirst ? keptPoint : joint, givenFirst ? joint : keptPoint, longestSweep(*r1),
                           pair.given) &&
                roundedArc(newCentre, givenFirst ? joint : newPoint, givenFirst ? newPoint : joint, kHalfCircle,
                           pair.made) &&
                keepsTangent(*r1, pair.given, !givenFirst) && pairIsTangent(pair, givenFirst, kJointTolerance)) {
                *r1 = pair.given;
                *r2 = pair.made;
                return 0;
            }
        }
        return -1;
    });
}

int ali_makrR_P_S(const double p[2], int end, Calelm* r1, Calelm* r2) {
    return fenmark::alignment::answerInPlace({r1, r2}, [&]() -> int {
        const bool givenFirst = signed16(end) == 1;
        if (!isTurn(r2->dir) || !(r1->par > 0.0) || !(r2->par > 0.0)) {
            return -1;
        }
        const Vec centre = centreOf(*r2);
        const Vec point = fromSurvey(p);
        Vec left;
        Vec right;
        if (!circleCrossLeftRight(centre, r1->par + r2->par, point, r1->par, left, right)) {
            return -1;
        }
        const bool leftFirst = (givenFirst ? -r2->dir : r2->dir) > 0.0;
        for (const Vec newCentre : {leftFirst ? left : right, leftFirst ? right : left}) {
            const Vec joint = jointOf(centre, r2->par, newCentre, false, r1->par);
            Pair pair{*r2, *r1};
            pair.made.dir = -r2->dir;
            if (cutArcFromKeptEnd(pair.given, !givenFirst, joint) == 0 &&
                roundedArc(newCentre, givenFirst ? joint : point, givenFirst ? point : joint, kHalfCircle, pair.made) &&
                pairIsTangent(pair, givenFirst, kJointTolerance)) {
                *r1 = pair.made;
                *r2 = pair.given;
                return 0;
            }
        }
        return -1;
    });
}

} // extern "C"
