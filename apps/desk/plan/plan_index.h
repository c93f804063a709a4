// Which objects of a drawing lie in a box: a grid over the drawing, made once and asked at every paint.
//
// Building takes time in step with the number of objects; asking takes time in step with the cells that the box covers
// and the objects in them.
#pragma once

#include "host/embedded/drawing.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace fenmark::desk {

class PlanIndex {
  public:
    PlanIndex() = default;
    explicit PlanIndex(const host::embedded::Drawing& drawing);

    std::size_t size() const { return boxes_.size(); }
    const host::embedded::Extent& extent() const { return extent_; }
    host::embedded::Extent boxOf(std::size_t entity) const;

    // Calls visit(entity) once for each entity whose box meets the given one, in no certain order. The visitor answers
    // whether to go on. Not to be called from within a visit.
    template <typename Visit>
    void query(const host::embedded::Extent& box, Visit&& visit) const;

    // Number of entities in the cells that the box meets, at most `limit`; never less than those in the box.
    std::size_t estimate(const host::embedded::Extent& box, std::size_t limit) const;

  private:
    struct Box {
        float minX, minY, maxX, maxY; // metres from the grid's corner, rounded outwards
    };
    struct Range {
        std::int32_t left, top, right, bottom;
    };

    Range cellsOf(const Box& box) const;
    Box boxFrom(const host::embedded::Extent& extent) const;
    static bool meet(const Box& a, const Box& b) {
        return a.minX <= b.maxX && b.minX <= a.maxX && a.minY <= b.maxY && b.minY <= a.maxY;
    }
    std::span<const std::uint32_t> cell(std::int32_t column, std::int32_t row) const {
        const std::size_t at =
            static_cast<std::size_t>(row) * static_cast<std::size_t>(columns_) + static_cast<std::size_t>(column);
        return {entries_.data() + starts_[at], entries_.data() + starts_[at + 1]};
    }

    host::embedded::Extent extent_;
    double cellSize_ = 1.0; // metres
    std::int32_t columns_ = 0;
    std::int32_t rows_ = 0;
    std::vector<Box> boxes_;
    std::vector<std::uint32_t> starts_;  // of each cell in entries_, and the end of the last
    std::vector<std::uint32_t> entries_; // entities by cell
    std::vector<std::uint32_t> wide_;    // entities that cover many cells: asked at every query
};

template <typename Visit>
void PlanIndex::query(const host::embedded::Extent& extent, Visit&& visit) const {
    if (boxes_.empty() || extent.empty())
        return;
    const Box box = boxFrom(extent);
    for (const std::uint32_t entity : wide_)
        if (meet(boxes_[entity], box) && !visit(static_cast<std::size_t>(entity)))
            return;
    const Range range = cellsOf(box);
    for (std::int32_t row = range.top; row <= range.bottom; ++row)
        for (std::int32_t column = range.left; column <= range.right; ++column)
            for (const std::uint32_t entity : cell(column, row)) {
                const Box& own = boxes_[entity];
                if (!meet(own, box))
                    continue;
                // An entity of several cells is told of in the first of them that the query covers.
                const Range ownRange = cellsOf(own);
                const std::int32_t first = ownRange.left > range.left ? ownRange.left : range.left;
                const std::int32_t top = ownRange.top > range.top ? ownRange.top : range.top;
                if (first != column || top != row)
                    continue;
                if (!visit(static_cast<std::size_t>(entity)))
                    return;
            }
}

} // namespace fenmark::desk
