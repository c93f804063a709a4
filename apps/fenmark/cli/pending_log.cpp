// The log of one import until it is in place.
#include "cli/pending_log.h"

#include "cli/messages.h"
#include "drawing/geopackage/package_file.h"
#include "platform/paths.h"
#include "sima/log/sima_log.h"

#include <filesystem>
#include <new>

namespace fenmark::cli {

PendingLog::PendingLog(const std::string& file, Language language) : file_(file), language_(language) {
    sima::SimaLog log;
    log.setFileName(file);
    target_ = log.fileName();
}

bool PendingLog::replacesDrawing(const std::string& drawing) const {
    // A link at the log's name is replaced itself, whatever it leads to.
    std::error_code error;
    const std::filesystem::path name = platform::pathOf(target_);
    if (std::filesystem::is_symlink(std::filesystem::symlink_status(name, error))) {
        return false;
    }
    const auto whole = [](const std::string& path) {
        std::error_code failed; // of a path that is too long for the system, say
        const std::filesystem::path given = platform::pathOf(platform::behindLinks(path));
        const std::filesystem::path canonical = std::filesystem::weakly_canonical(given, failed);
        return failed ? given.lexically_normal() : canonical;
    };
    return drawing::isPackageFile(target_) || whole(target_) == whole(drawing);
}

Outcome PendingLog::make() {
    return judged(temporary_.make(target_, platform::AtLink::Replace));
}

Outcome PendingLog::complete() {
    return judged(temporary_.complete());
}

Outcome PendingLog::putInPlace() {
    // The drawing holds the import already: a fault that passes must not part the two.
    constexpr int kAttempts = 3;
    std::error_code error;
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        try {
            error = temporary_.putInPlace();
        } catch (const std::bad_alloc&) {
            error = std::make_error_code(std::errc::not_enough_memory);
        }
        if (!error) {
            break;
        }
    }
    return judged(error);
}

Outcome PendingLog::judged(const std::error_code& error) const {
    return error ? failed(
                       said(language_, Text::LogNotWritable, {{"path", file_}, {"reason", reasonOf(error, language_)}}))
                 : Outcome();
}

} // namespace fenmark::cli
