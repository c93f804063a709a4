// Crossings of a straight and a clothoid: a touch at the parallel tangent, or a walk from either end.
//
// Symbols: A parameter; L standard station, L1 that of the flatter end; theta the line's direction in the clothoid's
// frame, which is the tangent angle tau of the point where the curve runs parallel; (X, Y) that point.
// Axes: the frame of the standard clothoid (origin at infinite radius, tangent along +x, curving towards +y).
#include "alignment/intersection/candidates.h"
#include "alignment/primitives/tools.h"
#include "alignment/walking/laid_clothoid.h"
#include "fenmark/alignment/intersection.h"
#include "fenmark/alignment/primitives.h"

using namespace fenmark::alignment;

namespace {

// A distance as a whole number of 16 bits, cut off towards zero. Beyond that range it wraps.
int wholeNumber16(double v) {
    return static_cast<int16_t>(static_cast<uint16_t>(static_cast<int64_t>(v)));
}

bool onSegment(const Calelm& line, const double p[2]) {
    const double start[2] = {line.sx, line.sy};
    const double finish[2] = {line.ex, line.ey};
    return CDpoiinseg(start, finish, p) >= 0;
}

} // namespace

extern "C" int ali_intpSA(const Calelm* s, const Calelm* aElm, double p1[2], double* a, double* b, double p2[2],
                          double* c, double* d) {
    const LaidClothoid laid(*aElm);
    if (aElm->r1 == aElm->r2 || !laid.valid() || !std::isfinite(aElm->len)) {
        return -1;
    }
    Calelm flatToSharpCalc;
    Calelm lineCalc;
    toOtherPlane(aElm, &flatToSharpCalc);
    CDreverA(&flatToSharpCalc, 0);
    toOtherPlane(s, &lineCalc);
    Calelm line; // in the clothoid's frame, with coefficients of form C
    CDSinAbs(&flatToSharpCalc, &lineCalc, &line);
    if (!std::isfinite(line.k1 + line.k2 + line.k3 + line.sang)) {
        return -1;
    }
    Calelm curve = flatToSharpCalc;
    curve.sx = laid.standardStart().x;
    curve.sy = laid.standardStart().y;
    curve.ex = laid.standardEnd().x;
    curve.ey = laid.standardEnd().y;
    curve.dir = 1.0;
    const double A = laid.parameter();

    const auto give = [&](const double p[2], double L, double out[2], double* onLine, double* onCurve) {
        const Point backCalc = laid.toCalc({p[0], p[1]});
        out[0] = backCalc.x;
        out[1] = -backCalc.y;
        const double x = p[0] - line.sx;
        const double y = p[1] - line.sy;
        *onLine = std::sqrt(x * x + y * y);
        const double fromFlat = L - laid.flatStation();
        *onCurve = laid.reversed() ? aElm->len - fromFlat : fromFlat;
    };

    // The distance at the parallel tangent is cut off to a whole number, so a line that passes within 1 m of it counts
    // as touching there, and one on the far side as missing. Kept, with all that follows, for equal results: it holds only for a
    // line that runs in the curve's own direction.
    const double theta = line.sang;
    if (theta >= tauAtRadius(A, curve.r1) && theta <= tauAtRadius(A, curve.r2)) {
        const Point parallel = clothoidPoint(A, theta);
        const double value = line.k1 * parallel.x + line.k2 * parallel.y + line.k3;
        if (!(std::fabs(value) < 9e18)) {
            return -1;
        }
        const int whole = wholeNumber16(value);
        if (whole < 0) {
            return -1;
        }
        if (whole == 0) {
            const double p[2] = {parallel.x, parallel.y};
            if (!onSegment(line, p)) {
                return -1;
            }
            give(p, theta < kSameAngle ? 0.0 : A * A / std::sqrt(A * A / (2.0 * theta)), p1, a, b);
            return 1;
        }
    }

    const double start[2] = {line.sx, line.sy};
    const double finish[2] = {line.ex, line.ey};
    double lineRecord[4];
    if (CDlinstd(start[0], start[1], finish[0], finish[1], lineRecord) != 0) {
        return -1;
    }
    double fromFlat[2];
    double fromSharp[2];
    double flatLength = 0.0;
    double sharpLength = 0.0;
    const bool first = CDAcrosS(&curve, 1, lineRecord, fromFlat, &flatLength) == 0 && onSegment(line, fromFlat);
    const bool second = CDAcrosS(&curve, -1, lineRecord, fromSharp, &sharpLength) == 0 && onSegment(line, fromSharp);
    if (first && second) {
        if (std::fabs(fromFlat[0] - fromSharp[0]) < kSameLineCrossing &&
            std::fabs(fromFlat[1] - fromSharp[1]) < kSameLineCrossing) {
            give(fromSharp, sharpLength, p1, a, b); // one crossing, found from both ends: the second's values hold
            return 0;
        }
        give(fromFlat, flatLength, p1, a, b);
        give(fromSharp, sharpLength, p2, c, d);
        return 2;
    }
    if (!first && !second) {
        return -1;
    }
    give(first ? fromFlat : fromSharp, first ? flatLength : sharpLength, p1, a, b);
    return 0;
}
