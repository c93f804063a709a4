// Colours of layers as DXF files number them.
#include "exchange/dxf_colour.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace fenmark::exchange {

namespace {

constexpr int kIndexColours = 256;
constexpr int kFirstHue = 10; // from here on ten shades for each of 24 hues
constexpr int kFirstGrey = 250;

int part(double value) {
    return static_cast<int>(std::floor(value));
}

// Hue in degrees; the least of the three parts is half of the largest where it is pale, otherwise 0.
drawing::Colour shade(double hue, int largest, bool pale) {
    const double high = largest;
    const double low = pale ? high / 2.0 : 0.0;
    const auto along = [&](double degrees) { // of one part: high for a third of the circle, low for another
        const double from = std::abs(std::remainder(hue - degrees, 360.0));
        const double share = std::clamp(2.0 - from / 60.0, 0.0, 1.0);
        return static_cast<std::uint8_t>(part(low + share * (high - low)));
    };
    return {along(0.0), along(120.0), along(240.0)};
}

drawing::Colour colourOfIndex(int index) {
    static constexpr std::array<drawing::Colour, kFirstHue> kFirst = {{
        {0, 0, 0},
        {255, 0, 0},
        {255, 255, 0},
        {0, 255, 0},
        {0, 255, 255},
        {0, 0, 255},
        {255, 0, 255},
        {255, 255, 255},
        {128, 128, 128},
        {192, 192, 192},
    }};
    static constexpr std::array<int, 5> kLargest = {255, 165, 127, 76, 38};
    static constexpr std::array<std::uint8_t, kIndexColours - kFirstGrey> kGreys = {51, 91, 132, 173, 214, 255};
    if (index < kFirstHue) {
        return kFirst[static_cast<std::size_t>(index)];
    }
    if (index >= kFirstGrey) {
        const std::uint8_t grey = kGreys[static_cast<std::size_t>(index - kFirstGrey)];
        return {grey, grey, grey};
    }
    const int hue = (index - kFirstHue) / 10 * 15; // in whole steps of 15 degrees
    return shade(hue, kLargest[static_cast<std::size_t>(index % 10 / 2)], index % 2 == 1);
}

int distance(const drawing::Colour& a, const drawing::Colour& b) {
    const int red = a.red - b.red;
    const int green = a.green - b.green;
    const int blue = a.blue - b.blue;
    return red * red + green * green + blue * blue;
}

} // namespace

DxfColour dxfColourOf(const drawing::Colour& colour) {
    constexpr int kBlackOrWhite = 7;
    if (colour == drawing::Colour{}) {
        return {kBlackOrWhite, colour};
    }
    DxfColour nearest{kBlackOrWhite, colour};
    int least = std::numeric_limits<int>::max();
    for (int index = 1; index < kIndexColours; ++index) {
        if (const int far = distance(colourOfIndex(index), colour); far < least) {
            least = far;
            nearest.index = index;
        }
    }
    return nearest;
}

} // namespace fenmark::exchange
