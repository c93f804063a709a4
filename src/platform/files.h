// Files and folders: what stands at a path, and a file that takes its name when it is complete.
//
// Paths are UTF-8 (on POSIX: the bytes as they are). Nothing here throws but for want of memory, and nothing prints: a
// failure is a std::error_code.
#pragma once

#include "values/worded.h"

#include <cstdint>
#include <functional>
#include <iosfwd>
#include <memory>
#include <string>
#include <string_view>
#include <system_error>

namespace fenmark::platform {

// --- what stands at a path ---

enum class PathKind {
    Missing,      // nothing is there, and this is certain
    DanglingLink, // a link that leads to nothing
    File,
    Folder,
    Other,   // a device, a pipe
    Unknown, // the system could not say: see error
};

struct PathState {
    PathKind kind = PathKind::Unknown;
    std::error_code error;  // set for Unknown alone
    std::uint64_t size = 0; // bytes, of a file
    std::string leadsTo;    // what a dangling link names
};

// Follows links. Only an answer "no such file" of the system is Missing: with every other failure something may well be
// there, and must not be taken for nothing.
[[nodiscard]] PathState lookUp(const std::string& path);

// No error if the file or folder may be read, or written, by this process.
[[nodiscard]] std::error_code mayRead(const std::string& path);
[[nodiscard]] std::error_code mayWrite(const std::string& path);

// The folder that a path lies in; "." for a bare name.
[[nodiscard]] std::string folderOf(const std::string& path);
// The path without links in it, as far as it exists, so that a link stays a link when its file is replaced.
[[nodiscard]] std::string behindLinks(const std::string& path);

// True if both paths lead to one file, by whatever links; false where either is not there.
[[nodiscard]] bool leadToOneFile(const std::string& a, const std::string& b);

// No error if the file is gone afterwards.
std::error_code removeFile(const std::string& path);

// --- what a failure means ---

[[nodiscard]] bool isDiskFull(const std::error_code& error); // also a quota, or a limit on the size of files
[[nodiscard]] bool isDenied(const std::error_code& error);   // rights, or a file system that is read only
[[nodiscard]] bool isHeld(const std::error_code& error);     // another program has it open, and lets nobody near it
// The error that a number of the system stands for, as a library that keeps such numbers gives it: errno, or what
// GetLastError gives on Windows.
[[nodiscard]] std::error_code errorOfNumber(int number);
// The system's words, "No space left on device".
[[nodiscard]] std::string reasonOf(const std::error_code& error);
// The same with our own Japanese for what a user meets; the system's words where there is none.
[[nodiscard]] Worded wordedReason(const std::error_code& error);

// --- a file that takes its name when it is complete ---

// What becomes of a link at the target.
enum class AtLink {
    Follow, // the file behind it is replaced, and the link stays
    Replace // the link itself is replaced: nobody can have this file written somewhere else by planting a link
};

// Whether a file that this program has open can be replaced: Windows refuses that.
extern const bool kOpenFilesCanBeReplaced;

// What may stand at the target when the file takes its name.
enum class AtTarget {
    Replace,
    // The error is std::errc::file_exists, also where something appeared at the last moment. Some file systems cannot do
    // this in one step: the caller holds the folder's turn.
    Refuse
};

// A new file beside its target, of a name that cannot be guessed and that nothing bore before; only its owner may read
// it until it is complete. A lock on it says that its maker lives: what a killed program left has none, and goes when
// the next file is made for the same target. Removed at the end unless it took its name.
class TemporaryFile {
  public:
    TemporaryFile();
    ~TemporaryFile();
    TemporaryFile(TemporaryFile&&) noexcept;
    TemporaryFile& operator=(TemporaryFile&&) noexcept;
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    // Makes the file. A target that is there must be a file that may be written and may give its name to another
    // (errc::is_a_directory or another error says otherwise); the complete file gets its rights, or those of any new file.
    [[nodiscard]] std::error_code make(const std::string& target, AtLink atLink = AtLink::Follow);

    // Where the file lies until it takes its name, for a library that opens files by name.
    [[nodiscard]] const std::string& path() const { return path_; }
    // The name that it takes, links resolved.
    [[nodiscard]] const std::string& target() const { return target_; }

    // Appends, all of it or an error.
    [[nodiscard]] std::error_code write(std::string_view bytes);
    // Sets the rights and brings every byte to the disk: after this only the renaming can fail.
    [[nodiscard]] std::error_code complete();
    // Completes the file if that was not done, and gives it its name; the folder is brought to the disk too. The
    // target is then the new file whole, or on an error what it was.
    [[nodiscard]] std::error_code putInPlace(AtTarget atTarget = AtTarget::Replace);
    // Removes the file now.
    void discard();

  private:
    std::error_code verify() const;

    std::string path_;
    std::string target_;
    int descriptor_ = -1;
    unsigned rights_ = 0;
    bool complete_ = false;
};

// Writes a file whole by way of a temporary one, or straight into a target that is no ordinary file (a device, a pipe).
// An exception of the writer passes through, with the target as it was.
[[nodiscard]] std::error_code writeWhole(const std::string& path, const std::function<void(std::ostream&)>& write,
                                         AtLink atLink = AtLink::Follow);

} // namespace fenmark::platform
