// Mouse and keys of the plan.
#include "desk/plan/plan_view.h"

#include "desk/plan/plan_text.h"

#include <QApplication>
#include <QCursor>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QToolTip>
#include <QWheelEvent>

#include <cmath>

namespace fenmark::desk {

namespace {

constexpr double kReachPixels = 6.0;            // a click this close takes an object
constexpr double kSamePlacePixels = 3.0;        // clicks this close are at the same place
constexpr double kWheelNotch = 120.0;           // eighths of a degree of one notch of a wheel
constexpr double kKeyPan = 0.125;               // of the window's smaller side
constexpr std::size_t kMostUnderPointer = 1000; // more objects are a blot that no light would help
constexpr double kSmallestWindow = 4.0;         // pixels: a smaller zoom window is a slip of the hand

double distance(const QPointF& a, const QPointF& b) {
    return std::hypot(a.x() - b.x(), a.y() - b.y());
}

} // namespace

void PlanView::updateCursor() {
    if (drag_ == Drag::Pan) {
        setCursor(Qt::ClosedHandCursor);
    } else if (spaceHeld_) {
        setCursor(Qt::OpenHandCursor);
    } else {
        setCursor(Qt::CrossCursor);
    }
}

// The keys that a tool has a use for are its own; all others move the view as ever.
bool PlanView::toolKey(int key) {
    const bool taken = tool_ != nullptr && tool_->key(key);
    if (taken) {
        update();
    }
    return taken;
}

void PlanView::mousePressEvent(QMouseEvent* event) {
    if (!ready() || drag_ != Drag::None) {
        return;
    }
    const bool left = event->button() == Qt::LeftButton;
    if (!left && event->button() != Qt::MiddleButton) {
        return;
    }
    dragButton_ = event->button();
    dragFrom_ = dragLast_ = event->position();
    if (left && (windowArmed_ || event->modifiers().testFlag(Qt::ShiftModifier))) {
        drag_ = Drag::Window;
    } else if (left && event->modifiers().testFlag(Qt::ControlModifier)) {
        drag_ = Drag::Select;
    } else {
        drag_ = left && !spaceHeld_ ? Drag::Press : Drag::Pan;
    }
    updateCursor();
}

void PlanView::mouseMoveEvent(QMouseEvent* event) {
    const QPointF at = event->position();
    if (!ready()) {
        return;
    }
    if (spaceHeld_ && drag_ == Drag::None && event->buttons() == Qt::NoButton) {
        panPixels(at.x() - dragLast_.x(), at.y() - dragLast_.y());
    }
    if (drag_ == Drag::Press && distance(at, dragFrom_) >= QApplication::startDragDistance()) {
        drag_ = Drag::Pan;
        updateCursor();
    }
    if (drag_ == Drag::Pan) {
        panPixels(at.x() - dragLast_.x(), at.y() - dragLast_.y());
    }
    if (drag_ == Drag::Window || drag_ == Drag::Select) {
        update();
    }
    if (drag_ != Drag::Press) {
        dragLast_ = at;
    }
    if (tool_ != nullptr) {
        tool_->move(at);
        update();
    } else if (event->buttons() == Qt::NoButton && !spaceHeld_) {
        hoverAt(at);
    } else {
        setHovered(std::nullopt);
    }
    emit pointerMoved(view_.toX(at.x()), view_.toY(at.y()));
}

void PlanView::hoverAt(const QPointF& pixel) {
    drawing::Extent around;
    around.add(view_.toX(pixel.x() - kReachPixels), view_.toY(pixel.y() - kReachPixels));
    around.add(view_.toX(pixel.x() + kReachPixels), view_.toY(pixel.y() + kReachPixels));
    if (index_.count(around, kMostUnderPointer) == kMostUnderPointer) {
        setHovered(std::nullopt);
        return;
    }
    const std::vector<PlanObject> objects = objectsAt(*drawing_, index_, view_, look_, pixel, kReachPixels);
    setHovered(objects.empty() ? std::nullopt : std::optional(objects.front()));
}

void PlanView::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != dragButton_ || drag_ == Drag::None) {
        return;
    }
    const Drag was = drag_;
    drag_ = Drag::None;
    dragButton_ = Qt::NoButton;
    if (was == Drag::Press && ready() && tool_ != nullptr) {
        tool_->press(event->position());
        update();
    } else if (was == Drag::Press && ready()) {
        clickAt(event->position(), false);
    }
    if (was == Drag::Select && ready()) {
        if (distance(event->position(), dragFrom_) < QApplication::startDragDistance()) {
            clickAt(event->position(), true);
        } else {
            selectBox(dragFrom_, event->position());
        }
        update();
    }
    if (was == Drag::Window) {
        windowArmed_ = false;
        const QRectF window = QRectF(dragFrom_, event->position()).normalized();
        if (window.width() >= kSmallestWindow && window.height() >= kSmallestWindow) {
            drawing::Extent extent;
            extent.add(view_.toX(window.left()), view_.toY(window.top()));
            extent.add(view_.toX(window.right()), view_.toY(window.bottom()));
            view_.fit(extent);
            viewMoved();
        }
        update();
    }
    updateCursor();
}

