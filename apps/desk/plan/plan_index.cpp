#include "desk/plan/plan_index.h"

#include <algorithm>
#include <cmath>

namespace fenmark::desk {

using host::embedded::Drawing;
using host::embedded::Extent;

namespace {

constexpr double kEntitiesPerCell = 8.0;
constexpr std::int32_t kMaximumCells = 1 << 11; // in each direction
constexpr std::int64_t kWideCells = 16;         // an entity of more cells is kept apart

float roundDown(double value) {
    return std::nextafter(static_cast<float>(value), -INFINITY);
}
float roundUp(double value) {
    return std::nextafter(static_cast<float>(value), INFINITY);
}

} // namespace

PlanIndex::PlanIndex(const Drawing& drawing) {
    const std::size_t count = drawing.entityCount();
    for (std::size_t i = 0; i < count; ++i)
        extent_.add(drawing.entityExtent(i));
    if (extent_.empty())
        return;

    const double width = std::max(extent_.maxX - extent_.minX, 1e-3);
    const double height = std::max(extent_.maxY - extent_.minY, 1e-3);
    cellSize_ = std::sqrt(width * height * kEntitiesPerCell / static_cast<double>(std::max<std::size_t>(count, 1)));
    cellSize_ = std::max({cellSize_, width / kMaximumCells, height / kMaximumCells});
    columns_ = std::min(kMaximumCells, static_cast<std::int32_t>(width / cellSize_)) + 1;
    rows_ = std::min(kMaximumCells, static_cast<std::int32_t>(height / cellSize_)) + 1;

    boxes_.reserve(count);
    for (std::size_t i = 0; i < count; ++i)
        boxes_.push_back(boxFrom(drawing.entityExtent(i)));

    // Counted first, then filled: two passes and no list for each cell.
    starts_.assign(static_cast<std::size_t>(columns_) * static_cast<std::size_t>(rows_) + 1, 0);
    auto forCells = [&](std::size_t entity, auto&& act) {
        const Range range = cellsOf(boxes_[entity]);
        for (std::int32_t row = range.top; row <= range.bottom; ++row)
            for (std::int32_t column = range.left; column <= range.right; ++column)
                act(static_cast<std::size_t>(row) * static_cast<std::size_t>(columns_) +
                    static_cast<std::size_t>(column));
    };
    auto isWide = [&](std::size_t entity) {
        const Range range = cellsOf(boxes_[entity]);
        return static_cast<std::int64_t>(range.right - range.left + 1) * (range.bottom - range.top + 1) > kWideCells;
    };
    for (std::size_t i = 0; i < count; ++i) {
        if (isWide(i))
            wide_.push_back(static_cast<std::uint32_t>(i));
        else
            forCells(i, [&](std::size_t cell) { ++starts_[cell + 1]; });
    }
    for (std::size_t cell = 1; cell < starts_.size(); ++cell)
        starts_[cell] += starts_[cell - 1];
    entries_.resize(starts_.back());
    std::vector<std::uint32_t> next(starts_.begin(), starts_.end() - 1);
    for (std::size_t i = 0; i < count; ++i)
        if (!isWide(i))
            forCells(i, [&](std::size_t cell) { entries_[next[cell]++] = static_cast<std::uint32_t>(i); });
}

PlanIndex::Box PlanIndex::boxFrom(const Extent& extent) const {
    if (extent.empty())
        return {1.0F, 1.0F, -1.0F, -1.0F};
    return {roundDown(extent.minX - extent_.minX), roundDown(extent.minY - extent_.minY),
            roundUp(extent.maxX - extent_.minX), roundUp(extent.maxY - extent_.minY)};
}

PlanIndex::Range PlanIndex::cellsOf(const Box& box) const {
    auto cell = [&](float along, std::int32_t cells) {
        const double at = std::floor(static_cast<double>(along) / cellSize_);
        return static_cast<std::int32_t>(std::clamp(at, 0.0, static_cast<double>(cells - 1)));
    };
    if (box.minX > box.maxX)
        return {0, 0, -1, -1};
    return {cell(box.minX, columns_), cell(box.minY, rows_), cell(box.maxX, columns_), cell(box.maxY, rows_)};
}

Extent PlanIndex::boxOf(std::size_t entity) const {
    const Box& box = boxes_[entity];
    Extent extent;
    if (box.minX > box.maxX)
        return extent;
    extent.add(extent_.minX + static_cast<double>(box.minX), extent_.minY + static_cast<double>(box.minY));
    extent.add(extent_.minX + static_cast<double>(box.maxX), extent_.minY + static_cast<double>(box.maxY));
    return extent;
}

std::size_t PlanIndex::estimate(const Extent& extent, std::size_t limit) const {
    if (boxes_.empty() || extent.empty())
        return 0;
    std::size_t count = wide_.size();
    const Range range = cellsOf(boxFrom(extent));
    for (std::int32_t row = range.top; row <= range.bottom && count < limit; ++row) {
        if (range.left > range.right)
            break;
        // The cells of a row lie side by side.
        count += static_cast<std::size_t>(cell(range.right, row).data() + cell(range.right, row).size() -
                                          cell(range.left, row).data());
    }
    return std::min(count, limit);
}

} // namespace fenmark::desk
