// A drawing whose rows another program changed: values of any kind in any column, rows added and gone.
//
// An input is a list of changes: what is done, to which table, column and row, and the value.
#include "bytes.h"
#include "sandbox.h"

#include <array>
#include <sqlite3.h>
#include <vector>

namespace {

using namespace fenmark::fuzz;

struct Column {
    std::string table;
    std::string column;
};

std::vector<Column> columnsOf(sqlite3* connection) {
    std::vector<Column> columns;
    sqlite3_stmt* statement = nullptr;
    sqlite3_prepare_v2(
        connection,
        "SELECT m.name, c.name FROM sqlite_master m, pragma_table_info(m.name) c "
        "WHERE m.type = 'table' AND m.name NOT LIKE 'rtree%' AND m.name NOT LIKE 'sqlite%' ORDER BY 1, 2",
        -1, &statement, nullptr);
    while (sqlite3_step(statement) == SQLITE_ROW) {
        columns.push_back({reinterpret_cast<const char*>(sqlite3_column_text(statement, 0)),
                           reinterpret_cast<const char*>(sqlite3_column_text(statement, 1))});
    }
    sqlite3_finalize(statement);
    require(!columns.empty(), "the sample has columns");
    return columns;
}

void bindValue(sqlite3_stmt* statement, Bytes& bytes) {
    switch (bytes.index(6)) {
    case 0:
        sqlite3_bind_null(statement, 1);
        break;
    case 1:
        sqlite3_bind_int64(statement, 1, bytes.take<std::int16_t>());
        break;
    case 2:
        sqlite3_bind_int64(statement, 1, bytes.take<std::int64_t>());
        break;
    case 3:
        sqlite3_bind_double(statement, 1, bytes.real());
        break;
    case 4: {
        const std::string_view text = bytes.text(bytes.take<std::uint8_t>());
        sqlite3_bind_text(statement, 1, text.data(), static_cast<int>(text.size()), SQLITE_TRANSIENT);
        break;
    }
    default: {
        const std::string_view blob = bytes.text(bytes.take<std::uint8_t>());
        sqlite3_bind_blob(statement, 1, blob.data(), static_cast<int>(blob.size()), SQLITE_TRANSIENT);
    }
    }
}

// One of the rows, by its place.
std::string rowNumber(const std::string& table, std::size_t place) {
    return "(SELECT rowid FROM \"" + table + "\" ORDER BY rowid LIMIT 1 OFFSET " + std::to_string(place) + ")";
}

void change(sqlite3* connection, const std::vector<Column>& columns, Bytes& bytes) {
    const Column& at = columns[bytes.index(columns.size())];
    const std::string row = rowNumber(at.table, bytes.index(16));
    std::string sql;
    const std::size_t kind = bytes.index(10);
    if (kind < 6) {
        sql = "UPDATE \"" + at.table + "\" SET \"" + at.column + "\" = ?1 WHERE rowid = " + row;
    } else if (kind == 6) {
        sql = "UPDATE \"" + at.table + "\" SET \"" + at.column + "\" = ?1";
    } else if (kind == 7) {
        sql = "DELETE FROM \"" + at.table + "\" WHERE rowid = " + row;
    } else if (kind == 8) {
        sql = "INSERT INTO \"" + at.table + "\" (\"" + at.column + "\") VALUES (?1)";
    } else {
        // Into the middle of a geometry.
        sql = "UPDATE \"" + at.table + "\" SET \"" + at.column + "\" = CAST(substr(CAST(\"" + at.column +
              "\" AS BLOB), 1, " + std::to_string(bytes.index(64)) +
              ") || CAST(?1 AS BLOB) AS BLOB) WHERE rowid = " + row;
    }
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(connection, sql.c_str(), -1, &statement, nullptr) == SQLITE_OK) {
        if (sqlite3_bind_parameter_count(statement) == 1) {
            bindValue(statement, bytes);
        }
        sqlite3_step(statement);
    }
    sqlite3_finalize(statement);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const std::string kSample = samplePackage();
    Bytes bytes(data, size);
    const std::string path = sandbox().write("x.gpkg", kSample);
    sqlite3* connection = nullptr;
    require(sqlite3_open(path.c_str(), &connection) == SQLITE_OK, "the sample opens");
    // The triggers of the index need functions that this connection does not bring.
    sqlite3_db_config(connection, SQLITE_DBCONFIG_ENABLE_TRIGGER, 0, nullptr);
    sqlite3_exec(connection, "PRAGMA journal_mode = OFF; PRAGMA synchronous = OFF", nullptr, nullptr, nullptr);
    static const std::vector<Column> kColumns = columnsOf(connection);
    for (int i = 0; i < 16 && !bytes.empty(); ++i) {
        change(connection, kColumns, bytes);
    }
    sqlite3_close(connection);
    judgePackage(path);
    sandbox().clear();
    return 0;
}
