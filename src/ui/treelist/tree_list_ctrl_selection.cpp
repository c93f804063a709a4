// The tree list control: the selection, the focus row and the focus column.
#include <algorithm>
#include <stdexcept>

#include <QAccessible>

#include "ui/treelist/tree_list_ctrl.h"
#include "ui/treelist/tree_list_row_guard.h"

namespace fenmark::ui::treelist {

bool CTreeListCtrl::SelectItem(CTreeListItem* item, int column, int mode) {
    if (item == tree_.root() || item == TLI_ROOT) {
        item = nullptr;
    }
    if (column >= 0) {
        static_cast<void>(columns_.at(column));
    } else {
        column = focusOrFirstColumn();
    }
    const bool multiple = (style_ & kStyleMultiSelect) != 0;
    const bool toggles = multiple && mode == 0;
    if (item && !toggles && selection_.size() == 1 && selection_.front() == item && focusItem_ == item &&
        focusColumn_ == column) {
        EnsureVisible(item, column);
        return true;
    }
    const RowGuard row(*this, item);
    if (notify(kNotifySelectionChanging, item, column) == -1) {
        return false;
    }
    if (!row.controlLives() || (item && !row)) {
        return true; // the parent deleted it
    }
    repaintItem(focusItem_);
    if (!toggles || !item) {
        clearSelection();
    }
    if (item && (item->state & kItemSelected)) {
        unselect(item);
    } else if (item) {
        item->state |= kItemSelected;
        selection_.push_front(item);
    }
    if (item) {
        selectionMark_ = item;
    }
    selectionMade(row, column);
    return true;
}

// The rows of the flat list from the selection mark to `item` and no others, as users of lists know it from Shift.
bool CTreeListCtrl::selectRange(CTreeListItem* item, int column) {
    const RowGuard row(*this, item);
    if (notify(kNotifySelectionChanging, item, column) == -1) {
        return false;
    }
    if (!row || !tree_.isShown(item)) {
        return true;
    }
    const auto to = static_cast<std::uint32_t>(GetItemIndex(item));
    CTreeListItem* mark = selectionMark_ ? selectionMark_ : focusItem_;
    const std::uint32_t from = tree_.indexOf(mark).value_or(to);
    clearSelection();
    // From the mark on, so that the row itself comes to the front.
    selectionMark_ = tree_.itemAt(from);
    for (CTreeListItem* each = selectionMark_;; each = from < to ? tree_.nextShown(each) : tree_.previousShown(each)) {
        each->state |= kItemSelected;
        selection_.push_front(each);
        if (each == item) {
            break;
        }
    }
    repaintRows();
    selectionMade(row, column);
    return true;
}

void CTreeListCtrl::clearSelection() {
    constexpr std::size_t kSingly = 64; // more rows than this are repainted all at once
    const bool singly = selection_.size() <= kSingly;
    for (CTreeListItem* row : selection_) {
        row->state &= ~std::uint32_t{kItemSelected};
        if (singly) {
            repaintItem(row);
        }
    }
    if (!singly) {
        repaintRows();
    }
    selection_.clear();
}

void CTreeListCtrl::unselect(CTreeListItem* item) {
    item->state &= ~std::uint32_t{kItemSelected};
    // Rows mostly leave in the order in which they came, or in the reverse.
    if (selection_.front() == item) {
        selection_.pop_front();
    } else if (selection_.back() == item) {
        selection_.pop_back();
    } else {
        std::erase(selection_, item);
    }
}

// What follows a change of the selection: the row, if there is one, has the focus and comes into view.
void CTreeListCtrl::selectionMade(const RowGuard& row, int column) {
    if (!columns_.contains(column)) {
        column = focusOrFirstColumn(); // the parent took it away
    }
    if (row) {
        focusItem_ = row.get();
        focusColumn_ = column;
        repaintItem(focusItem_);
    }
    notify(kNotifySelectionChanged, row.get(), column);
    if (row.controlLives()) {
        emit selectionChanged();
    }
    if (row) {
        EnsureVisible(row.get(), column);
        repaintItem(row.get());
        announceRow(row.get(), QAccessible::Focus);
    }
}

bool CTreeListCtrl::Select(int index, int column, int mode) {
    return SelectItem(GetItemAtIndex(index), column, mode);
}

void CTreeListCtrl::ActiveItem(CTreeListItem* item, int column) {
    if (column >= 0) {
        static_cast<void>(columns_.at(column));
    }
    if (item == tree_.root() || item == TLI_ROOT) {
        item = nullptr;
    }
    repaintItem(focusItem_);
    focusItem_ = item;
    focusColumn_ = column >= 0 ? column : focusOrFirstColumn();
    EnsureVisible(item, focusColumn_);
    repaintItem(item);
    if (item) {
        announceRow(item, QAccessible::Focus);
    }
}

CTreeListItem* CTreeListCtrl::GetSelectedItem() const {
    return selection_.empty() ? nullptr : selection_.front();
}
int CTreeListCtrl::GetSelectedCount() const {
    return static_cast<int>(selection_.size());
}
int CTreeListCtrl::GetFirstSelectedItemPosition() const {
    return selection_.empty() ? -1 : 0;
}

CTreeListItem* CTreeListCtrl::GetNextSelectedItem(int& position) const {
    if (position < 0 || position >= GetSelectedCount()) {
        throw std::invalid_argument("tree list: no such position in the selection");
    }
    CTreeListItem* item = selection_[static_cast<std::size_t>(position)];
    position = position + 1 < GetSelectedCount() ? position + 1 : -1;
    return item;
}

bool CTreeListCtrl::IsInSelectsTree(const CTreeListItem* item) const {
    for (const CTreeListItem* row = item; row; row = row->parent()) {
        if (row->state & kItemSelected) {
            return true;
        }
    }
    return false;
}

} // namespace fenmark::ui::treelist
