// What stands around a plan: frame, coordinate grid, legend, title, north arrow and scale bar.
#include "exchange/plan/plan.h"
#include "exchange/text.h"

#include "exchange/plan/plan_geometry.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace fenmark::exchange {

namespace {

constexpr double kGridCross = 1.5;       // half a cross of the grid, millimetres
constexpr double kLeastGridSpace = 45.0; // millimetres between two grid lines
constexpr double kPanelTextSize = 2.6;
constexpr double kMostSqueeze = 8.0; // of a title's line; beyond that it is cut

void text(std::ostream& out, double x, double y, double size, std::string_view content, const char* anchor = "start",
          const char* more = "") {
    out << "<text x=\"" << mm(x) << "\" y=\"" << mm(y + baseLineBelow(size)) << "\" font-size=\"" << mm(size)
        << "\" text-anchor=\"" << anchor << '"' << more << '>' << xmlText(content) << "</text>\n";
}

void rectangle(std::ostream& out, const char* style, const Rect& rect) {
    out << "<rect class=\"" << style << "\" x=\"" << mm(rect.x) << "\" y=\"" << mm(rect.y) << "\" width=\""
        << mm(rect.width) << "\" height=\"" << mm(rect.height) << "\"/>\n";
}

const char* legendText(PlanItem item) {
    switch (item) {
    case PlanItem::Straight:
        return "線形（直線）";
    case PlanItem::Arc:
        return "線形（円弧）";
    case PlanItem::Clothoid:
        return "線形（クロソイド）";
    case PlanItem::ElementEnd:
        return "主要点（要素の端点）";
    case PlanItem::Station:
        return "測点";
    case PlanItem::Lot:
        return "画地";
    case PlanItem::IpLine:
        return "IP線";
    case PlanItem::LeftStakes:
        return "幅杭線（左）";
    case PlanItem::RightStakes:
        return "幅杭線（右）";
    case PlanItem::Continuous:
        return "連続線";
    case PlanItem::OtherLine:
        return "その他の線";
    case PlanItem::CoordinatePoint:
        return "座標点";
    case PlanItem::LongitudinalPoint:
        return "縦断成果の点";
    case PlanItem::CrossSectionPoint:
        return "横断成果の点";
    case PlanItem::OtherPoint:
        return "その他の点";
    }
    return "";
}

// The sample of a legend entry, 14 mm wide from x, its middle at y.
void legendSample(std::ostream& out, PlanItem item, double x, double y) {
    auto line = [&](const char* style) {
        out << "<path class=\"l " << style << "\" d=\"M" << mm(x) << ' ' << mm(y) << "h14\"/>\n";
    };
    auto shape = [&](const char* attributes, const char* path) {
        out << "<path " << attributes << " d=\"M" << mm(x + 7.0) << ' ' << mm(y) << path << "\"/>\n";
    };
    switch (item) {
    case PlanItem::Straight:
        return line("straight");
    case PlanItem::Arc:
        return line("arc");
    case PlanItem::Clothoid:
        return line("clothoid");
    case PlanItem::ElementEnd:
        line("straight");
        return shape("class=\"tick\"", "m0-2.2v4.4");
    case PlanItem::Station:
        line("straight");
        return shape("class=\"tick\"", "m-4-.8v1.6m4-2.1v2.6m4-2.1v1.6");
    case PlanItem::Lot:
        out << "<rect class=\"lot\" x=\"" << mm(x + 3.0) << "\" y=\"" << mm(y - 1.7)
            << "\" width=\"8\" height=\"3.4\"/>\n";
        return;
    case PlanItem::IpLine:
        return line("ip");
    case PlanItem::LeftStakes:
        return line("left");
    case PlanItem::RightStakes:
        return line("right");
    case PlanItem::Continuous:
        return line("continuous");
    case PlanItem::OtherLine:
        return line("other");
    case PlanItem::CoordinatePoint:
        return shape("fill=\"#fff\" stroke=\"#263238\" stroke-width=\".18\"",
                     "m-.45 0a.45 .45 0 1 0 .9 0a.45 .45 0 1 0-.9 0");
    case PlanItem::LongitudinalPoint:
        return shape("fill=\"#ef6c00\"", "m0-.55l.48 .83h-.96z");
    case PlanItem::CrossSectionPoint:
        return shape("fill=\"none\" stroke=\"#00695c\" stroke-width=\".16\"", "m-.3-.3l.6 .6m0-.6l-.6 .6");
    case PlanItem::OtherPoint:
        return shape("fill=\"#263238\"", "m-.25-.25h.5v.5h-.5z");
    }
}

double drawNorth(const Plan& plan, std::ostream& out, double y) {
    const double x = plan.sheet.panel().x + plan.sheet.panel().width / 2.0;
    // A sheet along an alignment is turned, and north with it.
    const bool turned = plan.sheet.rotation() != 0.0;
    if (turned) {
        out << "<g transform=\"rotate(" << mm(-plan.sheet.rotation() * 180.0 / std::numbers::pi) << ' ' << mm(x) << ' '
            << mm(y + 11.0) << ")\">\n";
    }
    out << "<path d=\"M" << mm(x) << ' ' << mm(y + 5.0)
        << "l3.2 14l-3.2-3z\" fill=\"#222\"/>\n<path class=\"thin\" d=\"M" << mm(x) << ' ' << mm(y + 5.0)
        << "l-3.2 14l3.2-3\"/>\n";
    text(out, x, y + 2.2, 4.0, "N", "middle", " font-weight=\"bold\"");
    out << (turned ? "</g>\n" : "");
    return y + 24.0;
}

struct LegendRow {
    std::optional<PlanItem> item; // nothing for the colour of a layer, or without a sample
    std::string_view colour;
    std::string text;
};

std::vector<LegendRow> legendRows(const Plan& plan) {
    std::vector<LegendRow> rows;
    for (const PlanItem item : plan.items) {
        rows.push_back({item, {}, legendText(item)});
        if (item == PlanItem::Station) {
            rows.back().text += "（" + fixedReal(plan.stationStep, 0) + " mごと）";
        }
    }
    constexpr std::size_t kMostColours = 8; // of layers, so that the legend leaves room
    for (const std::size_t layer : plan.colouredLayers) {
        if (rows.size() == plan.items.size() + kMostColours) {
            break;
        }
        rows.push_back({std::nullopt, plan.layerColours[layer], "画層 " + plan.drawing.layers()[layer].name});
    }
    return rows;
}

// Down to the bottom at most: rows stand closer where they are many, and the last tells how many have no room then.
double drawLegend(const Plan& plan, std::ostream& out, double y, double bottom) {
    constexpr double kRow = 5.4; // millimetres
    constexpr double kLeastRow = 3.5;
    const double x = plan.sheet.panel().x + 5.0;
    text(out, x, y + 1.0, 3.2, "凡例", "start", " font-weight=\"bold\"");
    y += 7.5;
    std::vector<LegendRow> rows = legendRows(plan);
    const double room = std::max(bottom - y, 0.0);
    const double step = std::clamp(room / static_cast<double>(std::max<std::size_t>(rows.size(), 1)), kLeastRow, kRow);
    const auto most = static_cast<std::size_t>(std::max(room / step + 1e-9, 1.0));
    if (rows.size() > most) {
        const std::size_t left = rows.size() - most + 1;
        rows.resize(most - 1);
        rows.push_back({std::nullopt, {}, "ほか " + std::to_string(left)});
    }
    for (const LegendRow& row : rows) {
        if (row.item) {
            legendSample(out, *row.item, x, y);
        } else if (!row.colour.empty()) {
            out << "<path class=\"l straight\" style=\"stroke:" << row.colour << "\" d=\"M" << mm(x) << ' ' << mm(y)
                << "h14\"/>\n";
        }
        const double width = plan.sheet.panel().width - 24.0;
        text(out, x + 18.0, y, kPanelTextSize, cutToEms(row.text, width / kPanelTextSize));
        y += step;
    }
    return y;
}

double drawScaleBar(const Plan& plan, std::ostream& out, double y) {
    constexpr double kLongest = 44.0; // millimetres
    const double longest = plan.sheet.groundLength(kLongest);
    double part = roundStep(longest / 4.0);
    while (part * 4.0 > longest) {
        part = roundStep(part / 2.6);
    }
    const double step = plan.sheet.paperLength(part);
    const double x = plan.sheet.panel().x + 6.0;
    for (int i = 0; i < 4; ++i) {
        out << "<rect x=\"" << mm(x + i * step) << "\" y=\"" << mm(y) << "\" width=\"" << mm(step)
            << "\" height=\"1.6\" fill=\"" << (i % 2 == 0 ? "#222" : "#fff")
            << "\" stroke=\"#222\" stroke-width=\".18\"/>\n";
    }
    const int decimals = part < 1.0 ? 1 : 0;
    for (const int i : {0, 2, 4}) {
        text(out, x + i * step, y + 4.0, 2.2, fixedReal(i * part, decimals) + (i == 4 ? " m" : ""), "middle");
    }
    return y + 7.0;
}

// The file names of the rows, as far as they have room.
std::vector<std::string> sourceFiles(const Plan& plan) {
    std::vector<std::string> files = plan.files;
    if (files.size() == kMostFiles) {
        files.back() = "ほか";
    }
    return files;
}

const char* zoneName(int zone) {
    constexpr const char* kNames[] = {"",  "I",  "II",  "III",  "IV",  "V",  "VI",  "VII",  "VIII",  "IX",
                                      "X", "XI", "XII", "XIII", "XIV", "XV", "XVI", "XVII", "XVIII", "XIX"};
    return zone >= 1 && zone <= 19 ? kNames[zone] : "";
}

struct TitleLine {
    std::string name;
    std::string value;
};

std::vector<TitleLine> titleLines(const Plan& plan) {
    std::vector<TitleLine> lines;
    for (const std::string& file : sourceFiles(plan)) {
        lines.push_back({lines.empty() ? "資料" : "", file});
    }
    for (const auto& [name, value] : plan.titles) {
        lines.push_back({name, value});
    }
    lines.push_back({"縮尺", "1:" + std::to_string(plan.sheet.scale()) + "（" + plan.sheet.format() + "）"});
    lines.push_back({"座標系", plan.drawing.zone() == 0
                                   ? std::string("平面直角座標")
                                   : std::string("平面直角座標 第") + zoneName(plan.drawing.zone()) + "系"});
    lines.push_back({"軸", "X 北、Y 東（m）"});
    return lines;
}

double titleTop(const Plan& plan, const std::vector<TitleLine>& lines) {
    return plan.sheet.panel().bottom() - 14.0 - 5.2 * static_cast<double>(lines.size());
}

void drawTitle(const Plan& plan, const std::vector<TitleLine>& lines, std::ostream& out) {
    const Rect& panel = plan.sheet.panel();
    const double top = titleTop(plan, lines);
    out << "<path class=\"thin\" d=\"M" << mm(panel.x) << ' ' << mm(top) << 'h' << mm(panel.width) << "\"/>\n";
    // A long heading is set smaller, so that it stays in the panel.
    const double headingSize = std::min(5.0, (panel.width - 6.0) / std::max(1.0, widthInEms(plan.heading)));
    text(out, panel.x + panel.width / 2.0, top + 6.5, headingSize, plan.heading, "middle", " font-weight=\"bold\"");
    double y = top + 14.0;
    for (const TitleLine& line : lines) {
        const double room = panel.width - 22.0;
        text(out, panel.x + 5.0, y, 2.4, cutToEms(line.name, kMostSqueeze * room / 2.4));
        // Long file names are squeezed into the panel.
        const std::string value = cutToEms(line.value, kMostSqueeze * room / 2.4);
        const double width = widthInEms(value) * 2.4;
        const std::string squeeze =
            width > room ? " textLength=\"" + mm(room) + "\" lengthAdjust=\"spacingAndGlyphs\"" : std::string();
        text(out, panel.x + 18.0, y, 2.4, value, "start", squeeze.c_str());
        y += 5.2;
    }
}

// Wrapped by characters, as Japanese text is.
void wrapNote(const std::string& note, double ems, std::vector<std::string>& lines) {
    lines.emplace_back("・");
    for (std::size_t i = 0; i < note.size();) {
        std::size_t next = i + 1;
        while (next < note.size() && (static_cast<unsigned char>(note[next]) & 0xC0) == 0x80) {
            ++next;
        }
        const std::string_view character = std::string_view(note).substr(i, next - i);
        if (widthInEms(lines.back()) + widthInEms(character) > ems) {
            lines.emplace_back("　");
        }
        lines.back() += character;
        i = next;
    }
}

// Those that have room above the bottom: whoever makes the plan is told all of them.
void drawNotes(const Plan& plan, std::ostream& out, double y, double bottom) {
    constexpr double kSize = 2.0;
    const double x = plan.sheet.panel().x + 5.0;
    std::vector<std::string> lines;
    for (std::size_t i = 0; i < plan.notes.size(); ++i) {
        const bool isLast = i + 1 == plan.notes.size();
        lines.clear();
        wrapNote(wording(plan.notes[i], Language::Japanese), (plan.sheet.panel().width - 10.0) / kSize, lines);
        if (y + 1.5 * kSize * static_cast<double>(lines.size() + (isLast ? 0 : 1)) > bottom) {
            if (y + 1.5 * kSize <= bottom) {
                text(out, x, y, kSize, "・ほか " + std::to_string(plan.notes.size() - i));
            }
            return;
        }
        for (const std::string& line : lines) {
            text(out, x, y, kSize, line);
            y += 1.5 * kSize;
        }
        y += 0.3 * kSize;
    }
}

} // namespace

