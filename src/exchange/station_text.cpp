// The ways in which surveyors write a station.
#include "exchange/station_text.h"

#include "values/real_text.h"

#include <algorithm>
#include <cmath>

namespace fenmark::exchange {

namespace {

constexpr double kKilometre = 1000.0; // metres

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

bool startsWithNo(std::string_view text) {
    return text.size() >= 2 && (text[0] == 'N' || text[0] == 'n') && (text[1] == 'O' || text[1] == 'o');
}

// The digits at the front of the text, which are taken off it; nothing if there are none.
std::optional<double> takeDigits(std::string_view& text) {
    const auto end = std::find_if_not(text.begin(), text.end(), isDigit);
    const std::string_view digits = text.substr(0, static_cast<std::size_t>(end - text.begin()));
    text.remove_prefix(digits.size());
    return parseReal(digits);
}

// The metres behind a stake or a kilometre, with the sign that parts them; none are 0.
std::optional<double> metresBeyond(std::string_view text) {
    if (text.empty()) {
        return 0.0;
    }
    const bool parted = (text[0] == '+' || text[0] == '-') && text.size() > 1 && isDigit(text[1]);
    return parted ? parseReal(text) : std::nullopt;
}

std::optional<double> sum(std::optional<double> from, std::optional<double> beyond) {
    return from && beyond ? std::optional(*from + *beyond) : std::nullopt;
}

// What stands behind "No": "6", ".6+0.5", ".-1+16".
std::optional<double> parseStake(std::string_view text, double pitch) {
    if (text.starts_with('.')) {
        text.remove_prefix(1);
    }
    const bool before = text.starts_with('-'); // before stake 0
    if (before) {
        text.remove_prefix(1);
    }
    std::optional<double> stake = takeDigits(text);
    if (stake) {
        *stake *= before ? -pitch : pitch;
    }
    return sum(stake, metresBeyond(text));
}

// What stands before and behind the "k". A sign at the front is that of the whole: "-0k946.9" is 946.9 m before 0.
std::optional<double> parseKilometres(std::string_view kilometres, std::string_view metres) {
    const bool before = kilometres.starts_with('-');
    if (before) {
        kilometres.remove_prefix(1);
    }
    std::optional<double> from = takeDigits(kilometres);
    const bool hasSign = !metres.empty() && (metres.front() == '+' || metres.front() == '-');
    if (!from || !kilometres.empty() || (before && hasSign)) {
        return std::nullopt;
    }
    *from *= kKilometre;
    const bool plusLeftOut = !metres.empty() && isDigit(metres.front());
    const std::optional<double> station = sum(from, plusLeftOut ? parseReal(metres) : metresBeyond(metres));
    return station && before ? -*station : station;
}

} // namespace

std::optional<double> parseReal(std::string_view text) {
    if (text.starts_with('+') && !text.starts_with("+-")) {
        text.remove_prefix(1);
    }
    double value = 0.0;
    const auto [end, error] = readReal(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(value)) {
        return std::nullopt;
    }
    return value;
}

std::optional<double> parseStation(std::string_view text, double pitch) {
    if (startsWithNo(text)) {
        return parseStake(text.substr(2), pitch);
    }
    if (const std::size_t k = text.find_first_of("kK"); k != std::string_view::npos) {
        return parseKilometres(text.substr(0, k), text.substr(k + 1));
    }
    return parseReal(text);
}

} // namespace fenmark::exchange
