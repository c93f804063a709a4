// The tree list control: what the mouse and the keys do.
#include <algorithm>

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <QWheelEvent>

#include "ui/treelist/tree_list_ctrl.h"
#include "ui/treelist/tree_list_header_ctrl.h"
#include "ui/treelist/tree_list_resource.h"
#include "ui/treelist/tree_list_row_guard.h"
#include "ui/treelist/tree_list_tip_ctrl.h"

namespace fenmark::ui::treelist {

namespace {

constexpr int kWidthStep = 8; // Alt+Shift+Left and Right change a column's width by this, pixels at 96 dots an inch

} // namespace

void CTreeListCtrl::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    if (tip_) {
        tip_->leave();
    }
    setFocus(Qt::MouseFocusReason);
    const QPoint point = event->position().toPoint();
    int flags = 0;
    int column = -1;
    CTreeListItem* item = HitTest(point, &flags, &column);
    pressPoint_ = point;
    pressItem_ = item;
    pressFlags_ = flags;
    pressTop_ = GetTopIndex();
    if (!item) {
        const RowGuard guard(*this);
        FinishModify();
        if (guard.controlLives()) {
            SelectItem(nullptr);
        }
        return;
    }
    pressRow(item, flags, column, event);
}

void CTreeListCtrl::pressRow(CTreeListItem* item, int flags, int column, QMouseEvent* event) {
    const RowGuard row(*this, item);
    switch (flags) {
    case kHitButton:
        Expand(item, item->isExpanded() ? ExpandCode::Collapse : ExpandCode::Expand);
        return;
    case kHitCheck:
        SetItemCheck(item, column);
        return;
    case kHitLock:
        SetItemLock(item, column);
        return;
    case kHitText:
        if (modifyItem_ == item) {
            BeginModify(item, column);
        } else if (modifyItem_) {
            FinishModify();
        }
        break;
    default:
        if (modifyItem_ && modifyItem_ != item) {
            FinishModify();
        }
        break;
    }
    if (!row) {
        return;
    }
    const int target = columns_.contains(column) ? column : focusOrFirstColumn();
    if (event->modifiers() & Qt::ControlModifier) {
        SelectItem(item, target, 0);
    } else if (item->state & kItemSelected) {
        ActiveItem(item, target);
    } else {
        SelectItem(item, target, 1);
    }
    if (row && !editorOpen_) {
        armDrag(item); // by row: the selection may have scrolled
    } else if (row && modifyItem_ == item) {
        SetCtrlFocus();
    }
}

void CTreeListCtrl::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    int flags = 0;
    CTreeListItem* item = HitTest(event->position().toPoint(), &flags);
    if (pressItem_ && GetTopIndex() != pressTop_) {
        // The first click scrolled its row into view; the second means the same row.
        item = pressItem_;
        flags = pressFlags_;
    }
    if (item && (style_ & kStyleTree) && (flags == kHitText || flags == kHitImage) && modifyItem_ != item) {
        Expand(item, ExpandCode::Toggle);
        return;
    }
    mousePressEvent(event); // the second of two quick clicks on a box or a button
}

void CTreeListCtrl::mouseMoveEvent(QMouseEvent* event) {
    const QPoint point = event->position().toPoint();
    if (state_ & kControlCaptured) {
        moveDrag(viewport()->mapToGlobal(point));
        return;
    }
    if ((state_ & kControlDragArmed) && (event->buttons() & Qt::LeftButton)) {
        if ((point - pressPoint_).manhattanLength() >= QApplication::startDragDistance()) {
            startDrag(point);
        }
        return;
    }
    if (event->buttons() == Qt::NoButton) {
        updateHover(point);
        updateTip(point);
    }
}

void CTreeListCtrl::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    setState(kControlDragArmed, false);
    if (state_ & kControlCaptured) {
        endDrag(true, viewport()->mapToGlobal(event->position().toPoint()));
    }
}

void CTreeListCtrl::updateHover(const QPoint& point) {
    int flags = 0;
    CTreeListItem* item = HitTest(point, &flags);
    if (!(flags & (kHitButton | kHitCheck | kHitLock))) {
        item = nullptr;
        flags = 0;
    }
    if (item != hotItem_ || flags != hotFlag_) {
        repaintItem(hotItem_);
        hotItem_ = item;
        hotFlag_ = flags;
        repaintItem(hotItem_);
    }
}

