// Drag and drop of rows, within one control and between two.
#include <QScrollBar>

#include "ui_treelist/tree_list_fixture.h"

namespace fenmark::ui::treelist {
namespace {

class DragTest : public TreeListTest {
  protected:
    DragTest() : TreeListTest(kTree | kStyleDragRows | kStyleDropForeign | kStyleDropOwn | kStyleDropEmpty) {}
    ~DragTest() override {
        while (QApplication::overrideCursor()) {
            ADD_FAILURE() << "an override cursor was left behind";
            QApplication::restoreOverrideCursor();
        }
    }
    void move(const QPoint& point) {
        QMouseEvent event(QEvent::MouseMove, point, list_->viewport()->mapToGlobal(QPointF(point)), Qt::NoButton,
                          Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(list_->viewport(), &event);
    }
    void pressAt(const CTreeListItem* item) {
        QTest::mousePress(list_->viewport(), Qt::LeftButton, Qt::NoModifier, at(item, kHitText));
    }
    void releaseAt(const QPoint& point) {
        QTest::mouseRelease(list_->viewport(), Qt::LeftButton, Qt::NoModifier, point);
    }
    // The picture of the rows that are dragged; null if there is none.
    static const QWidget* dragPicture() {
        const QWidget* picture = nullptr;
        for (const QWidget* window : QApplication::topLevelWidgets()) {
            picture = window->objectName() == "Tresslib.TLCDragWnd" ? window : picture;
        }
        return picture;
    }
    std::set<int> timers() const { return runningTimers(list_); }
    void fire(int interval) { fireTimer(list_, interval); }
    static constexpr QPoint kEmpty{20, 200};
    static constexpr int kOwnExpand = 1000; // ms
    static constexpr int kOwnScroll = 200;
    static constexpr int kForeignExpand = 500;
    static constexpr int kForeignScroll = 100;
};

TEST_F(DragTest, APressOnARowArmsADragAndMovingStartsIt) {
    pressAt(b_);
    EXPECT_EQ(window_.codes(), (std::vector<int>{-450, -451, -456}));
    EXPECT_EQ(list_->GetState() & kControlDragArmed, std::uint32_t{kControlDragArmed});
    EXPECT_FALSE(list_->IsDragging());
    move(at(a_, kHitText) + QPoint(40, 0));
    EXPECT_TRUE(list_->IsDragging());
    EXPECT_EQ(list_->GetState() & kControlDragArmed, 0U);
    releaseAt(at(a_, kHitText));
    EXPECT_FALSE(list_->IsDragging());
}

TEST_F(DragTest, ThePictureFollowsTheCursorAt20And4) {
    pressAt(b_);
    const QPoint point = at(a_, kHitText) + QPoint(40, 0);
    move(point);
    const QWidget* picture = dragPicture();
    ASSERT_NE(picture, nullptr);
    EXPECT_EQ(picture->pos(), list_->viewport()->mapToGlobal(point) + QPoint(20, 4));
    releaseAt(point);
}

TEST_F(DragTest, AVetoOfTheDragOrASelectionThatWasVetoedArmsNothing) {
    window_.answers[-456] = -1;
    pressAt(b_);
    move(at(a_, kHitText) + QPoint(60, 0));
    EXPECT_FALSE(list_->IsDragging());
    releaseAt(at(a_, kHitText));
    window_.answers = {{-450, -1}};
    window_.heard.clear();
    pressAt(c_);
    EXPECT_EQ(window_.countOf(-456), 0);
    releaseAt(at(c_, kHitText));
}

TEST_F(DragTest, WithoutTheStyleBitNothingIsArmed) {
    list_->SetStyle(kTree);
    pressAt(b_);
    EXPECT_EQ(window_.countOf(-456), 0);
    releaseAt(at(b_, kHitText));
}

TEST_F(DragTest, ADropOnARowTellsSourceAndTarget) {
    pressAt(b_);
    move(at(a2_, kHitText) + QPoint(30, 0));
    EXPECT_EQ(list_->GetHoverItem(), a2_);
    EXPECT_EQ(list_->GetTargetItem(), a2_);
    EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::DragMoveCursor);
    window_.heard.clear();
    releaseAt(at(a2_, kHitText) + QPoint(30, 0));
    EXPECT_EQ(window_.codes(), (std::vector<int>{-425, -426, -424}));
    const TreeListNotification& drop = window_.heard[1];
    EXPECT_EQ(drop.source, list_);
    EXPECT_EQ(drop.target, a2_);
    EXPECT_EQ(list_->GetItemIndex(b_), 3) << "the parent moves the rows itself";
    EXPECT_EQ(list_->GetTargetItem(), nullptr);
}

TEST_F(DragTest, EscapeEndsADragWithoutADrop) {
    pressAt(b_);
    move(at(a2_, kHitText) + QPoint(30, 0));
    press(Qt::Key_Escape);
    EXPECT_FALSE(list_->IsDragging());
    releaseAt(at(a2_, kHitText));
    EXPECT_EQ(window_.countOf(-426), 0);
    EXPECT_EQ(window_.countOf(-424), 1);
}

TEST_F(DragTest, WithinOneControlBothDropBitsAreNeeded) {
    list_->SelectItem(b_, 0);
    list_->SetStyle(kTree | kStyleDropForeign);
    EXPECT_EQ(list_->DragOver(list_, at(a_, kHitText)), DropResult::NotHere);
    list_->SetStyle(kTree | kStyleDropOwn);
    EXPECT_EQ(list_->DragOver(list_, at(a_, kHitText)), DropResult::NotHere);
    EXPECT_EQ(list_->DragOver(list_, kEmpty), DropResult::NotHere);
    list_->SetStyle(kTree | kStyleDropForeign | kStyleDropOwn);
    EXPECT_EQ(list_->DragOver(list_, at(a_, kHitText)), DropResult::OnRow);
    EXPECT_EQ(list_->DragOver(list_, kEmpty), DropResult::Refused) << "without the bit for the empty area";
    list_->DragLeave(list_);
}

TEST_F(DragTest, ARowInsideTheSelectedSubtreesIsNoTarget) {
    list_->SelectItem(a_, 0);
    window_.heard.clear();
    EXPECT_EQ(list_->DragOver(list_, at(a2_, kHitText)), DropResult::NotHere);
    EXPECT_EQ(list_->DragOver(list_, at(a_, kHitText)), DropResult::NotHere);
    EXPECT_TRUE(list_->IsInSelectsTree(a11_));
    EXPECT_FALSE(list_->IsInSelectsTree(b_));
    EXPECT_TRUE(window_.heard.empty());
    EXPECT_EQ(list_->DragOver(list_, at(b_, kHitText)), DropResult::OnRow);
    list_->DragLeave(list_);
}

TEST_F(DragTest, OnTheEmptyAreaARowOfTheTopLevelIsAtHomeAndADeeperOneCanBeDropped) {
    list_->SelectItem(b_, 0);
    EXPECT_EQ(list_->DragOver(list_, kEmpty), DropResult::NotHere);
    list_->SelectItem(a1_, 0);
    EXPECT_EQ(list_->DragOver(list_, kEmpty), DropResult::OnEmpty);
    window_.heard.clear();
    EXPECT_TRUE(list_->Drop(list_, kEmpty));
    ASSERT_EQ(window_.countOf(-426), 1);
    EXPECT_EQ(window_.heard.back().target, nullptr);
    list_->DragLeave(list_);
}

TEST_F(DragTest, TheParentCanRefuseARow) {
    list_->SelectItem(b_, 0);
    window_.answers[-425] = -1;
    EXPECT_EQ(list_->DragOver(list_, at(a_, kHitText)), DropResult::Refused);
    EXPECT_FALSE(list_->Drop(list_, at(a_, kHitText)));
    EXPECT_EQ(window_.countOf(-426), 0);
    list_->DragLeave(list_);
}

TEST_F(DragTest, FromAnotherControlTheForeignBitDecides) {
    CTreeListCtrl source(&window_);
    source.Create(kStyleTree, QRect(), &window_);
    EXPECT_EQ(list_->DragOver(&source, at(a_, kHitText)), DropResult::OnRow);
    EXPECT_EQ(list_->DragOver(&source, kEmpty), DropResult::OnEmpty);
    list_->SetStyle(kTree | kStyleDropForeign);
    EXPECT_EQ(list_->DragOver(&source, at(a_, kHitText)), DropResult::OnRow);
    EXPECT_EQ(list_->DragOver(&source, kEmpty), DropResult::Refused);
    list_->SetStyle(kTree | kStyleDropOwn | kStyleDropEmpty);
    EXPECT_EQ(list_->DragOver(&source, at(a_, kHitText)), DropResult::Refused);
    EXPECT_EQ(list_->DragOver(&source, kEmpty), DropResult::Refused);
    list_->DragLeave(&source);
}

TEST_F(DragTest, ADragOntoAnotherControlEntersLeavesAndDropsThere) {
    RecordingParent other;
    other.setGeometry(0, 310, 200, 150); // below the other, within the smallest of screens
    auto* target = new CTreeListCtrl(&other);
    target->Create(kStyleTree | kStyleDropForeign | kStyleDropEmpty, QRect(0, 0, 200, 150), &other);
    target->InsertColumn("Name", kColumnInitialFormat, 150);
    CTreeListItem* row = target->InsertItem("row");
    window_.move(0, 0);
    other.show();
    QApplication::processEvents();
    pressAt(b_);
    move(at(b_, kHitText) + QPoint(40, 0));
    const QPoint onRow =
        list_->viewport()->mapFromGlobal(target->viewport()->mapToGlobal(target->GetItemRect(row).center()));
    move(onRow);
    EXPECT_EQ(window_.heard.back().code, -424);
    ASSERT_EQ(other.codes(), (std::vector<int>{-423, -425}));
    EXPECT_EQ(other.heard[1].source, list_);
    EXPECT_EQ(other.heard[1].item, row);
    EXPECT_EQ(target->GetTargetItem(), row);
    move(onRow + QPoint(0, 100));
    EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::DragCopyCursor);
    releaseAt(onRow + QPoint(0, 100));
    ASSERT_EQ(other.codes(), (std::vector<int>{-423, -425, -426, -424}));
    EXPECT_EQ(other.heard[2].source, list_);
    EXPECT_EQ(other.heard[2].target, nullptr);
}

TEST_F(DragTest, OutsideOfAllControlsADropIsRefused) {
    pressAt(b_);
    move(at(b_, kHitText) + QPoint(40, 0));
    move(QPoint(600, 500));
    EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::ForbiddenCursor);
    releaseAt(QPoint(600, 500));
    EXPECT_EQ(window_.countOf(-426), 0);
}

