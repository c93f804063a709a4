// Checks and locks carried through the tree.
#include <gtest/gtest.h>

#include "ui/treelist/model/item_tree.h"

namespace fenmark::ui::treelist {
namespace {

class CheckCascade : public ::testing::TestWithParam<StatePair> {
  protected:
    CheckCascade() {
        top_ = tree_.insert(tree_.root(), nullptr, "top");
        one_ = tree_.insert(top_, nullptr, "one");
        two_ = tree_.insert(top_, one_, "two");
        deep_ = tree_.insert(one_, nullptr, "deep");
    }
    [[nodiscard]] int value(const CTreeListItem* item) const { return ItemTree::pairValue(item, GetParam()); }

    ItemTree tree_;
    CTreeListItem* top_;
    CTreeListItem* one_;
    CTreeListItem* two_;
    CTreeListItem* deep_;
};

TEST_P(CheckCascade, CheckingAParentGivesAChildWithoutBoxTheSameBitsAndTheParentSaysWhatTheChildWithABoxSays) {
    two_->state &= ~GetParam().box;
    tree_.cascade(top_, GetParam(), true);
    EXPECT_EQ(value(two_), 1);
    EXPECT_EQ(value(one_), 1);
    EXPECT_EQ(value(deep_), 1);
    EXPECT_EQ(value(top_), 1);
    tree_.cascade(two_, GetParam(), false);
    EXPECT_EQ(value(two_), 0);
    EXPECT_EQ(value(top_), 1) << "a child without a box says nothing";
    tree_.cascade(one_, GetParam(), false);
    EXPECT_EQ(value(top_), 0);
}

TEST_P(CheckCascade, UncheckingOneOfTwoChildrenLeavesTheParentMixed) {
    tree_.cascade(top_, GetParam(), true);
    tree_.cascade(two_, GetParam(), false);
    EXPECT_EQ(value(top_), 2);
    EXPECT_EQ(top_->state & GetParam().mask(), GetParam().mask());
    EXPECT_EQ(value(tree_.root()), 2);
}

TEST_P(CheckCascade, ADeepChangeReachesEveryAncestor) {
    tree_.cascade(deep_, GetParam(), true);
    EXPECT_EQ(value(one_), 1);
    EXPECT_EQ(value(top_), 2);
    tree_.cascade(two_, GetParam(), true);
    EXPECT_EQ(value(top_), 1);
    EXPECT_EQ(value(tree_.root()), 1);
}

TEST_P(CheckCascade, AnAncestorWithoutAChildThatShowsABoxLosesBothBits) {
    deep_->state &= ~GetParam().box;
    tree_.cascade(deep_, GetParam(), true);
    EXPECT_EQ(one_->state & GetParam().mask(), 0U);
    EXPECT_EQ(value(one_), 0);
}

TEST_P(CheckCascade, AnAncestorCollectsBothBitsOfAMixedChild) {
    CTreeListItem* second = tree_.insert(one_, deep_, "second");
    tree_.cascade(top_, GetParam(), true);
    tree_.cascade(second, GetParam(), false);
    EXPECT_EQ(value(one_), 2);
    EXPECT_EQ(value(top_), 2);
}

TEST_P(CheckCascade, ARowThatLeavesTakesWhatItAloneGaveFromAllMixedAncestors) {
    CTreeListItem* second = tree_.insert(one_, deep_, "second");
    tree_.cascade(second, GetParam(), true);
    ASSERT_EQ(value(one_), 2);
    ASSERT_EQ(value(top_), 2);
    ItemTree::leaveUnion(second, GetParam());
    tree_.erase(second);
    EXPECT_EQ(value(one_), 0);
    EXPECT_EQ(value(top_), 0);
    EXPECT_EQ(value(tree_.root()), 0);
}

TEST_P(CheckCascade, ARowThatLeavesTakesNothingThatAnotherGivesToo) {
    CTreeListItem* three = tree_.insert(top_, two_, "three");
    tree_.cascade(two_, GetParam(), true);
    tree_.cascade(three, GetParam(), true);
    ItemTree::leaveUnion(three, GetParam());
    tree_.erase(three);
    EXPECT_EQ(value(top_), 2);
    two_->state &= ~GetParam().box;
    ItemTree::leaveUnion(two_, GetParam());
    EXPECT_EQ(value(top_), 2) << "a row without a box gave nothing";
}

TEST_P(CheckCascade, ARowThatComesMakesItsAncestorsMixedOrStandsForThemAlone) {
    CTreeListItem* row = tree_.insert(two_, nullptr, "row");
    ItemTree::setPair(row, GetParam(), true);
    ItemTree::joinUnion(row, GetParam());
    EXPECT_EQ(value(two_), 1);
    EXPECT_EQ(value(top_), 2);
    CTreeListItem* hidden = tree_.insert(one_, deep_, "no box");
    ItemTree::setPair(hidden, GetParam(), true);
    hidden->state &= ~GetParam().box;
    ItemTree::joinUnion(hidden, GetParam());
    EXPECT_EQ(value(one_), 0);
}

TEST_P(CheckCascade, TheOtherPairIsLeftAlone) {
    const StatePair other = GetParam().box == kCheckPair.box ? kLockPair : kCheckPair;
    tree_.cascade(top_, GetParam(), true);
    EXPECT_EQ(ItemTree::pairValue(top_, other), 0);
    EXPECT_EQ(ItemTree::pairValue(deep_, other), 0);
    EXPECT_EQ(deep_->state & other.mask(), other.off);
}

TEST_P(CheckCascade, ACheckOnTheHiddenRootReachesAllRows) {
    tree_.cascade(tree_.root(), GetParam(), true);
    for (const CTreeListItem* row : {top_, one_, two_, deep_}) {
        EXPECT_EQ(value(row), 1);
    }
}

INSTANTIATE_TEST_SUITE_P(Pairs, CheckCascade, ::testing::Values(kCheckPair, kLockPair),
                         [](const auto& info) { return info.param.box == kItemCheckBox ? "Check" : "Lock"; });

} // namespace
} // namespace fenmark::ui::treelist
