// Writes a drawing into an open GeoPackage.
#include "drawing/geopackage/drawing_writer.h"

#include "drawing/geopackage/default_styles.h"
#include "drawing/geopackage/reference_systems.h"
#include "drawing/geopackage/schema.h"

#include <cmath>
#include <cstring>
#include <limits>
#include <map>
#include <string>
#include <vector>

namespace fenmark::drawing {

namespace {

constexpr int kSrsOffset = 4; // of the reference system in a blob

std::int64_t number(MdDbObjectId id) {
    return static_cast<std::int64_t>(id.asUint64());
}

// with_srs(blob, id) in SQL.
void withSrs(sqlite3_context* context, int, sqlite3_value** arguments) {
    const auto* blob = static_cast<const char*>(sqlite3_value_blob(arguments[0]));
    const int size = sqlite3_value_bytes(arguments[0]);
    const std::int32_t srs = sqlite3_value_int(arguments[1]);
    if (blob == nullptr || size < kSrsOffset + static_cast<int>(sizeof srs)) {
        sqlite3_result_null(context);
        return;
    }
    std::string copy(blob, static_cast<std::size_t>(size));
    std::memcpy(copy.data() + kSrsOffset, &srs, sizeof srs);
    sqlite3_result_blob(context, copy.data(), size, SQLITE_TRANSIENT);
}

// ring_area(blob) in SQL, of a line that ends where it begins.
void areaOf(sqlite3_context* context, int, sqlite3_value** arguments) {
    const auto* bytes = static_cast<const std::byte*>(sqlite3_value_blob(arguments[0]));
    std::vector<MdGePoint3d> vertices;
    if (bytes != nullptr &&
        readBlob({bytes, static_cast<std::size_t>(sqlite3_value_bytes(arguments[0]))}, vertices).kind ==
            BlobKind::Line) {
        const double area = ringArea(vertices);
        if (std::isfinite(area)) {
            sqlite3_result_double(context, area);
            return;
        }
    }
    sqlite3_result_null(context);
}

using NewNames = std::map<std::string, std::string, std::less<>>;

// new_name(layer) in SQL.
void newName(sqlite3_context* context, int, sqlite3_value** arguments) {
    const auto& names = *static_cast<const NewNames*>(sqlite3_user_data(context));
    const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(arguments[0]));
    const auto size = static_cast<std::size_t>(sqlite3_value_bytes(arguments[0]));
    const auto found = text == nullptr ? names.end() : names.find(std::string_view(text, size));
    if (found == names.end()) {
        sqlite3_result_null(context);
        return;
    }
    sqlite3_result_text(context, found->second.data(), static_cast<int>(found->second.size()), SQLITE_STATIC);
}

std::string colourTextOf(const Layer& layer) {
    return layer.colour ? textOf(*layer.colour) : std::string();
}

} // namespace

DrawingWriter::DrawingWriter(Connection& connection, const Drawing& drawing, From from, const WriteProgress& progress)
    : connection_(connection), drawing_(drawing), fromNothing_(from == From::Nothing),
      entitiesFrom_(fromNothing_ ? 0 : drawing.unsaved_.entities),
      othersFrom_(fromNothing_ ? 0 : drawing.unsaved_.others),
      zoneBefore_(fromNothing_ ? 0 : DrawingReader::readHead(connection).zone), srsId_(srsOfZone(drawing.zone())),
      counter_(progress), entityIndexes_{SpatialIndex(connection, "points", counter_),
                                         SpatialIndex(connection, "polylines", counter_),
                                         SpatialIndex(connection, "lots", counter_)},
      alignmentIndex_(connection, "alignments", counter_) {}

bool DrawingWriter::hasChanges(const Drawing& drawing) {
    const Drawing::Unsaved& unsaved = drawing.unsaved_;
    return unsaved.settings || unsaved.layers || !drawing.removed_.empty() || unsaved.entities < drawing.lastId_ ||
           unsaved.others < drawing.lastId_;
}

void DrawingWriter::markSaved(Drawing& drawing) {
    drawing.unsaved_ = {drawing.lastId_, drawing.lastId_, false};
    drawing.removed_.clear();
}

