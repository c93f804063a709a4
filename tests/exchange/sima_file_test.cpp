// SIMA files of a drawing: fields and widths, names, references to points, routes and results. That an import makes the
// same drawing again is tested with the real import, in cli/sima_round_trip_test.cpp.
#include "exchange/sima_file.h"
#include "exchange/sima_lines.h"
#include "sample_drawing.h"
#include "sima/text/cp932.h"
#include "worded_notes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numbers>
#include <sstream>
#include <string>
#include <vector>

namespace fenmark::exchange {
namespace {

using Lines = std::vector<std::string>;

struct Written {
    Lines lines; // in UTF-8
    Lines notes; // in English

    std::vector<std::string> of(std::string_view code) const {
        std::vector<std::string> found;
        for (const std::string& line : lines) {
            if (line.starts_with(code)) {
                found.push_back(line);
            }
        }
        return found;
    }
    std::string codes() const {
        std::string all;
        for (const std::string& line : lines) {
            all += line.substr(0, 3) + " ";
        }
        return all;
    }
};

Written simaOf(const Drawing& drawing, const ExportOptions& options = {}) {
    std::ostringstream out;
    Written written;
    written.notes = english(writeSima(drawing, options, out));
    std::string text;
    sima::decodeCp932(text, out.str());
    std::istringstream in(text);
    std::string line;
    while (std::getline(in, line)) {
        EXPECT_TRUE(line.ends_with(",\r")) << line;
        line.pop_back();
        written.lines.push_back(line);
    }
    EXPECT_TRUE(text.ends_with('\n'));
    return written;
}

void addNumbered(Drawing& drawing, const MdGePoint3d& at, int number, const char* name) {
    drawing.addPoint(at, 0);
    drawing.setRow(drawing.entityCount() - 1, tableNamed(drawing, "JSIMA_V3_Point"), number, name, "座標", "a.sim");
}

TEST(SimaFile, PointsHaveNorthFirstAndAnEmptyHeightWhereNobodyGaveOne) {
    Drawing drawing;
    addNumbered(drawing, {12000.5, -36000.25, 12.5}, 1, "BP");
    addNumbered(drawing, {0.1234, 7.0, 0.0}, 12345, "点");
    const Written written = simaOf(drawing);
    EXPECT_EQ(written.codes(), "G00 A00 A01 A01 A99 ");
    EXPECT_EQ(written.of("A01"), (Lines{"A01,    1,BP,    -36000.250,     12000.500,        12.500,",
                                        "A01,12345,点,         7.000,        0.1234,,"}));
    EXPECT_TRUE(written.notes.empty());
}

TEST(SimaFile, ColumnsPadNamesToTwentyBytes) {
    Drawing drawing;
    addNumbered(drawing, {0.0, 0.0, 0.0}, 1, "点1");
    ExportOptions options;
    options.columns = true;
    EXPECT_EQ(simaOf(drawing, options).of("A01").at(0),
              "A01,    1,点1                 ,         0.000,         0.000,,");
}

TEST(SimaFile, NamesWithSeparatorsAndQuotesAreQuoted) {
    Drawing drawing;
    addNumbered(drawing, {0, 0, 0}, 1, "a,\"b\"");
    addNumbered(drawing, {1, 0, 0}, 2, "  ");
    addNumbered(drawing, {2, 0, 0}, 3, "é髙\x01");
    const Written written = simaOf(drawing);
    const Lines points = written.of("A01");
    EXPECT_TRUE(points.at(0).starts_with("A01,    1,\"a,\"\"b\"\"\","));
    EXPECT_TRUE(points.at(1).starts_with("A01,    2,\"  \","));
    EXPECT_TRUE(points.at(2).starts_with("A01,    3,?髙 ,"));
    EXPECT_EQ(written.notes, (Lines{"1 character that code page 932 does not have written as \"?\"",
                                    "1 control character in names written as a blank"}));
}

TEST(SimaFile, LotsAndLinesReferToPointsByNumberAndName) {
    Drawing drawing;
    addNumbered(drawing, {0, 0, 0}, 7, "A");
    addNumbered(drawing, {10, 0, 0}, 8, "B");
    addNumbered(drawing, {10, 10, 0}, 9, "C");
    addPolyline(drawing, {{0, 0, 0}, {10, 0, 0}, {10, 10, 0}}, true, "12-3");
    addPolyline(drawing, {{0, 0, 0}, {10, 0, 0}}, false, "12-4");
    for (const char* type : {"IP線", "幅杭線左", "幅杭線右", "連続線"}) {
        addPolyline(drawing, {{0, 0, 0}, {10, 10, 0}}, false, "L", type);
    }
    const Written written = simaOf(drawing);
    EXPECT_EQ(written.of("D00"), (Lines{"D00,    1,12-3,1,", "D00,    1,12-4,2,"}));
    EXPECT_EQ(written.of("F00"), (Lines{"F00,    1,    1,L,    1,", "F00,    1,    1,L,    4,",
                                        "F00,    1,    1,L,    5,", "F00,    1,    1,L,    6,"}));
    EXPECT_EQ(written.of("B01").at(2), "B01,    9,C,");
    EXPECT_EQ(written.of("A01").size(), 3U);
    EXPECT_TRUE(written.notes.empty());
}

TEST(SimaFile, VerticesWithoutAPointGetOne) {
    Drawing drawing;
    addNumbered(drawing, {0, 0, 0}, 7, "A");
    addPolyline(drawing, {{0, 0, 0}, {10, 0, 0}, {10, 10, 0}}, true, "12-3");
    addPolyline(drawing, {{10, 0, 0}, {10, 10, 0}}, true, "12-4");
    const Written written = simaOf(drawing);
    const Lines points = written.of("A01");
    ASSERT_EQ(points.size(), 3U) << "one for each place";
    EXPECT_TRUE(points[1].starts_with("A01,    8,,") && points[1].ends_with(",,")) << "without a height " << points[1];
    EXPECT_EQ(written.of("B01"), (Lines{"B01,    7,A,", "B01,    8,,", "B01,    9,,", "B01,    8,,", "B01,    9,,"}));
    EXPECT_EQ(written.notes, (Lines{"2 points added where lots or routes have none"}));
}

// No reader takes a number below zero; what has no row never had one.
TEST(SimaFile, PointsKeepTheirNumbersFromZeroOn) {
    Drawing drawing;
    addNumbered(drawing, {0, 0, 0}, 0, "A");
    addNumbered(drawing, {10, 0, 0}, 3, "B");
    drawing.addPoint({20, 0, 0}, 0);
    const auto numbersOf = [](const Written& written) {
        Lines numbers;
        for (const std::string& line : written.of("A01")) {
            numbers.push_back(line.substr(4, 5));
        }
        return numbers;
    };
    const Written kept = simaOf(drawing);
    EXPECT_EQ(numbersOf(kept), (Lines{"    0", "    3", "    4"}));
    EXPECT_FALSE(std::any_of(kept.notes.begin(), kept.notes.end(),
                             [](const std::string& note) { return note.find("new number") != std::string::npos; }));
    addNumbered(drawing, {30, 0, 0}, -3, "C");
    const Written renumbered = simaOf(drawing);
    EXPECT_EQ(numbersOf(renumbered), (Lines{"    0", "    3", "    4", "    5"}));
    EXPECT_EQ(std::count_if(renumbered.notes.begin(), renumbered.notes.end(),
                            [](const std::string& note) { return note.starts_with("1 point with a new number"); }),
              1);
}

TEST(SimaFile, NumbersBehindTheLargestOneComeFromTheGaps) {
    Drawing drawing;
    addNumbered(drawing, {0, 0, 0}, 2147483646, "A");
    addNumbered(drawing, {5, 5, 0}, 2, "B");
    addPolyline(drawing, {{0, 0, 0}, {10, 0, 0}, {10, 10, 0}, {0, 10, 0}}, true, "12-3"); // of number 1
    addPolyline(drawing, {{0, 0, 0}, {5, 5, 0}}, false, "12-4");
    drawing.setRow(drawing.entityCount() - 1, tableNamed(drawing, "JSIMA_V3_Pline"), -7, "12-4", "画地", "a.sim");
    const Written written = simaOf(drawing);
    EXPECT_EQ(written.of("B01"), (Lines{"B01,2147483646,A,", "B01,2147483647,,", "B01,    3,,", "B01,    4,,",
                                        "B01,2147483646,A,", "B01,    2,B,"}));
    EXPECT_EQ(written.of("D00"), (Lines{"D00,    1,12-3,1,", "D00,    5,12-4,2,"}));
}

TEST(SimaFile, RepeatedNumbersHaveSectionsOfTheirOwnUnlessALineNeedsThem) {
    Drawing drawing;
    addNumbered(drawing, {0, 0, 0}, 1, "A");
    addNumbered(drawing, {10, 0, 0}, 1, "B");
    addNumbered(drawing, {20, 0, 0}, 1, "C");
    addPolyline(drawing, {{0, 0, 0}, {20, 0, 0}}, false, "L", "連続線");
    const Written written = simaOf(drawing);
    EXPECT_EQ(written.codes(), "G00 A00 A01 A99 A00 A01 A01 A99 F00 B01 B01 F99 ");
    EXPECT_EQ(written.of("B01"), (Lines{"B01,    1,A,", "B01,    2,C,"}));
    EXPECT_EQ(written.notes, (Lines{"1 point with a new number, since another has its old one"}));
}

TEST(SimaFile, PointsOfSelectedLotsAreWrittenToo) {
    Drawing drawing;
    addNumbered(drawing, {0, 0, 0}, 7, "A");
    addNumbered(drawing, {10, 0, 0}, 8, "B");
    addNumbered(drawing, {10, 10, 0}, 9, "C");
    addNumbered(drawing, {50, 50, 0}, 10, "far");
    addPolyline(drawing, {{0, 0, 0}, {10, 0, 0}, {10, 10, 0}}, true, "12-3");
    ExportOptions options;
    options.selection.left.fill(true);
    options.selection.left[static_cast<std::size_t>(Kind::Lots)] = false;
    const Written written = simaOf(drawing, options);
    EXPECT_EQ(written.codes(), "G00 A00 A01 A01 A01 A99 D00 B01 B01 B01 D99 ");
}

TEST(SimaFile, AlignmentsHaveTheirSignsRadiiAndParameters) {
    Drawing drawing;
    addRoad(drawing, {12000.0, -36000.0}, true);
    addRoad(drawing, {12000.0, -37000.0}, false);
    const Written written = simaOf(drawing);
    EXPECT_EQ(written.of("F00"), (Lines{"F00,    1,    1,中心線,    3,", "F00,    2,    1,中心線,    3,"}));
    EXPECT_EQ(written.of("F03").at(0), "F03,       100.000,");
    EXPECT_EQ(written.of("C0"), (Lines{"C02,60.000,0,-100.000,", "C01,1,-100.000,", "C02,60.000,-100.000,0,",
                                       "C02,60.000,0,100.000,", "C01,0,100.000,", "C02,60.000,100.000,0,"}));
    EXPECT_EQ(written.of("B01").size(), 12U);
}

TEST(SimaFile, WideArcsAreCutSinceAReaderTakesTheShorterArc) {
    Drawing drawing;
    const std::size_t road = drawing.addAlignment(drawing.addSite("S"), "C", "0", "", "");
    Element arc;
    arc.type = ElementType::Arc;
    arc.length = 150.0; // 5 radians
    arc.startRadius = arc.endRadius = 30.0;
    arc.end = drawing::poseOnElement(arc, arc.length).point;
    drawing.addElement(road, arc);
    const Written written = simaOf(drawing);
    EXPECT_EQ(written.of("C01").size(), 2U);
    const PlanPoint middle = drawing::poseOnElement(arc, 75.0).point;
    ASSERT_EQ(written.of("A01").size(), 3U);
    EXPECT_NE(written.of("A01")[1].find("," + exactMetres(middle.y) + "," + exactMetres(middle.x) + ","),
              std::string::npos)
        << written.of("A01")[1];
}

TEST(SimaFile, LinesKeepTheirNumbersFromZeroOnAndAlignmentsTakeOthers) {
    Drawing drawing;
    const std::size_t road = addRoad(drawing, {12000.0, -36000.0}, true);
    ASSERT_EQ(road, 0U);
    for (const int number : {0, 1, 2}) {
        addPolyline(drawing, {{0, 0, 0}, {10, 0, 0}}, false, "L", "連続線");
        drawing.setRow(drawing.entityCount() - 1, tableNamed(drawing, "JSIMA_V3_Pline"), number, "L", "連続線",
                       "a.sim");
    }
    addPolyline(drawing, {{0, 0, 0}, {10, 0, 0}, {10, 10, 0}}, true, "12-3");
    drawing.setRow(drawing.entityCount() - 1, tableNamed(drawing, "JSIMA_V3_Pline"), 0, "12-3", "画地", "a.sim");
    const Written written = simaOf(drawing);
    EXPECT_EQ(written.of("F00"), (Lines{"F00,    3,    1,中心線,    3,", "F00,    0,    1,L,    6,",
                                        "F00,    1,    1,L,    6,", "F00,    2,    1,L,    6,"}));
    EXPECT_EQ(written.of("D00"), (Lines{"D00,    0,12-3,1,"}));
}

// What an import makes of a route of one point refers to the first point of the file, wherever that stands.
TEST(SimaFile, ARouteOfOnePointAtTheOriginRefersToTheFirstPoint) {
    const struct {
        std::vector<MdGePoint3d> line;
        std::size_t points; // of the file
    } kCases[] = {
        {{{0, 0, 0}}, 1}, {{{0, 5, 0}}, 2}, {{{5, 0, 0}}, 2}, {{{0, 0, 0}, {0, 0, 0}}, 2}, {{{0, 0, 0}, {5, 0, 0}}, 3},
    };
    for (const auto& [line, points] : kCases) {
        Drawing drawing;
        addNumbered(drawing, {100.0, 200.0, 5.0}, 7, "A");
        addPolyline(drawing, line, false, "左", "幅杭線左");
        const Written written = simaOf(drawing);
        EXPECT_EQ(written.of("A01").size(), points) << line.size();
        EXPECT_EQ(written.of("B01").at(0) == "B01,    7,A,", points == 1) << line.size();
    }
}

TEST(SimaFile, StraightsThatAReaderMakesOneOfAreTold) {
    Drawing drawing;
    addChain(drawing, {{ElementType::Straight, 100.0, kStraight, kStraight, false},
                       {ElementType::Straight, 40.0, kStraight, kStraight, false}});
    EXPECT_EQ(simaOf(drawing).notes.at(0),
              "1 alignment with straights that an import joins, since they differ by 1 degree at most");
}

TEST(SimaFile, AnAlignmentThatBeginsWithAClothoidIsLeftOut) {
    Drawing drawing;
    const std::size_t road = drawing.addAlignment(drawing.addSite("S"), "C", "0", "", "");
    Element clothoid;
    clothoid.type = ElementType::Clothoid;
    clothoid.length = 36.0;
    clothoid.endRadius = 100.0;
    clothoid.end = drawing::poseOnElement(clothoid, 36.0).point;
    drawing.addElement(road, clothoid);
    const Written written = simaOf(drawing);
    EXPECT_TRUE(written.of("F00").empty());
    EXPECT_EQ(written.notes, (Lines{"1 alignment that begins with a clothoid left out: no import takes it"}));
}

TEST(SimaFile, AGapInAnAlignmentIsFilledByAStraight) {
    Drawing drawing;
    const std::size_t road = drawing.addAlignment(drawing.addSite("S"), "C", "0", "", "");
    const double places[][2] = {{0.0, 10.0}, {10.0, 10.0}, {10.5, 20.0}}; // of no length, and half a metre on
    for (const auto& [from, to] : places) {
        Element straight;
        straight.start = {from, 0.0};
        straight.end = {to, 0.0};
        straight.length = to - from;
        drawing.addElement(road, straight);
    }
    const Written written = simaOf(drawing);
    ASSERT_EQ(written.of("A01").size(), 4U);
    EXPECT_EQ(written.of("B01").size(), 4U);
    EXPECT_TRUE(written.of("C0").empty());
}

// A direction that differs by whole turns is the same direction.
TEST(SimaFile, AClothoidEndsAtThePointThatItLeadsToHoweverItsDirectionIsWritten) {
    for (const int turns : {-2, -1, 0, 1, 2}) {
        for (const double azimuth : {0.0, 3.0, -3.0}) {
            Element straight;
            straight.direction = azimuth;
            straight.length = 50.0;
            straight.end = drawing::poseOnElement(straight, 50.0).point;
            Element clothoid = following(straight, ElementType::Clothoid, 36.0, kStraight, 100.0, turns > 0);
            clothoid.direction += 2.0 * std::numbers::pi * turns;
            Drawing drawing;
            const std::size_t road = drawing.addAlignment(drawing.addSite("S"), "C", "0", "", "");
            drawing.addElement(road, straight);
            drawing.addElement(road, clothoid);
            addNumbered(drawing, {straight.start.x, straight.start.y, 5.0}, 1, "BP");
            addNumbered(drawing, {straight.end.x, straight.end.y, 5.0}, 2, "KA");
            addNumbered(drawing, {clothoid.end.x, clothoid.end.y, 5.0}, 3, "KE");
            EXPECT_EQ(simaOf(drawing).of("B01"), (Lines{"B01,    1,BP,", "B01,    2,KA,", "B01,    3,KE,"}))
                << azimuth << " and " << turns << " turns";
        }
    }
}

// A clothoid of one radius is an arc, and of none a straight.
TEST(SimaFile, AClothoidThatDoesNotBendIsWrittenAsWhatItIs) {
    Drawing drawing;
    addChain(drawing, {{ElementType::Straight, 100.0, kStraight, kStraight, false},
                       {ElementType::Clothoid, 40.0, 100.0, 100.0, false},
                       {ElementType::Clothoid, 40.0, kStraight, kStraight, false}});
    const Written written = simaOf(drawing);
    EXPECT_EQ(written.of("C0"), (Lines{"C01,0,100.000,"}));
    EXPECT_EQ(written.of("B01").size(), 4U);
}

TEST(SimaFile, ResultsOfAnAlignmentThatIsLeftOutAreWrittenAsPoints) {
    Drawing drawing;
    addChain(drawing, {{ElementType::Clothoid, 36.0, kStraight, 100.0, false}});
    const auto at = *drawing.geometry(0).pointAt(0.0, 0.0);
    addPoint(drawing, {at.x, at.y, 3.0}, "No.0", "縦断成果");
    const Written written = simaOf(drawing);
    EXPECT_TRUE(written.of("H00").empty());
    EXPECT_EQ(written.of("A01").size(), 1U);
    EXPECT_EQ(written.notes, (Lines{"1 alignment that begins with a clothoid left out: no import takes it",
                                    "1 result that lies on no alignment written as a coordinate point"}));
}

// The point at a station and an offset of the first alignment, as a result of a section.
void addResult(Drawing& drawing, double station, double offset, double height, const char* name, const char* type) {
    const auto at = *drawing.geometry(0).pointAt(station, offset);
    drawing.addPoint({at.x, at.y, height}, 0);
    drawing.setRow(drawing.entityCount() - 1, tableNamed(drawing, "JSIMA_V3_Point"), 5, name, type, "a.sim");
}

TEST(SimaFile, ResultsComeBackToStationsAndOffsets) {
    Drawing drawing;
    addRoad(drawing, {12000.0, -36000.0}, true);
    addResult(drawing, 120.0, 0.0, 5.25, "No.6", "縦断成果");
    addResult(drawing, 160.0, 0.0, 0.0, "No.8", "縦断成果");
    addResult(drawing, 160.0001, 0.0, 7.0, "No.8上", "縦断成果");
    for (const double station : {160.0, 180.0}) {
        addResult(drawing, station, -140.0, 4.0, "遠", "横断成果"); // beyond the centre of the arc's other side
        addResult(drawing, station, -3.0, 5.0, "S", "横断成果");
        addResult(drawing, station, -3.0001, 6.0, "S", "横断成果");
        addResult(drawing, station, 0.0, 5.5, "S", "横断成果");
        addResult(drawing, station, 4.125, 5.0, "右", "横断成果");
    }
    const Written written = simaOf(drawing);
    EXPECT_EQ(written.of("F00").at(0), "F00,    5,    1,中心線,    3,") << "as the rows have it";
    EXPECT_EQ(written.of("H"), (Lines{"H00,    5,中心線,", "H01,No.6,       120.000,         5.250,,1,",
                                      "H01,No.8,       160.000,         0.000,,1,",
                                      "H01,No.8上,      160.0001,         7.000,,1,", "H99,"}));
    EXPECT_EQ(written.of("I"), (Lines{"I00,    5,中心線,", "I01,S,       160.000,         5.500,,",
                                      "I02,遠,      -140.000,         4.000,", "I02,,        -3.000,         5.000,",
                                      "I02,,       -3.0001,         6.000,", "I02,,         0.000,         5.500,",
                                      "I02,右,         4.125,         5.000,", "I01,S,       180.000,         5.500,,",
                                      "I02,遠,      -140.000,         4.000,", "I02,,        -3.000,         5.000,",
                                      "I02,,       -3.0001,         6.000,", "I02,,         0.000,         5.500,",
                                      "I02,右,         4.125,         5.000,", "I99,"}));
}

TEST(SimaFile, ResultsThatLieOnNoAlignmentAreWrittenAsPoints) {
    Drawing drawing;
    addPoint(drawing, {1.0, 2.0, 3.0}, "No.6", "縦断成果");
    const Written written = simaOf(drawing);
    EXPECT_EQ(written.codes(), "G00 A00 A01 A99 ");
    EXPECT_EQ(written.notes, (Lines{"1 result that lies on no alignment written as a coordinate point"}));
}

TEST(SimaFile, EqualStationsDoNotFollowEachOther) {
    Drawing drawing;
    addRoad(drawing, {0.0, 0.0}, false);
    addResult(drawing, 120.0, 0.0, 5.0, "a", "縦断成果");
    addResult(drawing, 120.0, 0.0, 6.0, "b", "縦断成果");
    const Lines results = simaOf(drawing).of("H01");
    EXPECT_EQ(results.at(1), "H01,b,   120.0000001,         6.000,,1,") << "a reader moves equal ones apart by more";
}

TEST(SimaFile, ObjectsOfOtherProgramsBecomePointsLotsAndLines) {
    Drawing drawing;
    drawing.addPoint({1.0, 2.0, 3.0}, 0);
    drawing.addPolyline(std::vector<MdGePoint3d>{{0, 0, 0}, {1, 0, 0}, {1, 1, 0}}, 0, EntityKind::Polyline, true);
    drawing.addPolyline(std::vector<MdGePoint3d>{{0, 0, 0}, {1, 0, 0}}, 0, EntityKind::Polyline, false);
    const Written written = simaOf(drawing);
    EXPECT_EQ(written.of("D00").size(), 1U);
    EXPECT_EQ(written.of("F00").size(), 1U);
    EXPECT_EQ(written.of("A01").size(), 4U);
    EXPECT_EQ(written.notes.back(), "3 objects without a row written as points, lots or continuous lines");
}

TEST(SimaFile, NumbersAreExactOrRoundedToWhatWasMeasured) {
    EXPECT_EQ(exactMetres(0.0), "0.000");
    EXPECT_EQ(exactMetres(-0.0), "0.000");
    EXPECT_EQ(exactMetres(1.5), "1.500");
    EXPECT_EQ(exactMetres(-36173.123456789), "-36173.123456789");
    EXPECT_EQ(exactMetres(1e21), "1000000000000000000000.000");
    EXPECT_EQ(roundedMetres(119.99999999), "120.000");
    EXPECT_EQ(roundedMetres(-0.00000001), "0.000");
    EXPECT_EQ(roundedMetres(3.00009999), "3.0001");
    EXPECT_EQ(roundedMetres(1.00000049), "1.000000490");
}

} // namespace
} // namespace fenmark::exchange
