// What another program changed in the layers that are made of a drawing's objects.
#include "drawing/geopackage/derived_layers.h"

#include "curve/curve.h"
#include "drawing/element.h"
#include "drawing/geopackage/entity_rows.h"
#include "drawing/geopackage/geometry_blob.h"
#include "drawing/geopackage/schema.h"
#include "values/kinds.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <numbers>
#include <span>
#include <string>

namespace fenmark::drawing {

namespace {

// How far a line may lie from its alignment, metres: the misfit that an import tells of.
constexpr double kMoved = 0.010;

// Whether the area has the outline of the polyline that stands in the row with its mark for closed ones.
bool hasOutline(const Statement& row, std::span<const std::byte> area, std::vector<MdGePoint3d>& vertices) {
    if (readBlob(row.blob(1), vertices).kind != BlobKind::Line) {
        return false;
    }
    if (row.integer(2) != 0) {
        vertices.pop_back();
    }
    const BlobParts parts = readParts(area);
    return parts.rings.size() == 1 && parts.holes == 0 &&
           std::equal(vertices.begin(), vertices.end(), parts.rings[0].begin(), parts.rings[0].end(),
                      [](const MdGePoint3d& a, const MdGePoint3d& b) { return a.x == b.x && a.y == b.y; });
}

// An area that another program changed or took away is in the drawing as its polyline is.
void noteDifferingLots(Connection& connection, const DrawingShape& shape, std::vector<StoreNote>& notes) {
    for (const char* column : {"closed", "Type", "import_id"}) {
        if (!shape.hasColumn("polylines", column)) {
            return;
        }
    }
    if (!shape.hasKeys("polylines")) {
        return; // rows of one fid do not tell whose the area is
    }
    std::string same = "1";
    for (const char* column : {"No", "Name"}) {
        if (shape.hasColumn("lots", column) && shape.hasColumn("polylines", column)) {
            same += " AND a.\"" + std::string(column) + "\" IS p.\"" + column + '"';
        }
    }
    Statement lots(connection,
                   ("SELECT p.fid, p.geom, p.closed, a.fid, a.geom, " + same +
                    " FROM polylines AS p LEFT JOIN lots AS a ON a.fid = p.fid"
                    " WHERE a.fid IS NOT NULL OR (p.import_id IS NOT NULL AND (CAST(p.closed AS INTEGER) != 0 OR"
                    " p.\"Type\" = ?1)) ORDER BY p.fid")
                       .c_str());
    lots.bind(1, std::string_view(typeOf(Kind::Lots)));
    std::vector<MdGePoint3d> vertices;
    while (lots.step()) {
        const bool taken = lots.isNull(3);
        const bool isArea = !taken || (readBlob(lots.blob(1), vertices).kind == BlobKind::Line &&
                                       vertices.size() >= kLeastRing + (lots.integer(2) != 0 ? 1 : 0));
        if (isArea && (taken || lots.integer(5) == 0 || !hasOutline(lots, lots.blob(4), vertices))) {
            count(notes, StoreNoteCode::LotsDiffer, "lots", {}, lots.integer(0));
        }
    }
}

bool isNear(const MdGePoint3d& vertex, const PlanPoint& point) {
    return std::hypot(vertex.x - point.x, vertex.y - point.y) <= kMoved;
}

// The end of an element may lie off its curve, as it was laid.
bool liesOn(const MdGePoint3d& vertex, const Element& element) {
    return isNear(vertex, element.end) ||
           std::abs(curve::nearestFoot(curveOf(element), {vertex.x, vertex.y}).offset) <= kMoved;
}

std::int64_t idOf(const Alignment& alignment) {
    return static_cast<std::int64_t>(alignment.id.asUint64());
}

// Whether a vertex of the line tells which element it belongs to.
bool isPlain(const Element& element) {
    return isUsable(element) && std::abs(element.turn()) < 2.0 * std::numbers::pi;
}

// The line has each element's start, in their order, the vertices of the element up to the next, and the last end.
bool runsAlong(std::span<const MdGePoint3d> line, std::span<const Element> elements) {
    std::size_t at = 0;
    const auto areOn = [&](const Element& element, std::size_t end) {
        return std::all_of(line.begin() + static_cast<std::ptrdiff_t>(std::min(at + 1, end)),
                           line.begin() + static_cast<std::ptrdiff_t>(end),
                           [&](const MdGePoint3d& vertex) { return liesOn(vertex, element); });
    };
    for (std::size_t i = 0; i < elements.size(); ++i) {
        const bool isPast = i > 0 && elements[i - 1].length > kMoved;
        std::size_t start = at + (isPast ? 1 : 0);
        while (start < line.size() && !isNear(line[start], elements[i].start)) {
            ++start;
        }
        if (start >= line.size() || (i > 0 && !areOn(elements[i - 1], start))) {
            return false;
        }
        at = start;
    }
    return isNear(line.back(), elements.back().end) && areOn(elements.back(), line.size());
}

} // namespace

void noteLots(Connection& connection, const DrawingShape& shape, std::vector<StoreNote>& notes) {
    if (!shape.hasColumn("lots", "area")) {
        return;
    }
    constexpr std::uint32_t kPolygon = 3;
    Statement rows(connection, sql::kReadLotsWithoutLine);
    while (rows.step()) {
        count(notes, StoreNoteCode::OtherGeometry, "lots", nameOfGeometry(kPolygon), rows.integer(0));
    }
    noteDifferingLots(connection, shape, notes);
}

void noteLines(Connection& connection, const DrawingShape& shape, const Drawing& drawing,
               std::vector<StoreNote>& notes) {
    if (!shape.hasColumn("alignments", "geom") || !shape.hasKeys("alignments")) {
        return;
    }
    Statement rows(connection, sql::kReadAlignmentLines);
    std::vector<MdGePoint3d> line;
    std::size_t next = 0;
    while (rows.step()) {
        while (next < drawing.alignmentCount() && idOf(drawing.alignment(next)) < rows.integer(0)) {
            ++next;
        }
        if (next == drawing.alignmentCount() || idOf(drawing.alignment(next)) != rows.integer(0)) {
            continue; // a line that was left out
        }
        const std::vector<Element>& elements = drawing.alignment(next).elements;
        if (elements.empty() || !std::all_of(elements.begin(), elements.end(), isPlain)) {
            continue;
        }
        if (readBlob(rows.blob(1), line).kind != BlobKind::Line || !runsAlong(line, elements)) {
            count(notes, StoreNoteCode::LinesDiffer, "alignments", {}, rows.integer(0));
        }
    }
}

} // namespace fenmark::drawing
