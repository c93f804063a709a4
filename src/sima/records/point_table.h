// The coordinate points read so far: an append-only store with an index by number, shared by the routes that keep
// the points as they stood when they were opened.
#pragma once

#include "sima/records/sima_point.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

namespace fenmark::sima {

// A value: copying it copies its points as they stand, at the cost of a pointer. Points are only ever appended, so a
// copy is a prefix of the same store until one of the two appends to its own.
class PointTable {
  public:
    PointTable() = default;

    std::size_t size() const { return count_; }
    bool empty() const { return count_ == 0; }
    // std::invalid_argument beyond the end.
    const SimaPoint& operator[](std::size_t index) const;
    // All points, and those from the given place on. The spans hold until a point is appended.
    std::span<const SimaPoint> all() const { return from(0); }
    std::span<const SimaPoint> from(std::size_t first) const;

    void append(SimaPoint&& point);
    // Makes room for about so many points, if the table has none yet. A wrong guess costs nothing but time.
    void expect(std::size_t points);
    void clear();
    // The first point with that number, or null. One look into a hash table.
    const SimaPoint* find(std::int32_t number) const;
    // Its place, or nothing.
    std::optional<std::uint32_t> placeOf(std::int32_t number) const;
    // Whether a point with that number stands at the given place or behind it, in this table or in one that shares its
    // store. Meant for the table that is being filled, where both are the same.
    bool hasFrom(std::size_t first, std::int32_t number) const;

  private:
    struct Store;
    std::shared_ptr<Store> store_;
    std::size_t count_ = 0;
};

} // namespace fenmark::sima
