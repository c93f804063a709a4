// Plans, sections and reports of a small drawing to the byte, as the files beside this test have them: where a symbol
// stands, how a line is cut at the sheet's edge, which round scale a figure takes.
#include "exchange/plan/plot.h"
#include "exchange/report/pages.h"
#include "exchange/report/report.h"
#include "exchange/stakes.h"
#include "sample_drawing.h"
#include "support/sample_file.h"
#include "worded_notes.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <sstream>
#include <string>

namespace fenmark::exchange {
namespace {

constexpr std::initializer_list<const char*> kLineTypes = {"IP線", "幅杭線左", "幅杭線右", "連続線", "その他"};

// A road of straights, clothoids and an arc, each kind of line and of point, and lots from a square metre to the size of
// a field, which take different scales.
class Papers : public ::testing::Test {
  protected:
    void SetUp() override {
        drawing.setZone(9);
        drawing.addLayer("道路");
        std::vector<drawing::Layer> layers = drawing.layers();
        layers.back().colour = drawing::Colour{0x11, 0x66, 0x22};
        ASSERT_TRUE(drawing.setLayers(layers));
        addRoad(drawing, {12000.0, -36000.0}, false, "本線");
        addRoad(drawing, {12010.0, -35960.0}, true, "支線 <1>");
        addPoint(drawing, {12000.0, -36000.0, 31.5}, "BP");
        addPoint(drawing, {12050.0, -36000.0, 31.75}, "P-1");
        addPoint(drawing, {12020.0, -35985.0, 0.0}, "K1", "座標", 1);
        addPoint(drawing, {12020.5, -35985.5, 0.0}, "<K2>");
        drawing.addPoint({12030.0, -36030.0, 0.0}, 0); // without a row
        double side = 1.0;
        for (const double x : {12060.0, 12070.0, 12085.0, 12120.0, 12200.0}) {
            addPolyline(drawing,
                        {{x, -36060, 0},
                         {x, -36060 + side, 0},
                         {x + 0.75 * side, -36060 + side, 0},
                         {x + 0.5 * side, -36060 + 0.4 * side, 0},
                         {x + side, -36060 + 0.1 * side, 0}},
                        true, ("12-" + std::to_string(static_cast<int>(side))).c_str());
            side *= 3.5;
        }
        addPolyline(drawing, {{12010, -36060, 0}, {12040, -36075, 0}, {12025, -36040, 0}}, true, "13");
        double y = -36010.0;
        for (const char* type : kLineTypes) {
            addPolyline(drawing, {{12005, y, 0}, {12030, y - 1, 0}, {12055, y + 0.5, 0}}, false, type, type);
            y -= 4.0;
        }
        for (int i = 0; i <= 10; ++i) {
            addResult(100.0 + 20.0 * i, 0.0, 30.0 + 0.35 * i - (i % 3), "No." + std::to_string(5 + i), "縦断成果");
        }
        for (const double station : {120.0, 140.0}) {
            for (const double offset : {-12.5, -4.0, 0.0, 3.5, 15.0}) {
                addResult(station, offset, 31.0 + 0.1 * offset, "No.6", "横断成果");
            }
        }
    }
    void addResult(double station, double offset, double height, const std::string& name, const char* type) {
        if (const auto at = drawing.geometry(0).pointAt(station, offset)) {
            addPoint(drawing, {at->x, at->y, height}, name.c_str(), type);
        }
    }

    static void expectPages(const std::string& name, const Plot& plot) {
        ASSERT_FALSE(plot.pages.empty()) << whyNot(plot);
        for (std::size_t i = 0; i < plot.pages.size(); ++i) {
            expectSample(name + (plot.pages.size() > 1 ? "_" + std::to_string(i + 1) : "") + ".svg", plot.pages[i]);
        }
    }
    void expectReport(const std::string& file, const ReportOptions& options, ReportFormat format) {
        std::ostringstream out;
        writeReport(drawing, options, format, out);
        expectSample(file, out.str());
    }