TEST_F(DragTest, RestingOnACollapsedRowExpandsItAndSoonerForADragFromAnotherControl) {
    CTreeListCtrl source(&window_);
    source.Create(kStyleTree, QRect(), &window_);
    list_->DragEnter(&source);
    list_->DragOver(&source, at(a1_, kHitText));
    EXPECT_EQ(timers(), (std::set<int>{kForeignExpand, kForeignScroll}));
    fire(kForeignExpand);
    EXPECT_TRUE(a1_->isExpanded());
    EXPECT_EQ(timers(), (std::set<int>{kForeignScroll})) << "once for each row";
    list_->DragLeave(&source);
    EXPECT_EQ(timers(), std::set<int>{}) << "both end with the drag";

    list_->Expand(a1_, ExpandCode::Collapse);
    list_->SelectItem(b_, 0);
    list_->DragEnter(list_);
    list_->DragOver(list_, at(a1_, kHitText));
    EXPECT_EQ(timers(), (std::set<int>{kOwnExpand, kOwnScroll}));
    EXPECT_FALSE(a1_->isExpanded());
    fire(kOwnExpand);
    EXPECT_TRUE(a1_->isExpanded());
    list_->DragLeave(list_);
}

TEST_F(DragTest, AnotherRowStartsTheRestAnew) {
    list_->SelectItem(b_, 0);
    list_->DragEnter(list_);
    list_->DragOver(list_, at(a1_, kHitText));
    list_->DragOver(list_, at(a2_, kHitText));
    fire(kOwnExpand);
    EXPECT_FALSE(a1_->isExpanded()) << "the pointer went on to another row";
    list_->DragOver(list_, at(a1_, kHitText));
    EXPECT_EQ(timers().count(kOwnExpand), 1U);
    list_->DragOver(list_, kEmpty);
    EXPECT_EQ(timers().count(kOwnExpand), 0U) << "no row, no rest";
    list_->DragLeave(list_);
}

