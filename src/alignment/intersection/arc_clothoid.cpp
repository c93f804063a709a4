// Crossings of an arc and a clothoid: the clothoid is cut in halves for as long as its tangent triangle meets the arc.
//
// Symbols: A parameter, L standard station, R the arc's radius, c its centre. Everything is in the frame of the
// standard clothoid (origin at infinite radius, tangent along +x, curving towards +y).
#include "alignment/intersection/candidates.h"
#include "alignment/intersection/subdivision.h"
#include "fenmark/alignment/intersection.h"

#include <new>

using namespace fenmark::alignment;

namespace {

// A side of a triangle may be missed by this part of its length. The trials meet sizes as near to it as one likes.
constexpr double kSideSlack = 1e-4;

// The arc in the clothoid's frame: its circle, and the cone of directions that it covers.
struct ArcInFrame {
    Point centre;
    double R;
    Point middle;     // unit direction to the middle of the arc
    double halfAngle; // half the sweep, widened by the angle step
    double cosHalf;
    Point start; // relative to the centre
    Point finish;
    bool whole = false; // a full circle

    ArcInFrame(const Calelm& r, const LaidClothoid& laid)
        : centre(laid.toStandard({r.k1, -r.k2})), R(r.par), middle{}, halfAngle(0.0), cosHalf(0.0), start{}, finish{} {
        const Point s = laid.toStandard({r.sx, -r.sy});
        const Point e = laid.toStandard({r.ex, -r.ey});
        start = {s.x - centre.x, s.y - centre.y};
        finish = {e.x - centre.x, e.y - centre.y};
        const double dir = laid.mirrored() ? -r.dir : r.dir;
        CentredArc arc(R, dir, start, finish);
        // Ends that are one point: nothing, or the whole circle, as the record's own sweep says.
        whole = samePoint(s.x - e.x, s.y - e.y) && r.k3 > kPi;
        halfAngle = 0.5 * (whole ? kTwoPi : arc.sweep) + kAngleStep;
        cosHalf = halfAngle >= kPi ? -2.0 : std::cos(halfAngle);
        const double at = arc.startDirection + (dir == -1.0 ? -0.5 : 0.5) * arc.sweep;
        middle = {std::cos(at), std::sin(at)};
    }

    // Whether a point of the circle, relative to the centre, lies on the arc widened by the angle step.
    bool covers(double x, double y) const { return x * middle.x + y * middle.y >= cosHalf * R; }

    // Whether the side from p to q meets the arc.
    bool meetsSide(Point p, Point q) const {
        const double dx = q.x - p.x;
        const double dy = q.y - p.y;
        const double length = std::sqrt(dx * dx + dy * dy);
        if (!(length > 0.0)) {
            return false;
        }
        const double ux = dx / length;
        const double uy = dy / length;
        const double px = p.x - centre.x;
        const double py = p.y - centre.y;
        const double along = px * ux + py * uy;
        double disc = along * along - (px * px + py * py - R * R);
        if (std::fabs(disc) < kSameLength) {
            disc = 0.0; // the side touches
        } else if (!(disc > 0.0)) {
            return false;
        }
        const double root = std::sqrt(disc);
        const double low = -kSideSlack * length;
        const double high = (1.0 + kSideSlack) * length;
        for (const double t : {-along - root, -along + root}) {
            if (t >= low && t <= high && covers(px + t * ux, py + t * uy)) {
                return true;
            }
        }
        return false;
    }

    // Whether the triangle meets the arc: by one of its sides, or because the arc lies inside it.
    bool meets(Point a, Point apex, Point b) const {
        return meetsSide(a, apex) || meetsSide(apex, b) || meetsSide(a, b) || startInside(a, apex, b);
    }

