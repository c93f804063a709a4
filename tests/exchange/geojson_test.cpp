// GeoJSON of a drawing, in the plane and in longitude and latitude.
#include "exchange/geojson.h"
#include "sample_drawing.h"

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

TEST(GeoJson, NamesTheReferenceSystemOfAZone) {
    Drawing drawing;
    EXPECT_TRUE(geoJsonOf(drawing)["crs"].is_null());
    drawing.setZone(19);
    EXPECT_EQ(geoJsonOf(drawing)["crs"]["properties"]["name"], "urn:ogc:def:crs:EPSG::6687");
}

} // namespace
} // namespace fenmark::exchange