void CTreeListCtrl::updateTip(const QPoint& point) {
    if (!tip_) {
        return;
    }
    int flags = 0;
    int column = -1;
    QRect rect;
    const CTreeListItem* item = HitTest(point, &flags, &column, &rect);
    if (item && flags == kHitText && !editorOpen_) {
        const QString text = cellText(item, column);
        const QRect seen = rect & viewport()->rect();
        if (GetStringWidth(text) > seen.width()) {
            tip_->offer(text, rect, point);
            return;
        }
    }
    tip_->leave();
}

bool CTreeListCtrl::viewportEvent(QEvent* event) {
    if (event->type() == QEvent::Leave) {
        updateHover(QPoint(-1, -1));
        if (tip_) {
            tip_->leave();
        }
    }
    return QAbstractScrollArea::viewportEvent(event);
}

void CTreeListCtrl::wheelEvent(QWheelEvent* event) {
    QAbstractScrollArea::wheelEvent(event);
    // At an end the wheel is not passed on to the window around, unless there is nothing to scroll at all.
    event->setAccepted(verticalScrollBar()->maximum() > 0 || horizontalScrollBar()->maximum() > 0);
}

// A key takes the focus to a row and selects it alone. With several rows to be selected, Shift selects from the mark to
// it, and Ctrl leaves the selection as it is.
void CTreeListCtrl::moveFocusRow(CTreeListItem* item, Qt::KeyboardModifiers modifiers) {
    const bool multiple = (style_ & kStyleMultiSelect) != 0;
    const int column = focusOrFirstColumn();
    if (multiple && (modifiers & Qt::ShiftModifier)) {
        selectRange(item, column);
    } else if (multiple && (modifiers & Qt::ControlModifier)) {
        ActiveItem(item, column);
    } else {
        SelectItem(item, column, 1);
    }
}

void CTreeListCtrl::moveFocusColumn(int step) {
    const std::vector<int>& shown = columns_.shown();
    const int place = columns_.placeOf(focusOrFirstColumn()) + step;
    if (place < 0 || place >= static_cast<int>(shown.size())) {
        return;
    }
    const int column = shown[static_cast<std::size_t>(place)];
    if (focusItem_) {
        ActiveItem(focusItem_, column);
    } else {
        focusColumn_ = column;
    }
}

void CTreeListCtrl::keyPressEvent(QKeyEvent* event) {
    if (tip_) {
        tip_->leave();
    }
    if (event->key() == Qt::Key_Escape && (IsDragging() || (header_ && header_->isDragging()))) {
        event->accept();
        stopDrags();
        return;
    }
    event->accept();
    if (!(editorOpen_ ? editorKey(event) : treeKey(event))) {
        event->ignore(); // and not to the scroll bars: the parent may have a use for it
    }
}

bool CTreeListCtrl::treeKey(QKeyEvent* event) {
    const bool tree = (style_ & kStyleTree) != 0;
    const Qt::KeyboardModifiers modifiers = event->modifiers();
    if (event->key() == Qt::Key_Down && (modifiers & Qt::AltModifier)) {
        return headerMenuKey();
    }
    if (event->matches(QKeySequence::SelectAll) && (style_ & kStyleMultiSelect) && GetVisibleCount() > 0) {
        selectionMark_ = GetItemAtIndex(0);
        selectRange(GetItemAtIndex(GetVisibleCount() - 1), focusOrFirstColumn());
        return true;
    }
    switch (event->key()) {
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
    case Qt::Key_Home:
    case Qt::Key_End:
    case Qt::Key_Up:
    case Qt::Key_Down:
        if (GetVisibleCount() > 0) {
            moveFocusRow(GetItemAtIndex(rowAfterKey(event->key())), modifiers);
        }
        return true;
    case Qt::Key_Space:
        spaceKey(modifiers);
        return true;
    case Qt::Key_Insert: // Ctrl+Space belongs to input methods
        boxKey((modifiers & Qt::ShiftModifier) != 0);
        return true;
    case Qt::Key_Left:
    case Qt::Key_Right:
        return sidewaysKey(event->key() == Qt::Key_Right, modifiers);
    case Qt::Key_Plus:
    case Qt::Key_Minus:
        if (!tree || !focusItem_ || (modifiers & Qt::ControlModifier)) {
            return false;
        }
        Expand(focusItem_, event->key() == Qt::Key_Plus ? ExpandCode::Expand : ExpandCode::Collapse);
        return true;
    default:
        return false;
    }
}

