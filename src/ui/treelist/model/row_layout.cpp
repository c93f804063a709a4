// The parts of a row stand side by side: lines, button, check box, lock box, image, text.
#include "ui/treelist/model/row_layout.h"

#include <algorithm>

#include "ui/treelist/model/tree_list_codes.h"

namespace fenmark::ui::treelist {

namespace {

// Cuts parts off the left of what is left of a cell.
class Cutter {
  public:
    explicit Cutter(const PixelRect& cell) : rest_(cell) {}
    PixelRect cut(int width) {
        PixelRect part = rest_;
        part.width = std::clamp(width, 0, rest_.width);
        rest_.x += part.width;
        rest_.width -= part.width;
        return part;
    }
    [[nodiscard]] const PixelRect& rest() const { return rest_; }

  private:
    PixelRect rest_;
};

struct PartWidths {
    int lines = 0;
    int button = 0;
    int check = 0;
    int lock = 0;
    int image = 0;
    int gap = 0;
    [[nodiscard]] int sum() const { return lines + button + check + lock + image + gap; }
};

PartWidths widthsOf(const CTreeListItem& item, std::uint32_t style, const RowMetrics& metrics) {
    PartWidths widths;
    widths.lines = metrics.margin();
    if ((style & kStyleTree) && item.level() > 1) {
        widths.lines += metrics.indent() * static_cast<int>(item.level() - 1);
    }
    if (style & (kStyleTreeLines | kStyleButtons)) {
        widths.button = metrics.cell();
    }
    if ((style & kStyleCheckBoxes) && (item.state & kItemCheckBox)) {
        widths.check = metrics.cell();
    }
    if ((style & kStyleLockBoxes) && (item.state & kItemLockBox)) {
        widths.lock = metrics.lockCell();
    }
    if ((style & kStyleImages) && (item.state & kItemImage)) {
        widths.image = metrics.cell();
    }
    if (style & (kStyleLockBoxes | kStyleImages)) {
        widths.gap = metrics.margin();
    }
    return widths;
}

} // namespace

RowParts treeCellParts(const CTreeListItem& item, std::uint32_t style, const PixelRect& cell,
                       const RowMetrics& metrics) {
    const PartWidths widths = widthsOf(item, style, metrics);
    RowParts parts;
    parts.cell = cell;
    Cutter cutter(cell);
    parts.lines = cutter.cut(widths.lines);
    parts.button = cutter.cut(widths.button);
    parts.check = cutter.cut(widths.check);
    parts.lock = cutter.cut(widths.lock);
    parts.image = cutter.cut(widths.image);
    cutter.cut(widths.gap);
    parts.text = cutter.rest();
    return parts;
}

RowParts plainCellParts(const PixelRect& cell) {
    RowParts parts;
    parts.cell = cell;
    parts.text = cell;
    return parts;
}

int treePartsWidth(const CTreeListItem& item, std::uint32_t style, const RowMetrics& metrics) {
    return widthsOf(item, style, metrics).sum();
}

PixelRect buttonSquare(const PixelRect& buttonCell, const RowMetrics& metrics) {
    const int side = metrics.button();
    // The centre pixel of the cell, from which the square reaches the same way to all sides.
    const int cx = buttonCell.x + buttonCell.width / 2;
    const int cy = buttonCell.y + buttonCell.height / 2;
    return {cx - side / 2, cy - side / 2, side, side};
}

RowHit hitTestCell(const CTreeListItem& item, std::uint32_t, const RowParts& parts, int x, int y) {
    if (!parts.cell.contains(x, y)) {
        return {kHitRow, parts.cell};
    }
    if (parts.button.contains(x, y)) {
        // The cell answers as a button also where tree lines alone take its place.
        if (item.canHaveButton()) {
            return {kHitButton, parts.button};
        }
        return {kHitRow, parts.cell};
    }
    if (parts.check.contains(x, y)) {
        return {kHitCheck, parts.check};
    }
    if (parts.lock.contains(x, y)) {
        return {kHitLock, parts.lock};
    }
    if (parts.image.contains(x, y)) {
        return {kHitImage, parts.image};
    }
    if (parts.text.contains(x, y)) {
        return {kHitText, parts.text};
    }
    return {kHitRow, parts.cell};
}

ButtonKind buttonKind(const CTreeListItem& item) {
    if (!item.canHaveButton()) {
        return ButtonKind::None;
    }
    if (!item.hasChildren()) {
        return ButtonKind::Neutral;
    }
    return item.isExpanded() ? ButtonKind::Minus : ButtonKind::Plus;
}

} // namespace fenmark::ui::treelist
