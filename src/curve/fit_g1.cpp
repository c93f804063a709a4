// The clothoid through two poses.
//
// Source: [Bertolazzi 2015], from which the equation and its first guess come: with the tangents' angles f0 and f1
// against the chord, and the turn f0 + (d - A) t + A t^2 over the share t of the length, d = f1 - f0, the curve ends on
// the chord's line where Y(A) = int sin(...) dt is 0; its length is the chord over X(A) = int cos(...) dt.
//
// The angles are known up to full circles. Within half a circle their difference gives the shortest curve; beyond, the
// curve that turns the other way can be the shorter, so both are solved.
#include "curve/curve.h"
#include "curve/unit_chord.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace fenmark::curve {

namespace {

// "Seen": in 250,000 solutions of seeded poses.
constexpr int kMostG1Steps = 40;      // Seen: 5
constexpr double kGoodEnough = 2e-15; // of Y: the end lies that share of the length off. Seen: 2.0e-15
constexpr double kGood = 1e-14;       // of Y, where rounding allows no better. Seen: never needed
constexpr double kSmall = 1e-3;       // A below which the slope of the series loses too many digits
constexpr double kSteady = 0.1;       // A above which its higher terms serve too
// Up to this change of A the series leaves no more than rounding does: 2.0e-15 of Y and of X.
constexpr double kMostSeriesChange = 0.03;
constexpr std::size_t kTerms = 6;

struct Solution {
    double a = 0.0; // A
    double x = 0.0; // X there
    double y = 0.0;
    bool good = false;
};

double firstGuess(double f0, double f1) {
    const double x = f0 / kPi;
    const double y = f1 / kPi;
    const double xy = x * y;
    const double x2 = x * x;
    const double y2 = y * y;
    return (f0 + f1) *
           (2.989696028701907 + xy * (0.716228953608281 - xy * 0.458969738821509) +
            (xy * 0.261062141752652 - 0.502821153340377) * (x2 + y2) - 0.045854475238709 * (x2 * x2 + y2 * y2));
}

double lengthOf(double dx, double dy) {
    // Where no square overflows or loses digits; elsewhere std::hypot, which takes a tenth of the time of a fit.
    constexpr double kSmallest = 1e-140;
    constexpr double kLargest = 1e140;
    const double squared = dx * dx + dy * dy;
    return squared > kSmallest && squared < kLargest ? std::sqrt(squared) : std::hypot(dx, dy);
}

// The chord X + i Y as a polynomial in the change of A: the terms of X, and those of Y.
struct ChordSeries {
    std::array<double, kTerms> x;
    std::array<double, kTerms> y;
};

// Its terms are the integrals of (i w)^n / n! exp(i turn), w = t^2 - t, since the turn grows by w for each unit of A. With
// u = w' = 2 t - 1, the integrals W(n) of w^n exp(i turn) and V(n) of u w^n exp(i turn) follow one from the other by parts:
//   A V(n) = i n V(n-1) - d W(n),  4 A W(n+1) = i ((2 + 4 n) W(n) + n W(n-1)) - d V(n) - A W(n).
// The ends of the curve, where w is 0, count for n = 0 alone: -i (end - start) in the first, -i (start + end) in the second.
ChordSeries chordSeries(double a, double d, const Complex& start, const Complex& end, const Complex& chord) {
    const double part = 1.0 / a;
    const double quarter = 0.25 * part;
    std::array<Complex, kTerms> w;
    w[0] = chord;
    Complex v{(end.im - start.im - d * chord.re) * part, (start.re - end.re - d * chord.im) * part};
    w[1] = {(start.im + end.im - 2.0 * chord.im - d * v.re - a * chord.re) * quarter,
            (2.0 * chord.re - start.re - end.re - d * v.im - a * chord.im) * quarter};
    for (std::size_t n = 1; n + 1 < kTerms; ++n) {
        const double order = static_cast<double>(n);
        const Complex both = (2.0 + 4.0 * order) * w[n] + order * w[n - 1];
        v = {(-order * v.im - d * w[n].re) * part, (order * v.re - d * w[n].im) * part};
        w[n + 1] = {(-both.im - d * v.re - a * w[n].re) * quarter, (both.re - d * v.im - a * w[n].im) * quarter};
    }
    return {{chord.re, -w[1].im, w[2].re / -2.0, w[3].im / 6.0, w[4].re / 24.0, w[5].im / -120.0},
            {chord.im, w[1].re, w[2].im / -2.0, w[3].re / -6.0, w[4].im / 24.0, w[5].re / 120.0}};
}

double valueAt(const std::array<double, kTerms>& c, double x) {
    const double square = x * x;
    return (c[0] + x * c[1]) + square * ((c[2] + x * c[3]) + square * (c[4] + x * c[5]));
}

double slopeAt(const std::array<double, kTerms>& c, double x) {
    const double square = x * x;
    return (c[1] + x * (2.0 * c[2])) + square * ((3.0 * c[3] + x * (4.0 * c[4])) + square * (5.0 * c[5]));
}

// The change of A at which Y is 0: from the linear one by a Newton step, and two more with its slope, which leave 1e-16.
double rootOf(const std::array<double, kTerms>& y) {
    double change = -y[0] / y[1];
    const double inverse = 1.0 / slopeAt(y, change);
    for (int step = 0; step < 3; ++step) {
        change -= valueAt(y, change) * inverse;
    }
    return change;
}

// Y' alone, by Simpson's rule; its weight t^2 - t is 0 at both ends.
double slopeOfSmall(double a, double b, double f0) {
    constexpr int kParts = 16;
    double sum = 0.0;
    for (int part = 1; part < kParts; ++part) {
        const double t = static_cast<double>(part) / kParts;
        sum += (part % 2 == 1 ? 4.0 : 2.0) * (t * t - t) * std::cos(f0 + t * (b + a * t));
    }
    return sum / (3.0 * kParts);
}

// Newton's method with the series of the chord, which mostly leads to the root at once.
Solution solve(double f0, double f1) {
    const double d = f1 - f0;
    const Complex start = onUnitCircle(f0);
    const Complex end = onUnitCircle(f1);
    Solution best;
    best.y = std::numeric_limits<double>::infinity();
    double a = firstGuess(f0, f1);
    for (int step = 0; step < kMostG1Steps; ++step) {
        const Complex h = start * unitChord(d - a, a);
        const bool better = std::abs(h.im) < std::abs(best.y);
        if (better) {
            best = {a, h.re, h.im, false};
        }
        if (std::abs(h.im) <= kGoodEnough || (!better && step > 8)) {
            break;
        }
        double move = 0.0;
        if (std::abs(a) > kSmall) {
            const ChordSeries series = chordSeries(a, d, start, end, h);
            if (std::abs(a) > kSteady) {
                move = rootOf(series.y);
                if (std::abs(move) <= std::min(kMostSeriesChange, a * a / 3.0)) {
                    const double x = valueAt(series.x, move);
                    return {a + move, x, valueAt(series.y, move), x > 0.0};
                }
            } else {
                move = -h.im / series.y[1];
            }
        } else {
            move = -h.im / slopeOfSmall(a, d - a, f0);
        }
        const double next = a + std::clamp(move, -1.0, 1.0);
        if (next == a || !std::isfinite(move)) {
            break;
        }
        a = next;
    }
    best.good = std::abs(best.y) <= kGood && best.x > 0.0;
    return best;
}

} // namespace

