// The names round the figure of a lot: on which side of its corner each stands.
#include "exchange/report/tables.h"

#include <gtest/gtest.h>
#include <pugixml.hpp>

#include <cmath>
#include <numbers>
#include <string>
#include <vector>

namespace fenmark::exchange {
namespace {

constexpr double kWritten = 0.011; // millimetres of paper: two numbers of two decimals
constexpr double kHalfTenth = std::numbers::pi / 3600.0;

// A circle of corners, so that every direction is met; a name whose direction has less than 0.3 across stands over or under.
TEST(Figure, NamesStandOutsideSquareToTheLotInEveryDirection) {
    constexpr int kCorners = 3600;
    for (const double turn : {1.0, -1.0}) {
        report::LotFigure figure;
        for (int i = 0; i < kCorners; ++i) {
            const double angle = turn * (2.0 * i + 1.0) * kHalfTenth;
            figure.ring.push_back({500.0 + 40.0 * std::cos(angle), 700.0 + 40.0 * std::sin(angle), 0.0});
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

} // namespace
} // namespace fenmark::exchange
