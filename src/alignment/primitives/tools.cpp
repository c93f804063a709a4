// Positions on elements, cuts with circles, common tangents of circles.
//
// Symbols: o, u point and unit direction of a line; c centre and r radius of a circle; D distance of two centres.
// Sources: plane analytic geometry. A line and a circle: with w = o - c the half chord squared is
// r^2 - (u x w)^2, a quarter of the discriminant of |w + t u|^2 = r^2. Two circles: Heron's formula for the triangle of
// the centres and a cut. Tangents of two circles: the angle at either centre between the line of centres and the
// radius to the foot is acos((r1 + r2) / D) for the inner and acos((r2 - r1) / D) for the outer tangents.
#include "alignment/primitives/tools.h"

#include "alignment/primitives/plane.h"

#include <algorithm>

namespace fenmark::alignment {

using plane::Vec;

namespace {

// Discriminant of lineCircleCross below which the line touches, square metres times the squared span of p and q. Seen: 0, 404.
constexpr double kTouchDiscriminant = 1e-5;
// Near-tangency of circleCross, for a larger radius of at least 1. Seen, as a share of the limit: 0.12, 1.15.
constexpr double kTouchScaleLarge = 1.5 * kCircleTouchLarge;

Vec vec(const double p[2]) {
    return {p[0], p[1]};
}

void put(Vec from, double to[2]) {
    to[0] = from.x;
    to[1] = from.y;
}

} // namespace

int elementPosition(const double p[2], const Calelm& rec) {
    if (rec.type == element::kArc) {
        return arcPosition(p, rec);
    }
    if (rec.type != element::kStraight) {
        return position::kNone;
    }
    const Vec span{rec.ex - rec.sx, rec.ey - rec.sy};
    if (std::fabs(span.x) < kParameterZero && std::fabs(span.y) < kParameterZero) {
        return position::kNone;
    }
    const double chord = plane::norm(span);
    const double along = plane::dot(span, vec(p) - Vec{rec.sx, rec.sy}) / chord;
    if (!std::isfinite(along)) {
        return position::kNone;
    }
    if (along < -kLengthStep) {
        return position::kBefore;
    }
    return along > chord + kLengthStep ? position::kBeyond : position::kInside;
}

int arcPosition(const double p[2], const Calelm& rec) {
    const Vec centre{rec.k1, rec.k2};
    const Vec radial = vec(p) - centre;
    if (!(std::fabs(plane::norm(radial) - rec.par) <= kLengthStep)) {
        return position::kNone;
    }
    const double atStart = plane::direction(Vec{rec.sx, rec.sy} - centre);
    double toEnd = plane::direction(Vec{rec.ex, rec.ey} - centre) - atStart;
    double toPoint = plane::direction(radial) - atStart;
    if (rec.dir == -1.0) {
        toEnd = -toEnd;
        toPoint = -toPoint;
    }
    toEnd = plane::wrapped(toEnd);
    toPoint = plane::wrapped(toPoint);
    // An angle of the length step at the rim, so that the last bit of an end's own radial direction decides nothing.
    const double allowance = kLengthStep / rec.par;
    if (toPoint <= toEnd + allowance || kTwoPi - toPoint <= allowance) {
        return position::kInside;
    }
    return plane::wrapped(toEnd + kPi) > toPoint ? position::kBeyond : position::kBefore;
}

double signedDistance(const double p[2], const double line[4]) {
    // sin(x) |p - o|, with x the angle from the line to o->p, is the cross product with the unit direction.
    return plane::cross({line[2], line[3]}, vec(p) - Vec{line[0], line[1]});
}

int lineCircleRoots(const double line[4], const double centre[2], double r, double p1[2], double p2[2]) {
    const Vec u{line[2], line[3]};
    const Vec fromCentre = Vec{line[0], line[1]} - vec(centre);
    const double a = plane::dot(u, u);
    const double halfB = plane::dot(u, fromCentre);
    const double across = plane::cross(u, fromCentre);
    double discriminant = 4.0 * (a * r * r - across * across);
    if (!(discriminant >= -kParameterZero)) {
        return -1;
    }
    if (discriminant < kParameterZero) {
        discriminant = 0.0;
    }
    const double root = 0.5 * std::sqrt(discriminant);
    const Vec origin{line[0], line[1]};
    put(origin + (-halfB + root) / a * u, p1);
    put(origin + (-halfB - root) / a * u, p2);
    return 0;
}

int circleCross(double x1, double y1, double r1, double x2, double y2, double r2, double p1[2], double p2[2]) {
    put({}, p1);
    put({}, p2);
    const Vec c2{x2, y2};
    const Vec toFirst{x1 - x2, y1 - y2};
    const double D2 = plane::dot(toFirst, toFirst);
    const double D = std::sqrt(D2);
    if (!(D <= r1 + r2) || D == 0.0) {
        return -1;
    }
    // 2 (r1^2 + r2^2) D^2 - D^4 - (r1^2 - r2^2)^2 in factors, which keep their digits near a touch.
    const double W = (r1 + r2 - D) * (r1 + r2 + D) * (D - (r1 - r2)) * (D + (r1 - r2));
    const double r = std::max(r1, r2);
    const double touch = r >= 1.0 ? kTouchScaleLarge * std::sqrt(r) * r * r * r : kCircleTouchSmall * r * r * r * r;
    if (!(W >= -touch)) {
        return -1;
    }
    const double h = 0.5 / D2;
    const double g = 0.5 - h * (r1 - r2) * (r1 + r2);
    const Vec base = c2 + g * toFirst;
    if (W < touch) {
        put(base, p1);
        put(base, p2);
        return 1;
    }
    const double e = std::sqrt(W) * h;
    put(base + e * Vec{-toFirst.y, toFirst.x}, p1);
    put(base + e * Vec{toFirst.y, -toFirst.x}, p2);
    return 0;
}

int lineCircleCross(const Calelm& rec, const double p[2], const double q[2], double p1[2], double p2[2]) {
    const Vec span = vec(q) - vec(p);
    const Vec fromCentre = vec(p) - Vec{rec.k1, rec.k2};
    const double a = plane::dot(span, span);
    const double halfB = plane::dot(span, fromCentre);
    const double across = plane::cross(span, fromCentre);
    const double discriminant = a * rec.par * rec.par - across * across;
    if (!(discriminant > -kTouchDiscriminant) || !(a > 0.0)) {
        return -1;
    }
    if (discriminant < kTouchDiscriminant) {
        put(vec(p) + (-halfB / a) * span, p1);
        put(vec(p) + (-halfB / a) * span, p2);
        return 1;
    }
    const double root = std::sqrt(discriminant);
    put(vec(p) + ((-halfB + root) / a) * span, p1);
    put(vec(p) + ((-halfB - root) / a) * span, p2);
    return 2;
}

int innerTangent(double x1, double y1, double r1, double x2, double y2, double r2, double foot1[2], double foot2[2],
                 double dir) {
    const Vec toFirst{x1 - x2, y1 - y2};
    const double D = plane::norm(toFirst);
    if (!(r1 + r2 <= D) || D == 0.0) {
        return -1;
    }
    const double cosine = (r1 + r2) / D;
    const double sine = std::sqrt((1.0 - cosine) * (1.0 + cosine));
    const Vec u = plane::turned((1.0 / D) * toFirst, cosine, dir == -1.0 ? sine : -sine);
    put(Vec{x1, y1} - r1 * u, foot1);
    put(Vec{x2, y2} + r2 * u, foot2);
    return 0;
}

int outerTangent(double x1, double y1, double r1, double x2, double y2, double r2, double a1[2], double a2[2],
                 double b1[2], double b2[2]) {
    const Vec toFirst{x1 - x2, y1 - y2};
    const double D = plane::norm(toFirst);
    if (!(std::fabs(r2 - r1) <= D) || D == 0.0) {
        return -1;
    }
    const double cosine = (r2 - r1) / D;
    const double sine = std::sqrt((1.0 - cosine) * (1.0 + cosine));
    const Vec along = (1.0 / D) * toFirst;
    const Vec left = plane::turned(along, cosine, -sine);
    const Vec right = plane::turned(along, cosine, sine);
    put(Vec{x1, y1} + r1 * left, a1);
    put(Vec{x2, y2} + r2 * left, a2);
    put(Vec{x1, y1} + r1 * right, b1);
    put(Vec{x2, y2} + r2 * right, b2);
    return 0;
}

} // namespace fenmark::alignment
