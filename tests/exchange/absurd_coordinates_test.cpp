// Coordinates beyond all numbers stay in the drawing, and no file for another program holds them.
#include "exchange/csv.h"
#include "exchange/dxf.h"
#include "exchange/formats.h"
#include "exchange/geojson.h"
#include "exchange/info.h"
#include "exchange/landxml.h"
#include "exchange/placed.h"
#include "exchange/plan/plan_svg.h"
#include "sample_drawing.h"
#include "worded_notes.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <pugixml.hpp>

#include <algorithm>
#include <limits>
#include <regex>
#include <sstream>

namespace fenmark::exchange {
namespace {

constexpr double kEndless = std::numeric_limits<double>::infinity();
constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();

class AbsurdCoordinates : public ::testing::Test {
  protected:
    Drawing drawing_;

    void SetUp() override {
        fillSample(drawing_);
        addPoint(drawing_, {kEndless, 50.0, 0.0}, "NORTH");
        addPoint(drawing_, {12010.0, -kEndless, 0.0}, "SOUTH");
        addPoint(drawing_, {12020.0, -36020.0, kEndless}, "HIGH");
        addPoint(drawing_, {1e300, kNoNumber, 0.0}, "NOWHERE");
        addPolyline(drawing_, {{12010, -36010, 0}, {12010, kEndless, 0}, {12030, -36030, 0}}, true, "WIDE");
        addPolyline(drawing_, {{1e200, 0, 0}, {1e200, 1e200, 0}, {0, 1e200, 0}}, true, "HUGE");
        addPolyline(drawing_, {{12010, -36010, 0}, {-kEndless, 0, 0}}, false, "LONG", "連続線");
        addRoad(drawing_, {1e300, 1e300}, true, "FARAWAY");
    }

