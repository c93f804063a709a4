// Files and folders on POSIX systems.
#include "platform/files.h"

#include "platform/write_through.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <utility>

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace fenmark::platform {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kSuffix = ".partial";
constexpr std::string_view kRandom = "XXXXXX"; // becomes letters and digits
constexpr std::size_t kLongestName = 255;      // bytes, of one name in a folder
constexpr int kTries = 100;                    // to make a file that nobody clears away at once
constexpr unsigned kRightsMask = 07777;
constexpr unsigned kNewFileRights = 0666;

std::error_code systemError(int number) {
    return {number, std::generic_category()};
}

std::error_code lastError() {
    return systemError(errno);
}

// A descriptor that closes itself.
class Descriptor {
  public:
    explicit Descriptor(int number) : number_(number) {}
    ~Descriptor() {
        if (number_ >= 0) {
            ::close(number_);
        }
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    int get() const { return number_; }
    int release() { return std::exchange(number_, -1); }

  private:
    int number_;
};

template <typename Call>
int retried(Call call) {
    int result = call();
    while (result < 0 && errno == EINTR) {
        result = call();
    }
    return result;
}

std::error_code writeAll(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(descriptor, bytes.data(), bytes.size());
        if (written < 0) {
            if (errno == EINTR) {
                continue;
            }
            return lastError();
        }
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return {};
}

std::error_code flush(int descriptor) {
    const bool done = retried([&] { return ::fsync(descriptor); }) == 0 || errno == EINVAL; // nothing to flush to
    return done ? std::error_code() : lastError();
}

// Some file systems cannot flush a folder, and what lies in it has its name all the same.
void flushFolder(const std::string& folder) {
    const Descriptor descriptor(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (descriptor.get() >= 0) {
        (void)flush(descriptor.get());
    }
}

// Room for the random part and the suffix is made by cutting a long name short.
std::string prefixFor(const std::string& target) {
    const std::string leaf = fs::path(target).filename().string();
    return leaf.substr(0, kLongestName - 1 - kRandom.size() - kSuffix.size()) + ".";
}

bool isTemporaryName(std::string_view name, std::string_view prefix) {
    return name.size() == prefix.size() + kRandom.size() + kSuffix.size() && name.starts_with(prefix) &&
           name.ends_with(kSuffix);
}

// A call that may not be given up at the first fault, since a file would be left behind: a fault may pass.
bool insisted(const auto& call) {
    for (int attempt = 0; attempt < kTries; ++attempt) {
        if (call() == 0) {
            return true;
        }
        if (errno == ENOENT) {
            return false;
        }
    }
    return false;
}

bool isSameFile(int descriptor, const std::string& path) {
    struct ::stat opened {};
    struct ::stat named {};
    return insisted([&] { return ::fstat(descriptor, &opened); }) &&
           insisted([&] { return ::lstat(path.c_str(), &named); }) && opened.st_dev == named.st_dev &&
           opened.st_ino == named.st_ino;
}

// Temporary files for this target that nobody holds a lock on. A name that a file of another kind bears is let alone.
void removeLeftovers(const std::string& folder, std::string_view prefix) {
    // The standard library's iterator ends the program where memory runs out.
    struct Closer {
        void operator()(DIR* listing) const { ::closedir(listing); }
    };
    const std::unique_ptr<DIR, Closer> listing(::opendir(folder.c_str()));
    while (const dirent* const entry = listing ? ::readdir(listing.get()) : nullptr) {
        if (!isTemporaryName(entry->d_name, prefix)) {
            continue;
        }
        const std::string path = folder + "/" + entry->d_name;
        const Descriptor file(::open(path.c_str(), O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
        struct ::stat status {};
        if (file.get() >= 0 && ::fstat(file.get(), &status) == 0 && S_ISREG(status.st_mode) &&
            ::flock(file.get(), LOCK_EX | LOCK_NB) == 0 && isSameFile(file.get(), path)) {
            ::unlink(path.c_str());
        }
    }
}

unsigned newFileRights() {
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return kNewFileRights & ~mask;
}

// Gives the file its name where nothing bears that name.
std::error_code renameToNew(const std::string& from, const std::string& to) {
#if defined(RENAME_NOREPLACE)
    if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) {
        return {};
    }
    if (errno != EINVAL && errno != ENOSYS && errno != ENOTSUP) {
        return lastError();
    }
#endif
    // A second name is refused where there is a first; some file systems know no second names.
    if (::link(from.c_str(), to.c_str()) == 0) {
        ::unlink(from.c_str());
        return {};
    }
    if (errno != EPERM && errno != ENOTSUP && errno != ENOSYS && errno != EMLINK) {
        return lastError();
    }
    // There it is the folder's turn that keeps programs of this kind from coming in between.
    struct ::stat status {};
    if (::lstat(to.c_str(), &status) == 0) {
        return systemError(EEXIST);
    }
    if (errno != ENOENT) {
        return lastError();
    }
    return ::rename(from.c_str(), to.c_str()) == 0 ? std::error_code() : lastError();
}

PathState stateOf(const struct ::stat& status) {
    PathState state;
    state.kind = S_ISREG(status.st_mode)   ? PathKind::File
                 : S_ISDIR(status.st_mode) ? PathKind::Folder
                                           : PathKind::Other;
    state.size = S_ISREG(status.st_mode) ? static_cast<std::uint64_t>(status.st_size) : 0;
    return state;
}

// Why a file that may be written cannot give its name to another: it is a mount of its own or may only grow, or its folder
// has the sticky bit, so that only the owner of one of them may rename it.
std::error_code mayGiveItsName(const std::string& path, const struct ::stat& file) {
#ifdef STATX_ATTR_MOUNT_ROOT
    struct ::statx more {};
    if (::statx(AT_FDCWD, path.c_str(), AT_SYMLINK_NOFOLLOW, STATX_BASIC_STATS, &more) == 0) {
        if ((more.stx_attributes & STATX_ATTR_MOUNT_ROOT) != 0) {
            return systemError(EBUSY);
        }
        if ((more.stx_attributes & (STATX_ATTR_APPEND | STATX_ATTR_IMMUTABLE)) != 0) {
            return systemError(EPERM);
        }
    }
#endif
    struct ::stat folder {};
    if (::stat(folderOf(path).c_str(), &folder) != 0 || (folder.st_mode & S_ISVTX) == 0) {
        return {};
    }
    const uid_t user = ::geteuid();
    return user == 0 || user == file.st_uid || user == folder.st_uid ? std::error_code() : systemError(EPERM);
}

} // namespace

PathState lookUp(const std::string& path) {
    PathState state;
    struct ::stat status {};
    if (::stat(path.c_str(), &status) == 0) {
        return stateOf(status);
    }
    if (errno != ENOENT) {
        state.error = lastError();
        return state;
    }
    if (::lstat(path.c_str(), &status) != 0) {
        if (errno != ENOENT) {
            state.error = lastError();
            return state;
        }
        state.kind = PathKind::Missing;
        return state;
    }
    if (!S_ISLNK(status.st_mode)) {
        return stateOf(status); // made since it was missing above
    }
    state.kind = PathKind::DanglingLink;
    std::error_code ignored;
    state.leadsTo = fs::read_symlink(path, ignored).string();
    return state;
}

std::error_code mayRead(const std::string& path) {
    return ::access(path.c_str(), R_OK) == 0 ? std::error_code() : lastError();
}

std::error_code mayWrite(const std::string& path) {
    return ::access(path.c_str(), W_OK) == 0 ? std::error_code() : lastError();
}

std::string folderOf(const std::string& path) {
    const fs::path folder = fs::path(path).parent_path();
    return folder.empty() ? "." : folder.string();
}

std::string behindLinks(const std::string& path) {
    std::error_code error;
    const fs::path whole = fs::canonical(path, error);
    if (!error) {
        return whole.string();
    }
    const fs::path folder = fs::canonical(folderOf(path), error);
    return error ? path : (folder / fs::path(path).filename()).string();
}

std::error_code removeFile(const std::string& path) {
    return ::unlink(path.c_str()) == 0 || errno == ENOENT ? std::error_code() : lastError();
}

bool isDiskFull(const std::error_code& error) {
    return error == systemError(ENOSPC) || error == systemError(EFBIG) || error == systemError(EDQUOT);
}

bool isDenied(const std::error_code& error) {
    return error == systemError(EACCES) || error == systemError(EPERM) || error == systemError(EROFS);
}

bool isHeld(const std::error_code& error) {
    return error == systemError(ETXTBSY);
}

std::error_code errorOfNumber(int number) {
    return systemError(number);
}

std::string reasonOf(const std::error_code& error) {
    return std::strerror(error.value());
}

const bool kOpenFilesCanBeReplaced = true;

std::error_code TemporaryFile::make(const std::string& target, AtLink atLink) {
    discard();
    complete_ = false;
    struct ::stat status {};
    bool isThere = false;
    if (atLink == AtLink::Replace) {
        target_ = (fs::path(behindLinks(folderOf(target))) / fs::path(target).filename()).string();
        isThere = ::lstat(target_.c_str(), &status) == 0;
    } else {
        target_ = behindLinks(target);
        isThere = ::stat(target_.c_str(), &status) == 0;
    }
    if (!isThere && errno != ENOENT) {
        return lastError();
    }
    const bool isLink = isThere && S_ISLNK(status.st_mode);
    if (isThere && !isLink) {
        if (!S_ISREG(status.st_mode)) {
            return systemError(S_ISDIR(status.st_mode) ? EISDIR : EINVAL);
        }
        if (const std::error_code denied = mayWrite(target_)) {
            return denied;
        }
    }
    if (isThere) {
        if (const std::error_code denied = mayGiveItsName(target_, status)) {
            return denied;
        }
    }
    if (!isThere && atLink == AtLink::Follow && ::lstat(target_.c_str(), &status) == 0 && S_ISLNK(status.st_mode)) {
        return systemError(ENOENT); // a link that leads to nothing
    }
    rights_ = isThere && !isLink ? static_cast<unsigned>(status.st_mode) & kRightsMask : newFileRights();

    const std::string folder = folderOf(target_);
    const std::string prefix = prefixFor(target_);
    removeLeftovers(folder, prefix);
    for (int attempt = 0; attempt < kTries; ++attempt) {
        std::string path = (fs::path(folder) / prefix).string() + std::string(kRandom) + std::string(kSuffix);
        Descriptor file(::mkostemps(path.data(), static_cast<int>(kSuffix.size()), O_CLOEXEC));
        if (file.get() < 0) {
            return lastError();
        }
        // Another program may take the file for a leftover until it is locked; one that has the lock is about to clear it
        // away. Where there are no locks, nobody does.
        if (::flock(file.get(), LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) {
            (void)insisted([&] { return ::unlink(path.c_str()); });
            continue;
        }
        if (isSameFile(file.get(), path)) {
            path_ = std::move(path);
            descriptor_ = file.release();
            return {};
        }
    }
    return systemError(EAGAIN);
}

std::error_code TemporaryFile::write(std::string_view bytes) {
    return writeAll(descriptor_, bytes);
}

// That the name still leads to the file that was made.
std::error_code TemporaryFile::verify() const {
    return descriptor_ >= 0 && isSameFile(descriptor_, path_) ? std::error_code() : systemError(ENOENT);
}

std::error_code TemporaryFile::complete() {
    if (const std::error_code lost = verify()) {
        return lost;
    }
    // Where the file system keeps no rights, the file has those of every other one there.
    (void)::fchmod(descriptor_, static_cast<mode_t>(rights_));
    if (const std::error_code error = flush(descriptor_)) {
        return error;
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
    const std::string folder = folderOf(target_); // behind the renaming nothing may fail, memory neither
    std::error_code error;
    if (atTarget == AtTarget::Refuse) {
        error = renameToNew(path_, target_);
    } else if (::rename(path_.c_str(), target_.c_str()) != 0) {
        error = lastError();
    }
    if (error) {
        return error;
    }
    path_.clear();
    ::close(std::exchange(descriptor_, -1)); // flushed, so that nothing is left to fail
    flushFolder(folder);
    return {};
}

void TemporaryFile::discard() {
    if (!path_.empty() && descriptor_ >= 0 && isSameFile(descriptor_, path_)) {
        (void)insisted([&] { return ::unlink(path_.c_str()); });
    }
    path_.clear();
    if (descriptor_ >= 0) {
        ::close(std::exchange(descriptor_, -1));
    }
}

std::error_code writeWhole(const std::string& path, const std::function<void(std::ostream&)>& write, AtLink atLink) {
    const PathState state = lookUp(path);
    if (state.kind == PathKind::Unknown) {
        return state.error;
    }
    struct ::stat link {};
    const bool replacesLink = atLink == AtLink::Replace && ::lstat(path.c_str(), &link) == 0 && S_ISLNK(link.st_mode);
    if (state.kind == PathKind::Other && !replacesLink) {
        Descriptor file(::open(path.c_str(), O_WRONLY | O_CLOEXEC));
        if (file.get() < 0) {
            return lastError();
        }
        std::error_code error =
            writeThrough([&](std::string_view bytes) { return writeAll(file.get(), bytes); }, write);
        if (::close(file.release()) != 0 && !error) {
            error = lastError();
        }
        return error;
    }
    return writeAside(path, write, atLink);
}

} // namespace fenmark::platform
