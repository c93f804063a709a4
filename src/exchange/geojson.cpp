// A drawing as GeoJSON.
#include "exchange/geojson.h"

#include "exchange/geo_feature.h"
#include "exchange/placed.h"
#include "exchange/plan/plan_geometry.h"
#include "exchange/writer_buffer.h"
#include "values/real_text.h"

#include <array>
#include <cmath>
#include <utility>

namespace fenmark::exchange {

using drawing::Drawing;
using drawing::EntityView;

namespace {

constexpr int kEpsgOfZones = 6668; // the code of a zone less its number (JGD2011)

class GeoJsonWriter {
  public:
    GeoJsonWriter(const Drawing& drawing, const ExportOptions& options, std::ostream& out)
        : drawing_(drawing), options_(options), out_(out), shapes_(drawing, options) {}

    Notes write() {
        out_ << "{\"type\":\"FeatureCollection\",";
        if (options_.plane) {
            writeReferenceSystem();
        }
        out_ << "\"features\":[";
        for (std::size_t i = 0; i < drawing_.alignmentCount(); ++i) {
            if (options_.selection.takes(drawing_.alignment(i))) {
                writeAlignment(drawing_.alignment(i));
            }
        }
        for (std::size_t i = 0; i < drawing_.entityCount(); ++i) {
            const EntityView entity = drawing_.entity(i);
            if (options_.selection.takes(entity)) {
                writeEntity(entity);
            }
        }
        out_ << "\n]}\n";
        Notes notes = unplaced_.notes(Fate::WithoutGeometry);
        if (shapes_.tooFar() > 0) {
            notes.push_back({NoteCode::BeyondProjection, shapes_.tooFar(), 0, 0, Fate::WithoutGeometry});
        }
        return notes;
    }

  private:
    // Without a word on it, readers take the coordinates for degrees.
    void writeReferenceSystem() {
        const int zone = zoneOf(drawing_, options_);
        if (zone == 0) {
            out_ << "\"crs\":null,";
            return;
        }
        out_ << "\"crs\":{\"type\":\"name\",\"properties\":{\"name\":\"urn:ogc:def:crs:EPSG::";
        out_.integer(kEpsgOfZones + zone);
        out_ << "\"}},";
    }

    void text(std::string_view value) {
        constexpr char kDigits[] = "0123456789abcdef";
        out_ << '"';
        std::size_t plain = 0; // first character not yet written
        for (std::size_t i = 0; i < value.size(); ++i) {
            const auto c = static_cast<unsigned char>(value[i]);
            if (c >= 0x20 && c != '"' && c != '\\') {
                continue;
            }
            out_ << value.substr(plain, i - plain) << '\\';
            plain = i + 1;
            if (c == '"' || c == '\\') {
                out_ << static_cast<char>(c);
            } else {
                out_ << "u00" << kDigits[c >> 4] << kDigits[c & 15];
            }
        }
        out_ << value.substr(plain) << '"';
    }

    void member(std::string_view name, std::string_view value) {
        out_ << ",\"" << name << "\":";
        text(value);
    }

    // The shortest decimal that reads back to the same 64-bit value, always with a point or an exponent.
    void real(double value) {
        std::array<char, 32> buffer;
        const auto [end, error] = writeReal(buffer.data(), buffer.data() + buffer.size(), value);
        const std::string_view digits(buffer.data(), static_cast<std::size_t>(end - buffer.data()));
        out_ << digits;
        if (digits.find_first_of(".e") == std::string_view::npos) {
            out_ << ".0";
        }
    }

    void coordinate(double value) {
        if (options_.plane) {
            real(value);
        } else {
            out_.degrees(value);
        }
    }

    void position(const Position& at) {
        out_ << '[';
        coordinate(at.x);
        out_ << ',';
        coordinate(at.y);
        out_ << ']';
    }

    void geometry(const Shape& shape) {
        out_ << "\"geometry\":";
        switch (shape.kind) {
        case ShapeKind::None:
            out_ << "null";
            return;
        case ShapeKind::Point:
            out_ << "{\"type\":\"Point\",\"coordinates\":[";
            coordinate(shape.positions[0].x);
            out_ << ',';
            coordinate(shape.positions[0].y);
            if (shape.height) {
                out_ << ',';
                real(*shape.height);
            }
            out_ << "]}";
            return;
        case ShapeKind::Line:
            out_ << "{\"type\":\"LineString\",\"coordinates\":";
            break;
        case ShapeKind::Polygon:
            out_ << "{\"type\":\"Polygon\",\"coordinates\":[";
            break;
        }
        char before = '[';
        for (const Position& at : shape.positions) {
            out_ << std::exchange(before, ',');
            position(at);
        }
        out_ << (shape.kind == ShapeKind::Polygon ? "]]}" : "]}");
    }

    void beginFeature(std::uint64_t id, std::string_view layer) {
        out_ << std::exchange(separator_, ",\n") << "{\"type\":\"Feature\",\"id\":";
        out_.integer(id);
        out_ << ",\"properties\":{\"layer\":";
        text(layer);
    }

    void writeEntity(const EntityView& entity) {
        beginFeature(entity.id.asUint64(), entity.layer);
        if (entity.row) {
            member("table", entity.row->table);
            out_ << ",\"No\":";
            out_.integer(entity.row->no);
            member("Name", entity.row->name);
            member("Type", entity.row->type);
            member("FileName", entity.row->fileName);
        }
        out_ << "},";
        unplaced_.look(entity);
        geometry(shapes_.of(entity));
        out_ << '}';
    }

    void writeAlignment(const drawing::Alignment& alignment) {
        const auto site = drawing_.findSite(alignment.site);
        beginFeature(alignment.id.asUint64(), alignment.layer);
        member("Type", kAlignmentType);
        member("Name", alignment.name);
        member("Description", alignment.description);
        member("Site", site ? std::string_view(drawing_.sites()[*site].name) : std::string_view());
        const auto number = [&](std::string_view name, double value) {
            out_ << ",\"" << name << "\":";
            if (std::isfinite(value)) {
                real(value);
            } else {
                out_ << "null";
            }
        };
        number("StartStation", alignment.startStation);
        number("Length", alignment.length());
        out_ << "},";
        unplaced_.look(alignment);
        geometry(shapes_.of(alignment));
        out_ << '}';
    }

    const Drawing& drawing_;
    const ExportOptions& options_;
    WriterBuffer out_;
    ShapeMaker shapes_;
    Unplaced unplaced_;
    std::string_view separator_ = "\n";
};

} // namespace

Notes writeGeoJson(const Drawing& drawing, const ExportOptions& options, std::ostream& out) {
    return GeoJsonWriter(drawing, options, out).write();
}

} // namespace fenmark::exchange
