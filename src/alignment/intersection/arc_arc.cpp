// Crossings of two arcs.
//
// Symbols: R1, R2 radii; D distance of the centres; u the unit vector from centre 1 to centre 2; f the distance of the
// common chord from centre 1 along u; h half the common chord. Calculation plane, relative to centre 1.
// The circle equations are subtracted along the line of centres, which holds for every position of the two.
#include "alignment/intersection/candidates.h"
#include "fenmark/alignment/intersection.h"

using namespace fenmark::alignment;

extern "C" int ali_intpRR(const Calelm* r1, const Calelm* r2, double p1[2], double* a, double* b, double p2[2],
                          double* c, double* d) {
    const double R1 = r1->par;
    const double R2 = r2->par;
    const Point between{r2->k1 - r1->k1, -r2->k2 + r1->k2};
    const double D = std::sqrt(between.x * between.x + between.y * between.y);
    if (!std::isfinite(D) || !(R1 > 0.0) || !(R2 > 0.0) || !std::isfinite(R1 + R2) ||
        roundLength(D) > roundLength(R1 + R2)) {
        return -1;
    }
    if (samePoint(between.x, between.y)) {
        return std::fabs(R1 - R2) < kSameLength ? -2 : -3;
    }
    const double f = (R1 * R1 - R2 * R2 + D * D) / (2.0 * D);
    double half2 = R1 * R1 - f * f;
    // Circles that touch within the rounding, from outside or from inside, have one point.
    if (roundLength(D) == roundLength(R1 + R2) || roundLength(D) == roundLength(std::fabs(R1 - R2))) {
        half2 = 0.0;
    }
    // The candidates stand at the root of the absolute value; their residual on circle 1 is then twice a negative one.
    if (half2 < 0.0 && -2.0 * half2 >= kSameLength) {
        return -1;
    }
    const double h = std::sqrt(std::fabs(half2));
    const Point u{between.x / D, between.y / D};
    const CentredArc arc1(R1, r1->dir, {r1->sx - r1->k1, -r1->sy + r1->k2}, {r1->ex - r1->k1, -r1->ey + r1->k2});
    const CentredArc arc2(R2, r2->dir, {r2->sx - r2->k1, -r2->sy + r2->k2}, {r2->ex - r2->k1, -r2->ey + r2->k2});
    const double total1 = roundLength(arc1.sweep * R1);
    const double total2 = roundLength(arc2.sweep * R2);
    Crossing found[2];
    for (int i = 0; i < 2; ++i) {
        const double side = i == 0 ? -h : h;
        const Point p{f * u.x - side * u.y, f * u.y + side * u.x};
        found[i].onFirst = roundLength(arc1.lengthTo(p));
        found[i].onSecond = roundLength(arc2.lengthTo({p.x - between.x, p.y - between.y}));
        found[i].accepted = liesOn(found[i].onFirst, total1) && liesOn(found[i].onSecond, total2);
        found[i].point = {roundLength(p.x) + r1->k1, -(roundLength(p.y) - r1->k2)};
    }
    return giveOut(found, p1, a, b, p2, c, d);
}
