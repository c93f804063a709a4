// The plan as SVG.
#include "exchange/plan/plan.h"
#include "exchange/plan/plan_geometry.h"
#include "exchange/plan/plan_svg.h"
#include "exchange/plan/plot.h"
#include "sample_drawing.h"
#include "worded_notes.h"

#include <gtest/gtest.h>
#include <pugixml.hpp>

#include <algorithm>
#include <cmath>
#include <limits>
#include <set>
#include <sstream>
#include <string>

namespace fenmark::exchange {
namespace {

constexpr double kMillimetre = 0.011; // coordinates of the paper have two decimals

class PlanOf : public ::testing::Test {
  protected:
    void draw() {
        std::ostringstream out;
        notes = writePlanSvg(drawing, out);
        text = out.str();
        ASSERT_TRUE(document.load_string(text.c_str())) << text.substr(0, 200);
        svg = document.child("svg");
    }
    std::size_t countOfClass(const std::string& wanted) const {
        const std::string query = "//*[@class='" + wanted + "']";
        return document.select_nodes(query.c_str()).size();
    }
    bool hasText(const std::string& wanted) const {
        for (const pugi::xpath_node node : document.select_nodes("//text")) {
            if (node.node().child_value() == wanted) {
                return true;
            }
        }
        return false;
    }
    bool hasTextBeginning(const std::string& wanted) const {
        for (const pugi::xpath_node node : document.select_nodes("//text")) {
            if (std::string_view(node.node().child_value()).starts_with(wanted)) {
                return true;
            }
        }
        return false;
    }

