// What stands on walking: distances of points to a chain, whether two clothoids are one, whether two elements join.
// Records and points are in the survey plane.
#include "alignment/calelm/planes.h"
#include "fenmark/alignment/conventions.h"
#include "fenmark/alignment/primitives.h"
#include "fenmark/alignment/walking.h"

#include <limits>

using namespace fenmark::alignment;

namespace {

// Difference of two directions, brought into [0, pi].
double between(double a, double b) {
    double d = std::fmod(std::fabs(a - b), kTwoPi);
    return d > kPi ? kTwoPi - d : d;
}

// Distance from p to its foot on the first element that has one; -1.0 when none has.
double distanceToChain(const double p[2], int n, const Calelm* elements) {
    for (int i = 0; i < n; ++i) {
        double foot[2];
        double station = 0.0;
        if (ali_proj(&elements[i], p, &station, foot) >= 0) {
            const double distance = ali_CDist2P(p, foot);
            return std::isfinite(distance) ? distance : -1.0;
        }
    }
    return -1.0;
}

// Whether a clothoid runs towards a falling radius of curvature, an infinite radius counting as such.
bool startIsSharper(const Calelm& a) {
    const double infinite = std::numeric_limits<double>::infinity();
    return (a.r1 == 0.0 ? infinite : a.r1) < (a.r2 == 0.0 ? infinite : a.r2);
}

} // namespace

extern "C" {

int Calc_moni(AliMoniList* list, int n, const Calelm* elements) {
    AliMoniEntry* entries = list->entries;
    for (int i = 0; i < list->count; ++i) {
        const double p[2] = {entries[i].x, entries[i].y};
        entries[i].distance = distanceToChain(p, n, elements);
    }
    return 1;
}

int get_moniDist(const double p[2], int n, const Calelm* elements, double* distance) {
    *distance = distanceToChain(p, n, elements);
    return *distance < 0.0 ? -1 : 1;
}

int CDsameA(const Calelm* a, const Calelm* b) {
    if (!(std::fabs(a->par - b->par) < kSameLength) || a->dir != b->dir) {
        return 0;
    }
    if (startIsSharper(*a) != startIsSharper(*b)) {
        return -2;
    }
    // Clothoids that flatten are compared at their ends, which are the starts of their reversed copies.
    Calelm first = *a;
    Calelm second = *b;
    if (startIsSharper(*a)) {
        CDreverA(&first, 1);
        CDreverA(&second, 1);
    }
    const double stationA = standardStation(first.par, first.r1);
    const double stationB = standardStation(second.par, second.r1);
    double point[2];
    double tangent = std::numeric_limits<double>::quiet_NaN();
    // The station may lie beyond the element; the tangent of the continued curve is then the one wanted.
    if (stationB <= stationA) {
        ali_onlA(&second, stationA - stationB, point, &tangent);
        const double d = between(tangent, first.sang);
        return d < kSameLength || std::fabs(d - kPi) < kSameLength ? -1 : 0;
    }
    // The first tolerance differs from that of the other branch: existing results have it so.
    ali_onlA(&first, stationB - stationA, point, &tangent);
    const double d = between(tangent, second.sang);
    return d < kSameAngle || std::fabs(d - kPi) < kSameLength ? -2 : 0;
}

int jointCheck(const Calelm* e1, const Calelm* e2) {
    const double end[2] = {e1->ex, e1->ey};
    const double start[2] = {e2->sx, e2->sy};
    if (!(ali_CDist2P(end, start) <= kJointGap)) {
        return -1;
    }
    double before[2];
    double after[2];
    double tangent = 0.0;
    if (ali_onl(e1, 0.9 * e1->len, before, &tangent) != 0 || ali_onl(e2, 0.1 * e2->len, after, &tangent) != 0) {
        return -1;
    }
    // Differences of direction are the same in both planes.
    const double arriving = directionOf(end[0] - before[0], end[1] - before[1]);
    const double leaving = directionOf(after[0] - start[0], after[1] - start[1]);
    return between(arriving, leaving) < kJointBreak ? 0 : -1;
}

} // extern "C"
