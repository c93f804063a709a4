// Reads a drawing out of an open GeoPackage.
#include "drawing/geopackage/drawing_reader.h"

#include "drawing/geopackage/geometry_blob.h"
#include "drawing/geopackage/reference_systems.h"
#include "drawing/geopackage/schema.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace fenmark::drawing {

namespace {

[[noreturn]] void damaged(const char* what, std::int64_t id) {
    throw StoreFailure{StoreError::Damaged, std::string(what) + " " + std::to_string(id)};
}

// A radius of NULL is infinite, and so is a length: a chord between absurd coordinates has no other.
double radius(const Statement& row, int column) {
    return row.isNull(column) ? kInfiniteRadius : row.real(column);
}

double length(const Statement& row, int column) {
    return row.isNull(column) ? std::numeric_limits<double>::infinity() : row.real(column);
}

template <typename Item>
std::vector<Item> readNames(Connection& connection, const char* text) {
    std::vector<Item> items;
    Statement rows(connection, text);
    while (rows.step()) {
        items.push_back({MdDbObjectId(static_cast<std::uint64_t>(rows.integer(0))), std::string(rows.text(1))});
    }
    return items;
}

Element readElement(const Statement& row, std::int64_t alignment) {
    Element element;
    element.id = static_cast<std::int32_t>(row.integer(0));
    const std::string_view type = row.text(1);
    if (type != "S" && type != "R" && type != "A") {
        damaged("an element of alignment", alignment);
    }
    element.type = static_cast<ElementType>(type.front());
    element.start = {row.real(2), row.real(3)};
    element.end = {row.real(4), row.real(5)};
    element.direction = row.real(6);
    element.length = length(row, 7);
    element.startRadius = radius(row, 8);
    element.endRadius = radius(row, 9);
    element.clockwise = row.integer(10) != 0;
    if (!(element.length >= 0.0) || !(element.startRadius > 0.0) || !(element.endRadius > 0.0)) {
        damaged("an element of alignment", alignment);
    }
    return element;
}

} // namespace

DrawingHead DrawingReader::readHead(Connection& connection) {
    Statement application(connection, sql::kReadApplicationId);
    if (!application.step() || application.integer(0) != sql::kApplicationId) {
        throw StoreFailure{StoreError::NotOurs, {}};
    }
    Statement ours(connection, sql::kHasDrawing);
    if (!ours.step() || ours.integer(0) != 1) {
        throw StoreFailure{StoreError::NotOurs, {}};
    }
    Statement row(connection, sql::kReadDrawing);
    if (!row.step()) {
        throw StoreFailure{StoreError::Damaged, "its settings are missing"};
    }
    if (row.integer(0) > sql::kFormat) {
        throw StoreFailure{StoreError::NotOurs, "a later version made it"};
    }
    DrawingHead head;
    head.lastId = static_cast<std::uint64_t>(std::max<std::int64_t>(row.integer(1), 0));
    head.currentLayer = static_cast<std::uint64_t>(row.integer(2));
    head.zone = static_cast<int>(std::clamp<std::int64_t>(row.integer(3), 0, kZoneCount));
    return head;
}

std::uint64_t DrawingReader::readHighestId(Connection& connection) {
    Statement row(connection, sql::kReadHighestId);
    return row.step() ? static_cast<std::uint64_t>(std::max<std::int64_t>(row.integer(0), 0)) : 0;
}

Drawing DrawingReader::read(Load load) {
    head_ = readHead(connection_);
    readNamed();
    readAlignments();
    if (load == Load::Everything) {
        readEntities();
    } else {
        drawing_.entitiesLoaded_ = false;
        Statement extent(connection_, sql::kReadExtent);
        if (extent.step() && !extent.isNull(0)) {
            drawing_.extent_.add({extent.real(0), extent.real(1), extent.real(2), extent.real(3)});
        }
    }
    finish();
    return std::move(drawing_);
}

void DrawingReader::readNamed() {
    drawing_.layers_ = readNames<Layer>(connection_, sql::kReadLayers);
    drawing_.sites_ = readNames<Site>(connection_, sql::kReadSites);
    drawing_.tables_ = readNames<ObjectDataTable>(connection_, sql::kReadTables);
    if (drawing_.layers_.empty()) {
        throw StoreFailure{StoreError::Damaged, "it has no layer"};
    }
    drawing_.zone_ = head_.zone;
    drawing_.currentLayer_ = drawing_.findLayer(MdDbObjectId(head_.currentLayer)).value_or(0);
}

