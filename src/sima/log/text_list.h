// A growing list of texts: the log of a large file holds some hundred thousand short lines.
#pragma once

#include <cstddef>
#include <initializer_list>
#include <memory>
#include <string_view>

namespace fenmark::sima {

// A value. Texts lie one behind the other in large blocks and are only ever appended, so a copy costs a pointer: it is
// a prefix of the same store until one of the two appends to its own.
class TextList {
  public:
    std::size_t size() const { return count_; }
    bool empty() const { return count_ == 0; }
    // std::invalid_argument beyond the end. The view holds until the list is cleared or destroyed.
    std::string_view operator[](std::size_t index) const;
    void append(std::string_view text) { append({text}); }
    // One text, given in pieces.
    void append(std::initializer_list<std::string_view> pieces);
    // A text that outlives the list, a literal; its characters are not copied.
    void appendLiteral(std::string_view text);
    void clear();

  private:
    struct Store;
    // The store to append to: its own where another list that shares it has gone on.
    Store& ownStore();

    std::shared_ptr<Store> store_;
    std::size_t count_ = 0;
};

} // namespace fenmark::sima
