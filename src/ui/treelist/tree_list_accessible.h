// What screen readers and test tools learn of the tree list: a tree with cells, their names, states and actions.
#pragma once

namespace fenmark::ui::treelist {

class CTreeListCtrl;
class CTreeListItem;

// Makes the interfaces known to the toolkit; calls after the first do nothing.
void installTreeListAccessibility();

// The control's rows or columns have changed or go: interfaces of its cells that were handed out end.
void forgetAccessibleRows(const CTreeListCtrl* control);

// Sends a QAccessible::Event about a row that is shown.
void announceTreeListRow(const CTreeListCtrl* control, const CTreeListItem* item, int accessibleEvent);

} // namespace fenmark::ui::treelist
