// Sine and cosine together, as a point of the unit circle, inline and without a call.
//
// The library's own sincos takes two thirds of the time of a point on a clothoid. Angles of a plan are a few circles at
// most, so a quarter of a circle as two doubles brings them near 0 [Cody 1980], where the plain series serve.
#pragma once

#include <cmath>

namespace fenmark::curve {

struct Complex {
    double re = 0.0;
    double im = 0.0;

    friend Complex operator+(const Complex& a, const Complex& b) { return {a.re + b.re, a.im + b.im}; }
    friend Complex operator-(const Complex& a, const Complex& b) { return {a.re - b.re, a.im - b.im}; }
    friend Complex operator*(const Complex& a, const Complex& b) {
        return {a.re * b.re - a.im * b.im, a.re * b.im + a.im * b.re};
    }
    friend Complex operator*(double f, const Complex& a) { return {f * a.re, f * a.im}; }
};

// An angle of 2 at most: the series without a branch, for many angles side by side.
inline Complex onUnitCircleNear(double angle) {
    const double q = angle * angle;
    const double r = q * q;
    const double sineEven =
        1.0 + r * (1.0 / 120.0 + r * (1.0 / 362880.0 + r * (1.0 / 6227020800.0 + r * (1.0 / 355687428096000.0 +
                                                                                      r / 51090942171709440000.0))));
    const double sineOdd =
        -1.0 / 6.0 + r * (-1.0 / 5040.0 +
                          r * (-1.0 / 39916800.0 + r * (-1.0 / 1307674368000.0 + r * (-1.0 / 121645100408832000.0))));
    const double cosineEven =
        1.0 + r * (1.0 / 24.0 + r * (1.0 / 40320.0 + r * (1.0 / 479001600.0 +
                                                          r * (1.0 / 20922789888000.0 + r / 2432902008176640000.0))));
    const double cosineOdd =
        -1.0 / 2.0 +
        r * (-1.0 / 720.0 +
             r * (-1.0 / 3628800.0 + r * (-1.0 / 87178291200.0 +
                                          r * (-1.0 / 6402373705728000.0 + r * (-1.0 / 1124000727777607680000.0)))));
    return {cosineEven + q * cosineOdd, angle * (sineEven + q * sineOdd)};
}

// |angle| <= pi / 4: the first term left out is 4e-17 of the sine and 2e-18 of the cosine.
inline Complex onUnitCircleAhead(double angle) {
    const double q = angle * angle;
    const double p = q * q;
    const double sineOdd = 1.0 / 120.0 + p * (1.0 / 362880.0 + p * (1.0 / 6227020800.0));
    const double sineEven = -1.0 / 6.0 + p * (-1.0 / 5040.0 + p * (-1.0 / 39916800.0 + p * (-1.0 / 1307674368000.0)));
    const double cosineEven = 1.0 / 24.0 + p * (1.0 / 40320.0 + p * (1.0 / 479001600.0 + p * (1.0 / 20922789888000.0)));
    const double cosineOdd = -1.0 / 720.0 + p * (-1.0 / 3628800.0 + p * (-1.0 / 87178291200.0));
    return {1.0 - (0.5 * q - p * (cosineEven + q * cosineOdd)), angle + angle * q * (sineEven + q * sineOdd)};
}

// Any angle. Up to 1,000 radians the largest error seen in 80 million seeded angles is 1.6e-16.
inline Complex onUnitCircle(double angle) {
    constexpr double kEighth = 0.78539816339744830962; // of a circle, radians
    // Radians; up to here the whole quarters times kQuarterHigh, which has 33 bits, are exact.
    constexpr double kMostReduced = 1000.0;
    constexpr double kQuarters = 0.63661977236758134308; // a radian in quarters
    constexpr double kQuarterHigh = 0x1.921fb544p+0;
    constexpr double kQuarterLow = 0x1.0b4611a626331p-34;
    if (std::abs(angle) <= kEighth) {
        return onUnitCircleAhead(angle);
    }
    if (!(std::abs(angle) <= kMostReduced)) {
        return {std::cos(angle), std::sin(angle)};
    }
    const int quarters = static_cast<int>(angle * kQuarters + (angle < 0.0 ? -0.5 : 0.5));
    const Complex rest = onUnitCircleAhead((angle - quarters * kQuarterHigh) - quarters * kQuarterLow);
    const double x = (quarters & 1) != 0 ? rest.im : rest.re;
    const double y = (quarters & 1) != 0 ? rest.re : rest.im;
    return {((quarters + 1) & 2) != 0 ? -x : x, (quarters & 2) != 0 ? -y : y};
}

} // namespace fenmark::curve
