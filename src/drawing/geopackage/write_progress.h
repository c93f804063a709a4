// How far the writing of a drawing has come.
#pragma once

#include <cstdint>
#include <functional>

namespace fenmark::drawing {

// Rows written of all rows to write. Called a few hundred times for a large drawing, never for a small one.
using WriteProgress = std::function<void(std::uint64_t done, std::uint64_t total)>;

class RowCounter {
  public:
    explicit RowCounter(const WriteProgress& tell) : tell_(tell) {}

    void expect(std::uint64_t rows) { total_ += rows; }
    void count() {
        if (++done_ % kRowsBetween == 0 && tell_) {
            tell_(done_, total_);
        }
    }

  private:
    static constexpr std::uint64_t kRowsBetween = 4096;
    const WriteProgress& tell_;
    std::uint64_t done_ = 0;
    std::uint64_t total_ = 0;
};

} // namespace fenmark::drawing
