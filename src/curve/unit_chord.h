// The integral of exp(i (a t + b t^2)) over t from 0 to 1, for any a and b, at a fixed cost.
//
// It is the chord of a curve of linear curvature, seen from the start's tangent and as a share of the length: a is the
// turn that the start's curvature would make, b what the change of curvature adds.
//
// Symbols: w length from the inflection point (in lengths of the curve), theta turn from there, k = a + 2 b t curvature
// (times the length), q = 2 b / k^2 = 1 / (2 theta), phi turn from the start.
//
// Three forms cover the plane:
//  - the series in powers of theta from the inflection point [Kasper 1968], where |theta| <= 2;
//  - the tail. From a point on, the curve winds into its far end, exp(i theta) G away, with G = (i / k) P(q) and
//    P(q) = int exp(-t - i q t^2 / 2) dt, the auxiliary functions of the Fresnel integrals ([Abramowitz 1964], 7.3.5 to
//    7.3.10) in a form that holds for either sign. Where |theta| >= 2;
//  - quadrature with five nodes, where the curve turns little and its inflection point lies far away.
// No form subtracts two values much larger than the chord.
#pragma once

#include "curve/curve.h"
#include "curve/tail_table.h"
#include "curve/unit_circle.h"

#include <array>
#include <cmath>
#include <cstddef>

