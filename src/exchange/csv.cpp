// The points of a drawing with their rows as comma-separated text.
#include "exchange/csv.h"

#include "exchange/placed.h"
#include "values/real_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iterator>
#include <limits>
#include <string_view>
#include <system_error>

namespace fenmark::exchange {

namespace {

// Quoted where the text holds a separator, a quote, a line end or blanks at its ends. A text that a spreadsheet would
// take for a formula has an apostrophe in front: a name out of a file must not run.
struct Field {
    std::string_view text;
};

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

std::ostream& operator<<(std::ostream& out, Field field) {
    const bool isFormula = looksLikeFormula(field.text);
    const bool blankEnds = !field.text.empty() && (field.text.front() == ' ' || field.text.back() == ' ');
    if (!isFormula && !blankEnds && field.text.find_first_of(",\"\r\n") == std::string_view::npos) {
        return out << field.text;
    }
    out << '"' << (isFormula ? "'" : "");
    for (const char c : field.text) {
        if (c == '"') {
            out << '"';
        }
        out << c;
    }
    return out << '"';
}

// Empty if it is no number.
struct Number {
    double value;
};

std::ostream& operator<<(std::ostream& out, Number number) {
    return std::isfinite(number.value) ? out << PlainReal{number.value} : out;
}

} // namespace

Notes writeCsv(const drawing::Drawing& drawing, std::ostream& out) {
    return writeSelectedCsv(drawing, {}, out);
}

Notes writeSelectedCsv(const drawing::Drawing& drawing, const Selection& selection, std::ostream& out) {
    std::size_t polylines = 0;
    Unplaced unplaced;
    out << "\xEF\xBB\xBFid,layer,x_east,y_north,z,table,no,name,type,file\r\n";
    for (std::size_t i = 0; i < drawing.entityCount(); ++i) {
        const drawing::EntityView entity = drawing.entity(i);
        if (!selection.takes(entity)) {
            continue;
        }
        if (!entity.isPoint()) {
            ++polylines;
            continue;
        }
        unplaced.look(entity);
        const host::MdGePoint3d& at = entity.position();
        out << entity.id.asUint64() << ',' << Field{entity.layer} << ',' << Number{at.x} << ',' << Number{at.y} << ','
            << Number{knownHeight(entity).value_or(std::numeric_limits<double>::quiet_NaN())} << ',';
        if (entity.row) {
            out << Field{entity.row->table} << ',' << entity.row->no << ',' << Field{entity.row->name} << ','
                << Field{entity.row->type} << ',' << Field{entity.row->fileName};
        } else {
            out << ",,,,";
        }
        out << "\r\n";
    }
    Notes notes = unplaced.notes("numbers that are none left empty");
    if (polylines > 0 || drawing.alignmentCount() > 0) {
        notes.push_back("a CSV file holds points alone; left out: " + std::to_string(polylines) + " polylines, " +
                        std::to_string(drawing.alignmentCount()) + " alignments");
    }
    return notes;
}

} // namespace fenmark::exchange
