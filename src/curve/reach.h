// The nearest point of a curve to a point within its reach, with a few looks.
//
// A curve that turns by no more than a quarter of a circle has no second nearest point within the distance of its smallest
// radius, which is called its reach. There Newton's method with the second derivative (Halley's) ends at the only one.
//
// Symbols: g component along the tangent of the way from the curve to the point, e component to its right, k curvature, c
// its growth; g' = k e - 1, g'' = c e - k^2 g, e' = -k g. A nearest point has g = 0.
#pragma once

#include <algorithm>
#include <cmath>
#include <optional>

namespace fenmark::curve {

// What was seen last, and the step from there to the foot: 0 at an end that the point lies beyond, where g is not 0.
template <typename Seen>
struct WithinReach {
    Seen seen;
    double along = 0.0; // of the foot
    double move = 0.0;
    double e = 0.0; // at the foot
};

// Whether what Halley's method leaves of a step is nothing beside the length:
// ((g'' / 2 g')^2 - g''' / 6 g') move^3 with g''' = -3 c k g - k^2 g'. Beside an inflection, where all that vanishes on the
// curve itself, c^2 move^5 is left; seen: 0.058 of it.
template <typename Seen>
bool settled(const Seen& seen, double growth, double bend, double move, double length) {
    constexpr double kLeft = 1e-14; // of the length. Seen in 26,000 seeded cases, rounding included: 3.5e-14
    const double slope = seen.k * seen.e - 1.0;
    const double half = 0.5 * bend / slope;
    const double rest = half * half + (seen.k * seen.k + 3.0 * growth * seen.k * seen.g / slope) / 6.0;
    const double change = growth * move * move;
    return (std::abs(rest * move * move) + change * change / 16.0) * std::abs(move) < kLeft * length;
}

// `at(along)` sees the point from there: g, e, k. `sharpest` is the largest curvature, not negative. Nothing where the point
// is, or may be, out of reach.
template <typename At>
auto nearestWithinReach(double length, double growth, double sharpest, const At& at)
    -> std::optional<WithinReach<decltype(at(0.0))>> {
    constexpr int kMostSteps = 6;  // Seen: 5
    constexpr double kReach = 0.9; // of the smallest radius; the rest is for rounding
    double along = 0.5 * length;
    for (int step = 0; step < kMostSteps; ++step) {
        const auto seen = at(along);
        if (!(std::abs(seen.e) * sharpest < kReach)) {
            break;
        }
        const double slope = seen.k * seen.e - 1.0;
        const double bend = growth * seen.e - seen.k * seen.k * seen.g;
        // Halley's step -2 g g' / (2 g'^2 - g g''), or Newton's -g / g' where they differ by more than half; one division.
        const double curving = seen.g * bend;
        const double halved = 2.0 * slope * slope - curving;
        const bool agree = std::abs(curving) < 0.5 * std::abs(halved);
        const double move = (agree ? -2.0 * seen.g * slope : -seen.g) / (agree ? halved : slope);
        const double next = std::clamp(along + move, 0.0, length);
        if (next == along) {
            if ((seen.g * seen.g + seen.e * seen.e) * sharpest * sharpest < kReach * kReach) {
                return WithinReach<decltype(at(0.0))>{seen, along, 0.0, seen.e};
            }
            break;
        }
        if (agree && next == along + move && std::abs(move) < 0.01 * length &&
            settled(seen, growth, bend, move, length)) {
            // The rest of the way by Taylor's series: e'' = -c g - k g', e''' = -2 c g' - k g''.
            const double second = growth * seen.g + seen.k * slope;
            const double third = 2.0 * growth * slope + seen.k * bend;
            const double e = seen.e - move * (seen.k * seen.g + move * (0.5 * second + move * third / 6.0));
            if (e * e * sharpest * sharpest < kReach * kReach) {
                return WithinReach<decltype(at(0.0))>{seen, next, move, e};
            }
        }
        along = next;
    }
    return std::nullopt;
}

} // namespace fenmark::curve
