// An independent, high-precision way to lay tangent chains, and checks of chains against it.
//
// It shares nothing with the library but the record Calelm, so that a solver can be tested by the way back: lay a chain
// here, hand over what is given, and require the chain again.
//
// Symbols: kappa curvature (1/m), positive to the left; s the length run; phi the tangent's angle in the calculation
// plane, phi(s) = phi0 + integral of kappa. Poses and records are in the survey plane (x north, y east, azimuths run
// clockwise on the map), so azimuth = -phi and y = -y'. Every element is the curve of linear curvature, integrated by
// Gauss-Legendre quadrature in long double, which is good to better than 1e-12 m for elements of survey size.
#pragma once

#include "support/random.h"

#include <fenmark/alignment/record.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <initializer_list>
#include <numbers>
#include <span>
#include <string>
#include <vector>

namespace fenmark::exact {

using Real = long double;
inline constexpr Real kPi = std::numbers::pi_v<Real>;

// Two ends that should be one point, metres; where both were rounded to 1e-5 the wider one.
inline constexpr double kJointTolerance = 1e-5;
inline constexpr double kRoundedJointTolerance = 1e-4;
// Two tangents that should be one, radians.
inline constexpr double kTangentTolerance = 1e-5;
// A record against the integration of its own curvature: end point in metres, end tangent in radians. The library's
// series stops at a change of 1e-4 m, which leaves an end good to about 1e-5 m, and directions of straights are rounded
// to 1.389e-6.
inline constexpr double kCurveTolerance = 1e-4;
inline constexpr double kCurveTangentTolerance = 1e-5;
// Azimuths nearer to 0 than this may read 0, and on a reversed element pi.
inline constexpr double kFallenAzimuth = 1e-5;
inline bool fallen_to_axis(double azimuth) {
    return azimuth == 0.0 || azimuth == std::numbers::pi;
}
// Sizes that should be those given: radii are rounded to 1.389e-6 m where an arc is laid from one end.
inline constexpr double kSizeTolerance = 1e-5;

inline constexpr int kStraightType = 1;
inline constexpr int kArcType = 2;
inline constexpr int kClothoidType = 3;

/// Where a chain stands: a point of the survey plane and the azimuth of travel.
struct Pose {
    Real x = 0;
    Real y = 0;
    Real azimuth = 0;
};

/// What an element is, without where it lies. Radii and parameters are positive, a radius of 0 is infinite.
struct Shape {
    int type = 0;
    double dir = 1.0; // +1 left, -1 right
    double par = 0.0; // arc: R; clothoid: A
    double r1 = 0.0;  // clothoid: radius at the start and at the end
    double r2 = 0.0;
    double len = 0.0; // metres
};

inline Shape straight(double len) {
    return {kStraightType, 1.0, 0.0, 0.0, 0.0, len};
}

inline Shape arc(double dir, double radius, double len) {
    return {kArcType, dir, radius, 0.0, 0.0, len};
}

inline double station_of(double a, double radius) {
    return radius == 0.0 ? 0.0 : a * a / radius;
}

/// A clothoid of parameter a between the radii r1 and r2, of any growth; both on one side of the inflection.
inline Shape clothoid(double dir, double a, double r1, double r2) {
    return {kClothoidType, dir, a, r1, r2, std::abs(station_of(a, r2) - station_of(a, r1))};
}

inline Real wrap_2pi(Real angle) {
    angle = std::fmod(angle, 2 * kPi);
    return angle < 0 ? angle + 2 * kPi : angle;
}

/// The difference a - b brought into (-pi, pi].
inline double angle_difference(Real a, Real b) {
    Real d = std::fmod(a - b, 2 * kPi);
    if (d > kPi) {
        d -= 2 * kPi;
    } else if (d <= -kPi) {
        d += 2 * kPi;
    }
    return static_cast<double>(d);
}

namespace detail {

struct GaussRule {
    static constexpr int order = 20;
    std::array<Real, order> node{};
    std::array<Real, order> weight{};

