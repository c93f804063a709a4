// What the trees of boxes share: the boxes, in single precision, and the order in which they are packed into nodes.
//
// Boxes are sorted into tiles of as many as a node holds (sort-tile-recursive; Leutenegger, Lopez and Edgington 1997).
#pragma once

#include "drawing/drawing.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <vector>

namespace fenmark::drawing {

struct TreeBox {
    float minX = 0.0F;
    float maxX = 0.0F;
    float minY = 0.0F;
    float maxY = 0.0F;

    static constexpr TreeBox none() {
        constexpr float kEndless = std::numeric_limits<float>::infinity();
        return {kEndless, -kEndless, kEndless, -kEndless};
    }
    void add(const TreeBox& other) {
        minX = std::min(minX, other.minX);
        maxX = std::max(maxX, other.maxX);
        minY = std::min(minY, other.minY);
        maxY = std::max(maxY, other.maxY);
    }
    bool meets(const TreeBox& other) const {
        return minX <= other.maxX && other.minX <= maxX && minY <= other.maxY && other.minY <= maxY;
    }
    bool holds(const TreeBox& other) const {
        return minX <= other.minX && other.maxX <= maxX && minY <= other.minY && other.maxY <= maxY;
    }
    float middleX() const { return 0.5F * minX + 0.5F * maxX; }
    float middleY() const { return 0.5F * minY + 0.5F * maxY; }
};

// Lower bounds are rounded down and upper bounds up, so that a box never loses its feature.
TreeBox roundedOut(const Extent& extent);

// The bits of a number of single precision, lowest first.
std::uint32_t bitsOf(float value);

// An index with a number to sort it by, in one integer whose order is that of the numbers. The lower half is the index.
std::uint64_t sortKey(float value, std::size_t index);
inline std::size_t indexOf(std::uint64_t key) {
    return key & 0xFFFFFFFFU;
}
// By the numbers. A million keys take a tenth of the time of a comparing sort; the scratch is for reuse.
void sortKeys(std::span<std::uint64_t> keys, std::vector<std::uint64_t>& scratch);

// The indexes of fewer than 2^32 boxes, as keys, tile after tile: vertical strips, each from south to north.
template <typename BoxAt>
std::vector<std::uint64_t> tiled(std::size_t count, std::size_t cells, BoxAt boxAt) {
    std::vector<std::uint64_t> keys(count);
    std::vector<std::uint64_t> scratch;
    for (std::size_t i = 0; i < count; ++i) {
        keys[i] = sortKey(boxAt(i).middleX(), i);
    }
    sortKeys(keys, scratch);
    const std::size_t tiles = (count + cells - 1) / cells;
    const auto strips = static_cast<std::size_t>(std::ceil(std::sqrt(static_cast<double>(tiles))));
    const std::size_t stripSize = strips == 0 ? 1 : (tiles + strips - 1) / strips * cells;
    for (std::size_t first = 0; first < count; first += stripSize) {
        const std::span<std::uint64_t> strip = std::span(keys).subspan(first, std::min(stripSize, count - first));
        for (std::uint64_t& key : strip) {
            key = sortKey(boxAt(indexOf(key)).middleY(), indexOf(key));
        }
        sortKeys(strip, scratch);
    }
    return keys;
}

} // namespace fenmark::drawing
