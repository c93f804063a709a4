// Colours of layers as DXF files number them.
#pragma once

#include "drawing/colour.h"

#include <optional>

namespace fenmark::exchange {

struct DxfColour {
    int index = 7;                                       // as DXF numbers it, 1 to 255
    std::optional<drawing::Colour> exact = std::nullopt; // where the index is but the nearest one
};

// The index of the nearest colour, which every release knows, and the colour itself. 7 is black on paper and white on
// a dark screen, and stands for both.
DxfColour dxfColourOf(const drawing::Colour& colour);

} // namespace fenmark::exchange
