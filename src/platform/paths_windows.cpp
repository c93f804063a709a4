// Paths on Windows: UTF-16, with backslashes.
#include "platform/paths.h"

#include "platform/wide_windows.h"

#include <algorithm>

namespace fenmark::platform {

namespace {

constexpr std::size_t kLongPath = 240; // characters; 260 with room for what is put behind a name
constexpr std::wstring_view kVerbatim = L"\\\\?\\";
constexpr std::wstring_view kVerbatimShare = L"\\\\?\\UNC\\";

} // namespace

std::wstring widePath(std::string_view utf8) {
    std::wstring path = wide(utf8);
    if (path.size() < kLongPath || path.starts_with(kVerbatim)) {
        return path;
    }
    const DWORD room = ::GetFullPathNameW(path.c_str(), 0, nullptr, nullptr);
    std::wstring whole(room, L'\0');
    const DWORD length = ::GetFullPathNameW(path.c_str(), room, whole.data(), nullptr);
    if (room == 0 || length == 0 || length >= room) {
        return path; // opening it gives the reason
    }
    whole.resize(length);
    return whole.starts_with(L"\\\\") ? std::wstring(kVerbatimShare) + whole.substr(2)
                                      : std::wstring(kVerbatim) + whole;
}

std::filesystem::path pathOf(std::string_view utf8) {
    return std::filesystem::path(widePath(utf8));
}

std::string utf8Of(const std::filesystem::path& path) {
    const std::wstring_view text = path.native();
    if (text.starts_with(kVerbatimShare)) {
        return "\\\\" + narrow(text.substr(kVerbatimShare.size()));
    }
    return narrow(text.starts_with(kVerbatim) ? text.substr(kVerbatim.size()) : text);
}

std::string pathForLibraries(const std::string& path) {
    return narrow(widePath(path));
}

std::string typedPath(std::string path) {
    std::replace(path.begin(), path.end(), '/', '\\');
    return path;
}

} // namespace fenmark::platform
