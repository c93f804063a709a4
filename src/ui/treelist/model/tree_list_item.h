// CTreeListItem: one row of the tree list with its place in the tree, its counters and its texts.
#pragma once

#include <array>
#include <cstdint>

#include "ui/treelist/model/row_texts.h"

namespace fenmark::ui::treelist {

// State bits of a row. Check and lock are pairs: only the first bit means 1, only the second 0, both mean mixed (2).
enum ItemState : std::uint32_t {
    kItemSelected = 0x1,
    kItemExpanded = 0x2,
    kItemExpandedOnce = 0x4, // set together with kItemExpanded and kept when the row collapses
    kItemCheckBox = 0x10,    // shows a check box
    kItemLockBox = 0x20,     // shows a lock box
    kItemImage = 0x40,       // shows an image
    kItemChecked = 0x10000,
    kItemUnchecked = 0x20000,
    kItemLocked = 0x1000000,
    kItemUnlocked = 0x2000000,
};

inline constexpr std::uint32_t kItemCheckPair = kItemChecked | kItemUnchecked;
inline constexpr std::uint32_t kItemLockPair = kItemLocked | kItemUnlocked;
inline constexpr std::uint32_t kItemInitialState = kItemUnlocked | kItemUnchecked | kItemLockBox | kItemCheckBox;

// Which of a row's four image numbers.
enum class ItemImage : int { Normal = 0, Expanded = 1, Selected = 2, ExpandedSelected = 3 };

struct SiblingNode;

// One row. Rows are owned by their ItemTree, which alone changes the links and counters.
//
// The texts of a row lie in one block, and a parent keeps no record of its own about its children: the last child is
// reached from the first, and long rows of siblings are divided into counted groups (SiblingNode), so that position
// and row are found from each other without a walk over all siblings.
class CTreeListItem {
  public:
    [[nodiscard]] CTreeListItem* parent() const { return parent_; } // null for the hidden root only
    [[nodiscard]] CTreeListItem* firstChild() const { return firstChild_; }
    [[nodiscard]] CTreeListItem* lastChild() const { return firstChild_ ? firstChild_->previous_ : nullptr; }
    [[nodiscard]] CTreeListItem* nextSibling() const { return next_; }
    [[nodiscard]] CTreeListItem* previousSibling() const {
        return parent_ && parent_->firstChild_ != this ? previous_ : nullptr;
    }
    // Depth: the hidden root is 0, its children 1.
    [[nodiscard]] std::uint32_t level() const { return level_; }
    // Rows in the subtree, itself included; 1 for a leaf.
    [[nodiscard]] std::uint32_t childCount() const { return childCount_; }
    // Rows of the subtree that its expanded rows show, itself included.
    [[nodiscard]] std::uint32_t visibleCount() const { return visibleCount_; }

    [[nodiscard]] bool hasChildren() const { return firstChild_ != nullptr; }
    [[nodiscard]] bool isExpanded() const { return (state & kItemExpanded) != 0; }
    // A leaf that was expanded once has nothing left to expand, so it has no button.
    [[nodiscard]] bool canHaveButton() const { return firstChild_ != nullptr || (state & kItemExpandedOnce) == 0; }
    // True if this row is `other` or lies below it.
    [[nodiscard]] bool isInSubtreeOf(const CTreeListItem* other) const {
        const CTreeListItem* row = this;
        while (row && row->level_ > other->level_) {
            row = row->parent_;
        }
        return row == other;
    }

    [[nodiscard]] const RowTexts& texts() const { return texts_; }

    std::uint32_t state = kItemInitialState;
    std::uint32_t data = 0; // free for the user
    std::array<std::int32_t, 4> images{0, 1, 2, 3};

  private:
    friend class ItemTree;
    friend class SiblingIndex;

    std::uint32_t level_ = 0;
    std::uint32_t childCount_ = 1;
    std::uint32_t visibleCount_ = 1;
    std::uint32_t directChildren_ = 0;
    CTreeListItem* parent_ = nullptr;
    CTreeListItem* firstChild_ = nullptr;
    CTreeListItem* previous_ = nullptr; // the first child's is the last child
    CTreeListItem* next_ = nullptr;
    SiblingNode* group_ = nullptr; // null while the parent has few children
    RowTexts texts_;
};

} // namespace fenmark::ui::treelist
