// The notes on elements that no survey has, in words of both languages.
#include "drawing/drawing.h"
#include "embedded/route_chains.h"
#include "host/embedded/layout_notes.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

namespace fenmark::host::embedded {
namespace {

Alignment alignmentOf(const std::vector<Shape>& shapes) {
    Alignment alignment;
    alignment.name = "R1";
    alignment.startStation = 100.0;
    alignment.elements = layChain({{0, 0}, 0}, shapes);
    return alignment;
}

std::string lineOf(const UnusualElement& element, Language language = Language::English) {
    LayoutNotes notes;
    notes.unusual.push_back(element);
    const std::vector<NoteLine> lines = noteLines(notes, language);
    EXPECT_EQ(lines.size(), 1U);
    EXPECT_EQ(lines[0].code, "unusual-element");
    return lines[0].text;
}

TEST(UnusualElements, ElementsOfSurveysAreNone) {
    EXPECT_TRUE(unusualElements(alignmentOf({straight(1e6), clothoid(0, 15, 60), arc(15, 90), clothoid(15, 0, 60),
                                             arc(-10000, 15000)}))
                    .empty());
    EXPECT_TRUE(unusualElements(alignmentOf({arc(10, 620)})).empty()) << "9.9 turns";
}

TEST(UnusualElements, ThoseThatWindAreToldWithTheirStation) {
    const std::vector<UnusualElement> found = unusualElements(alignmentOf({straight(50), arc(10, 640)}));
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].station, 150.0);
    EXPECT_EQ(found[0].startRadius, 10.0);
    EXPECT_NEAR(found[0].turns, 640 / (20 * 3.14159265358979), 1e-9);
    EXPECT_EQ(found[0].lineTolerance, kLineTolerance);
    EXPECT_EQ(lineOf(found[0]),
              "alignment R1: the arc at station 150.000, 640.000 m long, radius 10.000 m, turns 10 times");
    EXPECT_EQ(lineOf(found[0], Language::Japanese),
              "線形「R1」: 追加距離 150.000 の円弧（長さ 640.000 m、半径 10.000 m）は10回転しています");
}

TEST(UnusualElements, ThoseWhoseLineIsCoarseAreToldWithItsDistance) {
    const std::vector<UnusualElement> found = unusualElements(alignmentOf({arc(1e9, 1e9), straight(1)}));
    ASSERT_EQ(found.size(), 1U) << "a sixth of a turn, in 10,000 points";
    EXPECT_LT(found[0].turns, 0.2);
    EXPECT_NEAR(found[0].lineTolerance, 1e5 * 1e5 / (8 * 1e9), 0.05) << "the height of an arc over a chord of 1e5 m";
    UnusualElement told = found[0];
    told.lineTolerance = 1.25;
    EXPECT_EQ(lineOf(told), "alignment R1: the arc at station 100.000, 1.000e+09 m long, radius 1.000e+09 m, is drawn "
                            "within 1.250 m");
    EXPECT_EQ(lineOf(told, Language::Japanese), "線形「R1」: 追加距離 100.000 の円弧（長さ 1.000e+09 m、半径 "
                                                "1.000e+09 m）は誤差 1.250 m で図示しています");
}

TEST(UnusualElements, TellRadiiAndTurnsThatNoDecimalsShow) {
    UnusualElement element{"R1", 0.0, ElementType::Clothoid, 1000.0, std::numeric_limits<double>::infinity(), 1e-31,
                           1e33, 0.5};
    EXPECT_EQ(lineOf(element), "alignment R1: the clothoid at station 0.000, 1000.000 m long, radii infinite and "
                               "1.000e-31 m, turns 1.000e+33 times, is drawn within 0.500 m");
    EXPECT_EQ(lineOf(element, Language::Japanese),
              "線形「R1」: 追加距離 0.000 のクロソイド（長さ 1000.000 m、半径 無限大 ～ "
              "1.000e-31 m）は1.000e+33回転し、誤差 0.500 m で図示しています");
    element.turns = std::numeric_limits<double>::infinity();
    element.lineTolerance = kLineTolerance;
    EXPECT_EQ(lineOf(element), "alignment R1: the clothoid at station 0.000, 1000.000 m long, radii infinite and "
                               "1.000e-31 m, turns infinitely often");
    element.turns = 999999999.0;
    element.endRadius = 0.001;
    EXPECT_EQ(lineOf(element), "alignment R1: the clothoid at station 0.000, 1000.000 m long, radii infinite and "
                               "0.001 m, turns 999999999 times");
    element.endRadius = 1e9;
    element.startRadius = 0.0;
    EXPECT_EQ(lineOf(element), "alignment R1: the clothoid at station 0.000, 1000.000 m long, radii 0.000 m and "
                               "1.000e+09 m, turns 999999999 times");
}

TEST(RefusedElements, AreToldWithTheReason) {
    LayoutNotes notes;
    for (const Refusal why : {Refusal::ArcWithoutRadius, Refusal::ChordBeyondDiameter, Refusal::ClothoidWithoutRadius,
                              Refusal::ClothoidWithoutLength, Refusal::NothingBefore}) {
        notes.refused.push_back({"R1", 12.5, why, 10.0, 25.0});
    }
    std::vector<std::string> texts;
    for (const NoteLine& line : noteLines(notes)) {
        EXPECT_EQ(line.code, "breaks-off");
        texts.push_back(line.text);
    }
    const std::string begin = "alignment R1 breaks off after 12.500 m: ";
    EXPECT_EQ(texts,
              (std::vector<std::string>{begin + "an arc has no radius",
                                        begin + "an arc of radius 10.000 m does not reach over its chord of 25.000 m",
                                        begin + "a clothoid has no radius", begin + "a clothoid has no length",
                                        begin + "a clothoid has no element before it"}));
    EXPECT_EQ(noteLines(notes, Language::Japanese)[1].text,
              "線形「R1」は 12.500 m で途切れています: 半径 10.000 m の円弧は弦長 25.000 m に届きません");
}

} // namespace
} // namespace fenmark::host::embedded