TEST_F(DragTest, AtTheFirstAndTheLastRowInViewADragScrolls) {
    for (int i = 0; i < 100; ++i) {
        list_->InsertItem(QString::number(i));
    }
    list_->SelectItem(b_, 0);
    CTreeListItem* last = list_->GetItemAtIndex(list_->GetTopIndex() + list_->GetCountPerPage() - 1);
    list_->DragEnter(list_);
    list_->DragOver(list_, at(last, kHitText));
    EXPECT_EQ(list_->GetTopIndex(), 0) << "not before it rests there";
    fire(kOwnScroll);
    EXPECT_EQ(list_->GetTopIndex(), 1);
    fire(kOwnScroll);
    EXPECT_EQ(list_->GetTopIndex(), 2) << "the row now under the cursor is the last one again";
    list_->DragOver(list_, at(list_->GetFirstVisibleItem(), kHitText));
    fire(kOwnScroll);
    fire(kOwnScroll);
    EXPECT_EQ(list_->GetTopIndex(), 0);
    fire(kOwnScroll);
    EXPECT_EQ(list_->GetTopIndex(), 0) << "there is nothing above";
    list_->DragLeave(list_);
    EXPECT_EQ(timers(), std::set<int>{}) << "it ends with the drag";
}

TEST_F(DragTest, ParentThatMovesTheRowsOnADropKeepsTheTreeWhole) {
    window_.act = [&](const TreeListNotification& n) {
        if (n.code == -426) {
            list_->MoveAfterItem(list_->GetSelectedItem(), n.target, TLI_LAST);
        }
    };
    pressAt(b_);
    move(at(a2_, kHitText) + QPoint(30, 0));
    releaseAt(at(a2_, kHitText) + QPoint(30, 0));
    EXPECT_EQ(b_->parent(), a2_);
    EXPECT_EQ(list_->GetItemCount(), 6);
}

