// The tree of rows: links, counters, positions, inserting, moving and deleting.
#include <algorithm>
#include <random>
#include <vector>

#include <gtest/gtest.h>

#include "ui/treelist/model/item_tree.h"

namespace fenmark::ui::treelist {
namespace {

// Everything that the counters must say, worked out by walking over all rows.
struct Walked {
    std::uint32_t rows = 1;
    std::uint32_t shown = 1;
};

Walked walk(const CTreeListItem* item, std::vector<const CTreeListItem*>* flat) {
    Walked sum;
    for (const CTreeListItem* child = item->firstChild(); child; child = child->nextSibling()) {
        EXPECT_EQ(child->parent(), item);
        EXPECT_EQ(child->level(), item->level() + 1);
        if (child->nextSibling()) {
            EXPECT_EQ(child->nextSibling()->previousSibling(), child);
        } else {
            EXPECT_EQ(item->lastChild(), child);
        }
        std::vector<const CTreeListItem*>* below = item->isExpanded() ? flat : nullptr;
        if (below) {
            below->push_back(child);
        }
        const Walked part = walk(child, below && child->isExpanded() ? below : nullptr);
        sum.rows += part.rows;
        sum.shown += item->isExpanded() ? part.shown : 0;
    }
    EXPECT_EQ(item->childCount(), sum.rows);
    EXPECT_EQ(item->visibleCount(), sum.shown);
    return sum;
}

void checkWhole(const ItemTree& tree) {
    std::vector<const CTreeListItem*> flat;
    walk(tree.root(), &flat);
    ASSERT_EQ(tree.visibleCount(), flat.size());
    const CTreeListItem* next = tree.root()->firstChild();
    const CTreeListItem* before = nullptr;
    for (std::uint32_t i = 0; i < flat.size(); ++i) {
        ASSERT_EQ(tree.itemAt(i), flat[i]) << "row " << i;
        ASSERT_EQ(tree.indexOf(flat[i]), std::optional<std::uint32_t>(i));
        ASSERT_EQ(next, flat[i]);
        if (i > 0) {
            ASSERT_EQ(tree.previousShown(flat[i]), before);
        }
        before = flat[i];
        next = tree.nextShown(flat[i]);
    }
    EXPECT_EQ(next, nullptr);
    EXPECT_EQ(tree.itemAt(static_cast<std::uint32_t>(flat.size())), nullptr);
}

CTreeListItem* append(ItemTree& tree, CTreeListItem* parent, std::string_view text) {
    return tree.insert(parent, parent->lastChild(), text);
}

TEST(ItemTree, ANewRowHasTheInitialStateCountsAndImages) {
    ItemTree tree;
    const CTreeListItem* row = append(tree, tree.root(), "a");
    EXPECT_EQ(row->state, 0x2020030U);
    EXPECT_EQ(row->childCount(), 1U);
    EXPECT_EQ(row->visibleCount(), 1U);
    EXPECT_EQ(row->level(), 1U);
    EXPECT_EQ(row->data, 0U);
    EXPECT_EQ(row->images, (std::array<std::int32_t, 4>{0, 1, 2, 3}));
    EXPECT_EQ(row->texts().at(0), "a");
    EXPECT_EQ(row->texts().at(7), "");
}

TEST(ItemTree, TheHiddenRootIsLevelZeroWithoutParentAndNeverInTheFlatList) {
    ItemTree tree;
    EXPECT_EQ(tree.root()->level(), 0U);
    EXPECT_EQ(tree.root()->parent(), nullptr);
    EXPECT_EQ(tree.count(), 0U);
    EXPECT_EQ(tree.itemAt(0), nullptr);
    EXPECT_EQ(tree.indexOf(tree.root()), std::nullopt);
}

TEST(ItemTree, InsertingBelowACollapsedRowCountsRowsButNotShownRows) {
    ItemTree tree;
    CTreeListItem* a = append(tree, tree.root(), "a");
    CTreeListItem* b = append(tree, a, "b");
    append(tree, b, "c");
    EXPECT_EQ(tree.count(), 3U);
    EXPECT_EQ(a->childCount(), 3U);
    EXPECT_EQ(tree.visibleCount(), 1U);
    EXPECT_EQ(a->visibleCount(), 1U);
    checkWhole(tree);
}

TEST(ItemTree, ExpandingBelowACollapsedRowShowsNothingUntilThatRowExpands) {
    ItemTree tree;
    CTreeListItem* a = append(tree, tree.root(), "a");
    CTreeListItem* b = append(tree, a, "b");
    CTreeListItem* c = append(tree, b, "c");
    tree.setExpanded(b, true);
    EXPECT_EQ(b->visibleCount(), 2U);
    EXPECT_EQ(a->visibleCount(), 1U);
    EXPECT_FALSE(tree.isShown(c));
    checkWhole(tree);
    tree.setExpanded(a, true);
    EXPECT_EQ(a->visibleCount(), 3U);
    EXPECT_EQ(tree.indexOf(c), std::optional<std::uint32_t>(2));
    checkWhole(tree);
    tree.setExpanded(a, false);
    EXPECT_EQ(tree.indexOf(c), std::nullopt);
    EXPECT_EQ(tree.visibleCount(), 1U);
    checkWhole(tree);
}

TEST(ItemTree, ExpandedOnceIsSetWithExpandedAndStaysOnCollapse) {
    ItemTree tree;
    CTreeListItem* a = append(tree, tree.root(), "a");
    append(tree, a, "b");
    tree.setExpanded(a, true);
    EXPECT_EQ(a->state & 0x6U, 0x6U);
    tree.setExpanded(a, false);
    EXPECT_EQ(a->state & 0x6U, 0x4U);
}

TEST(ItemTree, SettingBit2SetsBit4AndClearingBit4ClearsBit2) {
    ItemTree tree;
    CTreeListItem* a = append(tree, tree.root(), "a");
    append(tree, a, "b");
    tree.setState(a, 0x2, 0x2);
    EXPECT_EQ(a->state & 0x6U, 0x6U);
    EXPECT_EQ(tree.visibleCount(), 2U);
    tree.setState(a, 0, 0x4);
    EXPECT_EQ(a->state & 0x6U, 0U);
    EXPECT_EQ(tree.visibleCount(), 1U);
    tree.setState(a, 0x4, 0x4);
    EXPECT_EQ(a->state & 0x6U, 0x4U);
    checkWhole(tree);
}

TEST(ItemTree, TheRootCannotBeCollapsed) {
    ItemTree tree;
    append(tree, tree.root(), "a");
    tree.setExpanded(tree.root(), false);
    tree.setState(tree.root(), 0, 0x6);
    EXPECT_EQ(tree.visibleCount(), 1U);
    EXPECT_TRUE(tree.root()->isExpanded());
}

TEST(ItemTree, ANewRowInheritsACheckOrLockOfOneButNotAMixedOne) {
    ItemTree tree;
    CTreeListItem* a = append(tree, tree.root(), "a");
    ItemTree::setPair(a, kCheckPair, true);
    const CTreeListItem* b = append(tree, a, "b");
    EXPECT_EQ(ItemTree::pairValue(b, kCheckPair), 1);
    EXPECT_EQ(ItemTree::pairValue(b, kLockPair), 0);
    ItemTree::setPair(a, kLockPair, true);
    EXPECT_EQ(ItemTree::pairValue(append(tree, a, "c"), kLockPair), 1);
    a->state |= kItemCheckPair;
    const CTreeListItem* d = append(tree, a, "d");
    EXPECT_EQ(ItemTree::pairValue(d, kCheckPair), 0);
    EXPECT_EQ(d->state & kItemCheckPair, std::uint32_t{kItemUnchecked});
}

TEST(ItemTree, ExchangeSwapsNeighboursFarRowsAndRowsOfDifferentLevels) {
    ItemTree tree;
    CTreeListItem* a = append(tree, tree.root(), "a");
    CTreeListItem* b = append(tree, tree.root(), "b");
    CTreeListItem* c = append(tree, tree.root(), "c");
    CTreeListItem* below = append(tree, c, "d");
    tree.setExpanded(c, true);
    tree.exchange(a, b);
    EXPECT_EQ(tree.root()->firstChild(), b);
    EXPECT_EQ(b->nextSibling(), a);
    tree.exchange(a, b);
    EXPECT_EQ(tree.root()->firstChild(), a);
    tree.exchange(a, c);
    EXPECT_EQ(tree.root()->firstChild(), c);
    EXPECT_EQ(tree.root()->lastChild(), a);
    checkWhole(tree);
    tree.exchange(below, b);
    EXPECT_EQ(c->firstChild(), b);
    EXPECT_EQ(b->level(), 2U);
    EXPECT_EQ(below->level(), 1U);
    checkWhole(tree);
}

TEST(ItemTree, MovingASubtreeChangesItsLevels) {
    ItemTree tree;
    CTreeListItem* a = append(tree, tree.root(), "a");
    CTreeListItem* b = append(tree, tree.root(), "b");
    CTreeListItem* c = append(tree, b, "c");
    tree.move(b, a, nullptr);
    EXPECT_EQ(b->level(), 2U);
    EXPECT_EQ(c->level(), 3U);
    EXPECT_EQ(a->childCount(), 3U);
    checkWhole(tree);
}

// Random trees with long rows of siblings, so that the counted groups are made, divided and emptied.
class RandomTree : public ::testing::TestWithParam<unsigned> {};

TEST_P(RandomTree, CountersAndPositionsAgreeWithAWalkOverAllRows) {
    const unsigned seed = GetParam();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    const auto below = [&](std::size_t n) { return std::uniform_int_distribution<std::size_t>(0, n - 1)(random); };
    ItemTree tree;
    std::vector<CTreeListItem*> rows;
    const auto reload = [&] {
        rows.clear();
        for (CTreeListItem* row = tree.root()->firstChild(); row; row = ItemTree::nextInTree(row, tree.root())) {
            rows.push_back(row);
        }
    };
    const auto someRow = [&] { return rows[below(rows.size())]; };
    for (int step = 0; step < 4000; ++step) {
        const std::size_t what = below(100);
        if (rows.size() < 10 || what < 62) {
            // Most rows go to few parents.
            CTreeListItem* parent =
                rows.empty() || below(3) == 0 ? tree.root() : rows[below(std::min<std::size_t>(rows.size(), 4))];
            CTreeListItem* after = nullptr;
            if (parent->firstChild() && below(4) != 0) {
                after = below(2) == 0 ? parent->lastChild() : parent->firstChild();
            }
            rows.push_back(tree.insert(parent, after, "row"));
        } else if (what < 80) {
            CTreeListItem* row = someRow();
            tree.setExpanded(row, !row->isExpanded());
        } else if (what < 90) {
            CTreeListItem* row = someRow();
            if (row->childCount() < rows.size() / 4) {
                tree.erase(row);
                reload();
            }
        } else if (what < 96) {
            CTreeListItem* row = someRow();
            CTreeListItem* parent = someRow();
            if (!parent->isInSubtreeOf(row)) {
                CTreeListItem* after = below(2) == 0 ? parent->lastChild() : nullptr;
                tree.move(row, parent, after);
            }
        } else {
            CTreeListItem* one = someRow();
            CTreeListItem* other = someRow();
            if (!one->isInSubtreeOf(other) && !other->isInSubtreeOf(one)) {
                tree.exchange(one, other);
            }
        }
        if (step % 200 == 0) {
            checkWhole(tree);
        }
    }
    checkWhole(tree);
    while (tree.count() > 0) {
        tree.erase(below(2) == 0 ? tree.root()->firstChild() : tree.root()->lastChild());
    }
    checkWhole(tree);
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomTree, ::testing::Values(1U, 2U, 3U, 20U, 77U));

TEST(ItemTree, AHundredThousandSiblingsAreFoundByPositionAndDeletedFromTheFront) {
    ItemTree tree;
    constexpr std::uint32_t kRows = 100000;
    for (std::uint32_t i = 0; i < kRows; ++i) {
        append(tree, tree.root(), "row")->data = i;
    }
    for (const std::uint32_t index : {0U, 1U, 63U, 64U, 4096U, 65535U, kRows - 1}) {
        const CTreeListItem* row = tree.itemAt(index);
        ASSERT_NE(row, nullptr);
        EXPECT_EQ(row->data, index);
        EXPECT_EQ(tree.indexOf(row), std::optional<std::uint32_t>(index));
    }
    for (std::uint32_t i = 0; i < kRows - 10; ++i) {
        tree.erase(tree.root()->firstChild());
    }
    EXPECT_EQ(tree.count(), 10U);
    checkWhole(tree);
    tree.eraseChildren(tree.root());
    EXPECT_EQ(tree.count(), 0U);
}

TEST(ItemTree, RowsOfTheTreeAreLean) {
    EXPECT_LE(sizeof(CTreeListItem), 96U);
    ItemTree tree;
    constexpr std::size_t kRows = 100000;
    for (std::size_t i = 0; i < kRows; ++i) {
        append(tree, tree.root(), "row 1234567");
    }
    constexpr std::size_t kBytesARow = 160;
    EXPECT_LE(tree.memory(), kRows * kBytesARow);
}

TEST(ItemTree, MemoryOfDeletedRowsIsUsedAgain) {
    ItemTree tree;
    for (int round = 0; round < 20; ++round) {
        for (int i = 0; i < 1000; ++i) {
            append(tree, tree.root(), "a text of some length for a row");
        }
        tree.eraseChildren(tree.root());
    }
    const std::size_t once = tree.memory();
    for (int i = 0; i < 1000; ++i) {
        append(tree, tree.root(), "a text of some length for a row");
    }
    EXPECT_EQ(tree.memory(), once);
}

} // namespace
} // namespace fenmark::ui::treelist
