// Results of a drawing by alignment: which points belong where, what stands once, what is counted as unplaced, and what a
// SIMA file and a longitudinal section make of them.
#include "exchange/plan/plot.h"
#include "exchange/results.h"
#include "exchange/sima_file.h"
#include "exchange/sima_results.h"
#include "sample_drawing.h"
#include "worded_notes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <limits>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace fenmark::exchange {
namespace {

constexpr double kInfinite = std::numeric_limits<double>::infinity();

// A road of 100 m eastwards from the place given.
void addStraightRoad(Drawing& drawing, double y, const char* name) {
    const std::size_t road = drawing.addAlignment(
        drawing.findSite("現場") ? drawing.sites()[*drawing.findSite("現場")].id : drawing.addSite("現場"), name, "0",
        "Standard", "Standard");
    Element straight;
    straight.start = {0.0, y};
    straight.end = {100.0, y};
    straight.length = 100.0;
    drawing.addElement(road, straight);
}

void addResultAt(Drawing& drawing, const MdGePoint3d& at, const char* name, const char* type, int number = 1,
                 const char* file = "a.sim") {
    drawing.addPoint(at, 0);
    drawing.setRow(drawing.entityCount() - 1, tableNamed(drawing, "JSIMA_V3_Point"), number, name, type, file);
}

constexpr const char* kLongitudinal = "縦断成果";
constexpr const char* kCross = "横断成果";

std::string pointsOf(const CrossSection& section) {
    std::ostringstream text;
    for (const SectionPoint& point : section.points) {
        text << point.name << '@' << point.offset << '/' << point.height << ' ';
    }
    return text.str();
}

std::vector<std::string> linesOf(const std::string& text, std::string_view code) {
    std::vector<std::string> found;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);) {
        if (line.starts_with(code)) {
            found.push_back(line.substr(0, line.size() - 1));
        }
    }
    return found;
}

TEST(Results, WithoutAnAlignmentAreAllUnplaced) {
    Drawing drawing;
    addResultAt(drawing, {10, 0, 5}, "a", kLongitudinal);
    addResultAt(drawing, {20, 0, 5}, "b", kCross);
    EXPECT_EQ(resultsOf(drawing).unplaced, 2U);
    // An alignment without elements, and one beyond any survey, have none either.
    drawing.addAlignment(drawing.addSite("現場"), "空", "0", "", "");
    addStraightRoad(drawing, kInfinite, "遠");
    const Results results = resultsOf(drawing);
    EXPECT_EQ(results.unplaced, 2U);
    ASSERT_EQ(results.alignments.size(), 2U);
    EXPECT_TRUE(results.alignments[0].longitudinal.empty());
}

TEST(Results, WithoutAPlaceOrAHeightAreUnplaced) {
    Drawing drawing;
    addStraightRoad(drawing, 0, "線");
    addResultAt(drawing, {10, 0, 5}, "a", kLongitudinal);
    addResultAt(drawing, {20, 0, kInfinite}, "no height", kLongitudinal);
    addResultAt(drawing, {kInfinite, 0, 5}, "no place", kLongitudinal);
    addResultAt(drawing, {30, 0.01, 5}, "beside", kLongitudinal);
    const Results results = resultsOf(drawing);
    EXPECT_EQ(results.unplaced, 3U);
    ASSERT_EQ(results.alignments[0].longitudinal.size(), 1U);
    EXPECT_EQ(results.alignments[0].longitudinal[0].name, "a");
}

TEST(Results, ImportedTwiceStandOnce) {
    Drawing drawing;
    addStraightRoad(drawing, 0, "線");
    for (const char* file : {"a.sim", "b.sim"}) {
        addResultAt(drawing, {10, 0, 5}, "a", kLongitudinal, 1, file);
        addResultAt(drawing, {40, 3, 6}, "left", kCross, 1, file);
        addResultAt(drawing, {40, 0, 7}, "No.2", kCross, 1, file);
        addResultAt(drawing, {40, -3, 8}, "right", kCross, 1, file);
    }
    addResultAt(drawing, {10, 0, 5.5}, "another height", kLongitudinal, 1, "b.sim");
    addResultAt(drawing, {40, -3, 8.5}, "another height", kCross, 1, "b.sim");
    const AlignmentResults results = resultsOf(drawing).alignments.at(0);
    ASSERT_EQ(results.longitudinal.size(), 2U);
    EXPECT_EQ(results.longitudinal[1].height, 5.5);
    ASSERT_EQ(results.sections.size(), 1U) << "sections at one station are one";
    EXPECT_EQ(results.sections[0].station, 40.0);
    EXPECT_EQ(results.sections[0].name, "No.2");
    EXPECT_EQ(pointsOf(results.sections[0]), "left@-3/6 No.2@0/7 right@3/8 another height@3/8.5 ");
}