std::optional<Curve> fitG1(const Pose& from, const Pose& to) {
    const double dx = to.point.x - from.point.x;
    const double dy = to.point.y - from.point.y;
    const double chord = lengthOf(dx, dy);
    if (!(chord > 0.0) || !std::isfinite(chord)) {
        return std::nullopt;
    }
    const double direction = std::atan2(dy, dx);
    const double f0 = wrappedTurn(from.azimuth - direction);
    const double f1 = wrappedTurn(to.azimuth - direction);
    Solution best = solve(f0, f1);
    double turn = f1 - f0;
    if (std::abs(turn) > kPi) {
        // The other way round: the angle that is nearer to half a circle passes it.
        const double round = turn > 0.0 ? kTwoPi : -kTwoPi;
        const bool atStart = std::abs(f0) >= std::abs(f1);
        const double g0 = atStart ? f0 + round : f0;
        const double g1 = atStart ? f1 : f1 - round;
        const Solution other = solve(g0, g1);
        if (other.good && (!best.good || other.x > best.x)) {
            best = other;
            turn = g1 - g0;
        }
    }
    if (!best.good) {
        return std::nullopt;
    }
    const double length = chord / best.x;
    const Curve curve{from, length, (turn - best.a) / length, (turn + best.a) / length};
    return isUsable(curve) ? std::optional(curve) : std::nullopt;
}

} // namespace fenmark::curve
