// A drawing as DXF.
//
// A bulge is the tangent of a quarter of an arc's turn, positive anticlockwise.
#include "exchange/dxf.h"

#include "exchange/dxf_frame.h"
#include "exchange/element_shape.h"
#include "exchange/placed.h"
#include "exchange/plan/plan_geometry.h"
#include "exchange/text.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <optional>
#include <string_view>
#include <utility>

namespace fenmark::exchange {

using drawing::Drawing;
using drawing::Element;
using drawing::ElementType;
using drawing::EntityView;
using host::PlanPoint;

namespace {

constexpr double kPaperTextHeight = 0.0025; // metres on paper
constexpr int kWhite = 7;
constexpr int kRed = 1;
constexpr int kGreen = 3;
constexpr std::size_t kLongestData = 255;         // bytes of a string of extended data
constexpr double kGap = 1e-6;                     // metres between elements that one polyline still joins
constexpr double kWidestBulge = std::numbers::pi; // radians of turn that one bulge takes

struct Vertex {
    double x = 0.0;
    double y = 0.0;
    double bulge = 0.0;
};

// Layers of objects and of their names, encoded once.
class Layers {
  public:
    Layers(DxfLayers mode, DxfVersion version) : mode_(mode), version_(version) {
        for (std::size_t i = 0; i < kKinds; ++i) {
            objects_[i] = dxfLayer(kKindTable[i].layer, version);
            names_[i] = dxfLayer(kKindTable[i].nameLayer, version);
        }
    }

    // Good until the next call.
    const std::string& of(Kind kind, std::string_view layer) {
        return mode_ == DxfLayers::Kinds ? objects_[static_cast<std::size_t>(kind)] : drawings(layer).first;
    }
    const std::string& ofNames(Kind kind, std::string_view layer) {
        return mode_ == DxfLayers::Kinds ? names_[static_cast<std::size_t>(kind)] : drawings(layer).second;
    }
    int colourOf(Kind kind) const { return mode_ == DxfLayers::Kinds ? entryOf(kind).colour : kWhite; }

  private:
    const std::pair<std::string, std::string>& drawings(std::string_view layer) {
        if (!known_ || layer != recent_) {
            recent_ = layer;
            encoded_ = {dxfLayer(layer, version_), dxfLayer(std::string(layer) + "-NAME", version_)};
            known_ = true;
        }
        return encoded_;
    }

    DxfLayers mode_;
    DxfVersion version_;
    std::array<std::string, kKinds> objects_;
    std::array<std::string, kKinds> names_;
    std::string recent_;
    std::pair<std::string, std::string> encoded_;
    bool known_ = false;
};

// The alignment as polylines, one unless there are gaps.
std::vector<std::vector<Vertex>> polylinesOf(const drawing::Alignment& alignment, drawing::LinePoints& points) {
    std::vector<std::vector<Vertex>> lines;
    std::vector<PlanPoint> chords;
    points.beginAlignment();
    for (const Element& element : alignment.elements) {
        const bool joined = !lines.empty() && std::hypot(lines.back().back().x - element.start.x,
                                                         lines.back().back().y - element.start.y) <= kGap;
        if (!joined) {
            lines.push_back({{element.start.x, element.start.y, 0.0}});
        }
        std::vector<Vertex>& line = lines.back();
        if (shapeOf(element) == ElementType::Arc) {
            const double turn = element.turn();
            const int parts = std::max(1, static_cast<int>(std::ceil(std::abs(turn) / kWidestBulge - 1e-9)));
            for (int i = 1; i <= parts; ++i) {
                line.back().bulge = std::tan(turn / parts / 4.0);
                const PlanPoint at =
                    i == parts ? element.end : drawing::poseOnElement(element, element.length * i / parts).point;
                line.push_back({at.x, at.y, 0.0});
            }
        } else {
            chords.clear();
            points.append(element, drawing::kLineTolerance, chords);
            for (std::size_t i = 1; i < chords.size(); ++i) {
                line.push_back({chords[i].x, chords[i].y, 0.0});
            }
        }
    }
    return lines;
}

class DrawingOfEntities {
  public:
    DrawingOfEntities(DxfWriter& writer, const Drawing& drawing, const ExportOptions& options, double textHeight)
        : writer_(writer), drawing_(drawing), options_(options), layers_(options.dxfLayers, options.dxfVersion),
          textHeight_(textHeight) {}

