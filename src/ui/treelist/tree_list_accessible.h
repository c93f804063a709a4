// What screen readers and test tools learn of the tree list: a tree with cells, their names, states and actions.
#pragma once

#include <QAccessible>

namespace fenmark::ui::treelist {

class CTreeListCtrl;
class CTreeListItem;

// Makes the interfaces known to the toolkit; calls after the first do nothing.
void installTreeListAccessibility();

// True while a screen reader or the like is listening.
[[nodiscard]] bool treeListIsHeard();

// The control's rows or columns have changed or go: interfaces of its cells that are in use end.
void forgetAccessibleRows(const CTreeListCtrl* control);

// The rows or columns shown have changed: notifies listeners that the table is another one.
void announceTreeListReset(const CTreeListCtrl* control);

// Hears all events in place of the toolkit, whose own listeners cannot be had on every platform; null ends it.
void hearTreeListEvents(void (*hear)(QAccessibleEvent* event));

// Sends a QAccessible::Event about a row that is shown.
void announceTreeListRow(const CTreeListCtrl* control, const CTreeListItem* item, int accessibleEvent);

} // namespace fenmark::ui::treelist
