// One field of comma-separated text.
#include "exchange/csv_field.h"

namespace fenmark::exchange {

namespace {

// Numbers may begin with a sign; anything else behind one, and all behind "=" and "@", is a formula to a spreadsheet.
bool looksLikeFormula(std::string_view text) {
    if (text.empty()) {
        return false;
    }
    if (text.front() == '=' || text.front() == '@' || text.front() == '\t' || text.front() == '\r') {
        return true;
    }
    return (text.front() == '+' || text.front() == '-') &&
           text.substr(1).find_first_not_of("0123456789.") != std::string_view::npos;
}

} // namespace

std::ostream& operator<<(std::ostream& out, CsvField field) {
    const bool formula = looksLikeFormula(field.text);
    const bool blankEnds = !field.text.empty() && (field.text.front() == ' ' || field.text.back() == ' ');
    if (!formula && !blankEnds && field.text.find_first_of(",\"\r\n") == std::string_view::npos) {
        return out << field.text;
    }
    out << '"' << (formula ? "'" : "");
    for (const char c : field.text) {
        if (c == '"') {
            out << '"';
        }
        out << c;
    }
    return out << '"';
}

} // namespace fenmark::exchange
