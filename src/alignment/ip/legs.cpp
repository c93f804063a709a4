// The legs of an intersection point and the centre of the curve between them.
//
// Symbols: u1, u2 unit directions of the legs, n1, n2 their left normals, dir the side of the curve, +1 left.
// Axes: calculation plane; records in the survey plane.
// Derivation: the centre stands dir d1 n1 off the first leg and dir d2 n2 off the second.
// Source: plane geometry; clothoid relations, [Kasper 1968].
#include "alignment/ip/legs.h"

#include "fenmark/alignment/clothoid.h"
#include "fenmark/alignment/conventions.h"
#include "fenmark/alignment/primitives.h"

#include "alignment/calelm/tolerances.h"
#include "alignment/primitives/tools.h"

namespace fenmark::alignment::laying {

bool makeLegs(const double previous[2], const AliIpCurve& ip, const double next[2], Legs& legs) {
    const double point[2] = {ip.x, ip.y};
    legs.previous = fromSurvey(previous);
    legs.ip = fromSurvey(point);
    legs.next = fromSurvey(next);
    if (!finite(legs.previous) || !finite(legs.ip) || !finite(legs.next)) {
        return false;
    }
    double line1[4];
    double line2[4];
    if (CDlinstd(legs.previous.x, legs.previous.y, legs.ip.x, legs.ip.y, line1) != 0 ||
        CDlinstd(legs.ip.x, legs.ip.y, legs.next.x, legs.next.y, line2) != 0) {
        return false;
    }
    legs.u1 = {line1[2], line1[3]};
    legs.u2 = {line2[2], line2[3]};
    legs.a1 = plane::direction(legs.u1);
    legs.a2 = plane::direction(legs.u2);
    legs.turn = CDbtwang(legs.previous.x, legs.previous.y, legs.ip.x, legs.ip.y, legs.ip.x, legs.ip.y, legs.next.x,
                         legs.next.y);
    legs.dir = legs.turn > kPi ? -1.0 : 1.0;
    legs.ia = legs.turn > kPi ? kTwoPi - legs.turn : legs.turn;
    return true;
}

Vec centreBetween(const Legs& legs, double d1, double d2) {
    const Vec p1 = legs.ip + (legs.dir * d1) * leftOf(legs.u1);
    const Vec p2 = legs.ip + (legs.dir * d2) * leftOf(legs.u2);
    const double det = plane::cross(legs.u1, legs.u2);
    if (std::fabs(det) < kDirectionZero) {
        return p2;
    }
    return p1 + (plane::cross(p2 - p1, legs.u2) / det) * legs.u1;
}

Vec footOnFirst(const Legs& legs, Vec p) {
    return legs.ip + plane::dot(p - legs.ip, legs.u1) * legs.u1;
}

Vec footOnSecond(const Legs& legs, Vec p) {
    return legs.ip + plane::dot(p - legs.ip, legs.u2) * legs.u2;
}

void writeEntry(const Legs& legs, Vec begin, Vec end, AliIpCurve& ip) {
    ip.azimuth_in = ali_CExAng(legs.a1);
    ip.azimuth_out = ali_CExAng(legs.a2);
    ip.angle = legs.ia;
    ip.tangent1 = plane::distance(begin, legs.ip);
    ip.tangent2 = plane::distance(end, legs.ip);
}

Calelm clothoidRecord(Vec origin, Vec axis, double turn, double parameter, double radius, bool reversedRun) {
    const Offset offset = offsetOf(parameter, radius);
    Vec local;
    CDAcalxy(parameter, offset.tau, &local.x, &local.y);
    Calelm made{};
    made.type = element::kClothoid;
    made.dir = turn;
    made.par = parameter;
    made.r2 = radius;
    made.len = parameter * parameter / radius;
    setStart(made, origin);
    setEnd(made, origin + local.x * axis + (turn * local.y) * leftOf(axis));
    const double direction = plane::direction(axis);
    made.sang = ali_CExAng(direction);
    made.eang = ali_CExAng(plane::wrapped(direction + turn * offset.tau));
    made.k1 = offset.tau;
    made.k2 = offset.shift;
    made.k3 = offset.xm;
    if (reversedRun) {
        CDreverA(&made, 1);
    }
    return made;
}

} // namespace fenmark::alignment::laying