void drawMatchLines(Plan& plan, std::ostream& out) {
    for (const MatchLine& line : plan.matchLines) {
        const PaperPoint at = plan.at(line.point.x, line.point.y);
        const double across = plan.turned(line.direction) + std::numbers::pi / 2.0;
        const double reach = plan.sheet.map().width;
        const double dx = reach * std::cos(across);
        const double dy = reach * std::sin(across);
        out << "<path class=\"l match\" d=\"M" << mm(at.x - dx) << ' ' << mm(at.y + dy) << 'L' << mm(at.x + dx) << ' '
            << mm(at.y - dy) << "\"/>\n";
        double degrees = std::remainder(-across * 180.0 / std::numbers::pi, 180.0);
        std::vector<Label> candidates;
        for (const double along : {30.0, -30.0, 50.0, -50.0}) {
            for (const double beside : {-2.8, 2.8}) {
                const PaperPoint middle{at.x + along * std::cos(across) + beside * std::sin(across),
                                        at.y - along * std::sin(across) + beside * std::cos(across)};
                candidates.push_back({middle, 2.4, degrees, Label::Anchor::Middle, line.text, "key"});
            }
        }
        plan.place(candidates, false);
    }
}

namespace {

// The crosses of a grid that is turned on the paper, with their ground.
template <typename Function>
void eachTurnedCross(const PlanSheet& sheet, double step, Function function) {
    const Rect& map = sheet.map();
    drawing::Extent ground;
    for (const double x : {map.x, map.right()}) {
        for (const double y : {map.y, map.bottom()}) {
            const host::PlanPoint corner = sheet.groundAt({x, y});
            ground.add(corner.x, corner.y);
        }
    }
    for (auto i = static_cast<long long>(std::ceil(ground.minX / step)); static_cast<double>(i) * step <= ground.maxX;
         ++i) {
        for (auto j = static_cast<long long>(std::ceil(ground.minY / step));
             static_cast<double>(j) * step <= ground.maxY; ++j) {
            const host::PlanPoint point{static_cast<double>(i) * step, static_cast<double>(j) * step};
            const PaperPoint at = sheet.at(point.x, point.y);
            if (at.x > map.x && at.x < map.right() && at.y > map.y && at.y < map.bottom()) {
                function(point, at);
            }
        }
    }
}

void drawTurnedGrid(const PlanSheet& sheet, double step, std::ostream& out) {
    const double east = kGridCross * std::cos(sheet.rotation());
    const double north = kGridCross * std::sin(sheet.rotation());
    out << "<path class=\"grid\" d=\"";
    eachTurnedCross(sheet, step, [&](const host::PlanPoint&, const PaperPoint& at) {
        out << 'M' << mm(at.x - east) << ' ' << mm(at.y + north) << 'L' << mm(at.x + east) << ' ' << mm(at.y - north)
            << 'M' << mm(at.x - north) << ' ' << mm(at.y - east) << 'L' << mm(at.x + north) << ' ' << mm(at.y + east);
    });
    out << "\"/>\n";
}

} // namespace

