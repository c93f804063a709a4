// An alignment by station: a chain of src/curve in the drawing's plane.
#include "drawing/alignment_geometry.h"

#include <cmath>
#include <utility>

namespace fenmark::drawing {

AlignmentGeometry::AlignmentGeometry(std::span<const Element> elements, double startStation)
    : startStation_(startStation) {
    std::vector<curve::Curve> curves;
    std::vector<std::uint32_t> leftOut;
    curves.reserve(elements.size());
    double length = 0.0;
    for (std::size_t i = 0; i < elements.size(); ++i) {
        if (!isUsable(elements[i]) || !std::isfinite(length + elements[i].length)) {
            continue;
        }
        length += elements[i].length;
        if (i > curves.size()) {
            leftOut.resize(curves.size(), 0);
            leftOut.push_back(static_cast<std::uint32_t>(i - curves.size()));
        }
        curves.push_back(curveOf(elements[i]));
    }
    whole_ = curves.size() == elements.size();
    // A start station that is no number leaves no station to ask for.
    if (std::isfinite(startStation + length) && chain_.take(std::move(curves)) == curve::ChainStatus::Ok) {
        leftOut_ = std::move(leftOut);
    }
}

std::optional<PlanPoint> AlignmentGeometry::pointAt(double station, double offset) const {
    const std::optional<curve::Point> point = chain_.pointAt(station - startStation_, curveOffset(offset));
    return point ? std::optional(planPoint(*point)) : std::nullopt;
}

std::optional<Pose> AlignmentGeometry::poseAt(double station) const {
    const std::optional<curve::ChainPlace> place = chain_.placeAt(station - startStation_);
    return place ? std::optional(Pose{planPoint(place->point), place->azimuth}) : std::nullopt;
}

std::optional<std::size_t> AlignmentGeometry::elementAt(double station) const {
    const std::optional<std::size_t> curve = chain_.curveAt(station - startStation_);
    return curve && !leftOut_.empty() ? *curve + leftOut_[*curve] : curve;
}

std::optional<StationOffset> AlignmentGeometry::locate(const PlanPoint& point) const {
    const std::optional<curve::ChainFoot> foot = chain_.locate(curvePoint(point));
    if (!foot) {
        return std::nullopt;
    }
    return StationOffset{startStation_ + foot->distance, curveOffset(foot->offset), foot->perpendicular};
}

std::optional<StationOffset> AlignmentGeometry::locateWithin(const PlanPoint& point, double away) const {
    const std::optional<curve::ChainFoot> foot = chain_.locateWithin(curvePoint(point), away);
    if (!foot) {
        return std::nullopt;
    }
    return StationOffset{startStation_ + foot->distance, curveOffset(foot->offset), foot->perpendicular};
}

} // namespace fenmark::drawing
