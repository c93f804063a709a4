// Reads a drawing out of an open GeoPackage.
#include "drawing/geopackage/drawing_reader.h"

#include "drawing/geopackage/derived_layers.h"
#include "drawing/geopackage/geometry_blob.h"
#include "drawing/geopackage/reference_systems.h"
#include "drawing/geopackage/schema.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace fenmark::drawing {

namespace {

[[noreturn]] void damaged(const Worded& what, std::int64_t id) {
    throw StoreFailure{Failure::Damaged,
                       {what.english + " " + std::to_string(id), what.japanese + " " + std::to_string(id)}};
}

// A number without end is kept as NULL: the radius of a straight, or a length, as a chord between absurd coordinates has
// no other.
double endless(const Statement& row, int column) {
    return row.isNull(column) ? std::numeric_limits<double>::infinity() : row.real(column);
}

// Nothing where a feature has a text, a fraction or a number beyond those of a record.
std::optional<std::int32_t> recordNumber(const Statement& row, int column) {
    using Limits = std::numeric_limits<std::int32_t>;
    const double value = row.isNumber(column) ? row.real(column) : std::numeric_limits<double>::quiet_NaN();
    const bool fits = value >= Limits::min() && value <= Limits::max() && value == std::trunc(value);
    return fits ? std::optional(static_cast<std::int32_t>(value)) : std::nullopt;
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
    constexpr int kFirstReal = 2;
    constexpr int kClockwise = 10;
    Element element;
    const std::optional<std::int32_t> id = recordNumber(row, 0);
    const std::string_view type = row.text(1);
    bool sound = id && row.isNumber(kClockwise) && (type == "S" || type == "R" || type == "A");
    for (int column = kFirstReal; column < kClockwise; ++column) {
        sound = sound && (row.isNull(column) || row.isNumber(column));
    }
    if (sound) {
        element.id = *id;
        element.type = static_cast<ElementType>(type.front());
        element.start = {endless(row, kFirstReal), endless(row, 3)};
        element.end = {endless(row, 4), endless(row, 5)};
        element.direction = endless(row, 6);
        element.length = endless(row, 7);
        element.startRadius = endless(row, 8);
        element.endRadius = endless(row, 9);
        element.clockwise = row.integer(kClockwise) != 0;
        sound = element.length >= 0.0 && element.startRadius > 0.0 && element.endRadius > 0.0;
    }
    if (!sound) {
        damaged({"an element of alignment", "線形の要素、線形"}, alignment);
    }
    return element;
}

void requireSoundIdentifier(bool isPolyline, std::int64_t fid) {
    if (fid <= 0) {
        damaged(isPolyline ? Worded("polyline", "線") : Worded("point", "点"), fid);
    }
}

} // namespace

DrawingHead DrawingReader::readHead(Connection& connection) {
    Statement application(connection, sql::kReadApplicationId);
    if (!application.step() || application.integer(0) != sql::kApplicationId) {
        throw StoreFailure{Failure::NotOurs, {}};
    }
    Statement ours(connection, sql::kHasDrawing);
    if (!ours.step() || ours.integer(0) != 1) {
        throw StoreFailure{Failure::NotOurs, {}};
    }
    requirePragmas(connection);
    const bool hasStamp = DrawingShape::requireSettings(connection);
    Statement row(connection, sql::kReadDrawing);
    if (!row.step()) {
        throw StoreFailure{Failure::Damaged, {"its settings are missing", "設定がありません"}};
    }
    if (row.integer(0) > sql::kFormat) {
        throw StoreFailure{Failure::LaterFormat, {}};
    }
    DrawingHead head;
    head.lastId = static_cast<std::uint64_t>(std::max<std::int64_t>(row.integer(1), 0));
    head.currentLayer = static_cast<std::uint64_t>(row.integer(2));
    head.zone = static_cast<int>(std::clamp<std::int64_t>(row.integer(3), 0, kZoneCount));
    head.format = static_cast<int>(row.integer(0));
    if (hasStamp) {
        Statement stamp(connection, sql::kReadStamp);
        head.stamp = stamp.step() ? stamp.text(0) : std::string_view();
    }
    return head;
}

std::uint64_t DrawingReader::readHighestId(Connection& connection) {
    Statement row(connection, sql::kReadHighestId);
    std::int64_t highest = row.step() ? std::max<std::int64_t>(row.integer(0), 0) : 0;
    // An area that another program drew is no object, but it must not be taken for one of ours that was undone.
    Statement hasLots(connection, sql::kHasSchemaItem);
    if (hasLots.bind(1, std::string_view("lots")).step() && hasLots.integer(0) > 0) {
        Statement lot(connection, sql::kReadHighestLot);
        highest = lot.step() ? std::max(highest, lot.integer(0)) : highest;
    }
    return static_cast<std::uint64_t>(highest);
}

