// Coordinates beyond all numbers stay in the drawing, and no file for another program holds them.
#include "exchange/csv.h"
#include "exchange/dxf.h"
#include "exchange/formats.h"
#include "exchange/geojson.h"
#include "exchange/info.h"
#include "exchange/landxml.h"
#include "exchange/placed.h"
#include "exchange/plan/plan_svg.h"
#include "exchange/plan/plot.h"
#include "exchange/report/report.h"
#include "sample_drawing.h"
#include "worded_notes.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <pugixml.hpp>

#include <algorithm>
#include <array>
#include <cstddef>
#include <limits>
#include <regex>
#include <sstream>
#include <streambuf>
#include <string>
#include <utility>
#include <vector>

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
                                   "alignment",
                                   "heights beyond all bounds; in other files 0 or empty: 1 point"}));
}

TEST_F(AbsurdCoordinates, AreLeftOutOfDxfWithANote) {
    const std::string text = dxf();
    EXPECT_EQ(text.find("WIDE"), std::string::npos);
    EXPECT_EQ(text.find("FARAWAY"), std::string::npos);
    EXPECT_NE(text.find("HIGH"), std::string::npos);
    EXPECT_EQ(text.find("$EXTMAX"), std::string::npos) << "readers find the extent by themselves";
    ASSERT_EQ(notes_.size(), 2U);
    EXPECT_EQ(english(notes_[0]), "coordinates beyond all bounds; left out: 3 points, 3 polylines, 1 alignment");
}

TEST_F(AbsurdCoordinates, AreCountedWhereverTheObjectStands) {
    constexpr std::size_t kObjects = 3;
    constexpr std::array<const char*, kObjects> kNames = {"P", "Q", "R"};
    for (std::size_t absurd = 0; absurd < kObjects; ++absurd) {
        drawing_ = Drawing();
        for (std::size_t i = 0; i < kObjects; ++i) {
            addPoint(drawing_, {i == absurd ? kEndless : 12000.0, -36000.0, 0.0}, i == absurd ? "ABSURD" : kNames[i]);
        }
        const std::vector<std::string> leftOut = {
            "coordinates beyond all bounds; left out: 1 point, 0 polylines, 0 alignments"};
        EXPECT_EQ(dxf().find("ABSURD"), std::string::npos) << absurd;
        EXPECT_EQ(english(notes_), leftOut) << absurd;
        EXPECT_EQ(written(writeLandXml).find("ABSURD"), std::string::npos) << absurd;
        EXPECT_EQ(english(notes_), leftOut) << absurd;
        EXPECT_NE(written(planeGeoJson).find("ABSURD"), std::string::npos) << absurd;
        const std::vector<std::string> withoutGeometry = {
            "coordinates beyond all bounds; written without geometry: 1 point, 0 polylines, 0 alignments"};
        EXPECT_EQ(english(notes_), withoutGeometry) << absurd;
    }
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
            EXPECT_EQ(english(notes[0]), "coordinates beyond all bounds; left out: 0 points, 0 polylines, 1 alignment")
                << name;
            EXPECT_EQ(out.str().find("COIL"), std::string::npos) << name;
            EXPECT_LT(out.str().size(), 100'000U) << name;
        }
    }
}

// Takes what is written, and keeps nothing but its size.
class CountedBytes : public std::streambuf {
  public:
    std::streamsize count = 0;

  protected:
    std::streamsize xsputn(const char*, std::streamsize bytes) override {
        count += bytes;
        return bytes;
    }
    int_type overflow(int_type byte) override {
        ++count;
        return traits_type::not_eof(byte);
    }
};

std::streamsize sizeOfWindingRoads(const Format& format, std::size_t roads, bool elements) {
    Drawing drawing;
    drawing.setZone(9);
    const auto site = drawing.addSite("サイト");
    for (std::size_t i = 0; i < roads; ++i) {
        Element clothoid;
        clothoid.type = ElementType::Clothoid;
        clothoid.length = 5.4e4;
        clothoid.endRadius = 0.15;
        clothoid.end = drawing::poseOnElement(clothoid, clothoid.length).point;
        drawing.addElement(drawing.addAlignment(site, "R", "0", "Standard", "Standard"), clothoid);
    }
    ExportOptions options;
    options.elements = elements;
    CountedBytes bytes;
    std::ostream out(&bytes);
    format.write(drawing, options, out);
    return bytes.count;
}

