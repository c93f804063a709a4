// An arc between two arcs.
//
// Symbols: R1, R2 given, R3 made; Ci centres, D = |C1 C2|; a, b the distances C1 C3 and C2 C3: |R3 - Ri| for equal dir
// (touch from inside), R3 + Ri otherwise (touch from outside); x0 the foot of C3 on the line of centres, from C1.
// Axes: calculation plane inside, survey plane at the interface.
// Source: plane geometry of the triangle of the three centres, x0 = (a^2 + D^2 - b^2) / (2 D).
#include "fenmark/alignment/tangent.h"

#include "alignment/calelm/answer.h"
#include "alignment/tangent/chain_check.h"
#include "alignment/tangent/solver_tools.h"

#include <algorithm>

namespace fenmark::alignment {

namespace {

// How far the sides of the triangle may miss one another and still count as its limit, metres. Seen: 0, 2.4e-7.
constexpr double kTriangleSlack = 1e-9;

// Centre distance of the new arc and a given one.
double centreDistance(const CalcRecord& given, double radius, double dir) {
    return given.dir == dir ? std::fabs(radius - given.par) : radius + given.par;
}

// Where the new circle touches a given one: on the line of centres, beyond the smaller circle's centre when it lies
// inside the other, between the centres when outside.
Vec contactOf(const CalcRecord& given, const CalcRecord& made, Vec centre3) {
    const Vec apart = centre3 - centreOf(given);
    const double reach = given.dir == made.dir && made.par > given.par ? -given.par : given.par;
    return centreOf(given) + (reach / plane::norm(apart)) * apart;
}

// Builds and checks the chain for one centre of the new arc, which is no more than a half circle. Of the given arcs more
// than that stays with longArcs only.
bool laidAt(Vec centre3, bool round, bool longArcs, const CalcRecord& first, const CalcRecord& second, Calelm& r1,
            Calelm& r2, Calelm& r3) {
    CalcRecord made = arcBetween({}, {}, r3.par, r3.dir);
    made.k1 = centre3.x;
    made.k2 = centre3.y;
    Vec contact1 = contactOf(first, made, centre3);
    Vec contact2 = contactOf(second, made, centre3);
    if (round) {
        contact1 = roundedPoint(contact1);
        contact2 = roundedPoint(contact2);
    }
    std::array candidate = {first, made, second};
    setEnd(candidate[0], contact1);
    setStart(candidate[1], contact1);
    setEnd(candidate[1], contact2);
    setStart(candidate[2], contact2);
    std::array<Calelm, 3> chain;
    std::transform(candidate.begin(), candidate.end(), chain.begin(), toSurvey);
    std::for_each(chain.begin(), chain.end(), completeAboutCentre);
    if (!finishChain(chain, r1, r2) || !keepsLongArcs(chain, r1, r2) || chain[1].k3 > kPi ||
        (!longArcs && std::fmax(chain[0].k3, chain[2].k3) > kPi)) {
        return false;
    }
    r1 = chain[0];
    r3 = chain[1];
    r2 = chain[2];
    return true;
}

int arcBetweenArcs(Calelm& r1, Calelm& r2, Calelm& r3) {
    if (!isGivenArc(r1) || !isGivenArc(r2) || !(r3.par > 0.0) || std::fabs(r3.dir) != 1.0) {
        return -1;
    }
    const CalcRecord first = toCalc(r1);
    const CalcRecord second = toCalc(r2);
    const double a = centreDistance(first, r3.par, r3.dir);
    const double b = centreDistance(second, r3.par, r3.dir);
    const Vec toSecond = centreOf(second) - centreOf(first);
    const double D = plane::norm(toSecond);
    if (!(D >= kParameterZero) || !(a + b >= D - kTriangleSlack) || !(std::fabs(a - b) <= D + kTriangleSlack)) {
        return -1;
    }
    const double x0 = 0.5 * (D + (a - b) * (a + b) / D);
    const double y0 = std::sqrt(std::fmax((a - x0) * (a + x0), 0.0));
    const Vec u = (1.0 / D) * toSecond;
    const Vec left{-u.y, u.x};
    const Vec foot = centreOf(first) + x0 * u;
    // The centre on the side of the new arc's own turning sense first. Contacts are rounded to the length step; on a
    // very small arc that would turn the tangent, and the exact contacts stand.
    for (const bool longArcs : {false, true}) {
        for (const bool round : {true, false}) {
            for (const double side : {r3.dir, -r3.dir}) {
                if (laidAt(foot + side * y0 * left, round, longArcs, first, second, r1, r2, r3)) {
                    return 0;
                }
            }
        }
    }
    return -1;
}

} // namespace

} // namespace fenmark::alignment

extern "C" {

int ali_RmakRR(Calelm* r1, Calelm* r2, Calelm* r3) {
    return fenmark::alignment::answerInPlace(
        {r1, r2, r3}, [&]() -> int { return fenmark::alignment::arcBetweenArcs(*r1, *r2, *r3); });
}

} // extern "C"