void DrawingWriter::write(std::span<const NewIdentifier> newIdentifiers, const std::string& stamp) {
    countComing();
    if (!fromNothing_) {
        shape_.emplace(connection_);
        shape_->requireWritable();
    }
    bringToFormat();
    moveIdentifiers(newIdentifiers);
    beginIndexes();
    if (!fromNothing_) {
        removeImports();
        removeStale();
    }
    if (!fromNothing_ && drawing_.unsaved_.layers) {
        changeLayers();
    }
    writeZone();
    writeNamed();
    writeImports();
    if (alignmentsComing_ > 0) {
        writeAlignments();
    }
    alignmentIndex_.finish();
    writeEntities(EntityLayer::Points, "points", sql::kInsertPoints);
    writeEntities(EntityLayer::Polylines, "polylines", sql::kInsertPolylines);
    if (hasLots()) {
        writeEntities(EntityLayer::Lots, "lots", sql::kInsertLots);
    }
    writeDrawing(stamp);
}

// A drawing without areas is one in which somebody removed them.
bool DrawingWriter::hasLots() const {
    return fromNothing_ || shape_->hasTable("lots");
}

void DrawingWriter::define(const char* function, int arguments, void (*body)(sqlite3_context*, int, sqlite3_value**),
                           void* data) {
    const int code =
        sqlite3_create_function(connection_.get(), function, arguments,
                                SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_DIRECTONLY, data, body, nullptr, nullptr);
    if (code != SQLITE_OK) {
        connection_.fail(code);
    }
}

// What an earlier version of this program did not write, or another program removed.
void DrawingWriter::bringToFormat() {
    const bool hasImports = !fromNothing_ && shape_->hasColumn("fenmark_imports", "last_id");
    if (!hasImports) {
        connection_.execute(sql::kCreateImports);
    }
    if (fromNothing_) {
        connection_.execute(sql::kBeginSequences);
    } else {
        bool measured = true;
        for (const sql::LaterColumn& later : sql::kLaterColumns) {
            if (shape_->hasTable(later.table) && !shape_->hasColumn(later.table, later.column)) {
                connection_.execute(later.add);
                measured = measured && std::string_view(later.column) != "area";
            }
        }
        if (!measured) {
            SpatialIndex& index = entityIndexes_[static_cast<std::size_t>(EntityLayer::Lots)];
            index.removeAll(sql::kReadLotsWithoutLine);
            connection_.execute(sql::kDropLotsWithoutLine);
            define("ring_area", 1, areaOf);
            connection_.execute(sql::kMeasureLots);
        }
    }
    makeFollowTriggers();
    writeDefaultStyles(connection_, fromNothing_ ? nullptr : &*shape_);
}

// A trigger that stands there under such a name is let alone, whatever it does.
void DrawingWriter::makeFollowTriggers() {
    for (const sql::FollowTrigger& trigger : sql::kFollowTriggers) {
        if (!fromNothing_) {
            Statement there(connection_, sql::kHasSchemaItem);
            there.bind(1, std::string_view(trigger.name));
            if (!shape_->hasTable(trigger.needs) || (there.step() && there.integer(0) > 0)) {
                continue;
            }
        }
        connection_.execute(trigger.create);
    }
}

void DrawingWriter::moveIdentifiers(std::span<const NewIdentifier> newIdentifiers) {
    for (const NewIdentifier& item : newIdentifiers) {
        const bool isPoint = item.table == "points";
        const sql::MoveFeature& move = sql::kMoveFeatures[isPoint ? 0 : 1];
        Statement(connection_, move.sql).bind(1, item.from).bind(2, item.to).run();
        entityIndexes_[static_cast<std::size_t>(isPoint ? EntityLayer::Points : EntityLayer::Polylines)].move(item.from,
                                                                                                              item.to);
    }
}

