// One element of an alignment: points on it, its centre and its PI, its box, and the line drawn for it.
#include "drawing/element.h"

#include <algorithm>
#include <cmath>

namespace fenmark::drawing {

namespace {

// A turn this small (radians) has no PI.
constexpr double kParallelTurn = 1e-12;

} // namespace

PlanPoint Element::centre() const {
    const double toCentre = 1.0 / startCurvature();
    return {start.x - std::sin(direction) * toCentre, start.y + std::cos(direction) * toCentre};
}

std::optional<PlanPoint> Element::pi() const {
    const double sine = std::sin(turn());
    if (!(std::abs(sine) > kParallelTurn)) {
        return std::nullopt;
    }
    const double last = endDirection();
    const double dx = end.x - start.x;
    const double dy = end.y - start.y;
    const double along = (dx * std::sin(last) - dy * std::cos(last)) / sine;
    return PlanPoint{start.x + along * std::cos(direction), start.y + along * std::sin(direction)};
}

curve::Curve curveOf(const Element& element) {
    const bool straight = element.type == ElementType::Straight;
    return {{curvePoint(element.start), element.direction},
            element.length,
            straight ? 0.0 : element.startCurvature(),
            straight ? 0.0 : element.endCurvature()};
}

bool isUsable(const Element& element) {
    return curve::isUsable(curveOf(element));
}

Pose poseOnElement(const Element& element, double along) {
    const curve::Curve curve = curveOf(element);
    if (!curve::isUsable(curve) || !std::isfinite(along)) {
        return {element.start, element.direction};
    }
    const curve::Pose pose = curve::poseAt(curve, along);
    return {planPoint(pose.point), pose.azimuth};
}

std::optional<ElementBox> boxOfElement(const Element& element) {
    const curve::Curve curve = curveOf(element);
    if (!curve::isUsable(curve)) {
        return std::nullopt;
    }
    const curve::Box box = curve::boxOf(curve);
    // The end that the drawing keeps may differ from the curve's in the last digits, and both are drawn.
    const bool hasEnd = std::isfinite(element.end.x) && std::isfinite(element.end.y);
    const PlanPoint end = hasEnd ? element.end : element.start;
    return ElementBox{std::min(box.minX, end.x), std::min(box.minY, end.y), std::max(box.maxX, end.x),
                      std::max(box.maxY, end.y)};
}

double appendElementLine(const Element& element, double tolerance, std::vector<PlanPoint>& line, std::size_t left) {
    line.push_back(element.start);
    double error = tolerance;
    if (element.type != ElementType::Straight && element.length > 0.0 && isUsable(element)) {
        const curve::Line drawn =
            curve::lineOf(curveOf(element), tolerance, std::clamp(left, kFewestElementPoints, kMostElementPoints));
        for (std::size_t i = 1; i + 1 < drawn.points.size(); ++i) {
            line.push_back(planPoint(drawn.points[i]));
        }
        if (drawn.error > tolerance) {
            // No point of a line lies farther from the curve than the box is wide.
            const curve::Box box = curve::boxOf(curveOf(element));
            error = std::max(tolerance, std::min(drawn.error, std::hypot(box.maxX - box.minX, box.maxY - box.minY)));
        }
    }
    line.push_back(element.end);
    return error;
}

double LinePoints::append(const Element& element, double tolerance, std::vector<PlanPoint>& line) {
    const std::size_t before = line.size();
    const double error = appendElementLine(element, tolerance, line, left());
    const std::size_t points = line.size() - before;
    alignment_ -= std::min(alignment_, points);
    if (points > kUsualElementPoints) {
        drawing_ -= std::min(drawing_, points);
    }
    return error;
}

} // namespace fenmark::drawing
