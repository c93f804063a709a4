// Small tools on UTF-8 text.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace fenmark::sima {

inline constexpr std::string_view kReplacementCharacter = "\xEF\xBF\xBD"; // U+FFFD
inline constexpr std::string_view kIdeographicSpace = "\xE3\x80\x80";     // U+3000

// Whether all bytes are below 0x80.
bool isAscii(std::string_view text);

void appendUtf8(std::string& out, char32_t character);

// The length in bytes of the character that starts at the given place of valid UTF-8; at least 1.
std::size_t characterLength(std::string_view text, std::size_t at);

// Takes one character off the front of a text that is not empty and returns it; U+FFFD, and one byte or the maximal
// part of a sequence that could have become a character, for invalid UTF-8.
char32_t takeCharacter(std::string_view& text);

bool isValidUtf8(std::string_view text);

// Appends the text with every invalid part replaced by U+FFFD.
void appendValidUtf8(std::string& out, std::string_view text);

// Appends UTF-16 as UTF-8 and returns how many bytes it took: a character that is cut at the end is left, unless nothing
// comes behind it. A lone surrogate or a lone byte becomes U+FFFD.
std::size_t appendUtf16(std::string& out, std::string_view bytes, bool highByteFirst, bool isLast);

// The text less its last `count` characters.
std::string_view withoutLastCharacters(std::string_view text, int count);

// The text with each ideographic space U+3000 replaced by a blank.
std::string replaceIdeographicSpaces(std::string_view text);

} // namespace fenmark::sima
