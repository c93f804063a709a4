// RowGuard: a pointer to a row that becomes null when the row is deleted.
#pragma once

#include <algorithm>

#include "ui/treelist/tree_list_ctrl.h"

namespace fenmark::ui::treelist {

// Held over a notification, in which the parent may delete any row.
class RowGuard {
  public:
    RowGuard(CTreeListCtrl& control, CTreeListItem* item) : control_(control), item_(item) {
        control_.guards_.push_back(&item_);
    }
    ~RowGuard() { std::erase(control_.guards_, &item_); }
    RowGuard(const RowGuard&) = delete;
    RowGuard& operator=(const RowGuard&) = delete;

    [[nodiscard]] CTreeListItem* get() const { return item_; }
    explicit operator bool() const { return item_ != nullptr; }
    CTreeListItem* operator->() const { return item_; }

  private:
    CTreeListCtrl& control_;
    CTreeListItem* item_;
};

} // namespace fenmark::ui::treelist
