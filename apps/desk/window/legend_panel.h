// What the colours of the plan mean: a sample for each kind of object that the drawing holds, with their number and a
// box each: ticked kinds are shown.
#pragma once

#include "desk/language/texts.h"
#include "desk/plan/plan_style.h"
#include "drawing/drawing.h"

#include <QListWidget>

#include <array>

namespace fenmark::desk {

class LegendPanel : public QListWidget {
    Q_OBJECT

  public:
    explicit LegendPanel(const Texts& texts, QWidget* parent = nullptr);

    // The entities were counted already; elements are counted here.
    void fill(const StyleCounts& entities, const drawing::Drawing& drawing);

    // Kinds keep their ticks while drawings come and go.
    const std::array<bool, kFigureStyles>& hiddenStyles() const { return hiddenStyles_; }
    const std::array<bool, kElementTypes>& hiddenElements() const { return hiddenElements_; }
    void showAll();
    // Ticks the kind of that row alone.
    void showOnly(int row);
    // Ticks the kind of the object, so that it can be seen.
    void showKind(FigureStyle style);
    void showElements();
    void showOnly(FigureStyle style);

  signals:
    void shownChanged();

  private:
    void addKind(const QIcon& sample, Text name, std::size_t count, bool element, std::size_t kind);
    bool& hiddenOf(const QListWidgetItem& item);
    void ticksToRows();

    const Texts& texts_;
    std::array<bool, kFigureStyles> hiddenStyles_{};
    std::array<bool, kElementTypes> hiddenElements_{};
    bool filling_ = false;
};

} // namespace fenmark::desk
