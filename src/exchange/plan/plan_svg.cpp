// A plan of a drawing as SVG: puts the parts together.
#include "exchange/plan/plan_svg.h"

#include "exchange/plan/plan.h"
#include "exchange/survey_text.h"
#include "exchange/text.h"

#include <algorithm>
#include <cmath>

namespace fenmark::exchange {

using drawing::Alignment;
using drawing::Drawing;
using drawing::EntityView;
using drawing::Extent;

namespace {

// Objects at the origin come from records without coordinates. If all else lies further away than this, metres, they
// are left out of the plan, which would show nothing otherwise.
constexpr double kFarFromOrigin = 5000.0;

constexpr char kPlanStyle[] = R"(<style>
text{font-family:"IPAGothic","Noto Sans CJK JP","Yu Gothic","MS Gothic",sans-serif;fill:#222}
.halo text{paint-order:stroke;stroke:#fff;stroke-width:.5;stroke-linejoin:round}
.l{fill:none;stroke-linecap:round;stroke-linejoin:round}
.straight{stroke:#222;stroke-width:.45}
.arc{stroke:#c62828;stroke-width:.55}
.clothoid{stroke:#1565c0;stroke-width:.55;stroke-dasharray:2.4 .9}
.tick{stroke:#222;stroke-width:.18}
.lot{fill:#f4efdf;stroke:#8d6e3f;stroke-width:.25;stroke-linejoin:round}
.ip{stroke:#757575;stroke-width:.22;stroke-dasharray:5 1 .6 1}
.left{stroke:#2e7d32;stroke-width:.28}
.right{stroke:#00838f;stroke-width:.28}
.continuous{stroke:#6a1b9a;stroke-width:.28;stroke-dasharray:1.2 .7}
.other{stroke:#546e7a;stroke-width:.25}
.grid{stroke:#b0bec5;stroke-width:.12}
.frame{fill:none;stroke:#222;stroke-width:.4}
.thin{fill:none;stroke:#222;stroke-width:.18}
.match{stroke:#111;stroke-width:.35;stroke-dasharray:6 1.5 1.5 1.5}
text.key{fill:#111;font-weight:bold}
text.stake{fill:#333}
text.curve{fill:#c62828}
text.spiral{fill:#1565c0}
text.lotname{fill:#5d4520}
text.point{fill:#37474f}
text.gridname{fill:#607d8b}
</style>
)";

// No coordinate of a plane system and no station is larger, metres; what is, or is no number, cannot be drawn to scale.
constexpr double kLargestCoordinate = 1e8;

bool atOrigin(const EntityView& entity) {
    return entity.vertices.size() == 1 && entity.vertices[0].x == 0.0 && entity.vertices[0].y == 0.0;
}

bool inReach(double value) {
    return std::abs(value) <= kLargestCoordinate;
}

bool inReach(const EntityView& entity) {
    return std::all_of(entity.vertices.begin(), entity.vertices.end(),
                       [](const host::MdGePoint3d& vertex) { return inReach(vertex.x) && inReach(vertex.y); });
}

void writeLabels(const Plan& plan, std::ostream& out) {
    out << "<g class=\"halo\">\n";
    for (const Label& label : plan.labels) {
        out << "<text class=\"" << label.style << "\" font-size=\"" << mm(label.size) << '"';
        if (label.anchor != Label::Anchor::Start) {
            out << " text-anchor=\"" << (label.anchor == Label::Anchor::Middle ? "middle" : "end") << '"';
        }
        if (label.angle == 0.0) {
            out << " x=\"" << mm(label.at.x) << "\" y=\"" << mm(label.at.y + baseLineBelow(label.size)) << '"';
        } else {
            out << " transform=\"translate(" << mm(label.at.x) << ' ' << mm(label.at.y) << ") rotate("
                << mm(label.angle) << ")\" y=\"" << mm(baseLineBelow(label.size)) << '"';
        }
        out << '>' << xmlText(label.text) << "</text>\n";
    }
    out << "</g>\n";
}

} // namespace

bool inReach(const Alignment& alignment) {
    return inReach(alignment.startStation) &&
           std::all_of(alignment.elements.begin(), alignment.elements.end(), [](const auto& element) {
               return inReach(element.start.x) && inReach(element.start.y) && inReach(element.end.x) &&
                      inReach(element.end.y) && inReach(element.length) && std::isfinite(element.endDirection());
           });
}

std::string mm(double millimetres) {
    std::string text = fixedReal(millimetres, 2);
    if (text.find('.') != std::string::npos) {
        text.erase(text.find_last_not_of('0') + 1);
        if (text.back() == '.') {
            text.pop_back();
        }
    }
    return text;
}

std::string stakeName(double station) {
    return StationNames{}(station);
}

Shown::Shown(const Drawing& drawing) {
    Extent rest;
    std::size_t origins = 0;
    std::size_t singlesThere = 0; // polylines of one vertex
    for (std::size_t i = 0; i < drawing.entityCount(); ++i) {
        const EntityView entity = drawing.entity(i);
        kinds.add(entity);
        if (entity.row && files.size() < kMostFiles && !entity.row->fileName.empty() &&
            std::find(files.begin(), files.end(), entity.row->fileName) == files.end()) {
            files.emplace_back(entity.row->fileName);
        }
        const std::size_t single = !entity.isPoint() && entity.vertices.size() < 2 ? 1 : 0;
        if (atOrigin(entity)) {
            ++origins;
            singlesThere += single;
        } else if (!inReach(entity)) {
            ++beyondReach;
        } else {
            singleVertices += single;
            for (const host::MdGePoint3d& vertex : entity.vertices) {
                rest.add(vertex.x, vertex.y);
            }
        }
    }
    for (std::size_t i = 0; i < drawing.alignmentCount(); ++i) {
        if (!inReach(drawing.alignment(i))) {
            ++beyondReach;
            continue;
        }
        withoutElements += drawing.alignment(i).elements.empty() ? 1 : 0;
        for (const auto& element : drawing.alignment(i).elements) {
            std::vector<host::PlanPoint> line;
            drawing::appendElementLine(element, 1.0, line);
            for (const host::PlanPoint& point : line) {
                rest.add(point.x, point.y);
            }
        }
    }
    const double away = rest.empty() ? 0.0 : std::max({rest.minX, -rest.maxX, rest.minY, -rest.maxY});
    leftOut = away < kFarFromOrigin ? 0 : origins;
    singleVertices += leftOut > 0 ? 0 : singlesThere;
    if (leftOut == 0 && beyondReach == 0) {
        extent = drawing.extent();
        return;
    }
    if (leftOut < origins) {
        rest.add(0.0, 0.0);
    }
    extent = rest;
}

Plan::Plan(const Drawing& shownDrawing, const Shown& shown, const PlanSheet& onSheet)
    : drawing(shownDrawing), kinds(shown.kinds), files(shown.files), leftOut(shown.leftOut),
      beyondReach(shown.beyondReach), sheet(onSheet), space(sheet.map()) {
    const std::vector<drawing::Layer>& layers = drawing.layers();
    if (std::any_of(layers.begin(), layers.end(), [](const auto& layer) { return layer.colour.has_value(); })) {
        for (const drawing::Layer& layer : layers) {
            layerColours.push_back(layer.colour ? textOf(*layer.colour) : std::string());
        }
    }
    if (leftOut > 0) {
        notes.push_back({NoteCode::AtOrigin, leftOut});
    }
    if (beyondReach > 0) {
        notes.push_back({NoteCode::OutOfReach, beyondReach});
    }
    if (shown.singleVertices > 0 || shown.withoutElements > 0) {
        notes.push_back({NoteCode::WithoutLine, 0, shown.singleVertices, shown.withoutElements});
    }
}

std::string_view Plan::colourOn(std::string_view layer) {
    const auto place = layerColours.empty() ? std::nullopt : drawing.findLayer(layer);
    if (!place || layerColours[*place].empty()) {
        return {};
    }
    colouredLayers.insert(*place);
    return layerColours[*place];
}

bool Plan::isLeftOut(const EntityView& entity) const {
    return (leftOut > 0 && atOrigin(entity)) || (beyondReach > 0 && !inReach(entity));
}

bool Plan::isLeftOut(const Alignment& alignment) const {
    return beyondReach > 0 && !inReach(alignment);
}

bool Plan::place(const std::vector<Label>& candidates, bool offLinesOnly) {
    const Label* label = space.takeFirst(candidates, offLinesOnly);
    if (label != nullptr) {
        labels.push_back(*label);
    }
    return label != nullptr;
}

void writePlan(Plan& plan, std::ostream& out) {
    const PlanSheet& sheet = plan.sheet;
    const Rect& map = sheet.map();
    out << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\" width=\""
        << mm(sheet.width()) << "mm\" height=\"" << mm(sheet.height()) << "mm\" viewBox=\"0 0 " << mm(sheet.width())
        << ' ' << mm(sheet.height()) << "\">\n<title>平面図</title>\n"
        << kPlanStyle << "<clipPath id=\"map\"><rect x=\"" << mm(map.x) << "\" y=\"" << mm(map.y) << "\" width=\""
        << mm(map.width) << "\" height=\"" << mm(map.height)
        << "\"/></clipPath>\n<rect width=\"100%\" height=\"100%\" fill=\"#fff\"/>\n";
    drawGrid(plan, out);
    out << "<g clip-path=\"url(#map)\">\n";
    drawPolylines(plan, out);
    drawAlignments(plan, out);
    drawMatchLines(plan, out);
    nameLots(plan);
    drawPoints(plan, out);
    nameGrid(plan);
    writeLabels(plan, out);
    out << "</g>\n";
    drawPanel(plan, out);
    out << "</svg>\n";
}

Notes writePlanSvg(const Drawing& drawing, std::ostream& out) {
    const Shown shown(drawing);
    Plan plan(drawing, shown, SheetChoice{});
    writePlan(plan, out);
    return plan.notes;
}

} // namespace fenmark::exchange
