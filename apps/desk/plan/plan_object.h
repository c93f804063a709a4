// An object of the plan, and what lies under the pointer.
#pragma once

#include "desk/plan/plan_index.h"
#include "desk/plan/view_transform.h"
#include "drawing/drawing.h"

#include <QPointF>

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

namespace fenmark::desk {

// An entity, or an alignment and perhaps one of its elements, by index.
struct PlanObject {
    enum class Kind { Entity, Alignment };
    Kind kind = Kind::Entity;
    std::size_t index = 0;
    std::optional<std::size_t> element; // of an alignment

    friend bool operator==(const PlanObject&, const PlanObject&) = default;
};

// What the user wants to see.
struct PlanLook {
    std::vector<bool> hiddenLayers; // by index of the layer; missing ones are shown
    std::array<bool, kFigureStyles> hiddenStyles{};
    std::array<bool, kElementTypes> hiddenElements{};
    bool labels = true;   // names, element lengths and radii
    bool stations = true; // every 20 m
    bool grid = true;

    // Of the alignments whose stations would lie on one line, only that of this index is named, if there is one.
    std::optional<std::size_t> stationsOf;

    bool hides(std::size_t layer) const { return layer < hiddenLayers.size() && hiddenLayers[layer]; }
    bool hides(FigureStyle style) const { return hiddenStyles[static_cast<std::size_t>(style)]; }
    bool hides(drawing::ElementType type) const { return hiddenElements[elementTypeIndex(type)]; }
    bool hides(const PlanFigure& figure) const { return hides(figure.layer) || hides(figure.figureStyle()); }
};

bool isHidden(const PlanLook& look, const drawing::Drawing& drawing, std::string_view layer);
bool isHidden(const PlanLook& look, const drawing::Drawing& drawing, const PlanObject& object);

// The shown objects that lie wholly in the box, or that reach into it; alignments as wholes, before entities.
std::vector<PlanObject> objectsInBox(const drawing::Drawing& drawing, const PlanIndex& index, const PlanLook& look,
                                     const drawing::Extent& box, bool wholly);

// The objects within reach of the pixel, nearest first; a point wins over a line that is as near. Behind them the
// closed polylines around the pixel, smallest first.
std::vector<PlanObject> objectsAt(const drawing::Drawing& drawing, const PlanIndex& index, const ViewTransform& view,
                                  const PlanLook& look, const QPointF& pixel, double reachPixels);

// The shown objects whose boxes meet what is in view, in the drawing's order, alignments (by element) before entities.
std::vector<PlanObject> objectsInView(const drawing::Drawing& drawing, const PlanIndex& index,
                                      const ViewTransform& view, const PlanLook& look);

// False if the drawing holds no such object, as after an undo.
bool exists(const drawing::Drawing& drawing, const PlanObject& object);

drawing::Extent extentOf(const drawing::Drawing& drawing, const PlanObject& object);

// The point of the nearest shown alignment, for the station and offset of a place.
struct NearestStation {
    std::size_t alignment = 0;
    drawing::StationOffset at;
};
std::optional<NearestStation> nearestStation(const drawing::Drawing& drawing, const PlanIndex& index,
                                             const PlanLook& look, double x, double y, double reachMetres);

} // namespace fenmark::desk
