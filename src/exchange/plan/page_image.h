// A page of a plot as pixels: for previews and for printers.
#pragma once

#include "values/outcome.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace fenmark::exchange {

// The plain decimal that the text begins with, which is taken off it; 0 if there is none.
[[nodiscard]] double leadingReal(std::string_view& text);

struct PageSize {
    double width = 0.0; // millimetres
    double height = 0.0;
};
// Of a page that this program wrote; nothing for other text.
[[nodiscard]] std::optional<PageSize> sizeOfPage(const std::string& svg);

// Where pixels go: 32 bits each, 0xAARRGGBB in the machine's order, the colours multiplied by alpha.
struct PagePixels {
    unsigned char* bits = nullptr;
    int width = 0;
    int height = 0;
    int stride = 0; // bytes from one row to the next
    double pixelsPerMillimetre = 1.0;
    double left = 0.0; // of the page, pixels: for a part of it
    double top = 0.0;
};

// Draws the part of the page over what the pixels hold. The message says what went wrong.
Outcome drawPage(const std::string& svg, const PagePixels& pixels);

} // namespace fenmark::exchange
