// A drawing as DXF, release 12.
#include "exchange/dxf.h"

#include "exchange/placed.h"
#include "exchange/plan/plan_geometry.h"
#include "sima/text/cp932.h"

#include <array>
#include <cmath>
#include <cstdio>
#include <numbers>
#include <optional>
#include <set>

namespace fenmark::exchange {

using drawing::Drawing;
using drawing::Element;
using drawing::ElementType;
using drawing::EntityView;
using host::PlanPoint;

namespace {

constexpr double kTextHeight = 0.6; // metres: 1.2 mm on a plan of 1:500
constexpr int kWhite = 7;
constexpr int kRed = 1;
constexpr int kGreen = 3;
constexpr int kByLayer = 256;
constexpr const char* kApplication = "FENMARK"; // whose extended data an object's row is
constexpr std::size_t kLongestData = 255;       // bytes of a string of extended data

// The code point that begins at the position, which moves behind it. The text is valid UTF-8.
char32_t nextCharacter(std::string_view text, std::size_t& at) {
    const auto first = static_cast<unsigned char>(text[at]);
    const int length = first < 0x80 ? 1 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
    char32_t c = length == 1 ? first : first & (0x7FU >> length);
    for (int i = 1; i < length && at + static_cast<std::size_t>(i) < text.size(); ++i) {
        c = (c << 6) | (static_cast<unsigned char>(text[at + static_cast<std::size_t>(i)]) & 0x3FU);
    }
    at += static_cast<std::size_t>(length);
    return c;
}

// One line of text in the file's encoding, cut where a character would pass the limit in bytes.
std::string encoded(std::string_view text, std::size_t limit = std::string::npos) {
    std::string bytes;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t from = at;
        const std::size_t before = bytes.size();
        const char32_t c = nextCharacter(text, at);
        if (c < 0x20 || c == 0x7F) {
            bytes += ' ';
        } else if (c < 0x80) {
            bytes += static_cast<char>(c);
        } else {
            std::string one;
            sima::encodeCp932(one, text.substr(from, at - from));
            std::array<char, 16> escape;
            std::snprintf(escape.data(), escape.size(), "\\U+%04X", static_cast<unsigned>(c < 0x10000 ? c : 0xFFFD));
            bytes += one == "?" ? std::string(escape.data()) : one;
        }
        if (bytes.size() > limit) {
            bytes.resize(before);
            break;
        }
    }
    return bytes;
}

std::string layerName(std::string_view name) {
    std::string allowed(name);
    for (char& c : allowed) {
        if (std::string_view("<>/\\\":;?*|=',`").find(c) != std::string_view::npos ||
            static_cast<unsigned char>(c) < 0x20) {
            c = '_';
        }
    }
    return encoded(allowed.empty() ? "0" : allowed);
}

std::string textLayer(std::string_view name) {
    return layerName(std::string(name) + "-NAME");
}

class Writer {
  public:
    explicit Writer(std::ostream& out) : out_(out) {}

    void group(int code, std::string_view value) { out_ << code << "\r\n" << value << "\r\n"; }
    void number(int code, double value) { out_ << code << "\r\n" << PlainReal{value} << "\r\n"; }
    void integer(int code, int value) { out_ << code << "\r\n" << value << "\r\n"; }
    // Codes 10, 20 and 30 for the first point of an entity, 11, 21 and 31 for the second.
    void point(int code, double x, double y, double z = 0.0) {
        number(code, x);
        number(code + 10, y);
        number(code + 20, z);
    }
    void begin(const char* type, std::string_view layer, int colour = kByLayer) {
        group(0, type);
        group(8, layer);
        if (colour != kByLayer) {
            integer(62, colour);
        }
    }

    void text(std::string_view layer, double x, double y, std::string_view text, bool centred) {
        begin("TEXT", layer);
        point(10, x, y);
        number(40, kTextHeight);
        group(1, encoded(text));
        if (centred) {
            integer(72, 1);
            integer(73, 2);
            point(11, x, y);
        }
    }

    // An object's row as extended data at the end of its groups: table, number, name, type, file.
    void row(const std::optional<drawing::RowView>& row) {
        if (!row) {
            return;
        }
        const auto text = [&](std::string_view value) { group(1000, encoded(value, kLongestData)); };
        group(1001, kApplication);
        text(row->table);
        integer(1071, row->no);
        text(row->name);
        text(row->type);
        text(row->fileName);
    }

    template <typename Points>
    void polyline(std::string_view layer, const Points& points, bool closed, int colour = kByLayer,
                  const std::optional<drawing::RowView>& data = {}) {
        begin("POLYLINE", layer, colour);
        integer(66, 1);
        point(10, 0.0, 0.0);
        integer(70, closed ? 1 : 0);
        row(data);
        for (const auto& vertex : points) {
            begin("VERTEX", layer);
            point(10, vertex.x, vertex.y);
        }
        begin("SEQEND", layer);
    }

