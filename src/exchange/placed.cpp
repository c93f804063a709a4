// What of a drawing has a place that a file can hold.
#include "exchange/placed.h"

#include "exchange/kinds.h"

#include <algorithm>
#include <cmath>

namespace fenmark::exchange {

using drawing::Alignment;
using drawing::Element;
using drawing::EntityView;

namespace {

bool isNear(double value) {
    return std::abs(value) <= kFarthest; // false for what is no number
}

// Radians. An arc between two points of a survey turns less than once; one that turns more often than this has no end
// that its length can give, and files would hold a vertex for each half turn.
constexpr double kMostTurn = 1e4;

bool windsOnAndOn(const Element& element) {
    // A changed drawing may give an arc two radii.
    const bool arc = element.type == drawing::ElementType::Arc ||
                     (element.type == drawing::ElementType::Clothoid && element.startRadius == element.endRadius);
    return arc && !(std::abs(element.turn()) <= kMostTurn);
}

} // namespace

bool hasPlace(const EntityView& entity) {
    return std::all_of(entity.vertices.begin(), entity.vertices.end(),
                       [](const host::MdGePoint3d& vertex) { return isNear(vertex.x) && isNear(vertex.y); });
}

bool hasPlace(const Alignment& alignment) {
    return isNear(alignment.startStation) &&
           std::all_of(alignment.elements.begin(), alignment.elements.end(), [](const Element& element) {
               return isNear(element.start.x) && isNear(element.start.y) && isNear(element.end.x) &&
                      isNear(element.end.y) && isNear(element.length) && std::isfinite(element.endDirection()) &&
                      !windsOnAndOn(element);
           });
}

bool isNear(const drawing::Extent& extent) {
    return isNear(extent.minX) && isNear(extent.minY) && isNear(extent.maxX) && isNear(extent.maxY);
}

double heightOf(const EntityView& point) {
    return isNear(point.position().z) ? point.position().z : 0.0;
}

std::optional<double> knownHeight(const EntityView& point) {
    const double height = point.position().z;
    if (!isNear(height)) {
        return std::nullopt;
    }
    if (height != 0.0) {
        return height;
    }
    return isResult(kindOf(point)) ? std::optional(0.0) : std::nullopt;
}

bool Unplaced::look(const EntityView& entity) {
    const bool placed = hasPlace(entity);
    if (!placed) {
        ++(entity.isPoint() ? points_ : polylines_);
    } else if (entity.isPoint() && !isNear(entity.position().z)) {
        ++heights_;
    }
    return placed;
}

bool Unplaced::look(const Alignment& alignment) {
    const bool placed = hasPlace(alignment);
    alignments_ += placed ? 0 : 1;
    return placed;
}

Notes Unplaced::notes(Fate became) const {
    Notes notes;
    if (points_ + polylines_ + alignments_ > 0) {
        notes.push_back({NoteCode::NoPlace, points_, polylines_, alignments_, became});
    }
    if (heights_ > 0) {
        notes.push_back({NoteCode::NoHeight, heights_});
    }
    return notes;
}

} // namespace fenmark::exchange
