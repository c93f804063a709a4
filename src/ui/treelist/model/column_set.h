// The columns of a tree list with their two orders: as shown from left to right, and as sorted.
#pragma once

#include <cstddef>
#include <vector>

#include "ui/treelist/model/tree_list_column_info.h"

namespace fenmark::ui::treelist {

// Columns keep their index whatever is shown. A hidden column is in no shown order; a column whose format can sort and
// names a direction is in the order of the sorted columns, the last one so marked at its end.
class ColumnSet {
  public:
    [[nodiscard]] int count() const { return static_cast<int>(columns_.size()); }
    [[nodiscard]] bool contains(int column) const { return column >= 0 && column < count(); }
    // Raises std::invalid_argument on an index out of range.
    [[nodiscard]] const CTreeListColumnInfo& at(int column) const;
    [[nodiscard]] CTreeListColumnInfo& at(int column);

    int append(CTreeListColumnInfo column);
    void remove(int column);
    // Changes the format and both orders with it: a column that is shown again goes to the end.
    void setFormat(int column, std::uint32_t format);

    [[nodiscard]] const std::vector<int>& shown() const { return shown_; }
    [[nodiscard]] const std::vector<int>& sorted() const { return sorted_; }
    [[nodiscard]] std::vector<int> hidden() const;
    // Columns not named become hidden. False, and nothing changes, if a column is named twice.
    bool setShown(const std::vector<int>& order);
    // Moves a column so that it stands at the place in the shown order, from the hidden list too; place -1 hides it.
    void place(int column, int place);

    // The column that shows the tree: the first shown one, or -1.
    [[nodiscard]] int treeColumn() const { return shown_.empty() ? -1 : shown_.front(); }
    // Left edge of a shown column, 0 being that of the first; -1 if it is hidden.
    [[nodiscard]] int left(int column) const;
    [[nodiscard]] int totalWidth() const;
    // The shown column at x, or -1.
    [[nodiscard]] int columnAt(int x) const;
    // Place of the column in the shown order, or -1.
    [[nodiscard]] int placeOf(int column) const;

  private:
    void updateOrders(int column);

    std::vector<CTreeListColumnInfo> columns_;
    std::vector<int> shown_;
    std::vector<int> sorted_;
};

} // namespace fenmark::ui::treelist