    // The roots of the Legendre polynomial by Newton's method from Tricomi's first guess.
    GaussRule() {
        for (int i = 0; i < order; ++i) {
            Real x = std::cos(kPi * (static_cast<Real>(i) + 0.75L) / (order + 0.5L));
            Real derivative = 0;
            for (int pass = 0; pass < 30; ++pass) {
                Real p0 = 1;
                Real p1 = x;
                for (int n = 2; n <= order; ++n) {
                    const Real p2 = ((2 * n - 1) * x * p1 - (n - 1) * p0) / n;
                    p0 = p1;
                    p1 = p2;
                }
                derivative = order * (x * p1 - p0) / (x * x - 1);
                x -= p1 / derivative;
            }
            const auto at = static_cast<std::size_t>(i);
            node[at] = x;
            weight[at] = 2 / ((1 - x * x) * derivative * derivative);
        }
    }
};

inline const GaussRule& gauss_rule() {
    static const GaussRule rule;
    return rule;
}

} // namespace detail

/// The pose after the length s of a curve whose curvature (left positive) is kappa + rate * s.
inline Pose advance(const Pose& from, Real kappa, Real rate, Real s) {
    const Real phi0 = -from.azimuth;
    const auto phi = [&](Real t) { return phi0 + t * (kappa + rate * t / 2); };
    const Real most = std::max(std::abs(kappa), std::abs(kappa + rate * s)) * std::abs(s);
    const int parts = 1 + static_cast<int>(std::min<Real>(most * 2, 1000));
    Real dx = 0;
    Real dy = 0;
    const auto& rule = detail::gauss_rule();
    const Real half = s / (2 * parts);
    for (int part = 0; part < parts; ++part) {
        const Real middle = half * (2 * part + 1);
        for (std::size_t i = 0; i < rule.node.size(); ++i) {
            const Real angle = phi(middle + half * rule.node[i]);
            dx += rule.weight[i] * std::cos(angle);
            dy += rule.weight[i] * std::sin(angle);
        }
    }
    return {from.x + half * dx, from.y - half * dy, wrap_2pi(-phi(s))};
}

/// Signed curvatures (left positive) at the start and the end of a shape.
inline std::array<Real, 2> curvatures(const Shape& shape) {
    if (shape.type == kArcType) {
        return {shape.dir / static_cast<Real>(shape.par), shape.dir / static_cast<Real>(shape.par)};
    }
    if (shape.type == kClothoidType) {
        const Real a2 = static_cast<Real>(shape.par) * shape.par;
        return {shape.dir * (shape.r1 == 0.0 ? 0 : a2 / shape.r1) / a2,
                shape.dir * (shape.r2 == 0.0 ? 0 : a2 / shape.r2) / a2};
    }
    return {0, 0};
}

/// The exact length: that of a clothoid follows from its radii.
inline Real length_of(const Shape& shape) {
    if (shape.type != kClothoidType) {
        return shape.len;
    }
    const Real a2 = static_cast<Real>(shape.par) * shape.par;
    return std::abs((shape.r2 == 0.0 ? 0 : a2 / shape.r2) - (shape.r1 == 0.0 ? 0 : a2 / shape.r1));
}

/// The pose at the station s of a shape that starts at `from`.
inline Pose pose_at(const Pose& from, const Shape& shape, Real s) {
    const auto kappa = curvatures(shape);
    const Real length = length_of(shape);
    return advance(from, kappa[0], length > 0 ? (kappa[1] - kappa[0]) / length : 0, s);
}

/// The centre of the circle of curvature of radius r at a pose, in the survey plane.
inline std::array<Real, 2> centre_at(const Pose& pose, double dir, Real radius) {
    // Left of an azimuth a is the direction (sin a, -cos a) in (x north, y east).
    return {pose.x + dir * radius * std::sin(pose.azimuth), pose.y - dir * radius * std::cos(pose.azimuth)};
}

/// tau, shift and Xm of the clothoid of parameter a at the radius r, exactly.
inline std::array<Real, 3> clothoid_values(Real a, Real r) {
    if (r == 0) {
        return {0, 0, 0};
    }
    const Real length = a * a / r;
    const Real tau = length / (2 * r);
    const Pose end = advance({0, 0, 0}, 0, 1 / (a * a), length);
    const Real x = end.x;
    const Real y = -end.y;
    return {tau, y + r * std::cos(tau) - r, x - r * std::sin(tau)};
}

/// The full record of a shape that starts at a pose; the pose moves on to its end.
inline Calelm lay(Pose& pose, const Shape& shape) {
    const Real length = length_of(shape);
    const Pose end = pose_at(pose, shape, length);
    Calelm e{};
    e.type = static_cast<std::int16_t>(shape.type);
    e.sx = static_cast<double>(pose.x);
    e.sy = static_cast<double>(pose.y);
    e.ex = static_cast<double>(end.x);
    e.ey = static_cast<double>(end.y);
    e.dir = shape.type == kStraightType ? 1.0 : shape.dir;
    e.par = shape.par;
    e.r1 = shape.r1;
    e.r2 = shape.r2;
    e.len = static_cast<double>(length);
    e.sang = static_cast<double>(wrap_2pi(pose.azimuth));
    e.eang = static_cast<double>(end.azimuth);
    if (shape.type == kStraightType) {
        const Real dx = end.x - pose.x;
        const Real dy = -(end.y - pose.y); // calculation plane
        const Real norm = std::hypot(dx, dy);
        e.k1 = static_cast<double>(dy / norm);
        e.k2 = static_cast<double>(dx / norm);
        e.k3 = static_cast<double>((dy * pose.x + dx * pose.y) / norm);
    } else if (shape.type == kArcType) {
        const auto centre = centre_at(pose, shape.dir, shape.par);
        e.k1 = static_cast<double>(centre[0]);
        e.k2 = static_cast<double>(centre[1]);
        e.k3 = static_cast<double>(length / shape.par);
    } else {
        const double sharp = shape.r1 == 0.0 ? shape.r2 : shape.r2 == 0.0 ? shape.r1 : std::min(shape.r1, shape.r2);
        const auto values = clothoid_values(shape.par, sharp);
        e.k1 = static_cast<double>(values[0]);
        e.k2 = static_cast<double>(values[1]);
        e.k3 = static_cast<double>(values[2]);
    }
    pose = end;
    return e;
}

/// A chain of records that follow each other tangentially from the start pose.
inline std::vector<Calelm> lay_chain(Pose start, std::span<const Shape> shapes) {
    std::vector<Calelm> chain;
    chain.reserve(shapes.size());
    for (const Shape& shape : shapes) {
        chain.push_back(lay(start, shape));
    }
    return chain;
}

inline std::vector<Calelm> lay_chain(const Pose& start, std::initializer_list<Shape> shapes) {
    return lay_chain(start, std::span<const Shape>(shapes.begin(), shapes.size()));
}

/// A record of which only the sizes are filled, as a caller hands it over to be made.
inline Calelm sizes_only(const Calelm& e) {
    Calelm out{};
    out.type = e.type;
    out.dir = e.dir;
    out.par = e.par;
    return out;
}

inline Pose start_of(const Calelm& e) {
    return {e.sx, e.sy, e.sang};
}
inline Pose end_of(const Calelm& e) {
    return {e.ex, e.ey, e.eang};
}

inline Shape shape_of(const Calelm& e) {
    return {e.type, e.dir, e.par, e.r1, e.r2, e.len};
}

/// The same element run the other way.
inline Calelm reversed(const Calelm& e) {
    Calelm out = e;
    out.sx = e.ex;
    out.sy = e.ey;
    out.ex = e.sx;
    out.ey = e.sy;
    out.sang = static_cast<double>(wrap_2pi(static_cast<Real>(e.eang) + kPi));
    out.eang = static_cast<double>(wrap_2pi(static_cast<Real>(e.sang) + kPi));
    if (e.type == kStraightType) {
        out.k1 = -e.k1;
        out.k2 = -e.k2;
        out.k3 = -e.k3;
    } else {
        out.dir = -e.dir;
        out.r1 = e.r2;
        out.r2 = e.r1;
    }
    return out;
}

inline std::vector<Calelm> reversed_chain(std::span<const Calelm> chain) {
    std::vector<Calelm> out;
    for (std::size_t i = chain.size(); i-- > 0;) {
        out.push_back(reversed(chain[i]));
    }
    return out;
}

/// The same arc, begun `before` metres earlier and ended `after` metres later (negative values shorten); or the same
/// straight.
inline Calelm extended(const Calelm& e, double before, double after) {
    Shape shape = shape_of(e);
    Pose start = pose_at(start_of(e), shape, -static_cast<Real>(before));
    shape.len = e.len + before + after;
    return lay(start, shape);
}

// ---- checks ----

inline std::string describe(const Calelm& e) {
    char text[512];
    std::snprintf(text, sizeof text,
                  "type %d (%.6f, %.6f) -> (%.6f, %.6f) dir %g par %.6f r1 %.6f r2 %.6f len %.6f sang %.8f eang %.8f "
                  "k %.6f %.6f %.6f",
                  e.type, e.sx, e.sy, e.ex, e.ey, e.dir, e.par, e.r1, e.r2, e.len, e.sang, e.eang, e.k1, e.k2, e.k3);
    return text;
}

inline double distance(double ax, double ay, double bx, double by) {
    return std::hypot(ax - bx, ay - by);
}

/// The end of one record and the start of the next: one point and one tangent.
inline ::testing::AssertionResult joined(const Calelm& a, const Calelm& b, double point_tolerance = kJointTolerance,
                                         double angle_tolerance = kTangentTolerance) {
    const double gap = distance(a.ex, a.ey, b.sx, b.sy);
    if (!(gap <= point_tolerance)) {
        return ::testing::AssertionFailure()
               << "gap of " << gap << " m between\n  " << describe(a) << "\n  " << describe(b);
    }
    const double kink = std::abs(angle_difference(a.eang, b.sang));
    if (!(kink <= angle_tolerance)) {
        return ::testing::AssertionFailure()
               << "kink of " << kink << " rad between\n  " << describe(a) << "\n  " << describe(b);
    }
    return ::testing::AssertionSuccess();
}

/// A record agrees with itself: its curvature, run from its start, leads to its end point and end tangent.
inline ::testing::AssertionResult true_to_itself(const Calelm& e, double point_tolerance = kCurveTolerance,
                                                 double angle_tolerance = kCurveTangentTolerance) {
    const Shape shape = shape_of(e);
    if (e.type < kStraightType || e.type > kClothoidType || !(e.len >= 0.0)) {
        return ::testing::AssertionFailure() << "no element: " << describe(e);
    }
    if (e.type != kStraightType && std::abs(e.dir) != 1.0) {
        return ::testing::AssertionFailure() << "no turning sense: " << describe(e);
    }
    if (std::abs(static_cast<double>(length_of(shape)) - e.len) > point_tolerance) {
        return ::testing::AssertionFailure() << "length does not fit the radii: " << describe(e);
    }
    const Pose end = pose_at(start_of(e), shape, length_of(shape));
    const double gap = distance(static_cast<double>(end.x), static_cast<double>(end.y), e.ex, e.ey);
    // A tangent that is off by an angle carries its end away by that angle times the length.
    if (!(gap <= point_tolerance + angle_tolerance * e.len)) {
        return ::testing::AssertionFailure() << "the curve ends " << gap << " m away from " << describe(e);
    }
    const double fallen = fallen_to_axis(e.sang) || fallen_to_axis(e.eang) ? kFallenAzimuth : 0.0;
    // The length of an arc is rounded to 1e-5 m, which turns a very small one.
    const double rounded = e.type == kArcType ? 0.5e-5 / e.par : 0.0;
    const double kink = std::abs(angle_difference(end.azimuth, e.eang));
    if (!(kink <= angle_tolerance + fallen + rounded)) {
        return ::testing::AssertionFailure() << "the curve ends " << kink << " rad off the tangent of " << describe(e);
    }
    return ::testing::AssertionSuccess();
}

/// Every record is true to itself and every joint coincides and is tangent.
inline ::testing::AssertionResult tangent_chain(std::span<const Calelm> chain, double point_tolerance = kJointTolerance,
                                                double angle_tolerance = kTangentTolerance) {
    for (std::size_t i = 0; i < chain.size(); ++i) {
        if (auto result = true_to_itself(chain[i]); !result) {
            return result << "\n  (element " << i << ")";
        }
        if (i > 0) {
            if (auto result = joined(chain[i - 1], chain[i], point_tolerance, angle_tolerance); !result) {
                return result << "\n  (joint " << i << ")";
            }
        }
    }
    return ::testing::AssertionSuccess();
}

inline ::testing::AssertionResult same_sizes(const Calelm& a, const Calelm& b) {
    const bool curved = a.type != kStraightType;
    if (a.type != b.type || (curved && a.dir != b.dir) || std::abs(a.par - b.par) > kSizeTolerance ||
        (a.type == kClothoidType &&
         (std::abs(a.r1 - b.r1) > kSizeTolerance || std::abs(a.r2 - b.r2) > kSizeTolerance))) {
        return ::testing::AssertionFailure() << "sizes differ:\n  " << describe(a) << "\n  " << describe(b);
    }
    return ::testing::AssertionSuccess();
}

/// The same element at the same place.
inline ::testing::AssertionResult same_element(const Calelm& a, const Calelm& b,
                                               double point_tolerance = kRoundedJointTolerance,
                                               double angle_tolerance = kTangentTolerance) {
    if (auto result = same_sizes(a, b); !result) {
        return result;
    }
    const auto turned = [&](double p, double q) {
        const double fallen = fallen_to_axis(p) || fallen_to_axis(q) ? kFallenAzimuth : 0.0;
        return std::abs(angle_difference(p, q)) > angle_tolerance + fallen;
    };
    if (distance(a.sx, a.sy, b.sx, b.sy) > point_tolerance || distance(a.ex, a.ey, b.ex, b.ey) > point_tolerance ||
        turned(a.sang, b.sang) || turned(a.eang, b.eang)) {
        return ::testing::AssertionFailure() << "places differ:\n  " << describe(a) << "\n  " << describe(b);
    }
    return ::testing::AssertionSuccess();
}

inline ::testing::AssertionResult same_chain(std::span<const Calelm> a, std::span<const Calelm> b,
                                             double point_tolerance = kRoundedJointTolerance,
                                             double angle_tolerance = kTangentTolerance) {
    if (a.size() != b.size()) {
        return ::testing::AssertionFailure() << a.size() << " elements against " << b.size();
    }
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (auto result = same_element(a[i], b[i], point_tolerance, angle_tolerance); !result) {
            return result << "\n  (element " << i << ")";
        }
    }
    return ::testing::AssertionSuccess();
}

