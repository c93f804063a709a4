// An arc between two arcs, eased by a clothoid at one end or at both.
//
// Symbols: R1, R2 given, R3 made, Ci centres, D1, D2 the distances of C3 from C1 and C2 that the clothoids demand (see
// CDOODistForRAR); without a clothoid D2 = |R3 - R2|. Calculation plane inside, survey plane at the interface.
// Source: plane geometry. C3 is a cut of the circles (C1, D1) and (C2, D2); CDsetAToRAR then lays each clothoid.
#include "fenmark/alignment/tangent.h"

#include "fenmark/alignment/primitives.h"

#include "alignment/calelm/answer.h"
#include "alignment/tangent/chain_check.h"
#include "alignment/tangent/solver_tools.h"

namespace fenmark::alignment {

namespace {

CalcRecord clothoidOf(const Calelm& sizes, const CalcRecord& arc1, const CalcRecord& arc2) {
    CalcRecord clothoid;
    clothoid.type = element::kClothoid;
    clothoid.par = sizes.par;
    clothoid.dir = arc1.par < arc2.par ? arc1.dir : arc2.dir;
    return clothoid;
}

bool sameRadius(double r1, double r2) {
    return !(std::fabs(r1 - r2) >= kLengthStep);
}

// Chain R1, A, R3, R2 of the calculation plane for one centre of R3, R3 touching R2 from inside; false where the
// clothoid cannot be built.
bool laidOnContact(Vec centre3, const CalcRecord& first, const CalcRecord& second, const CalcRecord& made,
                   const CalcRecord& clothoid, std::array<CalcRecord, 4>& chain) {
    chain = {first, clothoid, made, second};
    chain[2].k1 = centre3.x;
    chain[2].k2 = centre3.y;
    if (CDsetAToRAR(-1, chain[0].raw(), chain[2].raw(), chain[1].raw()) != 0) {
        return false;
    }
    const Vec apart = centre3 - centreOf(second);
    const double reach = made.par > second.par ? -second.par : second.par;
    const Vec contact = centreOf(second) + (reach / plane::norm(apart)) * apart;
    setEnd(chain[2], contact);
    setStart(chain[3], contact);
    return true;
}

int easedAtOneEnd(int side, int mode, Calelm& r1, Calelm& r2, Calelm& r3, Calelm& a) {
    if ((side != 1 && side != -1) || mode != -1 || !isGivenArc(r1) || !isGivenArc(r2) || r1.dir != r2.dir ||
        !(r3.par > 0.0) || sameRadius(r1.par, r3.par) || sameRadius(r2.par, r3.par)) {
        return -1;
    }
    // The clothoid lies at R1, or on side 1 at R2: that chain is worked out backwards.
    const bool backwards = side == 1;
    CalcRecord first = toCalc(r1);
    CalcRecord second = toCalc(r2);
    if (backwards) {
        first = reversed(toCalc(r2));
        second = reversed(toCalc(r1));
    }
    const CalcRecord made = arcBetween({}, {}, r3.par, first.dir);
    const CalcRecord clothoid = clothoidOf(a, first, made);
    double demanded = 0.0;
    if (!clothoidFits(a.par, std::fmin(first.par, made.par)) ||
        CDOODistForRAR(first.raw(), clothoid.raw(), mode, made.raw(), &demanded) != 0) {
        return -1;
    }
    const Candidates centres =
        centresBetween(centreOf(first), demanded, centreOf(second), std::fabs(made.par - second.par));
    for (const auto& [pass, centre3] : eachPass(centres, kCutFirst)) {
        std::array<CalcRecord, 4> chain;
        if (!laidOnContact(centre3, first, second, made, clothoid, chain)) {
            continue;
        }
        if (backwards) {
            chain = {reversed(chain[3]), reversed(chain[2]), reversed(chain[1]), reversed(chain[0])};
        }
        if (const auto laid = completeChain(chain, r1, r2, pass)) {
            r1 = (*laid)[0];
            a = (*laid)[backwards ? 2 : 1];
            r3 = (*laid)[backwards ? 1 : 2];
            r2 = (*laid)[3];
            return 0;
        }
    }
    return -1;
}

int easedAtBothEnds(int mode1, int mode2, Calelm& r1, Calelm& r2, Calelm& a1, Calelm& r3, Calelm& a2) {
    const auto known = [](int mode) { return mode == 0 || mode == -1; };
    if (!known(mode1) || !known(mode2) || !isGivenArc(r1) || !isGivenArc(r2) || !(r3.par > 0.0) ||
        sameRadius(r1.par, r3.par) || sameRadius(r2.par, r3.par)) {
        return -1;
    }
    const CalcRecord first = toCalc(r1);
    const CalcRecord second = toCalc(r2);
    CalcRecord made = arcBetween({}, {}, r3.par, r3.dir);
    if (mode1 == -1) {
        made.dir = first.dir;
    } else if (mode2 == -1) {
        made.dir = second.dir;
    }
    if (std::fabs(made.dir) != 1.0) {
        return -1;
    }
    const CalcRecord clothoid1 = clothoidOf(a1, first, made);
    const CalcRecord clothoid2 = clothoidOf(a2, made, second);
    double demanded1 = 0.0;
    double demanded2 = 0.0;
    if (!clothoidFits(a1.par, std::fmin(first.par, made.par)) ||
        !clothoidFits(a2.par, std::fmin(second.par, made.par)) ||
        CDOODistForRAR(first.raw(), clothoid1.raw(), mode1, made.raw(), &demanded1) != 0 ||
        CDOODistForRAR(made.raw(), clothoid2.raw(), mode2, second.raw(), &demanded2) != 0) {
        return -1;
    }
    const Candidates centres = centresBetween(centreOf(first), demanded1, centreOf(second), demanded2);
    for (const auto& [pass, centre3] : eachPass(centres, kCutFirst)) {
        std::array chain = {first, clothoid1, made, clothoid2, second};
        chain[2].k1 = centre3.x;
        chain[2].k2 = centre3.y;
        // The first arc's sweep and that of the new one must be valid; the second call looks at the new one.
        if (CDsetAToRAR(mode1, chain[0].raw(), chain[2].raw(), chain[1].raw()) != 0 ||
            CDsetAToRAR(mode2, chain[2].raw(), chain[4].raw(), chain[3].raw()) != 0) {
            continue;
        }
        if (const auto laid = completeChain(chain, r1, r2, pass)) {
            r1 = (*laid)[0];
            a1 = (*laid)[1];
            r3 = (*laid)[2];
            a2 = (*laid)[3];
            r2 = (*laid)[4];
            return 0;
        }
    }
    return -1;
}

} // namespace

} // namespace fenmark::alignment

extern "C" {

int ali_ARmakRR(int side, int mode, Calelm* r1, Calelm* r2, Calelm* r3, Calelm* a) {
    return fenmark::alignment::answerInPlace({r1, r2, r3, a}, [&]() -> int {
        using fenmark::alignment::signed16;
        return fenmark::alignment::easedAtOneEnd(signed16(side), signed16(mode), *r1, *r2, *r3, *a);
    });
}

int ali_ARAmakRR(int mode1, int mode2, Calelm* r1, Calelm* r2, Calelm* a1, Calelm* r3, Calelm* a2) {
    return fenmark::alignment::answerInPlace({r1, r2, a1, r3, a2}, [&]() -> int {
        using fenmark::alignment::signed16;
        return fenmark::alignment::easedAtBothEnds(signed16(mode1), signed16(mode2), *r1, *r2, *a1, *r3, *a2);
    });
}

} // extern "C"
