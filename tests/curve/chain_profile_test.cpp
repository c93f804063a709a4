// Profiles, crossfalls and station equations against values worked out by hand and by bisection.
#include "curve/crossfall.h"
#include "curve/profile.h"
#include "curve/station_equations.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>
#include <random>
#include <vector>

namespace fenmark::curve {
namespace {

constexpr double kHeight = 1e-9;  // metres
constexpr double kGrade = 1e-12;  // metres a metre
constexpr double kStation = 1e-8; // metres
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

// --- profile ---

// 3 % up, a crest of 100 m, 2 % down, a sag of 80 m, 1 % up.
std::vector<VerticalPoint> road() {
    return {{0.0, 10.0},
            {200.0, 16.0, VerticalForm::Parabola, 100.0, 0.0},
            {400.0, 12.0, VerticalForm::Parabola, 80.0, 0.0},
            {600.0, 14.0}};
}

TEST(Profile, HasTheHandbookValuesOfAParabola) {
    Profile profile;
    ASSERT_EQ(profile.set(road()), ChainStatus::Ok);
    EXPECT_EQ(profile.parts().size(), 5U);
    EXPECT_NEAR(profile.at(0.0)->height, 10.0, kHeight);
    EXPECT_NEAR(profile.at(150.0)->height, 14.5, kHeight);
    // The crest lies 5 % * 100 / 8 below its point of intersection.
    EXPECT_NEAR(profile.at(200.0)->height, 16.0 - 0.05 * 100.0 / 8.0, kHeight);
    EXPECT_NEAR(profile.at(200.0)->grade, 0.005, kGrade);
    EXPECT_NEAR(profile.at(200.0)->curvature, -0.05 / 100.0, kGrade);
    EXPECT_NEAR(profile.at(400.0)->height, 12.0 + 0.03 * 80.0 / 8.0, kHeight);
    EXPECT_NEAR(profile.at(600.0)->height, 14.0, kHeight);
    EXPECT_FALSE(profile.at(-1e-5));
    EXPECT_TRUE(profile.at(-1e-7));
    EXPECT_FALSE(profile.at(600.1));
    EXPECT_FALSE(profile.at(kNan));
}

TEST(Profile, FindsCrestAndSag) {
    Profile profile;
    ASSERT_EQ(profile.set(road()), ChainStatus::Ok);
    const std::vector<ProfileExtreme> extremes = profile.extremes();
    ASSERT_EQ(extremes.size(), 2U);
    EXPECT_TRUE(extremes[0].high);
    EXPECT_NEAR(extremes[0].station, 150.0 + 100.0 * 0.03 / 0.05, kStation);
    EXPECT_NEAR(extremes[0].height, 14.5 + 0.03 * 60.0 / 2.0, kHeight);
    EXPECT_FALSE(extremes[1].high);
    EXPECT_NEAR(extremes[1].station, 360.0 + 80.0 * 0.02 / 0.03, kStation);
    EXPECT_EQ(profile.highest()->station, extremes[0].station);
    EXPECT_EQ(profile.lowest()->station, 0.0);
}

TEST(Profile, ALevelStretchIsOneExtreme) {
    Profile profile;
    const std::vector<VerticalPoint> points{{0, 0}, {100, 2}, {150, 2}, {250, 0}};
    ASSERT_EQ(profile.set(points), ChainStatus::Ok);
    const std::vector<ProfileExtreme> extremes = profile.extremes();
    ASSERT_EQ(extremes.size(), 1U);
    EXPECT_EQ(extremes[0].station, 100.0);
    EXPECT_EQ(extremes[0].levelFor, 50.0);
    EXPECT_TRUE(extremes[0].high);
}

TEST(Profile, ACircleHasOneRadiusAndJoinsBothGrades) {
    Profile profile;
    const double radius = 500.0;
    const std::vector<VerticalPoint> points{{0.0, 0.0}, {100.0, 8.0, VerticalForm::Circle, 0.0, radius}, {220.0, 0.0}};
    ASSERT_EQ(profile.set(points), ChainStatus::Ok);
    ASSERT_EQ(profile.parts().size(), 3U);
    const ProfilePart& curve = profile.parts()[1];
    // Its points are a radius away from one centre.
    const double slope = std::atan(curve.startGrade);
    const double centreStation = curve.start + radius * std::sin(slope);
    const double centreHeight = curve.startHeight - radius * std::cos(slope);
    for (int i = 0; i <= 20; ++i) {
        const double station = curve.start + (curve.end - curve.start) * i / 20;
        const double height = profile.at(station)->height;
        EXPECT_NEAR(std::hypot(station - centreStation, height - centreHeight), radius, kHeight);
    }
    EXPECT_NEAR(profile.at(curve.end - 1e-9)->grade, -8.0 / 120.0, 1e-9);
    EXPECT_NEAR(profile.at(curve.end)->height, profile.at(curve.end - 1e-9)->height, 1e-9);
    const std::vector<ProfileExtreme> extremes = profile.extremes();
    ASSERT_EQ(extremes.size(), 1U);
    EXPECT_NEAR(extremes[0].station, centreStation, kStation);
    EXPECT_NEAR(extremes[0].height, centreHeight + radius, kHeight);
}

TEST(Profile, ASteepCircleHasItsRadiusEverywhere) {
    Profile profile;
    ASSERT_EQ(profile.set(
                  std::vector<VerticalPoint>{{0.0, 0.0}, {100.0, 80.0, VerticalForm::Circle, 0.0, 50.0}, {200.0, 0.0}}),
              ChainStatus::Ok);
    const ProfilePart& curve = profile.parts()[1];
    for (int i = 0; i < 20; ++i) { // from its first station on
        const HeightGrade there = *profile.at(curve.start + (curve.end - curve.start) * i / 20);
        EXPECT_NEAR(there.curvature, -std::pow(1.0 + there.grade * there.grade, 1.5) / 50.0, 1e-9) << i;
    }
}

TEST(Profile, TheRadiusOfAParabolaGivesItsLength) {
    Profile byLength;
    Profile byRadius;
    std::vector<VerticalPoint> points = road();
    ASSERT_EQ(byLength.set(points), ChainStatus::Ok);
    points[1].length = 0.0;
    points[1].radius = 2000.0;
    ASSERT_EQ(byRadius.set(points), ChainStatus::Ok);
    for (double station = 0.0; station <= 600.0; station += 7.0) {
        EXPECT_NEAR(byLength.at(station)->height, byRadius.at(station)->height, kHeight);
    }
}

TEST(Profile, CurvesMayTouchButNotOverlap) {
    Profile profile;
    std::vector<VerticalPoint> points = road();
    points[1].length = 200.0;
    points[2].length = 200.0;
    EXPECT_EQ(profile.set(points), ChainStatus::Ok);
    points[2].length = 200.1;
    EXPECT_EQ(profile.set(points), ChainStatus::Overlap);
    points = road();
    points[1].length = 401.0;
    EXPECT_EQ(profile.set(points), ChainStatus::Overlap);
    points = road();
    points[2].length = 401.0;
    EXPECT_EQ(profile.set(points), ChainStatus::Overlap);
    EXPECT_EQ(profile.parts().size(), 4U) << "as it was before what was refused";
}

TEST(Profile, RefusesWhatIsNoProfile) {
    Profile profile;
    EXPECT_EQ(profile.set({}), ChainStatus::Empty);
    const std::vector<VerticalPoint> one{{0, 0}};
    EXPECT_EQ(profile.set(one), ChainStatus::Empty);
    for (const double bad : {kNan, kInfinity, -kInfinity}) {
        for (int field = 0; field < 4; ++field) {
            std::vector<VerticalPoint> points = road();
            (field == 0   ? points[1].station
             : field == 1 ? points[1].height
             : field == 2 ? points[1].length
                          : points[1].radius) = bad;
            EXPECT_EQ(profile.set(points), ChainStatus::NotFinite) << field;
        }
    }
    std::vector<VerticalPoint> points = road();
    points[2].station = 200.0;
    EXPECT_EQ(profile.set(points), ChainStatus::OutOfOrder);
    points = road();
    points[1].length = -1.0;
    EXPECT_EQ(profile.set(points), ChainStatus::NoCurve);
    EXPECT_TRUE(profile.empty());
    EXPECT_FALSE(profile.at(0.0));
    EXPECT_FALSE(profile.highest());
}

TEST(Profile, IsContinuousInHeightAndGradeAndItsArraysAgree) {
    constexpr unsigned kSeed = 41;
    std::mt19937 random(kSeed);
    const auto uniform = [&](double low, double high) { return std::uniform_real_distribution(low, high)(random); };
    for (int round = 0; round < 300; ++round) {
        std::vector<VerticalPoint> points;
        double station = uniform(-1000, 1000);
        for (int i = 0; i < 12; ++i) {
            const double step = uniform(50, 400);
            const bool circle = random() % 2 == 0;
            points.push_back({station, uniform(-10, 10), circle ? VerticalForm::Circle : VerticalForm::Parabola,
                              circle ? 0.0 : uniform(0, 40), circle ? uniform(10, 150) : 0.0});
            station += step;
        }
        Profile profile;
        ASSERT_EQ(profile.set(points), ChainStatus::Ok) << "seed " << kSeed << " round " << round;
        for (const ProfilePart& part : profile.parts()) {
            const HeightGrade before = *profile.at(std::max(part.start - 1e-9, profile.startStation()));
            const HeightGrade behind = *profile.at(part.start);
            EXPECT_NEAR(before.height, behind.height, 1e-8);
            EXPECT_NEAR(before.grade, behind.grade, 1e-8);
        }
        std::vector<double> stations;
        for (int i = 0; i < 200; ++i) {
            stations.push_back(uniform(profile.startStation() - 10, profile.endStation() + 10));
        }
        if (round % 2 == 0) {
            std::sort(stations.begin(), stations.end());
        }
        std::vector<double> heights(stations.size());
        std::size_t known = 0;
        const std::size_t answered = profile.heights(stations, heights);
        for (std::size_t i = 0; i < stations.size(); ++i) {
            const std::optional<HeightGrade> one = profile.at(stations[i]);
            known += one ? 1 : 0;
            EXPECT_EQ(std::isnan(heights[i]), !one);
            EXPECT_TRUE(!one || heights[i] == one->height);
        }
        EXPECT_EQ(answered, known);
        // Extremes are where a walk in small steps turns.
        for (const ProfileExtreme& extreme : profile.extremes()) {
            const double beside = extreme.high ? -1.0 : 1.0;
            for (const double step : {-1e-3, 1e-3}) {
                EXPECT_GE(beside * (profile.at(extreme.station + step)->height - extreme.height), -1e-12);
            }
        }
        const double height = uniform(-8, 8);
        for (const double found : profile.stationsOfHeight(height)) {
            EXPECT_NEAR(profile.at(found)->height, height, 1e-9);
        }
        EXPECT_EQ(profile.stationsOfHeight(profile.highest()->height + 1.0).size(), 0U);
    }
}

// --- crossfall ---

TEST(Profile, FindsTheStationsOfAHeight) {
    // Down 4 % to a sag at 100, level from 200 to 300, up 2 %; a parabola of 40 m at 100.
    const std::vector<VerticalPoint> points{
        {0.0, 14.0}, {100.0, 10.0, VerticalForm::Parabola, 40.0}, {200.0, 12.0}, {300.0, 12.0}, {400.0, 14.0}};
    Profile profile;
    ASSERT_EQ(profile.set(points), ChainStatus::Ok);
    const auto near = [](const std::vector<double>& found, const std::vector<double>& wanted) {
        ASSERT_EQ(found.size(), wanted.size());
        for (std::size_t i = 0; i < found.size(); ++i) {
            EXPECT_NEAR(found[i], wanted[i], 1e-6) << i;
        }
    };
    near(profile.stationsOfHeight(14.0), {0.0, 400.0});
    near(profile.stationsOfHeight(12.0), {50.0, 200.0, 300.0});
    near(profile.stationsOfHeight(13.0), {25.0, 350.0});
    // The ends of the parabola: 0.8 m above its point on one side, 0.4 m on the other.
    near(profile.stationsOfHeight(10.8), {80.0, 140.0});
    const double low = profile.lowest()->height;
    EXPECT_EQ(profile.stationsOfHeight(low).size(), 1U);
    EXPECT_TRUE(profile.stationsOfHeight(low - 0.001).empty());
    EXPECT_TRUE(profile.stationsOfHeight(14.001).empty());
    EXPECT_TRUE(profile.stationsOfHeight(kNan).empty());
    for (const double station : profile.stationsOfHeight(10.5)) {
        EXPECT_NEAR(profile.at(station)->height, 10.5, 1e-9);
    }
}

TEST(Profile, FindsAHeightOnBothSidesOfACrestNearTheEndOfACurve) {
    for (const double grade : {1e-4, 1e-3, 0.099}) { // the crest lies up to a metre behind the curve's beginning
        Profile profile;
        ASSERT_EQ(profile.set(std::vector<VerticalPoint>{
                      {0.0, 100.0 * -grade}, {100.0, 0.0, VerticalForm::Parabola, 100.0}, {200.0, -10.0}}),
                  ChainStatus::Ok);
        const double crest = profile.extremes().at(0).station;
        for (const double aside : {0.01, 0.04}) {
            const double height = profile.at(crest + aside)->height;
            const std::vector<double> found = profile.stationsOfHeight(height);
            ASSERT_EQ(found.size(), 2U) << grade << ' ' << aside;
            EXPECT_NEAR(found[0], crest - aside, 1e-6) << grade << ' ' << aside;
            EXPECT_NEAR(found[1], crest + aside, 1e-6) << grade << ' ' << aside;
        }
    }
}

TEST(Profile, RefusesGradesThatNoNumberHolds) {
    Profile profile;
    const std::vector<VerticalPoint> steep{{0.0, 0.0}, {1e-300, 1e300}};
    EXPECT_EQ(profile.set(steep), ChainStatus::NotFinite);
    const std::vector<VerticalPoint> beyond{{0.0, 0.0}, {100.0, 1.0, VerticalForm::Parabola, 80.0}, {130.0, 0.0}};
    EXPECT_EQ(profile.set(beyond), ChainStatus::Overlap) << "the curve ends behind the last point";
    EXPECT_TRUE(profile.empty());
}

TEST(Crossfall, LiesLevelWhereItPassesNothing) {
    Crossfall crossfall;
    const std::vector<CrossfallStation> stations{
        {0.0, -0.02, -0.02}, {100.0, 0.02, 0.0}, {150.0, 0.02, 0.0}, {200.0, 0.02, 0.03}, {300.0, -0.04, 0.03}};
    ASSERT_EQ(crossfall.set(stations), ChainStatus::Ok);
    EXPECT_EQ(crossfall.levelStations(true), (std::vector<double>{100.0})) << "level from there on";
    const auto left = crossfall.levelStations(false);
    ASSERT_EQ(left.size(), 2U);
    EXPECT_NEAR(left[0], 50.0, 1e-12);
    EXPECT_NEAR(left[1], 200.0 + 100.0 / 3.0, 1e-9);
    EXPECT_EQ(crossfall.at(-1e-7)->left, -0.02) << "a hair before the first entry";
}

TEST(Crossfall, RunsStraightBetweenItsStations) {
    Crossfall crossfall;
    const std::vector<CrossfallStation> stations{{0, -0.02, -0.02}, {40, -0.02, -0.02}, {80, 0.06, -0.06}};
    ASSERT_EQ(crossfall.set(stations), ChainStatus::Ok);
    const Slopes half = *crossfall.at(60.0);
    EXPECT_NEAR(half.left, 0.02, kGrade);
    EXPECT_NEAR(half.right, -0.04, kGrade);
    EXPECT_NEAR(half.riseAt(-3.0), 0.06, kGrade) << "3 m to the left";
    EXPECT_NEAR(half.riseAt(3.0), -0.12, kGrade);
    EXPECT_EQ(crossfall.levelStations(false).size(), 1U);
    EXPECT_NEAR(crossfall.levelStations(false)[0], 50.0, kStation);
    EXPECT_TRUE(crossfall.levelStations(true).empty());
    EXPECT_FALSE(crossfall.at(-0.1));
    EXPECT_FALSE(crossfall.at(80.1));
    EXPECT_FALSE(crossfall.at(kNan));
    EXPECT_TRUE(crossfall.at(-kStationTolerance)) << "the tolerance itself is within";
    EXPECT_FALSE(crossfall.at(-1.001 * kStationTolerance));
}

TEST(Crossfall, TwoEntriesAtOneStationAreAStep) {
    Crossfall crossfall;
    const std::vector<CrossfallStation> stations{{0, 0.01, 0.01}, {10, 0.01, 0.01}, {10, 0.03, 0.03}, {20, 0.05, 0.05}};
    ASSERT_EQ(crossfall.set(stations), ChainStatus::Ok);
    EXPECT_NEAR(crossfall.at(10.0 - 1e-9)->left, 0.01, 1e-9);
    EXPECT_EQ(crossfall.at(10.0)->left, 0.03);
    EXPECT_EQ(crossfall.at(20.0)->left, 0.05);
}

TEST(Crossfall, RefusesWhatIsNoDiagram) {
    Crossfall crossfall;
    EXPECT_EQ(crossfall.set({}), ChainStatus::Empty);
    const std::vector<CrossfallStation> falling{{1, 0, 0}, {0, 0, 0}};
    EXPECT_EQ(crossfall.set(falling), ChainStatus::OutOfOrder);
    for (const CrossfallStation& bad :
         {CrossfallStation{kNan, 0, 0}, CrossfallStation{0, kInfinity, 0}, CrossfallStation{0, 0, kNan}}) {
        EXPECT_EQ(crossfall.set(std::array{bad}), ChainStatus::NotFinite);
    }
    EXPECT_FALSE(crossfall.at(0.0));
}

// --- station equations ---

TEST(StationEquations, CountOnFromTheValueAhead) {
    StationEquations stations;
    // A long chainage (20 m twice) at 100 m, a short one (50 m missing) at 200 m.
    const std::vector<StationEquation> equations{{100.0, 1080.0}, {200.0, 1230.0}};
    ASSERT_EQ(stations.set(1000.0, equations), ChainStatus::Ok);
    EXPECT_EQ(stations.stationAt(50.0).station, 1050.0);
    EXPECT_EQ(stations.stationAt(100.0).station, 1080.0);
    EXPECT_EQ(stations.stationAt(100.0).zone, 1U);
    EXPECT_EQ(stations.stationAt(100.0, Side::Before).station, 1100.0);
    EXPECT_EQ(stations.stationBack(0), 1100.0);
    EXPECT_EQ(stations.stationBack(1), 1180.0);
    EXPECT_EQ(stations.stationAt(250.0).station, 1280.0);

    constexpr double kLength = 300.0;
    EXPECT_EQ(stations.distancesAt(1090.0, kLength), (std::vector<double>{90.0, 110.0}));
    EXPECT_EQ(stations.distancesAt(1200.0, kLength), std::vector<double>());
    EXPECT_EQ(stations.distancesAt(1230.0, kLength), std::vector<double>{200.0});
    EXPECT_EQ(stations.distancesAt(1330.0, kLength), std::vector<double>{300.0});
    EXPECT_EQ(stations.distancesAt(1330.1, kLength), std::vector<double>());
    EXPECT_EQ(stations.firstDistanceAt(1090.0, kLength), 90.0);
    EXPECT_TRUE(std::isnan(stations.firstDistanceAt(1200.0, kLength)));
    EXPECT_TRUE(stations.distancesAt(kNan, kLength).empty());
    EXPECT_EQ(stations.distanceIn(1, 1090.0), 110.0);
    EXPECT_TRUE(std::isnan(stations.distanceIn(9, 1090.0)));
}

TEST(StationEquations, EveryDistanceComesBackFromItsStation) {
    constexpr unsigned kSeed = 77;
    std::mt19937 random(kSeed);
    const auto uniform = [&](double low, double high) { return std::uniform_real_distribution(low, high)(random); };
    for (int round = 0; round < 200; ++round) {
        std::vector<StationEquation> equations;
        double distance = 0.0;
        for (int i = 0; i < 30; ++i) {
            distance += uniform(1, 100);
            equations.push_back({distance, uniform(-500, 2000)});
        }
        const double length = distance + 50.0;
        StationEquations stations;
        ASSERT_EQ(stations.set(uniform(-100, 100), equations), ChainStatus::Ok);
        for (int i = 0; i < 50; ++i) {
            const double at = uniform(0, length);
            const ZonedStation there = stations.stationAt(at);
            EXPECT_NEAR(stations.distanceIn(there.zone, there.station), at, 1e-9);
            // Found among all that have the station, and every other one has it too.
            bool found = false;
            for (const double one : stations.distancesAt(there.station, length)) {
                found = found || std::abs(one - at) < 1e-9;
                EXPECT_NEAR(stations.stationAt(one).station, there.station, 1e-8)
                    << "seed " << kSeed << " round " << round;
            }
            EXPECT_TRUE(found);
        }
    }
}

TEST(StationEquations, OfResultsAtOneDistanceTheLastCounts) {
    std::vector<StationEquation> equations;
    const std::vector<NamedStation> results{{0.0, 0.0}, {100.0, 100.0}, {150.0, 120.0}, {200.0, 120.0}, {300.0, 220.0}};
    ASSERT_EQ(equationsFromResults(0.0, results, 0.01, equations), ChainStatus::Ok);
    ASSERT_EQ(equations.size(), 1U);
    EXPECT_EQ(equations[0].distance, 120.0);
    EXPECT_EQ(equations[0].ahead, 200.0);
    EXPECT_EQ(equationsFromResults(kNan, results, 0.01, equations), ChainStatus::NotFinite);
    EXPECT_EQ(equationsFromResults(0.0, results, kNan, equations), ChainStatus::NotFinite);
    const std::vector<NamedStation> none{{kNan, 0.0}};
    EXPECT_EQ(equationsFromResults(0.0, none, 0.01, equations), ChainStatus::NotFinite);
    EXPECT_TRUE(equations.empty());
}

// A chain's ends are met within a micrometre, which is half of it here; what an equation leaves out is not.
TEST(StationEquations, MeetOnlyTheEndsOfTheChainWithinTheTolerance) {
    constexpr double kHalf = 5e-7;
    constexpr double kLength = 300.0;
    const auto at = [](const StationEquations& stations, double station) {
        return stations.distancesAt(station, kLength);
    };
    using Distances = std::vector<double>;
    StationEquations plain;
    for (const double station : {0.0, 0.001, 0.05, 299.95, 300.0}) {
        EXPECT_EQ(at(plain, station), Distances{station});
        EXPECT_EQ(plain.firstDistanceAt(station, kLength), station);
    }
    EXPECT_EQ(plain.firstDistanceAt(-kHalf, kLength), 0.0);
    EXPECT_EQ(plain.firstDistanceAt(kLength + kHalf, kLength), kLength);
    StationEquations jumping;
    ASSERT_EQ(jumping.set(0.0, std::vector<StationEquation>{{100.0, 150.0}, {200.0, 300.0}}), ChainStatus::Ok);
    EXPECT_EQ(at(jumping, -kHalf), Distances{0.0});
    EXPECT_EQ(at(jumping, -3.0 * kHalf), Distances{});
    EXPECT_EQ(at(jumping, 100.0), Distances{100.0});
    EXPECT_EQ(at(jumping, 100.0 + kHalf), Distances{});
    EXPECT_EQ(at(jumping, 150.0 - kHalf), Distances{});
    EXPECT_EQ(at(jumping, 150.0), Distances{100.0});
    EXPECT_EQ(at(jumping, 250.0 + kHalf), Distances{});
    EXPECT_EQ(at(jumping, 300.0 - kHalf), Distances{});
    EXPECT_EQ(at(jumping, 400.0 + kHalf), Distances{kLength});
    EXPECT_EQ(at(jumping, 400.0 + 3.0 * kHalf), Distances{});
}

TEST(StationEquations, RefusesWhatDoesNotRise) {
    StationEquations stations;
    const std::vector<StationEquation> falling{{100.0, 0.0}, {50.0, 0.0}};
    EXPECT_EQ(stations.set(0.0, falling), ChainStatus::OutOfOrder);
    const std::vector<StationEquation> before{{-1.0, 0.0}};
    EXPECT_EQ(stations.set(0.0, before), ChainStatus::OutOfOrder);
    const std::vector<StationEquation> twice{{5.0, 0.0}, {5.0, 1.0}};
    EXPECT_EQ(stations.set(0.0, twice), ChainStatus::OutOfOrder);
    const std::vector<StationEquation> bad{{5.0, kNan}};
    EXPECT_EQ(stations.set(0.0, bad), ChainStatus::NotFinite);
    EXPECT_EQ(stations.set(kInfinity, {}), ChainStatus::NotFinite);
    EXPECT_EQ(stations.zoneCount(), 1U);
}

TEST(StationEquations, ComeFromBackAndAhead) {
    std::vector<StationEquation> equations;
    const std::vector<BackAhead> pairs{{1100.0, 1080.0}, {1180.0, 1230.0}};
    ASSERT_EQ(equationsFromBackAhead(1000.0, pairs, equations), ChainStatus::Ok);
    ASSERT_EQ(equations.size(), 2U);
    EXPECT_EQ(equations[0].distance, 100.0);
    EXPECT_EQ(equations[1].distance, 200.0);
    EXPECT_EQ(equations[1].ahead, 1230.0);
    const std::vector<BackAhead> atOnce{{1000.0, 1080.0}};
    ASSERT_EQ(equationsFromBackAhead(1000.0, atOnce, equations), ChainStatus::Ok);
    EXPECT_EQ(equations[0].distance, 0.0);
    const std::vector<BackAhead> backwards{{1100.0, 1080.0}, {1070.0, 1230.0}};
    EXPECT_EQ(equationsFromBackAhead(1000.0, backwards, equations), ChainStatus::OutOfOrder);
    const std::vector<BackAhead> bad{{kNan, 1080.0}};
    EXPECT_EQ(equationsFromBackAhead(1000.0, bad, equations), ChainStatus::NotFinite);
}

TEST(StationEquations, ComeFromTheResultsOfALongitudinalSection) {
    // No.0 to No.2 by 20 m, then the pegs lose 5.3 m.
    const std::vector<NamedStation> results{{0, 0}, {20, 20}, {40, 40}, {60, 54.7}, {80, 74.7}};
    std::vector<StationEquation> equations;
    ASSERT_EQ(equationsFromResults(0.0, results, 0.01, equations), ChainStatus::Ok);
    ASSERT_EQ(equations.size(), 1U);
    EXPECT_EQ(equations[0].distance, 54.7);
    EXPECT_EQ(equations[0].ahead, 60.0);
    const std::vector<NamedStation> falling{{0, 10}, {20, 5}};
    EXPECT_EQ(equationsFromResults(0.0, falling, 0.01, equations), ChainStatus::OutOfOrder);
}

} // namespace
} // namespace fenmark::curve
