// The tables and columns of a drawing as they are in a file that other programs may have changed.
#include "drawing/geopackage/drawing_shape.h"

#include "drawing/geopackage/reference_systems.h"
#include "drawing/geopackage/row_source.h"
#include "drawing/geopackage/schema.h"
#include "values/ascii_case.h"

#include <algorithm>
#include <initializer_list>
#include <iterator>
#include <string>
#include <string_view>

namespace fenmark::drawing {

namespace {

struct Expected {
    const char* table;
    bool needed; // a drawing without it cannot be read
    std::initializer_list<const char*> columns;
    std::initializer_list<const char*> attributes; // read as empty where they are missing
};

constexpr Expected kExpectedTables[] = {
    {"points", true, {"fid", "geom"}, {"layer", "data_table", "No", "Name", "Type", "FileName"}},
    {"polylines",
     true,
     {"fid", "geom"},
     {"layer", "closed", "vertices", "lightweight", "data_table", "No", "Name", "Type", "FileName"}},
    {"alignments",
     true,
     {"fid", "geom", "site_id"},
     {"name", "description", "site", "layer", "start_station", "length", "first_style", "second_style"}},
    {"alignment_elements",
     true,
     {"alignment_id", "place", "element_id", "type", "start_x", "start_y", "end_x", "end_y", "direction", "length",
      "start_radius", "end_radius", "clockwise"},
     {"centre_x", "centre_y", "pi_x", "pi_y"}},
    {"layers", true, {"id", "name"}, {}},
    {"sites", true, {"id", "name"}, {}},
    {"object_data_tables", true, {"id", "name"}, {}},
    {"lots", false, {"fid", "geom"}, {"layer", "No", "Name", "Type", "FileName"}},
    {"fenmark_drawing", true, {"id", "format", "last_id", "current_layer", "zone"}, {}},
    {"gpkg_contents", true, {"table_name", "data_type", "last_change", "min_x", "min_y", "max_x", "max_y"}, {}},
};

// These come with later formats, or are only written; they are used where they are there.
constexpr const char* kFurtherTables[] = {"fenmark_imports", "layer_styles", "gpkg_spatial_ref_sys",
                                          "gpkg_geometry_columns"};

constexpr const char* kImports = "fenmark_imports";
constexpr const char* kImportColumns[] = {"id",           "FileName",       "path",   "size",     "digest",
                                          "time",         "points",         "lots",   "routes",   "alignments",
                                          "longitudinal", "cross_sections", "errors", "first_id", "last_id"};

// True if the statement that made a table holds a CHECK constraint, or a column that looks like one.
bool hasCheck(std::string_view sql) {
    constexpr std::string_view kWord = "check";
    for (std::size_t at = 0; at + kWord.size() < sql.size(); ++at) {
        const bool word = std::equal(kWord.begin(), kWord.end(), sql.begin() + static_cast<std::ptrdiff_t>(at),
                                     [](char expected, char found) { return expected == asciiLower(found); });
        const std::size_t next = word ? sql.find_first_not_of(" \t\r\n", at + kWord.size()) : std::string_view::npos;
        if (next != std::string_view::npos && (sql[next] == '(' || sql[next] == '/' || sql[next] == '-')) {
            return true;
        }
    }
    return false;
}

// A default that is more than a value. The time of the change, which GeoPackage itself has, is taken for a value.
bool isComputed(std::string_view value) {
    const std::size_t call = value.find('(');
    const bool isTime = value.starts_with("strftime(") && value.find('(', call + 1) == std::string_view::npos;
    return call != std::string_view::npos && value.front() != '\'' && !isTime;
}

[[noreturn]] void reshaped(const Worded& what) {
    throw StoreFailure{Failure::Reshaped, what};
}

// The column of a table of objects by which they are known: a primary key of integers.
std::string_view keyOf(std::string_view table) {
    if (table == "points" || table == "polylines" || table == "alignments" || table == "lots") {
        return "fid";
    }
    const bool isNamed = table == "layers" || table == "sites" || table == "object_data_tables";
    return isNamed || table == "fenmark_imports" ? "id" : "";
}

Worded lacksColumn(const std::string& table, const std::string& column) {
    return {"its table '" + table + "' has no column '" + column + "'; was it renamed?",
            "表「" + table + "」に列「" + column + "」がありません。名前が変えられていませんか"};
}

} // namespace

namespace {

bool sameName(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return asciiLower(x) == asciiLower(y); });
}

bool isOurs(std::string_view table, std::string_view column) {
    const auto same = [&](const char* name) { return sameName(name, column); };
    for (const Expected& expected : kExpectedTables) {
        if (table == expected.table) {
            return std::any_of(expected.columns.begin(), expected.columns.end(), same) ||
                   std::any_of(expected.attributes.begin(), expected.attributes.end(), same);
        }
    }
    return false;
}

} // namespace

// As SQLite compares names.
bool DrawingShape::NoCase::operator()(std::string_view a, std::string_view b) const {
    return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(),
                                        [](char x, char y) { return asciiLower(x) < asciiLower(y); });
}

