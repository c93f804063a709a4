// Primitives on bare points and angles of the calculation plane: directions, line coefficients of form M, the centre,
// tangents and length of an arc. Axes: right-handed, angles from +x towards +y, so left of a direction is at +pi / 2.
// Symbols: p, q points, c centre, R radius, a line's coefficients a, b, c of form M (a x - b y = c in this plane).
#include <limits>

#include "alignment/calelm/planes.h"
#include "alignment/calelm/rounding.h"
#include "fenmark/alignment/clothoid.h"

using namespace fenmark::alignment;

namespace {

double direction(const double p[2], const double q[2]) {
    return directionOf(q[0] - p[0], q[1] - p[1]);
}

// An arc's tangent from its radial direction, brought into [0, 2 pi]; so close to 2 pi that it is 0 within the step, it
// is 0.
double tangentOf(double radial, double dir) {
    double t = dir == 1.0 ? radial + kHalfPi : radial - kHalfPi;
    if (t > kTwoPi) {
        t -= kTwoPi;
    } else if (t < 0.0) {
        t += kTwoPi;
    }
    return std::fabs(kTwoPi - t) < kSameAngle ? 0.0 : t;
}

} // namespace

extern "C" {

double ali_KAdjAng(double a) {
    if (!std::isfinite(a)) {
        return std::numeric_limits<double>::quiet_NaN();
    }
    if (std::fabs(a) > kSingleTurns * kTwoPi) {
        a = std::fmod(a, kTwoPi);
    }
    while (a > kTwoPi) {
        a -= kTwoPi;
    }
    while (a < 0.0) {
        a += kTwoPi;
    }
    return a;
}

double ali_KGetAng(const double p[2], const double q[2]) {
    return direction(p, q);
}

int ali_KCalCst(const double p[2], const double q[2], double* a, double* b, double* c) {
    const double dx = q[0] - p[0];
    const double dy = q[1] - p[1];
    const double aM = roundLength(dy);
    const double bM = roundLength(dx);
    const double cM = roundLength(dy * p[0] - dx * p[1]);
    const double norm = std::sqrt(aM * aM + bM * bM);
    if (!(norm > 0.0) || !std::isfinite(norm) || !std::isfinite(cM)) {
        return -1;
    }
    *a = aM / norm;
    *b = bM / norm;
    *c = cM / norm;
    return 0;
}

int ali_KGetPnt(const double p[2], const double q[2], double d, int limit, double out[2], double* angle) {
    const double dx = q[0] - p[0];
    const double dy = q[1] - p[1];
    const double chord = std::sqrt(dx * dx + dy * dy);
    if (samePoint(dx, dy) || !(d >= 0.0) || !std::isfinite(d) || !std::isfinite(chord)) {
        return -1;
    }
    // A length is rounded to the step and the chord is not, so a station at the end may exceed the chord by that much.
    if (limit != 0 && d > chord + kLengthStep) {
        return -1;
    }
    const double a = directionOf(dx, dy);
    const double x = p[0] + dx * d / chord;
    const double y = p[1] + dy * d / chord;
    if (!std::isfinite(x) || !std::isfinite(y)) {
        return -1;
    }
    out[0] = x;
    out[1] = y;
    *angle = a;
    return 0;
}

void ali_KMovPnt(double out[2], const double p[2], double d, double a) {
    const double x = p[0] + d * std::cos(a);
    const double y = p[1] + d * std::sin(a);
    out[0] = x;
    out[1] = y;
}

void ali_KRotPnt(double out[2], const double p[2], const double c[2], double theta) {
    const double dx = p[0] - c[0];
    const double dy = p[1] - c[1];
    const double radius = std::sqrt(dx * dx + dy * dy);
    const double angle = directionOf(dx, dy) + theta;
    const double x = c[0] + radius * std::cos(angle);
    const double y = c[1] + radius * std::sin(angle);
    out[0] = x;
    out[1] = y;
}

int ali_KEnCen(const double p[2], const double q[2], double dir, double R, double* cx, double* cy) {
    const double dx = q[0] - p[0];
    const double dy = q[1] - p[1];
    const double half2 = 0.25 * (dx * dx + dy * dy);
    const double chord = 2.0 * std::sqrt(half2);
    // The centre lies on the perpendicular through the middle of the chord. The absolute value keeps a centre for a
    // chord slightly too long for the radius.
    const double height = std::sqrt(std::fabs(R * R - half2));
    if (!std::isfinite(chord) || !std::isfinite(height)) {
        return -1;
    }
    // Left of p -> q; equal points count as a chord along +y.
    const double leftX = chord > 0.0 ? -dy / chord : -1.0;
    const double leftY = chord > 0.0 ? dx / chord : 0.0;
    const double side = dir == 1.0 ? height : -height;
    *cx = p[0] + 0.5 * dx + side * leftX;
    *cy = p[1] + 0.5 * dy + side * leftY;
    return 0;
}

int ali_KEnAng(const double p[2], const double q[2], double dir, double R, double cx, double cy, double* sang,
               double* eang, double* sweep, double* length) {
    const double a = directionOf(p[0] - cx, p[1] - cy);
    const double b = directionOf(q[0] - cx, q[1] - cy);
    double w = std::fabs(b - a);
    if (w > kPi) {
        w = kTwoPi - w;
    }
    *sang = tangentOf(a, dir);
    *eang = tangentOf(b, dir);
    *sweep = w;
    *length = R * w;
    return 0;
}

int ali_KEnPncl(double dir, double R, const double c[2], const double p[2], const double q[2], double* length) {
    const double a = direction(c, p);
    const double b = direction(c, q);
    double sweep = a <= b ? b - a : kTwoPi - (a - b);
    if (dir == -1.0) {
        sweep = kTwoPi - sweep;
    }
    *length = sweep * R;
    return 0;
}

int ali_KEnPntb(double dir, const double c[2], const double p[2], double theta, double out[2]) {
    ali_KRotPnt(out, p, c, dir == 1.0 ? theta : -theta);
    return 0;
}

int ali_KEnPntc(double dir, const double c[2], double t, double R, double out[2]) {
    double turned = t;
    if (dir != 1.0) {
        turned = t < kPi ? t + kPi : t - kPi;
    }
    const double x = c[0] - R * std::sin(turned);
    const double y = c[1] + R * std::cos(turned);
    out[0] = x;
    out[1] = y;
    return 0;
}

} // extern "C"
