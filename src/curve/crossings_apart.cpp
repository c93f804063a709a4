// Whether two pieces lie apart: by circles about them, or by rectangles along their chords.
#include "curve/crossing_search.h"

#include <algorithm>
#include <cmath>

namespace fenmark::curve::crossing {

namespace {

struct Disc {
    Point centre;
    double radius = 0.0;
};

} // namespace

bool Search::apartByDiscs(const PreparedCurve& pc, const Piece& p, const PreparedCurve& qc, const Piece& q) const {
    struct Shape {
        std::array<Disc, 2> discs;
        std::size_t count = 0;
        Disc hole;
        bool hasHole = false;
    };
    const auto shapeOf = [](const PreparedCurve& curve, const Piece& part) {
        Shape shape;
        const double middle = part.from + 0.5 * part.length();
        shape.discs[shape.count++] = {curve.pointAt(middle), 0.5 * part.length()};
        const bool flatFirst = std::abs(part.kA) <= std::abs(part.kB);
        const auto osculating = [](const Frame& frame, double k) {
            const Point right = rightOf(frame.tangent);
            return Disc{{frame.point.x + right.x / k, frame.point.y + right.y / k}, 1.0 / std::abs(k)};
        };
        const double kFlat = flatFirst ? part.kA : part.kB;
        if (std::abs(kFlat) * part.length() > 1.0) {
            shape.discs[shape.count++] = osculating(flatFirst ? part.a : part.b, kFlat);
        }
        const double kSharp = flatFirst ? part.kB : part.kA;
        if (kSharp != 0.0) {
            shape.hole = osculating(flatFirst ? part.b : part.a, kSharp);
            shape.hasHole = std::isfinite(shape.hole.centre.x) && std::isfinite(shape.hole.centre.y);
        }
        return shape;
    };
    const Shape sp = shapeOf(pc, p);
    const Shape sq = shapeOf(qc, q);
    // Metres: large circles are known to some last bits of their radii, 2.2e-16 of them each.
    const auto slack = [&](double radii) { return same_ + 1e-14 * radii; };
    for (std::size_t i = 0; i < sp.count; ++i) {
        for (std::size_t j = 0; j < sq.count; ++j) {
            const double radii = sp.discs[i].radius + sq.discs[j].radius;
            if (norm(sp.discs[i].centre - sq.discs[j].centre) > radii + slack(radii)) {
                return true;
            }
        }
    }
    const auto swallowed = [&](const Shape& inner, const Shape& outer) {
        for (std::size_t i = 0; i < inner.count && outer.hasHole; ++i) {
            const double reach = norm(inner.discs[i].centre - outer.hole.centre) + inner.discs[i].radius;
            if (reach + slack(reach) < outer.hole.radius) {
                return true;
            }
        }
        return false;
    };
    return swallowed(sp, sq) || swallowed(sq, sp);
}

// Two rectangles along the chords, by their sides' directions.
bool Search::apartByBands(const Piece& p, const Piece& q) const {
    const auto apart = [&](const Piece& own, const Piece& other) {
        const Point chord = own.b.point - own.a.point;
        const double length = norm(chord);
        if (!(length > 0.0)) {
            return false;
        }
        const Point along{chord.x / length, chord.y / length};
        const double slack = own.width() + other.width() + same_;
        const Point a = other.a.point - own.a.point;
        const Point b = other.b.point - own.a.point;
        const double sideA = cross(along, a);
        const double sideB = cross(along, b);
        if (std::min(sideA, sideB) > slack || std::max(sideA, sideB) < -slack) {
            return true;
        }
        const double aheadA = dot(along, a);
        const double aheadB = dot(along, b);
        const double end = other.width() + same_;
        return std::min(aheadA, aheadB) > length + end || std::max(aheadA, aheadB) < -end;
    };
    return apart(p, q) || apart(q, p);
}

} // namespace fenmark::curve::crossing