Drawing DrawingReader::read(Load load) {
    head_ = readHead(connection_);
    shape_.emplace(connection_);
    systems_ = shape_->systems(connection_);
    DrawingShape::requirePlane(systems_, head_.zone);
    notes_ = shape_->notes();
    readNamed();
    readImports();
    readAlignments();
    if (load == Load::Everything) {
        readEntities();
        noteLots(connection_, *shape_, notes_);
        noteLines(connection_, *shape_, drawing_, notes_);
    } else {
        drawing_.entitiesLoaded_ = false;
        Statement extent(connection_, sql::kReadExtent);
        if (extent.step() && !extent.isNull(0)) {
            drawing_.extent_.add({extent.real(0), extent.real(1), extent.real(2), extent.real(3)});
        }
        requireSoundIdentifiers();
        readTakenIdentifiers();
    }
    finish();
    return std::move(drawing_);
}

void DrawingReader::readNamed() {
    readLayers();
    drawing_.sites_ = readNames<Site>(connection_, sql::kReadSites);
    drawing_.tables_ = readNames<ObjectDataTable>(connection_, sql::kReadTables);
    if (drawing_.layers_.empty()) {
        throw StoreFailure{Failure::Damaged, {"it has no layer", "レイヤがありません"}};
    }
    layersInFile_ = drawing_.layers_.size();
    tablesInFile_ = drawing_.tables_.size();
    drawing_.zone_ = head_.zone;
    drawing_.currentLayer_ = drawing_.findLayer(MdDbObjectId(head_.currentLayer)).value_or(0);
}

void DrawingReader::readLayers() {
    const std::string text = "SELECT " + shape_->list("layers", {"id", "name", "colour"}) + " FROM layers ORDER BY id";
    Statement rows(connection_, text.c_str());
    drawing_.layers_.clear();
    while (rows.step()) {
        drawing_.layers_.push_back({MdDbObjectId(static_cast<std::uint64_t>(rows.integer(0))),
                                    std::string(rows.text(1)), colourOfText(rows.text(2))});
    }
}

void DrawingReader::readImports() {
    if (!shape_->hasColumn("fenmark_imports", "last_id")) {
        return; // of the first format
    }
    const std::string query = "SELECT " +
                              shape_->list("fenmark_imports", {"id", "FileName", "path", "size", "digest", "time",
                                                               "points", "lots", "routes", "alignments", "longitudinal",
                                                               "cross_sections", "errors", "first_id", "last_id"}) +
                              " FROM fenmark_imports ORDER BY id";
    Statement rows(connection_, query.c_str());
    while (rows.step()) {
        Import import;
        import.id = MdDbObjectId(static_cast<std::uint64_t>(rows.integer(0)));
        import.fileName = rows.text(1);
        import.path = rows.text(2);
        import.fileSize = static_cast<std::uint64_t>(rows.integer(3));
        import.digest = rows.text(4);
        import.time = rows.text(5);
        ImportCounts& counts = import.counts;
        int column = 6;
        for (std::int64_t* count : {&counts.points, &counts.lots, &counts.routes, &counts.alignments,
                                    &counts.longitudinal, &counts.crossSections, &counts.errors}) {
            *count = rows.integer(column++);
        }
        import.firstId = static_cast<std::uint64_t>(rows.integer(column++));
        import.lastId = static_cast<std::uint64_t>(rows.integer(column));
        drawing_.imports_.push_back(std::move(import));
    }
}

