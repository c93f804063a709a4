// What lies under the pointer, and what is drawn.
#include "desk/plan/plan_object.h"
#include "desk/plan/plan_painter.h"
#include "desk/plan/plan_shapes.h"
#include "desk/plan/plan_text.h"
#include "host/boundary/object_data_writer.h"

#include <QFont>

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <vector>

namespace fenmark::desk {
namespace {

using drawing::Drawing;
using drawing::Element;
using drawing::ElementType;
using drawing::EntityKind;
using drawing::Extent;

constexpr double kPixelTolerance = 1e-6;
constexpr double kReach = 6.0;
constexpr double kHalfPi = 1.5707963267948966;

Element straight(double x1, double y1, double x2, double y2) {
    Element element;
    element.start = {x1, y1};
    element.end = {x2, y2};
    element.direction = std::atan2(y2 - y1, x2 - x1);
    element.length = std::hypot(x2 - x1, y2 - y1);
    return element;
}

// A quarter circle that turns left from the given point, which it leaves eastwards.
Element quarter(double x, double y, double radius) {
    Element element;
    element.type = ElementType::Arc;
    element.start = {x, y};
    element.end = {x + radius, y + radius};
    element.length = radius * kHalfPi;
    element.startRadius = element.endRadius = radius;
    return element;
}

// A lot of 20 m by 10 m with a corner point at its lower left, a smaller lot within it, and an alignment above.
struct Plan : ::testing::Test {
    Drawing drawing;
    ViewTransform view;
    PlanLook look;

    void SetUp() override {
        const auto ring = [](double x, double y, double width, double height) {
            return std::vector<host::MdGePoint3d>{
                {x, y, 0}, {x + width, y, 0}, {x + width, y + height, 0}, {x, y + height, 0}};
        };
        drawing.addLayer("境界");
        drawing.addPolyline(ring(0, 0, 20, 10), 1, EntityKind::Polyline2d, true); // 0
        drawing.addPolyline(ring(8, 4, 4, 2), 1, EntityKind::Polyline2d, true);   // 1
        drawing.addPoint({0, 0, 3}, 0);                                           // 2
        const std::size_t road = drawing.addAlignment(drawing.addSite("サイト"), "道", "0", "", "");
        drawing.addElement(road, straight(0, 20, 10, 20));
        drawing.addElement(road, quarter(10, 20, 10));
        view.setSize({400.0, 400.0});
        Extent extent;
        extent.add(-10.0, -5.0);
        extent.add(30.0, 35.0);
        view.fit(extent);
    }
    std::vector<PlanObject> at(double x, double y, double reach = kReach) {
        return objectsAt(drawing, PlanIndex(drawing), view, look, view.toPixel(x, y), reach);
    }
};

PlanObject entity(std::size_t index) {
    return {PlanObject::Kind::Entity, index, {}};
}

TEST_F(Plan, APointWinsOverTheLineThatItLiesOn) {
    EXPECT_EQ(at(0, 0), (std::vector<PlanObject>{entity(2), entity(0)}));
}

TEST_F(Plan, ALotIsTakenFromWithinSmallestFirst) {
    EXPECT_EQ(at(10, 5), (std::vector<PlanObject>{entity(1), entity(0)}));
    EXPECT_EQ(at(3, 5), std::vector<PlanObject>{entity(0)});
    EXPECT_TRUE(at(25, 5).empty());
}

TEST_F(Plan, AnElementOfAnAlignmentIsTakenOnItsTrueCurve) {
    const std::vector<PlanObject> found = at(10 + 10 * std::sin(0.7), 30 - 10 * std::cos(0.7), 1.0);
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0], (PlanObject{PlanObject::Kind::Alignment, 0, 1}));
    EXPECT_TRUE(at(14, 22.8, 1.0).empty()); // on the chord
}

TEST_F(Plan, HiddenLayersAreNotTaken) {
    look.hiddenLayers = {false, true};
    EXPECT_EQ(at(0, 0), std::vector<PlanObject>{entity(2)});
    look.hiddenLayers = {true, false};
    EXPECT_EQ(at(0, 0), std::vector<PlanObject>{entity(0)});
    EXPECT_TRUE(at(5, 20).empty());
}

TEST_F(Plan, ObjectsInViewComeInTheDrawingsOrder) {
    const PlanIndex index(drawing);
    const std::vector<PlanObject> found = objectsInView(drawing, index, view, look);
    ASSERT_EQ(found.size(), 5U);
    EXPECT_EQ(found[1], (PlanObject{PlanObject::Kind::Alignment, 0, 1}));
    EXPECT_EQ(found[4], entity(2));
}

