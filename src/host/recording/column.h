// Growing columns of plain values that copy nothing when they grow and keep little: a million records cost what they
// hold.
#pragma once

#include "sima/records/large_allocator.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <stdexcept>
#include <type_traits>
#include <vector>

namespace fenmark::host {

// Bytes of the first block of a column, and of all others: a small drawing takes little, a large one large pages.
inline constexpr std::size_t kFirstColumnBlock = std::size_t{64} << 10;
inline constexpr std::size_t kColumnBlock = sima::kLargePage;

// Memory in blocks that stay where they are, for values that are plain bytes: a block holds nothing until it is written.
template <typename T>
class ColumnBlocks {
    static_assert(std::is_trivially_copyable_v<T> && std::is_trivially_destructible_v<T>);
    static_assert(alignof(T) <= __STDCPP_DEFAULT_NEW_ALIGNMENT__);

  public:
    ColumnBlocks() = default;
    ~ColumnBlocks() {
        for (const Block& block : blocks_) {
            sima::deallocateLarge(block.values, block.bytes);
        }
    }
    ColumnBlocks(const ColumnBlocks&) = delete;
    ColumnBlocks& operator=(const ColumnBlocks&) = delete;

    // Adds a block for at least so many values, and gives its room.
    std::span<T> add(std::size_t count) {
        blocks_.reserve(blocks_.size() + 1);
        const std::size_t bytes = std::max(count * sizeof(T), blocks_.empty() ? kFirstColumnBlock : kColumnBlock);
        blocks_.push_back({static_cast<T*>(sima::allocateLarge(bytes)), bytes});
        return {blocks_.back().values, bytes / sizeof(T)};
    }
    T* operator[](std::size_t block) const { return blocks_[block].values; }

  private:
    struct Block {
        T* values;
        std::size_t bytes;
    };
    std::vector<Block> blocks_;
};

template <typename T>
class Column {
  public:
    std::size_t size() const { return size_; }
    void push_back(const T& value) {
        if (free_.empty()) {
            free_ = blocks_.add(1);
        }
        free_.front() = value;
        free_ = free_.subspan(1);
        ++size_;
    }
    T& operator[](std::size_t index) { return at(index); }
    const T& operator[](std::size_t index) const { return at(index); }

  private:
    static constexpr std::size_t kFirst = kFirstColumnBlock / sizeof(T);
    static constexpr std::size_t kOther = kColumnBlock / sizeof(T);

    T& at(std::size_t index) const {
        return index < kFirst ? blocks_[0][index] : blocks_[1 + (index - kFirst) / kOther][(index - kFirst) % kOther];
    }

    ColumnBlocks<T> blocks_;
    std::span<T> free_; // of the last block
    std::size_t size_ = 0;
};

// Values that go up by one step from each to the next for long stretches: identifiers by 1, names of layers by 0.
// Only the beginnings of the stretches are kept.
template <std::uint64_t step>
class SequenceColumn {
  public:
    std::size_t size() const { return size_; }
    void push_back(std::uint64_t value) {
        if (runs_.empty() || runs_.back().value + step * (size_ - runs_.back().index) != value) {
            runs_.push_back({size_, value});
        }
        ++size_;
    }
    // std::out_of_range beyond the end.
    std::uint64_t at(std::size_t index) const {
        if (index >= size_) {
            throw std::out_of_range("no such record");
        }
        const auto behind = std::upper_bound(runs_.begin(), runs_.end(), index,
                                             [](std::size_t wanted, const Run& run) { return wanted < run.index; });
        const Run& run = *(behind - 1);
        return run.value + step * (index - run.index);
    }

  private:
    struct Run {
        std::size_t index;
        std::uint64_t value;
    };
    std::vector<Run> runs_;
    std::size_t size_ = 0;
};

// Short lists of values, each in one piece, so that it can be given as a span.
template <typename T>
class SpanColumn {
  public:
    void push_back(std::span<const T> values) {
        if (values.size() > free_.size()) {
            free_ = blocks_.add(values.size());
        }
        std::copy(values.begin(), values.end(), free_.begin());
        starts_.push_back(free_.data());
        counts_.push_back(static_cast<std::uint32_t>(values.size()));
        free_ = free_.subspan(values.size());
    }
    std::span<const T> operator[](std::size_t index) const { return {starts_[index], counts_[index]}; }

  private:
    ColumnBlocks<T> blocks_;
    std::span<T> free_; // of the last block
    Column<const T*> starts_;
    Column<std::uint32_t> counts_;
};

} // namespace fenmark::host
