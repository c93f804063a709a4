// Parents that delete rows, columns, all rows or the control itself while they are notified.
#include <vector>

#include <QPointer>

#include "ui_treelist/tree_list_fixture.h"

namespace fenmark::ui::treelist {
namespace {

enum class Deed { DeleteRow, DeleteAllRows, DeleteColumns, DropStyle, DeleteControl };
enum class Gesture {
    Button,
    CheckBox,
    LockBox,
    Click,
    CtrlClick,
    ShiftClick,
    EmptyArea,
    DoubleClick,
    Space,
    ArrowWithShift,
    EditEnter,
    EditEscape,
    EditTab,
    EditOtherRow,
    EditThenClick,
    EditThenDelete,
    Drag,
    DragBrokenOff,
    HeaderClick
};

struct Case {
    Deed deed;
    Gesture gesture;
    int notification; // the deed is done at the first that comes, the second, ...
};

class ReentrancyTest : public TreeListTest, public ::testing::WithParamInterface<Case> {
  protected:
    ReentrancyTest() : TreeListTest(kTree | kStyleMultiSelect | kStyleDragRows | 0xe000000) {
        for (int column = 0; column < 3; ++column) {
            list_->SetColumnModify(column, 1);
        }
        // Points are taken beforehand: the rows may be gone when the second press of a gesture comes.
        middle_ = at(b_, kHitText);
        above_ = at(a1_, kHitText) + QPoint(30, 0);
    }
    ~ReentrancyTest() override {
        EXPECT_EQ(QApplication::overrideCursor(), nullptr);
        while (QApplication::overrideCursor()) {
            QApplication::restoreOverrideCursor();
        }
    }

    void commit(Deed deed, CTreeListItem* item) {
        if (!alive_ || done_ || (deed == Deed::DeleteRow && !item)) {
            return;
        }
        done_ = true;
        switch (deed) {
        case Deed::DeleteRow:
            list_->DeleteItem(item);
            break;
        case Deed::DeleteAllRows:
            list_->DeleteAllItems();
            break;
        case Deed::DeleteColumns:
            while (list_->GetColumnCount() > 0) {
                list_->DeleteColumn(0);
            }
            break;
        case Deed::DropStyle:
            list_->SetStyle(0);
            break;
        case Deed::DeleteControl:
            delete list_;
            break;
        }
    }
    void pressAt(const QPoint& point, Qt::KeyboardModifiers keys = Qt::NoModifier) {
        if (alive_) {
            QTest::mousePress(list_->viewport(), Qt::LeftButton, keys, point);
        }
        if (alive_) {
            QTest::mouseRelease(list_->viewport(), Qt::LeftButton, keys, point);
        }
    }
    void key(Qt::Key key, Qt::KeyboardModifiers keys = Qt::NoModifier) {
        QWidget* to = !alive_ ? nullptr : (list_->GetControl() ? list_->GetControl() : list_);
        if (to) {
            QKeyEvent event(QEvent::KeyPress, key, keys);
            QApplication::sendEvent(to, &event);
        }
    }
    [[nodiscard]] bool beginEdit() {
        if (!list_->BeginModify(b_, 0) || !alive_) {
            return false;
        }
        list_->GetEditCtrl()->setText("changed");
        return true;
    }
    void dragTo(const QPoint& point) {
        if (alive_) {
            QMouseEvent event(QEvent::MouseMove, point, list_->viewport()->mapToGlobal(QPointF(point)), Qt::NoButton,
                              Qt::LeftButton, Qt::NoModifier);
            QApplication::sendEvent(list_->viewport(), &event);
        }
    }

