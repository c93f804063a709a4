// Clothoid, arc, egg-shaped clothoid, arc, clothoid at an intersection point.
//
// Symbols: T tangent length before the IP, u1, u2 unit directions of the legs, n1, n2 their left normals, dir +1 left;
// C1, R1 and C2, R2 centres and radii; index 1 for A1 at R1, 2 for A2 at R1, 3 for A2 at R2, 4 for A3 at R2; rho = R +
// dR offset radius and Xm centre abscissa; D distance of the centres that A2 demands; h distance of C1 from the second
// leg. Axes: calculation plane for every Vec, survey plane for records and entries. Derivation: A1 begins T before the
// IP and fixes C1. C2 stands rho4 off the second leg and D from C1; seen from C1 the normal to that leg and the
// direction to C2 enclose acos((h - rho4) / D), to the rear where the curve sharpens (R1 > R2) and to the front where
// it flattens. A2 lies on the common outer tangent of the offset circles of radius rho2, rho3. Source: [Kasper 1968]
// (egg-shaped lines).
#include "fenmark/alignment/ip.h"

#include "fenmark/alignment/construction.h"
#include "fenmark/alignment/primitives.h"

#include "alignment/calelm/answer.h"
#include "alignment/compound/laying.h"
#include "alignment/ip/legs.h"
#include "alignment/primitives/tools.h"

#include <algorithm>
#include <array>
#include <utility>

using namespace fenmark::alignment;
using namespace fenmark::alignment::laying;

namespace {

constexpr int kReversedForm = 8;

// The chain in the order of travel.
struct Curve {
    std::array<Calelm, 5> chain;
};

int layCurve(const Legs& legs, const AliIpCurve& ip, Curve& curve, Vec& end) {
    const double A1 = ip.size1;
    const double R1 = ip.size2;
    const double A2 = ip.size3;
    const double R2 = ip.size4;
    const double A3 = ip.size5;
    if (!(R1 > 0.0) || !(R2 > 0.0) || !std::isfinite(ip.tangent1)) {
        return -1;
    }
    const double dir = legs.dir;
    const Offset at1 = offsetOf(A1, R1);
    const Offset at2 = offsetOf(A2, R1);
    const Offset at3 = offsetOf(A2, R2);
    const Offset at4 = offsetOf(A3, R2);

    const Vec begin = legs.ip - ip.tangent1 * legs.u1;
    const Vec c1 = begin + at1.xm * legs.u1 + (dir * at1.rho) * leftOf(legs.u1);
    // Towards the second leg, and how far it is.
    const Vec outward = -dir * leftOf(legs.u2);
    const double h = plane::dot(legs.ip - c1, outward);
    const double along = at2.xm - at3.xm;
    const double across = at2.rho - at3.rho;
    const double D = std::sqrt(along * along + across * across);
    const double cosine = (h - at4.rho) / D;
    if (!(D > 0.0) || !(std::fabs(cosine) <= 1.0)) {
        return -1;
    }
    const double angle = (R1 > R2 ? -dir : dir) * std::acos(cosine);
    const Vec c2 = c1 + D * plane::turned(outward, angle);
    end = legs.ip + (plane::dot(c2 - legs.ip, legs.u2) + at4.xm) * legs.u2;

    auto& [a1, r1, a2, r2, a3] = curve.chain;
    if (layClothoid(begin, legs.u1, dir, A1, 0.0, R1, false, a1) != 0 ||
        layClothoid(end, -1.0 * legs.u2, -dir, A3, 0.0, R2, true, a3) != 0) {
        return -1;
    }
    EggTangent tangent;
    if (!eggTangent(c1, R1, c2, R2, dir, A2, tangent)) {
        return -1;
    }
    int status = layEgg(tangent, R1, R2, dir, A2, a2);
    if (status != 0) {
        return status;
    }
    r1 = Calelm{};
    r2 = Calelm{};
    r1.type = r2.type = element::kArc;
    r1.dir = r2.dir = dir;
    r1.par = R1;
    r2.par = R2;
    setStart(r1, endOf(a1));
    setEnd(r1, startOf(a2));
    setStart(r2, endOf(a2));
    setEnd(r2, startOf(a3));
    status = signed16(ali_makR(&r1));
    if (status == 0) {
        status = signed16(ali_makR(&r2));
    }
    if (status != 0) {
        return status;
    }
    // The curve that leaves the legs on their inner side and arrives on the second leg, with every joint tangent.
    return finishTangentChain(curve.chain, kJointTolerance) ? 0 : -1;
}

} // namespace

extern "C" int ali_IPsetARARA(const double previous[2], AliIpCurve* ip, const double next[2], Calelm* a1, Calelm* r1,
                              Calelm* a2, Calelm* r2, Calelm* a3) {
    return fenmark::alignment::answerInPlace({a1, r1, a2, r2, a3}, [&]() -> int {
        const bool backwards = ip->kind == kReversedForm;
        AliIpCurve worked = *ip;
        if (backwards) {
            std::swap(worked.size1, worked.size5);
            std::swap(worked.size2, worked.size4);
            worked.tangent1 = ip->tangent2;
        }
        Legs legs;
        if (!makeLegs(backwards ? next : previous, worked, backwards ? previous : next, legs)) {
            return -1;
        }
        Curve curve;
        Vec end;
        const int status = layCurve(legs, worked, curve, end);
        if (status != 0) {
            return status;
        }
        // Azimuths by CDbtwang on survey coordinates: below the angle step they are 0.
        const auto azimuth = [](const double p[2], const double q[2]) {
            return CDbtwang(0.0, 0.0, 0.1, 0.0, p[0], p[1], q[0], q[1]);
        };
        const double point[2] = {ip->x, ip->y};
        const double length = plane::distance(end, legs.ip);
        if (backwards) {
            ip->tangent1 = length;
            // The legs run the other way: each azimuth is that of the opposite leg of the worked curve plus a half turn,
            // and the turn clockwise its complement.
            ip->azimuth_in = plane::wrapped(azimuth(point, previous) + kPi);
            ip->azimuth_out = plane::wrapped(azimuth(next, point) + kPi);
            const double turn =
                CDbtwang(next[0], next[1], point[0], point[1], point[0], point[1], previous[0], previous[1]);
            ip->angle = kTwoPi - turn;
            *a1 = reversed(curve.chain[4]);
            *r1 = reversed(curve.chain[3]);
            *a2 = reversed(curve.chain[2]);
            *r2 = reversed(curve.chain[1]);
            *a3 = reversed(curve.chain[0]);
        } else {
            ip->tangent2 = length;
            ip->azimuth_in = azimuth(previous, point);
            ip->azimuth_out = azimuth(point, next);
            ip->angle = CDbtwang(previous[0], previous[1], point[0], point[1], point[0], point[1], next[0], next[1]);
            *a1 = curve.chain[0];
            *r1 = curve.chain[1];
            *a2 = curve.chain[2];
            *r2 = curve.chain[3];
            *a3 = curve.chain[4];
        }
        return 0;
    });
}
