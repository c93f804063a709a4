// Arcs from two points, or from a point, a tangent and a length.
//
// Symbols: p start, q end, c centre, R radius. Records are in the survey plane, every value named ...Calc in the
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
    const double pCalc[2] = {0.0, 0.0};
    const double qCalc[2] = {rec->ex - rec->sx, -rec->ey + rec->sy};
    const double chord = std::sqrt(qCalc[0] * qCalc[0] + qCalc[1] * qCalc[1]);
    const double R = rec->par;
    if (samePoint(qCalc[0], qCalc[1]) || !(2.0 * R >= chord) || !std::isfinite(R) ||
        (rec->dir != 1.0 && rec->dir != -1.0)) {
        return -1;
    }
    double cCalc[2];
    if (ali_KEnCen(pCalc, qCalc, rec->dir, R, &cCalc[0], &cCalc[1]) != 0) {
        return -1;
    }
    double sangCalc = 0.0;
    double eangCalc = 0.0;
    double sweep = 0.0;
    double length = 0.0;
    ali_KEnAng(pCalc, qCalc, rec->dir, R, cCalc[0], cCalc[1], &sangCalc, &eangCalc, &sweep, &length);
    rec->len = roundLength(length);
    rec->sang = otherPlaneAngle(sangCalc);
    rec->eang = otherPlaneAngle(eangCalc);
    rec->k1 = rec->sx + cCalc[0];
    rec->k2 = -(-rec->sy + cCalc[1]);
    rec->k3 = sweep;
    rec->r1 = 0.0;
    rec->r2 = 0.0;
    clearPadding(*rec);
    return 0;
}

int ali_makangR(Calelm* rec, int endGiven) {
    const auto end = static_cast<int16_t>(endGiven);
    if ((end != 1 && end != 2) || (rec->dir != 1.0 && rec->dir != -1.0) || !(rec->par > 0.0) || !(rec->len > 0.0)) {
        return -1;
    }
    const bool fromStart = end == 1;
    const double knownCalc[2] = {fromStart ? rec->sx : rec->ex, fromStart ? -rec->sy : -rec->ey};
    const double knownTangentCalc = otherPlaneAngle(fromStart ? rec->sang : rec->eang);
    double cCalc[2];
    ali_KEnPntc(rec->dir, knownCalc, knownTangentCalc, rec->par, cCalc);
    const double sweep = rec->len / rec->par;
    double otherCalc[2];
    ali_KEnPntb(fromStart ? rec->dir : -rec->dir, cCalc, knownCalc, sweep, otherCalc);
    const double otherX = roundLength(otherCalc[0]);
    const double otherY = roundedSurveyY(otherCalc[1]);
    if (!std::isfinite(otherX) || !std::isfinite(otherY) || !std::isfinite(sweep) ||
        !std::isfinite(roundAngle(rec->par)) || !std::isfinite(roundLength(rec->len))) {
        return -1;
    }
    double sangCalc = 0.0;
    double eangCalc = 0.0;
    double shortSweep = 0.0;
    double shortLength = 0.0;
    ali_KEnAng(fromStart ? knownCalc : otherCalc, fromStart ? otherCalc : knownCalc, rec->dir, rec->par, cCalc[0],
               cCalc[1], &sangCalc, &eangCalc, &shortSweep, &shortLength);
    if (fromStart) {
        rec->ex = otherX;
        rec->ey = otherY;
        rec->sang = otherPlaneAngle(knownTangentCalc);
        rec->eang = otherPlaneAngle(roundAngle(eangCalc));
    } else {
        rec->sx = otherX;
        rec->sy = otherY;
        rec->sang = otherPlaneAngle(roundAngle(sangCalc));
        rec->eang = otherPlaneAngle(knownTangentCalc);
    }
    rec->k1 = cCalc[0];
    rec->k2 = -cCalc[1];
    rec->k3 = sweep;
    // The radius is rounded with the angle step on purpose: callers compare it with radii rounded so.
    rec->par = roundAngle(rec->par);
    rec->len = roundLength(rec->len);
    clearPadding(*rec);
    return 0;
}

} // extern "C"
