// What the store asks about the files of a drawing before SQLite sees them.
#include "drawing/geopackage/file_system.h"

#include "platform/files.h"
#include "platform/paths.h"

#include <array>
#include <fstream>

namespace fenmark::drawing {

using platform::PathKind;
using platform::PathState;

namespace {

constexpr std::size_t kWriteVersionOffset = 18; // of a database's header: 2 where a write-ahead log is used
constexpr char kWriteAheadLog = 2;

PathCheck denied(StoreError error, const std::error_code& why, const char* of = "") {
    return {error, of + platform::reasonOf(why)};
}

// What is there, if it is no ordinary file that can be judged further.
PathCheck checkFile(const PathState& state) {
    switch (state.kind) {
    case PathKind::File:
        return {};
    case PathKind::Missing:
        return {StoreError::NotFound, {}};
    case PathKind::DanglingLink:
        return {StoreError::DanglingLink, "to '" + state.leadsTo + "'"};
    case PathKind::Unknown:
        return denied(StoreError::Unreachable, state.error);
    case PathKind::Folder:
    case PathKind::Other:
        break;
    }
    return {StoreError::NotAFile, {}};
}

PathCheck checkFolder(const std::string& file) {
    const std::error_code error = platform::mayWrite(platform::folderOf(file));
    return error ? denied(StoreError::NotWritable, error, "its folder: ") : PathCheck();
}

} // namespace

PathCheck checkReadable(const std::string& path) {
    const PathState state = platform::lookUp(path);
    if (PathCheck check = checkFile(state); !check) {
        return check;
    }
    if (platform::mayRead(path)) {
        return {StoreError::NotReadable, {}};
    }
    return state.size == 0 ? PathCheck{StoreError::NotADrawing, {}} : PathCheck();
}

PathCheck checkWritable(const std::string& path) {
    const std::string file = platform::behindLinks(path);
    if (const std::error_code error = platform::mayWrite(file)) {
        return denied(StoreError::NotWritable, error);
    }
    return checkFolder(file);
}

PathCheck checkReplaceable(const std::string& path) {
    const PathState state = platform::lookUp(path);
    if (state.kind == PathKind::File) {
        return checkWritable(path);
    }
    if (state.kind == PathKind::Unknown && state.error == std::errc::not_a_directory) {
        return denied(StoreError::NotWritable, state.error, "its folder: ");
    }
    if (state.kind != PathKind::Missing) {
        return checkFile(state);
    }
    const PathState folder = platform::lookUp(platform::folderOf(path));
    switch (folder.kind) {
    case PathKind::Folder:
        return checkFolder(path);
    case PathKind::Missing:
    case PathKind::DanglingLink:
        return {StoreError::NoFolder, {}};
    case PathKind::Unknown:
        return denied(StoreError::Unreachable, folder.error, "its folder: ");
    default:
        break;
    }
    return denied(StoreError::NotWritable, std::make_error_code(std::errc::not_a_directory), "its folder: ");
}

bool hasJournal(const std::string& path) {
    return platform::lookUp(platform::behindLinks(path) + "-journal").kind != PathKind::Missing;
}

void removeJournal(const std::string& path) {
    (void)platform::removeFile(platform::behindLinks(path) + "-journal");
}

bool hasWriteAheadLog(const std::string& path) {
    const PathState state = platform::lookUp(platform::behindLinks(path) + "-wal");
    return state.kind == PathKind::Unknown || (state.kind == PathKind::File && state.size > 0);
}

bool usesWriteAheadLog(const std::string& path) {
    std::ifstream file(platform::pathOf(path), std::ios::binary);
    std::array<char, kWriteVersionOffset + 1> header{};
    file.read(header.data(), header.size());
    return file && header[kWriteVersionOffset] == kWriteAheadLog;
}

HeldDrawing::HeldDrawing(const std::string& path) {
    try {
        const PathState state = platform::lookUp(path);
        if (state.kind == PathKind::File && state.size > 0) {
            connection_.emplace(path, Connection::Mode::ReadWrite);
            connection_->execute("PRAGMA journal_mode = DELETE"); // ends a write-ahead log
            connection_->execute("BEGIN EXCLUSIVE");              // after a crash this restores the file first
        }
    } catch (const StoreFailure& failure) {
        if (failure.error == StoreError::Locked) {
            throw;
        }
        connection_.reset();
    }
    if (connection_) {
        return;
    }
    // Beside no database these belong to nobody, and would be played into the file that comes.
    for (const char* beside : {"-journal", "-wal", "-shm"}) {
        (void)platform::removeFile(path + beside);
    }
}

} // namespace fenmark::drawing
