// Crossings of a straight and an arc.
//
// Symbols: R radius; a, b, c the line's coefficients of form M, a x - b y = c with a^2 + b^2 = 1, so c is the line's
// signed distance from the origin. Everything is in the calculation plane relative to the arc's centre.
#include "alignment/intersection/candidates.h"
#include "fenmark/alignment/clothoid.h"
#include "fenmark/alignment/intersection.h"

using namespace fenmark::alignment;

namespace {

// The two points where the line meets the circle; false when it misses.
bool cut(double a, double b, double c, double R, Point (&out)[2]) {
    if (a == 0.0 || b == 0.0) {
        // A line along an axis: with the absolute value under the root, a line that misses by no more than the step
        // still has points that agree with R.
        const double fixed = a == 0.0 ? c / -b : c / a;
        const double other = std::sqrt(std::fabs(R * R - fixed * fixed));
        if (std::fabs(std::sqrt(fixed * fixed + other * other) - R) >= kSameLength) {
            return false;
        }
        out[0] = a == 0.0 ? Point{-other, fixed} : Point{fixed, -other};
        out[1] = a == 0.0 ? Point{other, fixed} : Point{fixed, other};
        return true;
    }
    double half2 = R * R - c * c;
    if (half2 < 0.0 && std::fabs(c) - R < kSameLength) {
        half2 = 0.0; // a touch, whatever the last bit says
    }
    if (!(half2 >= 0.0)) {
        return false;
    }
    const double half = std::sqrt(half2);
    out[0] = {a * c - half * b, -b * c - half * a};
    out[1] = {a * c + half * b, -b * c + half * a};
    return true;
}

} // namespace

extern "C" int ali_intpSR(const Calelm* s, const Calelm* r, double p1[2], double* aOut, double* bOut, double p2[2],
                          double* cOut, double* dOut) {
    const double pCalc[2] = {s->sx - r->k1, -s->sy + r->k2};
    const double qCalc[2] = {s->ex - r->k1, -s->ey + r->k2};
    const double dx = qCalc[0] - pCalc[0];
    const double dy = qCalc[1] - pCalc[1];
    const double R = r->par;
    double a = 0.0;
    double b = 0.0;
    double c = 0.0;
    if (samePoint(dx, dy) || !std::isfinite(dx + dy) || !(R > 0.0) || !std::isfinite(R) ||
        ali_KCalCst(pCalc, qCalc, &a, &b, &c) != 0) {
        return -1;
    }
    Point met[2];
    if (!cut(a, b, c, R, met)) {
        return -1;
    }
    const CentredArc arc(R, r->dir, {r->sx - r->k1, -r->sy + r->k2}, {r->ex - r->k1, -r->ey + r->k2});
    const double lineTotal = roundLength(std::sqrt(dx * dx + dy * dy));
    const double arcTotal = roundLength(arc.sweep * R);
    Crossing found[2];
    for (int i = 0; i < 2; ++i) {
        const double x = met[i].x - pCalc[0];
        const double y = met[i].y - pCalc[1];
        double station = std::sqrt(x * x + y * y);
        // Behind the start the station is negative, except on a line exactly along x, where it never is. Callers know it so.
        if (dy != 0.0 && x * dx + y * dy < 0.0) {
            station = -station;
        }
        found[i].onFirst = roundLength(station);
        found[i].onSecond = roundLength(arc.lengthTo(met[i]));
        found[i].accepted = liesOn(found[i].onFirst, lineTotal) && liesOn(found[i].onSecond, arcTotal);
        found[i].point = {met[i].x + r->k1, -(met[i].y - r->k2)}; // survey plane, not rounded
    }
    return giveOut(found, p1, aOut, bOut, p2, cOut, dOut);
}
