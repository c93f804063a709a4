// Whether the points of a route lie on the alignment that was made of it.
#include "host/embedded/route_fit.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <vector>

namespace fenmark::host::embedded {

namespace {

using drawing::Element;
using drawing::ElementType;

double distance(const MdGePoint3d& point, const PlanPoint& other) {
    return std::hypot(point.x - other.x, point.y - other.y);
}

bool isNear(const Element& element, const MdGePoint3d& point, double tolerance) {
    if (!drawing::isUsable(element)) { // no part of the alignment
        return false;
    }
    if (distance(point, element.start) <= tolerance || distance(point, element.end) <= tolerance) {
        return true;
    }
    if (element.type != ElementType::Straight) {
        return false;
    }
    const double east = std::cos(element.direction);
    const double north = std::sin(element.direction);
    const double along = (point.x - element.start.x) * east + (point.y - element.start.y) * north;
    const double foot = std::clamp(along, 0.0, element.length);
    return distance(point, {element.start.x + foot * east, element.start.y + foot * north}) <= tolerance;
}

} // namespace

bool fitsInOrder(std::span<const Element> elements, std::span<const MdGePoint3d> points, double tolerance) {
    std::size_t at = 0;
    for (const MdGePoint3d& point : points) {
        while (at < elements.size() && !isNear(elements[at], point, tolerance)) {
            ++at;
        }
        if (at == elements.size()) {
            return false;
        }
    }
    return true;
}

double offAtEnds(std::span<const Element> elements, std::span<const MdGePoint3d> points) {
    const auto first = std::find_if(elements.begin(), elements.end(), drawing::isUsable);
    if (first == elements.end() || points.empty()) {
        return 0.0;
    }
    const auto last = std::find_if(elements.rbegin(), elements.rend(), drawing::isUsable);
    return std::max(distance(points.front(), first->start), distance(points.back(), last->end));
}

FarthestPoint farthestPoint(std::span<const Element> elements, std::span<const MdGePoint3d> points,
                            const std::function<double(const MdGePoint3d&)>& distanceFrom) {
    if (elements.empty()) {
        return {};
    }
    FarthestPoint farthest;
    farthest.distance = offAtEnds(elements, points);

    // No point lies farther off the alignment than from a joint of it, and in most routes each has the joint of its number.
    struct FromJoint {
        double distance = 0.0;
        std::size_t point = 0;
    };
    std::vector<FromJoint> order;
    for (std::size_t i = 1; i + 1 < points.size(); ++i) {
        const Element& before = elements[std::min(i, elements.size()) - 1];
        const double fromJoint =
            drawing::isUsable(before) ? distance(points[i], before.end) : std::numeric_limits<double>::infinity();
        if (!(fromJoint <= farthest.distance)) {
            order.push_back({fromJoint, i});
        }
    }
    const std::size_t asked = std::min(order.size(), kMostAsked);
    const auto isFarther = [](const FromJoint& a, const FromJoint& b) { return a.distance > b.distance; };
    const auto behind = order.begin() + static_cast<std::ptrdiff_t>(asked);
    std::partial_sort(order.begin(), behind, order.end(), isFarther);
    for (auto at = order.begin(); at != behind; ++at) {
        if (at->distance <= farthest.distance) {
            return farthest;
        }
        farthest.distance = std::max(farthest.distance, distanceFrom(points[at->point]));
    }
    farthest.atLeast =
        std::any_of(behind, order.end(), [&](const FromJoint& left) { return left.distance > farthest.distance; });
    return farthest;
}

} // namespace fenmark::host::embedded
