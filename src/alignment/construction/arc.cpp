// Arcs from two points, or from a point, a tangent and a length.
//
// Symbols: p start, q end, c centre, R radius. Records are in the survey plane, every value named _calc in the
// calculation plane, where dir = +1 runs counter-clockwise. k1, k2 become the centre, k3 the sweep.
#include "alignment/calelm/answer.h"
#include "alignment/calelm/planes.h"
#include "alignment/calelm/rounding.h"
#include "fenmark/alignment/clothoid.h"
#include "fenmark/alignment/construction.h"

using namespace fenmark::alignment;

extern "C" {

int ali_makR(Calelm* rec) {
    // Relative to the start, so that nothing is lost at large coordinates.
    const double p_calc[2] = {0.0, 0.0};
    const double q_calc[2] = {rec->ex - rec->sx, -rec->ey + rec->sy};
    const double chord = std::sqrt(q_calc[0] * q_calc[0] + q_calc[1] * q_calc[1]);
    const double R = rec->par;
    if (samePoint(q_calc[0], q_calc[1]) || R == 0.0 || !(2.0 * R >= chord) || !std::isfinite(R) ||
        (rec->dir != 1.0 && rec->dir != -1.0)) {
        return -1;
    }
    double c_calc[2];
    if (ali_KEnCen(p_calc, q_calc, rec->dir, R, &c_calc[0], &c_calc[1]) != 0) {
        return -1;
    }
    double sang_calc = 0.0;
    double eang_calc = 0.0;
    double sweep = 0.0;
    double length = 0.0;
    ali_KEnAng(p_calc, q_calc, rec->dir, R, c_calc[0], c_calc[1], &sang_calc, &eang_calc, &sweep, &length);
    rec->len = roundLength(length);
    rec->sang = otherPlaneAngle(sang_calc);
    rec->eang = otherPlaneAngle(eang_calc);
    rec->k1 = rec->sx + c_calc[0];
    rec->k2 = -(-rec->sy + c_calc[1]);
    rec->k3 = sweep;
    rec->r1 = 0.0;
    rec->r2 = 0.0;
    clearPadding(*rec);
    return 0;
}

int ali_makangR(Calelm* rec, int end_given) {
    const auto end = static_cast<int16_t>(end_given);
    if ((end != 1 && end != 2) || (rec->dir != 1.0 && rec->dir != -1.0) || !(rec->par > 0.0) || !(rec->len > 0.0)) {
        return -1;
    }
    const bool from_start = end == 1;
    const double known_calc[2] = {from_start ? rec->sx : rec->ex, from_start ? -rec->sy : -rec->ey};
    const double known_tangent_calc = otherPlaneAngle(from_start ? rec->sang : rec->eang);
    double c_calc[2];
    ali_KEnPntc(rec->dir, known_calc, known_tangent_calc, rec->par, c_calc);
    const double sweep = rec->len / rec->par;
    double other_calc[2];
    ali_KEnPntb(from_start ? rec->dir : -rec->dir, c_calc, known_calc, sweep, other_calc);
    const double other_x = roundLength(other_calc[0]);
    const double other_y = roundedSurveyY(other_calc[1]);
    if (!std::isfinite(other_x) || !std::isfinite(other_y) || !std::isfinite(sweep) ||
        !std::isfinite(roundAngle(rec->par)) || !std::isfinite(roundLength(rec->len))) {
        return -1;
    }
    double sang_calc = 0.0;
    double eang_calc = 0.0;
    double short_sweep = 0.0;
    double short_length = 0.0;
    ali_KEnAng(from_start ? known_calc : other_calc, from_start ? other_calc : known_calc, rec->dir, rec->par,
               c_calc[0], c_calc[1], &sang_calc, &eang_calc, &short_sweep, &short_length);
    if (from_start) {
        rec->ex = other_x;
        rec->ey = other_y;
        rec->sang = otherPlaneAngle(known_tangent_calc);
        rec->eang = otherPlaneAngle(roundAngle(eang_calc));
    } else {
        rec->sx = other_x;
        rec->sy = other_y;
        rec->sang = otherPlaneAngle(roundAngle(sang_calc));
        rec->eang = otherPlaneAngle(known_tangent_calc);
    }
    rec->k1 = c_calc[0];
    rec->k2 = -c_calc[1];
    rec->k3 = sweep;
    // The radius is rounded with the angle step, and that is meant: callers compare it with radii rounded so.
    rec->par = roundAngle(rec->par);
    rec->len = roundLength(rec->len);
    clearPadding(*rec);
    return 0;
}

} // extern "C"