// Of a line and of a section, a tenth of a millimetre to either side.
TEST(Results, LieOnALineAndInASectionWithinATenthOfAMillimetre) {
    for (const double side : {-1.0, 1.0}) {
        for (const double away : {0.9e-4, 1.1e-4}) {
            const std::size_t outside = away > 1e-4 ? 1 : 0;
            Drawing drawing;
            addStraightRoad(drawing, 0, "線");
            addResultAt(drawing, {10, 0, 5}, "on the line", kLongitudinal);
            addResultAt(drawing, {20, side * away, 5}, "beside", kLongitudinal);
            EXPECT_EQ(resultsOf(drawing).unplaced, outside) << side * away;
            addResultAt(drawing, {40, 0, 7}, "No.2", kCross);
            addResultAt(drawing, {40 + side * away, -3, 8}, "right", kCross);
            const Results results = resultsOf(drawing);
            EXPECT_EQ(results.unplaced, 2 * outside) << side * away;
            EXPECT_EQ(results.alignments[0].longitudinal.size(), 2 - outside);
            ASSERT_EQ(results.alignments[0].sections.size(), 1U);
            EXPECT_EQ(results.alignments[0].sections[0].points.size(), 2 - outside);
        }
    }
}

TEST(Results, AreTheSameWhereTheyDifferByAMicrometreAtMost) {
    for (const double side : {-1.0, 1.0}) {
        for (const double apart : {0.9e-6, 1.1e-6}) {
            Drawing drawing;
            addStraightRoad(drawing, 0, "線");
            for (const double height : {5.0, 5.0 + side * apart}) {
                addResultAt(drawing, {10, 0, height}, "a", kLongitudinal);
                addResultAt(drawing, {40, 0, 7}, "No.2", kCross);
                addResultAt(drawing, {40, -3, height}, "right", kCross);
            }
            const AlignmentResults results = resultsOf(drawing).alignments.at(0);
            const std::size_t more = apart > 1e-6 ? 1 : 0;
            EXPECT_EQ(results.longitudinal.size(), 1 + more) << side * apart;
            ASSERT_EQ(results.sections.size(), 1U);
            EXPECT_EQ(results.sections[0].points.size(), 2 + more) << side * apart;
        }
    }
}

TEST(Results, NoiseIsWhatLiesBehindTheSixthDecimal) {
    EXPECT_EQ(withoutNoise(12.3456784), 12.345678);
    EXPECT_EQ(withoutNoise(12.3456786), 12.345679);
    EXPECT_EQ(withoutNoise(-12.3456786), -12.345679);
    EXPECT_EQ(withoutNoise(0.0000014), 0.000001);
    EXPECT_FALSE(std::signbit(withoutNoise(-0.0000004))) << "0, and not -0";
}

TEST(Results, APointBesideEverySectionIsUnplaced) {
    Drawing drawing;
    addStraightRoad(drawing, 0, "線");
    addResultAt(drawing, {40, 0, 7}, "No.2", kCross);
    addResultAt(drawing, {45, 3, 6}, "between", kCross);
    addResultAt(drawing, {60, 2, 6}, "left of No.3", kCross);
    addResultAt(drawing, {60, 0, 7}, "No.3", kCross);
    addResultAt(drawing, {65, 3, 6}, "behind the last", kCross);
    const Results results = resultsOf(drawing);
    EXPECT_EQ(results.unplaced, 2U);
    ASSERT_EQ(results.alignments[0].sections.size(), 2U);
    EXPECT_EQ(pointsOf(results.alignments[0].sections[0]), "No.2@0/7 ");
    EXPECT_EQ(pointsOf(results.alignments[0].sections[1]), "left of No.3@-2/6 No.3@0/7 ");
}