    Drawing drawing;
    pugi::xml_document document;
    pugi::xml_node svg;
    Notes notes;
    std::string text;
};

TEST(Sheet, TakesTheLargestRoundScaleThatFits) {
    drawing::Extent extent;
    extent.add(12000.0, -36200.0);
    extent.add(12600.0, -35750.0);
    const PlanSheet sheet(extent);
    EXPECT_STREQ(sheet.format(), "A3");
    EXPECT_EQ(sheet.scale(), 2000);
    extent.add(12000.0, -35600.0);
    EXPECT_EQ(PlanSheet(extent).scale(), 2500);
    extent.add(22000.0, -35600.0);
    EXPECT_STREQ(PlanSheet(extent).format(), "A1");
}

// 1:10 to 1:50,000,000: digits that scales of plans have, then zeros.
TEST(Sheet, EveryScaleIsARoundOne) {
    const std::set<std::string> leading = {"10", "12", "15", "20", "25", "30", "50", "60"};
    std::set<int> scales;
    for (double side = 0.5; side < 5e6; side *= 1.05) {
        drawing::Extent extent;
        extent.add(0.0, 0.0);
        extent.add(side, 0.6 * side);
        const int scale = PlanSheet(extent).scale();
        const std::string text = std::to_string(scale);
        EXPECT_TRUE(leading.contains(text.substr(0, 2))) << text;
        EXPECT_EQ(text.find_first_not_of('0', 2), std::string::npos) << text;
        scales.insert(scale);
    }
    EXPECT_EQ(*scales.begin(), 10);
    EXPECT_EQ(scales.size(), 38U) << "9 up to 1:600, 7 in each decade behind, and 1:10,000,000";
}

// On each paper the map and the room for names round it leave so many millimetres to the ground.
TEST(Sheet, EveryPaperIsFilledToTheMillimetre) {
    const struct {
        const char* paper;
        bool upright;
        double wide, high; // of the map
    } kPapers[] = {
        {"A4", false, 215.0, 190.0}, {"A4", true, 128.0, 277.0},  {"A3", false, 338.0, 277.0},
        {"A3", true, 215.0, 400.0},  {"A2", false, 512.0, 400.0}, {"A2", true, 338.0, 574.0},
        {"A1", false, 759.0, 574.0}, {"A1", true, 512.0, 821.0},  {"A0", false, 1107.0, 821.0},
        {"A0", true, 759.0, 1169.0},
    };
    constexpr double kNames = 28.0;   // beside the ground on both sides together
    constexpr double kMore = 1.00001; // what has no room any more
    const auto ground = [](double millimetres, double others, bool wide) {
        drawing::Extent extent;
        extent.add(-100.0, 3000.0);
        extent.add(-100.0 + 0.5 * (wide ? millimetres : others), 3000.0 + 0.5 * (wide ? others : millimetres));
        return extent;
    };
    for (const auto& [paper, upright, wide, high] : kPapers) {
        for (const bool alongWidth : {true, false}) {
            const double map = alongWidth ? wide : high;
            SheetChoice choice{std::nullopt, paper, upright};
            EXPECT_EQ(PlanSheet(ground((map - kNames) / kMore, 50.0, alongWidth), choice).scale(), 500) << paper;
            EXPECT_EQ(PlanSheet(ground((map - kNames) * kMore, 50.0, alongWidth), choice).scale(), 600) << paper;
            EXPECT_STREQ(PlanSheet(ground(map * kMore, 50.0, alongWidth), choice).format(), paper);
            choice.scale = 500; // which may use the room for names too
            EXPECT_TRUE(PlanSheet(ground(map / kMore, 50.0, alongWidth), choice).fits()) << paper;
            EXPECT_FALSE(PlanSheet(ground(map * kMore, 50.0, alongWidth), choice).fits()) << paper;
        }
    }
}

TEST(Sheet, TheSmallestPaperFromA3OnIsTaken) {
    constexpr double kMore = 1.00001;
    const auto sheetOf = [](double width, double height, const SheetChoice& choice = {}) {
        drawing::Extent extent;
        extent.add(0.0, 0.0);
        extent.add(width, height);
        const PlanSheet sheet(extent, choice);
        return std::string(sheet.format()) + " 1:" + std::to_string(sheet.scale()) + (sheet.fits() ? "" : " too small");
    };
    // Up to 1:2500; on A1, the largest that is taken unasked, any scale.
    EXPECT_EQ(sheetOf(310.0 * 2.5 / kMore, 100.0), "A3 1:2500");
    EXPECT_EQ(sheetOf(310.0 * 2.5 * kMore, 100.0), "A2 1:2000");
    EXPECT_EQ(sheetOf(484.0 * 2.5 / kMore, 100.0), "A2 1:2500");
    EXPECT_EQ(sheetOf(484.0 * 2.5 * kMore, 100.0), "A1 1:2000");
    EXPECT_EQ(sheetOf(731.0 * 2.5 * kMore, 100.0), "A1 1:3000");
    EXPECT_EQ(sheetOf(731.0 * 10.0 * kMore, 100.0), "A1 1:12000");
    // At a scale that was chosen, up to A0.
    const SheetChoice at500{500, std::nullopt};
    EXPECT_EQ(sheetOf(338.0 * 0.5 / kMore, 10.0, at500), "A3 1:500");
    EXPECT_EQ(sheetOf(338.0 * 0.5 * kMore, 10.0, at500), "A2 1:500");
    EXPECT_EQ(sheetOf(512.0 * 0.5 * kMore, 10.0, at500), "A1 1:500");
    EXPECT_EQ(sheetOf(759.0 * 0.5 * kMore, 10.0, at500), "A0 1:500");
    EXPECT_EQ(sheetOf(1107.0 * 0.5 * kMore, 10.0, at500), "A0 1:500 too small");
    // Upright where that is asked for, or where the ground is much higher than wide.
    EXPECT_EQ(sheetOf(100.0, 277.0 * 0.5 * kMore, {500, std::nullopt, false}), "A2 1:500");
    drawing::Extent extent;
    extent.add(0.0, 0.0);
    extent.add(100.0, 134.99);
    EXPECT_LT(PlanSheet(extent).height(), PlanSheet(extent).width());
    extent.add(100.0, 135.01);
    EXPECT_GT(PlanSheet(extent).height(), PlanSheet(extent).width());
}

TEST(Sheet, ShowsADetailLargeAndASinglePointAtAnOrdinaryScale) {
    drawing::Extent extent;
    EXPECT_EQ(PlanSheet(extent).scale(), 100) << "nothing at all";
    extent.add(100.0, 200.0);
    EXPECT_EQ(PlanSheet(extent).scale(), 100);
    EXPECT_STREQ(PlanSheet(extent).format(), "A3");
    extent.add(103.0, 201.0);
    EXPECT_EQ(PlanSheet(extent).scale(), 10);
    extent.add(112.0, 201.0);
    EXPECT_EQ(PlanSheet(extent).scale(), 50);
}

TEST(Sheet, HoldsTheWholeExtentNorthUp) {
    drawing::Extent extent;
    extent.add(100.0, 200.0);
    extent.add(400.0, 1500.0);
    const PlanSheet sheet(extent);
    EXPECT_GT(sheet.height(), sheet.width()) << "a tall extent stands upright";
    for (const PlanPoint& corner : {PlanPoint{100, 200}, PlanPoint{400, 1500}}) {
        const PaperPoint at = sheet.at(corner.x, corner.y);
        EXPECT_GE(at.x, sheet.map().x);
        EXPECT_LE(at.x, sheet.map().right());
        EXPECT_GE(at.y, sheet.map().y);
        EXPECT_LE(at.y, sheet.map().bottom());
        EXPECT_NEAR(sheet.groundAt(at).x, corner.x, kMillimetre);
        EXPECT_NEAR(sheet.groundAt(at).y, corner.y, kMillimetre);
    }
    EXPECT_LT(sheet.at(100, 1500).y, sheet.at(100, 200).y);
    EXPECT_NEAR(sheet.at(300, 0).x - sheet.at(100, 0).x, sheet.paperLength(200.0), kMillimetre);
}

TEST(StakeNames, CountStakesOfTwentyMetres) {
    EXPECT_EQ(stakeName(100.0), "No.5");
    EXPECT_EQ(stakeName(155.5), "No.7+15.500");
    EXPECT_EQ(stakeName(119.9999), "No.6") << "a tenth of a millimetre short is the stake";
    EXPECT_EQ(stakeName(0.0), "No.0");
    EXPECT_EQ(stakeName(-5.0), "No.-1+15.000");
}

TEST(LabelWidth, IsHalfForKanaOfHalfWidth) {
    EXPECT_DOUBLE_EQ(widthInEms("点"), 1.0);
    EXPECT_DOUBLE_EQ(widthInEms("ｶﾅ"), 1.0);
    EXPECT_DOUBLE_EQ(widthInEms("No"), 1.1);
}

TEST(LabelWidth, IsKeptByATextThatIsCut) {
    EXPECT_EQ(cutToEms("中心線", 3.0), "中心線");
    EXPECT_EQ(cutToEms("中心線路", 3.0), "中心…");
    EXPECT_EQ(cutToEms("abcdef", 3.3), "abcdef");
    EXPECT_EQ(cutToEms("abcdefg", 3.3), "abcd…");
    EXPECT_EQ(cutToEms("ｶﾅｶﾅｶ", 2.4), "ｶﾅ…");
    EXPECT_EQ(cutToEms("中", 0.5), "…");
    EXPECT_EQ(cutToEms("", 0.0), "");
}

TEST(LabelSpace, NeverPutsOneNameOnAnother) {
    LabelSpace space({0.0, 0.0, 100.0, 100.0});
    const Label first{{10.0, 10.0}, 2.0, 0.0, Label::Anchor::Start, "中心線", ""};
    ASSERT_TRUE(space.isFree(first, true));
    space.take(first);
    EXPECT_FALSE(space.isFree({{12.0, 10.5}, 2.0, 0.0, Label::Anchor::Start, "点", ""}, false));
    EXPECT_TRUE(space.isFree({{12.0, 14.0}, 2.0, 0.0, Label::Anchor::Start, "点", ""}, false));
    EXPECT_FALSE(space.isFree({{98.0, 50.0}, 2.0, 0.0, Label::Anchor::Start, "中心線", ""}, false))
        << "it would reach beyond the map";
    EXPECT_TRUE(space.isFree({{98.0, 50.0}, 2.0, 0.0, Label::Anchor::End, "中心線", ""}, false));
}

TEST(LabelSpace, PrefersAPlaceOffTheLines) {
    LabelSpace space({0.0, 0.0, 100.0, 100.0});
    space.takeLine({0.0, 10.0}, {100.0, 10.0});
    const std::vector<Label> candidates = {{{10.0, 10.0}, 2.0, 0.0, Label::Anchor::Start, "点", "a"},
                                           {{10.0, 20.0}, 2.0, 0.0, Label::Anchor::Start, "点", "b"}};
    EXPECT_STREQ(space.takeFirst(candidates, false)->style, "b");
    EXPECT_STREQ(space.takeFirst(candidates, false)->style, "a") << "on the line if there is no other";
    EXPECT_EQ(space.takeFirst(candidates, false), nullptr);
}

// A line far longer than the sheet keeps all of its way over the sheet free, also where it only cuts a corner.
TEST(LabelSpace, ALineKeepsItsPlaceHoweverLongItIs) {
    const struct {
        PaperPoint from, to;
        PaperPoint on; // the line, within the map
    } kLines[] = {
        {{-100.0, 10.0}, {200.0, 10.0}, {50.0, 10.0}},
        {{-40'000.0, 10.0}, {60'000.0, 10.0}, {50.0, 10.0}},
        {{60.0, 9e7}, {60.0, -8e7}, {60.0, 30.0}},
        {{-30'000.0, -30'010.0}, {70'000.0, 69'990.0}, {60.0, 50.0}},
        {{-40'000.0, 40'010.0}, {30'000.0, -29'990.0}, {5.0, 5.0}},
        {{50.0, 50.0}, {50.0 + 3e9, 50.0 - 4e9}, {65.0, 30.0}},
        {{40.0, 40.0}, {40.0, 40.0}, {40.0, 40.0}},
        {{40.0, 10.0}, {40.05, 70.0}, {40.0, 40.0}}, // nearly upright, and nearly level
        {{40.05, 10.0}, {40.0, 70.0}, {40.0, 40.0}},
        {{10.0, 40.0}, {70.0, 40.05}, {40.0, 40.0}},
        {{10.0, 40.05}, {70.0, 40.0}, {40.0, 40.0}},
    };
    for (const auto& [from, to, on] : kLines) {
        LabelSpace space({0.0, 0.0, 100.0, 100.0});
        const Label over{on, 2.0, 0.0, Label::Anchor::Middle, "点", ""};
        ASSERT_TRUE(space.isFree(over, true));
        space.takeLine(from, to);
        EXPECT_FALSE(space.isFree(over, true)) << to.x << ' ' << to.y;
        EXPECT_TRUE(space.isFree(over, false)) << "but for labels, it is free";
        EXPECT_TRUE(space.isFree({{90.0, 90.0}, 2.0, 0.0, Label::Anchor::Start, "点", ""}, true))
            << to.x << ' ' << to.y;
    }
    LabelSpace space({0.0, 0.0, 100.0, 100.0});
    space.takeLine({-1e6, -5.0}, {1e6, -5.0});
    space.takeLine({105.0, 1e6}, {105.0, -1e6});
    EXPECT_TRUE(space.isFree({{0.0, 1.0}, 2.0, 0.0, Label::Anchor::Start, "点", ""}, true))
        << "they run beside the map";
    EXPECT_TRUE(space.isFree({{100.0, 50.0}, 2.0, 0.0, Label::Anchor::End, "点", ""}, true));
}

// Reals so large do not tell steps of a line apart, nor does a line without end have any.
TEST(LabelSpace, ALineBeyondAllBoundsComesToAnEnd) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    LabelSpace space({0.0, 0.0, 100.0, 100.0});
    for (const double far : {1e15, 1e17, 1e19, 1e100, 1e300, kInfinity, -kInfinity, std::nan("")}) {
        space.takeLine({-far, 10.0}, {far, 10.0});
        space.takeLine({50.0, 50.0}, {far, -far});
        space.takeLine({far, far}, {far, -far});
        EXPECT_TRUE(space.isFree({{5.0, 90.0}, 2.0, 0.0, Label::Anchor::Start, "点", ""}, true)) << far;
    }
}

TEST(LabelSpace, HoldsALabelOnlyNearTheMap) {
    const LabelSpace space({10.0, 10.0, 100.0, 50.0});
    for (const double beside : {0.0, 13.9, 15.0}) {
        const bool near = beside < 14.0;
        EXPECT_EQ(space.mayHold({10.0 - beside, 30.0}, 14.0), near) << beside;
        EXPECT_EQ(space.mayHold({110.0 + beside, 30.0}, 14.0), near) << beside;
        EXPECT_EQ(space.mayHold({50.0, 10.0 - beside}, 14.0), near) << beside;
        EXPECT_EQ(space.mayHold({50.0, 60.0 + beside}, 14.0), near) << beside;
    }
}

TEST_F(PlanOf, AlignmentTellsItsElementsApart) {
    addRoad(drawing, {12000.0, -36000.0}, false);
    draw();
    EXPECT_EQ(countOfClass("l straight") - 3, 2U) << "three more are samples of the legend";
    EXPECT_EQ(countOfClass("l arc") - 1, 1U);
    EXPECT_EQ(countOfClass("l clothoid") - 1, 2U);
    EXPECT_TRUE(hasText("R=100.000 L=40.000"));
    EXPECT_TRUE(hasText("A=60.000 L=36.000"));
    EXPECT_TRUE(hasText("中心線"));
}

TEST_F(PlanOf, ArcIsAnArcOfTheRightRadiusAndSense) {
    for (const bool clockwise : {false, true}) {
        drawing = Drawing();
        addRoad(drawing, {0.0, 0.0}, clockwise);
        draw();
        const std::string path = document.select_node("//path[@class='l arc']").node().attribute("d").value();
        std::istringstream in(path);
        char command = 0;
        double x = 0, y = 0, rx = 0, ry = 0, turn = 0, large = 0, sweep = 0, ex = 0, ey = 0;
        in >> command >> x >> y;
        ASSERT_EQ(command, 'M');
        in >> command >> rx >> ry >> turn >> large >> sweep >> ex >> ey;
        ASSERT_EQ(command, 'A') << path;
        const PlanSheet sheet(drawing.extent());
        EXPECT_NEAR(rx, sheet.paperLength(100.0), kMillimetre);
        EXPECT_EQ(rx, ry);
        EXPECT_EQ(large, 0.0);
        EXPECT_EQ(sweep, clockwise ? 1.0 : 0.0) << "the paper's y runs down";
        const Element& arc = drawing.alignment(0).elements[2];
        EXPECT_NEAR(x, sheet.at(arc.start.x, arc.start.y).x, kMillimetre);
        EXPECT_NEAR(ey, sheet.at(arc.end.x, arc.end.y).y, kMillimetre);
    }
}

TEST_F(PlanOf, ElementEndsAreNamedByTheirKindOrByThePointThere) {
    addRoad(drawing, {12000.0, -36000.0}, false);
    addPoint(drawing, {12050.0, -36000.0, 0.0}, "KA1-1");
    draw();
    EXPECT_TRUE(hasText("BP No.5"));
    EXPECT_TRUE(hasText("KA1-1 No.7+10.000"));
    EXPECT_TRUE(hasText("KE No.9+6.000"));
    EXPECT_TRUE(hasText("EP No.14+12.000"));
    EXPECT_FALSE(hasText("KA1-1")) << "the point's name is not written twice";
}

TEST_F(PlanOf, StationsStandEveryTwentyMetres) {
    addRoad(drawing, {12000.0, -36000.0}, false);
    draw();
    for (const char* stake : {"No.6", "No.7", "No.8", "No.9", "No.11", "No.12", "No.13", "No.14"}) {
        EXPECT_TRUE(hasText(stake)) << stake;
    }
    EXPECT_TRUE(hasTextBeginning("No.10  200.0"));
    EXPECT_FALSE(hasText("No.15")) << "beyond the end";
}

TEST_F(PlanOf, SheetHasNorthScaleBarLegendGridAndTitle) {
    fillSample(drawing);
    drawing.setZone(9);
    draw();
    for (const char* wanted :
         {"N", "凡例", "線形（クロソイド）", "画地", "幅杭線（左）", "座標点", "a.sim", "平面直角座標 第IX系"}) {
        EXPECT_TRUE(hasText(wanted)) << wanted;
    }
    EXPECT_TRUE(hasTextBeginning("1:"));
    EXPECT_TRUE(hasTextBeginning("Y=12"));
    EXPECT_TRUE(hasTextBeginning("X=-36"));
    EXPECT_FALSE(hasText("横断成果の点")) << "the legend tells what is there";
}

TEST(Plan, NamesEveryZoneByItsNumeral) {
    const char* const numerals[] = {"I",  "II",  "III",  "IV",  "V",  "VI",  "VII",  "VIII",  "IX", "X",
                                    "XI", "XII", "XIII", "XIV", "XV", "XVI", "XVII", "XVIII", "XIX"};
    for (int zone = 1; zone <= 19; ++zone) {
        Drawing drawing;
        drawing.setZone(zone);
        addPoint(drawing, {1.0, 2.0, 0.0}, "P");
        const Plot plot = plotPlan(drawing, {});
        ASSERT_EQ(plot.pages.size(), 1U);
        const std::string wanted = std::string("平面直角座標 第") + numerals[zone - 1] + "系";
        EXPECT_NE(plot.pages[0].find(wanted), std::string::npos) << wanted;
    }
}

TEST_F(PlanOf, LotsShowNameAndArea) {
    fillSample(drawing);
    draw();
    EXPECT_TRUE(hasText("12-3"));
    EXPECT_TRUE(hasText("400.00 m²"));
    EXPECT_EQ(countOfClass("lot") - 1, 1U);
}

TEST_F(PlanOf, NamesAreEscaped) {
    addPoint(drawing, {0, 0, 0}, "<&\"\x01>");
    addPoint(drawing, {10, 10, 0}, "b");
    draw();
    EXPECT_TRUE(hasText("<&\"\uFFFD>"));
}

// Viewers that do not know how to place text by its middle show it at the same place.
TEST_F(PlanOf, TextsStandOnBaseLinesOfTheirOwn) {
    constexpr double kHundredth = 0.0051; // millimetres: two decimals are written
    fillSample(drawing);
    draw();
    EXPECT_EQ(text.find("dominant-baseline"), std::string::npos);
    for (const pugi::xpath_node node : document.select_nodes("//text[@transform]")) {
        const double size = node.node().attribute("font-size").as_double();
        EXPECT_NEAR(node.node().attribute("y").as_double(), baseLineBelow(size), kHundredth);
    }
}

TEST_F(PlanOf, EmptyDrawingSaysSo) {
    draw();
    EXPECT_TRUE(hasText("図形がありません"));
    EXPECT_TRUE(notes.empty());
}

TEST_F(PlanOf, ObjectsAtTheOriginFarFromAllElseAreLeftOutAndTold) {
    fillSample(drawing);
    addPolyline(drawing, {{0, 0, 0}}, false, "", "IP線");
    addPoint(drawing, {0, 0, 0}, "座標なし");
    draw();
    ASSERT_FALSE(notes.empty());
    EXPECT_NE(japanese(notes[0]).find("2個"), std::string::npos) << japanese(notes[0]);
    EXPECT_TRUE(hasText("12-3"));
    EXPECT_FALSE(hasText("座標なし"));
}

TEST_F(PlanOf, ASingleObjectIsLeftOutToo) {
    fillSample(drawing);
    addPoint(drawing, {0, 0, 0}, "座標なし");
    draw();
    EXPECT_EQ(notes, (Notes{{NoteCode::AtOrigin, 1}}));
    EXPECT_FALSE(hasText("座標なし"));
    drawing = Drawing();
    addPoint(drawing, {0, 0, 0}, "原点");
    addPoint(drawing, {400, 300, 0}, "隣");
    addPoint(drawing, {1e30, 0, 0}, "遠方");
    addRoad(drawing, {300.0, 280.0}, false);
    draw();
    EXPECT_EQ(notes, (Notes{{NoteCode::OutOfReach, 1}, {NoteCode::NoRoomAlongAlignments, 1}}));
    EXPECT_TRUE(hasText("原点") && hasText("隣")) << "the sheet holds both";
    EXPECT_TRUE(hasTextBeginning("EP")) << "the road is in reach";
    EXPECT_FALSE(hasText("遠方"));
}

TEST_F(PlanOf, ObjectsAtTheOriginNearTheOthersAreShown) {
    addPoint(drawing, {0, 0, 0}, "原点");
    addPoint(drawing, {50, 30, 0}, "隣");
    draw();
    EXPECT_TRUE(notes.empty());
    EXPECT_TRUE(hasText("原点"));
}

TEST_F(PlanOf, ObjectsAtTheOriginAreShownWithinFiveKilometresOfAllElse) {
    for (const double away : {4999.999, 5000.0, 5000.005}) {
        for (const PlanPoint& at : {PlanPoint{away, 1}, PlanPoint{-away, 1}, PlanPoint{1, away}, PlanPoint{1, -away}}) {
            drawing = Drawing();
            addPoint(drawing, {0, 0, 0}, "原点");
            addPoint(drawing, {at.x, at.y, 0}, "隣");
            draw();
            EXPECT_EQ(hasText("原点"), away < 5000.0) << at.x << ' ' << at.y;
            EXPECT_EQ(notes.empty(), away < 5000.0) << at.x << ' ' << at.y;
            EXPECT_TRUE(hasText("隣")) << at.x << ' ' << at.y;
        }
    }
}

TEST_F(PlanOf, ObjectsWithCoordinatesThatNoSurveyHasAreLeftOutAndTold) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    fillSample(drawing);
    addPoint(drawing, {kInfinity, 0.0, 0.0}, "無限");
    addPoint(drawing, {12000.0, 1e300, 0.0}, "遠方");
    addPolyline(drawing, {{12010, -36010, 0}, {12010, -kInfinity, 0}, {12030, -36030, 0}}, true, "無限区画");
    addRoad(drawing, {1e12, 0.0}, false, "遠い線");
    draw();
    EXPECT_TRUE(hasTextBeginning("BP"));
    EXPECT_FALSE(hasText("遠方"));
    EXPECT_FALSE(hasText("無限区画"));
    EXPECT_FALSE(hasTextBeginning("遠い線"));
    ASSERT_EQ(notes.size(), 1u);
    EXPECT_EQ(japanese(notes[0]), "座標が大きすぎる4個の図形は図示していません");
    EXPECT_EQ(english(notes[0]), "4 objects with coordinates that no survey has are not drawn");
}

