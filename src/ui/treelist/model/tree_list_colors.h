// The colours of the tree list. Values hold blue, green and red from the high byte down.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace fenmark::ui::treelist {

// What each colour of the table paints.
enum class TreeListColor : std::size_t {
    FocusCell,          // fill of the focus cell
    Background,         // the empty area
    HeaderFace,         // header face
    SortedColumn,       // cells of a sorted column
    SelectionFrame,     // frame around selected rows
    HorizontalGrid,     // grid lines
    VerticalGrid,       //
    HeaderEdge,         // edges between header cells
    FocusFrame,         // frame of the focus cell while the control has the focus
    BoxMark,            // the mark in a checked box
    HotMark,            // drop target and drag marks
    SelectedRowActive,  // fill of selected rows while the control has the focus
    SelectedRow,        // fill of selected rows while it has not
    DisabledBackground, // the area of a disabled control
    RowBackground,      // cells
    HeaderPressed,      // a header cell that is pressed
    Transparent,        // the colour that stands for nothing in drag pictures
    BoxDisabled,        // fill of boxes that cannot be changed
    Line,               // tree lines, button frames, disabled texts
};

inline constexpr std::size_t kTreeListColorCount = 19;

// Fifteen colours of the table, then the four single ones.
inline constexpr std::array<std::uint32_t, kTreeListColorCount> kTreeListColors{
    0xffffe0, 0xfcfcfc, 0xf0f0f0, 0xf8f8f8, 0xc0c080, 0xcccccc, 0xc0c0c0, 0xc8c8c8, 0xc08080, 0xa00000,
    0xd00000, 0xd0a0a0, 0xe8e8e8, 0xf0f0f0, 0xffffff, 0xe0e0e0, 0x00ff00, 0xd0d0d0, 0x808080};

// A colour as red, green, blue.
struct RgbColor {
    int red = 0;
    int green = 0;
    int blue = 0;
    bool operator==(const RgbColor&) const = default;
};

[[nodiscard]] constexpr RgbColor rgbOf(std::uint32_t bgr) {
    return {static_cast<int>(bgr & 0xff), static_cast<int>((bgr >> 8) & 0xff), static_cast<int>((bgr >> 16) & 0xff)};
}
[[nodiscard]] constexpr RgbColor rgbOf(TreeListColor color) {
    return rgbOf(kTreeListColors[static_cast<std::size_t>(color)]);
}

} // namespace fenmark::ui::treelist
