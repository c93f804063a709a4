// The files of imports.
#include "drawing/imported_file.h"

#include "platform/clock.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "sima/text/path.h"

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <system_error>

namespace fenmark::drawing {

namespace {

// From the root on, as a text.
std::string wholePath(const std::string& file) {
    std::error_code error;
    const std::filesystem::path whole = std::filesystem::absolute(sima::pathOf(file), error);
    return sima::textOfPath(error ? file : platform::utf8Of(whole));
}

} // namespace

std::string nameInRows(const std::string& file) {
    const std::string text = sima::textOfPath(file);
    return text.substr(sima::fileNameStart(text));
}

Import importOf(const std::string& file, const std::optional<FileDigest>& known) {
    Import import;
    import.fileName = nameInRows(file);
    import.path = wholePath(file);
    if (known) {
        import.fileSize = known->size;
        import.digest = known->digest;
    }
    import.time = platform::utcNow();
    return import;
}

bool isImportedFile(const Drawing& drawing, const std::string& path) {
    if (platform::lookUp(path).kind != platform::PathKind::File) {
        return false; // reading a pipe would wait
    }
    for (const Import& import : drawing.imports()) {
        if (!platform::leadToOneFile(import.path, path)) {
            continue;
        }
        const std::optional<FileDigest> known = digestFile(path);
        if (known && known->digest == import.digest) {
            return true;
        }
    }
    return false;
}

std::string logOf(const std::string& file) {
    constexpr std::size_t kExtension = 4; // ".sim"
    return file.size() < kExtension ? std::string() : file.substr(0, file.size() - kExtension) + "_Input.log";
}

bool isImportLog(const Drawing& drawing, const std::string& path) {
    return std::any_of(drawing.imports().begin(), drawing.imports().end(),
                       [&](const Import& import) { return platform::leadToOneFile(logOf(import.path), path); });
}

} // namespace fenmark::drawing
