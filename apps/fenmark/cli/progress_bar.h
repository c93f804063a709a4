// The progress of a pass as one line on the terminal.
#pragma once

#include "sima/reader/progress.h"

#include <iosfwd>

namespace fenmark::cli {

class ProgressBars : public sima::ProgressFactory {
  public:
    explicit ProgressBars(std::ostream& terminal) : terminal_(terminal) {}
    std::unique_ptr<sima::Progress> create(std::string_view title, bool smooth) override;

  private:
    std::ostream& terminal_;
};

} // namespace fenmark::cli
