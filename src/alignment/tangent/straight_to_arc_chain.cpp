// The chain clothoid, arc, clothoid, clothoid between a straight and an arc, in either order of travel.
//
// Symbols as in chain_worker.cpp. Survey plane: reversing a record there exchanges its ends and radii and negates dir.
#include "fenmark/alignment/tangent.h"

#include "alignment/calelm/answer.h"
#include "alignment/compound/laying.h"
#include "alignment/tangent/chain_check.h"
#include "alignment/tangent/solver_tools.h"

namespace fenmark::alignment {

namespace {

using laying::reversed;

int chainBetweenStraightAndArc(int side, Calelm& s, Calelm& r, Calelm& a1, Calelm& r1, Calelm& a2, Calelm& a3) {
    if (side == 1) {
        return chainWorker(&s, &r, &a1, &r1, &a2, &a3);
    }
    if (!isGivenStraight(s) || !isGivenArc(r)) {
        return -1;
    }
    std::array work = {reversed(s), a1, r1, a2, a3, reversed(r)};
    work.front().dir = 1.0;
    if (chainWorker(&work[0], &work[5], &work[1], &work[2], &work[3], &work[4]) != 0) {
        return -1;
    }
    // Order of travel of the caller: R, A3, A2, R1, A1, S.
    std::array<Calelm, 6> chain;
    for (std::size_t i = 0; i < chain.size(); ++i) {
        chain[i] = reversed(work[work.size() - 1 - i]);
        if (i == 0 && chain[i].k3 > kPi) {
            completeAboutCentre(chain[i]);
        } else if (completeElement(chain[i]) != 0) {
            return -1;
        }
    }
    if (!finishChain(chain, r, s)) {
        return -1;
    }
    r = chain[0];
    a3 = chain[1];
    a2 = chain[2];
    r1 = chain[3];
    a1 = chain[4];
    s = chain[5];
    return 0;
}

} // namespace

} // namespace fenmark::alignment

extern "C" {

int ali_ARAAmakSR(int side, Calelm* s, Calelm* r, Calelm* a1, Calelm* r1, Calelm* a2, Calelm* a3) {
    return fenmark::alignment::answerInPlace({s, r, a1, r1, a2, a3}, [&]() -> int {
        return fenmark::alignment::chainBetweenStraightAndArc(fenmark::alignment::signed16(side), *s, *r, *a1, *r1, *a2,
                                                              *a3);
    });
}

} // extern "C"
