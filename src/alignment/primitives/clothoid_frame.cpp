// The passage into the frame of a clothoid and back, and the crossing of a clothoid with a line there.
//
// Symbols: F whether the clothoid turns right and is mirrored first; M the clothoid, mirrored if F; (X1, Y1), (X2, Y2)
// the standard clothoid's points at radius r1 and r2; theta the angle from M's chord to the standard chord.
// Axes: the standard clothoid starts at the origin with infinite radius, its tangent there along +x, and curves
// towards +y. All elements given are in the calculation plane, and the clothoid runs from its flat to its sharp end.
#include "fenmark/alignment/clothoid.h"
#include "fenmark/alignment/primitives.h"

#include "alignment/calelm/answer.h"
#include "alignment/calelm/planes.h"
#include "alignment/primitives/plane.h"
#include "alignment/primitives/tools.h"

namespace plane = fenmark::alignment::plane;
using fenmark::alignment::giveOutReals;
using fenmark::alignment::giveOutRecord;
using fenmark::alignment::kAngleStep;
using fenmark::alignment::kDirectionZero;
using fenmark::alignment::kLengthStep;
using fenmark::alignment::standardStation;
using plane::Vec;

namespace {

// Beyond any real walk: CDAcrosS moves by at least 1e-4 m a step.
constexpr int kWalkLimit = 4'000'000;

struct ClothoidFrame {
    bool mirrored;
    Vec start;         // M's start, calculation plane
    Vec end;           // M's end
    Vec standardStart; // (X1, Y1)
    Vec standardEnd;   // (X2, Y2)
};

Vec standardPoint(double parameter, double radius) {
    Vec point;
    CDRcalxy(parameter, radius, &point.x, &point.y);
    return point;
}

ClothoidFrame clothoidFrameOf(const Calelm& a) {
    const bool mirrored = a.dir == -1.0;
    const double sign = mirrored ? -1.0 : 1.0;
    return {mirrored, {sign * a.sx, a.sy}, {sign * a.ex, a.ey}, standardPoint(a.par, a.r1), standardPoint(a.par, a.r2)};
}

// theta, from M's chord to the standard chord.
double toStandard(const ClothoidFrame& frame) {
    return CDbtwang(frame.start.x, frame.start.y, frame.end.x, frame.end.y, frame.standardStart.x,
                    frame.standardStart.y, frame.standardEnd.x, frame.standardEnd.y);
}

// The opposite angle, from the standard chord to M's.
double toElement(const ClothoidFrame& frame) {
    return CDbtwang(frame.standardStart.x, frame.standardStart.y, frame.standardEnd.x, frame.standardEnd.y,
                    frame.start.x, frame.start.y, frame.end.x, frame.end.y);
}

// A chord's direction as a unit vector; one too short to have a direction counts as that of +x.
Vec chordDirection(Vec from, Vec to) {
    const Vec along = to - from;
    const double length = plane::norm(along);
    return length < kDirectionZero ? Vec{1.0, 0.0} : (1.0 / length) * along;
}

// Cosine and sine of toStandard, by the products of the chords. Below the angle step it is no turn, as in CDbtwang.
Vec turnToStandard(const ClothoidFrame& frame) {
    const Vec chord = chordDirection(frame.start, frame.end);
    const Vec standard = chordDirection(frame.standardStart, frame.standardEnd);
    const Vec turn{plane::dot(chord, standard), plane::cross(chord, standard)};
    return turn.x > 0.0 && std::fabs(turn.y) < kAngleStep ? Vec{1.0, 0.0} : turn;
}

// Any element into the frame: mirror, move by the clothoid's shift, turn about the standard start.
Calelm intoFrame(const ClothoidFrame& frame, const Calelm& element) {
    Calelm result = element;
    if (frame.mirrored) {
        fenmark::alignment::mirrorRecord(&element, &result);
    }
    const Vec shift = frame.standardStart - frame.start;
    fenmark::alignment::moveRecord(&result, &result, shift.x, shift.y);
    const double pivot[2] = {frame.standardStart.x, frame.standardStart.y};
    fenmark::alignment::turnRecord(&result, &result, pivot, toStandard(frame));
    return result;
}

// A point of the frame in the calculation plane.
Vec outOfFrame(const ClothoidFrame& frame, Vec point) {
    const Vec turn = turnToStandard(frame);
    Vec result = frame.start + plane::turned(point - frame.standardStart, turn.x, -turn.y);
    if (frame.mirrored) {
        result.x = -result.x;
    }
    return result;
}

} // namespace

extern "C" {

int CDAinAbs(const Calelm* a, Calelm* out) {
    return giveOutRecord(intoFrame(clothoidFrameOf(*a), *a), out);
}

int CDSinAbs(const Calelm* a, const Calelm* s, Calelm* out) {
    Calelm line = intoFrame(clothoidFrameOf(*a), *s);
    fenmark::alignment::writeUnitCoefficients(line);
    return giveOutRecord(line, out);
}

int CDRinAbs(const Calelm* a, const Calelm* r, Calelm* out) {
    return giveOutRecord(intoFrame(clothoidFrameOf(*a), *r), out);
}

int CDPinAbs(const Calelm* a, const double p[2], double out[2]) {
    const ClothoidFrame frame = clothoidFrameOf(*a);
    const Vec given{frame.mirrored ? -p[0] : p[0], p[1]};
    const Vec turn = turnToStandard(frame);
    const Vec result = frame.standardStart + plane::turned(given - frame.start, turn.x, turn.y);
    return giveOutReals<2>({result.x, result.y}, out);
}

int CDP2Cal(const Calelm* a, const double p[2], double out[2]) {
    const Vec result = outOfFrame(clothoidFrameOf(*a), {p[0], p[1]});
    return giveOutReals<2>({result.x, result.y}, out);
}

int CDgetOrgA(const Calelm* a, double out[2], double* angle) {
    if (a->r1 < kLengthStep) {
        out[0] = a->sx;
        out[1] = a->sy;
        *angle = a->sang;
        return 0;
    }
    const ClothoidFrame frame = clothoidFrameOf(*a);
    double tangent = toElement(frame);
    Vec origin = frame.start + plane::turned(Vec{} - frame.standardStart, tangent);
    if (frame.mirrored) {
        origin.x = -origin.x;
        tangent = fenmark::alignment::mirroredDirection(tangent);
    }
    out[0] = origin.x;
    out[1] = origin.y;
    *angle = tangent;
    return 0;
}

int CDAcrosS(const Calelm* a, int side, const double line[4], double out[2], double* L) {
    const double startStation = standardStation(a->par, a->r1);
    const double endStation = standardStation(a->par, a->r2);
    const bool upwards = side == 1;
    double station = upwards ? startStation : endStation;
    double point[2] = {upwards ? a->sx : a->ex, upwards ? a->sy : a->ey};
    double previous = fenmark::alignment::distanceToLine(line, point);
    for (int step = 0; step < kWalkLimit; ++step) {
        CDLcalxy(a->par, station, &point[0], &point[1]);
        const double d = fenmark::alignment::distanceToLine(line, point);
        if (!(d <= previous + kLengthStep)) {
            return -1;
        }
        if (d < kLengthStep) {
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
