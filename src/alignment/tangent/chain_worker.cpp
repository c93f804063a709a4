// Straight, clothoid, arc, clothoid, clothoid, arc: fitted between the straight and the last arc.
//
// Symbols: order of travel S, A1, R1, A2, A3, R. C1 centre of R1, C centre of R; indices 1, 2, 3 for the values of
// (A1, R1), (A2, R1), (A3, R): X, Y, tau, shift dR and centre abscissa Xm. u direction of S, t direction of the common
// tangent of A2 and A3 at infinite radius; q = R1 + dR2 and p = R + dR3 the distances of C1 and C from that tangent.
// Axes: calculation plane inside, survey plane at the interface.
// Sources: the shift relations of the clothoid. C1 lies R1 + dR1 beside S, on the side of the curve, and D from C, with
// D^2 = (Xm2 + Xm3)^2 + (p -+ q)^2 for equal and opposite turning senses: along the common tangent the two centres are
// Xm2 and Xm3 away from the inflection, across it p and q on one side or on either side.
#include "fenmark/alignment/primitives.h"
#include "fenmark/alignment/tangent.h"

#include "alignment/calelm/answer.h"
#include "alignment/tangent/chain_check.h"
#include "alignment/tangent/solver_tools.h"

namespace fenmark::alignment {

namespace {

struct Sizes {
    double A1;
    double R1;
    double A2;
    double A3;
    ClothoidEnd end1;
    ClothoidEnd end2;
    ClothoidEnd end3;
};

// +1 when the way from a point right of S's end to R's start crosses the line of S, that is when R starts on the left
// of S or on its line; else, and where that way runs along S, -1.
double turningSide(const CalcRecord& s, const CalcRecord& r) {
    const double end[2] = {s.ex, s.ey};
    const double start[2] = {s.sx, s.sy};
    double normal[2];
    CDrotpoi(end, 0.0, 1.0, start, normal);
    double line[4];
    double across[4];
    double crossing[2];
    if (CDlinstd(s.sx, s.sy, s.ex, s.ey, line) != 0 || CDlinstd(normal[0], normal[1], r.sx, r.sy, across) != 0 ||
        CDlincros(line, across, &crossing[0], &crossing[1]) != 0) {
        return -1.0;
    }
    const double rStart[2] = {r.sx, r.sy};
    return CDpoiinseg(normal, rStart, crossing) >= 0 ? 1.0 : -1.0;
}

using Chain = std::array<CalcRecord, 6>;

// The chain of the calculation plane for one centre of R1; false where it cannot be built.
bool laidAt(Vec c1, double side, const CalcRecord& s, const CalcRecord& r, const Sizes& sizes, Chain& chain) {
    const Vec u = unitAlong(s);
    const Vec flat1 = startOf(s) + (plane::dot(u, c1 - startOf(s)) - sizes.end1.Xm) * u;
    // A clothoid that would begin before the straight does is no chain.
    if (plane::dot(flat1 - startOf(s), u) < 0.0) {
        return false;
    }
    const Vec c = centreOf(r);
    CommonTangent tangent;
    if (!commonTangent(c1, sizes.R1 + sizes.end2.dR, side, c, r.par + sizes.end3.dR, r.dir, tangent)) {
        return false;
    }
    const Vec inflection2 = tangent.foot1 + sizes.end2.Xm * tangent.t;
    const Vec inflection3 = tangent.foot2 - sizes.end3.Xm * tangent.t;
    chain = {straightBetween(startOf(s), flat1),
             clothoidFromLine(flat1, u, side, sizes.A1, sizes.R1, sizes.end1),
             arcBetween({}, {}, sizes.R1, side),
             clothoidIntoLine(inflection2, tangent.t, side, sizes.A2, sizes.R1, sizes.end2),
             clothoidFromLine(inflection3, tangent.t, r.dir, sizes.A3, r.par, sizes.end3),
             r};
    setStart(chain[2], endOf(chain[1]));
    setEnd(chain[2], startOf(chain[3]));
    setStart(chain[5], endOf(chain[4]));
    return true;
}

// The two centres of R1 for one turning side: before and behind the foot of C on the offset line, seen along S.
Candidates centresFor(double side, const CalcRecord& s, const CalcRecord& r, const Sizes& sizes) {
    Candidates found;
    const double p = r.par + sizes.end3.dR;
    const double q = sizes.R1 + sizes.end2.dR;
    const double along = sizes.end2.Xm + sizes.end3.Xm;
    const double D = std::hypot(along, r.dir * side > 0.0 ? p - q : p + q);
    const Vec u = unitAlong(s);
    const Vec origin = startOf(s) + side * (sizes.R1 + sizes.end1.dR) * Vec{-u.y, u.x};
    const Vec toCentre = centreOf(r) - origin;
    const double across = plane::cross(u, toCentre);
    // Where the offset line does not reach the circle about C there is no chain; a miss of a last bit is a touch.
    const double radicand = (D - std::fabs(across)) * (D + std::fabs(across));
    if (!(radicand >= -kLengthStep)) {
        return found;
    }
    const double g = std::sqrt(std::fmax(radicand, 0.0));
    const Vec foot = origin + plane::dot(u, toCentre) * u;
    found.add(foot - g * u);
    found.add(foot + g * u);
    return found;
}

int fitLongChain(Calelm& s, Calelm& r, Calelm& a1, Calelm& r1, Calelm& a2, Calelm& a3) {
    if (!isGivenStraight(s) || !isGivenArc(r) || !clothoidFits(a1.par, r1.par) || !clothoidFits(a2.par, r1.par) ||
        !clothoidFits(a3.par, r.par)) {
        return -1;
    }
    const CalcRecord line = toCalc(s);
    const CalcRecord last = toCalc(r);
    const Sizes sizes{a1.par,
                      r1.par,
                      a2.par,
                      a3.par,
                      clothoidEnd(a1.par, r1.par),
                      clothoidEnd(a2.par, r1.par),
                      clothoidEnd(a3.par, r.par)};
    // The side that S and R's start ask for comes first; where it gives no tangent chain, the other one may.
    const double asked = turningSide(line, last);
    // Among its two centres one that lengthens neither S nor R is preferred.
    for (const double side : {asked, -asked}) {
        for (const auto& [pass, c1] : eachPass(centresFor(side, line, last, sizes), kLongArcsLast)) {
            Chain chain;
            if (!laidAt(c1, side, line, last, sizes, chain)) {
                continue;
            }
            if (const auto made = completeChain(chain, s, r, pass)) {
                s = (*made)[0];
                a1 = (*made)[1];
                r1 = (*made)[2];
                a2 = (*made)[3];
                a3 = (*made)[4];
                r = (*made)[5];
                return 0;
            }
        }
    }
    return -1;
}

} // namespace

} // namespace fenmark::alignment

extern "C" {

int chainWorker(Calelm* s, Calelm* r, Calelm* a1, Calelm* r1, Calelm* a2, Calelm* a3) {
    return fenmark::alignment::answerInPlace(
        {s, r, a1, r1, a2, a3}, [&]() -> int { return fenmark::alignment::fitLongChain(*s, *r, *a1, *r1, *a2, *a3); });
}

} // extern "C"
