// What the longitudinal section and the cross-sections have in common.
#include "desk/sections/section_view.h"

#include "desk/window/properties.h"
#include "exchange/plan/plan_geometry.h"
#include "exchange/round_stations.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPalette>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace fenmark::desk {

namespace {

constexpr double kTop = 26.0;         // pixels above the graph, for the line of what is pointed at
constexpr double kRight = 14.0;       // beside it
constexpr double kSide = 12.0;        // within it
constexpr double kRowHeight = 60.0;   // of the band
constexpr double kWheelNotch = 120.0; // eighths of a degree
constexpr double kZoomStep = 1.25;
constexpr double kReach = 12.0;        // pixels from a result along the section
constexpr double kHeightTexts = 24.0;  // pixels between two of them
constexpr int kDarkBelow = 128;        // lightness of a palette's base
constexpr double kClickReach = 4.0;    // pixels: a press that moves less is a click
constexpr double kLargestScale = 4000; // pixels for each metre

} // namespace

SectionView::SectionView(SectionModel& model, const Texts& texts, QWidget* parent)
    : QWidget(parent), model_(model), texts_(texts) {
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
}

SectionView::Inks SectionView::inks() const {
    const QColor paper = palette().color(QPalette::Base);
    const QColor ink = palette().color(QPalette::Text);
    const bool dark = paper.lightness() < kDarkBelow;
    QColor faint = ink;
    faint.setAlphaF(0.25F);
    if (dark) {
        return {paper,
                ink,
                faint,
                QColor(0x81, 0xc7, 0x84),
                QColor(0x82, 0xb1, 0xff),
                QColor(0xff, 0x8a, 0x80),
                QColor(0xff, 0xb7, 0x4d)};
    }
    return {paper,
            ink,
            faint,
            QColor(0x1b, 0x5e, 0x20),
            QColor(0x0d, 0x47, 0xa1),
            QColor(0xb7, 0x1c, 0x1c),
            QColor(0xbf, 0x36, 0x0c)};
}

double SectionView::bandRowHeight(int) const {
    return kRowHeight;
}

void SectionView::setExaggeration(double times) {
    exaggeration_ = times;
    layOut(true);
}

void SectionView::fitAll() {
    fitted_ = true;
    layOut(false);
}

void SectionView::layOut(bool keepPlace) {
    double band = 0.0;
    for (int row = 0; row < bandRows(); ++row) {
        band += bandRowHeight(row);
    }
    frame_.left = fontMetrics().horizontalAdvance(QStringLiteral("追加距離 ")) + 58.0;
    frame_.right = std::max(frame_.left + 10.0, width() - kRight);
    frame_.top = kTop;
    frame_.bottom = std::max(frame_.top + 10.0, height() - band - 4.0);
    hovered_.reset();
    pointed_.clear();
    if (!isEmpty()) {
        const Range all = range();
        if (fitted_ || !keepPlace) {
            const double room = std::max(1.0, frame_.right - frame_.left - 2.0 * kSide);
            frame_.scale = room / std::max(all.to - all.from, 1.0);
            frame_.from = (all.from + all.to) / 2.0 - (frame_.right - frame_.left) / 2.0 / frame_.scale;
        }
        fitHeights(frame_, all.low, all.high, exaggeration_);
    }
    update();
}

void SectionView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const Inks colours = inks();
    painter.fillRect(rect(), colours.paper);
    painter.setPen(colours.ink);
    if (isEmpty()) {
        painter.drawText(rect(), static_cast<int>(Qt::AlignCenter) | Qt::TextWordWrap, workText(texts_, emptyText()));
    } else {
        painter.setRenderHint(QPainter::Antialiasing);
        paintSection(painter);
        if (hovered_) {
            const QPointF at = pixelOf(*hovered_);
            painter.setPen(QPen(colours.marked, 1.0, Qt::DotLine));
            painter.drawLine(QPointF(at.x(), frame_.top), QPointF(at.x(), height()));
            painter.setBrush(colours.marked);
            painter.drawEllipse(at, 4.0, 4.0);
        }
        painter.setPen(colours.ink);
        const QString line =
            pointed_.isEmpty() ? QStringLiteral("×%1").arg(frame_.exaggeration(), 0, 'g', 3) : pointed_;
        painter.drawText(QRectF(frame_.left, 2.0, frame_.right - frame_.left, kTop - 6.0),
                         static_cast<int>(Qt::AlignRight | Qt::AlignVCenter), line);
    }
    if (hasFocus()) {
        painter.setRenderHint(QPainter::Antialiasing, false);
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(palette().color(QPalette::Highlight), 2.0));
        painter.drawRect(rect().adjusted(1, 1, -1, -1));
    }
}

