// A text with figures in it, so that each language puts them where it needs them.
#pragma once

#include <string>
#include <string_view>

namespace fenmark {

// One of two words, "point|points", as it goes with a number.
inline std::string_view wordFor(std::string_view number, std::string_view words) {
    const std::size_t bar = words.find('|');
    return number == "1" || bar == std::string_view::npos ? words.substr(0, bar) : words.substr(bar + 1);
}

// The text with figure("count") in place of "{count}", and the word that goes with it in place of
// "{count:point|points}".
template <typename Figure>
std::string filledText(std::string_view text, const Figure& figure) {
    std::string line;
    while (true) {
        const std::size_t open = text.find('{');
        line += text.substr(0, open);
        const std::size_t close = text.find('}', open);
        if (open == std::string_view::npos || close == std::string_view::npos) {
            return line;
        }
        const std::string_view wanted = text.substr(open + 1, close - open - 1);
        const std::size_t colon = wanted.find(':');
        const std::string found = figure(wanted.substr(0, colon));
        line += colon == std::string_view::npos ? found : wordFor(found, wanted.substr(colon + 1));
        text.remove_prefix(close + 1);
    }
}

} // namespace fenmark
