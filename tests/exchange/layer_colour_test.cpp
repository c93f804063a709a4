// Colours of layers in what is drawn on paper, in DXF files and in the summary.
#include "exchange/dxf.h"
#include "exchange/dxf_colour.h"
#include "exchange/info.h"
#include "exchange/plan/plot.h"
#include "sample_drawing.h"
#include "support/sample_file.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <sstream>
#include <string>

namespace fenmark::exchange {
namespace {

constexpr drawing::Colour kPurple{0x8e, 0x24, 0xaa};

std::size_t countOf(const std::string& text, const std::string& part) {
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
        ++count;
    }
    return count;
}

class LayerColour : public ::testing::Test {
  protected:
    Drawing drawing;

    // The road and two points on "0", two points and a closed line on "境界".
    void SetUp() override {
        addRoad(drawing, {0.0, 0.0}, true);
        const std::size_t border = *drawing.findLayer(drawing.addLayer("境界"));
        for (const std::size_t layer : {std::size_t{0}, border}) {
            const double x = 20.0 + 40.0 * static_cast<double>(layer);
            drawing.addPoint({x, 40.0, 0.0}, layer);
            drawing.addPoint({x + 10.0, 45.0, 0.0}, layer);
        }
        const std::vector<MdGePoint3d> ring = {{60, 60, 0}, {90, 60, 0}, {90, 90, 0}};
        drawing.addPolyline(ring, border, EntityKind::Polyline, true);
    }
    void colour(std::size_t layer) {
        std::vector<drawing::Layer> layers = drawing.layers();
        layers[layer].colour = kPurple;
        ASSERT_TRUE(drawing.setLayers(layers));
    }
    std::string plan() {
        const Plot plot = plotPlan(drawing, {});
        return plot.pages.size() == 1 ? plot.pages[0] : std::string();
    }
    std::string dxf(DxfLayers layers, DxfVersion version) {
        ExportOptions options;
        options.dxfLayers = layers;
        options.dxfVersion = version;
        std::ostringstream out;
        writeDxf(drawing, options, out);
        return out.str();
    }
};

TEST_F(LayerColour, APlanWithoutAnyIsAsEver) {
    EXPECT_EQ(countOf(plan(), "style=\""), 0U);
    EXPECT_EQ(countOf(plan(), "画層"), 0U);
}

TEST_F(LayerColour, LinesAndPointsOfTheLayerAndTheLegendHaveIt) {
    colour(1);
    const std::string page = plan();
    EXPECT_EQ(countOf(page, "style=\"stroke:#8e24aa\""), 2U) << "the line, and its sample in the legend";
    EXPECT_EQ(countOf(page, "fill=\"#8e24aa\""), 1U) << "both points in one path";
    EXPECT_EQ(countOf(page, "画層 境界"), 1U);
    EXPECT_GE(countOf(page, "fill=\"#263238\" d="), 1U) << "the points of the other layer";
}

TEST_F(LayerColour, ElementsOfAnAlignmentHaveIt) {
    colour(0);
    const std::string page = plan();
    EXPECT_EQ(countOf(page, "class=\"l arc\" style=\"stroke:#8e24aa\""), 1U);
    EXPECT_EQ(countOf(page, "class=\"l clothoid\" style=\"stroke:#8e24aa\""), 2U);
    EXPECT_EQ(countOf(page, "画層 0"), 1U);
}

TEST_F(LayerColour, LayersOfADxfHaveTheNearestIndexAndLaterReleasesTheColourItself) {
    colour(1);
    const int index = dxfColourOf(kPurple).index;
    EXPECT_NE(index, 7);
    const std::string number = "62\r\n" + std::to_string(index) + "\r\n";
    for (const DxfVersion version : {DxfVersion::R12, DxfVersion::R2000, DxfVersion::R2018}) {
        const std::string own = dxf(DxfLayers::Drawing, version);
        EXPECT_EQ(countOf(own, number), 2U) << "the layer and that of its names";
        EXPECT_EQ(countOf(own, "420\r\n" + std::to_string(0x8e24aa)), version == DxfVersion::R2018 ? 2U : 0U);
        EXPECT_EQ(countOf(dxf(DxfLayers::Kinds, version), number), 0U) << "kinds have colours of their own";
    }
}

TEST(DxfColour, IsTheNearestOfTheIndex) {
    EXPECT_EQ(dxfColourOf({255, 0, 0}).index, 1);
    EXPECT_EQ(dxfColourOf({255, 255, 0}).index, 2);
    EXPECT_EQ(dxfColourOf({0, 255, 0}).index, 3);
    EXPECT_EQ(dxfColourOf({0, 255, 255}).index, 4);
    EXPECT_EQ(dxfColourOf({0, 0, 255}).index, 5);
    EXPECT_EQ(dxfColourOf({255, 0, 255}).index, 6);
    EXPECT_EQ(dxfColourOf({255, 255, 255}).index, 7);
    EXPECT_EQ(dxfColourOf({0, 0, 0}).index, 7) << "black on paper";
    EXPECT_EQ(dxfColourOf({255, 127, 0}).index, 30);
    EXPECT_EQ(dxfColourOf({165, 0, 0}).index, 12);
    EXPECT_EQ(dxfColourOf({0, 38, 0}).index, 98);
    EXPECT_EQ(dxfColourOf({50, 51, 52}).index, 250);
    // Between two greys: the nearer one, the first of two that are equally near.
    EXPECT_EQ(dxfColourOf({128, 128, 128}).index, 8);
    EXPECT_EQ(dxfColourOf({131, 128, 131}).index, 8);
    EXPECT_EQ(dxfColourOf({128, 131, 131}).index, 8);
    EXPECT_EQ(dxfColourOf({131, 131, 128}).index, 8);
    EXPECT_EQ(dxfColourOf({131, 131, 131}).index, 252);
    EXPECT_EQ(dxfColourOf({182, 182, 182}).index, 253);
    EXPECT_EQ(dxfColourOf({183, 183, 183}).index, 9);
    EXPECT_EQ(dxfColourOf({203, 203, 203}).index, 9);
    EXPECT_EQ(dxfColourOf({204, 204, 204}).index, 254);
    EXPECT_EQ(dxfColourOf({1, 2, 3}).exact, (drawing::Colour{1, 2, 3}));
}

// How many colours of a grid come to each index: every colour of the index has its borders with others in there.
TEST(DxfColour, PartsAllColoursAsItDid) {
    constexpr int kStep = 9;
    std::array<int, 256> counts{};
    for (int red = 0; red < 256; red += kStep) {
        for (int green = 0; green < 256; green += kStep) {
            for (int blue = 0; blue < 256; blue += kStep) {
                const drawing::Colour colour{static_cast<std::uint8_t>(red), static_cast<std::uint8_t>(green),
                                             static_cast<std::uint8_t>(blue)};
                ++counts[static_cast<std::size_t>(dxfColourOf(colour).index)];
            }
        }
    }
    std::string text;
    for (std::size_t index = 0; index < counts.size(); ++index) {
        text += std::to_string(index) + " " + std::to_string(counts[index]) + "\n";
    }
    expectSample("dxf_colours.txt", text);
}

TEST_F(LayerColour, IsInTheSummary) {
    colour(1);
    std::ostringstream out;
    writeInfoJson(drawing, out);
    EXPECT_EQ(out.str().find(R"({"layers":[{"name":"0"},{"name":"境界","colour":"#8e24aa"}])"), 0U) << out.str();
}

} // namespace
} // namespace fenmark::exchange
