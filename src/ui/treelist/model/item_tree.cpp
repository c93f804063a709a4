// The tree of rows and its counters.
#include "ui/treelist/model/item_tree.h"

#include <new>
#include <type_traits>

#include "ui/treelist/model/sibling_index.h"

namespace fenmark::ui::treelist {

static_assert(std::is_trivially_destructible_v<CTreeListItem>, "rows end with their pool, without destructors");

ItemTree::ItemTree() {
    clear();
}
ItemTree::~ItemTree() = default;

void ItemTree::clear() {
    pool_.clear();
    root_ = newItem();
    root_->state |= kItemExpanded | kItemExpandedOnce;
}

CTreeListItem* ItemTree::newItem() {
    return ::new (pool_.take(sizeof(CTreeListItem))) CTreeListItem;
}

void ItemTree::addVisible(CTreeListItem* item, std::int64_t delta) {
    if (delta == 0) {
        return;
    }
    // A collapsed row shows itself alone, so what is below it counts no further.
    for (CTreeListItem* row = item; row; row = row->parent_) {
        row->visibleCount_ = static_cast<std::uint32_t>(static_cast<std::int64_t>(row->visibleCount_) + delta);
        SiblingIndex::changed(row, delta);
        if (row->parent_ && !row->parent_->isExpanded()) {
            break;
        }
    }
}

void ItemTree::setLevels(CTreeListItem* item, std::uint32_t level) {
    if (item->level_ == level) {
        return;
    }
    const std::uint32_t shift = level - item->level_; // modulo 2^32
    for (CTreeListItem* row = item; row; row = nextInTree(row, item)) {
        row->level_ += shift;
    }
}

void ItemTree::link(CTreeListItem* item, CTreeListItem* parent, CTreeListItem* after) {
    item->parent_ = parent;
    if (after) {
        item->previous_ = after;
        item->next_ = after->next_;
        after->next_ = item;
        (item->next_ ? item->next_ : parent->firstChild_)->previous_ = item;
    } else {
        item->next_ = parent->firstChild_;
        item->previous_ = parent->firstChild_ ? parent->firstChild_->previous_ : item;
        if (parent->firstChild_) {
            parent->firstChild_->previous_ = item;
        }
        parent->firstChild_ = item;
    }
    ++parent->directChildren_;
    SiblingIndex::added(pool_, item);
    for (CTreeListItem* row = parent; row; row = row->parent_) {
        row->childCount_ += item->childCount_;
    }
    if (parent->isExpanded()) {
        addVisible(parent, item->visibleCount_);
    }
}

void ItemTree::unlink(CTreeListItem* item) {
    CTreeListItem* parent = item->parent_;
    SiblingIndex::removing(pool_, item);
    for (CTreeListItem* row = parent; row; row = row->parent_) {
        row->childCount_ -= item->childCount_;
    }
    if (parent->isExpanded()) {
        addVisible(parent, -static_cast<std::int64_t>(item->visibleCount_));
    }
    if (parent->firstChild_ == item) {
        parent->firstChild_ = item->next_;
        if (item->next_) {
            item->next_->previous_ = item->previous_;
        }
    } else {
        item->previous_->next_ = item->next_;
        (item->next_ ? item->next_ : parent->firstChild_)->previous_ = item->previous_;
    }
    --parent->directChildren_;
    item->parent_ = nullptr;
    item->previous_ = nullptr;
    item->next_ = nullptr;
}

CTreeListItem* ItemTree::insert(CTreeListItem* parent, CTreeListItem* after, std::string_view text) {
    CTreeListItem* item = newItem();
    item->texts_.set(pool_, 0, text);
    item->level_ = parent->level_ + 1;
    for (const StatePair& pair : {kCheckPair, kLockPair}) {
        if ((parent->state & pair.mask()) == pair.on) {
            setPair(item, pair, true);
        }
    }
    link(item, parent, after);
    return item;
}

void ItemTree::freeSubtree(CTreeListItem* item) {
    CTreeListItem* row = item;
    while (row) {
        if (row->firstChild_) {
            SiblingIndex::drop(pool_, row);
            CTreeListItem* child = row->firstChild_;
            row->firstChild_ = nullptr;
            row = child;
            continue;
        }
        CTreeListItem* next = row == item ? nullptr : (row->next_ ? row->next_ : row->parent_);
        row->texts_.clear(pool_);
        pool_.give(row, sizeof(CTreeListItem));
        row = next;
    }
}

void ItemTree::erase(CTreeListItem* item) {
    unlink(item);
    freeSubtree(item);
}

void ItemTree::eraseChildren(CTreeListItem* item) {
    while (item->firstChild_) {
        erase(item->lastChild());
    }
}

void ItemTree::move(CTreeListItem* item, CTreeListItem* parent, CTreeListItem* after) {
    if (after == item) {
        return;
    }
    unlink(item);
    setLevels(item, parent->level_ + 1);
    link(item, parent, after);
}

void ItemTree::exchange(CTreeListItem* one, CTreeListItem* other) {
    if (one == other) {
        return;
    }
    if (other->next_ == one) {
        std::swap(one, other);
    }
    CTreeListItem* oneParent = one->parent_;
    CTreeListItem* oneBefore = one->previousSibling();
    if (one->next_ == other) {
        move(other, oneParent, oneBefore);
        return;
    }
    CTreeListItem* otherParent = other->parent_;
    CTreeListItem* otherBefore = other->previousSibling();
    move(one, otherParent, otherBefore);
    move(other, oneParent, oneBefore);
}

void ItemTree::setExpanded(CTreeListItem* item, bool expanded) {
    if (item == root_ || item->isExpanded() == expanded) {
        return;
    }
    std::int64_t shown = 0;
    if (item->firstChild_) {
        const SiblingNode* top = item->firstChild_->group_;
        while (top && top->up) {
            top = top->up;
        }
        if (top) {
            shown = top->visible;
        } else {
            for (const CTreeListItem* child = item->firstChild_; child; child = child->next_) {
                shown += child->visibleCount_;
            }
        }
    }
    if (expanded) {
        item->state |= kItemExpanded | kItemExpandedOnce;
    } else {
        item->state &= ~std::uint32_t{kItemExpanded};
    }
    addVisible(item, expanded ? shown : -shown);
}

void ItemTree::setState(CTreeListItem* item, std::uint32_t state, std::uint32_t mask) {
    constexpr std::uint32_t kExpansion = kItemExpanded | kItemExpandedOnce;
    const bool clearsOnce = (mask & kItemExpandedOnce) && !(state & kItemExpandedOnce);
    if (mask & state & kItemExpanded) {
        setExpanded(item, true);
    } else if (((mask & kItemExpanded) || clearsOnce) && item != root_) {
        setExpanded(item, false);
        if (clearsOnce) {
            item->state &= ~std::uint32_t{kItemExpandedOnce};
        }
    }
    item->state |= mask & state & kItemExpandedOnce;
    mask &= ~kExpansion;
    item->state = (item->state & ~mask) | (state & mask);
}

void ItemTree::removeColumn(std::size_t column) {
    for (CTreeListItem* row = root_; row; row = nextInTree(row, root_)) {
        row->texts_.removeColumn(pool_, column);
    }
}

CTreeListItem* ItemTree::itemAt(std::uint32_t index) const {
    if (index >= visibleCount()) {
        return nullptr;
    }
    const CTreeListItem* parent = root_;
    for (;;) {
        CTreeListItem* item = SiblingIndex::find(parent, index);
        if (index == 0) {
            return item;
        }
        --index;
        parent = item;
    }
}

std::optional<std::uint32_t> ItemTree::indexOf(const CTreeListItem* item) const {
    if (!item || item == root_) {
        return std::nullopt;
    }
    std::uint64_t position = 0;
    for (const CTreeListItem* row = item; row->parent_; row = row->parent_) {
        if (!row->parent_->isExpanded()) {
            return std::nullopt;
        }
        position += SiblingIndex::before(row) + 1;
    }
    return static_cast<std::uint32_t>(position - 1);
}

bool ItemTree::isShown(const CTreeListItem* item) const {
    for (const CTreeListItem* row = item->parent_; row; row = row->parent_) {
        if (!row->isExpanded()) {
            return false;
        }
    }
    return item != root_;
}

CTreeListItem* ItemTree::nextInTree(const CTreeListItem* item, const CTreeListItem* within) {
    if (item->firstChild_) {
        return item->firstChild_;
    }
    for (; item != within; item = item->parent_) {
        if (item->next_) {
            return item->next_;
        }
    }
    return nullptr;
}

CTreeListItem* ItemTree::nextShown(const CTreeListItem* item) const {
    if (item->isExpanded() && item->firstChild_) {
        return item->firstChild_;
    }
    for (; item != root_; item = item->parent_) {
        if (item->next_) {
            return item->next_;
        }
    }
    return nullptr;
}

CTreeListItem* ItemTree::previousShown(const CTreeListItem* item) const {
    CTreeListItem* row = item->previousSibling();
    if (!row) {
        return item->parent_ == root_ ? nullptr : item->parent_;
    }
    while (row->isExpanded() && row->firstChild_) {
        row = row->lastChild();
    }
    return row;
}

int ItemTree::pairValue(const CTreeListItem* item, const StatePair& pair) {
    const std::uint32_t bits = item->state & pair.mask();
    return bits == pair.mask() ? 2 : (bits == pair.on ? 1 : 0);
}

void ItemTree::setPair(CTreeListItem* item, const StatePair& pair, bool on) {
    item->state = (item->state & ~pair.mask()) | (on ? pair.on : pair.off);
}

void ItemTree::leaveUnion(CTreeListItem* item, const StatePair& pair) {
    std::uint32_t lost = item->state & pair.mask();
    for (CTreeListItem* row = item; row->parent_ && lost; row = row->parent_) {
        CTreeListItem* parent = row->parent_;
        if (!(row->state & pair.box) || (parent->state & pair.mask()) != pair.mask()) {
            return;
        }
        // From the row outwards: neighbours mostly say the same, so that deleting many rows needs few steps for each.
        bool anyShows = row != item; // above, the row itself stays
        const CTreeListItem* before = row->previousSibling();
        const CTreeListItem* after = row->next_;
        while (lost && (before || after)) {
            for (const CTreeListItem* other : {before, after}) {
                if (other && (other->state & pair.box)) {
                    anyShows = true;
                    lost &= ~other->state;
                }
            }
            before = before ? before->previousSibling() : nullptr;
            after = after ? after->next_ : nullptr;
        }
        if (!anyShows) {
            return; // nobody is left to say another thing
        }
        parent->state &= ~lost;
    }
}

void ItemTree::joinUnion(CTreeListItem* item, const StatePair& pair) {
    for (CTreeListItem* row = item; row->parent_ && (row->state & pair.box); row = row->parent_) {
        CTreeListItem* parent = row->parent_;
        const std::uint32_t before = parent->state & pair.mask();
        const std::uint32_t bits = (row->state & pair.mask()) | (parent->directChildren_ == 1 ? 0 : before);
        if (bits == before) {
            return;
        }
        parent->state = (parent->state & ~pair.mask()) | bits;
    }
}

void ItemTree::refreshUnion(CTreeListItem* item, const StatePair& pair) {
    for (CTreeListItem* row = item; row; row = row->parent_) {
        std::uint32_t bits = 0;
        for (const CTreeListItem* child = row->firstChild_; child && bits != pair.mask(); child = child->next_) {
            if (child->state & pair.box) {
                bits |= child->state & pair.mask();
            }
        }
        row->state = (row->state & ~pair.mask()) | bits;
    }
}

void ItemTree::cascade(CTreeListItem* item, const StatePair& pair, bool on) {
    const std::uint32_t clear = ~pair.mask();
    const std::uint32_t set = on ? pair.on : pair.off;
    for (CTreeListItem* row = item; row; row = nextInTree(row, item)) {
        row->state = (row->state & clear) | set;
    }
    if (item->parent_) {
        refreshUnion(item->parent_, pair);
    }
}

} // namespace fenmark::ui::treelist
