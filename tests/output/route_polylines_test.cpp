// IP lines, width-stake lines and continuous lines as polylines.
#include "output_fixture.h"

namespace fenmark {
namespace {

using host::Call;
using host::MdGePoint3d;

class RoutePolylines : public test::Output {
  protected:
    static sima::Array<sima::EntityData> bend() {
        sima::Array<sima::EntityData> elements{test::straight(0.0, 0.0, 10.0, 0.0),
                                               test::straight(10.0, 0.0, 10.0, 10.0)};
        elements[0].startZ = 1.0;
        elements[0].endZ = elements[1].startZ = 2.0;
        elements[1].endZ = 3.0;
        return elements;
    }
};

TEST_F(RoutePolylines, ThreePointsGiveThreeVerticesWithTheirHeights) {
    output.createRoutePolyline(reader, routeOf(1, bend()));
    ASSERT_EQ(host.drawing.polylineCount(), 1U);
    const host::RecordedPolyline polyline = host.drawing.polyline(0);
    EXPECT_EQ(std::vector<MdGePoint3d>(polyline.vertices.begin(), polyline.vertices.end()),
              (std::vector<MdGePoint3d>{{0.0, 0.0, 1.0}, {10.0, 0.0, 2.0}, {10.0, 10.0, 3.0}}));
    EXPECT_TRUE(polyline.lightweight);
    EXPECT_FALSE(polyline.closed);
    EXPECT_EQ(host.calls.text(),
              "definePolylineTable appendPolyline convertToLightweight setPolylineLayer writeRouteRow");
}

TEST_F(RoutePolylines, EachTypeHasItsLayerItsLabelAndItsCounter) {
    const struct {
        std::int32_t type;
        const char* layer;
        const char* label;
    } cases[] = {{1, "IP", "IP線"}, {4, "幅杭", "幅杭線左"}, {5, "幅杭", "幅杭線右"}, {6, "連続", "連続線"}};
    std::size_t made = 0;
    for (const auto& expected : cases) {
        output.createRoutePolyline(reader, routeOf(expected.type, bend()));
        EXPECT_EQ(host.drawing.polyline(made).layer, expected.layer);
        expectRow(made, "JSIMA_V3_Pline", 7, "県道", expected.label);
        EXPECT_EQ(reader.routesCreated(expected.type), 1);
        ++made;
    }
    EXPECT_EQ(reader.polylinesCreated, 4);
    EXPECT_EQ(reader.routesCreated(2), 0);
}

TEST_F(RoutePolylines, RouteOfOnePointGivesOneVertexAtTheOriginAndCounts) {
    output.createRoutePolyline(reader, routeOf(1, {}));
    ASSERT_EQ(host.drawing.polylineCount(), 1U);
    ASSERT_EQ(host.drawing.polyline(0).vertices.size(), 1U);
    EXPECT_EQ(host.drawing.polyline(0).vertices[0], MdGePoint3d());
    EXPECT_EQ(reader.polylinesCreated, 1);
}

TEST_F(RoutePolylines, RouteWithoutPointsDefinesTheTableAndMakesNothing) {
    sima::SimaAlignment route;
    route.routeType = 6;
    output.createRoutePolyline(reader, route);
    EXPECT_EQ(host.calls.text(), "definePolylineTable");
    EXPECT_EQ(reader.polylinesCreated, 0);
}

TEST_F(RoutePolylines, NothingIsMergedOrDropped) {
    sima::Array<sima::EntityData> elements{test::straight(0.0, 0.0, 10.0, 0.0), test::straight(10.0, 0.0, 10.0, 0.0),
                                           test::straight(10.0, 0.0, 20.0, 0.0)};
    output.createRoutePolyline(reader, routeOf(6, elements));
    const host::RecordedPolyline polyline = host.drawing.polyline(0);
    ASSERT_EQ(polyline.vertices.size(), 4U);
    EXPECT_EQ(polyline.vertices[1], polyline.vertices[2]);
}

TEST_F(RoutePolylines, CurvesBecomeChords) {
    sima::Array<sima::EntityData> elements{test::arc(0.0, 0.0, 10.0, 10.0, "10", "R")};
    output.createRoutePolyline(reader, routeOf(6, elements));
    const host::RecordedPolyline polyline = host.drawing.polyline(0);
    EXPECT_EQ(std::vector<MdGePoint3d>(polyline.vertices.begin(), polyline.vertices.end()),
              (std::vector<MdGePoint3d>{{0.0, 0.0, 0.0}, {10.0, 10.0, 0.0}}));
    expectRow(0, "JSIMA_V3_Pline", 7, "県道", "連続線");
}

TEST_F(RoutePolylines, InvalidIdentifierSkipsLayerRowAndCounters) {
    host.drawing.failPolylines = true;
    output.createRoutePolyline(reader, routeOf(1, bend()));
    EXPECT_EQ(host.calls.text(), "definePolylineTable appendPolyline convertToLightweight");
    EXPECT_EQ(reader.polylinesCreated, 0);
    EXPECT_EQ(reader.routesCreated(1), 0);
}

TEST_F(RoutePolylines, OtherTypesKeepAnEmptyLayer) {
    output.createRoutePolyline(reader, routeOf(2, bend()));
    EXPECT_EQ(host.drawing.polyline(0).layer, "");
    expectRow(0, "JSIMA_V3_Pline", 7, "県道", "Type 2");
}

} // namespace
} // namespace fenmark
