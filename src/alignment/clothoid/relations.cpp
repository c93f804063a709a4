// Relations of the standard clothoid: angle, radius, length, coordinates, shift and characteristic values.
//
// Symbols: A parameter, R radius, L length from the origin, tau tangent angle, (X, Y) coordinates, dR = Y + R cos tau -
// R shift, Xm = X - R sin tau, H = R cos tau + Y. A^2 = R L, tau = L / (2 R). R = 0 stands for an infinite radius. Axes
// and source: series.h.
#include "alignment/calelm/answer.h"
#include "alignment/clothoid/series.h"
#include "fenmark/alignment/clothoid.h"

using namespace fenmark::alignment;

namespace fenmark::alignment {

void shiftAtRadius(double A, double R, double& tau, double& dR, double& Xm) {
    if (std::fabs(R) <= kZeroRadius) {
        tau = dR = Xm = 0.0;
        return;
    }
    const double t = tauAtRadius(A, R);
    const Point point = clothoidPoint(A, t);
    tau = t;
    dR = point.y + R * std::cos(t) - R;
    Xm = point.x - R * std::sin(t);
}

void characteristicValues(double A, double R, double values[7]) {
    if (R == 0.0) {
        for (int i = 0; i < 7; ++i) {
            values[i] = 0.0;
        }
        return;
    }
    const double tau = tauAtRadius(A, R);
    const Point point = clothoidPoint(A, tau);
    const double sine = std::sin(tau);
    const double cosine = std::cos(tau);
    const double H = R * cosine + point.y;
    const double Xm = point.x - R * sine;
    const double beyond = H / cosine - R;
    // A clothoid so flat that tau is 0 has no foot of the normal on the tangent.
    const double slope = sine == 0.0 ? 0.0 : beyond / sine;
    const double D = H * std::tan(tau) + Xm;
    values[0] = D - slope;
    values[1] = slope * cosine;
    values[2] = D;
    values[3] = beyond;
    values[4] = std::sqrt(point.x * point.x + point.y * point.y);
    values[5] = Xm;
    values[6] = H;
}

} // namespace fenmark::alignment

extern "C" {

int CDAcalxy(double A, double tau, double* X, double* Y) {
    const Point point = clothoidPoint(A, tau);
    *X = point.x;
    *Y = point.y;
    return 0;
}

int CDRcalxy(double A, double R, double* X, double* Y) {
    const Point point = clothoidPointAtRadius(A, R);
    *X = point.x;
    *Y = point.y;
    return 0;
}

int CDLcalxy(double A, double L, double* X, double* Y) {
    const Point point = L < kSameLength ? Point{} : clothoidPointAtRadius(A, A * A / L);
    *X = point.x;
    *Y = point.y;
    return 0;
}

int CDRang(double A, double R, double* tau) {
    return giveOutReal(tauAtRadius(A, R), tau);
}

int CDLang(double A, double L, double* tau) {
    return giveOutReal(L < kSameLength ? 0.0 : L * L / (2.0 * A * A), tau);
}

int CDAngR(double A, double tau, double* R) {
    return giveOutReal(tau < kSameAngle ? 0.0 : std::sqrt(A * A / (2.0 * tau)), R);
}

int CDRlen(double A, double R, double* L) {
    return giveOutReal(standardStation(A, R), L);
}

int AelmAtri(double A, double R, double* tau, double* dR, double* Xm) {
    double t = 0.0;
    double shift = 0.0;
    double abscissa = 0.0;
    shiftAtRadius(A, R, t, shift, abscissa);
    if (!allFinite(t, shift, abscissa)) {
        return -1;
    }
    *tau = t;
    *dR = shift;
    *Xm = abscissa;
    return 0;
}

int CDcharLmA(double A, double R, double values[7]) {
    std::array<double, 7> made;
    characteristicValues(A, R, made.data());
    return giveOutReals(made, values);
}

int CDchkAR(double A, double R) {
    if (!std::isfinite(A) || A == 0.0 || std::isnan(R)) {
        return -1;
    }
    return R != 0.0 && R / A <= kSmallestRadiusRatio ? -1 : 0;
}

} // extern "C"
