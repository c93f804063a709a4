// Names on the plan.
#include "desk/plan/plan_text.h"

#include "desk/plan/plan_style.h"
#include "exchange/survey_text.h"

#include <QTextDocument>

#include <algorithm>
#include <cmath>

namespace fenmark::desk {

QString fromUtf8(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QString shownName(std::string_view name) {
    constexpr qsizetype kMost = 500; // characters
    QString text = fromUtf8(name);
    if (text.size() > kMost) {
        text.truncate(text.at(kMost - 1).isHighSurrogate() ? kMost - 1 : kMost);
        text += QChar(0x2026);
    }
    return text;
}

QString asWritten(const QString& text) {
    return Qt::mightBeRichText(text) ? Qt::convertFromPlainText(text) : text;
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
    return fromUtf8(exchange::StationNames{}(station));
}

LabelRoom::LabelRoom(const QSizeF& view)
    : columns_(std::max(1, static_cast<int>(view.width() / kCell))), // whole cells: a name ends within the view
      rows_(std::max(1, static_cast<int>(view.height() / kCell))),
      taken_(static_cast<std::size_t>(columns_) * static_cast<std::size_t>(rows_), 0) {}

void LabelRoom::block(const QRectF& place) {
    const int left = std::max(0, static_cast<int>(std::floor(std::max(place.left(), -kCell) / kCell)));
    const int right = std::min(columns_ - 1, static_cast<int>(std::floor(std::min(place.right(), 1e6) / kCell)));
    const int top = std::max(0, static_cast<int>(std::floor(std::max(place.top(), -kCell) / kCell)));
    const int bottom = std::min(rows_ - 1, static_cast<int>(std::floor(std::min(place.bottom(), 1e6) / kCell)));
    for (int row = top; row <= bottom; ++row) {
        for (int column = left; column <= right; ++column) {
            taken_[static_cast<std::size_t>(row) * static_cast<std::size_t>(columns_) +
                   static_cast<std::size_t>(column)] = 1;
        }
    }
}

// Ends of a clipped line lie near the view, so that the steps are few.
void LabelRoom::blockLine(const QPointF& from, const QPointF& to) {
    constexpr double kMostSteps = 4096.0;
    const QPointF way = to - from;
    const double steps = std::min(kMostSteps, std::ceil(2.0 * std::hypot(way.x(), way.y()) / kCell) + 1.0);
    for (double step = 0.0; step <= steps; step += 1.0) {
        block(QRectF(from + way * (step / steps), QSizeF(0.0, 0.0)));
    }
}

bool LabelRoom::isWithin(const QRectF& place) const {
    return place.left() >= 0.0 && place.top() >= 0.0 && place.right() < columns_ * kCell &&
           place.bottom() < rows_ * kCell;
}

bool LabelRoom::isFree(const QRectF& place) const {
    if (!isWithin(place)) {
        return false;
    }
    const int left = static_cast<int>(std::floor(place.left() / kCell));
    const int right = static_cast<int>(std::floor(place.right() / kCell));
    const int top = static_cast<int>(std::floor(place.top() / kCell));
    const int bottom = static_cast<int>(std::floor(place.bottom() / kCell));
    for (int row = top; row <= bottom; ++row) {
        for (int column = left; column <= right; ++column) {
            if (taken_[static_cast<std::size_t>(row) * static_cast<std::size_t>(columns_) +
                       static_cast<std::size_t>(column)] != 0) {
                return false;
            }
        }
    }
    return true;
}

bool LabelRoom::take(const QRectF& place) {
    if (!isFree(place)) {
        return false;
    }
    block(place);
    return true;
}

QRectF LabelRoom::takeFirst(std::span<const QRectF> places) {
    auto found = std::find_if(places.begin(), places.end(), [this](const QRectF& place) { return isFree(place); });
    if (found == places.end()) {
        found = std::find_if(places.begin(), places.end(), [this](const QRectF& place) { return isWithin(place); });
    }
    const QRectF& chosen = found != places.end() ? *found : places.front();
    block(chosen);
    return chosen;
}

bool LabelRoom::takeTurned(const QPointF& middle, double width, double height, double degrees) {
    const double radians = degrees * 3.141592653589793 / 180.0;
    const QPointF along(std::cos(radians), std::sin(radians));
    const double side = 0.6 * height; // of the squares that stand for the letters
    const int squares = static_cast<int>(std::ceil(width / side)) + 1;
    std::vector<QRectF> places;
    for (int i = 0; i < squares; ++i) {
        const QPointF at = middle + along * (width * (static_cast<double>(i) / (squares - 1) - 0.5));
        places.emplace_back(at.x() - side / 2.0, at.y() - side / 2.0, side, side);
    }
    if (!std::all_of(places.begin(), places.end(), [this](const QRectF& place) { return isFree(place); })) {
        return false;
    }
    for (const QRectF& place : places) {
        block(place);
    }
    return true;
}

} // namespace fenmark::desk
