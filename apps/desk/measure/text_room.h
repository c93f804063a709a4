// Places for texts over a plan, so that none stands on another or on a line. No painting here.
#pragma once

#include <QPolygonF>
#include <QRectF>
#include <QSizeF>

#include <span>
#include <vector>

namespace fenmark::desk {

class TextRoom {
  public:
    // Free but for the given places and lines, within a view of that size; all in pixels.
    TextRoom(const QSizeF& view, std::vector<QRectF> taken, std::vector<QPolygonF> lines);

    // Takes the first of the places that is free; where none is, the first within the view, and else the first of all.
    QRectF take(std::span<const QRectF> places);

  private:
    bool isFree(const QRectF& place) const;

    QRectF view_;
    std::vector<QRectF> taken_;
    std::vector<QPolygonF> lines_;
};

} // namespace fenmark::desk
