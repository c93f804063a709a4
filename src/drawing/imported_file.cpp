// Whether a file is one from which a drawing was imported, or the log of that.
#include "drawing/imported_file.h"

#include "drawing/file_digest.h"
#include "platform/files.h"

#include <algorithm>
#include <cstddef>
#include <optional>

namespace fenmark::drawing {

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