// The index of the row that a key goes to from the focus row.
int CTreeListCtrl::rowAfterKey(int key) const {
    const int last = GetVisibleCount() - 1;
    const int here = GetItemIndex(focusItem_); // -1 if there is none
    const int page = std::max(1, GetCountPerPage() - 1);
    int to = 0;
    switch (key) {
    case Qt::Key_PageUp:
        to = here - page;
        break;
    case Qt::Key_PageDown:
        to = here < 0 ? 0 : here + page;
        break;
    case Qt::Key_End:
        to = last;
        break;
    case Qt::Key_Up:
        to = here - 1;
        break;
    case Qt::Key_Down:
        to = here + 1;
        break;
    default: // Home
        break;
    }
    return std::clamp(to, 0, last);
}

// The header's menu without a mouse. False if no header is shown.
bool CTreeListCtrl::headerMenuKey() {
    if (!header_ || !(style_ & kStyleHeader)) {
        return false;
    }
    const int column = focusOrFirstColumn();
    const QRect cell = column >= 0 ? header_->cellRect(column) : QRect();
    header_->showMenu(header_->mapToGlobal(QPoint(std::max(0, cell.left()), header_->height())), column);
    return true;
}

// The boxes without a mouse.
void CTreeListCtrl::boxKey(bool lock) {
    if (!focusItem_) {
        return;
    }
    if (lock && boxShown(focusItem_, kItemLockBox)) {
        SetItemLock(focusItem_, columns_.treeColumn());
    } else if (!lock && boxShown(focusItem_, kItemCheckBox)) {
        SetItemCheck(focusItem_, columns_.treeColumn());
    }
}

void CTreeListCtrl::spaceKey(Qt::KeyboardModifiers modifiers) {
    if (!focusItem_) {
        return;
    }
    const bool shift = (modifiers & Qt::ShiftModifier) != 0;
    if (modifiers & Qt::ControlModifier) {
        boxKey(shift); // where no input method takes the key
    } else if (shift && (style_ & kStyleMultiSelect)) {
        SelectItem(focusItem_, focusOrFirstColumn(), 0); // as a click with Ctrl
    } else if ((style_ & kStyleTree) && focusItem_->canHaveButton()) {
        Expand(focusItem_, ExpandCode::Toggle);
    } else if (boxShown(focusItem_, kItemCheckBox)) {
        // Nothing to expand: Space ticks, as in any list.
        SetItemCheck(focusItem_, columns_.treeColumn());
    }
}

// Left and Right. False if the key has no use.
bool CTreeListCtrl::sidewaysKey(bool right, Qt::KeyboardModifiers modifiers) {
    if (modifiers & Qt::AltModifier) {
        const int column = focusOrFirstColumn();
        if (!header_ || !(style_ & kStyleHeader) || column < 0) {
            return false;
        }
        if (modifiers & Qt::ShiftModifier) {
            const int step = metrics().px(kWidthStep);
            SetColumnWidth(column, std::max(0, GetColumnWidth(column) + (right ? step : -step)));
        } else {
            header_->moveColumn(column, columns_.placeOf(column) + (right ? 1 : -1));
        }
    } else if ((modifiers & Qt::ShiftModifier) && (style_ & kStyleTree)) {
        if (focusItem_) {
            Expand(focusItem_, right ? ExpandCode::Expand : ExpandCode::Collapse);
        }
    } else {
        moveFocusColumn(right ? 1 : -1);
    }
    return true;
}

void CTreeListCtrl::focusInEvent(QFocusEvent* event) {
    QAbstractScrollArea::focusInEvent(event);
    if (!focusItem_ && event->reason() != Qt::MouseFocusReason && GetVisibleCount() > 0) {
        // The keyboard needs a place to start from, and the user a mark that shows it.
        focusItem_ = GetSelectedItem() ? GetSelectedItem() : GetFirstVisibleItem();
        focusColumn_ = focusOrFirstColumn();
    }
    repaintRows();
}

void CTreeListCtrl::focusOutEvent(QFocusEvent* event) {
    QAbstractScrollArea::focusOutEvent(event);
    repaintRows();
}

bool CTreeListCtrl::focusNextPrevChild(bool next) {
    return !editorOpen_ && QAbstractScrollArea::focusNextPrevChild(next);
}

} // namespace fenmark::ui::treelist
