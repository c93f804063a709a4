// Code page 932, the encoding of SIMA files and of the log.
#pragma once

#include <string>
#include <string_view>

namespace fenmark::sima {

// Appends the text as UTF-8. A byte pair that the code page does not define becomes U+FFFD and consumes only its first
// byte; so do the single bytes 80, A0 and FD to FF and a lead byte at the end. F040 to F9FC are the private use area.
// 0x1A and NUL are ordinary characters.
void decodeCp932(std::string& out, std::string_view bytes);

// Appends the UTF-8 text as code page 932, "?" for each character that it cannot hold. Where the code page has several
// codes for a character, the one that Windows writes is taken.
void encodeCp932(std::string& out, std::string_view text);

// The same with CR LF for every line feed, as a text file has them.
void encodeCp932Lines(std::string& out, std::string_view text);

} // namespace fenmark::sima
