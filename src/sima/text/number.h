// Text to numbers and back by fixed rules that no process locale touches, and the trims of the format.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace fenmark::sima {

// White space: the ASCII blanks 0x09 to 0x0D and 0x20. The ideographic space U+3000 is none.
constexpr bool isBlank(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

constexpr bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

// The text without the blanks at its ends.
constexpr std::string_view trim(std::string_view text) {
    while (!text.empty() && isBlank(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && isBlank(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

// Converts a text of an optional "-" and at most 15 digits with at most one point, or an empty text, exactly as toReal
// does; blanks may stand around it. False for every other text, with nothing said about it. Whatever this takes passes
// the validators' number test: it is the short way for nearly all fields of a file.
bool toPlainReal(std::string_view text, double& value);

// Converts a text of one to nine digits, blanks around it allowed, exactly as toInteger does. False for every other text.
// Whatever this takes passes the validators' digits test.
constexpr bool toPlainInteger(std::string_view text, std::int32_t& value) {
    constexpr std::size_t kSafeDigits = 9; // of which none can pass 32 bits
    text = trim(text);
    if (text.empty() || text.size() > kSafeDigits) {
        return false;
    }
    std::int32_t sum = 0;
    for (const char c : text) {
        if (!isDigit(c)) {
            return false;
        }
        sum = sum * 10 + (c - '0');
    }
    value = sum;
    return true;
}

// As the C conversion in the C locale, decimal digits only: leading blanks skipped, optional sign, ends at the first
// character that does not fit, 0.0 if nothing fits. No hexadecimal, no infinity or NaN.
double toReal(std::string_view text);

// The same for integers; a value beyond 32 bits becomes the nearest 32-bit value.
constexpr std::int32_t toInteger(std::string_view text) {
    constexpr std::int64_t kLimit = std::int64_t{1} << 31;
    while (!text.empty() && isBlank(text.front())) {
        text.remove_prefix(1);
    }
    bool negative = false;
    if (!text.empty() && (text.front() == '-' || text.front() == '+')) {
        negative = text.front() == '-';
        text.remove_prefix(1);
    }
    std::int64_t value = 0;
    for (const char c : text) {
        if (!isDigit(c)) {
            break;
        }
        value = value * 10 + (c - '0');
        if (value > kLimit) {
            value = kLimit;
        }
    }
    if (negative) {
        return static_cast<std::int32_t>(-value);
    }
    return static_cast<std::int32_t>(value == kLimit ? kLimit - 1 : value);
}

// As printf's "%0.12f" in the C locale; infinities and not-a-number come out as "inf", "-inf", "nan", "-nan".
std::string formatReal(double value);

} // namespace fenmark::sima