TEST_F(PlanOf, ObjectsUpToAHundredThousandKilometresFromTheOriginAreDrawn) {
    constexpr double kFurthest = 1e8;
    for (const double far : {kFurthest, kFurthest + 1.0}) {
        const auto expectDrawn = [&](const char* what) {
            draw();
            const bool leftOut = std::any_of(notes.begin(), notes.end(),
                                             [](const Note& note) { return note.code == NoteCode::OutOfReach; });
            EXPECT_EQ(leftOut, far > kFurthest) << what << " at " << far;
            EXPECT_NE(hasText("図形がありません"), far == kFurthest) << what << " at " << far;
        };
        for (const PlanPoint& at : {PlanPoint{far, 0}, PlanPoint{-far, 0}, PlanPoint{0, far}, PlanPoint{0, -far}}) {
            drawing = Drawing();
            addPoint(drawing, {at.x, at.y, 0.0}, "P");
            expectDrawn("a point");
            drawing = Drawing();
            addPolyline(drawing, {{at.x * 0.9, at.y * 0.9, 0}, {at.x, at.y, 0}}, false, "L");
            expectDrawn("a line");
            for (const bool ends : {false, true}) {
                drawing = Drawing();
                const std::size_t road = drawing.addAlignment(drawing.addSite("S"), "A", "0", "", "");
                Element straight;
                straight.start = ends ? PlanPoint{at.x * 0.9, at.y * 0.9} : at;
                straight.end = ends ? at : PlanPoint{at.x * 0.9, at.y * 0.9};
                straight.length = std::hypot(at.x, at.y) * 0.1;
                straight.direction = std::atan2(straight.end.y - straight.start.y, straight.end.x - straight.start.x);
                drawing.addElement(road, straight);
                expectDrawn("an alignment");
            }
        }
        for (const double start : {far, -far}) {
            drawing = Drawing();
            drawing.setStartStation(addRoad(drawing, {0.0, 0.0}, true), start);
            expectDrawn("a station");
        }
    }
}

