// Drawings of values that no survey has: the plan draws what it can, with few points, and answers as ever.
#include "desk_test_support.h"

#include "desk/plan/plan_shapes.h"
#include "support/absurd_values.h"

#include <cmath>
#include <limits>

namespace fenmark::desk::test {
namespace {

constexpr qsizetype kMostPoints = 10'000; // of one element in one picture

struct AbsurdDrawing : ::testing::Test {
    drawing::Drawing drawing;
    PlanView view;

    void SetUp() override {
        view.resize(800, 600);
        view.show();
        const std::size_t road = drawing.addAlignment(drawing.addSite("S"), "C", "0", "", "");
        const drawing::Element sane = straight(0.0, 100.0);
        drawing.addElement(road, sane);
        drawing.addPoint({50.0, 50.0, 0.0}, 0);
        for (const double value : fenmark::test::kAbsurd) {
            drawing.addPoint({value, 10.0, value}, 0);
            drawing.addPoint({20.0, value, 0.0}, 0);
            const std::vector<host::MdGePoint3d> line = {{0, 0, 0}, {value, 30, 0}, {40, value, 0}};
            drawing.addPolyline(line, 0, drawing::EntityKind::Polyline, true);
            drawing::Element arc = straight(0.0, 1.0);
            arc.type = drawing::ElementType::Arc;
            arc.startRadius = arc.endRadius = std::abs(value);
            arc.length = 100.0;
            drawing.addElement(road, arc);
            drawing::Element clothoid = arc;
            clothoid.type = drawing::ElementType::Clothoid;
            clothoid.startRadius = std::numeric_limits<double>::infinity();
            clothoid.length = std::abs(value);
            clothoid.endRadius = 50.0;
            drawing.addElement(road, clothoid);
            drawing.setStartStation(drawing.addAlignment(drawing.sites()[0].id, "D", "0", "", ""), value);
            drawing.addElement(drawing.alignmentCount() - 1, sane);
        }
        view.setDrawing(&drawing);
        QApplication::processEvents();
    }
    static drawing::Element straight(double from, double to) {
        drawing::Element element;
        element.start = {from, 0.0};
        element.end = {to, 0.0};
        element.length = to - from;
        return element;
    }
};

TEST_F(AbsurdDrawing, IsDrawnFromAllOfItToASurvey) {
    view.fitAll();
    EXPECT_GT(view.render(), 0U);
    EXPECT_LT(view.index().size(), drawing.entityCount()) << "what has no place is left out";
    // Down to where a survey would lie, and far beyond.
    for (int step = 0; step < 200; ++step) {
        view.zoomAt(QPointF(400.0, 300.0), 10.0);
        view.render();
    }
    for (int step = 0; step < 400; ++step) {
        view.zoomAt(QPointF(400.0, 300.0), 0.1);
    }
    EXPECT_GT(view.render(), 0U);
    view.grab();
}

// Their places would be counted in cells of the view, and there is no number for those.
TEST(LinesToNowhere, LeaveNoPlaceInThePicture) {
    ViewTransform survey;
    survey.setSize(QSizeF(800.0, 600.0));
    drawing::Extent box;
    box.add(0.0, 0.0);
    box.add(100.0, 100.0);
    survey.fit(box);
    const QRectF clip = clipOf(survey);
    for (const double value : {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(),
                               -std::numeric_limits<double>::infinity()}) {
        drawing::Element curve;
        curve.start = {0.0, 0.0};
        curve.end = {value, 50.0};
        curve.type = drawing::ElementType::Arc;
        curve.startRadius = curve.endRadius = 80.0;
        curve.length = 60.0;
        drawing::Element line = curve;
        line.type = drawing::ElementType::Straight;
        CurveBudget budget;
        std::vector<QPolygonF> parts = elementPixels(curve, survey, clip, budget);
        EXPECT_FALSE(parts.empty()) << "the rest of the curve";
        for (const QPolygonF& part : elementPixels(line, survey, clip, budget)) {
            parts.push_back(part);
        }
        for (const QPolygonF& part : clippedLine({{10.0, 10.0}, {20.0, value}, {30.0, 10.0}}, true, clip)) {
            parts.push_back(part);
        }
        for (const QPolygonF& part : parts) {
            for (const QPointF& place : part) {
                EXPECT_TRUE(std::isfinite(place.x()) && std::isfinite(place.y())) << value;
            }
        }
    }
}

TEST_F(AbsurdDrawing, ElementsAreDrawnWithFewPoints) {
    ViewTransform survey;
    survey.setSize(QSizeF(800.0, 600.0));
    drawing::Extent box;
    box.add(-10.0, -10.0);
    box.add(110.0, 60.0);
    survey.fit(box);
    for (std::size_t a = 0; a < drawing.alignmentCount(); ++a) {
        for (const drawing::Element& element : drawing.alignment(a).elements) {
            qsizetype points = 0;
            CurveBudget budget;
            for (const QPolygonF& part : elementPixels(element, survey, QRectF(0.0, 0.0, 800.0, 600.0), budget)) {
                points += part.size();
            }
            EXPECT_LE(points, kMostPoints) << element.length << ' ' << element.startRadius << ' ' << element.endRadius;
        }
    }
}

// Each clothoid winds up tens of thousands of times, as one whose A was given in millimetres.
drawing::Element windingClothoid(double direction) {
    drawing::Element element;
    element.type = drawing::ElementType::Clothoid;
    element.direction = direction;
    element.length = 54e6;
    element.endRadius = 150.0;
    element.end = drawing::poseOnElement(element, element.length).point;
    return element;
}

TEST(ManyWindingClothoids, ShareThePointsOfAPicture) {
    constexpr int kClothoids = 400;
    ViewTransform survey;
    survey.setSize(QSizeF(800.0, 600.0));
    drawing::Extent box;
    for (int i = 0; i < kClothoids; ++i) {
        const auto around = drawing::boxOfElement(windingClothoid(0.01 * i));
        box.add(around->minX, around->minY);
        box.add(around->maxX, around->maxY);
    }
    survey.fit(box);
    CurveBudget budget;
    qsizetype points = 0;
    for (int i = 0; i < kClothoids; ++i) {
        for (const QPolygonF& part :
             elementPixels(windingClothoid(0.01 * i), survey, QRectF(0.0, 0.0, 800.0, 600.0), budget)) {
            points += part.size();
        }
    }
    EXPECT_GT(points, 100 * kClothoids);
    EXPECT_LT(points, 400'000);
    EXPECT_EQ(budget.left, 0U);
    // What is drawn behind them is as near to its curve as ever.
    drawing::Element arc;
    arc.type = drawing::ElementType::Arc;
    arc.length = 0.5 * (box.maxX - box.minX);
    arc.startRadius = arc.endRadius = arc.length;
    arc.end = drawing::poseOnElement(arc, arc.length).point;
    CurveBudget whole;
    EXPECT_EQ(elementPixels(arc, survey, QRectF(0.0, 0.0, 800.0, 600.0), budget),
              elementPixels(arc, survey, QRectF(0.0, 0.0, 800.0, 600.0), whole));
}

TEST(ManyWindingClothoids, ArePaintedNamedAndFound) {
    drawing::Drawing drawing;
    const auto site = drawing.addSite("S");
    for (int i = 0; i < 1000; ++i) {
        drawing.addElement(drawing.addAlignment(site, std::to_string(i), "0", "", ""), windingClothoid(0.01 * i));
    }
    PlanView view;
    view.resize(800, 600);
    view.setDrawing(&drawing);
    view.fitAll();
    EXPECT_GT(view.render(), 0U);
    view.selectAllShown();
    EXPECT_EQ(view.selection().size(), 1000U);
}

TEST_F(AbsurdDrawing, IsSelectedWalkedAndLit) {
    view.fitAll();
    view.selectAllShown();
    EXPECT_FALSE(view.selection().empty());
    for (std::size_t i = 0; i < 2 * drawing.entityCount(); ++i) {
        view.selectNext(1);
        ASSERT_TRUE(view.selected().has_value());
        view.fitSelected();
        view.render();
    }
    EXPECT_TRUE(std::isfinite(view.view().pixelsPerMetre()));
}

// An alignment that runs to and fro thousands of times: so much is drawn with smooth edges, and all of it somehow.
TEST(HeapOfStraights, IsDrawnThinBehindTheFirst) {
    constexpr int kStraights = 9000;
    drawing::Drawing drawing;
    const std::size_t road = drawing.addAlignment(drawing.addSite("S"), "C", "0", "", "");
    PlanView view;
    view.resize(800, 600);
    view.show();
    const auto rendered = [&] {
        view.setDrawing(&drawing);
        QApplication::processEvents();
        return view.render();
    };
    for (int i = 0; i < kStraights; ++i) {
        drawing::Element there;
        there.start = {0.01 * i, 0.0};
        there.length = 100.0;
        there.end = {there.start.x + there.length, 0.0};
        drawing.addElement(road, there);
        if (i == 500) {
            EXPECT_EQ(rendered(), 501U);
            EXPECT_EQ(view.linesDrawnThin(), 0U) << "as many as a survey has on a picture";
        }
    }
    EXPECT_EQ(rendered(), static_cast<std::size_t>(kStraights));
    EXPECT_GT(view.linesDrawnThin(), static_cast<std::size_t>(kStraights) / 2);
    const QImage picture = view.grab().toImage();
    const QPoint last = view.view().toPixel(100.0 + 0.01 * (kStraights - 1) - 2.0, 0.0).toPoint();
    int inked = 0;
    for (int y = -2; y <= 2; ++y) {
        inked += picture.pixelColor(last + QPoint(0, y)) == kPaper ? 0 : 1;
    }
    EXPECT_GT(inked, 0) << "the last one too";
    view.select(PlanObject{PlanObject::Kind::Alignment, road, {}});
    EXPECT_EQ(rendered(), static_cast<std::size_t>(kStraights));
}

// Lots that all lie over one another, none like the other.
TEST(HeapOfLots, TheNewestAreDrawnAndTheOthersCounted) {
    constexpr int kLots = 400;
    drawing::Drawing drawing;
    drawing.addTable("JSIMA_V3_Pline");
    for (int i = 0; i < kLots; ++i) {
        const double size = 100.0 - 0.1 * i;
        const std::vector<host::MdGePoint3d> ring = {{0, 0, 0}, {size, 0, 0}, {size, size, 0}, {0, size, 0}};
        drawing.addPolyline(ring, 0, drawing::EntityKind::Polyline, true);
        drawing.setRow(drawing.entityCount() - 1, 0, i, "", "画地", "a.sim");
    }
    PlanView view;
    view.resize(800, 600);
    view.show();
    view.setDrawing(&drawing);
    QApplication::processEvents();
    EXPECT_EQ(view.render(), static_cast<std::size_t>(kLots));
    EXPECT_GT(view.linesLeftOut(), 0U);
    EXPECT_LT(view.linesLeftOut(), static_cast<std::size_t>(kLots) - 40) << "many views' worth of them are drawn";
    const double edge = 100.0 - 0.1 * (kLots - 1);
    const QPoint newest = view.view().toPixel(edge, 30.0).toPoint();
    const QImage picture = view.grab().toImage();
    int inked = 0;
    for (int x = -2; x <= 2; ++x) {
        inked += picture.pixelColor(newest + QPoint(x, 0)) == colourOf(FigureStyle::Lot) ? 1 : 0;
    }
    EXPECT_GT(inked, 0) << "the outline of the newest";
}

} // namespace
} // namespace fenmark::desk::test
