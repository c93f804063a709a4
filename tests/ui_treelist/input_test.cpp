// What the mouse and the keys do.
#include <QScrollBar>

#include "support/pointer.h"
#include "ui_treelist/tree_list_fixture.h"

namespace fenmark::ui::treelist {
namespace {

TEST_F(TreeListTest, AClickOnTheEmptyAreaClearsTheSelection) {
    click(a_);
    ASSERT_EQ(list_->GetSelectedItem(), a_);
    QTest::mouseClick(list_->viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(20, 250));
    EXPECT_EQ(list_->GetSelectedCount(), 0);
}

TEST_F(TreeListTest, AClickOnAButtonExpandsAndCollapsesWithNotifications) {
    click(a1_, kHitButton);
    EXPECT_TRUE(a1_->isExpanded());
    click(a1_, kHitButton);
    EXPECT_FALSE(a1_->isExpanded());
    EXPECT_EQ(window_.codes(), (std::vector<int>{-454, -455, -454, -455}));
    EXPECT_EQ(list_->GetSelectedCount(), 0) << "a button does not select";
}

TEST_F(TreeListTest, TwoQuickClicksOnACheckBoxFlipItTwice) {
    const QPoint point = at(a_, kHitCheck);
    QTest::mouseClick(list_->viewport(), Qt::LeftButton, Qt::NoModifier, point);
    QTest::mouseDClick(list_->viewport(), Qt::LeftButton, Qt::NoModifier, point);
    EXPECT_EQ(window_.countOf(-427), 2);
    EXPECT_EQ(list_->GetCheck(a_), 0);
    EXPECT_EQ(list_->GetSelectedCount(), 0);
}

TEST_F(TreeListTest, ClicksOnBoxesLeaveTheSelectionAlone) {
    click(b_);
    click(a_, kHitCheck);
    click(a_, kHitLock);
    EXPECT_EQ(list_->GetSelectedItem(), b_);
}

TEST_F(TreeListTest, ADoubleClickOnTextTogglesExpansionInTreeModeOnly) {
    doubleClick(a1_);
    EXPECT_TRUE(a1_->isExpanded());
    doubleClick(a1_);
    EXPECT_FALSE(a1_->isExpanded());
    list_->SetStyle(kStyleHeader);
    doubleClick(a1_);
    EXPECT_FALSE(a1_->isExpanded());
}

TEST_F(TreeListTest, ADoubleClickOnAnImageTogglesExpansion) {
    setStyle(kStyleImages);
    list_->SetItemState(a1_, kItemImage, kItemImage);
    doubleClick(a1_, kHitImage);
    EXPECT_TRUE(a1_->isExpanded());
}

TEST_F(TreeListTest, AClickSelectsTheRowAndItsColumn) {
    click(b_, kHitText, 2);
    EXPECT_EQ(list_->GetSelectedItem(), b_);
    EXPECT_EQ(list_->GetSelectColumn(), 2);
    ASSERT_EQ(window_.codes(), (std::vector<int>{-450, -451}));
    EXPECT_EQ(window_.heard[1].item, b_);
    EXPECT_EQ(window_.heard[1].column, 2);
}

TEST_F(TreeListTest, WithCtrlARowTogglesInTheSelectionAndASelectedRowBecomesActiveWithout) {
    setStyle(kStyleMultiSelect);
    click(a_);
    click(b_, kHitText, 0, Qt::ControlModifier);
    click(c_, kHitText, 0, Qt::ControlModifier);
    EXPECT_EQ(list_->GetSelectedCount(), 3);
    window_.heard.clear();
    click(a_, kHitText, 1);
    EXPECT_EQ(list_->GetSelectedCount(), 3) << "the others stay";
    EXPECT_EQ(list_->GetFocusItem(), a_);
    EXPECT_EQ(list_->GetSelectColumn(), 1);
    EXPECT_TRUE(window_.heard.empty());
    click(b_, kHitText, 0, Qt::ControlModifier);
    EXPECT_EQ(list_->GetSelectedCount(), 2);
    click(b_);
    EXPECT_EQ(list_->GetSelectedCount(), 1);
}

TEST_F(TreeListTest, OtherButtonsOfTheMouseChangeNothing) {
    QTest::mouseClick(list_->viewport(), Qt::RightButton, Qt::NoModifier, at(a_, kHitCheck));
    EXPECT_TRUE(window_.heard.empty());
}

TEST_F(TreeListTest, TheHitTestTellsRowColumnFlagsAndRectangle) {
    int flags = 0;
    int column = -1;
    QRect rect;
    EXPECT_EQ(list_->HitTest(at(a1_, kHitCheck), &flags, &column, &rect), a1_);
    EXPECT_EQ(flags, kHitCheck);
    EXPECT_EQ(column, 0);
    const QRect row = list_->GetItemRect(a1_);
    EXPECT_EQ(rect, QRect(2 + 16 + 16, row.y(), 16, row.height()));
    EXPECT_EQ(list_->HitTest(QPoint(450, row.center().y()), &flags, &column, &rect), a1_) << "right of all columns";
    EXPECT_EQ(flags, kHitRow);
    EXPECT_EQ(column, -1);
    EXPECT_EQ(list_->HitTest(QPoint(10, 280), &flags, &column), nullptr);
    EXPECT_EQ(flags, kHitNowhere);
    EXPECT_EQ(list_->HitTest(QPoint(-1, 5)), nullptr);
}

TEST_F(TreeListTest, UpDownHomeEndAndPagesMoveTheFocusRowAndKeepTheColumn) {
    for (int i = 0; i < 100; ++i) {
        list_->InsertItem(QString::number(i));
    }
    list_->SelectItem(a_, 1);
    press(Qt::Key_Down);
    EXPECT_EQ(list_->GetSelectedItem(), a1_);
    press(Qt::Key_Down);
    EXPECT_EQ(list_->GetSelectedItem(), a2_);
    press(Qt::Key_Up);
    EXPECT_EQ(list_->GetSelectedItem(), a1_);
    EXPECT_EQ(list_->GetSelectColumn(), 1);
    EXPECT_EQ(list_->GetSelectedCount(), 1);
    press(Qt::Key_End);
    EXPECT_EQ(list_->GetItemIndex(list_->GetSelectedItem()), list_->GetVisibleCount() - 1);
    press(Qt::Key_Down);
    EXPECT_EQ(list_->GetItemIndex(list_->GetSelectedItem()), list_->GetVisibleCount() - 1);
    press(Qt::Key_Home);
    EXPECT_EQ(list_->GetSelectedItem(), a_);
    EXPECT_EQ(list_->GetTopIndex(), 0);
    press(Qt::Key_PageDown);
    EXPECT_EQ(list_->GetItemIndex(list_->GetSelectedItem()), list_->GetCountPerPage() - 1);
    press(Qt::Key_PageUp);
    EXPECT_EQ(list_->GetSelectedItem(), a_);
}

TEST_F(TreeListTest, AVetoHoldsTheKeysToo) {
    list_->SelectItem(a_, 0);
    window_.answers[-450] = -1;
    press(Qt::Key_Down);
    EXPECT_EQ(list_->GetSelectedItem(), a_);
}

TEST_F(TreeListTest, LeftAndRightMoveTheFocusColumnThroughTheShownOrder) {
    list_->SetColumnOrderArray({2, 0, 1});
    list_->SelectItem(a_, 2);
    press(Qt::Key_Right);
    EXPECT_EQ(list_->GetSelectColumn(), 0);
    press(Qt::Key_Right);
    EXPECT_EQ(list_->GetSelectColumn(), 1);
    press(Qt::Key_Right);
    EXPECT_EQ(list_->GetSelectColumn(), 1) << "the last stays";
    press(Qt::Key_Left);
    EXPECT_EQ(list_->GetSelectColumn(), 0);
    EXPECT_EQ(list_->GetSelectedItem(), a_);
}

TEST_F(TreeListTest, ShiftLeftAndRightCollapseAndExpandInTreeMode) {
    list_->SelectItem(a_, 0);
    press(Qt::Key_Left, Qt::ShiftModifier);
    EXPECT_FALSE(a_->isExpanded());
    press(Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_TRUE(a_->isExpanded());
    EXPECT_EQ(list_->GetSelectColumn(), 0);
    list_->SetStyle(kStyleHeader);
    press(Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_EQ(list_->GetSelectColumn(), 1) << "without tree mode they move the column";
}

TEST_F(TreeListTest, NumpadPlusAndMinusExpandAndCollapseInTreeMode) {
    list_->SelectItem(a_, 0);
    press(Qt::Key_Minus, Qt::KeypadModifier);
    EXPECT_FALSE(a_->isExpanded());
    press(Qt::Key_Plus, Qt::KeypadModifier);
    EXPECT_TRUE(a_->isExpanded());
    list_->SetStyle(kStyleHeader);
    press(Qt::Key_Minus, Qt::KeypadModifier);
    EXPECT_TRUE(a_->isExpanded());
}

TEST_F(TreeListTest, SpaceTogglesTheFocusRowInTreeMode) {
    list_->SelectItem(a_, 0);
    press(Qt::Key_Space);
    EXPECT_FALSE(a_->isExpanded());
    press(Qt::Key_Space);
    EXPECT_TRUE(a_->isExpanded());
    EXPECT_EQ(list_->GetCheck(a_), 0);
}

TEST_F(TreeListTest, BoxesCanBeFlippedWithoutAMouse) {
    list_->SelectItem(a_, 0);
    window_.heard.clear();
    press(Qt::Key_Space, Qt::ControlModifier);
    EXPECT_EQ(list_->GetCheck(a_), 1);
    press(Qt::Key_Space, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(list_->GetLock(a_), 1);
    EXPECT_EQ(window_.codes(), (std::vector<int>{-427, -428}));
    press(Qt::Key_Insert);
    EXPECT_EQ(list_->GetCheck(a_), 0) << "a key that no input method takes";
    press(Qt::Key_Insert, Qt::ShiftModifier);
    EXPECT_EQ(list_->GetLock(a_), 0);
    list_->Expand(b_, ExpandCode::Toggle);
    list_->SelectItem(b_, 0);
    press(Qt::Key_Space);
    EXPECT_EQ(list_->GetCheck(b_), 1) << "a row with nothing to expand is ticked by Space";
    list_->SetItemState(b_, 0, kItemCheckBox);
    press(Qt::Key_Space);
    EXPECT_EQ(list_->GetCheck(b_), 1) << "but not if it shows no box";
}

TEST_F(TreeListTest, CollapsingTakesTheFocusRowToTheCollapsedRow) {
    list_->SelectItem(a2_, 0);
    list_->Expand(a_, ExpandCode::Collapse);
    EXPECT_EQ(list_->GetFocusItem(), a_);
    press(Qt::Key_Down);
    EXPECT_EQ(list_->GetSelectedItem(), b_);
}

TEST_F(TreeListTest, EnterAndEscapeAreLeftToTheWindowWhileNothingIsEdited) {
    struct Keys : QObject {
        bool eventFilter(QObject*, QEvent* event) override {
            count += event->type() == QEvent::KeyPress ? 1 : 0;
            return false;
        }
        int count = 0;
    } keys;
    window_.installEventFilter(&keys);
    press(Qt::Key_Return);
    press(Qt::Key_Escape);
    press(Qt::Key_F2);
    EXPECT_EQ(keys.count, 3);
    press(Qt::Key_Down);
    EXPECT_EQ(keys.count, 3);
}

TEST_F(TreeListTest, KeysOnAnEmptyListDoNoHarm) {
    list_->DeleteAllItems();
    for (const Qt::Key key : {Qt::Key_Up, Qt::Key_Down, Qt::Key_Home, Qt::Key_End, Qt::Key_PageUp, Qt::Key_PageDown,
                              Qt::Key_Space, Qt::Key_Left, Qt::Key_Right, Qt::Key_Plus}) {
        press(key);
    }
    EXPECT_EQ(list_->GetSelectedCount(), 0);
}

TEST_F(TreeListTest, ADoubleClickOnARowThatScrollsIntoViewMeansThatRow) {
    for (int i = 0; i < 100; ++i) {
        list_->InsertItem(QString::number(i));
    }
    list_->SetItemHeight(19);
    QApplication::processEvents();
    const int view = list_->viewport()->height();
    ASSERT_NE(view % 19, 0) << "the last row is cut";
    CTreeListItem* cut = list_->GetItemAtIndex(list_->GetCountPerPage());
    const QPoint point(150, view - 1);
    ASSERT_EQ(list_->HitTest(point), cut);
    QTest::mouseClick(list_->viewport(), Qt::LeftButton, Qt::NoModifier, point);
    EXPECT_EQ(list_->GetTopIndex(), 1);
    QTest::mouseDClick(list_->viewport(), Qt::LeftButton, Qt::NoModifier, point);
    EXPECT_EQ(list_->GetSelectedItem(), cut);
    EXPECT_TRUE(cut->isExpanded());
}

TEST_F(TreeListTest, TheWheelScrollsByRows) {
    for (int i = 0; i < 100; ++i) {
        list_->InsertItem(QString::number(i));
    }
    QApplication::processEvents();
    QWheelEvent wheel(QPointF(50, 50), list_->viewport()->mapToGlobal(QPointF(50, 50)), QPoint(), QPoint(0, -120),
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(list_->viewport(), &wheel);
    EXPECT_EQ(list_->GetTopIndex(), QApplication::wheelScrollLines());
}

TEST_F(TreeListTest, ADisabledControlTakesNoInput) {
    const QPoint point = at(a_, kHitCheck);
    list_->setEnabled(false);
    EXPECT_EQ(list_->GetState() & kControlEnabled, 0U);
    QTest::mouseClick(list_->viewport(), Qt::LeftButton, Qt::NoModifier, point);
    EXPECT_EQ(list_->GetCheck(a_), 0);
    list_->SetState(kControlEnabled, kControlEnabled);
    EXPECT_TRUE(list_->isEnabled());
}

TEST_F(TreeListTest, AHundredThousandRowsAreSelectedDroppedAndDeletedWithoutDelay) {
    setStyle(kStyleMultiSelect);
    for (int i = 0; i < 100000; ++i) {
        list_->InsertItem("row");
    }
    for (CTreeListItem* row = a_; row; row = row->nextSibling()) {
        list_->SelectItem(row, 0, 0);
    }
    EXPECT_EQ(list_->GetSelectedCount(), 100003);
    EXPECT_EQ(list_->GetSelectedItem(), list_->GetRootItem()->lastChild());
    list_->SelectItem(a_, 0);
    EXPECT_EQ(list_->GetSelectedCount(), 1);
    list_->DeleteAllItems();
    EXPECT_EQ(list_->GetItemCount(), 0);
}

TEST_F(TreeListTest, TheTipShowsACutTextAndGoesWithThePointer) {
    list_->SetItemText(a_, 1, "a text that is much too long for its column");
    test::hover(list_->viewport(), at(a_, kHitText, 1));
    auto* tip = list_->findChild<QWidget*>("Tresslib.TreeListTipCtrl");
    ASSERT_NE(tip, nullptr);
    EXPECT_FALSE(tip->isVisible()) << "only when the pointer rests";
    constexpr int kRest = 400; // ms
    constexpr int kFadeStep = 25;
    EXPECT_EQ(runningTimers(tip), std::set<int>{kRest});
    fireTimer(tip, kRest);
    EXPECT_TRUE(tip->isVisible());
    test::hover(list_->viewport(), at(b_, kHitText, 1));
    for (int step = 0; step < 100 && tip->isVisible(); ++step) {
        fireTimer(tip, kFadeStep);
    }
    EXPECT_FALSE(tip->isVisible());
    EXPECT_EQ(runningTimers(tip), std::set<int>{});
}

class SeveralRowsTest : public TreeListTest {
  protected:
    SeveralRowsTest() {
        setStyle(kStyleMultiSelect);
        list_->SelectItem(a1_, 0);
        window_.heard.clear();
    }
    [[nodiscard]] std::vector<const CTreeListItem*> selected() const {
        std::vector<const CTreeListItem*> rows;
        for (int position = list_->GetFirstSelectedItemPosition(); position >= 0;) {
            rows.push_back(list_->GetNextSelectedItem(position));
        }
        return rows;
    }
    using Rows = std::vector<const CTreeListItem*>;
};

TEST_F(SeveralRowsTest, ShiftWithAKeySelectsFromTheMarkToTheRow) {
    press(Qt::Key_Down, Qt::ShiftModifier);
    press(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(selected(), (Rows{b_, a2_, a1_})) << "the row that the key went to comes first";
    EXPECT_EQ(list_->GetFocusItem(), b_);
    EXPECT_EQ(list_->GetSelectionMark(), a1_);
    EXPECT_EQ(window_.codes(), (std::vector<int>{-450, -451, -450, -451}));
    press(Qt::Key_Home, Qt::ShiftModifier);
    EXPECT_EQ(selected(), (Rows{a_, a1_})) << "on the other side of the mark";
    press(Qt::Key_End, Qt::ShiftModifier);
    EXPECT_EQ(selected(), (Rows{c_, b_, a2_, a1_}));
    press(Qt::Key_Up);
    EXPECT_EQ(selected(), Rows{b_}) << "without Shift the row alone";
    EXPECT_EQ(list_->GetSelectionMark(), b_);
}

TEST_F(SeveralRowsTest, AVetoHoldsARangeToo) {
    window_.answers[-450] = -1;
    press(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(selected(), Rows{a1_});
    EXPECT_EQ(list_->GetFocusItem(), a1_);
    EXPECT_EQ(window_.codes(), std::vector<int>{-450});
}

TEST_F(SeveralRowsTest, CtrlWithAKeyMovesTheFocusAloneAndShiftWithSpaceTogglesTheRow) {
    press(Qt::Key_Down, Qt::ControlModifier);
    press(Qt::Key_Down, Qt::ControlModifier);
    EXPECT_EQ(list_->GetFocusItem(), b_);
    EXPECT_EQ(selected(), Rows{a1_});
    EXPECT_TRUE(window_.heard.empty());
    press(Qt::Key_Space, Qt::ShiftModifier);
    EXPECT_EQ(selected(), (Rows{b_, a1_}));
    press(Qt::Key_Space, Qt::ShiftModifier);
    EXPECT_EQ(selected(), Rows{a1_});
    EXPECT_FALSE(b_->isExpanded());
}

TEST_F(SeveralRowsTest, CtrlWithASelectsAllRowsShown) {
    press(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(selected(), (Rows{c_, b_, a2_, a1_, a_}));
    list_->SetStyle(list_->GetStyle() & ~std::uint32_t{kStyleMultiSelect});
    list_->SelectItem(a1_, 0);
    press(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(selected(), Rows{a1_});
}

// Ranges are for keys: of the modifiers a click looks at Ctrl alone.
TEST_F(SeveralRowsTest, AClickWithShiftSelectsTheRowAlone) {
    click(b_, kHitText, 1, Qt::ShiftModifier);
    EXPECT_EQ(selected(), Rows{b_});
    EXPECT_EQ(list_->GetSelectColumn(), 1);
}

TEST_F(SeveralRowsTest, AMarkThatIsOutOfSightLeavesTheRowAlone) {
    list_->SetSelectionMark(a11_);
    press(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(selected(), Rows{a2_});
    EXPECT_EQ(list_->GetSelectionMark(), a2_);
}

TEST_F(TreeListTest, WhereOneRowCanBeSelectedShiftAndCtrlMoveItLikeThePlainKeys) {
    list_->SelectItem(a_, 0);
    press(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(list_->GetSelectedItem(), a1_);
    EXPECT_EQ(list_->GetSelectedCount(), 1);
    press(Qt::Key_Down, Qt::ControlModifier);
    EXPECT_EQ(list_->GetSelectedItem(), a2_);
    click(b_, kHitText, 0, Qt::ShiftModifier);
    EXPECT_EQ(list_->GetSelectedCount(), 1);
}

TEST_F(TreeListTest, AControlWithoutColumnsTakesClicksAndKeys) {
    while (list_->GetColumnCount() > 0) {
        list_->DeleteColumn(0);
    }
    QTest::mouseClick(list_->viewport(), Qt::LeftButton, Qt::NoModifier,
                      list_->GetItemRect(b_).topLeft() + QPoint(9, 9));
    EXPECT_EQ(list_->GetSelectedItem(), b_);
    press(Qt::Key_Up);
    EXPECT_EQ(list_->GetSelectedItem(), a2_);
    press(Qt::Key_Left);
    press(Qt::Key_Right, Qt::AltModifier);
    EXPECT_EQ(list_->GetSelectColumn(), -1);
    list_->InsertColumn("again");
    press(Qt::Key_Up);
    EXPECT_EQ(list_->GetSelectColumn(), 0);
}

} // namespace
} // namespace fenmark::ui::treelist