TEST_F(PlanOf, EveryPointHasTheSymbolOfItsKindAtItsPlace) {
    addPoint(drawing, {100.0, 100.0, 0.0}, "a");
    addPoint(drawing, {140.0, 100.0, 0.0}, "b");
    addPoint(drawing, {100.0, 130.0, 0.0}, "c", "縦断成果");
    addPoint(drawing, {140.0, 130.0, 0.0}, "d", "横断成果");
    addPoint(drawing, {120.0, 115.0, 0.0}, "e", "他");
    draw();
    // The outlines: a ring of two half circles, a triangle, a saltire, a square.
    const auto count = [this](std::string_view outline) {
        std::size_t found = 0;
        for (std::size_t at = text.find(outline); at != std::string::npos; at = text.find(outline, at + 1)) {
            ++found;
        }
        return found;
    };
    const std::size_t inLegend = 1; // each kind that is there has its symbol in the legend too
    EXPECT_EQ(count("a.45 .45 0 1 0 .9 0a.45 .45 0 1 0-.9 0"), 2U + inLegend);
    EXPECT_EQ(count("l.48 .83h-.96z"), 1U + inLegend);
    EXPECT_EQ(count("l.6 .6m0-.6l-.6 .6"), 1U + inLegend);
    EXPECT_EQ(count("h.5v.5h-.5z"), 1U + inLegend);
}

