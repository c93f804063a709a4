// Between the drawing's plane (x east, y north, metres) and the window's pixels (y down).
#include "desk/plan/view_transform.h"

#include <algorithm>

namespace fenmark::desk {

namespace {

constexpr double kFitShare = 0.92;      // of the window that a fitted box takes
constexpr double kEmptyWidth = 100.0;   // metres shown where there is nothing to fit
constexpr double kMinimumSize = 1e-3;   // metres: a smaller box has no size
constexpr double kSmallestScale = 1e-6; // pixels for each metre
constexpr double kLargestScale = 1e6;

} // namespace

drawing::Extent ViewTransform::visible(double marginPixels) const {
    drawing::Extent extent;
    extent.add(toX(-marginPixels), toY(-marginPixels));
    extent.add(toX(size_.width() + marginPixels), toY(size_.height() + marginPixels));
    return extent;
}

void ViewTransform::fit(const drawing::Extent& extent) {
    if (extent.empty()) {
        centreX_ = centreY_ = 0.0;
        scale_ = std::min(size_.width(), size_.height()) / kEmptyWidth;
        return;
    }
    centreX_ = 0.5 * (extent.minX + extent.maxX);
    centreY_ = 0.5 * (extent.minY + extent.maxY);
    double width = extent.maxX - extent.minX;
    double height = extent.maxY - extent.minY;
    if (width < kMinimumSize && height < kMinimumSize) {
        width = height = kEmptyWidth;
    }
    scale_ = kFitShare *
             std::min(size_.width() / std::max(width, kMinimumSize), size_.height() / std::max(height, kMinimumSize));
    scale_ = std::clamp(scale_, kSmallestScale, kLargestScale);
}

void ViewTransform::zoomAt(const QPointF& pixel, double factor) {
    const double x = toX(pixel.x());
    const double y = toY(pixel.y());
    scale_ = std::clamp(scale_ * factor, kSmallestScale, kLargestScale);
    centreX_ = x - (pixel.x() - size_.width() / 2.0) / scale_;
    centreY_ = y + (pixel.y() - size_.height() / 2.0) / scale_;
}

void ViewTransform::panPixels(double dx, double dy) {
    centreX_ -= dx / scale_;
    centreY_ += dy / scale_;
}

void ViewTransform::centreOn(double x, double y) {
    centreX_ = x;
    centreY_ = y;
}

} // namespace fenmark::desk
