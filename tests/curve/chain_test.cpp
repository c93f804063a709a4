// Chains: points against an independent integration in higher precision, the way back, joints, lines and crossings.
#include "curve/chain.h"
#include "support/exact_chain.h"
#include "support/random.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <optional>
#include <thread>
#include <vector>

namespace fenmark::curve {
namespace {

constexpr double kPointTolerance = 1e-9;  // metres, of a chain of survey size near the origin
constexpr double kFarTolerance = 2e-9;    // metres, 1e7 m from the origin, where one rounding is 0.9e-9 in x and in y
constexpr double kAngleTolerance = 1e-12; // radians
constexpr double kOffsetTolerance = 1e-9; // metres
constexpr double kFootTolerance = 1e-7;   // metres of distance
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

// The exact point of a curve, integrated in long double.
exact::Pose exactPose(const Curve& curve, double along) {
    using exact::Real;
    const Real first = curve.startCurvature;
    const Real growth = curve.length > 0.0 ? (static_cast<Real>(curve.endCurvature) - first) / curve.length : 0;
    // The tool's curvatures are positive to the left.
    return exact::advance({curve.start.point.x, curve.start.point.y, curve.start.azimuth}, -first, -growth, along);
}

struct Random : test::Random {
    using test::Random::Random;

    // Flat, usual, sharp, egg-shaped of either growth, spiralling, reversing within itself.
    Curve curve(const Pose& from) {
        const double sign = coin() ? 1.0 : -1.0;
        const double radius = scaled(15.0, 5000.0);
        switch (pick(8)) {
        case 0:
            return straight(from, uniform(5, 500));
        case 1:
            return arc(from, uniform(0.1, 2.5) * radius, sign / radius);
        case 2: // egg-shaped
            return {from, uniform(0.05, 1.0) * radius, sign / radius, sign / (radius * uniform(1.01, 6.0))};
        case 3:
            return {from, uniform(0.05, 1.0) * radius, sign / (radius * uniform(1.01, 6.0)), sign / radius};
        case 4: // flat
            return {from, uniform(10, 500), sign / scaled(1e5, 1e9), sign / scaled(1e5, 1e9)};
        case 5: // spiralling
            return {from, uniform(2.0, 30.0) * radius, coin() ? 0.0 : sign * 0.1 / radius, sign / radius};
        case 6: // through its inflection
            return {from, uniform(0.1, 2.0) * radius, sign / radius, -sign / (radius * uniform(0.5, 3.0))};
        default: {
            const Curve in{from, uniform(0.05, 1.5) * radius, 0.0, sign / radius};
            return coin() ? in : Curve{from, in.length, in.endCurvature, 0.0};
        }
        }
    }
    std::vector<Curve> curves(std::size_t count, const Pose& from) {
        std::vector<Curve> all;
        Pose pose = from;
        for (std::size_t i = 0; i < count; ++i) {
            all.push_back(curve(pose));
            pose = endPose(all.back());
        }
        return all;
    }
    Pose pose(double reach) { return {{uniform(-reach, reach), uniform(-reach, reach)}, uniform(-7.0, 7.0)}; }
};

Chain chainOf(const std::vector<Curve>& curves, double startStation = 0.0) {
    Chain chain;
    EXPECT_EQ(chain.set(curves, startStation), ChainStatus::Ok);
    return chain;
}

// --- points ---

TEST(Chain, EveryPointIsGoodToANanometre) {
    constexpr unsigned kSeed = 1848;
    Random random(kSeed);
    double worst = 0.0;
    for (int round = 0; round < 10'000; ++round) {
        const bool far = round % 4 == 0;
        const std::vector<Curve> curves = random.curves(3, random.pose(far ? 1e7 : 1e4));
        const Chain chain = chainOf(curves);
        for (std::size_t i = 0; i < curves.size(); ++i) {
            const double along = curves[i].length * random.uniform(0.001, 0.999);
            const exact::Pose expected = exactPose(curves[i], along);
            const std::optional<ChainPlace> place = chain.placeAt(chain.distanceOf(i) + along);
            ASSERT_TRUE(place);
            ASSERT_EQ(place->curve, i);
            // The distance itself is a sum and carries its rounding.
            const double summed = 4.0 * std::numeric_limits<double>::epsilon() * chain.length();
            const double off =
                static_cast<double>(std::hypot(place->point.x - expected.x, place->point.y - expected.y));
            worst = std::max(worst, far ? 0.0 : off);
            ASSERT_LE(off, (far ? kFarTolerance : kPointTolerance) + summed)
                << "seed " << kSeed << " round " << round << " curve " << i;
            const double turned =
                static_cast<double>(std::remainder(place->azimuth - expected.azimuth, 2 * exact::kPi));
            const double sharpest = std::max(std::abs(curves[i].startCurvature), std::abs(curves[i].endCurvature));
            ASSERT_LE(std::abs(turned), kAngleTolerance + sharpest * summed);
            ASSERT_EQ(chain.pointAt(chain.distanceOf(i) + along), place->point);
        }
    }
    RecordProperty("worst", std::to_string(worst));
}

TEST(Chain, AnOffsetLiesRightOfTravel) {
    // North, then a right turn towards the east.
    const std::vector<Curve> curves{straight({{0, 0}, 0.0}, 100.0), arc({{100, 0}, 0.0}, 25.0 * kPi, 1.0 / 50.0)};
    const Chain chain = chainOf(curves);
    EXPECT_EQ(chain.pointAt(50.0, 3.0), (Point{50.0, 3.0}));
    const Point end = *chain.pointAt(chain.length(), -3.0);
    EXPECT_NEAR(end.x, 153.0, kPointTolerance);
    EXPECT_NEAR(end.y, 50.0, kPointTolerance);
}

TEST(Chain, AnOffsetIsLaidOffAtARightAngleToEveryCurve) {
    constexpr unsigned kSeed = 1849;
    Random random(kSeed);
    for (int round = 0; round < 1000; ++round) {
        const std::vector<Curve> curves = random.curves(2, random.pose(1e3));
        const Chain chain = chainOf(curves);
        const double along = curves[1].length * random.uniform(0.001, 0.999);
        const double offset = random.uniform(-50.0, 50.0);
        const exact::Pose axis = exactPose(curves[1], along);
        const Point point = *chain.pointAt(chain.distanceOf(1) + along, offset);
        EXPECT_NEAR(point.x, static_cast<double>(axis.x - offset * std::sin(axis.azimuth)), 1e-8)
            << kSeed << ' ' << round;
        EXPECT_NEAR(point.y, static_cast<double>(axis.y + offset * std::cos(axis.azimuth)), 1e-8)
            << kSeed << ' ' << round;
    }
}

TEST(Chain, CurvaturesThatDifferByOneAreThoseOfAClothoid) {
    for (const auto& [first, last] : {std::pair(0.0, 1.0), std::pair(1.0, 2.0), std::pair(-0.5, 0.5),
                                      std::pair(1.0, 0.0), std::pair(0.0, 0.01), std::pair(1.0, 1.0)}) {
        const Curve curve{{{5.0, 7.0}, 0.3}, 1.5, first, last};
        const Chain chain = chainOf({curve});
        for (const double along : {0.2, 0.9, 1.5}) {
            const exact::Pose expected = exactPose(curve, along);
            EXPECT_NEAR(chain.pointAt(along)->x, static_cast<double>(expected.x), kPointTolerance)
                << first << ' ' << last;
            EXPECT_NEAR(chain.pointAt(along)->y, static_cast<double>(expected.y), kPointTolerance)
                << first << ' ' << last;
        }
    }
}

TEST(Chain, APlaceOnAJointBelongsToTheSideThatIsAskedFor) {
    const std::vector<Curve> curves{straight({{0, 0}, 0.0}, 100.0), straight({{100, 0}, kPi / 2}, 100.0)};
    const Chain chain = chainOf(curves);
    EXPECT_EQ(chain.curveAt(100.0), 1U);
    EXPECT_EQ(chain.curveAt(100.0, Side::Before), 0U);
    EXPECT_NEAR(chain.pointAt(100.0, 10.0)->x, 90.0, kPointTolerance);
    EXPECT_NEAR(chain.pointAt(100.0, 10.0, Side::Before)->y, 10.0, kPointTolerance);
    EXPECT_EQ(chain.placeAt(100.0, 0.0, Side::Before)->azimuth, 0.0);
    EXPECT_EQ(chain.placeAt(100.0)->azimuth, kPi / 2);
    EXPECT_EQ(chain.curveAt(0.0, Side::Before), 0U);
    EXPECT_EQ(chain.curveAt(200.0), 1U);
}

TEST(Chain, BeyondItsEndsThereIsNothing) {
    const Chain chain = chainOf({straight({{0, 0}, 0.0}, 100.0)});
    EXPECT_TRUE(chain.pointAt(-0.9e-6));
    EXPECT_FALSE(chain.pointAt(-1.1e-6));
    EXPECT_TRUE(chain.pointAt(100.0 + 0.9e-6));
    EXPECT_FALSE(chain.pointAt(100.0 + 1.1e-6));
    for (const double bad : {kNan, kInfinity, -kInfinity, 1e300}) {
        EXPECT_FALSE(chain.pointAt(bad));
        EXPECT_FALSE(chain.placeAt(bad));
        EXPECT_FALSE(chain.curveAt(bad));
    }
    EXPECT_FALSE(chain.pointAt(50.0, kNan));
    EXPECT_FALSE(chain.pointAt(50.0, kInfinity));
    EXPECT_FALSE(chain.locate({kNan, 0.0}));
    EXPECT_FALSE(chain.locate({0.0, kInfinity}));
}

TEST(Chain, ArraysGiveWhatSingleQuestionsGive) {
    constexpr unsigned kSeed = 33;
    Random random(kSeed);
    for (int round = 0; round < 200; ++round) {
        const std::vector<Curve> curves = random.curves(20, random.pose(1e5));
        const Chain chain = chainOf(curves);
        std::vector<double> distances;
        for (int i = 0; i < 300; ++i) {
            distances.push_back(random.uniform(-20.0, chain.length() + 20.0));
        }
        distances[7] = kNan;
        distances[8] = chain.length();
        distances[9] = chain.length() + 1e-7;
        if (round % 2 == 0) {
            std::sort(distances.begin(), distances.end(), [](double a, double b) { return a < b; });
        }
        std::vector<double> offsets;
        if (round % 3 > 0) {
            offsets.resize(round % 3 == 1 ? 1 : distances.size());
            for (double& offset : offsets) {
                offset = random.uniform(-20.0, 20.0);
            }
        }
        std::vector<Point> points(distances.size());
        std::vector<ChainPlace> places(distances.size());
        const std::size_t found = chain.points(distances, offsets, points);
        EXPECT_EQ(chain.places(distances, offsets, places), found);
        std::size_t known = 0;
        for (std::size_t i = 0; i < distances.size(); ++i) {
            const double offset = offsets.empty() ? 0.0 : offsets.size() == 1 ? offsets[0] : offsets[i];
            const std::optional<Point> one = chain.pointAt(distances[i], offset);
            known += one ? 1 : 0;
            ASSERT_EQ(std::isnan(points[i].x), !one) << "seed " << kSeed << " round " << round << " at " << i;
            if (one) {
                // The short series differs in the last bits.
                ASSERT_NEAR(points[i].x, one->x, 1e-10);
                ASSERT_NEAR(points[i].y, one->y, 1e-10);
                ASSERT_EQ(places[i].point, *one);
            }
        }
        EXPECT_EQ(found, known);
    }
}

TEST(Chain, ManyThreadsReadOneChain) {
    Random random(35);
    const Chain chain = chainOf(random.curves(200, random.pose(1e4)));
    struct Answer {
        std::optional<Point> point;
        std::optional<ChainFoot> foot;
    };
    const auto ask = [&chain](double share) {
        const double distance = share * chain.length();
        const std::optional<Point> point = chain.pointAt(distance, 3.0);
        return Answer{point, point ? chain.locate(*point) : std::nullopt};
    };
    constexpr int kQuestions = 500;
    std::vector<Answer> alone;
    for (int i = 0; i < kQuestions; ++i) {
        alone.push_back(ask(double(i) / kQuestions));
    }
    std::array<int, 4> different{};
    std::vector<std::thread> threads;
    for (int& count : different) {
        threads.emplace_back([&] {
            for (int i = 0; i < kQuestions; ++i) {
                const Answer answer = ask(double(i) / kQuestions);
                const Answer& expected = alone[static_cast<std::size_t>(i)];
                const bool same = answer.point == expected.point &&
                                  answer.foot.has_value() == expected.foot.has_value() &&
                                  (!answer.foot || (answer.foot->distance == expected.foot->distance &&
                                                    answer.foot->offset == expected.foot->offset));
                count += same ? 0 : 1;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(different, (std::array<int, 4>{}));
}

TEST(Chain, ACrowdOfShortCurvesIsFoundByItsIndexAsByAWalk) {
    Random random(3);
    std::vector<Curve> curves = random.curves(3000, {});
    Pose pose;
    for (std::size_t i = 0; i < curves.size(); ++i) {
        curves[i].length *= i >= 1000 && i < 1500 ? 1e-5 : 1.0;
        curves[i].start = pose;
        pose = endPose(curves[i]);
    }
    const Chain chain = chainOf(curves, -500.0);
    for (std::size_t i = 0; i < curves.size(); ++i) {
        EXPECT_EQ(chain.curveAt(chain.distanceOf(i) + 0.5 * curves[i].length), i);
    }
}

TEST(Chain, CurvesOfNoLengthHoldNoDistance) {
    std::vector<Curve> curves{straight({{0, 0}, 0.0}, 10.0), straight({{10, 0}, 3.0}, 0.0),
                              straight({{10, 0}, 0.0}, 10.0), straight({{20, 0}, 2.0}, 0.0)};
    const Chain chain = chainOf(curves);
    EXPECT_EQ(chain.curveAt(10.0), 2U);
    EXPECT_EQ(chain.curveAt(20.0), 2U);
    EXPECT_EQ(chain.joints().size(), 1U);
    const Chain point = chainOf({straight({{3, 4}, 1.0}, 0.0)});
    EXPECT_EQ(point.pointAt(0.0), (Point{3, 4}));
    EXPECT_EQ(point.locate({3, 9})->distance, 0.0);
    EXPECT_NEAR(std::abs(point.locate({3, 9})->offset), 5.0, kOffsetTolerance);
}

// --- what is refused, and what is hostile ---

TEST(Chain, RefusesWhatIsNotFinite) {
    Chain chain = chainOf({straight({{0, 0}, 0.0}, 10.0)});
    for (const double bad : {kNan, kInfinity, -kInfinity}) {
        for (int field = 0; field < 6; ++field) {
            Curve curve{{{0, 0}, 0.0}, 10.0, 0.0, 0.01};
            double* const fields[] = {&curve.start.point.x, &curve.start.point.y,  &curve.start.azimuth,
                                      &curve.length,        &curve.startCurvature, &curve.endCurvature};
            *fields[field] = bad;
            EXPECT_EQ(chain.set(std::span(&curve, 1)), ChainStatus::NotFinite);
        }
        EXPECT_EQ(chain.set({}, bad), ChainStatus::NotFinite);
    }
    const std::vector<Curve> long1{straight({{0, 0}, 0.0}, 1e308), straight({{0, 0}, 0.0}, 1e308)};
    EXPECT_EQ(chain.set(long1), ChainStatus::NotFinite);
    EXPECT_EQ(chain.set(std::span(long1).first(1), 1e308), ChainStatus::NotFinite) << "the last station";
    EXPECT_EQ(Chain().set(std::span(long1).first(1), -1e308), ChainStatus::Ok);
    const std::vector<StationEquation> falling{{5, 0}, {1, 0}};
    EXPECT_EQ(chain.set(chain.curves(), 0.0, falling), ChainStatus::OutOfOrder);
    EXPECT_EQ(chain.length(), 10.0) << "as it was";
    EXPECT_EQ(chain.set({}), ChainStatus::Ok);
    EXPECT_TRUE(chain.empty());
    EXPECT_FALSE(chain.pointAt(0.0));
    EXPECT_FALSE(chain.locate({0, 0}));
    EXPECT_FALSE(chain.box());
    EXPECT_TRUE(chain.feet({0, 0}).empty());
    EXPECT_TRUE(chain.joints().empty());
    EXPECT_TRUE(chain.line(0.001, 100).points.empty());
}

// A distance a little beside a joint may belong to a curve much shorter than the tolerance of the joint.
TEST(Chain, ASpeckIsNotFollowedBeyondItsEndsIntoInfinity) {
    for (const double length : {5e-324, 1e-320, 1e-300, 1e-150, 1e-12}) {
        for (const auto& [first, last] : {std::pair(0.0, 3.0), std::pair(1.0, 1e9), std::pair(1e300, 1e300),
                                          std::pair(-1e20, 1e20), std::pair(0.0, 0.0)}) {
            const Chain chain = chainOf({straight({{0, 0}, 0.0}, 5.0), Curve{{{5, 0}, 0.0}, length, first, last},
                                         straight({{5, 0}, 0.0}, 5.0)});
            const std::vector<double> distances{5.0 - 0.6e-9, 5.0 - 0.3e-9, 5.0, 5.0 + 0.3e-9, 5.0 + 0.6e-9};
            std::vector<Point> points(distances.size());
            EXPECT_EQ(chain.points(distances, {}, points), distances.size());
            for (std::size_t i = 0; i < distances.size(); ++i) {
                EXPECT_NEAR(points[i].x, 5.0, 2e-9) << length << ' ' << last;
                EXPECT_NEAR(points[i].y, 0.0, 2e-9) << length << ' ' << last;
                for (const Side side : {Side::Before, Side::After}) {
                    const auto place = chain.placeAt(distances[i], 2.0, side);
                    ASSERT_TRUE(place) << length << ' ' << last;
                    EXPECT_TRUE(std::isfinite(place->azimuth) && std::isfinite(place->curvature));
                }
                const auto foot = chain.locate({points[i].x, 3.0});
                ASSERT_TRUE(foot);
                EXPECT_NEAR(foot->offset, 3.0, 1e-8);
                EXPECT_TRUE(chain.pointAt(foot->distance));
            }
        }
    }
}

TEST(Chain, AnyFiniteValuesAreAnsweredWithFiniteOnesOrNothing) {
    constexpr unsigned kSeed = 666;
    Random random(kSeed);
    const double lengths[] = {5e-324, 1e-320, 1e-300, 1e-9, 1.0, 1e9, 1e100, 1e154, 1e300};
    const double curvatures[] = {0.0, 5e-324, 1e-300, 1e-100, 1e-9, 1e-3, 1.0, 1e9, 1e100, 1e300};
    const double places[] = {0.0, 1.0, 1e7, 1e100, 1e300};
    int answered = 0;
    for (int round = 0; round < 120; ++round) {
        std::vector<Curve> curves;
        for (int i = 0; i < 2; ++i) {
            const auto any = [&](const auto& values) {
                return values[random.pick(static_cast<int>(std::size(values)))] * (random.coin() ? 1.0 : -1.0);
            };
            curves.push_back({{{any(places), any(places)}, random.uniform(-10, 10)},
                              std::abs(any(lengths)),
                              any(curvatures),
                              any(curvatures)});
        }
        Chain chain;
        if (chain.set(curves) != ChainStatus::Ok) {
            EXPECT_FALSE(isUsable(curves[0]) && isUsable(curves[1]) &&
                         std::isfinite(curves[0].length + curves[1].length));
            continue;
        }
        ++answered;
        for (const double share : {0.0, 0.3, 0.5, 1.0}) {
            const std::optional<ChainPlace> place = chain.placeAt(share * chain.length(), share);
            if (place) {
                EXPECT_TRUE(isFinite(place->point)) << "seed " << kSeed << " round " << round;
                EXPECT_TRUE(std::isfinite(place->azimuth) && std::isfinite(place->curvature))
                    << "seed " << kSeed << " round " << round;
            }
            const std::optional<ChainFoot> foot = chain.locate({share * 1e3, 1e200 * (share - 0.3)});
            EXPECT_TRUE(!foot || (std::isfinite(foot->distance) && std::isfinite(foot->offset)));
        }
        for (const ChainFoot& foot : chain.feet({1.0, 2.0})) {
            EXPECT_TRUE(std::isfinite(foot.distance) && !std::isnan(foot.offset));
        }
        const ChainLine line = chain.line(1e-3, 500);
        EXPECT_LE(line.points.size(), 504U);
        const std::optional<Box> box = chain.box();
        ASSERT_TRUE(box);
        EXPECT_LE(box->minX, box->maxX);
    }
    EXPECT_GT(answered, 20);
}

// --- the way back ---

TEST(Chain, ThePointBesideItComesBackOrOneThatIsNearer) {
    constexpr unsigned kSeed = 20211031;
    Random random(kSeed);
    int same = 0;
    for (int round = 0; round < 2000; ++round) {
        const std::vector<Curve> curves = random.curves(static_cast<std::size_t>(1 + round % 4), random.pose(1e5));
        const Chain chain = chainOf(curves);
        for (int i = 0; i < 10; ++i) {
            const double distance = random.uniform(0.0, chain.length());
            const double curvature = std::abs(chain.placeAt(distance)->curvature);
            const double reach = std::min(0.95 / std::max(curvature, 1e-9), 300.0);
            const double offset = random.uniform(-reach, reach);
            const Point point = *chain.pointAt(distance, offset);
            const ChainFoot foot = *chain.locate(point);
            const Point back = *chain.pointAt(foot.distance);
            const double away = std::hypot(back.x - point.x, back.y - point.y);
            ASSERT_NEAR(away, std::abs(foot.offset), 1e-8) << "seed " << kSeed << " round " << round;
            const bool isSame = std::abs(foot.distance - distance) < 1e-6 && std::abs(foot.offset - offset) < 1e-8;
            same += isSame ? 1 : 0;
            ASSERT_TRUE(isSame || away < std::abs(offset) + 1e-9) << "seed " << kSeed << " round " << round;
            // The place is among all feet, and the nearest of them is the foot.
            double nearest = kInfinity;
            bool found = false;
            for (const ChainFoot& one : chain.feet(point)) {
                nearest = std::min(nearest, std::abs(one.offset));
                found = found || (std::abs(one.distance - distance) < 1e-6 && std::abs(one.offset - offset) < 1e-8);
            }
            ASSERT_NEAR(nearest, std::abs(foot.offset), 1e-8) << "seed " << kSeed << " round " << round;
            ASSERT_TRUE(found || curves.size() > 1 || std::abs(curves[0].endCurvature * curves[0].length) > 3.0)
                << "seed " << kSeed << " round " << round;
        }
    }
    EXPECT_GT(same, 10'000) << "most come back to where they were set off";
}

TEST(Chain, TheNearestOfManyCurvesIsTheNearestOfEach) {
    constexpr unsigned kSeed = 5;
    Random random(kSeed);
    const std::vector<Curve> curves = random.curves(200, {});
    const Chain chain = chainOf(curves);
    std::vector<Chain> singles;
    for (const Curve& curve : curves) {
        singles.push_back(chainOf({curve}));
    }
    std::vector<Point> points;
    for (int round = 0; round < 300; ++round) {
        const Point around = *chain.pointAt(random.uniform(0, chain.length()));
        points.push_back({around.x + random.uniform(-2000, 2000), around.y + random.uniform(-2000, 2000)});
    }
    std::vector<ChainFoot> feet(points.size());
    EXPECT_EQ(chain.locate(points, feet), points.size());
    for (std::size_t i = 0; i < points.size(); ++i) {
        double nearest = kInfinity;
        for (const Chain& one : singles) {
            nearest = std::min(nearest, std::abs(one.locate(points[i])->offset));
        }
        ASSERT_NEAR(std::abs(chain.locate(points[i])->offset), nearest, 1e-7) << "seed " << kSeed;
        ASSERT_NEAR(std::abs(feet[i].offset), nearest, 1e-7);
    }
}

TEST(Chain, OutsideAKinkTheSideIsTheOuterOne) {
    // North 100 m, then sharply back to the left: the outer side is the right one.
    const double turn = -0.9 * kPi;
    const std::vector<Curve> curves{straight({{0, 0}, 0.0}, 100.0), straight({{100, 0}, turn}, 100.0)};
    const Chain chain = chainOf(curves);
    for (const Point& ahead : {Point{103, 0.2}, Point{103, -0.2}, Point{105, 1}}) {
        const ChainFoot foot = *chain.locate(ahead);
        EXPECT_NEAR(foot.distance, 100.0, kFootTolerance);
        EXPECT_NEAR(foot.offset, std::hypot(ahead.x - 100, ahead.y), kOffsetTolerance);
        EXPECT_FALSE(foot.perpendicular);
        EXPECT_TRUE(foot.atJoint);
    }
    // Between the legs there are two feet, one on each, and the ends of the chain are none.
    const Point between{60.0, -6.0};
    const std::vector<ChainFoot> feet = chain.feet(between);
    ASSERT_EQ(feet.size(), 2U);
    EXPECT_NEAR(feet[0].distance, 60.0, kFootTolerance);
    EXPECT_LT(feet[0].offset, 0.0);
    EXPECT_GT(feet[1].distance, 100.0);
    EXPECT_LT(feet[1].offset, 0.0);
}

// A zigzag, so that each joint turns to the other side than its neighbours; the first and the last kink included.
TEST(Chain, OutsideEachKinkOfAZigzagTheSideIsTheOuterOne) {
    std::vector<Curve> curves;
    Pose pose{{0, 0}, 0.3};
    for (int i = 0; i < 5; ++i) {
        curves.push_back(straight(pose, 100.0));
        pose = endPose(curves.back());
        pose.azimuth += (i % 2 == 0 ? 1.0 : -1.0) * (0.9 + 0.01 * i) * kPi;
    }
    const Chain chain = chainOf(curves);
    for (std::size_t i = 1; i < curves.size(); ++i) {
        const Pose& behind = curves[i].start;
        const double turn = behind.azimuth - curves[i - 1].start.azimuth;
        // Outside the kink, to either side of the line halfway between both, where one of them has it on its other side.
        for (const double off : {-0.25, 0.25}) {
            const double outwards = curves[i - 1].start.azimuth + 0.5 * turn - (turn > 0.0 ? 0.5 : -0.5) * kPi + off;
            const Point point{behind.point.x + 4.0 * std::cos(outwards), behind.point.y + 4.0 * std::sin(outwards)};
            const ChainFoot foot = *chain.locate(point);
            EXPECT_TRUE(foot.atJoint);
            EXPECT_NEAR(foot.distance, 100.0 * static_cast<double>(i), kFootTolerance);
            EXPECT_NEAR(foot.offset, turn > 0.0 ? -4.0 : 4.0, kOffsetTolerance) << i << ' ' << off;
        }
    }
}

// Also where two feet lie between places that both see the point ahead and coming nearer.
TEST(Chain, OfAnyCurveAllNearestPlacesAreFound) {
    constexpr unsigned kSeed = 4711;
    Random random(kSeed);
    for (int round = 0; round < 20'000; ++round) {
        const double first = random.pick(4) == 0 ? 0.0 : random.sign() * random.scaled(1e-4, 0.03);
        const double last = random.sign() * random.scaled(1e-4, 0.03);
        const double sharpest = std::max(std::abs(first), std::abs(last));
        const Curve curve{{{0, 0}, random.uniform(-3, 3)}, random.uniform(0.3, 5.5) / sharpest, first, last};
        const Chain chain = chainOf({curve});
        const double away = random.sign() * random.scaled(0.1, 5.0) / sharpest;
        const Point point = parallelPose(curve, random.uniform(0, 1) * curve.length, away).point;
        const std::vector<ChainFoot> feet = chain.feet(point);
        for (const Foot& foot : feetOf(curve, point).found) {
            // Not the farthest, those about to meet one, and those that an end may stand for.
            if (curvatureAt(curve, foot.along) * foot.offset < 0.99 && foot.along > 1e-4 &&
                foot.along < curve.length - 1e-4) {
                ASSERT_TRUE(std::any_of(feet.begin(), feet.end(),
                                        [&](const ChainFoot& other) {
                                            return std::abs(other.distance - foot.along) < 1e-6 * curve.length &&
                                                   other.perpendicular;
                                        }))
                    << "seed " << kSeed << " round " << round;
            }
        }
        double nearest = kInfinity;
        for (const ChainFoot& foot : feet) {
            nearest = std::min(nearest, std::abs(foot.offset));
        }
        ASSERT_NEAR(nearest, std::abs(nearestFoot(curve, point).offset), 1e-7)
            << "seed " << kSeed << " round " << round;
    }
}

// The frame of this one lies along the axis at its inflection, so that no rounding moves the foot off it.
TEST(Chain, AFootExactlyOnAnInflectionIsOneAndTakesNoOthersPlace) {
    for (const double sign : {1.0, -1.0}) {
        for (const double length : {100.0, 200.0, 400.0, 600.0}) {
            const double sharp = sign * 0.012;
            const Point end = endPose({{{0.0, 0.0}, 0.0}, 0.5 * length, 0.0, sharp}).point;
            const Chain chain = chainOf({{{{-end.x, -end.y}, 0.25 * length * sharp}, length, -sharp, sharp}});
            for (const double offset : {-700.0, -400.0, -70.0, 5.0, 60.0, 300.0, 800.0}) {
                const std::vector<ChainFoot> feet = chain.feet({0.0, offset});
                const auto onIt = std::count_if(feet.begin(), feet.end(), [&](const ChainFoot& foot) {
                    return std::abs(foot.distance - 0.5 * length) < 1e-9 && foot.perpendicular &&
                           std::abs(foot.offset - offset) < 1e-9;
                });
                EXPECT_EQ(onIt, 1) << sign << ' ' << length << ' ' << offset;
                EXPECT_EQ(feet.size(), chain.feet({1e-5, offset}).size()) << sign << ' ' << length << ' ' << offset;
            }
        }
    }
}

TEST(Chain, APlaceBeyondAllSquaresHasItsDistance) {
    const Chain road = chainOf({straight({{0, 0}, 0.0}, 100.0), arc({{100, 0}, 0.0}, 50.0, 0.01)});
    for (const Point& far : {Point{1e200, 0.0}, Point{0.0, -1e200}, Point{-1e141, 1e200}}) {
        const std::optional<ChainFoot> foot = road.locate(far);
        ASSERT_TRUE(foot);
        EXPECT_NEAR(std::abs(foot->offset) / 1e200, 1.0, 1e-12);
    }
    const Chain vast = chainOf({straight({{0, 0}, 0.0}, 1e200)});
    EXPECT_NEAR(vast.locate({1e150, 7.0})->offset, 7.0, 1e-9);
}

TEST(Chain, BesideAGapAPointKeepsItsSide) {
    // Coordinates of a file are rounded: curves end micrometres to millimetres from where the next ones start, and their
    // tangents break by a little to either side.
    for (const double gap : {1e-7, 3e-6, 1e-3}) {
        for (const double turn : {-1e-5, -2e-9, 0.0, 2e-9, 1e-5}) {
            const Chain chain = chainOf({straight({{0, 0}, 0.0}, 100.0), straight({{100.0 + gap, 0.0}, turn}, 100.0)});
            for (const double offset : {-50.0, -2.0, 2.0, 50.0}) {
                for (const double part : {0.1, 0.4, 0.6, 0.9}) {
                    const ChainFoot foot = *chain.locate({100.0 + part * gap, offset});
                    EXPECT_NEAR(foot.offset, offset, 1e-3) << "gap " << gap << ", turn " << turn << ", part " << part;
                }
            }
        }
    }
}

TEST(Chain, APointBeyondAnEndHasItsFootThere) {
    const Chain chain = chainOf({straight({{0, 0}, 0.0}, 100.0)});
    const ChainFoot foot = *chain.locate({-3, 4});
    EXPECT_EQ(foot.distance, 0.0);
    EXPECT_NEAR(foot.offset, 5.0, kOffsetTolerance);
    EXPECT_FALSE(foot.perpendicular);
    EXPECT_FALSE(foot.atJoint);
    EXPECT_EQ(chain.feet({-3, 4}).size(), 1U);
    EXPECT_EQ(chain.feet({50, 4}).size(), 1U);
}

TEST(Chain, ACircleRunThroughTwiceIsFound) {
    const Chain chain = chainOf({arc({{0, 0}, 0.0}, 1000.0, 0.02)});
    const ChainFoot foot = *chain.locate({10.0, 50.0});
    EXPECT_NEAR(foot.distance, 25.0 * kPi, kFootTolerance);
    EXPECT_NEAR(foot.offset, 40.0, kOffsetTolerance);
}

// --- the whole ---

TEST(Chain, JointsTellGapsAndBreaks) {
    const std::vector<Curve> curves{straight({{0, 0}, 0.0}, 100.0), arc({{100.0, 0.03}, 0.1}, 50.0, 0.01),
                                    straight(endPose(arc({{100.0, 0.03}, 0.1}, 50.0, 0.01)), 10.0)};
    const std::vector<ChainJoint> joints = chainOf(curves).joints();
    ASSERT_EQ(joints.size(), 2U);
    EXPECT_EQ(joints[0].distance, 100.0);
    EXPECT_EQ(joints[0].curve, 1U);
    EXPECT_NEAR(joints[0].gap, 0.03, kPointTolerance);
    EXPECT_NEAR(joints[0].turn, 0.1, kAngleTolerance);
    EXPECT_NEAR(joints[0].curvatureStep, 0.01, kAngleTolerance);
    EXPECT_NEAR(joints[1].gap, 0.0, kPointTolerance);
    EXPECT_NEAR(joints[1].turn, 0.0, kAngleTolerance);
    EXPECT_NEAR(joints[1].curvatureStep, -0.01, kAngleTolerance);
}

TEST(Chain, OverAGapBothEndsAreFeet) {
    const Chain chain = chainOf({straight({{0, 0}, 0.0}, 10.0), straight({{20, 0}, 0.0}, 10.0)});
    const std::vector<ChainFoot> feet = chain.feet({14.0, 1.0});
    ASSERT_EQ(feet.size(), 1U) << "both ends have one distance, the nearer stands";
    EXPECT_NEAR(std::abs(feet[0].offset), std::hypot(4.0, 1.0), 1e-9);
}

TEST(Chain, TheLineStaysWithinItsToleranceAndItsBound) {
    constexpr unsigned kSeed = 12;
    Random random(kSeed);
    for (int round = 0; round < 40; ++round) {
        const Chain chain = chainOf(random.curves(8, random.pose(1e4)));
        for (const double tolerance : {1.0, 1e-3}) {
            for (const std::size_t most : {std::size_t{60}, std::size_t{1'000'000}}) {
                const ChainLine line = chain.line(tolerance, most);
                ASSERT_LE(line.points.size(), most);
                EXPECT_GE(line.tolerance, tolerance);
                EXPECT_TRUE(most == 60 || line.tolerance == tolerance) << "seed " << kSeed << " round " << round;
                for (std::size_t i = 0; i + 1 < line.points.size(); i += 1 + line.points.size() / 200) {
                    const Point middle{0.5 * (line.points[i].x + line.points[i + 1].x),
                                       0.5 * (line.points[i].y + line.points[i + 1].y)};
                    ASSERT_LE(std::abs(chain.locate(middle)->offset), line.tolerance * (1.0 + 1e-6) + 1e-9)
                        << "seed " << kSeed << " round " << round;
                }
            }
        }
        const Box box = *chain.box();
        for (int i = 0; i <= 100; ++i) {
            const Point point = *chain.pointAt(chain.length() * i / 100);
            ASSERT_TRUE(point.x >= box.minX - 1e-9 && point.x <= box.maxX + 1e-9 && point.y >= box.minY - 1e-9 &&
                        point.y <= box.maxY + 1e-9);
        }
    }
}

// With little more room than all need, each curve must get its own share of it.
TEST(Chain, TheRoomOfALineIsSharedByWhatEachCurveNeeds) {
    const Pose start{{0, 0}, 0.0};
    const Curve kinds[] = {arc(start, 3000.0, 0.02),     {start, 3000.0, 0.0, 0.02},
                           {start, 3000.0, 0.005, 0.02}, {start, 3000.0, -0.02, 0.02},
                           {start, 3000.0, 0.018, 0.02}, {start, 3000.0, -0.02, -0.019999},
                           arc(start, 3.0, 20.0)};
    for (const Curve& one : kinds) {
        for (const Curve& other : kinds) {
            for (const double tolerance : {1e-4, 1e-2, 1.0}) {
                const Chain chain = chainOf({one, other});
                const ChainLine whole = chain.line(tolerance, 1'000'000);
                const auto room = static_cast<std::size_t>(1.2 * static_cast<double>(whole.points.size())) + 8;
                const ChainLine line = chain.line(tolerance, room);
                EXPECT_LE(line.points.size(), room);
                EXPECT_LE(line.tolerance, tolerance)
                    << one.startCurvature << ' ' << one.endCurvature << ' ' << other.startCurvature << ' '
                    << other.endCurvature << ' ' << tolerance;
            }
        }
    }
}

TEST(Chain, ReversedTwiceIsTheSame) {
    Random random(8);
    const Chain chain = chainOf(random.curves(10, random.pose(1e4)), 100.0);
    const Chain back = chain.reversed();
    EXPECT_NEAR(back.length(), chain.length(), kPointTolerance);
    for (int i = 0; i <= 50; ++i) {
        const double distance = chain.length() * i / 50;
        const Point there = *chain.pointAt(distance, 2.0);
        const Point same = *back.pointAt(std::min(chain.length() - distance, back.length()), -2.0, Side::Before);
        EXPECT_NEAR(there.x, same.x, 1e-8);
        EXPECT_NEAR(there.y, same.y, 1e-8);
    }
}

TEST(Chain, CrossingsLieOnBothChains) {
    constexpr unsigned kSeed = 19;
    Random random(kSeed);
    int found = 0;
    for (int round = 0; round < 150; ++round) {
        const Chain one = chainOf(random.curves(12, {{0, 0}, random.uniform(-3, 3)}));
        const Chain other = chainOf(random.curves(12, {{random.uniform(-200, 200), 300}, random.uniform(-3, 3)}));
        const std::vector<ChainCrossing> crossings = one.crossings(other);
        const std::vector<ChainCrossing> mirrored = other.crossings(one);
        EXPECT_EQ(crossings.size(), mirrored.size()) << "seed " << kSeed << " round " << round;
        for (const ChainCrossing& crossing : crossings) {
            ++found;
            const Point a = *one.pointAt(crossing.distance);
            const Point b = *other.pointAt(crossing.otherDistance);
            EXPECT_NEAR(std::hypot(a.x - b.x, a.y - b.y), 0.0, 1e-8) << "seed " << kSeed << " round " << round;
        }
        // A walk along the other chain in steps of metres sees each change of side near one of them.
        const double step = std::max(5.0, other.length() / 300.0);
        for (double distance = 1.0; distance < other.length(); distance += step) {
            const ChainFoot before = *one.locate(*other.pointAt(distance - 1.0));
            const ChainFoot behind = *one.locate(*other.pointAt(distance));
            if (before.perpendicular && behind.perpendicular && (before.offset > 0) != (behind.offset > 0) &&
                std::abs(before.offset) < 1.0 && std::abs(before.distance - behind.distance) < 3.0) {
                EXPECT_TRUE(std::any_of(crossings.begin(), crossings.end(),
                                        [&](const ChainCrossing& crossing) {
                                            return crossing.otherDistance > distance - 1.1 &&
                                                   crossing.otherDistance < distance + 0.1;
                                        }))
                    << "seed " << kSeed << " round " << round << " at " << distance;
            }
        }
    }
    EXPECT_GT(found, 60);
}

TEST(Chain, ACrossingOnAJointIsOne) {
    const Chain across = chainOf({straight({{0, -50}, kPi / 2}, 100.0)});
    const Chain along = chainOf({straight({{-50, 0}, 0.0}, 50.0), straight({{0, 0}, 0.0}, 50.0)});
    const std::vector<ChainCrossing> crossings = along.crossings(across);
    ASSERT_EQ(crossings.size(), 1U);
    EXPECT_NEAR(crossings[0].distance, 50.0, 1e-9);
    EXPECT_NEAR(crossings[0].otherDistance, 50.0, 1e-9);
    EXPECT_NEAR(crossings[0].angle, kPi / 2, 1e-9);
    EXPECT_FALSE(crossings[0].tangent);
}

TEST(Chain, StationsRunOnTheChain) {
    Chain chain;
    const std::vector<Curve> curves{straight({{0, 0}, 0.0}, 300.0)};
    const std::vector<StationEquation> equations{{100.0, 80.0}};
    ASSERT_EQ(chain.set(curves, 0.0, equations), ChainStatus::Ok);
    EXPECT_EQ(chain.distanceAt(90.0), 90.0);
    EXPECT_EQ(chain.stations().distancesAt(90.0, chain.length()), (std::vector<double>{90.0, 110.0}));
    EXPECT_EQ(chain.stationAt(110.0).station, 90.0);
    EXPECT_TRUE(std::isnan(chain.distanceAt(281.0)));
}

} // namespace
} // namespace fenmark::curve
