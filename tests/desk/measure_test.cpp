// Measuring: what a pointer means, sides, areas, places on alignments, and the area table of a lot.
#include "desk_test_support.h"

#include "desk/measure/lot_sheet.h"
#include "desk/measure/measurement.h"
#include "desk/measure/point_name.h"
#include "desk/measure/snap.h"
#include "desk/window/workbench.h"
#include "exchange/report/tables.h"
#include "exchange/survey_text.h"

#include <QClipboard>

#include <cmath>
#include <numbers>

namespace fenmark::desk::test {
namespace {

using host::PlanPoint;

constexpr double kLength = 1e-9; // metres
constexpr double kAngle = 1e-12; // radians
constexpr double kRight = std::numbers::pi / 2.0;
const Texts kEnglish(Language::English);

TEST(Measurement, TellsSidesAnglesAndAreaOfARectangle) {
    // 30 m north by 40 m east, far from the origin; walked north first.
    const double x = -36000.0;
    const double y = -18000.0;
    const std::vector<PlanPoint> points{{x, y}, {x, y + 30.0}, {x + 40.0, y + 30.0}, {x + 40.0, y}};
    const Measured measured = measure(points, true);
    ASSERT_EQ(measured.sides.size(), 4U);
    EXPECT_NEAR(measured.sides[0].length, 30.0, kLength);
    EXPECT_NEAR(measured.sides[0].azimuth, 0.0, kAngle);
    EXPECT_NEAR(measured.sides[1].azimuth, kRight, kAngle);
    EXPECT_NEAR(measured.sides[2].azimuth, 2.0 * kRight, kAngle);
    EXPECT_NEAR(measured.sides[3].azimuth, 3.0 * kRight, kAngle);
    EXPECT_NEAR(measured.sides[2].north, -30.0, kLength);
    EXPECT_NEAR(measured.sides[3].along, 140.0, kLength);
    EXPECT_NEAR(measured.length, 140.0, kLength);
    EXPECT_NEAR(measured.area, 1200.0, kLength);
    for (const MeasuredSide& side : measured.sides) {
        // From the way back, clockwise over the outside: the ring runs clockwise.
        EXPECT_NEAR(side.included.value_or(0.0), 3.0 * kRight, kAngle);
    }
    EXPECT_FALSE(measured.crossesItself);
}

TEST(Measurement, AnOpenLineHasNoAreaAndNoAngleAtItsStart) {
    const std::vector<PlanPoint> points{{0.0, 0.0}, {3.0, 4.0}, {6.0, 0.0}};
    const Measured measured = measure(points, false);
    ASSERT_EQ(measured.sides.size(), 2U);
    EXPECT_NEAR(measured.length, 10.0, kLength);
    EXPECT_EQ(measured.area, 0.0);
    EXPECT_FALSE(measured.sides[0].included);
    EXPECT_TRUE(measured.sides[1].included);
    EXPECT_TRUE(measure({}, true).sides.empty());
    EXPECT_TRUE(measure(std::vector{PlanPoint{1.0, 2.0}}, true).sides.empty());
    EXPECT_EQ(measure(std::vector{PlanPoint{0.0, 0.0}, PlanPoint{1.0, 0.0}}, true).sides.size(), 1U);
}

TEST(Measurement, SaysThatCrossedSidesEncloseNoArea) {
    EXPECT_TRUE(measure(std::vector<PlanPoint>{{0, 0}, {1, 1}, {1, 0}, {0, 1}}, true).crossesItself);
    EXPECT_FALSE(measure(std::vector<PlanPoint>{{0, 0}, {2, 0}, {1, 1}, {2, 2}, {0, 2}}, true).crossesItself);
}

TEST(Measurement, WritesQuadrantBearings) {
    const auto degrees = [](double value) { return quadrantBearing(value * std::numbers::pi / 180.0); };
    EXPECT_EQ(degrees(0.0), "N0°00′00″E");
    EXPECT_EQ(degrees(45.5), "N45°30′00″E");
    EXPECT_EQ(degrees(90.0), "N90°00′00″E");
    EXPECT_EQ(degrees(120.0), "S60°00′00″E");
    EXPECT_EQ(degrees(200.0), "S20°00′00″W");
    EXPECT_EQ(degrees(359.5), "N0°30′00″W");
}

// A closed square of 10 m with its corner at the origin, a line across it, a point, and an alignment east of it: 50 m
// north, then an arc of 100 m radius to the right.
struct Scene : ::testing::Test {
    host::embedded::EmbeddedHost host;
    ViewTransform view;
    PlanIndex index;
    PlanLook look;

