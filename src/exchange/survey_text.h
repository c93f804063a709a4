// Numbers as survey documents print them: metres, angles in degrees, minutes and seconds, stations, names.
#pragma once

#include <string>
#include <string_view>

namespace fenmark::exchange {

inline constexpr double kStakePitch = 20.0; // metres between two numbered stakes, unless an option says otherwise

// The names of stations: "No.17+5.000" on a pitch, or "1k234.500".
struct StationNames {
    enum class Style { Stake, Kilometre };
    Style style = Style::Stake;
    double pitch = kStakePitch; // metres, above 0

    // To the millimetre. A station a fraction of a millimetre short of a stake is the stake.
    [[nodiscard]] std::string operator()(double station) const;
};

// Metres with three decimals, rounded half away from zero as the decimal number that the value stands for; never
// "-0.000". A value that is not finite gives an empty text.
[[nodiscard]] std::string metresText(double metres);

// Azimuth of a direction (radians anticlockwise from +x, which is east): radians clockwise from north, in [0, 2 pi).
[[nodiscard]] double azimuthOf(double direction);

// An angle as whole seconds of arc, rounded before it is taken apart, so that 59.6" carries into the minutes.
struct Degrees {
    long long degrees = 0;
    int minutes = 0;
    int seconds = 0;
};
// Of an azimuth: wraps at 360 degrees. Of any other angle: its absolute value.
[[nodiscard]] Degrees azimuthDegrees(double radians);
[[nodiscard]] Degrees angleDegrees(double radians);
// 86°09′40″
[[nodiscard]] std::string degreesText(const Degrees& angle);
// 86.0940: degrees, minutes and seconds as one decimal number.
[[nodiscard]] std::string packedDegrees(const Degrees& angle);

// Without blanks at its ends, the ideographic one included.
[[nodiscard]] std::string_view trimmedName(std::string_view name);

} // namespace fenmark::exchange