// Where nobody surveyed the line itself, the middles of the cross-sections are its ground.
TEST(Results, ALongitudinalSectionTakesTheMiddlesOfCrossSections) {
    Drawing drawing;
    addStraightRoad(drawing, 0, "線");
    for (const double station : {0.0, 50.0, 100.0}) {
        addResultAt(drawing, {station, 4, 90}, "", kCross);
        addResultAt(drawing, {station, 0, 31.25 + station / 100}, "", kCross);
        addResultAt(drawing, {station, -4, 10}, "", kCross);
    }
    const Plot plot = plotProfile(drawing, 0, {});
    ASSERT_EQ(plot.pages.size(), 1U) << whyNot(plot);
    for (const char* height : {">31.250<", ">31.750<", ">32.250<"}) {
        EXPECT_NE(plot.pages[0].find(height), std::string::npos) << height;
    }
    EXPECT_EQ(plot.pages[0].find(">90.000<"), std::string::npos);
    EXPECT_NE(plot.pages[0].find(">No.2+10.000<"), std::string::npos) << "a section without a name has its station's";
}

// Not every point is looked at to find the alignment; the third of each section lies on it, after hundreds that do not.
TEST(Results, OfManySectionsBelongToTheAlignmentOfTheirCentres) {
    for (const std::size_t sections : {1U, 25U, 26U, 65U, 200U}) {
        Drawing drawing;
        addStraightRoad(drawing, 50, "beside");
        addStraightRoad(drawing, 0, "線");
        for (std::size_t i = 0; i < sections; ++i) {
            for (const double offset : {-6.0, -3.0, 0.0, 3.0, 6.0}) {
                addResultAt(drawing, {0.25 * static_cast<double>(i), -offset, 5.0}, "S", kCross);
            }
        }
        const Results results = resultsOf(drawing);
        EXPECT_EQ(results.unplaced, 0U) << sections;
        ASSERT_EQ(results.alignments.at(1).sections.size(), sections);
        EXPECT_EQ(results.alignments[1].sections.back().points.size(), 5U) << sections;
    }
}

// The first of them lie on both roads, and many behind them on one alone.
TEST(Results, BelongToTheAlignmentThatMostOfThemLieOnFarBehindTheFirst) {
    Drawing drawing;
    const std::size_t shorter = drawing.addAlignment(drawing.addSite("現場"), "短", "0", "", "");
    Element straight;
    straight.end = {40.0, 0.0};
    straight.length = 40.0;
    drawing.addElement(shorter, straight);
    addStraightRoad(drawing, 0, "長");
    for (int i = 0; i < 360; ++i) {
        addResultAt(drawing, {0.25 * i, 0, 5}, "a", kLongitudinal);
    }
    const Results results = resultsOf(drawing);
    EXPECT_EQ(results.alignments.at(0).longitudinal.size(), 0U);
    EXPECT_EQ(results.alignments.at(1).longitudinal.size(), 360U);
    EXPECT_EQ(results.unplaced, 0U);
}

// Wherever it stands among the others.
TEST(SimaResults, WithoutAPlaceAreLeftOutAndToldOnce) {
    for (std::size_t absurd = 0; absurd < 3; ++absurd) {
        Drawing drawing;
        addStraightRoad(drawing, 0, "線");
        for (std::size_t i = 0; i < 3; ++i) {
            addResultAt(drawing, {i == absurd ? kInfinite : 10.0 + static_cast<double>(i), 0, 5}, "a", kLongitudinal);
        }
        std::ostringstream out;
        EXPECT_EQ(writeSima(drawing, {}, out), (Notes{{NoteCode::NoPlace, 1}, {NoteCode::AddedPoints, 2}})) << absurd;
        EXPECT_EQ(linesOf(out.str(), "H01").size(), 2U) << absurd;
    }
}

// The height of its first point stands for that of the middle.
TEST(SimaResults, ASectionWithoutItsCentreHasTheHeightOfItsFirstPoint) {
    Drawing drawing;
    addStraightRoad(drawing, 0, "線");
    addResultAt(drawing, {10, 0, 4}, "a", kCross);
    addResultAt(drawing, {10, -3, 5}, "a", kCross);
    addResultAt(drawing, {20, 3, 6}, "b", kCross);
    addResultAt(drawing, {20, -3, 7}, "b", kCross);
    std::ostringstream out;
    const Notes notes = writeSima(drawing, {}, out);
    EXPECT_EQ(linesOf(out.str(), "I01"), (std::vector<std::string>{"I01,a,        10.000,         4.000,,",
                                                                   "I01,b,        20.000,         6.000,,"}));
    EXPECT_NE(std::find(notes.begin(), notes.end(), Note{NoteCode::AddedCentres, 1}), notes.end());
}

