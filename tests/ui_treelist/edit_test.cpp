// Editing in place.
#include <QLineEdit>
#include <QScrollBar>

#include "ui_treelist/tree_list_fixture.h"

namespace fenmark::ui::treelist {
namespace {

class EditTest : public TreeListTest {
  protected:
    EditTest() {
        list_->SetColumnModify(0, 1);
        list_->SetColumnModify(2, 2);
        list_->SetColumnChoices(2, {"x", "y"});
        list_->SetItemText(b_, 1, "fixed");
        list_->SetItemText(b_, 2, "x");
    }
    [[nodiscard]] QLineEdit* edit() const { return list_->GetEditCtrl(); }
    // First the layout, then what it asks to be done.
    static void settle() {
        QApplication::processEvents();
        QApplication::processEvents();
    }
    void type(const QString& text) {
        edit()->selectAll();
        QTest::keyClicks(edit(), text);
    }
};

TEST_F(EditTest, BeginModifyOpensTheEditWithTheTextSelectedAndFocused) {
    EXPECT_TRUE(list_->BeginModify(b_, 0));
    EXPECT_EQ(list_->GetControl(), edit());
    EXPECT_TRUE(edit()->isVisible());
    EXPECT_EQ(window_.focusWidget(), edit());
    EXPECT_EQ(edit()->selectedText(), "b");
    EXPECT_EQ(list_->GetState() & kControlModifying, std::uint32_t{kControlModifying});
    ASSERT_EQ(window_.codes(), std::vector<int>{-459});
    EXPECT_EQ(window_.heard[0].item, b_);
    EXPECT_EQ(window_.heard[0].column, 0);
    QRect rect;
    list_->HitTest(at(b_, kHitText), nullptr, nullptr, &rect);
    EXPECT_EQ(edit()->geometry(), rect);
}

TEST_F(EditTest, StyleBit15TurnsEditingOff) {
    setStyle(kStyleNoEdit);
    EXPECT_FALSE(list_->BeginModify(b_, 0));
    EXPECT_EQ(list_->GetControl(), nullptr);
    EXPECT_TRUE(window_.heard.empty());
}

TEST_F(EditTest, AColumnWithoutEditorOpensTheViewerWhichChangesNothing) {
    EXPECT_TRUE(list_->BeginModify(b_, 1));
    auto* viewer = qobject_cast<QLineEdit*>(list_->GetControl());
    ASSERT_EQ(viewer, list_->GetStaticCtrl());
    EXPECT_TRUE(viewer->isReadOnly());
    EXPECT_EQ(viewer->text(), "fixed");
    QTest::keyClicks(viewer, "zzz");
    QTest::keyClick(viewer, Qt::Key_Return);
    EXPECT_EQ(list_->GetItemText(b_, 1), "fixed");
    EXPECT_EQ(window_.countOf(-420), 0);
}

TEST_F(EditTest, TheComboIsRaisedByOnePixelAndHoldsTheChoices) {
    EXPECT_TRUE(list_->BeginModify(b_, 2));
    CTreeListComboCtrl* combo = list_->GetComboCtrl();
    ASSERT_EQ(list_->GetControl(), combo);
    EXPECT_EQ(combo->count(), 2);
    EXPECT_EQ(combo->currentText(), "x");
    EXPECT_EQ(combo->geometry().top(), list_->GetItemRect(b_, 2).top() - 1);
    combo->setCurrentIndex(1);
    QTest::keyClick(combo, Qt::Key_Return);
    EXPECT_EQ(list_->GetItemText(b_, 2), "y");
}

TEST_F(EditTest, EnterWritesBackAndNotifies) {
    list_->BeginModify(b_, 0);
    type("new");
    QTest::keyClick(edit(), Qt::Key_Return);
    EXPECT_EQ(list_->GetItemText(b_), "new");
    EXPECT_EQ(window_.codes(), (std::vector<int>{-459, -460, -420, -422}));
    EXPECT_EQ(window_.heard.back().column, 0);
    EXPECT_EQ(window_.heard.back().item, b_);
    EXPECT_EQ(list_->GetModifyItem(), nullptr);
    EXPECT_EQ(list_->GetState() & (kControlModifying | kControlWriting), 0U);
    EXPECT_EQ(window_.focusWidget(), list_);
}

TEST_F(EditTest, AnUnchangedTextIsNotNotified) {
    list_->BeginModify(b_, 0);
    QTest::keyClick(edit(), Qt::Key_Return);
    EXPECT_EQ(window_.codes(), (std::vector<int>{-459, -460, -422}));
}

TEST_F(EditTest, OnARefusalEnterRestoresTheTextAndReopensTheEditor) {
    window_.answers[-420] = -1;
    list_->BeginModify(b_, 0);
    type("bad");
    QTest::keyClick(edit(), Qt::Key_Return);
    EXPECT_EQ(list_->GetItemText(b_), "b");
    EXPECT_EQ(list_->GetControl(), edit());
    EXPECT_EQ(edit()->text(), "b");
    EXPECT_EQ(window_.codes(), (std::vector<int>{-459, -460, -420, -459}));
    EXPECT_EQ(list_->GetState() & kControlModifying, std::uint32_t{kControlModifying});
    window_.answers.clear();
    type("good");
    QTest::keyClick(edit(), Qt::Key_Return);
    EXPECT_EQ(list_->GetItemText(b_), "good");
    EXPECT_EQ(list_->GetControl(), nullptr);
}

TEST_F(EditTest, UpdateModifyRestoresARefusedTextAndEnds) {
    window_.answers[-420] = -1;
    list_->BeginModify(b_, 0);
    type("bad");
    EXPECT_EQ(list_->UpdateModify(), 0);
    EXPECT_EQ(list_->GetItemText(b_), "b");
    EXPECT_EQ(list_->GetControl(), nullptr);
    EXPECT_EQ(window_.codes(), (std::vector<int>{-459, -460, -420, -422}));
}

TEST_F(EditTest, EscapeRestoresAllColumnsOfTheRow) {
    list_->BeginModify(b_, 0);
    type("changed");
    list_->BeginModify(b_, 2);
    EXPECT_EQ(list_->GetItemText(b_, 0), "changed");
    list_->GetComboCtrl()->setEditText("other");
    QTest::keyClick(list_->GetComboCtrl(), Qt::Key_Escape);
    EXPECT_EQ(list_->GetItemText(b_, 0), "b");
    EXPECT_EQ(list_->GetItemText(b_, 2), "x");
    EXPECT_EQ(window_.heard.back().code, -422);
    EXPECT_EQ(window_.heard.back().column, 1) << "cancelled";
    EXPECT_EQ(list_->GetState() & (kControlModifying | kControlWriting), 0U);
}

TEST_F(EditTest, TabGoesToTheNextEditableColumnAndShiftTabBack) {
    EXPECT_EQ(list_->GetNextModifyCol(0), 2);
    EXPECT_EQ(list_->GetNextModifyCol(2), 0);
    EXPECT_EQ(list_->GetPrevModifyCol(0), 2);
    EXPECT_EQ(list_->GetNextModifyCol(1), 2);
    list_->BeginModify(b_, 0);
    type("first");
    QTest::keyClick(edit(), Qt::Key_Tab);
    EXPECT_EQ(list_->GetModifyColumn(), 2);
    EXPECT_EQ(list_->GetControl(), list_->GetComboCtrl());
    EXPECT_EQ(list_->GetItemText(b_), "first");
    EXPECT_EQ(window_.countOf(-420), 1);
    QTest::keyClick(list_->GetComboCtrl(), Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(list_->GetModifyColumn(), 0);
    list_->SetColumnModify(0, 0);
    list_->SetColumnModify(2, 0);
    EXPECT_EQ(list_->GetNextModifyCol(0), -1);
    EXPECT_EQ(list_->GetPrevModifyCol(0), -1);
}

TEST_F(EditTest, ARefusedColumnIsRestoredButTheNextColumnOpens) {
    window_.answers[-420] = -1;
    list_->BeginModify(b_, 0);
    type("bad");
    EXPECT_TRUE(list_->BeginModify(b_, 2));
    EXPECT_EQ(list_->GetItemText(b_), "b");
    EXPECT_EQ(list_->GetModifyColumn(), 2);
}

TEST_F(EditTest, ModifyingAnotherRowWritesTheFirstBack) {
    list_->BeginModify(b_, 0);
    type("written");
    EXPECT_TRUE(list_->BeginModify(c_, 0));
    EXPECT_EQ(list_->GetItemText(b_), "written");
    EXPECT_EQ(list_->GetModifyItem(), c_);
    EXPECT_EQ(window_.codes(), (std::vector<int>{-459, -460, -420, -422, -459}));
}

TEST_F(EditTest, AClickOnTheSameRowMovesTheEditorAndOnAnotherRowFinishes) {
    list_->BeginModify(b_, 0);
    type("one");
    click(b_, kHitText, 2);
    EXPECT_EQ(list_->GetModifyColumn(), 2);
    EXPECT_TRUE(list_->GetComboCtrl()->isVisible());
    EXPECT_EQ(window_.focusWidget(), list_->GetComboCtrl());
    click(c_, kHitText, 0);
    EXPECT_EQ(list_->GetModifyItem(), nullptr);
    EXPECT_EQ(list_->GetSelectedItem(), c_);
    EXPECT_EQ(list_->GetItemText(b_), "one");
}

TEST_F(EditTest, AClickOnTheEmptyAreaFinishes) {
    list_->BeginModify(b_, 0);
    type("kept");
    QTest::mouseClick(list_->viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(20, 250));
    EXPECT_EQ(list_->GetModifyItem(), nullptr);
    EXPECT_EQ(list_->GetItemText(b_), "kept");
}

TEST_F(EditTest, AClickOutsideOfTheViewCancels) {
    for (int i = 0; i < 100; ++i) {
        list_->InsertItem(QString::number(i));
    }
    QApplication::processEvents();
    list_->BeginModify(b_, 0);
    type("lost");
    QTest::mouseClick(list_->verticalScrollBar(), Qt::LeftButton);
    EXPECT_EQ(list_->GetModifyItem(), nullptr);
    EXPECT_EQ(list_->GetItemText(b_), "b");
    EXPECT_EQ(window_.heard.back().code, -422);
    EXPECT_EQ(window_.heard.back().column, 1);
}

TEST_F(EditTest, ALongTextGivesTheEditAtLeastTheWidthOfItsColumn) {
    list_->SetItemText(b_, 0, QString(60, 'w'));
    list_->BeginModify(b_, 0);
    EXPECT_GE(edit()->width(), list_->GetColumnWidth(0));
}

TEST_F(EditTest, TheEditTakesTheAlignmentOfTheCell) {
    list_->SetColumnFormat(0, 0x104244);
    list_->BeginModify(b_, 0);
    EXPECT_TRUE(edit()->alignment() & Qt::AlignRight);
    list_->CancelModify();
    list_->SetColumnFormat(0, 0x104444);
    list_->BeginModify(b_, 0);
    EXPECT_TRUE(edit()->alignment() & Qt::AlignHCenter);
}

TEST_F(EditTest, DeletingTheRowInItsNotificationEndsTheModificationQuietly) {
    window_.act = [&](const TreeListNotification& n) {
        if (n.code == -420) {
            list_->DeleteItem(n.item);
        }
    };
    list_->BeginModify(b_, 0);
    type("new");
    QTest::keyClick(edit(), Qt::Key_Return);
    EXPECT_EQ(list_->GetModifyItem(), nullptr);
    EXPECT_EQ(list_->GetControl(), nullptr);
    EXPECT_EQ(list_->GetState() & (kControlModifying | kControlWriting), 0U);
    EXPECT_EQ(list_->GetItemCount(), 5);
}

TEST_F(EditTest, DeletingTheRowThatIsEditedClosesTheEditor) {
    list_->BeginModify(a1_, 0);
    list_->DeleteItem(a_);
    EXPECT_EQ(list_->GetControl(), nullptr);
    EXPECT_FALSE(edit()->isVisible());
}

TEST_F(EditTest, LeavingTheControlWritesBack) {
    QLineEdit other(&window_);
    other.show();
    list_->BeginModify(b_, 0);
    type("left");
    other.setFocus(Qt::TabFocusReason);
    QApplication::processEvents();
    EXPECT_EQ(list_->GetItemText(b_), "left");
    EXPECT_EQ(list_->GetModifyItem(), nullptr);
    EXPECT_EQ(window_.focusWidget(), &other);
}

TEST_F(EditTest, TheEditorFollowsWhenRowsScroll) {
    for (int i = 0; i < 100; ++i) {
        list_->InsertItem(QString::number(i));
    }
    list_->BeginModify(b_, 0);
    const int before = edit()->y();
    list_->SetTopIndex(2);
    EXPECT_EQ(edit()->y(), before - 2 * list_->GetItemHeight());
}

TEST_F(EditTest, AHiddenColumnCannotBeEdited) {
    list_->SetColumnOrderArray({1, 2});
    EXPECT_FALSE(list_->BeginModify(b_, 0));
    EXPECT_TRUE(window_.heard.empty());
}

TEST_F(EditTest, ARowThatGoesOutOfSightWhileItIsEditedIsWrittenBack) {
    list_->BeginModify(a1_, 0);
    type("kept");
    list_->Expand(a_, ExpandCode::Collapse);
    settle();
    EXPECT_EQ(list_->GetItemText(a1_), "kept");
    EXPECT_EQ(list_->GetModifyItem(), nullptr);
    EXPECT_FALSE(edit()->isVisible());
    list_->BeginModify(b_, 0);
    type("kept too");
    list_->SetColumnOrderArray({1, 2});
    settle();
    EXPECT_EQ(list_->GetItemText(b_), "kept too");
    EXPECT_EQ(list_->GetModifyItem(), nullptr);
}

TEST_F(EditTest, WhileATextIsWrittenBackNoOtherModificationBegins) {
    bool began = true;
    window_.act = [&](const TreeListNotification& n) {
        if (n.code == -420) {
            began = list_->BeginModify(c_, 0);
        }
    };
    list_->BeginModify(b_, 0);
    type("new");
    QTest::keyClick(edit(), Qt::Key_Return);
    EXPECT_FALSE(began);
    EXPECT_EQ(list_->GetItemText(b_), "new");
    EXPECT_EQ(list_->GetModifyItem(), nullptr);
    EXPECT_EQ(list_->GetState() & (kControlModifying | kControlWriting), 0U);
}

TEST_F(EditTest, TheParentCanGoOnWithTheNextRowWhenAModificationEnds) {
    window_.act = [&](const TreeListNotification& n) {
        if (n.code == -422 && n.item == b_) {
            list_->BeginModify(c_, 0);
        }
    };
    list_->BeginModify(b_, 0);
    QTest::keyClick(edit(), Qt::Key_Return);
    EXPECT_EQ(list_->GetModifyItem(), c_);
    EXPECT_TRUE(edit()->isVisible());
    EXPECT_EQ(list_->GetState() & kControlModifying, std::uint32_t{kControlModifying});
}

TEST_F(EditTest, TheEditorsHaveTheColoursOfTheRows) {
    list_->SetBkColor(QColor(10, 20, 30));
    list_->SetTextColor(QColor(240, 230, 220));
    list_->BeginModify(b_, 0);
    EXPECT_EQ(edit()->palette().color(QPalette::Base), QColor(10, 20, 30));
    EXPECT_EQ(edit()->palette().color(QPalette::Text), QColor(240, 230, 220));
}

TEST_F(EditTest, ACancelledEditorThatIsOpenedAgainWhileItClosesStaysClosed) {
    window_.act = [&](const TreeListNotification& n) {
        if (n.code == -460) {
            EXPECT_FALSE(list_->BeginModify(n.item, 2));
        }
    };
    list_->BeginModify(b_, 0);
    list_->CancelModify();
    EXPECT_EQ(list_->GetControl(), nullptr);
    list_->BeginModify(b_, 0);
    list_->DeleteItem(b_);
    EXPECT_EQ(list_->GetControl(), nullptr);
    EXPECT_EQ(list_->GetState() & (kControlModifying | kControlWriting), 0U);
}

} // namespace
} // namespace fenmark::ui::treelist
