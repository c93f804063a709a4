// Small tools on UTF-8 text.
#include "sima/text/utf8.h"

#include <cstring>

namespace fenmark::sima {

bool isAscii(std::string_view text) {
    constexpr std::uint64_t kHighBits = 0x8080808080808080U;
    const char* p = text.data();
    std::size_t left = text.size();
    for (; left >= 8; left -= 8, p += 8) {
        std::uint64_t word = 0;
        std::memcpy(&word, p, 8);
        if ((word & kHighBits) != 0) {
            return false;
        }
    }
    for (; left > 0; --left, ++p) {
        if ((static_cast<unsigned char>(*p) & 0x80U) != 0) {
            return false;
        }
    }
    return true;
}

void appendUtf8(std::string& out, char32_t character) {
    const auto c = static_cast<std::uint32_t>(character);
    const auto tail = [c](int shift) { return static_cast<char>(0x80U | ((c >> shift) & 0x3FU)); };
    if (c < 0x80) {
        out += static_cast<char>(c);
    } else if (c < 0x800) {
        out += static_cast<char>(0xC0U | (c >> 6));
        out += tail(0);
    } else if (c < 0x10000) {
        out += static_cast<char>(0xE0U | (c >> 12));
        out += tail(6);
        out += tail(0);
    } else {
        out += static_cast<char>(0xF0U | (c >> 18));
        out += tail(12);
        out += tail(6);
        out += tail(0);
    }
}

std::size_t characterLength(std::string_view text, std::size_t at) {
    const auto lead = static_cast<unsigned char>(text[at]);
    std::size_t length = 1;
    if (lead >= 0xF0) {
        length = 4;
    } else if (lead >= 0xE0) {
        length = 3;
    } else if (lead >= 0xC0) {
        length = 2;
    }
    return length <= text.size() - at ? length : text.size() - at;
}

char32_t takeCharacter(std::string_view& text) {
    const auto byte = [&text](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned lead = byte(0);
    std::size_t length = 0;
    unsigned low = 0x80; // limits of the second byte: they shut out overlong forms, surrogates and values beyond 10FFFF
    unsigned high = 0xBF;
    char32_t value = 0;
    if (lead < 0x80) {
        text.remove_prefix(1);
        return lead;
    }
    if (lead >= 0xC2 && lead <= 0xDF) {
        length = 2;
        value = lead & 0x1FU;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
        length = 3;
        value = lead & 0x0FU;
        low = lead == 0xE0 ? 0xA0 : 0x80;
        high = lead == 0xED ? 0x9F : 0xBF;
    } else if (lead >= 0xF0 && lead <= 0xF4) {
        length = 4;
        value = lead & 0x07U;
        low = lead == 0xF0 ? 0x90 : 0x80;
        high = lead == 0xF4 ? 0x8F : 0xBF;
    }
    std::size_t used = 1;
    while (used < length && used < text.size() && byte(used) >= low && byte(used) <= high) {
        value = (value << 6) | (byte(used) & 0x3FU);
        low = 0x80;
        high = 0xBF;
        ++used;
    }
    text.remove_prefix(used);
    return used == length ? value : U'\uFFFD';
}

bool isValidUtf8(std::string_view text) {
    if (isAscii(text)) {
        return true;
    }
    while (!text.empty()) {
        const std::string_view before = text;
        if (takeCharacter(text) == U'\uFFFD' && !before.starts_with(kReplacementCharacter)) {
            return false;
        }
    }
    return true;
}

void appendValidUtf8(std::string& out, std::string_view text) {
    while (!text.empty()) {
        const std::string_view before = text;
        const char32_t character = takeCharacter(text);
        const std::string_view taken = before.substr(0, before.size() - text.size());
        if (character == U'\uFFFD') {
            out += kReplacementCharacter;
        } else {
            out += taken;
        }
    }
}

std::size_t appendUtf16(std::string& out, std::string_view bytes, bool highByteFirst, bool isLast) {
    const auto unit = [&](std::size_t at) {
        const auto first = static_cast<unsigned char>(bytes[at]);
        const auto second = static_cast<unsigned char>(bytes[at + 1]);
        return static_cast<char32_t>(highByteFirst ? first << 8U | second : second << 8U | first);
    };
    const auto isHigh = [](char32_t c) { return c >= 0xD800 && c <= 0xDBFF; };
    const auto isLow = [](char32_t c) { return c >= 0xDC00 && c <= 0xDFFF; };
    std::size_t at = 0;
    while (at + 2 <= bytes.size()) {
        const char32_t first = unit(at);
        if (isHigh(first) && at + 4 > bytes.size() && !isLast) {
            return at;
        }
        if (isHigh(first) && at + 4 <= bytes.size() && isLow(unit(at + 2))) {
            appendUtf8(out, 0x10000 + ((first - 0xD800) << 10U) + (unit(at + 2) - 0xDC00));
            at += 4;
            continue;
        }
        if (isHigh(first) || isLow(first)) {
            out += kReplacementCharacter;
        } else {
            appendUtf8(out, first);
        }
        at += 2;
    }
    if (isLast && at < bytes.size()) {
        out += kReplacementCharacter;
        at = bytes.size();
    }
    return at;
}

std::string_view withoutLastCharacters(std::string_view text, int count) {
    for (; count > 0 && !text.empty(); --count) {
        std::size_t at = text.size() - 1;
        while (at > 0 && (static_cast<unsigned char>(text[at]) & 0xC0U) == 0x80U) {
            --at;
        }
        text = text.substr(0, at);
    }
    return text;
}

std::string replaceIdeographicSpaces(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    std::size_t at = 0;
    for (std::size_t found = text.find(kIdeographicSpace); found != std::string_view::npos;
         found = text.find(kIdeographicSpace, at)) {
        result += text.substr(at, found - at);
        result += ' ';
        at = found + kIdeographicSpace.size();
    }
    result += text.substr(at);
    return result;
}

} // namespace fenmark::sima