TEST(SimaResults, OfOneAlignmentAreWrittenUnderOneNumber) {
    Drawing drawing;
    addStraightRoad(drawing, 0, "線");
    addResultAt(drawing, {10, 0, 5}, "a", kLongitudinal, 1, "a.sim");
    addResultAt(drawing, {20, 0, 5}, "b", kLongitudinal, 7, "b.sim");
    std::ostringstream out;
    const Notes notes = writeSima(drawing, {}, out);
    const std::vector<std::string> heads = linesOf(out.str(), "H00");
    ASSERT_EQ(heads.size(), 2U);
    EXPECT_EQ(heads[0], heads[1]);
    EXPECT_TRUE(heads[0].starts_with("H00,    1,")) << heads[0];
    const bool told = std::any_of(notes.begin(), notes.end(),
                                  [](const Note& note) { return note.code == NoteCode::RenumberedResults; });
    EXPECT_TRUE(told);
}

// Numbers that a file may have are kept, and that is no renumbering.
TEST(SimaResults, KeepTheirNumberFromZeroOn) {
    for (const int number : {-1, 0, 1, 7}) {
        Drawing drawing;
        addStraightRoad(drawing, 0, "線");
        addResultAt(drawing, {10, 0, 5}, "a", kLongitudinal, number);
        std::ostringstream out;
        const Notes notes = writeSima(drawing, {}, out);
        const std::vector<std::string> heads = linesOf(out.str(), "H00");
        ASSERT_EQ(heads.size(), 1U);
        EXPECT_TRUE(heads[0].starts_with("H00,    " + std::to_string(std::abs(number)) + ",")) << heads[0];
        const bool told = std::any_of(notes.begin(), notes.end(),
                                      [](const Note& note) { return note.code == NoteCode::RenumberedResults; });
        EXPECT_EQ(told, number < 0);
    }
}

TEST(SimaResults, TakeNoNumberOfOthersThatLieOnNoAlignment) {
    Drawing drawing;
    addStraightRoad(drawing, 0, "road");
    addResultAt(drawing, {10, 0, 5}, "a", kLongitudinal, -1, "a.sim");
    addResultAt(drawing, {10, 50, 5}, "beside", kLongitudinal, 1, "b.sim");
    std::ostringstream out;
    writeSima(drawing, {}, out);
    EXPECT_EQ(linesOf(out.str(), "H00"), (std::vector<std::string>{"H00,    2,road,"}));
}

TEST(SimaResults, GoToTheAlignmentThatTheFileNames) {
    Drawing drawing;
    addStraightRoad(drawing, 0, "one");
    addStraightRoad(drawing, 0, "two");
    drawing.setDescription(1, "b-two");
    addResultAt(drawing, {10, 0, 5}, "of b", kLongitudinal, 4, "b.sim");
    addResultAt(drawing, {20, 0, 5}, "of nobody", kLongitudinal, 5, "c.sim");
    std::ostringstream out;
    writeSima(drawing, {}, out);
    EXPECT_EQ(linesOf(out.str(), "H00"), (std::vector<std::string>{"H00,    4,two,", "H00,    5,one,"}));
}

// Only so many points show to which alignment a section belongs; those that lie elsewhere are kept as points.
// A section belongs to an alignment that none of its points misses by more than a micrometre; a point that misses it by
// half of that is no result any more.
TEST(SimaResults, BelongToAnAlignmentWithinAMicrometre) {
    for (const double side : {-1.0, 1.0}) {
        for (const double beside : {0.0, 4.9e-7, 5.1e-7, 0.9e-6, 1.1e-6}) {
            Drawing drawing;
            addStraightRoad(drawing, 0, "線");
            addResultAt(drawing, {10, 0, 5}, "a", kLongitudinal);
            addResultAt(drawing, {20, side * beside, 6}, "b", kLongitudinal);
            std::ostringstream out;
            writeSima(drawing, {}, out);
            const std::size_t wanted = beside > 1e-6 ? 0 : beside > 5e-7 ? 1 : 2;
            EXPECT_EQ(linesOf(out.str(), "H01").size(), wanted) << side * beside;
            EXPECT_EQ(linesOf(out.str(), "A01").size(), 2 + 2 - wanted) << side * beside;
        }
    }
}

