// Rows out of the program's memory as a table that SQL can select from: a virtual table over a row source.
#include "drawing/geopackage/row_source.h"

#include <cmath>
#include <exception>
#include <new>
#include <string>

namespace fenmark::drawing {

void ColumnSink::real(double value) const {
    if (std::isfinite(value)) {
        sqlite3_result_double(context_, value);
    } else {
        sqlite3_result_null(context_);
    }
}

void ColumnSink::text(std::string_view text) const {
    // A null pointer would give NULL, and an empty text is a text.
    sqlite3_result_text64(context_, text.data() == nullptr ? "" : text.data(), text.size(), SQLITE_STATIC, SQLITE_UTF8);
}

void ColumnSink::blob(std::span<const std::byte> blob) const {
    if (blob.empty()) {
        sqlite3_result_null(context_);
    } else {
        sqlite3_result_blob64(context_, blob.data(), blob.size(), SQLITE_STATIC);
    }
}

namespace {

struct Offer {
    std::string declaration;
    RowSource& source;
};

struct RowTable : sqlite3_vtab {
    RowSource* source = nullptr;
};

struct Cursor : sqlite3_vtab_cursor {
    RowSource* source = nullptr;
    bool atEnd = false;
    sqlite3_int64 row = 0;
};

// What a source throws must not pass through SQLite.
template <typename Action>
int guarded(Action action) {
    try {
        action();
        return SQLITE_OK;
    } catch (const std::bad_alloc&) {
        return SQLITE_NOMEM;
    } catch (const std::exception&) {
        return SQLITE_ERROR;
    }
}

int connectTable(sqlite3* database, void* offered, int, const char* const*, sqlite3_vtab** table, char**) {
    const auto& offer = *static_cast<const Offer*>(offered);
    const int code = sqlite3_declare_vtab(database, offer.declaration.c_str());
    if (code != SQLITE_OK) {
        return code;
    }
    return guarded([&] {
        auto made = std::make_unique<RowTable>();
        made->source = &offer.source;
        *table = made.release();
    });
}

int disconnectTable(sqlite3_vtab* table) {
    delete static_cast<RowTable*>(table);
    return SQLITE_OK;
}

int planRead(sqlite3_vtab*, sqlite3_index_info*) {
    return SQLITE_OK; // from the first row to the last, always
}

int openCursor(sqlite3_vtab* table, sqlite3_vtab_cursor** cursor) {
    return guarded([&] {
        auto made = std::make_unique<Cursor>();
        made->source = static_cast<RowTable*>(table)->source;
        *cursor = made.release();
    });
}

int closeCursor(sqlite3_vtab_cursor* cursor) {
    delete static_cast<Cursor*>(cursor);
    return SQLITE_OK;
}

int nextRow(sqlite3_vtab_cursor* cursor) {
    auto& at = *static_cast<Cursor*>(cursor);
    ++at.row;
    return guarded([&] { at.atEnd = !at.source->next(); });
}

int firstRow(sqlite3_vtab_cursor* cursor, int, const char*, int, sqlite3_value**) {
    return nextRow(cursor);
}

int isAtEnd(sqlite3_vtab_cursor* cursor) {
    return static_cast<Cursor*>(cursor)->atEnd ? 1 : 0;
}

int readColumn(sqlite3_vtab_cursor* cursor, sqlite3_context* context, int index) {
    return guarded([&] { static_cast<Cursor*>(cursor)->source->column(index, ColumnSink(context)); });
}

int readRowid(sqlite3_vtab_cursor* cursor, sqlite3_int64* row) {
    *row = static_cast<Cursor*>(cursor)->row;
    return SQLITE_OK;
}

// Without a way to create it, the table is there by its name alone, on this connection.
sqlite3_module makeModule() {
    sqlite3_module module{};
    module.xConnect = connectTable;
    module.xBestIndex = planRead;
    module.xDisconnect = disconnectTable;
    module.xOpen = openCursor;
    module.xClose = closeCursor;
    module.xFilter = firstRow;
    module.xNext = nextRow;
    module.xEof = isAtEnd;
    module.xColumn = readColumn;
    module.xRowid = readRowid;
    return module;
}

} // namespace

void insertRows(Connection& connection, const char* sql, const char* columns, RowSource& source) {
    static const sqlite3_module kModule = makeModule();
    const Offer offer{std::string("CREATE TABLE ") + kRowTable + " (" + columns + ")", source};
    const auto withdraw = [&](void*) {
        sqlite3_create_module_v2(connection.get(), kRowTable, nullptr, nullptr, nullptr);
    };
    const std::unique_ptr<void, decltype(withdraw)> offered(const_cast<Offer*>(&offer), withdraw);
    const int code = sqlite3_create_module_v2(connection.get(), kRowTable, &kModule, offered.get(), nullptr);
    if (code != SQLITE_OK) {
        connection.fail(code);
    }
    Statement(connection, sql).run();
}

} // namespace fenmark::drawing
