// Paths are UTF-8 texts throughout; this is the one place that makes the file system's own of them.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace fenmark::sima {

inline std::filesystem::path pathOf(std::string_view utf8) {
    return std::filesystem::path(std::u8string(utf8.begin(), utf8.end()));
}

// The path as a text for people and rows: each part between slashes as it is if it is UTF-8, and otherwise read in code
// page 932, in which archives from Japanese Windows leave names on other systems. The file itself opens by pathOf alone.
std::string textOfPath(std::string_view path);

// The place behind the last separator of a path, 0 if it has none. The backslash separates, and outside Windows the
// slash too.
constexpr std::size_t fileNameStart(std::string_view path) {
#ifdef _WIN32
    const std::size_t last = path.rfind('\\');
#else
    const std::size_t last = path.find_last_of("\\/");
#endif
    return last == std::string_view::npos ? 0 : last + 1;
}

} // namespace fenmark::sima
