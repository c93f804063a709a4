// Rows out of the program's memory as a table that SQL can select from.
//
// "INSERT INTO points SELECT ... FROM fenmark_incoming" takes half the time of binding and running a prepared insert for each row.
#pragma once

#include "drawing/geopackage/sqlite_handles.h"

#include <span>
#include <string_view>

namespace fenmark::drawing {

// Where a source puts the value of a column. Text and blobs are not copied: they must stay until the next row.
class ColumnSink {
  public:
    explicit ColumnSink(sqlite3_context* context) : context_(context) {}

    void integer(std::int64_t value) const { sqlite3_result_int64(context_, value); }
    void real(double value) const; // NaN and the infinities become NULL
    void text(std::string_view text) const;
    void blob(std::span<const std::byte> blob) const; // an empty one becomes NULL
    void null() const { sqlite3_result_null(context_); }

  private:
    sqlite3_context* context_;
};

class RowSource {
  public:
    virtual ~RowSource() = default;
    virtual bool next() = 0; // to the first row, then to the next; false behind the last
    virtual void column(int index, const ColumnSink& sink) = 0;
};

// The table from which such a statement selects. One of the file of that name would stand in for it.
inline constexpr const char* kRowTable = "fenmark_incoming";

// Runs a statement that selects from that table with the given columns, "a, b, c". It may read each row once.
void insertRows(Connection& connection, const char* sql, const char* columns, RowSource& source);

} // namespace fenmark::drawing
