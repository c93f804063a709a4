// Translation of built elements, and movement square to an element.
//
// Symbols: p start, q end, c shift or centre. Arguments and records are in the survey plane, values named _calc in the
// calculation plane. Points are rounded to the length step, y on its calculation-plane value.
#include "alignment/calelm/answer.h"
#include "alignment/calelm/planes.h"
#include "alignment/calelm/rounding.h"
#include "fenmark/alignment/clothoid.h"
#include "fenmark/alignment/movement.h"

using namespace fenmark::alignment;

namespace {

Point shiftOf(double d, double angle_survey) {
    const double a_calc = otherPlaneAngle(angle_survey);
    return {d * std::cos(a_calc), d * std::sin(a_calc)};
}

void moveEnds(const Calelm& rec, Point shift_calc, Calelm& out) {
    out.sx = roundLength(rec.sx + shift_calc.x);
    out.sy = roundedSurveyY(-rec.sy + shift_calc.y);
    out.ex = roundLength(rec.ex + shift_calc.x);
    out.ey = roundedSurveyY(-rec.ey + shift_calc.y);
}

} // namespace

extern "C" {

int ali_pmov(const Calelm* rec, double d, double angle, Calelm* out) {
    Calelm moved;
    switch (rec->type) {
    case ALI_STRAIGHT:
        ali_pmovS(rec, d, angle, &moved);
        break;
    case ALI_ARC:
        ali_pmovR(rec, d, angle, &moved);
        break;
    case ALI_CLOTHOID:
        ali_pmovA(rec, d, angle, &moved);
        break;
    default:
        return -1;
    }
    return giveOutRecord(moved, out);
}

int ali_pmovS(const Calelm* rec, double d, double angle, Calelm* out) {
    const Point shift_calc = shiftOf(d, angle);
    Calelm moved = *rec;
    // The coefficients come from the unrounded points. Ends that are one point have none, and the old ones stay.
    const double p_calc[2] = {rec->sx + shift_calc.x, -rec->sy + shift_calc.y};
    const double q_calc[2] = {rec->ex + shift_calc.x, -rec->ey + shift_calc.y};
    ali_KCalCst(p_calc, q_calc, &moved.k1, &moved.k2, &moved.k3);
    moveEnds(*rec, shift_calc, moved);
    giveOut(moved, *out);
    return 0;
}

int ali_pmovR(const Calelm* rec, double d, double angle, Calelm* out) {
    const Point shift_calc = shiftOf(d, angle);
    Calelm moved = *rec;
    moveEnds(*rec, shift_calc, moved);
    moved.k1 = roundLength(rec->k1 + shift_calc.x);
    moved.k2 = roundedSurveyY(-rec->k2 + shift_calc.y);
    giveOut(moved, *out);
    return 0;
}

int ali_pmovA(const Calelm* rec, double d, double angle, Calelm* out) {
    Calelm moved = *rec;
    moveEnds(*rec, shiftOf(d, angle), moved);
    giveOut(moved, *out);
    return 0;
}

int ali_paraS(const Calelm* rec, double d, Calelm* out) {
    // Not rounded to the angle step: a long move would show it.
    const double direction_calc = directionOf(rec->ex - rec->sx, -rec->ey + rec->sy);
    return ali_pmovS(rec, d, otherPlaneAngle(direction_calc) - kHalfPi, out);
}

int para_pmovr(const Calelm* rec, double d, Calelm* out) {
    // Away from the centre: the centre of a left curve lies at +pi / 2 of its tangent in the calculation plane.
    const double outwards = rec->dir == 1.0 ? -kHalfPi : kHalfPi;
    const double from_start = otherPlaneAngle(rec->sang) + outwards;
    const double from_end = otherPlaneAngle(rec->eang) + outwards;
    Calelm moved = *rec;
    moved.sx = roundLength(rec->sx + d * std::cos(from_start));
    moved.sy = roundedSurveyY(-rec->sy + d * std::sin(from_start));
    moved.ex = roundLength(rec->ex + d * std::cos(from_end));
    moved.ey = roundedSurveyY(-rec->ey + d * std::sin(from_end));
    giveOut(moved, *out);
    return 0;
}

int many_ali_pmov(int n, Calelm* recs, double d, double angle) {
    for (int i = 0; i < n; ++i) {
        ali_pmov(&recs[i], d, angle, &recs[i]);
    }
    return 1;
}

} // extern "C"
