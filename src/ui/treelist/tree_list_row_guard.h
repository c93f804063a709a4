// RowGuard: a pointer to a row that becomes null when the row or its control is deleted.
#pragma once

#include <algorithm>

#include "ui/treelist/tree_list_ctrl.h"

namespace fenmark::ui::treelist {

// Held over a notification, in which the parent may delete any row, and the control itself.
class RowGuard {
  public:
    explicit RowGuard(CTreeListCtrl& control, CTreeListItem* item = nullptr) : control_(&control), item_(item) {
        control_->guards_.push_back(this);
    }
    ~RowGuard() {
        if (control_) {
            std::erase(control_->guards_, this);
        }
    }
    RowGuard(const RowGuard&) = delete;
    RowGuard& operator=(const RowGuard&) = delete;

    [[nodiscard]] bool controlLives() const { return control_ != nullptr; }
    [[nodiscard]] CTreeListItem* get() const { return item_; }
    explicit operator bool() const { return item_ != nullptr; }
    CTreeListItem* operator->() const { return item_; }

  private:
    friend class CTreeListCtrl;

    CTreeListCtrl* control_;
    CTreeListItem* item_;
};

} // namespace fenmark::ui::treelist