namespace fenmark::curve {

// Up to this turn from the inflection point the series is used, beyond it the tail. The table of the tail ends here.
inline constexpr double kSeriesTurn = 2.0;
// Up to this turn from the inflection point, which few clothoids of plans exceed, the first seven terms are all.
inline constexpr double kShortSeriesTurn = 0.5;
// Up to this turn the quadrature is good to 1e-17 of the length where the inflection is farther than kFarInflection.
inline constexpr double kQuadratureTurn = 0.25;
// An inflection point this many lengths away costs the series two digits.
inline constexpr double kFarInflection = 50.0;

// From the inflection point over the length w: (x, y) with theta = c w^2 / 2,
//   x = w (1 - theta^2 / (2! 5) + theta^4 / (4! 9) - ...),  y = w theta (1/3 - theta^2 / (3! 7) + ...).
// A negative w gives the branch before the inflection point. Even and odd powers of theta^2 stand apart: two short chains
// instead of a long one.
//
// The terms that matter up to |theta| = kShortSeriesTurn: the first one left out is theta^14 / (14! 29) = 2e-17 of x and
// theta^13 / (13! 27) = 7e-16 of y's own first term, which is theta / 3.
inline Complex shortInflectionSeries(double w, double theta) {
    const double t = theta * theta;
    const double s = t * t;
    const double xEven = 1.0 + s * (1.0 / 216.0 + s * (1.0 / 685440.0 + s * (1.0 / 11975040000.0)));
    const double xOdd = -1.0 / 10.0 + s * (-1.0 / 9360.0 + s * (-1.0 / 76204800.0));
    const double yEven = 1.0 / 3.0 + s * (1.0 / 1320.0 + s * (1.0 / 6894720.0 + s * (1.0 / 168129561600.0)));
    const double yOdd = -1.0 / 42.0 + s * (-1.0 / 75600.0 + s * (-1.0 / 918086400.0));
    return {w * (xEven + t * xOdd), w * theta * (yEven + t * yOdd)};
}

// The terms that matter up to kSeriesTurn: good to the last bits.
inline Complex longInflectionSeries(double w, double theta) {
    const double t = theta * theta;
    const double s = t * t;
    const double xEven =
        1.0 +
        s * (1.0 / 216.0 + s * (1.0 / 685440.0 + s * (1.0 / 11975040000.0 + s * (1.0 / 690452066304000.0 +
                                                                                 s * (1.0 / 99748982335242240000.0)))));
    const double xOdd =
        -1.0 / 10.0 +
        s * (-1.0 / 9360.0 +
             s * (-1.0 / 76204800.0 + s * (-1.0 / 2528170444800.0 + s * (-1.0 / 236887827111936000.0 +
                                                                         s * (-1.0 / 50580032749992345600000.0)))));
    const double yEven =
        1.0 / 3.0 +
        s * (1.0 / 1320.0 +
             s * (1.0 / 6894720.0 +
                  s * (1.0 / 168129561600.0 + s * (1.0 / 12449059983360000.0 + s * (1.0 / 2196910513383505920000.0)))));
    const double yOdd =
        -1.0 / 42.0 +
        s * (-1.0 / 75600.0 +
             s * (-1.0 / 918086400.0 + s * (-1.0 / 40537905408000.0 + s * (-1.0 / 4744158915944448000.0 +
                                                                           s * (-1.0 / 1215044786727593902080000.0)))));
    return {w * (xEven + t * xOdd), w * theta * (yEven + t * yOdd)};
}

// |theta| <= kSeriesTurn.
inline Complex inflectionSeries(double w, double theta) {
    return std::abs(theta) <= kShortSeriesTurn ? shortInflectionSeries(w, theta) : longInflectionSeries(w, theta);
}

// P(q), |q| <= 1/4.
inline Complex tailValue(double q) {
    const double at = std::abs(q) * (4.0 * static_cast<double>(kTailTable.size()));
    const std::size_t piece =
        at < static_cast<double>(kTailTable.size()) ? static_cast<std::size_t>(at) : kTailTable.size() - 1;
    const double x = 2.0 * (at - static_cast<double>(piece)) - 1.0;
    const std::array<double, 18>& c = kTailTable[piece];
    const double x2 = x * x;
    const double reEven = c[0] + x2 * (c[2] + x2 * (c[4] + x2 * (c[6] + x2 * c[8])));
    const double reOdd = c[1] + x2 * (c[3] + x2 * (c[5] + x2 * c[7]));
    const double imEven = c[9] + x2 * (c[11] + x2 * (c[13] + x2 * (c[15] + x2 * c[17])));
    const double imOdd = c[10] + x2 * (c[12] + x2 * (c[14] + x2 * c[16]));
    const double im = imEven + x * imOdd;
    return {reEven + x * reOdd, q < 0.0 ? -im : im};
}

// G: from a point of curvature k, with the change b, to the far end, seen from the direction there.
inline Complex tailChord(double k, double b) {
    const Complex p = tailValue(2.0 * b / k / k);
    return {-p.im / k, p.re / k};
}

// |a| + |b| <= kQuadratureTurn, the inflection point far away.
inline Complex quadratureChord(double a, double b) {
    static constexpr std::array<double, 5> kNode = {0.046910077030668003601, 0.23076534494715845448, 0.5,
                                                    0.76923465505284154552, 0.9530899229693319964};
    static constexpr std::array<double, 5> kWeight = {0.11846344252809454376, 0.23931433524968323402,
                                                      0.28444444444444444444, 0.23931433524968323402,
                                                      0.11846344252809454376};
    // The cosine is summed as its distance from 1, which keeps the last bits of a chord that is nearly the length.
    double drop = 0.0;
    double side = 0.0;
    for (std::size_t i = 0; i < kNode.size(); ++i) {
        const double angle = kNode[i] * (a + b * kNode[i]);
        const double q = angle * angle;
        drop +=
            kWeight[i] * q * (1.0 / 2.0 - q * (1.0 / 24.0 - q * (1.0 / 720.0 - q * (1.0 / 40320.0 - q / 3628800.0))));
        side += kWeight[i] * angle * (1.0 - q * (1.0 / 6.0 - q * (1.0 / 120.0 - q * (1.0 / 5040.0 - q / 362880.0))));
    }
    return {1.0 - drop, side};
}

// An arc that turns by a: the chord leaves the tangent by half the turn.
inline Complex arcChord(double a) {
    const double half = 0.5 * a;
    if (half == 0.0) {
        return {1.0, half};
    }
    const Complex turned = onUnitCircle(half);
    const double chord = turned.im / half;
    return {chord * turned.re, chord * turned.im};
}

// Any finite a and b whose sum a + 2 b is finite.
inline Complex unitChord(double a, double b) {
    if (b == 0.0) {
        return arcChord(a);
    }
    const double k1 = a + 2.0 * b;
    const double limit = 4.0 * kSeriesTurn * std::abs(b); // k^2 there
    const bool near0 = a * a <= limit;
    const bool near1 = k1 * k1 <= limit;
    const double toStart = a / (2.0 * b);
    if (near0 && near1 && std::abs(toStart) <= kFarInflection) {
        const double theta0 = 0.5 * a * toStart;
        const double toEnd = toStart + 1.0;
        const double theta1 = 0.5 * k1 * toEnd;
        const Complex way = inflectionSeries(toEnd, theta1) - inflectionSeries(toStart, theta0);
        return onUnitCircle(-theta0) * way;
    }
    if (std::abs(a) + std::abs(b) <= kQuadratureTurn) {
        return quadratureChord(a, b);
    }
    Complex sum;
    if (!near0) {
        sum = tailChord(a, b);
    }
    if (!near1) {
        sum = sum - onUnitCircle(a + b) * tailChord(k1, b);
    }
    if (!near0 && !near1 && (a < 0.0) == (k1 < 0.0)) {
        return sum;
    }
    // The way over or to the inflection point: half of the whole curve on each side is known in closed form.
    const double half = 0.5 * std::sqrt(kPi / std::abs(b)) * 0.70710678118654752440;
    const Complex toFarEnd{half, b > 0.0 ? half : -half};
    const double toEnd = k1 / (2.0 * b);
    const Complex end = near1 ? inflectionSeries(toEnd, 0.5 * k1 * toEnd) : (toEnd > 0.0 ? 1.0 : -1.0) * toFarEnd;
    const Complex start =
        near0 ? inflectionSeries(toStart, 0.5 * a * toStart) : (toStart > 0.0 ? 1.0 : -1.0) * toFarEnd;
    return sum + onUnitCircle(-0.5 * a * toStart) * (end - start);
}

} // namespace fenmark::curve
