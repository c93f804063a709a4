// Crossing of two lines through straights.
//
// Symbols: (x0, y0) starts, (dx, dy) spans of lines a and b, det = dya dxb - dyb dxa. All in the calculation plane,
// relative to the start of line a; the records' k fields are coefficients of form M.
#include "alignment/calelm/answer.h"
#include "alignment/calelm/planes.h"
#include "alignment/calelm/rounding.h"
#include "fenmark/alignment/intersection.h"

using namespace fenmark::alignment;

namespace {

// Places of start, crossing and end of an element along its larger coordinate, from 1: of each pair the larger gets one
// more, and at a tie the later. The rule decides what a crossing exactly on an end counts as.
struct Places {
    int start = 1;
    int crossing = 1;

    Places(double atStart, double atCrossing, double atEnd) {
        (atStart > atCrossing ? start : crossing)++;
        if (atStart > atEnd) {
            ++start;
        }
        if (atCrossing > atEnd) {
            ++crossing;
        }
    }

    bool between() const { return crossing == 2; }
    bool behindStart() const { return start == 2; }
};

Places placesOn(Point start, double dx, double dy, Point crossing) {
    return std::fabs(dx) < kSameLength ? Places(start.y, crossing.y, start.y + dy)
                                       : Places(start.x, crossing.x, start.x + dx);
}

double stationOf(Point start, Point crossing, const Places& places) {
    const double x = crossing.x - start.x;
    const double y = crossing.y - start.y;
    const double distance = std::sqrt(x * x + y * y);
    return roundLength(places.behindStart() ? -distance : distance);
}

} // namespace

extern "C" int ali_intpSS(const Calelm* e1, const Calelm* e2, double p1[2], double* a, double* b) {
    const double dxa = e1->ex - e1->sx;
    const double dya = -e1->ey + e1->sy;
    const double dxb = e2->ex - e2->sx;
    const double dyb = -e2->ey + e2->sy;
    if (!std::isfinite(dxa + dya + dxb + dyb) || samePoint(dxa, dya) || samePoint(dxb, dyb)) {
        return -3;
    }
    const double det = dya * dxb - dyb * dxa;
    if (std::fabs(det) < kSameLength) {
        // Parallel: the same line when it has the same y at x = 1, or the same x for lines along y.
        const double difference = std::fabs(e1->k2) >= kSameLength
                                      ? (e1->k3 - e1->k1) / e1->k2 - (e2->k3 - e2->k1) / e2->k2
                                      : e1->k3 / e1->k1 - e2->k3 / e2->k1;
        return std::fabs(difference) < kSameLength ? -1 : -2;
    }
    const Point startA{0.0, 0.0};
    const Point startB{e2->sx - e1->sx, -e2->sy + e1->sy};
    const Point crossing{(-startB.x * dyb * dxa + startB.y * dxa * dxb) / det,
                         (-startB.y * dya * dxb + startB.x * dya * dyb) / -det};
    if (!std::isfinite(crossing.x) || !std::isfinite(crossing.y)) {
        return -3;
    }
    const Places onA = placesOn(startA, dxa, dya, crossing);
    const Places onB = placesOn(startB, dxb, dyb, crossing);
    const double stationA = stationOf(startA, crossing, onA);
    const double stationB = stationOf(startB, crossing, onB);
    const Point point{roundLength(crossing.x + e1->sx), roundedSurveyY(crossing.y - e1->sy)};
    if (!allFinite(stationA, stationB, point.x, point.y)) {
        return -3;
    }
    *a = stationA;
    *b = stationB;
    p1[0] = point.x;
    p1[1] = point.y;
    return (onB.between() ? 0 : 1) + (onA.between() ? 0 : 2);
}