void DrawingWriter::removeImports() {
    for (const IdRange& range : drawing_.removed_) {
        const auto remove = [&](const char* text) {
            Statement(connection_, text)
                .bind(1, static_cast<std::int64_t>(range.first))
                .bind(2, static_cast<std::int64_t>(range.last))
                .bind(3, static_cast<std::int64_t>(range.import))
                .run();
        };
        remove(sql::kRemoveElements);
        for (const char* text : sql::kRemoveFeatures) {
            remove(text);
        }
        if (hasLots()) {
            remove(sql::kRemoveLots);
        }
        Statement(connection_, sql::kRemoveImport).bind(1, static_cast<std::int64_t>(range.import)).run();
    }
}

void DrawingWriter::writeImports() {
    Statement insert(connection_, sql::kInsertImport);
    for (const Import& import : drawing_.imports_) {
        if (import.id.asUint64() <= othersFrom_) {
            continue;
        }
        const ImportCounts& counts = import.counts;
        insert.bind(1, number(import.id))
            .bind(2, std::string_view(import.fileName))
            .bind(3, std::string_view(import.path))
            .bind(4, static_cast<std::int64_t>(import.fileSize))
            .bind(5, std::string_view(import.digest))
            .bind(6, std::string_view(import.time))
            .bind(7, counts.points)
            .bind(8, counts.lots)
            .bind(9, counts.routes)
            .bind(10, counts.alignments)
            .bind(11, counts.longitudinal)
            .bind(12, counts.crossSections)
            .bind(13, counts.errors)
            .bind(14, static_cast<std::int64_t>(import.firstId))
            .bind(15, static_cast<std::int64_t>(import.lastId))
            .run();
    }
}

// Entities stand in the order of their identifiers.
std::size_t DrawingWriter::firstEntity() const {
    std::size_t first = 0;
    for (std::size_t end = drawing_.entityCount(); first < end;) {
        const std::size_t middle = first + (end - first) / 2;
        if (drawing_.entity(middle).id.asUint64() > entitiesFrom_) {
            end = middle;
        } else {
            first = middle + 1;
        }
    }
    return first;
}

void DrawingWriter::countComing() {
    for (std::size_t i = firstEntity(); i < drawing_.entityCount(); ++i) {
        for (const EntityLayer layer : {EntityLayer::Points, EntityLayer::Polylines, EntityLayer::Lots}) {
            entitiesComing_[static_cast<std::size_t>(layer)] += belongsTo(drawing_, i, layer) ? 1 : 0;
        }
    }
    for (std::size_t i = 0; i < drawing_.alignmentCount(); ++i) {
        alignmentsComing_ += drawing_.alignment(i).id.asUint64() > othersFrom_ ? 1 : 0;
    }
}

void DrawingWriter::beginIndexes() {
    const auto begin = [&](SpatialIndex& index, std::uint64_t keptTo, std::uint64_t coming) {
        if (fromNothing_) {
            index.beginNew(coming);
        } else {
            index.beginChange(keptTo, coming, drawing_.removed_);
        }
    };
    for (std::size_t layer = 0; layer < kEntityLayers; ++layer) {
        if (layer == static_cast<std::size_t>(EntityLayer::Lots) && !hasLots()) {
            continue;
        }
        begin(entityIndexes_[layer], entitiesFrom_, entitiesComing_[layer]);
        counter_.expect(entitiesComing_[layer]);
        connection_.expectRows(entitiesComing_[layer]);
    }
    begin(alignmentIndex_, othersFrom_, alignmentsComing_);
}

// What was changed or undone since the last save is written anew, if it is still there.
void DrawingWriter::removeStale() {
    const auto remove = [&](const char* text, std::uint64_t from) {
        Statement(connection_, text).bind(1, static_cast<std::int64_t>(from)).run();
    };
    for (const char* text : {sql::kDeletePoints, sql::kDeletePolylines}) {
        remove(text, entitiesFrom_);
    }
    if (hasLots()) {
        remove(sql::kDeleteLots, entitiesFrom_);
    }
    for (const char* text : {sql::kDeleteAlignments, sql::kDeleteElements, sql::kDeleteLayers, sql::kDeleteSites,
                             sql::kDeleteTables, sql::kDeleteImports}) {
        remove(text, othersFrom_);
    }
}

