// Paths: UTF-8 texts in this project, and what the system makes of them.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace fenmark::platform {

// The characters that end a folder's name in a path of a SIMA file or a row: the backslash, and outside Windows the
// slash too.
#ifdef _WIN32
inline constexpr std::string_view kPathSeparators = "\\";
#else
inline constexpr std::string_view kPathSeparators = "\\/";
#endif

// The path for the standard library's files. On Windows a long path gets the form that has no limit of 260 characters.
[[nodiscard]] std::filesystem::path pathOf(std::string_view utf8);
[[nodiscard]] std::string utf8Of(const std::filesystem::path& path);

// The path for a library that opens files by UTF-8 names: the same, in the form without a limit where it is long.
[[nodiscard]] std::string pathForLibraries(const std::string& path);

// A path as someone typed it, with the system's own separators: on Windows slashes become backslashes.
[[nodiscard]] std::string typedPath(std::string path);

} // namespace fenmark::platform
