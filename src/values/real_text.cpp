// Reals to text and back: fixed decimals by whole numbers where that is exact, and everything over double-conversion in
// builds whose standard library does not convert reals.
#include "values/real_text.h"

#include <cmath>
#include <cstdint>

#if defined(FENMARK_DOUBLE_CONVERSION)
#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string_view>

#include <double-conversion/double-conversion.h>
#endif

namespace fenmark {

namespace {

constexpr double kPowersOfTen[] = {1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9};
constexpr int kFewDecimals = 9;
constexpr int kFewCharacters = 16; // of a whole number below kModerate, the zeros before it, a point and a sign
constexpr double kModerate = 1e12; // products up to here are off by 6.1e-5 at most
constexpr double kClear = 1e-3;    // of the middle between two whole numbers

// Coordinates, distances and degrees: scaled to a whole number. The product is rounded, so a value that may lie in the
// middle between two texts is left to the library; so is one that is too large. Returns null for both.
char* writeFewDecimals(char* first, const char* last, double value, int decimals) {
    if (decimals < 0 || decimals > kFewDecimals || last - first < kFewCharacters) {
        return nullptr;
    }
    const double scaled = std::abs(value) * kPowersOfTen[decimals];
    if (!(scaled < kModerate)) {
        return nullptr;
    }
    auto whole = static_cast<std::int64_t>(scaled);
    const double rest = scaled - static_cast<double>(whole);
    if (std::abs(rest - 0.5) < kClear) {
        return nullptr;
    }
    whole += rest > 0.5 ? 1 : 0;
    if (std::signbit(value)) {
        *first++ = '-';
    }
    char digits[kFewCharacters];
    int count = 0;
    while (whole > 0 || count <= decimals) {
        digits[count++] = static_cast<char>('0' + whole % 10);
        whole /= 10;
    }
    while (count > 0) {
        if (count == decimals) {
            *first++ = '.';
        }
        *first++ = digits[--count];
    }
    return first;
}

} // namespace

#if !defined(FENMARK_DOUBLE_CONVERSION)

namespace {

std::to_chars_result writeAnyDecimals(char* first, char* last, double value, int decimals) {
    return std::to_chars(first, last, value, std::chars_format::fixed, decimals);
}

} // namespace

#else

namespace {

using double_conversion::DoubleToStringConverter;
using double_conversion::StringToDoubleConverter;

constexpr int kShortestDigits = 17;
constexpr double kWhole = 9007199254740992.0; // from 2^53 on every value is a whole number
constexpr int kFixedDigits = 60;              // before the point, and
constexpr int kFixedDecimals = 100;           // behind it: beyond, the library's fixed form ends

// Appends as far as there is room.
class Room {
  public:
    Room(char* first, char* last) : at_(first), last_(last) {}

    void put(char c) { put(std::string_view(&c, 1)); }
    void put(std::string_view text) {
        if (static_cast<std::size_t>(last_ - at_) < text.size()) {
            full_ = true;
            return;
        }
        std::memcpy(at_, text.data(), text.size());
        at_ += text.size();
    }
    void zeros(int count) {
        for (int i = 0; i < count; ++i) {
            put('0');
        }
    }
    std::to_chars_result result() const {
        return full_ ? std::to_chars_result{last_, std::errc::value_too_large} : std::to_chars_result{at_, std::errc{}};
    }

  private:
    char* at_;
    char* last_;
    bool full_ = false;
};

std::to_chars_result copied(char* first, char* last, std::string_view text) {
    Room room(first, last);
    room.put(text);
    return room.result();
}

std::to_chars_result notFinite(char* first, char* last, double value) {
    const bool negative = std::signbit(value);
    return copied(first, last, std::isnan(value) ? (negative ? "-nan" : "nan") : (negative ? "-inf" : "inf"));
}

std::to_chars_result printed(char* first, char* last, const char* format, int decimals, double value) {
    char text[420];
    const int size = std::snprintf(text, sizeof text, format, decimals, value);
    return copied(first, last, std::string_view(text, static_cast<std::size_t>(size)));
}

// The shortest digits of a finite value, and the place of the point among them.
struct Digits {
    char text[kShortestDigits + 1];
    int count = 0;
    int point = 0;
    bool negative = false;

