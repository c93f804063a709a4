// One field of comma-separated text.
#include "exchange/csv_field.h"

#include "values/real_text.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <system_error>

namespace fenmark::exchange {

namespace {

bool isNumber(std::string_view text) {
    if (text.starts_with('+')) {
        text.remove_prefix(1);
    }
    double value = 0.0;
    const auto [end, error] = readReal(text.data(), text.data() + text.size(), value);
    return error == std::errc() && end == text.data() + text.size() && std::isfinite(value);
}

// Spreadsheets take the full-width signs for the others, and look behind a tabulator and blanks.
bool looksLikeFormula(std::string_view text) {
    std::string_view rest = text.substr(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
    while (rest.starts_with("\u3000")) {
        rest.remove_prefix(std::string_view("\u3000").size());
    }
    constexpr std::string_view kStarts[] = {"=", "+", "-", "@", "\uFF1D", "\uFF0B", "\uFF0D", "\uFF20"};
    return std::any_of(std::begin(kStarts), std::end(kStarts),
                       [rest](std::string_view start) { return rest.starts_with(start); }) &&
           !isNumber(text);
}

bool isControl(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return (byte < 0x20 && c != '\t' && c != '\r' && c != '\n') || byte == 0x7F;
}

void put(std::ostream& out, char c) {
    if (isControl(c)) {
        out << "\uFFFD";
    } else {
        out << c;
    }
}

} // namespace

std::ostream& operator<<(std::ostream& out, CsvField field) {
    const bool isFormula = looksLikeFormula(field.text);
    const bool blankEnds = !field.text.empty() && (field.text.front() == ' ' || field.text.back() == ' ');
    if (!isFormula && !blankEnds && field.text.find_first_of(",\"\r\n") == std::string_view::npos) {
        if (std::none_of(field.text.begin(), field.text.end(), isControl)) {
            return out << field.text;
        }
        std::for_each(field.text.begin(), field.text.end(), [&out](char c) { put(out, c); });
        return out;
    }
    out << '"' << (isFormula ? "'" : "");
    for (const char c : field.text) {
        if (c == '"') {
            out << '"';
        }
        put(out, c);
    }
    return out << '"';
}

} // namespace fenmark::exchange
