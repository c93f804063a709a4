// Curves for the tests: seeded ones of every kind, and plain ways to look at them that share no formula with the library.
#pragma once

#include "curve/curve.h"
#include "support/random.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <ostream>
#include <sstream>
#include <string>

namespace fenmark::curve {

inline void PrintTo(const Curve& curve, std::ostream* out) {
    out->precision(17);
    *out << "{{{" << curve.start.point.x << ", " << curve.start.point.y << "}, " << curve.start.azimuth << "}, "
         << curve.length << ", " << curve.startCurvature << ", " << curve.endCurvature << "}";
}

inline void PrintTo(const Point& point, std::ostream* out) {
    out->precision(17);
    *out << "{" << point.x << ", " << point.y << "}";
}

} // namespace fenmark::curve

namespace fenmark::curve_test {

using namespace fenmark::curve;

// How many cases a seeded test takes: the given number, or FENMARK_CURVE_CASES for a full run.
inline int cases(int few) {
    const char* wanted = std::getenv("FENMARK_CURVE_CASES");
    return wanted != nullptr && std::atoi(wanted) > 0 ? std::atoi(wanted) : few;
}

inline double distance(const Point& a, const Point& b) {
    return std::hypot(a.x - b.x, a.y - b.y);
}

// A small number in words, for the figures that a test records.
inline std::string inShort(double value) {
    std::ostringstream text;
    text << value;
    return text.str();
}

class RandomCurves : public test::Random {
  public:
    using test::Random::Random;

    Pose pose(double extent) { return {{uniform(-extent, extent), uniform(-extent, extent)}, uniform(-10.0, 10.0)}; }

    // Straights, arcs, clothoids from the inflection either way, egg-shaped, S-shaped, flat, sharp, spiralling.
    Curve curve(double extent = 1e5) {
        Curve curve;
        curve.start = pose(extent);
        const double radius = sign() * scaled(15.0, 5000.0);
        curve.length = scaled(5.0, 800.0);
        switch (pick(9)) {
        case 0:
            break;
        case 1:
            curve.startCurvature = curve.endCurvature = 1.0 / radius;
            break;
        case 2:
            curve.endCurvature = 1.0 / radius;
            break;
        case 3:
            curve.startCurvature = 1.0 / radius;
            break;
        case 4:
            curve.startCurvature = 1.0 / radius;
            curve.endCurvature = curve.startCurvature * uniform(0.2, 3.0);
            break;
        case 5:
            curve.startCurvature = 1.0 / radius;
            curve.endCurvature = -1.0 / (radius * uniform(0.3, 3.0));
            break;
        case 6:
            curve.startCurvature = 1.0 / radius;
            curve.endCurvature = curve.startCurvature * (1.0 + sign() * scaled(1e-12, 1e-2));
            break;
        case 7:
            curve.startCurvature = sign() * scaled(1e-9, 1e-6);
            curve.endCurvature = sign() * scaled(1e-9, 1e-6);
            break;
        default:
            curve.startCurvature = sign() * scaled(1e-4, 0.5);
            curve.endCurvature = sign() * scaled(1e-2, 1.0);
            break;
        }
        return curve;
    }
    // One whose curvature changes.
    Curve clothoid(double extent = 1e5) {
        for (;;) {
            const Curve found = curve(extent);
            if (found.startCurvature != found.endCurvature) {
                return found;
            }
        }
    }
};

// The whole turn of a curve, back and forth, from many small parts.
inline double turnOf(const Curve& curve) {
    return std::max(std::abs(curve.startCurvature), std::abs(curve.endCurvature)) * curve.length;
}

} // namespace fenmark::curve_test
