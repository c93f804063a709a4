// A row of a table of the desk's texts, and the proof that a table has one for each text, in order.
#pragma once

#include <array>
#include <cstddef>

namespace fenmark::desk {

// The English text, and the name that sets it apart from others of the same wording.
struct TextSource {
    const char* english;
    const char* name;
};

template <typename Name>
struct TextEntry {
    Name text;
    TextSource source;
};

// True if the table has every text up to the last one, each in its place.
template <typename Name, std::size_t N>
constexpr bool inOrder(const std::array<TextEntry<Name>, N>& table, Name last) {
    for (std::size_t i = 0; i < N; ++i) {
        if (static_cast<std::size_t>(table[i].text) != i) {
            return false;
        }
    }
    return N == static_cast<std::size_t>(last) + 1;
}

} // namespace fenmark::desk