    template <typename Write>
    std::string written(Write write) {
        std::ostringstream out;
        if constexpr (std::is_void_v<decltype(write(drawing_, out))>) {
            write(drawing_, out);
        } else {
            notes_ = write(drawing_, out);
        }
        const std::string text = out.str();
        // "INF" is how LandXML calls the radius of a straight.
        const std::regex noNumber("(^|[^A-Za-z])(-?inf|-?nan)([^A-Za-z]|$)", std::regex::ECMAScript);
        std::smatch found;
        EXPECT_FALSE(std::regex_search(text, found, noNumber)) << found.str();
        return text;
    }
    std::string dxf() {
        return written([](const Drawing& drawing, std::ostream& out) { return writeDxf(drawing, {}, out); });
    }
    static Notes planeGeoJson(const Drawing& drawing, std::ostream& out) {
        ExportOptions options;
        options.plane = true;
        return writeGeoJson(drawing, options, out);
    }
    Notes notes_;
};

TEST_F(AbsurdCoordinates, AreNotInJsonWhichStaysStrict) {
    const nlohmann::json json = nlohmann::json::parse(written(writeInfoJson));
    for (const auto& entity : json["entities"]) {
        if (entity["data"]["Name"] == "NORTH") {
            EXPECT_EQ(entity["position"].dump(), "[null,50.0,0.0]");
        }
    }
}

TEST_F(AbsurdCoordinates, GiveGeoJsonFeaturesWithoutGeometry) {
    const nlohmann::json json = nlohmann::json::parse(written(planeGeoJson));
    std::vector<std::string> without;
    for (const auto& feature : json["features"]) {
        const std::string name = feature["properties"].value("Name", "");
        if (feature["geometry"].is_null()) {
            without.push_back(name);
        } else {
            EXPECT_EQ(feature["geometry"]["coordinates"].dump().find("null"), std::string::npos) << name;
        }
        if (name == "HIGH") {
            EXPECT_EQ(feature["geometry"]["coordinates"].dump(), "[12020.0,-36020.0]");
        }
    }
    EXPECT_EQ(without, (std::vector<std::string>{"FARAWAY", "NORTH", "SOUTH", "NOWHERE", "WIDE", "HUGE", "LONG"}));
    EXPECT_EQ(english(notes_), (std::vector<std::string>{
                                   "coordinates beyond all bounds; written without geometry: 3 points, 3 polylines, 1 "
                                   "alignments",
                                   "heights beyond all bounds; in other files 0 or empty: 1 points"}));
}

TEST_F(AbsurdCoordinates, AreLeftOutOfDxfWithANote) {
    const std::string text = dxf();
    EXPECT_EQ(text.find("WIDE"), std::string::npos);
    EXPECT_EQ(text.find("FARAWAY"), std::string::npos);
    EXPECT_NE(text.find("HIGH"), std::string::npos);
    EXPECT_EQ(text.find("$EXTMAX"), std::string::npos) << "readers find the extent by themselves";
    ASSERT_EQ(notes_.size(), 2U);
    EXPECT_EQ(english(notes_[0]), "coordinates beyond all bounds; left out: 3 points, 3 polylines, 1 alignments");
}

TEST_F(AbsurdCoordinates, AreLeftOutOfLandXmlWithANote) {
    pugi::xml_document document;
    ASSERT_TRUE(document.load_string(written(writeLandXml).c_str()));
    const pugi::xml_node root = document.child("LandXML");
    const auto count = [&](const char* group, const char* child) {
        const auto children = root.child(group).children(child);
        return std::distance(children.begin(), children.end());
    };
    EXPECT_EQ(count("Alignments", "Alignment"), 1);
    EXPECT_EQ(count("CgPoints", "CgPoint"), 3);
    EXPECT_EQ(count("Parcels", "Parcel"), 1);
    EXPECT_EQ(count("PlanFeatures", "PlanFeature"), 1);
    EXPECT_EQ(notes_.size(), 2U);
}

TEST_F(AbsurdCoordinates, AreEmptyFieldsInCsv) {
    const std::string text = written(writeCsv);
    EXPECT_NE(text.find(",0,,50,,JSIMA_V3_Point,1,NORTH"), std::string::npos) << text;
    EXPECT_NE(text.find(",0,12020,-36020,,JSIMA_V3_Point,1,HIGH"), std::string::npos) << text;
    EXPECT_EQ(notes_.size(), 3U);
}

TEST_F(AbsurdCoordinates, AreLeftOutOfThePlanWithANote) {
    const std::string text = written(writePlanSvg);
    pugi::xml_document document;
    EXPECT_TRUE(document.load_string(text.c_str()));
    EXPECT_EQ(text.find("WIDE"), std::string::npos);
    ASSERT_FALSE(notes_.empty());
    const std::string note = japanese(notes_.front());
    EXPECT_NE(note.find("座標が大きすぎる7個"), std::string::npos) << note;
}

TEST_F(AbsurdCoordinates, DoNotWidenTheExtent) {
    Drawing drawing;
    addPoint(drawing, {3.0, 4.0, 0.0}, "A");
    addPoint(drawing, {kEndless, 5.0, 0.0}, "B");
    addPoint(drawing, {kNoNumber, 5.0, 0.0}, "C");
    const drawing::Extent& extent = drawing.extent();
    EXPECT_EQ(std::vector<double>({extent.minX, extent.minY, extent.maxX, extent.maxY}),
              (std::vector<double>{3.0, 4.0, 3.0, 4.0}));
    std::ostringstream plan;
    EXPECT_EQ(writePlanSvg(drawing, plan).size(), 1U) << "and are reported all the same";
}

// Only an edited drawing has it: a radius of a picometre gave an arc as many vertices as it has half turns.
// So did one of two radii, of which one is a micrometre.
TEST(Placed, AnArcThatWindsOnAndOnIsLeftOut) {
    for (const double startRadius : {1e-12, 200.0}) {
        Drawing drawing;
        fillSample(drawing);
        drawing.setZone(9);
        const std::size_t coil = addRoad(drawing, {12000.0, -36500.0}, true, "COIL");
        Element arc = drawing.alignment(coil).elements.back();
        arc.type = drawing::ElementType::Arc;
        arc.startRadius = startRadius;
        arc.endRadius = std::min(startRadius, 1e-6);
        drawing.relayLastElements(coil, {&arc, 1});
        for (const char* name : {"a.dxf", "a.xml", "a.kml", "a.sim"}) {
            std::ostringstream out;
            const Notes notes = formatOf(name)->write(drawing, {}, out);
            ASSERT_FALSE(notes.empty()) << name;
            EXPECT_EQ(english(notes[0]), "coordinates beyond all bounds; left out: 0 points, 0 polylines, 1 alignments")
                << name;
            EXPECT_EQ(out.str().find("COIL"), std::string::npos) << name;
            EXPECT_LT(out.str().size(), 100'000U) << name;
        }
    }
}

TEST(Placed, OrdinaryDrawingsGiveNoNote) {
    Drawing drawing;
    fillSample(drawing);
    drawing.setZone(9);
    for (const Format& format : formats()) {
        if (format.extension == ".csv" || format.extension == ".sim") {
            continue; // which note what they hold no place for
        }
        std::ostringstream out;
        EXPECT_TRUE(format.write(drawing, {}, out).empty()) << format.extension;
    }
}

} // namespace
} // namespace fenmark::exchange
