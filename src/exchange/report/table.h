// A table of a report: the one form that HTML and CSV are written from.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace fenmark::exchange::report {

enum class Align { Left, Right };

struct Column {
    std::string_view title; // of a text that stays
    Align align = Align::Right;
};

// Rows that no page break parts, such as the left and the right stake of one station.
using RowGroup = std::vector<std::vector<std::string>>;

struct Total {
    std::string_view name; // this and the unit of texts that stay
    std::string value;
    std::string_view unit; // may be empty
};

// The cells of a row, or more of them.
template <typename... Texts>
void appendCells(std::vector<std::string>& cells, Texts&&... texts) {
    (cells.emplace_back(std::forward<Texts>(texts)), ...);
}

struct Table {
    std::string kind;    // "座標求積表"
    std::string subject; // what it is of: a lot, an alignment; may be empty
    std::vector<Column> columns;
    std::vector<RowGroup> groups;
    std::vector<Total> totals; // below the rows
    std::string figure;        // SVG, ready for HTML; empty for none
    std::vector<std::string> remarks;

    // A row that stands by itself.
    template <typename... Texts>
    void add(Texts&&... texts) {
        appendCells(groups.emplace_back().emplace_back(), std::forward<Texts>(texts)...);
    }
    void addTotal(std::string_view name, std::string value, std::string_view unit = {}) {
        totals.push_back({name, std::move(value), unit});
    }
};

} // namespace fenmark::exchange::report