    explicit Digits(double value) {
        DoubleToStringConverter::DoubleToAscii(value, DoubleToStringConverter::SHORTEST, 0, text, sizeof text,
                                               &negative, &count, &point);
    }
    std::string_view all() const { return {text, static_cast<std::size_t>(count)}; }
};

std::to_chars_result plain(char* first, char* last, double value, const Digits& digits) {
    if (std::abs(value) >= kWhole && digits.point > digits.count) {
        return printed(first, last, "%.*f", 0, value); // all digits of a whole number are its own
    }
    Room room(first, last);
    if (digits.negative) {
        room.put('-');
    }
    if (digits.point <= 0) {
        room.put("0");
        if (value != 0.0) {
            room.put('.');
            room.zeros(-digits.point);
            room.put(digits.all());
        }
    } else if (digits.point >= digits.count) {
        room.put(digits.all());
        room.zeros(digits.point - digits.count);
    } else {
        room.put(digits.all().substr(0, static_cast<std::size_t>(digits.point)));
        room.put('.');
        room.put(digits.all().substr(static_cast<std::size_t>(digits.point)));
    }
    return room.result();
}

// How many characters the plain form has without its sign.
int plainSize(const Digits& digits) {
    if (digits.point <= 0) {
        return 2 - digits.point + digits.count;
    }
    return digits.point >= digits.count ? digits.point : digits.count + 1;
}

int scientificSize(const Digits& digits) {
    const int exponent = std::abs(digits.point - 1);
    return digits.count + (digits.count > 1 ? 1 : 0) + (exponent >= 100 ? 5 : 4);
}

std::to_chars_result writeAnyDecimals(char* first, char* last, double value, int decimals) {
    if (!std::isfinite(value)) {
        return notFinite(first, last, value);
    }
    // The library rounds a value exactly between two texts up; the standard rounds it to the even one. Such a value is
    // an odd multiple of half a unit of the last decimal, hence an odd multiple of a power of two.
    const double halves = std::ldexp(value, decimals + 1);
    const bool mayBeBetween = std::abs(halves) < kWhole && halves == std::trunc(halves);
    if (mayBeBetween || decimals > kFixedDecimals || std::abs(value) >= 1e15) {
        return printed(first, last, "%.*f", decimals, value);
    }
    char text[kFixedDigits + kFixedDecimals + 3];
    double_conversion::StringBuilder builder(text, sizeof text);
    static const DoubleToStringConverter converter(DoubleToStringConverter::NO_FLAGS, "inf", "nan", 'e', -6, 21, 6, 0);
    converter.ToFixed(value, decimals, &builder);
    const int size = builder.position();
    return copied(first, last, std::string_view(text, static_cast<std::size_t>(size)));
}

} // namespace

std::to_chars_result writeReal(char* first, char* last, double value) {
    if (!std::isfinite(value)) {
        return notFinite(first, last, value);
    }
    const Digits digits(value);
    if (value == 0.0 || plainSize(digits) <= scientificSize(digits)) {
        return plain(first, last, value, digits);
    }
    Room room(first, last);
    if (digits.negative) {
        room.put('-');
    }
    room.put(digits.text[0]);
    if (digits.count > 1) {
        room.put('.');
        room.put(digits.all().substr(1));
    }
    const int exponent = digits.point - 1;
    room.put('e');
    room.put(exponent < 0 ? '-' : '+');
    char power[8];
    const int size = std::snprintf(power, sizeof power, "%02d", std::abs(exponent));
    room.put(std::string_view(power, static_cast<std::size_t>(size)));
    return room.result();
}

std::to_chars_result writePlainReal(char* first, char* last, double value) {
    return std::isfinite(value) ? plain(first, last, value, Digits(value)) : notFinite(first, last, value);
}

std::to_chars_result writeScientificReal(char* first, char* last, double value, int decimals) {
    return std::isfinite(value) ? printed(first, last, "%.*e", decimals, value) : notFinite(first, last, value);
}

std::from_chars_result readReal(const char* first, const char* last, double& value) {
    // The text of a number by the rules of std::from_chars; hexadecimal numbers, "inf" and "nan" are none here.
    const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
    const char* p = first;
    p += p != last && *p == '-' ? 1 : 0;
    bool anyDigit = false;
    bool anyNonzero = false;
    const auto takeDigits = [&] {
        for (; p != last && isDigit(*p); ++p) {
            anyDigit = true;
            anyNonzero = anyNonzero || *p != '0';
        }
    };
    takeDigits();
    if (p != last && *p == '.') {
        ++p;
        takeDigits();
    }
    if (!anyDigit) {
        return {first, std::errc::invalid_argument};
    }
    if (p != last && (*p == 'e' || *p == 'E')) {
        const char* exponent = p + 1;
        exponent += exponent != last && (*exponent == '-' || *exponent == '+') ? 1 : 0;
        if (exponent != last && isDigit(*exponent)) {
            p = std::find_if_not(exponent, last, isDigit);
        }
    }
    static const StringToDoubleConverter converter(StringToDoubleConverter::NO_FLAGS, 0.0, 0.0, nullptr, nullptr);
    int used = 0;
    const double read = converter.StringToDouble(first, static_cast<int>(p - first), &used);
    if (std::isinf(read) || (read == 0.0 && anyNonzero)) {
        return {p, std::errc::result_out_of_range};
    }
    value = read;
    return {p, std::errc{}};
}

#endif

std::to_chars_result writeFixedReal(char* first, char* last, double value, int decimals) {
    if (char* const end = writeFewDecimals(first, last, value, decimals)) {
        return {end, std::errc{}};
    }
    return writeAnyDecimals(first, last, value, decimals);
}

} // namespace fenmark
