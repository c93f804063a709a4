// A text with figures in it, so that each language puts them where it needs them.
#pragma once

#include <string>
#include <string_view>

namespace fenmark {

// The text with figure("count") in place of "{count}".
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
        line += figure(text.substr(open + 1, close - open - 1));
        text.remove_prefix(close + 1);
    }
}

} // namespace fenmark
