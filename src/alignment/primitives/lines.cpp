// Points, lines and segments.
//
// Symbols: a line is the point o and the unit direction u; p is the point asked about. Everything holds in either
// plane, with angles from +x towards +y. The formulas are those of plane analytic geometry: for the foot, the distance
// and the crossing of lines the scalar and the cross product of u and p - o.
#include "fenmark/alignment/primitives.h"

#include "alignment/calelm/answer.h"
#include "alignment/primitives/plane.h"
#include "alignment/primitives/tools.h"

namespace plane = fenmark::alignment::plane;
using fenmark::alignment::allFinite;
using fenmark::alignment::giveOutReal;
using fenmark::alignment::giveOutReals;
using fenmark::alignment::kAngleStep;
using fenmark::alignment::kDirectionZero;
using fenmark::alignment::kLengthStep;
using fenmark::alignment::kTwoPi;
using plane::Vec;

namespace {

// Half widths of the neighbourhood that CDpoionls looks at, metres and square metres.
constexpr double kNearLineBox = 2.0;
constexpr double kNearLineSquared = 16.0;

// Direction of the line (x0, y0)->(x1, y1); one too short to have a direction counts as 0.
double directionOrZero(double x0, double y0, double x1, double y1) {
    const Vec along{x1 - x0, y1 - y0};
    return plane::norm(along) < kDirectionZero ? 0.0 : plane::direction(along);
}

} // namespace

namespace fenmark::alignment {

double distanceToLine(const double line[4], const double p[2]) {
    // |p - o|^2 - dot^2 is the square of the cross product with the unit direction, which loses no digits far out.
    const Vec toPoint{p[0] - line[0], p[1] - line[1]};
    const double across = plane::cross({line[2], line[3]}, toPoint);
    const double squared = across * across;
    return squared < kSquaredDistanceZero ? 0.0 : std::fabs(across);
}

} // namespace fenmark::alignment