TEST_F(PlanOf, VeryManyPointsAreDotsWithoutNamesAndThePlanSaysSo) {
    constexpr int kSide = 250; // 62,500 points
    for (int i = 0; i < kSide; ++i) {
        for (int j = 0; j < kSide; ++j) {
            addPoint(drawing, {20.0 * i, 20.0 * j, 0.0}, "点");
        }
    }
    draw();
    EXPECT_EQ(notes.size(), 2U);
    EXPECT_FALSE(hasText("点"));
    std::size_t dots = 0;
    for (std::size_t at = text.find("h0"); at != std::string::npos; at = text.find("h0", at + 1)) {
        ++dots;
    }
    EXPECT_EQ(dots, std::size_t{kSide * kSide}) << "no two of them lie in one cell of the paper";
    constexpr std::size_t kMostBytes = 2000000;
    EXPECT_LT(text.size(), kMostBytes);
}

TEST_F(PlanOf, TwentyThousandPointsAreTheLastThatAreNamed) {
    const auto tellsNames = [&] {
        return std::any_of(notes.begin(), notes.end(),
                           [](const Note& note) { return note.code == NoteCode::NamesOfMany; });
    };
    for (int i = 0; i < 20000; ++i) {
        addPoint(drawing, {20.0 * (i % 200), 20.0 * (i / 200), 0.0}, "点");
    }
    draw();
    EXPECT_FALSE(tellsNames());
    EXPECT_TRUE(hasText("点"));
    addPoint(drawing, {0.0, 2000.0, 0.0}, "点");
    draw();
    EXPECT_TRUE(tellsNames());
    EXPECT_FALSE(hasText("点"));
}

