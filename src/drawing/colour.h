// A colour as screens have it, and its text "#1a2b3c".
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace fenmark::drawing {

// Parts of red, green and blue, 0 to 255 each.
struct Colour {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;

    friend bool operator==(const Colour&, const Colour&) = default;
};

std::string textOf(const Colour& colour);
// Six hexadecimal digits behind a "#", in letters of either case; nothing for any other text.
std::optional<Colour> colourOfText(std::string_view text);

} // namespace fenmark::drawing
