// Survey documents of a drawing: area tables of lots, coordinate lists, tables of alignments, a summary.
#pragma once

#include "drawing/drawing.h"
#include "exchange/decimal.h"
#include "exchange/main_points.h"
#include "exchange/notes.h"
#include "exchange/survey_text.h"

#include <array>
#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace fenmark::exchange {

enum class ReportPart { Summary, Points, Lots, MainPoints, Ips, Intermediate, Widths };
inline constexpr std::array<std::string_view, 7> kReportParts = {"summary", "points",       "lots",  "main-points",
                                                                 "ips",     "intermediate", "widths"};

enum class LandCategory {
    Unknown,     // both registered areas are given
    Residential, // 宅地, 鉱泉地: to 0.01 m2
    Other,       // over 10 m2: to 1 m2
};

// One refused record of an import's log.
struct LogError {
    std::string file;
    std::string text;
    std::string record;
};

struct ReportOptions {
    std::array<bool, kReportParts.size()> parts{true, true, true, true, true, true, true};
    std::optional<int> figureScale; // the N of 1:N of the figures of lots; otherwise the largest round one that fits
    SideRule sides = SideRule::Cut; // of lots
    LandCategory land = LandCategory::Unknown;
    MainPointNames mainPointNames = MainPointNames::Ka;
    StationNames stationNames; // its pitch is that of the intermediate points too
    std::vector<LogError> errors;
    std::vector<std::string> logs; // names of the logs that the errors came from

    bool has(ReportPart part) const { return parts[static_cast<std::size_t>(part)]; }
};

enum class ReportFormat { Html, Csv };

// HTML prints on A4, landscape: heads repeated on every page, rows and figures whole, pages numbered. CSV holds the same
// tables one below the other, for spreadsheets. X is north and Y east throughout.
Notes writeReport(const drawing::Drawing& drawing, const ReportOptions& options, ReportFormat format,
                  std::ostream& out);

} // namespace fenmark::exchange
