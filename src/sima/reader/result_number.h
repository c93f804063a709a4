// Numbers of the result sections, and fields without a number.
#pragma once

#include "sima/text/number.h"
#include "sima/text/utf8.h"

#include <string>
#include <string_view>

namespace fenmark::sima {

// The real number of a result's field: ideographic spaces count as blanks.
inline double resultNumber(std::string_view field) {
    if (field.find(kIdeographicSpace) == std::string_view::npos) {
        return toReal(field);
    }
    return toReal(replaceIdeographicSpaces(field));
}

// Whether the field holds nothing but blanks.
inline bool isEmptyNumber(std::string_view field) {
    const std::string_view text = trim(field);
    return text.empty() || (text.starts_with(kIdeographicSpace) && trim(replaceIdeographicSpaces(text)).empty());
}

} // namespace fenmark::sima