void nameGrid(Plan& plan) {
    const PlanSheet& sheet = plan.sheet;
    if (sheet.rotation() == 0.0) {
        return; // its names stand at the frame
    }
    const double step = roundStep(sheet.groundLength(kLeastGridSpace));
    const double degrees = -sheet.rotation() * 180.0 / std::numbers::pi;
    const int decimals = step < 1.0 ? 1 : 0;
    constexpr double kSize = 1.7;
    eachTurnedCross(sheet, step, [&](const host::PlanPoint& ground, const PaperPoint& at) {
        const std::string text = "X=" + fixedReal(ground.y, decimals) + " Y=" + fixedReal(ground.x, decimals);
        // Along the eastward arm of the cross, or upside down along the westward one.
        const bool flipped = std::abs(std::remainder(degrees, 360.0)) > 90.0;
        const double angle = std::remainder(flipped ? degrees + 180.0 : degrees, 360.0);
        const double radians = angle * std::numbers::pi / 180.0;
        std::vector<Label> candidates;
        for (const double side : {-1.4, 1.4}) {
            candidates.push_back({{at.x + 1.0 * std::cos(radians) - side * std::sin(radians),
                                   at.y + 1.0 * std::sin(radians) + side * std::cos(radians)},
                                  kSize,
                                  angle,
                                  Label::Anchor::Start,
                                  text,
                                  "gridname"});
        }
        plan.place(candidates, true);
    });
}

