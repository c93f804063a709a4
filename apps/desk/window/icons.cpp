// The pictures of the tool bar, drawn in lines so that they fit every screen and theme.
#include "desk/window/icons.h"

#include <QPainter>
#include <QPainterPath>
#include <QPixmap>

namespace fenmark::desk {

namespace {

// All are drawn on a square of 24 units.
void drawLens(QPainter& painter) {
    painter.drawEllipse(QPointF(10.5, 10.5), 6.5, 6.5);
    painter.drawLine(QPointF(15.3, 15.3), QPointF(21, 21));
}

// An arrow that turns back to the left.
void drawTurn(QPainter& painter) {
    QPainterPath path;
    path.moveTo(5, 10);
    path.cubicTo(10, 4, 21, 7, 20, 18);
    painter.drawPath(path);
    painter.drawPolyline(QPolygonF({{5, 4}, {5, 10}, {11, 10}}));
}

void drawSheet(QPainter& painter) {
    painter.drawPolygon(QPolygonF({{6, 3}, {14, 3}, {18, 7}, {18, 21}, {6, 21}}));
    painter.drawPolyline(QPolygonF({{14, 3}, {14, 7}, {18, 7}}));
}

void draw(QPainter& painter, Picture picture, const QColor& accent) {
    const QPen ink = painter.pen();
    QPen coloured = ink;
    coloured.setColor(accent);
    switch (picture) {
    case Picture::New:
        drawSheet(painter);
        break;
    case Picture::Open:
        painter.drawPolygon(QPolygonF({{3, 19}, {3, 6}, {9, 6}, {11, 8}, {19, 8}, {19, 11}, {7, 11}}));
        painter.drawPolygon(QPolygonF({{3, 19}, {7, 11}, {22, 11}, {18, 19}}));
        break;
    case Picture::Save:
        painter.drawPolygon(QPolygonF({{4, 4}, {17, 4}, {20, 7}, {20, 20}, {4, 20}}));
        painter.drawRect(QRectF(8, 4, 8, 5));
        painter.drawRect(QRectF(7, 13, 10, 7));
        break;
    case Picture::Import: {
        painter.drawPolyline(QPolygonF({{4, 14}, {4, 20}, {20, 20}, {20, 14}}));
        painter.setPen(coloured);
        painter.drawLine(QPointF(12, 3), QPointF(12, 15));
        painter.drawPolyline(QPolygonF({{7.5, 10.5}, {12, 15}, {16.5, 10.5}}));
        break;
    }
    case Picture::Undo:
        drawTurn(painter);
        break;
    case Picture::Redo:
        painter.translate(24, 0);
        painter.scale(-1, 1);
        drawTurn(painter);
        break;
    case Picture::Find:
        drawLens(painter);
        painter.setPen(coloured);
        painter.drawPolyline(QPolygonF({{8, 13}, {10.5, 7.5}, {13, 13}}));
        painter.drawLine(QPointF(9, 11.2), QPointF(12, 11.2));
        break;
    case Picture::Fit:
        for (const QPointF& corner : {QPointF(4, 4), QPointF(20, 4), QPointF(20, 20), QPointF(4, 20)}) {
            const double dx = corner.x() < 12 ? 5 : -5;
            const double dy = corner.y() < 12 ? 5 : -5;
            painter.drawPolyline(QPolygonF({corner + QPointF(dx, 0), corner, corner + QPointF(0, dy)}));
        }
        painter.setPen(coloured);
        painter.drawRect(QRectF(9, 9, 6, 6));
        break;
    case Picture::ZoomIn:
    case Picture::ZoomOut:
        drawLens(painter);
        painter.setPen(coloured);
        painter.drawLine(QPointF(7.5, 10.5), QPointF(13.5, 10.5));
        if (picture == Picture::ZoomIn) {
            painter.drawLine(QPointF(10.5, 7.5), QPointF(10.5, 13.5));
        }
        break;
    case Picture::ZoomWindow:
        drawLens(painter);
        painter.setPen(coloured);
        painter.drawRect(QRectF(7.5, 8, 6, 5));
        break;
    case Picture::Program: {
        painter.setPen(QPen(accent, 2.6, Qt::SolidLine, Qt::RoundCap));
        QPainterPath path;
        path.moveTo(3, 20);
        path.cubicTo(10, 18, 8, 6, 21, 4);
        painter.drawPath(path);
        painter.setPen(ink);
        painter.setBrush(Qt::white);
        for (const QPointF& at : {QPointF(3.5, 19.8), QPointF(10.2, 11.8), QPointF(20.5, 4.2)}) {
            painter.drawEllipse(at, 2.0, 2.0);
        }
        break;
    }
    }
}

} // namespace

QIcon icon(Picture picture, const QColor& ink) {
    QIcon icon;
    for (const int size : {16, 24, 32, 48}) {
        QPixmap pixmap(size, size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.scale(size / 24.0, size / 24.0);
        painter.setPen(QPen(ink, 1.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        draw(painter, picture, QColor(0x1f, 0x6f, 0xd6));
        painter.end();
        icon.addPixmap(pixmap);
    }
    return icon;
}

} // namespace fenmark::desk
