// Station equations from the names of longitudinal results.
#include "exchange/named_stations.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace fenmark::exchange {
namespace {

using Named = std::vector<std::pair<double, std::string>>; // station, name

std::vector<curve::StationEquation> equationsOf(const Named& named, double startStation = 0.0) {
    AlignmentResults results;
    for (const auto& [station, name] : named) {
        results.longitudinal.push_back({station, 0.0, name});
    }
    return stationEquationsOf(results, startStation);
}

TEST(NamedStations, ProveNoEquationWhereNamesAndDistancesAgree) {
    EXPECT_TRUE(equationsOf({{0.0, "No.0"}, {20.0, "No.1"}, {33.25, "No.1+13.25"}, {40.0, "No.2"}}).empty());
    EXPECT_TRUE(equationsOf({}).empty());
}

TEST(NamedStations, TellALongAndAShortJump) {
    const auto equations =
        equationsOf({{0.0, "No.0"}, {20.0, "No.1"}, {35.0, "No.2"}, {55.0, "No.3"}, {80.0, "No.4"}, {100.0, "No.5"}});
    ASSERT_EQ(equations.size(), 2U);
    EXPECT_EQ(equations[0].distance, 35.0);
    EXPECT_EQ(equations[0].ahead, 40.0);
    EXPECT_EQ(equations[1].distance, 80.0);
    EXPECT_EQ(equations[1].ahead, 80.0);
}

TEST(NamedStations, CountFromTheAlignmentsStart) {
    EXPECT_TRUE(equationsOf({{1000.0, "1k000"}, {1020.0, "1k020"}}, 1000.0).empty());
    const auto equations = equationsOf({{0.0, "No.10"}, {20.0, "No.11"}});
    ASSERT_EQ(equations.size(), 1U);
    EXPECT_EQ(equations[0].distance, 0.0);
    EXPECT_EQ(equations[0].ahead, 200.0);
}

TEST(NamedStations, FindThePitchOfThePegs) {
    EXPECT_TRUE(equationsOf({{0.0, "No.0"}, {100.0, "No.1"}, {140.0, "No.1+40"}, {200.0, "No.2"}}).empty());
    EXPECT_TRUE(equationsOf({{0.0, "No.0"}, {50.0, "No.1"}, {100.0, "No.2"}}).empty());
}

// Here 20 m are borne out by the first two, 100 m by the last two.
TEST(NamedStations, AreCountedInTheUsualPitchWhereAnotherExplainsAsMany) {
    EXPECT_TRUE(equationsOf({{0.0, "No.0"}, {20.0, "No.1"}, {500.0, "No.10"}, {600.0, "No.11"}}).empty());
    EXPECT_EQ(equationsOf({{0.0, "No.0"}, {100.0, "No.10"}, {200.0, "No.11"}}).size(), 1U);
}

TEST(NamedStations, AreReadInFullWidthToo) {
    const auto equations = equationsOf({{0.0, "Ｎｏ．０"},
                                        {20.0, "ＮＯ．１"},
                                        {35.0, "Ｎｏ．１＋２０．０"},
                                        {50.0, "ｎｏ．２－５＋２０"},
                                        {55.0, "Ｎｏ．３"}});
    ASSERT_EQ(equations.size(), 1U);
    EXPECT_EQ(equations[0].distance, 35.0);
    EXPECT_EQ(equations[0].ahead, 40.0);
}

TEST(NamedStations, MayDifferFromTheDistanceByACentimetre) {
    for (const double side : {-1.0, 1.0}) {
        const auto countOf = [side](double off) {
            return equationsOf({{0.0, "No.0"},
                                {20.0, "No.1"},
                                {40.0 + side * off, "No.2"},
                                {60.0 + side * off, "No.3"},
                                {80.0 + side * off, "No.4"}})
                .size();
        };
        EXPECT_EQ(countOf(0.0099), 0U) << side;
        EXPECT_EQ(countOf(0.0101), 1U) << side;
    }
}

TEST(NamedStations, LeaveOutWhatIsNoStation) {
    // Points by number, main points, and one slip of the pen.
    EXPECT_TRUE(equationsOf({{0.0, "1"}, {20.0, "2"}, {40.0, "3"}}).empty());
    EXPECT_TRUE(equationsOf({{0.0, "No.0"}, {12.0, "KA1-1"}, {20.0, "No.1"}, {40.0, "No.2"}, {45.0, "BC.1"}}).empty());
    EXPECT_TRUE(equationsOf({{0.0, "No.0"}, {20.0, "No.1"}, {40.0, "No.22"}, {60.0, "No.3"}, {80.0, "No.4"}}).empty());
}

TEST(NamedStations, TakeTheFirstOfResultsAtAWall) {
    EXPECT_TRUE(equationsOf({{0.0, "No.0"}, {20.0, "No.1"}, {20.5, "No.1"}, {21.0, "No.1"}, {40.0, "No.2"}}).empty());
}

TEST(NamedStations, ProveNothingWhereTheyHardlyAgree) {
    EXPECT_TRUE(equationsOf({{3.0, "No.7"}, {20.0, "No.1"}, {31.0, "No.9"}, {70.0, "No.5"}, {75.0, "No.5+5"}}).empty());
}

} // namespace
} // namespace fenmark::exchange
