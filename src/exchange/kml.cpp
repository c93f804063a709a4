// A drawing as KML.
#include "exchange/kml.h"

#include "exchange/geo_feature.h"
#include "exchange/placed.h"
#include "exchange/text.h"
#include "exchange/writer_buffer.h"

#include <array>
#include <vector>

namespace fenmark::exchange {

using drawing::Drawing;
using drawing::EntityView;

namespace {

// Line and point colours as KML has them: opacity, blue, green, red.
struct KindColour {
    Kind kind;
    std::string_view colour;
};
constexpr std::array<KindColour, kKinds> kColours = {{
    {Kind::Points, "ff404040"},
    {Kind::Lots, "ff2e8b2e"},
    {Kind::Alignments, "ff2828d2"},
    {Kind::IpLines, "ff0080ff"},
    {Kind::LeftStakes, "ffb4a000"},
    {Kind::RightStakes, "ffb4a000"},
    {Kind::Continuous, "ffc832b4"},
    {Kind::Longitudinal, "ff00b4d2"},
    {Kind::CrossSections, "ffd28232"},
    {Kind::Others, "ff606060"},
}};
static_assert(inOrderOfKinds(kColours));
constexpr std::string_view kThrough = "40"; // opacity of a lot's area

class KmlWriter {
  public:
    KmlWriter(const Drawing& drawing, const ExportOptions& options, std::ostream& out)
        : drawing_(drawing), options_(options), out_(out), shapes_(drawing, inDegrees(options)) {}

    Notes write() {
        sort();
        out_ << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<kml "
                "xmlns=\"http://www.opengis.net/kml/2.2\">\n<Document>\n";
        for (const KindEntry& entry : kKindTable) {
            if (counts_[index(entry.kind)] > 0) {
                writeStyle(entry);
            }
        }
        for (const KindEntry& entry : kKindTable) {
            if (counts_[index(entry.kind)] > 0) {
                writeFolder(entry);
            }
        }
        out_ << "</Document>\n</kml>\n";
        Notes notes = unplaced_.notes(Fate::LeftOut);
        if (shapes_.tooFar() > 0) {
            notes.push_back({NoteCode::BeyondProjection, shapes_.tooFar()});
        }
        return notes;
    }

  private:
    static constexpr std::uint8_t kNotTaken = 255;

    static std::size_t index(Kind kind) { return static_cast<std::size_t>(kind); }
    static ExportOptions inDegrees(ExportOptions options) {
        options.plane = false;
        return options;
    }

    // Which kind each entity is, and how many there are of each.
    void sort() {
        kinds_.assign(drawing_.entityCount(), kNotTaken);
        for (std::size_t i = 0; i < kinds_.size(); ++i) {
            const EntityView entity = drawing_.entity(i);
            if (options_.selection.takes(entity) && unplaced_.look(entity)) {
                const Kind kind = kindOf(entity);
                kinds_[i] = static_cast<std::uint8_t>(kind);
                ++counts_[index(kind)];
            }
        }
        for (std::size_t i = 0; i < drawing_.alignmentCount(); ++i) {
            if (options_.selection.takes(drawing_.alignment(i)) && unplaced_.look(drawing_.alignment(i))) {
                alignments_.push_back(i);
                ++counts_[index(Kind::Alignments)];
            }
        }
    }

    void writeStyle(const KindEntry& entry) {
        const std::string_view colour = kColours[index(entry.kind)].colour;
        out_ << "<Style id=\"" << entry.option << "\"><IconStyle><color>" << colour
             << "</color><scale>0.5</scale></IconStyle><LabelStyle><scale>0.7</scale></LabelStyle><LineStyle><color>"
             << colour << "</color><width>2</width></LineStyle><PolyStyle><color>" << kThrough << colour.substr(2)
             << "</color></PolyStyle></Style>\n";
    }

