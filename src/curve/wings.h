// A curve taken apart where its curvature changes sign, each wing seen from its flatter end.
//
// On a wing the osculating circles lie one inside the other [Kneser 1912], so everything beyond a point, towards the
// sharper end, lies within the circle there.
#pragma once

#include "curve/curve.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace fenmark::curve {

struct Wing {
    double flat = 0.0;      // where it is flattest, length along the curve
    double sharp = 0.0;     // where it is sharpest; may lie before `flat`
    double curvature = 0.0; // at the flat end, as travelled from there; not negative, turns count as positive
    double growth = 0.0;    // of it for each metre, not negative
    double side = 1.0;      // of the curve's curvature: 1 right, -1 left
    double turn = 0.0;      // of the whole wing, not negative

    [[nodiscard]] double length() const { return std::abs(sharp - flat); }
    // Where the wing has turned by an angle since its flat end: the root of c s^2 / 2 + k s = angle, without cancellation.
    [[nodiscard]] double alongAtTurn(double angle) const {
        const double root = std::sqrt(curvature * curvature + 2.0 * growth * angle);
        const double away = angle <= 0.0 ? 0.0 : std::min(2.0 * angle / (curvature + root), length());
        return sharp >= flat ? flat + away : flat - away;
    }
};

struct Wings {
    std::array<Wing, 2> wing;
    std::size_t count = 0;
};

inline Wings wingsOf(const Curve& curve) {
    Wings wings;
    const auto add = [&](double flat, double sharp, double kFlat, double kSharp) {
        Wing wing;
        wing.flat = flat;
        wing.sharp = sharp;
        wing.curvature = std::abs(kFlat);
        const double length = std::abs(sharp - flat);
        wing.growth = length > 0.0 ? (std::abs(kSharp) - std::abs(kFlat)) / length : 0.0;
        wing.side = kSharp < 0.0 ? -1.0 : 1.0;
        wing.turn = 0.5 * (std::abs(kSharp) + std::abs(kFlat)) * length;
        wings.wing[wings.count++] = wing;
    };
    const double k0 = curve.startCurvature;
    const double k1 = curve.endCurvature;
    if (k0 != 0.0 && k1 != 0.0 && (k0 < 0.0) != (k1 < 0.0)) {
        const double middle = curve.length * (k0 / (k0 - k1));
        add(middle, 0.0, 0.0, k0);
        add(middle, curve.length, 0.0, k1);
    } else if (std::abs(k0) <= std::abs(k1)) {
        add(0.0, curve.length, k0, k1);
    } else {
        add(curve.length, 0.0, k1, k0);
    }
    return wings;
}

} // namespace fenmark::curve
