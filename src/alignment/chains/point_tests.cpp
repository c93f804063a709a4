// Small tests and constructions of points, lines and angles that several callers of the chains share.
//
// Everything here is plane geometry and holds in either plane; lengths are metres, angles radians.
#include "fenmark/alignment/chains.h"

#include "alignment/calelm/answer.h"
#include "alignment/calelm/tolerances.h"
#include "alignment/primitives/plane.h"

#include <cmath>

using namespace fenmark::alignment;
using plane::Vec;

namespace {

// Entries of a list count as reached within so many tolerances: the function's own measure, no error of computing.
constexpr double kEndReach = 6.0;

// Height of the triangle a, b, p over the base a b. Heron's formula gives the same value, but takes nearly equal
// lengths from one another when p is near the line (1e-5 m at a base of 1 km); the cross product does not. Not a number
// for a base of no length.
double heightOver(Vec a, Vec b, Vec p) {
    return std::fabs(plane::cross(b - a, p - a)) / plane::norm(b - a);
}

bool within(const AliIpEntry& entry, const double p[2], double reach) {
    return std::fabs(entry.x - p[0]) < reach && std::fabs(entry.y - p[1]) < reach;
}

} // namespace

extern "C" {

int chk_CSameAng(double a, double b) {
    return std::fabs(a - b) < kOneSecond ? 0 : -1;
}

int chk_on_tangent(int n, const AliIpEntry* list, const double p[2], int* index, double tol) {
    for (int i = 0; i + 1 < n; ++i) {
        if (heightOver({list[i].x, list[i].y}, {list[i + 1].x, list[i + 1].y}, {p[0], p[1]}) <= tol) {
            *index = i;
            return 0;
        }
    }
    return -1;
}

int chk_tangent(int n, const AliIpEntry* list, const double p[2], int* index, double tol) {
    if (n < 1) {
        return 0;
    }
    const double reach = kEndReach * tol;
    if (within(list[n - 1], p, reach)) {
        *index = n - 1;
        return 2;
    }
    if (within(list[0], p, reach)) {
        *index = 0;
        return 1;
    }
    return chk_on_tangent(n, list, p, index, tol) == 0 ? 3 : 0;
}

int cplnrm(double out[2], const double p[2], const double segment[4], int* flag) {
    const double x0 = segment[0];
    const double y0 = segment[1];
    const double x1 = segment[2];
    const double y1 = segment[3];
    const double dx = x1 - x0;
    const double dy = y1 - y0;
    const double a = std::atan2(dy, dx);
    double x = p[0];
    double y = p[1];
    if (std::fabs(std::sin(a)) < kHalfDegree) {
        y = (y0 + y1) / 2.0;
    } else if (std::fabs(std::cos(a)) < kHalfDegree) {
        x = (x0 + x1) / 2.0;
    } else {
        x = ((p[1] - y0) * dy * dx + p[0] * dx * dx + x0 * dy * dy) / (dx * dx + dy * dy);
        y = (x - x0) * dy / dx + y0;
    }
    out[0] = x;
    out[1] = y;
    const double detour = std::hypot(x - x1, y - y1) + std::hypot(x - x0, y - y0) - std::hypot(dx, dy);
    *flag = std::fabs(detour) < kPieceChord ? 1 : -1;
    return *flag;
}

int gc_intpSS(const double a[2], const double b[2], const double c[2], const double d[2], double out[2]) {
    const Vec ab{b[0] - a[0], b[1] - a[1]};
    const Vec cd{d[0] - c[0], d[1] - c[1]};
    const double det = cd.x * ab.y - cd.y * ab.x;
    if (!(std::fabs(det) >= kDirectionZero)) {
        return 1;
    }
    const Vec ac{c[0] - a[0], c[1] - a[1]};
    const double t = (cd.x * ac.y - cd.y * ac.x) / det;
    const double x = a[0] + t * ab.x;
    const double y = a[1] + t * ab.y;
    return giveOutReals<2>({x, y}, out) == 0 ? 0 : 1;
}

int gc_poionl(double px, double py, double ax, double ay, double bx, double by, double tol) {
    return heightOver({ax, ay}, {bx, by}, {px, py}) <= tol ? 0 : -1;
}

} // extern "C"
