// The encodings that a SIMA file is read in.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace fenmark::sima {

// UTF-16 with the low or the high byte first. A byte order mark is no part of the text in any of them.
enum class Encoding : std::uint8_t { Cp932, Utf8, Utf16Le, Utf16Be };

// The encoding of that name in any usual spelling: "cp932", "Shift_JIS", "SJIS", "UTF8", "utf-16le". Nothing for any
// other name.
std::optional<Encoding> encodingNamed(std::string_view name);

// "code page 932", "UTF-8", "UTF-16".
std::string_view encodingTitle(Encoding encoding);

} // namespace fenmark::sima
