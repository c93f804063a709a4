#include "ui/dialogs/dialog_units.h"

#include <QFontMetricsF>
#include <QString>
#include <QStringList>

#include <cmath>

namespace fenmark::ui {

QFont dialogFont() {
    QFont font;
    font.setFamilies({QStringLiteral("MS UI Gothic"), QStringLiteral("Yu Gothic UI"),
                      QStringLiteral("Noto Sans CJK JP"), QStringLiteral("IPAPGothic"), QStringLiteral("IPAGothic"),
                      QStringLiteral("TakaoPGothic"), QStringLiteral("sans-serif")});
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
