// Columns and their orders.
#include "ui/treelist/model/column_set.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace fenmark::ui::treelist {

namespace {

void takeOut(std::vector<int>& order, int column) {
    std::erase(order, column);
}

void columnRemoved(std::vector<int>& order, int column) {
    takeOut(order, column);
    for (int& entry : order) {
        entry -= entry > column ? 1 : 0;
    }
}

bool holds(const std::vector<int>& order, int column) {
    return std::find(order.begin(), order.end(), column) != order.end();
}

} // namespace

const CTreeListColumnInfo& ColumnSet::at(int column) const {
    if (!contains(column)) {
        throw std::invalid_argument("tree list: no such column");
    }
    return columns_[static_cast<std::size_t>(column)];
}

CTreeListColumnInfo& ColumnSet::at(int column) {
    return const_cast<CTreeListColumnInfo&>(std::as_const(*this).at(column));
}

int ColumnSet::append(CTreeListColumnInfo column) {
    columns_.push_back(std::move(column));
    updateOrders(count() - 1);
    return count() - 1;
}

void ColumnSet::remove(int column) {
    static_cast<void>(at(column));
    columns_.erase(columns_.begin() + column);
    columnRemoved(shown_, column);
    columnRemoved(sorted_, column);
}

void ColumnSet::setFormat(int column, std::uint32_t format) {
    at(column).format = format;
    updateOrders(column);
}

void ColumnSet::updateOrders(int column) {
    const CTreeListColumnInfo& info = at(column);
    if (info.isHidden()) {
        takeOut(shown_, column);
    } else if (!holds(shown_, column)) {
        shown_.push_back(column);
    }
    if (!info.isSorted()) {
        takeOut(sorted_, column);
    } else if (!holds(sorted_, column)) {
        sorted_.push_back(column);
    }
}

std::vector<int> ColumnSet::hidden() const {
    std::vector<int> columns;
    for (int column = 0; column < count(); ++column) {
        if (at(column).isHidden()) {
            columns.push_back(column);
        }
    }
    return columns;
}

bool ColumnSet::setShown(const std::vector<int>& order) {
    std::vector<bool> named(columns_.size(), false);
    for (const int column : order) {
        static_cast<void>(at(column));
        if (named[static_cast<std::size_t>(column)]) {
            return false;
        }
        named[static_cast<std::size_t>(column)] = true;
    }
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        if (named[i]) {
            columns_[i].format &= ~std::uint32_t{kColumnHidden};
        } else {
            columns_[i].format |= kColumnHidden;
        }
    }
    shown_ = order;
    return true;
}

void ColumnSet::place(int column, int place) {
    CTreeListColumnInfo& info = at(column);
    takeOut(shown_, column);
    if (place < 0) {
        info.format |= kColumnHidden;
        return;
    }
    info.format &= ~std::uint32_t{kColumnHidden};
    const auto to = std::min(static_cast<std::size_t>(place), shown_.size());
    shown_.insert(shown_.begin() + static_cast<std::ptrdiff_t>(to), column);
}

int ColumnSet::left(int column) const {
    int x = 0;
    for (const int shown : shown_) {
        if (shown == column) {
            return x;
        }
        x += at(shown).width;
    }
    return -1;
}

int ColumnSet::totalWidth() const {
    int width = 0;
    for (const int shown : shown_) {
        width += at(shown).width;
    }
    return width;
}

int ColumnSet::columnAt(int x) const {
    if (x < 0) {
        return -1;
    }
    for (const int shown : shown_) {
        x -= at(shown).width;
        if (x < 0) {
            return shown;
        }
    }
    return -1;
}

int ColumnSet::placeOf(int column) const {
    const auto found = std::find(shown_.begin(), shown_.end(), column);
    return found == shown_.end() ? -1 : static_cast<int>(found - shown_.begin());
}

} // namespace fenmark::ui::treelist