// Small ones, two metres of ground on a sheet of kilometres; the last that makes a crowd has two vertices as all others.
TEST_F(PlanOf, TwentyThousandPolylinesAreTheLastThatAreAllDrawn) {
    const auto add = [&](int i) {
        const double x = 0.5 * (i % 200);
        const double y = 20.0 * (i / 200);
        addPolyline(drawing, {{x, y, 0.0}, {x + 2.0, y, 0.0}}, false, "", "連続線");
    };
    for (int i = 0; i < 20000; ++i) {
        add(i);
    }
    draw();
    EXPECT_TRUE(notes.empty());
    add(20000);
    draw();
    ASSERT_EQ(notes.size(), 1U);
    EXPECT_EQ(notes[0].code, NoteCode::SmallLines);
    EXPECT_GT(notes[0].count, 15000U);
}

// Of a crowd a line is left out that begins where another one did, or off the sheet.
TEST_F(PlanOf, EverySmallLineOfACrowdThatIsLeftOutIsTold) {
    for (int i = 0; i < 20001; ++i) {
        addPolyline(drawing, {{1e5 + i, 0, 0}, {1e5 + i, 20, 0}}, false, "", "連続線");
    }
    PlotOptions options;
    options.scale = 500;
    options.paper = "A4";
    options.extent.emplace();
    options.extent->add(0.0, 0.0);
    options.extent->add(100.0, 70.0); // in the middle of 107.5 m by 95 m
    const auto linesOn = [](const Plot& plot) {
        std::size_t lines = 0;
        for (std::size_t at = plot.pages.at(0).find("class=\"l continuous\""); at != std::string::npos;
             at = plot.pages[0].find("class=\"l continuous\"", at + 1)) {
            ++lines;
        }
        return lines;
    };
    EXPECT_EQ(plotPlan(drawing, options).notes, Notes{});
    addPolyline(drawing, {{50.0, 35.0, 0}, {50.5, 35.0, 0}}, false, "", "連続線");
    addPolyline(drawing, {{-4.0, 35.0, 0}, {-2.9, 35.0, 0}}, false, "", "連続線"); // of more than two millimetres
    EXPECT_EQ(plotPlan(drawing, options).notes, Notes{});
    addPolyline(drawing, {{50.0, 35.0, 0}, {50.25, 35.0, 0}}, false, "", "連続線");
    EXPECT_EQ(plotPlan(drawing, options).notes, (Notes{{NoteCode::SmallLines, 1}}));
    EXPECT_EQ(linesOn(plotPlan(drawing, options)), 3U);
    addPolyline(drawing, {{-4.0, 35.0, 0}, {-3.5, 35.0, 0}}, false, "", "連続線");
    EXPECT_EQ(plotPlan(drawing, options).notes, (Notes{{NoteCode::SmallLines, 2}}));
    EXPECT_EQ(linesOn(plotPlan(drawing, options)), 3U) << "and the sample of the legend";
}

TEST_F(PlanOf, FiftyThousandPointsAreTheLastThatAreSymbols) {
    for (int i = 0; i < 50000; ++i) {
        addPoint(drawing, {20.0 * (i % 250), 20.0 * (i / 250), 0.0}, "", "横断成果");
    }
    draw();
    EXPECT_EQ(notes, Notes{});
    addPoint(drawing, {0.0, 4000.0, 0.0}, "", "横断成果");
    draw();
    EXPECT_EQ(notes, (Notes{{NoteCode::DotsForMany, 50001}}));
}

TEST_F(PlanOf, CrowdedNamesAreLeftOutAndCounted) {
    for (int i = 0; i < 400; ++i) {
        addPoint(drawing, {100.0 + 0.2 * (i % 20), 100.0 + 0.2 * (i / 20), 0.0}, "重なる点名");
    }
    addPoint(drawing, {900.0, 700.0, 0.0}, "離れた点");
    draw();
    ASSERT_EQ(notes.size(), 1U);
    EXPECT_NE(japanese(notes[0]).find("点名は省略"), std::string::npos);
    EXPECT_TRUE(hasText("離れた点"));
}

