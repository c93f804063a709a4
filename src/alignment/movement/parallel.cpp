// Translation of built elements, and movement square to an element.
//
// Symbols: p start, q end, c shift or centre. Arguments and records are in the survey plane, values named ...Calc in the
// calculation plane. Points are rounded to the length step, y on its calculation-plane value.
#include "alignment/calelm/answer.h"
#include "alignment/calelm/planes.h"
#include "alignment/calelm/rounding.h"
#include "fenmark/alignment/clothoid.h"
#include "fenmark/alignment/movement.h"

using namespace fenmark::alignment;

namespace {

Point shiftOf(double d, double angleSurvey) {
    const double aCalc = otherPlaneAngle(angleSurvey);
    return {d * std::cos(aCalc), d * std::sin(aCalc)};
}

void moveEnds(const Calelm& rec, Point shiftCalc, Calelm& out) {
    out.sx = roundLength(rec.sx + shiftCalc.x);
    out.sy = roundedSurveyY(-rec.sy + shiftCalc.y);
    out.ex = roundLength(rec.ex + shiftCalc.x);
    out.ey = roundedSurveyY(-rec.ey + shiftCalc.y);
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
    const Point shiftCalc = shiftOf(d, angle);
    Calelm moved = *rec;
    // The coefficients come from the unrounded points. Ends that are one point have none, and the old ones stay.
    const double pCalc[2] = {rec->sx + shiftCalc.x, -rec->sy + shiftCalc.y};
    const double qCalc[2] = {rec->ex + shiftCalc.x, -rec->ey + shiftCalc.y};
    ali_KCalCst(pCalc, qCalc, &moved.k1, &moved.k2, &moved.k3);
    moveEnds(*rec, shiftCalc, moved);
    giveOut(moved, *out);
    return 0;
}

int ali_pmovR(const Calelm* rec, double d, double angle, Calelm* out) {
    const Point shiftCalc = shiftOf(d, angle);
    Calelm moved = *rec;
    moveEnds(*rec, shiftCalc, moved);
    moved.k1 = roundLength(rec->k1 + shiftCalc.x);
    moved.k2 = roundedSurveyY(-rec->k2 + shiftCalc.y);
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
    const double directionCalc = directionOf(rec->ex - rec->sx, -rec->ey + rec->sy);
    return ali_pmovS(rec, d, otherPlaneAngle(directionCalc) - kHalfPi, out);
}

int para_pmovr(const Calelm* rec, double d, Calelm* out) {
    // Away from the centre: the centre of a left curve lies at +pi / 2 of its tangent in the calculation plane.
    const double outwards = rec->dir == 1.0 ? -kHalfPi : kHalfPi;
    const double fromStart = otherPlaneAngle(rec->sang) + outwards;
    const double fromEnd = otherPlaneAngle(rec->eang) + outwards;
    Calelm moved = *rec;
    moved.sx = roundLength(rec->sx + d * std::cos(fromStart));
    moved.sy = roundedSurveyY(-rec->sy + d * std::sin(fromStart));
    moved.ex = roundLength(rec->ex + d * std::cos(fromEnd));
    moved.ey = roundedSurveyY(-rec->ey + d * std::sin(fromEnd));
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
