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
#include <vector>

namespace fenmark::exchange {
namespace {

// A road of 100 m northwards from station 0 with ground at every 20 m, and coordinate points on and beside it.
struct Road : ::testing::Test {
    drawing::Drawing drawing;

    void SetUp() override {
        drawing.addTable("points");
        const std::size_t road = drawing.addAlignment(drawing.addSite("現場"), "市道", "0", drawing::kStandardStyle,
                                                      drawing::kStandardStyle);
        drawing::Element straight;
        straight.end = {0.0, 100.0};
        straight.direction = std::numbers::pi / 2.0;
        straight.length = 100.0;
        drawing.addElement(road, straight);
        for (int i = 0; i <= 5; ++i) {
            addPoint({0.0, 20.0 * i, 30.0 + i}, "No." + std::to_string(i), "縦断成果", 1);
        }
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