TEST(SimaResults, BesideTheirAlignmentAreWrittenAsPoints) {
    Drawing drawing;
    addStraightRoad(drawing, 0, "線");
    for (int i = 0; i < 100; ++i) {
        addResultAt(drawing, {0.5 + 0.5 * i, 0, 5}, "on", kLongitudinal);
    }
    addResultAt(drawing, {70, 0.01, 5}, "beside", kLongitudinal);
    addResultAt(drawing, {40, 0, 7}, "No.2", kCross, 2);
    addResultAt(drawing, {140, 3, 6}, "beyond", kCross, 2);
    std::ostringstream out;
    const Notes notes = writeSima(drawing, {}, out);
    EXPECT_EQ(linesOf(out.str(), "H01").size(), 100U);
    EXPECT_EQ(linesOf(out.str(), "I02").size(), 1U);
    std::size_t besides = 0;
    for (const std::string& line : linesOf(out.str(), "A01")) {
        besides += line.find(",beside,") != std::string::npos || line.find(",beyond,") != std::string::npos ? 1 : 0;
    }
    EXPECT_EQ(besides, 2U);
    const std::vector<std::string> told = english(notes);
    EXPECT_TRUE(std::any_of(told.begin(), told.end(), [](const std::string& line) { return line.starts_with("2 "); }));
}

TEST(SimaResults, ASectionWithANamelessPointHasNoName) {
    Drawing drawing;
    addStraightRoad(drawing, 0, "線");
    addResultAt(drawing, {40, 3, 6}, "", kCross);
    addResultAt(drawing, {40, 0, 7}, "No.2", kCross);
    addResultAt(drawing, {60, 3, 6}, "No.3", kCross);
    addResultAt(drawing, {60, 0, 7}, "No.3", kCross);
    std::ostringstream out;
    writeSima(drawing, {}, out);
    const std::vector<std::string> sections = linesOf(out.str(), "I01");
    ASSERT_EQ(sections.size(), 2U);
    EXPECT_TRUE(sections[0].starts_with("I01,,")) << sections[0];
    EXPECT_TRUE(sections[1].starts_with("I01,No.3,")) << sections[1];
    const std::vector<std::string> points = linesOf(out.str(), "I02");
    ASSERT_EQ(points.size(), 4U);
    EXPECT_TRUE(points[1].starts_with("I02,No.2,")) << points[1];
    EXPECT_TRUE(points[2].starts_with("I02,,")) << "of the section's own name";
}

TEST(SimaResults, OnAnAlignmentHaveAStationThatLeadsBackToThem) {
    Drawing drawing;
    addStraightRoad(drawing, 0, "線");
    const drawing::AlignmentGeometry& geometry = drawing.geometry(0);
    EXPECT_EQ(stationOnAlignment(geometry, {25, 0, 0}), "25.000");
    EXPECT_EQ(stationOnAlignment(geometry, {25, 1e-6, 0}), std::nullopt) << "beside it";
    EXPECT_EQ(stationOnAlignment(geometry, {kInfinite, 0, 0}), std::nullopt);
    EXPECT_EQ(stationOnAlignment(geometry, {101, 0, 0}), std::nullopt) << "beyond its end";
    Drawing empty;
    empty.addAlignment(empty.addSite("現場"), "空", "0", "", "");
    EXPECT_EQ(stationOnAlignment(empty.geometry(0), {0, 0, 0}), std::nullopt);
    const std::vector<MdGePoint3d> points = {{10, 2, 0}, {10, 2, 1}, {10, 0, 0}, {200, 5, 0}, {20, -1, 0}};
    const std::vector<SimaCrossSection> sections = crossSectionsOf(geometry, points);
    ASSERT_EQ(sections.size(), 3U);
    EXPECT_EQ(sections[0].station, "10.000");
    EXPECT_EQ(sections[0].centre, 2U);
    EXPECT_EQ(sections[0].offsets, (std::vector<std::string>{"-2.000", "-1.9999999", "0.000"}))
        << "the foot and the head of a wall are told apart";
    EXPECT_EQ(sections[1].first, 3U);
    EXPECT_TRUE(sections[1].offsets.empty()) << "beyond the end there is no section";
    EXPECT_EQ(sections[2].station, "20.000");
    EXPECT_FALSE(sections[2].centre);
}

} // namespace
} // namespace fenmark::exchange
