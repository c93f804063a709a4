// Survey documents: their tables, what they look like as HTML and as comma-separated text.
#include "exchange/csv_field.h"
#include "exchange/notes.h"
#include "exchange/report/report.h"
#include "sample_drawing.h"

#include <gtest/gtest.h>
#include <pugixml.hpp>

#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace fenmark::exchange {
namespace {

std::string csvOf(const Drawing& drawing, ReportOptions options, std::initializer_list<ReportPart> parts,
                  const Notes& notes = {}) {
    options.parts.fill(false);
    for (const ReportPart part : parts) {
        options.parts[static_cast<std::size_t>(part)] = true;
    }
    std::ostringstream out;
    const Notes told = writeReport(drawing, options, ReportFormat::Csv, out);
    Notes wanted = notes;
    if (out.str() == "\xEF\xBB\xBF") {
        wanted.insert(wanted.begin(), {NoteCode::NothingReported});
    }
    EXPECT_EQ(told, wanted);
    return out.str();
}

std::string htmlOf(const Drawing& drawing) {
    std::ostringstream out;
    writeReport(drawing, ReportOptions(), ReportFormat::Html, out);
    return out.str();
}

// 12.5 by 8 m, clockwise from the south-west, with names of three corners.
void addLot(Drawing& drawing) {
    addPoint(drawing, {1000.0, 2000.0, 0.0}, "K1");
    addPoint(drawing, {1000.0, 2008.0, 0.0}, "K2");
    addPoint(drawing, {1012.5, 2008.0, 0.0}, "　K3");
    addPolyline(drawing, {{1000, 2000, 0}, {1000, 2008, 0}, {1012.5, 2008, 0}, {1012.5, 2000, 0}}, true, "12-3");
}

TEST(ReportOfLots, IsTheAreaTableFromCoordinates) {
    Drawing drawing;
    addLot(drawing);
    EXPECT_EQ(csvOf(drawing, {}, {ReportPart::Lots}),
              "\xEF\xBB\xBF地積一覧\r\n画地,点数,面積 (m²),地積 (m²),ファイル\r\n"
              "12-3,4,100.000000,100（宅地・鉱泉地 100.00）,a.sim\r\n面積の合計,100.000000,m²\r\n\r\n"
              "座標求積表,12-3\r\n点名,Xn,Yn,Yn+1 - Yn-1,Xn (Yn+1 - Yn-1),辺長\r\n"
              "K1,2000.000,1000.000,-12.500,-25000.000000,8.000\r\n"
              "K2,2008.000,1000.000,12.500,25100.000000,12.500\r\n"
              "K3,2008.000,1012.500,12.500,25100.000000,8.000\r\n"
              "4,2000.000,1012.500,-12.500,-25000.000000,12.500\r\n"
              "倍面積,200.000000,m²\r\n面積,100.000000,m²\r\n地積,100（宅地・鉱泉地 100.00）,m²\r\n");
}

// Some programs write the first corner of a ring once more behind the last.
TEST(ReportOfLots, CountsTheCornersOfARingOnce) {
    for (const bool again : {false, true}) {
        std::vector<MdGePoint3d> ring = {{0, 0, 0}, {0, 8, 0}, {12, 8, 0}, {12, 0, 0}};
        for (const char* wanted : {"\r\n1,4,96.000000,", "\r\n1,3,48.000000,"}) {
            Drawing drawing;
            std::vector<MdGePoint3d> written = ring;
            if (again) {
                written.push_back(ring.front());
            }
            addPolyline(drawing, written, true, "1");
            const std::string csv = csvOf(drawing, {}, {ReportPart::Lots});
            EXPECT_NE(csv.find(wanted), std::string::npos) << csv;
            ring.pop_back();
        }
    }
}

// Scales of maps: two digits that are round, then zeros.
TEST(ReportOfLots, FiguresTakeTheSmallestRoundScaleThatFits) {
    const std::set<std::string> leading = {"10", "12", "15", "20", "25", "30", "40", "50", "60", "80"};
    int before = 0;
    std::set<int> scales;
    for (double side = 0.1; side < 4.7e6; side *= 1.07) {
        Drawing drawing;
        addPolyline(drawing, {{0, 0, 0}, {0, side, 0}, {side, side, 0}, {side, 0, 0}}, true, "1");
        const std::string html = htmlOf(drawing);
        const std::size_t at = html.find(">1:");
        ASSERT_NE(at, std::string::npos);
        const std::string text = html.substr(at + 3, html.find('<', at) - at - 3);
        EXPECT_TRUE(leading.contains(text.substr(0, 2))) << text;
        EXPECT_EQ(text.find_first_not_of('0', 2), std::string::npos) << text;
        const int scale = std::stoi(text);
        EXPECT_GE(scale, before);
        before = scale;
        scales.insert(scale);
        constexpr double kRoom = 48.0; // millimetres that the names of the points leave
        EXPECT_LE(side * 1000.0 / scale, kRoom) << text;
    }
    EXPECT_EQ(scales.size(), 29U) << "each of the round scales, down to 1:100,000,000";
}

// Each of two triangles has half a millionth of a square metre beyond what six decimals show.
TEST(ReportOfLots, TheTotalIsThatOfTheAreasShown) {
    Drawing drawing;
    for (const double x : {0.0, 10.0}) {
        addPolyline(drawing, {{x, 0, 0}, {x + 1.001, 0, 0}, {x, 1.001, 0}}, true, "三角");
    }
    const std::string text = csvOf(drawing, {}, {ReportPart::Lots});
    EXPECT_NE(text.find("三角,3,0.501001,0.50,a.sim\r\n三角,3,0.501001,0.50,a.sim\r\n面積の合計,1.002002,m²"),
              std::string::npos)
        << text;
}

TEST(ReportOfLots, CategoryOfTheLandDecidesTheRegisteredArea) {
    Drawing drawing;
    addLot(drawing);
    ReportOptions options;
    options.land = LandCategory::Residential;
    EXPECT_NE(csvOf(drawing, options, {ReportPart::Lots}).find("\r\n地積,100.00,m²"), std::string::npos);
    options.land = LandCategory::Other;
    EXPECT_NE(csvOf(drawing, options, {ReportPart::Lots}).find("\r\n地積,100,m²"), std::string::npos);
}

TEST(ReportOfLots, OpenLinesAndOtherKindsHaveNone) {
    Drawing drawing;
    addPolyline(drawing, {{0, 0, 0}, {10, 0, 0}, {10, 10, 0}}, false, "開", "画地");
    addPolyline(drawing, {{0, 0, 0}, {10, 0, 0}, {10, 10, 0}}, true, "連", "連続線");
    EXPECT_EQ(csvOf(drawing, {}, {ReportPart::Lots}, {{NoteCode::LotWithoutRing, 1}}), "\xEF\xBB\xBF");
}

TEST(ReportOfAlignments, ListsMainPoints) {
    Drawing drawing;
    addRoad(drawing, {12000.0, -36000.0}, true);
    const std::string csv = csvOf(drawing, {}, {ReportPart::MainPoints});
    EXPECT_NE(csv.find("\r\nBP,No.5,100.000,,-36000.000,12000.000,90°00′00″,180°00′00″,直線,\r\n"), std::string::npos)
        << csv;
    EXPECT_NE(csv.find("\r\nKA1-1,No.7+10.000,150.000,50.000,-36000.000,12050.000,90°00′00″,180°00′00″,A=60.000,"
                       "10°18′48″\r\n"),
              std::string::npos)
        << csv;
    EXPECT_NE(csv.find("R=100.000,22°55′06″\r\n"), std::string::npos) << csv;
    EXPECT_NE(csv.find("\r\n路線長,192.000,m\r\n"), std::string::npos);
}

TEST(ReportOfAlignments, ListsIps) {
    Drawing drawing;
    addRoad(drawing, {12000.0, -36000.0}, true);
    addPoint(drawing, {12000.0, -36000.0, 0.0}, "起点");
    const std::string csv = csvOf(drawing, {}, {ReportPart::Ips});
    EXPECT_NE(csv.find("\r\nBP,起点,-36000.000,12000.000,,,,,,,,,\r\n"), std::string::npos) << csv;
    EXPECT_NE(csv.find(",90°00′00″,右 43°32′41″,対称基本形,100.000,60.000,60.000,"), std::string::npos) << csv;
    EXPECT_NE(csv.find("\r\nIP-1,KA1-1～KA1-2,-36000.000,"), std::string::npos) << csv;
}

TEST(ReportOfAlignments, ListsIntermediatePointsWithChords) {
    Drawing drawing;
    addRoad(drawing, {12000.0, -36000.0}, true);
    const std::string csv = csvOf(drawing, {}, {ReportPart::Intermediate});
    EXPECT_NE(csv.find("\r\nNo.6,120.000,20.000,-36000.000,12020.000,90°00′00″,180°00′00″,90°00′00″,20.000\r\n"),
              std::string::npos)
        << csv;
}

TEST(ReportOfAlignments, SetsLeftAndRightStakesOfAStationSideBySide) {
    Drawing drawing;
    addRoad(drawing, {12000.0, -36000.0}, true);
    addPoint(drawing, {12020.0, -35994.0, 0.0}, "左6");
    addPolyline(drawing, {{12020.0, -35994.0, 0}, {12040.0, -35993.0, 0}}, false, "左", "幅杭線左");
    addPolyline(drawing, {{12020.001, -36007.5, 0}, {12045.0, -36007.5, 0}}, false, "右", "幅杭線右");
    const std::string csv = csvOf(drawing, {}, {ReportPart::Widths});
    EXPECT_NE(csv.find("\r\nNo.6,120.000,-36000.000,12020.000,90°00′00″,左,6.000,左6,-35994.000,12020.000\r\n"
                       ",,,,,右,7.500,,-36007.500,12020.001\r\n"
                       "No.7,140.000,-36000.000,12040.000,90°00′00″,左,7.000,,-35993.000,12040.000\r\n"
                       "No.7+5.000,145.000,-36000.000,12045.000,90°00′00″,右,7.500,,-36007.500,12045.000\r\n"),
              std::string::npos)
        << csv;
}

// The road runs eastwards from 100 m at x = 12000; its first straight is 50 m long.
TEST(ReportOfAlignments, TakesStakesForThoseOfOneStationWithinItsLimits) {
    const auto widthsOf = [](const std::vector<host::PlanPoint>& left, const std::vector<host::PlanPoint>& right) {
        Drawing drawing;
        addRoad(drawing, {12000.0, -36000.0}, true);
        const auto add = [&](const std::vector<host::PlanPoint>& places, const char* type) {
            for (const host::PlanPoint& place : places) {
                const MdGePoint3d at{12000.0 + place.x, -36000.0 + place.y, 0.0};
                addPolyline(drawing, {at, at}, false, "", type);
            }
        };
        add(left, "幅杭線左");
        add(right, "幅杭線右");
        return csvOf(drawing, {}, {ReportPart::Widths});
    };
    const auto has = [](const std::string& csv, std::string_view part) { return csv.find(part) != std::string::npos; };
    // Left and right of one station where the stations differ by 5 mm at most.
    EXPECT_TRUE(has(widthsOf({{10.0, 6.0}}, {{10.00499, -7.0}}), "\r\n,,,,,右,7.000,"));
    EXPECT_FALSE(has(widthsOf({{10.0, 6.0}}, {{10.00501, -7.0}}), "\r\n,,,,,右,7.000,"));
    // A whole station, or a main point, within 2 mm.
    EXPECT_TRUE(has(widthsOf({{20.00199, 6.0}}, {}), "\r\nNo.6,120.000,"));
    EXPECT_TRUE(has(widthsOf({{19.99801, 6.0}}, {}), "\r\nNo.6,120.000,"));
    EXPECT_TRUE(has(widthsOf({{20.00201, 6.0}}, {}), "\r\nNo.6+0.002,120.002,"));
    EXPECT_TRUE(has(widthsOf({{19.99799, 6.0}}, {}), "\r\nNo.5+19.998,119.998,"));
    EXPECT_TRUE(has(widthsOf({{49.99801, 6.0}}, {}), "\r\nKA1-1,150.000,"));
    EXPECT_TRUE(has(widthsOf({{49.99799, 6.0}}, {}), "\r\nNo.7+9.998,149.998,"));
    // No stake stands farther off than 200 m.
    EXPECT_TRUE(has(widthsOf({{10.0, 199.999}}, {}), ",左,199.999,"));
    EXPECT_FALSE(has(widthsOf({{10.0, 200.001}}, {}), ",左,"));
    EXPECT_TRUE(has(widthsOf({}, {{10.0, -199.999}}), ",右,199.999,"));
    EXPECT_FALSE(has(widthsOf({}, {{10.0, -200.001}}), ",右,"));
}

TEST(ReportOfAlignments, StakesStandOnTheSideOfTheirOffsetHoweverSmall) {
    for (const double width : {0.005, 0.05, 0.5, 5.0}) {
        for (const double side : {-1.0, 1.0}) {
            Drawing drawing;
            addRoad(drawing, {12000.0, -36000.0}, true);
            const double y = -36000.0 + side * width;
            addPolyline(drawing, {{12020.0, y, 0}, {12030.0, y, 0}}, false, "", "幅杭線左");
            const std::string csv = csvOf(drawing, {}, {ReportPart::Widths});
            EXPECT_EQ(csv.find(",左,") != std::string::npos, side > 0) << width;
            EXPECT_EQ(csv.find(",右,") != std::string::npos, side < 0) << width;
        }
    }
}

TEST(ReportOfAlignments, AStakeOnTheAlignmentIsOneOfTheRight) {
    Drawing drawing;
    addRoad(drawing, {12000.0, -36000.0}, true);
    addPolyline(drawing, {{12020.0, -36000.0, 0}}, false, "", "幅杭線左");
    EXPECT_NE(csvOf(drawing, {}, {ReportPart::Widths}).find(",右,0.000,"), std::string::npos);
}

// Also a stake that stands alone goes to the nearest of two alignments, whichever was made first.
TEST(ReportOfAlignments, AStakeBelongsToTheNearestAlignment) {
    for (const bool nearIsFirst : {true, false}) {
        Drawing drawing;
        addRoad(drawing, {12000.0, nearIsFirst ? -36000.0 : -36050.0}, true, "甲");
        addRoad(drawing, {12000.0, nearIsFirst ? -36050.0 : -36000.0}, true, "乙");
        addPolyline(drawing, {{12020.0, -35990.0, 0}}, false, "", "幅杭線左");
        const std::string csv = csvOf(drawing, {}, {ReportPart::Widths});
        EXPECT_NE(csv.find(",左,10.000,"), std::string::npos) << csv;
        EXPECT_EQ(csv.find(",左,60.000,"), std::string::npos) << csv;
    }
}

TEST(ReportOfAlignments, KeepsStakesOfOneStationAndSideInTheOrderOfTheirLines) {
    Drawing drawing;
    addRoad(drawing, {12000.0, -36000.0}, true);
    for (const double width : {6.0, 9.0, 7.0, 8.0}) {
        addPolyline(drawing, {{12020.0, -36000.0 + width, 0}, {12030.0, -36000.0 + width, 0}}, false, "左", "幅杭線左");
    }
    const std::string csv = csvOf(drawing, {}, {ReportPart::Widths});
    std::string widths;
    for (std::size_t at = csv.find(",左,"); at != std::string::npos; at = csv.find(",左,", at + 1)) {
        widths += csv.substr(at + std::string_view(",左,").size(), 6);
    }
    EXPECT_EQ(widths, "6.000,9.000,7.000,8.000,6.000,9.000,7.000,8.000,") << csv;
}

TEST(ReportOfPoints, ListsThemWithTheirRows) {
    Drawing drawing;
    addPoint(drawing, {12000.0, -36000.0004, 12.3456}, "=HYPERLINK(1)");
    const std::string csv = csvOf(drawing, {}, {ReportPart::Points});
    EXPECT_NE(csv.find("\r\n1,\"'=HYPERLINK(1)\",-36000.000,12000.000,12.346,座標,a.sim\r\n"), std::string::npos)
        << csv;
}

TEST(ReportOfPoints, LeavesTheCellOfAHeightThatNobodyGaveEmpty) {
    Drawing drawing;
    addPoint(drawing, {12000.0, -36000.0, 0.0}, "K1");
    const std::string csv = csvOf(drawing, {}, {ReportPart::Points});
    EXPECT_NE(csv.find("\r\n1,K1,-36000.000,12000.000,,座標,a.sim\r\n"), std::string::npos) << csv;
}

TEST(ReportSummary, ListsTheFirstTwoHundredErrorsOfALog) {
    Drawing drawing;
    fillSample(drawing);
    ReportOptions options;
    options.logs = {"a_Input.log"};
    options.errors.assign(200, {"a_Input.log", "ErrA01-1 点番号", "A01,x"});
    EXPECT_EQ(csvOf(drawing, options, {ReportPart::Summary}).find("を示す"), std::string::npos);
    options.errors.push_back({"a_Input.log", "ErrA01-2 点名", "A01,y"});
    const std::string csv = csvOf(drawing, options, {ReportPart::Summary});
    EXPECT_NE(csv.find("エラー 201件\r\nはじめの200件を示す。残りはログを参照。\r\n"), std::string::npos) << csv;
    EXPECT_EQ(csv.find("ErrA01-2"), std::string::npos);
}

TEST(ReportSummary, CountsObjectsAndListsErrorsOfTheLog) {
    Drawing drawing;
    fillSample(drawing);
    ReportOptions options;
    options.logs = {"a_Input.log", "b_Input.log"};
    options.errors = {{"a_Input.log", "ErrA01-1 点番号", "00010行目 A01,x"}};
    const std::string csv = csvOf(drawing, options, {ReportPart::Summary});
    EXPECT_NE(csv.find("\r\na.sim,座標,2\r\na.sim,画地,1\r\na.sim,幅杭線左,1\r\n点,2\r\nポリライン,2\r\n"),
              std::string::npos)
        << csv;
    EXPECT_NE(
        csv.find("取込エラー,a_Input.log\r\nエラー,レコード\r\nErrA01-1 点番号,\"00010行目 A01,x\"\r\nエラー 1件\r\n"),
        std::string::npos)
        << csv;
    EXPECT_NE(csv.find("取込エラー,b_Input.log\r\nエラー無し\r\n"), std::string::npos) << csv;
}

TEST(ReportHtml, EscapesEveryName) {
    Drawing drawing;
    const char* hostile = "<script>&\"'\x01";
    addRoad(drawing, {12000.0, -36000.0}, false, hostile);
    addPoint(drawing, {0.0, 0.0, 0.0}, hostile, hostile);
    addPolyline(drawing, {{0, 0, 0}, {10, 0, 0}, {10, 10, 0}}, true, hostile);
    const std::string html = htmlOf(drawing);
    EXPECT_EQ(html.find("<script"), std::string::npos);
    EXPECT_NE(html.find("&lt;script&gt;&amp;&quot;'\uFFFD"), std::string::npos);
    // Behind its head the page is well-formed, figures included.
    const std::string body = html.substr(html.find("<body>"));
    pugi::xml_document document;
    std::string closed = body.substr(0, body.find("</html>"));
    for (std::size_t at = closed.find("<br>"); at != std::string::npos; at = closed.find("<br>", at)) {
        closed.replace(at, 4, "<br/>");
    }
    ASSERT_TRUE(document.load_string(closed.c_str()));
    EXPECT_EQ(document.select_nodes("//svg").size(), 1U);
    bool named = false;
    for (const pugi::xpath_node text : document.select_nodes("//svg/text")) {
        named = named || std::string_view(text.node().child_value()) == "<script>&\"'\uFFFD";
    }
    EXPECT_TRUE(named);
    EXPECT_GT(document.select_nodes("//section").size(), 6U);
}

TEST(ReportHtml, KeepsThePairsOfOneStationTogether) {
    Drawing drawing;
    addRoad(drawing, {12000.0, -36000.0}, true);
    addPolyline(drawing, {{12020.0, -35994.0, 0}, {12040.0, -35993.0, 0}}, false, "左", "幅杭線左");
    addPolyline(drawing, {{12020.0, -36007.5, 0}, {12040.0, -36007.5, 0}}, false, "右", "幅杭線右");
    const std::string html = htmlOf(drawing);
    const std::string widths = html.substr(html.find("幅杭計算書"));
    const std::size_t first = widths.find("<tbody>");
    const std::string group = widths.substr(first, widths.find("</tbody>") - first);
    EXPECT_NE(group.find(">左<"), std::string::npos);
    EXPECT_NE(group.find(">右<"), std::string::npos);
    EXPECT_NE(html.find("break-inside:avoid"), std::string::npos);
}

TEST(ReportHtml, FigureIsToScale) {
    Drawing drawing;
    addLot(drawing);
    ReportOptions options;
    options.figureScale = 500;
    std::ostringstream out;
    writeReport(drawing, options, ReportFormat::Html, out);
    const std::string html = out.str();
    EXPECT_NE(html.find(">1:500</text>"), std::string::npos);
    // 12.5 by 8 m are 25 by 16 mm in the middle of 86 by 70.
    EXPECT_NE(html.find("d=\"M30.5 43L30.5 27L55.5 27L55.5 43Z\""), std::string::npos);
}

TEST(CsvFields, AreQuotedAndNeverFormulas) {
    const auto written = [](std::string_view text) {
        std::ostringstream out;
        out << CsvField{text};
        return out.str();
    };
    EXPECT_EQ(written("-36000.000"), "-36000.000");
    EXPECT_EQ(written("a,b\"c"), "\"a,b\"\"c\"");
    EXPECT_EQ(written("=1+1"), "\"'=1+1\"");
    EXPECT_EQ(written("+A1"), "\"'+A1\"");
    EXPECT_EQ(written("-1-1"), "\"'-1-1\"");
    EXPECT_EQ(written("@x"), "\"'@x\"");
    EXPECT_EQ(written(" a"), "\" a\"");
}

} // namespace
} // namespace fenmark::exchange