// Each of them alone is drawn with 10,000 points, and a file of 100 kB names thousands.
TEST(Placed, CurvesThatWindOnAndOnShareTheirPoints) {
    constexpr std::size_t kRoads = 240;
    const auto bound =
        static_cast<std::streamsize>(drawing::kMostDrawingPoints / drawing::kMostElementPoints +
                                     kRoads * drawing::kUsualElementPoints / drawing::kMostElementPoints);
    for (const auto& [name, elements] : {std::pair("a.dxf", false), std::pair("a.dxf", true),
                                         std::pair("a.geojson", false), std::pair("a.kml", false)}) {
        const Format& format = *formatOf(name);
        const std::streamsize one = sizeOfWindingRoads(format, 1, elements);
        EXPECT_GT(one, 100'000) << name;
        EXPECT_LT(sizeOfWindingRoads(format, kRoads, elements), one * bound) << name << elements;
    }
}

// All that is written of the drawing. "INF" is how LandXML calls the radius of a straight.
std::string everythingOf(const Drawing& drawing) {
    std::ostringstream out;
    for (const Format& format : formats()) {
        ExportOptions options;
        format.write(drawing, options, out);
        options.elements = true;
        options.landXmlProfile = LandXmlProfile::JLandXml;
        format.write(drawing, options, out);
    }
    writeInfoJson(drawing, out);
    writeReport(drawing, {}, ReportFormat::Html, out);
    for (const Plot& plot : {plotAlong(drawing, 0, {}), plotProfile(drawing, 0, {})}) {
        EXPECT_FALSE(plot.failure);
        for (const std::string& page : plot.pages) {
            out << page;
        }
    }
    return out.str();
}

std::size_t occurrencesOf(const std::string& part, const std::string& text) {
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + part.size())) {
        ++count;
    }
    return count;
}

// A straight, the arc, a straight, and two results; sheets have no A command where no arc is an arc.
void fillWithArc(Drawing& drawing, double startRadius, double endRadius) {
    addChain(drawing, {{ElementType::Straight, 50.0, kStraight, kStraight, false},
                       {ElementType::Arc, 40.0, startRadius, endRadius, true},
                       {ElementType::Straight, 30.0, kStraight, kStraight, false}});
    drawing.setZone(9);
    for (const double station : {10.0, 110.0}) {
        const auto at = drawing.geometry(0).pointAt(station).value();
        addPoint(drawing, {at.x, at.y, 5.0}, "No", "縦断成果");
    }
}

const std::regex kNotWritable("[^A-Za-z](inf|nan)[^A-Za-z]");

TEST(ArcsWithoutARadius, AreStraightsInEveryFile) {
    for (const double radius : {kEndless, 1e306, 1e13}) {
        Drawing drawing;
        fillWithArc(drawing, radius, radius);
        const std::string all = everythingOf(drawing);
        std::smatch found;
        EXPECT_FALSE(std::regex_search(all, found, kNotWritable)) << radius << found.str();
        EXPECT_EQ(occurrencesOf("<Curve", all), 0U) << radius;
        EXPECT_EQ(occurrencesOf("<Line length", all), 6U) << radius;
        EXPECT_EQ(occurrencesOf("\nARC\n", all) + occurrencesOf("\nARC\r\n", all), 0U) << radius;
        EXPECT_EQ(occurrencesOf("class=\"l arc\"", all), 0U) << radius;
        EXPECT_EQ(occurrencesOf("R=", all), 0U) << radius;
    }
}

// As a changed drawing may have it.
TEST(ArcsWithoutARadius, OfOneRadiusAloneAreTheClothoidsThatTheyRun) {
    Drawing drawing;
    fillWithArc(drawing, kEndless, 100.0);
    const std::string all = everythingOf(drawing);
    EXPECT_FALSE(std::regex_search(all, kNotWritable));
    EXPECT_EQ(occurrencesOf("<Spiral", all), 2U);
    EXPECT_EQ(occurrencesOf("<Curve", all), 0U);
    EXPECT_GE(occurrencesOf("A=63.246", all), 2U) << "the root of 100 times 40";
}

TEST(Placed, AnElementWithoutAnEndDirectionIsLeftOut) {
    Drawing drawing;
    fillSample(drawing);
    addChain(drawing, {{ElementType::Clothoid, 40.0, kStraight, 0.0, true}});
    std::ostringstream dxf;
    ASSERT_EQ(
        english(writeDxf(drawing, {}, dxf)),
        (std::vector<std::string>{"coordinates beyond all bounds; left out: 0 points, 0 polylines, 1 alignment"}));
    std::ostringstream plan;
    EXPECT_EQ(writePlanSvg(drawing, plan).front(), (Note{NoteCode::OutOfReach, 1}));
    EXPECT_FALSE(std::regex_search(dxf.str() + plan.str(), kNotWritable));
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
