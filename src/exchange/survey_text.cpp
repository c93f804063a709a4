// Numbers as survey documents print them.
#include "exchange/survey_text.h"

#include "exchange/decimal.h"
#include "exchange/text.h"

#include <cmath>
#include <cstdlib>
#include <numbers>

namespace fenmark::exchange {

namespace {

constexpr double kMillimetres = 1000.0;       // in a metre
constexpr long long kCircle = 360LL * 3600LL; // seconds of arc
constexpr double kMostMillimetres = 1e15;     // whole numbers of 64-bit reals end not far beyond

Degrees takenApart(long long seconds) {
    return {seconds / 3600, static_cast<int>(seconds / 60 % 60), static_cast<int>(seconds % 60)};
}

std::string twoDigits(int number) {
    return (number < 10 ? "0" : "") + std::to_string(number);
}

// A distance in [0, pitch) given in millimetres, as metres with three decimals.
std::string metresOf(long long millimetres) {
    std::string digits = std::to_string(millimetres % 1000);
    digits.insert(0, 3 - digits.size(), '0');
    return std::to_string(millimetres / 1000) + "." + digits;
}

long long floorDivided(long long value, long long by) {
    return value >= 0 ? value / by : -((-value + by - 1) / by);
}

} // namespace

std::string StationNames::operator()(double station) const {
    if (!(std::abs(station) * kMillimetres < kMostMillimetres)) {
        return fixedReal(station, 3);
    }
    const long long millimetres = std::llround(station * kMillimetres);
    if (style == Style::Kilometre) {
        // Before 0 the whole of it is negative: "-1k053" would be read as 1053 m before 0, not as 947.
        const long long size = std::abs(millimetres);
        const std::string rest = metresOf(size % 1000000);
        return (millimetres < 0 ? "-" : "") + std::to_string(size / 1000000) + "k" + std::string(7 - rest.size(), '0') +
               rest;
    }
    const long long step = std::max(1LL, std::llround(pitch * kMillimetres));
    const long long stake = floorDivided(millimetres, step);
    const long long beyond = millimetres - stake * step;
    return "No." + std::to_string(stake) + (beyond == 0 ? std::string() : "+" + metresOf(beyond));
}

std::string metresText(double metres) {
    return std::isfinite(metres) ? roundedText(metres, 3) : std::string();
}

double azimuthOf(double direction) {
    constexpr double kTurn = 2.0 * std::numbers::pi;
    double azimuth = std::fmod(std::numbers::pi / 2.0 - direction, kTurn);
    if (azimuth < 0.0) {
        azimuth += kTurn;
    }
    return azimuth >= kTurn ? 0.0 : azimuth;
}

Degrees azimuthDegrees(double radians) {
    const long long seconds = std::llround(radians * (180.0 * 3600.0 / std::numbers::pi)) % kCircle;
    return takenApart(seconds < 0 ? seconds + kCircle : seconds);
}

Degrees angleDegrees(double radians) {
    return takenApart(std::llround(std::abs(radians) * (180.0 * 3600.0 / std::numbers::pi)));
}

std::string degreesText(const Degrees& angle) {
    return std::to_string(angle.degrees) + "°" + twoDigits(angle.minutes) + "′" + twoDigits(angle.seconds) + "″";
}

std::string packedDegrees(const Degrees& angle) {
    return std::to_string(angle.degrees) + "." + twoDigits(angle.minutes) + twoDigits(angle.seconds);
}

std::string_view trimmedName(std::string_view name) {
    constexpr std::string_view kIdeographicBlank = "\u3000";
    const auto isBlank = [](char c) { return c == ' ' || (c >= '\t' && c <= '\r'); };
    while (!name.empty()) {
        if (isBlank(name.front())) {
            name.remove_prefix(1);
        } else if (name.starts_with(kIdeographicBlank)) {
            name.remove_prefix(kIdeographicBlank.size());
        } else {
            break;
        }
    }
    while (!name.empty()) {
        if (isBlank(name.back())) {
            name.remove_suffix(1);
        } else if (name.ends_with(kIdeographicBlank)) {
            name.remove_suffix(kIdeographicBlank.size());
        } else {
            break;
        }
    }
    return name;
}

} // namespace fenmark::exchange
