// Texts that repeat: each is kept once and named by a number.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>

namespace fenmark::host {

// For layer names, file names and row types, of which a drawing has a few.
class TextPool {
  public:
    TextPool() = default;
    TextPool(const TextPool&) = delete; // the look-up points into the texts
    TextPool& operator=(const TextPool&) = delete;

    std::uint32_t intern(std::string_view text) {
        if (last_ < texts_.size() && texts_[last_] == text) {
            return last_;
        }
        const auto found = numbers_.find(text);
        if (found != numbers_.end()) {
            return last_ = found->second;
        }
        last_ = static_cast<std::uint32_t>(texts_.size());
        texts_.emplace_back(text);
        numbers_.emplace(texts_.back(), last_); // the deque keeps its texts in place
        return last_;
    }
    std::string_view operator[](std::uint32_t number) const { return texts_[number]; }

  private:
    std::deque<std::string> texts_;
    std::unordered_map<std::string_view, std::uint32_t> numbers_;
    std::uint32_t last_ = 0;
};

} // namespace fenmark::host
