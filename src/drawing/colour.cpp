// A colour as screens have it, and its text.
#include "drawing/colour.h"

#include <charconv>
#include <cstddef>

namespace fenmark::drawing {

namespace {

constexpr std::size_t kTextLength = 7;
constexpr std::string_view kDigits = "0123456789abcdef";

} // namespace

std::string textOf(const Colour& colour) {
    std::string text = "#";
    for (const std::uint8_t part : {colour.red, colour.green, colour.blue}) {
        text += kDigits[part >> 4U];
        text += kDigits[part & 15U];
    }
    return text;
}

std::optional<Colour> colourOfText(std::string_view text) {
    if (text.size() != kTextLength || text.front() != '#') {
        return std::nullopt;
    }
    unsigned value = 0;
    const auto [end, error] = std::from_chars(text.data() + 1, text.data() + text.size(), value, 16);
    if (error != std::errc() || end != text.data() + text.size()) {
        return std::nullopt;
    }
    return Colour{static_cast<std::uint8_t>(value >> 16U), static_cast<std::uint8_t>(value >> 8U & 255U),
                  static_cast<std::uint8_t>(value & 255U)};
}

} // namespace fenmark::drawing
