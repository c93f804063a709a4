// The pointer of the mouse for tests of windows.
#pragma once

#include <QApplication>
#include <QMouseEvent>
#include <QWidget>

namespace fenmark::test {

// Moves the pointer over a widget without a button held. The toolkit's own test helper moves the real pointer of the
// display instead, whose event comes when the display sends it, and not at all outside of its screen.
inline void hover(QWidget* widget, const QPoint& point) {
    QMouseEvent event(QEvent::MouseMove, QPointF(point), widget->mapToGlobal(QPointF(point)), Qt::NoButton,
                      Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(widget, &event);
}

} // namespace fenmark::test
