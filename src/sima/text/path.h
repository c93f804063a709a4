// Paths as the reader, the log and the rows take them.
#pragma once

#include "platform/paths.h"

#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>

namespace fenmark::sima {

using platform::pathOf;

// A pipe would be waited for, and a device may never end.
inline bool isPipeOrDevice(const std::filesystem::path& file) {
    std::error_code error;
    return std::filesystem::is_other(file, error);
}

// The path as a text for people and rows: each part between slashes as it is if it is UTF-8, and otherwise read in code
// page 932, in which archives from Japanese Windows leave names on other systems. The file itself opens by pathOf alone.
std::string textOfPath(std::string_view path);

// The place behind the last separator of a path, 0 if it has none. The backslash separates, and outside Windows the
// slash too.
constexpr std::size_t fileNameStart(std::string_view path) {
    const std::size_t last = path.find_last_of(platform::kPathSeparators);
    return last == std::string_view::npos ? 0 : last + 1;
}

} // namespace fenmark::sima
