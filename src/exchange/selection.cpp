// What of a drawing goes into an exported file.
#include "exchange/selection.h"

#include "exchange/plan/plan_geometry.h"

#include <algorithm>

namespace fenmark::exchange {

using drawing::Drawing;
using drawing::EntityView;
using drawing::Extent;

namespace {

bool meet(const Extent& a, const Extent& b) {
    return a.minX <= b.maxX && b.minX <= a.maxX && a.minY <= b.maxY && b.minY <= a.maxY;
}

} // namespace

bool Selection::takesAll() const {
    return layers.empty() && !rectangle && std::find(left.begin(), left.end(), true) == left.end();
}

bool Selection::takesLayer(std::string_view layer) const {
    return layers.empty() || std::find(layers.begin(), layers.end(), layer) != layers.end();
}

bool Selection::takes(const EntityView& entity) const {
    if (left[static_cast<std::size_t>(kindOf(entity))] || !takesLayer(entity.layer)) {
        return false;
    }
    if (!rectangle) {
        return true;
    }
    Extent box;
    for (const host::MdGePoint3d& vertex : entity.vertices) {
        box.add(vertex.x, vertex.y);
    }
    return meet(box, *rectangle);
}

bool Selection::takes(const drawing::Alignment& alignment) const {
    if (left[static_cast<std::size_t>(Kind::Alignments)] || !takesLayer(alignment.layer)) {
        return false;
    }
    if (!rectangle) {
        return true;
    }
    return meet(boxOf(alignment), *rectangle);
}

bool takesAny(const Drawing& drawing, const Selection& selection) {
    for (std::size_t i = 0; i < drawing.alignmentCount(); ++i) {
        if (selection.takes(drawing.alignment(i))) {
            return true;
        }
    }
    for (std::size_t i = 0; i < drawing.entityCount(); ++i) {
        if (selection.takes(drawing.entity(i))) {
            return true;
        }
    }
    return false;
}

std::unique_ptr<Drawing> selectedPart(const Drawing& drawing, const Selection& selection) {
    auto part = std::make_unique<Drawing>();
    part->setZone(drawing.zone());
    for (const drawing::Layer& layer : drawing.layers()) {
        part->addLayer(layer.name);
    }
    for (std::size_t i = 0; i < drawing.alignmentCount(); ++i) {
        const drawing::Alignment& alignment = drawing.alignment(i);
        if (!selection.takes(alignment)) {
            continue;
        }
        const auto site = drawing.findSite(alignment.site);
        const std::string_view siteName = site ? std::string_view(drawing.sites()[*site].name) : std::string_view();
        const auto known = part->findSite(siteName);
        const std::size_t copy =
            part->addAlignment(known ? part->sites()[*known].id : part->addSite(siteName), alignment.name,
                               alignment.layer, alignment.firstStyle, alignment.secondStyle);
        part->setDescription(copy, alignment.description);
        part->setStartStation(copy, alignment.startStation);
        for (const drawing::Element& element : alignment.elements) {
            part->addElement(copy, element);
        }
    }
    for (std::size_t i = 0; i < drawing.entityCount(); ++i) {
        const EntityView entity = drawing.entity(i);
        if (!selection.takes(entity)) {
            continue;
        }
        const std::size_t layer = part->findLayer(entity.layer).value_or(0);
        if (entity.isPoint()) {
            part->addPoint(entity.position(), layer);
        } else {
            part->addPolyline(entity.vertices, layer, entity.kind, entity.closed);
        }
        if (entity.row) {
            if (!part->findTable(entity.row->table)) {
                part->addTable(entity.row->table);
            }
            part->setRow(part->entityCount() - 1, *part->findTable(entity.row->table), entity.row->no, entity.row->name,
                         entity.row->type, entity.row->fileName);
        }
    }
    return part;
}

} // namespace fenmark::exchange
