// The clothoid of an egg-shaped curve and the two of an S-shaped one, between arcs that are fixed.
//
// Symbols: Ci centre, Ri radius, rho_i = Ri + dRi radius of the offset circle, Xm_i abscissa of the centre in the frame
// of the clothoid at arc i; D distance of the centres; u direction of the common tangent in the sense of travel, n its
// left normal; dir +1 left.
// Axes: calculation plane for every Vec, survey plane for the records.
// Derivation: the tangent at a clothoid's origin touches the offset circle of each arc that it joins. For arcs of one
// turn C2 - C1 has the part dir (rho_2 - rho_1) along n, for arcs of opposite turn -dir1 (rho_1 + rho_2), which fixes
// u. Source: [Kasper 1968] (egg-shaped and S-shaped lines).
#include "fenmark/alignment/compound.h"

#include "fenmark/alignment/conventions.h"

#include "alignment/calelm/answer.h"
#include "alignment/calelm/tolerances.h"
#include "alignment/compound/laying.h"

#include <algorithm>

using namespace fenmark::alignment;
using namespace fenmark::alignment::laying;

namespace {

// Distance from p along the line of direction u to the nearer cut with a circle; below 0 when it has none.
double distanceToCircle(Vec p, Vec u, Vec centre, double radius) {
    const Vec from = p - centre;
    const double half = plane::dot(from, u);
    const double power = plane::dot(from, from) - radius * radius;
    double discriminant = half * half - power;
    if (!(discriminant >= -kParameterZero)) {
        return -1.0;
    }
    discriminant = std::max(discriminant, 0.0);
    // The root of smaller magnitude, without taking nearly equal values from one another.
    const double larger = std::fabs(half) + std::sqrt(discriminant);
    return larger > 0.0 ? std::fabs(power) / larger : 0.0;
}

} // namespace

extern "C" {

int ali_makRAR(const Calelm* r1, Calelm* a, const Calelm* r2, double* D, double* angle) {
    return fenmark::alignment::answerInPlace({a}, [&]() -> int {
        const Vec c1 = centreOf(*r1);
        const Vec c2 = centreOf(*r2);
        if (!(std::fabs(r1->par - r2->par) >= kSameLength) || !isTurn(r1->dir) || r1->dir != r2->dir ||
            (std::fabs(c1.x - c2.x) < kSameLength && std::fabs(c1.y - c2.y) < kSameLength)) {
            return -1;
        }
        EggTangent tangent;
        if (!eggTangent(c1, r1->par, c2, r2->par, r1->dir, a->par, tangent)) {
            return -1;
        }
        Calelm made{};
        const int status = layEgg(tangent, r1->par, r2->par, r1->dir, a->par, made);
        if (status != 0) {
            return status;
        }
        const bool sharpens = r1->par > r2->par;
        const double gap = sharpens ? distanceToCircle(endOf(made), tangent.direction, c2, r2->par)
                                    : distanceToCircle(startOf(made), tangent.direction, c1, r1->par);
        if (gap < 0.0) {
            return 1;
        }
        *a = made;
        *D = gap;
        *angle = ali_CExAng(plane::direction(tangent.direction));
        return 0;
    });
}

int ali_makRAAR(const Calelm* r1, Calelm* a1, Calelm* a2, const Calelm* r2, double* D) {
    return fenmark::alignment::answerInPlace({a1, a2}, [&]() -> int {
        if (!isTurn(r1->dir) || !isTurn(r2->dir) || r1->dir == r2->dir) {
            return -1;
        }
        const Vec c1 = centreOf(*r1);
        const Vec c2 = centreOf(*r2);
        const Offset at1 = offsetOf(a1->par, r1->par);
        const Offset at2 = offsetOf(a2->par, r2->par);
        const Vec between = c2 - c1;
        const double distance = plane::norm(between);
        if (!(at1.rho + at2.rho < distance && r1->par + r2->par < distance)) {
            return -1;
        }
        const double sine = -r1->dir * (at1.rho + at2.rho) / distance;
        const Vec u = (1.0 / distance) * plane::turned(between, std::sqrt((1.0 - sine) * (1.0 + sine)), -sine);
        const Vec n = leftOf(u);
        const Vec origin1 = c1 - (r1->dir * at1.rho) * n + at1.xm * u;
        const Vec origin2 = c2 - (r2->dir * at2.rho) * n - at2.xm * u;
        Calelm made1{};
        Calelm made2{};
        // Run from its origin, against the travel, the first clothoid bends to the other side than its arc.
        int status = layClothoid(origin1, -1.0 * u, -r1->dir, a1->par, 0.0, r1->par, true, made1);
        if (status >= 0) {
            status = layClothoid(origin2, u, r2->dir, a2->par, 0.0, r2->par, false, made2);
        }
        if (status < 0) {
            return status;
        }
        *a1 = made1;
        *a2 = made2;
        *D = plane::distance(origin1, origin2);
        return 0;
    });
}

} // extern "C"