    void alignment(const drawing::Alignment& alignment) {
        const std::string layer = layers_.of(Kind::Alignments, alignment.layer);
        if (options_.elements) {
            double station = alignment.startStation;
            points_.beginAlignment();
            for (const Element& element : alignment.elements) {
                writeElement(alignment, element, station, layer);
                station += element.length;
            }
        } else {
            for (const std::vector<Vertex>& line : polylinesOf(alignment, points_)) {
                polyline(layer, line, false, 0, [&] { alignmentData(alignment); });
            }
        }
        if (!alignment.elements.empty()) {
            const PlanPoint& start = alignment.elements.front().start;
            text(layers_.ofNames(Kind::Alignments, alignment.layer), start.x, start.y - 2.0 * textHeight_,
                 alignment.name, false);
        }
    }

    void entity(const EntityView& entity) {
        if (entity.vertices.empty()) {
            return;
        }
        const Kind kind = kindOf(entity);
        const std::string_view name = entity.row ? entity.row->name : std::string_view();
        const std::string& layer = layers_.of(kind, entity.layer);
        if (entity.vertices.size() == 1) {
            point(entity, layer);
            const host::MdGePoint3d& at = entity.position();
            text(layers_.ofNames(kind, entity.layer), at.x + textHeight_ / 2.0, at.y + textHeight_ / 2.0, name, false);
            return;
        }
        polyline(layer, entity.vertices, entity.closed, 0, [&] { rowData(entity); });
        const PlanPoint at = entity.closed ? labelPoint(entity.vertices)
                                           : PlanPoint{entity.vertices.front().x, entity.vertices.front().y};
        text(layers_.ofNames(kind, entity.layer), at.x, at.y, name, entity.closed);
    }

  private:
    void point(const EntityView& entity, const std::string& layer) {
        const host::MdGePoint3d& at = entity.position();
        writer_.entity("POINT", layer, "AcDbPoint");
        writer_.point(10, at.x, at.y);
        if (const std::optional<double> height = knownHeight(entity)) {
            writer_.real(30, *height);
        }
        rowData(entity);
    }

    void text(const std::string& layer, double x, double y, std::string_view name, bool centred) {
        name = withoutOuterBlanks(name);
        if (name.empty()) {
            return;
        }
        writer_.entity("TEXT", layer, "AcDbText");
        writer_.point(10, x, y, 0.0);
        writer_.real(40, textHeight_);
        writer_.text(1, name);
        writer_.group(7, kDxfTextStyle);
        if (centred) {
            writer_.integer(72, 1);
            writer_.point(11, x, y, 0.0);
        }
        writer_.subclass("AcDbText");
        if (centred) {
            writer_.integer(73, 2);
        }
    }

    static double bulgeOf(const Vertex& vertex) { return vertex.bulge; }
    static double bulgeOf(const PlanPoint&) { return 0.0; }
    static double bulgeOf(const host::MdGePoint3d&) { return 0.0; }

    template <typename Points, typename Data>
    void polyline(const std::string& layer, const Points& points, bool closed, int colour, const Data& data) {
        if (writer_.isOld()) {
            writer_.entity("POLYLINE", layer, "");
            colourOf(colour);
            writer_.integer(66, 1);
            writer_.point(10, 0.0, 0.0, 0.0);
            writer_.integer(70, closed ? 1 : 0);
            data();
            for (const auto& vertex : points) {
                writer_.entity("VERTEX", layer, "");
                writer_.point(10, vertex.x, vertex.y, 0.0);
                bulge(bulgeOf(vertex));
            }
            writer_.entity("SEQEND", layer, "");
            return;
        }
        writer_.group(0, "LWPOLYLINE");
        writer_.handle(5, writer_.newHandle());
        writer_.handle(330, writer_.owners().modelSpace);
        writer_.group(100, "AcDbEntity");
        writer_.group(8, layer);
        colourOf(colour);
        writer_.group(100, "AcDbPolyline");
        writer_.integer(90, points.size());
        writer_.integer(70, closed ? 1 : 0);
        writer_.real(43, 0.0);
        for (const auto& vertex : points) {
            writer_.point(10, vertex.x, vertex.y);
            bulge(bulgeOf(vertex));
        }
        data();
    }

    void bulge(double value) {
        if (value != 0.0) {
            writer_.real(42, value);
        }
    }

    void colourOf(int colour) {
        if (colour != 0) { // otherwise the layer's
            writer_.integer(62, colour);
        }
    }