DrawingShape::DrawingShape(Connection& connection) {
    for (const Expected& expected : kExpectedTables) {
        const std::string table = expected.table;
        if (!read(connection, expected.table)) {
            if (!expected.needed) {
                notes_.push_back({StoreNoteCode::MissingTable, table, {}, 0, 0});
                continue;
            }
            std::vector<const char*> columns(expected.columns);
            columns.insert(columns.end(), expected.attributes.begin(), expected.attributes.end());
            const std::string other = renamedTo(connection, columns);
            reshaped({"its table '" + table + "' is missing" +
                          (other.empty() ? std::string() : "; it seems to be named '" + other + "' now"),
                      "表「" + table + "」がありません" +
                          (other.empty() ? std::string() : "。名前が「" + other + "」に変わったようです")});
        }
        for (const char* column : expected.columns) {
            if (!hasColumn(table, column)) {
                reshaped(lacksColumn(table, column));
            }
        }
        for (const char* column : expected.attributes) {
            if (!hasColumn(table, column)) {
                notes_.push_back({StoreNoteCode::MissingColumn, table, column, 0, 0});
            }
        }
    }
    for (const char* table : kFurtherTables) {
        read(connection, table);
    }
    Statement incoming(connection, sql::kHasSchemaItem);
    takesNameOfRows_ = incoming.bind(1, std::string_view(kRowTable)).step() && incoming.integer(0) > 0;
}

void requirePragmas(Connection& connection) {
    Statement pragmas(connection, sql::kHasPragma);
    if (pragmas.step() && pragmas.integer(0) > 0) {
        reshaped({"it has a table named 'pragma_...', as SQLite's own are",
                  "SQLite自身の表と同じ「pragma_...」という名前の表があります"});
    }
}

bool DrawingShape::requireSettings(Connection& connection) {
    constexpr const char* kTable = "fenmark_drawing";
    Columns there;
    Statement rows(connection, sql::kReadColumns);
    rows.bind(1, std::string_view(kTable));
    while (rows.step()) {
        there.insert(std::string(rows.text(0)));
    }
    const auto* const expected =
        std::find_if(std::begin(kExpectedTables), std::end(kExpectedTables),
                     [](const Expected& table) { return table.table == std::string_view(kTable); });
    for (const char* column : expected->columns) {
        if (there.find(column) == there.end()) {
            reshaped(lacksColumn(kTable, column));
        }
    }
    return there.find("stamp") != there.end();
}

// True for an ordinary table. One that was replaced by something that would have to be run is refused by name.
bool DrawingShape::read(Connection& connection, const char* table) {
    Statement item(connection, sql::kReadSchemaItem);
    if (!item.bind(1, std::string_view(table)).step()) {
        return false;
    }
    if (item.text(0) != "table" || !item.text(1).starts_with("CREATE TABLE ")) {
        reshaped({"its table '" + std::string(table) + "' was replaced by a view or a table of another kind",
                  "表「" + std::string(table) + "」がビューまたは別の種類の表に置き換えられています"});
    }
    if (hasCheck(item.text(1))) {
        computed_.push_back(
            {"a CHECK of the table '" + std::string(table) + "'", "表「" + std::string(table) + "」のCHECK"});
    }
    Columns columns;
    Columns generated;
    Statement rows(connection, sql::kReadColumns);
    rows.bind(1, std::string_view(table));
    while (rows.step()) {
        constexpr std::int64_t kVirtual = 2;
        constexpr std::int64_t kStored = 3;
        const std::string column(rows.text(0));
        const std::int64_t hidden = rows.integer(1);
        if (hidden != kVirtual && hidden != kStored) {
            columns.insert(column);
            if (sameName(column, keyOf(table)) && !(sameName(rows.text(4), "INTEGER") && rows.integer(5) == 1)) {
                keyless_.push_back(
                    {table,
                     {"its column '" + std::string(table) + "." + column + "' is no primary key of integers",
                      "列「" + std::string(table) + "." + column + "」が整数の主キーではありません"}});
            }
            if (!isOurs(table, column) && isComputed(rows.text(3))) {
                computed_.push_back({"the default of the column '" + std::string(table) + "." + column + "'",
                                     "列「" + std::string(table) + "." + column + "」の既定値"});
            }
            continue;
        }
        // One that takes the place of ours would be run to be read.
        if (isOurs(table, column)) {
            reshaped({"its column '" + std::string(table) + "." + column + "' was replaced by a generated one",
                      "列「" + std::string(table) + "." + column + "」が生成列に置き換えられています"});
        }
        generated.insert(column);
        if (hidden == kStored || rows.integer(2) != 0) {
            computed_.push_back({"the generated column '" + std::string(table) + "." + column + "'",
                                 "生成列「" + std::string(table) + "." + column + "」"});
        }
    }
    readIndexes(connection, table, generated);
    columns_.emplace(table, std::move(columns));
    return true;
}

