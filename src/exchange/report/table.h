// A table of a report: the one form that HTML and CSV are written from.
#pragma once

#include <string>
#include <vector>

namespace fenmark::exchange::report {

enum class Align { Left, Right };

struct Column {
    std::string title;
    Align align = Align::Right;
};

// Rows that no page break parts, such as the left and the right stake of one station.
using RowGroup = std::vector<std::vector<std::string>>;

struct Total {
    std::string name;
    std::string value;
    std::string unit; // may be empty
};

struct Table {
    std::string kind;    // "座標求積表"
    std::string subject; // what it is of: a lot, an alignment; may be empty
    std::vector<Column> columns;
    std::vector<RowGroup> groups;
    std::vector<Total> totals; // below the rows
    std::string figure;        // SVG, ready for HTML; empty for none
    std::vector<std::string> remarks;

    void add(std::vector<std::string> row) { groups.push_back({std::move(row)}); }
};

} // namespace fenmark::exchange::report