extern "C" {

int CDlinstd(double x0, double y0, double x1, double y1, double line[4]) {
    const Vec along{x1 - x0, y1 - y0};
    const double length = plane::norm(along);
    if (!(length >= kDirectionZero) || !std::isfinite(length)) {
        return 1;
    }
    line[0] = x0;
    line[1] = y0;
    line[2] = along.x / length;
    line[3] = along.y / length;
    return 0;
}

int CDlineang(const double line[4], double* angle) {
    return giveOutReal(plane::direction(line[2], line[3]), angle);
}

double CDbtwang(double x0, double y0, double x1, double y1, double x2, double y2, double x3, double y3) {
    double between = directionOrZero(x2, y2, x3, y3) - directionOrZero(x0, y0, x1, y1);
    if (std::fabs(between) < kAngleStep) {
        return 0.0;
    }
    if (between < 0.0) {
        between += kTwoPi;
    }
    // Two directions on either side of +x differ by nearly a full turn and are the same direction all the same.
    if (between < kAngleStep || kTwoPi - between < kAngleStep) {
        return 0.0;
    }
    return between;
}

int CDlincros(const double line1[4], const double line2[4], double* x, double* y) {
    const Vec u{line1[2], line1[3]};
    const Vec v{line2[2], line2[3]};
    const double determinant = plane::cross(u, v);
    if (!(std::fabs(determinant) >= kDirectionZero)) {
        return 1;
    }
    const Vec gap{line2[0] - line1[0], line2[1] - line1[1]};
    const double t = plane::cross(gap, v) / determinant;
    const Vec crossing = Vec{line1[0], line1[1]} + t * u;
    if (!allFinite(crossing.x, crossing.y)) {
        return 1;
    }
    *x = crossing.x;
    *y = crossing.y;
    return 0;
}

int CDpldist(const double line[4], const double p[2], double* d) {
    return giveOutReal(fenmark::alignment::distanceToLine(line, p), d);
}

int CDpojpoi(const double line[4], const double p[2], double foot[2]) {
    // cos(angle) |p - o| is the scalar product of the direction and p - o.
    const Vec u{line[2], line[3]};
    const Vec o{line[0], line[1]};
    const double along = plane::dot(u, Vec{p[0], p[1]} - o);
    return giveOutReals<2>({o.x + u.x * along, o.y + u.y * along}, foot);
}

int CDpoiinseg(const double a[2], const double b[2], const double p[2]) {
    const double fromA = std::hypot(p[0] - a[0], p[1] - a[1]);
    const double fromB = std::hypot(p[0] - b[0], p[1] - b[1]);
    if (fromB < kLengthStep) {
        return 2;
    }
    if (fromA < kLengthStep) {
        return 1;
    }
    const double length = std::hypot(b[0] - a[0], b[1] - a[1]);
    return length - fromA > 0.0 && length - fromB > 0.0 ? 0 : -1;
}

int CDpoionls(double px, double py, double ax, double ay, double bx, double by) {
    const Vec toPoint{px - ax, py - ay};
    if (plane::norm(toPoint) <= kLengthStep) {
        return 1;
    }
    if (std::hypot(px - bx, py - by) <= kLengthStep) {
        return 2;
    }
    const bool inBox = px >= std::fmin(ax, bx) - kNearLineBox && px <= std::fmax(ax, bx) + kNearLineBox &&
                       py >= std::fmin(ay, by) - kNearLineBox && py <= std::fmax(ay, by) + kNearLineBox;
    if (!inBox) {
        return -1;
    }
    // Not divided by the length of b - a: a longer line lets every point near it pass, on which callers rely.
    const double t = plane::dot({bx - ax, by - ay}, toPoint);
    return plane::dot(toPoint, toPoint) - t * t <= kNearLineSquared ? 0 : -1;
}

int CDsegcros(const double a[2], const double b[2], const double c[2], const double d[2], double out[2]) {
    double first[4];
    double second[4];
    if (CDlinstd(a[0], a[1], b[0], b[1], first) != 0 || CDlinstd(c[0], c[1], d[0], d[1], second) != 0) {
        return 1;
    }
    double crossing[2];
    if (CDlincros(first, second, &crossing[0], &crossing[1]) != 0) {
        return 1;
    }
    const int onFirst = CDpoiinseg(a, b, crossing);
    const int onSecond = CDpoiinseg(c, d, crossing);
    int result = -1;
    if (onSecond == 1 || onSecond == 2) {
        // An end of the second segment is reported first, wherever the first segment ends.
        result = 20 + onSecond;
    } else if (onFirst >= 0 && onSecond == 0) {
        result = onFirst == 0 ? 0 : 10 + onFirst;
    }
    if (result >= 0) {
        out[0] = crossing[0];
        out[1] = crossing[1];
    }
    return result;
}

int CDmove(double dx, double dy, double* x1, double* y1, double* x2, double* y2) {
    const std::array<double, 4> moved{*x1 + dx, *y1 + dy, *x2 + dx, *y2 + dy};
    if (!allFinite(moved[0], moved[1], moved[2], moved[3])) {
        return -1;
    }
    *x1 = moved[0];
    *y1 = moved[1];
    *x2 = moved[2];
    *y2 = moved[3];
    return 0;
}

int CDmoveP(double x, double y, double dx, double dy, double* ox, double* oy) {
    if (!allFinite(x + dx, y + dy)) {
        return -1;
    }
    *ox = x + dx;
    *oy = y + dy;
    return 0;
}

int CDrotpoi(const double c[2], double cosine, double sine, const double p[2], double out[2]) {
    const Vec centre{c[0], c[1]};
    const Vec result = centre + plane::turned(Vec{p[0], p[1]} - centre, cosine, sine);
    return giveOutReals<2>({result.x, result.y}, out);
}

int CDmirAng(double a, double* out) {
    return giveOutReal(fenmark::alignment::mirroredDirection(a), out);
}

} // extern "C"