    void writeElement(const drawing::Alignment& alignment, const Element& element, double station,
                      const std::string& layer) {
        const auto data = [&] {
            alignmentData(alignment);
            writer_.integer(1071, element.id);
            writer_.group(1000, std::string_view(reinterpret_cast<const char*>(&element.type), 1));
            writer_.real(1040, station);
            writer_.real(1040, element.length);
            writer_.real(1040, std::isfinite(element.startRadius) ? element.startRadius : 0.0);
            writer_.real(1040, std::isfinite(element.endRadius) ? element.endRadius : 0.0);
        };
        const ElementType shape = shapeOf(element);
        if (shape == ElementType::Straight) {
            beginCurve("LINE", layer, kWhite);
            writer_.subclass("AcDbLine");
            writer_.point(10, element.start.x, element.start.y, 0.0);
            writer_.point(11, element.end.x, element.end.y, 0.0);
            data();
        } else if (shape == ElementType::Arc) {
            const PlanPoint centre = element.centre();
            const auto degrees = [&centre](const PlanPoint& p) {
                const double angle = std::atan2(p.y - centre.y, p.x - centre.x) * 180.0 / std::numbers::pi;
                return angle < 0.0 ? angle + 360.0 : angle;
            };
            // An ARC runs anticlockwise.
            beginCurve("ARC", layer, kRed);
            writer_.subclass("AcDbCircle");
            writer_.point(10, centre.x, centre.y, 0.0);
            writer_.real(40, element.startRadius);
            writer_.subclass("AcDbArc");
            writer_.real(50, degrees(element.clockwise ? element.end : element.start));
            writer_.real(51, degrees(element.clockwise ? element.start : element.end));
            data();
        } else {
            std::vector<PlanPoint> line;
            points_.append(element, drawing::kLineTolerance, line);
            polyline(layer, line, false, kGreen, data);
        }
    }

    // An entity with a colour of its own, which stands before the first subclass.
    void beginCurve(std::string_view type, const std::string& layer, int colour) {
        writer_.group(0, type);
        if (!writer_.isOld()) {
            writer_.handle(5, writer_.newHandle());
            writer_.handle(330, writer_.owners().modelSpace);
            writer_.group(100, "AcDbEntity");
        }
        writer_.group(8, layer);
        colourOf(colour);
    }

    void data(std::string_view value) {
        // Most texts are those of the object before.
        Encoded& encoded = recent_[nextRecent_++ % recent_.size()];
        if (!encoded.known || encoded.text != value) {
            encoded = {true, std::string(value), dxfText(value, writer_.version(), kLongestData)};
        }
        writer_.group(1000, encoded.bytes);
    }

    // An object's row as extended data at the end of its groups: table, number, name, type, file.
    void rowData(const EntityView& entity) {
        if (!entity.row) {
            return;
        }
        nextRecent_ = 0;
        writer_.group(1001, kDxfApplication);
        data(entity.row->table);
        writer_.integer(1071, entity.row->no);
        writer_.text(1000, entity.row->name, kLongestData);
        data(entity.row->type);
        data(entity.row->fileName);
    }

    // The same of an alignment, which has no row: what it is called and where it begins.
    void alignmentData(const drawing::Alignment& alignment) {
        const auto site = drawing_.findSite(alignment.site);
        writer_.group(1001, kDxfApplication);
        writer_.group(1000, "alignment");
        writer_.integer(1071, static_cast<std::int32_t>(alignment.id.asUint64()));
        writer_.text(1000, alignment.name, kLongestData);
        writer_.text(1000, kAlignmentType, kLongestData);
        writer_.text(1000, alignment.description, kLongestData);
        writer_.text(1000, site ? std::string_view(drawing_.sites()[*site].name) : std::string_view(), kLongestData);
        writer_.real(1040, alignment.startStation);
        writer_.real(1040, alignment.length());
    }

    struct Encoded {
        bool known = false;
        std::string text;
        std::string bytes;
    };

