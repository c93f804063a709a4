// Places for texts over a plan.
#include "desk/measure/text_room.h"

#include <QLineF>

#include <algorithm>
#include <array>
#include <utility>

namespace fenmark::desk {

namespace {

bool meets(const QRectF& place, const QLineF& line) {
    if (place.contains(line.p1()) || place.contains(line.p2())) {
        return true;
    }
    const std::array<QLineF, 4> edges = {
        QLineF(place.topLeft(), place.topRight()), QLineF(place.topRight(), place.bottomRight()),
        QLineF(place.bottomRight(), place.bottomLeft()), QLineF(place.bottomLeft(), place.topLeft())};
    return std::any_of(edges.begin(), edges.end(), [&](const QLineF& edge) {
        return edge.intersects(line, nullptr) == QLineF::BoundedIntersection;
    });
}

bool meets(const QRectF& place, const QPolygonF& line) {
    for (qsizetype i = 0; i + 1 < line.size(); ++i) {
        if (meets(place, QLineF(line[i], line[i + 1]))) {
            return true;
        }
    }
    return false;
}

} // namespace

TextRoom::TextRoom(const QSizeF& view, std::vector<QRectF> taken, std::vector<QPolygonF> lines)
    : view_(QPointF(0.0, 0.0), view), taken_(std::move(taken)), lines_(std::move(lines)) {}

bool TextRoom::isFree(const QRectF& place) const {
    return view_.contains(place) &&
           std::none_of(taken_.begin(), taken_.end(), [&](const QRectF& other) { return place.intersects(other); }) &&
           std::none_of(lines_.begin(), lines_.end(), [&](const QPolygonF& line) { return meets(place, line); });
}

QRectF TextRoom::take(std::span<const QRectF> places) {
    auto found = std::find_if(places.begin(), places.end(), [this](const QRectF& place) { return isFree(place); });
    if (found == places.end()) {
        found =
            std::find_if(places.begin(), places.end(), [this](const QRectF& place) { return view_.contains(place); });
    }
    const QRectF chosen = found != places.end() ? *found : places.front();
    taken_.push_back(chosen);
    return chosen;
}

} // namespace fenmark::desk
