// The cross-sections of an alignment, as many on a page as have room.
#include "exchange/plan/plot.h"

#include "exchange/plan/plan.h"
#include "exchange/plan/section_page.h"
#include "exchange/results.h"
#include "exchange/survey_text.h"
#include "exchange/text.h"

#include <algorithm>
#include <cmath>

namespace fenmark::exchange {

using drawing::Drawing;

namespace {

// Millimetres of paper.
constexpr double kHeadRoom = 14.0; // for the title
constexpr double kSideRoom = 12.0; // left and right of a section
constexpr double kAbove = 14.0;    // for the name and the height of the centre
constexpr double kBelow = 24.0;    // for offsets and heights
constexpr double kLeastBase = 4.0; // between the lowest point and the base line
constexpr double kLeastColumn = 2.4;
constexpr double kTextSize = 1.8;
constexpr int kLargestScale = 100;
constexpr double kWidestCell = 190.0; // two side by side on A3
constexpr std::size_t kMostPages = 2000;

struct Size {
    double height = 0.0; // metres
    double left = 0.0;   // the farthest offset to the left, at most 0
    double right = 0.0;  // and to the right, at least 0
    double low = 0.0;
    double high = 0.0;
};

Size sizeOf(const CrossSection& section) {
    Size size;
    size.low = section.points.front().height;
    size.high = size.low;
    for (const SectionPoint& point : section.points) {
        size.left = std::min(size.left, point.offset);
        size.right = std::max(size.right, point.offset);
        size.low = std::min(size.low, point.height);
        size.high = std::max(size.high, point.height);
    }
    size.height = size.high - size.low;
    return size;
}

double centreHeight(const CrossSection& section) {
    return std::min_element(section.points.begin(), section.points.end(),
                            [](const auto& a, const auto& b) { return std::abs(a.offset) < std::abs(b.offset); })
        ->height;
}

// One section in a cell whose top left corner is given; returns how many points have no room for their figures.
std::size_t drawSection(SectionPage& page, const CrossSection& section, const PaperPoint& corner, double cellHeight,
                        double centreX, int scale) {
    const Size size = sizeOf(section);
    const double metre = 1000.0 / scale;
    const double bottom = corner.y + cellHeight - kBelow;
    const double step = std::max(1.0, scale / 100.0); // base lines stand at round heights
    const double base = std::floor((size.low - kLeastBase / metre) / step) * step;
    const double x0 = corner.x + centreX;
    const auto at = [&](const SectionPoint& point) {
        return PaperPoint{x0 + point.offset * metre, bottom - (point.height - base) * metre};
    };
    const double left = x0 + size.left * metre - 4.0;
    const double right = x0 + size.right * metre + 4.0;
    page.line("base", {left, bottom}, {right, bottom});
    page.text({left - 1.0, bottom}, kTextSize, "end", "DL=" + fixedReal(base, 1));
    const double top = bottom - (size.high - base) * metre;
    page.line("centre", {x0, top - 5.0}, {x0, bottom});
    const std::string name = section.name.empty() ? StationNames{}(section.station) : section.name;
    page.text({x0, top - 10.5}, 3.0, "middle", name, 0.0, "title");
    page.text({x0, top - 7.0}, 2.2, "middle", "GH=" + metresText(centreHeight(section)));
    std::vector<PaperPoint> line;
    double before = left - kLeastColumn;
    std::size_t without = 0;
    for (const SectionPoint& point : section.points) {
        const PaperPoint place = at(point);
        line.push_back(place);
        page.dot(place);
        page.line("faint", place, {place.x, bottom});
        if (place.x - before < kLeastColumn) {
            ++without;
            continue;
        }
        before = place.x;
        // The figures hang from the base line.
        page.text({place.x, bottom + 2.0}, kTextSize, "end", metresText(point.height), -90.0);
        page.text({place.x, bottom + 13.0}, kTextSize, "end", metresText(point.offset), -90.0);
    }
    page.polyline("ground", line);
    return without;
}

// Takes away the points whose height no sheet can show, and counts them.
std::size_t leaveOutHighPoints(std::vector<CrossSection>& sections) {
    std::size_t leftOut = 0;
    for (CrossSection& section : sections) {
        leftOut += std::erase_if(section.points, [](const SectionPoint& point) { return !sectionShows(point.height); });
    }
    std::erase_if(sections, [](const CrossSection& section) { return section.points.empty(); });
    return leftOut;
}

} // namespace

Plot plotCrossSections(const Drawing& drawing, std::size_t index, const PlotOptions& options) {
    Plot plot;
    Results results = resultsOf(drawing);
    std::vector<CrossSection>& sections = results.alignments[index].sections;
    const std::size_t tooHigh = leaveOutHighPoints(sections);
    if (sections.empty()) {
        plot.failure = {ObstacleCode::NoCrossSections};
        return plot;
    }
    const std::string paper = options.paper.value_or("A3");
    const bool upright = options.upright.value_or(false);
    const SectionPage empty(paper, upright);
    const double pageWidth = empty.width() - 2.0 * SectionPage::kMargin;
    const double pageHeight = empty.height() - 2.0 * SectionPage::kMargin - kHeadRoom;
    double left = 0.0;
    double right = 0.0;
    double height = 0.0;
    for (const CrossSection& section : sections) {
        const Size size = sizeOf(section);
        left = std::min(left, size.left);
        right = std::max(right, size.right);
        height = std::max(height, size.height);
    }
    const double widest = std::min(kWidestCell, pageWidth) - 2.0 * kSideRoom;
    const double highest = pageHeight - kAbove - kBelow - kLeastBase;
    const int scale =
        options.scale
            ? *options.scale
            : std::max(kLargestScale,
                       roundSectionScale(1000.0 * std::max((right - left) / widest, (height + 1.0) / highest)));
    const double metre = 1000.0 / scale;
    const double step = std::max(1.0, scale / 100.0);
    const double cellWidth = (right - left) * metre + 2.0 * kSideRoom;
    const double cellHeight = (height + step) * metre + kLeastBase + kAbove + kBelow;
    const double columns = std::floor(pageWidth / cellWidth);
    const double rows = std::floor(pageHeight / cellHeight);
    if (columns < 1.0 || rows < 1.0) {
        plot.failure = {ObstacleCode::SectionsDoNotFit, 0, paper, scale};
        return plot;
    }
    const auto onPage = static_cast<std::size_t>(columns * rows);
    const std::size_t pages = (sections.size() + onPage - 1) / onPage;
    if (pages > kMostPages) {
        plot.failure = {ObstacleCode::TooManySheets, kMostPages};
        return plot;
    }
    std::size_t without = 0;
    for (std::size_t p = 0; p < pages; ++p) {
        SectionPage page(paper, upright);
        for (std::size_t i = 0; i < onPage && p * onPage + i < sections.size(); ++i) {
            const auto perRow = static_cast<std::size_t>(columns);
            const PaperPoint corner{SectionPage::kMargin + pageWidth / columns * static_cast<double>(i % perRow) +
                                        (pageWidth / columns - cellWidth) / 2.0,
                                    SectionPage::kMargin + kHeadRoom +
                                        pageHeight / rows * static_cast<double>(i / perRow)};
            without +=
                drawSection(page, sections[p * onPage + i], corner, pageHeight / rows, kSideRoom - left * metre, scale);
        }
        const std::string number =
            pages > 1 ? "　" + std::to_string(p + 1) + " / " + std::to_string(pages) : std::string();
        page.finish((options.heading.empty() ? "横断図" : options.heading) + "　" +
                        std::string(trimmedName(drawing.alignment(index).name)),
                    "縮尺　1:" + std::to_string(scale) + "（" + paper + "）" + number, options.titles);
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
