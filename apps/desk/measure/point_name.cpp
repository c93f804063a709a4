// The name of the coordinate point at a place.
#include "desk/measure/point_name.h"

#include "exchange/survey_text.h"

#include <algorithm>
#include <cmath>

namespace fenmark::desk {

namespace {

constexpr double kSnap = 0.005; // metres: coordinates of two sources differ by their rounding

} // namespace

std::string pointNameAt(const drawing::Drawing& drawing, const PlanIndex& index, double x, double y) {
    drawing::Extent box;
    box.add(x - kSnap, y - kSnap);
    box.add(x + kSnap, y + kSnap);
    double nearest = kSnap;
    std::size_t chosen = drawing.entityCount();
    index.query(box, [&](const PlanFigure& figure) {
        if (figure.figureStyle() != FigureStyle::Coordinate) {
            return true;
        }
        const drawing::EntityView entity = drawing.entity(figure.entity);
        const double away = std::max(std::abs(entity.position().x - x), std::abs(entity.position().y - y));
        const bool named = entity.row && !exchange::trimmedName(entity.row->name).empty();
        // Of two points at one place the first in the drawing.
        if (named && (away < nearest || (away == nearest && figure.entity < chosen))) {
            nearest = away;
            chosen = figure.entity;
        }
        return true;
    });
    return chosen < drawing.entityCount() ? std::string(exchange::trimmedName(drawing.entity(chosen).row->name))
                                          : std::string();
}

} // namespace fenmark::desk
