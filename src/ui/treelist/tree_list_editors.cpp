// The editors give the keys that end or move a modification to the control.
#include "ui/treelist/tree_list_editors.h"

#include <QKeyEvent>

#include "ui/treelist/tree_list_ctrl.h"

namespace fenmark::ui::treelist {

namespace {

bool isEndKey(QEvent* event) {
    if (event->type() != QEvent::KeyPress && event->type() != QEvent::ShortcutOverride) {
        return false;
    }
    switch (static_cast<QKeyEvent*>(event)->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Escape:
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
        return true;
    default:
        return false;
    }
}

bool losesForGood(const QFocusEvent* event) {
    return event->reason() != Qt::PopupFocusReason && event->reason() != Qt::ActiveWindowFocusReason &&
           event->reason() != Qt::MenuBarFocusReason;
}

} // namespace

template <class Widget>
InPlaceEditor<Widget>::InPlaceEditor(CTreeListCtrl& control) : Widget(control.viewport()), control_(control) {
    Widget::hide();
}

template <class Widget>
bool InPlaceEditor<Widget>::event(QEvent* event) {
    if (isEndKey(event)) {
        event->accept();
        return event->type() != QEvent::KeyPress || control_.editorKey(static_cast<QKeyEvent*>(event));
    }
    return Widget::event(event);
}

template <class Widget>
void InPlaceEditor<Widget>::focusOutEvent(QFocusEvent* event) {
    Widget::focusOutEvent(event);
    if (losesForGood(event)) {
        control_.editorLostFocus();
    }
}

CTreeListStaticCtrl::CTreeListStaticCtrl(CTreeListCtrl& control) : InPlaceEditor(control) {
    setReadOnly(true);
}

CTreeListEditCtrl::CTreeListEditCtrl(CTreeListCtrl& control) : InPlaceEditor(control) {}

CTreeListComboCtrl::CTreeListComboCtrl(CTreeListCtrl& control) : InPlaceEditor(control) {
    setEditable(true);
    setInsertPolicy(QComboBox::NoInsert);
}

} // namespace fenmark::ui::treelist
