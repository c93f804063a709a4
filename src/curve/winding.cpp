// The parts of a curve that winds up, and the least distance from a point to each.
#include "curve/winding.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace fenmark::curve {

namespace {

// Metres that a part is taken to be wider, and what rounding makes of its length, its turn and its coordinates.
constexpr double kMargin = 1e-7;
constexpr double kLengthShare = 1e-12;
constexpr double kRounding = 8.0 * std::numeric_limits<double>::epsilon();

struct Span {
    double from = 0.0;
    double to = 0.0;
    double extent = 0.0;
    double leeway = 0.0;
    double area = 0.0; // around the part, of the points that it is not known to be far from
};

Span spanOf(const Curve& curve, double growth, double from, double to) {
    const double first = curvatureAt(curve, from);
    const double last = curvatureAt(curve, to);
    const double flat = std::min(std::abs(first), std::abs(last));
    const double sharp = std::max(std::abs(first), std::abs(last));
    const double half = 0.5 * (to - from);
    Span span{from, to, half, std::abs(growth) * half * half * half / 6.0, 0.0};
    if (flat > 0.0 && (first < 0.0) == (last < 0.0)) {
        span.leeway = std::min(span.leeway, 2.0 * (sharp - flat) / flat / sharp);
        span.extent = std::min(span.extent, 2.0 / flat);
    }
    span.area = span.leeway * std::min(to - from, kTwoPi * span.extent);
    return span;
}

} // namespace

WindingBound::WindingBound(const Curve& curve, std::size_t mostParts) {
    const double growth = (curve.endCurvature - curve.startCurvature) / curve.length;
    const double sharpest = std::max(std::abs(curve.startCurvature), std::abs(curve.endCurvature));
    std::vector<Span> spans{spanOf(curve, growth, 0.0, curve.length)};
    while (spans.size() < mostParts) {
        const auto widest =
            std::max_element(spans.begin(), spans.end(), [](const Span& a, const Span& b) { return a.area < b.area; });
        const double middle = 0.5 * (widest->from + widest->to);
        const double to = widest->to;
        *widest = spanOf(curve, growth, widest->from, middle);
        spans.push_back(spanOf(curve, growth, middle, to));
    }
    const PreparedCurve prepared(curve);
    for (const Span& span : spans) {
        const double along = 0.5 * (span.from + span.to);
        const Frame middle = prepared.frameAt(along);
        const double margin = kMargin + (kLengthShare + kRounding * sharpest * curve.length) * curve.length +
                              kRounding * (std::abs(middle.point.x) + std::abs(middle.point.y));
        const Part part{middle, curvatureAt(curve, along), span.extent + margin, span.leeway + margin};
        if (!std::isfinite(part.extent + part.leeway + middle.point.x + middle.point.y)) {
            parts_.clear();
            return;
        }
        parts_.push_back(part);
    }
}

bool WindingBound::mayComeNearer(const Point& point, double squared) const {
    const double limit = std::sqrt(squared);
    for (const Part& part : parts_) {
        const double x = point.x - part.middle.point.x;
        const double y = point.y - part.middle.point.y;
        const double away = x * x + y * y;
        const double farthest = part.extent + limit;
        if (!(away < farthest * farthest)) {
            continue;
        }
        // To the circle by the power of the point, which also serves a curvature of 0.
        const double along = part.curvature * (x * part.middle.tangent.x + y * part.middle.tangent.y);
        const double right = y * part.middle.tangent.x - x * part.middle.tangent.y;
        const double toCentre = 1.0 - part.curvature * right;
        const double power = std::abs(part.curvature * away - 2.0 * right);
        const double toCircle = power / (1.0 + std::sqrt(toCentre * toCentre + along * along));
        if (toCircle * (1.0 - kLengthShare) < part.leeway + limit) {
            return true;
        }
    }
    return parts_.empty();
}

} // namespace fenmark::curve
