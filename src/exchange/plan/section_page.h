// A page of sections in the making: lines, texts, frame and title as SVG. Millimetres, y down.
#pragma once

#include "drawing/drawing.h"
#include "exchange/plan/plan_sheet.h"

#include <cmath>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace fenmark::exchange {

class SectionPage {
  public:
    static constexpr double kMargin = 10.0;

    // The paper lies on its long side unless it is upright; unknown names give A3.
    explicit SectionPage(const std::string& paper, bool upright = false);
    SectionPage(double width, double height) : width_(width), height_(height) {}

    double width() const { return width_; }
    double height() const { return height_; }

    void line(const char* style, const PaperPoint& from, const PaperPoint& to);
    void polyline(const char* style, const std::vector<PaperPoint>& points);
    void dot(const PaperPoint& at);
    // The anchor is "start", "middle" or "end"; the place is the middle of the letters' height. Degrees clockwise.
    void text(const PaperPoint& at, double size, const char* anchor, std::string_view content, double degrees = 0.0,
              const char* style = "");
    // A drawing that is an SVG element of its own, with a box of so many millimetres from its origin.
    void figure(const PaperPoint& at, double width, double height, std::string_view svg);
    // Frame, title at the top left, remarks at the top right, and below them more lines of the title block as one.
    void finish(std::string_view title, std::string_view remarks,
                const std::vector<std::pair<std::string, std::string>>& titles = {});

    [[nodiscard]] std::string svg() const;

  private:
    double width_ = 420.0;
    double height_ = 297.0;
    std::string body_;
};

// The smallest of the round scales 1:10, 1:20, 1:30, 1:50, 1:100, 1:200, 1:250, 1:300, ... that is not below the one wanted.
[[nodiscard]] int roundSectionScale(double wanted);

// Metres. No height of a survey is larger, and the scales of sections reach no farther; what is, is left out and counted.
inline constexpr double kLargestSectionHeight = 1e7;
[[nodiscard]] inline bool sectionShows(double height) {
    return std::abs(height) <= kLargestSectionHeight;
}

} // namespace fenmark::exchange
