// Names on a plan: which way they run, the places that they take one after another, and what they say of stations and of
// the grid at each scale.
#include "exchange/plan/plan_labels.h"
#include "exchange/plan/plot.h"
#include "sample_drawing.h"
#include "support/sample_file.h"
#include "worded_notes.h"

#include <gtest/gtest.h>
#include <pugixml.hpp>

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <numbers>
#include <regex>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace fenmark::exchange {
namespace {

constexpr double kHundredth = 0.0051; // two decimals are written

Element straightRoad(const PlanPoint& start, double degrees, double length) {
    Element straight;
    straight.start = start;
    straight.direction = degrees * std::numbers::pi / 180.0;
    straight.length = length;
    straight.end = drawing::poseOnElement(straight, length).point;
    return straight;
}

std::size_t addRoadOf(Drawing& drawing, const std::vector<Element>& elements, const char* name = "線") {
    const std::size_t road = drawing.addAlignment(drawing.addSite("サイト"), name, "0", "", "");
    for (const Element& element : elements) {
        drawing.addElement(road, element);
    }
    return road;
}

struct Written {
    double x, y;
    double degrees;
    std::string text;
};

// The names of a style, in order.
std::vector<Written> namesOn(const std::string& page, const char* style) {
    pugi::xml_document document;
    EXPECT_TRUE(document.load_string(page.c_str())) << page.substr(0, 200);
    std::vector<Written> names;
    for (const pugi::xpath_node found :
         document.select_nodes(("//text[@class='" + std::string(style) + "']").c_str())) {
        const pugi::xml_node node = found.node();
        Written name{node.attribute("x").as_double(), node.attribute("y").as_double(), 0.0, node.child_value()};
        std::string turned = node.attribute("transform").value();
        if (!turned.empty()) {
            std::replace_if(
                turned.begin(), turned.end(), [](char c) { return std::isalpha(c) != 0 || c == '(' || c == ')'; }, ' ');
            std::istringstream(turned) >> name.x >> name.y >> name.degrees;
        }
        names.push_back(std::move(name));
    }
    return names;
}

// From below or from the right: those across the road as well as those along it.
TEST(PlanNames, AreReadFromBelowOrFromTheRight) {
    for (const double degrees : {-179.85, -179.0, -135.0, -91.0,  -90.15, -90.05, -89.95, -89.85,  -45.0, -1.0, -0.15,
                                 0.0,     0.05,   0.15,   30.0,   89.0,   89.85,  89.95,  90.05,   90.15, 91.0, 135.0,
                                 179.85,  181.0,  200.0,  269.95, 270.05, 300.0,  359.0,  -270.05, -300.0}) {
        Drawing drawing;
        addRoadOf(drawing, {straightRoad({0.0, 0.0}, degrees, 100.0)});
        const Plot plot = plotPlan(drawing, {});
        ASSERT_EQ(plot.pages.size(), 1U);
        const auto expectTurned = [&](const char* style, std::size_t count, double along) {
            std::size_t found = 0;
            for (const Written& name : namesOn(plot.pages[0], style)) {
                const bool isAlong = name.text == "線";
                const double wanted = std::remainder(-degrees - (isAlong ? 0.0 : along), 180.0);
                EXPECT_NEAR(std::remainder(name.degrees - wanted, 180.0), 0.0, kHundredth) << degrees << name.text;
                EXPECT_GE(name.degrees, -90.1) << degrees << name.text;
                EXPECT_LE(name.degrees, 89.9) << degrees << name.text;
                ++found;
            }
            EXPECT_EQ(found, count) << degrees;
        };
        expectTurned("key", 3, 90.0);   // of both ends, and of the road
        expectTurned("stake", 6, 90.0); // No.0 to No.5
    }
}

// Many roads of one place: names of ends, stations, curves and of the roads take one place after another.
TEST(PlanNames, OfRoadsUponEachOtherTakeThePlacesInTheirOrder) {
    Drawing drawing;
    for (int i = 0; i < 14; ++i) {
        addChain(drawing, {{ElementType::Straight, 60.0, kStraight, kStraight, false},
                           {ElementType::Arc, 50.0, 60.0, 60.0, i % 2 == 0}});
    }
    PlotOptions options;
    options.scale = 250;
    const Plot plot = plotPlan(drawing, options);
    ASSERT_EQ(plot.pages.size(), 1U) << whyNot(plot);
    expectSample("plan_many_roads.svg", plot.pages[0]);
}

// Of the line where two sheets meet: 30 mm from the road, then 50, on both of its sides; where a line lies, the next place.
TEST(PlanNames, OfAMatchLineTakeTheFirstPlaceOffTheLines) {
    const struct {
        double along, beside; // millimetres
    } kPlaces[] = {{30.0, -2.8}, {30.0, 2.8}, {-30.0, -2.8}, {-30.0, 2.8},
                   {50.0, -2.8}, {50.0, 2.8}, {-50.0, -2.8}, {-50.0, 2.8}};
    PlotOptions options;
    options.scale = 500;
    options.paper = "A4";
    const auto firstOf = [&](const Drawing& drawing) {
        const Plot plot = plotAlong(drawing, 0, options);
        EXPECT_EQ(plot.pages.size(), 2U) << whyNot(plot);
        for (const Written& name : namesOn(plot.pages.at(0), "key")) {
            if (name.text.starts_with("合致線")) {
                return name;
            }
        }
        ADD_FAILURE() << "the match line has no name";
        return Written{};
    };
    const auto roadOf = [](Drawing& drawing) { addRoadOf(drawing, {straightRoad({0.0, 0.0}, 0.0, 150.0)}); };
    Drawing plain;
    roadOf(plain);
    const Written first = firstOf(plain);
    // "合致線 No.4+12.345（図面2）"
    const std::size_t number = first.text.find("No.") + 3;
    const std::size_t beyond = first.text.find('+') + 1;
    const double meet = 20.0 * std::stod(first.text.substr(number)) + std::stod(first.text.substr(beyond));
    for (std::size_t taken = 0; taken <= std::size(kPlaces); ++taken) {
        Drawing drawing;
        roadOf(drawing);
        for (std::size_t i = 0; i < taken; ++i) { // a millimetre of line in the middle of each place
            const double x = meet + 0.5 * kPlaces[i].beside;
            const double y = 0.5 * kPlaces[i].along;
            addPolyline(drawing, {{x, y - 0.25, 0}, {x, y + 0.25, 0}}, false, "", "連続線");
        }
        const Written name = firstOf(drawing);
        const auto& place = kPlaces[taken % std::size(kPlaces)]; // on a line where there is no other
        // All are written to the hundredth, and differ by whole ones.
        EXPECT_NEAR(name.x - first.x, place.beside - kPlaces[0].beside, 0.1 * kHundredth) << taken;
        EXPECT_NEAR(name.y - first.y, kPlaces[0].along - place.along, 0.1 * kHundredth) << taken;
    }
}

// 5 mm at least between two stations.
TEST(PlanNames, StationsStandAsFarApartAsTheScaleWants) {
    const struct {
        int scale;
        double metres;
    } kCases[] = {{3999, 20.0},       {4001, 100.0},       {19999, 100.0},     {20001, 500.0},   {99999, 500.0},
                  {100001, 1000.0},   {199999, 1000.0},    {200001, 5000.0},   {999999, 5000.0}, {1000001, 10000.0},
                  {1999999, 10000.0}, {2000001, 100000.0}, {9999999, 100000.0}};
    Drawing drawing;
    addRoadOf(drawing, {straightRoad({0.0, 0.0}, 0.0, 50000.0)});
    for (const auto& [scale, metres] : kCases) {
        PlotOptions options;
        options.scale = scale;
        options.extent.emplace();
        options.extent->add(0.0, 0.0);
        options.extent->add(10.0, 10.0);
        double told = 20.0;
        for (const Note& note : plotPlan(drawing, options).notes) {
            told = note.code == NoteCode::StationsEvery ? note.metres : told;
        }
        EXPECT_EQ(told, metres) << scale;
    }
}

// Half metres have a decimal, whole ones none; on a sheet with north up and on one along the road.
TEST(PlanNames, OfTheGridHaveADecimalBelowAMetre) {
    const std::regex tenths(R"(([XY]=-?\d+\.\d ?)+)");
    const std::regex whole(R"(([XY]=-?\d+ ?)+)");
    for (const int scale : {10, 20, 50}) {
        Drawing drawing;
        const std::size_t road = addRoadOf(drawing, {straightRoad({100.0, 200.0}, 30.0, 2.0)});
        PlotOptions options;
        options.scale = scale;
        for (const Plot& plot : {plotPlan(drawing, options), plotAlong(drawing, road, options)}) {
            ASSERT_EQ(plot.pages.size(), 1U) << whyNot(plot);
            const std::vector<Written> names = namesOn(plot.pages[0], "gridname");
            EXPECT_GT(names.size(), 5U) << scale;
            for (const Written& name : names) {
                EXPECT_TRUE(std::regex_match(name.text, scale == 10 ? tenths : whole)) << scale << ' ' << name.text;
            }
        }
    }
}

TEST(PlanNames, OfTheScaleBarTellItsMiddleAndItsEnd) {
    const struct {
        int scale;
        const char *middle, *end;
    } kCases[] = {{10, "0.2", "0.4 m"}, {20, "0.4", "0.8 m"}, {50, "1.0", "2.0 m"},  {100, "2", "4 m"},
                  {200, "4", "8 m"},    {250, "4", "8 m"},    {500, "10", "20 m"},   {1000, "20", "40 m"},
                  {2500, "40", "80 m"}, {3000, "40", "80 m"}, {5000, "100", "200 m"}};
    for (const auto& [scale, middle, end] : kCases) {
        Drawing drawing;
        addPoint(drawing, {1.0, 2.0, 0.0}, "P");
        PlotOptions options;
        options.scale = scale;
        pugi::xml_document document;
        ASSERT_TRUE(document.load_string(plotPlan(drawing, options).pages.at(0).c_str()));
        std::vector<std::string> texts;
        for (const pugi::xpath_node node : document.select_nodes("//text[@font-size='2.2']")) {
            texts.emplace_back(node.node().child_value());
        }
        ASSERT_EQ(texts.size(), 3U);
        EXPECT_TRUE(texts[0] == "0" || texts[0] == "0.0");
        EXPECT_EQ(texts[1], middle) << scale;
        EXPECT_EQ(texts[2], end) << scale;
    }
}

TEST(PlanNames, LoseTheBlanksAtTheirEnds) {
    Drawing drawing;
    addPoint(drawing, {100.0, 100.0, 0.0}, "  K 1  ");
    addPolyline(drawing, {{120, 100, 0}, {120, 140, 0}, {160, 140, 0}, {160, 100, 0}}, true, " 12-3 ");
    const std::string page = plotPlan(drawing, {}).pages.at(0);
    ASSERT_EQ(namesOn(page, "point").size(), 1U);
    EXPECT_EQ(namesOn(page, "point")[0].text, "K 1");
    ASSERT_FALSE(namesOn(page, "lotname").empty());
    EXPECT_EQ(namesOn(page, "lotname")[0].text, "12-3");
}

// A square of the lot's area must hold them: 1.1 to 2.2 mm, and an em at least for short names.
TEST(PlanNames, OfALotAreAsLargeAsItHasRoom) {
    const struct {
        double side; // millimetres
        const char* name;
        const char* size; // empty for no name
    } kCases[] = {{1.09, "1", ""},         {1.11, "1", "1.11"},    {2.0, "1", "2"},        {2.19, "1", "2.19"},
                  {2.5, "1", "2.2"},       {3.43, "いろは", ""},   {3.8, "いろは", "1.1"}, {6.9, "いろは", "2"},
                  {7.58, "いろは", "2.2"}, {30.0, "いろは", "2.2"}};
    for (const auto& [side, name, size] : kCases) {
        Drawing drawing;
        addPolyline(drawing, {{0, 0, 0}, {0, side, 0}, {side, side, 0}, {side, 0, 0}}, true, name);
        PlotOptions options;
        options.scale = 1000;
        const std::string page = plotPlan(drawing, options).pages.at(0);
        const std::string wanted = std::string("<text class=\"lotname\" font-size=\"") + size + "\"";
        EXPECT_EQ(page.find("class=\"lotname\"") != std::string::npos, *size != '\0') << side << name;
        EXPECT_EQ(page.find(wanted) != std::string::npos, *size != '\0') << side << name;
    }
}

// The cell of each end too, however small what would stand there.
TEST(PlanNames, StandOffBothEndsOfALine) {
    for (const bool there : {true, false}) {
        LabelSpace space({0.0, 0.0, 100.0, 100.0});
        const PaperPoint from{40.45, 40.1};
        const PaperPoint to{60.05, 40.1};
        space.takeLine(there ? from : to, there ? to : from);
        for (const PaperPoint& end : {from, to}) {
            EXPECT_FALSE(space.isFree({end, 0.1, 0.0, Label::Anchor::Start, "", ""}, true)) << end.x;
        }
        EXPECT_TRUE(space.isFree({{39.9, 40.1}, 0.1, 0.0, Label::Anchor::Start, "", ""}, true));
        EXPECT_TRUE(space.isFree({{60.6, 40.1}, 0.1, 0.0, Label::Anchor::Start, "", ""}, true));
    }
}

// What is wider than 40 mm of type is squeezed to that.
TEST(PlanNames, OfTheTitleAreSqueezedWhereTheyHaveNoRoom) {
    Drawing drawing;
    addPoint(drawing, {1.0, 2.0, 0.0}, "P");
    const std::string ten = "一二三四五六七八九十";
    for (const auto& [value, squeezed] : {std::pair(ten + "一二三四五abc", false), {ten + "一二三四ｱabcd", true}}) {
        PlotOptions options;
        options.titles = {{"業務名", value}};
        const std::string page = plotPlan(drawing, options).pages.at(0);
        const std::size_t end = page.find('>' + value + '<');
        ASSERT_NE(end, std::string::npos) << value;
        const std::string tag = page.substr(page.rfind("<text", end), end - page.rfind("<text", end));
        EXPECT_EQ(tag.find("textLength=\"40\"") != std::string::npos, squeezed) << tag;
    }
}

// The samples of the legend are 5.4 mm apart, those of layers as those of kinds.
TEST(PlanNames, OfTheLegendStandInRows) {
    Drawing drawing;
    for (int i = 0; i < 3; ++i) {
        addPoint(drawing, {100.0 + 10.0 * i, 100.0, 0.0}, "P", i == 0 ? "座標" : "縦断成果",
                 *drawing.findLayer(drawing.addLayer("層" + std::to_string(i))));
    }
    std::vector<drawing::Layer> layers = drawing.layers();
    for (drawing::Layer& layer : layers) {
        layer.colour = drawing::Colour{0x8e, 0x24, 0xaa};
    }
    ASSERT_TRUE(drawing.setLayers(layers));
    pugi::xml_document document;
    ASSERT_TRUE(document.load_string(plotPlan(drawing, {}).pages.at(0).c_str()));
    std::vector<double> rows;
    for (const pugi::xpath_node node : document.select_nodes("//text[@font-size='2.6']")) {
        rows.push_back(node.node().attribute("y").as_double());
    }
    ASSERT_EQ(rows.size(), 5U) << "two kinds of points, three layers";
    for (std::size_t i = 1; i < rows.size(); ++i) {
        EXPECT_NEAR(rows[i] - rows[i - 1], 5.4, 2.0 * kHundredth) << i;
    }
}

// A sheet of A4 with layers of their own colour, all lines of a title block, and notes.
TEST(PlanNames, OfTheLegendAndItsNotesEndAboveTheTitle) {
    for (const std::size_t titles : {0U, 6U, 9U, 12U}) {
        Drawing drawing;
        const char* const kinds[] = {"座標", "縦断成果", "横断成果", "他"};
        for (int i = 0; i < 60; ++i) {
            addPoint(drawing, {100.0 + 0.01 * i, 100.0, 0.0}, "点の名", kinds[i % 4],
                     *drawing.findLayer(
                         drawing.addLayer("とても長い名の層" + std::string(90, 'x') + std::to_string(i % 12))));
        }
        std::vector<drawing::Layer> layers = drawing.layers();
        for (drawing::Layer& layer : layers) {
            layer.colour = drawing::Colour{0x8e, 0x24, 0xaa};
        }
        ASSERT_TRUE(drawing.setLayers(layers));
        PlotOptions options;
        options.paper = "A4";
        options.scale = 1000; // the points lie upon each other
        for (std::size_t i = 0; i < titles; ++i) {
            options.titles.emplace_back("業務名", "A");
        }
        const Plot plot = plotPlan(drawing, options);
        ASSERT_FALSE(plot.notes.empty()) << "names without room";
        pugi::xml_document document;
        ASSERT_TRUE(document.load_string(plot.pages.at(0).c_str()));
        const double title = document.select_node("//text[.='平　面　図']").node().attribute("y").as_double();
        const double line = title - 6.5 - 1.8; // above the heading
        std::size_t rows = 0;
        double last = 0.0;
        std::string text;
        for (const pugi::xpath_node node : document.select_nodes("//text[@font-size='2.6']")) {
            const double y = node.node().attribute("y").as_double();
            EXPECT_LT(y, line) << titles;
            EXPECT_TRUE(last == 0.0 || y - last > 3.4) << titles;
            EXPECT_LE(node.node().attribute("x").as_double() + 2.6 * widthInEms(node.node().text().get()), 287.0);
            last = y;
            text = node.node().text().get();
            ++rows;
        }
        for (const pugi::xpath_node node : document.select_nodes("//text[@font-size='2']")) {
            if (node.node().attribute("x").as_double() > 225.0 && node.node().attribute("y").as_double() > last) {
                EXPECT_LT(node.node().attribute("y").as_double(), line) << titles;
            }
        }
        // Four kinds and eight layers; what has no room is counted.
        EXPECT_EQ(text.rfind("ほか ", 0) == 0 ? rows - 1 + std::stoul(text.substr(7)) : rows, 12U) << titles;
        EXPECT_EQ(rows < 12, titles == 12) << rows;
    }
}

} // namespace
} // namespace fenmark::exchange
