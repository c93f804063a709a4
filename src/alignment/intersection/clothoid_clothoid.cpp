// Crossings of two clothoids: both are cut in halves for as long as their tangent triangles overlap.
//
// Symbols: e1, e2 the elements, each run from its flatter to its sharper end; L standard station. Everything is in the
// calculation plane. The overlap of two closed triangles is tested by separating axes: they are apart exactly when the
// normal of one of the six sides separates them [Gottschalk 1996].
#include "alignment/intersection/subdivision.h"
#include "fenmark/alignment/intersection.h"

#include <algorithm>
#include <new>

using namespace fenmark::alignment;

namespace {

CurvePoint inCalc(const LaidClothoid& laid, double L) {
    CurvePoint at = standardCurvePoint(laid.parameter(), L);
    at.p = laid.toCalc(at.p);
    at.u = laid.directionToCalc(at.u);
    return at;
}

struct CurvePiece {
    CurvePoint a;
    CurvePoint b;
    Point apex;
};

CurvePiece pieceOf(const CurvePoint& a, const CurvePoint& b) {
    return {a, b, apexOf(a, b, a.p)};
}

struct Range {
    double low;
    double high;
};

Range rangeAlong(double nx, double ny, Point origin, const CurvePiece& t) {
    const double a = nx * (t.a.p.x - origin.x) + ny * (t.a.p.y - origin.y);
    const double m = nx * (t.apex.x - origin.x) + ny * (t.apex.y - origin.y);
    const double b = nx * (t.b.p.x - origin.x) + ny * (t.b.p.y - origin.y);
    return {std::min({a, m, b}), std::max({a, m, b})};
}

// Whether the normal of the side from p to q keeps the two apart. A side of no length separates nothing.
bool sideSeparates(Point p, Point q, const CurvePiece& own, const CurvePiece& other) {
    const double nx = p.y - q.y;
    const double ny = q.x - p.x;
    const double gap = kTriangleGap * std::sqrt(nx * nx + ny * ny);
    const Range mine = rangeAlong(nx, ny, p, own);
    const Range theirs = rangeAlong(nx, ny, p, other);
    return theirs.low > mine.high + gap || theirs.high < mine.low - gap;
}

bool boxesApart(const CurvePiece& s, const CurvePiece& t) {
    const auto apart = [](double a, double b, double c, double d, double e, double f) {
        return std::min({a, b, c}) > std::max({d, e, f}) + kTriangleGap ||
               std::max({a, b, c}) < std::min({d, e, f}) - kTriangleGap;
    };
    return apart(s.a.p.x, s.apex.x, s.b.p.x, t.a.p.x, t.apex.x, t.b.p.x) ||
           apart(s.a.p.y, s.apex.y, s.b.p.y, t.a.p.y, t.apex.y, t.b.p.y);
}

bool trianglesOverlap(const CurvePiece& s, const CurvePiece& t) {
    return !boxesApart(s, t) && !sideSeparates(s.a.p, s.b.p, s, t) && !sideSeparates(t.a.p, t.b.p, t, s) &&
           !sideSeparates(s.a.p, s.apex, s, t) && !sideSeparates(s.apex, s.b.p, s, t) &&
           !sideSeparates(t.a.p, t.apex, t, s) && !sideSeparates(t.apex, t.b.p, t, s);
}

struct Item {
    CurvePiece first;
    CurvePiece second;
};

struct Found {
    Point p;
    double L1 = 0.0;
    double L2 = 0.0;
    Point u1;
    Point u2;
};

// Number of crossings found, at most two; -1 when the search has looked at more pieces than real elements have.
int search(const LaidClothoid& e1, const LaidClothoid& e2, Found (&found)[2]) {
    int count = 0;
    WorkStack<Item, 96> stack;
    const Item whole{pieceOf(inCalc(e1, e1.flatStation()), inCalc(e1, e1.flatStation() + e1.length())),
                     pieceOf(inCalc(e2, e2.flatStation()), inCalc(e2, e2.flatStation() + e2.length()))};
    if (trianglesOverlap(whole.first, whole.second)) {
        stack.push(whole);
    }
    for (int items = 0; !stack.empty(); ++items) {
        if (items >= kSubdivisionItems) {
            return -1;
        }
        const Item item = stack.pop();
        const CurvePiece& s = item.first;
        const CurvePiece& t = item.second;
        if (isShort(s.a, s.b) && isShort(t.a, t.b)) {
            const Found here{s.a.p, s.a.L, t.a.L, s.a.u, t.a.u};
            if (count == 0) {
                found[0] = here;
                count = 1;
            } else if (std::hypot(here.p.x - found[0].p.x, here.p.y - found[0].p.y) > kSameCrossing) {
                found[1] = here;
                return 2;
            }
            continue;
        }
        // A piece too short to be cut stays whole.
        std::array<CurvePiece, 2> halves1{s, s};
        std::array<CurvePiece, 2> halves2{t, t};
        std::size_t n1 = 1;
        std::size_t n2 = 1;
        if (s.b.L - s.a.L > kPieceSpan) {
            const CurvePoint middle = inCalc(e1, (s.a.L + s.b.L) / 2.0);
            halves1 = {pieceOf(s.a, middle), pieceOf(middle, s.b)};
            n1 = 2;
        }
        if (t.b.L - t.a.L > kPieceSpan) {
            const CurvePoint middle = inCalc(e2, (t.a.L + t.b.L) / 2.0);
            halves2 = {pieceOf(t.a, middle), pieceOf(middle, t.b)};
            n2 = 2;
        }
        for (std::size_t i = 0; i < n1; ++i) {
            for (std::size_t j = 0; j < n2; ++j) {
                if (trianglesOverlap(halves1[i], halves2[j])) {
                    stack.push({halves1[i], halves2[j]});
                }
            }
        }
    }
    return count;
}

} // namespace

extern "C" int ali_intpAA(const Calelm* e1, const Calelm* e2, double p1[2], double* a, double* b, double p2[2],
                          double* c, double* d) {
    const LaidClothoid first(*e1);
    const LaidClothoid second(*e2);
    if (e1->r1 == e1->r2 || e2->r1 == e2->r2 || !first.valid() || !second.valid()) {
        return -1;
    }
    Found found[2];
    int count = 0;
    try {
        count = search(first, second, found);
    } catch (const std::bad_alloc&) {
        return -1;
    }
    if (count <= 0) {
        return -1;
    }
    // The stations of e1 go to a and b, those of e2 to c and d.
    p1[0] = found[0].p.x;
    p1[1] = -found[0].p.y;
    *a = first.stationOf(found[0].L1);
    *c = second.stationOf(found[0].L2);
    if (count == 2) {
        p2[0] = found[1].p.x;
        p2[1] = -found[1].p.y;
        *b = first.stationOf(found[1].L1);
        *d = second.stationOf(found[1].L2);
        return 2;
    }
    // The sine of the angle between the tangents shows a touch, for tangents that point the same or opposite ways.
    const double sine = found[0].u1.x * found[0].u2.y - found[0].u1.y * found[0].u2.x;
    return std::fabs(sine) < kSameAngle ? 1 : 0;
}
