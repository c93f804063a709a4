// Clothoids from two points, or from a point and a tangent.
//
// Symbols: A parameter; Rs, Re radii at the flatter and the sharper end (0 infinite); tau tangent angle, (X, Y) point
// of the standard clothoid; Z the template, the element on the standard clothoid (origin at infinite radius, tangent
// along +x, curving towards +y), which runs from its flatter to its sharper end and turns left.
// Records are in the survey plane; copies named ...Calc are in the calculation plane.
// [Kasper 1968] gives tau, the shift and Xm.
#include "fenmark/alignment/clothoid.h"
#include "alignment/calelm/answer.h"
#include "alignment/calelm/planes.h"
#include "alignment/clothoid/series.h"
#include "alignment/primitives/tools.h"
#include "fenmark/alignment/construction.h"
#include "fenmark/alignment/primitives.h"

using namespace fenmark::alignment;

namespace {

Calelm templateOf(double A, double Rs, double Re) {
    const Point start = clothoidPointAtRadius(A, Rs);
    const Point finish = clothoidPointAtRadius(A, Re);
    Calelm Z{};
    Z.type = ALI_CLOTHOID;
    Z.sx = start.x;
    Z.sy = start.y;
    Z.ex = finish.x;
    Z.ey = finish.y;
    Z.par = A;
    Z.r1 = Rs;
    Z.r2 = Re;
    Z.len = std::fabs(standardStation(A, Re) - standardStation(A, Rs));
    Z.sang = tauAtRadius(A, Rs);
    Z.eang = tauAtRadius(A, Re);
    Z.k1 = Z.eang;
    Z.k2 = Re * std::cos(Z.eang) + finish.y - Re;
    Z.k3 = finish.x - Re * std::sin(Z.eang);
    return Z;
}

bool sizesAccepted(const Calelm& rec) {
    return CDchkAR(rec.par, rec.r1) == 0 && CDchkAR(rec.par, rec.r2) == 0;
}

bool hasLength(const Calelm& rec) {
    return std::fabs(standardStation(rec.par, rec.r2) - standardStation(rec.par, rec.r1)) >= kSameLength;
}

// False for sizes so absurd that nothing can be computed from them.
bool templateFinite(const Calelm& Z) {
    return std::isfinite(Z.sx) && std::isfinite(Z.sy) && std::isfinite(Z.ex) && std::isfinite(Z.ey) &&
           std::isfinite(Z.len);
}

bool endsFinite(const Calelm& rec) {
    return std::isfinite(rec.sx) && std::isfinite(rec.sy) && std::isfinite(rec.ex) && std::isfinite(rec.ey);
}

} // namespace

extern "C" {

int ali_makA(Calelm* rec) {
    // Values to start from; they stay in the record when it is refused.
    rec->len = rec->k1 = rec->k2 = rec->k3 = 1.0;
    rec->sang = rec->eang = kPi;
    if (!sizesAccepted(*rec) || !hasLength(*rec) || !endsFinite(*rec) || std::isnan(rec->dir)) {
        return -1;
    }
    Calelm eCalc;
    toOtherPlane(rec, &eCalc);
    const bool reversed = CDreverA(&eCalc, 0) != 0;
    const bool right = eCalc.dir == -1.0;

    // The template's start is placed on the flatter end, its chord along the chord of the two given points.
    Calelm q = templateOf(eCalc.par, eCalc.r1, eCalc.r2);
    if (!templateFinite(q)) {
        return -1;
    }
    const double side = right ? -1.0 : 1.0;
    const double theta = CDbtwang(q.sx, q.sy, q.ex, q.ey, side * eCalc.sx, eCalc.sy, side * eCalc.ex, eCalc.ey);
    turnRecordAboutStart(&q, &q, theta);
    moveRecord(&q, &q, side * eCalc.sx - q.sx, eCalc.sy - q.sy);
    if (right) {
        mirrorRecord(&q, &q);
    }
    eCalc.len = q.len;
    eCalc.sang = q.sang;
    eCalc.eang = q.eang;
    eCalc.k1 = q.k1;
    eCalc.k2 = q.k2;
    eCalc.k3 = q.k3;

    // The sharper end is where A and the radii put it; the given point holds only where it agrees.
    int status = 0;
    const double dx = q.ex - eCalc.ex;
    const double dy = q.ey - eCalc.ey;
    if (std::sqrt(dx * dx + dy * dy) > kSameLength) {
        eCalc.ex = q.ex;
        eCalc.ey = q.ey;
        status = 2;
    }
    if (reversed) {
        CDreverA(&eCalc, 1);
    }
    toOtherPlane(&eCalc, &q);
    giveOut(q, *rec);
    return status;
}

int ali_makangA(Calelm* rec, int endGiven) {
    const auto end = static_cast<int16_t>(endGiven);
    if ((end != 1 && end != 2) || !sizesAccepted(*rec) || (rec->dir != 1.0 && rec->dir != -1.0)) {
        return -1;
    }
    const bool fromStart = end == 1;
    if (!std::isfinite(fromStart ? rec->sx + rec->sy + rec->sang : rec->ex + rec->ey + rec->eang)) {
        return -1;
    }
    if (!hasLength(*rec)) {
        // Nothing lies between equal lengths: the element is a point with one tangent.
        (fromStart ? rec->ex : rec->sx) = fromStart ? rec->sx : rec->ex;
        (fromStart ? rec->ey : rec->sy) = fromStart ? rec->sy : rec->ey;
        (fromStart ? rec->eang : rec->sang) = fromStart ? rec->sang : rec->eang;
        rec->len = rec->k1 = rec->k2 = rec->k3 = 0.0;
        clearPadding(*rec);
        return 0;
    }
    Calelm eCalc;
    toOtherPlane(rec, &eCalc);
    const bool reversed = CDreverA(&eCalc, 0) != 0;
    const bool layOnStart = fromStart != reversed;

    Calelm q = templateOf(eCalc.par, eCalc.r1, eCalc.r2);
    if (!templateFinite(q)) {
        return -1;
    }
    if (eCalc.dir == -1.0) {
        mirrorRecord(&q, &q);
    }
    if (layOnStart) {
        moveRecord(&q, &q, eCalc.sx - q.sx, eCalc.sy - q.sy);
        turnRecordAboutStart(&q, &q, eCalc.sang - q.sang);
        q.sx = eCalc.sx;
        q.sy = eCalc.sy;
    } else {
        moveRecord(&q, &q, eCalc.ex - q.ex, eCalc.ey - q.ey);
        turnRecordAboutEnd(&q, &q, eCalc.eang - q.eang);
        q.ex = eCalc.ex;
        q.ey = eCalc.ey;
    }
    q.type = rec->type;
    q.dir = eCalc.dir;
    if (reversed) {
        CDreverA(&q, 1);
    }
    Calelm made;
    toOtherPlane(&q, &made);
    giveOut(made, *rec);
    return 0;
}

} // extern "C"
