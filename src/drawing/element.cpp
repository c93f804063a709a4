// One element of an alignment: points on it, its centre and its PI, and the line drawn for it.
#include "drawing/alignment_geometry.h"
#include "drawing/clothoid_series.h"

#include <algorithm>
#include <cmath>

namespace fenmark::drawing {

namespace {

// The most points that one element is drawn with; reached by no element of survey size.
constexpr std::size_t kMostLinePoints = 1'000'000;
// A turn this small (radians) has no PI.
constexpr double kParallelTurn = 1e-12;
// The most parts that a curve is divided into, against values that no survey holds.
constexpr double kMostParts = 1e6;

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

Pose advance(const Pose& from, double curvature, double growth, double along) {
    const double sharpest = std::max(std::abs(curvature), std::abs(curvature + growth * along));
    const double parts = std::clamp(std::ceil(sharpest * std::abs(along) / kQuadratureTurn), 1.0, kMostParts);
    const double step = along / parts;
    Pose pose = from;
    double direction = 0.0; // against the start, so that it stays exact
    for (double part = 0.0; part < parts; part += 1.0) {
        const double u = part * step;
        const double k = curvature + growth * u;
        const PlanPoint local = quadratureFromStart(k, growth, step);
        const double cosine = std::cos(from.direction + direction);
        const double sine = std::sin(from.direction + direction);
        pose.point.x += local.x * cosine - local.y * sine;
        pose.point.y += local.x * sine + local.y * cosine;
        direction = (u + step) * (curvature + 0.5 * growth * (u + step));
    }
    pose.direction = from.direction + along * (curvature + 0.5 * growth * along);
    return pose;
}

namespace {

double growthOf(const Element& element) {
    return element.length > 0.0 ? (element.endCurvature() - element.startCurvature()) / element.length : 0.0;
}

// How far one may go from a place of a curve before the chord leaves it by more than the tolerance: h^2 k / 8.
double chordLength(double curvature, double growth, double along, double tolerance) {
    const double here = std::abs(curvature + growth * along);
    const double drop = 8.0 * tolerance;
    double step = here > 0.0 ? std::sqrt(drop / here) : kInfiniteRadius;
    if (growth != 0.0) {
        step = std::min(step, std::cbrt(drop / std::abs(growth)) * 2.0);
    }
    const double sharpest = std::max(here, std::abs(curvature + growth * (along + step)));
    return sharpest > 0.0 ? std::sqrt(drop / sharpest) : step;
}

} // namespace

Pose poseOnElement(const Element& element, double along) {
    return advance({element.start, element.direction}, element.startCurvature(), growthOf(element), along);
}

void appendElementLine(const Element& element, double tolerance, std::vector<PlanPoint>& line) {
    line.push_back(element.start);
    if (element.type != ElementType::Straight && element.length > 0.0) {
        const double curvature = element.startCurvature();
        const double growth = growthOf(element);
        Pose pose{element.start, element.direction};
        double along = 0.0;
        for (std::size_t count = 0; count < kMostLinePoints; ++count) {
            const double step = chordLength(curvature, growth, along, tolerance);
            if (!(along + step < element.length)) {
                break;
            }
            pose = advance(pose, curvature + growth * along, growth, step);
            along += step;
            line.push_back(pose.point);
        }
    }
    line.push_back(element.end);
}

} // namespace fenmark::drawing