// A lot of a metre on a plan of kilometres is too small for its name, and one of two points has no area.
TEST_F(PlanOf, NamesOfLotsWithoutRoomAreCounted) {
    const auto lot = [&](double x, double side, const char* name) {
        addPolyline(drawing, {{x, 0, 0}, {x + side, 0, 0}, {x + side, side, 0}, {x, side, 0}}, true, name);
    };
    lot(0.0, 900.0, "広い");
    lot(2000.0, 1.0, "狭い");
    lot(2100.0, 1.0, " ");
    addPolyline(drawing, {{2200, 0, 0}, {2300, 0, 0}}, true, "二点");
    draw();
    EXPECT_TRUE(hasText("広い"));
    EXPECT_FALSE(hasText("狭い"));
    EXPECT_EQ(english(notes), (std::vector<std::string>{"no room for the names of 2 lots"}));
}

TEST_F(PlanOf, TextsOfAlignmentsWithoutRoomAreCounted) {
    const std::string name(400, 'M');
    addRoad(drawing, {12000.0, -36000.0}, false, name.c_str());
    draw();
    EXPECT_FALSE(hasText(name));
    EXPECT_EQ(english(notes),
              (std::vector<std::string>{
                  "no room for 1 text of alignments: names, element ends, stations, values of curves"}));
}

TEST_F(PlanOf, WhatHasNoLineIsTold) {
    addRoad(drawing, {100.0, 100.0}, false);
    drawing.addAlignment(drawing.sites()[0].id, "空", "0", "", "");
    addPolyline(drawing, {{0, 0, 0}}, false, "", "IP線");
    addPolyline(drawing, {{150, 150, 0}}, false, "", "IP線");
    draw();
    const std::vector<std::string> told = english(notes);
    EXPECT_EQ(told, (std::vector<std::string>{"left out for want of a line: 2 polylines of fewer than two points, 1 "
                                              "alignment without elements"}));
}

TEST_F(PlanOf, LongAlignmentHasStationsFurtherApartAndTheLegendSaysSo) {
    const auto site = drawing.addSite("サイト");
    const std::size_t line = drawing.addAlignment(site, "長い", "0", "", "");
    Element straight;
    straight.end = {20000.0, 0.0};
    straight.length = 20000.0;
    drawing.addElement(line, straight);
    draw();
    ASSERT_FALSE(notes.empty());
    EXPECT_TRUE(hasTextBeginning("測点（"));
    EXPECT_FALSE(hasText("測点（20 mごと）"));
    EXPECT_FALSE(hasText("No.1"));
}

TEST_F(PlanOf, ClothoidsThatWindUpAreBoundedForTheWholeSheetAndDrawnInShortPaths) {
    // A of 90,000 m, as of a file in millimetres: each winds up tens of thousands of times.
    for (int i = 0; i < 40; ++i) {
        addChain(drawing, {{ElementType::Clothoid, 54e6, kStraight, 150.0, i % 2 == 0}});
    }
    draw();
    std::size_t points = 0;
    std::size_t begun = 0; // elsewhere than where the path before ends
    std::string before;
    for (const pugi::xpath_node node : document.select_nodes("//path[starts-with(@class, 'l clothoid')]")) {
        const std::string d = node.node().attribute("d").value();
        if (d.find('h') != std::string::npos) {
            continue; // of the legend
        }
        const auto sides = static_cast<std::size_t>(std::count(d.begin(), d.end(), 'L'));
        EXPECT_LT(sides, 100U);
        points += sides + 1;
        begun += d.substr(1, d.find('L') - 1) == before ? 0U : 1U;
        before = d.substr(d.rfind('L') + 1);
    }
    EXPECT_EQ(begun, 40U);
    EXPECT_GT(points, 150000U);
    EXPECT_LT(points, 206000U);
}

TEST_F(PlanOf, DashesGoOnWhereALongLineIsMoreThanOnePath) {
    std::vector<MdGePoint3d> line;
    for (int i = 0; i < 250; ++i) {
        line.push_back({i % 2 == 0 ? 0.0 : 3.0, 4.0 * i, 0.0}); // each side is 5 m long
    }
    addPolyline(drawing, line, false, "", "連続線");
    draw();
    const auto paths = document.select_nodes("//path[@class='l continuous' and contains(@d, 'L')]");
    ASSERT_EQ(paths.size(), 3U);
    EXPECT_FALSE(paths[0].node().attribute("stroke-dashoffset"));
    const double first = paths[1].node().attribute("stroke-dashoffset").as_double();
    EXPECT_GT(first, 10.0);
    EXPECT_NEAR(paths[2].node().attribute("stroke-dashoffset").as_double(), 2.0 * first, 0.05);
}

TEST_F(PlanOf, JointsOfEveryTwoElementsHaveTheirUsualNames) {
    addChain(drawing, {{ElementType::Straight, 100.0, kStraight, kStraight, false},
                       {ElementType::Arc, 60.0, 100.0, 100.0, true},
                       {ElementType::Arc, 60.0, 200.0, 200.0, true},
                       {ElementType::Straight, 100.0, kStraight, kStraight, false},
                       {ElementType::Straight, 100.0, kStraight, kStraight, false},
                       {ElementType::Clothoid, 60.0, kStraight, 100.0, false},
                       {ElementType::Clothoid, 60.0, 100.0, kStraight, false},
                       {ElementType::Straight, 100.0, kStraight, kStraight, false}});
    draw();
    for (const char* joint :
         {"BP No.0", "BC No.5", "PCC No.8", "EC No.11", "IP No.16", "KA No.21", "KK No.24", "KA No.27", "EP No.32"}) {
        EXPECT_TRUE(hasText(joint)) << joint;
    }
}

