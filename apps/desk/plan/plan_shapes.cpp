// Lines and areas of the drawing as pixels of a view, cut to what can be seen of them.
#include "desk/plan/plan_shapes.h"

#include <algorithm>
#include <cmath>

namespace fenmark::desk {

using drawing::Element;
using drawing::ElementType;
using drawing::Pose;

namespace {

constexpr double kClipMargin = 32.0; // pixels outside the view that lines still reach

constexpr int kMaximumDepth = 40; // halvings of an element; a piece is then shorter than any number can resolve
// The most pieces that are looked at. A curve that needs more winds up in the picture, and its line of
// kMostElementPoints is drawn instead.
constexpr std::size_t kMostPieces = 20'000;
constexpr std::size_t kFewestPieces = 1'000; // also where the budget of the picture is spent

// Cuts a segment to the rectangle (Liang and Barsky 1984); false if nothing is left, or if it leads nowhere.
bool clipSegment(QPointF& a, QPointF& b, const QRectF& to) {
    const QPointF along = b - a;
    if (!std::isfinite(along.x()) || !std::isfinite(along.y())) {
        return false;
    }
    double from = 0.0;
    double until = 1.0;
    auto edge = [&](double step, double room) {
        if (step == 0.0) {
            return room >= 0.0;
        }
        const double t = room / step;
        if (step < 0.0) {
            from = std::max(from, t);
        } else {
            until = std::min(until, t);
        }
        return from <= until;
    };
    if (!edge(-along.x(), a.x() - to.left()) || !edge(along.x(), to.right() - a.x()) ||
        !edge(-along.y(), a.y() - to.top()) || !edge(along.y(), to.bottom() - a.y())) {
        return false;
    }
    const QPointF start = a;
    if (until < 1.0) {
        b = start + until * along;
    }
    if (from > 0.0) {
        a = start + from * along;
    }
    return true;
}

void appendSegment(std::vector<QPolygonF>& parts, QPointF a, QPointF b, const QRectF& to) {
    if (!clipSegment(a, b, to)) {
        return;
    }
    if (parts.empty() || parts.back().isEmpty() || parts.back().last() != a) {
        parts.push_back(QPolygonF({a}));
    }
    parts.back().append(b);
}

// Keeps the side of the area where inside(point) holds; cut(a, b) is the point on the edge between the two.
template <typename Inside, typename Cut>
QPolygonF keepSide(const QPolygonF& area, Inside&& inside, Cut&& cut) {
    QPolygonF kept;
    for (qsizetype i = 0; i < area.size(); ++i) {
        const QPointF& a = area[i];
        const QPointF& b = area[(i + 1) % area.size()];
        if (inside(a)) {
            kept.append(a);
        }
        if (inside(a) != inside(b)) {
            kept.append(cut(a, b));
        }
    }
    return kept;
}

struct Curve {
    const Element& element;
    const ViewTransform& view;
    const QRectF& within;
    double largestCurvature; // 1/m
    std::size_t mostPieces;
    std::vector<QPolygonF> parts;
    std::size_t looked = 0;

    QPointF at(double along) const {
        const Pose pose = drawing::poseOnElement(element, along);
        return view.toPixel(pose.point.x, pose.point.y);
    }

