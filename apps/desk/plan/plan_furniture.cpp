// What stands on every plan.
#include "desk/plan/plan_furniture.h"

#include "desk/plan/plan_style.h"
#include "desk/plan/plan_text.h"

#include <QPainterPath>

#include <cmath>

namespace fenmark::desk {

namespace {

constexpr double kMargin = 22.0;        // pixels from the window's edge
constexpr double kScaleBarPixels = 160; // at most
constexpr double kArrow = 44.0;         // height of the north arrow

QString lengthText(double metres) {
    if (metres >= 1000.0) {
        return QStringLiteral("%1 km").arg(metres / 1000.0, 0, 'g', 6);
    }
    if (metres >= 1.0) {
        return QStringLiteral("%1 m").arg(metres, 0, 'g', 6);
    }
    return QStringLiteral("%1 mm").arg(metres * 1000.0, 0, 'g', 6);
}

void paintNorth(QPainter& painter, const QPointF& foot, const QFont& font) {
    QPainterPath left;
    left.moveTo(foot.x(), foot.y() - kArrow);
    left.lineTo(foot.x() - 8.0, foot.y());
    left.lineTo(foot.x(), foot.y() - 8.0);
    left.closeSubpath();
    QPainterPath right;
    right.moveTo(foot.x(), foot.y() - kArrow);
    right.lineTo(foot.x() + 8.0, foot.y());
    right.lineTo(foot.x(), foot.y() - 8.0);
    right.closeSubpath();
    painter.setPen(QPen(kInk, 1.0));
    painter.setBrush(Qt::NoBrush);
    painter.fillPath(left, kInk);
    painter.fillPath(right, kPaper);
    painter.drawPath(left);
    painter.drawPath(right);
    QFont bold = font;
    bold.setBold(true);
    painter.setFont(bold);
    const double width = painter.fontMetrics().horizontalAdvance(QLatin1Char('N'));
    drawText(painter, QPointF(foot.x() - width / 2.0, foot.y() - kArrow - 4.0), QStringLiteral("N"), kInk);
}

} // namespace

namespace {

// Patches of paper below the arrow and the bar.
QRectF northPatch(const ViewTransform& view) {
    return {view.size().width() - kMargin - 24.0, kMargin - 12.0, 32.0, kArrow + 28.0};
}

QRectF barOf(const ViewTransform& view) {
    const double width = scaleBarMetres(view, kScaleBarPixels) * view.pixelsPerMetre();
    return {view.size().width() - kMargin - width, view.size().height() - kMargin, width, 5.0};
}

QRectF barPatch(const ViewTransform& view, const QFont& font) {
    return barOf(view).adjusted(-8, -QFontMetricsF(font).height() - 8.0, 8, 6);
}

// A line of text of that width, above the bar.
QRectF notePatch(const QSizeF& view, const QFont& font, double width) {
    const double line = QFontMetricsF(font).height();
    return {view.width() - kMargin - width - 4.0, view.height() - kMargin - 2.0 * line - 12.0, width + 8.0, line};
}

} // namespace

std::vector<QRectF> furniturePlaces(const ViewTransform& view, const QFont& font) {
    constexpr double kNoteWidth = 280.0; // of most notes
    return {northPatch(view), barPatch(view, font), notePatch(view.size(), font, kNoteWidth)};
}

double scaleBarMetres(const ViewTransform& view, double pixels) {
    const double longest = pixels * view.metresPerPixel();
    const double power = std::pow(10.0, std::floor(std::log10(longest)));
    for (const double step : {5.0, 2.0}) {
        if (step * power <= longest) {
            return step * power;
        }
    }
    return power;
}

void paintFurniture(QPainter& painter, const ViewTransform& view, const QFont& font) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    QColor patch = kPaper;
    patch.setAlphaF(0.88F);
    painter.fillRect(northPatch(view), patch);
    paintNorth(painter, QPointF(view.size().width() - kMargin - 8.0, kMargin + kArrow + 10.0), font);

    const QRectF bar = barOf(view);
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.fillRect(barPatch(view, font), patch);
    painter.setPen(QPen(kInk, 1.0));
    painter.setBrush(kPaper);
    painter.drawRect(bar);
    painter.fillRect(QRectF(bar.left(), bar.top(), bar.width() / 2.0, bar.height()), kInk);
    painter.setFont(font);
    const QString text = lengthText(scaleBarMetres(view, kScaleBarPixels));
    drawText(painter, QPointF(bar.right() - painter.fontMetrics().horizontalAdvance(text), bar.top() - 6.0), text,
             kInk);
    drawText(painter, QPointF(bar.left(), bar.top() - 6.0), QStringLiteral("0"), kInk);
    painter.restore();
}

void paintHint(QPainter& painter, const QRect& in, const QString& large, const QString& small, const QFont& font) {
    painter.save();
    QFont big = font;
    big.setPointSizeF(font.pointSizeF() * 1.6);
    painter.setFont(big);
    painter.setPen(kFaintInk);
    painter.drawText(in.adjusted(0, 0, 0, -in.height() / 8), static_cast<int>(Qt::AlignCenter), large);
    painter.setFont(font);
    painter.drawText(in.adjusted(0, in.height() / 6, 0, 0), static_cast<int>(Qt::AlignCenter), small);
    painter.restore();
}

void paintNote(QPainter& painter, const QRect& in, const QString& text, const QFont& font) {
    painter.save();
    painter.setFont(font);
    const QFontMetricsF metrics(font);
    const QRectF place = notePatch(in.size(), font, metrics.horizontalAdvance(text));
    QColor patch = kPaper;
    patch.setAlphaF(0.88F);
    painter.fillRect(place, patch);
    painter.setPen(kFaintInk);
    painter.drawText(place.topLeft() + QPointF(4.0, metrics.ascent()), text);
    painter.restore();
}

void paintZoomWindow(QPainter& painter, const QRectF& window) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setPen(QPen(kClothoid, 1.0, Qt::DashLine));
    QColor fill = kClothoid;
    fill.setAlphaF(0.08F);
    painter.setBrush(fill);
    painter.drawRect(window);
    painter.restore();
}

void paintFocus(QPainter& painter, const QRect& in, const QColor& colour) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(colour, 2.0));
    painter.drawRect(in.adjusted(1, 1, -1, -1));
    painter.restore();
}

} // namespace fenmark::desk
