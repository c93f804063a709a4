// Moving the results of vertical walls apart.
#include "output/wall_shift.h"
#include "values/array.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <random>
#include <vector>

namespace fenmark {
namespace {

using Reals = sima::Array<double>;

std::vector<double> shifted(std::vector<double> stations, double distance) {
    output::shiftStations(stations, distance);
    return stations;
}

TEST(StationShift, RunKeepsItsFirstAndSpreadsTheOthers) {
    EXPECT_EQ(shifted({10.0, 10.0, 10.0, 20.0}, 0.5), (std::vector<double>{10.0, 10.5, 11.0, 20.0}));
}

TEST(StationShift, OnlyAdjacentRecordsFormARun) {
    EXPECT_EQ(shifted({10.0, 20.0, 10.0}, 0.5), (std::vector<double>{10.0, 20.0, 10.0}));
}

TEST(StationShift, OnlyExactEqualityCounts) {
    const double almost = std::nextafter(10.0, 11.0);
    EXPECT_EQ(shifted({10.0, almost}, 0.5), (std::vector<double>{10.0, almost}));
}

TEST(StationShift, RunAtTheEndOfTheListIsSpreadToo) {
    EXPECT_EQ(shifted({5.0, 10.0, 10.0}, 0.25), (std::vector<double>{5.0, 10.0, 10.25}));
}

TEST(StationShift, ShiftedEntryMayMeetTheNextAndStartANewRun) {
    // The second of the first run lands on the third, which is then moved on.
    EXPECT_EQ(shifted({10.0, 10.0, 10.5, 30.0}, 0.5), (std::vector<double>{10.0, 10.5, 11.0, 30.0}));
}

TEST(StationShift, WithoutADistanceStationsStayEqual) {
    EXPECT_EQ(shifted({10.0, 10.0, 10.0, 20.0}, 0.0), (std::vector<double>{10.0, 10.0, 10.0, 20.0}));
}

TEST(StationShift, TakesEmptyAndSingleLists) {
    EXPECT_TRUE(shifted({}, 0.5).empty());
    EXPECT_EQ(shifted({1.0}, 0.5), (std::vector<double>{1.0}));
}

// The rule word for word, for comparison.
std::vector<double> shiftedByTheRule(std::vector<double> stations, double distance) {
    const auto n = static_cast<long>(stations.size());
    long i = 0;
    long k = 1;
    const auto at = [&](long index) -> double& { return stations[static_cast<std::size_t>(index)]; };
    while (i < n) {
        if (i < n - k) {
            if (at(i) == at(i + k)) {
                at(i + k) += static_cast<double>(k) * distance;
                ++k;
            } else {
                k = 1;
                ++i;
            }
        } else {
            ++i;
        }
    }
    return stations;
}

TEST(StationShift, FollowsTheRuleOnAllShortListsOfFewValues) {
    for (const double distance : {0.0, 0.5, 1.0, 1e-20}) {
        for (int code = 0; code < 729; ++code) {
            std::vector<double> stations;
            for (int i = 0, rest = code; i < 6; ++i, rest /= 3) {
                stations.push_back(rest % 3);
            }
            EXPECT_EQ(shifted(stations, distance), shiftedByTheRule(stations, distance)) << code;
        }
    }
}

// Long runs of few values, moved by distances that rounding takes wholly, from the start of a run, or not at all.
struct LongRuns {
    std::vector<double> values;
    double distance;
};
LongRuns longRuns(std::mt19937& random) {
    LongRuns made;
    made.distance = std::array{0.0, 1e-20, 3e-17, 1e-16, 3e-16, 0.5}[random() % 6];
    for (std::size_t run = 1 + random() % 4; run > 0; --run) {
        made.values.insert(made.values.end(), 1 + random() % 12, static_cast<double>(random() % 4) - 2.5);
    }
    return made;
}

TEST(StationShift, FollowsTheRuleOnLongRunsWhoseShiftIsLostInPart) {
    std::mt19937 random(20240501);
    for (int i = 0; i < 5000; ++i) {
        const LongRuns made = longRuns(random);
        EXPECT_EQ(shifted(made.values, made.distance), shiftedByTheRule(made.values, made.distance)) << "list " << i;
    }
}

TEST(StationShift, LongRunWhoseShiftIsLostCostsNoMoreThanItsLength) {
    // Five thousand million comparisons if each record were taken for the start of a run of its own.
    const std::vector<double> stations(100000, 1e300);
    EXPECT_EQ(shifted(stations, 0.5), stations);
    std::vector<double> ended = stations;
    ended.push_back(1.0);
    EXPECT_EQ(shifted(ended, 0.5), ended);
}

struct Section {
    Reals distances;
    Reals heights;
};

Section shiftedSection(Reals distances, Reals heights, double distance) {
    output::shiftCrossSectionWalls(distances, heights, distance);
    return {distances, heights};
}

TEST(CrossSectionShift, MovesOutwardsOnBothSidesAndTurnsTheLeftHeightsOver) {
    const Section section = shiftedSection({-3.0, -3.0, 1.0, 1.0}, {10.0, 11.0, 12.0, 13.0}, 0.1);
    EXPECT_EQ(section.distances, (Reals{-3.0, -3.1, 1.0, 1.1}));
    EXPECT_EQ(section.heights, (Reals{11.0, 10.0, 12.0, 13.0}));
}

TEST(CrossSectionShift, LeftRunAtTheEndOfTheListKeepsItsHeights) {
    const Section section = shiftedSection({-3.0, -3.0}, {10.0, 11.0}, 0.1);
    EXPECT_EQ(section.distances, (Reals{-3.0, -3.1}));
    EXPECT_EQ(section.heights, (Reals{10.0, 11.0}));
}

TEST(CrossSectionShift, LeftRunOfThreeIsReversedExactly) {
    const Section section = shiftedSection({-3.0, -3.0, -3.0, 0.0}, {1.0, 2.0, 3.0, 4.0}, 0.5);
    EXPECT_EQ(section.distances, (Reals{-3.0, -3.5, -4.0, 0.0}));
    EXPECT_EQ(section.heights, (Reals{3.0, 2.0, 1.0, 4.0}));
}

TEST(CrossSectionShift, LeftRunOfFourTurnsOverInPlace) {
    const Section section = shiftedSection({-3.0, -3.0, -3.0, -3.0, 0.0}, {1.0, 2.0, 3.0, 4.0, 5.0}, 0.5);
    EXPECT_EQ(section.distances, (Reals{-3.0, -3.5, -4.0, -4.5, 0.0}));
    EXPECT_EQ(section.heights, (Reals{4.0, 3.0, 3.0, 1.0, 5.0})) << "a, b, c, d become d, c, c, a";
}

TEST(CrossSectionShift, LeftRunOfFiveTurnsOverInPlace) {
    const Section section = shiftedSection({-3.0, -3.0, -3.0, -3.0, -3.0, 0.0}, {1.0, 2.0, 3.0, 4.0, 5.0, 6.0}, 0.5);
    EXPECT_EQ(section.heights, (Reals{5.0, 4.0, 3.0, 4.0, 1.0, 6.0}));
}

TEST(CrossSectionShift, ZeroCountsAsRightOfTheCentreLine) {
    const Section section = shiftedSection({0.0, 0.0, 5.0}, {1.0, 2.0, 3.0}, 0.1);
    EXPECT_EQ(section.distances, (Reals{0.0, 0.1, 5.0}));
    EXPECT_EQ(section.heights, (Reals{1.0, 2.0, 3.0}));
}

TEST(CrossSectionShift, ShiftedEntryThatMeetsTheNextStartsANewRun) {
    const Section section = shiftedSection({-3.0, -3.0, -3.5}, {1.0, 2.0, 3.0}, 0.5);
    EXPECT_EQ(section.distances, (Reals{-3.0, -3.5, -4.0}));
    EXPECT_EQ(section.heights, (Reals{2.0, 1.0, 3.0})) << "the second run ends the list and keeps its heights";
}

TEST(CrossSectionShift, TakesEmptyAndSingleLists) {
    EXPECT_TRUE(shiftedSection({}, {}, 0.5).distances.empty());
    EXPECT_EQ(shiftedSection({-1.0}, {2.0}, 0.5).heights, (Reals{2.0}));
}

// The rule word for word, for comparison.
Section shiftedByTheRule(Reals distances, Reals heights, double distance) {
    const auto n = static_cast<long>(distances.size());
    long i = 0;
    long k = 1;
    bool negativeRun = false;
    double held = 0.0;
    const auto d = [&](long index) -> double& { return distances[static_cast<std::size_t>(index)]; };
    const auto h = [&](long index) -> double& { return heights[static_cast<std::size_t>(index)]; };
    while (i < n) {
        if (i < n - k) {
            if (d(i) == d(i + k) && d(i) >= 0.0) {
                d(i + k) += static_cast<double>(k) * distance;
                negativeRun = false;
                ++k;
            } else if (d(i) == d(i + k)) {
                d(i + k) -= static_cast<double>(k) * distance;
                negativeRun = true;
                held = h(i + k);
                ++k;
            } else {
                if (k != 1 && negativeRun) {
                    held = h(i);
                    for (long m = 0; m <= k - 2; ++m) {
                        h(i + m) = h(i + k - 1 - m);
                    }
                    h(i + k - 1) = held;
                }
                k = 1;
                ++i;
            }
        } else {
            ++i;
        }
    }
    return {distances, heights};
}

TEST(CrossSectionShift, FollowsTheRuleOnAllShortListsOfFewValues) {
    for (const double distance : {0.0, 0.5, 1.0}) {
        for (int code = 0; code < 2187; ++code) {
            Reals distances;
            Reals heights;
            for (int i = 0, rest = code; i < 7; ++i, rest /= 3) {
                distances.push_back(rest % 3 - 1);
                heights.push_back(100 + i);
            }
            const Section actual = shiftedSection(distances, heights, distance);
            const Section expected = shiftedByTheRule(distances, heights, distance);
            EXPECT_EQ(actual.distances, expected.distances) << code;
            EXPECT_EQ(actual.heights, expected.heights) << code;
        }
    }
}

TEST(CrossSectionShift, FollowsTheRuleOnLongRunsWhoseShiftIsLostInPart) {
    std::mt19937 random(20240502);
    for (int i = 0; i < 5000; ++i) {
        const LongRuns made = longRuns(random);
        const Reals distances(made.values.begin(), made.values.end());
        Reals heights;
        for (std::size_t j = 0; j < distances.size(); ++j) {
            heights.push_back(100.0 + static_cast<double>(j));
        }
        const Section actual = shiftedSection(distances, heights, made.distance);
        const Section expected = shiftedByTheRule(distances, heights, made.distance);
        EXPECT_EQ(actual.distances, expected.distances) << "list " << i;
        EXPECT_EQ(actual.heights, expected.heights) << "list " << i;
    }
}

TEST(CrossSectionShift, LeftRunWhoseShiftIsLostIsTurnedOverOnceForEachOfItsRecords) {
    const Section section = shiftedSection({-3.0, -3.0, -3.0, -3.0, -3.0, 0.0}, {1.0, 2.0, 3.0, 4.0, 5.0, 6.0}, 0.0);
    EXPECT_EQ(section.distances, (Reals{-3.0, -3.0, -3.0, -3.0, -3.0, 0.0}));
    EXPECT_EQ(section.heights, (Reals{5.0, 1.0, 4.0, 4.0, 4.0, 6.0}));
}

TEST(CrossSectionShift, LongRunsWhoseShiftIsLostCostNoMoreThanTheirLength) {
    // Five thousand million steps if each record were taken for the start of a run of its own. The second distance is
    // lost up to the middle of the run.
    constexpr std::size_t count = 100000;
    for (const double distance : {1e-30, 4e-21}) {
        for (const double side : {-3.0, 3.0}) {
            Reals offsets(count, side);
            offsets.push_back(9.0);
            const Section section = shiftedSection(offsets, Reals(count + 1, 1.0), distance);
            EXPECT_EQ(section.distances[1], side);
            EXPECT_EQ(section.distances.back(), 9.0);
        }
    }
}

} // namespace
} // namespace fenmark
