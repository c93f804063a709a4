// Reals to text and back, independent of any locale: the one place that needs the standard library's conversions.
// Where the library has none for reals (browser builds), double-conversion stands in and writes the same characters.
#pragma once

#include <charconv>

namespace fenmark {

// With that many decimals, rounded half to even of the exact value.
std::to_chars_result writeFixedReal(char* first, char* last, double value, int decimals);

#if defined(FENMARK_DOUBLE_CONVERSION)

// The shortest text that reads back to the same value, plain or with an exponent, whichever is shorter.
std::to_chars_result writeReal(char* first, char* last, double value);
// The shortest text in the plain form.
std::to_chars_result writePlainReal(char* first, char* last, double value);
// One digit, that many decimals, and the power of ten.
std::to_chars_result writeScientificReal(char* first, char* last, double value, int decimals);
// As std::from_chars: no blanks, no plus sign; the value stays where the text is none or out of range.
std::from_chars_result readReal(const char* first, const char* last, double& value);

#else

// The shortest text that reads back to the same value, plain or with an exponent, whichever is shorter.
inline std::to_chars_result writeReal(char* first, char* last, double value) {
    return std::to_chars(first, last, value);
}

// The shortest text in the plain form.
inline std::to_chars_result writePlainReal(char* first, char* last, double value) {
    return std::to_chars(first, last, value, std::chars_format::fixed);
}

// One digit, that many decimals, and the power of ten.
inline std::to_chars_result writeScientificReal(char* first, char* last, double value, int decimals) {
    return std::to_chars(first, last, value, std::chars_format::scientific, decimals);
}

// As std::from_chars: no blanks, no plus sign; the value stays where the text is none or out of range.
inline std::from_chars_result readReal(const char* first, const char* last, double& value) {
    return std::from_chars(first, last, value);
}

#endif

} // namespace fenmark
