// The styles of the drawing's layers: colours after the plan that this program draws, sizes in millimetres on paper.
#include "drawing/geopackage/style_text.h"

#include "values/kinds.h"

#include <span>
#include <vector>

namespace fenmark::drawing {

namespace {

struct StyledKind {
    Kind kind; // Others: all that no other row names
    const char* title;
    const char* colour; // "r,g,b,a"
    const char* shape;  // of a point; the dash of a line: solid, dash, dot
    const char* size;   // of a point; the width of a line
};

struct Title {
    const char* column;
    const char* text;
};

struct Style {
    const char* symbol; // marker, line, fill
    const char* column; // that sets the kinds apart; empty for one kind
    std::span<const StyledKind> kinds;
    const char* label; // an expression
    const char* labelColour;
    int labelPlacement; // 0 around a point, 2 along a line, 1 over a point of the area
    std::vector<Title> titles;
};

const std::vector<Title> kRowTitles = {
    {"fid", "識別番号"}, {"layer", "画層"}, {"data_table", "データ表"}, {"No", "番号"},
    {"Name", "名称"},    {"Type", "種別"},  {"FileName", "ファイル名"}, {"import_id", "取込番号"}};

constexpr StyledKind kPoints[] = {
    {Kind::Points, "座標点", "31,92,158,255", "circle", "1.8"},
    {Kind::Longitudinal, "縦断成果", "176,58,46,255", "triangle", "2"},
    {Kind::CrossSections, "横断成果", "40,120,60,255", "cross2", "1.8"},
    {Kind::Others, "その他の点", "90,90,90,255", "square", "1.4"},
};
static_assert(hasEveryKind(kPoints, KindShape::Point));
constexpr StyledKind kLines[] = {
    {Kind::Lots, "画地", "110,90,30,255", "solid", "0.3"},
    {Kind::IpLines, "IP線", "150,150,150,255", "dash", "0.2"},
    {Kind::LeftStakes, "幅杭線左", "40,120,60,255", "dash", "0.25"},
    {Kind::RightStakes, "幅杭線右", "40,120,60,255", "dash", "0.25"},
    {Kind::Continuous, "連続線", "120,60,140,255", "solid", "0.25"},
    {Kind::Others, "その他の線", "90,90,90,255", "solid", "0.2"},
};
static_assert(hasEveryKind(kLines, KindShape::Line));
constexpr StyledKind kLots[] = {{Kind::Lots, "画地", "247,238,205,140", "solid", "0.2"}};
constexpr StyledKind kAlignments[] = {{Kind::Alignments, "線形", "192,32,32,255", "solid", "0.5"}};

Style styleData(std::string_view layer) {
    if (layer == "points") {
        return {"marker", "Type", kPoints, "\"Name\"", "31,60,100,255", 0, kRowTitles};
    }
    std::vector<Title> titles = kRowTitles;
    if (layer == "polylines") {
        titles.insert(titles.end(), {{"closed", "閉合"}, {"vertices", "頂点数"}, {"lightweight", "平面"}});
        return {"line", "Type", kLines, "", "", 2, titles};
    }
    if (layer == "lots") {
        titles.insert(titles.end(), {{"closed", "閉合"}, {"area", "面積（㎡）"}});
        return {"fill",          "", kLots, "coalesce(\"Name\",'') || '\n' || coalesce(format_number(\"area\", 2),'')",
                "110,90,30,255", 1,  titles};
    }
    return {"line",
            "",
            kAlignments,
            "\"name\"",
            "192,32,32,255",
            2,
            {{"fid", "識別番号"},
             {"name", "線形名"},
             {"description", "説明"},
             {"site_id", "サイト番号"},
             {"site", "サイト"},
             {"layer", "画層"},
             {"start_station", "開始測点（m）"},
             {"length", "延長（m）"},
             {"first_style", "スタイル1"},
             {"second_style", "スタイル2"},
             {"import_id", "取込番号"}}};
}

std::string attribute(std::string_view text) {
    std::string safe;
    for (const char c : text) {
        switch (c) {
        case '&':
            safe += "&amp;";
            break;
        case '<':
            safe += "&lt;";
            break;
        case '"':
            safe += "&quot;";
            break;
        case '\n':
            safe += "&#xa;";
            break;
        default:
            safe += c;
        }
    }
    return safe;
}

std::string option(const char* name, std::string_view value) {
    return std::string("<Option type=\"QString\" name=\"") + name + "\" value=\"" + attribute(value) + "\"/>";
}

std::string symbol(const Style& style, const StyledKind& kind, std::size_t number) {
    const std::string_view type = style.symbol;
    std::string text = "<symbol type=\"" + std::string(type) + "\" name=\"" + std::to_string(number) +
                       "\" alpha=\"1\" clip_to_extent=\"1\" force_rhr=\"0\">";
    if (type == "marker") {
        text += "<layer class=\"SimpleMarker\" enabled=\"1\" locked=\"0\" pass=\"0\"><Option type=\"Map\">" +
                option("name", kind.shape) + option("color", kind.colour) + option("outline_color", kind.colour) +
                option("outline_width", "0.2") + option("outline_width_unit", "MM") + option("size", kind.size) +
                option("size_unit", "MM");
    } else if (type == "line") {
        text += "<layer class=\"SimpleLine\" enabled=\"1\" locked=\"0\" pass=\"0\"><Option type=\"Map\">" +
                option("line_color", kind.colour) + option("line_style", kind.shape) + option("line_width", kind.size) +
                option("line_width_unit", "MM");
    } else {
        text += "<layer class=\"SimpleFill\" enabled=\"1\" locked=\"0\" pass=\"0\"><Option type=\"Map\">" +
                option("color", kind.colour) + option("style", kind.shape) + option("outline_color", "110,90,30,255") +
                option("outline_style", "solid") + option("outline_width", kind.size) +
                option("outline_width_unit", "MM");
    }
    return text + "</Option></layer></symbol>";
}

std::string renderer(const Style& style) {
    std::string symbols;
    std::string categories;
    for (std::size_t i = 0; i < style.kinds.size(); ++i) {
        const StyledKind& kind = style.kinds[i];
        symbols += symbol(style, kind, i);
        categories += "<category type=\"string\" value=\"" + attribute(typeOf(kind.kind)) + "\" symbol=\"" +
                      std::to_string(i) + "\" label=\"" + attribute(kind.title) + "\" render=\"true\"/>";
    }
    if (*style.column == '\0') {
        return "<renderer-v2 type=\"singleSymbol\" enableorderby=\"0\" symbollevels=\"0\" forceraster=\"0\"><symbols>" +
               symbols + "</symbols></renderer-v2>";
    }
    return "<renderer-v2 type=\"categorizedSymbol\" attr=\"" + attribute(style.column) +
           "\" enableorderby=\"0\" symbollevels=\"0\" forceraster=\"0\"><categories>" + categories +
           "</categories><symbols>" + symbols + "</symbols></renderer-v2>";
}

std::string labels(const Style& style) {
    if (*style.label == '\0') {
        return {};
    }
    return "<labeling type=\"simple\"><settings calloutType=\"simple\"><text-style fieldName=\"" +
           attribute(style.label) + "\" isExpression=\"1\" fontSize=\"8\" fontSizeUnit=\"Point\" textColor=\"" +
           style.labelColour +
           "\" textOpacity=\"1\"><text-buffer bufferDraw=\"1\" bufferSize=\"0.7\" "
           "bufferSizeUnits=\"MM\" bufferColor=\"255,255,255,255\" bufferOpacity=\"0.8\"/></text-style>"
           "<placement placement=\"" +
           std::to_string(style.labelPlacement) +
           "\" dist=\"1\" distUnits=\"MM\"/><rendering drawLabels=\"1\" obstacle=\"1\"/></settings></labeling>";
}

} // namespace

std::string styleOf(std::string_view layer) {
    const Style style = styleData(layer);
    std::string text = "<!DOCTYPE qgis PUBLIC 'http://mrcc.com/qgis.dtd' 'SYSTEM'>\n"
                       "<qgis version=\"3.22\" styleCategories=\"Symbology|Labeling|Fields\" labelsEnabled=\"" +
                       std::string(*style.label == '\0' ? "0" : "1") + "\">" + renderer(style) + labels(style) +
                       "<aliases>";
    for (std::size_t i = 0; i < style.titles.size(); ++i) {
        const Title& title = style.titles[i];
        text += "<alias index=\"" + std::to_string(i) + "\" field=\"" + attribute(title.column) + "\" name=\"" +
                attribute(title.text) + "\"/>";
    }
    return text + "</aliases></qgis>\n";
}

} // namespace fenmark::drawing
