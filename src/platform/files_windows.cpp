// Files and folders on Windows.
#define _CRT_RAND_S // declares rand_s
#include "platform/files.h"

#include "platform/wide_windows.h"
#include "platform/write_through.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <utility>

#include <fcntl.h>
#include <io.h>

namespace fenmark::platform {

namespace {

constexpr std::wstring_view kSuffix = L".partial";
constexpr std::size_t kRandom = 6;        // letters and digits
constexpr std::size_t kLongestName = 255; // units of UTF-16, of one name in a folder
constexpr int kTries = 100;               // to make a file that nobody clears away at once
constexpr int kHeldTries = 30;            // to replace a file that a virus scanner or an indexer looks at
constexpr DWORD kHeldPause = 50;          // ms
constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
constexpr DWORD kLockAt = 0x40000000; // high half of a place far behind every file: locks here keep others from reading

std::error_code systemError(int number) {
    return {number, std::generic_category()};
}

std::error_code lastError() {
    return meaningOf(::GetLastError());
}

// A handle that closes itself.
class Handle {
  public:
    explicit Handle(HANDLE handle) : handle_(handle) {}
    ~Handle() {
        if (*this) {
            ::CloseHandle(handle_);
        }
    }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;
    explicit operator bool() const { return handle_ != INVALID_HANDLE_VALUE; }
    HANDLE get() const { return handle_; }
    HANDLE release() { return std::exchange(handle_, INVALID_HANDLE_VALUE); }