    DxfWriter& writer_;
    const Drawing& drawing_;
    const ExportOptions& options_;
    Layers layers_;
    double textHeight_;
    drawing::LinePoints points_;
    std::array<Encoded, 3> recent_;
    std::size_t nextRecent_ = 0;
};

// What the header and the tables must know of the entities.
DxfContents contentsOf(const Drawing& drawing, const ExportOptions& options) {
    DxfContents contents;
    contents.textHeight = kPaperTextHeight * options.scale;
    contents.wholeExtent = isNear(drawing.extent());
    contents.layers.emplace("0", DxfColour{kWhite});
    Layers layers(options.dxfLayers, options.dxfVersion);
    std::array<bool, kKinds> kinds{};
    const auto note = [&](Kind kind, std::string_view layer) {
        bool& seen = kinds[static_cast<std::size_t>(kind)];
        if (options.dxfLayers == DxfLayers::Kinds && !std::exchange(seen, true)) {
            contents.layers.emplace(layers.of(kind, layer), DxfColour{layers.colourOf(kind)});
            contents.layers.emplace(layers.ofNames(kind, layer), DxfColour{layers.colourOf(kind)});
        }
    };
    if (options.dxfLayers == DxfLayers::Drawing) {
        const auto add = [&](const std::string& layer, const DxfColour& colour) {
            contents.layers.insert_or_assign(layers.of(Kind::Others, layer), colour);
            contents.layers.insert_or_assign(layers.ofNames(Kind::Others, layer), colour);
        };
        // Those of alignments alone first: a layer of that name with a colour comes after them.
        for (std::size_t i = 0; i < drawing.alignmentCount(); ++i) {
            add(drawing.alignment(i).layer, {kWhite});
        }
        for (const drawing::Layer& layer : drawing.layers()) {
            add(layer.name, layer.colour ? dxfColourOf(*layer.colour) : DxfColour{kWhite});
        }
    }
    for (std::size_t i = 0; i < drawing.alignmentCount(); ++i) {
        const drawing::Alignment& alignment = drawing.alignment(i);
        if (!hasPlace(alignment) || !options.selection.takes(alignment)) {
            continue;
        }
        note(Kind::Alignments, alignment.layer);
        contents.handles += alignment.elements.size() + 2;
        contents.extent.add(boxOf(alignment));
    }
    for (std::size_t i = 0; i < drawing.entityCount(); ++i) {
        const EntityView entity = drawing.entity(i);
        if (!hasPlace(entity) || !options.selection.takes(entity)) {
            continue;
        }
        note(kindOf(entity), entity.layer);
        contents.handles += 2;
        for (const host::MdGePoint3d& vertex : entity.vertices) {
            contents.extent.add(vertex.x, vertex.y);
        }
    }
    return contents;
}

// Characters beyond U+FFFF, which take four bytes; the earlier releases have code points of four digits.
std::size_t charactersBeyond(std::string_view name) {
    constexpr unsigned char kFirstOfFour = 0xF0;
    return static_cast<std::size_t>(
        std::count_if(name.begin(), name.end(), [](char c) { return static_cast<unsigned char>(c) >= kFirstOfFour; }));
}

} // namespace

Notes writeDxf(const Drawing& drawing, const ExportOptions& options, std::ostream& out) {
    DxfWriter writer(out, options.dxfVersion);
    const DxfContents contents = contentsOf(drawing, options);
    beginDxf(writer, contents);
    DrawingOfEntities entities(writer, drawing, options, contents.textHeight);
    Unplaced unplaced;
    std::size_t withoutElements = 0;
    std::size_t beyond = 0;
    for (std::size_t i = 0; i < drawing.alignmentCount(); ++i) {
        const drawing::Alignment& alignment = drawing.alignment(i);
        if (options.selection.takes(alignment) && unplaced.look(alignment)) {
            withoutElements += alignment.elements.empty() ? 1 : 0;
            beyond += charactersBeyond(alignment.name);
            entities.alignment(alignment);
        }
    }
    for (std::size_t i = 0; i < drawing.entityCount(); ++i) {
        const EntityView entity = drawing.entity(i);
        if (options.selection.takes(entity) && unplaced.look(entity)) {
            beyond += entity.row ? charactersBeyond(entity.row->name) : 0;
            entities.entity(entity);
        }
    }
    if (options.dxfLayers == DxfLayers::Drawing) {
        for (const drawing::Layer& layer : drawing.layers()) {
            beyond += charactersBeyond(layer.name);
        }
    }
    endDxf(writer);
    Notes notes = unplaced.notes(Fate::LeftOut);
    if (withoutElements > 0) {
        notes.push_back({NoteCode::WithoutLine, 0, 0, withoutElements});
    }
    if (beyond > 0 && options.dxfVersion != DxfVersion::R2018) {
        notes.push_back({NoteCode::BeyondRelease, beyond});
    }
    return notes;
}

} // namespace fenmark::exchange
