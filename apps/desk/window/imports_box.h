// The imports of the drawing to choose from, the last one first.
#pragma once

#include "desk/language/texts.h"
#include "drawing/drawing.h"

#include <QComboBox>

namespace fenmark::desk {

class ImportsBox : public QComboBox {
    Q_OBJECT

  public:
    explicit ImportsBox(const Texts& texts, QWidget* parent = nullptr);

    // Chooses the last import. The box hides while there is nothing to choose among.
    void fill(const drawing::Drawing& drawing);
    // Of the drawing that the box was filled from; null if it has none.
    const drawing::Import* import(const drawing::Drawing& drawing) const;

  signals:
    void chosen();

  private:
    const Texts& texts_;
};

} // namespace fenmark::desk
