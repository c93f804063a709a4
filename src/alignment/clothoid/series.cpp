// The clothoid series far out, and the high-precision evaluation. Symbols and source: series.h.
#include "alignment/clothoid/series.h"
#include "alignment/calelm/answer.h"

#include <limits>

#include "fenmark/alignment/clothoid.h"

namespace fenmark::alignment {

int clothoidPointFar(double A, double tau, Point& point) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    point = {nan, nan};
    if (!std::isfinite(tau) || !std::isfinite(A)) {
        return 0;
    }
    const double s = A / std::numbers::sqrt2;
    const double scaleX = s * 2.0 * std::sqrt(tau);
    const double scaleY = s * 2.0 * std::pow(tau, 1.5);
    double sumX = 0.0;
    double sumY = 0.0;
    Point before{0.0, 0.0};
    for (int n = 1; n <= kSeriesPasses; ++n) {
        // A compiler that sees the exponent 2 multiplies instead, which gives other last digits than the power function.
        const volatile double exponent = 2.0 * n;
        const double power = std::pow(tau, exponent);
        double factorial = 1.0;
        for (int i = 2; i <= 2 * n; ++i) {
            factorial *= i;
        }
        const double sign = n % 2 == 1 ? -1.0 : 1.0;
        sumX += sign * (power / ((4.0 * n + 1.0) * factorial));
        sumY += sign * (power / ((4.0 * n + 3.0) * (factorial * (2.0 * n + 1.0))));
        point = {(sumX + 1.0) * scaleX, (sumY + 1.0 / 3.0) * scaleY};
        if (!std::isfinite(point.x) || !std::isfinite(point.y)) {
            point = {nan, nan};
            return n;
        }
        if (std::fabs(point.x - before.x) < kSeriesStop && std::fabs(point.y - before.y) < kSeriesStop) {
            return n;
        }
        before = point;
    }
    return kSeriesPasses;
}

} // namespace fenmark::alignment

using namespace fenmark::alignment;

extern "C" int clothoidElements(double A, double tau, double values[13]) {
    if (!(A > 0.0) || !(tau >= 0.0) || !std::isfinite(A) || tau > kLargestPreciseTau) {
        return -1;
    }
    // Terms +- tau^i / (i! (2i + 1)) of X and +- tau^(i+1) / ((i + 1)! (2i + 3)) of Y, i = 0, 2, 4, ...
    double sumX = 0.0;
    double sumY = 0.0;
    double ratio = 1.0; // tau^i / i!, with the sign of the pair
    for (int i = 0; i < 65535; i += 2) {
        const double termX = ratio / (2.0 * i + 1.0);
        ratio *= tau / (i + 1.0);
        sumX += termX;
        sumY += ratio / (2.0 * i + 3.0);
        ratio *= -tau / (i + 2.0);
        if (std::fabs(termX) <= kPreciseSeriesStop) {
            break;
        }
    }
    const bool flat = tau < kPreciseSeriesStop;
    const double root = std::sqrt(2.0 * tau);
    const double L = A * root;
    const double R = flat ? 0.0 : A / root;
    const double X = L * sumX;
    const double Y = L * sumY;
    const double sine = std::sin(tau);
    const double cosine = std::cos(tau);
    const double shortTangent = flat ? 0.0 : Y / sine;
    return giveOutReals<13>({A, L, R, root / A, X, Y, tau, X + Y * std::tan(tau), X - shortTangent * cosine,
                             shortTangent, Y / cosine, R * cosine + Y - R, X - R * sine},
                            values);
}
