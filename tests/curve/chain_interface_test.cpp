// Stakes, chains from records, points in space, and the C interface of chains with its statuses.
#include "curve/chain_records.h"
#include "curve/stakes.h"
#include "fenmark/alignment.h"
#include "fenmark/curve/profile.h"
#include "support/exact_chain.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace fenmark::curve {
namespace {

constexpr double kPointTolerance = 1e-9; // metres
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

// Straight 100 m, clothoid 60 m, arc of 200 m radius 80 m, clothoid 60 m, straight 50 m; to the right.
std::vector<Curve> road() {
    std::vector<Curve> curves;
    Pose pose{{-36000.0, 12000.0}, 0.5};
    const double k = 1.0 / 200.0;
    for (const auto& [length, first, last] :
         {std::array{100.0, 0.0, 0.0}, {60.0, 0.0, k}, {80.0, k, k}, {60.0, k, 0.0}, {50.0, 0.0, 0.0}}) {
        curves.push_back({pose, length, first, last});
        pose = endPose(curves.back());
    }
    return curves;
}

Chain roadChain(double startStation = 0.0, std::span<const StationEquation> equations = {}) {
    Chain chain;
    EXPECT_EQ(chain.set(road(), startStation, equations), ChainStatus::Ok);
    return chain;
}

// --- stakes ---

TEST(Stakes, StandAtRoundStationsAndMainPoints) {
    const Chain chain = roadChain(5.0);
    StakeOptions options;
    options.every = 20.0;
    options.mainPoints = true;
    std::vector<Stake> stakes;
    ASSERT_EQ(stakesOf(chain, options, stakes), ChainStatus::Ok);
    // Stations 20 to 340, start, end and four joints; none of them round.
    ASSERT_EQ(stakes.size(), 17U + 6U);
    EXPECT_EQ(stakes.front().kind, StakeKind::Start);
    EXPECT_EQ(stakes.front().station, 5.0);
    EXPECT_EQ(stakes[1].station, 20.0);
    EXPECT_EQ(stakes.back().kind, StakeKind::End);
    std::vector<StakeKind> joints;
    for (const Stake& stake : stakes) {
        EXPECT_EQ(stake.point, *chain.pointAt(stake.distance));
        EXPECT_TRUE(stake.kind != StakeKind::Interval || std::abs(std::remainder(stake.station, 20.0)) < 1e-9);
        if (stake.kind != StakeKind::Interval) {
            joints.push_back(stake.kind);
        }
    }
    EXPECT_EQ(joints, (std::vector<StakeKind>{StakeKind::Start, StakeKind::ClothoidFlat, StakeKind::ClothoidArc,
                                              StakeKind::ClothoidArc, StakeKind::ClothoidFlat, StakeKind::End}));
}

TEST(Stakes, OfOnePlaceAreOne) {
    const Chain chain = roadChain(0.0); // joints at 100, 160, 240, 300
    const std::vector<double> given{100.0, 115.5};
    const std::vector<double> offsets{-5.0, 0.0, 5.0};
    StakeOptions options;
    options.every = 20.0;
    options.mainPoints = true;
    options.stations = given;
    options.offsets = offsets;
    std::vector<Stake> stakes;
    ASSERT_EQ(stakesOf(chain, options, stakes), ChainStatus::Ok);
    ASSERT_EQ(stakes.size(), 3U * (18U + 2U)) << "0 to 340 by 20, the end, and 115.5";
    EXPECT_EQ(stakes[3 * 5].kind, StakeKind::ClothoidFlat);
    EXPECT_EQ(stakes[3 * 6].kind, StakeKind::Given);
    EXPECT_EQ(stakes[3 * 6 + 2].offset, 5.0);
    EXPECT_EQ(stakes[3 * 6 + 2].point, *chain.pointAt(115.5, 5.0));
}

TEST(Stakes, CountAnewBehindAnEquation) {
    const std::vector<StationEquation> equations{{110.0, 93.0}};
    const Chain chain = roadChain(0.0, equations);
    StakeOptions options;
    options.every = 100.0;
    std::vector<Stake> stakes;
    ASSERT_EQ(stakesOf(chain, options, stakes), ChainStatus::Ok);
    ASSERT_EQ(stakes.size(), 5U); // 0, 100, and behind the equation 100, 200, 300
    EXPECT_EQ(stakes[1].distance, 100.0);
    EXPECT_EQ(stakes[2].distance, 117.0);
    EXPECT_EQ(stakes[2].station, 100.0);
    EXPECT_EQ(stakes[2].zone, 1U);
}

TEST(Stakes, NameTheKindOfEachJoint) {
    // Straight, arc, a sharper arc, clothoid out and one back in, arc, straight.
    std::vector<Curve> curves;
    Pose pose{{0.0, 0.0}, 0.0};
    for (const auto& [length, first, last] : {std::array{50.0, 0.0, 0.0},
                                              {40.0, 0.01, 0.01},
                                              {40.0, 0.02, 0.02},
                                              {30.0, 0.02, 0.0},
                                              {30.0, 0.0, 0.01},
                                              {40.0, 0.01, 0.01},
                                              {50.0, 0.0, 0.0}}) {
        curves.push_back({pose, length, first, last});
        pose = endPose(curves.back());
    }
    Chain chain;
    ASSERT_EQ(chain.set(curves, 0.0, {}), ChainStatus::Ok);
    StakeOptions options;
    options.mainPoints = true;
    std::vector<Stake> stakes;
    ASSERT_EQ(stakesOf(chain, options, stakes), ChainStatus::Ok);
    std::vector<StakeKind> kinds;
    for (const Stake& stake : stakes) {
        kinds.push_back(stake.kind);
    }
    EXPECT_EQ(kinds,
              (std::vector<StakeKind>{StakeKind::Start, StakeKind::ArcStart, StakeKind::Joint, StakeKind::ClothoidArc,
                                      StakeKind::Joint, StakeKind::ClothoidArc, StakeKind::ArcEnd, StakeKind::End}));
    // A given station on a joint, whichever comes first in the list, is the joint; a round one beside a given is the given.
    const std::vector<double> given{90.0 + 5e-7, 100.0};
    options.every = 50.0;
    options.stations = given;
    ASSERT_EQ(stakesOf(chain, options, stakes), ChainStatus::Ok);
    const auto at = [&](double station) {
        return std::find_if(stakes.begin(), stakes.end(),
                            [&](const Stake& stake) { return std::abs(stake.station - station) < 1e-5; });
    };
    EXPECT_EQ(at(90.0)->kind, StakeKind::Joint);
    EXPECT_EQ(at(100.0)->kind, StakeKind::Given);
    EXPECT_EQ(at(150.0)->kind, StakeKind::Interval);
}

TEST(Stakes, NoMoreThanTheMost) {
    const Chain chain = roadChain();
    std::vector<Stake> stakes;
    StakeOptions options;
    options.most = 12;
    const std::vector<double> given(13, 10.0);
    options.stations = given;
    EXPECT_EQ(stakesOf(chain, options, stakes), ChainStatus::TooMany);
    options.stations = {};
    options.every = 10.0;
    EXPECT_EQ(stakesOf(chain, options, stakes), ChainStatus::TooMany);
    options.every = 35.0;
    ASSERT_EQ(stakesOf(chain, options, stakes), ChainStatus::Ok);
    EXPECT_EQ(stakes.size(), 11U);
    const std::vector<double> offsets{-1.0, 1.0};
    options.offsets = offsets;
    EXPECT_EQ(stakesOf(chain, options, stakes), ChainStatus::TooMany) << "two offsets make two stakes each";
    options.offsets = {};
    options.every = 0.0;
    options.mainPoints = true;
    options.most = 5;
    EXPECT_EQ(stakesOf(chain, options, stakes), ChainStatus::TooMany) << "six main points";
    options.most = 6;
    EXPECT_EQ(stakesOf(chain, options, stakes), ChainStatus::Ok);
    // A start station so far off that no double lies between two of its multiples.
    Chain far;
    ASSERT_EQ(far.set(road(), 1e17, {}), ChainStatus::Ok);
    options.every = 1.0;
    options.most = 1'000'000;
    EXPECT_EQ(stakesOf(far, options, stakes), ChainStatus::TooMany);
    // The last multiple between which and the next every double is one.
    const std::vector<Curve> short1{straight({{0, 0}, 0.0}, 8.0)};
    ASSERT_EQ(far.set(short1, 0x1.0p52 - 8.0, {}), ChainStatus::Ok);
    EXPECT_EQ(stakesOf(far, options, stakes), ChainStatus::Ok);
    EXPECT_EQ(stakes.back().station, 0x1.0p52);
    ASSERT_EQ(far.set(short1, 0x1.0p52 - 7.0, {}), ChainStatus::Ok);
    EXPECT_EQ(stakesOf(far, options, stakes), ChainStatus::TooMany);
}

TEST(Stakes, AnOffsetBeyondAllNumbersIsRefused) {
    Chain chain;
    const std::vector<Curve> far{{{{0.0, 1.5e308}, 0.0}, 100.0, 0.0, 0.0}};
    ASSERT_EQ(chain.set(far, 0.0, {}), ChainStatus::Ok);
    StakeOptions options;
    options.every = 50.0;
    const std::vector<double> offsets{1.5e308};
    options.offsets = offsets;
    std::vector<Stake> stakes;
    EXPECT_EQ(stakesOf(chain, options, stakes), ChainStatus::NotFinite);
    EXPECT_TRUE(stakes.empty());
}

TEST(Stakes, RefuseWhatCannotBeStaked) {
    const Chain chain = roadChain();
    std::vector<Stake> stakes;
    for (const double bad : {kNan, kInfinity}) {
        StakeOptions options;
        options.every = bad;
        EXPECT_EQ(stakesOf(chain, options, stakes), ChainStatus::NotFinite);
        options.every = 20.0;
        options.offsets = std::span(&bad, 1);
        EXPECT_EQ(stakesOf(chain, options, stakes), ChainStatus::NotFinite);
    }
    StakeOptions options;
    options.every = 1e-6;
    EXPECT_EQ(stakesOf(chain, options, stakes), ChainStatus::TooMany);
    options.every = 1e-320;
    EXPECT_EQ(stakesOf(chain, options, stakes), ChainStatus::TooMany);
    options.every = -1.0;
    EXPECT_EQ(stakesOf(chain, options, stakes), ChainStatus::NoCurve);
    options.every = 0.0;
    const double beyond = 351.0;
    options.stations = std::span(&beyond, 1);
    EXPECT_EQ(stakesOf(chain, options, stakes), ChainStatus::Outside);
    EXPECT_EQ(stakesOf(Chain(), StakeOptions(), stakes), ChainStatus::Empty);
    EXPECT_TRUE(stakes.empty());
}

// --- records ---

TEST(ChainRecords, ConstructedAndBareRecordsGiveTheExactCurves) {
    constexpr std::uint64_t kSeed = 515;
    exact::Random random(kSeed);
    for (int round = 0; round < 300; ++round) {
        exact::Pose pose = random.pose();
        const double dir = random.sign();
        const double radius = random.radius();
        const double a = random.parameter(radius);
        const std::vector<Calelm> records =
            exact::lay_chain(pose, {exact::straight(random.uniform(20, 200)), exact::clothoid(dir, a, 0.0, radius),
                                    exact::arc(dir, radius, random.arc_length(radius)),
                                    exact::clothoid(dir, a, radius, 0.0), exact::straight(random.uniform(20, 200))});
        for (const bool bare : {false, true}) {
            std::vector<Calelm> given = records;
            for (Calelm& record : given) {
                if (bare) {
                    record.len = record.sang = record.eang = record.k1 = record.k2 = record.k3 = 0.0;
                }
            }
            std::vector<Curve> curves;
            ASSERT_EQ(curvesOfRecords(given, curves), ChainStatus::Ok) << "seed " << kSeed << " round " << round;
            for (std::size_t i = 0; i < curves.size(); ++i) {
                EXPECT_NEAR(curves[i].length, records[i].len, kPointTolerance);
                EXPECT_NEAR(wrappedTurn(curves[i].start.azimuth - records[i].sang), 0.0, 1e-10);
                const Point end = endPose(curves[i]).point;
                EXPECT_NEAR(end.x, records[i].ex, kPointTolerance);
                EXPECT_NEAR(end.y, records[i].ey, kPointTolerance);
            }
        }
    }
}

TEST(ChainRecords, TheLibrarysOwnRecordsAreTaken) {
    Calelm spiral;
    initCalelm(&spiral);
    spiral.type = ALI_CLOTHOID;
    spiral.sx = -36000.0;
    spiral.sy = 12000.0;
    spiral.sang = 0.5;
    spiral.dir = -1.0;
    spiral.par = 80.0;
    spiral.r2 = 100.0;
    ASSERT_EQ(ali_mak(&spiral, 1), 0);
    Curve curve;
    ASSERT_EQ(curveOfRecord(spiral, curve), ChainStatus::Ok);
    EXPECT_EQ(curve.start.azimuth, 0.5);
    EXPECT_EQ(curve.endCurvature, 0.01) << "dir -1 turns right";
    EXPECT_EQ(curve.length, 64.0);
}

TEST(ChainRecords, RefuseWhatIsNoElement) {
    exact::Pose pose{100, 200, 0.3};
    const Calelm arc = exact::lay(pose, exact::arc(1.0, 100.0, 50.0));
    Curve curve;
    ASSERT_EQ(curveOfRecord(arc, curve), ChainStatus::Ok);
    const auto with = [&](auto change) {
        Calelm record = arc;
        change(record);
        return curveOfRecord(record, curve);
    };
    EXPECT_EQ(with([](Calelm& r) { r.type = 0; }), ChainStatus::NotAnElement);
    EXPECT_EQ(with([](Calelm& r) { r.type = 7; }), ChainStatus::NotAnElement);
    EXPECT_EQ(with([](Calelm& r) { r.dir = 0.5; }), ChainStatus::NotAnElement);
    EXPECT_EQ(with([](Calelm& r) { r.par = 0.0; }), ChainStatus::NotAnElement);
    EXPECT_EQ(with([](Calelm& r) { r.par = -100.0; }), ChainStatus::NotAnElement);
    EXPECT_EQ(with([](Calelm& r) { r.ex += 0.1; }), ChainStatus::NotAnElement);
    EXPECT_EQ(with([](Calelm& r) {
                  r.len = 0.0;
                  r.par = 20.0;
              }),
              ChainStatus::NotAnElement)
        << "shorter than the chord";
    // Up to 2 mm more than the diameter are a half circle.
    for (const double more : {-0.002, 0.001, 0.0019, 0.0021, 0.1, 1.0}) {
        Calelm half{};
        half.type = ALI_ARC;
        half.dir = 1.0;
        half.par = 100.0;
        half.ex = 200.0 + more;
        EXPECT_EQ(curveOfRecord(half, curve), more < 0.002 ? ChainStatus::Ok : ChainStatus::NotAnElement) << more;
    }
    EXPECT_EQ(with([](Calelm& r) { r.ex = kNan; }), ChainStatus::NotFinite);
    exact::Pose tiny{100, 200, 0.3};
    ASSERT_EQ(curveOfRecord(exact::lay(tiny, exact::arc(1.0, 0.002, 0.008)), curve), ChainStatus::Ok);
    EXPECT_NEAR(curve.length, 0.008, 1e-9) << "more than a half circle, however small";
    EXPECT_EQ(with([](Calelm& r) { r.sang = kInfinity; }), ChainStatus::NotFinite);
    Calelm spiral = arc;
    spiral.type = ALI_CLOTHOID;
    EXPECT_EQ(curveOfRecord(spiral, curve), ChainStatus::NotAnElement) << "no radius";
    for (const double radius : {1.0, 0.5, 2.0}) {
        exact::Pose sharp{100, 200, 0.3};
        const Calelm clothoid = exact::lay(sharp, exact::clothoid(1.0, radius, 0.0, radius));
        ASSERT_EQ(curveOfRecord(clothoid, curve), ChainStatus::Ok) << radius;
        EXPECT_NEAR(std::abs(curve.endCurvature), 1.0 / radius, 1e-12);
    }
    std::size_t failed = 0;
    std::vector<Curve> curves;
    EXPECT_EQ(curvesOfRecords(std::array{arc, spiral}, curves, &failed), ChainStatus::NotAnElement);
    EXPECT_EQ(failed, 1U);
}

// --- points in space ---

TEST(SpacePoints, LieOnProfileAndCrossfall) {
    const Chain chain = roadChain(1000.0);
    Profile profile;
    ASSERT_EQ(profile.set(std::vector<VerticalPoint>{{1000.0, 50.0}, {1350.0, 57.0}}), ChainStatus::Ok);
    Crossfall crossfall;
    ASSERT_EQ(crossfall.set(std::vector<CrossfallStation>{{1000.0, -0.02, -0.02}, {1350.0, -0.02, -0.02}}),
              ChainStatus::Ok);
    const std::vector<double> distances{0.0, 175.0, 350.0, 351.0};
    const std::vector<double> offsets{-3.0};
    std::vector<SpacePoint> points(distances.size());
    EXPECT_EQ(spacePoints(chain, profile, &crossfall, distances, offsets, points), 3U);
    EXPECT_NEAR(points[1].z, 53.5 - 0.06, kPointTolerance);
    EXPECT_EQ(points[1].x, chain.pointAt(175.0, -3.0)->x);
    EXPECT_TRUE(std::isnan(points[3].z));
    EXPECT_EQ(spacePoints(chain, profile, nullptr, distances, {}, points), 3U);
    EXPECT_NEAR(points[1].z, 53.5, kPointTolerance);
}

// --- the C interface ---

struct FreeChain {
    void operator()(FmkChain* chain) const { fmk_chainFree(chain); }
};
using OwnedChain = std::unique_ptr<FmkChain, FreeChain>;

std::vector<FmkCurve> roadRecords() {
    std::vector<FmkCurve> records;
    for (const Curve& curve : road()) {
        records.push_back({{{curve.start.point.x, curve.start.point.y}, curve.start.azimuth},
                           curve.length,
                           curve.startCurvature,
                           curve.endCurvature});
    }
    return records;
}

OwnedChain madeOfCurves(double startStation = 0.0) {
    const std::vector<FmkCurve> records = roadRecords();
    FmkChain* chain = nullptr;
    EXPECT_EQ(fmk_chainFromCurves(records.data(), records.size(), startStation, nullptr, 0, &chain), FMK_OK);
    return OwnedChain(chain);
}

TEST(CChain, AnswersAsTheLibraryDoes) {
    const Chain plain = roadChain(1000.0);
    const OwnedChain chain = madeOfCurves(1000.0);
    double length = 0.0;
    std::size_t curves = 0;
    EXPECT_EQ(fmk_chainSize(chain.get(), &length, &curves), FMK_OK);
    EXPECT_EQ(length, 350.0);
    EXPECT_EQ(curves, 5U);
    FmkChainPlace place;
    ASSERT_EQ(fmk_chainAtStation(chain.get(), 1130.0, 4.0, &place), FMK_OK);
    EXPECT_EQ((Point{place.point.x, place.point.y}), *plain.pointAt(130.0, 4.0));
    EXPECT_EQ(place.curve, 1U);
    EXPECT_EQ(fmk_chainAtStation(chain.get(), 999.0, 0.0, &place), FMK_OUTSIDE);
    EXPECT_EQ(fmk_chainAtDistance(chain.get(), 351.0, 0.0, &place), FMK_OUTSIDE);
    EXPECT_EQ(fmk_chainAtDistance(chain.get(), kNan, 0.0, &place), FMK_NOT_FINITE);

    const FmkPoint point = place.point;
    FmkChainFoot foot;
    ASSERT_EQ(fmk_chainLocate(chain.get(), &point, &foot), FMK_OK);
    EXPECT_NEAR(foot.station, 1130.0, 1e-8);
    EXPECT_NEAR(foot.offset, 4.0, kPointTolerance);
    EXPECT_EQ(foot.perpendicular, 1);

    std::vector<double> distances;
    for (int i = 0; i <= 3500; ++i) {
        distances.push_back(0.1 * i);
    }
    std::vector<FmkPoint> points(distances.size());
    ASSERT_EQ(fmk_chainPoints(chain.get(), distances.data(), distances.size(), nullptr, 0, points.data()), FMK_OK);
    std::vector<FmkChainFoot> feet(points.size());
    ASSERT_EQ(fmk_chainLocateAll(chain.get(), points.data(), points.size(), feet.data()), FMK_OK);
    for (std::size_t i = 0; i < points.size(); ++i) {
        ASSERT_NEAR(feet[i].distance, distances[i], 1e-7);
        ASSERT_NEAR(feet[i].offset, 0.0, 1e-8);
    }
    distances[7] = 400.0;
    EXPECT_EQ(fmk_chainPoints(chain.get(), distances.data(), distances.size(), nullptr, 0, points.data()), FMK_OUTSIDE);
    EXPECT_TRUE(std::isnan(points[7].x));
    EXPECT_FALSE(std::isnan(points[8].x));
    const double two[] = {1.0, 2.0};
    EXPECT_EQ(fmk_chainPoints(chain.get(), distances.data(), 3, two, 2, points.data()), FMK_BAD_VALUE);
}

TEST(CChain, WithoutOffsetsPlacesLieOnTheAxis) {
    const Chain plain = roadChain();
    const OwnedChain chain = madeOfCurves();
    const double distances[] = {0.0, 70.0, 130.0, 350.0};
    std::array<FmkChainPlace, 4> places{};
    ASSERT_EQ(fmk_chainPlaces(chain.get(), distances, places.size(), nullptr, 0, places.data()), FMK_OK);
    for (std::size_t i = 0; i < places.size(); ++i) {
        EXPECT_EQ((Point{places[i].point.x, places[i].point.y}), *plain.pointAt(distances[i])) << i;
    }
}

TEST(CChain, OneOffsetGoesForAllPoints) {
    const Chain plain = roadChain();
    const OwnedChain chain = madeOfCurves();
    const double distances[] = {0.0, 130.0, 350.0};
    const double offsets[] = {2.0, -90.0, 90.0}; // of which the first is given
    std::array<FmkPoint, 3> points{};
    ASSERT_EQ(fmk_chainPoints(chain.get(), distances, 3, offsets, 1, points.data()), FMK_OK);
    for (std::size_t i = 0; i < points.size(); ++i) {
        const Point expected = *plain.pointAt(distances[i], 2.0);
        EXPECT_NEAR(points[i].x, expected.x, kPointTolerance) << i;
        EXPECT_NEAR(points[i].y, expected.y, kPointTolerance) << i;
    }
}

TEST(CChain, GivesEachFieldOfAStake) {
    const double offsets[] = {-3.0, 2.5};
    StakeOptions wanted;
    wanted.every = 50.0;
    wanted.offsets = offsets;
    wanted.mainPoints = true;
    std::vector<Stake> expected;
    ASSERT_EQ(stakesOf(roadChain(5.0), wanted, expected), ChainStatus::Ok);
    FmkStakeOptions options{};
    options.every = 50.0;
    options.offsets = offsets;
    options.offsetCount = 2;
    options.mainPoints = 1;
    const OwnedChain chain = madeOfCurves(5.0);
    std::vector<FmkStake> stakes(expected.size());
    std::size_t count = 0;
    ASSERT_EQ(fmk_chainStakes(chain.get(), &options, stakes.data(), stakes.size(), &count), FMK_OK);
    ASSERT_EQ(count, expected.size());
    double leftmost = 0.0;
    for (std::size_t i = 0; i < count; ++i) {
        EXPECT_EQ(stakes[i].distance, expected[i].distance) << i;
        EXPECT_EQ(stakes[i].station, expected[i].station) << i;
        EXPECT_EQ(stakes[i].offset, expected[i].offset) << i;
        EXPECT_EQ((Point{stakes[i].point.x, stakes[i].point.y}), expected[i].point) << i;
        EXPECT_EQ(stakes[i].azimuth, expected[i].azimuth) << i;
        EXPECT_EQ(stakes[i].kind, static_cast<int>(expected[i].kind)) << i;
        leftmost = std::min(leftmost, stakes[i].offset);
    }
    EXPECT_EQ(leftmost, -3.0);
}

TEST(CChain, TellsOfEachCrossingWhetherItTouches) {
    const auto made = [](const FmkCurve& curve) {
        FmkChain* chain = nullptr;
        EXPECT_EQ(fmk_chainFromCurves(&curve, 1, 0.0, nullptr, 0, &chain), FMK_OK);
        return OwnedChain(chain);
    };
    constexpr double kQuarter = 1.5707963267948966;
    const OwnedChain straight = made({{{0.0, 0.0}, 0.0}, 100.0, 0.0, 0.0});
    const std::pair<FmkCurve, int> others[] = {{{{{50.0, -20.0}, kQuarter}, 40.0, 0.0, 0.0}, 0},
                                               {{{{40.0, 10.0}, -kQuarter}, 31.0, 0.1, 0.1}, 1}};
    for (const auto& [other, tangent] : others) {
        std::array<FmkChainCrossing, 4> found{};
        found[0].tangent = 7;
        std::size_t count = 0;
        ASSERT_EQ(fmk_chainCrossings(straight.get(), made(other).get(), found.data(), found.size(), &count), FMK_OK);
        ASSERT_EQ(count, 1U);
        EXPECT_EQ(found[0].tangent, tangent);
        EXPECT_NEAR(found[0].distance, 50.0, 1e-6);
        EXPECT_NEAR(found[0].point.x, 50.0, 1e-6);
        EXPECT_NEAR(found[0].point.y, 0.0, 1e-6);
    }
}

// Pieces of centimetres and less, each as the curve that it was made of.
TEST(Chains, OfShortCurvesRunAsTheirCurves) {
    std::vector<Curve> curves;
    Pose pose{{12.0, 34.0}, 0.5};
    for (const auto& [length, first, last] : {std::array{0.05, 0.0, 20.0},
                                              {0.008, 20.0, 3.0},
                                              {0.5, -2.0, 1.0},
                                              {0.09, 5.0, 5.0},
                                              {0.02, 0.0, 0.0},
                                              {0.7, 1.0, -1.0}}) {
        curves.push_back({pose, length, first, last});
        pose = endPose(curves.back());
    }
    Chain chain;
    ASSERT_EQ(chain.set(curves, 0.0, {}), ChainStatus::Ok);
    double before = 0.0;
    for (std::size_t i = 0; i < curves.size(); ++i) {
        const Curve& curve = curves[i];
        for (const double share : {0.01, 0.3, 0.5, 0.99}) {
            const double along = share * curve.length;
            const std::optional<ChainPlace> place = chain.placeAt(before + along, 0.002);
            ASSERT_TRUE(place);
            const Pose expected = parallelPose(curve, along, 0.002);
            EXPECT_NEAR(place->point.x, expected.point.x, kPointTolerance) << i << ' ' << share;
            EXPECT_NEAR(place->point.y, expected.point.y, kPointTolerance) << i << ' ' << share;
            EXPECT_NEAR(place->azimuth, azimuthAt(curve, along), kPointTolerance) << i << ' ' << share;
            EXPECT_NEAR(place->curvature, curvatureAt(curve, along), 1e-6) << i << ' ' << share;
            EXPECT_EQ(place->curve, i);
            const std::optional<ChainFoot> foot = chain.locate(place->point);
            ASSERT_TRUE(foot);
            EXPECT_NEAR(foot->distance, before + along, 1e-7) << i << ' ' << share;
            EXPECT_NEAR(foot->offset, 0.002, 1e-7) << i << ' ' << share;
        }
        before += curve.length;
    }
}

TEST(CChain, APointBeyondAShortLastCurveHasItsFootAtItsEnd) {
    for (const double last : {0.001, 0.05, 0.5}) {
        const FmkCurve curves[] = {{{{0.0, 0.0}, 0.0}, 10.0, 0.0, 0.0}, {{{10.0, 0.0}, 0.0}, last, 0.0, 0.0}};
        FmkChain* made = nullptr;
        ASSERT_EQ(fmk_chainFromCurves(curves, 2, 0.0, nullptr, 0, &made), FMK_OK);
        const OwnedChain chain(made);
        const FmkPoint point{12.0, 1.0};
        std::array<FmkChainFoot, 4> feet{};
        std::size_t count = 0;
        ASSERT_EQ(fmk_chainFeet(chain.get(), &point, feet.data(), feet.size(), &count), FMK_OK);
        ASSERT_EQ(count, 1U) << last;
        EXPECT_EQ(feet[0].distance, 10.0 + last);
        EXPECT_EQ(feet[0].perpendicular, 0);
    }
}

TEST(CChain, FillsTheCallersRoomAndTellsWhatThereIs) {
    const OwnedChain chain = madeOfCurves();
    std::size_t count = 0;
    EXPECT_EQ(fmk_chainJoints(chain.get(), nullptr, 0, &count), FMK_INCOMPLETE);
    EXPECT_EQ(count, 4U);
    std::array<FmkChainJoint, 4> joints{};
    EXPECT_EQ(fmk_chainJoints(chain.get(), joints.data(), joints.size(), &count), FMK_OK);
    EXPECT_EQ(joints[3].distance, 300.0);
    EXPECT_LT(joints[3].gap, 1e-10);

    FmkStakeOptions options{};
    options.every = 20.0;
    std::vector<FmkStake> stakes(10);
    EXPECT_EQ(fmk_chainStakes(chain.get(), &options, stakes.data(), stakes.size(), &count), FMK_INCOMPLETE);
    EXPECT_EQ(count, 18U);
    stakes.resize(count);
    EXPECT_EQ(fmk_chainStakes(chain.get(), &options, stakes.data(), stakes.size(), &count), FMK_OK);
    EXPECT_EQ(stakes[17].station, 340.0);

    std::vector<FmkPoint> line(1000);
    double error = 0.0;
    EXPECT_EQ(fmk_chainLine(chain.get(), 1e-3, line.data(), line.size(), &count, &error), FMK_OK);
    EXPECT_GT(count, 20U);
    EXPECT_EQ(error, 1e-3);
    EXPECT_EQ(fmk_chainLine(chain.get(), 1e-3, line.data(), 20, &count, &error), FMK_COARSER);
    EXPECT_LE(count, 20U);
    EXPECT_GT(error, 1e-3);
    EXPECT_EQ(fmk_chainLine(chain.get(), 0.0, line.data(), 20, &count, &error), FMK_BAD_VALUE);
    EXPECT_EQ(fmk_chainLine(chain.get(), kNan, line.data(), 20, &count, &error), FMK_NOT_FINITE);

    const FmkPoint point{-35900.0, 12100.0};
    std::array<FmkChainFoot, 8> feet{};
    EXPECT_EQ(fmk_chainFeet(chain.get(), &point, feet.data(), feet.size(), &count), FMK_OK);
    EXPECT_GE(count, 1U);
    FmkBox box;
    EXPECT_EQ(fmk_chainBox(chain.get(), &box), FMK_OK);
    EXPECT_EQ(box.minX, -36000.0);

    FmkChain* reversed = nullptr;
    ASSERT_EQ(fmk_chainReversed(chain.get(), 0.0, &reversed), FMK_OK);
    const OwnedChain back(reversed);
    FmkChainPlace there;
    FmkChainPlace same;
    ASSERT_EQ(fmk_chainAtDistance(chain.get(), 120.0, 0.0, &there), FMK_OK);
    ASSERT_EQ(fmk_chainAtDistance(back.get(), 230.0, 0.0, &same), FMK_OK);
    EXPECT_NEAR(there.point.x, same.point.x, 1e-9);

    const std::vector<FmkCurve> across{{{{-35950.0, 12000.0}, 1.6}, 200.0, 0.0, 0.0}};
    FmkChain* other = nullptr;
    ASSERT_EQ(fmk_chainFromCurves(across.data(), 1, 0.0, nullptr, 0, &other), FMK_OK);
    const OwnedChain ownedOther(other);
    std::array<FmkChainCrossing, 4> crossings{};
    EXPECT_EQ(fmk_chainCrossings(chain.get(), other, crossings.data(), crossings.size(), &count), FMK_OK);
    EXPECT_EQ(count, 1U);
}

TEST(CChain, StationsThatOccurTwiceAreAllTold) {
    const std::vector<FmkCurve> records = roadRecords();
    const FmkStationEquation equation{110.0, 93.0};
    FmkChain* made = nullptr;
    ASSERT_EQ(fmk_chainFromCurves(records.data(), records.size(), 0.0, &equation, 1, &made), FMK_OK);
    const OwnedChain chain(made);
    std::array<double, 4> distances{};
    std::size_t count = 0;
    ASSERT_EQ(fmk_chainDistances(chain.get(), 100.0, distances.data(), distances.size(), &count), FMK_OK);
    ASSERT_EQ(count, 2U);
    EXPECT_EQ(distances[1], 117.0);
    double station = 0.0;
    std::size_t zone = 0;
    EXPECT_EQ(fmk_chainStation(chain.get(), 117.0, &station, &zone), FMK_OK);
    EXPECT_EQ(station, 100.0);
    EXPECT_EQ(zone, 1U);
    EXPECT_EQ(fmk_chainDistances(chain.get(), 900.0, distances.data(), distances.size(), &count), FMK_OUTSIDE);
    const FmkStationEquation falling[] = {{110.0, 93.0}, {50.0, 0.0}};
    EXPECT_EQ(fmk_chainFromCurves(records.data(), records.size(), 0.0, falling, 2, &made), FMK_OUT_OF_ORDER);
}

TEST(CChain, ComesFromIntersectionPointsAndFromRecords) {
    const std::array<FmkIp, 3> ips{FmkIp{{0.0, 0.0}, 0.0, 0.0, 0.0}, FmkIp{{300.0, 0.0}, 150.0, 80.0, 80.0},
                                   FmkIp{{500.0, 250.0}, 0.0, 0.0, 0.0}};
    FmkChain* made = nullptr;
    ASSERT_EQ(fmk_chainFromIps(ips.data(), ips.size(), 0.0, nullptr, 0, &made), FMK_OK);
    const OwnedChain chain(made);
    std::size_t count = 0;
    std::array<FmkChainJoint, 8> joints{};
    ASSERT_EQ(fmk_chainJoints(chain.get(), joints.data(), joints.size(), &count), FMK_OK);
    EXPECT_EQ(count, 4U);
    for (std::size_t i = 0; i < count; ++i) {
        EXPECT_LT(joints[i].gap, 1e-9);
        EXPECT_LT(std::abs(joints[i].turn), 1e-11);
    }
    const std::array<FmkIp, 3> tight{ips[0], FmkIp{{300.0, 0.0}, 5000.0, 80.0, 80.0}, ips[2]};
    FmkChain* none = nullptr;
    EXPECT_LT(fmk_chainFromIps(tight.data(), tight.size(), 0.0, nullptr, 0, &none), 0);
    EXPECT_EQ(none, nullptr);

    exact::Pose pose{0, 0, 1.0};
    const std::vector<Calelm> records =
        exact::lay_chain(pose, {exact::straight(50.0), exact::clothoid(1.0, 80.0, 0.0, 100.0)});
    FmkChain* fromRecords = nullptr;
    ASSERT_EQ(fmk_chainFromRecords(records.data(), records.size(), 0.0, nullptr, 0, &fromRecords), FMK_OK);
    const OwnedChain owned(fromRecords);
    double length = 0.0;
    EXPECT_EQ(fmk_chainSize(fromRecords, &length, nullptr), FMK_OK);
    EXPECT_NEAR(length, 114.0, 1e-9);
    Calelm bad = records[1];
    bad.dir = 3.0;
    EXPECT_EQ(fmk_chainFromRecords(&bad, 1, 0.0, nullptr, 0, &none), FMK_NOT_AN_ELEMENT);
}

TEST(CChain, TellsOfEachExtremeOfAProfileWhetherItIsHigh) {
    // Up, down and up again: a crest and a sag.
    const FmkVerticalPoint points[] = {{0, 10, 0, 0, FMK_VERTICAL_NONE},
                                       {200, 16, 100, 0, FMK_VERTICAL_PARABOLA},
                                       {400, 10, 100, 0, FMK_VERTICAL_PARABOLA},
                                       {600, 16, 0, 0, FMK_VERTICAL_NONE}};
    FmkProfile* profile = nullptr;
    ASSERT_EQ(fmk_profileMake(points, 4, &profile), FMK_OK);
    std::array<FmkProfileExtreme, 4> extremes{};
    for (FmkProfileExtreme& extreme : extremes) {
        extreme.high = 7;
    }
    std::size_t count = 0;
    EXPECT_EQ(fmk_profileExtremes(profile, extremes.data(), extremes.size(), &count), FMK_OK);
    ASSERT_EQ(count, 2U);
    for (std::size_t i = 0; i < count; ++i) {
        EXPECT_EQ(extremes[i].high, i == 0 ? 1 : 0);
        EXPECT_NEAR(extremes[i].station, i == 0 ? 200.0 : 400.0, kPointTolerance);
        EXPECT_NEAR(extremes[i].height, i == 0 ? 15.25 : 10.75, kPointTolerance);
        EXPECT_EQ(extremes[i].levelFor, 0.0);
    }
    fmk_profileFree(profile);
}

TEST(CChain, ProfilesAndCrossfallsHoldTheirValues) {
    const FmkVerticalPoint points[] = {
        {0, 10, 0, 0, FMK_VERTICAL_NONE}, {200, 16, 100, 0, FMK_VERTICAL_PARABOLA}, {350, 12, 0, 0, FMK_VERTICAL_NONE}};
    FmkProfile* profile = nullptr;
    ASSERT_EQ(fmk_profileMake(points, 3, &profile), FMK_OK);
    double height = 0.0;
    double grade = 0.0;
    EXPECT_EQ(fmk_profileAt(profile, 100.0, &height, &grade, nullptr), FMK_OK);
    EXPECT_NEAR(height, 13.0, kPointTolerance);
    EXPECT_NEAR(grade, 0.03, 1e-12);
    EXPECT_EQ(fmk_profileAt(profile, 351.0, &height, nullptr, nullptr), FMK_OUTSIDE);
    EXPECT_EQ(fmk_profileAt(profile, kNan, &height, nullptr, nullptr), FMK_NOT_FINITE);
    std::size_t count = 0;
    FmkProfileExtreme extreme;
    EXPECT_EQ(fmk_profileExtremes(profile, &extreme, 1, &count), FMK_OK);
    EXPECT_EQ(count, 1U);
    EXPECT_EQ(extreme.high, 1);
    const double stations[] = {0.0, 100.0, 900.0};
    double heights[3];
    EXPECT_EQ(fmk_profileHeights(profile, stations, 3, heights), FMK_OUTSIDE);
    EXPECT_NEAR(heights[1], 13.0, kPointTolerance);
    EXPECT_TRUE(std::isnan(heights[2]));

    const FmkCrossfallStation slopes[] = {{0, -0.02, -0.02}, {350, 0.04, -0.04}};
    FmkCrossfall* crossfall = nullptr;
    ASSERT_EQ(fmk_crossfallMake(slopes, 2, &crossfall), FMK_OK);
    double left = 0.0;
    double right = 0.0;
    EXPECT_EQ(fmk_crossfallAt(crossfall, 175.0, &left, &right), FMK_OK);
    EXPECT_NEAR(left, 0.01, 1e-12);
    EXPECT_NEAR(right, -0.03, 1e-12);

    const OwnedChain chain = madeOfCurves();
    const double offset = 2.0;
    FmkSpacePoint space[3];
    EXPECT_EQ(fmk_chainSpacePoints(chain.get(), profile, crossfall, stations, 2, &offset, 1, space), FMK_OK);
    EXPECT_NEAR(space[0].z, 10.0 - 0.04, kPointTolerance);
    EXPECT_EQ(fmk_chainSpacePoints(chain.get(), profile, crossfall, stations, 3, &offset, 1, space), FMK_OUTSIDE);
    fmk_crossfallFree(crossfall);
    fmk_profileFree(profile);

    const FmkVerticalPoint bad[] = {{0, 10, 0, 0, 9}, {10, 10, 0, 0, 0}};
    EXPECT_EQ(fmk_profileMake(bad, 2, &profile), FMK_BAD_VALUE);
    EXPECT_EQ(fmk_profileMake(points, 1, &profile), FMK_EMPTY);
    EXPECT_EQ(fmk_crossfallMake(slopes, 0, &crossfall), FMK_EMPTY);
}

TEST(CChain, NullPointersAndHostileNumbersEndInAStatus) {
    const OwnedChain chain = madeOfCurves();
    FmkChainPlace place;
    FmkChainFoot foot;
    std::size_t count = 0;
    FmkChain* made = nullptr;
    const FmkPoint point{0, 0};
    EXPECT_EQ(fmk_chainAtStation(nullptr, 0, 0, &place), FMK_NO_POINTER);
    EXPECT_EQ(fmk_chainAtStation(chain.get(), 0, 0, nullptr), FMK_NO_POINTER);
    EXPECT_EQ(fmk_chainLocate(chain.get(), nullptr, &foot), FMK_NO_POINTER);
    EXPECT_EQ(fmk_chainLocate(nullptr, &point, &foot), FMK_NO_POINTER);
    EXPECT_EQ(fmk_chainJoints(chain.get(), nullptr, 3, &count), FMK_NO_POINTER);
    EXPECT_EQ(fmk_chainFromCurves(nullptr, 2, 0, nullptr, 0, &made), FMK_NO_POINTER);
    EXPECT_EQ(fmk_chainFromCurves(nullptr, 0, 0, nullptr, 0, nullptr), FMK_NO_POINTER);
    EXPECT_EQ(fmk_chainFromCurves(nullptr, 0, 0, nullptr, 2, &made), FMK_NO_POINTER);
    EXPECT_EQ(fmk_chainStakes(chain.get(), nullptr, nullptr, 0, &count), FMK_NO_POINTER);
    EXPECT_EQ(fmk_profileAt(nullptr, 0, nullptr, nullptr, nullptr), FMK_NO_POINTER);
    EXPECT_EQ(fmk_crossfallAt(nullptr, 0, nullptr, nullptr), FMK_NO_POINTER);
    fmk_chainFree(nullptr);
    fmk_profileFree(nullptr);
    fmk_crossfallFree(nullptr);

    ASSERT_EQ(fmk_chainFromCurves(nullptr, 0, 0, nullptr, 0, &made), FMK_OK);
    const OwnedChain empty(made);
    FmkBox box;
    EXPECT_EQ(fmk_chainLocate(made, &point, &foot), FMK_EMPTY);
    EXPECT_EQ(fmk_chainBox(made, &box), FMK_EMPTY);
    EXPECT_EQ(fmk_chainAtDistance(made, 0, 0, &place), FMK_OUTSIDE);

    for (const double bad : {kNan, kInfinity, -kInfinity}) {
        FmkChain* none = nullptr;
        FmkCurve curve{{{bad, 0}, 0}, 1, 0, 0};
        EXPECT_EQ(fmk_chainFromCurves(&curve, 1, 0, nullptr, 0, &none), FMK_NOT_FINITE);
        curve = {{{0, 0}, 0}, 1, 0, 0};
        EXPECT_EQ(fmk_chainFromCurves(&curve, 1, bad, nullptr, 0, &none), FMK_NOT_FINITE);
        EXPECT_EQ(none, nullptr);
        const FmkPoint lost{bad, 0};
        EXPECT_EQ(fmk_chainLocate(chain.get(), &lost, &foot), FMK_NOT_FINITE);
        EXPECT_EQ(fmk_chainFeet(chain.get(), &lost, nullptr, 0, &count), FMK_NOT_FINITE);
        EXPECT_EQ(fmk_chainLocateAll(chain.get(), &lost, 1, &foot), FMK_NOT_FINITE);
        EXPECT_TRUE(std::isnan(foot.distance));
        double station = 0.0;
        EXPECT_EQ(fmk_chainStation(chain.get(), bad, &station, nullptr), FMK_NOT_FINITE);
        EXPECT_EQ(fmk_chainDistances(chain.get(), bad, nullptr, 0, &count), FMK_NOT_FINITE);
        EXPECT_EQ(fmk_chainReversed(chain.get(), bad, &none), FMK_NOT_FINITE);
    }
}

TEST(CChain, EveryStatusHasAText) {
    for (const int status : {FMK_EMPTY, FMK_OUTSIDE, FMK_OUT_OF_ORDER, FMK_NOT_AN_ELEMENT, FMK_TOO_MANY}) {
        EXPECT_STRNE(fmk_statusText(status), fmk_statusText(12345)) << status;
    }
}

} // namespace
} // namespace fenmark::curve
