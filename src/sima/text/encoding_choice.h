// Which encoding a file was written in, as far as its bytes show it. Programs choose with this; the reader reads
// in the encoding that it is given.
#pragma once

#include "sima/text/encoding.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace fenmark::sima {

// What the bytes are taken for.
enum class TextKind : std::uint8_t {
    Cp932,     // plain ASCII too
    Utf8Mark,  // a byte order mark stands in front
    Utf8,      // all characters beyond ASCII are valid UTF-8, and two or more of them have three bytes
    Utf16,     // a byte order mark, or every other byte of the head is NUL
    EucJp,     // not read
    Iso2022Jp, // not read
};

struct EncodingChoice {
    TextKind kind = TextKind::Cp932;
    Encoding encoding = Encoding::Cp932; // to read the file in; code page 932 for what is not read
};

// Looks at a text piece by piece.
class EncodingGuess {
  public:
    // False once no further piece can change the choice.
    bool look(std::string_view bytes);
    EncodingChoice choice() const;

  private:
    bool needsMore() const;
    void lookAtHead();
    void lookAtUtf8(unsigned char byte);
    void lookAtEuc(unsigned char byte);

    std::string head_; // the first bytes, until they were looked at
    bool headSeen_ = false;
    bool decided_ = false;
    EncodingChoice choice_;
    bool anyBeyondAscii_ = false;

    // UTF-8: continuation bytes still to come, and the range of the next one.
    bool utf8_ = true;
    int continuations_ = 0;
    bool ofThreeBytes_ = false;
    unsigned char lowest_ = 0x80;
    unsigned char highest_ = 0xBF;
    std::size_t threeByteCharacters_ = 0;

    // EUC-JP: bytes of the character still to come.
    bool euc_ = true;
    int eucBytes_ = 0;
    std::size_t eucPairs_ = 0;
    std::size_t eucKana_ = 0;      // pairs of hiragana and full-width katakana
    bool beyondHalfWidth_ = false; // a byte that no half-width katakana of code page 932 has

    // ISO-2022-JP: how much of an escape sequence to double bytes has been seen.
    int escape_ = 0;
    bool iso2022_ = false;
};

// Reads as much of the file as it takes. A file that cannot be read is taken for code page 932: reading it shows why.
EncodingChoice chooseEncoding(std::string_view path);

} // namespace fenmark::sima
