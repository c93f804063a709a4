// How text stands on a terminal: the columns it takes, and where it may break.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace fenmark::cli {

// A character beyond ASCII is one of Japanese here, which takes two columns.
[[nodiscard]] std::size_t columnsOf(std::string_view text);

// The text in lines of at most so many columns, where no word is longer: broken at blanks, and between Japanese
// characters but before a closing bracket or mark and behind an opening one.
[[nodiscard]] std::vector<std::string> folded(std::string_view text, std::size_t columns);

} // namespace fenmark::cli
