// Lengths of elements from their end points, radii and parameters. Records are in the survey plane.
#include "alignment/calelm/answer.h"
#include "alignment/calelm/planes.h"
#include "alignment/calelm/rounding.h"
#include "fenmark/alignment/clothoid.h"
#include "fenmark/alignment/conventions.h"
#include "fenmark/alignment/walking.h"

using namespace fenmark::alignment;

extern "C" {

int ali_getl(const Calelm* rec, double* length) {
    switch (rec->type) {
    case ALI_STRAIGHT:
        return ali_getlS(rec, length);
    case ALI_ARC: {
        const int status = ali_getlR(rec, length);
        if (status == 1) {
            *length = 0.0; // a whole circle shows in the status alone
        }
        return status;
    }
    case ALI_CLOTHOID: {
        double made = 0.0;
        ali_getlA(rec, &made);
        return giveOutReal(made, length);
    }
    default:
        return -1;
    }
}

int ali_getlS(const Calelm* rec, double* length) {
    const double p[2] = {rec->sx, rec->sy};
    const double q[2] = {rec->ex, rec->ey};
    const double rounded = roundLength(ali_CDist2P(p, q));
    if (ali_CSamePoint(p, q) == 0 || !std::isfinite(rounded)) {
        *length = 0.0;
        return -1;
    }
    *length = rounded;
    return 0;
}

int ali_getlR(const Calelm* rec, double* length) {
    if (!std::isfinite(roundLength(kTwoPi * rec->par))) {
        return -1;
    }
    if (samePoint(rec->ex - rec->sx, rec->ey - rec->sy)) {
        *length = kTwoPi * rec->par;
        return 1;
    }
    if (rec->par == 0.0 || (rec->dir != 1.0 && rec->dir != -1.0)) {
        return -1;
    }
    const double pCalc[2] = {rec->sx, -rec->sy};
    const double qCalc[2] = {rec->ex, -rec->ey};
    double sangCalc = 0.0;
    double eangCalc = 0.0;
    double sweep = 0.0;
    double unrounded = 0.0;
    ali_KEnAng(pCalc, qCalc, rec->dir, rec->par, rec->k1, -rec->k2, &sangCalc, &eangCalc, &sweep, &unrounded);
    if (!std::isfinite(unrounded)) {
        return -1;
    }
    *length = roundLength(unrounded);
    return 0;
}

int ali_getlA(const Calelm* rec, double* length) {
    *length = std::fabs(standardStation(rec->par, rec->r2) - standardStation(rec->par, rec->r1));
    return 0;
}

double ali_getlPP(const double p[2], const double q[2]) {
    return ali_CSamePoint(p, q) == 0 ? -1.0 : roundLength(ali_CDist2P(p, q));
}

} // extern "C"
