// An R-tree made in one go.
#include "drawing/geopackage/packed_tree.h"

#include <algorithm>
#include <utility>

namespace fenmark::drawing {

namespace {

// The bytes of a node that is filled cell by cell.
class NodeBytes {
  public:
    explicit NodeBytes(std::size_t size) : bytes_(size) {}

    void begin(std::size_t depth, std::size_t cells) {
        std::fill(bytes_.begin(), bytes_.end(), std::byte{});
        at_ = 0;
        put(static_cast<std::uint16_t>(depth));
        put(static_cast<std::uint16_t>(cells));
        box_ = TreeBox::none();
    }
    void add(const TreeEntry& entry) {
        put(static_cast<std::uint64_t>(entry.id));
        for (const float bound : {entry.box.minX, entry.box.maxX, entry.box.minY, entry.box.maxY}) {
            put(bitsOf(bound));
        }
        box_.add(entry.box);
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

} // namespace

std::vector<std::uint64_t> leafOrder(std::span<const TreeEntry> entries, std::size_t cells) {
    if (entries.size() <= cells) {
        return {};
    }
    return tiled(entries.size(), cells, [&](std::size_t i) -> const TreeBox& { return entries[i].box; });
}

std::vector<NodeNumber> packTree(std::span<const TreeEntry> entries, std::vector<std::uint64_t> order,
                                 std::size_t nodeSize, const TreeSink& sink) {
    const std::size_t cells = cellsOf(nodeSize);
    std::vector<NodeNumber> leaves(entries.size(), kRootNode);
    NodeBytes node(nodeSize);
    NodeNumber number = kRootNode;
    std::size_t depth = 0;
    std::vector<TreeEntry> below;
    std::span<const TreeEntry> level = entries;
    for (; level.size() > cells; ++depth) {
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
        order = leafOrder(level, cells);
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
