// Small plan geometry that the exchange formats share.
#include "exchange/plan/plan_geometry.h"

#include <algorithm>
#include <cmath>

namespace fenmark::exchange {

using host::MdGePoint3d;
using host::PlanPoint;

namespace {

// Where the ring crosses the height y, sorted by x.
std::vector<double> crossings(std::span<const MdGePoint3d> ring, double y) {
    std::vector<double> at;
    for (std::size_t i = 0; i < ring.size(); ++i) {
        const MdGePoint3d& a = ring[i];
        const MdGePoint3d& b = ring[(i + 1) % ring.size()];
        if ((a.y <= y) != (b.y <= y)) {
            at.push_back(a.x + (y - a.y) / (b.y - a.y) * (b.x - a.x));
        }
    }
    std::sort(at.begin(), at.end());
    return at;
}

} // namespace

double signedArea(std::span<const MdGePoint3d> ring) {
    if (ring.empty()) {
        return 0.0;
    }
    // Taken from the first vertex, so that large coordinates do not cancel.
    const MdGePoint3d& origin = ring.front();
    double twice = 0.0;
    for (std::size_t i = 0; i < ring.size(); ++i) {
        const MdGePoint3d& a = ring[i];
        const MdGePoint3d& b = ring[(i + 1) % ring.size()];
        twice += (a.x - origin.x) * (b.y - origin.y) - (b.x - origin.x) * (a.y - origin.y);
    }
    return twice / 2.0;
}

PlanPoint labelPoint(std::span<const MdGePoint3d> ring) {
    if (ring.empty()) {
        return {};
    }
    const MdGePoint3d& origin = ring.front();
    double twice = 0.0;
    PlanPoint moment;
    PlanPoint mean;
    double low = origin.y;
    double high = origin.y;
    for (std::size_t i = 0; i < ring.size(); ++i) {
        const MdGePoint3d& a = ring[i];
        const MdGePoint3d& b = ring[(i + 1) % ring.size()];
        const double cross = (a.x - origin.x) * (b.y - origin.y) - (b.x - origin.x) * (a.y - origin.y);
        twice += cross;
        moment.x += cross * (a.x + b.x - 2.0 * origin.x);
        moment.y += cross * (a.y + b.y - 2.0 * origin.y);
        mean.x += (a.x - origin.x) / static_cast<double>(ring.size());
        mean.y += (a.y - origin.y) / static_cast<double>(ring.size());
        low = std::min(low, a.y);
        high = std::max(high, a.y);
    }
    if (twice == 0.0) {
        return {origin.x + mean.x, origin.y + mean.y};
    }
    const PlanPoint centroid{origin.x + moment.x / (3.0 * twice), origin.y + moment.y / (3.0 * twice)};
    const std::vector<double> through = crossings(ring, centroid.y);
    for (std::size_t i = 0; i + 1 < through.size(); i += 2) {
        if (through[i] <= centroid.x && centroid.x <= through[i + 1]) {
            return centroid;
        }
    }
    const double middle = (low + high) / 2.0;
    const std::vector<double> at = crossings(ring, middle);
    PlanPoint best = centroid;
    double width = 0.0;
    for (std::size_t i = 0; i + 1 < at.size(); i += 2) {
        if (at[i + 1] - at[i] > width) {
            width = at[i + 1] - at[i];
            best = {(at[i] + at[i + 1]) / 2.0, middle};
        }
    }
    return best;
}

drawing::Extent boxOf(const drawing::Alignment& alignment) {
    drawing::Extent extent;
    for (const drawing::Element& element : alignment.elements) {
        extent.add(element.start.x, element.start.y);
        extent.add(element.end.x, element.end.y);
        if (const auto box = drawing::boxOfElement(element)) {
            extent.add(box->minX, box->minY);
            extent.add(box->maxX, box->maxY);
        }
    }
    return extent;
}

std::vector<PlanPoint> lineOfAlignment(const drawing::Alignment& alignment, drawing::LinePoints& points) {
    std::vector<PlanPoint> line;
    points.beginAlignment();
    for (const drawing::Element& element : alignment.elements) {
        points.append(element, drawing::kLineTolerance, line);
    }
    const auto same = [](const PlanPoint& a, const PlanPoint& b) { return a == b; };
    line.erase(std::unique(line.begin(), line.end(), same), line.end());
    return line;
}

double roundStep(double wanted) {
    const double decade = std::pow(10.0, std::floor(std::log10(wanted)));
    for (const double factor : {1.0, 2.0, 5.0}) {
        if (decade * factor >= wanted * (1.0 - 1e-9)) {
            return decade * factor;
        }
    }
    return 10.0 * decade;
}

} // namespace fenmark::exchange
