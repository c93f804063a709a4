// Boxes, buttons and cursors are drawn, not loaded, so that they are sharp on every screen.
#include "ui/treelist/tree_list_resource.h"

#include <algorithm>

#include <QPainterPath>
#include <QPolygonF>

namespace fenmark::ui::treelist {

namespace {

constexpr int kBoxSide = 13;  // check box, pixels at 96 dots an inch
constexpr int kLockWidth = 7; // lock box
constexpr int kLockHeight = 11;

// Saves the painter's state for the time of a drawing.
class SavedPainter {
  public:
    explicit SavedPainter(QPainter& painter) : painter_(painter) { painter_.save(); }
    ~SavedPainter() { painter_.restore(); }
    SavedPainter(const SavedPainter&) = delete;
    SavedPainter& operator=(const SavedPainter&) = delete;

  private:
    QPainter& painter_;
};

QRect centred(const QRect& cell, int width, int height) {
    return QRect(cell.x() + (cell.width() - width) / 2, cell.y() + (cell.height() - height) / 2, width, height);
}

// A frame one pixel wide, filled, without antialiasing.
void drawFrame(QPainter& painter, const QRect& rect, const QColor& frame, const QColor& fill) {
    painter.fillRect(rect, frame);
    painter.fillRect(rect.adjusted(1, 1, -1, -1), fill);
}

QColor frameColor(CTreeListResource::Look look) {
    return !look.enabled ? colorOf(TreeListColor::BoxDisabled)
           : look.hot    ? colorOf(TreeListColor::BoxMark)
                         : colorOf(TreeListColor::Line).darker(115);
}

QColor markColor(CTreeListResource::Look look) {
    return look.enabled ? colorOf(TreeListColor::BoxMark) : colorOf(TreeListColor::Line);
}

} // namespace

void CTreeListResource::drawCheckBox(QPainter& painter, const QRect& cell, int value, Look look,
                                     const RowMetrics& metrics) {
    const int side = std::min(metrics.px(kBoxSide), cell.height());
    const QRect box = centred(cell, side, side);
    if (!box.intersects(cell)) {
        return;
    }
    const SavedPainter saved(painter);
    painter.setClipRect(cell, Qt::IntersectClip);
    drawFrame(painter, box, frameColor(look),
              look.enabled ? (look.hot ? colorOf(TreeListColor::FocusCell) : QColor(Qt::white))
                           : colorOf(TreeListColor::HeaderFace));
    if (value == 2) {
        const int inset = std::max(3, side / 4);
        painter.fillRect(box.adjusted(inset, inset, -inset, -inset), markColor(look));
    } else if (value == 1) {
        painter.setRenderHint(QPainter::Antialiasing);
        const double unit = side / 13.0;
        QPen pen(markColor(look), 2.0 * unit);
        pen.setCapStyle(Qt::FlatCap);
        pen.setJoinStyle(Qt::MiterJoin);
        painter.setPen(pen);
        const QPointF origin = box.topLeft();
        painter.drawPolyline(QPolygonF{origin + QPointF(2.7, 6.3) * unit, origin + QPointF(5.4, 9.2) * unit,
                                       origin + QPointF(10.4, 3.4) * unit});
    }
}

void CTreeListResource::drawLockBox(QPainter& painter, const QRect& cell, int value, Look look,
                                    const RowMetrics& metrics) {
    const int width = std::min(metrics.px(kLockWidth), cell.width());
    const int height = metrics.px(kLockHeight);
    const QRect box = centred(cell, width, height);
    const SavedPainter saved(painter);
    painter.setClipRect(cell, Qt::IntersectClip);
    // A padlock: closed and dark when locked, open and pale when not, closed and half filled when mixed.
    const QColor strong = look.enabled ? (look.hot ? colorOf(TreeListColor::BoxMark) : QColor(0x70, 0x48, 0x00))
                                       : colorOf(TreeListColor::Line);
    const QColor pale = look.hot && look.enabled ? colorOf(TreeListColor::BoxMark) : colorOf(TreeListColor::Line);
    const QColor ink = value == 0 ? pale : strong;
    const int bodyHeight = height * 6 / 11;
    const QRect body(box.x(), box.bottom() + 1 - bodyHeight, box.width(), bodyHeight);
    const QColor inside = value == 0 ? QColor(Qt::white) : QColor(0xf0, 0xc0, 0x40);
    const QColor paleInside = colorOf(value == 0 ? TreeListColor::HeaderFace : TreeListColor::VerticalGrid);
    drawFrame(painter, body, ink, look.enabled ? inside : paleInside);
    if (value == 2) {
        painter.fillRect(QRect(body.x() + 1, body.y() + 1, (body.width() - 2) / 2, body.height() - 2),
                         QColor(Qt::white));
    }
    painter.setRenderHint(QPainter::Antialiasing);
    const double stroke = std::max(1.0, metrics.scale * 1.2);
    painter.setPen(QPen(ink, stroke));
    painter.setBrush(Qt::NoBrush);
    const double left = box.x() + 1 + stroke / 2;
    const double right = box.x() + box.width() - 1 - stroke / 2;
    const double top = box.y() + stroke / 2;
    const double shoulder = top + (right - left) / 2;
    QPainterPath shackle;
    shackle.moveTo(left, value == 0 ? shoulder + metrics.px(1) : body.y());
    shackle.lineTo(left, shoulder);
    shackle.arcTo(QRectF(left, top, right - left, right - left), 180, -180);
    shackle.lineTo(right, body.y());
    painter.drawPath(shackle);
}

void CTreeListResource::drawButton(QPainter& painter, const QRect& square, ButtonKind kind, Look look) {
    if (kind == ButtonKind::None) {
        return;
    }
    const QColor frame =
        kind == ButtonKind::Neutral && !look.hot ? colorOf(TreeListColor::VerticalGrid) : frameColor(look);
    drawFrame(painter, square, frame,
              look.hot       ? colorOf(TreeListColor::FocusCell)
              : look.enabled ? QColor(Qt::white)
                             : colorOf(TreeListColor::DisabledBackground));
    const QColor ink = !look.enabled ? colorOf(TreeListColor::Line)
                       : look.hot    ? colorOf(TreeListColor::BoxMark)
                                     : QColor(0x20, 0x20, 0x20);
    const int middle = square.width() / 2;
    const int inset = std::max(2, square.width() * 2 / 9);
    const int thickness = std::max(1, square.width() / 9) | 1;
    const int from = middle - thickness / 2;
    if (kind == ButtonKind::Neutral) {
        painter.fillRect(QRect(square.x() + middle - 1, square.y() + middle - 1, 3, 3), colorOf(TreeListColor::Line));
        return;
    }
    painter.fillRect(QRect(square.x() + inset, square.y() + from, square.width() - 2 * inset, thickness), ink);
    if (kind == ButtonKind::Plus) {
        painter.fillRect(QRect(square.x() + from, square.y() + inset, thickness, square.height() - 2 * inset), ink);
    }
}

void CTreeListResource::drawSortMark(QPainter& painter, const QRect& cell, bool up) {
    const SavedPainter saved(painter);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(colorOf(TreeListColor::Line).darker(130));
    const QPointF centre = QRectF(cell).center();
    const double tip = up ? -2.5 : 2.5;
    painter.drawPolygon(QPolygonF{centre + QPointF(0, tip), centre + QPointF(-4, -tip), centre + QPointF(4, -tip)});
}

QCursor CTreeListResource::dropCursor(DropResult result) {
    switch (result) {
    case DropResult::Refused:
        return QCursor(Qt::ForbiddenCursor);
    case DropResult::NotHere:
        return QCursor(Qt::ArrowCursor);
    case DropResult::OnRow:
        return QCursor(Qt::DragMoveCursor);
    case DropResult::OnEmpty:
        return QCursor(Qt::DragCopyCursor);
    }
    return QCursor(Qt::ArrowCursor);
}

QCursor CTreeListResource::widthCursor() {
    return QCursor(Qt::SplitHCursor);
}

} // namespace fenmark::ui::treelist
