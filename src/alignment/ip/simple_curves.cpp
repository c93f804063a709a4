// Arc, two clothoids, or clothoid, arc and clothoid at an intersection point.
//
// Symbols: IA intersection angle, R radius, A1, A2 parameters, tau tangent angle, rho = R + dR offset radius and Xm
// centre abscissa of a clothoid at R, C centre of the arc.
// Axes: calculation plane for every Vec, survey plane for records and entries.
// Derivation: C stands rho1 off the first leg and rho2 off the second, on the inner side. The clothoids begin Xm before
// the foot of C on the first leg and end Xm behind that on the second. Two clothoids alone turn tau1 + tau2 = IA, so
// R = sqrt((A1^2 + A2^2) / (2 IA)); with an arc its sweep is IA - tau1 - tau2.
// Source: [Kasper 1968].
#include "fenmark/alignment/ip.h"

#include "fenmark/alignment/clothoid.h"
#include "fenmark/alignment/construction.h"

#include "alignment/calelm/answer.h"
#include "alignment/calelm/tolerances.h"
#include "alignment/ip/legs.h"
#include "alignment/primitives/tools.h"

using namespace fenmark::alignment;
using namespace fenmark::alignment::laying;

namespace {

// A sweep below this is no arc, radians. Seen: 5e-6, which a test sets, and 1.5e-5.
constexpr double kEmptySweep = 1e-5;

// The two clothoids of a curve of radius R, and the centre.
struct Eased {
    Offset first;
    Offset second;
    Vec centre;
    Calelm a1;
    Calelm a2;
    Vec begin; ///< where the curve leaves the first leg
    Vec end;   ///< where it reaches the second
};

Eased ease(const Legs& legs, double parameter1, double radius, double parameter2) {
    Eased eased;
    eased.first = offsetOf(parameter1, radius);
    eased.second = offsetOf(parameter2, radius);
    eased.centre = centreBetween(legs, eased.first.rho, eased.second.rho);
    eased.begin = footOnFirst(legs, eased.centre) - eased.first.xm * legs.u1;
    eased.end = footOnSecond(legs, eased.centre) + eased.second.xm * legs.u2;
    eased.a1 = clothoidRecord(eased.begin, legs.u1, legs.dir, parameter1, radius, false);
    // The second is built from the end of the curve back, bending the other way, and then reversed.
    eased.a2 = clothoidRecord(eased.end, -1.0 * legs.u2, -legs.dir, parameter2, radius, true);
    return eased;
}

bool finiteRecord(const Calelm& e) {
    return finite(startOf(e)) && finite(endOf(e)) && std::isfinite(e.len) && std::isfinite(e.sang) &&
           std::isfinite(e.eang);
}

} // namespace

extern "C" {

int ali_IPsetR(const double previous[2], AliIpCurve* ip, const double next[2], Calelm* r) {
    return fenmark::alignment::answerInPlace({r}, [&]() -> int {
        Legs legs;
        const double radius = ip->size1;
        if (!makeLegs(previous, *ip, next, legs) || !(radius > 0.0) || !std::isfinite(radius)) {
            return -1;
        }
        const Vec centre = centreBetween(legs, radius, radius);
        const Vec begin = footOnFirst(legs, centre);
        const Vec end = footOnSecond(legs, centre);
        Calelm made{};
        made.type = element::kArc;
        made.dir = legs.dir;
        made.par = made.r1 = made.r2 = radius;
        setStart(made, begin);
        setEnd(made, end);
        if (signed16(ali_makR(&made)) != 0) {
            // Only legs in line leave no arc; legs that turn back meet at a point too, but not along one tangent.
            if (!(legs.ia < kEmptySweep) || !(plane::distance(begin, end) < kSameLength)) {
                return -1;
            }
            made.k1 = centre.x;
            made.k2 = -centre.y;
            made.sang = made.eang = plane::wrapped(-legs.a1);
            made.r1 = made.r2 = 0.0;
        } else if (!sameDirection(made.sang, -legs.a1) || !sameDirection(made.eang, -legs.a2)) {
            return -1;
        }
        writeEntry(legs, begin, end, *ip);
        *r = made;
        return 0;
    });
}

int ali_IPsetAA(const double previous[2], AliIpCurve* ip, const double next[2], Calelm* a1, Calelm* a2) {
    return fenmark::alignment::answerInPlace({a1, a2}, [&]() -> int {
        Legs legs;
        if (!makeLegs(previous, *ip, next, legs)) {
            return -1;
        }
        const double squares = ip->size1 * ip->size1 + ip->size2 * ip->size2;
        const double radius = std::sqrt(squares / (2.0 * legs.ia));
        if (!std::isfinite(radius) || !(radius > 0.0)) {
            return -1;
        }
        const Eased eased = ease(legs, ip->size1, radius, ip->size2);
        if (!finiteRecord(eased.a1) || !finiteRecord(eased.a2)) {
            return -1;
        }
        writeEntry(legs, eased.begin, eased.end, *ip);
        *a1 = eased.a1;
        *a2 = eased.a2;
        const Vec apart = endOf(eased.a1) - startOf(eased.a2);
        const bool joined = std::fabs(apart.x) <= kJointTolerance && std::fabs(apart.y) <= kJointTolerance;
        return joined && sameDirection(eased.a1.eang, eased.a2.sang) ? 0 : -1;
    });
}

int ali_IPsetARA(const double previous[2], AliIpCurve* ip, const double next[2], Calelm* a1, Calelm* r, Calelm* a2) {
    return fenmark::alignment::answerInPlace({a1, r, a2}, [&]() -> int {
        const double radius = ip->size2;
        // Strictly above 0.56, for positive sizes only.
        const auto fits = [&](double parameter) {
            return parameter > 0.0 && std::isfinite(parameter) && radius / parameter > kSmallestRadiusRatio;
        };
        Legs legs;
        if (!std::isfinite(radius) || !fits(ip->size1) || !fits(ip->size3) || !makeLegs(previous, *ip, next, legs)) {
            return -1;
        }
        const Eased eased = ease(legs, ip->size1, radius, ip->size3);
        if (!finiteRecord(eased.a1) || !finiteRecord(eased.a2)) {
            return -1;
        }
        const double sweep = legs.ia - eased.first.tau - eased.second.tau;
        Calelm arc{};
        arc.type = element::kArc;
        arc.dir = legs.dir;
        arc.par = radius;
        arc.r1 = arc.r2 = -1.0; // the mark of an arc between clothoids
        arc.k1 = eased.centre.x;
        arc.k2 = -eased.centre.y;
        setStart(arc, endOf(eased.a1));
        arc.sang = eased.a1.eang;
        if (sweep < kEmptySweep) {
            setEnd(arc, startOf(arc));
            arc.eang = arc.sang;
        } else {
            setEnd(arc, startOf(eased.a2));
            arc.eang = eased.a2.sang;
            arc.len = sweep * radius;
            arc.k3 = sweep;
        }
        writeEntry(legs, eased.begin, eased.end, *ip);
        *a1 = eased.a1;
        *r = arc;
        *a2 = eased.a2;
        if (!(sweep >= 0.0)) {
            return -1;
        }
        // Legs that turn back have no centre within reach of both.
        const auto atRadius = [&](Vec p) {
            return std::fabs(plane::distance(eased.centre, p) - radius) <= kJointTolerance;
        };
        return atRadius(startOf(arc)) && atRadius(startOf(*a2)) ? 0 : -1;
    });
}

} // extern "C"