    void writeFolder(const KindEntry& entry) {
        out_ << "<Folder>\n<name>" << entry.layer << "</name>\n";
        if (entry.kind == Kind::Alignments) {
            for (const std::size_t i : alignments_) {
                writeAlignment(entry, drawing_.alignment(i));
            }
        } else {
            for (std::size_t i = 0; i < kinds_.size(); ++i) {
                if (kinds_[i] == static_cast<std::uint8_t>(entry.kind)) {
                    writeEntity(entry, drawing_.entity(i));
                }
            }
        }
        out_ << "</Folder>\n";
    }

    void beginPlacemark(const KindEntry& entry, std::string_view name) {
        out_ << "<Placemark><name>" << xmlText(withoutOuterBlanks(name)) << "</name><styleUrl>#" << entry.option
             << "</styleUrl><ExtendedData>";
    }

    void data(std::string_view name, std::string_view value) {
        out_ << "<Data name=\"" << name << "\"><value>" << xmlText(value) << "</value></Data>";
    }

    void data(std::string_view name, double value) {
        out_ << "<Data name=\"" << name << "\"><value>";
        out_.real(value);
        out_ << "</value></Data>";
    }

    void endPlacemark(const Shape& shape) {
        out_ << "</ExtendedData>";
        switch (shape.kind) {
        case ShapeKind::None:
            break;
        case ShapeKind::Point:
            out_ << (shape.height ? "<Point><altitudeMode>absolute</altitudeMode><coordinates>"
                                  : "<Point><coordinates>");
            coordinates(shape);
            out_ << "</coordinates></Point>";
            break;
        case ShapeKind::Line:
            out_ << "<LineString><tessellate>1</tessellate><coordinates>";
            coordinates(shape);
            out_ << "</coordinates></LineString>";
            break;
        case ShapeKind::Polygon:
            out_ << "<Polygon><tessellate>1</tessellate><outerBoundaryIs><LinearRing><coordinates>";
            coordinates(shape);
            out_ << "</coordinates></LinearRing></outerBoundaryIs></Polygon>";
            break;
        }
        out_ << "</Placemark>\n";
    }

    void coordinates(const Shape& shape) {
        std::string_view before;
        for (const Position& at : shape.positions) {
            out_ << before;
            before = " ";
            out_.degrees(at.x);
            out_ << ',';
            out_.degrees(at.y);
            if (shape.height) {
                out_ << ',';
                out_.real(*shape.height);
            }
        }
    }

    void writeEntity(const KindEntry& entry, const EntityView& entity) {
        beginPlacemark(entry, entity.row ? entity.row->name : std::string_view());
        data("layer", entity.layer);
        if (entity.row) {
            data("table", entity.row->table);
            out_ << "<Data name=\"No\"><value>";
            out_.integer(entity.row->no);
            out_ << "</value></Data>";
            data("Type", entity.row->type);
            data("FileName", entity.row->fileName);
        }
        endPlacemark(shapes_.of(entity));
    }

    void writeAlignment(const KindEntry& entry, const drawing::Alignment& alignment) {
        const auto site = drawing_.findSite(alignment.site);
        beginPlacemark(entry, alignment.name);
        data("layer", alignment.layer);
        data("Type", kAlignmentType);
        data("Description", alignment.description);
        data("Site", site ? std::string_view(drawing_.sites()[*site].name) : std::string_view());
        data("StartStation", alignment.startStation);
        data("Length", alignment.length());
        endPlacemark(shapes_.of(alignment));
    }

    const Drawing& drawing_;
    const ExportOptions& options_;
    WriterBuffer out_;
    ShapeMaker shapes_;
    Unplaced unplaced_;
    std::vector<std::uint8_t> kinds_;
    std::vector<std::size_t> alignments_;
    std::array<std::size_t, kKinds> counts_{};
};

} // namespace

Notes writeKml(const Drawing& drawing, const ExportOptions& options, std::ostream& out) {
    return KmlWriter(drawing, options, out).write();
}

} // namespace fenmark::exchange
