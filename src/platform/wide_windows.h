// UTF-8 and the UTF-16 of Windows, and errors of Windows as those of the standard library.
#pragma once

#include <string>
#include <string_view>
#include <system_error>

#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include <windows.h>

namespace fenmark::platform {

// What is no UTF-8, or half of a pair, becomes U+FFFD.
[[nodiscard]] std::wstring wide(std::string_view utf8);
[[nodiscard]] std::string narrow(std::wstring_view text);

// The path in a form that opens also where it is longer than 260 characters.
[[nodiscard]] std::wstring widePath(std::string_view utf8);

// The error of the standard library that a number of GetLastError comes nearest to.
[[nodiscard]] std::error_code meaningOf(DWORD number);

} // namespace fenmark::platform
