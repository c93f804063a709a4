// The log of one import, in a place of its own beside the input until the drawing is safe.
#pragma once

#include "platform/files.h"
#include "values/language.h"
#include "values/outcome.h"

#include <string>
#include <system_error>

namespace fenmark::cli {

// A file that is no file, or a link, at the log's name is never written through.
class PendingLog {
  public:
    PendingLog(const std::string& file, Language language);

    const std::string& target() const { return target_; }
    // Whether the log would take the place of the drawing that is to be written, or of any other one that is there.
    bool replacesDrawing(const std::string& drawing) const;
    // Where the command writes it.
    const std::string& path() const { return temporary_.path(); }

    Outcome make();
    // After this only its renaming can fail.
    Outcome complete();
    Outcome putInPlace();

  private:
    Outcome judged(const std::error_code& error) const;

    std::string file_;
    Language language_;
    std::string target_;
    platform::TemporaryFile temporary_;
};

} // namespace fenmark::cli
