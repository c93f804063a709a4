// Turning of built elements about a point.
//
// Symbols: c pivot, theta the turn in the calculation plane. Arguments and records are in the survey plane, values
// named ...Calc in the calculation plane. Points are rounded to the length step, y on its calculation-plane value,
// tangents to the angle step. An angle that collapses to 0 between the planes (below 1e-5) turns the tangents and not
// the points: existing results have it so.
#include "alignment/calelm/answer.h"
#include "alignment/calelm/planes.h"
#include "alignment/calelm/rounding.h"
#include "fenmark/alignment/clothoid.h"
#include "fenmark/alignment/movement.h"

using namespace fenmark::alignment;

namespace {

struct Turn {
    double pivotCalc[2];
    double theta;

    Turn(const double c[2], double angleSurvey) : pivotCalc{c[0], -c[1]}, theta(otherPlaneAngle(angleSurvey)) {}

    Point turned(double xSurvey, double ySurvey) const {
        const double pCalc[2] = {xSurvey, -ySurvey};
        double out[2];
        ali_KRotPnt(out, pCalc, pivotCalc, theta);
        return {out[0], out[1]};
    }
};

// Both ends, rounded, and both tangents. Gives back the unrounded ends.
void turnEnds(const Calelm& rec, const Turn& turn, double angleSurvey, Calelm& out, Point& pCalc, Point& qCalc) {
    pCalc = turn.turned(rec.sx, rec.sy);
    qCalc = turn.turned(rec.ex, rec.ey);
    out.sx = roundLength(pCalc.x);
    out.sy = roundedSurveyY(pCalc.y);
    out.ex = roundLength(qCalc.x);
    out.ey = roundedSurveyY(qCalc.y);
    out.sang = roundAngle(ali_KAdjAng(rec.sang + angleSurvey));
    out.eang = roundAngle(ali_KAdjAng(rec.eang + angleSurvey));
}

} // namespace

extern "C" {

int ali_tmov(const Calelm* rec, const double c[2], double angle, Calelm* out) {
    Calelm moved;
    switch (rec->type) {
    case ALI_STRAIGHT:
        ali_tmovS(rec, c, angle, &moved);
        break;
    case ALI_ARC:
        ali_tmovR(rec, c, angle, &moved);
        break;
    case ALI_CLOTHOID:
        ali_tmovA(rec, c, angle, &moved);
        break;
    default:
        return -1;
    }
    return giveOutRecord(moved, out);
}

int ali_tmovS(const Calelm* rec, const double c[2], double angle, Calelm* out) {
    Calelm moved = *rec;
    Point p;
    Point q;
    turnEnds(*rec, Turn(c, angle), angle, moved, p, q);
    // The coefficients come from the unrounded points. Ends that are one point have none, and the old ones stay.
    const double pCalc[2] = {p.x, p.y};
    const double qCalc[2] = {q.x, q.y};
    ali_KCalCst(pCalc, qCalc, &moved.k1, &moved.k2, &moved.k3);
    giveOut(moved, *out);
    return 0;
}

int ali_tmovR(const Calelm* rec, const double c[2], double angle, Calelm* out) {
    Calelm moved = *rec;
    const Turn turn(c, angle);
    Point p;
    Point q;
    turnEnds(*rec, turn, angle, moved, p, q);
    const Point centreCalc = turn.turned(rec->k1, rec->k2);
    moved.k1 = roundLength(centreCalc.x);
    moved.k2 = roundedSurveyY(centreCalc.y);
    giveOut(moved, *out);
    return 0;
}

int ali_tmovA(const Calelm* rec, const double c[2], double angle, Calelm* out) {
    Calelm moved = *rec;
    Point p;
    Point q;
    turnEnds(*rec, Turn(c, angle), angle, moved, p, q);
    giveOut(moved, *out);
    return 0;
}

int many_ali_tmov(int n, Calelm* recs, const double c[2], double angle) {
    for (int i = 0; i < n; ++i) {
        ali_tmov(&recs[i], c, angle, &recs[i]);
    }
    return 1;
}

} // extern "C"
