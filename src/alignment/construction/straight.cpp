// Straights from two points, or from a point, a direction and a length.
//
// Records are in the survey plane; p, q and every value named ...Calc are in the calculation plane. k1 to k3 become the
// line coefficients of form M: a x + b y = c in the survey plane, normalised.
#include "alignment/calelm/answer.h"
#include "alignment/calelm/planes.h"
#include "alignment/calelm/rounding.h"
#include "fenmark/alignment/clothoid.h"
#include "fenmark/alignment/construction.h"

using namespace fenmark::alignment;

extern "C" {

int ali_makS(Calelm* rec) {
    const double pCalc[2] = {rec->sx, -rec->sy};
    const double qCalc[2] = {rec->ex, -rec->ey};
    const double dx = qCalc[0] - pCalc[0];
    const double dy = qCalc[1] - pCalc[1];
    const double chord = std::sqrt(dx * dx + dy * dy);
    double aM = 0.0;
    double bM = 0.0;
    double cM = 0.0;
    if (!std::isfinite(chord) || samePoint(dx, dy) || ali_KCalCst(pCalc, qCalc, &aM, &bM, &cM) != 0) {
        return -1;
    }
    const double directionCalc = roundAngle(directionOf(dx, dy));
    rec->type = ALI_STRAIGHT;
    rec->len = roundLength(chord);
    rec->sang = otherPlaneAngle(directionCalc);
    rec->eang = rec->sang;
    rec->k1 = aM;
    rec->k2 = bM;
    rec->k3 = cM;
    rec->dir = 1.0;
    rec->par = 0.0;
    rec->r1 = 0.0;
    rec->r2 = 0.0;
    clearPadding(*rec);
    return 0;
}

int ali_makangS(Calelm* rec, int endGiven) {
    const auto end = static_cast<int16_t>(endGiven);
    if ((end != 1 && end != 2) || !(rec->len > 0.0)) {
        return -1;
    }
    const bool fromStart = end == 1;
    const double knownCalc[2] = {fromStart ? rec->sx : rec->ex, fromStart ? -rec->sy : -rec->ey};
    const double directionCalc = otherPlaneAngle(fromStart ? rec->sang : rec->eang + kPi);
    double otherCalc[2];
    ali_KMovPnt(otherCalc, knownCalc, rec->len, directionCalc);
    otherCalc[0] = roundLength(otherCalc[0]);
    otherCalc[1] = roundLength(otherCalc[1]);
    double aM = 0.0;
    double bM = 0.0;
    double cM = 0.0;
    const double* start = fromStart ? knownCalc : otherCalc;
    const double* finish = fromStart ? otherCalc : knownCalc;
    // A length that the rounding takes away leaves no line.
    if (!std::isfinite(otherCalc[0]) || !std::isfinite(otherCalc[1]) ||
        ali_KCalCst(start, finish, &aM, &bM, &cM) != 0) {
        return -1;
    }
    if (fromStart) {
        rec->ex = otherCalc[0];
        rec->ey = -otherCalc[1];
        rec->eang = rec->sang;
    } else {
        rec->sx = otherCalc[0];
        rec->sy = -otherCalc[1];
        rec->sang = rec->eang;
    }
    rec->k1 = aM;
    rec->k2 = bM;
    rec->k3 = cM;
    clearPadding(*rec);
    return 0;
}

} // extern "C"
