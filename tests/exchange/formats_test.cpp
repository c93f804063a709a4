// LandXML and CSV of a drawing.
#include "exchange/csv.h"
#include "exchange/dxf.h"
#include "exchange/landxml.h"
#include "exchange/notes.h"
#include "sample_drawing.h"
#include "worded_notes.h"

#include <gtest/gtest.h>
#include <pugixml.hpp>

#include <cmath>
#include <sstream>
#include <string>
#include <vector>

namespace fenmark::exchange {
namespace {

constexpr double kMetres = 1e-9; // of coordinates

class LandXml : public ::testing::Test {
  protected:
    pugi::xml_node parse(const Drawing& drawing) {
        std::ostringstream out;
        writeLandXml(drawing, out);
        EXPECT_TRUE(document.load_string(out.str().c_str()));
        return document.child("LandXML");
    }
    pugi::xml_document document;
};

TEST_F(LandXml, TellsHowManyNamesGotANumber) {
    Drawing drawing;
    addRoad(drawing, {12000.0, -36000.0}, true, "1");
    addRoad(drawing, {22000.0, -36000.0}, true, "1");
    for (const char* name : {"1", "1", "2", "1"}) {
        addPoint(drawing, {1.0, 2.0, 3.0}, name);
        addPolyline(drawing, {{0, 0, 0}, {0, 8, 0}, {12, 8, 0}}, true, name);
    }
    addPolyline(drawing, {{0, 0, 0}, {0, 8, 0}}, false, "1");
    std::ostringstream out;
    EXPECT_EQ(writeLandXml(drawing, out), (Notes{{NoteCode::RenamedObjects, 5}}));
    EXPECT_NE(out.str().find("<CgPoint name=\"1 (3)\""), std::string::npos);
    drawing.setZone(9);
    EXPECT_EQ(writeLandXmlProfile(drawing, LandXmlProfile::JLandXml, out),
              (Notes{{NoteCode::AlignmentsAlone, 4, 5}, {NoteCode::RenamedObjects, 1}}));
}

TEST_F(LandXml, TellsOfLinesWithoutALine) {
    Drawing drawing;
    addRoad(drawing, {12000.0, -36000.0}, true);
    addChain(drawing, {});
    addPolyline(drawing, {{0, 0, 0}}, true, "1");
    addPolyline(drawing, {{0, 0, 0}}, false, "左", "幅杭線左");
    addPolyline(drawing, {{0, 0, 0}, {0, 8, 0}}, true, "2");
    std::ostringstream out;
    EXPECT_EQ(writeLandXml(drawing, out), (Notes{{NoteCode::WithoutLine, 0, 2, 1}}));
    EXPECT_EQ(
        english(writeLandXml(drawing, out)),
        (std::vector<std::string>{"left out for want of a line: 2 polylines of fewer than two points, 1 alignment "
                                  "without elements"}));
    EXPECT_EQ(
        english(writeDxf(drawing, {}, out)),
        (std::vector<std::string>{"left out for want of a line: 0 polylines of fewer than two points, 1 alignment "
                                  "without elements"}))
        << "a line of one point is a point there";
}

TEST_F(LandXml, HasTheExactElements) {
    Drawing drawing;
    addRoad(drawing, {12000.0, -36000.0}, true);
    const pugi::xml_node alignment = parse(drawing).child("Alignments").child("Alignment");
    EXPECT_STREQ(alignment.attribute("name").value(), "中心線");
    EXPECT_STREQ(alignment.attribute("desc").value(), "a-中心線");
    EXPECT_EQ(alignment.attribute("staStart").as_double(), 100.0);
    EXPECT_EQ(alignment.attribute("length").as_double(), 192.0);
    std::string kinds;
    for (const pugi::xml_node element : alignment.child("CoordGeom").children()) {
        kinds += std::string(element.name()) + " ";
    }
    EXPECT_EQ(kinds, "Line Spiral Curve Spiral Line ");
    const pugi::xml_node spiral = alignment.child("CoordGeom").child("Spiral");
    EXPECT_STREQ(spiral.attribute("rot").value(), "cw");
    EXPECT_STREQ(spiral.attribute("spiType").value(), "clothoid");
    EXPECT_STREQ(spiral.attribute("radiusStart").value(), "INF");
    EXPECT_EQ(spiral.attribute("radiusEnd").as_double(), 100.0);
    EXPECT_EQ(spiral.attribute("length").as_double(), 36.0);
    EXPECT_NEAR(spiral.attribute("constant").as_double(), 60.0, kMetres);
    EXPECT_EQ(spiral.attribute("staStart").as_double(), 150.0);
    const pugi::xml_node curve = alignment.child("CoordGeom").child("Curve");
    EXPECT_EQ(curve.attribute("radius").as_double(), 100.0);
    EXPECT_STRNE(curve.child_value("Center"), "");
}

TEST_F(LandXml, HeadStandsBeforeTheGroupsAndTellsItsUnits) {
    Drawing drawing;
    fillSample(drawing);
    drawing.setZone(9);
    std::string order;
    for (const pugi::xml_node& child : parse(drawing).children()) {
        order += std::string(child.name()) + " ";
    }
    EXPECT_EQ(order, "Units CoordinateSystem Application Alignments CgPoints Parcels PlanFeatures ");
    const pugi::xml_node metric = parse(drawing).child("Units").child("Metric");
    EXPECT_STREQ(metric.attribute("linearUnit").value(), "meter");
    EXPECT_STREQ(metric.attribute("areaUnit").value(), "squareMeter");
}

TEST_F(LandXml, GivesNorthBeforeEast) {
    Drawing drawing;
    fillSample(drawing);
    const pugi::xml_node root = parse(drawing);
    EXPECT_STREQ(root.child("CgPoints").child("CgPoint").child_value(), "-36000 12000 12.5");
    EXPECT_STREQ(root.child("Alignments").child("Alignment").child("CoordGeom").child("Line").child_value("Start"),
                 "-36000 12000");
}

TEST_F(LandXml, LotsAreParcelsWithAreaAndOtherLinesPlanFeatures) {
    Drawing drawing;
    fillSample(drawing);
    const pugi::xml_node root = parse(drawing);
    const pugi::xml_node parcel = root.child("Parcels").child("Parcel");
    EXPECT_STREQ(parcel.attribute("name").value(), "12-3");
    EXPECT_EQ(parcel.attribute("area").as_double(), 400.0);
    EXPECT_EQ(std::distance(parcel.child("CoordGeom").begin(), parcel.child("CoordGeom").end()), 4);
    const pugi::xml_node feature = root.child("PlanFeatures").child("PlanFeature");
    EXPECT_STREQ(feature.attribute("desc").value(), "幅杭線左");
    EXPECT_EQ(std::distance(feature.child("CoordGeom").begin(), feature.child("CoordGeom").end()), 1);
}

TEST_F(LandXml, NamesAreUniqueWithinTheirGroup) {
    Drawing drawing;
    addPoint(drawing, {0, 0, 0}, "K1");
    addPoint(drawing, {1, 0, 0}, "K1");
    addPoint(drawing, {2, 0, 0}, "");
    std::set<std::string> names;
    std::size_t count = 0;
    for (const pugi::xml_node point : parse(drawing).child("CgPoints").children()) {
        names.insert(point.attribute("name").value());
        ++count;
    }
    EXPECT_EQ(count, 3U);
    EXPECT_EQ(names.size(), 3U);
    EXPECT_TRUE(names.contains("K1"));
}

TEST_F(LandXml, EmptyGroupsAreLeftOut) {
    Drawing drawing;
    drawing.addAlignment(drawing.addSite("サイト"), "空", "0", "", "");
    const pugi::xml_node root = parse(drawing);
    for (const char* group : {"Alignments", "CgPoints", "Parcels", "PlanFeatures", "CoordinateSystem"}) {
        EXPECT_FALSE(root.child(group)) << group;
    }
}

TEST_F(LandXml, ZoneIsItsEpsgCode) {
    Drawing drawing;
    drawing.setZone(9);
    EXPECT_STREQ(parse(drawing).child("CoordinateSystem").attribute("epsgCode").value(), "6677");
}

TEST(Csv, HoldsPointsWithTheirRows) {
    Drawing drawing;
    fillSample(drawing);
    std::ostringstream out;
    const Notes notes = writeCsv(drawing, out);
    const std::string id = std::to_string(drawing.entity(0).id.asUint64());
    const std::string next = std::to_string(drawing.entity(1).id.asUint64());
    EXPECT_EQ(out.str(), "\xEF\xBB\xBFid,layer,x_east,y_north,z,table,no,name,type,file\r\n" + id +
                             ",0,12000,-36000,12.5,JSIMA_V3_Point,1,BP,座標,a.sim\r\n" + next +
                             ",0,12050,-36000,,JSIMA_V3_Point,1,\"点,\"\"2\"\"\",座標,a.sim\r\n");
    ASSERT_EQ(notes.size(), 1U);
    EXPECT_TRUE(english(notes[0]).ends_with("2 polylines, 1 alignment"));
}

TEST(Csv, KeepsBlanksAtTheEndsInQuotes) {
    Drawing drawing;
    addPoint(drawing, {0, 0, 0}, "FK1  ");
    std::ostringstream out;
    EXPECT_TRUE(writeCsv(drawing, out).empty());
    EXPECT_NE(out.str().find(",\"FK1  \","), std::string::npos);
}

TEST(Csv, TellsOfEveryObjectThatIsNoPoint) {
    for (const std::size_t lines : {0U, 1U, 2U}) {
        for (const std::size_t roads : {0U, 1U, 2U}) {
            Drawing drawing;
            for (std::size_t i = 0; i < lines; ++i) {
                addPolyline(drawing, {{0, 0, 0}, {0, 8, 0}}, false, "1");
            }
            for (std::size_t i = 0; i < roads; ++i) {
                addRoad(drawing, {12000.0, -36000.0}, true);
            }
            std::ostringstream out;
            const Notes wanted = lines + roads == 0 ? Notes{} : Notes{{NoteCode::PointsAlone, 0, lines, roads}};
            EXPECT_EQ(writeCsv(drawing, out), wanted) << lines << " and " << roads;
        }
    }
}

} // namespace
} // namespace fenmark::exchange
