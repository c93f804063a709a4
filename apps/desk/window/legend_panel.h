// What the colours of the plan mean: a sample for each kind of object that the drawing holds, with their number.
#pragma once

#include "desk/language/texts.h"
#include "desk/plan/plan_style.h"
#include "drawing/drawing.h"

#include <QListWidget>

namespace fenmark::desk {

class LegendPanel : public QListWidget {
    Q_OBJECT

  public:
    explicit LegendPanel(const Texts& texts, QWidget* parent = nullptr);

    // The entities were counted already; elements are counted here.
    void fill(const StyleCounts& entities, const drawing::Drawing& drawing);

  private:
    void addKind(const QIcon& sample, Text name, std::size_t count);

    const Texts& texts_;
};

} // namespace fenmark::desk
