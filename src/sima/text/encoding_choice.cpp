// Which encoding a file was written in, as far as its bytes show it.
#include "sima/text/encoding_choice.h"

#include "sima/text/path.h"
#include "sima/text/utf8.h"

#include <fstream>
#include <ios>
#include <vector>

namespace fenmark::sima {

namespace {

constexpr std::size_t kHead = 16;                     // bytes: enough for a mark, and for UTF-16 without one
constexpr std::size_t kBlock = std::size_t{64} << 10; // bytes that are looked at together
constexpr std::size_t kFewest = 2;                    // three-byte characters or pairs: one may be chance

bool isAsciiText(char c) {
    return c == '\r' || c == '\n' || c == '\t' || (c >= 0x20 && c < 0x7F);
}

// Every other byte from `first` on is ASCII text, and those between are NUL.
bool alternates(std::string_view head, std::size_t first) {
    for (std::size_t i = 0; i < head.size(); ++i) {
        const bool isText = i % 2 == first;
        if (isText ? !isAsciiText(head[i]) : head[i] != '\0') {
            return false;
        }
    }
    return head.size() >= 8;
}

} // namespace

void EncodingGuess::lookAtHead() {
    headSeen_ = true;
    decided_ = true;
    const std::string_view head = head_;
    if (head.starts_with("\xEF\xBB\xBF")) {
        choice_ = {TextKind::Utf8Mark, Encoding::Utf8};
    } else if (head.starts_with("\xFF\xFE") || alternates(head, 0)) {
        choice_ = {TextKind::Utf16, Encoding::Utf16Le};
    } else if (head.starts_with("\xFE\xFF") || alternates(head, 1)) {
        choice_ = {TextKind::Utf16, Encoding::Utf16Be};
    } else {
        decided_ = false;
    }
}

void EncodingGuess::lookAtUtf8(unsigned char byte) {
    if (continuations_ > 0) {
        if (byte < lowest_ || byte > highest_) {
            utf8_ = false;
            return;
        }
        lowest_ = 0x80;
        highest_ = 0xBF;
        if (--continuations_ == 0 && ofThreeBytes_) {
            ++threeByteCharacters_;
        }
        return;
    }
    if (byte < 0x80) {
        return;
    }
    // No overlong forms, no surrogates, nothing beyond U+10FFFF.
    ofThreeBytes_ = byte >= 0xE0 && byte <= 0xEF;
    if (byte >= 0xC2 && byte <= 0xDF) {
        continuations_ = 1;
    } else if (ofThreeBytes_) {
        continuations_ = 2;
        lowest_ = byte == 0xE0 ? 0xA0 : 0x80;
        highest_ = byte == 0xED ? 0x9F : 0xBF;
    } else if (byte >= 0xF0 && byte <= 0xF4) {
        continuations_ = 3;
        lowest_ = byte == 0xF0 ? 0x90 : 0x80;
        highest_ = byte == 0xF4 ? 0x8F : 0xBF;
    } else {
        utf8_ = false;
    }
}

void EncodingGuess::lookAtEuc(unsigned char byte) {
    constexpr unsigned char kHalfWidthFollows = 0x8E;
    constexpr unsigned char kTwoBytesFollow = 0x8F;
    beyondHalfWidth_ = beyondHalfWidth_ || byte >= 0xE0;
    if (eucBytes_ > 0) {
        if (byte < 0xA1 || byte == 0xFF) {
            euc_ = false;
        }
        --eucBytes_;
        return;
    }
    if (byte < 0x80) {
        return;
    }
    if (byte == kTwoBytesFollow) {
        eucBytes_ = 2;
    } else if (byte == kHalfWidthFollows || (byte >= 0xA1 && byte != 0xFF)) {
        eucBytes_ = 1;
    } else {
        euc_ = false;
    }
    ++eucPairs_;
    eucKana_ += byte == 0xA4 || byte == 0xA5 ? 1U : 0U;
}

// A choice by the head comes first, so that nothing else is settled before the head is whole.
bool EncodingGuess::needsMore() const {
    return !decided_ && (!headSeen_ || utf8_ || euc_);
}

bool EncodingGuess::look(std::string_view bytes) {
    if (!headSeen_) {
        head_ += bytes.substr(0, kHead - head_.size());
        if (head_.size() == kHead) {
            lookAtHead();
        }
    }
    const bool between = continuations_ == 0 && eucBytes_ == 0 && escape_ == 0;
    if (between && isAscii(bytes) && bytes.find('\x1B') == std::string_view::npos) {
        return needsMore(); // nearly every piece of a file of numbers
    }
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte >= 0x80) {
            anyBeyondAscii_ = true;
        } else if (continuations_ == 0 && eucBytes_ == 0 && escape_ == 0 && byte != 0x1B) {
            continue;
        }
        if (utf8_) {
            lookAtUtf8(byte);
        }
        if (euc_) {
            lookAtEuc(byte);
        }
        // Escape, "$", then "@" or "B": double bytes follow, each below 0x80.
        iso2022_ = iso2022_ || (escape_ == 2 && (c == '@' || c == 'B'));
        escape_ = c == 0x1B ? 1 : escape_ == 1 && c == '$' ? 2 : 0;
    }
    return needsMore();
}

EncodingChoice EncodingGuess::choice() const {
    EncodingGuess whole = *this;
    if (!whole.headSeen_) {
        whole.lookAtHead(); // a text shorter than a head
    }
    if (whole.decided_) {
        return whole.choice_;
    }
    if (utf8_ && continuations_ == 0 && threeByteCharacters_ >= kFewest) {
        return {TextKind::Utf8, Encoding::Utf8};
    }
    if (!anyBeyondAscii_ && iso2022_) {
        return {TextKind::Iso2022Jp, Encoding::Cp932};
    }
    // Pairs that may be half-width katakana of code page 932 as well are taken for that.
    if (euc_ && eucBytes_ == 0 && eucPairs_ >= kFewest && (beyondHalfWidth_ || eucKana_ >= kFewest)) {
        return {TextKind::EucJp, Encoding::Cp932};
    }
    return {};
}

EncodingChoice chooseEncoding(std::string_view path) {
    EncodingGuess guess;
    if (isPipeOrDevice(pathOf(path))) {
        return {};
    }
    try {
        std::ifstream file(pathOf(path), std::ios::binary);
        std::vector<char> block(kBlock);
        for (bool more = file.is_open(); more;) {
            const std::streamsize got = file.rdbuf()->sgetn(block.data(), static_cast<std::streamsize>(block.size()));
            more = got > 0 && guess.look({block.data(), static_cast<std::size_t>(got)});
        }
    } catch (const std::ios_base::failure&) {
        return {};
    }
    return guess.choice();
}

} // namespace fenmark::sima