TEST_F(Plan, TheNearestStationHasItsOffsetToTheRight) {
    const PlanIndex index(drawing);
    const auto found = nearestStation(drawing, index, look, 4.0, 17.0, 100.0);
    ASSERT_TRUE(found);
    EXPECT_NEAR(found->at.station, 4.0, 1e-9);
    EXPECT_NEAR(found->at.offset, 3.0, 1e-9);
    EXPECT_FALSE(nearestStation(drawing, index, look, 4.0, 17.0, 2.0)); // out of reach
    look.hiddenLayers = {true};
    EXPECT_FALSE(nearestStation(drawing, index, look, 4.0, 17.0, 100.0));
}

TEST_F(Plan, AnObjectThatWentExistsNoMore) {
    const Drawing::Mark before = drawing.mark();
    drawing.addPoint({1, 1, 1}, 0);
    EXPECT_TRUE(exists(drawing, entity(3)));
    drawing.rollback(before);
    EXPECT_FALSE(exists(drawing, entity(3)));
    EXPECT_FALSE(exists(drawing, {PlanObject::Kind::Alignment, 0, 2}));
    EXPECT_FALSE(exists(drawing, {PlanObject::Kind::Alignment, 1, {}}));
}

TEST_F(Plan, OnlyWhatIsInViewIsDrawn) {
    const PlanIndex index(drawing);
    PlanPainter painter(drawing, index);
    QImage image;
    painter.paint(image, view, look, 1.0, QFont());
    EXPECT_EQ(image.size(), QSize(400, 400));
    EXPECT_EQ(painter.drawn(), 5U);
    view.zoomAt(view.toPixel(0, 0), 40.0);
    painter.paint(image, view, look, 1.0, QFont());
    EXPECT_EQ(painter.drawn(), 2U);
}

TEST_F(Plan, ThePictureShowsArcsRedAndPointsAtTheirPlaces) {
    look.labels = look.stations = look.grid = false;
    const PlanIndex index(drawing);
    PlanPainter painter(drawing, index);
    for (const double ratio : {1.0, 2.0}) {
        QImage image;
        painter.paint(image, view, look, ratio, QFont());
        EXPECT_EQ(image.size(), QSize(400, 400) * ratio);
        const QPointF onArc = view.toPixel(10 + 10 * std::sin(0.7), 30 - 10 * std::cos(0.7)) * ratio;
        const QColor colour = image.pixelColor(onArc.toPoint());
        EXPECT_GT(colour.red(), colour.blue() + 80);
        const QPointF point = view.toPixel(0, 0) * ratio;
        EXPECT_EQ(image.pixelColor(static_cast<int>(point.x()), static_cast<int>(point.y())), QColor(Qt::white));
    }
}

// A list of two points alone could be read as a rectangle or a list of numbers.
QPolygonF polygon(std::initializer_list<QPointF> points) {
    return QPolygonF(QList<QPointF>(points));
}

TEST(PlanShapes, LinesAreCutToTheRectangle) {
    const QRectF window(0, 0, 100, 100);
    const QPolygonF line = polygon({{-1e9, 50}, {1e9, 50}, {1e9, 60}, {50, 60}});
    const std::vector<QPolygonF> parts = clippedLine(line, false, window);
    ASSERT_EQ(parts.size(), 2U);
    EXPECT_EQ(parts[0], polygon({{0, 50}, {100, 50}}));
    EXPECT_EQ(parts[1].last(), QPointF(50, 60));
    EXPECT_TRUE(clippedLine(polygon({{-5, -5}, {200, -5}}), false, window).empty());
    EXPECT_EQ(clippedLine(polygon({{10, 10}, {20, 10}, {20, 20}}), true, window).at(0).size(), 4);
    EXPECT_EQ(clippedArea(polygon({{-1e9, -1e9}, {1e9, -1e9}, {1e9, 1e9}, {-1e9, 1e9}}), window).boundingRect(),
              window);
    EXPECT_TRUE(clippedArea(polygon({{200, 0}, {300, 0}, {300, 50}}), window).isEmpty());
}

