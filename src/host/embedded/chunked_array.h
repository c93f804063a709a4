// Storage that grows without moving or doubling: blocks of one size, and a run of values never crosses a block.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <type_traits>
#include <vector>

namespace fenmark::host::embedded {

// Values are addressed by a 64-bit position. Runs longer than a block get one of their own.
template <typename T, std::size_t kBlock = 16384>
class ChunkedArray {
    static_assert(std::is_trivially_copyable_v<T>);

  public:
    struct Mark {
        std::size_t blocks = 0;
        std::size_t used = 0;
    };

    // Room for a run, to be filled by the caller; the position of its first value.
    std::uint64_t appendUninitialized(std::size_t count) {
        if (blocks_.empty() || blocks_.back().capacity - used_ < count)
            open(std::max(count, kBlock));
        const std::uint64_t position = (static_cast<std::uint64_t>(blocks_.size() - 1) << 32) | used_;
        used_ += count;
        return position;
    }
    // Position of the first value of the run.
    std::uint64_t append(std::span<const T> values) {
        const std::uint64_t position = appendUninitialized(values.size());
        std::copy(values.begin(), values.end(), run(position, values.size()).begin());
        return position;
    }
    std::uint64_t append(const T& value) { return append(std::span<const T>(&value, 1)); }

    std::span<const T> run(std::uint64_t position, std::size_t count) const {
        return count == 0 ? std::span<const T>()
                          : std::span<const T>(blocks_[position >> 32].values.get() + (position & 0xFFFFFFFFU), count);
    }
    std::span<T> run(std::uint64_t position, std::size_t count) {
        return count == 0 ? std::span<T>()
                          : std::span<T>(blocks_[position >> 32].values.get() + (position & 0xFFFFFFFFU), count);
    }

    Mark mark() const { return {blocks_.size(), used_}; }
    // Drops everything that was appended after the mark.
    void rollback(const Mark& mark) {
        blocks_.resize(mark.blocks);
        used_ = mark.used;
    }

  private:
    struct Block {
        std::unique_ptr<T[]> values;
        std::size_t capacity = 0;
    };

    void open(std::size_t capacity) {
        blocks_.push_back({std::make_unique_for_overwrite<T[]>(capacity), capacity});
        used_ = 0;
    }

    std::vector<Block> blocks_;
    std::size_t used_ = 0;
};

} // namespace fenmark::host::embedded