void PlanView::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() == Qt::MiddleButton) {
        fitAll();
    } else if (event->button() == Qt::LeftButton && ready() && tool_ != nullptr) {
        tool_->doublePress();
        update();
    } else if (event->button() == Qt::LeftButton && selected_) {
        emit activated();
    }
}

std::optional<PlanObject> PlanView::objectAtPixel(const QPointF& pixel) const {
    if (!ready()) {
        return std::nullopt;
    }
    const std::vector<PlanObject> objects = objectsAt(*drawing_, index_, view_, look_, pixel, kReachPixels);
    return objects.empty() ? std::nullopt : std::optional(objects.front());
}

void PlanView::clickAt(const QPointF& pixel, bool toggles) {
    if (toggles) {
        if (const auto object = objectAtPixel(pixel)) {
            toggle(*object);
        }
        return;
    }
    const std::vector<PlanObject> objects = objectsAt(*drawing_, index_, view_, look_, pixel, kReachPixels);
    const bool again = lastClick_ && distance(*lastClick_, pixel) <= kSamePlacePixels;
    clickRound_ = again ? clickRound_ + 1 : 0;
    lastClick_ = pixel;
    select(objects.empty() ? std::nullopt : std::optional(objects[clickRound_ % objects.size()]));
}

void PlanView::wheelEvent(QWheelEvent* event) {
    if (!ready()) {
        return;
    }
    const double notches = event->angleDelta().y() / kWheelNotch;
    if (notches != 0.0) {
        zoomAt(event->position(), std::pow(kZoomStep, notches));
    }
    lastClick_.reset();
    event->accept();
}

void PlanView::keyPressEvent(QKeyEvent* event) {
    if (!ready()) {
        QWidget::keyPressEvent(event);
        return;
    }
    if (event->matches(QKeySequence::SelectAll)) {
        selectAllShown();
        return;
    }
    if (!windowArmed_ && toolKey(event->key())) {
        return;
    }
    const double step = kKeyPan * std::min(width(), height());
    switch (event->key()) {
    case Qt::Key_Left:
        panPixels(step, 0.0);
        return;
    case Qt::Key_Right:
        panPixels(-step, 0.0);
        return;
    case Qt::Key_Up:
        panPixels(0.0, step);
        return;
    case Qt::Key_Down:
        panPixels(0.0, -step);
        return;
    case Qt::Key_Plus:
    case Qt::Key_Equal:
    case Qt::Key_Semicolon: // the plus of Japanese keyboards without Shift
    case Qt::Key_PageUp:
        zoomIn();
        return;
    case Qt::Key_Minus:
    case Qt::Key_PageDown:
        zoomOut();
        return;
    case Qt::Key_F:
    case Qt::Key_Home:
        fitAll();
        return;
    case Qt::Key_N:
        selectNext(1);
        return;
    case Qt::Key_P:
        selectNext(-1);
        return;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (selected_) {
            bringIntoView(*selected_);
            emit activated();
        } else {
            selectNext(1);
        }
        return;
    case Qt::Key_Escape:
        windowArmed_ = false;
        drag_ = Drag::None;
        updateCursor();
        select(std::nullopt);
        update();
        return;
    case Qt::Key_Space:
        if (!event->isAutoRepeat()) {
            spaceHeld_ = true;
            dragLast_ = mapFromGlobal(QCursor::pos());
            updateCursor();
        }
        return;
    default:
        QWidget::keyPressEvent(event);
    }
}

void PlanView::keyReleaseEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Space && !event->isAutoRepeat()) {
        spaceHeld_ = false;
        updateCursor();
        return;
    }
    QWidget::keyReleaseEvent(event);
}

// Tab goes from object to object while there is a further one in view, and then on to the next control.
bool PlanView::focusNextPrevChild(bool next) {
    if (stepSelection(next ? 1 : -1, false)) {
        return true;
    }
    return QWidget::focusNextPrevChild(next);
}

bool PlanView::event(QEvent* event) {
    if (event->type() == QEvent::WindowDeactivate || event->type() == QEvent::FocusOut) {
        spaceHeld_ = false;
        updateCursor();
    }
    if (event->type() == QEvent::ToolTip) {
        const auto* help = static_cast<QHelpEvent*>(event);
        if (ready() && hovered_ && describe_) {
            QToolTip::showText(help->globalPos(), asWritten(describe_(*hovered_)), this, pixelsAround(*hovered_));
        } else {
            QToolTip::hideText();
        }
        return true;
    }
    return QWidget::event(event);
}

void PlanView::leaveEvent(QEvent*) {
    if (ready()) {
        setHovered(std::nullopt);
        if (tool_ != nullptr) {
            tool_->leave();
            update();
        }
    }
    emit pointerLeft();
}

void PlanView::changeEvent(QEvent* event) {
    if (event->type() == QEvent::FontChange || event->type() == QEvent::PaletteChange) {
        dirty_ = true;
        update();
    }
    QWidget::changeEvent(event);
}

} // namespace fenmark::desk
