// UTF-8 and UTF-16, and errors of Windows.
#include "platform/wide_windows.h"

#include <cerrno>

namespace fenmark::platform {

namespace {

constexpr DWORD kDiskQuotaExceeded = 1295; // ERROR_DISK_QUOTA_EXCEEDED, which the compiler's headers lack

} // namespace

std::wstring wide(std::string_view utf8) {
    const int bytes = static_cast<int>(utf8.size());
    const int length = bytes == 0 ? 0 : ::MultiByteToWideChar(CP_UTF8, 0, utf8.data(), bytes, nullptr, 0);
    std::wstring text(static_cast<std::size_t>(length), L'\0');
    if (length > 0) {
        ::MultiByteToWideChar(CP_UTF8, 0, utf8.data(), bytes, text.data(), length);
    }
    return text;
}

std::string narrow(std::wstring_view text) {
    const int units = static_cast<int>(text.size());
    const int length =
        units == 0 ? 0 : ::WideCharToMultiByte(CP_UTF8, 0, text.data(), units, nullptr, 0, nullptr, nullptr);
    std::string utf8(static_cast<std::size_t>(length), '\0');
    if (length > 0) {
        ::WideCharToMultiByte(CP_UTF8, 0, text.data(), units, utf8.data(), length, nullptr, nullptr);
    }
    return utf8;
}

std::error_code meaningOf(DWORD number) {
    const auto meaning = [](int code) { return std::error_code(code, std::generic_category()); };
    switch (number) {
    case ERROR_SUCCESS:
        return {};
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_DRIVE:
    case ERROR_BAD_NETPATH:
    case ERROR_BAD_NET_NAME:
        return meaning(ENOENT);
    case ERROR_ACCESS_DENIED:
    case ERROR_NETWORK_ACCESS_DENIED:
        return meaning(EACCES);
    case ERROR_WRITE_PROTECT:
        return meaning(EROFS);
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
    case ERROR_USER_MAPPED_FILE:
        return meaning(EBUSY);
    case ERROR_FILE_EXISTS:
    case ERROR_ALREADY_EXISTS:
        return meaning(EEXIST);
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
    case kDiskQuotaExceeded:
        return meaning(ENOSPC);
    case ERROR_FILE_TOO_LARGE:
        return meaning(EFBIG);
    case ERROR_NOT_ENOUGH_MEMORY:
    case ERROR_OUTOFMEMORY:
        return meaning(ENOMEM);
    case ERROR_INVALID_NAME:
    case ERROR_BAD_PATHNAME:
    case ERROR_INVALID_PARAMETER:
        return meaning(EINVAL);
    case ERROR_FILENAME_EXCED_RANGE:
        return meaning(ENAMETOOLONG);
    case ERROR_DIRECTORY:
        return meaning(ENOTDIR);
    case ERROR_CANT_RESOLVE_FILENAME:
        return meaning(ELOOP);
    default:
        return meaning(EIO);
    }
}

} // namespace fenmark::platform