/// Bit for bit the same record.
inline bool identical(const Calelm& a, const Calelm& b) {
    const auto same = [](double p, double q) { return p == q || (std::isnan(p) && std::isnan(q)); };
    return a.type == b.type && same(a.sx, b.sx) && same(a.sy, b.sy) && same(a.ex, b.ex) && same(a.ey, b.ey) &&
           same(a.dir, b.dir) && same(a.par, b.par) && same(a.r1, b.r1) && same(a.r2, b.r2) && same(a.len, b.len) &&
           same(a.sang, b.sang) && same(a.eang, b.eang) && same(a.k1, b.k1) && same(a.k2, b.k2) && same(a.k3, b.k3);
}

/// The same of all of them, in order.
inline bool all_identical(std::span<const Calelm> a, std::span<const Calelm> b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), identical);
}

// ---- seeded random sizes of survey scale ----

class Random : public test::Random {
  public:
    using test::Random::Random;

    /// A start pose in any quadrant: near the origin, or where a plane rectangular system has its towns.
    Pose pose() {
        const bool far = coin();
        const double reach = far ? 500.0 : 100.0;
        const double x = (far ? -36000.0 : 0.0) + uniform(-reach, reach);
        const double y = (far ? 12000.0 : 0.0) + uniform(-reach, reach);
        if (!cardinal_) {
            return {x, y, wrap_2pi(uniform(0.0, 2.0 * std::numbers::pi) + turned_)};
        }
        return {x, y, wrap_2pi(beside_axis())};
    }
    /// A direction along an axis of the plane or so little beside it that something happens to azimuths there: a turn
    /// below 1.389e-6 counts as none, and an azimuth below 1e-5 falls to 0 when it changes plane.
    double beside_axis() {
        constexpr double kBeside[] = {0.0, 1e-7, 5e-7, 1.3e-6, 1.4e-6, 5e-6, 9.9e-6, 1.02e-5, 1.1e-5};
        const double axis = std::numbers::pi / 2.0 * pick(4);
        const double by = coin() ? kBeside[pick(std::size(kBeside))] : uniform(0.0, 2e-5);
        return axis + sign() * by;
    }
    /// From now on poses head north, east, south or west, exactly or by less or little more than 1e-5 beside: where
    /// azimuths wrap, and where those below 1e-5 fall to 0 on their way between the planes.
    void head_along_axes(bool cardinal) { cardinal_ = cardinal; }
    /// From now on poses head this much further clockwise, radians.
    void turn_poses(double by) { turned_ = by; }
    /// Radius in metres of a road or track, 15 to 1000, the small ones as likely as the large ones.
    double radius(double low = 15.0, double high = 1000.0) { return scaled(low, high); }
    /// Clothoid parameter that suits the radius: R/A between 0.9 and 3, so tau between 0.06 and 0.62.
    double parameter(double radius) { return radius / uniform(0.9, 3.0); }
    /// Arc length for a sweep between the given angles.
    double arc_length(double radius, double least = 0.15, double most = 1.5) { return radius * uniform(least, most); }

  private:
    bool cardinal_ = false;
    double turned_ = 0.0;
};

} // namespace fenmark::exact
