// The tree list control: drag and drop of rows, within one control and between two.
#include <algorithm>

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QTimerEvent>

#include "ui/treelist/tree_list_ctrl.h"
#include "ui/treelist/tree_list_drag_windows.h"
#include "ui/treelist/tree_list_header_ctrl.h"
#include "ui/treelist/tree_list_painter.h"
#include "ui/treelist/tree_list_resource.h"
#include "ui/treelist/tree_list_row_guard.h"
#include "ui/treelist/tree_list_tip_ctrl.h"

namespace fenmark::ui::treelist {

namespace {

const QPoint kPictureOffset(20, 4);  // from the cursor to the picture of the rows
constexpr int kOwnExpandTime = 1000; // ms on a row before it expands, for a drag from this control
constexpr int kOwnScrollTime = 200;
constexpr int kForeignExpandTime = 500;
constexpr int kForeignScrollTime = 100;
constexpr int kPictureRows = 12; // no more rows than this are pictured

CTreeListCtrl* controlAt(const QPoint& globalPoint) {
    for (QWidget* window = QApplication::widgetAt(globalPoint); window; window = window->parentWidget()) {
        if (auto* control = qobject_cast<CTreeListCtrl*>(window)) {
            return control;
        }
    }
    return nullptr;
}

} // namespace

void CTreeListCtrl::armDrag(CTreeListItem* item) {
    if (!(style_ & kStyleDragRows) || !(item->state & kItemSelected)) {
        return;
    }
    const RowGuard row(*this, item);
    if (notify(kNotifyDragStarting, item, focusColumn_) < 0 || !row) {
        return;
    }
    setState(kControlDragArmed, true);
}

QPixmap CTreeListCtrl::pictureOfSelection() const {
    // Those in view, in the order of the list, as many as give a picture of sensible size.
    std::vector<const CTreeListItem*> rows;
    const CTreeListItem* row = GetFirstVisibleItem();
    for (int i = GetCountPerPage(); row && i >= 0 && rows.size() < kPictureRows; --i) {
        if (row->state & kItemSelected) {
            rows.push_back(row);
        }
        row = tree_.nextShown(row);
    }
    if (rows.empty()) {
        rows.push_back(selection_.front());
    }
    const int height = GetItemHeight();
    const QSize size(std::clamp(columns_.totalWidth(), 1, std::max(1, viewport()->width())),
                     std::max(1, height * static_cast<int>(rows.size())));
    const qreal ratio = devicePixelRatioF();
    QPixmap picture(size * ratio);
    picture.setDevicePixelRatio(ratio);
    picture.fill(colorOf(TreeListColor::SelectedRow));
    QPainter painter(&picture);
    TreeListPainter pictured(*this, painter);
    int y = 0;
    for (const CTreeListItem* each : rows) {
        pictured.paintDragRow(*each, y);
        y += height;
    }
    return picture;
}

void CTreeListCtrl::startDrag(const QPoint& point) {
    setState(kControlDragArmed, false);
    if (selection_.empty()) {
        return;
    }
    setState(kControlCaptured, true);
    if (tip_) {
        tip_->leave();
    }
    dragWindow_ = std::make_unique<CTLCDragWnd>(pictureOfSelection(), dragOffset_.value_or(kPictureOffset));
    QApplication::setOverrideCursor(CTreeListResource::dropCursor(DropResult::NotHere));
    moveDrag(viewport()->mapToGlobal(point));
}

void CTreeListCtrl::moveDrag(const QPoint& globalPoint) {
    if (dragWindow_) {
        dragWindow_->follow(globalPoint);
    }
    // Either control may be deleted, and the drag broken off, in each of the notifications.
    const QPointer<CTreeListCtrl> self(this);
    const QPointer<CTreeListCtrl> under(controlAt(globalPoint));
    if (under != dragTarget_) {
        const QPointer<CTreeListCtrl> left = dragTarget_;
        dragTarget_ = under;
        if (left) {
            left->DragLeave(this);
        }
        if (self && under && IsDragging()) {
            under->DragEnter(this);
        }
    }
    DropResult result = DropResult::Refused;
    if (self && under && IsDragging()) {
        result = under->DragOver(this, under->viewport()->mapFromGlobal(globalPoint));
    }
    if (self && IsDragging()) {
        QApplication::changeOverrideCursor(CTreeListResource::dropCursor(result));
    }
}

void CTreeListCtrl::endDrag(bool drop, const QPoint& globalPoint) {
    setState(kControlCaptured, false);
    dragWindow_.reset();
    QApplication::restoreOverrideCursor();
    const QPointer<CTreeListCtrl> self(this);
    const QPointer<CTreeListCtrl> target = dragTarget_;
    dragTarget_ = nullptr;
    if (target && drop) {
        target->Drop(this, target->viewport()->mapFromGlobal(globalPoint));
    }
    if (target) {
        target->DragLeave(self);
    }
}

void CTreeListCtrl::stopDrags() {
    setState(kControlDragArmed, false);
    if (header_) {
        header_->cancelDrag();
    }
    if (state_ & kControlCaptured) {
        endDrag(false, {});
    }
}

void CTreeListCtrl::DragEnter(CTreeListCtrl* source) {
    dragSource_ = source;
    timerItem_ = nullptr;
    notify(kNotifyDragEnter, nullptr, -1, source);
}

DropResult CTreeListCtrl::askDrop(CTreeListCtrl* source, CTreeListItem* row) {
    if (source == this) {
        if (!(style_ & kStyleDropForeign) || !(style_ & kStyleDropOwn)) {
            return DropResult::NotHere;
        }
        if (!row) {
            if (!(style_ & kStyleDropEmpty)) {
                return DropResult::Refused;
            }
            const CTreeListItem* first = GetSelectedItem();
            return first && first->level() == 1 ? DropResult::NotHere : DropResult::OnEmpty;
        }
        if (IsInSelectsTree(row)) {
            return DropResult::NotHere;
        }
    } else {
        if (!(style_ & kStyleDropForeign)) {
            return DropResult::Refused;
        }
        if (!row) {
            return (style_ & kStyleDropEmpty) ? DropResult::OnEmpty : DropResult::Refused;
        }
    }
    return notify(kNotifyDragOver, row, -1, source, row) >= 0 ? DropResult::OnRow : DropResult::Refused;
}

DropResult CTreeListCtrl::DragOver(CTreeListCtrl* source, const QPoint& point) {
    dragSource_ = source;
    lastDragPoint_ = point;
    CTreeListItem* row = HitTest(point);
    SetHoverItem(row);
    const RowGuard guard(*this, row);
    const DropResult result = viewport()->rect().contains(point) ? askDrop(source, row) : DropResult::Refused;
    if (!guard.controlLives()) {
        return DropResult::Refused;
    }
    SetTargetItem(result == DropResult::OnRow ? guard.get() : nullptr);
    if (style_ & kStyleTree) {
        const bool own = source == this;
        if (hoverItem_ != timerItem_) {
            timerItem_ = hoverItem_;
            if (timerItem_) {
                expandTimer_.start(own ? kOwnExpandTime : kForeignExpandTime, this);
            } else {
                expandTimer_.stop();
            }
        }
        if (!scrollTimer_.isActive()) {
            scrollTimer_.start(own ? kOwnScrollTime : kForeignScrollTime, this);
        }
    }
    return result;
}

void CTreeListCtrl::DragLeave(CTreeListCtrl* source) {
    expandTimer_.stop();
    scrollTimer_.stop();
    timerItem_ = nullptr;
    dragSource_ = nullptr;
    SetHoverItem(nullptr);
    SetTargetItem(nullptr);
    notify(kNotifyDragLeave, nullptr, -1, source);
}

bool CTreeListCtrl::Drop(CTreeListCtrl* source, const QPoint& point) {
    const RowGuard guard(*this);
    const DropResult result = DragOver(source, point);
    if (!guard.controlLives()) {
        return false;
    }
    expandTimer_.stop();
    scrollTimer_.stop();
    if (result != DropResult::OnRow && result != DropResult::OnEmpty) {
        return false;
    }
    CTreeListItem* row = result == DropResult::OnRow ? targetItem_ : nullptr;
    SetTargetItem(nullptr);
    notify(kNotifyDrop, row, -1, source, row);
    return true;
}

void CTreeListCtrl::SetHoverItem(CTreeListItem* item) {
    hoverItem_ = item;
}

void CTreeListCtrl::SetTargetItem(CTreeListItem* item) {
    targetItem_ = item;
    if (!item) {
        dropWindow_.reset();
        return;
    }
    if (!dropWindow_) {
        dropWindow_ = std::make_unique<CTLCDropWnd>(viewport());
    }
    const QRect row = GetItemRect(item);
    dropWindow_->setGeometry(QRect(0, row.y(), viewport()->width(), row.height()));
    dropWindow_->show();
}

void CTreeListCtrl::scrollAtEdge() {
    const int index = GetItemIndex(hoverItem_);
    if (index < 0) {
        return;
    }
    const int top = GetTopIndex();
    QScrollBar* bar = verticalScrollBar();
    const int before = bar->value();
    if (index == top) {
        bar->setValue(top - 1);
    } else if (index >= top + GetCountPerPage() - 1) {
        bar->setValue(top + 1);
    }
    if (bar->value() != before && dragSource_) {
        DragOver(dragSource_, lastDragPoint_); // another row is under the cursor now
    }
}

void CTreeListCtrl::timerEvent(QTimerEvent* event) {
    if (event->timerId() == expandTimer_.timerId()) {
        expandTimer_.stop();
        if (timerItem_ && timerItem_ == hoverItem_ && !timerItem_->isExpanded()) {
            Expand(timerItem_, ExpandCode::Expand);
        }
    } else if (event->timerId() == scrollTimer_.timerId()) {
        scrollAtEdge();
    } else {
        QAbstractScrollArea::timerEvent(event);
    }
}

} // namespace fenmark::ui::treelist
