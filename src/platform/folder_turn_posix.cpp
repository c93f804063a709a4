// Turns at the files of a folder, by a lock on the folder.
#include "platform/folder_turn.h"

#include <cerrno>
#include <thread>
#include <utility>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace fenmark::platform {

namespace {

constexpr std::chrono::milliseconds kPause{2};

} // namespace

FolderTurn::FolderTurn(const std::string& folder, std::chrono::milliseconds patience) {
    descriptor_ = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    const auto end = std::chrono::steady_clock::now() + patience;
    while (descriptor_ >= 0 && ::flock(descriptor_, LOCK_EX | LOCK_NB) != 0) {
        const bool mayPass = errno == EWOULDBLOCK || errno == EINTR;
        if (!mayPass || std::chrono::steady_clock::now() >= end) {
            ::close(std::exchange(descriptor_, -1));
            return;
        }
        std::this_thread::sleep_for(kPause);
    }
}

FolderTurn::~FolderTurn() {
    if (descriptor_ >= 0) {
        ::close(descriptor_);
    }
}

} // namespace fenmark::platform
