// Storage that grows without moving or doubling: blocks of one size, and a run of values never crosses a block.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <span>
#include <type_traits>
#include <vector>

namespace fenmark::drawing {

// Values are addressed by a 64-bit position. Runs longer than a block get one of their own.
template <typename T, std::size_t kBlock = 16384>
class ChunkedArray {
    static_assert(std::is_trivially_copyable_v<T>);

  public:
    struct Mark {
        std::size_t blocks = 0;
        std::size_t used = 0;

        friend bool operator==(const Mark&, const Mark&) = default;
    };

  private:
    struct Block {
        std::unique_ptr<T[]> values;
        std::size_t capacity = 0;
        std::size_t used = 0; // once another block stands behind it
    };

  public:
    // What a rollback took away. Good for the state that the rollback left, and no other.
    class Tail {
        friend class ChunkedArray;
        std::vector<T> rest; // of the block that the mark lies in
        std::vector<Block> blocks;
        std::size_t used = 0; // of the last of them, or of the rest
    };

    // Room for a run, to be filled by the caller; the position of its first value.
    std::uint64_t appendUninitialized(std::size_t count) {
        if (blocks_.empty() || blocks_.back().capacity - used_ < count) {
            open(std::max(count, kBlock));
        }
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
    // The same, and hands out what was dropped.
    Tail cut(const Mark& mark) {
        Tail tail;
        tail.used = used_;
        if (mark.blocks > 0) {
            const Block& shared = blocks_[mark.blocks - 1];
            const std::size_t end = blocks_.size() > mark.blocks ? shared.used : used_;
            tail.rest.assign(shared.values.get() + mark.used, shared.values.get() + end);
        }
        tail.blocks.assign(std::make_move_iterator(blocks_.begin() + static_cast<std::ptrdiff_t>(mark.blocks)),
                           std::make_move_iterator(blocks_.end()));
        rollback(mark);
        return tail;
    }
    // Puts back what was cut off last.
    void restore(Tail&& tail) {
        if (!tail.rest.empty()) {
            append(tail.rest);
        }
        if (!blocks_.empty()) {
            blocks_.back().used = used_;
        }
        std::move(tail.blocks.begin(), tail.blocks.end(), std::back_inserter(blocks_));
        used_ = tail.used;
    }

  private:
    void open(std::size_t capacity) {
        if (!blocks_.empty()) {
            blocks_.back().used = used_;
        }
        blocks_.push_back({std::unique_ptr<T[]>(new T[capacity]), capacity, 0});
        used_ = 0;
    }

    std::vector<Block> blocks_;
    std::size_t used_ = 0;
};

} // namespace fenmark::drawing
