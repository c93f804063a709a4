// A row of a table of texts: a code and its text in both languages, with figures in braces.
#pragma once

#include "cli/texts.h"
#include "values/code_table.h"
#include "values/filled_text.h"

#include <algorithm>
#include <array>

namespace fenmark::cli {

template <typename Code>
struct Wording {
    Code code;
    std::string_view japanese;
    std::string_view english;
};

// Whether every figure of the one text stands in the other.
constexpr bool hasFiguresOf(std::string_view text, std::string_view other) {
    for (std::size_t open = other.find('{'); open != std::string_view::npos; open = other.find('{', open + 1)) {
        const std::size_t close = other.find('}', open);
        if (close == std::string_view::npos ||
            text.find(other.substr(open, close - open + 1)) == std::string_view::npos) {
            return false;
        }
    }
    return true;
}

template <typename Code, std::size_t Count>
constexpr bool inOrder(const std::array<Wording<Code>, Count>& wordings) {
    return inCodeOrder(wordings, &Wording<Code>::code) && inBothLanguages(wordings) &&
           std::all_of(wordings.begin(), wordings.end(), [](const Wording<Code>& row) {
               return hasFiguresOf(row.japanese, row.english) && hasFiguresOf(row.english, row.japanese);
           });
}

template <typename Code>
std::string filled(const Wording<Code>& row, Language language, std::initializer_list<Figure> figures) {
    return filledText(language == Language::Japanese ? row.japanese : row.english, [&](std::string_view name) {
        const auto* const found =
            std::find_if(figures.begin(), figures.end(), [name](const Figure& figure) { return figure.name == name; });
        return found == figures.end() ? std::string() : found->value;
    });
}

} // namespace fenmark::cli