// An index of expressions or of some rows only is computed whenever a row is written.
void DrawingShape::readIndexes(Connection& connection, const std::string& table, const Columns& generated) {
    Statement indexes(connection, sql::kReadIndexes);
    indexes.bind(1, std::string_view(table));
    while (indexes.step()) {
        const std::string name(indexes.text(0));
        bool computes = indexes.integer(1) != 0;
        if (indexes.integer(2) != 0) {
            unique_.push_back({"the index '" + name + "' of the table '" + table + "' lets no value stand twice",
                               "表「" + table + "」のインデックス「" + name + "」が同じ値を許しません"});
        }
        Statement columns(connection, sql::kReadIndexColumns);
        columns.bind(1, std::string_view(name));
        while (columns.step()) {
            constexpr std::int64_t kExpression = -2;
            computes =
                computes || columns.integer(0) == kExpression || generated.find(columns.text(1)) != generated.end();
        }
        if (computes) {
            computed_.push_back({"the index '" + name + "' of the table '" + table + "'",
                                 "表「" + table + "」のインデックス「" + name + "」"});
        }
    }
}

// Another table that has all of the columns; empty if there is none, or more than one.
std::string DrawingShape::renamedTo(Connection& connection, const std::vector<const char*>& columns) const {
    std::vector<std::string> names;
    Statement tables(connection, sql::kReadTableNames);
    while (tables.step()) {
        const std::string name(tables.text(0));
        if (std::none_of(std::begin(kExpectedTables), std::end(kExpectedTables),
                         [&](const Expected& item) { return name == item.table; })) {
            names.push_back(name);
        }
    }
    std::vector<std::string> found;
    for (const std::string& name : names) {
        Columns there;
        Statement rows(connection, sql::kReadColumns);
        rows.bind(1, std::string_view(name));
        while (rows.step()) {
            there.insert(std::string(rows.text(0)));
        }
        if (std::all_of(columns.begin(), columns.end(),
                        [&](const char* column) { return there.find(column) != there.end(); })) {
            found.push_back(name);
        }
    }
    return found.size() == 1 ? found.front() : std::string();
}

bool DrawingShape::hasColumn(std::string_view table, std::string_view column) const {
    const auto found = columns_.find(table);
    return found != columns_.end() && found->second.find(column) != found->second.end();
}

bool DrawingShape::hasKeys(std::string_view table) const {
    return std::none_of(keyless_.begin(), keyless_.end(),
                        [&](const Keyless& keyless) { return sameName(keyless.table, table); });
}

void DrawingShape::requireWritable() const {
    for (const StoreNote& note : notes_) {
        if (note.code == StoreNoteCode::MissingColumn) {
            reshaped(lacksColumn(note.table, note.name));
        }
    }
    if (takesNameOfRows_) { // its rows would be written in the place of ours
        reshaped({std::string("it has a table named '") + kRowTable + "', as new rows are",
                  std::string("新しい行の表「") + kRowTable + "」と同じ名前の表があります"});
    }
    if (!keyless_.empty()) {
        reshaped(keyless_.front().what);
    }
    if (!unique_.empty()) { // a row that a file may well bring would be refused
        reshaped(unique_.front());
    }
    if (!computed_.empty()) {
        reshaped({computed_.front().english + " would have to be computed by the file whenever a row is written",
                  "行を書くたびに" + computed_.front().japanese + "をファイルに計算させることになります"});
    }
    // Without the table a drawing is of the first format, and gets one.
    for (const char* column : kImportColumns) {
        if (hasTable(kImports) && !hasColumn(kImports, column)) {
            reshaped(lacksColumn(kImports, column));
        }
    }
}

std::map<std::string, std::int64_t> DrawingShape::systems(Connection& connection) const {
    std::map<std::string, std::int64_t> systems;
    if (hasColumn("gpkg_geometry_columns", "table_name") && hasColumn("gpkg_geometry_columns", "srs_id")) {
        Statement rows(connection, sql::kReadColumnsSrs);
        while (rows.step()) {
            systems.emplace(rows.text(0), rows.integer(1));
        }
    }
    return systems;
}

void DrawingShape::requirePlane(const std::map<std::string, std::int64_t>& systems, int zone) {
    for (const auto& [table, srs] : systems) {
        const bool undefined = srs <= 0;
        if (!undefined && (zone == 0 ? !isPlaneRectangular(srs) : srs != srsOfZone(zone))) {
            reshaped({"its table '" + table + "' was brought into the reference system " + std::to_string(srs) +
                          ", which is not the drawing's",
                      "表「" + table + "」が図面と異なる座標系(" + std::to_string(srs) + ")に変換されています"});
        }
    }
}

std::string DrawingShape::list(std::string_view table, const std::vector<std::string_view>& columns) const {
    std::string text;
    for (const std::string_view column : columns) {
        text += (text.empty() ? "" : ", ") + (hasColumn(table, column) ? quoted(column) : std::string("NULL"));
    }
    return text;
}

} // namespace fenmark::drawing
