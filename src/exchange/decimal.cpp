// Exact decimals of coordinates.
#include "exchange/decimal.h"

#include "exchange/text.h"
#include "values/real_text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>

namespace fenmark::exchange {

namespace {

constexpr int kMicroDigits = 6;
constexpr double kReach = 1e7; // metres

Wide power(int exponent) {
    Wide value = 1;
    for (int i = 0; i < exponent; ++i) {
        value *= 10;
    }
    return value;
}

// The value over 10^drop, rounded half away from zero.
Wide roundedQuotient(Wide value, int drop) {
    const Wide divisor = power(drop);
    const Wide size = value < 0 ? -value : value;
    const Wide rounded = (size + divisor / 2) / divisor;
    return value < 0 ? -rounded : rounded;
}

std::string decimalText(Wide value, int decimals) {
    const bool negative = value < 0;
    Wide size = negative ? -value : value;
    std::string digits;
    while (size > 0 || static_cast<int>(digits.size()) <= decimals) {
        digits += static_cast<char>('0' + static_cast<int>(size % 10));
        size /= 10;
    }
    if (decimals > 0) {
        digits.insert(static_cast<std::size_t>(decimals), 1, '.');
    }
    if (negative) {
        digits += '-';
    }
    std::reverse(digits.begin(), digits.end());
    return digits;
}

// The decimal number that the real stands for, its shortest one, in units of the last decimal asked for, rounded half
// away from zero.
std::int64_t scaled(double value, int wanted) {
    std::array<char, 400> buffer;
    const auto [end, error] = writePlainReal(buffer.data(), buffer.data() + buffer.size(), value);
    const std::string_view text(buffer.data(), static_cast<std::size_t>(end - buffer.data()));
    std::int64_t units = 0;
    int decimals = -1; // none until the point
    bool roundsUp = false;
    for (const char c : text) {
        if (c == '-') {
            continue;
        }
        if (c == '.') {
            decimals = 0;
            continue;
        }
        if (decimals == wanted) {
            roundsUp = c >= '5';
            break;
        }
        units = 10 * units + (c - '0');
        decimals += decimals >= 0 ? 1 : 0;
    }
    for (int i = std::max(decimals, 0); i < wanted; ++i) {
        units *= 10;
    }
    units += roundsUp ? 1 : 0;
    return text.starts_with('-') ? -units : units;
}

// The largest whole number whose square is not above the value.
std::int64_t rootOf(Wide value) {
    auto root = static_cast<std::int64_t>(std::sqrt(static_cast<long double>(value)));
    while (static_cast<Wide>(root) * root > value) {
        --root;
    }
    while (static_cast<Wide>(root + 1) * (root + 1) <= value) {
        ++root;
    }
    return root;
}

} // namespace

std::optional<Decimal> Decimal::of(double metres) {
    if (!(std::abs(metres) < kReach)) {
        return std::nullopt;
    }
    return Decimal(scaled(metres, kMicroDigits));
}

std::string roundedText(double value, int decimals) {
    constexpr double kWhole = 1e12; // beyond it no such decimals are left in a 64-bit real
    return std::abs(value) < kWhole ? decimalText(scaled(value, decimals), decimals) : fixedReal(value, decimals);
}

std::string Decimal::text(int decimals) const {
    return decimalText(roundedQuotient(micro_, kMicroDigits - decimals), decimals);
}

std::string DecimalArea::text() const {
    return decimalText(roundedQuotient(units, kMicroDigits), kMicroDigits);
}

DecimalArea product(const Decimal& a, const Decimal& b) {
    return {static_cast<Wide>(a.micrometres()) * b.micrometres()};
}

DecimalArea halfOf(const DecimalArea& area) {
    // Half of it in units of 1e-13 m2 is a whole number again.
    return {roundedQuotient(area.units * 5, kMicroDigits + 1) * power(kMicroDigits)};
}

std::string registeredArea(const std::string& area, bool residential) {
    const std::size_t point = std::min(area.find('.'), area.size());
    const std::string whole = area.substr(0, point);
    const std::string decimals = point < area.size() ? area.substr(point + 1) : std::string();
    const bool overTen = whole.size() > 2 ||
                         (whole.size() == 2 && (whole != "10" || decimals.find_first_not_of('0') != std::string::npos));
    if (!residential && overTen) {
        return whole;
    }
    return whole + "." + (decimals + "00").substr(0, 2);
}

std::string sideText(const Decimal& dx, const Decimal& dy, SideRule rule) {
    const std::int64_t micro = rootOf(product(dx, dx).units + product(dy, dy).units);
    return decimalText((micro + (rule == SideRule::Round ? 500 : 0)) / 1000, 3);
}

} // namespace fenmark::exchange
