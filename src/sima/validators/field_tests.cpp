// Whether a field holds digits or a number, as the validators ask, and whether a number was read whole.
#include "sima/validators/field_tests.h"

#include "sima/text/number.h"
#include "sima/text/utf8.h"
#include "values/real_text.h"

#include <algorithm>
#include <string>

namespace fenmark::sima {

namespace {

// Whether the text is an optional "-", then digits with at most one ".": the form of nearly all fields, which passes
// by the full rules too.
bool isPlainNumber(std::string_view text) {
    std::size_t i = !text.empty() && text.front() == '-' ? 1 : 0;
    int points = 0;
    for (; i < text.size(); ++i) {
        if (text[i] == '.') {
            ++points;
        } else if (!isDigit(text[i])) {
            return false;
        }
    }
    return points <= 1;
}

std::string_view trimIdeographicSpaces(std::string_view text) {
    while (text.starts_with(kIdeographicSpace)) {
        text.remove_prefix(kIdeographicSpace.size());
    }
    while (text.ends_with(kIdeographicSpace)) {
        text.remove_suffix(kIdeographicSpace.size());
    }
    return text;
}

} // namespace

bool isNumber(std::string_view text) {
    text = trim(text);
    if (isPlainNumber(text)) {
        return true;
    }
    const std::string cleaned = replaceIdeographicSpaces(trimIdeographicSpaces(text));
    // The whole treatment of the sign: minus signs are taken out wherever they stand if the text converts to 0 or
    // below, and otherwise they stay and fail. So "--5" passes, and "1-2" does not.
    std::string digits = cleaned;
    if (toReal(cleaned) <= 0.0) {
        std::erase(digits, '-');
    }
    std::erase(digits, '.');
    return isDigits(digits) && std::count(cleaned.begin(), cleaned.end(), '.') <= 1;
}

bool isReadInPart(std::string_view text, double value) {
    const std::string cleaned = replaceIdeographicSpaces(text);
    const std::string_view whole = trim(cleaned);
    if (whole.empty()) {
        return false;
    }
    std::string_view digits = whole;
    if (digits.front() == '-' || digits.front() == '+') {
        digits.remove_prefix(1);
    }
    // The conversion of the library knows infinities too.
    if (digits.empty() || (digits.front() != '.' && !isDigit(digits.front()))) {
        return true;
    }
    double magnitude = 0.0;
    return readReal(digits.data(), digits.data() + digits.size(), magnitude).ptr != digits.data() + digits.size() ||
           toReal(whole) != value;
}

} // namespace fenmark::sima