void drawGrid(Plan& plan, std::ostream& out) {
    const PlanSheet& sheet = plan.sheet;
    if (sheet.rotation() != 0.0) {
        drawTurnedGrid(sheet, roundStep(sheet.groundLength(kLeastGridSpace)), out);
        return;
    }
    const Rect& map = sheet.map();
    const double step = roundStep(sheet.groundLength(kLeastGridSpace));
    const host::PlanPoint low = sheet.groundAt({map.x, map.bottom()});
    const host::PlanPoint high = sheet.groundAt({map.right(), map.y});
    const auto firstColumn = static_cast<long long>(std::ceil(low.x / step));
    const auto lastColumn = static_cast<long long>(std::floor(high.x / step));
    const auto firstRow = static_cast<long long>(std::ceil(low.y / step));
    const auto lastRow = static_cast<long long>(std::floor(high.y / step));
    const int decimals = step < 1.0 ? 1 : 0;
    out << "<path class=\"grid\" d=\"";
    for (long long i = firstColumn; i <= lastColumn; ++i) {
        for (long long j = firstRow; j <= lastRow; ++j) {
            const PaperPoint at = sheet.at(static_cast<double>(i) * step, static_cast<double>(j) * step);
            out << 'M' << mm(at.x - kGridCross) << ' ' << mm(at.y) << 'h' << mm(2.0 * kGridCross) << 'M' << mm(at.x)
                << ' ' << mm(at.y - kGridCross) << 'v' << mm(2.0 * kGridCross);
        }
    }
    for (long long i = firstColumn; i <= lastColumn; ++i) {
        const double x = sheet.at(static_cast<double>(i) * step, 0.0).x;
        out << 'M' << mm(x) << ' ' << mm(map.bottom()) << "v-2.5M" << mm(x) << ' ' << mm(map.y) << "v2.5";
    }
    for (long long j = firstRow; j <= lastRow; ++j) {
        const double y = sheet.at(0.0, static_cast<double>(j) * step).y;
        out << 'M' << mm(map.x) << ' ' << mm(y) << "h2.5M" << mm(map.right()) << ' ' << mm(y) << "h-2.5";
    }
    out << "\"/>\n";
    // The axes of the plane rectangular system: X runs north, Y east.
    for (long long i = firstColumn; i <= lastColumn; ++i) {
        const PaperPoint at = sheet.at(static_cast<double>(i) * step, 0.0);
        text(out, at.x, map.bottom() + 2.2, 2.0, "Y=" + fixedReal(static_cast<double>(i) * step, decimals), "middle",
             " class=\"gridname\"");
    }
    for (long long j = firstRow; j <= lastRow; ++j) {
        const PaperPoint at = sheet.at(0.0, static_cast<double>(j) * step);
        out << "<text class=\"gridname\" font-size=\"2\" text-anchor=\"middle\" y=\"" << mm(baseLineBelow(2.0))
            << "\" transform=\"translate(" << mm(map.x - 2.2) << ' ' << mm(at.y)
            << ") rotate(-90)\">X=" << fixedReal(static_cast<double>(j) * step, decimals) << "</text>\n";
    }
}

void drawPanel(const Plan& plan, std::ostream& out) {
    const PlanSheet& sheet = plan.sheet;
    rectangle(out, "frame", sheet.map());
    rectangle(out, "frame", sheet.panel());
    double y = drawNorth(plan, out, sheet.panel().y + 5.0);
    y = drawScaleBar(plan, out, y + 2.0);
    out << "<path class=\"thin\" d=\"M" << mm(sheet.panel().x) << ' ' << mm(y + 1.5) << 'h' << mm(sheet.panel().width)
        << "\"/>\n";
    const std::vector<TitleLine> title = titleLines(plan);
    const double bottom = titleTop(plan, title);
    y = drawLegend(plan, out, y + 6.0, bottom);
    drawNotes(plan, out, y + 2.0, bottom);
    drawTitle(plan, title, out);
    if (plan.items.empty()) {
        text(out, sheet.map().x + sheet.map().width / 2.0, sheet.map().y + sheet.map().height / 2.0, 5.0,
             "図形がありません", "middle");
    }
}

} // namespace fenmark::exchange
