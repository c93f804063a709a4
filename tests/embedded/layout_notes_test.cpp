// The words of the notes on laid alignments, in both languages.
#include "host/embedded/layout_notes.h"

#include "drawing/drawing.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <limits>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace fenmark::host::embedded {
namespace {

constexpr double kInfinite = std::numeric_limits<double>::infinity();

struct Wording {
    LayoutNotes notes;
    std::string_view code;
    std::string english;
    std::string japanese;
};

LayoutNotes ofUnusual(const UnusualElement& element) {
    LayoutNotes notes;
    notes.unusual = {element};
    return notes;
}

LayoutNotes ofRefused(const RefusedElement& element) {
    LayoutNotes notes;
    notes.refused = {element};
    return notes;
}

LayoutNotes ofSenses(std::int32_t count) {
    LayoutNotes notes;
    notes.otherSense = count;
    return notes;
}

LayoutNotes ofMisfit(const Misfit& misfit) {
    LayoutNotes notes;
    notes.misfits = {misfit};
    return notes;
}

TEST(LayoutNoteLines, SayWhatWasLaidInBothLanguages) {
    const ElementType arc = ElementType::Arc;
    const ElementType clothoid = ElementType::Clothoid;
    const double fine = drawing::kLineTolerance;
    const Wording table[] = {
        {ofSenses(1), "other-sense", "1 element was taken with the other turning sense",
         "1個の要素を逆の曲がりとして配置しました"},
        {ofRefused({"線", 12.5, Refusal::ArcWithoutRadius, 0, 10}), "breaks-off",
         "alignment 線 breaks off after 12.500 m: an arc has no radius",
         "線形「線」は 12.500 m で途切れています: 円弧の半径がありません"},
        {ofRefused({"線", 12.5, Refusal::ChordBeyondDiameter, 4, 10}), "breaks-off",
         "alignment 線 breaks off after 12.500 m: an arc of radius 4.000 m does not reach over its chord of 10.000 m",
         "線形「線」は 12.500 m で途切れています: 半径 4.000 m の円弧は弦長 10.000 m に届きません"},
        {ofRefused({"線", 0, Refusal::ClothoidWithoutRadius, 0, 0}), "breaks-off",
         "alignment 線 breaks off after 0.000 m: a clothoid has no radius",
         "線形「線」は 0.000 m で途切れています: クロソイドの半径がありません"},
        {ofRefused({"線", 0, Refusal::ClothoidWithoutLength, 0, 0}), "breaks-off",
         "alignment 線 breaks off after 0.000 m: a clothoid has no length",
         "線形「線」は 0.000 m で途切れています: クロソイドの長さがありません"},
        {ofRefused({"線", 0, Refusal::NothingBefore, 0, 0}), "breaks-off",
         "alignment 線 breaks off after 0.000 m: a clothoid has no element before it",
         "線形「線」は 0.000 m で途切れています: クロソイドの前に要素がありません"},
        {ofMisfit({"線", 0.025, false}), "misfit", "alignment 線 lies up to 0.025 m off the route's points",
         "線形「線」は路線の点から最大 0.025 m 離れています"},
        {ofMisfit({"線", 0.025, false, true}), "misfit", "alignment 線 lies 0.025 m or more off the route's points",
         "線形「線」は路線の点から 0.025 m 以上離れています"},
        {ofMisfit({"線", 0.025, true}), "misfit",
         "alignment 線 lies up to 0.025 m off the route's points, which differ in height; --plan-tangents may mend it",
         "線形「線」は路線の点から最大 0.025 m 離れています。路線の点の標高が異なります。--plan-tangents "
         "で直ることがあります"},
        {ofUnusual({"線", 10, arc, 500, 2, 2, 39.8, fine}), "unusual-element",
         "alignment 線: the arc at station 10.000, 500.000 m long, radius 2.000 m, turns 40 times",
         "線形「線」: 追加距離 10.000 の円弧（長さ 500.000 m、半径 2.000 m）は40回転しています"},
        {ofUnusual({"線", 10, clothoid, 500, kInfinite, 0, kInfinite, fine}), "unusual-element",
         "alignment 線: the clothoid at station 10.000, 500.000 m long, radii infinite and 0.000 m, "
         "turns infinitely often",
         "線形「線」: 追加距離 10.000 のクロソイド（長さ 500.000 m、半径 無限大 ～ 0.000 m）は無限に回転しています"},
        {ofUnusual({"線", 10, clothoid, 2e9, 0.0004, 5, 2.5e12, 0.25}), "unusual-element",
         "alignment 線: the clothoid at station 10.000, 2.000e+09 m long, radii 4.000e-04 m and 5.000 m, "
         "turns 2.500e+12 times, is drawn within 0.250 m",
         "線形「線」: 追加距離 10.000 のクロソイド（長さ 2.000e+09 m、半径 4.000e-04 m ～ 5.000 "
         "m）は2.500e+12回転し、誤差 0.250 m で図示しています"},
        {ofUnusual({"線", 10, arc, 1e6, 2e5, 2e5, 0.8, 0.002}), "unusual-element",
         "alignment 線: the arc at station 10.000, 1000000.000 m long, radius 200000.000 m, is drawn within 0.002 m",
         "線形「線」: 追加距離 10.000 の円弧（長さ 1000000.000 m、半径 200000.000 m）は誤差 0.002 m で図示しています"},
    };
    for (const Wording& wanted : table) {
        const std::vector<NoteLine> english = noteLines(wanted.notes);
        const std::vector<NoteLine> japanese = noteLines(wanted.notes, Language::Japanese);
        ASSERT_EQ(english.size(), 1U);
        ASSERT_EQ(japanese.size(), 1U);
        EXPECT_EQ(english[0].code, wanted.code);
        EXPECT_EQ(english[0].text, wanted.english);
        EXPECT_EQ(japanese[0].code, wanted.code);
        EXPECT_EQ(japanese[0].text, wanted.japanese);
    }
}

TEST(LayoutNoteLines, CountWhatIsBeyondTwentyOfOneAlignment) {
    const auto notesOf = [](std::size_t count) {
        LayoutNotes notes;
        for (const char* alignment : {"A", "B"}) {
            for (std::size_t i = 0; i < count; ++i) {
                const auto at = static_cast<double>(i);
                notes.brokenJoints.push_back({alignment, at, i == 21 ? -0.5 : 0.1, Remedy::None});
                notes.unusual.push_back({alignment, at, ElementType::Arc, 5, 7, 7, 50, drawing::kLineTolerance});
            }
        }
        return notes;
    };
    ASSERT_EQ(noteLines(notesOf(20)).size(), 80U);
    for (const std::size_t count : {21U, 23U}) {
        const std::vector<NoteLine> lines = noteLines(notesOf(count));
        ASSERT_EQ(lines.size(), 84U);
        const std::vector<NoteLine> japanese = noteLines(notesOf(count), Language::Japanese);
        const bool one = count == 21;
        EXPECT_EQ(lines[19].text, "alignment A: the joint at station 19.000 is broken by 5.73 degrees");
        EXPECT_EQ(lines[20].code, "broken-joint");
        EXPECT_EQ(lines[20].text, one ? "alignment A: 1 more joint is broken, by up to 5.73 degrees"
                                      : "alignment A: 3 more joints are broken, by up to 28.65 degrees");
        EXPECT_EQ(japanese[20].text, one ? "線形「A」: ほかに1か所の接続が最大 5.73° 折れています"
                                         : "線形「A」: ほかに3か所の接続が最大 28.65° 折れています");
        EXPECT_EQ(lines[21].text, "alignment B: the joint at station 0.000 is broken by 5.73 degrees");
        EXPECT_EQ(lines[83].code, "unusual-element");
        EXPECT_EQ(lines[83].text, one ? "alignment B: 1 more element winds or is drawn coarsely"
                                      : "alignment B: 3 more elements wind or are drawn coarsely");
        EXPECT_EQ(japanese[83].text, one ? "線形「B」: ほかに1個の要素が何度も回転するか、粗く図示されています"
                                         : "線形「B」: ほかに3個の要素が何度も回転するか、粗く図示されています");
    }
}

TEST(LayoutNoteLines, SayLengthsInPowersOfTenWhereThreeDecimalsDoNotShowThem) {
    const std::pair<double, std::string> lengths[] = {
        {0, "0.000"},
        {1e-300, "1.000e-300"},
        {0.0009994, "9.994e-04"},
        {0.001, "0.001"},
        {0.00104, "0.001"},
        {0.0014, "0.001"},
        {1, "1.000"},
        {999999999, "999999999.000"},
        {1e9, "1.000e+09"},
        {1.0004e9, "1.000e+09"},
        {1e300, "1.000e+300"},
    };
    for (const auto& [length, words] : lengths) {
        const LayoutNotes notes = ofUnusual({"線", 10, ElementType::Arc, length, 7, 7, 50, drawing::kLineTolerance});
        EXPECT_EQ(noteLines(notes)[0].text,
                  "alignment 線: the arc at station 10.000, " + words + " m long, radius 7.000 m, turns 50 times");
    }
    const std::pair<double, std::string> turns[] = {
        {10.5, "10"}, {999999999, "999999999"}, {1e9, "1.000e+09"}, {2e9, "2.000e+09"}};
    for (const auto& [count, words] : turns) {
        const LayoutNotes notes = ofUnusual({"線", 10, ElementType::Arc, 5, 7, 7, count, drawing::kLineTolerance});
        EXPECT_EQ(noteLines(notes)[0].text,
                  "alignment 線: the arc at station 10.000, 5.000 m long, radius 7.000 m, turns " + words + " times");
    }
    // Neither winds nor is drawn coarsely at the limits themselves.
    const LayoutNotes limits = ofUnusual({"線", 10, ElementType::Arc, 5, 7, 7, kMostTurns, drawing::kLineTolerance});
    EXPECT_EQ(noteLines(limits)[0].text, "alignment 線: the arc at station 10.000, 5.000 m long, radius 7.000 m");
}

TEST(LayoutNoteLines, ABrokenJointNamesItsOptionInJapaneseToo) {
    const std::pair<Remedy, std::string> remedies[] = {
        {Remedy::None, ""},
        {Remedy::PositiveRadiusAuto, "。--positive-radius auto で直ることがあります"},
        {Remedy::PositiveRadiusLeft, "。--positive-radius left で直ることがあります"},
        {Remedy::PositiveRadiusRight, "。--positive-radius right で直ることがあります"},
        {Remedy::PlanTangents, "。--plan-tangents で直ることがあります"}};
    for (const auto& [remedy, words] : remedies) {
        LayoutNotes notes;
        notes.brokenJoints.push_back({"線", 100, -0.1, remedy});
        EXPECT_EQ(noteLines(notes, Language::Japanese)[0].text,
                  "線形「線」: 追加距離 100.000 の接続が 5.73° 折れています" + words);
    }
}

std::vector<UnusualElement> unusualOf(const Alignment& alignment) {
    LinePoints points;
    return unusualElements(alignment, points);
}

TEST(UnusualElements, AreThoseThatWindOrAreDrawnCoarsely) {
    Alignment alignment;
    alignment.name = "線";
    alignment.startStation = 100;
    Element ordinary;
    ordinary.type = ElementType::Arc;
    ordinary.length = 50;
    ordinary.startRadius = ordinary.endRadius = 100;
    Element wound = ordinary;
    wound.startRadius = wound.endRadius = 0.5; // 15.9 turns
    Element straight;
    straight.length = 1e9;
    Element coarse = ordinary;
    coarse.length = 1e8;
    coarse.startRadius = coarse.endRadius = 1e8; // nearly straight, and longer than 10,000 points can follow
    alignment.elements = {ordinary, wound, straight, coarse};
    const std::vector<UnusualElement> unusual = unusualOf(alignment);
    ASSERT_EQ(unusual.size(), 2U);
    EXPECT_EQ(unusual[0].station, 150);
    EXPECT_NEAR(unusual[0].turns, 50 / (2 * 3.141592653589793 * 0.5), 1e-9);
    EXPECT_EQ(unusual[0].lineTolerance, drawing::kLineTolerance);
    EXPECT_EQ(unusual[1].station, 200 + 1e9);
    EXPECT_LT(unusual[1].turns, kMostTurns);
    EXPECT_GT(unusual[1].lineTolerance, drawing::kLineTolerance);
}

// The points of an alignment's line are bounded together: an element that alone is drawn finely enough is told behind them.
TEST(UnusualElements, AreToldAlsoWhereTheAlignmentHasNoPointsLeft) {
    Alignment alignment;
    Element vast;
    vast.type = ElementType::Arc;
    vast.length = 1e8;
    vast.startRadius = vast.endRadius = 1e8;
    Element fine = vast;
    fine.length = 3000;
    fine.startRadius = fine.endRadius = 300; // some 1,000 points
    for (const std::size_t before : {99U, 101U}) {
        alignment.elements.assign(before, vast);
        alignment.elements.push_back(fine);
        EXPECT_EQ(unusualOf(alignment).size(), before + (before > 100 ? 1 : 0)) << before;
    }
}

Element arcOf300m(double length) {
    Element arc;
    arc.type = ElementType::Arc;
    arc.startRadius = arc.endRadius = 300;
    arc.length = length;
    return arc;
}

// The points that an arc gets of so many that are left.
std::size_t pointsOf(const Element& arc, std::size_t left, double& tolerance) {
    std::vector<PlanPoint> line;
    tolerance = drawing::appendElementLine(arc, kLineTolerance, line, left);
    return line.size();
}

Element arcOfPoints(std::size_t points) {
    double tolerance = 0;
    double shorter = 1;
    double longer = 30000;
    while (longer - shorter > 1e-9) {
        const double middle = 0.5 * (shorter + longer);
        (pointsOf(arcOf300m(middle), kMostElementPoints, tolerance) < points ? shorter : longer) = middle;
    }
    EXPECT_EQ(pointsOf(arcOf300m(longer), kMostElementPoints, tolerance), points);
    return arcOf300m(longer);
}

TEST(UnusualElements, ShareTheirPointsToTheLast) {
    const Element last = arcOf300m(3000);
    double tolerance = 0;
    std::size_t enough = kMostElementPoints;
    do {
        pointsOf(last, --enough, tolerance);
    } while (tolerance == kLineTolerance);
    ++enough;
    ASSERT_GT(enough, drawing::kFewestElementPoints);
    Element vast;
    vast.type = ElementType::Arc;
    vast.length = 1e8;
    vast.startRadius = vast.endRadius = 1e8;
    Alignment alignment;
    constexpr std::size_t kVast = drawing::kMostAlignmentPoints / kMostElementPoints - 1;
    for (const std::size_t tooMany : {0U, 1U}) {
        alignment.elements.assign(kVast, vast);
        alignment.elements.push_back(arcOfPoints(kMostElementPoints - enough + tooMany));
        alignment.elements.push_back(last);
        EXPECT_EQ(unusualOf(alignment).size(), kVast + tooMany);
    }
}

// Those of a drawing are bounded, too: a long curve behind too many others is told, an ordinary one keeps its points.
TEST(UnusualElements, AreToldAlsoWhereTheDrawingHasNoPointsLeft) {
    Alignment vast;
    vast.elements.resize(90);
    for (Element& element : vast.elements) {
        element.type = ElementType::Arc;
        element.length = 1e8;
        element.startRadius = element.endRadius = 1e8;
    }
    Alignment rest;
    rest.elements = {arcOf300m(6000), arcOf300m(1200)}; // some 3,900 and 780 points
    LinePoints points;
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(unusualElements(vast, points).size(), 90U);
        const std::vector<UnusualElement> unusual = unusualElements(rest, points);
        ASSERT_EQ(unusual.size(), i < 2 ? 0U : 1U);
        EXPECT_TRUE(unusual.empty() || unusual[0].length == 6000);
    }
}

} // namespace
} // namespace fenmark::host::embedded
