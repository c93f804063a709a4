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

extern "C" int ali_intpSA(const Calelm* s, const Calelm* a_elm, double p1[2], double* a, double* b, double p2[2],
                          double* c, double* d) {
    const LaidClothoid laid(*a_elm);
    if (a_elm->r1 == a_elm->r2 || !laid.valid() || !std::isfinite(a_elm->len)) {
        return -1;
    }
    Calelm flat_to_sharp_calc;
    Calelm line_calc;
    toOtherPlane(a_elm, &flat_to_sharp_calc);
    CDreverA(&flat_to_sharp_calc, 0);
    toOtherPlane(s, &line_calc);
    Calelm line; // in the clothoid's frame, with coefficients of form C
    CDSinAbs(&flat_to_sharp_calc, &line_calc, &line);
    if (!std::isfinite(line.k1 + line.k2 + line.k3 + line.sang)) {
        return -1;
    }
    Calelm curve = flat_to_sharp_calc;
    curve.sx = laid.standardStart().x;
    curve.sy = laid.standardStart().y;
    curve.ex = laid.standardEnd().x;
    curve.ey = laid.standardEnd().y;
    curve.dir = 1.0;
    const double A = laid.parameter();

    const auto give = [&](const double p[2], double L, double out[2], double* on_line, double* on_curve) {
        const Point back_calc = laid.toCalc({p[0], p[1]});
        out[0] = back_calc.x;
        out[1] = -back_calc.y;
        const double x = p[0] - line.sx;
        const double y = p[1] - line.sy;
        *on_line = std::sqrt(x * x + y * y);
        const double from_flat = L - laid.flatStation();
        *on_curve = laid.reversed() ? a_elm->len - from_flat : from_flat;
    };

    // The distance at the parallel tangent is cut off to a whole number, so a line that passes within 1 m of it counts
    // as touching there, and one on the far side as missing. That is meant, with all that follows: it holds only for a
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
    double line_record[4];
    if (CDlinstd(start[0], start[1], finish[0], finish[1], line_record) != 0) {
        return -1;
    }
    double from_flat[2];
    double from_sharp[2];
    double L_flat = 0.0;
    double L_sharp = 0.0;
    const bool first = CDAcrosS(&curve, 1, line_record, from_flat, &L_flat) == 0 && onSegment(line, from_flat);
    const bool second = CDAcrosS(&curve, -1, line_record, from_sharp, &L_sharp) == 0 && onSegment(line, from_sharp);
    if (first && second) {
        if (std::fabs(from_flat[0] - from_sharp[0]) < kSameLineCrossing &&
            std::fabs(from_flat[1] - from_sharp[1]) < kSameLineCrossing) {
            give(from_sharp, L_sharp, p1, a, b); // one crossing, found from both ends: the second's values hold
            return 0;
        }
        give(from_flat, L_flat, p1, a, b);
        give(from_sharp, L_sharp, p2, c, d);
        return 2;
    }
    if (!first && !second) {
        return -1;
    }
    give(first ? from_flat : from_sharp, first ? L_flat : L_sharp, p1, a, b);
    return 0;
}