    void SetUp() override {
        drawing::Drawing& drawing = host.drawing();
        drawing.addPolyline(std::vector<host::MdGePoint3d>{{0, 0, 0}, {10, 0, 0}, {10, 10, 0}, {0, 10, 0}}, 0,
                            drawing::EntityKind::Polyline, true);
        drawing.addPolyline(std::vector<host::MdGePoint3d>{{-5, 4, 0}, {15, 4, 0}}, 0, drawing::EntityKind::Polyline,
                            false);
        drawing.addTable("points");
        drawing.addPoint({5.0, 7.0, 12.5}, 0);
        drawing.setRow(2, *drawing.findTable("points"), 1, "T1 ", "座標", "a.sim");
        const auto road = drawing.addAlignment(drawing.addSite("site"), "road", "0", drawing::kStandardStyle,
                                               drawing::kStandardStyle);
        drawing::Element straight;
        straight.start = {30.0, 0.0};
        straight.end = {30.0, 50.0};
        straight.direction = kRight;
        straight.length = 50.0;
        drawing.addElement(road, straight);
        drawing::Element arc;
        arc.type = drawing::ElementType::Arc;
        arc.clockwise = true;
        arc.start = straight.end;
        arc.direction = kRight;
        arc.length = 100.0 * kRight;
        arc.startRadius = arc.endRadius = 100.0;
        arc.end = {130.0, 150.0};
        drawing.addElement(road, arc);
        drawing.setStartStation(road, 100.0);
        view.setSize({400.0, 400.0});
        drawing::Extent extent;
        extent.add(-20.0, -20.0);
        extent.add(60.0, 60.0);
        view.fit(extent);
        index = PlanIndex(drawing);
    }
    Snap snap(double x, double y, const SnapChoice& choice = {}, std::optional<PlanPoint> before = {}) {
        return snapAt({host.drawing(), index, view, look}, view.toPixel(x, y), 8.0, choice, before);
    }
    void expectAt(const Snap& snap, SnapKind kind, double x, double y) {
        EXPECT_EQ(snap.kind, kind);
        EXPECT_NEAR(snap.at.x, x, kLength);
        EXPECT_NEAR(snap.at.y, y, kLength);
    }
};

TEST_F(Scene, TakesPointsEndsVerticesAndCrossings) {
    const Snap point = snap(5.3, 7.2);
    expectAt(point, SnapKind::Point, 5.0, 7.0);
    EXPECT_EQ(point.name, "T1");
    expectAt(snap(10.4, 9.8), SnapKind::Vertex, 10.0, 10.0);
    expectAt(snap(15.2, 4.2), SnapKind::End, 15.0, 4.0);
    expectAt(snap(30.3, 49.8), SnapKind::End, 30.0, 50.0);
    expectAt(snap(10.3, 4.3), SnapKind::Crossing, 10.0, 4.0);
    expectAt(snap(5.0, 4.2), SnapKind::OnLine, 5.0, 4.0);
    expectAt(snap(30.4, 20.0), SnapKind::OnLine, 30.0, 20.0);
    EXPECT_EQ(snap(20.0, 30.0).kind, SnapKind::Free);
    EXPECT_NEAR(snap(20.0, 30.0).at.x, 20.0, kLength);
}

TEST_F(Scene, DropsFeetOnLinesAndCurves) {
    expectAt(snap(6.3, 4.3, {}, PlanPoint{6.0, 9.0}), SnapKind::Foot, 6.0, 4.0);
    expectAt(snap(30.3, 20.4, {}, PlanPoint{0.0, 20.0}), SnapKind::Foot, 30.0, 20.0);
    // The arc's centre is (130, 50): the foot lies on the ray towards the point.
    const double share = std::sqrt(0.5) * 100.0;
    const PlanPoint before{130.0 - 2.0 * share, 50.0 + 2.0 * share};
    const Snap foot = snap(130.0 - share + 0.2, 50.0 + share + 0.2, {}, before);
    expectAt(foot, SnapKind::Foot, 130.0 - share, 50.0 + share);
}

TEST_F(Scene, LooksForNothingThatWasNotChosenOrIsHidden) {
    SnapChoice none;
    none.points = none.ends = none.vertices = none.crossings = none.feet = false;
    EXPECT_EQ(snap(5.0, 7.0, none).kind, SnapKind::Free);
    SnapChoice onlyLines = none;
    onlyLines.feet = true;
    EXPECT_EQ(snap(10.0, 10.0, onlyLines).kind, SnapKind::OnLine);
    look.hiddenStyles[static_cast<std::size_t>(FigureStyle::Coordinate)] = true;
    EXPECT_EQ(snap(5.0, 7.0).kind, SnapKind::Free) << "a kind that is hidden";
    look.hiddenStyles = {};
    look.hiddenLayers = {true};
    EXPECT_EQ(snap(5.0, 7.0).kind, SnapKind::Free);
    EXPECT_EQ(snap(30.0, 20.0).kind, SnapKind::Free);
}

TEST_F(Scene, TellsStationOffsetAndRadiusOnAnAlignment) {
    const auto straight = placeOn(host.drawing(), 0, {33.0, 20.0});
    ASSERT_TRUE(straight);
    EXPECT_NEAR(straight->station, 120.0, kLength);
    EXPECT_NEAR(straight->offset, 3.0, kLength) << "right of a road that runs north";
    EXPECT_TRUE(std::isinf(straight->radius));
    const auto arc = placeOn(host.drawing(), 0, {130.0, 145.0});
    ASSERT_TRUE(arc);
    EXPECT_EQ(arc->element, 1U);
    EXPECT_NEAR(arc->radius, 100.0, kLength);
    EXPECT_TRUE(arc->turnsRight);
    EXPECT_NEAR(arc->offset, 5.0, kLength);
    EXPECT_NEAR(arc->station, 150.0 + 100.0 * kRight, 1e-7);
    EXPECT_NEAR(arc->azimuth, kRight, 1e-9);
    const Sheet sheet =
        placeSheet(host.drawing(), std::vector{PickedPlace{{SnapKind::Free, {33.0, 20.0}, {}, {}}, 0}}, kEnglish);
    ASSERT_EQ(sheet.rows.size(), 1U);
    EXPECT_EQ(sheet.rows[0].mid(3, 6).join(QLatin1Char('|')),
              QStringLiteral("road|No.6|120.000|right 3.000|Straight|∞"));
}

struct Measuring : DeskWindow {
    void clickAt(const host::MdGePoint3d& at) {
        QTest::mouseClick(&plan(), Qt::LeftButton, {}, plan().view().toPixel(at.x, at.y).toPoint());
    }
    std::size_t lotNamed(const std::string& name) {
        for (std::size_t i = 0; i < drawing().entityCount(); ++i) {
            const drawing::EntityView entity = drawing().entity(i);
            if (!entity.isPoint() && entity.row && exchange::trimmedName(entity.row->name) == name) {
                return i;
            }
        }
        ADD_FAILURE() << "no lot named " << name;
        return 0;
    }
};

TEST_F(Measuring, ALotShowsItsAreaTableAsTheReportHasIt) {
    import(folder.example(QStringLiteral("cadastral.sim")));
    window->dock(QStringLiteral("lotDock")).show();
    QApplication::processEvents();
    const exchange::report::PointNames names(drawing());
    std::size_t lots = 0;
    for (std::size_t i = 0; i < drawing().entityCount(); ++i) {
        const auto table =
            exchange::report::areaTable(drawing().entity(i), [&](double x, double y) { return names.at(x, y); }, {});
        if (!table) {
            continue;
        }
        ++lots;
        plan().select(PlanObject{PlanObject::Kind::Entity, i, {}});
        const SheetPanel& panel = window->workbench().lotPanel();
        ASSERT_EQ(panel.sheet().rows.size(), table->groups.size());
        for (std::size_t row = 0; row < table->groups.size(); ++row) {
            for (std::size_t column = 0; column < table->columns.size(); ++column) {
                EXPECT_EQ(panel.sheet().rows[row][static_cast<qsizetype>(column)].toStdString(),
                          table->groups[row][0][column]);
            }
        }
        EXPECT_TRUE(panel.totals().contains(QString::fromStdString(table->totals[1].value)));
    }
    EXPECT_EQ(lots, 48U);
    plan().select(std::nullopt);
    EXPECT_TRUE(window->workbench().lotPanel().sheet().rows.empty());
}

TEST_F(Measuring, MeasuresALotByItsCornersWithTheMouse) {
    import(folder.example(QStringLiteral("cadastral.sim")));
    const std::size_t lot = lotNamed("田中403");
    plan().select(PlanObject{PlanObject::Kind::Entity, lot, {}});
    plan().fitSelected();
    plan().select(std::nullopt);
    window->action(Text::MeasureArea)->trigger();
    QApplication::processEvents();
    ASSERT_TRUE(window->workbench().isMeasuring());
    const std::vector<host::MdGePoint3d> ring(drawing().entity(lot).vertices.begin(),
                                              drawing().entity(lot).vertices.end());
    for (const host::MdGePoint3d& corner : ring) {
        clickAt(corner);
    }
    EXPECT_FALSE(plan().selected()) << "the tool takes the clicks";
    const Sheet expected = *lotSheet(drawing(), plan().index(), lot);
    const Sheet& got = window->workbench().measurePanel().sheet();
    ASSERT_EQ(got.rows.size(), ring.size());
    EXPECT_EQ(got.rows[0][0], expected.rows[0][0]) << "the corners have the names of their points";
    EXPECT_EQ(got.totals[1].value.section(QLatin1Char(' '), 0, 0),
              QString::number(expected.totals[1].value.section(QLatin1Char(' '), 0, 0).toDouble(), 'f', 3));
    QTest::keyClick(&plan(), Qt::Key_Backspace);
    EXPECT_EQ(window->workbench().measurePanel().sheet().rows.size(), ring.size() - 1);
    QTest::keyClick(&plan(), Qt::Key_Return);
    EXPECT_TRUE(window->workbench().measuring().finished());
    window->workbench().measurePanel().copyAction().trigger();
    EXPECT_EQ(QGuiApplication::clipboard()->text().count(QLatin1Char('\n')),
              static_cast<qsizetype>(ring.size()) - 1 + 1 + 2);
    QTest::keyClick(&plan(), Qt::Key_Escape);
    EXPECT_TRUE(window->workbench().isMeasuring()) << "the first Escape only clears";
    QTest::keyClick(&plan(), Qt::Key_Escape);
    EXPECT_FALSE(window->workbench().isMeasuring());
    clickAt(ring[0]);
    EXPECT_TRUE(plan().selected());
}

TEST_F(Measuring, TellsTheStationOfAPlaceOnTheSelectedAlignment) {
    import(folder.example(QStringLiteral("road.sim")));
    plan().fitAll();
    window->workbench().startMeasuring(MeasureMode::Place);
    const drawing::Element& element = drawing().alignment(0).elements[1];
    clickAt({element.start.x, element.start.y, 0.0});
    const Sheet& sheet = window->workbench().measurePanel().sheet();
    ASSERT_EQ(sheet.rows.size(), 1U);
    const double station = drawing().alignment(0).startStation + drawing().alignment(0).elements[0].length;
    EXPECT_NEAR(sheet.rows[0][5].toDouble(), station, 6e-4);
    window->undo();
    EXPECT_TRUE(window->workbench().measuring().taken().empty()) << "what was measured is gone with the drawing";
}

} // namespace
} // namespace fenmark::desk::test
