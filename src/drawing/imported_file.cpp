// Whether a file is one from which a drawing was imported.
#include "drawing/imported_file.h"

#include "drawing/file_digest.h"
#include "platform/files.h"
#include "platform/paths.h"

#include <filesystem>
#include <optional>
#include <system_error>

namespace fenmark::drawing {

bool isImportedFile(const Drawing& drawing, const std::string& path) {
    if (platform::lookUp(path).kind != platform::PathKind::File) {
        return false; // reading a pipe would wait
    }
    for (const Import& import : drawing.imports()) {
        std::error_code error;
        if (!std::filesystem::equivalent(platform::pathOf(import.path), platform::pathOf(path), error)) {
            continue;
        }
        const std::optional<FileDigest> known = digestFile(path);
        if (known && known->digest == import.digest) {
            return true;
        }
    }
    return false;
}

} // namespace fenmark::drawing
