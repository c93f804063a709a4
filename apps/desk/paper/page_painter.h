// Pages of a plot as pictures, for the preview and for printers.
#pragma once

#include "exchange/plan/plot.h"
#include "values/outcome.h"

#include <QImage>
#include <QPainter>
#include <QRectF>
#include <QSizeF>
#include <QString>

namespace fenmark::desk {

// Of a page, millimetres; empty for what is no page.
QSizeF pageSize(const std::string& svg);

// The page at so many pixels for each millimetre; null if it cannot be drawn, and the outcome says why.
QImage pageImage(const std::string& svg, double pixelsPerMillimetre, Outcome& outcome);

// The page on the painter, the rectangle filled by it, in bands, so that a large sheet needs no picture of all of it.
Outcome paintPage(const std::string& svg, QPainter& painter, const QRectF& to);

} // namespace fenmark::desk
