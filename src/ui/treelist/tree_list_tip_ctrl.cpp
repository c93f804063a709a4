// The tip for cut texts.
#include "ui/treelist/tree_list_tip_ctrl.h"

#include <algorithm>

#include <QGuiApplication>
#include <QPainter>
#include <QScreen>
#include <QTimerEvent>

#include "ui/treelist/tree_list_ctrl.h"
#include "ui/treelist/tree_list_resource.h"

namespace fenmark::ui::treelist {

namespace {

constexpr int kRestTime = 400; // ms before the tip appears
constexpr int kFadeTime = 25;  // ms of one step
constexpr int kFadeSteps = 6;
constexpr int kTipMargin = 4; // pixels around the text

} // namespace

CTreeListTipCtrl::CTreeListTipCtrl(CTreeListCtrl& control)
    : QWidget(&control,
              Qt::ToolTip | Qt::FramelessWindowHint | Qt::WindowTransparentForInput | Qt::WindowDoesNotAcceptFocus),
      control_(control) {
    setObjectName(QString::fromLatin1(kWindowClass));
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_ShowWithoutActivating);
    hide();
}

void CTreeListTipCtrl::offer(const QString& text, const QRect& cell, const QPoint& point) {
    point_ = point;
    if (text == text_ && cell == cell_ && (isVisible() || restTimer_.isActive())) {
        return;
    }
    text_ = text;
    cell_ = cell;
    hide();
    fadeTimer_.stop();
    restTimer_.start(kRestTime, this);
}

void CTreeListTipCtrl::leave() {
    restTimer_.stop();
    if (isVisible() && direction_ >= 0) {
        direction_ = -1;
        fadeTimer_.start(kFadeTime, this);
    } else if (!isVisible()) {
        text_.clear();
    }
}

void CTreeListTipCtrl::appear() {
    setFont(control_.font());
    const QFontMetrics metrics(font());
    const QSize size(metrics.horizontalAdvance(text_) + 2 * kTipMargin, std::max(cell_.height(), metrics.height() + 2));
    // The text stands where it stands in its cell, unless the screen ends before it does.
    QPoint place = control_.viewport()->mapToGlobal(cell_.topLeft()) - QPoint(kTipMargin - 2, 0);
    place.setY(place.y() - (size.height() - cell_.height()) / 2);
    if (const QScreen* screen = QGuiApplication::screenAt(control_.viewport()->mapToGlobal(point_))) {
        const QRect area = screen->availableGeometry();
        place.setX(std::max(area.left(), std::min(place.x(), area.right() - size.width())));
    }
    setGeometry(QRect(place, size));
    step_ = 1;
    direction_ = 1;
    setWindowOpacity(1.0 / kFadeSteps);
    show();
    fadeTimer_.start(kFadeTime, this);
}

void CTreeListTipCtrl::timerEvent(QTimerEvent* event) {
    if (event->timerId() == restTimer_.timerId()) {
        restTimer_.stop();
        appear();
        return;
    }
    step_ += direction_;
    if (step_ <= 0) {
        fadeTimer_.stop();
        direction_ = 0;
        text_.clear();
        hide();
        return;
    }
    setWindowOpacity(std::min(1.0, static_cast<double>(step_) / kFadeSteps));
    if (step_ >= kFadeSteps) {
        step_ = kFadeSteps;
        direction_ = 0;
        fadeTimer_.stop();
    }
}

void CTreeListTipCtrl::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), colorOf(TreeListColor::Line));
    painter.fillRect(rect().adjusted(1, 1, -1, -1), colorOf(TreeListColor::Background));
    painter.setPen(Qt::black);
    painter.drawText(rect().adjusted(kTipMargin, 0, -kTipMargin, 0),
                     Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, text_);
}

} // namespace fenmark::ui::treelist
