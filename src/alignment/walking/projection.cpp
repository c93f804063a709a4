// From a point to the foot of its perpendicular on a straight or an arc, and the dispatcher.
//
// Symbols: p the point, s the station of its foot, R radius; U and T the angles run from the start to p and to the end
// in the sense of dir. Records and points are in the survey plane, values named ...Calc in the calculation plane.
#include "alignment/calelm/planes.h"
#include "alignment/calelm/rounding.h"
#include "fenmark/alignment/clothoid.h"
#include "fenmark/alignment/walking.h"

using namespace fenmark::alignment;

namespace {

// Angle run from the radial direction a to b, counter-clockwise or, for dir = -1, clockwise; [0, 2 pi).
double run(double a, double b, double dir) {
    const double w = dir == -1.0 ? a - b : b - a;
    return w < 0.0 ? w + kTwoPi : w;
}

} // namespace

extern "C" {

int ali_proj(const Calelm* rec, const double p[2], double* station, double foot[2]) {
    switch (rec->type) {
    case ALI_STRAIGHT:
        return ali_projS(rec, p, station, foot);
    case ALI_ARC:
        return ali_projR(rec, p, foot, station);
    case ALI_CLOTHOID:
        return ali_projA(rec, p, foot, station);
    default:
        return -1;
    }
}

int ali_projS(const Calelm* rec, const double p[2], double* station, double foot[2]) {
    const double dx = rec->ex - rec->sx;
    const double dy = rec->ey - rec->sy;
    const double chord = std::sqrt(dx * dx + dy * dy);
    if (samePoint(dx, dy)) {
        return -1;
    }
    // d cos(a2 - a1) is the scalar product with the unit direction. A point square to an end lies on the element,
    // whatever the last bit says.
    double s = ((p[0] - rec->sx) * dx + (p[1] - rec->sy) * dy) / chord;
    if (s < 0.0 && s >= -kLengthStep) {
        s = 0.0;
    } else if (s > chord && s <= chord + kLengthStep) {
        s = chord;
    }
    double on[2];
    double tangent = 0.0;
    if (ali_onlS(rec, s, on, &tangent) != 0) {
        return -1;
    }
    *station = roundLength(s);
    foot[0] = on[0];
    foot[1] = on[1];
    return 0;
}

int ali_projR(const Calelm* rec, const double p[2], double foot[2], double* station) {
    // Relative to the centre.
    const double startCalc[2] = {rec->sx - rec->k1, -rec->sy + rec->k2};
    const double endCalc[2] = {rec->ex - rec->k1, -rec->ey + rec->k2};
    const double pCalc[2] = {p[0] - rec->k1, -p[1] + rec->k2};
    const double origin[2] = {0.0, 0.0};
    if (samePoint(startCalc[0], startCalc[1]) || samePoint(endCalc[0], endCalc[1]) || samePoint(pCalc[0], pCalc[1]) ||
        samePoint(startCalc[0] - endCalc[0], startCalc[1] - endCalc[1]) ||
        samePoint(pCalc[0] - startCalc[0], pCalc[1] - startCalc[1]) ||
        samePoint(pCalc[0] - endCalc[0], pCalc[1] - endCalc[1])) {
        return -1;
    }
    const double R = rec->par;
    const double a0 = ali_KGetAng(origin, startCalc);
    const double T = run(a0, ali_KGetAng(origin, endCalc), rec->dir);
    double U = run(a0, ali_KGetAng(origin, pCalc), rec->dir);
    // A foot on the start has run nothing, not a full circle; one on the end has run T. The last bit does not decide.
    if ((kTwoPi - U) * R < kLengthStep) {
        U = 0.0;
    } else if (U > T && (U - T) * R < kLengthStep) {
        U = T;
    }
    if (!(U <= T) || !std::isfinite(R)) {
        return -1;
    }
    double onCalc[2];
    ali_KEnPntb(rec->dir, origin, startCalc, U, onCalc);
    const Point footSurvey{roundLength(onCalc[0]) + rec->k1, -(roundLength(onCalc[1]) - rec->k2)};
    const double s = roundLength(U * R);
    if (!std::isfinite(footSurvey.x) || !std::isfinite(footSurvey.y) || !std::isfinite(s)) {
        return -1;
    }
    foot[0] = footSurvey.x;
    foot[1] = footSurvey.y;
    *station = s;
    return 0;
}

} // extern "C"
