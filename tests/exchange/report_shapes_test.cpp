// What the documents say of every shape of curve and lot, of nothing, and of too much.
#include "exchange/kml.h"
#include "exchange/plan/plot.h"
#include "exchange/report/pages.h"
#include "exchange/report/report.h"
#include "exchange/report/tables.h"
#include "sample_drawing.h"
#include "worded_notes.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace fenmark::exchange {
namespace {

constexpr ElementType kLine = ElementType::Straight;
constexpr ElementType kArc = ElementType::Arc;
constexpr ElementType kClothoid = ElementType::Clothoid;

std::string tableOf(const Drawing& drawing, ReportPart part) {
    ReportOptions options;
    options.parts.fill(false);
    options.parts[static_cast<std::size_t>(part)] = true;
    std::ostringstream out;
    writeReport(drawing, options, ReportFormat::Csv, out);
    return out.str();
}

// The table of IPs of a curve between two straights.
std::string tableOfCurve(const std::vector<Piece>& curve) {
    std::vector<Piece> pieces = {{kLine, 100.0, kStraight, kStraight, false}};
    pieces.insert(pieces.end(), curve.begin(), curve.end());
    pieces.push_back({kLine, 100.0, kStraight, kStraight, false});
    Drawing drawing;
    addChain(drawing, pieces);
    return tableOf(drawing, ReportPart::Ips);
}

// The kind that it gives the curve.
std::string kindOfCurve(const std::vector<Piece>& curve) {
    const std::string table = tableOfCurve(curve);
    for (const char* kind :
         {"非対称基本形", "対称基本形", "片クロソイド", "クロソイド", "卵形", "凸形", "複合円", "単円", "折れ"}) {
        if (table.find(kind) != std::string::npos) {
            return kind;
        }
    }
    return table;
}

TEST(ReportOfIps, NamesEveryKindOfCurve) {
    EXPECT_EQ(kindOfCurve({{kArc, 40.0, 100.0, 100.0, true}}), "単円");
    EXPECT_EQ(kindOfCurve({{kArc, 40.0, 100.0, 100.0, true}, {kArc, 40.0, 60.0, 60.0, true}}), "複合円");
    EXPECT_EQ(kindOfCurve({{kClothoid, 36.0, kStraight, 100.0, true},
                           {kArc, 40.0, 100.0, 100.0, true},
                           {kClothoid, 36.0, 100.0, kStraight, true}}),
              "対称基本形");
    EXPECT_EQ(kindOfCurve({{kClothoid, 36.0, kStraight, 100.0, true},
                           {kArc, 40.0, 100.0, 100.0, true},
                           {kClothoid, 49.0, 100.0, kStraight, true}}),
              "非対称基本形");
    EXPECT_EQ(kindOfCurve({{kClothoid, 36.0, kStraight, 100.0, true}, {kArc, 40.0, 100.0, 100.0, true}}),
              "片クロソイド");
    EXPECT_EQ(kindOfCurve({{kClothoid, 36.0, kStraight, 100.0, true}, {kClothoid, 36.0, 100.0, kStraight, true}}),
              "凸形");
    EXPECT_EQ(kindOfCurve({{kClothoid, 36.0, kStraight, 100.0, true}}), "クロソイド");
    EXPECT_EQ(kindOfCurve({{kClothoid, 0.5, kStraight, 1.0, true},
                           {kArc, 0.3, 1.0, 1.0, true},
                           {kClothoid, 0.5, 1.0, kStraight, true}}),
              "対称基本形")
        << "of a parameter below a metre";
    EXPECT_EQ(kindOfCurve({{kClothoid, 36.0, kStraight, 100.0, true},
                           {kArc, 20.0, 100.0, 100.0, true},
                           {kClothoid, 20.0, 100.0, 60.0, true},
                           {kArc, 20.0, 60.0, 60.0, true},
                           {kClothoid, 36.0, 60.0, kStraight, true}}),
              "卵形");
}

// Of a clothoid that begins or ends at a radius there is no parameter to set out.
TEST(ReportOfIps, GivesAParameterWhereAClothoidComesFromOrGoesToAStraight) {
    const Piece arc = {kArc, 40.0, 100.0, 100.0, true};
    const Piece in = {kClothoid, 36.0, kStraight, 100.0, true};
    const Piece out = {kClothoid, 49.0, 100.0, kStraight, true};
    const Piece sharper = {kClothoid, 20.0, 100.0, 60.0, true};
    const Piece flatter = {kClothoid, 20.0, 60.0, 100.0, true};
    const std::pair<std::vector<Piece>, const char*> cases[] = {
        {{arc}, ",単円,100.000,,,"},
        {{arc, {kArc, 40.0, 60.0, 60.0, true}}, ",複合円,60.000,,,"},
        {{in, arc, out}, ",非対称基本形,100.000,60.000,70.000,"},
        {{in, arc}, ",片クロソイド,100.000,60.000,,"},
        {{arc, out}, ",片クロソイド,100.000,,70.000,"},
        {{in, out}, ",凸形,100.000,60.000,70.000,"},
        {{in}, ",クロソイド,100.000,60.000,,"},
        {{out}, ",クロソイド,100.000,,70.000,"},
        {{arc, sharper}, ",卵形,60.000,,,"},
        {{flatter, arc}, ",卵形,60.000,,,"},
        {{in, arc, sharper}, ",卵形,60.000,60.000,,"},
        {{flatter, arc, out}, ",卵形,60.000,,70.000,"},
    };
    for (const auto& [curve, wanted] : cases) {
        const std::string table = tableOfCurve(curve);
        EXPECT_NE(table.find(wanted), std::string::npos) << wanted << " in " << table;
    }
}

TEST(ReportOfIps, SaysWhichElementsHaveNone) {
    Drawing drawing;
    addChain(drawing, {{kLine, 100.0, kStraight, kStraight, false},
                       {kArc, 200.0, 50.0, 50.0, false},
                       {kLine, 100.0, kStraight, kStraight, false}});
    EXPECT_NE(tableOf(drawing, ReportPart::Ips).find("半円以上に回る1個の要素にはIPがない。"), std::string::npos);
}

// With its total: what does not fit below the table before begins on a page of its own.
TEST(ReportPages, ATableThatFitsOnAPageStandsOnOne) {
    for (std::size_t before = 1; before <= 20; before += 3) {
        for (std::size_t behind = 1; behind <= 20; ++behind) {
            Drawing drawing;
            addChain(drawing, std::vector<Piece>(before, {kLine, 10.0, kStraight, kStraight, false}));
            addChain(drawing, std::vector<Piece>(behind, {kLine, 10.0, kStraight, kStraight, false}));
            ReportOptions options;
            options.parts.fill(false);
            options.parts[static_cast<std::size_t>(ReportPart::MainPoints)] = true;
            const Plot plot = reportPages(drawing, options, {});
            std::size_t heads = 0;
            for (const std::string& page : plot.pages) {
                for (std::size_t at = page.find("主要点計算書"); at != std::string::npos;
                     at = page.find("主要点計算書", at + 1)) {
                    ++heads;
                }
            }
            EXPECT_EQ(heads, 2U) << before << " and " << behind;
        }
    }
}

TEST(ReportOfStations, TooManyAreLeftOutAndSaidSo) {
    Drawing drawing;
    addChain(drawing, {{kLine, 2.1e6, kStraight, kStraight, false}});
    const std::string table = tableOf(drawing, ReportPart::Intermediate);
    EXPECT_NE(table.find("中間点が多すぎるため省略。"), std::string::npos);
    EXPECT_LT(table.size(), 10'000U);
}

// Three alignments within the bound of one, but not together: the last is without its points.
TEST(ReportOfStations, TooManyOfAllAlignmentsAreLeftOutAndSaidSo) {
    Drawing drawing;
    for (int i = 0; i < 3; ++i) {
        addChain(drawing, {{kLine, 1.8e6, kStraight, kStraight, false}});
    }
    const std::string table = tableOf(drawing, ReportPart::Intermediate);
    EXPECT_NE(table.find("No.89999"), std::string::npos);
    EXPECT_NE(table.find("中間点が多すぎるため省略。"), std::string::npos);
    EXPECT_EQ(table.find("中間点が多すぎるため省略。"), table.rfind("中間点が多すぎるため省略。"));
}

TEST(LandXmlOfStations, TooManyOfAllAlignmentsAreLeftOutAndTold) {
    Drawing drawing;
    for (int i = 0; i < 3; ++i) {
        addChain(drawing, {{kLine, 1.8e6, kStraight, kStraight, false}});
    }
    drawing.setZone(9);
    std::ostringstream out;
    EXPECT_EQ(english(writeLandXmlProfile(drawing, LandXmlProfile::JLandXml, out)),
              (std::vector<std::string>{"names of the file must differ: 2 got a number behind them, as ' (2)'",
                                        "too many intermediate points: those of 1 alignment left out"}));
    const std::string text = std::move(out).str();
    EXPECT_NE(text.find("IntermediatePnt2-90001"), std::string::npos);
    EXPECT_EQ(text.find("IntermediatePnt3-1\""), std::string::npos);
}

TEST(ReportOfLots, ARingClosedByItsFirstCornerHasItOnce) {
    const std::vector<MdGePoint3d> ring = {{0, 0, 0}, {0, 8, 0}, {12, 8, 0}, {12, 0, 0}};
    Drawing open;
    addPolyline(open, ring, true, "1");
    std::vector<MdGePoint3d> again = ring;
    again.push_back(ring.front());
    Drawing closed;
    addPolyline(closed, again, true, "1");
    EXPECT_EQ(tableOf(open, ReportPart::Lots), tableOf(closed, ReportPart::Lots));
}

TEST(ReportOfLots, WhereNoDecimalReachesIsLeftOutAndCounted) {
    Drawing drawing;
    addPolyline(drawing, {{0, 0, 0}, {0, 1e30, 0}, {1e30, 0, 0}}, true, "1");
    addPolyline(drawing, {{0, 0, 0}, {0, 8, 0}, {12, 8, 0}}, true, "2");
    std::ostringstream out;
    ReportOptions options;
    const Notes notes = writeReport(drawing, options, ReportFormat::Html, out);
    ASSERT_FALSE(notes.empty());
    EXPECT_EQ(english(notes[0]), "lots with coordinates that no survey has; left out: 1");
    const report::NameAt noNames = [](double, double) { return std::string(); };
    EXPECT_FALSE(report::areaTable(drawing.entity(0), noNames, options));
    const auto table = report::areaTable(drawing.entity(1), noNames, options);
    ASSERT_TRUE(table);
    EXPECT_EQ(table->subject, "2");
    addPolyline(drawing, {{0, 0, 0}, {0, 8, 0}, {12, 8, 0}}, false, "3");
    EXPECT_FALSE(report::areaTable(drawing.entity(2), noNames, options)) << "an open line is no lot";
}

TEST(ReportOfLots, WhatHasNoRingIsToldToHaveNoTable) {
    Drawing drawing;
    const std::vector<MdGePoint3d> corners = {{0, 0, 0}, {0, 8, 0}, {12, 8, 0}};
    addPolyline(drawing, corners, true, "1");
    addPolyline(drawing, corners, false, "2");
    addPolyline(drawing, {{0, 0, 0}, {0, 8, 0}}, true, "3");
    addPolyline(drawing, corners, false, "左", "幅杭線左");
    std::ostringstream out;
    ReportOptions options;
    EXPECT_EQ(english(writeReport(drawing, options, ReportFormat::Csv, out)),
              (std::vector<std::string>{
                  "lots that are not closed or have fewer than three points; without an area table: 2"}));
    options.parts[static_cast<std::size_t>(ReportPart::Lots)] = false;
    EXPECT_TRUE(writeReport(drawing, options, ReportFormat::Csv, out).empty());
}

TEST(Report, OfNothingSaysSo) {
    Drawing drawing;
    std::ostringstream out;
    ReportOptions options;
    options.parts[static_cast<std::size_t>(ReportPart::Summary)] = false;
    writeReport(drawing, options, ReportFormat::Html, out);
    EXPECT_NE(out.str().find("図面に成果がありません。"), std::string::npos);
    EXPECT_NE(whyNot(reportPages(drawing, options, {})), "");
}

// Where a figure is taller than what is left of a page, or the page narrower than rows and figure together.
TEST(ReportPages, NoFigureAndNoTotalIsLost) {
    for (const bool upright : {false, true}) {
        for (const char* paper : {"A4", "A3"}) {
            // Within a page, just over it with the sums, and over several.
            for (const int corners : {3, 20, 26, 27, 28, 29, 30, 31, 45, 46, 47, 48, 49, 50, 51, 120}) {
                Drawing drawing;
                for (int lot = 0; lot < 3; ++lot) {
                    std::vector<MdGePoint3d> ring;
                    for (int i = 0; i < corners; ++i) {
                        const double angle = 6.283185307179586 * i / corners;
                        ring.push_back({100.0 * lot + 40.0 * std::sin(angle), 40.0 * std::cos(angle), 0.0});
                    }
                    addPolyline(drawing, ring, true, std::to_string(lot + 1).c_str());
                }
                ReportOptions report;
                report.parts.fill(false);
                report.parts[static_cast<std::size_t>(ReportPart::Lots)] = true;
                PlotOptions options;
                options.paper = paper;
                options.upright = upright;
                const Plot plot = reportPages(drawing, report, options);
                ASSERT_FALSE(plot.failure);
                std::size_t rows = 0;
                std::size_t figures = 0;
                for (const std::string& page : plot.pages) {
                    for (std::size_t at = page.find("translate("); at != std::string::npos;
                         at = page.find("translate(", at + 1)) {
                        ++figures;
                    }
                    for (std::size_t at = page.find("倍面積"); at != std::string::npos;
                         at = page.find("倍面積", at + 1)) {
                        ++rows;
                    }
                }
                EXPECT_GE(figures, 3U) << paper << " " << corners;
                EXPECT_EQ(rows, 3U) << paper << " " << corners;
            }
        }
    }
}

// Names so long that rows and figure have no room side by side.
TEST(ReportPages, AFigureGoesBelowRowsThatAreWide) {
    for (const int corners : {3, 60}) {
        Drawing drawing;
        std::vector<MdGePoint3d> ring;
        for (int i = 0; i < corners; ++i) {
            const double angle = 6.283185307179586 * i / corners;
            ring.push_back({40.0 * std::sin(angle), 40.0 * std::cos(angle), 0.0});
            addPoint(drawing, ring.back(), std::string(100, 'W').c_str());
        }
        addPolyline(drawing, ring, true, "1");
        ReportOptions report;
        report.parts.fill(false);
        report.parts[static_cast<std::size_t>(ReportPart::Lots)] = true;
        PlotOptions options;
        options.upright = true;
        const Plot plot = reportPages(drawing, report, options);
        ASSERT_FALSE(plot.failure);
        const std::string& last = plot.pages.back();
        EXPECT_NE(last.find("translate(12 "), std::string::npos) << "at the left margin";
        const bool besideTheSums = last.find("地積") != std::string::npos;
        EXPECT_EQ(besideTheSums, corners == 3) << "the figure has a page of its own where the rows fill theirs";
    }
}

TEST(ReportPages, MoreThanAnybodyPrintsAreRefused) {
    Drawing drawing;
    addPoint(drawing, {1.0, 2.0, 0.0}, "P");
    ReportOptions report;
    report.parts.fill(false);
    report.parts[static_cast<std::size_t>(ReportPart::Summary)] = true;
    report.logs.assign(150'000, ""); // a small table for each
    EXPECT_NE(whyNot(reportPages(drawing, report, {})).find("20000"), std::string::npos);
}

TEST(Plots, SayWhyThereIsNone) {
    Drawing drawing;
    addChain(drawing, {});
    EXPECT_NE(whyNot(plotAlong(drawing, 0, {})), "");
    Drawing road;
    addChain(road, {{kLine, 1e6, kStraight, kStraight, false}});
    PlotOptions options;
    options.scale = 1;
    EXPECT_NE(whyNot(plotAlong(road, 0, options)), "") << "more sheets than anybody prints";
    for (const char* paper : {"A0", "A4"}) {
        EXPECT_TRUE(isPaper(paper));
    }
    for (const char* paper : {"", "A", "A5", "B4", "A40", "a4"}) {
        EXPECT_FALSE(isPaper(paper)) << paper;
    }
}

TEST(KmlNotes, PlacesThatNoZoneHoldsAreCounted) {
    Drawing drawing;
    drawing.setZone(9);
    addPoint(drawing, {0.0, 0.0, 0.0}, "NEAR");
    addPoint(drawing, {4.0e6, 0.0, 0.0}, "FAR");
    std::ostringstream out;
    const Notes notes = writeKml(drawing, {}, out);
    ASSERT_EQ(notes.size(), 1U);
    EXPECT_EQ(english(notes[0]), "too far from the zone's origin for a longitude; left out: 1 object");
    const std::string text = out.str();
    const std::size_t first = text.find("<coordinates>");
    ASSERT_NE(first, std::string::npos);
    EXPECT_EQ(text.find("<coordinates>", first + 1), std::string::npos) << "the far one has its row and no place";
}

} // namespace
} // namespace fenmark::exchange
