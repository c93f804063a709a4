// GeoJSON of a drawing, in the plane and in longitude and latitude.
#include "exchange/geojson.h"
#include "sample_drawing.h"
#include "worded_notes.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <sstream>

namespace fenmark::exchange {
namespace {

ExportOptions plane() {
    ExportOptions options;
    options.plane = true;
    return options;
}

nlohmann::json geoJsonOf(const Drawing& drawing, const ExportOptions& options = plane()) {
    std::ostringstream out;
    writeGeoJson(drawing, options, out);
    return nlohmann::json::parse(out.str());
}

TEST(GeoJson, HasOneFeatureForEachThing) {
    Drawing drawing;
    fillSample(drawing);
    const nlohmann::json features = geoJsonOf(drawing)["features"];
    std::string types;
    for (const auto& feature : features) {
        types += feature["geometry"]["type"].get<std::string>() + " ";
    }
    EXPECT_EQ(types, "LineString Point Point Polygon LineString ");
    EXPECT_EQ(features[1]["geometry"]["coordinates"], nlohmann::json({12000.0, -36000.0, 12.5}));
    EXPECT_EQ(features[2]["properties"]["Name"], "点,\"2\"");
    EXPECT_EQ(features[0]["properties"]["Site"], "サイト");
    EXPECT_EQ(features[0]["properties"]["Length"], 192.0);
}

TEST(GeoJson, PolygonsAreClosedAndRunAnticlockwise) {
    Drawing drawing;
    addPolyline(drawing, {{0, 0, 0}, {0, 2, 0}, {2, 2, 0}}, true, "時計回り");
    addPolyline(drawing, {{0, 0, 0}, {2, 2, 0}, {0, 2, 0}}, true, "反時計回り");
    const nlohmann::json features = geoJsonOf(drawing)["features"];
    ASSERT_EQ(features.size(), 2U);
    for (const auto& feature : features) {
        const nlohmann::json ring = feature["geometry"]["coordinates"][0];
        ASSERT_EQ(ring.size(), 4U);
        EXPECT_EQ(ring.front(), ring.back());
        double twice = 0.0;
        for (std::size_t i = 0; i + 1 < ring.size(); ++i) {
            twice += ring[i][0].get<double>() * ring[i + 1][1].get<double>() -
                     ring[i + 1][0].get<double>() * ring[i][1].get<double>();
        }
        EXPECT_EQ(twice, 4.0);
    }
}

TEST(GeoJson, LotsOfOneOrTwoPointsAreNoPolygons) {
    Drawing drawing;
    addPolyline(drawing, {{1, 2, 0}}, true, "一点");
    addPolyline(drawing, {{1, 2, 0}, {4, 6, 0}}, true, "二点");
    addPolyline(drawing, {}, true, "なし");
    const nlohmann::json features = geoJsonOf(drawing)["features"];
    ASSERT_EQ(features.size(), 3U);
    EXPECT_EQ(features[0]["geometry"], nlohmann::json::parse(R"({"type":"Point","coordinates":[1.0,2.0]})"));
    EXPECT_EQ(features[1]["geometry"],
              nlohmann::json::parse(R"({"type":"LineString","coordinates":[[1.0,2.0],[4.0,6.0],[1.0,2.0]]})"));
    EXPECT_TRUE(features[2]["geometry"].is_null());
}

TEST(GeoJson, NamesTheReferenceSystemOfAZone) {
    Drawing drawing;
    EXPECT_TRUE(geoJsonOf(drawing)["crs"].is_null());
    drawing.setZone(19);
    EXPECT_EQ(geoJsonOf(drawing)["crs"]["properties"]["name"], "urn:ogc:def:crs:EPSG::6687");
}

constexpr double kDegreesOfMillimetre = 1e-9; // some tenth of a millimetre on the ground

nlohmann::json degreesOf(Drawing& drawing, int zone) {
    drawing.setZone(zone);
    return geoJsonOf(drawing, {});
}

TEST(GeoJsonInDegrees, LiesWhereTheZoneSays) {
    // Tokyo station's forecourt in zone 9, from the transverse Mercator series of another program.
    Drawing drawing;
    addPoint(drawing, {-5966.0, -35363.0, 3.25}, "東京");
    const nlohmann::json at = degreesOf(drawing, 9)["features"][0]["geometry"]["coordinates"];
    ASSERT_EQ(at.size(), 3U);
    EXPECT_NEAR(at[0].get<double>(), 139.767422398997, kDegreesOfMillimetre);
    EXPECT_NEAR(at[1].get<double>(), 35.681238306141, kDegreesOfMillimetre);
    EXPECT_EQ(at[2], 3.25);
}

TEST(GeoJsonInDegrees, OriginsAreThoseOfTheNineteenZones) {
    // Latitude, longitude in degrees and minutes.
    constexpr double kOrigins[19][3] = {{33, 129, 30}, {33, 131, 0},  {36, 132, 10}, {33, 133, 30}, {36, 134, 20},
                                        {36, 136, 0},  {36, 137, 10}, {36, 138, 30}, {36, 139, 50}, {40, 140, 50},
                                        {44, 140, 15}, {44, 142, 15}, {44, 144, 15}, {26, 142, 0},  {26, 127, 30},
                                        {26, 124, 0},  {26, 131, 0},  {20, 136, 0},  {26, 154, 0}};
    for (int zone = 1; zone <= 19; ++zone) {
        Drawing drawing;
        addPoint(drawing, {0.0, 0.0, 0.0}, "O");
        const nlohmann::json at = degreesOf(drawing, zone)["features"][0]["geometry"]["coordinates"];
        const auto& origin = kOrigins[zone - 1];
        EXPECT_NEAR(at[0].get<double>(), origin[1] + origin[2] / 60.0, kDegreesOfMillimetre) << zone;
        EXPECT_NEAR(at[1].get<double>(), origin[0], kDegreesOfMillimetre) << zone;
        EXPECT_EQ(at.size(), 2U) << "a height that nobody gave";
    }
}

TEST(GeoJsonInDegrees, HasNoReferenceSystemAndNineDecimals) {
    Drawing drawing;
    fillSample(drawing);
    drawing.setZone(1);
    std::ostringstream out;
    EXPECT_TRUE(writeGeoJson(drawing, {}, out).empty());
    EXPECT_FALSE(nlohmann::json::parse(out.str()).contains("crs"));
    EXPECT_NE(out.str().find("\"coordinates\":[129.6"), std::string::npos) << out.str();
    const std::size_t at = out.str().find("\"coordinates\":[129.6") + 15;
    EXPECT_EQ(out.str().find(',', at) - out.str().find('.', at), 10U);
}

TEST(GeoJsonInDegrees, RingsRunAnticlockwise) {
    Drawing drawing;
    addPolyline(drawing, {{0, 0, 0}, {0, 20, 0}, {20, 20, 0}}, true, "時計回り");
    const nlohmann::json ring = degreesOf(drawing, 9)["features"][0]["geometry"]["coordinates"][0];
    ASSERT_EQ(ring.size(), 4U);
    EXPECT_EQ(ring.front(), ring.back());
    double twice = 0.0;
    for (std::size_t i = 0; i + 1 < ring.size(); ++i) {
        twice += (ring[i][0].get<double>() - ring[0][0].get<double>()) *
                     (ring[i + 1][1].get<double>() - ring[0][1].get<double>()) -
                 (ring[i + 1][0].get<double>() - ring[0][0].get<double>()) *
                     (ring[i][1].get<double>() - ring[0][1].get<double>());
    }
    EXPECT_GT(twice, 0.0);
}

TEST(GeoJsonInDegrees, WhatNoZoneReachesHasNoGeometry) {
    Drawing drawing;
    addPoint(drawing, {4.0e6, 0.0, 0.0}, "東");
    addPoint(drawing, {0.0, -6.0e6, 0.0}, "南");
    addPoint(drawing, {0.0, 0.0, 0.0}, "中");
    drawing.setZone(9);
    std::ostringstream out;
    const Notes notes = writeGeoJson(drawing, {}, out);
    const nlohmann::json features = nlohmann::json::parse(out.str())["features"];
    EXPECT_TRUE(features[0]["geometry"].is_null());
    EXPECT_TRUE(features[1]["geometry"].is_null());
    EXPECT_FALSE(features[2]["geometry"].is_null());
    EXPECT_EQ(notes, (Notes{{NoteCode::BeyondProjection, 2, 0, 0, Fate::WithoutGeometry}}));
    EXPECT_NE(english(notes.at(0)).find("2 objects"), std::string::npos);
}

TEST(GeoJsonInDegrees, TheZoneOfTheOptionsGoesBeforeTheDrawings) {
    Drawing drawing;
    addPoint(drawing, {0.0, 0.0, 0.0}, "O");
    drawing.setZone(9);
    ExportOptions options;
    options.zone = 2;
    EXPECT_EQ(geoJsonOf(drawing, options)["features"][0]["geometry"]["coordinates"][0], 131.0);
}

TEST(GeoJson, HeightsThatNobodyGaveStayOutAndResultsHaveTheirs) {
    Drawing drawing;
    addPoint(drawing, {1, 2, 0}, "a");
    addPoint(drawing, {1, 2, -0.001}, "b");
    addPoint(drawing, {1, 2, 0}, "c", "縦断成果");
    addPoint(drawing, {1, 2, 0}, "d", "横断成果");
    std::vector<std::size_t> sizes;
    const nlohmann::json json = geoJsonOf(drawing);
    for (const auto& feature : json["features"]) {
        sizes.push_back(feature["geometry"]["coordinates"].size());
    }
    EXPECT_EQ(sizes, (std::vector<std::size_t>{2, 3, 3, 3}));
}

TEST(GeoJson, HostileNamesComeBack) {
    Drawing drawing;
    const std::string name("a\x01\x1F\"\\/<&>\uFFFE髙﨑");
    drawing.addPoint({0, 0, 0}, 0);
    drawing.setRow(0, tableNamed(drawing, "JSIMA_V3_Point"), 1, name, "座標", "a.sim");
    EXPECT_EQ(geoJsonOf(drawing)["features"][0]["properties"]["Name"], name);
}

} // namespace
} // namespace fenmark::exchange
