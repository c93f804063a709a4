// Text to numbers and back, independent of any locale.
#include "sima/text/number.h"

#include "values/real_text.h"

#include <array>
#include <limits>

namespace fenmark::sima {

namespace {

std::string_view skipBlanks(std::string_view text) {
    std::size_t start = 0;
    while (start < text.size() && isBlank(text[start])) {
        ++start;
    }
    return text.substr(start);
}

// A number of at most so many digits is the quotient of two integers that a double holds exactly, so that one division
// rounds it as the full conversion does.
constexpr int kExactDigits = 15;

constexpr std::array<double, kExactDigits + 1> kPowersOfTen{1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                            1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};

// Whether an unsigned decimal number that is out of range is too large, and not too small: the place of its first
// digit that is not 0 decides, together with the exponent.
bool isTooLarge(std::string_view digits) {
    std::int64_t place = 0; // of the first nonzero digit: 1 for the one before the point
    bool seenPoint = false;
    bool seenNonzero = false;
    std::size_t i = 0;
    for (; i < digits.size() && (isDigit(digits[i]) || digits[i] == '.'); ++i) {
        if (digits[i] == '.') {
            seenPoint = true;
        } else {
            seenNonzero = seenNonzero || digits[i] != '0';
            if (seenNonzero && !seenPoint) {
                ++place;
            }
            if (!seenNonzero && seenPoint) {
                --place;
            }
        }
    }
    if (i < digits.size()) {
        place += toInteger(digits.substr(i + 1));
    }
    return place > 0;
}

// An unsigned decimal number by the full rules, from where it starts.
double convertSlowly(std::string_view digits) {
    double value = 0.0;
    const auto [end, error] = readReal(digits.data(), digits.data() + digits.size(), value);
    if (error == std::errc::result_out_of_range) {
        const std::string_view used = digits.substr(0, static_cast<std::size_t>(end - digits.data()));
        return isTooLarge(used) ? std::numeric_limits<double>::infinity() : 0.0;
    }
    return error == std::errc{} ? value : 0.0;
}

} // namespace

bool toPlainReal(std::string_view text, double& value) {
    text = trim(text);
    const char* p = text.data();
    const char* const end = p + text.size();
    const bool negative = p != end && *p == '-';
    p += negative ? 1 : 0;
    if (end - p > kExactDigits + 1) {
        return false;
    }
    std::uint64_t mantissa = 0;
    const auto takeDigits = [&p, end, &mantissa] {
        const char* const first = p;
        for (; p != end && isDigit(*p); ++p) {
            mantissa = mantissa * 10 + static_cast<std::uint64_t>(*p - '0');
        }
        return p - first;
    };
    std::ptrdiff_t digits = takeDigits();
    std::ptrdiff_t decimals = 0;
    if (p != end && *p == '.') {
        ++p;
        decimals = takeDigits();
        digits += decimals;
    }
    if (p != end || digits > kExactDigits) {
        return false;
    }
    value = static_cast<double>(mantissa) / kPowersOfTen[static_cast<std::size_t>(decimals)];
    if (negative && digits > 0) { // a sign alone is no number: 0.0
        value = -value;
    }
    return true;
}

double toReal(std::string_view text) {
    text = skipBlanks(text);
    bool negative = false;
    if (!text.empty() && (text.front() == '-' || text.front() == '+')) {
        negative = text.front() == '-';
        text.remove_prefix(1);
    }
    // The short way for as many digits as are exact; all other numbers take the full conversion.
    std::uint64_t mantissa = 0;
    int digits = 0;
    std::size_t decimals = 0;
    bool seenPoint = false;
    std::size_t i = 0;
    for (; i < text.size(); ++i) {
        const char c = text[i];
        if (isDigit(c)) {
            mantissa = mantissa * 10 + static_cast<std::uint64_t>(c - '0');
            if (++digits > kExactDigits) {
                break;
            }
            decimals += seenPoint ? 1 : 0;
        } else if (c == '.' && !seenPoint) {
            seenPoint = true;
        } else {
            break;
        }
    }
    double value = 0.0;
    const bool exponent = i < text.size() && (text[i] == 'e' || text[i] == 'E');
    if (digits > kExactDigits || exponent) {
        value = (isDigit(text.front()) || text.front() == '.') ? convertSlowly(text) : 0.0;
    } else {
        value = static_cast<double>(mantissa) / kPowersOfTen[decimals];
    }
    return negative && digits > 0 ? -value : value; // a sign alone is no number: 0.0
}

std::string formatReal(double value) {
    // The largest double has 309 digits before the point; sign, point and decimals come on top.
    std::array<char, 330> buffer;
    const auto result = writeFixedReal(buffer.data(), buffer.data() + buffer.size(), value, 12);
    return std::string(buffer.data(), result.ptr);
}

} // namespace fenmark::sima
