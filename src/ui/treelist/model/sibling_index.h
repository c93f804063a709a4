// SiblingIndex: counted groups over long rows of siblings.
#pragma once

#include <cstdint>

#include "ui/treelist/model/block_pool.h"
#include "ui/treelist/model/tree_list_item.h"

namespace fenmark::ui::treelist {

// A group of consecutive siblings, or of consecutive groups, with the sum of their visible counts. The groups of one
// parent's children form a tree of equal depth, so that a walk over siblings can step over whole groups.
struct SiblingNode {
    SiblingNode* up = nullptr;       // the group that holds this one
    SiblingNode* previous = nullptr; // neighbours within `up`
    SiblingNode* next = nullptr;
    SiblingNode* firstNode = nullptr; // null in the lowest groups
    CTreeListItem* firstItem = nullptr;
    std::uint32_t entries = 0; // siblings or groups in it
    std::uint32_t visible = 0; // sum of their visible counts
};

// Keeps the groups in step with the links of CTreeListItem. Each function says how the links stand when it is called.
class SiblingIndex {
  public:
    static constexpr std::uint32_t kMinimum = 64; // below this many siblings no groups are made
    static constexpr std::uint32_t kLimit = 64;   // entries of a group before it is divided

    // After `item` was linked among its siblings.
    static void added(BlockPool& pool, CTreeListItem* item);
    // Before `item` is taken out of the links.
    static void removing(BlockPool& pool, CTreeListItem* item);
    // The parent's children all end.
    static void drop(BlockPool& pool, CTreeListItem* parent);
    // The visible count of `item` has changed by delta.
    static void changed(CTreeListItem* item, std::int64_t delta) {
        for (SiblingNode* node = item->group_; node; node = node->up) {
            node->visible = static_cast<std::uint32_t>(static_cast<std::int64_t>(node->visible) + delta);
        }
    }
    // The child that holds the index, which counts from the first child's own row; `index` becomes the index within it.
    [[nodiscard]] static CTreeListItem* find(const CTreeListItem* parent, std::uint32_t& index);
    // Visible counts of all siblings before `item`.
    [[nodiscard]] static std::uint64_t before(const CTreeListItem* item);

  private:
    static void build(BlockPool& pool, CTreeListItem* parent);
    static void divide(BlockPool& pool, SiblingNode* node);
};

} // namespace fenmark::ui::treelist
