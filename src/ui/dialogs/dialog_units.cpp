// Dialog units of a font.
#include "ui/dialogs/dialog_units.h"

#include <QFontMetricsF>
#include <QString>
#include <QStringList>

#include <cmath>

namespace fenmark::ui {

QFont dialogFont() {
    QFont font;
    // The toolkit keeps these names for the life of the program. They are made on the heap, since literals would go
    // with the library that holds them when a module with these dialogs is unloaded.
    font.setFamilies({QString::fromLatin1("MS UI Gothic"), QString::fromLatin1("Yu Gothic UI"),
                      QString::fromLatin1("Noto Sans CJK JP"), QString::fromLatin1("IPAPGothic"),
                      QString::fromLatin1("IPAGothic"), QString::fromLatin1("TakaoPGothic"),
                      QString::fromLatin1("sans-serif")});
    font.setPointSize(8);
    return font;
}

DialogUnits::DialogUnits(const QFont& font) {
    const QFontMetricsF metrics(font);
    const QString letters = QStringLiteral("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz");
    averageWidth_ = metrics.horizontalAdvance(letters) / static_cast<double>(letters.size());
    height_ = metrics.height();
}

int DialogUnits::x(int units) const {
    return static_cast<int>(std::lround(units * averageWidth_ / 4.0));
}

int DialogUnits::y(int units) const {
    return static_cast<int>(std::lround(units * height_ / 8.0));
}

QRect DialogUnits::rect(int left, int top, int width, int height) const {
    return {x(left), y(top), x(width), y(height)};
}

void place(QWidget* widget, const DialogUnits& units, int x, int y, int width, int height) {
    widget->setGeometry(units.rect(x, y, width, height));
}

void setControlId(QWidget* widget, int id) {
    widget->setObjectName(QStringLiteral("id%1").arg(id));
}

} // namespace fenmark::ui
