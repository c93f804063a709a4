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
constexpr double kSmall = 1e-3;       // A below which the moments lose too many digits
constexpr double kSteady = 0.1;       // A above which those of higher order serve too

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

// Derivatives of Y by A.
struct Derivatives {
    double first = 0.0;  // int (t^2 - t) cos
    double second = 0.0; // -int (t^2 - t)^2 sin
    double third = 0.0;  // -int (t^2 - t)^3 cos
};

// From the moments C and S, the integrals of t^n cos and t^n sin, which follow one from the other by parts:
// 2 A C(n+1) + (d - A) C(n) = sin at the end - n S(n-1), and likewise for S.
Derivatives derivatives(double a, double b, const Complex& start, const Complex& end, const Complex& h) {
    const double scale = 1.0 / (2.0 * a);
    std::array<double, 7> c;
    std::array<double, 7> s;
    c[0] = h.re;
    s[0] = h.im;
    c[1] = (end.im - start.im - b * c[0]) * scale;
    s[1] = (start.re - end.re - b * s[0]) * scale;
    for (std::size_t n = 1; n < 6; ++n) {
        const double order = static_cast<double>(n);
        c[n + 1] = (end.im - order * s[n - 1] - b * c[n]) * scale;
        s[n + 1] = (order * c[n - 1] - end.re - b * s[n]) * scale;
    }
    return {c[2] - c[1], -(s[4] - 2.0 * s[3] + s[2]), -(c[6] - 3.0 * (c[5] - c[4]) - c[3])};
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

// Newton's method with three derivatives: mostly one step and a look.
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
            const Derivatives by = derivatives(a, d - a, start, end, h);
            move = -h.im / by.first;
            if (std::abs(a) > kSteady) {
                // The root of the cubic, from Newton's step on.
                for (int again = 0; again < 3; ++again) {
                    move = -(h.im + move * move * (0.5 * by.second + move * by.third / 6.0)) / by.first;
                }
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
