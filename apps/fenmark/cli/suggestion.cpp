// "Did you mean": the known word nearest to one that was mistyped.
#include "cli/suggestion.h"

#include "cli/texts.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace fenmark::cli {

namespace {

constexpr std::size_t kMostChanges = 2;
constexpr std::size_t kLongestWord = 64; // bytes; nothing longer is a slip of the finger

// The characters of a text in UTF-8. Stray bytes are characters of their own.
using Characters = std::vector<std::string_view>;

Characters charactersOf(std::string_view text) {
    Characters characters;
    for (std::size_t at = 0; at < text.size();) {
        std::size_t end = at + 1;
        while (end < text.size() && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U) {
            ++end;
        }
        characters.push_back(text.substr(at, end - at));
        at = end;
    }
    return characters;
}

// The distance of Damerau and Levenshtein, where no character is exchanged twice.
std::size_t changesBetween(const Characters& a, const Characters& b) {
    const std::size_t columns = b.size() + 1;
    std::vector<std::size_t> table((a.size() + 1) * columns);
    const auto at = [&](std::size_t i, std::size_t j) -> std::size_t& { return table[i * columns + j]; };
    for (std::size_t i = 0; i <= a.size(); ++i) {
        for (std::size_t j = 0; j <= b.size(); ++j) {
            if (i == 0 || j == 0) {
                at(i, j) = i + j;
                continue;
            }
            const std::size_t changed = at(i - 1, j - 1) + (a[i - 1] == b[j - 1] ? 0 : 1);
            at(i, j) = std::min({at(i - 1, j) + 1, at(i, j - 1) + 1, changed});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1]) {
                at(i, j) = std::min(at(i, j), at(i - 2, j - 2) + 1);
            }
        }
    }
    return table.back();
}

} // namespace

std::string nearestWord(std::string_view typed, std::span<const std::string> words) {
    std::string nearest;
    std::size_t fewest = kMostChanges + 1;
    const Characters wanted = charactersOf(typed);
    for (const std::string& word : words) {
        if (typed.size() > kLongestWord || word.size() > kLongestWord) {
            continue;
        }
        const Characters known = charactersOf(word);
        const std::size_t changes = changesBetween(wanted, known);
        if (changes < fewest && 2 * changes < known.size()) {
            fewest = changes;
            nearest = word;
        }
    }
    return nearest;
}

std::string suggestion(std::string_view typed, std::span<const std::string> words, Language language) {
    const std::string nearest = nearestWord(typed, words);
    return nearest.empty() ? std::string() : said(language, Text::DidYouMean, {{"word", nearest}});
}

} // namespace fenmark::cli