    Drawing drawing;
};

TEST_F(Papers, PlanOfAllOfIt) {
    expectPages("plan", plotPlan(drawing, {}));
}

TEST_F(Papers, PlanOfAPartWithTitles) {
    PlotOptions options;
    options.scale = 250;
    options.paper = "A4";
    options.upright = true;
    options.extent.emplace();
    options.extent->add(12000.0, -36030.0);
    options.extent->add(12040.0, -35990.0);
    options.heading = "位置図";
    options.titles = {{"業務名", "試験 & 確認"}, {"測量者", "山田"}};
    expectPages("plan_part", plotPlan(drawing, options));
}

// More names at a place than have room, on lines and off them.
TEST(CrowdedPaper, EachNameTakesTheFirstPlaceThatIsLeft) {
    Drawing crowd;
    for (int i = 1; i <= 10; ++i) {
        addPoint(crowd, {20.0, 60.0, 0.0}, std::to_string(i).c_str());
    }
    for (int i = 0; i < 12; ++i) {
        addPoint(crowd, {100.0 + 4.0 * (i % 4), 60.0 + 3.0 * (i / 4), 0.0}, ("K" + std::to_string(i)).c_str());
    }
    addChain(crowd, {{ElementType::Straight, 100.0, kStraight, kStraight, false}});
    addChain(crowd, {{ElementType::Straight, 40.0, kStraight, kStraight, false},
                     {ElementType::Arc, 30.0, 50.0, 50.0, false},
                     {ElementType::Straight, 20.0, kStraight, kStraight, false}});
    addPolyline(crowd, {{90, 90, 0}, {90, 110, 0}, {110, 110, 0}, {110, 90, 0}}, true, "12-3");
    for (int i = 0; i < 70; ++i) { // no place off lines beside the curve
        addPolyline(crowd, {{35.0, i - 30.0, 0}, {80.0, i - 30.0, 0}}, false, "", "連続線");
    }
    const Plot plot = plotPlan(crowd, {});
    ASSERT_EQ(plot.pages.size(), 1U);
    expectSample("plan_crowded.svg", plot.pages[0]);
}

TEST_F(Papers, SheetsAlongTheRoad) {
    PlotOptions options;
    options.scale = 500;
    options.paper = "A4";
    expectPages("plan_along", plotAlong(drawing, 0, options));
    expectPages("plan_along_right", plotAlong(drawing, 1, options));
}

TEST_F(Papers, LongitudinalSection) {
    expectPages("profile", plotProfile(drawing, 0, {}));
}

TEST_F(Papers, CrossSections) {
    PlotOptions options;
    options.heading = "横断面図";
    options.titles = {{"業務名", "試験"}, {"測量者", "山田"}};
    expectPages("cross_sections", plotCrossSections(drawing, 0, options));
}

TEST_F(Papers, ReportsOnPaper) {
    PlotOptions options;
    options.upright = true;
    options.titles = {{"業務名", "試験"}};
    const Plot plot = reportPages(drawing, ReportOptions(), options);
    expectPages("report_page", plot);
}

TEST_F(Papers, StakesInEachForm) {
    StakeOptions options;
    options.offsets = {-5.0, 0.0, 7.25};
    options.stations = {133.3333};
    options.mainPoints = true;
    const Stakes list = stakesOf(drawing, 0, options);
    expectPages("stakes_page", stakePages(drawing, list, {}));
    for (const auto& [format, file] :
         {std::pair(StakeFormat::Table, "stakes.txt"), std::pair(StakeFormat::Csv, "stakes.csv"),
          std::pair(StakeFormat::Sima, "stakes.sim"), std::pair(StakeFormat::Json, "stakes.json")}) {
        std::ostringstream out;
        writeStakes(list, format, out);
        expectSample(file, out.str());
    }
}

TEST_F(Papers, ReportsAsAPage) {
    ReportOptions options;
    options.errors = {{"a_Input.log", "ErrA01-1 点番号", "00010行目 A01,x"}};
    options.logs = {"a_Input.log"};
    expectReport("report.html", options, ReportFormat::Html);
}

TEST_F(Papers, ReportsForASpreadsheet) {
    ReportOptions options;
    options.mainPointNames = MainPointNames::Btc;
    options.sides = SideRule::Round;
    options.figureScale = 250;
    options.stationNames.style = StationNames::Style::Kilometre;
    options.stationNames.pitch = 25.0;
    expectReport("report.csv", options, ReportFormat::Csv);
}

} // namespace
} // namespace fenmark::exchange
