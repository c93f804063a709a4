// The clothoid series, inline for the functions that walk along elements.
//
// Symbols: A parameter, tau tangent angle, L length and R radius at a point of the standard clothoid, (X, Y) its
// coordinates. Axes: origin at the point of infinite radius, +x along the tangent there, the curve turns towards +y.
// Series of the Fresnel integrals in tau: [Kasper 1968].
#pragma once

#include <array>

#include "alignment/calelm/planes.h"

namespace fenmark::alignment {

// Reciprocal denominators of the pass n = index + 1: 1 / ((4n + 1) (2n)!) of X and 1 / ((4n + 3) (2n + 1)!) of Y, the
// sign of the pass included.
struct SeriesCoefficient {
    double x;
    double y;
};

inline constexpr int kSeriesTableSize = 32;

inline constexpr std::array<SeriesCoefficient, kSeriesTableSize> kSeriesTable = [] {
    std::array<SeriesCoefficient, kSeriesTableSize> table{};
    double factorial = 1.0; // (2n)!
    for (int n = 1; n <= kSeriesTableSize; ++n) {
        factorial *= (2.0 * n - 1.0) * (2.0 * n);
        const double sign = n % 2 == 1 ? -1.0 : 1.0;
        table[static_cast<std::size_t>(n - 1)] = {sign / ((4.0 * n + 1.0) * factorial),
                                                  sign / ((4.0 * n + 3.0) * (factorial * (2.0 * n + 1.0)))};
    }
    return table;
}();

// Real elements have R > 0.56 A, so tau < 1.6. Up to here powers may be formed by recurrence; beyond, the terms cancel,
// and clothoidPointFar forms each power and factorial afresh so that the digits stay those of the plain summation.
inline constexpr double kRecurrenceTau = 2.0;

// The same series for tau above kRecurrenceTau, and for values that are not finite (which give values that are not
// numbers).
int clothoidPointFar(double A, double tau, Point& point);

// Point at the tangent angle tau. Returns the number of passes, 0 where tau counts as 0.
inline int clothoidPointPasses(double A, double tau, Point& point) {
    if (tau < kSameAngle) {
        point = {0.0, 0.0};
        return 0;
    }
    if (!(tau <= kRecurrenceTau) || !std::isfinite(A)) {
        return clothoidPointFar(A, tau, point);
    }
    const double root = std::sqrt(tau);
    const double scaleX = A / std::numbers::sqrt2 * 2.0 * root;
    const double scaleY = scaleX * tau;
    const double tau2 = tau * tau;
    double power = 1.0;
    double sumX = 0.0;
    double sumY = 0.0;
    Point before{0.0, 0.0};
    // The test compares results in metres, so the number of passes grows with A; the powers vanish long before the
    // table ends, whatever A is, and a further pass then changes nothing.
    for (int n = 0; n < kSeriesTableSize; ++n) {
        power *= tau2;
        sumX += power * kSeriesTable[static_cast<std::size_t>(n)].x;
        sumY += power * kSeriesTable[static_cast<std::size_t>(n)].y;
        point = {(sumX + 1.0) * scaleX, (sumY + 1.0 / 3.0) * scaleY};
        if (std::fabs(point.x - before.x) < kSeriesStop && std::fabs(point.y - before.y) < kSeriesStop) {
            return n + 1;
        }
        before = point;
    }
    return kSeriesTableSize;
}

inline Point clothoidPoint(double A, double tau) {
    Point point;
    clothoidPointPasses(A, tau, point);
    return point;
}

// Tangent angle at the radius R, 0 for an infinite one.
inline double tauAtRadius(double A, double R) {
    return R == 0.0 ? 0.0 : A * A / (2.0 * R * R);
}

// AelmAtri and CDcharLmA without their last test: what comes out may not be finite.
void shiftAtRadius(double A, double R, double& tau, double& dR, double& Xm);
void characteristicValues(double A, double R, double values[7]);

// Point at the radius R; the origin for an infinite one.
inline Point clothoidPointAtRadius(double A, double R) {
    return R == 0.0 ? Point{} : clothoidPoint(A, tauAtRadius(A, R));
}

} // namespace fenmark::alignment
