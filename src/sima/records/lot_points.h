// The outline of a lot: an array of points, which for the lots of a file stand in its point table already.
#pragma once

#include "sima/records/large_allocator.h"
#include "sima/records/point_table.h"
#include "sima/records/sima_point.h"

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <iterator>
#include <memory>
#include <vector>

namespace fenmark::sima {

class LotOutlines;

// A value like an array of SimaPoint: what is done to one is never seen in another. A lot that was read refers to the
// points of its file, so that a million references do not take a million copies; what gives elements to change makes
// copies of its points first.
class LotPoints {
  public:
    class Iterator;
    using value_type = SimaPoint;
    using const_iterator = Iterator;

    LotPoints() = default;
    LotPoints(std::initializer_list<SimaPoint> points);

    std::size_t size() const { return count_; }
    bool empty() const { return count_ == 0; }
    // std::invalid_argument for an index outside the array.
    const SimaPoint& operator[](std::size_t index) const;
    SimaPoint& operator[](std::size_t index);
    Iterator begin() const;
    Iterator end() const;

    void push_back(SimaPoint point);
    void resize(std::size_t count);
    void clear() { *this = {}; }

  private:
    friend class LotOutlines;
    std::vector<SimaPoint>& ownPoints();

    std::shared_ptr<LotOutlines> outlines_;
    std::size_t first_ = 0; // of the references there
    std::size_t count_ = 0;
};

class LotPoints::Iterator {
  public:
    using iterator_category = std::forward_iterator_tag;
    using value_type = SimaPoint;
    using difference_type = std::ptrdiff_t;
    using pointer = const SimaPoint*;
    using reference = const SimaPoint&;

    Iterator() = default;
    Iterator(const LotPoints& points, std::size_t index) : points_(&points), index_(index) {}
    reference operator*() const { return (*points_)[index_]; }
    pointer operator->() const { return &**this; }
    Iterator& operator++() {
        ++index_;
        return *this;
    }
    Iterator operator++(int) {
        const Iterator before = *this;
        ++index_;
        return before;
    }
    friend bool operator==(const Iterator&, const Iterator&) = default;

  private:
    const LotPoints* points_ = nullptr;
    std::size_t index_ = 0;
};

inline LotPoints::Iterator LotPoints::begin() const {
    return {*this, 0};
}
inline LotPoints::Iterator LotPoints::end() const {
    return {*this, count_};
}

// What lots refer to: the outlines of all lots of one file, one behind the other, as places in its point table.
class LotOutlines {
  public:
    // Opens an outline over the points of the table as it stands; the table may only have grown since the one before.
    void open(const PointTable& table);
    void add(std::uint32_t place) { places_.push_back(place); }
    std::size_t size() const { return places_.size() - first_; } // of the open outline
    // The open outline.
    static LotPoints close(const std::shared_ptr<LotOutlines>& outlines);

  private:
    friend class LotPoints;

    PointTable table_;
    std::vector<std::uint32_t, LargeAllocator<std::uint32_t>> places_;
    std::size_t first_ = 0; // of the open outline
    // In place of all that: the points of one lot that has points of its own.
    std::vector<SimaPoint> own_;
};

} // namespace fenmark::sima
