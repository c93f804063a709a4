// Paths on POSIX systems: bytes as they are.
#include "platform/paths.h"

namespace fenmark::platform {

std::filesystem::path pathOf(std::string_view utf8) {
    return std::filesystem::path(utf8);
}

std::string utf8Of(const std::filesystem::path& path) {
    return path.string();
}

std::string pathForLibraries(const std::string& path) {
    return path;
}

std::string typedPath(std::string path) {
    return path;
}

} // namespace fenmark::platform
