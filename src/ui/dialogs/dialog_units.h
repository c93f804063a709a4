// Dialog units of a font: a quarter of its average character width across, an eighth of its height down.
#pragma once

#include <QFont>
#include <QRect>
#include <QWidget>

namespace fenmark::ui {

// The font that the dialogs ask for: 8 points, the first Japanese face that the system has.
QFont dialogFont();

class DialogUnits {
  public:
    explicit DialogUnits(const QFont& font);

    int x(int units) const; // pixels, rounded to the nearest
    int y(int units) const;
    QRect rect(int x, int y, int width, int height) const;

  private:
    double averageWidth_;
    double height_;
};

// Gives the widget its identifier (object name "id<number>") and its place in dialog units.
void place(QWidget* widget, const DialogUnits& units, int x, int y, int width, int height);
void setControlId(QWidget* widget, int id);

} // namespace fenmark::ui