void DrawingReader::readAlignments() {
    const std::string query = "SELECT " +
                              shape_->list("alignments", {"fid", "site_id", "name", "description", "layer",
                                                          "start_station", "first_style", "second_style"}) +
                              ", geom NOT NULL FROM alignments ORDER BY fid";
    Statement rows(connection_, query.c_str());
    while (rows.step()) {
        Drawing::StoredAlignment stored;
        Alignment& alignment = stored.alignment;
        const std::int64_t id = rows.integer(0);
        alignment.id = MdDbObjectId(static_cast<std::uint64_t>(id));
        alignment.site = MdDbObjectId(static_cast<std::uint64_t>(rows.integer(1)));
        alignment.name = rows.text(2);
        alignment.description = rows.text(3);
        alignment.layer = rows.text(4);
        if (rows.isNumber(5)) {
            alignment.startStation = rows.real(5);
        } else if (shape_->hasColumn("alignments", "start_station")) {
            count(notes_, StoreNoteCode::NoNumber, "alignments", "start_station", id);
        }
        alignment.firstStyle = rows.text(6);
        alignment.secondStyle = rows.text(7);
        Statement elements(connection_, sql::kReadElements);
        elements.bind(1, id);
        bool inOrder = true;
        while (elements.step()) {
            constexpr int kPlace = 11;
            inOrder = inOrder && elements.isNumber(kPlace) &&
                      elements.real(kPlace) == static_cast<double>(alignment.elements.size());
            alignment.elements.push_back(readElement(elements, id));
            stored.lastElementId = std::max(stored.lastElementId, alignment.elements.back().id);
            drawing_.addToExtent(alignment.elements.back());
        }
        if (alignment.elements.empty() && rows.integer(8) != 0) {
            count(notes_, StoreNoteCode::AlignmentElementless, "alignments", {}, id);
            continue;
        }
        if (!inOrder) {
            count(notes_, StoreNoteCode::ElementsOutOfOrder, "alignments", {}, id);
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

// Nothing in a geometry tells whether its numbers are in the system that it names: they are taken in the table's.
bool DrawingReader::isOtherSystem(std::int32_t srs, const char* table) const {
    if (srs <= 0 || srs == srsOfZone(head_.zone)) {
        return false;
    }
    const auto own = systems_.find(table);
    return own == systems_.end() || own->second != srs;
}

void DrawingReader::addEntity(Statement& row, bool isPolyline, std::int64_t fid, std::uint64_t id) {
    const char* const table = isPolyline ? "polylines" : "points";
    requireSoundIdentifier(isPolyline, fid);
    if (row.isNull(1)) {
        if (!isPolyline) {
            return count(notes_, StoreNoteCode::NoPlace, table, {}, fid);
        }
        vertices_.clear(); // a polyline without vertices
    } else {
        const BlobRead read = readBlob(row.blob(1), vertices_);
        if (read.kind == BlobKind::Malformed) {
            return count(notes_, StoreNoteCode::FeatureDamaged, table, {}, fid);
        }
        if (read.kind == BlobKind::Empty) {
            return count(notes_, StoreNoteCode::NoPlace, table, {}, fid);
        }
        if (read.kind != (isPolyline ? BlobKind::Line : BlobKind::Point)) {
            return count(notes_, StoreNoteCode::OtherGeometry, table, nameOfGeometry(read.type), fid);
        }
        if (isOtherSystem(read.srs, table)) {
            count(notes_, StoreNoteCode::OtherSystem, table, {}, fid);
        }
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
    drawing_.lastId_ = id - 1;
    drawing_.addEntity(vertices_, layerNamed(row.text(2)), kind, closed);
    if (!row.isNull(3)) {
        const std::string_view name = row.text(3);
        std::optional<std::size_t> found = drawing_.findTable(name);
        if (!found) {
            drawing_.tables_.push_back({MdDbObjectId(), std::string(name)});
            found = drawing_.tables_.size() - 1;
        }
        const std::optional<std::int32_t> number = recordNumber(row, 4);
        if (!number && !row.isNull(4)) {
            count(notes_, StoreNoteCode::NoNumber, table, "No", fid);
        }
        drawing_.setRow(drawing_.entities_ - 1, *found, number.value_or(0), row.text(5), row.text(6), row.text(7));
    }
}

std::string DrawingReader::entityQuery(bool isPolyline, bool one) const {
    const char* const table = isPolyline ? "polylines" : "points";
    std::vector<std::string_view> columns = {"fid", "geom", "layer", "data_table", "No", "Name", "Type", "FileName"};
    if (isPolyline) {
        columns.insert(columns.end(), {"closed", "vertices", "lightweight"});
    }
    columns.emplace_back("import_id");
    return "SELECT " + shape_->list(table, columns) + " FROM " + table + (one ? " WHERE fid = ?1" : " ORDER BY fid");
}

// True for the identifier of something that is neither a point nor a polyline. Asked in rising order.
bool DrawingReader::isTaken(std::uint64_t id) {
    return std::binary_search(otherIds_.begin(), otherIds_.end(), id);
}

// Two tables in one order, that of creation. Other programs number the rows of each table by itself, and may give a new
// feature the identifier of another object: it comes last, under one of its own.
void DrawingReader::readEntities() {
    for (const auto& layer : drawing_.layers_) {
        otherIds_.push_back(layer.id.asUint64());
    }
    for (const auto& site : drawing_.sites_) {
        otherIds_.push_back(site.id.asUint64());
    }
    for (const auto& table : drawing_.tables_) {
        otherIds_.push_back(table.id.asUint64());
    }
    for (const auto& import : drawing_.imports_) {
        otherIds_.push_back(import.id.asUint64());
    }
    for (const auto& stored : drawing_.alignments_) {
        otherIds_.push_back(stored.alignment.id.asUint64());
    }
    std::sort(otherIds_.begin(), otherIds_.end());
    constexpr int kPointImport = 8;
    constexpr int kPolylineImport = 11;
    Statement points(connection_, entityQuery(false, false).c_str());
    Statement polylines(connection_, entityQuery(true, false).c_str());
    const auto next = [](Statement& rows) { return rows.step() ? std::optional(rows.integer(0)) : std::nullopt; };
    std::optional<std::int64_t> point = next(points);
    std::optional<std::int64_t> polyline = next(polylines);
    const auto take = [&](Statement& rows, bool isPolyline, std::int64_t fid) {
        if (isTaken(static_cast<std::uint64_t>(fid))) {
            deferEntity(isPolyline, fid);
        } else {
            addEntity(rows, isPolyline, fid, static_cast<std::uint64_t>(fid));
        }
        return next(rows);
    };
    while (point || polyline) {
        if (point && polyline && *point == *polyline) {
            // Ours is the one that an import made.
            if (points.isNull(kPointImport) && !polylines.isNull(kPolylineImport)) {
                deferEntity(false, *point);
                point = next(points);
            } else {
                deferEntity(true, *polyline);
                polyline = next(polylines);
            }
        } else if (point && (!polyline || *point < *polyline)) {
            point = take(points, false, *point);
        } else {
            polyline = take(polylines, true, *polyline);
        }
    }
}

// Without reading them all: an import into a drawing that cannot be read afterwards is refused.
void DrawingReader::requireSoundIdentifiers() {
    for (const bool isPolyline : {false, true}) {
        Statement lowest(connection_, isPolyline ? sql::kReadLowestPolyline : sql::kReadLowestPoint);
        if (lowest.step() && !lowest.isNull(0)) {
            requireSoundIdentifier(isPolyline, lowest.integer(0));
        }
    }
}

// Without reading them all: those that were added since the last save. In the first format nothing was known of that.
void DrawingReader::readTakenIdentifiers() {
    const auto from = static_cast<std::int64_t>(head_.format < sql::kFormat ? 0 : head_.lastId);
    for (const bool isPolyline : {false, true}) {
        Statement rows(connection_, isPolyline ? sql::kReadTakenPolylines : sql::kReadTakenPoints);
        rows.bind(1, from);
        while (rows.step()) {
            deferEntity(isPolyline, rows.integer(0));
        }
    }
}

void DrawingReader::deferEntity(bool isPolyline, std::int64_t fid) {
    const char* const table = isPolyline ? "polylines" : "points";
    count(notes_, StoreNoteCode::TakenIdentifier, table, {}, fid);
    newIdentifiers_.push_back({table, fid, 0});
}

void DrawingReader::addDeferred() {
    for (NewIdentifier& item : newIdentifiers_) {
        const std::uint64_t id = drawing_.lastId_ + 1;
        item.to = static_cast<std::int64_t>(id);
        if (drawing_.entitiesLoaded_) {
            const bool isPolyline = item.table == "polylines";
            Statement row(connection_, entityQuery(isPolyline, true).c_str());
            if (row.bind(1, item.from).step()) {
                addEntity(row, isPolyline, item.from, id);
            }
        }
        drawing_.lastId_ = id;
    }
}

void DrawingReader::finish() {
    drawing_.lastId_ = std::max(head_.lastId, readHighestId(connection_));
    for (const Import& import : drawing_.imports_) {
        if (static_cast<std::int64_t>(import.id.asUint64()) > 0) { // else no save gets that far
            drawing_.lastId_ = std::max(drawing_.lastId_, import.id.asUint64());
        }
    }
    addDeferred();
    drawing_.unsaved_ = {drawing_.lastId_, drawing_.lastId_, false};
    for (std::size_t i = layersInFile_; i < drawing_.layers_.size(); ++i) {
        drawing_.layers_[i].id = drawing_.nextId();
    }
    for (std::size_t i = tablesInFile_; i < drawing_.tables_.size(); ++i) {
        drawing_.tables_[i].id = drawing_.nextId();
    }
}

} // namespace fenmark::drawing
