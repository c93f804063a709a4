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
    explicit ProgressBars(std::ostream& terminal, std::chrono::milliseconds patience = kPatience)
        : terminal_(terminal), patience_(patience) {}
    std::unique_ptr<sima::Progress> create(std::string_view title, bool smooth) override;

  private:
    std::ostream& terminal_;
    std::chrono::milliseconds patience_;
};

} // namespace fenmark::cli
