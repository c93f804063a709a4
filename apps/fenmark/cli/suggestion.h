// "Did you mean": the known word nearest to one that was mistyped.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace fenmark::cli {

// The word that differs by the fewest characters left out, put in, changed or exchanged with their neighbour, at most
// two and fewer than half of them; empty if there is none.
std::string nearestWord(std::string_view typed, std::span<const std::string> words);

// "; did you mean 'word'?", or nothing.
std::string suggestion(std::string_view typed, std::span<const std::string> words);

} // namespace fenmark::cli
