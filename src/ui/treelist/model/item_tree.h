// ItemTree: owns the rows of a tree list, keeps their links and counters, and carries checks and locks through the
// tree.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "ui/treelist/model/block_pool.h"
#include "ui/treelist/model/tree_list_item.h"

namespace fenmark::ui::treelist {

// One of the two state pairs of a row with the box that shows it.
struct StatePair {
    std::uint32_t on;
    std::uint32_t off;
    std::uint32_t box;
    [[nodiscard]] std::uint32_t mask() const { return on | off; }
};
inline constexpr StatePair kCheckPair{kItemChecked, kItemUnchecked, kItemCheckBox};
inline constexpr StatePair kLockPair{kItemLocked, kItemUnlocked, kItemLockBox};

// The tree of rows under a hidden root, which is always expanded. No flat list of rows exists: an index in the flat
// list of shown rows and its row are found from each other by the counters. Costs: inserting, deleting and expanding
// O(depth) counters beside the rows concerned; index and row from each other O(depth * log(siblings)).
class ItemTree {
  public:
    ItemTree();
    ~ItemTree();
    ItemTree(const ItemTree&) = delete;
    ItemTree& operator=(const ItemTree&) = delete;

    [[nodiscard]] CTreeListItem* root() const { return root_; }
    [[nodiscard]] std::uint32_t count() const { return root_->childCount_ - 1; }          // all rows
    [[nodiscard]] std::uint32_t visibleCount() const { return root_->visibleCount_ - 1; } // rows of the flat list

    // Inserts a row behind `after`, a child of the parent; null puts it first. If the parent's check or lock is 1, the
    // new row inherits that 1.
    CTreeListItem* insert(CTreeListItem* parent, CTreeListItem* after, std::string_view text);
    // Deletes the row and its subtree.
    void erase(CTreeListItem* item);
    void eraseChildren(CTreeListItem* item);
    void clear();
    // Moves a row with its subtree. `after` null puts it first. The parent must not lie in the subtree.
    void move(CTreeListItem* item, CTreeListItem* parent, CTreeListItem* after);
    // Two rows, none below the other, change places.
    void exchange(CTreeListItem* one, CTreeListItem* other);

    // Changes the expanded bit and the counters. Expanding sets the expanded-once bit.
    void setExpanded(CTreeListItem* item, bool expanded);
    // Sets state bits within the mask, keeping bits 0x2 and 0x4 consistent and the counters right.
    void setState(CTreeListItem* item, std::uint32_t state, std::uint32_t mask);

    void setText(CTreeListItem* item, std::size_t column, std::string_view text) {
        item->texts_.set(pool_, column, text);
    }
    void setTexts(CTreeListItem* item, const std::vector<std::string>& texts) { item->texts_.assign(pool_, texts); }
    void removeColumn(std::size_t column); // from every row

    // The row at an index of the flat list, or null beyond its end.
    [[nodiscard]] CTreeListItem* itemAt(std::uint32_t index) const;
    // The row's index in the flat list; nothing if a parent is collapsed, or for the root.
    [[nodiscard]] std::optional<std::uint32_t> indexOf(const CTreeListItem* item) const;
    [[nodiscard]] bool isShown(const CTreeListItem* item) const; // all its parents are expanded

    // The next row of the whole tree in depth-first order within `within`'s subtree; null at the end.
    [[nodiscard]] static CTreeListItem* nextInTree(const CTreeListItem* item, const CTreeListItem* within);
    [[nodiscard]] CTreeListItem* nextShown(const CTreeListItem* item) const;
    [[nodiscard]] CTreeListItem* previousShown(const CTreeListItem* item) const;

    // 1, 0 or 2 (mixed); 0 for a row with neither bit.
    [[nodiscard]] static int pairValue(const CTreeListItem* item, const StatePair& pair);
    // Gives the row alone the value.
    static void setPair(CTreeListItem* item, const StatePair& pair, bool on);
    // Gives the row and every descendant the value, then every ancestor the union of those children that show the box.
    void cascade(CTreeListItem* item, const StatePair& pair, bool on);
    // Before a row leaves its parent for good: mixed ancestors lose the bits that no other row gives them.
    static void leaveUnion(CTreeListItem* item, const StatePair& pair);
    // After a row came to a new parent: its ancestors take up its bits, or have them alone if it is the only child.
    static void joinUnion(CTreeListItem* item, const StatePair& pair);

    // Bytes taken for rows and texts.
    [[nodiscard]] std::size_t memory() const { return pool_.reserved(); }

  private:
    CTreeListItem* newItem();
    void link(CTreeListItem* item, CTreeListItem* parent, CTreeListItem* after);
    void unlink(CTreeListItem* item);
    void freeSubtree(CTreeListItem* item);
    static void addVisible(CTreeListItem* item, std::int64_t delta);
    static void setLevels(CTreeListItem* item, std::uint32_t level);
    // Gives the row and its ancestors the union of those of their children that show the box.
    static void refreshUnion(CTreeListItem* item, const StatePair& pair);

    BlockPool pool_;
    CTreeListItem* root_ = nullptr;
};

} // namespace fenmark::ui::treelist
