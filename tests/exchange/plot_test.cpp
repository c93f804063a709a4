// Plans and sections on paper: sheets, scales, what stands where.
#include "exchange/plan/plan.h"
#include "exchange/plan/plan_labels.h"
#include "exchange/plan/plot.h"
#include "sample_drawing.h"
#include "worded_notes.h"

#include <gtest/gtest.h>
#include <pugixml.hpp>

#include <cmath>
#include <cstddef>
#include <numbers>
#include <set>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace fenmark::exchange {
namespace {

constexpr double kMillimetre = 0.011; // coordinates of the paper have two decimals

class PlotOf : public ::testing::Test {
  protected:
    static std::set<std::string> textsOf(const std::string& page) {
        pugi::xml_document document;
        EXPECT_TRUE(document.load_string(page.c_str())) << page.substr(0, 200);
        std::set<std::string> texts;
        for (const pugi::xpath_node node : document.select_nodes("//text")) {
            texts.emplace(node.node().child_value());
        }
        return texts;
    }
    // The first three points of the ground's line.
    static void readGround(const std::string& page, double (&x)[3], double (&y)[3]) {
        pugi::xml_document document;
        ASSERT_TRUE(document.load_string(page.c_str()));
        const std::string path = document.select_node("//path[@class='ground']").node().attribute("d").value();
        std::istringstream in(path);
        char letter = 0;
        for (int i = 0; i < 3; ++i) {
            in >> letter >> x[i] >> y[i];
        }
        ASSERT_TRUE(in) << path;
    }
    // Too small for its name on any sheet.
    void addSmallLot(const host::PlanPoint& middle) {
        constexpr double kHalf = 0.5;
        addPolyline(drawing,
                    {{middle.x - kHalf, middle.y - kHalf, 0},
                     {middle.x + kHalf, middle.y - kHalf, 0},
                     {middle.x + kHalf, middle.y + kHalf, 0},
                     {middle.x - kHalf, middle.y + kHalf, 0}},
                    true, "狭い");
    }
    void addResult(double station, double offset, double height, const char* name, const char* type) {
        const auto at = drawing.geometry(0).pointAt(station, offset).value();
        addPoint(drawing, {at.x, at.y, height}, name, type);
    }

