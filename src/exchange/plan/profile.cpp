// The longitudinal section of an alignment: its ground, heights exaggerated, over a band of heights, distances and curves.
#include "exchange/plan/plot.h"

#include "exchange/element_shape.h"
#include "exchange/main_points.h"
#include "exchange/plan/plan.h"
#include "exchange/plan/section_page.h"
#include "exchange/planned_heights.h"
#include "exchange/results.h"
#include "exchange/survey_text.h"
#include "exchange/text.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace fenmark::exchange {

using drawing::Drawing;
using drawing::Element;
using drawing::ElementType;

namespace {

// Millimetres of paper.
constexpr double kTitleRoom = 14.0;      // above the graph, for the title
constexpr double kTitleColumn = 24.0;    // names of the band's rows
constexpr double kScaleColumn = 10.0;    // heights at the left of the graph
constexpr double kLeastBandColumn = 3.0; // between two texts of the band
constexpr double kBandTextSize = 2.2;

struct BandRow {
    const char* title;
    double height;
};
constexpr std::array<BandRow, 6> kBand = {
    {{"計画高", 16.0}, {"地盤高", 16.0}, {"追加距離", 18.0}, {"単距離", 16.0}, {"測点", 24.0}, {"曲線", 18.0}}};
enum BandPlace { kPlanned, kGround, kDistance, kSingle, kName, kCurve };

constexpr int kExaggeration = 10;         // at most
constexpr double kEndRoom = 4.0;          // millimetres between the frame and the first and the last station
constexpr int kSmallestOnOneSheet = 2500; // a longer alignment takes several sheets of 1:1000
constexpr int kScaleOfSheets = 1000;
constexpr std::size_t kMostProfileSheets = 500;
constexpr double kGridSpace = 10.0; // millimetres between two heights

constexpr double kGroundStation = 1e-3; // metres: a planned height at a point of the ground

// The row of planned heights is there only where the file has some.
bool hasRow(std::size_t place, bool planned) {
    return place != kPlanned || planned;
}

double bandHeight(bool planned) {
    double height = 0.0;
    for (std::size_t i = 0; i < kBand.size(); ++i) {
        height += hasRow(i, planned) ? kBand[i].height : 0.0;
    }
    return height;
}

struct Layout {
    double left; // of the graph
    double right;
    double top;
    double bottom; // the base line, where the band begins
    int scale;     // along
    int heights;   // scale of the heights
    double from;   // station at the left
    double base;   // height of the base line
    bool planned;  // whether there are planned heights