    void perform(Gesture gesture) {
        switch (gesture) {
        case Gesture::Button:
            return pressAt(at(a1_, kHitButton));
        case Gesture::CheckBox:
            return pressAt(at(a_, kHitCheck));
        case Gesture::LockBox:
            return pressAt(at(a_, kHitLock));
        case Gesture::Click:
            return pressAt(middle_);
        case Gesture::CtrlClick:
            pressAt(middle_);
            return pressAt(middle_, Qt::ControlModifier);
        case Gesture::ShiftClick:
            pressAt(above_);
            return pressAt(middle_, Qt::ShiftModifier);
        case Gesture::EmptyArea:
            pressAt(middle_);
            return pressAt(QPoint(20, 250));
        case Gesture::DoubleClick:
            QTest::mouseDClick(list_->viewport(), Qt::LeftButton, Qt::NoModifier, above_);
            return;
        case Gesture::Space:
            list_->ActiveItem(a_, 0);
            return key(Qt::Key_Space);
        case Gesture::ArrowWithShift:
            list_->ActiveItem(a_, 0);
            return key(Qt::Key_Down, Qt::ShiftModifier);
        case Gesture::Drag:
        case Gesture::DragBrokenOff:
            QTest::mousePress(list_->viewport(), Qt::LeftButton, Qt::NoModifier, middle_);
            dragTo(above_);
            dragTo(QPoint(900, 900));
            dragTo(QPoint(20, 250));
            if (gesture == Gesture::DragBrokenOff) {
                key(Qt::Key_Escape);
            } else if (alive_) {
                QTest::mouseRelease(list_->viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(20, 250));
            }
            return;
        case Gesture::HeaderClick:
            QObject::connect(list_, &CTreeListCtrl::headerClicked, list_, [this] { commit(GetParam().deed, b_); });
            return QTest::mouseClick(list_->GetHeaderCtrl(), Qt::LeftButton, Qt::NoModifier, QPoint(60, 8));
        default:
            return edit(gesture);
        }
    }
    void edit(Gesture gesture) {
        if (!beginEdit()) {
            return;
        }
        switch (gesture) {
        case Gesture::EditEscape:
            return key(Qt::Key_Escape);
        case Gesture::EditTab:
            key(Qt::Key_Tab);
            return key(Qt::Key_Return);
        case Gesture::EditOtherRow:
            list_->BeginModify(c_, 1);
            return;
        case Gesture::EditThenClick:
            return pressAt(above_);
        case Gesture::EditThenDelete:
            return list_->DeleteItem(b_);
        default:
            return key(Qt::Key_Return);
        }
    }

    QPointer<CTreeListCtrl> alive_{list_};
    bool done_ = false;
    QPoint middle_;
    QPoint above_;
};

TEST_P(ReentrancyTest, TheControlGoesOnWithWhatIsLeft) {
    window_.act = [&](const TreeListNotification& n) {
        if (static_cast<int>(window_.heard.size()) > GetParam().notification) {
            commit(GetParam().deed, n.item);
        }
    };
    perform(GetParam().gesture);
    EXPECT_EQ(alive_.isNull(), done_ && GetParam().deed == Deed::DeleteControl);
    if (!alive_) {
        return;
    }
    list_->grab();
    QApplication::processEvents();
    if (!list_->GetModifyItem()) {
        EXPECT_EQ(list_->GetState() & (kControlModifying | kControlWriting), 0U);
        EXPECT_EQ(list_->GetControl(), nullptr);
        EXPECT_FALSE(list_->GetEditCtrl()->isVisible());
    }
    EXPECT_FALSE(list_->IsDragging());
    EXPECT_LE(list_->GetSelectedCount(), list_->GetItemCount());
    int rows = 0;
    for (const CTreeListItem* row = list_->GetNextItem(TLI_ROOT); row; row = list_->GetNextItem(row)) {
        ++rows;
    }
    EXPECT_EQ(rows, list_->GetItemCount());
}

std::vector<Case> allCases() {
    std::vector<Case> cases;
    constexpr int kNotifications = 6; // no gesture sends many more
    for (int deed = 0; deed <= static_cast<int>(Deed::DeleteControl); ++deed) {
        for (int gesture = 0; gesture <= static_cast<int>(Gesture::HeaderClick); ++gesture) {
            for (int notification = 0; notification < kNotifications; ++notification) {
                cases.push_back({static_cast<Deed>(deed), static_cast<Gesture>(gesture), notification});
            }
        }
    }
    return cases;
}

INSTANTIATE_TEST_SUITE_P(Parents, ReentrancyTest, ::testing::ValuesIn(allCases()));

} // namespace
} // namespace fenmark::ui::treelist
