// Arc, clothoid from infinite radius, arc, the second arc passing a point.
//
// Symbols: C1, R1 the given arc's centre and radius, C2, R2 those of the arc to be placed, d the distance of the two
// centres that the clothoid demands.
// Axes: calculation plane inside setAOR_P and for every Vec; ali_makAOR_P takes and gives the survey plane.
// Derivation: C2 is R2 from the point and d from C1. Of the two cuts of these circles the order is by the side on which
// the given arc's start lies; the first that gives a tangent chain is taken, one whose arc reaches the point before
// others. Source: plane geometry of circles; shift relations of the clothoid, [Kasper 1968].
#include "fenmark/alignment/compound.h"

#include "fenmark/alignment/clothoid.h"
#include "fenmark/alignment/construction.h"
#include "fenmark/alignment/primitives.h"

#include "alignment/calelm/answer.h"
#include "alignment/calelm/tolerances.h"
#include "alignment/compound/laying.h"
#include "alignment/primitives/tools.h"

#include <array>

using namespace fenmark::alignment;
using namespace fenmark::alignment::laying;

namespace {

// The clothoid runs from infinite radius to the smaller of the two radii.
constexpr int kFromInfinity = 0;

struct ArcClothoidArc {
    Calelm r1;
    Calelm a;
    Calelm r2;
};

Calelm inOtherPlane(const Calelm& e) {
    Calelm out{};
    toOtherPlane(&e, &out);
    return out;
}

// Calculation plane. Lays the chain for one place of arc 2's centre; a status as CDsetAToRAR gives it, or -1 when the
// clothoid does not leave arc 1 and reach arc 2 along their tangents.
int layAt(const ArcClothoidArc& given, Vec centre, ArcClothoidArc& laid) {
    laid = given;
    laid.r2.k1 = centre.x;
    laid.r2.k2 = centre.y;
    const int status = CDsetAToRAR(kFromInfinity, &laid.r1, &laid.r2, &laid.a);
    if (status != 0) {
        return status;
    }
    const double c[2] = {centre.x, centre.y};
    const double start[2] = {laid.r2.sx, laid.r2.sy};
    double end[2];
    ali_KEnPntb(laid.r2.dir, c, start, laid.r2.len / laid.r2.par, end);
    laid.r2.ex = end[0];
    laid.r2.ey = end[1];
    return joinsInCalculationPlane(laid.r1, laid.a, laid.r2) ? 0 : -1;
}

// Calculation plane. Whether a point of an arc's circle lies on the arc.
bool reaches(const Calelm& arc, Vec p) {
    return sweepBetween({arc.k1, arc.k2}, {arc.sx, arc.sy}, p, arc.dir) <= (arc.len + kSameLength) / arc.par;
}

} // namespace

extern "C" {

int setAOR_P(const double p[2], Calelm* r1, Calelm* a, Calelm* r2) {
    return fenmark::alignment::answerInPlace({r1, a, r2}, [&]() -> int {
        const ArcClothoidArc given{*r1, *a, *r2};
        if (!isTurn(r1->dir) || !isTurn(r2->dir) || !(r1->par > 0.0) || !(r2->par > 0.0)) {
            return -1;
        }
        double d = 0.0;
        if (signed16(CDOODistForRAR(r1, a, kFromInfinity, r2, &d)) != 0) {
            return -1;
        }
        const Vec centre1{r1->k1, r1->k2};
        const Vec point{p[0], p[1]};
        Vec left;
        Vec right;
        if (!circleCrossLeftRight(centre1, d, point, r2->par, left, right)) {
            return -1;
        }
        const double startTurn = CDbtwang(r1->k1, r1->k2, point.x, point.y, r1->k1, r1->k2, r1->sx, r1->sy);
        const bool startOnRight = startTurn > kPi;
        const bool unlikeOrLarger = r1->dir != r2->dir || r1->par > r2->par;
        const Vec first = startOnRight == unlikeOrLarger ? right : left;
        const Vec second = startOnRight == unlikeOrLarger ? left : right;
        // A place where the point lies on the stretch of the new arc itself goes before one where it lies on its circle
        // only.
        ArcClothoidArc laid;
        ArcClothoidArc other;
        const bool found = layAt(given, first, laid) == 0;
        if (!found || !reaches(laid.r2, point)) {
            const bool otherFound = layAt(given, second, other) == 0;
            if (!found && !otherFound) {
                return -1;
            }
            if (!found || (otherFound && reaches(other.r2, point))) {
                laid = other;
            }
        }
        *r1 = laid.r1;
        *a = laid.a;
        *r2 = laid.r2;
        return 0;
    });
}

int ali_makAOR_P(const double p[2], int mode, Calelm* r1, Calelm* a, Calelm* r2) {
    return fenmark::alignment::answerInPlace({r1, a, r2}, [&]() -> int {
        const bool backwards = signed16(mode) == -1;
        if (!isTurn(r1->dir) || !isTurn(r2->dir) || !(r2->len >= 0.0)) {
            return -1;
        }
        ArcClothoidArc chain{*r1, *a, *r2};
        const bool toPoint = r2->len == 0.0;
        if (toPoint) {
            chain.r2.len = kPi * r2->par; // a place from which the point is no more than a half circle away
        }
        chain.r1.type = element::kArc;
        chain.r2.type = element::kArc;
        chain.a.type = element::kClothoid;
        if (backwards) {
            chain.r1 = reversed(chain.r1);
            chain.r2.dir = -chain.r2.dir;
        }
        chain.a.dir = chain.r1.par < chain.r2.par ? chain.r1.dir : chain.r2.dir;
        chain.r1 = inOtherPlane(chain.r1);
        chain.r2 = inOtherPlane(chain.r2);
        const double point[2] = {p[0], -p[1]};
        int status = setAOR_P(point, &chain.r1, &chain.a, &chain.r2);
        if (status != 0) {
            return status;
        }
        std::array<Calelm, 3> made{*r1, inOtherPlane(chain.a), inOtherPlane(chain.r2)};
        if (backwards) {
            made = {inOtherPlane(chain.r2), inOtherPlane(chain.a), *r1};
            made[0] = reversed(made[0]);
            made[1] = reversed(made[1]);
        }
        auto& given = made[backwards ? 2 : 0];
        auto& placed = made[backwards ? 0 : 2];
        status = cutArc(given, backwards, backwards ? endOf(made[1]) : startOf(made[1]));
        if (status == 0 && toPoint) {
            if (backwards) {
                setStart(placed, fromSurvey(p));
            } else {
                setEnd(placed, fromSurvey(p));
            }
        }
        if (status == 0) {
            status = signed16(ali_makR(&placed));
        }
        if (status == 0) {
            status = completeClothoid(made[1]);
        }
        if (status != 0) {
            return status;
        }
        if (!finishTangentChain(made, kJointTolerance)) {
            return -1;
        }
        *r1 = given;
        *a = made[1];
        *r2 = placed;
        return 0;
    });
}

} // extern "C"
