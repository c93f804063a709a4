// Writes a drawing into an open GeoPackage.
#include "host/embedded/geopackage/drawing_writer.h"

#include "host/embedded/geopackage/drawing_reader.h"
#include "host/embedded/geopackage/reference_systems.h"
#include "host/embedded/geopackage/schema.h"

#include <cstring>
#include <limits>
#include <vector>

namespace fenmark::host::embedded {

namespace {

constexpr std::size_t kLeastRing = 3; // vertices of an area
constexpr int kSrsOffset = 4;         // of the reference system in a blob

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

DrawingWriter::DrawingWriter(Connection& connection, const Drawing& drawing, From from)
    : connection_(connection), drawing_(drawing), fromNothing_(from == From::Nothing),
      entitiesFrom_(fromNothing_ ? 0 : drawing.unsaved_.entities),
      othersFrom_(fromNothing_ ? 0 : drawing.unsaved_.others), blob_(srsOfZone(drawing.zone())) {}

bool DrawingWriter::hasChanges(const Drawing& drawing) {
    const Drawing::Unsaved& unsaved = drawing.unsaved_;
    return unsaved.settings || unsaved.entities < drawing.lastId_ || unsaved.others < drawing.lastId_;
}

void DrawingWriter::markSaved(Drawing& drawing) {
    drawing.unsaved_ = {drawing.lastId_, drawing.lastId_, false};
}

void DrawingWriter::write() {
    if (!fromNothing_)
        removeStale();
    writeZone();
    writeNamed();
    writeAlignments();
    writeEntities();
    writeDrawing();
}

// What was changed or undone since the last save is written anew, if it is still there.
void DrawingWriter::removeStale() {
    const auto remove = [&](const char* text, std::uint64_t from) {
        Statement(connection_, text).bind(1, static_cast<std::int64_t>(from)).run();
    };
    for (const char* text : {sql::kDeletePoints, sql::kDeletePolylines, sql::kDeleteLots})
        remove(text, entitiesFrom_);
    for (const char* text :
         {sql::kDeleteAlignments, sql::kDeleteElements, sql::kDeleteLayers, sql::kDeleteSites, sql::kDeleteTables})
        remove(text, othersFrom_);
}

void DrawingWriter::writeZone() {
    const int zone = drawing_.zone();
    const int zoneBefore = fromNothing_ ? 0 : DrawingReader::readHead(connection_).zone;
    if (zone == zoneBefore)
        return;
    const std::int64_t srs = srsOfZone(zone);
    if (zone != 0) {
        const std::string name = nameOfZone(zone);
        const std::string definition = definitionOfZone(zone);
        Statement insert(connection_, sql::kInsertSrs);
        insert.bind(1, std::string_view(name)).bind(2, srs).bind(3, std::string_view(definition)).run();
    }
    Statement(connection_, sql::kSetContentsSrs).bind(1, srs).run();
    Statement(connection_, sql::kSetColumnsSrs).bind(1, srs).run();
    if (fromNothing_)
        return;
    const int code = sqlite3_create_function(connection_.get(), "with_srs", 2, SQLITE_UTF8 | SQLITE_DETERMINISTIC,
                                             nullptr, withSrs, nullptr, nullptr);
    if (code != SQLITE_OK)
        connection_.fail(code);
    for (const char* text : sql::kSetBlobSrs)
        Statement(connection_, text).bind(1, srs).run();
}

void DrawingWriter::writeNamed() {
    const auto insert = [&](const char* text, const auto& items) {
        Statement statement(connection_, text);
        for (const auto& item : items) {
            if (item.id.asUint64() > othersFrom_)
                statement.bind(1, number(item.id)).bind(2, std::string_view(item.name)).run();
        }
    };
    insert(sql::kInsertLayer, drawing_.layers());
    insert(sql::kInsertSite, drawing_.sites());
    insert(sql::kInsertTable, drawing_.tables());
}

void DrawingWriter::writeAlignments() {
    Statement insertAlignment(connection_, sql::kInsertAlignment);
    Statement insertElement(connection_, sql::kInsertElement);
    Extent extent;
    std::vector<PlanPoint> line;
    for (std::size_t i = 0; i < drawing_.alignmentCount(); ++i) {
        const Alignment& alignment = drawing_.alignment(i);
        if (alignment.id.asUint64() <= othersFrom_)
            continue;
        line.clear();
        for (const Element& element : alignment.elements) {
            if (!line.empty() && line.back() == element.start)
                line.pop_back();
            appendElementLine(element, kLineTolerance, line);
        }
        for (const PlanPoint& point : line)
            extent.add(point.x, point.y);
        const std::optional<std::size_t> site = drawing_.findSite(alignment.site);
        insertAlignment.bind(1, number(alignment.id))
            .bind(2, blob_.line(line))
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
    growContents("alignments", extent);
}

void DrawingWriter::writeEntities() {
    Statement insertPoint(connection_, sql::kInsertPoint);
    Statement insertPolyline(connection_, sql::kInsertPolyline);
    Statement insertLot(connection_, sql::kInsertLot);
    Extent points;
    Extent polylines;
    Extent lots;

    const auto bindRow = [](Statement& statement, int first, const std::optional<RowView>& row) {
        if (row) {
            statement.bind(first, std::int64_t{row->no})
                .bind(first + 1, row->name)
                .bindRepeated(first + 2, row->type)
                .bindRepeated(first + 3, row->fileName);
        } else {
            statement.bindNull(first).bindNull(first + 1).bindNull(first + 2).bindNull(first + 3);
        }
    };
    const auto bindTable = [](Statement& statement, const std::optional<RowView>& row) {
        if (row)
            statement.bindRepeated(4, row->table);
        else
            statement.bindNull(4);
    };

    std::size_t first = 0;
    for (std::size_t end = drawing_.entityCount(); first < end;) { // entities stand in the order of identifiers
        const std::size_t middle = first + (end - first) / 2;
        if (drawing_.entity(middle).id.asUint64() > entitiesFrom_)
            end = middle;
        else
            first = middle + 1;
    }
    for (std::size_t i = first; i < drawing_.entityCount(); ++i) {
        const EntityView entity = drawing_.entity(i);
        if (entity.isPoint()) {
            points.add(entity.position().x, entity.position().y);
            insertPoint.bind(1, number(entity.id))
                .bind(2, blob_.point(entity.position()))
                .bindRepeated(3, entity.layer);
            bindTable(insertPoint, entity.row);
            bindRow(insertPoint, 5, entity.row);
            insertPoint.run();
            continue;
        }
        Extent extent;
        for (const MdGePoint3d& vertex : entity.vertices)
            extent.add(vertex.x, vertex.y);
        polylines.add(extent);
        insertPolyline.bind(1, number(entity.id))
            .bind(2, blob_.line(entity.vertices, entity.closed))
            .bindRepeated(3, entity.layer)
            .bind(9, std::int64_t{entity.closed ? 1 : 0})
            .bind(10, static_cast<std::int64_t>(entity.vertices.size()))
            .bind(11, std::int64_t{entity.kind == EntityKind::Polyline ? 1 : 0});
        bindTable(insertPolyline, entity.row);
        bindRow(insertPolyline, 5, entity.row);
        insertPolyline.run();
        if (entity.closed && entity.vertices.size() >= kLeastRing) {
            lots.add(extent);
            insertLot.bind(1, number(entity.id)).bind(2, blob_.polygon(entity.vertices)).bindRepeated(3, entity.layer);
            bindRow(insertLot, 4, entity.row);
            insertLot.run();
        }
    }
    growContents("points", points);
    growContents("polylines", polylines);
    growContents("lots", lots);
}

void DrawingWriter::growContents(const char* table, const Extent& extent) {
    if (extent.empty())
        return;
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

} // namespace fenmark::host::embedded
