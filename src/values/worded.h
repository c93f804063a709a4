// A line for the user in both languages, for what words a failure far below the program that knows its user.
#pragma once

#include "values/language.h"

#include <string>
#include <utility>

namespace fenmark {

struct Worded {
    Worded() = default;
    // The words of the system or of a library, a name: the same in both.
    Worded(const char* same) : english(same), japanese(same) {}
    Worded(std::string same) : english(std::move(same)), japanese(english) {}
    Worded(std::string englishText, std::string japaneseText)
        : english(std::move(englishText)), japanese(std::move(japaneseText)) {}

    [[nodiscard]] const std::string& in(Language language) const {
        return language == Language::Japanese ? japanese : english;
    }
    [[nodiscard]] bool empty() const { return english.empty(); }

    std::string english;
    std::string japanese;
};

} // namespace fenmark
