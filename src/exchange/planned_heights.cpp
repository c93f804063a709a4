// The heights that coordinate points on an alignment have.
#include "exchange/planned_heights.h"

#include "exchange/kinds.h"
#include "exchange/placed.h"
#include "exchange/survey_text.h"

#include <algorithm>
#include <cmath>

namespace fenmark::exchange {

using drawing::Drawing;
using drawing::EntityView;

namespace {

constexpr double kOnLine = 0.005;     // metres: coordinates are rounded to millimetres
constexpr double kSameStation = 1e-3; // metres

} // namespace

std::vector<LongitudinalPoint> plannedHeights(const Drawing& drawing, std::size_t alignment) {
    std::vector<LongitudinalPoint> heights;
    if (!hasPlace(drawing.alignment(alignment)) || drawing.geometry(alignment).empty()) {
        return heights;
    }
    const drawing::AlignmentGeometry& geometry = drawing.geometry(alignment);
    drawing::Extent box;
    for (const drawing::Element& element : drawing.alignment(alignment).elements) {
        box.add(drawing::extentOf(element));
    }
    for (std::size_t i = 0; i < drawing.entityCount(); ++i) {
        if (!drawing.isPoint(i)) {
            continue;
        }
        const EntityView entity = drawing.entity(i);
        const host::MdGePoint3d& at = entity.position();
        if (kindOf(entity) != Kind::Points || at.x < box.minX - kOnLine || at.x > box.maxX + kOnLine ||
            at.y < box.minY - kOnLine || at.y > box.maxY + kOnLine || !knownHeight(entity)) {
            continue;
        }
        if (const auto located = geometry.locateWithin({at.x, at.y}, kOnLine)) {
            heights.push_back({located->station, at.z, std::string(trimmedName(entity.row->name))});
        }
    }
    std::stable_sort(heights.begin(), heights.end(),
                     [](const auto& a, const auto& b) { return a.station < b.station; });
    heights.erase(
        std::unique(heights.begin(), heights.end(),
                    [](const auto& a, const auto& b) { return std::abs(a.station - b.station) <= kSameStation; }),
        heights.end());
    return heights;
}

} // namespace fenmark::exchange
