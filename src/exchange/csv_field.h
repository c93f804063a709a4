// One field of comma-separated text.
#pragma once

#include <ostream>
#include <string_view>

namespace fenmark::exchange {

// Quoted where the text holds a separator, a quote, a line end or blanks at its ends. A text that a spreadsheet would
// take for a formula has an apostrophe in front, so that a name from a file runs nothing; numbers are none. Control
// characters other than tabulator and line ends, which reach terminals as they are, become U+FFFD.
struct CsvField {
    std::string_view text;
};
std::ostream& operator<<(std::ostream& out, CsvField field);

} // namespace fenmark::exchange
