// The tree list control: editing in place, with writing back, refusal and undoing.
#include <algorithm>

#include <QApplication>
#include <QKeyEvent>
#include <QMetaObject>

#include "ui/treelist/tree_list_ctrl.h"
#include "ui/treelist/tree_list_editors.h"
#include "ui/treelist/tree_list_resource.h"
#include "ui/treelist/tree_list_row_guard.h"

namespace fenmark::ui::treelist {

namespace {

Qt::Alignment alignmentOf(const CTreeListColumnInfo& info) {
    switch (info.cellAlign()) {
    case HorizontalAlign::Right:
        return Qt::AlignRight | Qt::AlignVCenter;
    case HorizontalAlign::Center:
        return Qt::AlignHCenter | Qt::AlignVCenter;
    case HorizontalAlign::Left:
        break;
    }
    return Qt::AlignLeft | Qt::AlignVCenter;
}

} // namespace

bool CTreeListCtrl::BeginModify(CTreeListItem* item, int column) {
    static_cast<void>(columns_.at(column));
    if ((style_ & kStyleNoEdit) || columns_.placeOf(column) < 0 || !item || item == tree_.root() || item == TLI_ROOT) {
        return false;
    }
    if (state_ & kControlWriting) {
        return false; // asked from within a notification about the texts that are being written back
    }
    setUp();
    const RowGuard row(*this, item);
    if (modifyItem_ == item) {
        // A refused text is restored, and the editor goes on to the new column all the same.
        updateModifyColumn(modifyColumn_);
        if (!row || modifyItem_ != item) {
            return false; // the parent deleted the row or ended the modification
        }
    } else {
        if (modifyItem_) {
            UpdateModify();
        }
        if (!row || modifyItem_) {
            return false; // the parent deleted the row or began another modification
        }
        modifyItem_ = item;
        modifyTexts_ = item->texts().copy();
    }
    if (columns_.placeOf(column) < 0) {
        return false; // the parent took the column away
    }
    modifyColumn_ = column;
    setState(kControlModifying, true);
    return beginControl();
}

bool CTreeListCtrl::beginControl() {
    const RowGuard row(*this, modifyItem_);
    const int column = modifyColumn_;
    notify(kNotifyEditorOpening, modifyItem_, column);
    if (!row || modifyItem_ != row.get() || modifyColumn_ != column) {
        return false; // the parent deleted the row or ended the modification
    }
    EnsureVisible(modifyItem_, column);
    const QString text = cellText(modifyItem_, column);
    const CTreeListColumnInfo& info = columns_.at(column);
    openKind_ = info.modify == 2 ? ModifyKind::Combo : (info.modify == 1 ? ModifyKind::Edit : ModifyKind::Static);
    editorOpen_ = true;
    if (openKind_ == ModifyKind::Combo) {
        const QStringList choices = choices_[static_cast<std::size_t>(column)];
        if (!choices.isEmpty()) {
            comboEditor_->clear();
            comboEditor_->addItems(choices);
        }
        comboEditor_->setCurrentIndex(comboEditor_->findText(text));
        comboEditor_->setEditText(text);
        comboEditor_->lineEdit()->selectAll();
    } else {
        QLineEdit* edit = openKind_ == ModifyKind::Edit ? static_cast<QLineEdit*>(editEditor_) : staticEditor_;
        edit->setAlignment(alignmentOf(info));
        edit->setText(text);
        edit->selectAll();
    }
    QWidget* editor = GetControl();
    //: What a screen reader says of the editor: the header of its column.
    editor->setAccessibleName(GetColumnText(column));
    QPalette colors = palette(); // in the colours of the rows around it, whatever those of the desktop are
    colors.setColor(QPalette::Base, backColor_);
    colors.setColor(QPalette::Text, textColor_);
    editor->setPalette(colors);
    placeEditor();
    editor->show();
    editor->raise();
    editor->setFocus(Qt::OtherFocusReason);
    repaintItem(modifyItem_);
    return true;
}

void CTreeListCtrl::placeEditor() {
    if (!editorOpen_ || !modifyItem_) {
        return;
    }
    if (!modifyCellShown()) {
        // Written back as if the user had left it, when whoever takes the cell out of sight has done.
        QMetaObject::invokeMethod(
            this,
            [this] {
                if (editorOpen_ && !modifyCellShown()) {
                    UpdateModify();
                }
            },
            Qt::QueuedConnection);
        return;
    }
    QWidget* editor = GetControl();
    QRect rect = toRect(partsOf(modifyItem_, modifyColumn_).text);
    if (openKind_ == ModifyKind::Combo) {
        rect.adjust(0, -1, 0, 0); // raised by one pixel
    } else if (openKind_ == ModifyKind::Edit) {
        const int needed = GetStringWidth(editEditor_->text()) + 8;
        if (needed > rect.width()) {
            rect.setWidth(
                std::max(columns_.at(modifyColumn_).width, std::min(needed, viewport()->width() - rect.left())));
        }
    }
    editor->setFont(font());
    editor->setGeometry(rect);
}

QWidget* CTreeListCtrl::GetControl() const {
    if (!editorOpen_) {
        return nullptr;
    }
    switch (openKind_) {
    case ModifyKind::Edit:
        return editEditor_;
    case ModifyKind::Combo:
        return comboEditor_;
    case ModifyKind::Static:
        break;
    }
    return staticEditor_;
}

void CTreeListCtrl::SetCtrlFocus() {
    if (QWidget* editor = GetControl()) {
        editor->setFocus(Qt::OtherFocusReason);
    }
}

void CTreeListCtrl::closeEditor() {
    QWidget* editor = GetControl();
    if (!editor) {
        return;
    }
    const bool focused = editor->hasFocus();
    editorOpen_ = false; // first, so that the loss of the focus is not taken for the user's
    if (focused) {
        setFocus(Qt::OtherFocusReason);
    }
    editor->hide();
}

void CTreeListCtrl::endControl(bool write) {
    if (!editorOpen_) {
        return;
    }
    const QString text = openKind_ == ModifyKind::Edit ? editEditor_->text() : comboEditor_->currentText();
    const bool writes = write && openKind_ != ModifyKind::Static;
    closeEditor();
    const RowGuard row(*this, modifyItem_);
    if (writes && row) {
        SetItemText(row.get(), modifyColumn_, text);
    }
    repaintItem(row.get());
    notify(kNotifyEditorClosed, row.get(), modifyColumn_);
}

int CTreeListCtrl::updateModifyColumn(int column) {
    setState(kControlWriting, true);
    const RowGuard row(*this, modifyItem_);
    if (column == modifyColumn_) {
        endControl(true);
    }
    if (!row || modifyItem_ != row.get()) {
        return 1; // the parent deleted the row or ended the modification
    }
    const auto cell = static_cast<std::size_t>(column);
    const std::string saved = cell < modifyTexts_.size() ? modifyTexts_[cell] : std::string();
    if (row->texts().at(cell) != saved) {
        const int answer = notify(kNotifyCellChanged, row.get(), column);
        if (!row) {
            return 1;
        }
        if (answer < 0) {
            tree_.setText(row.get(), cell, saved);
            repaintItem(row.get());
            setState(kControlWriting, false);
            return 0;
        }
        if (modifyItem_ != row.get()) {
            return 1; // and what the parent began instead keeps its state
        }
    }
    setState(kControlModifying | kControlWriting, false);
    return 1;
}

int CTreeListCtrl::writeAllBack(bool reopen) {
    if (!modifyItem_ || (state_ & kControlWriting)) {
        return 1;
    }
    const RowGuard row(*this, modifyItem_);
    setState(kControlWriting, true);
    endControl(true);
    int accepted = 1;
    for (int column = 0; row && modifyItem_ == row.get() && column < columns_.count(); ++column) {
        if (updateModifyColumn(column) == 1) {
            continue;
        }
        accepted = 0;
        if (reopen && modifyItem_ == row.get() && columns_.placeOf(column) >= 0) {
            modifyColumn_ = column;
            setState(kControlModifying, true);
            beginControl();
            return 0;
        }
    }
    if (row && modifyItem_ == row.get()) {
        endModify();
        notify(kNotifyModifyEnded, row.get(), 0);
    }
    return accepted;
}

int CTreeListCtrl::UpdateModify() {
    return writeAllBack(false);
}
int CTreeListCtrl::FinishModify() {
    return writeAllBack(true);
}

void CTreeListCtrl::endModify() {
    modifyItem_ = nullptr;
    modifyColumn_ = -1;
    modifyTexts_.clear();
    setState(kControlModifying | kControlWriting, false);
}

void CTreeListCtrl::CancelModify() {
    if (!modifyItem_) {
        return;
    }
    const RowGuard row(*this, modifyItem_);
    setState(kControlWriting, true); // nothing begins while the parent is notified that the editor closed
    endControl(false);
    if (!row || modifyItem_ != row.get()) {
        return;
    }
    tree_.setTexts(row.get(), modifyTexts_);
    endModify();
    repaintItem(row.get());
    notify(kNotifyModifyEnded, row.get(), 1);
}

int CTreeListCtrl::GetNextModifyCol(int column) const {
    const std::vector<int>& shown = columns_.shown();
    const int count = static_cast<int>(shown.size());
    const int place = columns_.placeOf(column);
    for (int step = 1; step <= count; ++step) {
        const int next = shown[static_cast<std::size_t>((place + step + count) % count)];
        if (columns_.at(next).modify != 0) {
            return next;
        }
    }
    return -1;
}

int CTreeListCtrl::GetPrevModifyCol(int column) const {
    const std::vector<int>& shown = columns_.shown();
    const int count = static_cast<int>(shown.size());
    const int place = std::max(0, columns_.placeOf(column));
    for (int step = 1; step <= count; ++step) {
        const int next = shown[static_cast<std::size_t>((place - step + count) % count)];
        if (columns_.at(next).modify != 0) {
            return next;
        }
    }
    return -1;
}

bool CTreeListCtrl::editorKey(QKeyEvent* event) {
    if (!modifyItem_) {
        return false;
    }
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        FinishModify();
        return true;
    case Qt::Key_Escape:
        CancelModify();
        return true;
    case Qt::Key_Tab:
    case Qt::Key_Backtab: {
        const bool back = event->key() == Qt::Key_Backtab || (event->modifiers() & Qt::ShiftModifier);
        const int column = back ? GetPrevModifyCol(modifyColumn_) : GetNextModifyCol(modifyColumn_);
        if (column >= 0) {
            focusColumn_ = column;
            BeginModify(modifyItem_, column);
        }
        return true;
    }
    default:
        return false;
    }
}

void CTreeListCtrl::editorLostFocus() {
    if (!editorOpen_ || (state_ & kControlWriting)) {
        return;
    }
    // Looked at when the focus has arrived at its new place: within the control the modification goes on.
    QMetaObject::invokeMethod(
        this,
        [this] {
            const QWidget* now = QApplication::focusWidget();
            if (editorOpen_ && now && now != this && !isAncestorOf(now)) {
                UpdateModify();
            }
        },
        Qt::QueuedConnection);
}

bool CTreeListCtrl::modifyCellShown() const {
    return modifyItem_ && tree_.isShown(modifyItem_) && columns_.placeOf(modifyColumn_) >= 0;
}

} // namespace fenmark::ui::treelist
