// An object of the plan, and what lies under the pointer.
#include "desk/plan/plan_object.h"

#include "desk/plan/plan_shapes.h"

#include <algorithm>
#include <cmath>

namespace fenmark::desk {

using drawing::Alignment;
using drawing::Drawing;
using drawing::EntityView;
using drawing::Extent;

namespace {

constexpr double kBoxPixels = 1000.0;    // side of the picture in which a line is cut by a box
constexpr double kPointReachBonus = 2.0; // pixels: points lie on top of lines, and win where both are near

bool meet(const Extent& a, const Extent& b) {
    return a.minX <= b.maxX && b.minX <= a.maxX && a.minY <= b.maxY && b.minY <= a.maxY;
}

double distanceToBox(const Extent& box, double x, double y) {
    return std::hypot(std::max({box.minX - x, 0.0, x - box.maxX}), std::max({box.minY - y, 0.0, y - box.maxY}));
}

struct Found {
    double rank; // pixels from the pointer; beyond the reach the area of what lies around it
    PlanObject object;
};

// In their order, whatever order the index found them in.
void appendEntities(std::vector<PlanObject>& objects, std::vector<std::size_t>& entities) {
    std::sort(entities.begin(), entities.end());
    for (const std::size_t entity : entities) {
        objects.push_back({PlanObject::Kind::Entity, entity, {}});
    }
}

} // namespace

bool isHidden(const PlanLook& look, const Drawing& drawing, std::string_view layer) {
    if (look.hiddenLayers.empty()) {
        return false;
    }
    const std::optional<std::size_t> index = drawing.findLayer(layer);
    return index && look.hides(*index);
}

bool isHidden(const PlanLook& look, const Drawing& drawing, const PlanObject& object) {
    if (object.kind == PlanObject::Kind::Entity) {
        const drawing::EntityView entity = drawing.entity(object.index);
        return look.hides(styleOf(entity)) || isHidden(look, drawing, entity.layer);
    }
    const Alignment& alignment = drawing.alignment(object.index);
    if (object.element && look.hides(alignment.elements[*object.element].type)) {
        return true;
    }
    return isHidden(look, drawing, drawing.alignment(object.index).layer);
}

std::vector<PlanObject> objectsAt(const Drawing& drawing, const PlanIndex& index, const ViewTransform& view,
                                  const PlanLook& look, const QPointF& pixel, double reach) {
    const double wide = reach + kPointReachBonus;
    const QRectF around(pixel.x() - wide, pixel.y() - wide, 2.0 * wide, 2.0 * wide);
    Extent box;
    box.add(view.toX(around.left()), view.toY(around.top()));
    box.add(view.toX(around.right()), view.toY(around.bottom()));

    std::vector<Found> near;
    std::vector<Found> enclosing;
    CurveBudget budget;
    for (std::size_t a = 0; a < std::min(index.alignmentCount(), drawing.alignmentCount()); ++a) {
        const Alignment& alignment = drawing.alignment(a);
        if (!meet(index.alignmentExtent(a), box) || isHidden(look, drawing, alignment.layer)) {
            continue;
        }
        for (std::size_t e = 0; e < std::min(index.elementCount(a), alignment.elements.size()); ++e) {
            if (!meet(index.elementExtent(a, e), box) || look.hides(alignment.elements[e].type)) {
                continue;
            }
            double distance = INFINITY;
            for (const QPolygonF& part : elementPixels(alignment.elements[e], view, around, budget)) {
                distance = std::min(distance, distanceToLine(part, pixel, false));
            }
            if (distance <= reach) {
                near.push_back({distance, {PlanObject::Kind::Alignment, a, e}});
            }
        }
    }
    index.query(box, [&](const PlanFigure& figure) {
        if (look.hides(figure) || figure.entity >= drawing.entityCount()) {
            return true;
        }
        const EntityView entity = drawing.entity(figure.entity);
        const PlanObject object{PlanObject::Kind::Entity, figure.entity, {}};
        if (entity.isPoint()) {
            const QPointF at = view.toPixel(entity.position().x, entity.position().y);
            const double distance = std::hypot(at.x() - pixel.x(), at.y() - pixel.y()) - kPointReachBonus;
            if (distance <= reach) {
                near.push_back({std::max(0.0, distance), object});
            }
            return true;
        }
        const QPolygonF pixels = pixelsOf(entity.vertices, view);
        const double distance = distanceToLine(pixels, pixel, entity.closed);
        if (distance <= reach) {
            near.push_back({distance, object});
        } else if (entity.closed && pixels.containsPoint(pixel, Qt::OddEvenFill)) {
            enclosing.push_back({pixels.boundingRect().width() * pixels.boundingRect().height(), object});
        }
        return true;
    });

    auto isPoint = [&](const Found& found) {
        return found.object.kind == PlanObject::Kind::Entity && drawing.entity(found.object.index).isPoint();
    };
    auto before = [&](const Found& a, const Found& b) {
        if (a.rank != b.rank) {
            return a.rank < b.rank;
        }
        if (isPoint(a) != isPoint(b)) {
            return isPoint(a);
        }
        return a.object.index < b.object.index;
    };
    std::sort(near.begin(), near.end(), before);
    std::sort(enclosing.begin(), enclosing.end(), before);
    std::vector<PlanObject> objects;
    for (const std::vector<Found>* list : {&near, &enclosing}) {
        for (const Found& found : *list) {
            objects.push_back(found.object);
        }
    }
    return objects;
}

std::vector<PlanObject> objectsInView(const Drawing& drawing, const PlanIndex& index, const ViewTransform& view,
                                      const PlanLook& look) {
    const Extent visible = view.visible();
    std::vector<PlanObject> objects;
    for (std::size_t a = 0; a < std::min(index.alignmentCount(), drawing.alignmentCount()); ++a) {
        if (!meet(index.alignmentExtent(a), visible) || isHidden(look, drawing, drawing.alignment(a).layer)) {
            continue;
        }
        for (std::size_t e = 0; e < std::min(index.elementCount(a), drawing.alignment(a).elements.size()); ++e) {
            if (meet(index.elementExtent(a, e), visible) && !look.hides(drawing.alignment(a).elements[e].type)) {
                objects.push_back({PlanObject::Kind::Alignment, a, e});
            }
        }
    }
    std::vector<std::size_t> entities;
    index.query(visible, [&](const PlanFigure& figure) {
        if (!look.hides(figure) && figure.entity < drawing.entityCount()) {
            entities.push_back(figure.entity);
        }
        return true;
    });
    appendEntities(objects, entities);
    return objects;
}

std::vector<PlanObject> objectsInBox(const Drawing& drawing, const PlanIndex& index, const PlanLook& look,
                                     const Extent& box, bool wholly) {
    const auto inside = [&](const Extent& extent) {
        return box.minX <= extent.minX && box.minY <= extent.minY && extent.maxX <= box.maxX && extent.maxY <= box.maxY;
    };
    // Only the view of the box counts for a line: its own pixels show whether it reaches in.
    ViewTransform view;
    view.setSize(QSizeF(kBoxPixels, kBoxPixels));
    view.fit(box);
    const QRectF pixels(view.toPixel(box.minX, box.maxY), view.toPixel(box.maxX, box.minY));
    std::vector<PlanObject> objects;
    CurveBudget budget;
    for (std::size_t a = 0; a < std::min(index.alignmentCount(), drawing.alignmentCount()); ++a) {
        const Alignment& alignment = drawing.alignment(a);
        if (!meet(index.alignmentExtent(a), box) || isHidden(look, drawing, alignment.layer)) {
            continue;
        }
        bool found = inside(index.alignmentExtent(a));
        for (std::size_t e = 0; !found && !wholly && e < std::min(index.elementCount(a), alignment.elements.size());
             ++e) {
            found = meet(index.elementExtent(a, e), box) && !look.hides(alignment.elements[e].type) &&
                    !elementPixels(alignment.elements[e], view, pixels, budget).empty();
        }
        if (found) {
            objects.push_back({PlanObject::Kind::Alignment, a, {}});
        }
    }
    std::vector<std::size_t> entities;
    index.query(box, [&](const PlanFigure& figure) {
        if (look.hides(figure) || figure.entity >= drawing.entityCount()) {
            return true;
        }
        const Extent extent = drawing.entityExtent(figure.entity);
        if (!meet(extent, box)) {
            return true;
        }
        if (inside(extent)) {
            entities.push_back(figure.entity);
        } else if (!wholly) {
            const EntityView entity = drawing.entity(figure.entity);
            if (!clippedLine(pixelsOf(entity.vertices, view), entity.closed, pixels).empty()) {
                entities.push_back(figure.entity);
            }
        }
        return true;
    });
    appendEntities(objects, entities);
    return objects;
}

bool exists(const Drawing& drawing, const PlanObject& object) {
    if (object.kind == PlanObject::Kind::Entity) {
        return object.index < drawing.entityCount();
    }
    return object.index < drawing.alignmentCount() &&
           (!object.element || *object.element < drawing.alignment(object.index).elements.size());
}

Extent extentOf(const Drawing& drawing, const PlanObject& object) {
    if (object.kind == PlanObject::Kind::Entity) {
        return drawing.entityExtent(object.index);
    }
    Extent extent;
    const Alignment& alignment = drawing.alignment(object.index);
    for (std::size_t i = 0; i < alignment.elements.size(); ++i) {
        if (object.element && *object.element != i) {
            continue;
        }
        extent.add(drawing::extentOf(alignment.elements[i]));
    }
    return extent;
}

std::optional<NearestStation> nearestStation(const Drawing& drawing, const PlanIndex& index, const PlanLook& look,
                                             double x, double y, double reach) {
    std::optional<NearestStation> best;
    double nearest = reach;
    for (std::size_t a = 0; a < std::min(index.alignmentCount(), drawing.alignmentCount()); ++a) {
        if (drawing.alignment(a).elements.empty() || distanceToBox(index.alignmentExtent(a), x, y) > nearest ||
            isHidden(look, drawing, drawing.alignment(a).layer)) {
            continue;
        }
        const std::optional<drawing::StationOffset> at = drawing.geometry(a).locateWithin({x, y}, nearest);
        if (!at || !at->perpendicular) {
            continue;
        }
        nearest = std::abs(at->offset);
        best = NearestStation{a, *at};
    }
    return best;
}

} // namespace fenmark::desk
