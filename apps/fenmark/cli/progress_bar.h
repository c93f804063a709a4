// The progress of a pass as one line on the terminal.
#pragma once

#include "cli/cli.h"
#include "sima/reader/progress.h"

#include <chrono>
#include <iosfwd>

namespace fenmark::cli {

class ProgressBars : public sima::ProgressFactory {
  public:
    // A bar stays within the terminal's columns; 0 stands for any number.
    ProgressBars(std::ostream& terminal, std::chrono::milliseconds patience, int columns = 0)
        : terminal_(terminal), patience_(patience), columns_(columns) {}
    explicit ProgressBars(const Streams& streams)
        : ProgressBars(streams.terminal != nullptr ? *streams.terminal : streams.err, streams.patience,
                       streams.columns) {}
    std::unique_ptr<sima::Progress> create(std::string_view title, bool smooth) override;

  private:
    std::ostream& terminal_;
    std::chrono::milliseconds patience_;
    int columns_;
};

} // namespace fenmark::cli