void DrawingReader::readAlignments() {
    Statement rows(connection_, sql::kReadAlignments);
    while (rows.step()) {
        Drawing::StoredAlignment stored;
        Alignment& alignment = stored.alignment;
        const std::int64_t id = rows.integer(0);
        alignment.id = MdDbObjectId(static_cast<std::uint64_t>(id));
        alignment.site = MdDbObjectId(static_cast<std::uint64_t>(rows.integer(1)));
        alignment.name = rows.text(2);
        alignment.description = rows.text(3);
        alignment.layer = rows.text(4);
        alignment.startStation = rows.real(5);
        alignment.firstStyle = rows.text(6);
        alignment.secondStyle = rows.text(7);
        Statement elements(connection_, sql::kReadElements);
        elements.bind(1, id);
        while (elements.step()) {
            alignment.elements.push_back(readElement(elements, id));
            stored.lastElementId = std::max(stored.lastElementId, alignment.elements.back().id);
            drawing_.addToExtent(alignment.elements.back());
        }
        drawing_.alignments_.push_back(std::move(stored));
    }
}

// A GIS may have added features: layers and tables that the drawing does not know yet are taken in.
std::size_t DrawingReader::layerNamed(std::string_view name) {
    if (const std::optional<std::size_t> found = drawing_.findLayer(name)) {
        return *found;
    }
    if (name.empty()) {
        return drawing_.currentLayer_;
    }
    drawing_.layers_.push_back({MdDbObjectId(), std::string(name)}); // gets its identifier at the end
    return drawing_.layers_.size() - 1;
}

void DrawingReader::addEntity(Statement& row, bool isPolyline) {
    const std::int64_t id = row.integer(0);
    const char* const what = isPolyline ? "polyline" : "point";
    if (id <= 0) {
        damaged(what, id);
    }
    if (row.isNull(1)) {
        if (!isPolyline) {
            return; // a feature that a GIS made and that has no place yet
        }
        vertices_.clear();
    } else if (!readBlob(row.blob(1), vertices_) || (!isPolyline && vertices_.size() != 1)) {
        damaged(what, id);
    }
    EntityKind kind = EntityKind::Point;
    bool closed = false;
    if (isPolyline) {
        closed = row.integer(8) != 0;
        // The line of a closed polyline, or of one with a single vertex, ends with its first vertex once more.
        if ((closed && vertices_.size() > 1) || (!row.isNull(9) && row.integer(9) == 1 && vertices_.size() == 2)) {
            vertices_.pop_back();
        }
        kind = row.isNull(10) || row.integer(10) != 0 ? EntityKind::Polyline : EntityKind::Polyline2d;
    }
    drawing_.lastId_ = static_cast<std::uint64_t>(id) - 1;
    drawing_.addEntity(vertices_, layerNamed(row.text(2)), kind, closed);
    if (!row.isNull(3)) {
        const std::string_view name = row.text(3);
        std::optional<std::size_t> table = drawing_.findTable(name);
        if (!table) {
            drawing_.tables_.push_back({MdDbObjectId(), std::string(name)});
            table = drawing_.tables_.size() - 1;
        }
        drawing_.setRow(drawing_.entities_ - 1, *table, static_cast<std::int32_t>(row.integer(4)), row.text(5),
                        row.text(6), row.text(7));
    }
}

// Two tables in one order, that of creation.
void DrawingReader::readEntities() {
    Statement points(connection_, sql::kReadPoints);
    Statement polylines(connection_, sql::kReadPolylines);
    bool morePoints = points.step();
    bool morePolylines = polylines.step();
    while (morePoints || morePolylines) {
        if (morePoints && (!morePolylines || points.integer(0) <= polylines.integer(0))) {
            addEntity(points, false);
            morePoints = points.step();
        } else {
            addEntity(polylines, true);
            morePolylines = polylines.step();
        }
    }
}

void DrawingReader::finish() {
    drawing_.lastId_ = std::max(head_.lastId, readHighestId(connection_));
    drawing_.unsaved_ = {drawing_.lastId_, drawing_.lastId_, false};
    for (Layer& layer : drawing_.layers_) {
        if (layer.id.isNull()) {
            layer.id = drawing_.nextId();
        }
    }
    for (ObjectDataTable& table : drawing_.tables_) {
        if (table.id.isNull()) {
            table.id = drawing_.nextId();
        }
    }
}

} // namespace fenmark::drawing