TEST(PlanShapes, ACurveSeenFromVeryNearIsDrawnWithFewPointsAndLiesOnTheTrueOne) {
    const Element arc = quarter(0.0, 0.0, 5000.0);
    ViewTransform view;
    view.setSize({1000.0, 800.0});
    Extent spot;
    const double x = 5000.0 * std::sin(0.6);
    const double y = 5000.0 - 5000.0 * std::cos(0.6);
    spot.add(x - 0.01, y - 0.01);
    spot.add(x + 0.01, y + 0.01);
    view.fit(spot); // some 40 pixels for each millimetre
    CurveBudget budget;
    const std::vector<QPolygonF> parts = elementPixels(arc, view, QRectF(0, 0, 1000, 800), budget);
    ASSERT_EQ(parts.size(), 1U);
    EXPECT_LT(parts[0].size(), 100);
    for (const QPointF& pixel : parts[0]) {
        const double radius = std::hypot(view.toX(pixel.x()), view.toY(pixel.y()) - 5000.0);
        EXPECT_NEAR((radius - 5000.0) * view.pixelsPerMetre(), 0.0, kChordPixels);
    }
}

TEST(PlanShapes, AWholeElementIsOneLineFromEndToEnd) {
    const Element arc = quarter(0.0, 0.0, 100.0);
    ViewTransform view;
    view.setSize({500.0, 500.0});
    Extent all;
    all.add(-10, -10);
    all.add(110, 110);
    view.fit(all);
    CurveBudget budget;
    const std::vector<QPolygonF> parts = elementPixels(arc, view, QRectF(0, 0, 500, 500), budget);
    ASSERT_EQ(parts.size(), 1U);
    EXPECT_NEAR(parts[0].first().x(), view.toPixel(0, 0).x(), kPixelTolerance);
    EXPECT_NEAR(parts[0].last().y(), view.toPixel(100, 100).y(), kPixelTolerance);
}

TEST(PlanText, StakesAreNamedByTwentyMetres) {
    EXPECT_EQ(stakeName(0.0), QStringLiteral("No.0"));
    EXPECT_EQ(stakeName(112.345), QStringLiteral("No.5+12.345"));
    EXPECT_EQ(stakeName(100.0), QStringLiteral("No.5"));
    EXPECT_EQ(stakeName(99.9999), QStringLiteral("No.5")); // what the decimals cannot show
    EXPECT_EQ(stakeName(99.999), QStringLiteral("No.4+19.999"));
    EXPECT_EQ(stakeName(-5.0), QStringLiteral("No.-1+15.000"));
}

TEST(LabelRoom, TakesTheFirstPlaceThatIsFreeOfTextsAndLines) {
    const QSizeF size(40.0, 10.0);
    const auto at = [&](double x, double y) { return QRectF(QPointF(x, y), size); };
    LabelRoom room({200.0, 100.0});
    room.block(at(0.0, 0.0));
    room.blockLine({100.0, 0.0}, {100.0, 100.0});
    room.blockLine({100.0, 100.0}, {150.0, 50.0});
    const auto take = [&](std::vector<QRectF> places) { return room.takeFirst(places); };
    EXPECT_EQ(take({at(10.0, 5.0), at(50.0, 5.0)}), at(50.0, 5.0)) << "off what stands there";
    EXPECT_EQ(take({at(50.0, 0.0), at(50.0, 20.0)}), at(50.0, 20.0)) << "off the text before";
    EXPECT_EQ(take({at(80.0, 50.0), at(105.0, 80.0), at(55.0, 50.0)}), at(55.0, 50.0)) << "off both lines";
    EXPECT_EQ(take({at(-10.0, 80.0), at(170.0, 80.0), at(10.0, 85.0)}), at(10.0, 85.0)) << "within the view";
    EXPECT_EQ(take({at(-10.0, 60.0), at(90.0, 50.0)}), at(90.0, 50.0)) << "none free: what is seen whole";
    EXPECT_EQ(take({at(-10.0, 60.0), at(190.0, 50.0)}), at(-10.0, 60.0));
    // A short line within the text.
    LabelRoom small({200.0, 100.0});
    small.blockLine({12.0, 12.0}, {13.0, 13.0});
    const std::vector<QRectF> places{at(10.0, 10.0), at(10.0, 30.0)};
    EXPECT_EQ(small.takeFirst(places), at(10.0, 30.0));
}

TEST(PlanText, ANamesRoomIsTakenOnce) {
    LabelRoom room({200.0, 100.0});
    EXPECT_TRUE(room.take(QRectF(10, 10, 50, 12)));
    EXPECT_FALSE(room.take(QRectF(40, 15, 50, 12)));
    EXPECT_TRUE(room.take(QRectF(10, 40, 50, 12)));
    EXPECT_FALSE(room.take(QRectF(-20, 40, 50, 12)));
    EXPECT_FALSE(room.take(QRectF(180, 40, 50, 12)));
}

} // namespace
} // namespace fenmark::desk
