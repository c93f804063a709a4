// A growing list for what a recorded drawing holds.
#pragma once

#include "sima/records/large_allocator.h"

#include <bit>
#include <cstddef>
#include <stdexcept>
#include <vector>

namespace fenmark::host {

// Each piece of the list has room for twice as many elements as the one before, so that none is ever copied, and the
// large ones lie in large pages: a drawing has a million records.
template <typename T>
class RecordList {
  public:
    std::size_t size() const { return size_; }
    bool empty() const { return size_ == 0; }

    void push_back(const T& element) {
        if (pieces_.empty() || pieces_.back().size() == pieces_.back().capacity()) {
            pieces_.emplace_back().reserve(kFirst << (pieces_.size() - 1));
        }
        pieces_.back().push_back(element);
        ++size_;
    }
    // Of a list that is not empty.
    T& back() { return pieces_.back().back(); }
    const T& back() const { return pieces_.back().back(); }
    // std::out_of_range beyond the end.
    const T& at(std::size_t index) const {
        const Place place = placeOf(index);
        return pieces_[place.piece][place.offset];
    }
    T& at(std::size_t index) {
        const Place place = placeOf(index);
        return pieces_[place.piece][place.offset];
    }

  private:
    static constexpr std::size_t kFirst = 64; // elements of the first piece

    struct Place {
        std::size_t piece;
        std::size_t offset;
    };
    Place placeOf(std::size_t index) const {
        if (index >= size_) {
            throw std::out_of_range("record index out of range");
        }
        // Counted from kFirst on, each piece begins at a power of two.
        const std::size_t counted = index + kFirst;
        const auto piece = static_cast<std::size_t>(std::bit_width(counted) - std::bit_width(kFirst));
        return {piece, counted - (kFirst << piece)};
    }

    std::vector<std::vector<T, sima::LargeAllocator<T>>> pieces_;
    std::size_t size_ = 0;
};

} // namespace fenmark::host
