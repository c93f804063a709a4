// What the two subdivision searches share: a point of a clothoid with its tangent, the tangent triangle of a piece, and
// the stack of pieces still to be looked at.
//
// Between two points of a clothoid (turning less than pi) the curve lies inside the triangle of the two points and the
// crossing of their tangents, the apex.
#pragma once

#include <array>
#include <vector>

#include "alignment/walking/laid_clothoid.h"

namespace fenmark::alignment {

// A point of a curve and the unit tangent there.
struct CurvePoint {
    double L = 0.0; // standard station
    Point p;
    Point u;
};

// On the standard clothoid. The series takes a station of less than about A / 600 for the origin; a search needs the
// point where the curve really is, or the pieces that span this step never get short.
inline CurvePoint standardCurvePoint(double A, double L) {
    const double tau = L * L / (2.0 * A * A);
    const Point p = tau < kSameAngle ? Point{L, L * tau / 3.0} : clothoidPoint(A, tau);
    return {L, p, {std::cos(tau), std::sin(tau)}};
}

struct Triangle {
    Point a;
    Point apex;
    Point b;
};

// Apex of the piece between two points: the crossing of the tangents, or `parallel` where they have none.
inline Point apexOf(const CurvePoint& a, const CurvePoint& b, Point parallel) {
    const double det = a.u.x * b.u.y - a.u.y * b.u.x;
    // Below the angle step the tangents count as parallel or antiparallel; the determinant is the sine between them.
    if (!(std::fabs(det) >= kSameAngle)) {
        return parallel;
    }
    const double t = ((b.p.x - a.p.x) * b.u.y - (b.p.y - a.p.y) * b.u.x) / det;
    return {a.p.x + t * a.u.x, a.p.y + t * a.u.y};
}

inline double chordSquared(const CurvePoint& a, const CurvePoint& b) {
    const double dx = b.p.x - a.p.x;
    const double dy = b.p.y - a.p.y;
    return dx * dx + dy * dy;
}

// A leaf of the search: a chord below 1e-4, or a station span that is not cut further.
inline bool isShort(const CurvePoint& a, const CurvePoint& b) {
    return chordSquared(a, b) < kPieceChord * kPieceChord || b.L - a.L <= kPieceSpan;
}

// Last in, first out. A depth-first search of real elements stays within the fixed part.
template <typename Item, std::size_t kFixed>
class WorkStack {
  public:
    void push(const Item& item) {
        if (size_ < kFixed) {
            fixed_[size_] = item;
        } else {
            more_.push_back(item);
        }
        ++size_;
    }

    Item pop() {
        --size_;
        if (size_ < kFixed) {
            return fixed_[size_];
        }
        const Item item = more_.back();
        more_.pop_back();
        return item;
    }

    bool empty() const { return size_ == 0; }

  private:
    std::array<Item, kFixed> fixed_;
    std::vector<Item> more_;
    std::size_t size_ = 0;
};

} // namespace fenmark::alignment
