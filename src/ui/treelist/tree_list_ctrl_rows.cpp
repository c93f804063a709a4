// The tree list control: its rows, their checks and locks, and walks over them.
#include <algorithm>
#include <stdexcept>

#include <QAccessible>
#include <QScrollBar>

#include "ui/treelist/tree_list_accessible.h"
#include "ui/treelist/tree_list_ctrl.h"
#include "ui/treelist/tree_list_row_guard.h"

namespace fenmark::ui::treelist {

namespace {

// The UTF-8 form of a text without a heap allocation for short Latin texts, which are the many.
class Utf8Text {
  public:
    explicit Utf8Text(const QString& text) {
        const qsizetype length = text.size();
        if (length <= static_cast<qsizetype>(sizeof few_)) {
            const QChar* from = text.constData();
            qsizetype i = 0;
            for (; i < length && from[i].unicode() < 0x80; ++i) {
                few_[i] = static_cast<char>(from[i].unicode());
            }
            if (i == length) {
                view_ = std::string_view(few_, static_cast<std::size_t>(length));
                return;
            }
        }
        bytes_ = text.toUtf8();
        view_ = std::string_view(bytes_.constData(), static_cast<std::size_t>(bytes_.size()));
    }
    [[nodiscard]] std::string_view view() const { return view_; }

