// The progress window as the reader sees it. The dialogs implement it with a window, the command line with a bar.
#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

namespace fenmark::sima {

// Lives for one pass over one file; destroying it closes the window.
class Progress {
  public:
    virtual ~Progress() = default;
    // 0 if the window could not be made; the reader goes on all the same.
    virtual std::int32_t goModal(std::string_view title, bool smooth) = 0;
    virtual void setRange(std::int64_t lower, std::int64_t upper, std::int32_t step) = 0;
    virtual void setText(std::string_view text) = 0;
    virtual void setPosition(std::int64_t position) = 0;
    virtual void pump() = 0;
};

class ProgressFactory {
  public:
    virtual ~ProgressFactory() = default;
    virtual std::unique_ptr<Progress> create(std::string_view title, bool smooth) = 0;
};

} // namespace fenmark::sima