    void add(double from, double until, const QPointF& start, const QPointF& end, int depth) {
        if (++looked > mostPieces) {
            return;
        }
        const double length = until - from;
        // No point of a curve of bounded curvature lies farther from its chord than this, as long as it turns little.
        const double bulge = length * length * largestCurvature / 8.0 * view.pixelsPerMetre();
        const bool turnsLittle = length * largestCurvature < 1.0;
        if (turnsLittle) {
            const QRectF around =
                QRectF(start, end).normalized().adjusted(-bulge - 1, -bulge - 1, bulge + 1, bulge + 1);
            if (!around.intersects(within)) {
                return;
            }
        }
        if ((turnsLittle && bulge <= kChordPixels) || depth >= kMaximumDepth) {
            appendSegment(parts, start, end, within);
            return;
        }
        const double middle = 0.5 * (from + until);
        const QPointF point = at(middle);
        add(from, middle, start, point, depth + 1);
        add(middle, until, point, end, depth + 1);
    }
};

} // namespace

QRectF clipOf(const ViewTransform& view) {
    return QRectF(QPointF(0, 0), view.size()).adjusted(-kClipMargin, -kClipMargin, kClipMargin, kClipMargin);
}

QPolygonF pixelsOf(std::span<const host::MdGePoint3d> vertices, const ViewTransform& view) {
    QPolygonF polygon;
    polygon.reserve(static_cast<qsizetype>(vertices.size()));
    for (const host::MdGePoint3d& vertex : vertices) {
        polygon.append(view.toPixel(vertex.x, vertex.y));
    }
    return polygon;
}

std::vector<QPolygonF> clippedLine(const QPolygonF& line, bool closed, const QRectF& to) {
    std::vector<QPolygonF> parts;
    for (qsizetype i = 0; i + 1 < line.size(); ++i) {
        appendSegment(parts, line[i], line[i + 1], to);
    }
    if (closed && line.size() > 2) {
        appendSegment(parts, line.last(), line.first(), to);
    }
    return parts;
}

QPolygonF clippedArea(const QPolygonF& area, const QRectF& to) {
    auto atX = [](double x) {
        return [x](const QPointF& a, const QPointF& b) {
            return QPointF(x, a.y() + (b.y() - a.y()) * (x - a.x()) / (b.x() - a.x()));
        };
    };
    auto atY = [](double y) {
        return [y](const QPointF& a, const QPointF& b) {
            return QPointF(a.x() + (b.x() - a.x()) * (y - a.y()) / (b.y() - a.y()), y);
        };
    };
    QPolygonF kept = keepSide(
        area, [&](const QPointF& p) { return p.x() >= to.left(); }, atX(to.left()));
    kept = keepSide(
        kept, [&](const QPointF& p) { return p.x() <= to.right(); }, atX(to.right()));
    kept = keepSide(
        kept, [&](const QPointF& p) { return p.y() >= to.top(); }, atY(to.top()));
    return keepSide(
        kept, [&](const QPointF& p) { return p.y() <= to.bottom(); }, atY(to.bottom()));
}

std::vector<QPolygonF> elementPixels(const Element& element, const ViewTransform& view, const QRectF& within,
                                     CurveBudget& budget) {
    const double curvature = element.type == ElementType::Straight
                                 ? 0.0
                                 : std::max(std::abs(element.startCurvature()), std::abs(element.endCurvature()));
    const std::size_t mostPieces = std::clamp(budget.left, kFewestPieces, kMostPieces);
    const auto spend = [&budget](std::size_t places) { budget.left -= std::min(budget.left, places); };
    Curve curve{element, view, within, curvature, mostPieces, {}};
    if (drawing::isUsable(element)) {
        curve.add(0.0, element.length, view.toPixel(element.start.x, element.start.y),
                  view.toPixel(element.end.x, element.end.y), 0);
        spend(std::min(curve.looked, mostPieces));
        if (curve.looked <= mostPieces) {
            return std::move(curve.parts);
        }
    }
    std::vector<host::PlanPoint> points;
    drawing::appendElementLine(element, kChordPixels / view.pixelsPerMetre(), points, budget.left);
    spend(points.size());
    QPolygonF line;
    for (const host::PlanPoint& point : points) {
        line.append(view.toPixel(point.x, point.y));
    }
    return clippedLine(line, false, within);
}

double distanceToLine(const QPolygonF& line, const QPointF& p, bool closed) {
    double nearest = INFINITY;
    const qsizetype count = line.size();
    for (qsizetype i = 0; i < count; ++i) {
        const QPointF& a = line[i];
        if (count == 1 || (i + 1 == count && !closed)) {
            nearest = std::min(nearest, std::hypot(p.x() - a.x(), p.y() - a.y()));
            continue;
        }
        const QPointF& b = line[(i + 1) % count];
        const QPointF along = b - a;
        const double square = QPointF::dotProduct(along, along);
        const double t = square > 0.0 ? std::clamp(QPointF::dotProduct(p - a, along) / square, 0.0, 1.0) : 0.0;
        const QPointF foot = a + t * along;
        nearest = std::min(nearest, std::hypot(p.x() - foot.x(), p.y() - foot.y()));
    }
    return nearest;
}

} // namespace fenmark::desk
