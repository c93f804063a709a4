// The foot of a perpendicular on a clothoid, by bisection on the station.
//
// Symbols: A parameter; L standard station, L1 that of the flatter end; s distance from the flatter end; q the point in
// the frame of the standard clothoid; P the curve's point at s; u the unit vector from q to P; tau = L^2 / (2 A^2).
// The foot is where u is square to the tangent (cos tau, sin tau). Axes: see laid_clothoid.h.
#include "alignment/walking/laid_clothoid.h"
#include "fenmark/alignment/walking.h"

using namespace fenmark::alignment;

namespace {

// The bisection halves a length at each pass; more passes than a double has bits change nothing.
constexpr int kBisections = 200;

struct FootTest {
    int status;      // 0 foot, 1 foot lies before, -1 after, 2 on the curve
    double cosine;   // of the angle between tangent and q -> P
    double distance; // |q - P|
};

FootTest testFoot(double A, double L, Point q) {
    const Point P = standardPointAt(A, L);
    const double dx = P.x - q.x;
    const double dy = P.y - q.y;
    const double distance = std::sqrt(dx * dx + dy * dy);
    if (distance <= kOnCurve) {
        return {2, 0.0, distance};
    }
    const double tau = L < kSameLength ? 0.0 : L * L / (2.0 * A * A);
    const double cosine = (std::sin(tau) * dy + std::cos(tau) * dx) / distance;
    if (std::fabs(cosine) <= kPerpendicularCosine) {
        return {0, cosine, distance};
    }
    return {cosine > 0.0 ? 1 : -1, cosine, distance};
}

} // namespace

extern "C" {

int chk_ang(const Calelm* a, const double q[2], double s, double* cosine) {
    const FootTest test = testFoot(a->par, standardStation(a->par, a->r1) + s, {q[0], q[1]});
    *cosine = test.cosine;
    return test.status;
}

int ali_projA(const Calelm* rec, const double p[2], double foot[2], double* station) {
    const LaidClothoid laid(*rec);
    const Point q = laid.toStandard({p[0], -p[1]});
    if (!laid.valid() || !std::isfinite(q.x) || !std::isfinite(q.y)) {
        return -1;
    }
    const double A = laid.parameter();
    const double L1 = laid.flatStation();
    const double T = laid.length();
    double s = 0.0;
    if (testFoot(A, L1, q).status == 2) {
        s = 0.0;
    } else if (testFoot(A, L1 + T, q).status == 2) {
        s = T;
    } else {
        double low = 0.0;
        double high = T;
        double endOfSearch = kLengthStep;
        FootTest test{-1, 1.0, 0.0};
        for (int pass = 0; pass < kBisections && std::fabs(high - low) >= endOfSearch; ++pass) {
            s = (high + low) / 2.0;
            test = testFoot(A, L1 + s, q);
            // A near point asks for a finer end of the search.
            endOfSearch = test.distance > 1.0 ? kLengthStep : test.distance * test.distance * kLengthStep;
            if (test.status == 0 || test.status == 2) {
                break;
            }
            (test.status == 1 ? high : low) = s;
        }
        const bool found = test.status == 0 || test.status == 2 || std::fabs(test.cosine) <= kOnCurve;
        if (!found && !(test.distance <= kOnCurve)) {
            return -1;
        }
    }
    const double fromStart = laid.reversed() ? T - s : s;
    double on[2];
    double tangent = 0.0;
    if (ali_onlA(rec, fromStart, on, &tangent) != 0) {
        return -1;
    }
    foot[0] = on[0];
    foot[1] = on[1];
    *station = fromStart;
    return 0;
}

} // extern "C"