void DrawingWriter::writeZone() {
    const int zone = drawing_.zone();
    if (zone == zoneBefore_) {
        return;
    }
    const std::int64_t srs = srsOfZone(zone);
    if (zone != 0) {
        const std::string name = nameOfZone(zone);
        const std::string definition = definitionOfZone(zone);
        Statement insert(connection_, sql::kInsertSrs);
        insert.bind(1, std::string_view(name)).bind(2, srs).bind(3, std::string_view(definition)).run();
    }
    Statement(connection_, sql::kSetContentsSrs).bind(1, srs).run();
    Statement(connection_, sql::kSetColumnsSrs).bind(1, srs).run();
    if (fromNothing_) {
        return;
    }
    define("with_srs", 2, withSrs);
    for (const sql::SetBlobSrs& layer : sql::kSetBlobSrs) {
        if (shape_->hasTable(layer.table)) {
            Statement(connection_, layer.sql).bind(1, srs).run();
        }
    }
}

// What the file holds of layers that were renamed, coloured, removed, or are back.
void DrawingWriter::changeLayers() {
    std::map<std::uint64_t, std::string> inFile;
    {
        Statement rows(connection_, sql::kReadLayerNames);
        while (rows.step()) {
            inFile.emplace(static_cast<std::uint64_t>(rows.integer(0)), rows.text(1));
        }
    }
    NewNames renamed;
    Statement update(connection_, sql::kUpdateLayer);
    Statement insert(connection_, sql::kInsertLayer);
    for (const Layer& layer : drawing_.layers()) {
        const std::uint64_t id = layer.id.asUint64();
        if (id > othersFrom_) {
            continue; // written with all that is new
        }
        const auto found = inFile.find(id);
        const std::string colour = colourTextOf(layer);
        (found != inFile.end() ? update : insert)
            .bind(1, number(layer.id))
            .bind(2, std::string_view(layer.name))
            .bind(3, std::string_view(colour))
            .run();
        if (found != inFile.end() && found->second != layer.name) {
            renamed.emplace(found->second, layer.name);
        }
    }
    for (const auto& [id, name] : inFile) {
        if (!drawing_.findLayer(MdDbObjectId(id))) {
            Statement(connection_, sql::kDeleteLayer).bind(1, static_cast<std::int64_t>(id)).run();
        }
    }
    if (renamed.empty()) {
        return;
    }
    define("new_name", 1, newName, &renamed);
    for (const sql::RenameLayers& table : sql::kRenameLayers) {
        if (shape_->hasColumn(table.table, "layer")) {
            Statement(connection_, table.sql).run();
        }
    }
    define("new_name", 1, nullptr, nullptr);
}

void DrawingWriter::writeNamed() {
    const auto insert = [&](const char* text, const auto& items) {
        Statement statement(connection_, text);
        for (const auto& item : items) {
            if (item.id.asUint64() > othersFrom_) {
                statement.bind(1, number(item.id)).bind(2, std::string_view(item.name)).run();
            }
        }
    };
    Statement insertLayer(connection_, sql::kInsertLayer);
    for (const Layer& layer : drawing_.layers()) {
        if (layer.id.asUint64() > othersFrom_) {
            const std::string colour = colourTextOf(layer);
            insertLayer.bind(1, number(layer.id))
                .bind(2, std::string_view(layer.name))
                .bind(3, std::string_view(colour))
                .run();
        }
    }
    insert(sql::kInsertSite, drawing_.sites());
    insert(sql::kInsertTable, drawing_.tables());
}

