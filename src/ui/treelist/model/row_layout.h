// Where the parts of a row lie, to the pixel, and what a point of a row hits.
#pragma once

#include <cstdint>

#include "ui/treelist/model/tree_list_item.h"

namespace fenmark::ui::treelist {

// A rectangle in pixels: left, top, width, height.
struct PixelRect {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;

    [[nodiscard]] bool isEmpty() const { return width <= 0 || height <= 0; }
    [[nodiscard]] int right() const { return x + width; }
    [[nodiscard]] int bottom() const { return y + height; }
    [[nodiscard]] bool contains(int px, int py) const { return px >= x && px < right() && py >= y && py < bottom(); }
    bool operator==(const PixelRect&) const = default;
};

// Sizes of the parts for the resolution of the screen; given for 96 dots an inch.
struct RowMetrics {
    double scale = 1.0; // dots an inch / 96

    [[nodiscard]] int px(int at96) const {
        const double value = at96 * scale;
        return static_cast<int>(value < 0 ? value - 0.5 : value + 0.5);
    }
    [[nodiscard]] int indent() const { return px(16); }
    [[nodiscard]] int margin() const { return px(2); }
    [[nodiscard]] int cell() const { return px(16); } // button, check box, image
    [[nodiscard]] int lockCell() const { return px(8); }
    // The expand button; odd, so that it has a middle line.
    [[nodiscard]] int button() const { return px(9) | 1; }
};

// The parts of one cell from left to right. Parts that are not shown are empty.
struct RowParts {
    PixelRect cell;
    PixelRect lines; // margin and indentation
    PixelRect button;
    PixelRect check;
    PixelRect lock;
    PixelRect image;
    PixelRect text;
};

// Parts of a row in the column that shows the tree. `cell` is that column's cell.
[[nodiscard]] RowParts treeCellParts(const CTreeListItem& item, std::uint32_t style, const PixelRect& cell,
                                     const RowMetrics& metrics);
// Parts of a row in any other column: all of it is text.
[[nodiscard]] RowParts plainCellParts(const PixelRect& cell);

// Width that the tree parts take before the text.
[[nodiscard]] int treePartsWidth(const CTreeListItem& item, std::uint32_t style, const RowMetrics& metrics);

// The expand button in its cell: 9 by 9 pixels around the centre.
[[nodiscard]] PixelRect buttonSquare(const PixelRect& buttonCell, const RowMetrics& metrics);

// One HitFlag for the point, and the rectangle of what was hit.
struct RowHit {
    int flags = 0;
    PixelRect rect;
};
[[nodiscard]] RowHit hitTestCell(const CTreeListItem& item, std::uint32_t style, const RowParts& parts, int x, int y);

// Which button a row shows: none, plus (collapsed), minus (expanded), or the neutral one of a row that was never
// expanded and has no children.
enum class ButtonKind : int { None = 0, Plus = 1, Minus = 2, Neutral = 4 };
[[nodiscard]] ButtonKind buttonKind(const CTreeListItem& item);

} // namespace fenmark::ui::treelist