void SectionView::paintHeights(QPainter& painter, const Inks& colours) const {
    const double step = exchange::roundStep(kHeightTexts / frame_.rise);
    const int decimals = step < 1.0 ? 1 + static_cast<int>(step < 0.1) : 0;
    const double first = std::ceil(frame_.base / step);
    const double last = std::floor(frame_.heightAt(frame_.top) / step);
    for (double i = first; i <= last && exchange::canBeCounted(first, last); i += 1.0) {
        const double y = frame_.y(i * step);
        painter.setPen(QPen(colours.faint, 1.0));
        painter.drawLine(QPointF(frame_.left, y), QPointF(frame_.right, y));
        painter.setPen(colours.ink);
        painter.drawText(QRectF(0.0, y - 10.0, frame_.left - 6.0, 20.0),
                         static_cast<int>(Qt::AlignRight | Qt::AlignVCenter), QString::number(i * step, 'f', decimals));
    }
    painter.setPen(QPen(colours.ink, 1.0));
    painter.drawLine(QPointF(frame_.left, frame_.top), QPointF(frame_.left, frame_.bottom));
    painter.drawLine(QPointF(frame_.left, frame_.bottom), QPointF(frame_.right, frame_.bottom));
}

void SectionView::paintUpright(QPainter& painter, const QPointF& foot, const QString& text) {
    painter.save();
    painter.translate(foot);
    painter.rotate(-90.0);
    painter.drawText(QPointF(0.0, painter.fontMetrics().ascent() / 2.0 - 1.0), text);
    painter.restore();
}

void SectionView::resizeEvent(QResizeEvent*) {
    layOut(true);
}

void SectionView::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && !isEmpty()) {
        pressed_ = last_ = event->position();
        dragged_ = false;
    }
}

void SectionView::mouseMoveEvent(QMouseEvent* event) {
    if (isEmpty()) {
        return;
    }
    const QPointF at = event->position();
    if (pressed_) {
        dragged_ = dragged_ || std::abs(at.x() - pressed_->x()) > kClickReach;
        if (dragged_) {
            frame_.from -= (at.x() - last_.x()) / frame_.scale;
            fitted_ = false;
        }
        last_ = at;
        update();
        return;
    }
    const auto found = nearest(at);
    hovered_ = found && std::abs(pixelOf(*found).x() - at.x()) <= kReach ? found : std::nullopt;
    pointed_ = hovered_ ? describe(*hovered_) : QString();
    update();
}

void SectionView::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || !pressed_) {
        return;
    }
    pressed_.reset();
    if (!dragged_ && !isEmpty()) {
        if (const auto found = nearest(event->position())) {
            choose(*found);
        }
    }
}

void SectionView::wheelEvent(QWheelEvent* event) {
    if (isEmpty()) {
        return;
    }
    const double along = frame_.alongAt(event->position().x());
    const double factor = std::pow(kZoomStep, event->angleDelta().y() / kWheelNotch);
    frame_.scale = std::clamp(frame_.scale * factor, 1e-6, kLargestScale);
    frame_.from = along - (event->position().x() - frame_.left) / frame_.scale;
    fitted_ = false;
    layOut(true);
    event->accept();
}

void SectionView::keyPressEvent(QKeyEvent* event) {
    const double middle = frame_.alongAt((frame_.left + frame_.right) / 2.0);
    const double width = (frame_.right - frame_.left) / frame_.scale;
    double factor = 1.0;
    switch (event->key()) {
    case Qt::Key_Left:
    case Qt::Key_Right:
        frame_.from += (event->key() == Qt::Key_Left ? -0.125 : 0.125) * width;
        fitted_ = false;
        update();
        return;
    case Qt::Key_Plus:
    case Qt::Key_Equal:
    case Qt::Key_Semicolon: // the plus of Japanese keyboards without Shift
        factor = kZoomStep;
        break;
    case Qt::Key_Minus:
        factor = 1.0 / kZoomStep;
        break;
    case Qt::Key_F:
    case Qt::Key_Home:
        fitAll();
        return;
    case Qt::Key_N:
    case Qt::Key_PageDown:
        step(1);
        return;
    case Qt::Key_P:
    case Qt::Key_PageUp:
        step(-1);
        return;
    default:
        QWidget::keyPressEvent(event);
        return;
    }
    frame_.scale = std::clamp(frame_.scale * factor, 1e-6, kLargestScale);
    frame_.from = middle - (frame_.right - frame_.left) / 2.0 / frame_.scale;
    fitted_ = false;
    layOut(true);
}

void SectionView::leaveEvent(QEvent*) {
    hovered_.reset();
    pointed_.clear();
    update();
}

} // namespace fenmark::desk
