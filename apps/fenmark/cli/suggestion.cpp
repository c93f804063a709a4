// "Did you mean": the known word nearest to one that was mistyped.
#include "cli/suggestion.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace fenmark::cli {

namespace {

constexpr std::size_t kMostChanges = 2;
constexpr std::size_t kLongestWord = 64; // bytes; nothing longer is a slip of the finger

// The distance of Damerau and Levenshtein, where no character is exchanged twice.
std::size_t changesBetween(std::string_view a, std::string_view b) {
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
    for (const std::string& word : words) {
        if (typed.size() > kLongestWord || word.size() > kLongestWord) {
            continue;
        }
        const std::size_t changes = changesBetween(typed, word);
        if (changes < fewest && 2 * changes < word.size()) {
            fewest = changes;
            nearest = word;
        }
    }
    return nearest;
}

std::string suggestion(std::string_view typed, std::span<const std::string> words) {
    const std::string nearest = nearestWord(typed, words);
    return nearest.empty() ? std::string() : "; did you mean '" + nearest + "'?";
}

} // namespace fenmark::cli
