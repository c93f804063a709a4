// An R-tree made in one go: boxes are sorted into tiles, a tile fills a node, and the nodes' boxes are packed in turn
// until one node holds them all (drawing/box_tree.h).
//
// A node has the bytes that SQLite's R-tree module keeps: depth of the tree (of the root, else 0) and number of cells in
// 2 bytes each, then the cells, an identifier in 8 bytes and the box in 4 reals of 4 bytes, all big-endian; zeros fill
// the rest.
#pragma once

#include "drawing/box_tree.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <vector>

namespace fenmark::drawing {

struct TreeEntry {
    std::int64_t id = 0; // of a feature, or of a node one level below
    TreeBox box;
};

using NodeNumber = std::uint32_t; // from 1, and a tree has fewer nodes than entries
inline constexpr NodeNumber kRootNode = 1;
inline constexpr std::size_t kNodeHead = 4;  // bytes
inline constexpr std::size_t kCellSize = 24; // bytes

struct TreeSink {
    std::function<void(NodeNumber node, std::span<const std::byte> bytes)> node; // in rising order, the root last
    std::function<void(NodeNumber node, NodeNumber parent)> parent;              // of every node but the root
};

// How many boxes a node of a size in bytes holds.
constexpr std::size_t cellsOf(std::size_t nodeSize) {
    return (nodeSize - kNodeHead) / kCellSize;
}

// The order in which the leaves take the entries up (box_tree.h); nothing where one node holds them all.
std::vector<std::uint64_t> leafOrder(std::span<const TreeEntry> entries, std::size_t cells);

// Packs the entries into nodes of a size in bytes, with the leaf order for as many cells. The leaf that each entry lies
// in, in the order of the entries.
std::vector<NodeNumber> packTree(std::span<const TreeEntry> entries, std::vector<std::uint64_t> order,
                                 std::size_t nodeSize, const TreeSink& sink);

} // namespace fenmark::drawing
