// Between the drawing's plane (x east, y north, metres) and the window's pixels (y down).
#pragma once

#include "drawing/drawing.h"

#include <QPointF>
#include <QRectF>
#include <QSizeF>

namespace fenmark::desk {

class ViewTransform {
  public:
    ViewTransform() = default;

    double pixelsPerMetre() const { return scale_; }
    double metresPerPixel() const { return 1.0 / scale_; }
    QSizeF size() const { return size_; }
    void setSize(const QSizeF& size) { size_ = size; } // keeps the middle of the view

    QPointF toPixel(double x, double y) const {
        return {size_.width() / 2.0 + (x - centreX_) * scale_, size_.height() / 2.0 - (y - centreY_) * scale_};
    }
    double toX(double pixelX) const { return centreX_ + (pixelX - size_.width() / 2.0) / scale_; }
    double toY(double pixelY) const { return centreY_ - (pixelY - size_.height() / 2.0) / scale_; }
    // What the window shows, widened by a margin in pixels.
    drawing::Extent visible(double marginPixels = 0.0) const;

    // Shows the whole of the box with a margin around it. An empty box, or one without size, is shown 100 m wide.
    void fit(const drawing::Extent& extent);
    // The point of the drawing under the pixel stays under it.
    void zoomAt(const QPointF& pixel, double factor);
    void panPixels(double dx, double dy);
    void centreOn(double x, double y);

  private:
    double centreX_ = 0.0;
    double centreY_ = 0.0;
    double scale_ = 1.0; // pixels for each metre
    QSizeF size_{1.0, 1.0};
};

} // namespace fenmark::desk
