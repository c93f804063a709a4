// The tables and columns of a drawing as they are in a file that other programs may have changed.
#pragma once

#include "drawing/geopackage/sqlite_handles.h"
#include "drawing/geopackage/store_notes.h"

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace fenmark::drawing {

// SQLite tells the shape of a file by tables of its own, for which a table of that name in the file would stand in.
// Throws a StoreFailure, Reshaped, where there is one.
void requirePragmas(Connection& connection);

class DrawingShape {
  public:
    // Throws a StoreFailure, Reshaped, that names what is missing or replaced and cannot be done without. What only
    // carries texts and numbers of objects may be missing: then there is a note, and nothing can be saved.
    explicit DrawingShape(Connection& connection);

    // The same for the table of settings alone, which tells the format. Whether it has the column of stamps.
    static bool requireSettings(Connection& connection);

    bool hasTable(std::string_view table) const { return columns_.find(table) != columns_.end(); }
    bool hasColumn(std::string_view table, std::string_view column) const;
    // False for a table in which several rows may have one identifier.
    bool hasKeys(std::string_view table) const;
    const std::vector<StoreNote>& notes() const { return notes_; }
    // Throws a StoreFailure if rows cannot be written into these tables.
    void requireWritable() const;

    // The reference systems that the file names for the layers of ours, by table.
    std::map<std::string, std::int64_t> systems(Connection& connection) const;
    // Throws a StoreFailure, Reshaped, if another program brought objects into another reference system than that of the
    // zone; 0 for a drawing of no zone, whose tables may be in any plane rectangular one.
    static void requirePlane(const std::map<std::string, std::int64_t>& systems, int zone);

    // "a, NULL, b": the columns that are there, in SQL.
    std::string list(std::string_view table, const std::vector<std::string_view>& columns) const;

  private:
    struct NoCase {
        using is_transparent = void;
        bool operator()(std::string_view a, std::string_view b) const;
    };
    using Columns = std::set<std::string, NoCase>;
    struct Keyless {
        std::string table;
        Worded what; // the column of identifiers that is no key, for people
    };

    bool read(Connection& connection, const char* table);
    void readIndexes(Connection& connection, const std::string& table, const Columns& generated);
    std::string renamedTo(Connection& connection, const std::vector<const char*>& columns) const;

    std::map<std::string, Columns, NoCase> columns_;
    bool takesNameOfRows_ = false; // something in the file is named as the rows that come
    std::vector<Keyless> keyless_;
    std::vector<Worded> unique_;   // indexes that let no value stand twice, for people
    std::vector<Worded> computed_; // what has to be computed to write a row, for people
    std::vector<StoreNote> notes_;
};

} // namespace fenmark::drawing
