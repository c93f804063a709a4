// Curves between two straights: an arc, two clothoids, clothoid-arc-clothoid.
//
// Symbols: u1, u2 unit directions of the straights, IP their crossing, theta the deflection, at most pi; R the radius,
// Ai the parameters; Xi, Yi, tau_i, dRi, Xmi values of the clothoids at R; T1, T2 the tangent lengths, from the IP back
// along the first and on along the second straight. Calculation plane inside, survey plane at the interface.
// Sources: any textbook of route surveying. The arc: T = R tan(theta/2). With clothoids the centre lies R + dR1 beside
// the first and R + dR2 beside the second straight; the crossing of these two parallels gives T1 and T2. Without an arc
// the clothoids turn through theta = (A1^2 + A2^2) / (2 R^2), and the triangle of their end tangents, with the angles
// tau1 and tau2, gives T1 and T2 by the law of sines.
#include "fenmark/alignment/tangent.h"

#include "fenmark/alignment/clothoid.h"
#include "fenmark/alignment/primitives.h"

#include "alignment/calelm/answer.h"
#include "alignment/tangent/chain_check.h"
#include "alignment/tangent/solver_tools.h"

namespace fenmark::alignment {

namespace {

// Two straights in the calculation plane and what their corner gives.
struct Corner {
    CalcRecord first;
    CalcRecord second;
    Vec u1;
    Vec u2;
    Vec ip;
    double theta = 0.0;
};

// Whether the point lies on the straight or, for the end of the first, beyond it.
bool notBefore(Vec p, const CalcRecord& straight) {
    const double point[2] = {p.x, p.y};
    const int where = elementPosition(point, *straight.raw());
    return where == position::kInside || where == position::kBeyond;
}

// False for parallel straights and where the IP lies before the start of either of them.
bool cornerOf(const Calelm& s1, const Calelm& s2, Corner& corner) {
    if (!isGivenStraight(s1) || !isGivenStraight(s2)) {
        return false;
    }
    corner.first = toCalc(s1);
    corner.second = toCalc(s2);
    corner.u1 = unitAlong(corner.first);
    corner.u2 = unitAlong(corner.second);
    const double line1[4] = {corner.first.sx, corner.first.sy, corner.u1.x, corner.u1.y};
    const double line2[4] = {corner.second.sx, corner.second.sy, corner.u2.x, corner.u2.y};
    if (CDlincros(line1, line2, &corner.ip.x, &corner.ip.y) != 0) {
        return false;
    }
    corner.theta = std::fabs(plane::wrappedSigned(plane::direction(corner.u2) - plane::direction(corner.u1)));
    return notBefore(corner.ip, corner.second) && notBefore(corner.ip, corner.first);
}

// Whether a tangent point lies on a straight of direction u. Ends of given records may be rounded, so that a chain that
// was built with such records is found again.
bool liesOn(Vec p, const CalcRecord& straight, Vec u) {
    return plane::dot(p - startOf(straight), u) >= -kRoundedJointTolerance &&
           plane::dot(p - endOf(straight), u) <= kRoundedJointTolerance;
}

// The tangent points at T1 and T2 from the IP, and the turning sense of the curve from one to the other. False when the
// first lies off the first straight or the second off the second.
bool cutStraights(Corner& corner, double T1, double T2, double& dir) {
    const Vec p1 = corner.ip - T1 * corner.u1;
    const Vec p2 = corner.ip + T2 * corner.u2;
    if (!liesOn(p1, corner.first, corner.u1) || !liesOn(p2, corner.second, corner.u2)) {
        return false;
    }
    const double second[2] = {p2.x, p2.y};
    const double tangent[4] = {p1.x, p1.y, corner.u1.x, corner.u1.y};
    dir = signedDistance(second, tangent) > 0.0 ? 1.0 : -1.0;
    setEnd(corner.first, p1);
    setStart(corner.second, p2);
    return true;
}

int arcBetweenStraights(Calelm& s1, Calelm& s2, Calelm& r) {
    Corner corner;
    if (!cornerOf(s1, s2, corner)) {
        return -1;
    }
    const double T = std::fabs(std::tan(corner.theta / 2.0) * r.par);
    double dir = 0.0;
    if (!cutStraights(corner, T, T, dir)) {
        return -1;
    }
    std::array chain = {corner.first, arcBetween(endOf(corner.first), startOf(corner.second), r.par, dir),
                        corner.second};
    const auto made = completeChain(chain, s1, s2);
    if (!made) {
        return -1;
    }
    s1 = (*made)[0];
    r = (*made)[1];
    s2 = (*made)[2];
    return 0;
}

// Slots of clothoidElements.
enum Table : std::size_t { TableX = 4, TableY = 5, LongTangent = 8, ShortTangent = 9, TableShift = 11, TableXm = 12 };

ClothoidEnd endOfTable(const double table[13], double tau) {
    return {table[TableX], table[TableY], tau, table[TableShift], table[TableXm]};
}

int clothoidsBetweenStraights(Calelm& s1, Calelm& s2, Calelm& a1, Calelm& a2) {
    Corner corner;
    if (!cornerOf(s1, s2, corner)) {
        return -1;
    }
    const double A1 = a1.par;
    const double A2 = a2.par;
    const double R = std::sqrt((A1 * A1 + A2 * A2) / (2.0 * corner.theta));
    if (!clothoidFits(A1, R) || !clothoidFits(A2, R)) {
        return -1;
    }
    const double tau1 = A1 * A1 / (2.0 * R * R);
    const double tau2 = A2 * A2 / (2.0 * R * R);
    double first[13];
    double second[13];
    if (clothoidElements(A1, tau1, first) != 0 || clothoidElements(A2, tau2, second) != 0) {
        return -1;
    }
    const double base = (first[ShortTangent] + second[ShortTangent]) / std::sin(tau1 + tau2);
    double dir = 0.0;
    if (!cutStraights(corner, first[LongTangent] + std::sin(tau2) * base, second[LongTangent] + std::sin(tau1) * base,
                      dir)) {
        return -1;
    }
    std::array chain = {
        corner.first, clothoidFromLine(endOf(corner.first), corner.u1, dir, A1, R, endOfTable(first, tau1)),
        clothoidIntoLine(startOf(corner.second), corner.u2, dir, A2, R, endOfTable(second, tau2)), corner.second};
    // The two computed ends of the joint agree to the last digits of the series; one of them stands for both.
    setStart(chain[2], endOf(chain[1]));
    const auto made = completeChain(chain, s1, s2);
    if (!made) {
        return -1;
    }
    s1 = (*made)[0];
    a1 = (*made)[1];
    a2 = (*made)[2];
    s2 = (*made)[3];
    return 0;
}

int easedArcBetweenStraights(Calelm& s1, Calelm& s2, Calelm& a1, Calelm& r, Calelm& a2) {
    Corner corner;
    const double R = r.par;
    if (!clothoidFits(a1.par, R) || !clothoidFits(a2.par, R) || !cornerOf(s1, s2, corner)) {
        return -1;
    }
    const double tau1 = a1.par * a1.par / (2.0 * R * R);
    const double tau2 = a2.par * a2.par / (2.0 * R * R);
    double first[13];
    double second[13];
    if (clothoidElements(a1.par, tau1, first) != 0 || clothoidElements(a2.par, tau2, second) != 0) {
        return -1;
    }
    const double d = second[TableShift] - first[TableShift];
    const double common = (first[TableShift] + R) * std::tan(corner.theta / 2.0);
    const double sine = std::sin(corner.theta);
    double dir = 0.0;
    if (!cutStraights(corner, common + first[TableXm] + d / sine,
                      common + second[TableXm] - d * std::cos(corner.theta) / sine, dir)) {
        return -1;
    }
    std::array chain = {
        corner.first, clothoidFromLine(endOf(corner.first), corner.u1, dir, a1.par, R, endOfTable(first, tau1)),
        arcBetween({}, {}, R, dir),
        clothoidIntoLine(startOf(corner.second), corner.u2, dir, a2.par, R, endOfTable(second, tau2)), corner.second};
    setStart(chain[2], endOf(chain[1]));
    setEnd(chain[2], startOf(chain[3]));
    const auto made = completeChain(chain, s1, s2);
    if (!made) {
        return -1;
    }
    s1 = (*made)[0];
    a1 = (*made)[1];
    r = (*made)[2];
    a2 = (*made)[3];
    s2 = (*made)[4];
    return 0;
}

} // namespace

} // namespace fenmark::alignment

extern "C" {

int ali_RmakSS(Calelm* s1, Calelm* s2, Calelm* r) {
    return fenmark::alignment::answerInPlace(
        {s1, s2, r}, [&]() -> int { return fenmark::alignment::arcBetweenStraights(*s1, *s2, *r); });
}

int ali_AAmakSS(Calelm* s1, Calelm* s2, Calelm* a1, Calelm* a2) {
    return fenmark::alignment::answerInPlace(
        {s1, s2, a1, a2}, [&]() -> int { return fenmark::alignment::clothoidsBetweenStraights(*s1, *s2, *a1, *a2); });
}

int ali_ARAmakSS(Calelm* s1, Calelm* s2, Calelm* a1, Calelm* r, Calelm* a2) {
    return fenmark::alignment::answerInPlace({s1, s2, a1, r, a2}, [&]() -> int {
        return fenmark::alignment::easedArcBetweenStraights(*s1, *s2, *a1, *r, *a2);
    });
}

} // extern "C"
