// What is to be printed, and its pages. No windows here.
#pragma once

#include "drawing/drawing.h"
#include "drawing/geopackage/drawing_texts.h"
#include "exchange/plan/plot.h"

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace fenmark::desk {

enum class PaperKind { Plan, Along, Profile, CrossSections, Lots, Stakes, Points, Alignments };
inline constexpr std::size_t kPaperKinds = 8;

// Names under which the title block is kept in the drawing, in the order of its lines, with their titles on paper.
struct TitleText {
    const char* key;
    const char* title;
};
inline constexpr std::array kTitleTexts{TitleText{"title/heading", "図面名"}, TitleText{"title/project", "業務名"},
                                        TitleText{"title/date", "年月日"},    TitleText{"title/author", "作成者"},
                                        TitleText{"title/company", "会社名"}, TitleText{"title/remark", "備考"}};

struct PaperJob {
    PaperKind kind = PaperKind::Plan;
    std::size_t alignment = 0;     // of the kinds that have one
    exchange::PlotOptions options; // heading and titles come from the texts
    drawing::DrawingTexts texts;   // of the drawing
    double stakePitch = 20.0;      // metres
    std::vector<double> stakeOffsets{0.0};
};

bool needsAlignment(PaperKind kind);
bool hasScale(PaperKind kind);

exchange::Plot pagesOf(const drawing::Drawing& drawing, const PaperJob& job);

// "-5, 0, 5" as numbers; nothing if it is no list of them.
std::optional<std::vector<double>> offsetsOf(const std::string& text);
// The N of "1:N" or "N", 1 to 100,000,000; nothing if it is neither.
std::optional<int> scaleOf(const std::string& text);

} // namespace fenmark::desk
