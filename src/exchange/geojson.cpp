// A drawing as GeoJSON.
#include "exchange/geojson.h"

#include "exchange/placed.h"
#include "exchange/plan/plan_geometry.h"

#include <utility>

namespace fenmark::exchange {

using drawing::Drawing;
using drawing::EntityView;

namespace {

void writeRow(std::ostream& out, const EntityView& entity) {
    out << "\"layer\":" << JsonText{entity.layer};
    if (entity.row) {
        out << ",\"table\":" << JsonText{entity.row->table} << ",\"No\":" << entity.row->no
            << ",\"Name\":" << JsonText{entity.row->name} << ",\"Type\":" << JsonText{entity.row->type}
            << ",\"FileName\":" << JsonText{entity.row->fileName};
    }
}

void writePosition(std::ostream& out, double x, double y) {
    out << '[' << JsonReal{x} << ',' << JsonReal{y} << ']';
}

void writeGeometry(std::ostream& out, const EntityView& entity) {
    if (entity.isPoint()) {
        const host::MdGePoint3d& at = entity.position();
        out << "{\"type\":\"Point\",\"coordinates\":[" << JsonReal{at.x} << ',' << JsonReal{at.y} << ','
            << JsonReal{heightOf(entity)} << "]}";
        return;
    }
    const auto& vertices = entity.vertices;
    if (vertices.empty()) {
        out << "null";
    } else if (vertices.size() == 1) {
        out << "{\"type\":\"Point\",\"coordinates\":";
        writePosition(out, vertices[0].x, vertices[0].y);
        out << '}';
    } else {
        const bool polygon = entity.closed && vertices.size() >= 3;
        // The outer ring of a polygon runs anticlockwise.
        const bool backwards = polygon && signedArea(vertices) < 0.0;
        out << (polygon ? "{\"type\":\"Polygon\",\"coordinates\":[[" : "{\"type\":\"LineString\",\"coordinates\":[");
        const char* separator = "";
        auto write = [&](const host::MdGePoint3d& vertex) {
            out << std::exchange(separator, ",");
            writePosition(out, vertex.x, vertex.y);
        };
        if (backwards) {
            for (std::size_t i = vertices.size(); i-- > 0;) {
                write(vertices[i]);
            }
        } else {
            for (const host::MdGePoint3d& vertex : vertices) {
                write(vertex);
            }
        }
        if (entity.closed) {
            write(backwards ? vertices.back() : vertices.front());
        }
        out << (polygon ? "]]}" : "]}");
    }
}

void writeAlignment(std::ostream& out, const Drawing& drawing, std::size_t index, Unplaced& unplaced) {
    const drawing::Alignment& alignment = drawing.alignment(index);
    const auto site = drawing.findSite(alignment.site);
    out << "{\"type\":\"Feature\",\"id\":" << alignment.id.asUint64()
        << ",\"properties\":{\"layer\":" << JsonText{alignment.layer}
        << ",\"Type\":\"平面線形\",\"Name\":" << JsonText{alignment.name}
        << ",\"Description\":" << JsonText{alignment.description}
        << ",\"Site\":" << JsonText{site ? drawing.sites()[*site].name : std::string_view()}
        << ",\"StartStation\":" << JsonReal{alignment.startStation} << ",\"Length\":" << JsonReal{alignment.length()}
        << "},\"geometry\":";
    const bool placed = unplaced.look(alignment);
    const std::vector<host::PlanPoint> line = placed ? lineOfAlignment(alignment) : std::vector<host::PlanPoint>();
    if (line.size() < 2) {
        out << "null}";
        return;
    }
    out << "{\"type\":\"LineString\",\"coordinates\":[";
    const char* separator = "";
    for (const host::PlanPoint& point : line) {
        out << std::exchange(separator, ",");
        writePosition(out, point.x, point.y);
    }
    out << "]}}";
}

} // namespace

Notes writeGeoJson(const Drawing& drawing, std::ostream& out) {
    out << "{\"type\":\"FeatureCollection\",";
    // Without a word on it, readers take the coordinates for degrees.
    if (drawing.zone() != 0) {
        out << "\"crs\":{\"type\":\"name\",\"properties\":{\"name\":\"urn:ogc:def:crs:EPSG::" << 6668 + drawing.zone()
            << "\"}},";
    } else {
        out << "\"crs\":null,";
    }
    out << "\"features\":[";
    Unplaced unplaced;
    const char* separator = "\n";
    for (std::size_t i = 0; i < drawing.alignmentCount(); ++i) {
        out << std::exchange(separator, ",\n");
        writeAlignment(out, drawing, i, unplaced);
    }
    for (std::size_t i = 0; i < drawing.entityCount(); ++i) {
        const EntityView entity = drawing.entity(i);
        out << std::exchange(separator, ",\n") << "{\"type\":\"Feature\",\"id\":" << entity.id.asUint64()
            << ",\"properties\":{";
        writeRow(out, entity);
        out << "},\"geometry\":";
        if (unplaced.look(entity)) {
            writeGeometry(out, entity);
        } else {
            out << "null";
        }
        out << '}';
    }
    out << "\n]}\n";
    return unplaced.notes("written without geometry");
}

} // namespace fenmark::exchange
