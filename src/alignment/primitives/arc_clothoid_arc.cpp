// A clothoid between two arcs: the distance of centres that it demands, and its place between given centres.
//
// Symbols: rs, rl the smaller and the larger radius; tau, dR, Xm tangent angle, shift and centre abscissa of the
// clothoid at a radius; H = R cos tau + Y = R + dR; p = R + dR, the distance of a centre from the clothoid's tangent at
// its origin; D the distance of the centres; C the difference of the two p across that tangent.
// Axes: the local frame has the clothoid's origin (infinite radius) at 0 and its tangent there along x, so that the
// centres lie at (Xm, +-p). Calculation plane. Sources: the shift relations of the clothoid [Kasper 1968]; two circles
// are joined when their centres are as far apart as in the local frame.
#include "fenmark/alignment/clothoid.h"
#include "fenmark/alignment/primitives.h"

#include "alignment/calelm/answer.h"
#include "alignment/clothoid/series.h"
#include "alignment/primitives/plane.h"
#include "alignment/primitives/tools.h"

#include <algorithm>
#include <utility>

namespace plane = fenmark::alignment::plane;
using fenmark::alignment::signed16;
using plane::Vec;

namespace {

struct Shift {
    double tau = 0.0;
    double dR = 0.0;
    double Xm = 0.0;
};

Shift shiftAt(double parameter, double radius) {
    Shift shift;
    fenmark::alignment::shiftAtRadius(parameter, radius, shift.tau, shift.dR, shift.Xm);
    return shift;
}

} // namespace

extern "C" {

int CDOODistForRAR(const Calelm* r1, const Calelm* a, int mode, const Calelm* r2, double* d) {
    const bool firstSharper = r1->par < r2->par;
    const Calelm& sharper = firstSharper ? *r1 : *r2;
    const Calelm& flatter = firstSharper ? *r2 : *r1;
    const double rs = sharper.par;
    const double rl = flatter.par;
    const double A = a->par;
    switch (signed16(mode)) {
    case 0: {
        if (a->dir != sharper.dir) {
            // The clothoid bends away from the sharper arc: its own circle at the sharp end lies opposite to the arc.
            const double tau = A * A / (2.0 * rs * rs);
            double values[7];
            fenmark::alignment::characteristicValues(A, rs, values);
            const double along = 2.0 * rs * std::sin(tau) + values[5];
            const double across = values[6] - 2.0 * rs * std::cos(tau);
            const double side = a->dir == flatter.dir ? rl : -rl;
            *d = std::hypot(along, side - across);
            return 0;
        }
        const Shift shift = shiftAt(A, rs);
        const double p = rs + shift.dR;
        *d = std::hypot(shift.Xm, r1->dir == r2->dir ? rl - p : rl + p);
        return 0;
    }
    case -1: {
        if (r1->dir != r2->dir) {
            return -1;
        }
        const Shift first = shiftAt(A, r1->par);
        const Shift second = shiftAt(A, r2->par);
        *d = std::hypot(first.Xm - second.Xm, (r1->par + first.dR) - (r2->par + second.dR));
        return 0;
    }
    default:
        return 0;
    }
}

int CDsetAToRAR(int mode, Calelm* r1, Calelm* r2, Calelm* a) {
    return fenmark::alignment::answerInPlace({r1, r2, a}, [&]() -> int {
        const bool fromInfinity = signed16(mode) >= 0;
        const bool firstFlatter = r1->par >= r2->par;
        const Calelm& sharper = firstFlatter ? *r2 : *r1;
        const Calelm& flatter = firstFlatter ? *r1 : *r2;
        const double rs = sharper.par;
        const double rl = flatter.par;
        const double A = a->par;
        a->dir = sharper.dir;

        // Local ends. Seen along the local x axis, from the flat to the sharp end, the clothoid bends left (+1) or right.
        const double bend = firstFlatter ? a->dir : -a->dir;
        Vec flatEnd;
        Vec sharpEnd;
        CDRcalxy(A, rs, &sharpEnd.x, &sharpEnd.y);
        if (!fromInfinity) {
            CDRcalxy(A, rl, &flatEnd.x, &flatEnd.y);
        }
        const Shift atSharp = shiftAt(A, rs);
        const Vec localCentre{atSharp.Xm, bend * (rs + atSharp.dR)};
        flatEnd.y *= bend;
        sharpEnd.y *= bend;

        const Vec sharpCentre{sharper.k1, sharper.k2};
        const Vec toFlatter = Vec{flatter.k1, flatter.k2} - sharpCentre;
        const double D = plane::norm(toFlatter);
        const double pSharp = rs + atSharp.dR;
        const double pFlat = fromInfinity ? rl : rl + shiftAt(A, rl).dR;
        // C keeps its sign: with a strong clothoid the sharper arc can lie further off the tangent than the flatter one.
        const double C = sharper.dir == flatter.dir ? pFlat - pSharp : pFlat + pSharp;
        if (!(D > std::fabs(C))) {
            return 1;
        }
        const double sine = C / D;
        const double cosine = std::sqrt((1.0 - sine) * (1.0 + sine));
        const double sign = (firstFlatter == (flatter.dir == 1.0)) ? 1.0 : -1.0;
        // From the foot, on the parallel to the tangent through the sharper arc's centre, to that centre.
        const Vec localX = plane::turned((-1.0 / D) * toFlatter, cosine, sign * sine);
        const auto laid = [&](Vec local) {
            return sharpCentre + plane::turned(local - localCentre, localX.x, localX.y);
        };

        Vec start = laid(flatEnd);
        Vec end = laid(sharpEnd);
        a->r1 = fromInfinity ? 0.0 : rl;
        a->r2 = rs;
        if (!firstFlatter) {
            std::swap(start, end);
            std::swap(a->r1, a->r2);
        }
        a->sx = start.x;
        a->sy = start.y;
        a->ex = end.x;
        a->ey = end.y;
        r1->ex = start.x;
        r1->ey = start.y;
        r2->sx = end.x;
        r2->sy = end.y;
        return CDvalidArc(r1);
    });
}

} // extern "C"
