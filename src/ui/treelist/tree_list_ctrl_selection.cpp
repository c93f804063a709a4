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
    if (!item && selection_.empty()) {
        return true;
    }
    if (item && !toggles && selection_.size() == 1 && selection_.front() == item && focusItem_ == item &&
        focusColumn_ == column) {
        EnsureVisible(item, column);
        return true;
    }
    const RowGuard row(*this, item);
    if (notify(kNotifySelectionChanging, item, column) == -1) {
        return false;
    }
    if (item && !row) {
        return true; // the parent deleted it
    }
    const bool wasSelected = item && (item->state & kItemSelected);
    constexpr std::size_t kSingly = 64; // more rows than this are repainted all at once
    const bool singly = selection_.size() <= kSingly;
    const auto drop = [this, singly](CTreeListItem* old) {
        old->state &= ~std::uint32_t{kItemSelected};
        if (singly) {
            repaintItem(old);
        }
    };
    if (!singly) {
        repaintRows();
    }
    repaintItem(focusItem_);
    if (toggles && item) {
        if (wasSelected) {
            std::erase(selection_, item);
            drop(item);
        }
    } else {
        for (CTreeListItem* old : selection_) {
            drop(old);
        }
        selection_.clear();
    }
    if (item) {
        if (!toggles || !wasSelected) {
            item->state |= kItemSelected;
            selection_.push_front(item);
        }
        focusItem_ = item;
        focusColumn_ = column;
        if (!toggles || !selectionMark_) {
            selectionMark_ = item;
        }
    }
    repaintItem(item);
    notify(kNotifySelectionChanged, item, column);
    emit selectionChanged();
    if (row) {
        EnsureVisible(item, column);
        repaintItem(item);
        announceRow(item, QAccessible::Focus);
    }
    return true;
}

bool CTreeListCtrl::Select(int index, int column, int mode) {
    return SelectItem(GetItemAtIndex(index), column, mode);
}

void CTreeListCtrl::ActiveItem(CTreeListItem* item, int column) {
    if (column >= 0) {
        static_cast<void>(columns_.at(column));
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
