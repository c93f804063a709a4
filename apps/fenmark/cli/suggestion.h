// "Did you mean": the known word nearest to one that was mistyped.
#pragma once

#include "values/language.h"

#include <span>
#include <string>
#include <string_view>

namespace fenmark::cli {

// The word that differs by the fewest characters left out, put in, changed or exchanged with their neighbour, at most
// two and fewer than half of them; empty if there is none.
[[nodiscard]] std::string nearestWord(std::string_view typed, std::span<const std::string> words);

// "; did you mean 'word'?", or nothing.
[[nodiscard]] std::string suggestion(std::string_view typed, std::span<const std::string> words, Language language);

} // namespace fenmark::cli
