// Elements whose points are rounded to 1e-5. Axes: calculation plane for Vec values and angles, survey plane for
// records. An arc keeps its unrounded centre, so that the rounding of its ends turns the tangents by no more than 1e-5
// / R.
#include "alignment/point/rounded_elements.h"

#include "fenmark/alignment/clothoid.h"
#include "fenmark/alignment/conventions.h"

#include "alignment/calelm/rounding.h"
#include "alignment/primitives/tools.h"

namespace fenmark::alignment::laying {

bool roundedArc(Vec centre, Vec p, Vec q, double longest, Calelm& arc) {
    if (!finite(centre) || !finite(p) || !finite(q) || !(plane::distance(p, q) >= kSameLength) ||
        !onCircle(centre, arc.par, p) || !onCircle(centre, arc.par, q)) {
        return false;
    }
    // ali_KEnAng tells the shorter arc of the circle, which is not that of a longer cut.
    const double turned = sweepBetween(centre, p, q, arc.dir);
    if (!(turned <= longest)) {
        return false;
    }
    const double start[2] = {p.x, p.y};
    const double finish[2] = {q.x, q.y};
    double sang = 0.0;
    double eang = 0.0;
    double sweep = 0.0;
    double length = 0.0;
    ali_KEnAng(start, finish, arc.dir, arc.par, centre.x, centre.y, &sang, &eang, &sweep, &length);
    if (turned > sweep + kSameAngle) {
        sweep = turned;
        length = arc.par * turned;
    }
    arc.type = element::arc;
    setStart(arc, p);
    setEnd(arc, q);
    arc.r1 = arc.r2 = 0.0;
    arc.len = roundLength(length);
    arc.sang = ali_CExAng(sang);
    arc.eang = ali_CExAng(eang);
    arc.k1 = centre.x;
    arc.k2 = -centre.y;
    arc.k3 = sweep;
    return true;
}

bool straightAlong(Vec p, Vec q, double azimuth, double length, Calelm& straight) {
    const double start[2] = {p.x, p.y};
    const double finish[2] = {q.x, q.y};
    Calelm made = straight;
    if (!finite(p) || !finite(q) || !(length >= kSameLength) ||
        signed16(ali_KCalCst(start, finish, &made.k1, &made.k2, &made.k3)) != 0) {
        return false;
    }
    made.type = element::straight;
    setStart(made, p);
    setEnd(made, q);
    made.dir = 1.0;
    made.par = made.r1 = made.r2 = 0.0;
    made.len = length;
    made.sang = made.eang = azimuth;
    straight = made;
    return true;
}

double roundedAzimuth(double direction) {
    const double rounded = roundAngle(direction);
    const bool carried = std::fabs(rounded) < kPlaneAngleZero && std::fabs(direction) >= kPlaneAngleZero;
    return ali_CExAng(carried ? direction : rounded);
}

bool keepsTangent(const Calelm& before, const Calelm& after, bool atEnd) {
    const double tolerance =
        tangent_tolerance + kAngleStep + (after.type == element::arc ? kLengthStep / after.par : 0.0);
    return atEnd ? sameDirection(before.eang, after.eang, tolerance)
                 : sameDirection(before.sang, after.sang, tolerance);
}

} // namespace fenmark::alignment::laying
