// What the store needs of the file system.
#include "drawing/geopackage/file_system.h"

#include "drawing/geopackage/sqlite_handles.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <charconv>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string_view>

namespace fenmark::drawing {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kLeftoverSuffix = ".partial";
constexpr std::size_t kWriteVersionOffset = 18; // of a database's header: 2 where a write-ahead log is used
constexpr char kWriteAheadLog = 2;

fs::path folderOf(const std::string& path) {
    const fs::path folder = fs::path(path).parent_path();
    return folder.empty() ? fs::path(".") : folder;
}

// The file that a name leads to, so that a link stays a link when the file is replaced.
std::string behindLinks(const std::string& path) {
    std::error_code error;
    const fs::path real = fs::canonical(path, error);
    return error ? path : real.string();
}

bool isFilled(const std::string& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 && status.st_size > 0;
}

StoreFailure systemFailure(int error) {
    const bool full = error == ENOSPC || error == EFBIG || error == EDQUOT;
    const bool denied = error == EACCES || error == EPERM || error == EROFS;
    return {full ? StoreError::DiskFull : denied ? StoreError::NotWritable : StoreError::Failed, std::strerror(error)};
}

void flush(const std::string& path, int flags) {
    const int file = ::open(path.c_str(), flags | O_CLOEXEC);
    if (file < 0) {
        throw systemFailure(errno);
    }
    const int result = fsync(file);
    const int error = errno;
    ::close(file);
    if (result != 0 && error != EINVAL) { // some file systems cannot flush a folder
        throw systemFailure(error);
    }
}

} // namespace

bool fileExists(const std::string& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0;
}

StoreError checkReadable(const std::string& path) {
    struct stat status {};
    if (stat(path.c_str(), &status) != 0) {
        return errno == EACCES ? StoreError::NotReadable : StoreError::NotFound;
    }
    if (!S_ISREG(status.st_mode)) {
        return StoreError::NotAFile;
    }
    if (access(path.c_str(), R_OK) != 0) {
        return StoreError::NotReadable;
    }
    return status.st_size == 0 ? StoreError::NotADrawing : StoreError::None;
}

StoreError checkWritable(const std::string& path) {
    const bool writable = access(path.c_str(), W_OK) == 0 && access(folderOf(path).c_str(), W_OK) == 0;
    return writable ? StoreError::None : StoreError::NotWritable;
}

StoreError checkReplaceable(const std::string& path) {
    struct stat status {};
    if (stat(path.c_str(), &status) == 0) {
        if (!S_ISREG(status.st_mode)) {
            return StoreError::NotAFile;
        }
        return checkWritable(behindLinks(path));
    }
    const fs::path folder = folderOf(path);
    if (stat(folder.c_str(), &status) != 0) {
        return StoreError::NoFolder;
    }
    return S_ISDIR(status.st_mode) && access(folder.c_str(), W_OK) == 0 ? StoreError::None : StoreError::NotWritable;
}

std::string whyNotWritable(const std::string& path) {
    const std::string file = behindLinks(path);
    if (fileExists(file) && access(file.c_str(), W_OK) != 0) {
        return std::strerror(errno);
    }
    const std::string folder = folderOf(file);
    struct stat status {};
    if (stat(folder.c_str(), &status) == 0 && !S_ISDIR(status.st_mode)) {
        return "its folder: " + std::string(std::strerror(ENOTDIR));
    }
    return access(folder.c_str(), W_OK) != 0 ? "its folder: " + std::string(std::strerror(errno)) : std::string();
}

bool hasJournal(const std::string& path) {
    return fileExists(behindLinks(path) + "-journal");
}

void removeJournal(const std::string& path) {
    std::remove((behindLinks(path) + "-journal").c_str());
}

bool hasWriteAheadLog(const std::string& path) {
    return isFilled(behindLinks(path) + "-wal");
}

bool usesWriteAheadLog(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::array<char, kWriteVersionOffset + 1> header{};
    file.read(header.data(), header.size());
    return file && header[kWriteVersionOffset] == kWriteAheadLog;
}

void removeLeftovers(const std::string& path) {
    const fs::path target(behindLinks(path));
    const std::string prefix = target.filename().string() + ".";
    std::error_code error;
    for (const fs::directory_entry& entry : fs::directory_iterator(folderOf(target.string()), error)) {
        const std::string name = entry.path().filename().string();
        if (!name.starts_with(prefix) || !name.ends_with(kLeftoverSuffix) ||
            name.size() <= prefix.size() + kLeftoverSuffix.size()) {
            continue;
        }
        const char* first = name.data() + prefix.size();
        const char* last = name.data() + name.size() - kLeftoverSuffix.size();
        pid_t process = 0;
        const std::from_chars_result read = std::from_chars(first, last, process);
        if (read.ec == std::errc() && read.ptr == last && process > 0 && kill(process, 0) != 0 && errno == ESRCH) {
            std::error_code ignored;
            fs::remove(entry.path(), ignored);
        }
    }
}

TemporaryFile::TemporaryFile(const std::string& target)
    : path_(behindLinks(target) + "." + std::to_string(getpid()) + std::string(kLeftoverSuffix)) {
    std::remove(path_.c_str());
}

TemporaryFile::~TemporaryFile() {
    std::remove(path_.c_str());
}

void TemporaryFile::replace(const std::string& target) const {
    const std::string real = behindLinks(target);
    struct stat status {};
    if (stat(real.c_str(), &status) == 0) {
        (void)chmod(path_.c_str(), status.st_mode & 07777); // who may read the drawing stays as it was
    }
    flush(path_, O_RDWR);
    if (std::rename(path_.c_str(), real.c_str()) != 0) {
        throw systemFailure(errno);
    }
    try {
        flush(folderOf(real).string(), O_RDONLY | O_DIRECTORY);
    } catch (const StoreFailure&) {
        // The file has its name; a folder that cannot be flushed is no reason to call it unsaved.
    }
}

} // namespace fenmark::drawing
