// Whether the points of a route lie on the alignment that was made of it.
#include "host/embedded/route_fit.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

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

} // namespace fenmark::host::embedded
