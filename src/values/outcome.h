// Whether something was done, and if it was not, why: the one result of whatever can fail and has nothing else to return.
#pragma once

#include "values/worded.h"

#include <string>
#include <utility>

namespace fenmark {

// Kinds of failure that callers act upon.
enum class Failure {
    None,
    NotFound,    // no such file
    NoFolder,    // no folder to make it in
    NotAFile,    // a folder, a device
    NotADrawing, // no SQLite file
    NotOurs,     // a SQLite file that this program did not make
    LaterFormat, // a drawing that a later version made
    NotReadable, // no permission
    NotWritable, // file or folder cannot be written
    DiskFull,
    Locked,            // another program holds it
    Damaged,           // ours, but broken
    ChangedOutside,    // another program added to it since it was opened
    AppearedMeanwhile, // nothing was there when the drawing was begun, and now something is
    DanglingLink,      // a link that leads to nothing
    Unreachable,       // the system could not say what is there
    Reshaped,          // another program renamed, removed or replaced a table or column that is needed
    Failed,            // anything else
};
inline constexpr Failure kLastFailure = Failure::Failed;

struct [[nodiscard]] Outcome {
    Failure failure = Failure::None;
    Worded message; // one line on why not, ready for the user; empty where it was done

    explicit operator bool() const { return failure == Failure::None; }
    [[nodiscard]] const std::string& in(Language language) const { return message.in(language); }
};

[[nodiscard]] inline Outcome failed(Worded message, Failure failure = Failure::Failed) {
    return {failure, std::move(message)};
}

} // namespace fenmark