TEST_F(PlanOf, WhatHasNoNameIsDrawnWithoutOne) {
    const std::size_t road = addRoad(drawing, {12000.0, -36000.0}, false, "");
    ASSERT_EQ(road, 0U);
    addPolyline(drawing, {{12000, -36080, 0}, {12000, -36020, 0}, {12080, -36020, 0}, {12080, -36080, 0}}, true, "  ");
    addPoint(drawing, {12150.0, -36050.0, 0.0}, " ");
    draw();
    for (const pugi::xpath_node node : document.select_nodes("//text")) {
        const std::string written = node.node().child_value();
        EXPECT_NE(written.find_first_not_of(' '), std::string::npos);
        EXPECT_EQ(written.find("m²"), std::string::npos) << "no area without a name";
    }
    EXPECT_NE(text.find("Z\"/>"), std::string::npos) << "the lot itself is there";
}

TEST_F(PlanOf, TheLegendHasRoomForEightLayersOfTheirOwnColour) {
    std::vector<drawing::Layer> layers;
    for (int i = 0; i < 10; ++i) {
        const std::size_t layer = *drawing.findLayer(drawing.addLayer("層" + std::to_string(i)));
        addPoint(drawing, {100.0 + 10.0 * i, 100.0, 0.0}, "P", "座標", layer);
    }
    layers = drawing.layers();
    for (drawing::Layer& layer : layers) {
        layer.colour = drawing::Colour{0x8e, 0x24, 0xaa};
    }
    ASSERT_TRUE(drawing.setLayers(layers));
    draw();
    EXPECT_TRUE(hasText("画層 層0"));
    EXPECT_TRUE(hasText("画層 層7"));
    EXPECT_FALSE(hasText("画層 層8"));
    EXPECT_FALSE(hasText("画層 0")) << "nothing lies on it";
}

TEST_F(PlanOf, TheTitleNamesThreeFilesAndSaysThatThereAreMore) {
    drawing.addTable("JSIMA_V3_Point");
    const auto addOf = [&](const char* file) {
        drawing.addPoint({100.0 + static_cast<double>(drawing.entityCount()), 100.0, 0.0}, 0);
        drawing.setRow(drawing.entityCount() - 1, 0, 1, "", "座標", file);
    };
    for (const char* file : {"a.sim", "b.sim", "", "a.sim", "c.sim"}) {
        addOf(file);
    }
    draw();
    EXPECT_TRUE(hasText("資料") && hasText("a.sim") && hasText("b.sim") && hasText("c.sim"));
    EXPECT_FALSE(hasText("ほか"));
    for (const char* file : {"d.sim", "e.sim"}) {
        addOf(file);
    }
    draw();
    EXPECT_TRUE(hasText("c.sim") && hasText("ほか"));
    EXPECT_FALSE(hasText("d.sim") || hasText("e.sim"));
}

TEST(LotNames, StandWithinTheRing) {
    const std::vector<MdGePoint3d> square = {{0, 0, 0}, {10, 0, 0}, {10, 10, 0}, {0, 10, 0}};
    EXPECT_EQ(labelPoint(square), (PlanPoint{5, 5}));
    const std::vector<MdGePoint3d> line = {{0, 0, 0}, {10, 0, 0}, {20, 0, 0}};
    EXPECT_EQ(labelPoint(line), (PlanPoint{10, 0})) << "no area";
    const std::vector<MdGePoint3d> slanting = {{100, 50, 0}, {110, 60, 0}, {135, 85, 0}};
    EXPECT_NEAR(labelPoint(slanting).x, 115, 1e-12) << "the mean of its corners";
    EXPECT_NEAR(labelPoint(slanting).y, 65, 1e-12);
    EXPECT_EQ(labelPoint({}), (PlanPoint{0, 0}));
    // Elsewhere than in the middle of its width at half its height.
    const std::vector<MdGePoint3d> triangle = {{0, 0, 0}, {30, 0, 0}, {0, 30, 0}};
    EXPECT_EQ(labelPoint(triangle), (PlanPoint{10, 10}));
    // A W whose centroid lies in the arm in the middle, between two gaps.
    const std::vector<MdGePoint3d> arms = {{0, 0, 0},   {50, 0, 0},  {50, 20, 0}, {40, 20, 0}, {40, 2, 0},  {30, 2, 0},
                                           {30, 30, 0}, {20, 30, 0}, {20, 2, 0},  {10, 2, 0},  {10, 20, 0}, {0, 20, 0}};
    const double area = 50 * 2 + 2 * 10 * 18 + 10 * 28;
    EXPECT_NEAR(labelPoint(arms).x, 25, 1e-12);
    EXPECT_NEAR(labelPoint(arms).y, (50 * 2 * 1 + 2 * 10 * 18 * 11 + 10 * 28 * 16) / area, 1e-12);
    // A U whose centroid lies between its arms: the name goes into the wider one.
    const std::vector<MdGePoint3d> shape = {{0, 0, 0},  {30, 0, 0}, {30, 20, 0}, {20, 20, 0},
                                            {20, 2, 0}, {4, 2, 0},  {4, 20, 0},  {0, 20, 0}};
    const PlanPoint inside = labelPoint(shape);
    EXPECT_TRUE(inside.x > 20.0 && inside.x < 30.0) << inside.x;
    EXPECT_TRUE(inside.y > 0.0 && inside.y < 20.0) << inside.y;
    // The first of two that are as wide, also where corners lie at half the height.
    const std::vector<MdGePoint3d> even = {{0, 0, 0},  {30, 0, 0}, {30, 10, 0}, {30, 20, 0}, {20, 20, 0},
                                           {20, 2, 0}, {10, 2, 0}, {10, 20, 0}, {0, 20, 0},  {0, 10, 0}};
    EXPECT_EQ(labelPoint(even), (PlanPoint{5, 10}));
    // Wherever a ring begins.
    for (std::vector<MdGePoint3d> ring : {triangle, arms, shape, even}) {
        const PlanPoint first = labelPoint(ring);
        for (std::size_t i = 0; i < ring.size(); ++i) {
            std::rotate(ring.begin(), ring.begin() + 1, ring.end());
            EXPECT_NEAR(labelPoint(ring).x, first.x, 1e-12) << i;
            EXPECT_NEAR(labelPoint(ring).y, first.y, 1e-12) << i;
        }
    }
}

} // namespace
} // namespace fenmark::exchange
