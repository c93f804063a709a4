// Where points of the drawing lie in the window.
#include "desk/plan/plan_furniture.h"
#include "desk/plan/view_transform.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace fenmark::desk {
namespace {

constexpr double kPixelTolerance = 1e-6;
constexpr double kMetreTolerance = 1e-6;

drawing::Extent box(double minX, double minY, double maxX, double maxY) {
    drawing::Extent extent;
    extent.add(minX, minY);
    extent.add(maxX, maxY);
    return extent;
}

ViewTransform japan() {
    ViewTransform view;
    view.setSize({800.0, 600.0});
    view.fit(box(-18444.0, -36238.0, -17444.0, -35738.0));
    return view;
}

TEST(ViewTransform, NorthIsUpAndEastIsRight) {
    const ViewTransform view = japan();
    const QPointF at = view.toPixel(-18000.0, -36000.0);
    EXPECT_GT(view.toPixel(-17990.0, -36000.0).x(), at.x());
    EXPECT_LT(view.toPixel(-18000.0, -35990.0).y(), at.y());
}

TEST(ViewTransform, PixelsAndMetresAreInversesOfEachOther) {
    const ViewTransform view = japan();
    std::mt19937 random(20240417);
    std::uniform_real_distribution<double> x(-1000.0, 2000.0);
    for (int i = 0; i < 1000; ++i) {
        const QPointF pixel(x(random), x(random));
        const QPointF back = view.toPixel(view.toX(pixel.x()), view.toY(pixel.y()));
        EXPECT_NEAR(back.x(), pixel.x(), kPixelTolerance);
        EXPECT_NEAR(back.y(), pixel.y(), kPixelTolerance);
    }
}

TEST(ViewTransform, ThePointUnderTheCursorStaysThereWhileZooming) {
    ViewTransform view = japan();
    const QPointF cursor(123.0, 456.0);
    const double x = view.toX(cursor.x());
    const double y = view.toY(cursor.y());
    for (const double factor : {1.25, 4.0, 0.1, 7.0, 1.0 / 3.0}) {
        view.zoomAt(cursor, factor);
        EXPECT_NEAR(view.toX(cursor.x()), x, kMetreTolerance);
        EXPECT_NEAR(view.toY(cursor.y()), y, kMetreTolerance);
    }
}

TEST(ViewTransform, ZoomingStopsAtBothEndsAndKeepsThePoint) {
    ViewTransform view = japan();
    const double x = view.toX(10.0);
    view.zoomAt({10.0, 10.0}, 1e30);
    EXPECT_TRUE(std::isfinite(view.pixelsPerMetre()));
    EXPECT_NEAR(view.toX(10.0), x, kMetreTolerance);
    view.zoomAt({10.0, 10.0}, 1e-60);
    EXPECT_GT(view.pixelsPerMetre(), 0.0);
}

TEST(ViewTransform, AFittedBoxLiesWhollyInTheWindow) {
    for (const auto& extent : {box(0, 0, 1, 1000), box(1e7, 1e7, 1e7 + 5000, 1e7 + 1), box(-3, -3, -2.9, -2.9)}) {
        ViewTransform view;
        view.setSize({640.0, 480.0});
        view.fit(extent);
        const QRectF window(0.0, 0.0, 640.0, 480.0);
        EXPECT_TRUE(window.contains(view.toPixel(extent.minX, extent.minY)));
        EXPECT_TRUE(window.contains(view.toPixel(extent.maxX, extent.maxY)));
    }
}

TEST(ViewTransform, OnePointOrNothingIsShownAHundredMetresWide) {
    ViewTransform view;
    view.setSize({400.0, 400.0});
    view.fit({});
    EXPECT_NEAR(view.pixelsPerMetre(), 4.0, kPixelTolerance);
    view.fit(box(5.0, 6.0, 5.0, 6.0));
    EXPECT_NEAR(view.toPixel(5.0, 6.0).x(), 200.0, kPixelTolerance);
    EXPECT_GT(view.pixelsPerMetre(), 3.0);
    EXPECT_LT(view.pixelsPerMetre(), 4.0);
}

TEST(ViewTransform, ANewSizeKeepsTheMiddle) {
    ViewTransform view = japan();
    const double x = view.toX(400.0);
    view.setSize({1000.0, 100.0});
    EXPECT_NEAR(view.toX(500.0), x, kMetreTolerance);
}

TEST(ScaleBar, ShowsTheLongestRoundLengthThatFits) {
    ViewTransform view;
    view.setSize({1000.0, 1000.0});
    for (double scale = 1e-4; scale < 1e4; scale *= 1.7) {
        view.fit(box(0.0, 0.0, 1000.0 / scale, 1000.0 / scale));
        const double metres = scaleBarMetres(view, 160.0);
        const double pixels = metres * view.pixelsPerMetre();
        EXPECT_LE(pixels, 160.0 * (1.0 + kPixelTolerance));
        EXPECT_GT(pixels, 160.0 / 2.5 * (1.0 - kPixelTolerance)); // from 2 to 5 is the widest step
        const double digits = metres / std::pow(10.0, std::floor(std::log10(metres) + kPixelTolerance));
        EXPECT_TRUE(std::abs(digits - 1) < 1e-6 || std::abs(digits - 2) < 1e-6 || std::abs(digits - 5) < 1e-6)
            << metres;
    }
}

} // namespace
} // namespace fenmark::desk