    double x(double station) const { return left + kEndRoom + (station - from) * 1000.0 / scale; }
    double y(double height) const { return bottom - (height - base) * 1000.0 / heights; }
    double room() const { return (right - left - 2.0 * kEndRoom) * scale / 1000.0; } // metres
};

using Points = std::vector<LongitudinalPoint>;

// Longitudinal results, or the middles of the cross-sections where there are none.
Points pointsOf(const AlignmentResults& results) {
    if (!results.longitudinal.empty()) {
        return results.longitudinal;
    }
    Points points;
    for (const CrossSection& section : results.sections) {
        const auto centre =
            std::min_element(section.points.begin(), section.points.end(),
                             [](const auto& a, const auto& b) { return std::abs(a.offset) < std::abs(b.offset); });
        if (centre != section.points.end()) {
            points.push_back({section.station, centre->height, section.name});
        }
    }
    return points;
}

// Takes away the points whose height no sheet can show, and counts them.
std::size_t leaveOutHigh(Points& points) {
    return std::erase_if(points, [](const LongitudinalPoint& point) { return !sectionShows(point.height); });
}

// The part of the ground line between two stations, with the heights at both where it goes on.
Points partOf(const Points& points, double from, double to) {
    Points part;
    for (std::size_t i = 0; i < points.size(); ++i) {
        if (i > 0) {
            for (const double edge : {from, to}) {
                const LongitudinalPoint& a = points[i - 1];
                const LongitudinalPoint& b = points[i];
                if (a.station < edge && edge < b.station) {
                    const double share = (edge - a.station) / (b.station - a.station);
                    part.push_back({edge, a.height + share * (b.height - a.height), ""});
                }
            }
        }
        if (points[i].station >= from && points[i].station <= to) {
            part.push_back(points[i]);
        }
    }
    return part;
}

void fitHeights(Layout& layout, const Points& part, int wantedScale) {
    const auto [low, high] =
        std::minmax_element(part.begin(), part.end(), [](const auto& a, const auto& b) { return a.height < b.height; });
    const double range = high->height - low->height;
    const double room = (layout.bottom - layout.top) * 0.7; // the lowest point stays clear of the base line
    layout.heights = std::max(wantedScale, roundSectionScale(range * 1000.0 / room));
    const double step = layout.heights / 100.0; // metres: 10 mm of paper
    const double clear = layout.heights * 8.0 / 1000.0;
    layout.base = std::floor((low->height - clear) / step) * step;
}

void drawHeights(SectionPage& page, const Layout& layout) {
    const double step = layout.heights / 100.0; // metres: 10 mm of paper
    // Counted on the paper: heights so large that a step is lost in them would have no last line.
    const int most = static_cast<int>((layout.bottom - layout.top) / kGridSpace) + 1;
    for (int i = 0; i <= most && layout.y(layout.base + i * step) >= layout.top; ++i) {
        const double y = layout.y(layout.base + i * step);
        page.line(i == 0 ? "base" : "faint", {layout.left, y}, {layout.right, y});
        if (i > 0) {
            page.text({layout.left - 1.5, y}, kBandTextSize, "end",
                      fixedReal(layout.base + i * step, step < 5.0 ? 1 : 0));
        }
    }
    page.text({layout.left - 1.5, layout.bottom - 2.0}, kBandTextSize, "end", "DL=" + fixedReal(layout.base, 1));
    page.line("thin", {layout.left, layout.top}, {layout.left, layout.bottom});
}

void drawBandFrame(SectionPage& page, const Layout& layout) {
    double y = layout.bottom;
    const double left = layout.left - kTitleColumn - kScaleColumn;
    for (std::size_t i = 0; i < kBand.size(); ++i) {
        const BandRow& row = kBand[i];
        if (!hasRow(i, layout.planned)) {
            continue;
        }
        page.line("thin", {left, y}, {layout.right, y});
        page.text({left + kTitleColumn / 2.0, y + row.height / 2.0}, 2.8, "middle", row.title);
        y += row.height;
    }
    page.line("thin", {left, y}, {layout.right, y});
    for (const double x : {left, left + kTitleColumn, layout.left, layout.right}) {
        page.line("thin", {x, layout.bottom}, {x, y});
    }
}

double rowTop(const Layout& layout, BandPlace place) {
    double y = layout.bottom;
    for (std::size_t i = 0; i < static_cast<std::size_t>(place); ++i) {
        y += hasRow(i, layout.planned) ? kBand[i].height : 0.0;
    }
    return y;
}

// The planned height that stands at the station itself; nothing between two of them, where a vertical curve may lie.
const LongitudinalPoint* plannedAt(const Points& planned, double station) {
    const auto at = std::lower_bound(planned.begin(), planned.end(), station - kGroundStation,
                                     [](const auto& point, double value) { return point.station < value; });
    return at != planned.end() && at->station <= station + kGroundStation ? &*at : nullptr;
}

// Heights and distances of the points; counts those whose texts find no room.
std::size_t drawColumns(SectionPage& page, const Layout& layout, const Points& points, const Points& planned,
                        double to) {
    const StationNames names;
    double before = -kLeastBandColumn;
    std::size_t without = 0;
    for (std::size_t i = 0; i < points.size(); ++i) {
        const LongitudinalPoint& point = points[i];
        if (point.station < layout.from || point.station > to) {
            continue;
        }
        const double x = layout.x(point.station);
        page.line("faint", {x, layout.y(point.height)}, {x, layout.bottom});
        if (x - before < kLeastBandColumn) {
            ++without;
            continue;
        }
        before = x;
        const auto upright = [&](BandPlace place, const std::string& text) {
            const double top = rowTop(layout, place);
            const double height = kBand[static_cast<std::size_t>(place)].height;
            page.text({x, top + height - 1.0}, kBandTextSize, "start", text, -90.0);
        };
        upright(kGround, metresText(point.height));
        if (const LongitudinalPoint* height = plannedAt(planned, point.station)) {
            upright(kPlanned, metresText(height->height));
        }
        upright(kDistance, metresText(point.station));
        upright(kSingle, i == 0 ? metresText(0.0) : metresText(point.station - points[i - 1].station));
        upright(kName, point.name.empty() ? names(point.station) : point.name);
        page.line("thin", {x, layout.bottom}, {x, layout.bottom + 1.5});
    }
    return without;
}

// Right curves run below the middle of their row, left curves above it.
void drawCurves(SectionPage& page, const Layout& layout, const drawing::Alignment& alignment, double to) {
    const double top = rowTop(layout, kCurve);
    const double height = kBand[kCurve].height;
    const double middle = top + height / 2.0;
    constexpr double kFull = 5.0;
    double station = alignment.startStation;
    for (const Element& element : alignment.elements) {
        const double begin = std::max(station, layout.from);
        const double end = std::min(station + element.length, to);
        const double elementStart = station;
        station += element.length;
        if (!(begin < end)) {
            continue;
        }
        const double side = element.clockwise ? 1.0 : -1.0;
        const double full = middle + side * kFull;
        const double x1 = layout.x(begin);
        const double x2 = layout.x(end);
        const auto depthAt = [&](double at) {
            const double share = element.length > 0.0 ? (at - elementStart) / element.length : 0.0;
            const double start = std::isfinite(element.startRadius) ? 1.0 : 0.0;
            const double finish = std::isfinite(element.endRadius) ? 1.0 : 0.0;
            return middle + side * kFull * (start + share * (finish - start));
        };
        std::string label;
        double labelY = middle - 1.8;
        switch (shapeOf(element)) {
        case ElementType::Straight:
            page.line("curve", {x1, middle}, {x2, middle});
            label = "L=" + metresText(element.length);
            break;
        case ElementType::Arc:
            page.polyline("curve", {{x1, begin > elementStart ? full : middle},
                                    {x1, full},
                                    {x2, full},
                                    {x2, end < station ? full : middle}});
            label = "R=" + metresText(element.startRadius) + " L=" + metresText(element.length);
            labelY = full - side * 1.8;
            break;
        case ElementType::Clothoid:
            page.line("curve", {x1, depthAt(begin)}, {x2, depthAt(end)});
            label = "A=" + metresText(parameterOf(element)) + " L=" + metresText(element.length);
            labelY = middle - side * 1.8;
            break;
        }
        if (widthInEms(label) * 2.0 < x2 - x1) {
            page.text({(x1 + x2) / 2.0, labelY}, 2.0, "middle", label);
        }
        page.line("faint", {x1, top}, {x1, top + height});
    }
}

} // namespace

