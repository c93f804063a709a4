// The passage into the frame of a clothoid and back, and the crossing of a clothoid with a line there.
//
// Symbols: F whether the clothoid turns right and is mirrored first; M the clothoid, mirrored if F; (X1, Y1), (X2, Y2)
// the standard clothoid's points at radius r1 and r2; theta the angle from M's chord to the standard chord.
// Axes: the standard clothoid starts at the origin with infinite radius, its tangent there along +x, and curves
// towards +y. All elements given are in the calculation plane, and the clothoid runs from its flat to its sharp end.
#include "fenmark/alignment/clothoid.h"
#include "fenmark/alignment/primitives.h"

#include "alignment/primitives/plane.h"
#include "alignment/primitives/tools.h"

namespace plane = fenmark::alignment::plane;
using plane::Vec;

namespace {

// Beyond any real walk: CDAcrosS moves by at least 1e-4 m a step.
constexpr int walk_limit = 4'000'000;

struct Frame {
    bool mirrored;
    Vec start;         // M's start, calculation plane
    Vec standardStart; // (X1, Y1)
    double toStandard; // theta
    double toElement;  // the opposite angle, again by CDbtwang
};

Vec standardPoint(double parameter, double radius) {
    Vec point;
    CDRcalxy(parameter, radius, &point.x, &point.y);
    return point;
}

Frame frameOf(const Calelm& a) {
    Frame frame;
    frame.mirrored = a.dir == -1.0;
    const double sign = frame.mirrored ? -1.0 : 1.0;
    const Vec end{sign * a.ex, a.ey};
    frame.start = {sign * a.sx, a.sy};
    frame.standardStart = standardPoint(a.par, a.r1);
    const Vec standardEnd = standardPoint(a.par, a.r2);
    frame.toStandard = CDbtwang(frame.start.x, frame.start.y, end.x, end.y, frame.standardStart.x,
                                frame.standardStart.y, standardEnd.x, standardEnd.y);
    frame.toElement = CDbtwang(frame.standardStart.x, frame.standardStart.y, standardEnd.x, standardEnd.y,
                               frame.start.x, frame.start.y, end.x, end.y);
    return frame;
}

// Any element into the frame: mirror, move by the clothoid's shift, turn about the standard start.
Calelm intoFrame(const Frame& frame, const Calelm& element) {
    Calelm result = element;
    if (frame.mirrored) {
        CDmirA(&element, &result);
    }
    const Vec shift = frame.standardStart - frame.start;
    CDmoveA(&result, &result, shift.x, shift.y);
    const double pivot[2] = {frame.standardStart.x, frame.standardStart.y};
    CDrot(&result, &result, pivot, frame.toStandard);
    return result;
}

// A point of the frame in the calculation plane.
Vec outOfFrame(const Frame& frame, Vec point) {
    Vec result = frame.start + plane::turned(point - frame.standardStart, -frame.toStandard);
    if (frame.mirrored) {
        result.x = -result.x;
    }
    return result;
}

// Standard station of a radius, 0 for an infinite one.
double stationOf(double parameter, double radius) {
    return radius == 0.0 ? 0.0 : parameter * parameter / radius;
}

} // namespace

extern "C" {

int CDAinAbs(const Calelm* a, Calelm* out) {
    *out = intoFrame(frameOf(*a), *a);
    return 0;
}

int CDSinAbs(const Calelm* a, const Calelm* s, Calelm* out) {
    Calelm line = intoFrame(frameOf(*a), *s);
    fenmark::alignment::writeUnitCoefficients(line);
    *out = line;
    return 0;
}

int CDRinAbs(const Calelm* a, const Calelm* r, Calelm* out) {
    *out = intoFrame(frameOf(*a), *r);
    return 0;
}

int CDPinAbs(const Calelm* a, const double p[2], double out[2]) {
    const Frame frame = frameOf(*a);
    const Vec given{frame.mirrored ? -p[0] : p[0], p[1]};
    const Vec result = frame.standardStart + plane::turned(given - frame.start, -frame.toElement);
    out[0] = result.x;
    out[1] = result.y;
    return 0;
}

int CDP2Cal(const Calelm* a, const double p[2], double out[2]) {
    const Vec result = outOfFrame(frameOf(*a), {p[0], p[1]});
    out[0] = result.x;
    out[1] = result.y;
    return 0;
}

int CDgetOrgA(const Calelm* a, double out[2], double* angle) {
    if (a->r1 < plane::length_step) {
        out[0] = a->sx;
        out[1] = a->sy;
        *angle = a->sang;
        return 0;
    }
    const Frame frame = frameOf(*a);
    Vec origin = frame.start + plane::turned(Vec{} - frame.standardStart, frame.toElement);
    double tangent = frame.toElement;
    if (frame.mirrored) {
        origin.x = -origin.x;
        CDmirAng(tangent, &tangent);
    }
    out[0] = origin.x;
    out[1] = origin.y;
    *angle = tangent;
    return 0;
}

int CDAcrosS(const Calelm* a, int side, const double line[4], double out[2], double* L) {
    const double startStation = stationOf(a->par, a->r1);
    const double endStation = stationOf(a->par, a->r2);
    const bool upwards = side == 1;
    double station = upwards ? startStation : endStation;
    double point[2] = {upwards ? a->sx : a->ex, upwards ? a->sy : a->ey};
    double previous = 0.0;
    CDpldist(line, point, &previous);
    for (int step = 0; step < walk_limit; ++step) {
        CDLcalxy(a->par, station, &point[0], &point[1]);
        double d = 0.0;
        CDpldist(line, point, &d);
        if (!(d <= previous + plane::length_step)) {
            return -1;
        }
        if (d < plane::length_step) {
            out[0] = point[0];
            out[1] = point[1];
            *L = station;
            return 0;
        }
        station += upwards ? d : -d;
        previous = d;
        if (upwards ? station > endStation : station < startStation) {
            return -2;
        }
    }
    return -1;
}

} // extern "C"
