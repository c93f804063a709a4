// The notifications of the tree list to its parent, and how the parent answers.
#pragma once

#include "ui/treelist/model/tree_list_codes.h"
#include "ui/treelist/model/tree_list_item.h"

namespace fenmark::ui::treelist {

class CTreeListCtrl;

// One notification. `item` and `column` are null and -1 where the code has none.
struct TreeListNotification {
    CTreeListCtrl* control = nullptr;
    int code = 0;
    CTreeListItem* item = nullptr;
    int column = -1;
    // Drag notifications (-423 to -426) only: the control that the rows come from, and the row under the cursor,
    // which is null for the empty area.
    CTreeListCtrl* source = nullptr;
    CTreeListItem* target = nullptr;
};

// Implemented by windows that hold a tree list. The nearest ancestor of the control that implements it is asked,
// unless SetNotifyTarget names another. The answer counts where NotifyCode says so; 0 lets things go their way.
class TreeListParent {
  public:
    virtual int treeListNotify(const TreeListNotification& notification) = 0;

  protected:
    ~TreeListParent() = default;
};

} // namespace fenmark::ui::treelist