  private:
    std::ostream& out_;
};

void writeHeader(Writer& writer, const Drawing& drawing) {
    const drawing::Extent& extent = drawing.extent();
    writer.group(0, "SECTION");
    writer.group(2, "HEADER");
    writer.group(9, "$ACADVER");
    writer.group(1, "AC1009");
    writer.group(9, "$DWGCODEPAGE");
    writer.group(3, "ANSI_932");
    if (!extent.empty() && isNear(extent)) {
        writer.group(9, "$EXTMIN");
        writer.point(10, extent.minX, extent.minY);
        writer.group(9, "$EXTMAX");
        writer.point(10, extent.maxX, extent.maxY);
    }
    writer.group(9, "$PDMODE"); // points show as crosses
    writer.integer(70, 2);
    writer.group(9, "$PDSIZE");
    writer.number(40, kTextHeight);
    writer.group(0, "ENDSEC");
}

void writeTables(Writer& writer, const Drawing& drawing) {
    std::set<std::string> layers{"0"};
    for (const auto& layer : drawing.layers()) {
        layers.insert(layerName(layer.name));
        layers.insert(textLayer(layer.name));
    }
    for (std::size_t i = 0; i < drawing.alignmentCount(); ++i) {
        layers.insert(layerName(drawing.alignment(i).layer));
        layers.insert(textLayer(drawing.alignment(i).layer));
    }
    writer.group(0, "SECTION");
    writer.group(2, "TABLES");
    writer.group(0, "TABLE");
    writer.group(2, "LTYPE");
    writer.integer(70, 1);
    writer.group(0, "LTYPE");
    writer.group(2, "CONTINUOUS");
    writer.integer(70, 0);
    writer.group(3, "Solid line");
    writer.integer(72, 65);
    writer.integer(73, 0);
    writer.number(40, 0.0);
    writer.group(0, "ENDTAB");
    writer.group(0, "TABLE");
    writer.group(2, "LAYER");
    writer.integer(70, static_cast<int>(layers.size()));
    for (const std::string& layer : layers) {
        writer.group(0, "LAYER");
        writer.group(2, layer);
        writer.integer(70, 0);
        writer.integer(62, kWhite);
        writer.group(6, "CONTINUOUS");
    }
    writer.group(0, "ENDTAB");
    writer.group(0, "TABLE");
    writer.group(2, "APPID");
    writer.integer(70, 1);
    writer.group(0, "APPID");
    writer.group(2, kApplication);
    writer.integer(70, 0);
    writer.group(0, "ENDTAB");
    writer.group(0, "ENDSEC");
}

void writeElement(Writer& writer, const std::string& layer, const Element& element) {
    if (element.type == ElementType::Straight) {
        writer.begin("LINE", layer, kWhite);
        writer.point(10, element.start.x, element.start.y);
        writer.point(11, element.end.x, element.end.y);
    } else if (element.type == ElementType::Arc) {
        const PlanPoint centre = element.centre();
        auto degrees = [&centre](const PlanPoint& p) {
            const double angle = std::atan2(p.y - centre.y, p.x - centre.x) * 180.0 / std::numbers::pi;
            return angle < 0.0 ? angle + 360.0 : angle;
        };
        // An ARC runs anticlockwise.
        writer.begin("ARC", layer, kRed);
        writer.point(10, centre.x, centre.y);
        writer.number(40, element.startRadius);
        writer.number(50, degrees(element.clockwise ? element.end : element.start));
        writer.number(51, degrees(element.clockwise ? element.start : element.end));
    } else {
        std::vector<PlanPoint> line;
        drawing::appendElementLine(element, drawing::kLineTolerance, line);
        writer.polyline(layer, line, false, kGreen);
    }
}

void writeAlignment(Writer& writer, const drawing::Alignment& alignment) {
    for (const Element& element : alignment.elements) {
        writeElement(writer, layerName(alignment.layer), element);
    }
    if (!alignment.elements.empty()) {
        writer.text(textLayer(alignment.layer), alignment.elements.front().start.x,
                    alignment.elements.front().start.y - 2.0 * kTextHeight, alignment.name, false);
    }
}

void writeEntity(Writer& writer, const EntityView& entity) {
    const std::string layer = layerName(entity.layer);
    const std::string_view name = entity.row ? entity.row->name : std::string_view();
    if (entity.vertices.empty()) {
        return;
    }
    if (entity.vertices.size() == 1) {
        const host::MdGePoint3d& at = entity.position();
        writer.begin("POINT", layer);
        writer.point(10, at.x, at.y, heightOf(entity));
        writer.row(entity.row);
        if (!name.empty()) {
            writer.text(textLayer(entity.layer), at.x + kTextHeight / 2.0, at.y + kTextHeight / 2.0, name, false);
        }
        return;
    }
    writer.polyline(layer, entity.vertices, entity.closed, kByLayer, entity.row);
    if (!name.empty()) {
        const PlanPoint at = entity.closed ? labelPoint(entity.vertices)
                                           : PlanPoint{entity.vertices.front().x, entity.vertices.front().y};
        writer.text(textLayer(entity.layer), at.x, at.y, name, entity.closed);
    }
}

} // namespace

Notes writeDxf(const Drawing& drawing, std::ostream& out) {
    Writer writer(out);
    writeHeader(writer, drawing);
    writeTables(writer, drawing);
    writer.group(0, "SECTION");
    writer.group(2, "ENTITIES");
    Unplaced unplaced;
    for (std::size_t i = 0; i < drawing.alignmentCount(); ++i) {
        if (unplaced.look(drawing.alignment(i))) {
            writeAlignment(writer, drawing.alignment(i));
        }
    }
    for (std::size_t i = 0; i < drawing.entityCount(); ++i) {
        const EntityView entity = drawing.entity(i);
        if (unplaced.look(entity)) {
            writeEntity(writer, entity);
        }
    }
    writer.group(0, "ENDSEC");
    writer.group(0, "EOF");
    return unplaced.notes("left out");
}

} // namespace fenmark::exchange
