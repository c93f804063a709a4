// An arc built inside another arc, touching it, and joined to a third one by a clothoid.
//
// Symbols: C1, R1 and C3, R3 centres and radii of the given arcs, C2 and R2 of the arc to be built, D the distance of C1
// and C2 that the clothoid demands.
// Axes: calculation plane throughout.
// Derivation: C2 lies at D from C1 and at |R3 - R2| from C3. The contact of the arcs 2 and 3 lies on the line of their
// centres, at R3 from C3 towards C2: the inner arc is the second one. Where the third one is the smaller the line would
// have to run the other way; it is not turned, and such data give no chain.
// Source: plane geometry; shift relations of the clothoid.
#include "fenmark/alignment/chains.h"

#include "fenmark/alignment/primitives.h"

#include "alignment/calelm/answer.h"
#include "alignment/compound/laying.h"
#include "alignment/primitives/tools.h"

using namespace fenmark::alignment;
using namespace fenmark::alignment::laying;

namespace {

// Calculation plane throughout.
struct Chain {
    Calelm arc1;
    Calelm clothoid;
    Calelm arc2;
    Calelm arc3;
};

int layAt(const Chain& given, int mode, Vec centre, Chain& laid) {
    laid = given;
    laid.arc2.k1 = centre.x;
    laid.arc2.k2 = centre.y;
    const int status = CDsetAToRAR(mode, &laid.arc1, &laid.arc2, &laid.clothoid);
    if (status != 0) {
        return status;
    }
    const Vec centre3{laid.arc3.k1, laid.arc3.k2};
    if (!joinsInCalculationPlane(laid.arc1, laid.clothoid, laid.arc2) ||
        !onCircle(centre3, laid.arc3.par, {laid.arc3.ex, laid.arc3.ey})) {
        return -1;
    }
    const Vec between = centre - centre3;
    const Vec contact = centre3 + (laid.arc3.par / plane::norm(between)) * between;
    if (!(std::fabs(plane::distance(contact, centre) - laid.arc2.par) <= kJointTolerance)) {
        return -1;
    }
    laid.arc2.ex = laid.arc3.sx = contact.x;
    laid.arc2.ey = laid.arc3.sy = contact.y;
    const int valid = CDvalidArc(&laid.arc2);
    return valid != 0 ? valid : CDvalidArc(&laid.arc3);
}

} // namespace

extern "C" int ARmakRR(int mode, Calelm* arc1, Calelm* arc3, Calelm* arc2, Calelm* clothoid) {
    return fenmark::alignment::answerInPlace({arc1, arc3, arc2, clothoid}, [&]() -> int {
        Chain given{*arc1, *clothoid, *arc2, *arc3};
        // Arcs that touch from inside turn the same way.
        if (arc2->dir == 0.0) {
            given.arc2.dir = arc3->dir;
        }
        if (!isTurn(arc1->dir) || !isTurn(given.arc2.dir) || arc3->dir != given.arc2.dir || !(arc1->par > 0.0) ||
            !(arc2->par > 0.0)) {
            return -1;
        }
        given.clothoid.type = element::kClothoid;
        given.clothoid.dir = arc1->par < arc2->par ? arc1->dir : given.arc2.dir;
        double d = -1.0;
        const int status = signed16(CDOODistForRAR(arc1, &given.clothoid, mode, &given.arc2, &d));
        if (status != 0 || !(d >= 0.0)) {
            return status != 0 ? status : -1;
        }
        Vec left;
        Vec right;
        if (!circleCrossLeftRight({arc3->k1, arc3->k2}, std::fabs(arc3->par - arc2->par), {arc1->k1, arc1->k2}, d, left,
                                  right)) {
            return -1;
        }
        // Left of the direction from arc 3's centre to arc 1's is the first of the two cuts.
        Chain laid;
        int result = layAt(given, mode, left, laid);
        if (result != 0) {
            result = layAt(given, mode, right, laid);
        }
        if (result != 0) {
            return result;
        }
        *arc1 = laid.arc1;
        *clothoid = laid.clothoid;
        *arc2 = laid.arc2;
        *arc3 = laid.arc3;
        return 0;
    });
}
