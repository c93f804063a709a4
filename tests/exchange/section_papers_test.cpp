// Heights of the formation, sections on upright paper, documents as pages.
#include "exchange/plan/page_image.h"
#include "exchange/plan/plot.h"
#include "exchange/plan/section_page.h"
#include "exchange/planned_heights.h"
#include "exchange/report/pages.h"
#include "worded_notes.h"

#include <gtest/gtest.h>

#include <numbers>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace fenmark::exchange {
namespace {

// A road of 100 m northwards from station 0 with ground at every 20 m, and coordinate points on and beside it.
struct Road : ::testing::Test {
    drawing::Drawing drawing;

    void SetUp() override {
        beginBare(100.0);
        for (int i = 0; i <= 5; ++i) {
            addPoint({0.0, 20.0 * i, 30.0 + i}, "No." + std::to_string(i), "縦断成果", 1);
        }
    }
    // A drawing of its own in which nothing stands on the road yet.
    void beginBare(double length) {
        drawing = drawing::Drawing();
        drawing.addTable("points");
        const std::size_t road = drawing.addAlignment(drawing.addSite("現場"), "市道", "0", drawing::kStandardStyle,
                                                      drawing::kStandardStyle);
        drawing::Element straight;
        straight.end = {0.0, length};
        straight.direction = std::numbers::pi / 2.0;
        straight.length = length;
        drawing.addElement(road, straight);
    }
    void addPoint(const host::MdGePoint3d& at, const std::string& name, const char* type, int number) {
        drawing.addPoint(at, 0);
        drawing.setRow(drawing.entityCount() - 1, *drawing.findTable("points"), number, name, type, "a.sim");
    }
};

TEST(SectionScale, IsTheNextRoundOne) {
    const int scales[] = {10,   20,   30,   50,   100,   200,   250,   300,   500,   1000,
                          2000, 2500, 3000, 5000, 10000, 20000, 25000, 30000, 50000, 100000};
    double before = 0.0;
    for (const int scale : scales) {
        EXPECT_EQ(roundSectionScale(before + 0.001), scale);
        EXPECT_EQ(roundSectionScale(scale), scale);
        before = scale;
    }
    EXPECT_EQ(roundSectionScale(-1.0), 10);
    EXPECT_EQ(roundSectionScale(400000001.0), 500000000);
    EXPECT_EQ(roundSectionScale(500000001.0), 1000000000);
    EXPECT_EQ(roundSectionScale(1e300), 1000000000);
}

TEST_F(Road, PlannedHeightsAreThoseOfCoordinatePointsOnTheLine) {
    EXPECT_TRUE(plannedHeights(drawing, 0).empty()) << "results hold the ground alone";
    addPoint({0.003, 40.0, 35.5}, "P2", "座標", 2);
    addPoint({0.0, 0.0, 34.0}, "P1", "座標", 1);
    addPoint({0.0, 20.0, 0.0}, "without a height", "座標", 3);
    addPoint({0.5, 60.0, 36.0}, "beside", "座標", 4);
    addPoint({0.0, 130.0, 36.0}, "beyond the end", "座標", 5);
    addPoint({0.0, 40.0, 99.0}, "the same place again", "座標", 6);
    const auto heights = plannedHeights(drawing, 0);
    ASSERT_EQ(heights.size(), 2U);
    EXPECT_EQ(heights[0].name, "P1");
    EXPECT_DOUBLE_EQ(heights[0].height, 34.0);
    EXPECT_NEAR(heights[1].station, 40.0, 1e-9);
    EXPECT_DOUBLE_EQ(heights[1].height, 35.5);
}

TEST_F(Road, PlannedHeightsLieWithinFiveMillimetresOfTheLineAndAMillimetreApart) {
    addPoint({0.00499, 10.0, 31.0}, "right", "座標", 1);
    addPoint({-0.00499, 30.0, 32.0}, "left", "座標", 2);
    addPoint({0.00501, 50.0, 33.0}, "too far right", "座標", 3);
    addPoint({-0.00501, 70.0, 34.0}, "too far left", "座標", 4);
    addPoint({0.0, 90.0, 35.0}, "first", "座標", 5);
    addPoint({0.0, 90.00099, 36.0}, "the same place", "座標", 6);
    addPoint({0.0, 95.0, 37.0}, "one", "座標", 7);
    addPoint({0.0, 95.00101, 38.0}, "another", "座標", 8);
    std::string names;
    for (const LongitudinalPoint& height : plannedHeights(drawing, 0)) {
        names += height.name + ",";
    }
    EXPECT_EQ(names, "right,left,first,one,another,");
}

TEST_F(Road, TheSectionHasARowOfPlannedHeightsWhereThereAreSome) {
    Plot plot = plotProfile(drawing, 0, {});
    ASSERT_EQ(plot.pages.size(), 1U) << whyNot(plot);
    EXPECT_EQ(plot.pages[0].find("計画高"), std::string::npos);
    addPoint({0.0, 0.0, 34.0}, "P1", "座標", 1);
    addPoint({0.0, 40.0, 35.5}, "P2", "座標", 2);
    PlotOptions options;
    options.upright = true;
    options.heading = "縦断面図";
    options.titles = {{"業務名", "市道改良"}};
    plot = plotProfile(drawing, 0, options);
    ASSERT_EQ(plot.pages.size(), 1U) << whyNot(plot);
    const std::string& page = plot.pages[0];
    EXPECT_NE(page.find("計画高"), std::string::npos);
    EXPECT_NE(page.find(">35.500<"), std::string::npos);
    EXPECT_NE(page.find("class=\"planned\""), std::string::npos);
    EXPECT_NE(page.find("縦断面図　市道"), std::string::npos);
    EXPECT_NE(page.find("業務名 市道改良"), std::string::npos);
    const auto size = sizeOfPage(page);
    ASSERT_TRUE(size);
    EXPECT_EQ(size->width, 297.0);
    EXPECT_EQ(size->height, 420.0);
    EXPECT_FALSE(sizeOfPage("<svg width=\"3\" height=\"4\"/>"));
    EXPECT_FALSE(sizeOfPage(""));
}

// Beside a section 12 mm are kept free, above and below it 42 mm and a metre of its scale.
TEST_F(Road, CrossSectionsTakeTheLargestScaleAndTheFewestSheetsThatHaveRoomForThem) {
    struct Case {
        double left, right, rise; // metres
        const char* paper;
        bool upright;
        int given; // scale; 0 for none
        int scale;
        std::size_t pages; // of four sections; 0 where they do not fit
    };
    const Case cases[] = {
        // The widest may be 166 mm, two beside each other on A3 and one on A4.
        {-8.3, 8.299, 7.9, "A3", false, 0, 100, 1},
        {-8.3, 8.301, 7.9, "A3", false, 0, 200, 1},
        {-16.6, 16.599, 5.0, "A3", false, 0, 200, 1},
        {-16.6, 16.601, 5.0, "A3", false, 0, 250, 1},
        {-0.001, 16.598, 7.9, "A4", true, 0, 100, 2},
        {-0.001, 16.6, 7.9, "A4", true, 0, 200, 2},
        // The highest 221 mm on A3 and upright A4, 134 mm on A4, 344 mm on upright A3.
        {-5.0, 5.0, 21.099, "A3", false, 0, 100, 2},
        {-5.0, 5.0, 21.101, "A3", false, 0, 200, 1},
        {-5.0, 5.0, 21.099, "A4", true, 0, 100, 4},
        {-5.0, 5.0, 21.101, "A4", true, 0, 200, 2},
        {-5.0, 5.0, 12.399, "A4", false, 0, 100, 2},
        {-5.0, 5.0, 12.401, "A4", false, 0, 200, 2},
        {-5.0, 5.0, 33.399, "A3", true, 0, 100, 2},
        {-5.0, 5.0, 33.401, "A3", true, 0, 200, 2},
        // As many beside and below each other as a sheet of 400 by 263 mm has room for.
        {-8.8, 8.799, 7.949, "A3", false, 100, 100, 1},
        {-8.8, 8.801, 7.949, "A3", false, 100, 100, 2},
        {-8.8, 8.799, 7.951, "A3", false, 100, 100, 2},
        {-8.8, 8.801, 7.951, "A3", false, 100, 100, 4},
        {-18.8, 18.799, 7.949, "A3", false, 100, 100, 2},
        {-18.8, 18.801, 7.949, "A3", false, 100, 100, 0},
        {-8.8, 8.799, 21.099, "A3", false, 100, 100, 2},
        {-8.8, 8.799, 21.101, "A3", false, 100, 100, 0},
        // At scales above 1:100 a base line may lie lower, at round heights.
        {-8.8, 8.799, 42.199, "A3", false, 200, 200, 2},
        {-8.8, 8.799, 42.201, "A3", false, 200, 200, 0},
    };
    for (const Case& c : cases) {
        SetUp();
        for (int i = 1; i <= 4; ++i) {
            for (const auto& [offset, height] : {std::pair(c.left, 10.0), {0.0, 10.0}, {c.right, 10.0 + c.rise}}) {
                addPoint({offset, 20.0 * i, height}, "", "横断成果", i);
            }
        }
        PlotOptions options;
        options.paper = c.paper;
        options.upright = c.upright;
        if (c.given != 0) {
            options.scale = c.given;
        }
        const Plot plot = plotCrossSections(drawing, 0, options);
        const std::string which = std::to_string(c.left) + " " + std::to_string(c.right) + " " +
                                  std::to_string(c.rise) + " " + c.paper + (c.upright ? " upright" : "");
        ASSERT_EQ(plot.pages.size(), c.pages) << which << whyNot(plot);
        for (const std::string& page : plot.pages) {
            EXPECT_NE(page.find("1:" + std::to_string(c.scale) + "（" + c.paper + "）"), std::string::npos) << which;
        }
        EXPECT_EQ(plot.failure.has_value(), c.pages == 0) << which;
    }
}

TEST_F(Road, CrossSectionsFillTwoThousandSheetsAndNoMore) {
    const auto addSection = [this](int number) {
        for (const auto& [offset, height] : {std::pair(-8.8, 10.0), {0.0, 10.0}, {8.801, 18.0}}) { // one on a sheet
            addPoint({offset, 0.04 * number, height}, "", "横断成果", number);
        }
    };
    for (int i = 1; i <= 2000; ++i) {
        addSection(i);
    }
    PlotOptions options;
    options.scale = 100;
    EXPECT_EQ(plotCrossSections(drawing, 0, options).pages.size(), 2000U);
    addSection(2001);
    const Plot plot = plotCrossSections(drawing, 0, options);
    EXPECT_TRUE(plot.pages.empty());
    ASSERT_TRUE(plot.failure);
    EXPECT_EQ(wording(*plot.failure, Language::English), "more than 2000 sheets; choose a smaller scale");
}

TEST_F(Road, BaseLinesStandAtRoundHeightsFourMillimetresBelowTheLowestPoint) {
    struct Case {
        int scale;
        double low; // metres
        const char* base;
    };
    const Case cases[] = {
        {50, 1000.2005, "1000.0"},  {50, 1000.1995, "999.0"}, // whole metres
        {100, 1000.4005, "1000.0"}, {100, 1000.3995, "999.0"}, {200, 1000.8005, "1000.0"},
        {200, 1000.7995, "998.0"}, // a centimetre of the scale
        {250, 1001.0005, "1000.0"}, {250, 1000.9995, "997.5"}, {500, 1002.0005, "1000.0"},
        {500, 1001.9995, "995.0"},  {100, 0.3995, "-1.0"},
    };
    for (const Case& c : cases) {
        SetUp();
        for (const double offset : {-2.0, 0.0, 2.0}) {
            addPoint({offset, 40.0, offset > 0.0 ? c.low : c.low + 1.0}, "", "横断成果", 1);
        }
        PlotOptions options;
        options.scale = c.scale;
        const Plot plot = plotCrossSections(drawing, 0, options);
        ASSERT_EQ(plot.pages.size(), 1U) << whyNot(plot);
        EXPECT_NE(plot.pages[0].find(std::string(">DL=") + c.base + "<"), std::string::npos) << c.scale << ' ' << c.low;
    }
}

// Beside and between the heights 72 mm of the paper are no ground.
TEST_F(Road, ProfilesTakeTheLargestScaleAtWhichOneSheetHoldsThem) {
    const auto scaleOf = [this](double length, const char* paper, bool upright) {
        beginBare(3000.0);
        addPoint({0.0, 10.0, 30.0}, "a", "縦断成果", 1);
        addPoint({0.0, 10.0 + length, 30.0}, "b", "縦断成果", 1);
        PlotOptions options;
        options.paper = paper;
        options.upright = upright;
        const Plot plot = plotProfile(drawing, 0, options);
        EXPECT_FALSE(plot.pages.empty()) << whyNot(plot);
        const std::size_t at = plot.pages.at(0).find("横 1:");
        return std::to_string(plot.pages.size()) + " of 1:" + std::to_string(std::stoi(plot.pages[0].substr(at + 6)));
    };
    const std::pair<int, int> kScales[] = {{100, 200}, {200, 250}, {250, 300}, {500, 1000}, {1000, 2000}, {2000, 2500}};
    for (const auto& [paper, upright, millimetres] :
         {std::tuple("A3", false, 348.0), {"A3", true, 225.0}, {"A4", false, 225.0}, {"A2", false, 522.0}}) {
        for (const auto& [scale, next] : kScales) {
            const double length = 0.001 * millimetres * scale;
            EXPECT_EQ(scaleOf(length - 0.001, paper, upright), "1 of 1:" + std::to_string(scale)) << paper;
            EXPECT_EQ(scaleOf(length + 0.001, paper, upright), "1 of 1:" + std::to_string(next)) << paper;
        }
    }
    EXPECT_EQ(scaleOf(0.348 * 2500 - 0.001, "A3", false), "1 of 1:2500");
    EXPECT_EQ(scaleOf(0.348 * 2500 + 0.001, "A3", false), "3 of 1:1000");
}

// A tenth of the scale along the road, unless the ground takes more than seven tenths of the paper's height above the band.
TEST_F(Road, HeightsOfAProfileTakeTheLargestScaleThatTheyHaveRoomAt) {
    const struct {
        int along;
        bool planned;
        double rise; // metres
        int heights;
    } kCases[] = {{100, false, 1.140, 10},   {100, false, 1.142, 20}, {100, false, 2.281, 20},
                  {100, false, 2.283, 30},   {200, false, 2.281, 20}, {200, false, 2.283, 30},
                  {500, false, 5.70, 50},    {500, false, 5.71, 100}, {1000, false, 11.40, 100},
                  {1000, false, 11.42, 200}, {100, true, 1.028, 10},  {100, true, 1.030, 20},
                  {1000, true, 10.28, 100},  {1000, true, 10.30, 200}};
    for (const auto& [along, planned, rise, heights] : kCases) {
        beginBare(100.0);
        addPoint({0.0, 0.0, 30.0}, "a", "縦断成果", 1);
        addPoint({0.0, 20.0, 30.0 + rise}, "b", "縦断成果", 1);
        if (planned) {
            addPoint({0.0, 10.0, 30.0 + rise}, "P", "座標", 1);
        }
        PlotOptions options;
        options.scale = along;
        const Plot plot = plotProfile(drawing, 0, options);
        ASSERT_EQ(plot.pages.size(), 1U) << whyNot(plot);
        EXPECT_NE(plot.pages[0].find("縦 1:" + std::to_string(heights) + "（"), std::string::npos)
            << along << ' ' << rise << (planned ? " planned" : "");
    }
}

// Of 3 mm.
TEST_F(Road, FiguresOfAProfileStandWhereTheyHaveRoom) {
    for (const double between : {2.995, 3.005}) {
        SetUp();
        addPoint({0.0, 40.0 + between, 32.0}, "near", "縦断成果", 1);
        PlotOptions options;
        options.scale = 1000;
        const Plot plot = plotProfile(drawing, 0, options);
        ASSERT_EQ(plot.pages.size(), 1U) << whyNot(plot);
        EXPECT_EQ(plot.pages[0].find(">near<") != std::string::npos, between > 3.0);
        EXPECT_EQ(plot.notes, between > 3.0 ? Notes{} : (Notes{{NoteCode::NoRoomForFigures, 1}}));
    }
}

// At a tenth of the scale along the road: base lines at whole centimetres of paper, 8 mm below the lowest ground.
TEST_F(Road, BaseLinesOfAProfileStandAtRoundHeights) {
    struct Case {
        int scale;
        double low;
        const char* base;
    };
    const Case cases[] = {{100, 10.0805, "10.0"},  {100, 10.0795, "9.9"},  {200, 10.1605, "10.0"},
                          {200, 10.1595, "9.8"},   {500, 10.4005, "10.0"}, {500, 10.3995, "9.5"},
                          {1000, 10.8005, "10.0"}, {1000, 10.7995, "9.0"}, {2000, 11.6005, "10.0"},
                          {2000, 11.5995, "8.0"}};
    for (const bool planned : {false, true}) { // which count as the ground does
        for (const Case& c : cases) {
            beginBare(100.0);
            addPoint({0.0, 0.0, c.low + 0.1}, "a", "縦断成果", 1);
            addPoint({0.0, 20.0, planned ? c.low + 0.2 : c.low}, "b", "縦断成果", 1);
            if (planned) {
                addPoint({0.0, 10.0, c.low}, "P", "座標", 1);
            }
            PlotOptions options;
            options.scale = c.scale;
            const Plot plot = plotProfile(drawing, 0, options);
            ASSERT_EQ(plot.pages.size(), 1U) << whyNot(plot);
            EXPECT_NE(plot.pages[0].find(std::string(">DL=") + c.base + "<"), std::string::npos)
                << c.scale << ' ' << c.low << (planned ? " planned" : "");
        }
    }
}

// The results decide from where to where; what has no length there has no place in the row.
TEST_F(Road, TheRowOfCurvesHasEveryElementThatTheSectionReaches) {
    const auto addRoadOf = [this](const std::vector<double>& lengths) {
        const std::size_t road = drawing.addAlignment(drawing.addSite("現場"), "市道", "0", "", "");
        double at = 0.0;
        for (const double length : lengths) {
            drawing::Element straight;
            straight.start = {0.0, at};
            at += length;
            straight.end = {0.0, at};
            straight.direction = std::numbers::pi / 2.0;
            straight.length = length;
            drawing.addElement(road, straight);
        }
    };
    const struct {
        std::vector<double> lengths;
        double from, to; // of the results
        std::size_t elements;
    } kCases[] = {
        {{100.0}, 0.0, 100.0, 1},
        {{40.0, 60.0}, 0.0, 100.0, 2},
        {{40.0, 0.0, 60.0}, 0.0, 100.0, 2},
        {{0.0, 40.0, 60.0, 0.0}, 0.0, 100.0, 2},
        {{40.0, 60.0}, 40.0, 100.0, 1}, // which ends where the section begins
        {{40.0, 60.0}, 0.0, 40.0, 1},
        {{40.0, 60.0}, 39.0, 41.0, 2},
        {{20.0, 20.0, 20.0, 20.0, 20.0}, 20.0, 80.0, 3},
    };
    for (const auto& [lengths, from, to, elements] : kCases) {
        drawing = drawing::Drawing();
        drawing.addTable("points");
        addRoadOf(lengths);
        for (const double station : {from, (from + to) / 2.0, to}) {
            addPoint({0.0, station, 30.0}, "No." + std::to_string(station), "縦断成果", 1);
        }
        const Plot plot = plotProfile(drawing, 0, {});
        ASSERT_EQ(plot.pages.size(), 1U) << whyNot(plot);
        std::size_t found = 0;
        for (std::size_t at = plot.pages[0].find("class=\"curve\""); at != std::string::npos;
             at = plot.pages[0].find("class=\"curve\"", at + 1)) {
            ++found;
        }
        EXPECT_EQ(found, elements) << lengths.size() << " from " << from << " to " << to;
    }
}

TEST_F(Road, StakesFillPagesWithTheirHeadsRepeated) {
    StakeOptions stakes;
    stakes.every = 1.0;
    stakes.offsets = {-5.0, 0.0, 5.0};
    const Stakes list = stakesOf(drawing, 0, stakes);
    ASSERT_EQ(list.stakes.size(), 303U);
    const Plot plot = stakePages(drawing, list, {});
    ASSERT_GT(plot.pages.size(), 5U) << whyNot(plot);
    std::size_t rows = 0;
    for (const std::string& page : plot.pages) {
        EXPECT_NE(page.find("接線方向角"), std::string::npos);
        for (std::size_t at = page.find("0°00′00″"); at != std::string::npos; at = page.find("0°00′00″", at + 1)) {
            ++rows;
        }
    }
    EXPECT_EQ(rows, 303U) << "every stake has its azimuth once";
    EXPECT_TRUE(stakePages(drawing, Stakes{"x", {}, Obstacle{ObstacleCode::NoElementsToStake}, {}}, {}).failure);
}

} // namespace
} // namespace fenmark::exchange
