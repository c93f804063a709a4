// Straights between two arcs: bare, eased at one end, eased at both ends.
//
// Symbols: order of travel R1, S, R2; C1, C2 centres; p1, p2 the distances of the line from them, R, or R + dR where a
// clothoid lies between; Xm the abscissa of a centre from that clothoid's flat end; t the line's direction. Calculation
// plane inside, survey plane at the interface. Sources: plane geometry of common tangents: a left arc has its circle on
// the left of the tangent, so equal senses take an outer and opposite ones an inner tangent. The circle of a clothoid
// lies R + dR beside its tangent at infinite radius, at Xm along it.
#include "fenmark/alignment/tangent.h"

#include "fenmark/alignment/construction.h"

#include "alignment/calelm/answer.h"
#include "alignment/tangent/chain_check.h"
#include "alignment/tangent/solver_tools.h"

#include <algorithm>

namespace fenmark::alignment {

namespace {

int straightBetweenArcs(Calelm& r1, Calelm& r2, Calelm& s) {
    if (!isGivenArc(r1) || !isGivenArc(r2)) {
        return -1;
    }
    const CalcRecord first = toCalc(r1);
    const CalcRecord second = toCalc(r2);
    const double D = plane::distance(centreOf(first), centreOf(second));
    // In the limit of touching circles the tangent has no length.
    const bool apart = first.dir == second.dir ? std::fabs(first.par - second.par) < D : first.par + second.par < D;
    CommonTangent tangent;
    if (!apart ||
        !commonTangent(centreOf(first), first.par, first.dir, centreOf(second), second.par, second.dir, tangent)) {
        return -1;
    }
    // Ends are rounded to the length step. On a very short line or a very small arc that would turn the tangent, and
    // the exact ends stand.
    for (const bool round : {true, false}) {
        const Vec from = round ? roundedPoint(tangent.foot1) : tangent.foot1;
        const Vec to = round ? roundedPoint(tangent.foot2) : tangent.foot2;
        std::array candidate = {first, straightBetween(from, to), second};
        setEnd(candidate[0], from);
        setStart(candidate[2], to);
        std::array<Calelm, 3> chain;
        std::transform(candidate.begin(), candidate.end(), chain.begin(), toSurvey);
        completeAboutCentre(chain[0]);
        completeAboutCentre(chain[2]);
        if (signed16(ali_makS(&chain[1])) == 0 && finishChain(chain, r1, r2) && keepsLongArcs(chain, r1, r2)) {
            r1 = chain[0];
            s = chain[1];
            r2 = chain[2];
            return 0;
        }
    }
    return -1;
}

// Chain R1, S, A, R2 between two arcs of the calculation plane; false where the arcs leave no room.
bool easeSecond(const CalcRecord& r1, const CalcRecord& r2, double A, std::array<CalcRecord, 4>& chain) {
    if (!clothoidFits(A, r2.par)) {
        return false;
    }
    const ClothoidEnd values = clothoidEnd(A, r2.par);
    CommonTangent tangent;
    if (!commonTangent(centreOf(r1), r1.par, r1.dir, centreOf(r2), r2.par + values.dR, r2.dir, tangent)) {
        return false;
    }
    const Vec flat = tangent.foot2 - values.Xm * tangent.t;
    // The flat end must lie ahead of the contact on the first arc.
    if (plane::dot(flat - tangent.foot1, tangent.t) < 0.0) {
        return false;
    }
    chain = {r1, straightBetween(tangent.foot1, flat), clothoidFromLine(flat, tangent.t, r2.dir, A, r2.par, values),
             r2};
    setEnd(chain[0], tangent.foot1);
    setStart(chain[3], endOf(chain[2]));
    return true;
}

int easedStraightBetweenArcs(int side, Calelm& r1, Calelm& r2, Calelm& s, Calelm& a) {
    if (!isGivenArc(r1) || !isGivenArc(r2)) {
        return -1;
    }
    std::array<CalcRecord, 4> chain;
    if (side == 1) {
        if (!easeSecond(toCalc(r1), toCalc(r2), a.par, chain)) {
            return -1;
        }
        const auto made = completeOnlyChain(chain, r1, r2);
        if (!made) {
            return -1;
        }
        r1 = (*made)[0];
        s = (*made)[1];
        a = (*made)[2];
        r2 = (*made)[3];
        return 0;
    }
    // Both arcs are travelled backwards and keep their places, so that the finished chain runs R2, A, S, R1.
    std::array<CalcRecord, 4> back;
    if (!easeSecond(reversed(toCalc(r1)), reversed(toCalc(r2)), a.par, back)) {
        return -1;
    }
    chain = {reversed(back[3]), reversed(back[2]), reversed(back[1]), reversed(back[0])};
    const auto made = completeOnlyChain(chain, r2, r1);
    if (!made) {
        return -1;
    }
    r2 = (*made)[0];
    a = (*made)[1];
    s = (*made)[2];
    r1 = (*made)[3];
    return 0;
}

int bothEndsEased(Calelm& r1, Calelm& r2, Calelm& a1, Calelm& s, Calelm& a2) {
    if (!isGivenArc(r1) || !isGivenArc(r2) || !clothoidFits(a1.par, r1.par) || !clothoidFits(a2.par, r2.par)) {
        return -1;
    }
    const CalcRecord first = toCalc(r1);
    const CalcRecord second = toCalc(r2);
    const ClothoidEnd values1 = clothoidEnd(a1.par, r1.par);
    const ClothoidEnd values2 = clothoidEnd(a2.par, r2.par);
    CommonTangent tangent;
    if (!commonTangent(centreOf(first), first.par + values1.dR, first.dir, centreOf(second), second.par + values2.dR,
                       second.dir, tangent)) {
        return -1;
    }
    const Vec flat1 = tangent.foot1 + values1.Xm * tangent.t;
    const Vec flat2 = tangent.foot2 - values2.Xm * tangent.t;
    if (plane::dot(flat2 - flat1, tangent.t) < 0.0) {
        return -1;
    }
    std::array chain = {first, clothoidIntoLine(flat1, tangent.t, first.dir, a1.par, first.par, values1),
                        straightBetween(flat1, flat2),
                        clothoidFromLine(flat2, tangent.t, second.dir, a2.par, second.par, values2), second};
    setEnd(chain[0], startOf(chain[1]));
    setStart(chain[4], endOf(chain[3]));
    const auto made = completeOnlyChain(chain, r1, r2);
    if (!made) {
        return -1;
    }
    r1 = (*made)[0];
    a1 = (*made)[1];
    s = (*made)[2];
    a2 = (*made)[3];
    r2 = (*made)[4];
    return 0;
}

} // namespace

} // namespace fenmark::alignment

extern "C" {

int ali_SmakRR(Calelm* r1, Calelm* r2, Calelm* s) {
    return fenmark::alignment::answerInPlace(
        {r1, r2, s}, [&]() -> int { return fenmark::alignment::straightBetweenArcs(*r1, *r2, *s); });
}

int ali_SAmakRR(int side, Calelm* r1, Calelm* r2, Calelm* s, Calelm* a) {
    return fenmark::alignment::answerInPlace({r1, r2, s, a}, [&]() -> int {
        return fenmark::alignment::easedStraightBetweenArcs(fenmark::alignment::signed16(side), *r1, *r2, *s, *a);
    });
}

int ali_ASAmakRR(Calelm* r1, Calelm* r2, Calelm* a1, Calelm* s, Calelm* a2) {
    return fenmark::alignment::answerInPlace(
        {r1, r2, a1, s, a2}, [&]() -> int { return fenmark::alignment::bothEndsEased(*r1, *r2, *a1, *s, *a2); });
}

} // extern "C"