void DrawingWriter::writeAlignments() {
    Statement insertAlignment(connection_, sql::kInsertAlignment);
    Statement insertElement(connection_, sql::kInsertElement);
    BlobWriter blob(srsId_);
    Extent all;
    std::vector<PlanPoint> line;
    LinePoints points;
    for (std::size_t i = 0; i < drawing_.alignmentCount(); ++i) {
        const Alignment& alignment = drawing_.alignment(i);
        if (alignment.id.asUint64() <= othersFrom_) {
            continue;
        }
        line.clear();
        points.beginAlignment();
        for (const Element& element : alignment.elements) {
            if (!line.empty() && line.back() == element.start) {
                line.pop_back();
            }
            points.append(element, kLineTolerance, line);
        }
        Extent extent;
        for (const PlanPoint& point : line) {
            extent.add(point.x, point.y);
        }
        all.add(extent);
        alignmentIndex_.add(number(alignment.id), extent);
        const std::optional<std::size_t> site = drawing_.findSite(alignment.site);
        insertAlignment.bind(1, number(alignment.id))
            .bind(2, blob.line(line))
            .bind(3, std::string_view(alignment.name))
            .bind(4, std::string_view(alignment.description))
            .bind(5, number(alignment.site))
            .bind(6, site ? std::string_view(drawing_.sites()[*site].name) : std::string_view())
            .bind(7, std::string_view(alignment.layer))
            .bind(8, alignment.startStation)
            .bind(9, alignment.length())
            .bind(10, std::string_view(alignment.firstStyle))
            .bind(11, std::string_view(alignment.secondStyle))
            .bind(12, number(drawing_.importOf(alignment.id)), Zero::IsNull)
            .run();
        std::int64_t place = 0;
        for (const Element& element : alignment.elements) {
            const char type = static_cast<char>(element.type);
            // A real that is not a number is written as NULL.
            const PlanPoint none{std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::quiet_NaN()};
            const PlanPoint centre = element.type == ElementType::Arc ? element.centre() : none;
            const PlanPoint pi = element.type == ElementType::Straight ? none : element.pi().value_or(none);
            insertElement.bind(1, number(alignment.id))
                .bind(2, place++)
                .bind(3, std::int64_t{element.id})
                .bind(4, std::string_view(&type, 1))
                .bind(5, element.start.x)
                .bind(6, element.start.y)
                .bind(7, element.end.x)
                .bind(8, element.end.y)
                .bind(9, element.direction)
                .bind(10, element.length)
                .bind(11, element.startRadius)
                .bind(12, element.endRadius)
                .bind(13, std::int64_t{element.clockwise ? 1 : 0})
                .bind(14, centre.x)
                .bind(15, centre.y)
                .bind(16, pi.x)
                .bind(17, pi.y)
                .run();
        }
    }
    growContents("alignments", all);
}

void DrawingWriter::writeEntities(EntityLayer layer, const char* table, const char* insert) {
    const auto place = static_cast<std::size_t>(layer);
    SpatialIndex& index = entityIndexes_[place];
    if (entitiesComing_[place] > 0) {
        index.gather(boxesOf(drawing_, firstEntity(), layer), entitiesComing_[place]);
        EntityRows rows(drawing_, firstEntity(), layer, srsId_, counter_);
        insertRows(connection_, insert, sql::kEntityColumns, rows);
        growContents(table, rows.extent());
    }
    index.finish();
}

void DrawingWriter::growContents(const char* table, const Extent& extent) {
    if (extent.empty()) {
        return;
    }
    Statement statement(connection_, sql::kGrowContents);
    statement.bind(1, std::string_view(table))
        .bind(2, extent.minX)
        .bind(3, extent.minY)
        .bind(4, extent.maxX)
        .bind(5, extent.maxY)
        .run();
}

void DrawingWriter::writeDrawing(const std::string& stamp) {
    Statement statement(connection_, sql::kWriteDrawing);
    statement.bind(1, std::int64_t{sql::kFormat})
        .bind(2, static_cast<std::int64_t>(drawing_.lastId()))
        .bind(3, number(drawing_.layers()[drawing_.currentLayer()].id))
        .bind(4, std::int64_t{drawing_.zone()})
        .bind(5, std::string_view(stamp))
        .run();
    // The tables of an earlier version have no sequences.
    Statement sequences(connection_, sql::kHasSchemaItem);
    if (sequences.bind(1, std::string_view("sqlite_sequence")).step() && sequences.integer(0) > 0) {
        Statement(connection_, sql::kWriteSequences).bind(1, static_cast<std::int64_t>(drawing_.lastId())).run();
    }
}

} // namespace fenmark::drawing
