// Whether a field holds digits or a number, as the validators ask, and whether a number was read whole.
#pragma once

#include "sima/text/number.h"

#include <string_view>

namespace fenmark::sima {

// Whether the trimmed text holds nothing but "0" to "9". An empty text passes. Neither length nor sign is tested.
inline bool isDigits(std::string_view text) {
    for (const char c : trim(text)) {
        if (!isDigit(c)) {
            return false;
        }
    }
    return true;
}

// Whether the text passes for a number. An empty text passes; "-1.5", ".5", "5." and "-" pass, "+1", "1e5", "12a",
// "1-2" and "1.5.2" do not. The ideographic space U+3000 is accepted around the digits.
bool isNumber(std::string_view text);

// Whether the value, as which the text was converted, is not all of a text that is not empty: U+3000 or a minus sign in
// front of the digits stops the plain conversion, though both pass.
bool isReadInPart(std::string_view text, double value);

} // namespace fenmark::sima
