// A growing list of texts kept in one buffer: the log of a large file holds some hundred thousand short lines.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace fenmark::sima {

class TextList {
  public:
    std::size_t size() const { return ends_.size(); }
    bool empty() const { return ends_.empty(); }
    // std::invalid_argument beyond the end. The view holds until the list is changed.
    std::string_view operator[](std::size_t index) const;
    void append(std::string_view text);
    void clear();

  private:
    std::string buffer_;
    std::vector<std::size_t> ends_;
};

} // namespace fenmark::sima
