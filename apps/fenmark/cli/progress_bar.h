// The progress of a pass as one line on the terminal.
#pragma once

#include "sima/reader/progress.h"

#include <chrono>
#include <iosfwd>

namespace fenmark::cli {

// A pass that is over before the user's patience ends shows no bar.
inline constexpr std::chrono::milliseconds kPatience{50};

class ProgressBars : public sima::ProgressFactory {
  public:
    // A bar stays within the terminal's columns; 0 stands for any number.
    explicit ProgressBars(std::ostream& terminal, std::chrono::milliseconds patience = kPatience, int columns = 0)
        : terminal_(terminal), patience_(patience), columns_(columns) {}
    std::unique_ptr<sima::Progress> create(std::string_view title, bool smooth) override;

  private:
    std::ostream& terminal_;
    std::chrono::milliseconds patience_;
    int columns_;
};

} // namespace fenmark::cli
