// The progress of a pass as one line on the terminal.
#include "cli/progress_bar.h"

#include "cli/terminal_text.h"

#include <algorithm>
#include <ostream>
#include <string>

namespace fenmark::cli {

namespace {

constexpr std::int64_t kSteps = 1000; // the bar moves in tenths of a percent
constexpr std::size_t kWidth = 40;    // characters
constexpr std::size_t kAround = 10;   // columns of what stands round a bar, " [", "] 100 %", and of the cursor

// A line that is longer than the terminal is wide would wrap, and stay there.
std::size_t barWidth(std::string_view title, int columns) {
    if (columns <= 0) {
        return kWidth;
    }
    const std::size_t taken = columnsOf(title) + kAround;
    const auto room = static_cast<std::size_t>(columns);
    return room > taken ? std::min(kWidth, room - taken) : 0;
}

class Bar : public sima::Progress {
  public:
    Bar(std::ostream& terminal, std::string_view title, std::chrono::milliseconds patience, int columns)
        : terminal_(terminal), title_(title), width_(barWidth(title, columns)), patience_(patience),
          started_(std::chrono::steady_clock::now()) {}
    ~Bar() override {
        if (drawn_) {
            terminal_ << "\r\033[K" << std::flush;
        }
    }

    // The caption of the window is of no use in a line that has a title.
    std::int32_t goModal(std::string_view, bool) override { return 1; }
    void setRange(std::int64_t lower, std::int64_t upper, std::int32_t) override {
        lower_ = lower;
        upper_ = upper;
    }
    void setText(std::string_view) override {}
    void setPosition(std::int64_t position) override {
        if (position < next_) {
            return;
        }
        const std::int64_t range = upper_ > lower_ ? upper_ - lower_ : 1;
        next_ = position + range / kSteps + 1;
        if (!drawn_ && std::chrono::steady_clock::now() - started_ < patience_) {
            return;
        }
        draw(static_cast<double>(position - lower_), static_cast<double>(range));
    }
    void pump() override {}

  private:
    // Divided last: 29 of 100 as a share is a little less than 29 %.
    void draw(double done, double range) {
        const double bounded = std::clamp(done, 0.0, range);
        const auto filled = static_cast<std::size_t>(bounded * static_cast<double>(width_) / range);
        std::string bar(filled, '=');
        bar.resize(width_, ' ');
        terminal_ << '\r' << title_ << " [" << bar << "] " << static_cast<int>(bounded * 100.0 / range) << " %"
                  << std::flush;
        drawn_ = true;
    }

    std::ostream& terminal_;
    std::string title_;
    std::size_t width_; // of the bar, characters
    std::chrono::milliseconds patience_;
    std::chrono::steady_clock::time_point started_;
    std::int64_t lower_ = 0;
    std::int64_t upper_ = 0;
    std::int64_t next_ = 0;
    bool drawn_ = false;
};

} // namespace

std::unique_ptr<sima::Progress> ProgressBars::create(std::string_view title, bool) {
    return std::make_unique<Bar>(terminal_, title, patience_, columns_);
}

} // namespace fenmark::cli
