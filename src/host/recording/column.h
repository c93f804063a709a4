// Growing columns of plain values that copy nothing when they grow and keep little: a million records cost what they
// hold.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <stdexcept>
#include <vector>

namespace fenmark::host {

// Bytes of one block: small enough to be cut from the heap, large enough to be few.
inline constexpr std::size_t kColumnBlock = 65536;

template <typename T>
class Column {
  public:
    std::size_t size() const { return size_; }
    void push_back(const T& value) {
        if (size_ == blocks_.size() * kBlock)
            blocks_.push_back(std::make_unique_for_overwrite<T[]>(kBlock));
        blocks_[size_ / kBlock][size_ % kBlock] = value;
        ++size_;
    }
    T& operator[](std::size_t index) { return blocks_[index / kBlock][index % kBlock]; }
    const T& operator[](std::size_t index) const { return blocks_[index / kBlock][index % kBlock]; }

  private:
    static constexpr std::size_t kBlock = kColumnBlock / sizeof(T);

    std::vector<std::unique_ptr<T[]>> blocks_;
    std::size_t size_ = 0;
};

// Values that go up by one step from each to the next for long stretches: identifiers by 1, names of layers by 0.
// Only the beginnings of the stretches are kept.
template <std::uint64_t step>
class SequenceColumn {
  public:
    std::size_t size() const { return size_; }
    void push_back(std::uint64_t value) {
        if (runs_.empty() || runs_.back().value + step * (size_ - runs_.back().index) != value)
            runs_.push_back({size_, value});
        ++size_;
    }
    // std::out_of_range beyond the end.
    std::uint64_t at(std::size_t index) const {
        if (index >= size_)
            throw std::out_of_range("no such record");
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

// Short lists of values, each in one piece, so that it can be handed out as a span.
template <typename T>
class SpanColumn {
  public:
    void push_back(std::span<const T> values) {
        if (values.size() > free_.size())
            makeRoom(values.size());
        std::copy(values.begin(), values.end(), free_.begin());
        starts_.push_back(free_.data());
        counts_.push_back(static_cast<std::uint32_t>(values.size()));
        free_ = free_.subspan(values.size());
    }
    std::span<const T> operator[](std::size_t index) const { return {starts_[index], counts_[index]}; }

  private:
    void makeRoom(std::size_t count) {
        const std::size_t room = std::max(count, kColumnBlock / sizeof(T));
        blocks_.push_back(std::make_unique_for_overwrite<T[]>(room));
        free_ = {blocks_.back().get(), room};
    }

    std::vector<std::unique_ptr<T[]>> blocks_;
    std::span<T> free_;
    Column<const T*> starts_;
    Column<std::uint32_t> counts_;
};

} // namespace fenmark::host
