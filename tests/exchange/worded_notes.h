// The notes of a writer in words, for comparing.
#pragma once

#include "exchange/notes.h"
#include "exchange/obstacles.h"

#include <string>
#include <vector>

namespace fenmark::exchange {

inline std::string english(const Note& note) {
    return wording(note, Language::English);
}

inline std::string japanese(const Note& note) {
    return wording(note, Language::Japanese);
}

// Why there is no plot and no list of stakes; empty where there is one.
template <typename Made>
std::string whyNot(const Made& made) {
    return made.failure ? wording(*made.failure, Language::English) : std::string();
}

inline std::vector<std::string> english(const Notes& notes) {
    std::vector<std::string> lines;
    for (const Note& note : notes) {
        lines.push_back(english(note));
    }
    return lines;
}

} // namespace fenmark::exchange
