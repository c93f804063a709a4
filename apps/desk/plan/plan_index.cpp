// Which objects of a drawing lie in a box.
#include "desk/plan/plan_index.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <unordered_map>
#include <utility>

namespace fenmark::desk {

using drawing::Drawing;
using drawing::EntityView;
using drawing::Extent;
using drawing::TreeBox;

namespace {

// Boxes are kept in single precision, whose range ends at 3e38.
constexpr double kFarthest = 1e30; // metres

bool hasPlace(const Extent& extent) {
    return !extent.empty() && extent.minX >= -kFarthest && extent.maxX <= kFarthest && extent.minY >= -kFarthest &&
           extent.maxY <= kFarthest;
}

} // namespace

PlanIndex::PlanIndex(const Drawing& drawing) {
    const std::size_t count = std::min<std::size_t>(drawing.entityCount(), std::numeric_limits<std::uint32_t>::max());
    std::vector<Extent> extents(count);
    for (std::size_t i = 0; i < count; ++i) {
        extents[i] = drawing.entityExtent(i);
        if (hasPlace(extents[i])) {
            extent_.add(extents[i]);
        }
    }
    addAlignments(drawing);
    if (extent_.empty()) {
        return;
    }
    originX_ = extent_.minX;
    originY_ = extent_.minY;
    const double width = extent_.maxX - extent_.minX;
    const double height = extent_.maxY - extent_.minY;
    rounding_ = 2.0 * std::max(width, height) * static_cast<double>(std::numeric_limits<float>::epsilon());

    std::vector<TreeBox> boxes;
    std::vector<std::uint32_t> entities;
    boxes.reserve(count);
    entities.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        if (hasPlace(extents[i])) {
            boxes.push_back(boxFrom(extents[i]));
            entities.push_back(static_cast<std::uint32_t>(i));
        }
    }
    const std::vector<std::uint64_t> order =
        drawing::tiled(boxes.size(), kFanOut, [&](std::size_t i) -> const TreeBox& { return boxes[i]; });

    // Names of layers lie where the drawing keeps them, one place each.
    std::unordered_map<const char*, std::uint32_t> layers;
    for (std::size_t i = 0; i < drawing.layers().size(); ++i) {
        layers.emplace(drawing.layers()[i].name.data(), static_cast<std::uint32_t>(i));
    }
    std::vector<PlanFigure> figures(count);
    const char* lastLayer = nullptr;
    std::uint32_t layer = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const EntityView entity = drawing.entity(i);
        if (entity.layer.data() != lastLayer) {
            lastLayer = entity.layer.data();
            layer = layers.at(lastLayer);
        }
        figures[i].entity = static_cast<std::uint32_t>(i);
        figures[i].layer = layer & 0xFFFFFFU;
        figures[i].style = static_cast<std::uint32_t>(styleOf(entity)) & 0xFFU;
    }
    figures_.reserve(order.size());
    for (const std::uint64_t key : order) {
        figures_.push_back(figures[entities[drawing::indexOf(key)]]);
        figures_.back().box = boxes[drawing::indexOf(key)];
    }
    buildTree();
}

void PlanIndex::addAlignments(const Drawing& drawing) {
    alignments_.resize(drawing.alignmentCount());
    for (std::size_t a = 0; a < alignments_.size(); ++a) {
        for (const drawing::Element& element : drawing.alignment(a).elements) {
            Extent box = drawing::extentOf(element);
            if (!hasPlace(box)) {
                box = Extent();
            }
            alignments_[a].elements.push_back(box);
            alignments_[a].whole.add(box);
            extent_.add(box);
        }
    }
}

void PlanIndex::buildTree() {
    if (figures_.empty()) {
        return;
    }
    std::vector<TreeBox> level;
    for (std::size_t i = 0; i < figures_.size(); ++i) {
        if (i % kFanOut == 0) {
            level.push_back(figures_[i].box);
        } else {
            level.back().add(figures_[i].box);
        }
    }
    levels_.push_back(std::move(level));
    while (levels_.back().size() > 1) {
        std::vector<TreeBox> above;
        for (std::size_t i = 0; i < levels_.back().size(); ++i) {
            if (i % kFanOut == 0) {
                above.push_back(levels_.back()[i]);
            } else {
                above.back().add(levels_.back()[i]);
            }
        }
        levels_.push_back(std::move(above));
    }
}

TreeBox PlanIndex::boxFrom(const Extent& extent) const {
    return drawing::roundedOut(
        {extent.minX - originX_, extent.minY - originY_, extent.maxX - originX_, extent.maxY - originY_});
}

Extent PlanIndex::extentOf(const PlanFigure& figure) const {
    Extent extent;
    extent.add(originX_ + static_cast<double>(figure.box.minX), originY_ + static_cast<double>(figure.box.minY));
    extent.add(originX_ + static_cast<double>(figure.box.maxX), originY_ + static_cast<double>(figure.box.maxY));
    return extent;
}

std::size_t PlanIndex::sizeOf(std::size_t level, std::size_t node) const {
    std::size_t below = kFanOut;
    for (std::size_t i = 0; i < level; ++i) {
        below *= kFanOut;
    }
    return std::min(below, figures_.size() - node * below);
}

std::size_t PlanIndex::countNode(std::size_t level, std::size_t node, const TreeBox& box, std::size_t limit) const {
    if (!levels_[level][node].meets(box)) {
        return 0;
    }
    if (box.holds(levels_[level][node])) {
        return std::min(limit, sizeOf(level, node));
    }
    std::size_t found = 0;
    const std::size_t first = node * kFanOut;
    if (level == 0) {
        for (std::size_t i = first; i < std::min(first + kFanOut, figures_.size()) && found < limit; ++i) {
            found += figures_[i].box.meets(box) ? 1 : 0;
        }
        return found;
    }
    for (std::size_t i = first; i < std::min(first + kFanOut, levels_[level - 1].size()) && found < limit; ++i) {
        found += countNode(level - 1, i, box, limit - found);
    }
    return found;
}

std::size_t PlanIndex::count(const Extent& extent, std::size_t limit) const {
    if (levels_.empty() || extent.empty()) {
        return 0;
    }
    return countNode(levels_.size() - 1, 0, boxFrom(extent), limit);
}

} // namespace fenmark::desk
