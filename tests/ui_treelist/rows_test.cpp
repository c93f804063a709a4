// Rows of the control: inserting, deleting, expanding, checks, locks, selection.
#include <stdexcept>

#include "ui_treelist/tree_list_fixture.h"

namespace fenmark::ui::treelist {
namespace {

TEST_F(TreeListTest, InsertItemWithASortedPositionAppends) {
    CTreeListItem* row = list_->InsertItem("0 would sort first", TLI_ROOT, TLI_SORT);
    EXPECT_EQ(list_->GetRootItem()->lastChild(), row);
    EXPECT_EQ(list_->GetSortChildItem(TLI_ROOT), row);
}

TEST_F(TreeListTest, InsertItemTakesFirstLastAndARowAsPlace) {
    CTreeListItem* first = list_->InsertItem("first", TLI_ROOT, TLI_FIRST);
    EXPECT_EQ(list_->GetChildItem(TLI_ROOT), first);
    CTreeListItem* behind = list_->InsertItem("behind a1", a_, a1_);
    EXPECT_EQ(list_->GetNextSiblingItem(a1_), behind);
    EXPECT_EQ(list_->GetPrevSiblingItem(a2_), behind);
}

TEST_F(TreeListTest, ARowThatIsNoChildOfTheParentPutsTheNewRowFirst) {
    CTreeListItem* row = list_->InsertItem("x", a_, b_);
    EXPECT_EQ(list_->GetChildItem(a_), row);
}

TEST_F(TreeListTest, InsertItemByIndexGoesWhereThatIndexIs) {
    CTreeListItem* row = list_->InsertItem(1, "x");
    EXPECT_EQ(list_->GetItemIndex(row), 1);
    EXPECT_EQ(row->parent(), a_);
    CTreeListItem* last = list_->InsertItem(list_->GetVisibleCount(), "last");
    EXPECT_EQ(list_->GetItemIndex(last), list_->GetVisibleCount() - 1);
    EXPECT_EQ(last->level(), 1U);
    EXPECT_THROW(list_->InsertItem(-1, "x"), std::invalid_argument);
    EXPECT_THROW(list_->InsertItem(99, "x"), std::invalid_argument);
}

TEST_F(TreeListTest, IndexesOutOfRangeRaiseInvalidArgumentButABadColumnWidthRaisesOutOfMemory) {
    EXPECT_THROW(list_->DeleteItem(99), std::invalid_argument);
    EXPECT_THROW(list_->Select(-1), std::invalid_argument);
    EXPECT_THROW(static_cast<void>(list_->GetColumnText(3)), std::invalid_argument);
    EXPECT_THROW(list_->SetItemText(a_, 3, "x"), std::invalid_argument);
    EXPECT_THROW(list_->SetColumnWidth(3, 10), std::bad_alloc);
    EXPECT_THROW(list_->SetColumnWidth(-1, 10), std::bad_alloc);
    EXPECT_TRUE(list_->GetItemText(a_, 3).isNull());
    EXPECT_FALSE(list_->GetItemText(a_, 2).isNull());
}

TEST_F(TreeListTest, NewRowsBeginWithTheDefaultTextsOfTheirColumns) {
    list_->SetColumnDefaultText(1, "―");
    CTreeListItem* row = list_->InsertItem("x");
    EXPECT_EQ(list_->GetItemText(row, 0), "x");
    EXPECT_EQ(list_->GetItemText(row, 1), "―");
    EXPECT_EQ(list_->GetItemText(row, 2), "");
}

TEST_F(TreeListTest, DeletingAColumnTakesItsTextsOutOfEveryRow) {
    list_->SetItemText(a_, 1, "1");
    list_->SetItemText(a_, 2, "2");
    list_->DeleteColumn(1);
    EXPECT_EQ(list_->GetItemText(a_, 1), "2");
    EXPECT_EQ(list_->GetColumnText(1), "Note");
    EXPECT_EQ(list_->GetColumnOrderArray(), (std::vector<int>{0, 1}));
}

TEST_F(TreeListTest, DeletingARowTakesItsSubtreeOutOfSelectionFocusAndCounts) {
    setStyle(kStyleMultiSelect);
    list_->SelectItem(a1_, 0);
    list_->SelectItem(b_, 0, 0);
    list_->ActiveItem(a1_, 0);
    list_->SetSelectionMark(a1_);
    list_->DeleteItem(a_);
    EXPECT_EQ(list_->GetSelectedCount(), 1);
    EXPECT_EQ(list_->GetSelectedItem(), b_);
    EXPECT_EQ(list_->GetSelectionMark(), nullptr);
    EXPECT_EQ(list_->GetFocusItem(), b_) << "the keyboard goes on beside it";
    EXPECT_EQ(list_->GetItemCount(), 2);
}

TEST_F(TreeListTest, DeletingTheOneUncheckedChildEndsTheMixedState) {
    list_->SetCheck(a_, 1);
    list_->SetCheck(a2_, 0);
    ASSERT_EQ(list_->GetCheck(a_), 2);
    list_->DeleteItem(a2_);
    EXPECT_EQ(list_->GetCheck(a_), 1);
}

TEST_F(TreeListTest, DeleteAllItemsLeavesAnEmptyControlThatCanBeFilledAgain) {
    list_->SelectItem(a11_, 0);
    list_->DeleteAllItems();
    EXPECT_EQ(list_->GetItemCount(), 0);
    EXPECT_EQ(list_->GetSelectedItem(), nullptr);
    EXPECT_EQ(list_->GetFocusItem(), nullptr);
    press(Qt::Key_Down);
    CTreeListItem* row = list_->InsertItem("again");
    list_->grab();
    EXPECT_EQ(list_->GetItemAtIndex(0), row);
}

TEST_F(TreeListTest, MoveAndExchangeRefuseToPutARowBelowItself) {
    EXPECT_FALSE(list_->MoveAfterItem(a_, a1_, TLI_LAST));
    EXPECT_FALSE(list_->MoveAfterItem(a_, a_, TLI_LAST));
    EXPECT_FALSE(list_->ExchangeItem(a_, a11_));
    EXPECT_TRUE(list_->MoveAfterItem(a1_, TLI_ROOT, b_));
    EXPECT_EQ(b_->nextSibling(), a1_);
    EXPECT_TRUE(list_->ExchangeItem(b_, c_));
    EXPECT_EQ(list_->GetRootItem()->lastChild(), b_);
}

TEST_F(TreeListTest, FlatListWalksFollowWhatIsShown) {
    EXPECT_EQ(list_->GetVisibleCount(), 5);
    EXPECT_EQ(list_->GetItemCount(), 6);
    EXPECT_EQ(list_->GetCount(), 6);
    EXPECT_EQ(list_->GetItemIndex(a11_), -1);
    EXPECT_EQ(list_->GetNextVisibleItem(a1_), a2_);
    EXPECT_EQ(list_->GetNextItem(a1_), a11_);
    EXPECT_EQ(list_->GetNextItem(TLI_ROOT), a_);
    EXPECT_EQ(list_->GetPrevVisibleItem(b_), a2_);
    EXPECT_EQ(list_->GetPrevVisibleItem(a_), nullptr);
    EXPECT_EQ(list_->GetFirstVisibleItem(), a_);
    EXPECT_EQ(list_->GetParentItem(a11_), a1_);
}

TEST_F(TreeListTest, TogglingAChildlessRowForTheFirstTimeSetsBothBitsAndItsButtonDisappears) {
    EXPECT_EQ(buttonKind(*b_), ButtonKind::Neutral);
    EXPECT_TRUE(list_->Expand(b_, ExpandCode::Toggle));
    EXPECT_EQ(list_->GetItemState(b_) & 0x6U, 0x6U);
    EXPECT_EQ(buttonKind(*b_), ButtonKind::None);
    EXPECT_EQ(window_.codes(), (std::vector<int>{-454, -455}));
    window_.heard.clear();
    EXPECT_TRUE(list_->Expand(b_, ExpandCode::Toggle)) << "success, and nothing happens";
    EXPECT_EQ(list_->GetItemState(b_) & 0x6U, 0x6U);
    EXPECT_TRUE(window_.heard.empty());
}

TEST_F(TreeListTest, ExpandingWhatIsExpandedDoesNothing) {
    EXPECT_TRUE(list_->Expand(a_, ExpandCode::Expand));
    EXPECT_TRUE(window_.heard.empty());
}

TEST_F(TreeListTest, AVetoOnExpandingLeavesTheRowAsItWas) {
    window_.answers[-454] = -1;
    EXPECT_FALSE(list_->Expand(a_, ExpandCode::Collapse));
    EXPECT_TRUE(a_->isExpanded());
    EXPECT_EQ(window_.codes(), std::vector<int>{-454});
    EXPECT_EQ(list_->GetVisibleCount(), 5);
}

TEST_F(TreeListTest, CollapseWithDeletionTakesAllChildren) {
    list_->SelectItem(a1_, 0);
    window_.heard.clear();
    EXPECT_TRUE(list_->Expand(a_, ExpandCode::CollapseReset));
    EXPECT_FALSE(list_->ItemHasChildren(a_));
    EXPECT_EQ(list_->GetItemState(a_) & 0x6U, 0x4U);
    EXPECT_EQ(list_->GetItemCount(), 3);
    EXPECT_EQ(list_->GetSelectedCount(), 0);
    EXPECT_EQ(window_.codes(), (std::vector<int>{-454, -455}));
}

TEST_F(TreeListTest, AParentThatDeletesTheRowWhileItExpandsDoesNoHarm) {
    window_.act = [&](const TreeListNotification& n) {
        if (n.code == -454) {
            list_->DeleteItem(n.item);
        }
    };
    list_->Expand(a_, ExpandCode::Collapse);
    EXPECT_EQ(list_->GetItemCount(), 2);
}

TEST_F(TreeListTest, ARowCanBeFilledWhenItIsAboutToExpand) {
    window_.act = [&](const TreeListNotification& n) {
        if (n.code == -454 && n.item == b_) {
            list_->InsertItem("late", b_);
        }
    };
    click(b_, kHitButton);
    EXPECT_EQ(list_->GetVisibleCount(), 6);
    EXPECT_EQ(buttonKind(*b_), ButtonKind::Minus);
}

TEST_F(TreeListTest, CheckingAParentReachesAChildWithoutBoxAndTheParentSaysWhatTheChildWithABoxSays) {
    list_->SetItemState(a2_, 0, kItemCheckBox);
    click(a_, kHitCheck);
    EXPECT_EQ(list_->GetCheck(a2_), 1);
    EXPECT_EQ(list_->GetCheck(a11_), 1);
    EXPECT_EQ(list_->GetCheck(a_), 1);
    click(a1_, kHitCheck);
    EXPECT_EQ(list_->GetCheck(a2_), 1);
    EXPECT_EQ(list_->GetCheck(a_), 0);
}

TEST_F(TreeListTest, UncheckingOneOfTwoChildrenShowsTheParentMixed) {
    click(a_, kHitCheck);
    click(a2_, kHitCheck);
    EXPECT_EQ(list_->GetCheck(a_), 2);
    EXPECT_EQ(list_->GetCheck(a1_), 1);
}

TEST_F(TreeListTest, AClickOnAMixedParentUnchecksItAndAllItsDescendants) {
    list_->SetCheck(a11_, 1);
    ASSERT_EQ(list_->GetCheck(a_), 2);
    window_.heard.clear();
    click(a_, kHitCheck);
    for (const CTreeListItem* row : {a_, a1_, a11_, a2_}) {
        EXPECT_EQ(list_->GetCheck(row), 0);
    }
    ASSERT_EQ(window_.codes(), std::vector<int>{-427});
    EXPECT_EQ(window_.heard[0].item, a_);
    EXPECT_EQ(window_.heard[0].column, 0);
    EXPECT_EQ(window_.heard[0].control, list_);
}

TEST_F(TreeListTest, SetCheckCascadesWithoutNotificationEvenWhereClicksChangeTheRowOnly) {
    setStyle(kStyleCheckRowOnly | kStyleLockRowOnly);
    list_->SetCheck(a_, 1);
    list_->SetLock(a1_, 1);
    EXPECT_EQ(list_->GetCheck(a11_), 1);
    EXPECT_EQ(list_->GetLock(a11_), 1);
    EXPECT_EQ(list_->GetLock(a_), 2);
    EXPECT_TRUE(window_.heard.empty());
}

TEST_F(TreeListTest, WithStyleBit30AClickOnACheckBoxChangesItsRowAlone) {
    setStyle(kStyleCheckRowOnly);
    click(a_, kHitCheck);
    EXPECT_EQ(list_->GetCheck(a_), 1);
    EXPECT_EQ(list_->GetCheck(a1_), 0);
    EXPECT_TRUE(window_.heard.empty());
    click(a1_, kHitCheck);
    EXPECT_EQ(list_->GetCheck(a_), 1);
}

TEST_F(TreeListTest, ALockIsNotifiedFirstAndCanBeVetoed) {
    window_.act = [&](const TreeListNotification& n) {
        EXPECT_EQ(n.code, -428);
        EXPECT_EQ(list_->GetLock(a_), 0) << "not changed yet";
    };
    window_.answers[-428] = -1;
    click(a_, kHitLock);
    EXPECT_EQ(list_->GetLock(a_), 0);
    window_.answers.clear();
    click(a_, kHitLock);
    EXPECT_EQ(list_->GetLock(a_), 1);
    EXPECT_EQ(list_->GetLock(a11_), 1);
    EXPECT_EQ(window_.codes(), (std::vector<int>{-428, -428}));
}

TEST_F(TreeListTest, WithStyleBit31ALockChangesItsRowAloneAfterTheNotification) {
    setStyle(kStyleLockRowOnly);
    click(a_, kHitLock);
    EXPECT_EQ(list_->GetLock(a_), 1);
    EXPECT_EQ(list_->GetLock(a1_), 0);
    EXPECT_EQ(window_.codes(), std::vector<int>{-428});
    window_.answers[-428] = -1;
    click(a_, kHitLock);
    EXPECT_EQ(list_->GetLock(a_), 1);
}

TEST_F(TreeListTest, AVetoOfTheSelectionLeavesItAsItWas) {
    list_->SelectItem(a_, 0);
    window_.heard.clear();
    window_.answers[-450] = -1;
    EXPECT_FALSE(list_->SelectItem(b_, 1));
    EXPECT_EQ(list_->GetSelectedItem(), a_);
    EXPECT_EQ(list_->GetFocusItem(), a_);
    EXPECT_EQ(list_->GetSelectColumn(), 0);
    EXPECT_EQ(window_.codes(), std::vector<int>{-450});
    click(c_);
    EXPECT_EQ(list_->GetSelectedItem(), a_);
    EXPECT_FALSE(list_->SelectItem(nullptr));
    EXPECT_EQ(list_->GetSelectedCount(), 1);
}

TEST_F(TreeListTest, ClearingASelectionIsToldAlsoWhereNothingWasSelected) {
    list_->SelectItem(nullptr);
    window_.heard.clear();
    EXPECT_TRUE(list_->SelectItem(nullptr));
    EXPECT_EQ(window_.codes(), (std::vector<int>{-450, -451}));
}

TEST_F(TreeListTest, ReselectingTheSameSingleRowAndColumnOnlyScrolls) {
    list_->SelectItem(a_, 1);
    window_.heard.clear();
    EXPECT_TRUE(list_->SelectItem(a_, 1));
    EXPECT_TRUE(window_.heard.empty());
    list_->SelectItem(a_, 0);
    EXPECT_EQ(window_.codes(), (std::vector<int>{-450, -451}));
}

TEST_F(TreeListTest, SeveralRowsAreSelectedWithModeZeroTheLastOneFirst) {
    setStyle(kStyleMultiSelect);
    list_->SelectItem(a_, 0);
    list_->SelectItem(b_, 0, 0);
    list_->SelectItem(c_, 0, 0);
    EXPECT_EQ(list_->GetSelectedCount(), 3);
    int position = list_->GetFirstSelectedItemPosition();
    EXPECT_EQ(list_->GetNextSelectedItem(position), c_);
    EXPECT_EQ(list_->GetNextSelectedItem(position), b_);
    EXPECT_EQ(list_->GetNextSelectedItem(position), a_);
    EXPECT_EQ(position, -1);
    list_->SelectItem(b_, 0, 0);
    EXPECT_EQ(list_->GetSelectedCount(), 2);
    EXPECT_EQ(list_->GetItemState(b_) & kItemSelected, 0U);
    list_->SelectItem(a_, 0, 1);
    EXPECT_EQ(list_->GetSelectedCount(), 1);
    list_->SelectItem(nullptr);
    EXPECT_EQ(list_->GetSelectedCount(), 0);
    EXPECT_EQ(list_->GetFirstSelectedItemPosition(), -1);
}

TEST_F(TreeListTest, WithoutSeveralRowsTheOldRowIsDroppedWhateverTheMode) {
    list_->SelectItem(a_, 0);
    list_->SelectItem(b_, 0, 0);
    EXPECT_EQ(list_->GetSelectedCount(), 1);
    EXPECT_EQ(list_->GetSelectedItem(), b_);
    EXPECT_EQ(list_->GetItemState(a_) & kItemSelected, 0U);
}

TEST_F(TreeListTest, SettingTheSelectedBitFollowsIntoTheSelection) {
    list_->SelectItem(a_, 0);
    list_->SetItemState(b_, kItemSelected, kItemSelected);
    EXPECT_EQ(list_->GetSelectedItem(), b_);
    EXPECT_EQ(list_->GetSelectedCount(), 1);
    list_->SetItemState(b_, 0, kItemSelected);
    EXPECT_EQ(list_->GetSelectedCount(), 0);
}

TEST_F(TreeListTest, EnsureVisibleExpandsParentsAndScrolls) {
    for (int i = 0; i < 200; ++i) {
        list_->InsertItem(QString::number(i));
    }
    CTreeListItem* last = list_->GetRootItem()->lastChild();
    list_->EnsureVisible(last);
    EXPECT_EQ(list_->GetTopIndex(), list_->GetVisibleCount() - list_->GetCountPerPage());
    list_->EnsureVisible(a11_);
    EXPECT_TRUE(a1_->isExpanded());
    EXPECT_EQ(list_->GetTopIndex(), list_->GetItemIndex(a11_));
    EXPECT_EQ(list_->GetFirstVisibleItem(), a11_);
}

TEST_F(TreeListTest, ImagesDataAndStateAreKeptAsGiven) {
    list_->SetItemImage(a_, 4, 5, 6, 7);
    EXPECT_EQ(list_->GetItemImage(a_), 4);
    EXPECT_EQ(list_->GetItemImage(a_, ItemImage::ExpandedSelected), 7);
    list_->SetItemData(a_, 0xdeadbeef);
    EXPECT_EQ(list_->GetItemData(a_), 0xdeadbeefU);
    EXPECT_EQ(list_->GetState() & kControlCreated, std::uint32_t{kControlCreated});
    EXPECT_EQ(list_->GetState() & kControlEnabled, std::uint32_t{kControlEnabled});
}

TEST_F(TreeListTest, TheSignalCanLowerTheAnswer) {
    QObject::connect(list_, &CTreeListCtrl::notified, list_, [](const TreeListNotification& n, int* answer) {
        if (n.code == -450) {
            *answer = -1;
        }
    });
    EXPECT_FALSE(list_->SelectItem(a_));
    EXPECT_EQ(list_->GetSelectedCount(), 0);
}

TEST_F(TreeListTest, AControlTakesThePlaceOfAChildWindow) {
    QWidget window;
    auto* child = new QWidget(&window);
    child->setObjectName("208");
    child->setGeometry(5, 6, 70, 80);
    auto* list = new CTreeListCtrl;
    EXPECT_EQ(list->GetState() & kControlCreated, 0U);
    EXPECT_TRUE(list->AttachTo(child));
    EXPECT_EQ(list->parentWidget(), &window);
    EXPECT_EQ(list->geometry(), QRect(5, 6, 70, 80));
    EXPECT_EQ(list->objectName(), "208");
    EXPECT_NE(list->GetHeaderCtrl(), nullptr);
    EXPECT_FALSE(list->Create(0, QRect(), &window)) << "set-up happens once";
}

TEST_F(TreeListTest, CollapseWithDeletionLeavesARowAloneThatIsCollapsedAlready) {
    list_->Expand(a1_, ExpandCode::Expand);
    list_->Expand(a1_, ExpandCode::Collapse);
    window_.heard.clear();
    EXPECT_TRUE(list_->Expand(a1_, ExpandCode::CollapseReset));
    EXPECT_TRUE(list_->ItemHasChildren(a1_)) << "the wanted state holds already";
    EXPECT_TRUE(window_.heard.empty());
}

TEST_F(TreeListTest, TheHiddenRootNeitherExpandsNorIsSelected) {
    EXPECT_FALSE(list_->Expand(TLI_ROOT, ExpandCode::Collapse));
    list_->SetItemState(list_->GetRootItem(), kItemSelected, kItemSelected);
    EXPECT_EQ(list_->GetSelectedCount(), 0);
    list_->ActiveItem(list_->GetRootItem());
    EXPECT_EQ(list_->GetFocusItem(), nullptr);
}

TEST_F(TreeListTest, ParentsFollowARowThatMovesAwayAndARowThatComes) {
    list_->SetCheck(a2_, 1);
    ASSERT_EQ(list_->GetCheck(a_), 2);
    list_->MoveAfterItem(a2_, b_, TLI_LAST);
    EXPECT_EQ(list_->GetCheck(a_), 0) << "the one checked child went";
    EXPECT_EQ(list_->GetCheck(b_), 1) << "the only child is checked";
    list_->MoveAfterItem(a1_, b_, TLI_LAST);
    EXPECT_EQ(list_->GetCheck(b_), 2);
    EXPECT_EQ(list_->GetCheck(list_->GetRootItem()), 2);
    list_->ExchangeItem(a1_, c_);
    EXPECT_EQ(list_->GetCheck(b_), 2) << "one unchecked child for another";
    list_->SetCheck(a1_, 1);
    list_->ExchangeItem(a1_, c_);
    EXPECT_EQ(list_->GetCheck(b_), 1);
    EXPECT_TRUE(window_.heard.empty());
}

TEST_F(TreeListTest, ParentsStayAsTheyAreWhereClicksChangeARowOnly) {
    list_->SetCheck(a2_, 1);
    setStyle(kStyleCheckRowOnly);
    list_->MoveAfterItem(a2_, b_, TLI_LAST);
    EXPECT_EQ(list_->GetCheck(a_), 2);
    EXPECT_EQ(list_->GetCheck(b_), 0);
}

TEST_F(TreeListTest, RowsPutIntoAnEmptiedControlDoNotInheritFromTheRowsThatWent) {
    list_->SetCheck(list_->GetRootItem(), 1);
    list_->SetLock(list_->GetRootItem(), 1);
    list_->DeleteAllItems();
    EXPECT_EQ(list_->GetItemState(list_->InsertItem("new")), 0x2020030U);
}

TEST_F(TreeListTest, SelectedRowsAreDeletedAllAtOnceOrOneByOne) {
    setStyle(kStyleMultiSelect);
    for (CTreeListItem* row : {a_, b_, c_}) {
        list_->SelectItem(row, 0, 0);
    }
    list_->DeleteItem(list_->GetSelectedItem());
    EXPECT_EQ(list_->GetSelectedItem(), b_);
    list_->DeleteItem(a_);
    EXPECT_EQ(list_->GetSelectedCount(), 1);
    list_->SelectItem(list_->InsertItem("d"), 0, 0);
    list_->DeleteAllItems();
    EXPECT_EQ(list_->GetSelectedCount(), 0);
    EXPECT_EQ(list_->GetFirstSelectedItemPosition(), -1);
}

TEST_F(TreeListTest, WhenSeveralRowsCanNoLongerBeSelectedTheFirstOfThemStays) {
    setStyle(kStyleMultiSelect);
    for (CTreeListItem* row : {a_, b_, c_}) {
        list_->SelectItem(row, 0, 0);
    }
    list_->SetStyle(kTree);
    EXPECT_EQ(list_->GetSelectedCount(), 1);
    EXPECT_EQ(list_->GetSelectedItem(), c_);
    EXPECT_EQ(list_->GetItemState(a_) & kItemSelected, 0U);
    EXPECT_EQ(list_->GetItemState(c_) & kItemSelected, std::uint32_t{kItemSelected});
}

TEST_F(TreeListTest, AControlThatIsDeletedWithAnOpenEditorOrADragInItsHeaderCallsNobodyBack) {
    list_->SetColumnModify(0, 1);
    ASSERT_TRUE(list_->BeginModify(b_, 0));
    window_.heard.clear();
    delete list_;
    QApplication::processEvents();
    EXPECT_TRUE(window_.heard.empty());
    list_ = new CTreeListCtrl(&window_);
    list_->Create(kTree, QRect(0, 0, 300, 200), &window_);
    list_->InsertColumn("Name", kColumnInitialFormat, 200);
    list_->show();
    QTest::mousePress(list_->GetHeaderCtrl(), Qt::LeftButton, Qt::NoModifier, QPoint(199, 8));
    ASSERT_TRUE(list_->GetHeaderCtrl()->isDragging());
    delete list_;
    QApplication::processEvents();
    EXPECT_TRUE(window_.heard.empty());
}

} // namespace
} // namespace fenmark::ui::treelist
