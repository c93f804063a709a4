// What the store asks about the files of a drawing before SQLite sees them.
#include "drawing/geopackage/file_system.h"

#include "platform/files.h"
#include "platform/paths.h"

#include <array>
#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>

namespace fenmark::drawing {

using platform::PathKind;
using platform::PathState;

namespace {

constexpr std::size_t kWriteVersionOffset = 18; // of a database's header: 2 where a write-ahead log is used
constexpr char kWriteAheadLog = 2;
constexpr std::array<const char*, 3> kBeside = {"-journal", "-wal", "-shm"}; // SQLite's own files

StoreFailure denied(Failure failure, const std::error_code& why) {
    return {failure, platform::wordedReason(why)};
}

StoreFailure folderDenied(Failure failure, const std::error_code& why) {
    const Worded reason = platform::wordedReason(why);
    return {failure, {"its folder: " + reason.english, "フォルダ: " + reason.japanese}};
}

bool hasWriteAheadLog(const std::string& path) {
    const PathState state = platform::lookUp(platform::behindLinks(path) + "-wal");
    return state.kind == PathKind::Unknown || (state.kind == PathKind::File && state.size > 0);
}

bool usesWriteAheadLog(const std::string& path) {
    if (platform::lookUp(path).kind != PathKind::File) {
        return false; // a pipe would be waited for
    }
    std::ifstream file(platform::pathOf(path), std::ios::binary);
    std::array<char, kWriteVersionOffset + 1> header{};
    file.read(header.data(), header.size());
    return file && header[kWriteVersionOffset] == kWriteAheadLog;
}

// What is there, if it is no ordinary file that can be judged further.
void requireFile(const PathState& state) {
    switch (state.kind) {
    case PathKind::File:
        return;
    case PathKind::Missing:
        throw StoreFailure{Failure::NotFound, {}};
    case PathKind::DanglingLink:
        throw StoreFailure{Failure::DanglingLink, Worded("to '" + state.leadsTo + "'", "リンク先: " + state.leadsTo)};
    case PathKind::Unknown:
        throw denied(Failure::Unreachable, state.error);
    case PathKind::Folder:
    case PathKind::Other:
        break;
    }
    throw StoreFailure{Failure::NotAFile, {}};
}

// SQLite would wait at a pipe for somebody to write, and takes a link or a folder for a fault of the disk.
void requireFilesBeside(const std::string& path) {
    for (const char* ending : kBeside) {
        const std::string beside = platform::behindLinks(path) + ending;
        std::error_code error;
        const bool isLink = std::filesystem::is_symlink(platform::pathOf(beside), error);
        const PathKind kind = platform::lookUp(beside).kind;
        if (isLink || kind == PathKind::Folder || kind == PathKind::Other) {
            throw StoreFailure{Failure::NotReadable,
                               {"'" + beside + "' is not a file", "「" + beside + "」がファイルではありません"}};
        }
    }
}

void requireFolder(const std::string& file) {
    if (const std::error_code error = platform::mayWrite(platform::folderOf(file))) {
        throw folderDenied(Failure::NotWritable, error);
    }
}

} // namespace

void requireReadable(const std::string& path) {
    const PathState state = platform::lookUp(path);
    requireFile(state);
    if (platform::mayRead(path)) {
        throw StoreFailure{Failure::NotReadable, {}};
    }
    if (state.size == 0) {
        throw StoreFailure{Failure::NotADrawing, {}};
    }
    requireFilesBeside(path);
}

void requireWritable(const std::string& path) {
    const std::string file = platform::behindLinks(path);
    if (const std::error_code error = platform::mayWrite(file)) {
        throw denied(Failure::NotWritable, error);
    }
    requireFolder(file);
}

void requireReplaceable(const std::string& path) {
    const PathState state = platform::lookUp(path);
    if (state.kind == PathKind::File) {
        requireFilesBeside(path);
        return requireWritable(path);
    }
    if (state.kind == PathKind::Unknown && state.error == std::errc::not_a_directory) {
        throw folderDenied(Failure::NotWritable, state.error);
    }
    if (state.kind != PathKind::Missing) {
        return requireFile(state);
    }
    const PathState folder = platform::lookUp(platform::folderOf(path));
    switch (folder.kind) {
    case PathKind::Folder:
        return requireFolder(path);
    case PathKind::Missing:
    case PathKind::DanglingLink:
        throw StoreFailure{Failure::NoFolder, {}};
    case PathKind::Unknown:
        throw folderDenied(Failure::Unreachable, folder.error);
    default:
        break;
    }
    throw folderDenied(Failure::NotWritable, std::make_error_code(std::errc::not_a_directory));
}

bool hasJournal(const std::string& path) {
    return platform::lookUp(platform::behindLinks(path) + "-journal").kind != PathKind::Missing;
}

void removeJournal(const std::string& path) {
    (void)platform::removeFile(platform::behindLinks(path) + "-journal");
}

Connection::Mode modeToRead(const std::string& path) {
    return usesWriteAheadLog(path) && !hasWriteAheadLog(path) ? Connection::Mode::ReadAlone : Connection::Mode::Read;
}

void removeFilesBeside(const std::string& path) {
    for (const char* ending : kBeside) {
        (void)platform::removeFile(path + ending);
    }
}

HeldDrawing::HeldDrawing(const std::string& path) {
    try {
        const PathState state = platform::lookUp(path);
        if (state.kind == PathKind::File && state.size > 0) {
            connection_.emplace(path, Connection::Mode::ReadWrite);
            connection_->execute("PRAGMA journal_mode = DELETE"); // ends a write-ahead log
            connection_->execute("BEGIN EXCLUSIVE");              // after a crash this restores the file first
            return;
        }
    } catch (const StoreFailure& failure) {
        connection_.reset();
        if (failure.failure != Failure::NotADrawing && failure.failure != Failure::Damaged) {
            throw; // what lies beside it may be needed yet to restore it
        }
    }
    removeFilesBeside(path);
}

} // namespace fenmark::drawing
