// The sections of one alignment as the panels show them.
#include "desk/sections/section_model.h"

#include "exchange/plan/plan_geometry.h"
#include "exchange/planned_heights.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace fenmark::desk {

using drawing::Drawing;
using exchange::LongitudinalPoint;

namespace {

constexpr double kSamePlace = 1e-3; // metres
constexpr double kLeastRange = 1.0; // metres of height that a graph shows at least
constexpr double kShareOfGraph = 0.85;

} // namespace

void SectionModel::setDrawing(const Drawing* drawing) {
    drawing_ = drawing;
    results_.reset();
    planned_.clear();
}

const exchange::Results& SectionModel::results() {
    if (!results_) {
        results_ = exchange::resultsOf(*drawing_);
    }
    return *results_;
}

const exchange::AlignmentResults& SectionModel::resultsOf(std::size_t alignment) {
    return drawing_ != nullptr && alignment < results().alignments.size() ? results().alignments[alignment] : none_;
}

const std::vector<LongitudinalPoint>& SectionModel::plannedOf(std::size_t alignment) {
    planned_.resize(std::max(planned_.size(), alignment + 1));
    if (!planned_[alignment]) {
        planned_[alignment] = exchange::plannedHeights(*drawing_, alignment);
    }
    return *planned_[alignment];
}

std::vector<LongitudinalPoint> SectionModel::groundOf(std::size_t alignment) {
    const exchange::AlignmentResults& found = resultsOf(alignment);
    if (!found.longitudinal.empty()) {
        return found.longitudinal;
    }
    std::vector<LongitudinalPoint> ground;
    for (const exchange::CrossSection& section : found.sections) {
        const auto centre =
            std::min_element(section.points.begin(), section.points.end(),
                             [](const auto& a, const auto& b) { return std::abs(a.offset) < std::abs(b.offset); });
        if (centre != section.points.end()) {
            ground.push_back({section.station, centre->height, section.name});
        }
    }
    return ground;
}

std::optional<std::size_t> SectionModel::alignmentOf(const std::optional<PlanObject>& selected) {
    if (drawing_ == nullptr) {
        return std::nullopt;
    }
    if (selected && selected->kind == PlanObject::Kind::Alignment) {
        return selected->index;
    }
    const auto& all = results().alignments;
    std::optional<std::size_t> only;
    std::optional<std::size_t> nearest;
    double away = std::numeric_limits<double>::infinity();
    for (std::size_t i = 0; i < all.size(); ++i) {
        if (all[i].longitudinal.empty() && all[i].sections.empty()) {
            continue;
        }
        only = only || nearest ? std::nullopt : std::optional(i);
        double here = std::numeric_limits<double>::max();
        if (selected && drawing_->isPoint(selected->index)) {
            const host::MdGePoint3d& at = drawing_->entity(selected->index).position();
            if (const auto foot = drawing_->geometry(i).locate({at.x, at.y}); foot && foot->perpendicular) {
                here = std::abs(foot->offset);
            }
        }
        if (!nearest || here < away) {
            away = here;
            nearest = i;
        }
    }
    return selected && away < std::numeric_limits<double>::max() ? nearest : only;
}

std::optional<double> SectionModel::stationOf(std::size_t alignment, const std::optional<PlanObject>& selected) const {
    if (drawing_ == nullptr || !selected || alignment >= drawing_->alignmentCount()) {
        return std::nullopt;
    }
    if (selected->kind == PlanObject::Kind::Alignment) {
        if (selected->index != alignment || !selected->element) {
            return std::nullopt;
        }
        double station = drawing_->alignment(alignment).startStation;
        for (std::size_t i = 0; i < *selected->element; ++i) {
            station += drawing_->alignment(alignment).elements[i].length;
        }
        return station;
    }
    if (!drawing_->isPoint(selected->index)) {
        return std::nullopt;
    }
    const host::MdGePoint3d& at = drawing_->entity(selected->index).position();
    const auto foot = drawing_->geometry(alignment).locate({at.x, at.y});
    return foot ? std::optional(foot->station) : std::nullopt;
}

std::optional<std::size_t> resultAt(const Drawing& drawing, const PlanIndex& index, FigureStyle style,
                                    const host::PlanPoint& at, double height) {
    drawing::Extent box;
    box.add(at.x - kSamePlace, at.y - kSamePlace);
    box.add(at.x + kSamePlace, at.y + kSamePlace);
    std::optional<std::size_t> found;
    index.query(box, [&](const PlanFigure& figure) {
        if (figure.figureStyle() == style &&
            std::abs(drawing.entity(figure.entity).position().z - height) <= kSamePlace) {
            found = std::min(found.value_or(figure.entity), static_cast<std::size_t>(figure.entity));
        }
        return true;
    });
    return found;
}

void fitHeights(SectionFrame& frame, double low, double high, double exaggeration) {
    const double room = std::max(1.0, frame.bottom - frame.top);
    const double range = std::max(high - low, kLeastRange);
    frame.rise = exaggeration > 0.0 ? exaggeration * frame.scale : kShareOfGraph * room / range;
    const double step = exchange::roundStep(std::max(range, room / frame.rise) / 10.0);
    // In the middle of what the graph shows, on a round base line.
    const double spare = std::max(0.0, room / frame.rise - (high - low));
    frame.base = std::floor((low - spare / 3.0) / step) * step;
}

} // namespace fenmark::desk
