// What takes the pointer and some keys of the plan while it is in use, and paints on top of it.
#pragma once

#include "desk/plan/view_transform.h"

#include <QPainter>
#include <QPointF>

namespace fenmark::desk {

class PlanTool {
  public:
    virtual ~PlanTool() = default;

    virtual void press(const QPointF& pixel) = 0; // a click that was no drag
    virtual void move(const QPointF& pixel) = 0;
    virtual void leave() = 0;        // the pointer has left the plan
    virtual bool key(int qtKey) = 0; // false for a key that the tool has no use for
    virtual void doublePress() = 0;  // behind the two presses at one place
    virtual void paint(QPainter& painter, const ViewTransform& view, const QFont& font) const = 0;
};

} // namespace fenmark::desk
