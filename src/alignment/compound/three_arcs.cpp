// Three arcs joined by two pairs of clothoids, the middle arc turning against the others.
//
// Symbols: Ci centre, Ri radius, rho offset radius R + dR, Xm abscissa of the centre; d12, d23 distances of the centres
// that the pairs of clothoids demand.
// Axes: calculation plane for every Vec, survey plane for the records.
// Derivation: two clothoids that meet at infinite radius put the centres of opposite arcs Xm + Xm apart along their
// common tangent and rho + rho across it. So C2 lies on two circles, about C1 and C3; of the two cuts the one on the
// outer side of the line from C1 to C3 comes first, for a left first arc the right side.
// Source: [Kasper 1968] (S-shaped lines).
#include "fenmark/alignment/compound.h"

#include "alignment/calelm/answer.h"
#include "alignment/calelm/tolerances.h"
#include "alignment/compound/laying.h"
#include "alignment/primitives/tools.h"

#include <algorithm>
#include <array>

using namespace fenmark::alignment;
using namespace fenmark::alignment::laying;

namespace {

double centreDistance(double parameterA, double radiusA, double parameterB, double radiusB) {
    const Offset a = offsetOf(parameterA, radiusA);
    const Offset b = offsetOf(parameterB, radiusB);
    const double along = a.xm + b.xm;
    const double across = a.rho + b.rho;
    return std::sqrt(along * along + across * across);
}

// The seven records R1, A1, A2, R2, A3, A4, R3 for one place of the middle centre, and the larger gap.
struct Laid {
    std::array<Calelm, 7> chain;
    double gap = 0.0;
};

int layAll(const Laid& given, Vec centre, Laid& laid) {
    laid = given;
    auto& [r1, a1, a2, r2, a3, a4, r3] = laid.chain;
    r2.type = element::kArc;
    r2.len = 0.0; // its own length is not known yet
    r2.k1 = centre.x;
    r2.k2 = -centre.y;
    double gap1 = 0.0;
    double gap2 = 0.0;
    int status = ali_makRAAR(&r1, &a1, &a2, &r2, &gap1);
    if (status == 0) {
        status = ali_makRAAR(&r2, &a3, &a4, &r3, &gap2);
    }
    if (status != 0) {
        return status;
    }
    // The middle arc has neither end yet: it is begun at a2 and cut at a3.
    setStart(r2, endOf(a2));
    r2.sang = a2.eang;
    status = cutArc(r2, false, startOf(a3));
    if (status == 0) {
        status = cutArc(r1, false, startOf(a1));
    }
    if (status == 0) {
        status = cutArc(r3, true, endOf(a4));
    }
    if (status != 0) {
        return status;
    }
    laid.gap = std::max(gap1, gap2);
    return finishTangentChain(laid.chain, kJointTolerance) ? 0 : -1;
}

} // namespace

extern "C" int ali_mak3R4A(double* D, Calelm* r1, Calelm* a1, Calelm* a2, Calelm* r2, Calelm* a3, Calelm* a4,
                           Calelm* r3) {
    return fenmark::alignment::answerInPlace({r1, a1, a2, r2, a3, a4, r3}, [&]() -> int {
        if (!isTurn(r1->dir) || r1->dir != r3->dir) {
            return -1;
        }
        const Vec c1 = centreOf(*r1);
        const Vec c3 = centreOf(*r3);
        const double d12 = centreDistance(a1->par, r1->par, a2->par, r2->par);
        const double d23 = centreDistance(a3->par, r2->par, a4->par, r3->par);
        Vec left;
        Vec right;
        if (!circleCrossLeftRight(c1, d12, c3, d23, left, right)) {
            return -1;
        }
        Laid given{{*r1, *a1, *a2, *r2, *a3, *a4, *r3}, 0.0};
        if (r2->dir == 0.0) {
            given.chain[3].dir = -r1->dir;
        }
        Laid laid;
        const int status = layAll(given, r1->dir > 0.0 ? right : left, laid);
        if (status != 0 && layAll(given, r1->dir > 0.0 ? left : right, laid) != 0) {
            return status;
        }
        *r1 = laid.chain[0];
        *a1 = laid.chain[1];
        *a2 = laid.chain[2];
        *r2 = laid.chain[3];
        *a3 = laid.chain[4];
        *a4 = laid.chain[5];
        *r3 = laid.chain[6];
        *D = laid.gap;
        return 0;
    });
}
