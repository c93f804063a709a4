// CTreeListResource: the look of boxes, buttons, marks and cursors.
#pragma once

#include <QColor>
#include <QCursor>
#include <QPainter>
#include <QRect>

#include "ui/treelist/model/row_layout.h"
#include "ui/treelist/model/tree_list_codes.h"
#include "ui/treelist/model/tree_list_colors.h"

namespace fenmark::ui::treelist {

[[nodiscard]] inline QColor colorOf(TreeListColor color) {
    const RgbColor rgb = rgbOf(color);
    return QColor(rgb.red, rgb.green, rgb.blue);
}

[[nodiscard]] inline QRect toRect(const PixelRect& rect) {
    return QRect(rect.x, rect.y, rect.width, rect.height);
}

// Draws in device-independent pixels; sizes follow the rectangle that is given, so that every resolution is sharp.
class CTreeListResource {
  public:
    struct Look {
        bool enabled = true;
        bool hot = false; // under the pointer
    };
    // Values are 0, 1 and 2 (mixed). `cell` is the part's cell; the box stands in its middle.
    static void drawCheckBox(QPainter& painter, const QRect& cell, int value, Look look, const RowMetrics& metrics);
    static void drawLockBox(QPainter& painter, const QRect& cell, int value, Look look, const RowMetrics& metrics);
    static void drawButton(QPainter& painter, const QRect& square, ButtonKind kind, Look look);
    // A line one pixel thick, of equal thickness at every scale of the screen.
    static void drawLine(QPainter& painter, const QRect& line, const QColor& color);
    static void drawSortMark(QPainter& painter, const QRect& cell, bool up);

    [[nodiscard]] static QCursor dropCursor(DropResult result);
    [[nodiscard]] static QCursor widthCursor();
};

} // namespace fenmark::ui::treelist
