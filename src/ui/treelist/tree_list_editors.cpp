// The editors give the keys that end or move a modification to the control.
#include "ui/treelist/tree_list_editors.h"

#include <QEvent>
#include <QFocusEvent>
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

CTreeListStaticCtrl::CTreeListStaticCtrl(CTreeListCtrl& control) : QLineEdit(control.viewport()), control_(control) {
    setReadOnly(true);
    setFrame(true);
    hide();
}

bool CTreeListStaticCtrl::event(QEvent* event) {
    if (isEndKey(event)) {
        event->accept();
        return event->type() != QEvent::KeyPress || control_.editorKey(static_cast<QKeyEvent*>(event));
    }
    return QLineEdit::event(event);
}

void CTreeListStaticCtrl::focusOutEvent(QFocusEvent* event) {
    QLineEdit::focusOutEvent(event);
    if (losesForGood(event)) {
        control_.editorLostFocus();
    }
}

CTreeListEditCtrl::CTreeListEditCtrl(CTreeListCtrl& control) : QLineEdit(control.viewport()), control_(control) {
    setFrame(true);
    hide();
}

bool CTreeListEditCtrl::event(QEvent* event) {
    if (isEndKey(event)) {
        event->accept();
        return event->type() != QEvent::KeyPress || control_.editorKey(static_cast<QKeyEvent*>(event));
    }
    return QLineEdit::event(event);
}

void CTreeListEditCtrl::focusOutEvent(QFocusEvent* event) {
    QLineEdit::focusOutEvent(event);
    if (losesForGood(event)) {
        control_.editorLostFocus();
    }
}

CTreeListComboCtrl::CTreeListComboCtrl(CTreeListCtrl& control) : QComboBox(control.viewport()), control_(control) {
    setEditable(true);
    setInsertPolicy(QComboBox::NoInsert);
    hide();
}

bool CTreeListComboCtrl::event(QEvent* event) {
    if (isEndKey(event)) {
        event->accept();
        return event->type() != QEvent::KeyPress || control_.editorKey(static_cast<QKeyEvent*>(event));
    }
    return QComboBox::event(event);
}

void CTreeListComboCtrl::focusOutEvent(QFocusEvent* event) {
    QComboBox::focusOutEvent(event);
    if (losesForGood(event)) {
        control_.editorLostFocus();
    }
}

} // namespace fenmark::ui::treelist
