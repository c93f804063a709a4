// Whole records: the other plane, mirror, move, turn, reversal, and the test of an arc.
//
// Coefficients of a straight are written here as a x + b y + c = 0 from its own two points, with d = end - start:
// a = dy, b = -dx, c = dx sy - dy sx, divided by the chord only where stated. Turns are anticlockwise in the calculation
// plane. Sources: plane similarity transformations.
#include "fenmark/alignment/conventions.h"
#include "fenmark/alignment/primitives.h"

#include "alignment/calelm/answer.h"
#include "alignment/calelm/planes.h"
#include "alignment/primitives/plane.h"
#include "alignment/primitives/tools.h"

#include <utility>

namespace plane = fenmark::alignment::plane;
namespace element = fenmark::alignment::element;
using fenmark::alignment::kAngleStep;
using fenmark::alignment::kPi;
using fenmark::alignment::kPlaneAngleZero;
using fenmark::alignment::kTwoPi;
using plane::Vec;

namespace {

void writeCoefficients(Calelm& line) {
    const double dx = line.ex - line.sx;
    const double dy = line.ey - line.sy;
    line.k1 = dy;
    line.k2 = -dx;
    line.k3 = dx * line.sy - dy * line.sx;
}

// A tangent after a turn: in range, and a hair below a full turn becomes 0.
double turnedTangent(double tangent, double theta) {
    const double result = plane::wrapped(tangent + theta);
    return kTwoPi - result < kPlaneAngleZero ? 0.0 : result;
}

void turnPoint(double& x, double& y, Vec pivot, double cosine, double sine) {
    const Vec result = pivot + plane::turned(Vec{x, y} - pivot, cosine, sine);
    x = result.x;
    y = result.y;
}

// Ends and tangents turned about the pivot; the k fields stay.
void turnEnds(Calelm& rec, Vec pivot, double theta, double cosine, double sine) {
    turnPoint(rec.sx, rec.sy, pivot, cosine, sine);
    turnPoint(rec.ex, rec.ey, pivot, cosine, sine);
    rec.sang = turnedTangent(rec.sang, theta);
    rec.eang = turnedTangent(rec.eang, theta);
}

double oppositeTangent(double tangent) {
    const double result = tangent + kPi;
    return result >= kTwoPi ? result - kTwoPi : result;
}

} // namespace

namespace fenmark::alignment {

void writeUnitCoefficients(Calelm& line) {
    const double dx = line.ex - line.sx;
    const double dy = line.ey - line.sy;
    const double length = std::sqrt(dx * dx + dy * dy);
    line.k1 = dy / length;
    line.k2 = -dx / length;
    line.k3 = (dx * line.sy - dy * line.sx) / length;
}

void toOtherPlane(const Calelm* in, Calelm* out) {
    Calelm other = *in;
    other.sy = -in->sy;
    other.ey = -in->ey;
    other.sang = ali_CExAng(in->sang);
    other.eang = ali_CExAng(in->eang);
    if (in->type == element::kStraight) {
        fenmark::alignment::writeUnitCoefficients(other);
    } else if (in->type == element::kArc) {
        other.k2 = -in->k2;
    }
    *out = other;
}

void mirrorRecord(const Calelm* in, Calelm* out) {
    Calelm mirrored = *in;
    mirrored.sx = -in->sx;
    mirrored.ex = -in->ex;
    mirrored.dir = -in->dir;
    mirrored.sang = mirroredDirection(in->sang);
    mirrored.eang = mirroredDirection(in->eang);
    if (in->type == element::kStraight) {
        writeCoefficients(mirrored);
    } else if (in->type == element::kArc) {
        mirrored.k1 = -in->k1;
    } else if (in->type != element::kClothoid) {
        // An unknown type has no k fields to give; those of the output stay.
        mirrored.k1 = out->k1;
        mirrored.k2 = out->k2;
        mirrored.k3 = out->k3;
    }
    *out = mirrored;
}

void moveRecord(const Calelm* in, Calelm* out, double dx, double dy) {
    Calelm moved = *in;
    moved.sx += dx;
    moved.sy += dy;
    moved.ex += dx;
    moved.ey += dy;
    if (in->type == element::kStraight) {
        writeCoefficients(moved);
    } else if (in->type == element::kArc) {
        moved.k1 += dx;
        moved.k2 += dy;
    }
    *out = moved;
}

void turnRecord(const Calelm* in, Calelm* out, const double pivot[2], double theta) {
    Calelm result = *in;
    const Vec about{pivot[0], pivot[1]};
    const double cosine = std::cos(theta);
    const double sine = std::sin(theta);
    turnEnds(result, about, theta, cosine, sine);
    if (in->type == element::kStraight) {
        writeCoefficients(result);
    } else if (in->type == element::kArc) {
        turnPoint(result.k1, result.k2, about, cosine, sine);
    }
    *out = result;
}

void turnRecordAboutStart(const Calelm* in, Calelm* out, double theta) {
    const double start[2] = {in->sx, in->sy};
    turnRecord(in, out, start, theta);
}

void turnRecordAboutEnd(const Calelm* in, Calelm* out, double theta) {
    // The k fields are copied for every type, so those of a straight or an arc are stale. Callers rebuild the record.
    Calelm result = *in;
    turnEnds(result, {in->ex, in->ey}, theta, std::cos(theta), std::sin(theta));
    *out = result;
}

} // namespace fenmark::alignment

using namespace fenmark::alignment;

extern "C" {

int CDchgSpace(const Calelm* in, Calelm* out) {
    Calelm made;
    toOtherPlane(in, &made);
    return giveOutRecord(made, out);
}

int CDmirA(const Calelm* in, Calelm* out) {
    Calelm made = *out;
    mirrorRecord(in, &made);
    return giveOutRecord(made, out);
}

int CDmoveA(const Calelm* in, Calelm* out, double dx, double dy) {
    Calelm made;
    moveRecord(in, &made, dx, dy);
    return giveOutRecord(made, out);
}

int CDrot(const Calelm* in, Calelm* out, const double pivot[2], double theta) {
    Calelm made;
    turnRecord(in, &made, pivot, theta);
    return giveOutRecord(made, out);
}

int CDturnA(const Calelm* in, Calelm* out, double theta) {
    Calelm made;
    turnRecordAboutStart(in, &made, theta);
    return giveOutRecord(made, out);
}

int CDturnAe(const Calelm* in, Calelm* out, double theta) {
    Calelm made;
    turnRecordAboutEnd(in, &made, theta);
    return giveOutRecord(made, out);
}

int CDreverA(Calelm* rec, int force) {
    if (force == 0 && !fenmark::alignment::flattensTowardsEnd(rec->r1, rec->r2)) {
        return 0;
    }
    std::swap(rec->sx, rec->ex);
    std::swap(rec->sy, rec->ey);
    std::swap(rec->r1, rec->r2);
    rec->dir = -rec->dir;
    const double start = oppositeTangent(rec->eang);
    rec->eang = oppositeTangent(rec->sang);
    rec->sang = start;
    clearPadding(*rec);
    return 1;
}

int CDvalidArc(const Calelm* rec) {
    const double sweep = CDbtwang(rec->k1, rec->k2, rec->sx, rec->sy, rec->k1, rec->k2, rec->ex, rec->ey);
    if (!(sweep >= kAngleStep) || std::fabs(sweep - kPi) < kAngleStep) {
        return -1;
    }
    if ((rec->dir == -1.0 && sweep <= kPi) || (rec->dir == 1.0 && sweep >= kPi)) {
        return -1;
    }
    return 0;
}

} // extern "C"
