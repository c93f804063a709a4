// Straights from two points, or from a point, a direction and a length.
//
// Records are in the survey plane; p, q and every value named _calc are in the calculation plane. k1 to k3 become the
// line coefficients of form M: a x + b y = c in the survey plane, normalised.
#include "alignment/calelm/answer.h"
#include "alignment/calelm/planes.h"
#include "alignment/calelm/rounding.h"
#include "fenmark/alignment/clothoid.h"
#include "fenmark/alignment/construction.h"

using namespace fenmark::alignment;

extern "C" {

int ali_makS(Calelm* rec) {
    const double p_calc[2] = {rec->sx, -rec->sy};
    const double q_calc[2] = {rec->ex, -rec->ey};
    const double dx = q_calc[0] - p_calc[0];
    const double dy = q_calc[1] - p_calc[1];
    const double chord = std::sqrt(dx * dx + dy * dy);
    double a_m = 0.0;
    double b_m = 0.0;
    double c_m = 0.0;
    if (!std::isfinite(chord) || samePoint(dx, dy) || ali_KCalCst(p_calc, q_calc, &a_m, &b_m, &c_m) != 0) {
        return -1;
    }
    const double direction_calc = roundAngle(directionOf(dx, dy));
    rec->type = ALI_STRAIGHT;
    rec->len = roundLength(chord);
    rec->sang = otherPlaneAngle(direction_calc);
    rec->eang = rec->sang;
    rec->k1 = a_m;
    rec->k2 = b_m;
    rec->k3 = c_m;
    rec->dir = 1.0;
    rec->par = 0.0;
    rec->r1 = 0.0;
    rec->r2 = 0.0;
    clearPadding(*rec);
    return 0;
}

int ali_makangS(Calelm* rec, int end_given) {
    const auto end = static_cast<int16_t>(end_given);
    if ((end != 1 && end != 2) || !(rec->len > 0.0)) {
        return -1;
    }
    const bool from_start = end == 1;
    const double known_calc[2] = {from_start ? rec->sx : rec->ex, from_start ? -rec->sy : -rec->ey};
    const double direction_calc = otherPlaneAngle(from_start ? rec->sang : rec->eang + kPi);
    double other_calc[2];
    ali_KMovPnt(other_calc, known_calc, rec->len, direction_calc);
    other_calc[0] = roundLength(other_calc[0]);
    other_calc[1] = roundLength(other_calc[1]);
    double a_m = 0.0;
    double b_m = 0.0;
    double c_m = 0.0;
    const double* start = from_start ? known_calc : other_calc;
    const double* finish = from_start ? other_calc : known_calc;
    // A length that the rounding takes away leaves no line.
    if (!std::isfinite(other_calc[0]) || !std::isfinite(other_calc[1]) ||
        ali_KCalCst(start, finish, &a_m, &b_m, &c_m) != 0) {
        return -1;
    }
    if (from_start) {
        rec->ex = other_calc[0];
        rec->ey = -other_calc[1];
        rec->eang = rec->sang;
    } else {
        rec->sx = other_calc[0];
        rec->sy = -other_calc[1];
        rec->sang = rec->eang;
    }
    rec->k1 = a_m;
    rec->k2 = b_m;
    rec->k3 = c_m;
    clearPadding(*rec);
    return 0;
}

} // extern "C"
