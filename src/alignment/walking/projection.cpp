// From a point to the foot of its perpendicular on a straight or an arc, and the dispatcher.
//
// Symbols: p the point, s the station of its foot, R radius; U and T the angles run from the start to p and to the end
// in the sense of dir. Records and points are in the survey plane, values named _calc in the calculation plane.
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
    const double start_calc[2] = {rec->sx - rec->k1, -rec->sy + rec->k2};
    const double end_calc[2] = {rec->ex - rec->k1, -rec->ey + rec->k2};
    const double p_calc[2] = {p[0] - rec->k1, -p[1] + rec->k2};
    const double origin[2] = {0.0, 0.0};
    if (samePoint(start_calc[0], start_calc[1]) || samePoint(end_calc[0], end_calc[1]) ||
        samePoint(p_calc[0], p_calc[1]) || samePoint(start_calc[0] - end_calc[0], start_calc[1] - end_calc[1]) ||
        samePoint(p_calc[0] - start_calc[0], p_calc[1] - start_calc[1]) ||
        samePoint(p_calc[0] - end_calc[0], p_calc[1] - end_calc[1])) {
        return -1;
    }
    const double R = rec->par;
    const double a0 = ali_KGetAng(origin, start_calc);
    const double T = run(a0, ali_KGetAng(origin, end_calc), rec->dir);
    double U = run(a0, ali_KGetAng(origin, p_calc), rec->dir);
    // A foot on the start has run nothing, not a full circle; one on the end has run T. The last bit does not decide.
    if ((kTwoPi - U) * R < kLengthStep) {
        U = 0.0;
    } else if (U > T && (U - T) * R < kLengthStep) {
        U = T;
    }
    if (!(U <= T) || !std::isfinite(R)) {
        return -1;
    }
    double on_calc[2];
    ali_KEnPntb(rec->dir, origin, start_calc, U, on_calc);
    const Point foot_survey{roundLength(on_calc[0]) + rec->k1, -(roundLength(on_calc[1]) - rec->k2)};
    const double s = roundLength(U * R);
    if (!std::isfinite(foot_survey.x) || !std::isfinite(foot_survey.y) || !std::isfinite(s)) {
        return -1;
    }
    foot[0] = foot_survey.x;
    foot[1] = foot_survey.y;
    *station = s;
    return 0;
}

} // extern "C"
