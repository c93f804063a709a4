// Main points, IPs and stakes of an alignment.
#include "exchange/formats.h"
#include "exchange/main_points.h"
#include "exchange/report/report.h"
#include "exchange/stakes.h"
#include "sample_drawing.h"
#include "sima/text/cp932.h"
#include "worded_notes.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace fenmark::exchange {
namespace {

constexpr double kMetres = 1e-9;

std::vector<std::string> namesOf(const Drawing& drawing, MainPointNames habit) {
    std::vector<std::string> names;
    for (const MainPoint& point : mainPointsOf(drawing.alignment(0), habit)) {
        names.push_back(point.name);
    }
    return names;
}

using Names = std::vector<std::string>;

TEST(Stakes, NamesTellOffsetsApartHoweverSmall) {
    Drawing drawing;
    addRoad(drawing, {0.0, 0.0}, true);
    StakeOptions options;
    options.every = 0.0;
    options.stations = {120.0};
    options.offsets = {0.0001, 0.0004, -2.5, -0.0001, 0.0, 100.0, -2.5, -0.0};
    Names names;
    for (const Stake& stake : stakesOf(drawing, 0, options).stakes) {
        names.push_back(stake.name);
    }
    EXPECT_EQ(names, (Names{"No.6右0.0001", "No.6右0.0004", "No.6左2.5", "No.6左0.0001", "No.6", "No.6右100"}));
}

TEST(Stakes, AnEmptyResultSaysWhy) {
    Drawing drawing;
    addChain(drawing, {{ElementType::Straight, 10.0, kStraight, kStraight, false}});
    drawing.setStartStation(0, 5.0);
    StakeOptions options;
    const Stakes none = stakesOf(drawing, 0, options);
    EXPECT_TRUE(none.stakes.empty());
    EXPECT_FALSE(none.failure);
    ASSERT_TRUE(none.note);
    EXPECT_EQ(english(*none.note), "no stake: no multiple of 20 m lies from 5.000 to 15.000");
    options.every = 0.0;
    EXPECT_EQ(english(stakesOf(drawing, 0, options).note.value_or(Note{})), "no stake: none was asked for");
    options.every = 10.0;
    EXPECT_EQ(stakesOf(drawing, 0, options).note, std::nullopt);
}

// A file may hold any start station. Where adding 1 to the count of a station is lost, counting went on until the memory
// was gone.
TEST(Stakes, AStartStationBeyondAllCountsGivesNoRoundStations) {
    for (const double start : {1e18, -1e18, 1e300}) {
        Drawing drawing;
        addRoad(drawing, {0.0, 0.0}, true);
        drawing.setStartStation(0, start);
        const Stakes none = stakesOf(drawing, 0, StakeOptions());
        EXPECT_TRUE(none.stakes.empty()) << start;
        EXPECT_TRUE(none.note || none.failure) << start;
        StakeOptions tiny;
        tiny.every = 1e-3;
        EXPECT_TRUE(stakesOf(drawing, 0, tiny).stakes.empty()) << start;
        drawing.setZone(9);
        for (const Format& format : formats()) {
            std::ostringstream out;
            ExportOptions options;
            options.landXmlProfile = LandXmlProfile::JLandXml;
            format.write(drawing, options, out);
            EXPECT_LT(out.str().size(), 1'000'000U) << format.extension << " from " << start;
        }
        std::ostringstream report;
        writeReport(drawing, {}, ReportFormat::Html, report);
        EXPECT_LT(report.str().size(), 1'000'000U) << start;
    }
    Drawing drawing;
    addRoad(drawing, {0.0, 0.0}, true);
    drawing.setStartStation(0, 1e9);
    EXPECT_FALSE(stakesOf(drawing, 0, StakeOptions()).stakes.empty()) << "far, but counted";
}

// An end that is a round station but for rounding, by a billionth of a count, has its stake.
TEST(Stakes, RoundStationsBeginAndEndWithTheAlignmentButForRounding) {
    for (const double beyond : {0.9e-9, 1.1e-9}) {
        const bool has = beyond < 1e-9;
        Drawing drawing;
        const std::size_t road = drawing.addAlignment(drawing.addSite("S"), "L", "0", "", "");
        Element straight;
        straight.length = 100.0 - 2.0 * 20.0 * beyond;
        straight.end = {straight.length, 0.0};
        drawing.addElement(road, straight);
        drawing.setStartStation(road, 20.0 * (5.0 + beyond)); // and the end as much before 200 m
        drawing.setZone(9);
        EXPECT_EQ(stakesOf(drawing, road, StakeOptions()).stakes.size(), has ? 6U : 4U) << beyond;
        std::ostringstream out;
        ExportOptions options;
        options.landXmlProfile = LandXmlProfile::JLandXml;
        formatOf("a.xml")->write(drawing, options, out);
        const std::string xml = std::move(out).str();
        EXPECT_EQ(xml.find("name=\"No.5\"") != std::string::npos, has) << xml;
    }
}

TEST(Stakes, NoMoreThanTheLimitWhateverAsksForThem) {
    Drawing drawing;
    addRoad(drawing, {0.0, 0.0}, true);
    StakeOptions options;
    options.every = 0.0;
    options.stations.assign(1001, 120.0);
    options.offsets.assign(1000, 1.0);
    EXPECT_NE(whyNot(stakesOf(drawing, 0, options)).find("more than 1000000 stakes"), std::string::npos);
}

// Where curves meet without a straight between, the first one names the joint.
TEST(MainPoints, OfCurvesThatMeetAreThoseOfTheFirst) {
    constexpr ElementType kLine = ElementType::Straight;
    constexpr ElementType kArc = ElementType::Arc;
    constexpr ElementType kClothoid = ElementType::Clothoid;
    const Piece straight{kLine, 100.0, kStraight, kStraight, false};
    Drawing reversed;
    addChain(reversed, {straight, {kArc, 40.0, 100.0, 100.0, true}, {kArc, 40.0, 100.0, 100.0, false}, straight});
    EXPECT_EQ(namesOf(reversed, MainPointNames::Ka), (Names{"BP", "BC1", "SP1", "EC1", "SP2", "EC2", "EP"}));
    // Out of an arc into a clothoid that begins straight: two curves, though both turn the same way.
    Drawing broken;
    addChain(broken, {straight, {kArc, 40.0, 100.0, 100.0, true}, {kClothoid, 36.0, kStraight, 100.0, true}, straight});
    EXPECT_EQ(namesOf(broken, MainPointNames::Ka), (Names{"BP", "BC1", "SP1", "EC1", "KE2-1", "EP"}));
    // The arc comes first: its beginning has no clothoid to be named by.
    Drawing leaving;
    addChain(leaving,
             {straight, {kArc, 40.0, 100.0, 100.0, true}, {kClothoid, 36.0, 100.0, kStraight, true}, straight});
    EXPECT_EQ(namesOf(leaving, MainPointNames::Ka), (Names{"BP", "BC1", "KE1-1", "KA1-1", "EP"}));
    Drawing entering;
    addChain(entering,
             {straight, {kClothoid, 36.0, kStraight, 100.0, true}, {kArc, 40.0, 100.0, 100.0, true}, straight});
    EXPECT_EQ(namesOf(entering, MainPointNames::Ka), (Names{"BP", "KA1-1", "KE1-1", "EC1", "EP"}));
}

TEST(MainPoints, OfNearlyNoTurnHaveNoIp) {
    Drawing drawing;
    addChain(drawing, {{ElementType::Straight, 100.0, kStraight, kStraight, false},
                       {ElementType::Arc, 1.0, 1e12, 1e12, true},
                       {ElementType::Straight, 100.0, kStraight, kStraight, false}});
    std::size_t without = 0;
    const std::vector<Ip> ips = ipsOf(drawing.alignment(0), MainPointNames::Btc, without);
    EXPECT_EQ(ips.size(), 2U) << "BP and EP";
    EXPECT_EQ(without, 1U);
    Drawing none;
    addChain(none, {});
    EXPECT_TRUE(mainPointsOf(none.alignment(0), MainPointNames::Ka).empty());
    EXPECT_TRUE(ipsOf(none.alignment(0), MainPointNames::Ka, without).empty());
}

TEST(MainPoints, OfAClothoidCurveHaveBothHabits) {
    Drawing drawing;
    addRoad(drawing, {0.0, 0.0}, true);
    EXPECT_EQ(namesOf(drawing, MainPointNames::Ka), (Names{"BP", "KA1-1", "KE1-1", "KE1-2", "KA1-2", "EP"}));
    EXPECT_EQ(namesOf(drawing, MainPointNames::Btc), (Names{"BP", "BTC1", "BC1", "EC1", "ETC1", "EP"}));
    const auto points = mainPointsOf(drawing.alignment(0), MainPointNames::Ka);
    EXPECT_DOUBLE_EQ(points[2].station, 186.0);
    EXPECT_NEAR(points[2].pose.direction, -0.18, kMetres);
}

TEST(MainPoints, OfAPlainArcHaveItsMiddle) {
    Drawing drawing;
    addChain(drawing, {{ElementType::Straight, 10.0, kStraight, kStraight, false},
                       {ElementType::Arc, 30.0, 50.0, 50.0, false},
                       {ElementType::Straight, 10.0, kStraight, kStraight, false}});
    for (const MainPointNames habit : {MainPointNames::Ka, MainPointNames::Btc}) {
        EXPECT_EQ(namesOf(drawing, habit), (Names{"BP", "BC1", "SP1", "EC1", "EP"}));
    }
    EXPECT_DOUBLE_EQ(mainPointsOf(drawing.alignment(0), MainPointNames::Ka)[2].station, 25.0);
}

TEST(MainPoints, OfCompoundArcsAreNumberedBetween) {
    Drawing drawing;
    addChain(drawing, {{ElementType::Straight, 10.0, kStraight, kStraight, false},
                       {ElementType::Arc, 10.0, 80.0, 80.0, false},
                       {ElementType::Arc, 10.0, 50.0, 50.0, false},
                       {ElementType::Arc, 10.0, 80.0, 80.0, false},
                       {ElementType::Straight, 10.0, kStraight, kStraight, false}});
    EXPECT_EQ(namesOf(drawing, MainPointNames::Btc), (Names{"BP", "BC1", "PCC1-1", "PCC1-2", "EC1", "EP"}));
    EXPECT_EQ(namesOf(drawing, MainPointNames::Ka), (Names{"BP", "BC1", "PCC1-1", "PCC1-2", "EC1", "EP"}));
}

TEST(MainPoints, OfClothoidsAloneMeetInOnePoint) {
    Drawing drawing;
    addChain(drawing, {{ElementType::Straight, 10.0, kStraight, kStraight, false},
                       {ElementType::Clothoid, 20.0, kStraight, 100.0, true},
                       {ElementType::Clothoid, 20.0, 100.0, kStraight, true},
                       {ElementType::Straight, 10.0, kStraight, kStraight, false}});
    EXPECT_EQ(namesOf(drawing, MainPointNames::Btc), (Names{"BP", "BTC1", "PCC1-1", "ETC1", "EP"}));
    EXPECT_EQ(namesOf(drawing, MainPointNames::Ka), (Names{"BP", "KA1-1", "KE1-1", "KA1-2", "EP"}));
}

TEST(MainPoints, OfAClothoidAtOneEndAlone) {
    Drawing entering;
    addChain(entering, {{ElementType::Straight, 10.0, kStraight, kStraight, false},
                        {ElementType::Clothoid, 20.0, kStraight, 100.0, true},
                        {ElementType::Arc, 20.0, 100.0, 100.0, true},
                        {ElementType::Straight, 10.0, kStraight, kStraight, false}});
    EXPECT_EQ(namesOf(entering, MainPointNames::Btc), (Names{"BP", "BTC1", "BC1", "EC1", "EP"}));
    Drawing leaving;
    addChain(leaving, {{ElementType::Straight, 10.0, kStraight, kStraight, false},
                       {ElementType::Arc, 20.0, 100.0, 100.0, true},
                       {ElementType::Clothoid, 20.0, 100.0, kStraight, true},
                       {ElementType::Straight, 10.0, kStraight, kStraight, false}});
    EXPECT_EQ(namesOf(leaving, MainPointNames::Btc), (Names{"BP", "BC1", "EC1", "ETC1", "EP"}));
    Drawing alone; // that ends in the curve
    addChain(alone, {{ElementType::Straight, 10.0, kStraight, kStraight, false},
                     {ElementType::Clothoid, 20.0, kStraight, 100.0, true},
                     {ElementType::Straight, 10.0, kStraight, kStraight, false}});
    EXPECT_EQ(namesOf(alone, MainPointNames::Btc), (Names{"BP", "BTC1", "ETC1", "EP"}));
}

TEST(MainPoints, OfNoElementsAreNone) {
    Drawing drawing;
    addChain(drawing, {});
    EXPECT_TRUE(namesOf(drawing, MainPointNames::Ka).empty());
    std::size_t withoutIp = 0;
    EXPECT_TRUE(ipsOf(drawing.alignment(0), MainPointNames::Ka, withoutIp).empty());
    EXPECT_NE(whyNot(stakesOf(drawing, 0, {})), "");
}

TEST(Ips, OfACurveOfHalfACircleAreThoseOfItsElements) {
    Drawing drawing;
    addChain(drawing, {{ElementType::Straight, 10.0, kStraight, kStraight, false},
                       {ElementType::Arc, 100.0, 50.0, 50.0, false},
                       {ElementType::Arc, 90.0, 45.0, 45.0, false},
                       {ElementType::Arc, 150.0, 40.0, 40.0, false},
                       {ElementType::Straight, 10.0, kStraight, kStraight, false}});
    std::size_t withoutIp = 0;
    const auto ips = ipsOf(drawing.alignment(0), MainPointNames::Ka, withoutIp);
    EXPECT_EQ(withoutIp, 1U) << "the last arc turns by more than half a circle on its own";
    ASSERT_EQ(ips.size(), 4U);
    EXPECT_NEAR(ips[1].turn.value_or(0.0), 2.0, kMetres);
    EXPECT_NEAR(ips[1].tangentBefore.value_or(0.0), 50.0 * std::tan(1.0), 1e-6);
    EXPECT_NEAR(ips[2].tangentBefore.value_or(0.0), 45.0 * std::tan(1.0), 1e-6);
}

TEST(Clothoids, HaveAParameterUnlessTheirCurvatureStaysTheSame) {
    Element clothoid;
    clothoid.type = ElementType::Clothoid;
    clothoid.length = 20.0;
    const std::pair<std::pair<double, double>, double> radii[] = {{{kStraight, 100.0}, std::sqrt(2000.0)},
                                                                  {{100.0, kStraight}, std::sqrt(2000.0)},
                                                                  {{100.0, 50.0}, std::sqrt(2000.0)},
                                                                  {{100.0, 100.0}, 0.0},
                                                                  {{kStraight, kStraight}, 0.0}};
    for (const auto& [radius, parameter] : radii) {
        for (const bool clockwise : {false, true}) {
            clothoid.clockwise = clockwise;
            clothoid.startRadius = radius.first;
            clothoid.endRadius = radius.second;
            EXPECT_NEAR(parameterOf(clothoid), parameter, kMetres);
        }
    }
}

// However the alignment lies and however small it is.
TEST(Ips, LieWhereTheTangentsMeetInEveryDirection) {
    for (const double size : {1000.0, 1.0, 0.01}) {
        for (int i = 0; i < 16; ++i) {
            for (const bool clockwise : {false, true}) {
                Element begin;
                begin.direction = 0.1 + i * 0.3926990816987242;
                begin.end = {3.0 * size, 4.0 * size};
                const Element first = following(begin, ElementType::Straight, size, kStraight, kStraight, false);
                const Element arc = following(first, ElementType::Arc, 2.0 * size, size, size, clockwise);
                const Element last = following(arc, ElementType::Straight, size, kStraight, kStraight, false);
                Drawing drawing;
                const std::size_t road = drawing.addAlignment(drawing.addSite("サイト"), "線", "0", "", "");
                for (const Element& element : {first, arc, last}) {
                    drawing.addElement(road, element);
                }
                std::size_t withoutIp = 0;
                const auto ips = ipsOf(drawing.alignment(road), MainPointNames::Ka, withoutIp);
                EXPECT_EQ(withoutIp, 0U) << size << ' ' << i;
                ASSERT_EQ(ips.size(), 3U) << size << ' ' << i;
                const double ahead = size * (1.0 + std::tan(1.0)); // from the beginning
                EXPECT_NEAR(ips[1].point.x, 3.0 * size + ahead * std::cos(begin.direction), 1e-9 * size);
                EXPECT_NEAR(ips[1].point.y, 4.0 * size + ahead * std::sin(begin.direction), 1e-9 * size);
            }
        }
    }
}

TEST(MainPoints, OfAnEggCountOnAndOfAnSAreNamedByTheFirstCurve) {
    Drawing egg;
    addChain(egg, {{ElementType::Straight, 10.0, kStraight, kStraight, false},
                   {ElementType::Clothoid, 20.0, kStraight, 100.0, true},
                   {ElementType::Arc, 20.0, 100.0, 100.0, true},
                   {ElementType::Clothoid, 20.0, 100.0, 50.0, true},
                   {ElementType::Arc, 20.0, 50.0, 50.0, true},
                   {ElementType::Clothoid, 20.0, 50.0, kStraight, true},
                   {ElementType::Straight, 10.0, kStraight, kStraight, false}});
    EXPECT_EQ(namesOf(egg, MainPointNames::Ka),
              (Names{"BP", "KA1-1", "KE1-1", "KEE1-2", "KEE1-3", "KE1-4", "KA1-4", "EP"}));
    Drawing s;
    addChain(s, {{ElementType::Clothoid, 20.0, kStraight, 100.0, true},
                 {ElementType::Arc, 20.0, 100.0, 100.0, true},
                 {ElementType::Clothoid, 20.0, 100.0, kStraight, true},
                 {ElementType::Clothoid, 20.0, kStraight, 80.0, false},
                 {ElementType::Arc, 20.0, 80.0, 80.0, false},
                 {ElementType::Clothoid, 20.0, 80.0, kStraight, false}});
    EXPECT_EQ(namesOf(s, MainPointNames::Ka), (Names{"BP", "KE1-1", "KE1-2", "KA1-2", "KE2-1", "KE2-2", "EP"}));
    std::size_t without = 0;
    EXPECT_EQ(ipsOf(s.alignment(0), MainPointNames::Ka, without).size(), 4U) << "two curves, two IPs";
}

TEST(Ips, TellTurnTangentsAndParameters) {
    Drawing drawing;
    addRoad(drawing, {0.0, 0.0}, false);
    std::size_t without = 0;
    const auto ips = ipsOf(drawing.alignment(0), MainPointNames::Ka, without);
    ASSERT_EQ(ips.size(), 3U);
    EXPECT_EQ(without, 0U);
    EXPECT_NEAR(ips[1].turn.value(), 0.18 + 0.4 + 0.18, kMetres);
    EXPECT_DOUBLE_EQ(ips[1].radius, 100.0);
    EXPECT_NEAR(ips[1].a1, 60.0, kMetres);
    EXPECT_NEAR(ips[1].a2, 60.0, kMetres);
    EXPECT_NEAR(ips[1].tangentBefore.value(), ips[1].point.x - 50.0, kMetres);
    EXPECT_NEAR(ips[1].tangentBefore.value(), ips[1].tangentBehind.value(), 1e-6) << "a symmetric curve";
    EXPECT_NEAR(ips[1].point.y, 0.0, kMetres);
}

TEST(Ips, OfAHairpinBelongToItsElements) {
    Drawing drawing;
    addChain(drawing, {{ElementType::Clothoid, 40.0, kStraight, 20.0, false},
                       {ElementType::Arc, 50.0, 20.0, 20.0, false},
                       {ElementType::Clothoid, 40.0, 20.0, kStraight, false}});
    std::size_t without = 0;
    EXPECT_EQ(ipsOf(drawing.alignment(0), MainPointNames::Ka, without).size(), 5U);
    EXPECT_EQ(without, 0U);
    Drawing loop;
    addChain(loop, {{ElementType::Arc, 70.0, 20.0, 20.0, true}}); // turns 3.5 radians
    EXPECT_EQ(ipsOf(loop.alignment(0), MainPointNames::Ka, without).size(), 2U);
    EXPECT_EQ(without, 1U);
}

Stakes stakesAlong(const Drawing& drawing, const StakeOptions& options) {
    return stakesOf(drawing, 0, options);
}

TEST(Stakes, StandOnThePitchWithNamesAndDirections) {
    Drawing drawing;
    addRoad(drawing, {12000.0, -36000.0}, true);
    StakeOptions options;
    options.offsets = {-5.0, 0.0, 2.5};
    const Stakes stakes = stakesAlong(drawing, options);
    ASSERT_EQ(stakes.stakes.size(), 30U) << whyNot(stakes); // No.5 to No.14, three each
    const Stake& left = stakes.stakes[3];
    EXPECT_EQ(left.name, "No.6左5");
    EXPECT_EQ(left.stationName, "No.6");
    EXPECT_NEAR(left.point.x, 12020.0, kMetres);
    EXPECT_NEAR(left.point.y, -35995.0, kMetres) << "left of an eastward road is north";
    EXPECT_EQ(stakes.stakes[5].name, "No.6右2.5");
    EXPECT_NEAR(stakes.stakes[5].point.y, -36002.5, kMetres);
    EXPECT_NEAR(left.tangent, std::numbers::pi / 2.0, kMetres);
    EXPECT_NEAR(left.cross, std::numbers::pi, kMetres) << "to the right: south";
}

TEST(Stakes, MainPointsTakeThePlaceOfStations) {
    Drawing drawing;
    addRoad(drawing, {0.0, 0.0}, true);
    StakeOptions options;
    options.every = 50.0;
    options.mainPoints = true;
    std::string names;
    for (const Stake& stake : stakesAlong(drawing, options).stakes) {
        names += stake.name + " ";
    }
    EXPECT_EQ(names, "BP KA1-1 KE1-1 No.10 KE1-2 No.12+10.000 KA1-2 EP ");
}

TEST(Stakes, OutsideTheAlignmentAreAnError) {
    Drawing drawing;
    addRoad(drawing, {0.0, 0.0}, true);
    StakeOptions options;
    options.every = 0.0;
    options.stations = {99.9};
    EXPECT_EQ(whyNot(stakesAlong(drawing, options)),
              "station 99.900 lies outside the alignment: it runs from 100.000 to 292.000");
    options.stations.clear();
    options.every = 1e-6;
    EXPECT_NE(whyNot(stakesAlong(drawing, options)).find("more than"), std::string::npos);
}

TEST(Stakes, MainPointsCountAmongThoseThatAreTooMany) {
    Drawing drawing;
    addRoad(drawing, {0.0, 0.0}, true);
    StakeOptions options;
    options.every = 0.0;
    options.mainPoints = true;
    options.offsets.clear();
    for (std::size_t i = 0; i <= kMostStakes / 6; ++i) { // of six main points
        options.offsets.push_back(static_cast<double>(i) * 1e-3);
    }
    EXPECT_EQ(stakesAlong(drawing, options).failure, (Obstacle{ObstacleCode::TooManyStakes, kMostStakes}));
    options.offsets.resize(1000);
    EXPECT_EQ(stakesAlong(drawing, options).stakes.size(), 6000U);
}

std::string written(const Stakes& stakes, StakeFormat format) {
    std::ostringstream out;
    writeStakes(stakes, format, out);
    return out.str();
}

Stakes oneStake(const char* alignment = "線") {
    Drawing drawing;
    addRoad(drawing, {12000.0, -36000.0}, true, alignment);
    StakeOptions options;
    options.every = 0.0;
    options.stations = {105.5};
    options.offsets = {-2.0};
    return stakesOf(drawing, 0, options);
}

TEST(StakeFormats, TableStandsInColumns) {
    EXPECT_EQ(written(oneStake(), StakeFormat::Table),
              "点名           追加距離    離れ           X          Y  測点        接線方向角  横断方向角\n"
              "No.5+5.500左2   105.500  -2.000  -35998.000  12005.500  No.5+5.500   90°00′00″  180°00′00″\n");
}

TEST(StakeFormats, CsvHasTheSameColumns) {
    EXPECT_EQ(written(oneStake(), StakeFormat::Csv),
              "\xEF\xBB\xBF点名,追加距離,離れ,X,Y,測点,接線方向角,横断方向角\r\n"
              "No.5+5.500左2,105.500,-2.000,-35998.000,12005.500,No.5+5.500,90°00′00″,180°00′00″\r\n");
}

TEST(StakeFormats, JsonHasFullDigitsAndEastFirst) {
    const auto json = nlohmann::json::parse(written(oneStake("a\"\\\x01"), StakeFormat::Json));
    EXPECT_EQ(json["alignment"], "a\"\\\x01");
    const auto& stake = json["stakes"].at(0);
    EXPECT_EQ(stake["name"], "No.5+5.500左2");
    EXPECT_EQ(stake["station"], 105.5);
    EXPECT_EQ(stake["x"], 12005.5);
    EXPECT_NEAR(stake["y"].get<double>(), -35998.0, kMetres);
    EXPECT_NEAR(stake["tangent"].get<double>(), 90.0, kMetres);
    EXPECT_NEAR(stake["cross"].get<double>(), 180.0, kMetres);
}

TEST(StakeFormats, SimaIsInColumnsOfTheCodePage) {
    std::string expected;
    sima::encodeCp932(expected, "A00,\r\nA01,    1,No.5+5.500左2       ,    -35998.000,     12005.500,,\r\nA99,\r\n");
    const std::string text = written(oneStake("線,\r\n1"), StakeFormat::Sima);
    EXPECT_EQ(text.substr(text.find("A00")), expected);
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 5) << "a name breaks no line";
}

} // namespace
} // namespace fenmark::exchange
