// Where the parts of a row lie, to the pixel, and what a point hits.
#include <gtest/gtest.h>

#include "ui/treelist/model/item_tree.h"
#include "ui/treelist/model/row_layout.h"
#include "ui/treelist/model/tree_list_codes.h"
#include "ui/treelist/model/tree_list_colors.h"

namespace fenmark::ui::treelist {
namespace {

constexpr std::uint32_t kAll =
    kStyleTree | kStyleTreeLines | kStyleRootLines | kStyleButtons | kStyleCheckBoxes | kStyleLockBoxes | kStyleImages;
const PixelRect kCell{100, 36, 200, 18};
const RowMetrics kAt96{};

class RowLayout : public ::testing::Test {
  protected:
    RowLayout() {
        top_ = tree_.insert(tree_.root(), nullptr, "top");
        child_ = tree_.insert(top_, nullptr, "child");
        grandchild_ = tree_.insert(child_, nullptr, "grandchild");
        for (CTreeListItem* row : {top_, child_, grandchild_}) {
            row->state |= kItemImage;
        }
    }
    ItemTree tree_;
    CTreeListItem* top_;
    CTreeListItem* child_;
    CTreeListItem* grandchild_;
};

TEST_F(RowLayout, EveryPartHasItsWidthAndPlace) {
    const RowParts parts = treeCellParts(*top_, kAll, kCell, kAt96);
    EXPECT_EQ(parts.lines, (PixelRect{100, 36, 2, 18}));
    EXPECT_EQ(parts.button, (PixelRect{102, 36, 16, 18}));
    EXPECT_EQ(parts.check, (PixelRect{118, 36, 16, 18}));
    EXPECT_EQ(parts.lock, (PixelRect{134, 36, 8, 18}));
    EXPECT_EQ(parts.image, (PixelRect{142, 36, 16, 18}));
    EXPECT_EQ(parts.text, (PixelRect{160, 36, 140, 18})) << "2 pixels stay free before the text";
}

TEST_F(RowLayout, EachLevelAboveOneIndents16Pixels) {
    EXPECT_EQ(treeCellParts(*child_, kAll, kCell, kAt96).button.x, 118);
    EXPECT_EQ(treeCellParts(*grandchild_, kAll, kCell, kAt96).button.x, 134);
    EXPECT_EQ(treePartsWidth(*grandchild_, kAll, kAt96), 2 + 32 + 16 + 16 + 8 + 16 + 2);
}

TEST_F(RowLayout, TheButtonTakes16PixelsWithLinesOrButtonsAndElseNone) {
    EXPECT_EQ(treeCellParts(*top_, kStyleTree | kStyleTreeLines, kCell, kAt96).button.width, 16);
    EXPECT_EQ(treeCellParts(*top_, kStyleTree | kStyleButtons, kCell, kAt96).button.width, 16);
    EXPECT_EQ(treeCellParts(*top_, kStyleTree | kStyleRootLines, kCell, kAt96).button.width, 0);
    EXPECT_EQ(treeCellParts(*top_, kStyleTree, kCell, kAt96).text.x, 102);
}

TEST_F(RowLayout, TwoMorePixelsAreTakenWithLockBoxesOrImagesOnlyEvenIfTheRowShowsNone) {
    top_->state &= ~(kItemCheckBox | kItemLockBox | kItemImage);
    EXPECT_EQ(treePartsWidth(*top_, kStyleTree | kStyleCheckBoxes, kAt96), 2);
    EXPECT_EQ(treePartsWidth(*top_, kStyleTree | kStyleLockBoxes, kAt96), 4);
    EXPECT_EQ(treePartsWidth(*top_, kStyleTree | kStyleImages, kAt96), 4);
    EXPECT_EQ(treePartsWidth(*top_, kStyleTree | kStyleLockBoxes | kStyleImages, kAt96), 4);
}

TEST_F(RowLayout, ABoxIsShownOnlyIfBothTheStyleAndTheRowSaySo) {
    EXPECT_TRUE(treeCellParts(*top_, kAll & ~std::uint32_t{kStyleCheckBoxes}, kCell, kAt96).check.isEmpty());
    top_->state &= ~std::uint32_t{kItemCheckBox};
    EXPECT_TRUE(treeCellParts(*top_, kAll, kCell, kAt96).check.isEmpty());
    EXPECT_EQ(treeCellParts(*top_, kAll, kCell, kAt96).lock.x, 118);
}

TEST_F(RowLayout, ANarrowColumnCutsTheLastParts) {
    const RowParts parts = treeCellParts(*grandchild_, kAll, {0, 0, 40, 18}, kAt96);
    EXPECT_EQ(parts.button, (PixelRect{34, 0, 6, 18}));
    EXPECT_TRUE(parts.check.isEmpty());
    EXPECT_TRUE(parts.text.isEmpty());
}

TEST_F(RowLayout, TheButtonIs9By9AroundTheCentreOfItsCell) {
    EXPECT_EQ(buttonSquare({102, 36, 16, 18}, kAt96), (PixelRect{106, 41, 9, 9}));
}

TEST_F(RowLayout, SizesScaleWithTheScreen) {
    const RowMetrics at144{1.5};
    EXPECT_EQ(treePartsWidth(*child_, kAll, at144), 3 + 24 + 24 + 24 + 12 + 24 + 3);
    EXPECT_EQ(at144.button() % 2, 1);
}

TEST_F(RowLayout, EveryPartIsHitFromItsFirstToItsLastPixel) {
    const RowParts parts = treeCellParts(*top_, kAll, kCell, kAt96);
    const auto flags = [&](int x) { return hitTestCell(*top_, kAll, parts, x, 40).flags; };
    EXPECT_EQ(flags(101), kHitRow);
    EXPECT_EQ(flags(102), kHitButton);
    EXPECT_EQ(flags(117), kHitButton);
    EXPECT_EQ(flags(118), kHitCheck);
    EXPECT_EQ(flags(133), kHitCheck);
    EXPECT_EQ(flags(134), kHitLock);
    EXPECT_EQ(flags(141), kHitLock);
    EXPECT_EQ(flags(142), kHitImage);
    EXPECT_EQ(flags(157), kHitImage);
    EXPECT_EQ(flags(158), kHitRow) << "the free pixels before the text";
    EXPECT_EQ(flags(160), kHitText);
    EXPECT_EQ(flags(299), kHitText);
}

TEST_F(RowLayout, ARowThatCannotHaveAButtonIsNotHitThere) {
    grandchild_->state |= kItemExpandedOnce;
    const RowParts parts = treeCellParts(*grandchild_, kAll, kCell, kAt96);
    EXPECT_EQ(hitTestCell(*grandchild_, kAll, parts, parts.button.x + 1, 40).flags, kHitRow);
    grandchild_->state &= ~std::uint32_t{kItemExpandedOnce};
    EXPECT_EQ(hitTestCell(*grandchild_, kAll, parts, parts.button.x + 1, 40).flags, kHitButton);
    top_->state |= kItemExpandedOnce;
    EXPECT_EQ(hitTestCell(*top_, kAll, treeCellParts(*top_, kAll, kCell, kAt96), 103, 40).flags, kHitButton)
        << "with children a row keeps its button";
}

TEST_F(RowLayout, LinesWithoutButtonsAreHitAsAButtonWhereARowCanHaveOne) {
    const std::uint32_t style = kStyleTree | kStyleTreeLines;
    const RowParts parts = treeCellParts(*top_, style, kCell, kAt96);
    EXPECT_EQ(hitTestCell(*top_, style, parts, 103, 40).flags, kHitButton);
    const RowParts leaf = treeCellParts(*grandchild_, style, kCell, kAt96);
    EXPECT_EQ(style, 0x10001U);
    EXPECT_EQ(hitTestCell(*grandchild_, style, leaf, leaf.button.x + 1, 40).flags, kHitButton) << "never expanded";
    grandchild_->state |= kItemExpandedOnce;
    EXPECT_EQ(hitTestCell(*grandchild_, style, leaf, leaf.button.x + 1, 40).flags, kHitRow);
}

TEST_F(RowLayout, AllOfAnotherColumnIsText) {
    const RowParts parts = plainCellParts(kCell);
    EXPECT_EQ(hitTestCell(*top_, kAll, parts, 100, 36).flags, kHitText);
    EXPECT_EQ(hitTestCell(*top_, kAll, parts, 100, 36).rect, kCell);
    EXPECT_EQ(hitTestCell(*top_, kAll, parts, 300, 36).flags, kHitRow);
}

TEST_F(RowLayout, ButtonsSayWhatARowCanDo) {
    EXPECT_EQ(buttonKind(*top_), ButtonKind::Plus);
    tree_.setExpanded(top_, true);
    EXPECT_EQ(buttonKind(*top_), ButtonKind::Minus);
    EXPECT_EQ(static_cast<int>(buttonKind(*grandchild_)), 4) << "never expanded, without children";
    tree_.setExpanded(grandchild_, true);
    EXPECT_EQ(buttonKind(*grandchild_), ButtonKind::None);
}

TEST(TreeListStyle, BitsWithoutTheirConditionAreCleared) {
    EXPECT_EQ(effectiveStyle(0xf00f1), 0xf00f1U) << "the style of the import dialog passes unchanged";
    EXPECT_EQ(effectiveStyle(0x70000 | kStyleCheckBoxes), std::uint32_t{kStyleCheckBoxes});
    EXPECT_EQ(effectiveStyle(0x1 | 0x70000), 0x70001U);
    EXPECT_EQ(effectiveStyle(0x5800), 0U);
    EXPECT_EQ(effectiveStyle(0x200 | 0x5800), 0x5a00U);
    EXPECT_EQ(effectiveStyle(0x2000), 0U);
    EXPECT_EQ(effectiveStyle(0x400 | 0x2000), 0x2400U);
    EXPECT_EQ(effectiveStyle(0x30000000), 0U);
    EXPECT_EQ(effectiveStyle(0x100 | 0x30000000), 0x30000100U);
    EXPECT_EQ(effectiveStyle(0xe0), 0xe0U);
}

TEST(TreeListColors, TheTableHasItsNineteenColoursInOrder) {
    const std::array<std::uint32_t, 19> table{0xffffe0, 0xfcfcfc, 0xf0f0f0, 0xf8f8f8, 0xc0c080, 0xcccccc, 0xc0c0c0,
                                              0xc8c8c8, 0xc08080, 0xa00000, 0xd00000, 0xd0a0a0, 0xe8e8e8, 0xf0f0f0,
                                              0xffffff, 0xe0e0e0, 0x00ff00, 0xd0d0d0, 0x808080};
    EXPECT_EQ(kTreeListColors, table);
    EXPECT_EQ(rgbOf(0xffffe0), (RgbColor{0xe0, 0xff, 0xff})) << "blue, green, red from the high byte down";
}

} // namespace
} // namespace fenmark::ui::treelist
