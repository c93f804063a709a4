// SQLite's handles, released by themselves, and its errors as one exception that stays inside the store.
#pragma once

#include "drawing/geopackage/drawing_store.h"

#include <sqlite3.h>

#include <cstdint>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace fenmark::drawing {

// Thrown and caught within the store.
struct StoreFailure {
    Failure failure = Failure::Failed;
    Worded detail; // behind the kind of failure
};

// A connection runs this program's statements and nothing else: no trigger, no view and no function that a file names,
// no other database beside it. Statements that take far more steps, or give far more, than the file's size explains are
// broken off.
class Connection {
  public:
    // ReadAlone takes no locks: for a file that no other program has open.
    // Create fills an empty file that is this program's alone.
    enum class Mode { Read, ReadAlone, ReadWrite, Create };

    Connection(const std::string& path, Mode mode);

    sqlite3* get() const { return handle_.get(); }
    void execute(const char* sql);
    // So many rows come out of memory: more steps than the file's size explains.
    void expectRows(std::uint64_t rows) { stepsLeft_ += rows * kStepsForRow; }
    // A row, and the bytes of its values, that a statement has given. A damaged file may name one page many times.
    void countRow() { take(rowsLeft_, 1); }
    void countBytes(std::uint64_t bytes) { take(bytesLeft_, bytes); }
    // True if the file no longer bears the name under which it was opened.
    bool hasMoved() const;
    // A failure of the last call, as the store words it.
    [[noreturn]] void fail(int code) const;

    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

  private:
    static constexpr std::uint64_t kStepsForRow = 2000;

    void protect(std::uint64_t fileSize, bool onlyRead);
    static int countSteps(void* connection);
    static void take(std::uint64_t& left, std::uint64_t count);

    struct Close {
        void operator()(sqlite3* handle) const { sqlite3_close_v2(handle); }
    };
    std::unique_ptr<sqlite3, Close> handle_;
    std::uint64_t stepsLeft_ = 0;
    std::uint64_t rowsLeft_ = 0;
    std::uint64_t bytesLeft_ = 0;
    bool shadowsOpen_ = false;
    friend class ShadowTablesOpen;
};

// While it lives, SQLite's defensive setting is off: an R-tree can be made, and the tables in which SQLite keeps it can be written directly.
class ShadowTablesOpen {
  public:
    explicit ShadowTablesOpen(Connection& connection);
    ~ShadowTablesOpen();
    ShadowTablesOpen(const ShadowTablesOpen&) = delete;
    ShadowTablesOpen& operator=(const ShadowTablesOpen&) = delete;

  private:
    Connection& connection_;
};

// A name of a table, column or trigger as SQL: in quotation marks, those in it doubled.
std::string quoted(std::string_view name);

// A prepared statement. Text and blobs are bound without a copy: they must stay until the next step.
enum class Zero { IsNull };

class Statement {
  public:
    Statement(Connection& connection, const char* sql);

    Statement& bind(int index, std::int64_t value);
    Statement& bind(int index, std::int64_t value, Zero);
    Statement& bind(int index, double value);        // NaN and the infinities become NULL
    Statement& bindEndless(int index, double value); // an infinity stays one
    Statement& bind(int index, std::string_view text);
    Statement& bind(int index, std::span<const std::byte> blob); // an empty one becomes NULL

    bool step(); // true for a row
    void run();  // no rows wanted; ready to be bound again

    std::int64_t integer(int column) const { return sqlite3_column_int64(handle_.get(), column); }
    double real(int column) const { return sqlite3_column_double(handle_.get(), column); }
    bool isNull(int column) const { return sqlite3_column_type(handle_.get(), column) == SQLITE_NULL; }
    // A number, or a text that is one from end to end. Of anything else integer() and real() make a number, mostly 0.
    bool isNumber(int column) const;
    // Valid until the next step. SQLite keeps any bytes as a text: those that are no UTF-8 become U+FFFD, so that every
    // writer behind this may rely on it.
    std::string_view text(int column) const;
    std::span<const std::byte> blob(int column) const;

  private:
    struct Finalize {
        void operator()(sqlite3_stmt* handle) const { sqlite3_finalize(handle); }
    };
    void check(int code) const;

    Connection& connection_;
    std::unique_ptr<sqlite3_stmt, Finalize> handle_;
    mutable std::map<int, std::string> repaired_; // by column
};

} // namespace fenmark::drawing