  private:
    bool startInside(Point a, Point m, Point b) const {
        const Point s{start.x + centre.x, start.y + centre.y};
        const auto left = [&s](Point p, Point q) { return (q.x - p.x) * (s.y - p.y) - (q.y - p.y) * (s.x - p.x); };
        const double first = left(a, m);
        const double second = left(m, b);
        const double third = left(b, a);
        return (first > 0.0 && second > 0.0 && third > 0.0) || (first < 0.0 && second < 0.0 && third < 0.0);
    }
};

struct Piece {
    CurvePoint a;
    CurvePoint b;
};

bool pieceMeets(const ArcInFrame& arc, const CurvePoint& a, const CurvePoint& b) {
    const Point chordMiddle{(a.p.x + b.p.x) / 2.0, (a.p.y + b.p.y) / 2.0};
    return arc.meets(a.p, apexOf(a, b, chordMiddle), b.p);
}

// Number of crossings found, at most two; -1 when the search has looked at more pieces than real elements have.
int search(const LaidClothoid& laid, const ArcInFrame& arc, CurvePoint (&found)[2]) {
    const double A = laid.parameter();
    int count = 0;
    WorkStack<Piece, 64> stack;
    // The whole clothoid is cut without a test: an arc may lie inside its triangle.
    stack.push({standardCurvePoint(A, laid.flatStation()), standardCurvePoint(A, laid.flatStation() + laid.length())});
    for (int items = 0; !stack.empty(); ++items) {
        if (items >= kSubdivisionItems) {
            return -1;
        }
        const Piece piece = stack.pop();
        if (isShort(piece.a, piece.b)) {
            if (count == 0) {
                found[0] = piece.a;
                count = 1;
            } else if (std::hypot(piece.a.p.x - found[0].p.x, piece.a.p.y - found[0].p.y) > kSameCrossing) {
                found[1] = piece.a;
                return 2;
            }
            continue;
        }
        const CurvePoint middle = standardCurvePoint(A, (piece.a.L + piece.b.L) / 2.0);
        if (pieceMeets(arc, piece.a, middle)) {
            stack.push({piece.a, middle});
        }
        if (pieceMeets(arc, middle, piece.b)) {
            stack.push({middle, piece.b});
        }
    }
    return count;
}

} // namespace

extern "C" int ali_intpRA(const Calelm* r, const Calelm* aElm, double p1[2], double* a, double* b, double p2[2],
                          double* c, double* d) {
    const LaidClothoid laid(*aElm);
    if (aElm->r1 == aElm->r2 || !(r->k3 > 0.0) || !laid.valid() || !(r->par > 0.0)) {
        return -1;
    }
    const ArcInFrame arc(*r, laid);
    if (!std::isfinite(arc.R) || !std::isfinite(arc.centre.x + arc.centre.y + arc.start.x + arc.start.y) ||
        !std::isfinite(arc.finish.x + arc.finish.y)) {
        return -1;
    }
    CurvePoint found[2];
    int count = 0;
    try {
        count = search(laid, arc, found);
    } catch (const std::bad_alloc&) {
        return -1;
    }
    if (count == 0) {
        // Ends that meet count although no piece does.
        const double A = laid.parameter();
        const CurvePoint ends[2] = {standardCurvePoint(A, laid.flatStation()),
                                    standardCurvePoint(A, laid.flatStation() + laid.length())};
        const Point arcEnds[2] = {arc.start, arc.finish};
        for (int i = 0; i < 2; ++i) {
            for (int j = 0; j < 2; ++j) {
                const double gap =
                    std::hypot(ends[i].p.x - arc.centre.x - arcEnds[j].x, ends[i].p.y - arc.centre.y - arcEnds[j].y);
                if (count < 2 && gap < (i == 0 && j == 0 ? kStartsMeet : kEndsMeet)) {
                    found[count++] = ends[i];
                }
            }
        }
    }
    if (count <= 0) {
        return -1;
    }
    CentredArc run(arc.R, laid.mirrored() ? -r->dir : r->dir, arc.start, arc.finish);
    if (arc.whole) {
        run.sweep = kTwoPi;
    }
    const auto give = [&](const CurvePoint& at, double p[2], double* onArc, double* onClothoid) {
        const Point backCalc = laid.toCalc(at.p);
        p[0] = backCalc.x;
        p[1] = -backCalc.y;
        *onArc = run.lengthToNear({at.p.x - arc.centre.x, at.p.y - arc.centre.y});
        *onClothoid = laid.stationOf(at.L);
    };
    give(found[0], p1, a, b);
    if (count == 2) {
        give(found[1], p2, c, d);
        return 2;
    }
    // Square to the radius, the clothoid's tangent is the circle's own.
    const double rx = found[0].p.x - arc.centre.x;
    const double ry = found[0].p.y - arc.centre.y;
    const double cosine = (rx * found[0].u.x + ry * found[0].u.y) / std::sqrt(rx * rx + ry * ry);
    return std::fabs(cosine) < kSameLength ? 1 : 0;
}
