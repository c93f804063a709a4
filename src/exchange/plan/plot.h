// What is drawn on paper: plans, sheets along an alignment, longitudinal sections, cross-sections.
#pragma once

#include "drawing/drawing.h"
#include "exchange/notes.h"
#include "exchange/obstacles.h"
#include "values/outcome.h"

#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace fenmark::exchange {

// Bytes of all sheets along an alignment together; a sheet of a survey has some tens of thousands.
inline constexpr std::size_t kMostSheetBytes = 100'000'000;

struct PlotOptions {
    std::optional<int> scale;                   // the N of 1:N; otherwise the largest round one that fits
    std::optional<std::string> paper;           // "A4" to "A0"; otherwise the smallest from A3 on that serves
    std::optional<bool> upright = std::nullopt; // the long side runs up; otherwise as the plan's extent asks for
    // The part of the drawing that a plan shows, in its middle at a chosen scale; otherwise all of it.
    std::optional<drawing::Extent> extent = std::nullopt;
    std::string heading; // in place of "平　面　図", "縦断図" and "横断図"
    // More lines of the title block: name and value.
    std::vector<std::pair<std::string, std::string>> titles;
    std::size_t mostSheetBytes = kMostSheetBytes;
};

// Pages as SVG documents, one unit a millimetre of paper.
struct Plot {
    std::vector<std::string> pages;
    Notes notes;                     // for the user; the sheets say them in Japanese
    std::optional<Obstacle> failure; // why there is none
};

[[nodiscard]] Plot plotPlan(const drawing::Drawing& drawing, const PlotOptions& options);
// Sheets that follow the alignment, from left to right, with match lines. Scale 1:500 unless an option says otherwise.
[[nodiscard]] Plot plotAlong(const drawing::Drawing& drawing, std::size_t alignment, const PlotOptions& options);
// The ground along the alignment from its longitudinal results, heights exaggerated, over a band of stations and curves.
[[nodiscard]] Plot plotProfile(const drawing::Drawing& drawing, std::size_t alignment, const PlotOptions& options);
// The cross-sections of the alignment, as many on a page as have room.
[[nodiscard]] Plot plotCrossSections(const drawing::Drawing& drawing, std::size_t alignment,
                                     const PlotOptions& options);

[[nodiscard]] bool isPaper(const std::string& name);

// All pages as one PDF. The message says what went wrong.
Outcome writePdf(const Plot& plot, std::ostream& out);

} // namespace fenmark::exchange
