// What stands on every plan: north arrow, scale bar; and what shows while the user acts.
#pragma once

#include "desk/plan/view_transform.h"

#include <QColor>
#include <QPainter>
#include <QRect>
#include <QString>

#include <vector>

namespace fenmark::desk {

void paintFurniture(QPainter& painter, const ViewTransform& view, const QFont& font);
// Where furniture and a note stand, to be kept free of names.
std::vector<QRectF> furniturePlaces(const ViewTransform& view, const QFont& font);
void paintHint(QPainter& painter, const QRect& in, const QString& large, const QString& small, const QFont& font);
// A line of text on paper, above the scale bar.
void paintNote(QPainter& painter, const QRect& in, const QString& text, const QFont& font);
void paintZoomWindow(QPainter& painter, const QRectF& window);
void paintFocus(QPainter& painter, const QRect& in, const QColor& colour);

// The longest round length (1, 2 or 5 times a power of ten, metres) whose bar is no longer than the pixels.
double scaleBarMetres(const ViewTransform& view, double pixels);

} // namespace fenmark::desk
