// A window with a tree list that writes down its notifications and answers as a test wants it to.
#pragma once

#include <functional>
#include <map>
#include <set>
#include <vector>

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QTest>
#include <QTimerEvent>
#include <QWidget>

#include <gtest/gtest.h>

#include "ui/treelist/tree_list_ctrl.h"
#include "ui/treelist/tree_list_editors.h"
#include "ui/treelist/tree_list_header_ctrl.h"

namespace fenmark::ui::treelist {

class RecordingParent : public QWidget, public TreeListParent {
  public:
    int treeListNotify(const TreeListNotification& notification) override {
        heard.push_back(notification);
        if (act) {
            act(notification);
        }
        const auto found = answers.find(notification.code);
        return found == answers.end() ? 0 : found->second;
    }
    [[nodiscard]] std::vector<int> codes() const {
        std::vector<int> found;
        for (const TreeListNotification& notification : heard) {
            found.push_back(notification.code);
        }
        return found;
    }
    [[nodiscard]] int countOf(int code) const {
        int count = 0;
        for (const TreeListNotification& notification : heard) {
            count += notification.code == code ? 1 : 0;
        }
        return count;
    }

    std::vector<TreeListNotification> heard;
    std::map<int, int> answers;
    std::function<void(const TreeListNotification&)> act;
};

// The intervals in ms of the timers that an object runs. Tests let a timer fire themselves: a clock would make them
// depend on the machine, and the toolkit's timers may come some percent early.
inline std::set<int> runningTimers(QObject* object) {
    std::set<int> intervals;
    for (const auto& timer : QAbstractEventDispatcher::instance()->registeredTimers(object)) {
        intervals.insert(timer.interval);
    }
    return intervals;
}

inline void fireTimer(QObject* object, int interval) {
    for (const auto& timer : QAbstractEventDispatcher::instance()->registeredTimers(object)) {
        if (timer.interval == interval) {
            QTimerEvent event(timer.timerId);
            QApplication::sendEvent(object, &event);
            return;
        }
    }
    ADD_FAILURE() << "no timer of " << interval << " ms runs";
}

// Rows: a (a1 (a11), a2), b, c. Columns "Name" 200, "Value" 80, "Note" 120.
class TreeListTest : public ::testing::Test {
  protected:
    static constexpr std::uint32_t kTree = kStyleTree | kStyleHeader | kStyleTreeLines | kStyleRootLines |
                                           kStyleButtons | kStyleCheckBoxes | kStyleLockBoxes;

    explicit TreeListTest(std::uint32_t style = kTree) {
        window_.resize(500, 300);
        list_ = new CTreeListCtrl(&window_);
        list_->Create(style, QRect(0, 0, 500, 300), &window_);
        list_->InsertColumn("Name", kColumnInitialFormat, 200);
        list_->InsertColumn("Value", kColumnInitialFormat, 80);
        list_->InsertColumn("Note", kColumnInitialFormat, 120);
        a_ = list_->InsertItem("a");
        a1_ = list_->InsertItem("a1", a_);
        a11_ = list_->InsertItem("a11", a1_);
        a2_ = list_->InsertItem("a2", a_);
        b_ = list_->InsertItem("b");
        c_ = list_->InsertItem("c");
        list_->Expand(a_, ExpandCode::Expand);
        window_.show();
        QApplication::setActiveWindow(&window_);
        list_->setFocus();
        QApplication::processEvents();
        window_.heard.clear();
    }

    [[nodiscard]] QPoint at(const CTreeListItem* item, int flag, int column = 0) const {
        const QRect cell = list_->GetItemRect(item, column);
        // Looked for with the hit test itself; where the parts lie is tested without a window.
        for (int x = cell.left(); x <= cell.right(); ++x) {
            int flags = 0;
            list_->HitTest(QPoint(x, cell.center().y()), &flags);
            if (flags == flag) {
                return QPoint(x + 3, cell.center().y());
            }
        }
        ADD_FAILURE() << "the row shows no such part";
        return {};
    }
    void click(const CTreeListItem* item, int flag = kHitText, int column = 0,
               Qt::KeyboardModifiers keys = Qt::NoModifier) {
        QTest::mouseClick(list_->viewport(), Qt::LeftButton, keys, at(item, flag, column));
    }
    void doubleClick(const CTreeListItem* item, int flag = kHitText, int column = 0) {
        const QPoint point = at(item, flag, column);
        QTest::mouseDClick(list_->viewport(), Qt::LeftButton, Qt::NoModifier, point);
    }
    void press(Qt::Key key, Qt::KeyboardModifiers keys = Qt::NoModifier) { QTest::keyClick(list_, key, keys); }
    void setStyle(std::uint32_t more) { list_->SetStyle(list_->GetStyle() | more); }

    RecordingParent window_;
    CTreeListCtrl* list_ = nullptr;
    CTreeListItem* a_ = nullptr;
    CTreeListItem* a1_ = nullptr;
    CTreeListItem* a11_ = nullptr;
    CTreeListItem* a2_ = nullptr;
    CTreeListItem* b_ = nullptr;
    CTreeListItem* c_ = nullptr;
};

} // namespace fenmark::ui::treelist
