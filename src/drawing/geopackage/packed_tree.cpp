// An R-tree made in one go.
#include "drawing/geopackage/packed_tree.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <limits>
#include <utility>

namespace fenmark::drawing {

namespace {

std::uint32_t bitsOf(float value) {
    std::uint32_t bits = 0;
    static_assert(sizeof bits == sizeof value);
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

// A number of single precision and an index in one integer: the number in the upper half, so that integers are in the
// order of the numbers.
std::uint64_t sortKey(float value, std::size_t index) {
    const std::uint32_t bits = bitsOf(value);
    const bool negative = (bits >> 31U) != 0;
    const std::uint32_t ordered = negative ? ~bits : bits | 0x80000000U;
    return (static_cast<std::uint64_t>(ordered) << 32U) | index;
}

std::size_t indexOf(std::uint64_t key) {
    return key & 0xFFFFFFFFU;
}

// Sorts by the upper half, 11 bits in a pass. A million keys take a tenth of the time of a comparing sort.
void sortKeys(std::span<std::uint64_t> keys, std::vector<std::uint64_t>& scratch) {
    constexpr unsigned kBits = 11;
    constexpr std::size_t kBuckets = std::size_t{1} << kBits;
    constexpr std::size_t kFew = 1024;
    if (keys.size() < kFew) {
        std::sort(keys.begin(), keys.end());
        return;
    }
    scratch.resize(keys.size());
    const std::span<std::uint64_t> other = scratch;
    std::span<std::uint64_t> from = keys;
    std::span<std::uint64_t> to = other;
    for (unsigned shift = 32; shift < 64; shift += kBits) {
        const auto bucket = [&](std::uint64_t key) { return static_cast<std::size_t>((key >> shift) % kBuckets); };
        std::array<std::size_t, kBuckets> starts{};
        for (const std::uint64_t key : from) {
            ++starts[bucket(key)];
        }
        std::size_t sum = 0;
        for (std::size_t& start : starts) {
            sum += std::exchange(start, sum);
        }
        for (const std::uint64_t key : from) {
            to[starts[bucket(key)]++] = key;
        }
        std::swap(from, to);
    }
    std::copy(from.begin(), from.end(), keys.begin()); // three passes end in the other store
}

float middle(float low, float high) {
    return 0.5F * low + 0.5F * high;
}

// The entries' indexes tile after tile: vertical strips, each from south to north. The lower half of a key is the index.
std::vector<std::uint64_t> tiled(std::span<const TreeEntry> entries, std::size_t cells) {
    std::vector<std::uint64_t> keys(entries.size());
    std::vector<std::uint64_t> scratch;
    for (std::size_t i = 0; i < keys.size(); ++i) {
        keys[i] = sortKey(middle(entries[i].box.minX, entries[i].box.maxX), i);
    }
    sortKeys(keys, scratch);
    const std::size_t tiles = (entries.size() + cells - 1) / cells;
    const auto strips = static_cast<std::size_t>(std::ceil(std::sqrt(static_cast<double>(tiles))));
    const std::size_t stripSize = (tiles + strips - 1) / strips * cells;
    for (std::size_t first = 0; first < keys.size(); first += stripSize) {
        const std::span<std::uint64_t> strip = std::span(keys).subspan(first, std::min(stripSize, keys.size() - first));
        for (std::uint64_t& key : strip) {
            const std::size_t index = indexOf(key);
            key = sortKey(middle(entries[index].box.minY, entries[index].box.maxY), index);
        }
        sortKeys(strip, scratch);
    }
    return keys;
}

// The bytes of a node that is filled cell by cell.
class NodeBytes {
  public:
    explicit NodeBytes(std::size_t size) : bytes_(size) {}

    void begin(std::size_t depth, std::size_t cells) {
        std::fill(bytes_.begin(), bytes_.end(), std::byte{});
        at_ = 0;
        put(static_cast<std::uint16_t>(depth));
        put(static_cast<std::uint16_t>(cells));
        box_ = {std::numeric_limits<float>::infinity(), -std::numeric_limits<float>::infinity(),
                std::numeric_limits<float>::infinity(), -std::numeric_limits<float>::infinity()};
    }
    void add(const TreeEntry& entry) {
        put(static_cast<std::uint64_t>(entry.id));
        for (const float bound : {entry.box.minX, entry.box.maxX, entry.box.minY, entry.box.maxY}) {
            put(bitsOf(bound));
        }
        box_.minX = std::min(box_.minX, entry.box.minX);
        box_.maxX = std::max(box_.maxX, entry.box.maxX);
        box_.minY = std::min(box_.minY, entry.box.minY);
        box_.maxY = std::max(box_.maxY, entry.box.maxY);
    }
    const TreeBox& box() const { return box_; }
    std::span<const std::byte> bytes() const { return bytes_; }

  private:
    template <typename Unsigned>
    void put(Unsigned value) {
        for (std::size_t shift = 8 * sizeof value; shift > 0; shift -= 8) {
            bytes_[at_++] = static_cast<std::byte>(value >> (shift - 8));
        }
    }

    std::vector<std::byte> bytes_;
    std::size_t at_ = 0;
    TreeBox box_;
};

float roundedDown(double value) {
    const auto near = static_cast<float>(value);
    return near > value ? std::nextafter(near, -std::numeric_limits<float>::infinity()) : near;
}

float roundedUp(double value) {
    const auto near = static_cast<float>(value);
    return near < value ? std::nextafter(near, std::numeric_limits<float>::infinity()) : near;
}

} // namespace

TreeBox roundedOut(const Extent& extent) {
    return {roundedDown(extent.minX), roundedUp(extent.maxX), roundedDown(extent.minY), roundedUp(extent.maxY)};
}

std::vector<NodeNumber> packTree(std::span<const TreeEntry> entries, std::size_t nodeSize, const TreeSink& sink) {
    const std::size_t cells = (nodeSize - kNodeHead) / kCellSize;
    std::vector<NodeNumber> leaves(entries.size(), kRootNode);
    NodeBytes node(nodeSize);
    NodeNumber number = kRootNode;
    std::size_t depth = 0;
    std::vector<TreeEntry> below;
    std::span<const TreeEntry> level = entries;
    for (; level.size() > cells; ++depth) {
        const std::vector<std::uint64_t> order = tiled(level, cells);
        std::vector<TreeEntry> above;
        above.reserve(level.size() / cells + 1);
        for (std::size_t first = 0; first < order.size(); first += cells) {
            ++number;
            const std::size_t count = std::min(cells, order.size() - first);
            node.begin(0, count);
            for (const std::uint64_t key : std::span(order).subspan(first, count)) {
                const TreeEntry& entry = level[indexOf(key)];
                node.add(entry);
                if (depth == 0) {
                    leaves[indexOf(key)] = number;
                } else {
                    sink.parent(static_cast<NodeNumber>(entry.id), number);
                }
            }
            sink.node(number, node.bytes());
            above.push_back({number, node.box()});
        }
        below = std::move(above);
        level = below;
    }
    node.begin(depth, level.size());
    for (const TreeEntry& entry : level) {
        node.add(entry);
        if (depth > 0) {
            sink.parent(static_cast<NodeNumber>(entry.id), kRootNode);
        }
    }
    sink.node(kRootNode, node.bytes());
    return leaves;
}

} // namespace fenmark::drawing