    Drawing drawing;
};

TEST(TurnedSheet, RunsItsDirectionToTheRight) {
    const PlanSheet sheet({1000.0, 2000.0}, 2.0, 500, "A4");
    EXPECT_STREQ(sheet.format(), "A4");
    EXPECT_DOUBLE_EQ(sheet.width(), 297.0);
    const PaperPoint middle = sheet.at(1000.0, 2000.0);
    const PaperPoint ahead = sheet.at(1000.0 + 10.0 * std::cos(2.0), 2000.0 + 10.0 * std::sin(2.0));
    EXPECT_NEAR(ahead.x - middle.x, 20.0, kMillimetre);
    EXPECT_NEAR(ahead.y, middle.y, kMillimetre);
    const PaperPoint left = sheet.at(1000.0 - 10.0 * std::sin(2.0), 2000.0 + 10.0 * std::cos(2.0));
    EXPECT_NEAR(left.y - middle.y, -20.0, kMillimetre) << "left of the travel is up";
    const host::PlanPoint back = sheet.groundAt(sheet.at(1013.0, 1987.0));
    EXPECT_NEAR(back.x, 1013.0, 1e-9);
    EXPECT_NEAR(back.y, 1987.0, 1e-9);
}

TEST_F(PlotOf, PlanTakesTheScaleAndThePaperThatAreChosen) {
    addRoad(drawing, {12000.0, -36000.0}, false);
    PlotOptions options;
    options.scale = 1000;
    options.paper = "A4";
    const Plot plot = plotPlan(drawing, options);
    ASSERT_EQ(plot.pages.size(), 1U) << whyNot(plot);
    EXPECT_TRUE(textsOf(plot.pages[0]).contains("1:1000（A4）"));
    options.scale = 100;
    EXPECT_NE(whyNot(plotPlan(drawing, options)).find("does not fit on A4 at 1:100"), std::string::npos);
    EXPECT_TRUE(isWantOfRoom(*plotPlan(drawing, options).failure));
    options.paper.reset();
    options.scale = 250;
    EXPECT_TRUE(textsOf(plotPlan(drawing, options).pages.at(0)).contains("1:250（A1）")) << "the smallest that serves";
}

TEST_F(PlotOf, SheetsAlongAnAlignmentMeetAtMatchLines) {
    addRoad(drawing, {12000.0, -36000.0}, true);
    addPoint(drawing, {12010.0, -36002.0, 0.0}, "始めの点");
    PlotOptions options;
    options.scale = 500;
    options.paper = "A4";
    const Plot plot = plotAlong(drawing, 0, options);
    ASSERT_EQ(plot.pages.size(), 3U) << whyNot(plot);
    std::vector<std::set<std::string>> texts;
    for (const std::string& page : plot.pages) {
        texts.push_back(textsOf(page));
    }
    EXPECT_TRUE(texts[0].contains("1 / 3"));
    EXPECT_TRUE(texts[2].contains("3 / 3"));
    // Each line has the same station on both sheets, and names the other one.
    const auto matchLine = [](const std::set<std::string>& of, const std::string& other) {
        for (const std::string& text : of) {
            if (text.starts_with("合致線") && text.ends_with("（図面" + other + "）")) {
                return text.substr(0, text.find("（"));
            }
        }
        return std::string();
    };
    EXPECT_NE(matchLine(texts[0], "2"), "");
    EXPECT_EQ(matchLine(texts[0], "2"), matchLine(texts[1], "1"));
    EXPECT_EQ(matchLine(texts[1], "3"), matchLine(texts[2], "2"));
    EXPECT_TRUE(texts[0].contains("始めの点"));
    EXPECT_FALSE(texts[2].contains("始めの点")) << "it lies beside the sheet";
    // Every stake stands on a sheet.
    for (const char* stake : {"No.6", "No.8", "No.11", "No.13", "No.14"}) {
        EXPECT_TRUE(texts[0].contains(stake) || texts[1].contains(stake) || texts[2].contains(stake)) << stake;
    }
}

TEST_F(PlotOf, TextsWithoutRoomAreAddedUpOverTheSheets) {
    addRoad(drawing, {12000.0, -36000.0}, true);
    for (const double station : {105.0, 107.0, 285.0}) {
        addSmallLot(drawing.geometry(0).pointAt(station, 5.0).value());
    }
    addSmallLot({0.0, 0.0}); // beside all sheets
    PlotOptions options;
    options.paper = "A4";
    const Plot plot = plotAlong(drawing, 0, options);
    ASSERT_EQ(plot.pages.size(), 3U) << whyNot(plot);
    EXPECT_EQ(english(plot.notes), (std::vector<std::string>{"no room for the names of 3 lots"}));
}

// A third of a millimetre beside the frame the names would have to stand outside the map.
TEST_F(PlotOf, TextsOfWhatLiesJustBesideTheMapAreNotMissed) {
    PlotOptions options;
    options.extent = drawing::Extent{0.0, 0.0, 100.0, 100.0};
    options.scale = 500;
    options.paper = "A4";
    const PlanSheet sheet(*options.extent, SheetChoice{options.scale, options.paper, {}});
    const auto notesAt = [&](double right) {
        drawing = Drawing();
        addSmallLot(sheet.groundAt({sheet.map().right() + right, sheet.map().y + 20.0}));
        return english(plotPlan(drawing, options).notes);
    };
    EXPECT_EQ(notesAt(-0.3), (std::vector<std::string>{"no room for the names of 1 lot"}));
    EXPECT_EQ(notesAt(0.3), std::vector<std::string>());
}

// The names of the grid run along its eastward arms, or the westward ones where they would stand on their heads.
TEST_F(PlotOf, NamesOfATurnedGridAreNeverUpsideDown) {
    for (const double degrees : {-179.95, -135.0, -90.05, -89.95, -45.0, 30.0, 89.95, 90.05, 135.0, 179.95}) {
        Drawing road;
        Element straight;
        straight.direction = degrees * std::numbers::pi / 180.0;
        straight.length = 100.0;
        straight.end = drawing::poseOnElement(straight, straight.length).point;
        const std::size_t line = road.addAlignment(road.addSite("サイト"), "線", "0", "", "");
        road.addElement(line, straight);
        const Plot plot = plotAlong(road, 0, {});
        ASSERT_EQ(plot.pages.size(), 1U) << whyNot(plot);
        pugi::xml_document document;
        ASSERT_TRUE(document.load_string(plot.pages[0].c_str()));
        const pugi::xpath_node_set names = document.select_nodes("//text[starts-with(., 'X=')]");
        ASSERT_GT(names.size(), 0U) << degrees;
        const double upright = std::abs(degrees) > 90.0 ? degrees - std::copysign(180.0, degrees) : degrees;
        for (const pugi::xpath_node name : names) {
            const std::string turned = name.node().attribute("transform").value();
            EXPECT_NEAR(std::stod(turned.substr(turned.find("rotate(") + 7)), upright, 0.0051)
                << degrees << ' ' << turned;
        }
    }
}

// Curves may wind round a sheet hundreds of thousands of times. The sheet says where it did not look at all of them.
TEST_F(PlotOf, StationsOfClothoidsThatWindRoundASheetAreSoughtSoLong) {
    const Piece winding{ElementType::Clothoid, 54e6, kStraight, 300.0, false};
    addChain(drawing, {winding});
    const host::PlanPoint middle = drawing.alignment(0).elements[0].end;
    const double radius = 300.0;
    const double toCentre = drawing.alignment(0).elements[0].endDirection() + std::numbers::pi / 2.0;
    const host::PlanPoint centre{middle.x + radius * std::cos(toCentre), middle.y + radius * std::sin(toCentre)};
    Element straight;
    straight.start = {centre.x - 50.0, centre.y};
    straight.length = 100.0;
    straight.end = {centre.x + 50.0, centre.y};
    const std::size_t road = drawing.addAlignment(drawing.addSite("サイト"), "中", "0", "", "");
    drawing.addElement(road, straight);
    EXPECT_TRUE(textsOf(plotAlong(drawing, road, {}).pages.at(0)).contains("No.4"));
    EXPECT_EQ(plotAlong(drawing, road, {}).notes, Notes{});
    for (int i = 0; i < 3; ++i) {
        addChain(drawing, {winding});
    }
    const std::size_t last = drawing.addAlignment(drawing.addSite("サイト"), "後", "0", "", "");
    drawing.addElement(last, straight);
    const Plot plot = plotAlong(drawing, road, {});
    ASSERT_EQ(plot.notes.size(), 1U);
    EXPECT_EQ(plot.notes[0].code, NoteCode::StationsCut);
    EXPECT_EQ(plot.notes[0].count, 6U) << "those of the straight in front";
}

TEST_F(PlotOf, SheetsAlongAnAlignmentAreBoundedTogether) {
    addRoad(drawing, {12000.0, -36000.0}, true);
    PlotOptions options;
    options.paper = "A4";
    std::size_t bytes = 0;
    for (const std::string& page : plotAlong(drawing, 0, options).pages) {
        bytes += page.size();
    }
    options.mostSheetBytes = bytes;
    EXPECT_EQ(plotAlong(drawing, 0, options).pages.size(), 3U);
    options.mostSheetBytes = bytes - 1;
    const Plot refused = plotAlong(drawing, 0, options);
    EXPECT_TRUE(refused.pages.empty());
    EXPECT_EQ(refused.failure, Obstacle{ObstacleCode::SheetsTooLarge});
    EXPECT_TRUE(isWantOfRoom(*refused.failure));
    EXPECT_EQ(wording({ObstacleCode::SheetsTooLarge, 100}, Language::English),
              "too many sheets with too much on them, together more than 100 MB; choose a smaller scale");
}

// 12 mm of the map's edge stay free of the road itself, wherever it leads between its ends.
TEST_F(PlotOf, ASheetHoldsTheWholeOfItsRoad) {
    const struct {
        bool upright;
        double widest; // metres
    } kCases[] = {{false, 95.5}, {true, 52.0}};
    for (const auto& [upright, widest] : kCases) {
        for (const bool clockwise : {false, true}) {
            for (const double more : {-0.01, 0.01}) {
                const double radius = (widest + more) / 2.0;
                drawing = Drawing();
                addChain(drawing, {{ElementType::Arc, radius * 1.5 * std::numbers::pi, radius, radius,
                                    clockwise}}); // 270 degrees
                PlotOptions options;
                options.scale = 500;
                options.paper = "A4";
                options.upright = upright;
                EXPECT_EQ(plotAlong(drawing, 0, options).pages.size() == 1, more < 0.0) << widest + more;
            }
        }
    }
}

TEST_F(PlotOf, WhatEverySheetAlongAnAlignmentSaysIsToldOnce) {
    addRoad(drawing, {12000.0, -36000.0}, true);
    addPoint(drawing, {0.0, 0.0, 0.0}, "座標なし");
    PlotOptions options;
    options.paper = "A4";
    const Plot plot = plotAlong(drawing, 0, options);
    EXPECT_EQ(plot.pages.size(), 3U);
    EXPECT_EQ(plot.notes, (Notes{{NoteCode::AtOrigin, 1}}));
    options.titles.assign(20000, {"業務名", "道路"}); // which each sheet shows: some 3 MB
    options.mostSheetBytes = 2'999'999;
    EXPECT_EQ(plotAlong(drawing, 0, options).failure, (Obstacle{ObstacleCode::SheetsTooLarge, 2}));
}

TEST_F(PlotOf, NoSheetAlongAnAlignmentIsAFailure) {
    const std::size_t road = addRoad(drawing, {12000.0, -36000.0}, true);
    for (const double start : {1e19, -1e19, 1e9}) {
        drawing.setStartStation(road, start);
        const Plot plot = plotAlong(drawing, road, {});
        EXPECT_TRUE(plot.pages.empty()) << start;
        EXPECT_EQ(whyNot(plot), "the alignment has coordinates or stations that no survey has, so it cannot be drawn");
    }
    drawing.setStartStation(road, 0.0);
    PlotOptions large;
    large.scale = 1;
    EXPECT_EQ(plotAlong(drawing, road, large).failure, (Obstacle{ObstacleCode::TooManySheets, 500}));
    const std::size_t far = addRoad(drawing, {1e30, -36000.0}, true, "FAR");
    EXPECT_EQ(plotAlong(drawing, far, {}).failure, Obstacle{ObstacleCode::BeyondReach});
    const std::size_t point = drawing.addAlignment(drawing.addSite("T"), "POINT", "0", "", "");
    drawing.addElement(point, Element{});
    EXPECT_EQ(plotAlong(drawing, point, {}).failure, Obstacle{ObstacleCode::NoElementsToDraw}) << "it has no length";
}

TEST_F(PlotOf, ProfileDrawsTheGroundToItsTwoScales) {
    addRoad(drawing, {12000.0, -36000.0}, true);
    addResult(100.0, 0.0, 10.0, "No.5", "縦断成果");
    addResult(140.0, 0.0, 14.0, "No.7", "縦断成果");
    addResult(280.0, 0.0, 12.0, "No.14", "縦断成果");
    PlotOptions options;
    options.scale = 1000;
    const Plot plot = plotProfile(drawing, 0, options);
    ASSERT_EQ(plot.pages.size(), 1U) << whyNot(plot);
    double x[3], y[3];
    ASSERT_NO_FATAL_FAILURE(readGround(plot.pages[0], x, y));
    EXPECT_NEAR(x[1] - x[0], 40.0, kMillimetre) << "40 m at 1:1000";
    EXPECT_NEAR(x[2] - x[1], 140.0, kMillimetre);
    EXPECT_NEAR(y[0] - y[1], 40.0, kMillimetre) << "4 m at 1:100";
    EXPECT_NEAR(y[2] - y[1], 20.0, kMillimetre);
    const auto texts = textsOf(plot.pages[0]);
    for (const char* wanted : {"14.000", "140.000", "40.000", "No.7", "R=100.000 L=40.000", "L=50.000"}) {
        EXPECT_TRUE(texts.contains(wanted)) << wanted;
    }
    EXPECT_TRUE(texts.contains("縮尺　横 1:1000　縦 1:100（A3）"));
}

TEST_F(PlotOf, LongProfileTakesSeveralSheets) {
    addRoad(drawing, {12000.0, -36000.0}, true);
    addResult(100.0, 0.0, 10.0, "a", "縦断成果");
    addResult(290.0, 0.0, 11.0, "b", "縦断成果");
    PlotOptions options;
    options.scale = 200;
    const Plot plot = plotProfile(drawing, 0, options);
    EXPECT_EQ(plot.pages.size(), 3U);
    options.scale = 1;
    EXPECT_NE(whyNot(plotProfile(drawing, 0, options)).find("more than 500 sheets"), std::string::npos);
    EXPECT_TRUE(isWantOfRoom(*plotProfile(drawing, 0, options).failure));
}

// 1:200 across and 1:20 up: the sheets show the whole ground once, at its grade.
TEST_F(PlotOf, ProfileSheetsGoOnWhereTheOneBeforeEnds) {
    addRoad(drawing, {12000.0, -36000.0}, true);
    addResult(100.0, 0.0, 10.0, "a", "縦断成果");
    addResult(190.0, 0.0, 10.9, "b", "縦断成果");
    addResult(290.0, 0.0, 10.4, "c", "縦断成果");
    PlotOptions options;
    options.scale = 200;
    const Plot plot = plotProfile(drawing, 0, options);
    ASSERT_EQ(plot.pages.size(), 3U);
    double rising = 0.0; // millimetres of paper
    double falling = 0.0;
    for (const std::string& page : plot.pages) {
        pugi::xml_document document;
        ASSERT_TRUE(document.load_string(page.c_str()));
        std::istringstream in(document.select_node("//path[@class='ground']").node().attribute("d").value());
        char letter = 0;
        double x[2], y[2];
        in >> letter >> x[0] >> y[0];
        while (in >> letter >> x[1] >> y[1]) {
            const double across = x[1] - x[0];
            const double up = y[0] - y[1];
            (up > 0.0 ? rising : falling) += across;
            EXPECT_NEAR(up, across * (up > 0.0 ? 0.1 : -0.05), 2.0 * kMillimetre);
            x[0] = x[1];
            y[0] = y[1];
        }
    }
    EXPECT_NEAR(rising, 450.0, 5.0 * kMillimetre);
    EXPECT_NEAR(falling, 500.0, 5.0 * kMillimetre);
}

// The diagram of curvature: a clothoid leads from the middle to the arc, however short it is.
TEST_F(PlotOf, ProfileShowsShortClothoidsWhole) {
    for (const double length : {0.2, 2.0}) {
        drawing = Drawing();
        addChain(drawing, {{ElementType::Straight, 10.0, kStraight, kStraight, false},
                           {ElementType::Clothoid, length, kStraight, 100.0, true},
                           {ElementType::Arc, 10.0, 100.0, 100.0, true}});
        addResult(0.0, 0.0, 10.0, "a", "縦断成果");
        addResult(20.0, 0.0, 10.5, "b", "縦断成果");
        PlotOptions options;
        options.scale = 100;
        const Plot plot = plotProfile(drawing, 0, options);
        ASSERT_EQ(plot.pages.size(), 1U) << whyNot(plot);
        pugi::xml_document document;
        ASSERT_TRUE(document.load_string(plot.pages[0].c_str()));
        const pugi::xpath_node_set curves = document.select_nodes("//path[@class='curve']");
        ASSERT_EQ(curves.size(), 3U);
        double x[2], y[2];
        char letter = 0;
        std::istringstream(curves[1].node().attribute("d").value()) >> letter >> x[0] >> y[0] >> letter >> x[1] >> y[1];
        EXPECT_NEAR(x[1] - x[0], 10.0 * length, kMillimetre);
        EXPECT_NEAR(y[1] - y[0], 5.0, kMillimetre);
    }
}

// Of 2 mm, where it is narrower than its element.
TEST_F(PlotOf, ProfileNamesTheElementsThatHaveRoom) {
    const std::string label = "L=5.000";
    const double room = 2.0 * widthInEms(label); // millimetres
    for (const int scale : {100, 200, 500, 1000}) {
        for (const double share : {0.99, 1.01}) {
            drawing = Drawing();
            addChain(drawing, {{ElementType::Straight, 0.001 * room * scale * share, kStraight, kStraight, false},
                               {ElementType::Arc, 50.0, 100.0, 100.0, true}});
            addResult(0.0, 0.0, 10.0, "a", "縦断成果");
            addResult(40.0, 0.0, 10.5, "b", "縦断成果");
            PlotOptions options;
            options.scale = scale;
            const Plot plot = plotProfile(drawing, 0, options);
            ASSERT_FALSE(plot.pages.empty()) << whyNot(plot);
            bool named = false;
            for (const std::string& text : textsOf(plot.pages[0])) {
                named = named || (text.starts_with("L=") && text.size() == label.size());
            }
            EXPECT_EQ(named, share > 1.0) << scale;
        }
    }
}

TEST_F(PlotOf, AVeryLongProfileTakesSheetsAtOneToAThousand) {
    const std::size_t road = drawing.addAlignment(drawing.addSite("S"), "long", "0", "", "");
    Element straight;
    straight.end = {3000.0, 0.0};
    straight.length = 3000.0;
    drawing.addElement(road, straight);
    addResult(0.0, 0.0, 10.0, "a", "縦断成果");
    addResult(3000.0, 0.0, 11.0, "b", "縦断成果");
    const Plot plot = plotProfile(drawing, 0, {});
    ASSERT_GT(plot.pages.size(), 5U) << whyNot(plot);
    bool tells = false;
    for (const std::string& text : textsOf(plot.pages[0])) {
        tells = tells || text.find("横 1:1000　") != std::string::npos;
    }
    EXPECT_TRUE(tells);
}

TEST_F(PlotOf, CrossSectionsAreToScale) {
    addRoad(drawing, {12000.0, -36000.0}, true);
    addResult(160.0, -5.0, 11.0, "左", "横断成果");
    addResult(160.0, 0.0, 10.8, "No.8", "横断成果");
    addResult(160.0, 6.5, 10.2, "<右>", "横断成果");
    const Plot plot = plotCrossSections(drawing, 0, {});
    ASSERT_EQ(plot.pages.size(), 1U) << whyNot(plot);
    double x[3], y[3];
    ASSERT_NO_FATAL_FAILURE(readGround(plot.pages[0], x, y));
    EXPECT_NEAR(x[1] - x[0], 50.0, kMillimetre) << "5 m at 1:100";
    EXPECT_NEAR(x[2] - x[1], 65.0, kMillimetre);
    EXPECT_NEAR(y[2] - y[0], 8.0, kMillimetre);
    EXPECT_TRUE(textsOf(plot.pages[0]).contains("GH=10.800"));
    PlotOptions options;
    options.scale = 10;
    EXPECT_NE(whyNot(plotCrossSections(drawing, 0, options)).find("do not fit"), std::string::npos);
}

// Columns of figures are 2.4 mm wide: 24 cm at 1:100.
TEST_F(PlotOf, SectionsTellHowManyFiguresHaveNoRoom) {
    addRoad(drawing, {12000.0, -36000.0}, true);
    std::size_t without = 0;
    for (const double station : {120.0, 140.0}) {
        for (const double offset : {-1.0, -0.765, 0.0, 0.235, 0.245, 1.0}) {
            addResult(station, offset, 11.0, "No.", "横断成果");
        }
        without += 2;
        const Plot plot = plotCrossSections(drawing, 0, {});
        ASSERT_EQ(plot.pages.size(), 1U) << whyNot(plot);
        ASSERT_EQ(plot.notes.size(), 1U);
        EXPECT_EQ(plot.notes[0].code, NoteCode::NoRoomForFigures);
        EXPECT_EQ(plot.notes[0].count, without);
        const auto texts = textsOf(plot.pages[0]);
        EXPECT_TRUE(texts.contains("0.245"));
        EXPECT_FALSE(texts.contains("0.235") || texts.contains("-0.765"));
    }
    Drawing other;
    std::swap(drawing, other);
    addRoad(drawing, {12000.0, -36000.0}, true);
    for (const double offset : {-1.0, 0.0, 0.1}) {
        addResult(120.0, offset, 11.0, "No.6", "横断成果");
    }
    const Plot plot = plotCrossSections(drawing, 0, {});
    ASSERT_EQ(plot.notes.size(), 1U);
    EXPECT_EQ(plot.notes[0].count, 1U);
}

TEST_F(PlotOf, ManySectionsStandOnceEachOnTheirSheets) {
    addRoad(drawing, {12000.0, -36000.0}, true);
    std::multiset<std::string> wanted;
    for (int i = 0; i < 24; ++i) {
        const std::string name = "断面" + std::to_string(i);
        for (const double offset : {-6.0, 0.0, 6.0}) {
            addResult(102.0 + 8.0 * i, offset, 11.0, name.c_str(), "横断成果");
        }
        wanted.insert(name);
    }
    const Plot plot = plotCrossSections(drawing, 0, {});
    EXPECT_GT(plot.pages.size(), 1U) << whyNot(plot);
    std::multiset<std::string> names;
    for (const std::string& page : plot.pages) {
        pugi::xml_document document;
        ASSERT_TRUE(document.load_string(page.c_str()));
        for (const pugi::xpath_node node : document.select_nodes("//text[starts-with(., '断面')]")) {
            names.emplace(node.node().child_value());
        }
    }
    EXPECT_EQ(names, wanted);
}

TEST_F(PlotOf, SectionsTellOfOneHeightThatTheyLeaveOut) {
    addRoad(drawing, {12000.0, -36000.0}, true);
    for (const char* type : {"縦断成果", "横断成果"}) {
        addResult(140.0, 0.0, 10.0, "a", type);
        addResult(140.0, 5.0, 1e30, "", type);
        addResult(160.0, 0.0, 11.0, "b", type);
    }
    addResult(180.0, 0.0, 1e30, "c", "縦断成果");
    for (const Plot& plot : {plotProfile(drawing, 0, {}), plotCrossSections(drawing, 0, {})}) {
        ASSERT_EQ(plot.pages.size(), 1U) << whyNot(plot);
        ASSERT_EQ(plot.notes.size(), 1U);
        EXPECT_EQ(plot.notes[0].code, NoteCode::OutOfReach);
        EXPECT_EQ(plot.notes[0].count, 1U);
    }
}

// Where a step of the grid is lost in a height, its lines had no end.
TEST_F(PlotOf, SectionsLeaveOutHeightsThatNoSheetShows) {
    addRoad(drawing, {12000.0, -36000.0}, true);
    addResult(100.0, 0.0, 1e30, "a", "縦断成果");
    addResult(140.0, 0.0, -1e20, "b", "縦断成果");
    EXPECT_EQ(plotProfile(drawing, 0, {}).failure, Obstacle{ObstacleCode::NoLongitudinal});
    addResult(160.0, 0.0, 9e6, "c", "縦断成果");
    addResult(200.0, 0.0, -9e6, "d", "縦断成果");
    PlotOptions options;
    options.paper = "A4";
    const Plot profile = plotProfile(drawing, 0, options);
    ASSERT_EQ(profile.pages.size(), 1U) << whyNot(profile);
    EXPECT_EQ(english(profile.notes),
              (std::vector<std::string>{"2 objects with coordinates that no survey has are not drawn"}));
    EXPECT_LT(profile.pages[0].size(), 20'000U);
    EXPECT_TRUE(textsOf(profile.pages[0]).contains("-9000000.000")) << "a height that a scale reaches";

    addResult(160.0, 0.0, 1e30, "c", "横断成果");
    addResult(160.0, 5.0, 1e30, "", "横断成果");
    EXPECT_EQ(plotCrossSections(drawing, 0, {}).failure, Obstacle{ObstacleCode::NoCrossSections});
    addResult(200.0, 0.0, 8.0, "d", "横断成果");
    addResult(200.0, -5.0, 1e20, "", "横断成果");
    addResult(200.0, 5.0, 9.0, "", "横断成果");
    const Plot sections = plotCrossSections(drawing, 0, {});
    ASSERT_EQ(sections.pages.size(), 1U) << whyNot(sections);
    EXPECT_EQ(english(sections.notes),
              (std::vector<std::string>{"3 objects with coordinates that no survey has are not drawn"}));
}

// The renderer of a PDF takes seconds for a text of 50,000 letters, and each sheet has the name in its title.
TEST_F(PlotOf, NamesThatRunOffThePaperAreCut) {
    const std::string name(50'000, 'r');
    addRoad(drawing, {12000.0, -36000.0}, false, name.c_str());
    for (const double station : {100.0, 160.0, 220.0}) {
        addResult(station, 0.0, 5.0, name.c_str(), "縦断成果");
        addResult(station, 0.0, 5.0, name.c_str(), "横断成果");
        addResult(station, 4.0, 6.0, "q", "横断成果");
    }
    for (const Plot& plot :
         {plotAlong(drawing, 0, {}), plotProfile(drawing, 0, {}), plotCrossSections(drawing, 0, {})}) {
        ASSERT_FALSE(plot.pages.empty()) << whyNot(plot);
        std::size_t cut = 0;
        for (const std::string& text : textsOf(plot.pages[0])) {
            EXPECT_LT(text.size(), 1000U);
            cut += text.ends_with("rrr…") ? 1 : 0;
        }
        EXPECT_GT(cut, 0U);
    }
}

// Both halves of a title's line are cut where they are eight times too long, and the second is squeezed into its room.
TEST_F(PlotOf, LongTitlesAreSqueezedAndThenCut) {
    addRoad(drawing, {12000.0, -36000.0}, false);
    PlotOptions options;
    options.titles = {{std::string(1000, 'n'), std::string(1000, 'v')}, {"short", "value"}};
    const Plot plot = plotPlan(drawing, options);
    ASSERT_EQ(plot.pages.size(), 1U) << whyNot(plot);
    pugi::xml_document document;
    ASSERT_TRUE(document.load_string(plot.pages[0].c_str()));
    const pugi::xml_node value = document.select_node("//text[starts-with(., 'vvv')]").node();
    const double room = value.attribute("textLength").as_double();
    EXPECT_GT(room, 20.0);
    EXPECT_STREQ(value.child_value(), cutToEms(options.titles[0].second, 8.0 * room / 2.4).c_str());
    EXPECT_STREQ(document.select_node("//text[starts-with(., 'nnn')]").node().child_value(),
                 cutToEms(options.titles[0].first, 8.0 * room / 2.4).c_str());
    EXPECT_FALSE(document.select_node("//text[. = 'value']").node().attribute("textLength"));
}

TEST_F(PlotOf, SectionsWithoutResultsSayWhatIsMissing) {
    addRoad(drawing, {12000.0, -36000.0}, true);
    EXPECT_NE(whyNot(plotProfile(drawing, 0, {})), "");
    EXPECT_NE(whyNot(plotCrossSections(drawing, 0, {})), "");
    EXPECT_TRUE(plotProfile(drawing, 0, {}).pages.empty());
}

} // namespace
} // namespace fenmark::exchange
