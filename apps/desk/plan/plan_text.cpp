// Names on the plan.
#include "desk/plan/plan_text.h"

#include "desk/plan/plan_style.h"

#include <cmath>

namespace fenmark::desk {

namespace {

constexpr double kStakeDistance = 20.0;   // metres
constexpr double kStakeRounding = 0.0005; // metres: what the three decimals cannot show

} // namespace

QString fromUtf8(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

void drawText(QPainter& painter, const QPointF& at, const QString& text, const QColor& colour) {
    painter.setPen(kPaper);
    for (const QPointF& shift : {QPointF(-1, 0), QPointF(1, 0), QPointF(0, -1), QPointF(0, 1)}) {
        painter.drawText(at + shift, text);
    }
    painter.setPen(colour);
    painter.drawText(at, text);
}

QString stakeName(double station) {
    const double number = std::floor((station + kStakeRounding) / kStakeDistance);
    const double rest = station - number * kStakeDistance;
    QString name = QStringLiteral("No.%1").arg(number, 0, 'f', 0);
    if (rest >= kStakeRounding) {
        name += QStringLiteral("+%1").arg(rest, 0, 'f', 3);
    }
    return name;
}

LabelRoom::LabelRoom(const QSizeF& view)
    : columns_(static_cast<int>(view.width() / kCell) + 1), rows_(static_cast<int>(view.height() / kCell) + 1),
      taken_(static_cast<std::size_t>(columns_) * static_cast<std::size_t>(rows_), 0) {}

bool LabelRoom::take(const QRectF& place) {
    const int left = static_cast<int>(std::floor(place.left() / kCell));
    const int right = static_cast<int>(std::floor(place.right() / kCell));
    const int top = static_cast<int>(std::floor(place.top() / kCell));
    const int bottom = static_cast<int>(std::floor(place.bottom() / kCell));
    if (left < 0 || top < 0 || right >= columns_ || bottom >= rows_) {
        return false;
    }
    auto cell = [this](int column, int row) -> std::uint8_t& {
        return taken_[static_cast<std::size_t>(row) * static_cast<std::size_t>(columns_) +
                      static_cast<std::size_t>(column)];
    };
    for (int row = top; row <= bottom; ++row) {
        for (int column = left; column <= right; ++column) {
            if (cell(column, row) != 0) {
                return false;
            }
        }
    }
    for (int row = top; row <= bottom; ++row) {
        for (int column = left; column <= right; ++column) {
            cell(column, row) = 1;
        }
    }
    return true;
}

} // namespace fenmark::desk
