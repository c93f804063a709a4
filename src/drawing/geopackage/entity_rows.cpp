// The points, polylines or lots of a drawing as rows to write.
#include "drawing/geopackage/entity_rows.h"

#include "values/kinds.h"

namespace fenmark::drawing {

namespace {

// In the order of sql::kEntityColumns.
enum Column {
    kFid,
    kGeometry,
    kLayer,
    kClosed,
    kVertices,
    kLightweight,
    kTable,
    kNo,
    kName,
    kType,
    kFileName,
    kArea,
    kImport
};

} // namespace

bool belongsTo(const Drawing& drawing, std::size_t entity, EntityLayer layer) {
    if (drawing.isPoint(entity) != (layer == EntityLayer::Points)) {
        return false;
    }
    if (layer != EntityLayer::Lots) {
        return true;
    }
    const EntityView view = drawing.entity(entity);
    const bool isLot = view.closed || (view.row && view.row->type == typeOf(Kind::Lots));
    return isLot && view.vertices.size() >= kLeastRing;
}

SpatialIndex::Gather boxesOf(const Drawing& drawing, std::size_t first, EntityLayer layer) {
    return [&drawing, first, layer](const auto& add) {
        for (std::size_t i = first; i < drawing.entityCount(); ++i) {
            if (belongsTo(drawing, i, layer)) {
                const EntityView entity = drawing.entity(i);
                Extent extent;
                for (const MdGePoint3d& vertex : entity.vertices) {
                    extent.add(vertex.x, vertex.y);
                }
                add(static_cast<std::int64_t>(entity.id.asUint64()), extent);
            }
        }
    };
}

EntityRows::EntityRows(const Drawing& drawing, std::size_t first, EntityLayer layer, std::int32_t srsId,
                       RowCounter& counter)
    : drawing_(drawing), next_(first), layer_(layer), blob_(srsId), counter_(counter) {}

bool EntityRows::next() {
    while (next_ < drawing_.entityCount() && !belongsTo(drawing_, next_, layer_)) {
        ++next_;
    }
    if (next_ == drawing_.entityCount()) {
        return false;
    }
    entity_ = drawing_.entity(next_++);
    const auto& imports = drawing_.imports();
    while (import_ < imports.size() && imports[import_].lastId < entity_.id.asUint64()) {
        ++import_;
    }
    for (const MdGePoint3d& vertex : entity_.vertices) {
        extent_.add(vertex.x, vertex.y);
    }
    counter_.count();
    return true;
}

std::span<const std::byte> EntityRows::geometry() {
    switch (layer_) {
    case EntityLayer::Points:
        return blob_.point(entity_.position());
    case EntityLayer::Polylines:
        return blob_.line(entity_.vertices, entity_.closed);
    case EntityLayer::Lots:
        break;
    }
    return blob_.polygon(entity_.vertices);
}

void EntityRows::column(int index, const ColumnSink& sink) {
    switch (index) {
    case kFid:
        return sink.integer(static_cast<std::int64_t>(entity_.id.asUint64()));
    case kGeometry:
        return sink.blob(geometry());
    case kLayer:
        return sink.text(entity_.layer);
    case kClosed:
        return sink.integer(entity_.closed ? 1 : 0);
    case kVertices:
        return sink.integer(static_cast<std::int64_t>(entity_.vertices.size()));
    case kLightweight:
        return sink.integer(entity_.kind == EntityKind::Polyline ? 1 : 0);
    case kArea:
        return sink.real(ringArea(entity_.vertices));
    case kImport: {
        const auto& imports = drawing_.imports();
        const bool made = import_ < imports.size() && imports[import_].firstId <= entity_.id.asUint64();
        return made ? sink.integer(static_cast<std::int64_t>(imports[import_].id.asUint64())) : sink.null();
    }
    default:
        break;
    }
    if (!entity_.row) {
        return sink.null();
    }
    switch (index) {
    case kTable:
        return sink.text(entity_.row->table);
    case kNo:
        return sink.integer(entity_.row->no);
    case kName:
        return sink.text(entity_.row->name);
    case kType:
        return sink.text(entity_.row->type);
    case kFileName:
        return sink.text(entity_.row->fileName);
    default:
        return sink.null();
    }
}

} // namespace fenmark::drawing