  private:
    char few_[64];
    QByteArray bytes_;
    std::string_view view_;
};

CTreeListItem* shownAt(const ItemTree& tree, int index) {
    CTreeListItem* item = index < 0 ? nullptr : tree.itemAt(static_cast<std::uint32_t>(index));
    if (!item) {
        throw std::invalid_argument("tree list: no such row");
    }
    return item;
}

} // namespace

CTreeListItem* CTreeListCtrl::realParent(CTreeListItem* parent) const {
    return !parent || parent == TLI_ROOT ? tree_.root() : parent;
}

CTreeListItem* CTreeListCtrl::afterIn(CTreeListItem* parent, CTreeListItem* after) const {
    if (after == TLI_LAST) {
        return parent->lastChild();
    }
    if (after == TLI_SORT) {
        return GetSortChildItem(parent);
    }
    if (!after || after == TLI_FIRST || after == TLI_ROOT || after->parent() != parent) {
        return nullptr;
    }
    return after;
}

CTreeListItem* CTreeListCtrl::InsertItem(const QString& text, CTreeListItem* parent, CTreeListItem* after) {
    parent = realParent(parent);
    CTreeListItem* item = tree_.insert(parent, afterIn(parent, after), Utf8Text(text).view());
    for (int column = 1; column < columns_.count(); ++column) {
        const std::string& preset = columns_.at(column).defaultText;
        if (!preset.empty()) {
            tree_.setText(item, static_cast<std::size_t>(column), preset);
        }
    }
    scheduleLayout();
    return item;
}

CTreeListItem* CTreeListCtrl::InsertItem(int index, const QString& text) {
    if (index < 0 || index > GetVisibleCount()) {
        throw std::invalid_argument("tree list: no such row");
    }
    if (index == GetVisibleCount()) {
        return InsertItem(text, TLI_ROOT, TLI_LAST);
    }
    CTreeListItem* there = shownAt(tree_, index);
    CTreeListItem* before = there->previousSibling();
    return InsertItem(text, there->parent(), before ? before : TLI_FIRST);
}

void CTreeListCtrl::leaveEditor(const CTreeListItem* above) {
    if (!modifyItem_ || !modifyItem_->isInSubtreeOf(above)) {
        return;
    }
    const RowGuard row(*this, modifyItem_);
    setState(kControlWriting, true); // as when a modification is cancelled
    endControl(false);
    if (row && modifyItem_ == row.get()) {
        endModify();
    }
}

void CTreeListCtrl::forget(CTreeListItem* subtree) {
    const auto gone = [subtree](const CTreeListItem* row) { return row && row->isInSubtreeOf(subtree); };
    if (gone(modifyItem_)) {
        closeEditor(); // the parent opened it again while it was notified that it closed
        endModify();
    }
    if (gone(focusItem_)) {
        // The keyboard goes on beside the row, without a change of the selection.
        CTreeListItem* next = subtree->nextSibling() ? subtree->nextSibling() : subtree->previousSibling();
        focusItem_ = next ? next : (subtree->parent() == tree_.root() ? nullptr : subtree->parent());
    }
    for (CTreeListItem** kept : {&selectionMark_, &pressItem_, &hotItem_, &hoverItem_, &targetItem_, &timerItem_}) {
        if (gone(*kept)) {
            *kept = nullptr;
        }
    }
    for (RowGuard* guard : guards_) {
        if (gone(guard->item_)) {
            guard->item_ = nullptr;
        }
    }
    if (!subtree->hasChildren()) {
        if (subtree->state & kItemSelected) {
            unselect(subtree);
        }
    } else if (!selection_.empty()) {
        std::erase_if(selection_, gone);
    }
    forgetAccessibleRows(this);
}

void CTreeListCtrl::DeleteItem(CTreeListItem* item) {
    if (!item) {
        return;
    }
    if (item == TLI_ROOT || item == tree_.root()) {
        DeleteAllItems();
        return;
    }
    const RowGuard row(*this, item);
    leaveEditor(item);
    if (!row) {
        return; // the parent deleted it
    }
    forget(item);
    leaveUnions(item);
    tree_.erase(item);
    scheduleLayout();
    repaintRows();
}

void CTreeListCtrl::DeleteItem(int index) {
    DeleteItem(shownAt(tree_, index));
}

void CTreeListCtrl::DeleteAllItems() {
    const RowGuard guard(*this);
    CancelModify();
    if (!guard.controlLives()) {
        return;
    }
    const bool redraw = redraw_;
    SetRedraw(false);
    clearSelection();
    while (CTreeListItem* item = tree_.root()->lastChild()) {
        forget(item);
        tree_.erase(item);
    }
    focusItem_ = nullptr;
    // Rows to come shall not inherit a check or lock that the hidden root took from the rows that went.
    tree_.setState(tree_.root(), kItemInitialState, kItemCheckPair | kItemLockPair);
    layoutDirty_ = true;
    SetRedraw(redraw);
}

bool CTreeListCtrl::MoveAfterItem(CTreeListItem* item, CTreeListItem* parent, CTreeListItem* after) {
    parent = realParent(parent);
    if (!item || item == tree_.root() || parent->isInSubtreeOf(item)) {
        return false;
    }
    CTreeListItem* place = afterIn(parent, after);
    if (place == item) {
        // Behind itself, or last where it is the last already.
        return true;
    }
    const bool newParent = item->parent() != parent;
    if (newParent) {
        leaveUnions(item);
    }
    tree_.move(item, parent, place);
    if (newParent) {
        joinUnions(item);
    }
    forgetAccessibleRows(this);
    scheduleLayout();
    repaintRows();
    return true;
}

bool CTreeListCtrl::ExchangeItem(CTreeListItem* one, CTreeListItem* other) {
    if (!one || !other || one == tree_.root() || other == tree_.root() ||
        (one != other && (one->isInSubtreeOf(other) || other->isInSubtreeOf(one)))) {
        return false;
    }
    const bool newParents = one->parent() != other->parent();
    if (newParents) {
        leaveUnions(one);
        leaveUnions(other);
    }
    tree_.exchange(one, other);
    if (newParents) {
        joinUnions(one);
        joinUnions(other);
    }
    forgetAccessibleRows(this);
    scheduleLayout();
    repaintRows();
    return true;
}

QString CTreeListCtrl::cellText(const CTreeListItem* item, int column) const {
    const std::string_view text = item->texts().at(static_cast<std::size_t>(column));
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QString CTreeListCtrl::GetItemText(const CTreeListItem* item, int column) const {
    if (!item || !columns_.contains(column)) {
        return {}; // a null text
    }
    const QString text = cellText(item, column);
    return text.isNull() ? QString::fromLatin1("") : text;
}

void CTreeListCtrl::SetItemText(CTreeListItem* item, int column, const QString& text) {
    static_cast<void>(columns_.at(column));
    tree_.setText(item, static_cast<std::size_t>(column), Utf8Text(text).view());
    repaintItem(item);
    announceRow(item, QAccessible::NameChanged);
}

std::uint32_t CTreeListCtrl::GetItemData(const CTreeListItem* item) const {
    return item->data;
}
void CTreeListCtrl::SetItemData(CTreeListItem* item, std::uint32_t data) {
    item->data = data;
}

int CTreeListCtrl::GetItemImage(const CTreeListItem* item, ItemImage which) const {
    return item->images[static_cast<std::size_t>(which)];
}

void CTreeListCtrl::SetItemImage(CTreeListItem* item, int normal, int expanded, int selected, int expandedSelected) {
    item->images = {normal, expanded, selected, expandedSelected};
    repaintItem(item);
}

std::uint32_t CTreeListCtrl::GetItemState(const CTreeListItem* item) const {
    return item->state;
}

void CTreeListCtrl::SetItemState(CTreeListItem* item, std::uint32_t state, std::uint32_t mask) {
    if (item == tree_.root()) {
        mask &= ~std::uint32_t{kItemSelected}; // a row that is never shown is in no selection
    }
    const std::uint32_t before = item->state;
    const std::uint32_t shown = tree_.visibleCount();
    tree_.setState(item, state, mask);
    if ((before ^ item->state) & kItemSelected) {
        // The selection follows the bit.
        if (before & kItemSelected) {
            unselect(item);
        } else {
            if (!(style_ & kStyleMultiSelect)) {
                clearSelection();
            }
            selection_.push_front(item);
        }
    }
    if (tree_.visibleCount() != shown) {
        scheduleLayout();
    }
    repaintItem(item);
    announceRow(item, QAccessible::StateChanged);
}

int CTreeListCtrl::GetItemCount() const {
    return static_cast<int>(tree_.count());
}
int CTreeListCtrl::GetCount() const {
    return static_cast<int>(tree_.count());
}
bool CTreeListCtrl::ItemHasChildren(const CTreeListItem* item) const {
    return (item == TLI_ROOT ? tree_.root() : item)->hasChildren();
}

bool CTreeListCtrl::Expand(CTreeListItem* item, ExpandCode code) {
    if (!item || item == TLI_ROOT || item == tree_.root()) {
        return false;
    }
    if ((item->state & kItemExpandedOnce) && !item->hasChildren()) {
        return true;
    }
    const bool wanted = code == ExpandCode::Expand || (code == ExpandCode::Toggle && !item->isExpanded());
    if (item->isExpanded() == wanted) {
        return true; // a collapsed row keeps its children, whatever way of collapsing is asked for
    }
    const RowGuard row(*this, item);
    if (notify(kNotifyExpanding, item) == -1) {
        return false;
    }
    if (row && code == ExpandCode::CollapseReset && modifyItem_ != item) {
        leaveEditor(item);
    }
    if (!row) {
        return true; // the parent deleted it
    }
    tree_.setExpanded(item, wanted);
    if (!wanted && focusItem_ && focusItem_ != item && focusItem_->isInSubtreeOf(item)) {
        focusItem_ = item; // the keyboard stays on a row that is shown
    }
    if (code == ExpandCode::CollapseReset) {
        while (item->hasChildren()) {
            CTreeListItem* child = item->lastChild();
            forget(child);
            tree_.erase(child);
        }
    }
    scheduleLayout();
    repaintRows();
    announceRow(item, QAccessible::StateChanged);
    notify(kNotifyExpanded, item);
    return true;
}

void CTreeListCtrl::EnsureVisible(CTreeListItem* item, int column) {
    if (!item || item == tree_.root()) {
        return;
    }
    for (CTreeListItem* row = item->parent(); row && row != tree_.root(); row = row->parent()) {
        if (!row->isExpanded()) {
            tree_.setExpanded(row, true);
            scheduleLayout();
        }
    }
    layoutNow();
    const int index = GetItemIndex(item);
    const int page = GetCountPerPage();
    QScrollBar* vertical = verticalScrollBar();
    if (index < vertical->value()) {
        vertical->setValue(index);
    } else if (index >= vertical->value() + page) {
        vertical->setValue(index - page + 1);
    }
    const int left = column >= 0 ? columns_.left(column) : -1;
    if (left >= 0) {
        QScrollBar* horizontal = horizontalScrollBar();
        const int view = viewport()->width();
        const int from = horizontal->value();
        const int right = left + columns_.at(column).width;
        // A column that fills the view stays where it is.
        const bool fills = left <= from && right >= from + view;
        if (!fills && left < from) {
            horizontal->setValue(left);
        } else if (!fills && right > from + view) {
            horizontal->setValue(std::min(left, right - view));
        }
    }
}

CTreeListItem* CTreeListCtrl::GetRootItem() const {
    return tree_.root();
}
CTreeListItem* CTreeListCtrl::GetParentItem(const CTreeListItem* item) const {
    return item->parent();
}
CTreeListItem* CTreeListCtrl::GetChildItem(const CTreeListItem* item) const {
    return (!item || item == TLI_ROOT ? tree_.root() : item)->firstChild();
}
CTreeListItem* CTreeListCtrl::GetSortChildItem(const CTreeListItem* parent) const {
    return (!parent || parent == TLI_ROOT ? tree_.root() : parent)->lastChild();
}
CTreeListItem* CTreeListCtrl::GetNextSiblingItem(const CTreeListItem* item) const {
    return item->nextSibling();
}
CTreeListItem* CTreeListCtrl::GetPrevSiblingItem(const CTreeListItem* item) const {
    return item->previousSibling();
}
CTreeListItem* CTreeListCtrl::GetNextItem(const CTreeListItem* item) const {
    return ItemTree::nextInTree(item == TLI_ROOT ? tree_.root() : item, tree_.root());
}
CTreeListItem* CTreeListCtrl::GetNextVisibleItem(const CTreeListItem* item) const {
    return tree_.nextShown(item);
}
CTreeListItem* CTreeListCtrl::GetPrevVisibleItem(const CTreeListItem* item) const {
    return item == tree_.root() ? nullptr : tree_.previousShown(item);
}
CTreeListItem* CTreeListCtrl::GetFirstVisibleItem() const {
    return tree_.itemAt(static_cast<std::uint32_t>(GetTopIndex()));
}

int CTreeListCtrl::GetTopIndex() const {
    layoutNow();
    return verticalScrollBar()->value();
}

void CTreeListCtrl::SetTopIndex(int index) {
    layoutNow();
    verticalScrollBar()->setValue(index);
}

int CTreeListCtrl::GetVisibleCount() const {
    return static_cast<int>(tree_.visibleCount());
}
int CTreeListCtrl::GetCountPerPage() const {
    return std::max(1, viewport()->height() / GetItemHeight());
}
CTreeListItem* CTreeListCtrl::GetItemAtIndex(int index) const {
    return shownAt(tree_, index);
}

int CTreeListCtrl::GetItemIndex(const CTreeListItem* item) const {
    const auto index = tree_.indexOf(item);
    return index ? static_cast<int>(*index) : -1;
}

int CTreeListCtrl::GetCheck(const CTreeListItem* item) const {
    return ItemTree::pairValue(item, kCheckPair);
}
int CTreeListCtrl::GetLock(const CTreeListItem* item) const {
    return ItemTree::pairValue(item, kLockPair);
}

void CTreeListCtrl::SetCheck(CTreeListItem* item, int check) {
    tree_.cascade(item, kCheckPair, check != 0);
    repaintRows();
    announceRow(item, QAccessible::StateChanged);
}

void CTreeListCtrl::SetLock(CTreeListItem* item, int lock) {
    tree_.cascade(item, kLockPair, lock != 0);
    repaintRows();
    announceRow(item, QAccessible::StateChanged);
}

void CTreeListCtrl::SetItemCheck(CTreeListItem* item, int column) {
    // The logical not of the state: checked and mixed rows become unchecked.
    const bool on = GetCheck(item) == 0;
    if (style_ & kStyleCheckRowOnly) {
        ItemTree::setPair(item, kCheckPair, on);
        return;
    }
    const RowGuard row(*this, item);
    SetCheck(item, on ? 1 : 0);
    notify(kNotifyCheckChanged, item, column);
    if (row) {
        emit checkChanged(item);
    }
}

void CTreeListCtrl::SetItemLock(CTreeListItem* item, int column) {
    const RowGuard row(*this, item);
    if (notify(kNotifyLockChanging, item, column) == -1 || !row) {
        return;
    }
    const bool on = GetLock(item) == 0;
    if (style_ & kStyleLockRowOnly) {
        ItemTree::setPair(item, kLockPair, on);
        return;
    }
    SetLock(item, on ? 1 : 0);
}

void CTreeListCtrl::leaveUnions(CTreeListItem* item) const {
    if (!(style_ & kStyleCheckRowOnly)) {
        ItemTree::leaveUnion(item, kCheckPair);
    }
    if (!(style_ & kStyleLockRowOnly)) {
        ItemTree::leaveUnion(item, kLockPair);
    }
}

void CTreeListCtrl::joinUnions(CTreeListItem* item) const {
    if (!(style_ & kStyleCheckRowOnly)) {
        ItemTree::joinUnion(item, kCheckPair);
    }
    if (!(style_ & kStyleLockRowOnly)) {
        ItemTree::joinUnion(item, kLockPair);
    }
}

bool CTreeListCtrl::boxShown(const CTreeListItem* item, std::uint32_t box) const {
    const std::uint32_t style = box == kItemCheckBox ? kStyleCheckBoxes : kStyleLockBoxes;
    return item && (style_ & style) && (item->state & box);
}

void CTreeListCtrl::announceRow(CTreeListItem* item, int accessibleEvent) const {
    if (treeListIsHeard()) {
        announceTreeListRow(this, item, accessibleEvent);
    }
}

} // namespace fenmark::ui::treelist
