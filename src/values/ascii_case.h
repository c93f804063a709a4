// Names that are compared in any case: their ASCII letters made small, whatever the locale. Other characters stay.
#pragma once

#include <string>
#include <string_view>

namespace fenmark {

constexpr char asciiLower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

inline std::string asciiLower(std::string_view text) {
    std::string lower(text);
    for (char& c : lower) {
        c = asciiLower(c);
    }
    return lower;
}

} // namespace fenmark
