// Checks at compile time of tables that have a row for each enumerator, at its number, so that a code finds its row.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>

namespace fenmark {

// Whether each row stands at the number of its code.
template <typename Row, std::size_t Count, typename Code>
constexpr bool inCodeOrder(const std::array<Row, Count>& rows, Code Row::*code) {
    for (std::size_t i = 0; i < Count; ++i) {
        if (static_cast<std::size_t>(rows[i].*code) != i) {
            return false;
        }
    }
    return true;
}

// Whether each row has its text in both languages.
template <typename Row, std::size_t Count>
constexpr bool inBothLanguages(const std::array<Row, Count>& rows) {
    return std::all_of(rows.begin(), rows.end(),
                       [](const Row& row) { return !row.japanese.empty() && !row.english.empty(); });
}

// Whether each row has the name that programs know it by.
template <typename Row, std::size_t Count>
constexpr bool allNamed(const std::array<Row, Count>& rows) {
    return std::all_of(rows.begin(), rows.end(), [](const Row& row) { return !row.name.empty(); });
}

} // namespace fenmark
