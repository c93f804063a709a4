// The groups form a tree of equal depth over one parent's children, divided when full as in a B-tree. A group that
// loses its last entry goes; groups are not joined, since a thin one costs a step and nothing else.
#include "ui/treelist/model/sibling_index.h"

#include <new>

namespace fenmark::ui::treelist {

namespace {

SiblingNode* topOf(SiblingNode* node) {
    while (node->up) {
        node = node->up;
    }
    return node;
}

void freeNodes(BlockPool& pool, SiblingNode* node) {
    for (SiblingNode* child = node->firstNode; child;) {
        SiblingNode* next = child->next;
        freeNodes(pool, child);
        child = next;
    }
    pool.give(node, sizeof(SiblingNode));
}

void removeNode(BlockPool& pool, SiblingNode* node) {
    while (node && node->entries == 0) {
        SiblingNode* up = node->up;
        if (node->previous) {
            node->previous->next = node->next;
        }
        if (node->next) {
            node->next->previous = node->previous;
        }
        if (up) {
            if (up->firstNode == node) {
                up->firstNode = node->next;
            }
            --up->entries;
        }
        pool.give(node, sizeof(SiblingNode));
        node = up;
    }
}

} // namespace

void SiblingIndex::build(BlockPool& pool, CTreeListItem* parent) {
    auto* node = ::new (pool.take(sizeof(SiblingNode))) SiblingNode;
    node->firstItem = parent->firstChild_;
    for (CTreeListItem* item = parent->firstChild_; item; item = item->next_) {
        item->group_ = node;
        ++node->entries;
        node->visible += item->visibleCount_;
    }
    if (node->entries > kLimit) {
        divide(pool, node);
    }
}

void SiblingIndex::divide(BlockPool& pool, SiblingNode* node) {
    while (node->entries > kLimit) {
        if (!node->up) {
            auto* top = ::new (pool.take(sizeof(SiblingNode))) SiblingNode;
            top->firstNode = node;
            top->entries = 1;
            top->visible = node->visible;
            node->up = top;
        }
        auto* half = ::new (pool.take(sizeof(SiblingNode))) SiblingNode;
        const std::uint32_t keep = node->entries / 2;
        std::uint32_t kept = 0;
        if (node->firstNode) {
            SiblingNode* entry = node->firstNode;
            SiblingNode* lastKept = nullptr;
            for (std::uint32_t i = 0; i < keep; ++i) {
                kept += entry->visible;
                lastKept = entry;
                entry = entry->next;
            }
            lastKept->next = nullptr;
            entry->previous = nullptr;
            half->firstNode = entry;
            for (; entry; entry = entry->next) {
                entry->up = half;
            }
        } else {
            CTreeListItem* entry = node->firstItem;
            for (std::uint32_t i = 0; i < keep; ++i) {
                kept += entry->visibleCount_;
                entry = entry->next_;
            }
            half->firstItem = entry;
            for (std::uint32_t i = keep; i < node->entries; ++i) {
                entry->group_ = half;
                entry = entry->next_;
            }
        }
        half->entries = node->entries - keep;
        half->visible = node->visible - kept;
        node->entries = keep;
        node->visible = kept;
        half->up = node->up;
        half->previous = node;
        half->next = node->next;
        if (node->next) {
            node->next->previous = half;
        }
        node->next = half;
        ++node->up->entries;
        node = node->up;
    }
}

void SiblingIndex::added(BlockPool& pool, CTreeListItem* item) {
    CTreeListItem* parent = item->parent_;
    CTreeListItem* before = item->previousSibling();
    CTreeListItem* neighbour = before ? before : item->next_;
    SiblingNode* node = neighbour ? neighbour->group_ : nullptr;
    item->group_ = node;
    if (!node) {
        if (parent->directChildren_ >= kMinimum) {
            build(pool, parent);
        }
        return;
    }
    if (!before) {
        node->firstItem = item;
    }
    ++node->entries;
    changed(item, item->visibleCount_);
    if (node->entries > kLimit) {
        divide(pool, node);
    }
}

void SiblingIndex::removing(BlockPool& pool, CTreeListItem* item) {
    SiblingNode* node = item->group_;
    if (!node) {
        return;
    }
    changed(item, -static_cast<std::int64_t>(item->visibleCount_));
    if (node->firstItem == item) {
        node->firstItem = item->next_;
    }
    item->group_ = nullptr;
    --node->entries;
    removeNode(pool, node);
}

void SiblingIndex::drop(BlockPool& pool, CTreeListItem* parent) {
    if (parent->firstChild_ && parent->firstChild_->group_) {
        freeNodes(pool, topOf(parent->firstChild_->group_));
    }
}

CTreeListItem* SiblingIndex::find(const CTreeListItem* parent, std::uint32_t& index) {
    CTreeListItem* item = parent->firstChild_;
    if (item->group_) {
        SiblingNode* node = topOf(item->group_);
        while (node->firstNode) {
            node = node->firstNode;
            while (index >= node->visible) {
                index -= node->visible;
                node = node->next;
            }
        }
        item = node->firstItem;
    }
    while (index >= item->visibleCount_) {
        index -= item->visibleCount_;
        item = item->next_;
    }
    return item;
}

std::uint64_t SiblingIndex::before(const CTreeListItem* item) {
    std::uint64_t sum = 0;
    const SiblingNode* group = item->group_;
    for (const CTreeListItem* row = group ? group->firstItem : item->parent_->firstChild_; row != item;
         row = row->next_) {
        sum += row->visibleCount_;
    }
    for (const SiblingNode* node = group; node; node = node->up) {
        for (const SiblingNode* other = node->previous; other; other = other->previous) {
            sum += other->visible;
        }
    }
    return sum;
}

} // namespace fenmark::ui::treelist