TEST_F(DragTest, ARememberedOffsetTakesThePlaceOf20And4) {
    list_->SetDragOffset(QPoint(-7, 9));
    pressAt(b_);
    const QPoint point = at(a_, kHitText) + QPoint(40, 0);
    move(point);
    const QWidget* picture = dragPicture();
    ASSERT_NE(picture, nullptr);
    EXPECT_EQ(picture->pos(), list_->viewport()->mapToGlobal(point) + QPoint(-7, 9));
    releaseAt(point);
}

TEST_F(DragTest, AControlThatIsHiddenOrDisabledEndsItsDragWithoutADrop) {
    pressAt(b_);
    move(at(a2_, kHitText) + QPoint(30, 0));
    ASSERT_TRUE(list_->IsDragging());
    list_->setEnabled(false);
    EXPECT_FALSE(list_->IsDragging());
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    list_->setEnabled(true);
    pressAt(c_);
    move(at(a2_, kHitText) + QPoint(30, 0));
    ASSERT_TRUE(list_->IsDragging());
    window_.hide();
    EXPECT_FALSE(list_->IsDragging());
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    EXPECT_EQ(window_.countOf(-426), 0);
    EXPECT_EQ(window_.countOf(-424), 2);
}

} // namespace
} // namespace fenmark::ui::treelist
