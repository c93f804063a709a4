// The names round the figure of a lot: on which side of its corner each stands.
#include "exchange/report/tables.h"

#include <gtest/gtest.h>
#include <pugixml.hpp>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <numbers>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace fenmark::exchange {
namespace {

constexpr double kWritten = 0.011; // millimetres of paper: two numbers of two decimals
constexpr double kHalfTenth = std::numbers::pi / 3600.0;

// A circle of corners, so that every direction is met; a name whose direction has less than 0.3 across stands over or under.
TEST(Figure, NamesStandOutsideSquareToTheLotInEveryDirection) {
    constexpr int kCorners = 3600;
    const std::pair<double, double> lots[] = {{1.0, 40.0}, {-1.0, 40.0}, {1.0, 0.05}, {-1.0, 0.05}}; // turn, radius
    for (const auto& [turn, radius] : lots) {
        report::LotFigure figure;
        for (int i = 0; i < kCorners; ++i) {
            const double angle = turn * (2.0 * i + 1.0) * kHalfTenth;
            figure.ring.push_back({500.0 + radius * std::cos(angle), 700.0 + radius * std::sin(angle), 0.0});
            figure.names.push_back("P" + std::to_string(i));
        }
        figure.lot = "12-3";
        pugi::xml_document page;
        ASSERT_TRUE(page.load_string(report::figureSvg(figure).c_str()));
        const pugi::xml_node svg = page.child("svg");
        pugi::xml_node dot = svg.child("circle");
        pugi::xml_node name = svg.child("text");
        double below = 0.0; // of the base line under the middle of a name, which all have alike
        for (int i = 0; i < kCorners; ++i) {
            const double angle = turn * (2.0 * i + 1.0) * kHalfTenth;
            const double outX = std::cos(angle);
            const double outY = std::sin(angle);
            ASSERT_EQ(std::string(name.text().get()), figure.names[static_cast<std::size_t>(i)]);
            const bool isUpright = std::abs(outX) < 0.3;
            EXPECT_STREQ(name.attribute("text-anchor").value(), isUpright    ? "middle"
                                                                : outX > 0.0 ? "start"
                                                                             : "end")
                << i;
            const double dx = name.attribute("x").as_double() - dot.attribute("cx").as_double();
            const double dy = name.attribute("y").as_double() - dot.attribute("cy").as_double();
            EXPECT_NEAR(dx, (isUpright ? 2.4 : 1.44) * outX, kWritten) << i;
            below = i == 0 ? dy + 2.4 * outY : below;
            EXPECT_NEAR(dy + 2.4 * outY, below, 2.0 * kWritten) << i;
            dot = dot.next_sibling("circle");
            name = name.next_sibling("text");
        }
        EXPECT_FALSE(dot);
        EXPECT_STREQ(name.text().get(), "12-3");
    }
}

std::string figureOf(double width, double height, std::optional<int> scale = std::nullopt) {
    report::LotFigure figure;
    figure.ring = {{0, 0, 0}, {width, 0, 0}, {width, height, 0}, {0, height, 0}};
    figure.names.resize(4);
    figure.scale = scale;
    return report::figureSvg(figure);
}

std::string scaleOf(double width, double height) {
    const std::string svg = figureOf(width, height);
    const std::size_t at = svg.find(">1:");
    return svg.substr(at + 1, svg.find('<', at) - at - 1);
}

// The lot has 64 mm of the paper across and 48 mm up.
TEST(Figure, TakesTheFirstRoundScaleAtWhichTheLotFits) {
    const int scales[] = {10,    20,    50,    100,    150,    200,    250,     300,      400,      500,
                          600,   800,   1000,  1200,   1500,   2000,   2500,    3000,     5000,     10000,
                          20000, 25000, 50000, 100000, 200000, 500000, 1000000, 10000000, 100000000};
    constexpr double kLess = 1.0 - 1e-9;
    constexpr double kMore = 1.0 + 1e-9;
    for (std::size_t i = 0; i < std::size(scales); ++i) {
        const double width = 0.064 * scales[i];
        const double height = 0.048 * scales[i];
        const std::string fits = "1:" + std::to_string(scales[i]);
        const std::string next = "1:" + std::to_string(scales[std::min(i + 1, std::size(scales) - 1)]);
        EXPECT_EQ(scaleOf(width * kLess, 0.1 * height), fits);
        EXPECT_EQ(scaleOf(0.1 * width, height * kLess), fits);
        EXPECT_EQ(scaleOf(width * kMore, 0.1 * height), next);
        EXPECT_EQ(scaleOf(0.1 * width, height * kMore), next);
    }
    for (const int thousands : {1, 2, 5, 10, 1000}) {
        EXPECT_EQ(scaleOf(64.0 * thousands, 48.0 * thousands), "1:" + std::to_string(1000 * thousands)) << "exactly";
    }
}

// A figure of a scale that was asked for is as large as its lot and 22 mm, but not larger than 250 mm.
TEST(Figure, OfAScaleThatWasAskedForIsAsLargeAsItsLot) {
    const struct {
        double width; // of the lot at 1:1000, millimetres
        double height;
        std::string svgWidth;
        std::string svgHeight;
    } cases[] = {
        {1, 1, "86mm", "70mm"},       {64, 48, "86mm", "70mm"},   {65, 48, "87mm", "70mm"},
        {64, 49, "86mm", "71mm"},     {228, 1, "250mm", "70mm"},  {1, 228, "86mm", "250mm"},
        {228, 228, "250mm", "250mm"}, {228.1, 1, "86mm", "70mm"}, {1, 228.1, "86mm", "70mm"},
    };
    for (const auto& [width, height, svgWidth, svgHeight] : cases) {
        const std::string svg = figureOf(width, height, 1000);
        EXPECT_NE(svg.find("width=\"" + svgWidth + "\" height=\"" + svgHeight + "\""), std::string::npos)
            << width << ' ' << height << ' ' << svg.substr(0, 100);
        const bool asAsked = width <= 228 && height <= 228;
        EXPECT_EQ(svg.find(">1:1000<") != std::string::npos, asAsked) << width << ' ' << height;
    }
}

// A name whose neighbours are one point stands at the right.
TEST(Figure, OfTwoCornersHasItsNamesAtTheRight) {
    report::LotFigure figure;
    figure.ring = {{0, 0, 0}, {10, 20, 0}};
    figure.names = {"A", "B"};
    pugi::xml_document page;
    ASSERT_TRUE(page.load_string(report::figureSvg(figure).c_str()));
    pugi::xml_node dot = page.child("svg").child("circle");
    pugi::xml_node name = page.child("svg").child("text");
    double below = 0.0; // of the base line under the middle of a name
    for (int i = 0; i < 2; ++i) {
        EXPECT_STREQ(name.attribute("text-anchor").value(), "start");
        EXPECT_NEAR(name.attribute("x").as_double() - dot.attribute("cx").as_double(), 1.44, kWritten);
        const double dy = name.attribute("y").as_double() - dot.attribute("cy").as_double();
        EXPECT_TRUE(dy > 0.0 && dy < 1.2) << dy;
        below = i == 0 ? dy : below;
        EXPECT_NEAR(dy, below, 2.0 * kWritten);
        dot = dot.next_sibling("circle");
        name = name.next_sibling("text");
    }
}

} // namespace
} // namespace fenmark::exchange
