// Names on the plan: text that reads on top of lines, and the room that is left for it.
#pragma once

#include <QColor>
#include <QPainter>
#include <QPointF>
#include <QRectF>
#include <QString>

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace fenmark::desk {

// Names of objects just outside still reach so far into the view.
inline constexpr double kLabelMarginPixels = 60.0;

QString fromUtf8(std::string_view text);

// A name as it is shown: the end of one that no view has room for is left out. The time that letters take to be set
// grows with the square of the accents in a row.
QString shownName(std::string_view name);

// For a tip, which would take a name such as "<img src=...>" for marked-up text, and read the file that it names.
QString asWritten(const QString& text);

// Text with a halo of paper around it; `at` is the left end of its base line.
void drawText(QPainter& painter, const QPointF& at, const QString& text, const QColor& colour);

// "No.5" or "No.5+12.345" for stakes 20 m apart.
QString stakeName(double station);

// Which parts of the view hold text already, in cells of a few pixels.
class LabelRoom {
  public:
    explicit LabelRoom(const QSizeF& view);
    // Takes the place if it is free and within the view.
    bool take(const QRectF& place);
    // Takes the first of the places that is free; where none is, the first within the view, and else the first of all.
    QRectF takeFirst(std::span<const QRectF> places);
    // The same for text of that size around its middle, turned by degrees clockwise: what it covers and no more.
    bool takeTurned(const QPointF& middle, double width, double height, double degrees);
    bool isFree(const QRectF& place) const;
    // Nothing is to stand there, whatever does already.
    void block(const QRectF& place);
    void blockLine(const QPointF& from, const QPointF& to);

  private:
    static constexpr double kCell = 6.0; // pixels

    bool isWithin(const QRectF& place) const;

    int columns_;
    int rows_;
    std::vector<std::uint8_t> taken_;
};

} // namespace fenmark::desk
