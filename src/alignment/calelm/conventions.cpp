// Planes, rounding and comparison of points as the interface has them.
#include "fenmark/alignment/conventions.h"

#include "alignment/calelm/planes.h"
#include "alignment/calelm/rounding.h"

using namespace fenmark::alignment;

extern "C" {

void ali_CExCoord(double out[2], const double in[2]) {
    const double x = in[0];
    const double y = in[1];
    out[0] = x;
    out[1] = -y;
}

double ali_CExAng(double a) {
    return otherPlaneAngle(a);
}

double ali_CAroundNum(double v) {
    return roundLength(v);
}

double ali_CAroundAng(double v) {
    return roundAngle(v);
}

int ali_CSamePoint(const double p[2], const double q[2]) {
    return samePoint(p[0] - q[0], p[1] - q[1]) ? 0 : 1;
}

double ali_CDist2P(const double p[2], const double q[2]) {
    const double dx = p[0] - q[0];
    const double dy = p[1] - q[1];
    return std::sqrt(dx * dx + dy * dy);
}

int gc_samePoint(const double p[2], const double q[2], double tol) {
    return std::fabs(p[0] - q[0]) < tol && std::fabs(p[1] - q[1]) < tol ? 0 : -1;
}

} // extern "C"
