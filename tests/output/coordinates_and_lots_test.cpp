// Coordinate points and lot polylines.
#include "output_fixture.h"

namespace fenmark {
namespace {

using host::Call;
using host::MdGePoint3d;
using sima::ImportKind;
using sima::SimaPoint;

class CoordinatePoints : public test::Output {};

TEST_F(CoordinatePoints, EachRecordBecomesAPointWithItsRow) {
    const std::vector<SimaPoint> points{{"KP1", 10.0, 20.0, 1.5, 1, true}, {"KP2", 11.0, 21.0, 0.0, 2, false}};
    output.createCoordinatePoints(reader, points);
    ASSERT_EQ(host.drawing.pointCount(), 2U);
    EXPECT_EQ(host.drawing.point(0).position, (MdGePoint3d{10.0, 20.0, 1.5}));
    EXPECT_EQ(host.drawing.point(0).layer, "測点");
    EXPECT_EQ(host.drawing.point(1).position, (MdGePoint3d{11.0, 21.0, 0.0}));
    expectRow(0, "JSIMA_V3_Point", 1, "KP1", "座標");
    expectRow(1, "JSIMA_V3_Point", 2, "KP2", "座標");
    EXPECT_EQ(host.rows.row(1).id, host.drawing.point(1).id);
    EXPECT_EQ(reader.coordinatePointsCreated, 2);
    EXPECT_EQ(host.calls.text(),
              "definePointTable appendPointXyz writeCoordinateRow appendPointXyz writeCoordinateRow");
}

TEST_F(CoordinatePoints, WithTheFlagOffNothingIsDrawnNorDefined) {
    tick(ImportKind::Coordinates, false);
    const std::vector<SimaPoint> points{{"KP1", 10.0, 20.0, 1.5, 1, true}};
    output.createCoordinatePoints(reader, points);
    EXPECT_TRUE(host.calls.all().empty());
    EXPECT_EQ(reader.coordinatePointsCreated, 0);
}

TEST_F(CoordinatePoints, SectionWithoutPointsDefinesTheTableAllTheSame) {
    output.createCoordinatePoints(reader, {});
    EXPECT_EQ(host.calls.text(), "definePointTable");
}

TEST_F(CoordinatePoints, PointWithoutANameIsDrawnWithAnEmptyName) {
    const std::vector<SimaPoint> points{{"", 10.0, 20.0, 0.0, 1, false}};
    output.createCoordinatePoints(reader, points);
    expectRow(0, "JSIMA_V3_Point", 1, "", "座標");
}

TEST_F(CoordinatePoints, EqualCoordinatesGiveTwoPoints) {
    const std::vector<SimaPoint> points{{"A", 10.0, 20.0, 0.0, 1, false}, {"B", 10.0, 20.0, 0.0, 2, false}};
    output.createCoordinatePoints(reader, points);
    EXPECT_EQ(host.drawing.pointCount(), 2U);
}

TEST_F(CoordinatePoints, IdentifierIsNotTestedTheRowIsWrittenAndThePointCounts) {
    host.drawing.failPoints = true;
    const std::vector<SimaPoint> points{{"A", 10.0, 20.0, 0.0, 1, false}};
    output.createCoordinatePoints(reader, points);
    ASSERT_EQ(host.rows.rowCount(), 1U);
    EXPECT_TRUE(host.rows.row(0).id.isNull());
    EXPECT_EQ(reader.coordinatePointsCreated, 1);
}

class LotPolylines : public test::Output {
  protected:
    static sima::LotData triangle(bool closed) {
        sima::LotData lot;
        lot.number = 101;
        lot.name = "1-2";
        lot.isType1 = closed;
        lot.points = {{"A", 0.0, 0.0, 1.0, 1, true}, {"B", 10.0, 0.0, 2.0, 2, true}, {"C", 0.0, 10.0, 3.0, 3, true}};
        return lot;
    }
};

TEST_F(LotPolylines, AreMadeConvertedAndOnlyThenGivenLayerAndRow) {
    output.createLotPolyline(reader, triangle(true));
    EXPECT_EQ(host.calls.text(), "definePolylineTable appendPolyline convertToLightweight setLotPolyline writeLotRow");
    ASSERT_EQ(host.drawing.polylineCount(), 1U);
    const host::RecordedPolyline polyline = host.drawing.polyline(0);
    EXPECT_TRUE(polyline.lightweight);
    EXPECT_TRUE(polyline.closed);
    EXPECT_EQ(polyline.layer, "画地");
    ASSERT_EQ(polyline.vertices.size(), 3U) << "closure is the flag, not a further vertex";
    EXPECT_EQ(polyline.vertices[2], (MdGePoint3d{0.0, 10.0, 3.0}));
    expectRow(0, "JSIMA_V3_Pline", 101, "1-2", "画地");
    EXPECT_EQ(host.rows.row(0).id, polyline.id);
}

TEST_F(LotPolylines, OtherLotsStayOpen) {
    output.createLotPolyline(reader, triangle(false));
    EXPECT_FALSE(host.drawing.polyline(0).closed);
}

TEST_F(LotPolylines, NoCounterMoves) {
    output.createLotPolyline(reader, triangle(true));
    EXPECT_EQ(reader.polylinesCreated, 0);
}

TEST_F(LotPolylines, LotOfOnePointHasOneVertex) {
    sima::LotData lot;
    lot.points = {{"A", 5.0, 6.0, 0.0, 1, false}};
    output.createLotPolyline(reader, lot);
    ASSERT_EQ(host.drawing.polyline(0).vertices.size(), 1U);
    EXPECT_EQ(host.drawing.polyline(0).vertices[0], (MdGePoint3d{5.0, 6.0, 0.0}));
}

TEST_F(LotPolylines, TableIsDefinedOnlyAfterTheTwoTests) {
    output.createLotPolyline(reader, sima::LotData());
    tick(ImportKind::Lots, false);
    output.createLotPolyline(reader, triangle(true));
    EXPECT_TRUE(host.calls.all().empty());
}

TEST_F(LotPolylines, PolylineThatCannotBeOpenedGetsNoRow) {
    host.drawing.failLotPolylines = true;
    output.createLotPolyline(reader, triangle(true));
    EXPECT_EQ(host.rows.rowCount(), 0U);
    EXPECT_EQ(host.calls.count(Call::SetLotPolyline), 1U);
}

TEST_F(LotPolylines, ManyLotsKeepTheirOwnVertices) {
    for (int i = 0; i < 3; ++i) {
        sima::LotData lot = triangle(true);
        lot.points[0].x = i;
        lot.points.resize(static_cast<std::size_t>(i + 1));
        output.createLotPolyline(reader, lot);
    }
    for (std::size_t i = 0; i < 3; ++i) {
        ASSERT_EQ(host.drawing.polyline(i).vertices.size(), i + 1);
        EXPECT_EQ(host.drawing.polyline(i).vertices[0].x, static_cast<double>(i));
    }
}

} // namespace
} // namespace fenmark
