// Boxes, buttons and cursors are drawn, not loaded, so that they are sharp on every screen.
#include "ui/treelist/tree_list_resource.h"

#include <algorithm>

#include <QPainterPath>
#include <QPolygonF>
#include <QTransform>

namespace fenmark::ui::treelist {

namespace {

constexpr int kBoxSide = 13;  // check box, pixels at 96 dots an inch
constexpr int kLockWidth = 7; // lock box
constexpr int kLockHeight = 11;

// For the time of a drawing, the painter draws in whole pixels of the device, so that boxes have sharp and equal
// edges at every scale, 1.25 and 1.5 included.
class DevicePixels {
  public:
    explicit DevicePixels(QPainter& painter)
        : painter_(painter), toDevice_(painter.deviceTransform()), unit_(painter.device()->devicePixelRatioF()) {
        painter_.save();
        painter_.resetTransform();
        painter_.scale(1 / unit_, 1 / unit_);
    }
    ~DevicePixels() { painter_.restore(); }
    DevicePixels(const DevicePixels&) = delete;
    DevicePixels& operator=(const DevicePixels&) = delete;

    [[nodiscard]] QRect map(const QRect& rect) const {
        const QRectF mapped = toDevice_.mapRect(QRectF(rect));
        const QPoint topLeft(qRound(mapped.left()), qRound(mapped.top()));
        return QRect(topLeft, QPoint(qRound(mapped.right()) - 1, qRound(mapped.bottom()) - 1));
    }
    [[nodiscard]] int px(double pixels) const { return qRound(pixels * unit_); }
    [[nodiscard]] int line() const { return std::max(1, static_cast<int>(unit_)); } // width of a thin line

  private:
    QPainter& painter_;
    QTransform toDevice_;
    double unit_; // device pixels to a pixel
};

QRect centred(const QRect& cell, int width, int height) {
    return QRect(cell.x() + (cell.width() - width) / 2, cell.y() + (cell.height() - height) / 2, width, height);
}

void drawFrame(QPainter& painter, const QRect& rect, int line, const QColor& frame, const QColor& fill) {
    painter.fillRect(rect, frame);
    painter.fillRect(rect.adjusted(line, line, -line, -line), fill);
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
    const DevicePixels device(painter);
    const QRect place = device.map(cell);
    const int side = std::min(device.px(metrics.px(kBoxSide)), place.height());
    const QRect box = centred(place, side, side);
    painter.setClipRect(place, Qt::IntersectClip);
    drawFrame(painter, box, device.line(), frameColor(look),
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
    const DevicePixels device(painter);
    const QRect place = device.map(cell);
    const int width = std::min(device.px(metrics.px(kLockWidth)), place.width());
    const int height = device.px(metrics.px(kLockHeight));
    const QRect box = centred(place, width, height);
    painter.setClipRect(place, Qt::IntersectClip);
    // A padlock: closed and dark when locked, open and pale when not, closed and half filled when mixed.
    const QColor strong = look.enabled ? (look.hot ? colorOf(TreeListColor::BoxMark) : QColor(0x70, 0x48, 0x00))
                                       : colorOf(TreeListColor::Line);
    const QColor pale = look.hot && look.enabled ? colorOf(TreeListColor::BoxMark) : colorOf(TreeListColor::Line);
    const QColor ink = value == 0 ? pale : strong;
    const int line = device.line();
    const int bodyHeight = height * 6 / 11;
    const QRect body(box.x(), box.bottom() + 1 - bodyHeight, box.width(), bodyHeight);
    const QColor inside = value == 0 ? QColor(Qt::white) : QColor(0xf0, 0xc0, 0x40);
    const QColor paleInside = colorOf(value == 0 ? TreeListColor::HeaderFace : TreeListColor::VerticalGrid);
    drawFrame(painter, body, line, ink, look.enabled ? inside : paleInside);
    if (value == 2) {
        painter.fillRect(
            QRect(body.x() + line, body.y() + line, (body.width() - 2 * line) / 2, body.height() - 2 * line),
            QColor(Qt::white));
    }
    painter.setRenderHint(QPainter::Antialiasing);
    const double stroke = std::max(1.0, height / 9.0);
    painter.setPen(QPen(ink, stroke));
    painter.setBrush(Qt::NoBrush);
    const double left = box.x() + line + stroke / 2;
    const double right = box.x() + box.width() - line - stroke / 2;
    const double top = box.y() + stroke / 2;
    const double shoulder = top + (right - left) / 2;
    QPainterPath shackle;
    shackle.moveTo(left, value == 0 ? shoulder + line : body.y());
    shackle.lineTo(left, shoulder);
    shackle.arcTo(QRectF(left, top, right - left, right - left), 180, -180);
    shackle.lineTo(right, body.y());
    painter.drawPath(shackle);
}

void CTreeListResource::drawButton(QPainter& painter, const QRect& square, ButtonKind kind, Look look) {
    if (kind == ButtonKind::None) {
        return;
    }
    const DevicePixels device(painter);
    QRect box = device.map(square);
    // An odd side, the same for all buttons, so that the marks stand in the middle.
    const int side = device.px(square.width()) | 1;
    box.setSize(QSize(side, side));
    const bool pale = kind == ButtonKind::Neutral && !look.hot;
    drawFrame(painter, box, device.line(), pale ? colorOf(TreeListColor::VerticalGrid) : frameColor(look),
              look.hot       ? colorOf(TreeListColor::FocusCell)
              : look.enabled ? QColor(Qt::white)
                             : colorOf(TreeListColor::DisabledBackground));
    const QColor ink = !look.enabled ? colorOf(TreeListColor::Line)
                       : look.hot    ? colorOf(TreeListColor::BoxMark)
                                     : QColor(0x20, 0x20, 0x20);
    const int thickness = std::max(1, side / 9) | 1;
    const int from = (side - thickness) / 2;
    const int inset = std::max(2, side * 2 / 9);
    const QRect bar(box.x() + inset, box.y() + from, side - 2 * inset, thickness);
    if (kind == ButtonKind::Neutral) {
        const int dot = thickness + 2 * device.line();
        painter.fillRect(QRect(box.x() + (side - dot) / 2, box.y() + (side - dot) / 2, dot, dot),
                         colorOf(TreeListColor::Line));
        return;
    }
    painter.fillRect(bar, ink);
    if (kind == ButtonKind::Plus) {
        painter.fillRect(QRect(box.x() + from, box.y() + inset, thickness, side - 2 * inset), ink);
    }
}

void CTreeListResource::drawLine(QPainter& painter, const QRect& line, const QColor& color) {
    const DevicePixels device(painter);
    QRect mapped = device.map(line);
    // Of one thickness everywhere, at the end of the cell that it closes.
    if (line.width() == 1) {
        mapped.setLeft(mapped.right() - device.line() + 1);
    } else {
        mapped.setTop(mapped.bottom() - device.line() + 1);
    }
    painter.fillRect(mapped, color);
}

void CTreeListResource::drawSortMark(QPainter& painter, const QRect& cell, bool up) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(colorOf(TreeListColor::Line).darker(130));
    const QPointF centre = QRectF(cell).center();
    const double tip = up ? -2.5 : 2.5;
    painter.drawPolygon(QPolygonF{centre + QPointF(0, tip), centre + QPointF(-4, -tip), centre + QPointF(4, -tip)});
    painter.restore();
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