  private:
    HANDLE handle_;
};

// Opens what is there, folders too. Access 0 asks for the attributes alone, which nobody can refuse by holding the file.
Handle openThere(const std::wstring& path, DWORD access, DWORD flags = 0) {
    return Handle(::CreateFileW(path.c_str(), access, kShareAll, nullptr, OPEN_EXISTING,
                                FILE_FLAG_BACKUP_SEMANTICS | flags, nullptr));
}

HANDLE handleOf(int descriptor) {
    return reinterpret_cast<HANDLE>(::_get_osfhandle(descriptor));
}

// Where the last name of a path begins.
std::size_t leafStart(std::string_view path) {
    const std::size_t last = path.find_last_of("\\/:");
    return last == std::string_view::npos ? 0 : last + 1;
}

// "No such path" also says that what should be a folder is a file.
bool liesBelowFile(const std::string& path) {
    std::string folder = folderOf(path);
    while (true) {
        const DWORD attributes = ::GetFileAttributesW(widePath(folder).c_str());
        if (attributes != INVALID_FILE_ATTRIBUTES) {
            return (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
        }
        std::string above = folderOf(folder);
        if (above.size() >= folder.size()) {
            return false;
        }
        folder = std::move(above);
    }
}

std::error_code writeAll(HANDLE file, std::string_view bytes) {
    constexpr std::size_t kAtOnce = std::size_t{1} << 30;
    while (!bytes.empty()) {
        DWORD written = 0;
        if (!::WriteFile(file, bytes.data(), static_cast<DWORD>(std::min(bytes.size(), kAtOnce)), &written, nullptr)) {
            return lastError();
        }
        bytes.remove_prefix(written);
    }
    return {};
}

bool isSameFile(HANDLE opened, const std::wstring& path) {
    const Handle named = openThere(path, 0, FILE_FLAG_OPEN_REPARSE_POINT);
    BY_HANDLE_FILE_INFORMATION a;
    BY_HANDLE_FILE_INFORMATION b;
    return named && ::GetFileInformationByHandle(opened, &a) && ::GetFileInformationByHandle(named.get(), &b) &&
           a.dwVolumeSerialNumber == b.dwVolumeSerialNumber && a.nFileIndexHigh == b.nFileIndexHigh &&
           a.nFileIndexLow == b.nFileIndexLow;
}

bool lockIt(HANDLE file) {
    OVERLAPPED place{};
    place.OffsetHigh = kLockAt;
    return ::LockFileEx(file, LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0, &place) != 0;
}

// Room for the random part and the suffix is made by cutting a long name short.
std::wstring prefixFor(const std::string& target) {
    const std::wstring leaf = wide(std::string_view(target).substr(leafStart(target)));
    return leaf.substr(0, kLongestName - 1 - kRandom - kSuffix.size()) + L".";
}

std::wstring randomName() {
    constexpr std::wstring_view kLetters = L"abcdefghijklmnopqrstuvwxyz0123456789"; // names differ beyond their case
    std::wstring name;
    for (std::size_t i = 0; i < kRandom; ++i) {
        unsigned number = 0;
        (void)::rand_s(&number);
        name += kLetters[number % kLetters.size()];
    }
    return name;
}

// Temporary files for this target that nobody holds a lock on.
void removeLeftovers(const std::wstring& folder, const std::wstring& prefix) {
    WIN32_FIND_DATAW found;
    const HANDLE search = ::FindFirstFileW((folder + L"\\*" + std::wstring(kSuffix)).c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) {
        return;
    }
    do {
        const std::wstring name = found.cFileName;
        const bool ours = name.size() == prefix.size() + kRandom + kSuffix.size() && name.starts_with(prefix) &&
                          name.ends_with(kSuffix);
        if (!ours || (found.dwFileAttributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT)) != 0) {
            continue;
        }
        const std::wstring path = folder + L"\\" + name;
        const Handle file = openThere(path, GENERIC_READ | GENERIC_WRITE);
        if (file && lockIt(file.get())) {
            ::DeleteFileW(path.c_str());
        }
    } while (::FindNextFileW(search, &found) != 0);
    ::FindClose(search);
}

// Why a file could not be replaced: a file that is open is refused like one without rights.
std::error_code whyNotReplaced(const std::wstring& target) {
    const std::error_code error = lastError();
    if (!isDenied(error)) {
        return error;
    }
    const Handle file = openThere(target, DELETE);
    return !file && ::GetLastError() == ERROR_SHARING_VIOLATION ? systemError(EBUSY) : error;
}

} // namespace

const bool kOpenFilesCanBeReplaced = false;

PathState lookUp(const std::string& path) {
    PathState state;
    const std::wstring name = widePath(path);
    const Handle file = openThere(name, 0);
    if (!file) {
        const DWORD why = ::GetLastError();
        state.error = meaningOf(why);
        if (why == ERROR_PATH_NOT_FOUND && liesBelowFile(path)) {
            state.error = systemError(ENOTDIR);
        } else if (state.error == std::errc::no_such_file_or_directory) {
            const bool isLink = ::GetFileAttributesW(name.c_str()) != INVALID_FILE_ATTRIBUTES;
            state.kind = isLink ? PathKind::DanglingLink : PathKind::Missing;
            state.leadsTo = isLink ? "?" : "";
            state.error = {};
        }
        return state;
    }
    BY_HANDLE_FILE_INFORMATION about;
    if (::GetFileType(file.get()) != FILE_TYPE_DISK) {
        state.kind = PathKind::Other;
    } else if (!::GetFileInformationByHandle(file.get(), &about)) {
        state.error = lastError();
    } else if ((about.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
        state.kind = PathKind::Folder;
    } else {
        state.kind = PathKind::File;
        state.size = (std::uint64_t{about.nFileSizeHigh} << 32U) | about.nFileSizeLow;
    }
    return state;
}

std::error_code mayRead(const std::string& path) {
    return openThere(widePath(path), GENERIC_READ) ? std::error_code() : lastError();
}

std::error_code mayWrite(const std::string& path) {
    const std::wstring name = widePath(path);
    const DWORD attributes = ::GetFileAttributesW(name.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) {
        return lastError();
    }
    // The attribute "read only" of a folder says nothing about what lies in it.
    const bool isFolder = (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    return openThere(name, isFolder ? FILE_ADD_FILE : GENERIC_WRITE) ? std::error_code() : lastError();
}

std::string folderOf(const std::string& path) {
    const std::size_t leaf = leafStart(path);
    if (leaf == 0) {
        return ".";
    }
    const bool isRoot = leaf == 1 || path[leaf - 1] == ':' || path[leaf - 2] == ':';
    return path.substr(0, isRoot ? leaf : leaf - 1);
}

std::string behindLinks(const std::string& path) {
    const std::wstring name = widePath(path);
    const DWORD attributes = ::GetFileAttributesW(name.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0) {
        return path;
    }
    const Handle file = openThere(name, 0);
    const DWORD room = file ? ::GetFinalPathNameByHandleW(file.get(), nullptr, 0, 0) : 0;
    std::wstring whole(room, L'\0');
    const DWORD length = room == 0 ? 0 : ::GetFinalPathNameByHandleW(file.get(), whole.data(), room, 0);
    whole.resize(std::min(length, room));
    return length == 0 || length >= room ? path : narrow(whole);
}

std::error_code removeFile(const std::string& path) {
    if (::DeleteFileW(widePath(path).c_str())) {
        return {};
    }
    const std::error_code error = lastError();
    return error == std::errc::no_such_file_or_directory ? std::error_code() : error;
}

bool isDiskFull(const std::error_code& error) {
    return error == systemError(ENOSPC) || error == systemError(EFBIG);
}

bool isDenied(const std::error_code& error) {
    return error == systemError(EACCES) || error == systemError(EPERM) || error == systemError(EROFS);
}

bool isHeld(const std::error_code& error) {
    return error == systemError(EBUSY);
}

std::error_code errorOfNumber(int number) {
    return meaningOf(static_cast<DWORD>(number));
}

std::string reasonOf(const std::error_code& error) {
    return isHeld(error) ? "it is open in another program" : std::strerror(error.value());
}

std::error_code TemporaryFile::make(const std::string& target, AtLink atLink) {
    discard();
    complete_ = false;
    target_ = atLink == AtLink::Replace ? target : behindLinks(target);
    const PathState state = lookUp(target_);
    if (state.kind == PathKind::Unknown) {
        return state.error;
    }
    if (state.kind == PathKind::DanglingLink && atLink == AtLink::Follow) {
        return systemError(ENOENT);
    }
    if (state.kind == PathKind::Folder || state.kind == PathKind::Other) {
        return systemError(state.kind == PathKind::Folder ? EISDIR : EINVAL);
    }
    if (state.kind == PathKind::File) {
        if (const std::error_code denied = mayWrite(target_)) {
            return denied;
        }
    }

    const std::string folder = folderOf(target_);
    const std::wstring prefix = prefixFor(target_);
    removeLeftovers(widePath(folder), prefix);
    const std::string start = target_.substr(0, leafStart(target_));
    for (int attempt = 0; attempt < kTries; ++attempt) {
        std::string path = start + narrow(prefix + randomName() + std::wstring(kSuffix));
        const std::wstring name = widePath(path);
        // Others may open it by name as long as it is there, SQLite among them, and it may take its name while it is
        // open. Its rights are those of its folder, as for every new file of Windows.
        Handle file(::CreateFileW(name.c_str(), GENERIC_READ | GENERIC_WRITE, kShareAll, nullptr, CREATE_NEW,
                                  FILE_ATTRIBUTE_NORMAL, nullptr));
        if (!file) {
            const std::error_code error = lastError();
            if (error == std::errc::file_exists) {
                continue;
            }
            return error;
        }
        (void)lockIt(file.get()); // where there are no locks, nobody clears it away either
        if (isSameFile(file.get(), name)) {
            descriptor_ = ::_open_osfhandle(reinterpret_cast<std::intptr_t>(file.get()), _O_BINARY | _O_RDWR);
            if (descriptor_ < 0) {
                ::DeleteFileW(name.c_str());
                return systemError(EMFILE);
            }
            (void)file.release();
            path_ = std::move(path);
            return {};
        }
    }
    return systemError(EAGAIN);
}

std::error_code TemporaryFile::write(std::string_view bytes) {
    return writeAll(handleOf(descriptor_), bytes);
}

std::error_code TemporaryFile::verify() const {
    return descriptor_ >= 0 && isSameFile(handleOf(descriptor_), widePath(path_)) ? std::error_code()
                                                                                  : systemError(ENOENT);
}

std::error_code TemporaryFile::complete() {
    if (const std::error_code lost = verify()) {
        return lost;
    }
    if (!::FlushFileBuffers(handleOf(descriptor_))) {
        return lastError();
    }
    complete_ = true;
    return {};
}

std::error_code TemporaryFile::putInPlace(AtTarget atTarget) {
    if (!complete_) {
        if (const std::error_code error = complete()) {
            return error;
        }
    }
    if (const std::error_code lost = verify()) {
        return lost;
    }
    const std::wstring from = widePath(path_);
    const std::wstring to = widePath(target_);
    const DWORD how = MOVEFILE_WRITE_THROUGH | (atTarget == AtTarget::Replace ? MOVEFILE_REPLACE_EXISTING : 0);
    std::error_code error;
    for (int attempt = 0; attempt < kHeldTries; ++attempt) {
        error = ::MoveFileExW(from.c_str(), to.c_str(), how) ? std::error_code() : whyNotReplaced(to);
        if (!isHeld(error)) {
            break;
        }
        ::Sleep(kHeldPause);
    }
    if (error) {
        return error;
    }
    path_.clear();
    ::_close(std::exchange(descriptor_, -1)); // flushed, so that nothing is left to fail
    return {};
}

void TemporaryFile::discard() {
    const bool isThere = !path_.empty() && !verify();
    if (descriptor_ >= 0) {
        ::_close(std::exchange(descriptor_, -1));
    }
    if (isThere) {
        ::DeleteFileW(widePath(path_).c_str());
    }
    path_.clear();
}

std::error_code writeWhole(const std::string& path, const std::function<void(std::ostream&)>& write, AtLink atLink) {
    const PathState state = lookUp(path);
    if (state.kind == PathKind::Unknown) {
        return state.error;
    }
    if (state.kind == PathKind::Other) {
        const Handle file(
            ::CreateFileW(widePath(path).c_str(), GENERIC_WRITE, kShareAll, nullptr, OPEN_EXISTING, 0, nullptr));
        if (!file) {
            return lastError();
        }
        return writeThrough([&](std::string_view bytes) { return writeAll(file.get(), bytes); }, write);
    }
    return writeAside(path, write, atLink);
}

} // namespace fenmark::platform