Plot plotProfile(const Drawing& drawing, std::size_t index, const PlotOptions& options) {
    Plot plot;
    const drawing::Alignment& alignment = drawing.alignment(index);
    const Results results = resultsOf(drawing);
    Points points = pointsOf(results.alignments[index]);
    std::size_t tooHigh = leaveOutHigh(points);
    if (points.size() < 2) {
        plot.failure = {ObstacleCode::NoLongitudinal};
        return plot;
    }
    const std::string paper = options.paper.value_or("A3");
    const bool upright = options.upright.value_or(false);
    Points planned = plannedHeights(drawing, index);
    tooHigh += leaveOutHigh(planned);
    Layout layout{};
    layout.planned = !planned.empty();
    {
        const SectionPage page(paper, upright);
        layout.left = SectionPage::kMargin + 4.0 + kTitleColumn + kScaleColumn;
        layout.right = page.width() - SectionPage::kMargin - 6.0;
        layout.top = SectionPage::kMargin + kTitleRoom + 4.0;
        layout.bottom = page.height() - SectionPage::kMargin - 4.0 - bandHeight(layout.planned);
    }
    const double first = points.front().station;
    const double last = points.back().station;
    layout.scale = options.scale
                       ? *options.scale
                       : roundSectionScale((last - first) * 1000.0 / (layout.right - layout.left - 2.0 * kEndRoom));
    if (!options.scale && layout.scale > kSmallestOnOneSheet) {
        layout.scale = kScaleOfSheets;
    }
    const auto sheets = std::max(1.0, std::ceil((last - first) / layout.room() - 1e-9));
    if (sheets > static_cast<double>(kMostProfileSheets)) {
        plot.failure = {ObstacleCode::TooManySheets, kMostProfileSheets};
        return plot;
    }
    std::size_t without = 0;
    for (double sheet = 0.0; sheet < sheets; ++sheet) {
        SectionPage page(paper, upright);
        layout.from = first + sheet * layout.room();
        const double to = std::min(last, layout.from + layout.room());
        const Points part = partOf(points, layout.from, to);
        if (part.empty()) {
            continue;
        }
        const Points plannedPart = partOf(planned, layout.from, to);
        Points seen = part;
        seen.insert(seen.end(), plannedPart.begin(), plannedPart.end());
        fitHeights(layout, seen, std::max(1, layout.scale / kExaggeration));
        drawHeights(page, layout);
        drawBandFrame(page, layout);
        without += drawColumns(page, layout, points, planned, to);
        drawCurves(page, layout, alignment, to);
        std::vector<PaperPoint> ground;
        for (const LongitudinalPoint& point : part) {
            ground.push_back({layout.x(point.station), layout.y(point.height)});
        }
        page.polyline("ground", ground);
        std::vector<PaperPoint> formation;
        for (const LongitudinalPoint& point : plannedPart) {
            formation.push_back({layout.x(point.station), layout.y(point.height)});
        }
        page.polyline("planned", formation);
        const std::string number =
            sheets > 1.0 ? "　" + fixedReal(sheet + 1.0, 0) + " / " + fixedReal(sheets, 0) : std::string();
        page.finish((options.heading.empty() ? "縦断図" : options.heading) + "　" +
                        std::string(trimmedName(alignment.name)),
                    "縮尺　横 1:" + std::to_string(layout.scale) + "　縦 1:" + std::to_string(layout.heights) + "（" +
                        paper + "）" + number,
                    options.titles);
        plot.pages.push_back(page.svg());
    }
    if (tooHigh > 0) {
        plot.notes.push_back({NoteCode::OutOfReach, tooHigh});
    }
    if (without > 0) {
        plot.notes.push_back({NoteCode::NoRoomForFigures, without});
    }
    return plot;
}

} // namespace fenmark::exchange
