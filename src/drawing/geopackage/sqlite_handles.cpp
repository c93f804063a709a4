// SQLite's handles and errors.
#include "drawing/geopackage/sqlite_handles.h"

#include "platform/files.h"
#include "platform/paths.h"
#include "sima/text/utf8.h"

#include <algorithm>
#include <cmath>
#include <string_view>

namespace fenmark::drawing {

namespace {

// How long another program may hold the drawing before the user learns of it, milliseconds.
constexpr int kPatience = 1500;

constexpr const char* kLongPathFiles = "win32-longpath";

// Steps of SQLite's machine: a drawing of a million points takes some ten for each byte of its file.
constexpr std::uint64_t kStepsAlways = 200'000'000; // about two seconds
constexpr std::uint64_t kStepsForByte = 100;
constexpr int kStepsBetween = 100'000;

// No row is shorter than ten bytes, none is read more than a few times, and a text of UTF-16 may get longer by half.
constexpr std::uint64_t kRowsAlways = 10'000;
constexpr std::uint64_t kBytesAlways = 1'000'000;
constexpr std::uint64_t kBytesForByte = 8;

constexpr std::uint64_t kLongestValue = 1'000'000'000; // bytes, SQLite's own limit
constexpr std::uint64_t kShortestLimit = 1'000'000;    // bytes: a statement and the schema must fit too

// The functions in this program's statements, and those in the statements that SQLite writes to change a table.
constexpr std::string_view kFunctions[] = {"count",    "ifnull",    "length",   "max",
                                           "min",      "strftime",  "substr",   "printf",
                                           "with_srs", "ring_area", "new_name", "sqlite_rename_quotefix"};

// What a statement may do, whatever the schema adds to it.
int authorize(void* shadowsOpen, int action, const char*, const char* name, const char*, const char* inside) {
    if (inside != nullptr || action == SQLITE_ATTACH || action == SQLITE_DETACH) {
        return SQLITE_DENY;
    }
    if (action == SQLITE_FUNCTION) {
        const std::string_view function = name == nullptr ? "" : name;
        if (function == "zeroblob" && *static_cast<const bool*>(shadowsOpen)) {
            return SQLITE_OK; // the first node of an R-tree
        }
        const bool known = std::find(std::begin(kFunctions), std::end(kFunctions), function) != std::end(kFunctions);
        return known ? SQLITE_OK : SQLITE_DENY;
    }
    return SQLITE_OK;
}

bool isReadFailure(int systemError) {
    return systemError != 0 && platform::errorOfNumber(systemError) == std::errc::io_error;
}

Failure meaningOf(int code, int systemError) {
    switch (code & 0xFF) {
    case SQLITE_FULL:
        return Failure::DiskFull;
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return Failure::Locked;
    case SQLITE_INTERRUPT: // by our own limit on steps
        return Failure::Damaged;
    case SQLITE_AUTH:
        return Failure::Reshaped;
    case SQLITE_NOTADB:
        return Failure::NotADrawing;
    case SQLITE_CORRUPT:
        // SQLite takes a disk that cannot be read for a damaged file.
        return isReadFailure(systemError) ? Failure::Failed : Failure::Damaged;
    case SQLITE_READONLY:
    case SQLITE_PERM:
    case SQLITE_CANTOPEN:
        return Failure::NotWritable;
    case SQLITE_IOERR:
        if (platform::isDiskFull(platform::errorOfNumber(systemError))) {
            return Failure::DiskFull;
        }
        if (platform::isDenied(platform::errorOfNumber(systemError))) {
            return Failure::NotWritable;
        }
        return Failure::Failed;
    default:
        return Failure::Failed;
    }
}

// The system's error of the last call on an open file; 0 if there was none.
int lastErrorOf(sqlite3_file* file) {
    int error = 0;
    if (file != nullptr && file->pMethods != nullptr) {
        file->pMethods->xFileControl(file, SQLITE_FCNTL_LAST_ERRNO, &error);
    }
    return error;
}

// The system's error behind a failure. The connection knows that of opening a file; the files know their own.
int systemErrorOf(sqlite3* handle) {
    sqlite3_file* file = nullptr;
    sqlite3_file* journal = nullptr;
    sqlite3_file_control(handle, "main", SQLITE_FCNTL_FILE_POINTER, &file);
    sqlite3_file_control(handle, "main", SQLITE_FCNTL_JOURNAL_POINTER, &journal);
    for (sqlite3_file* const each : {file, journal}) {
        if (const int error = lastErrorOf(each); error != 0) {
            return error;
        }
    }
    return sqlite3_system_errno(handle);
}

// The path as a URI, so that a drawing that nobody writes can be opened without a lock file beside it.
std::string uriOf(const std::string& path) {
    constexpr const char* kHex = "0123456789ABCDEF";
    // Two slashes in front would name a machine.
    std::string uri = path.starts_with("//") ? "file://" : "file:";
    for (const char c : path) {
        if (c == '?' || c == '#' || c == '%') {
            const auto byte = static_cast<unsigned char>(c);
            uri += {'%', kHex[byte >> 4U], kHex[byte & 0xFU]};
        } else {
            uri += c;
        }
    }
    return uri;
}

} // namespace

Connection::Connection(const std::string& path, Mode mode) {
    const int flags = SQLITE_OPEN_URI | SQLITE_OPEN_NOMUTEX |
                      (mode == Mode::Create      ? SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOFOLLOW
                       : mode == Mode::ReadWrite ? SQLITE_OPEN_READWRITE
                                                 : SQLITE_OPEN_READONLY);
    const char* const how = mode == Mode::ReadAlone ? "?immutable=1" : mode == Mode::Create ? "?nolock=1" : "";
    const std::string uri = uriOf(platform::pathForLibraries(path)) + how;
    sqlite3* handle = nullptr;
    // On Windows SQLite has a second way to files, for paths of any length.
    const char* const files = sqlite3_vfs_find(kLongPathFiles) != nullptr ? kLongPathFiles : nullptr;
    const int code = sqlite3_open_v2(uri.c_str(), &handle, flags, files);
    handle_.reset(handle);
    if (code != SQLITE_OK) {
        fail(code);
    }
    sqlite3_extended_result_codes(handle, 1);
    sqlite3_busy_timeout(handle, kPatience);
    // What another program wrote last may stand in its log alone.
    const std::uint64_t logSize = platform::lookUp(platform::behindLinks(path) + "-wal").size;
    protect(mode == Mode::Create ? 0 : platform::lookUp(path).size + logSize,
            mode == Mode::Read || mode == Mode::ReadAlone);
}

// After "Defense Against The Dark Arts" in SQLite's documentation.
void Connection::protect(std::uint64_t fileSize, bool onlyRead) {
    sqlite3* const handle = handle_.get();
    struct Setting {
        int what;
        int value;
    };
    for (const Setting& setting : {Setting{SQLITE_DBCONFIG_DEFENSIVE, 1},
                                   {SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0},
                                   {SQLITE_DBCONFIG_ENABLE_TRIGGER, 0},
                                   {SQLITE_DBCONFIG_ENABLE_VIEW, 0},
                                   {SQLITE_DBCONFIG_ENABLE_LOAD_EXTENSION, 0},
                                   {SQLITE_DBCONFIG_DQS_DML, 0},
                                   {SQLITE_DBCONFIG_DQS_DDL, 0}}) {
        sqlite3_db_config(handle, setting.what, setting.value, nullptr);
    }
    sqlite3_limit(handle, SQLITE_LIMIT_ATTACHED, 0);
    sqlite3_limit(handle, SQLITE_LIMIT_TRIGGER_DEPTH, 1);
    sqlite3_limit(handle, SQLITE_LIMIT_WORKER_THREADS, 0);
    if (onlyRead && fileSize < kLongestValue) { // no value is longer than the file it comes from
        sqlite3_limit(handle, SQLITE_LIMIT_LENGTH, static_cast<int>(std::max(fileSize, kShortestLimit)));
    }
    stepsLeft_ = kStepsAlways + fileSize * kStepsForByte;
    rowsLeft_ = kRowsAlways + fileSize;
    bytesLeft_ = kBytesAlways + fileSize * kBytesForByte;
    sqlite3_progress_handler(handle, kStepsBetween, countSteps, this);
    sqlite3_set_authorizer(handle, authorize, &shadowsOpen_);
    sqlite3_exec(handle, "PRAGMA cell_size_check = ON", nullptr, nullptr, nullptr);
}

int Connection::countSteps(void* connection) {
    auto& steps = static_cast<Connection*>(connection)->stepsLeft_;
    if (steps < static_cast<std::uint64_t>(kStepsBetween)) {
        return 1;
    }
    steps -= static_cast<std::uint64_t>(kStepsBetween);
    return 0;
}

void Connection::take(std::uint64_t& left, std::uint64_t count) {
    if (left < count) {
        throw StoreFailure{Failure::Damaged,
                           {"it gives more than it can hold", "ファイルの大きさを超えるデータが読み出されます"}};
    }
    left -= count;
}

ShadowTablesOpen::ShadowTablesOpen(Connection& connection) : connection_(connection) {
    connection_.shadowsOpen_ = true;
    sqlite3_db_config(connection_.get(), SQLITE_DBCONFIG_DEFENSIVE, 0, nullptr);
}

ShadowTablesOpen::~ShadowTablesOpen() {
    connection_.shadowsOpen_ = false;
    sqlite3_db_config(connection_.get(), SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
}

std::string quoted(std::string_view name) {
    std::string text = "\"";
    for (const char c : name) {
        text += c;
        if (c == '"') {
            text += c;
        }
    }
    return text + '"';
}

void Connection::execute(const char* sql) {
    const int code = sqlite3_exec(handle_.get(), sql, nullptr, nullptr, nullptr);
    if (code != SQLITE_OK) {
        fail(code);
    }
}

bool Connection::hasMoved() const {
    int moved = 0;
    const int code = sqlite3_file_control(handle_.get(), "main", SQLITE_FCNTL_HAS_MOVED, &moved);
    return code == SQLITE_OK && moved != 0;
}

void Connection::fail(int code) const {
    sqlite3* handle = handle_.get();
    // A check of the pages goes on behind one that it could not read: then the last call did not fail.
    const bool lastFailed = handle != nullptr && (sqlite3_errcode(handle) & 0xFF) == (code & 0xFF);
    const char* text = lastFailed ? sqlite3_errmsg(handle) : sqlite3_errstr(code);
    if (std::string_view(text).starts_with("not authorized")) {
        throw StoreFailure{Failure::Reshaped, text}; // something in the file would have to be run
    }
    if ((code & 0xFF) == SQLITE_CONSTRAINT) { // ours let every row in
        throw StoreFailure{Failure::Reshaped,
                           {"a rule that was added keeps a row out: " + std::string(text),
                            "追加された規則により行を書けません: " + std::string(text)}};
    }
    const int systemError = handle == nullptr ? 0 : systemErrorOf(handle);
    if ((code & 0xFF) == SQLITE_CORRUPT && isReadFailure(systemError)) {
        throw StoreFailure{meaningOf(code, systemError), platform::wordedReason(platform::errorOfNumber(systemError))};
    }
    throw StoreFailure{meaningOf(code, systemError), text};
}

Statement::Statement(Connection& connection, const char* sql) : connection_(connection) {
    sqlite3_stmt* handle = nullptr;
    const int code = sqlite3_prepare_v3(connection.get(), sql, -1, SQLITE_PREPARE_PERSISTENT, &handle, nullptr);
    handle_.reset(handle);
    check(code);
}

void Statement::check(int code) const {
    if (code != SQLITE_OK && code != SQLITE_ROW && code != SQLITE_DONE) {
        connection_.fail(code);
    }
}

Statement& Statement::bind(int index, std::int64_t value) {
    check(sqlite3_bind_int64(handle_.get(), index, value));
    return *this;
}

Statement& Statement::bind(int index, std::int64_t value, Zero) {
    check(value == 0 ? sqlite3_bind_null(handle_.get(), index) : sqlite3_bind_int64(handle_.get(), index, value));
    return *this;
}

Statement& Statement::bind(int index, double value) {
    check(std::isfinite(value) ? sqlite3_bind_double(handle_.get(), index, value)
                               : sqlite3_bind_null(handle_.get(), index));
    return *this;
}

Statement& Statement::bindEndless(int index, double value) {
    check(sqlite3_bind_double(handle_.get(), index, value));
    return *this;
}

Statement& Statement::bind(int index, std::string_view text) {
    // A null pointer would bind NULL, and an empty text is a text.
    check(sqlite3_bind_text64(handle_.get(), index, text.data() == nullptr ? "" : text.data(), text.size(),
                              SQLITE_STATIC, SQLITE_UTF8));
    return *this;
}

Statement& Statement::bind(int index, std::span<const std::byte> blob) {
    check(blob.empty() ? sqlite3_bind_null(handle_.get(), index)
                       : sqlite3_bind_blob64(handle_.get(), index, blob.data(), blob.size(), SQLITE_STATIC));
    return *this;
}

bool Statement::step() {
    const int code = sqlite3_step(handle_.get());
    check(code);
    if (code != SQLITE_ROW) {
        return false;
    }
    connection_.countRow();
    return true;
}

void Statement::run() {
    const int code = sqlite3_step(handle_.get());
    if (code != SQLITE_DONE && code != SQLITE_ROW) {
        const int extended = sqlite3_extended_errcode(connection_.get());
        sqlite3_reset(handle_.get());
        connection_.fail(extended);
    }
    sqlite3_reset(handle_.get());
}

bool Statement::isNumber(int column) const {
    const int type = sqlite3_value_numeric_type(sqlite3_column_value(handle_.get(), column));
    return type == SQLITE_INTEGER || type == SQLITE_FLOAT;
}

// Text and bytes are asked of the column's value: each call on a column looks after the connection's mutex and errors
// once more. One thread at a time has the connection, so the value needs no protection.
std::string_view Statement::text(int column) const {
    sqlite3_value* const value = sqlite3_column_value(handle_.get(), column);
    const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(value));
    if (text == nullptr) {
        return {};
    }
    const std::string_view bytes(text, static_cast<std::size_t>(sqlite3_value_bytes(value)));
    connection_.countBytes(bytes.size());
    if (sima::isValidUtf8(bytes)) {
        return bytes;
    }
    std::string& repaired = repaired_[column];
    repaired.clear();
    sima::appendValidUtf8(repaired, bytes);
    return repaired;
}

std::span<const std::byte> Statement::blob(int column) const {
    sqlite3_value* const value = sqlite3_column_value(handle_.get(), column);
    const auto* bytes = static_cast<const std::byte*>(sqlite3_value_blob(value));
    if (bytes == nullptr) {
        return {};
    }
    const auto size = static_cast<std::size_t>(sqlite3_value_bytes(value));
    connection_.countBytes(size);
    return {bytes, size};
}

} // namespace fenmark::drawing
