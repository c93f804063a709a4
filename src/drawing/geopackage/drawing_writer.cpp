// Writes a drawing into an open GeoPackage.
#include "drawing/geopackage/drawing_writer.h"

#include "drawing/geopackage/drawing_reader.h"
#include "drawing/geopackage/reference_systems.h"
#include "drawing/geopackage/schema.h"

#include <cstring>
#include <limits>
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
    return unsaved.settings || unsaved.entities < drawing.lastId_ || unsaved.others < drawing.lastId_;
}

void DrawingWriter::markSaved(Drawing& drawing) {
    drawing.unsaved_ = {drawing.lastId_, drawing.lastId_, false};
}

void DrawingWriter::write() {
    countComing();
    beginIndexes();
    if (!fromNothing_) {
        removeStale();
    }
    writeZone();
    writeNamed();
    if (alignmentsComing_ > 0) {
        writeAlignments();
    }
    alignmentIndex_.finish();
    writeEntities(EntityLayer::Points, "points", sql::kInsertPoints);
    writeEntities(EntityLayer::Polylines, "polylines", sql::kInsertPolylines);
    writeEntities(EntityLayer::Lots, "lots", sql::kInsertLots);
    writeDrawing();
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
    const bool everyRow = zoneBefore_ != drawing_.zone();
    const auto begin = [&](SpatialIndex& index, std::uint64_t keptTo, std::uint64_t coming) {
        if (fromNothing_) {
            index.beginNew(coming);
        } else {
            index.beginChange(keptTo, coming, everyRow);
        }
    };
    for (std::size_t layer = 0; layer < kEntityLayers; ++layer) {
        begin(entityIndexes_[layer], entitiesFrom_, entitiesComing_[layer]);
        counter_.expect(entitiesComing_[layer]);
    }
    begin(alignmentIndex_, othersFrom_, alignmentsComing_);
}

// What was changed or undone since the last save is written anew, if it is still there.
void DrawingWriter::removeStale() {
    const auto remove = [&](const char* text, std::uint64_t from) {
        Statement(connection_, text).bind(1, static_cast<std::int64_t>(from)).run();
    };
    for (const char* text : {sql::kDeletePoints, sql::kDeletePolylines, sql::kDeleteLots}) {
        remove(text, entitiesFrom_);
    }
    for (const char* text :
         {sql::kDeleteAlignments, sql::kDeleteElements, sql::kDeleteLayers, sql::kDeleteSites, sql::kDeleteTables}) {
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
    const int code = sqlite3_create_function(connection_.get(), "with_srs", 2, SQLITE_UTF8 | SQLITE_DETERMINISTIC,
                                             nullptr, withSrs, nullptr, nullptr);
    if (code != SQLITE_OK) {
        connection_.fail(code);
    }
    for (const char* text : sql::kSetBlobSrs) {
        Statement(connection_, text).bind(1, srs).run();
    }
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
    insert(sql::kInsertLayer, drawing_.layers());
    insert(sql::kInsertSite, drawing_.sites());
    insert(sql::kInsertTable, drawing_.tables());
}

void DrawingWriter::writeAlignments() {
    Statement insertAlignment(connection_, sql::kInsertAlignment);
    Statement insertElement(connection_, sql::kInsertElement);
    BlobWriter blob(srsId_);
    Extent all;
    std::vector<PlanPoint> line;
    for (std::size_t i = 0; i < drawing_.alignmentCount(); ++i) {
        const Alignment& alignment = drawing_.alignment(i);
        if (alignment.id.asUint64() <= othersFrom_) {
            continue;
        }
        line.clear();
        for (const Element& element : alignment.elements) {
            if (!line.empty() && line.back() == element.start) {
                line.pop_back();
            }
            appendElementLine(element, kLineTolerance, line);
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
    if (entitiesComing_[place] > 0) { // no insert is prepared on a table whose triggers do not rest
        EntityRows rows(drawing_, firstEntity(), layer, srsId_, index, counter_);
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

void DrawingWriter::writeDrawing() {
    Statement statement(connection_, sql::kWriteDrawing);
    statement.bind(1, std::int64_t{sql::kFormat})
        .bind(2, static_cast<std::int64_t>(drawing_.lastId()))
        .bind(3, number(drawing_.layers()[drawing_.currentLayer()].id))
        .bind(4, std::int64_t{drawing_.zone()})
        .run();
}

} // namespace fenmark::drawing
