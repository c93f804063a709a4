// Coordinates of the curve of linear curvature, in two forms.
//
// Symbols: u length along the curve (m), k curvature at its start (1/m), c change of curvature for each metre (1/m2),
// tau tangent angle against the start. The start's tangent is the x axis; positive curvature turns towards +y.
#pragma once

#include "drawing/values.h"

#include <array>
#include <cmath>
#include <cstddef>

namespace fenmark::drawing {

// Up to this tangent angle, measured at the inflection point, the series below is good to 1e-13 of the length.
inline constexpr double kSeriesTurn = 1.7;
// Up to this turn, five nodes of quadrature are good to 1e-14 of the length.
inline constexpr double kQuadratureTurn = 0.25;

// From the inflection point, where curvature is 0 (k = 0): the classical series in powers of tau = c u^2 / 2,
//   x = u (1 - tau^2 / (2! 5) + tau^4 / (4! 9) - ...),   y = u tau (1/3 - tau^2 / (3! 7) + tau^4 / (5! 11) - ...).
// A negative u gives the branch before the inflection point.
inline PlanPoint seriesFromInflection(double c, double u) {
    const double tau = 0.5 * c * u * u;
    const double t = tau * tau;
    // Even and odd powers of t apart: two short chains instead of a long one.
    const double t2 = t * t;
    const double xEven =
        1.0 + t2 * (1.0 / 216.0 + t2 * (1.0 / 685440.0 + t2 * (1.0 / 11975040000.0 + t2 / 690452066304000.0)));
    const double xOdd = -1.0 / 10.0 + t2 * (-1.0 / 9360.0 + t2 * (-1.0 / 76204800.0 + t2 * (-1.0 / 2528170444800.0)));
    const double yEven =
        1.0 / 3.0 +
        t2 * (1.0 / 1320.0 + t2 * (1.0 / 6894720.0 + t2 * (1.0 / 168129561600.0 + t2 / 12449059983360000.0)));
    const double yOdd =
        -1.0 / 42.0 + t2 * (-1.0 / 75600.0 + t2 * (-1.0 / 918086400.0 + t2 * (-1.0 / 40537905408000.0)));
    return {u * (xEven + t * xOdd), u * tau * (yEven + t * yOdd)};
}

struct SineCosine {
    double sine = 0.0;
    double cosine = 1.0;
};

// Of an angle up to kSeriesTurn: the series to the last bits, without a call and without a branch.
inline SineCosine sineCosine(double angle) {
    const double q = angle * angle;
    const double q2 = q * q;
    const double sineEven =
        1.0 + q2 * (1.0 / 120.0 +
                    q2 * (1.0 / 362880.0 +
                          q2 * (1.0 / 6227020800.0 + q2 * (1.0 / 355687428096000.0 + q2 / 51090942171709440000.0))));
    const double sineOdd =
        -1.0 / 6.0 + q2 * (-1.0 / 5040.0 + q2 * (-1.0 / 39916800.0 +
                                                 q2 * (-1.0 / 1307674368000.0 + q2 * (-1.0 / 121645100408832000.0))));
    const double cosineEven =
        1.0 + q2 * (1.0 / 24.0 + q2 * (1.0 / 40320.0 + q2 * (1.0 / 479001600.0 + q2 * (1.0 / 20922789888000.0 +
                                                                                       q2 / 2432902008176640000.0))));
    const double cosineOdd =
        -1.0 / 2.0 +
        q2 * (-1.0 / 720.0 +
              q2 * (-1.0 / 3628800.0 + q2 * (-1.0 / 87178291200.0 + q2 * (-1.0 / 6402373705728000.0 +
                                                                          q2 * (-1.0 / 1124000727777607680000.0)))));
    return {angle * (sineEven + q * sineOdd), cosineEven + q * cosineOdd};
}

// A point of a curve and the direction there, against the start's.
struct CurvePoint {
    PlanPoint point;
    SineCosine direction;
};

// On an arc of curvature k that turns by half a circle at most: the chord leaves the tangent by half the turn.
inline CurvePoint arcFromStart(double k, double u) {
    const double half = 0.5 * k * u;
    const SineCosine turned = sineCosine(half);
    // The chord is u sin(half) / half; the share is 1 for half = 0, to the last bit also near it.
    const double chord = u * (half == 0.0 ? 1.0 : turned.sine / half);
    return {{chord * turned.cosine, chord * turned.sine},
            {2.0 * turned.sine * turned.cosine, 1.0 - 2.0 * turned.sine * turned.sine}};
}

// By Gauss-Legendre quadrature with five nodes, where the whole turn is at most kQuadratureTurn. Any k and c.
inline PlanPoint quadratureFromStart(double k, double c, double u) {
    static constexpr std::array<double, 5> kNode = {0.046910077030668004, 0.23076534494715845, 0.5, 0.76923465505284155,
                                                    0.953089922969332};
    static constexpr std::array<double, 5> kWeight = {0.11846344252809454, 0.23931433524968324, 0.28444444444444444,
                                                      0.23931433524968324, 0.11846344252809454};
    PlanPoint sum;
    for (std::size_t i = 0; i < kNode.size(); ++i) {
        const double v = u * kNode[i];
        const double angle = v * (k + 0.5 * c * v);
        const double q = angle * angle;
        // Sine and cosine of an angle below 0.4, to the last bits.
        const double cosine =
            1.0 - q * (1.0 / 2.0 - q * (1.0 / 24.0 - q * (1.0 / 720.0 - q * (1.0 / 40320.0 - q / 3628800.0))));
        const double sine = angle * (1.0 - q * (1.0 / 6.0 - q * (1.0 / 120.0 - q * (1.0 / 5040.0 - q / 362880.0))));
        sum.x += kWeight[i] * cosine;
        sum.y += kWeight[i] * sine;
    }
    return {u * sum.x, u * sum.y};
}

} // namespace fenmark::drawing
