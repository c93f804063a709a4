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
    if (!(sweepBetween(centre, p, q, arc.dir) <= longest)) {
        return false;
    }
    setStart(arc, p);
    setEnd(arc, q);
    arc.k1 = centre.x;
    arc.k2 = -centre.y;
    completeAboutCentre(arc);
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
    made.type = element::kStraight;
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
        kTangentTolerance + kAngleStep + (after.type == element::kArc ? kLengthStep / after.par : 0.0);
    return atEnd ? sameDirection(before.eang, after.eang, tolerance)
                 : sameDirection(before.sang, after.sang, tolerance);
}

} // namespace fenmark::alignment::laying
