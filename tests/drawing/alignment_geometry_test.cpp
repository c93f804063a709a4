// Points on straights, arcs and clothoids against an integration in higher precision, and the way back.
#include "drawing/alignment_geometry.h"
#include "support/exact_chain.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>
#include <random>
#include <utility>
#include <vector>

namespace fenmark::drawing {
namespace {

constexpr double kPointTolerance = 1e-9;      // metres, of a point on an element of survey size
constexpr double kDirectionTolerance = 1e-12; // radians
constexpr double kFootTolerance = 1e-7;       // metres of station, of a foot that was found again
constexpr double kOffsetTolerance = 1e-9;     // metres

// The exact pose of a curve, laid in long double. The survey plane of the tool is (north, east, azimuth).
struct Exact {
    double x;
    double y;
    double direction;
};

Exact exactPose(const Element& element, double along) {
    using exact::Real;
    const Real first = (element.clockwise ? -1.0L : 1.0L) / static_cast<Real>(element.startRadius);
    const Real last = (element.clockwise ? -1.0L : 1.0L) / static_cast<Real>(element.endRadius);
    const Real growth = element.length > 0 ? (last - first) / static_cast<Real>(element.length) : 0;
    // In its own plane (x, -y) the tool turns left for positive curvature, as the drawing does in (x, y).
    const exact::Pose end =
        exact::advance({element.start.x, -element.start.y, -element.direction}, first, growth, along);
    return {static_cast<double>(end.x), static_cast<double>(-end.y), static_cast<double>(-end.azimuth)};
}

Element laid(ElementType type, PlanPoint start, double direction, double length, double startRadius, double endRadius,
             bool clockwise) {
    Element element;
    element.type = type;
    element.start = start;
    element.direction = direction;
    element.length = length;
    element.startRadius = startRadius;
    element.endRadius = endRadius;
    element.clockwise = clockwise;
    element.end = poseOnElement(element, length).point;
    return element;
}

// A chain of tangent elements of every kind, also egg-shaped ones of either growth.
std::vector<Element> randomChain(std::mt19937& random, std::size_t count) {
    const auto uniform = [&](double low, double high) { return std::uniform_real_distribution(low, high)(random); };
    std::vector<Element> chain;
    Pose pose{{uniform(-50000, 50000), uniform(-50000, 50000)}, uniform(-3, 3)};
    for (std::size_t i = 0; i < count; ++i) {
        const bool clockwise = random() % 2 == 0;
        const double radius = std::exp(uniform(std::log(30.0), std::log(5000.0)));
        const double other = random() % 3 == 0 ? kInfiniteRadius : radius * uniform(1.01, 5.0);
        const double length = uniform(5.0, std::min(1.5 * radius, 600.0));
        const bool growing = random() % 2 == 0;
        Element element;
        switch (random() % 4) {
        case 0:
            element = laid(ElementType::Straight, pose.point, pose.direction, length, kInfiniteRadius, kInfiniteRadius,
                           false);
            break;
        case 1:
            element = laid(ElementType::Arc, pose.point, pose.direction, length, radius, radius, clockwise);
            break;
        default:
            element = laid(ElementType::Clothoid, pose.point, pose.direction, length, growing ? other : radius,
                           growing ? radius : other, clockwise);
        }
        pose = {element.end, element.endDirection()};
        chain.push_back(element);
    }
    return chain;
}

// --- one element ---

TEST(AlignmentGeometry, EveryElementIsGoodToANanometre) {
    constexpr unsigned kSeed = 1855;
    std::mt19937 random(kSeed);
    for (int round = 0; round < 2000; ++round) {
        const Element element = randomChain(random, 1)[0];
        const AlignmentGeometry geometry(std::span(&element, 1), 0.0);
        for (int i = 0; i <= 8; ++i) {
            const double along = element.length * i / 8;
            const Exact expected = exactPose(element, along);
            const std::optional<Pose> pose = geometry.poseAt(along);
            ASSERT_TRUE(pose);
            ASSERT_LT(std::hypot(pose->point.x - expected.x, pose->point.y - expected.y), kPointTolerance)
                << "seed " << kSeed << " round " << round << " type " << static_cast<char>(element.type);
            ASSERT_LT(std::abs(std::remainder(pose->direction - expected.direction, 2 * std::acos(-1.0))),
                      kDirectionTolerance);
        }
    }
}

struct Growth {
    const char* name;
    double startRadius;
    double endRadius;
    double length;
};

class ClothoidGrowth : public ::testing::TestWithParam<Growth> {};

// The forms meet where the turn from the inflection passes a limit: values on both sides of it, and far from it.
TEST_P(ClothoidGrowth, IsGoodToANanometreAnywhere) {
    for (const bool clockwise : {false, true}) {
        for (const bool reversed : {false, true}) {
            const Growth& growth = GetParam();
            const Element element = laid(ElementType::Clothoid, {-36012.345, 60295.494}, 2.0, growth.length,
                                         reversed ? growth.endRadius : growth.startRadius,
                                         reversed ? growth.startRadius : growth.endRadius, clockwise);
            const AlignmentGeometry geometry(std::span(&element, 1), 0.0);
            for (int i = 0; i <= 50; ++i) {
                const double along = growth.length * i / 50;
                const Exact expected = exactPose(element, along);
                const PlanPoint point = geometry.pointAt(along).value();
                EXPECT_LT(std::hypot(point.x - expected.x, point.y - expected.y), kPointTolerance)
                    << growth.name << " at " << along;
            }
            const Exact end = exactPose(element, growth.length);
            EXPECT_LT(std::hypot(element.end.x - end.x, element.end.y - end.y), kPointTolerance) << growth.name;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Sizes, ClothoidGrowth,
                         ::testing::Values(Growth{"gentle", kInfiniteRadius, 5000, 40},
                                           Growth{"usual", kInfiniteRadius, 200, 60},
                                           Growth{"sharp", kInfiniteRadius, 15, 40},
                                           Growth{"just below the limit", kInfiniteRadius, 100, 339.9},
                                           Growth{"just above the limit", kInfiniteRadius, 100, 340.1},
                                           Growth{"far beyond", kInfiniteRadius, 50, 700}, Growth{"egg", 300, 200, 50},
                                           Growth{"long egg", 300, 100, 400}, Growth{"nearly an arc", 1000, 1001, 100},
                                           Growth{"an arc but for the last digits", 1000, 1000.0000001, 100},
                                           Growth{"equal radii", 250, 250, 100}),
                         [](const auto& info) { return "Case" + std::to_string(info.index); });

TEST(AlignmentGeometry, AnArcOfAnyRadiusIsGoodToANanometre) {
    for (const double radius : {0.5, 15.0, 200.0, 1e4, 1e6, 1e9}) {
        const double length = std::min(3.0 * radius, 500.0);
        const Element element = laid(ElementType::Arc, {1000, 2000}, -1.0, length, radius, radius, true);
        const AlignmentGeometry geometry(std::span(&element, 1), 0.0);
        for (int i = 0; i <= 20; ++i) {
            const double along = length * i / 20;
            const Exact expected = exactPose(element, along);
            const PlanPoint point = geometry.pointAt(along).value();
            EXPECT_LT(std::hypot(point.x - expected.x, point.y - expected.y), kPointTolerance) << radius;
        }
    }
}

TEST(AlignmentGeometry, AUsualClothoidHasTheHandbookValues) {
    // A = 100, R = 100: tau = 0.5, X = 97.52877, Y = 16.37140.
    constexpr double kHandbook = 5e-6;
    const Element element = laid(ElementType::Clothoid, {0, 0}, 0.0, 100, kInfiniteRadius, 100, false);
    EXPECT_NEAR(element.end.x, 97.52877, kHandbook);
    EXPECT_NEAR(element.end.y, 16.37140, kHandbook);
    EXPECT_NEAR(element.turn(), 0.5, kDirectionTolerance);
}

TEST(Element, ThePiLiesOnBothTangents) {
    constexpr unsigned kSeed = 7;
    std::mt19937 random(kSeed);
    for (const Element& element : randomChain(random, 300)) {
        const std::optional<PlanPoint> pi = element.pi();
        EXPECT_EQ(pi.has_value(), element.type != ElementType::Straight);
        if (!pi || std::abs(std::sin(element.turn())) < 1e-3) {
            continue;
        }
        constexpr double kOnTangent = 1e-6; // metres; a flat curve has its PI where two lines meet at a small angle
        const auto beside = [](PlanPoint from, double direction, PlanPoint to) {
            return (to.y - from.y) * std::cos(direction) - (to.x - from.x) * std::sin(direction);
        };
        EXPECT_NEAR(beside(element.start, element.direction, *pi), 0.0, kOnTangent);
        EXPECT_NEAR(beside(element.end, element.endDirection(), *pi), 0.0, kOnTangent);
    }
}

// Tangents that differ by a whole number of half turns, or nearly so, meet nowhere.
TEST(Element, WhereTheTangentsAreParallelThereIsNoPi) {
    constexpr double kHalfTurn = std::numbers::pi;
    for (const bool clockwise : {false, true}) {
        const auto hasPi = [&](double turn) {
            return laid(ElementType::Arc, {0, 0}, 0.0, turn * 100.0, 100, 100, clockwise).pi().has_value();
        };
        EXPECT_FALSE(hasPi(0.0));
        EXPECT_FALSE(hasPi(0.99e-12));
        EXPECT_TRUE(hasPi(1.01e-12));
        EXPECT_TRUE(hasPi(kHalfTurn - 1.1e-12));
        EXPECT_FALSE(hasPi(kHalfTurn - 0.9e-12));
        EXPECT_FALSE(hasPi(kHalfTurn + 0.9e-12));
        EXPECT_TRUE(hasPi(kHalfTurn + 1.1e-12));
        EXPECT_FALSE(hasPi(2.0 * kHalfTurn));
    }
}

TEST(Element, TheCentreIsARadiusFromBothEnds) {
    const Element element = laid(ElementType::Arc, {10, 20}, 0.5, 80, 100, 100, true);
    const PlanPoint centre = element.centre();
    EXPECT_NEAR(std::hypot(element.start.x - centre.x, element.start.y - centre.y), 100.0, kPointTolerance);
    EXPECT_NEAR(std::hypot(element.end.x - centre.x, element.end.y - centre.y), 100.0, kPointTolerance);
}

TEST(Element, TheDrawnLineStaysWithinAMillimetre) {
    constexpr unsigned kSeed = 11;
    std::mt19937 random(kSeed);
    for (const Element& element : randomChain(random, 200)) {
        std::vector<PlanPoint> line;
        appendElementLine(element, kLineTolerance, line);
        ASSERT_GE(line.size(), 2U);
        EXPECT_EQ(line.front(), element.start);
        EXPECT_EQ(line.back(), element.end);
        const AlignmentGeometry geometry(std::span(&element, 1), 0.0);
        for (std::size_t i = 0; i + 1 < line.size(); ++i) {
            const PlanPoint middle{0.5 * (line[i].x + line[i + 1].x), 0.5 * (line[i].y + line[i + 1].y)};
            EXPECT_LE(std::abs(geometry.locate(middle)->offset), kLineTolerance * (1 + 1e-6));
            EXPECT_LE(std::abs(geometry.locate(line[i])->offset), 1e-8) << "its points lie on the curve";
        }
        EXPECT_LT(static_cast<double>(line.size()),
                  3.0 + 1.5 * element.length *
                            std::sqrt(1.0 / (8.0 * kLineTolerance * std::min(element.startRadius, element.endRadius))));
    }
}

TEST(Element, ACurveOfMillimetresIsDrawnRoundAndAStraightHasItsEnds) {
    for (const double radius : {0.005, 0.3, 0.9, 2.0}) {
        for (const ElementType type : {ElementType::Arc, ElementType::Clothoid}) {
            const Element element = laid(type, {10, 20}, 0.5, 1.5 * radius, radius, radius, true);
            std::vector<PlanPoint> line;
            EXPECT_EQ(appendElementLine(element, 0.01 * radius, line), 0.01 * radius);
            EXPECT_GT(line.size(), 2U) << radius;
        }
    }
    std::vector<PlanPoint> line;
    appendElementLine(laid(ElementType::Straight, {10, 20}, 0.5, 0.3, kInfiniteRadius, kInfiniteRadius, false),
                      kLineTolerance, line);
    EXPECT_EQ(line.size(), 2U);
}

TEST(Element, ALineIsNeverFartherFromItsCurveThanTheCurveIsWide) {
    for (const PlanPoint& start : {PlanPoint{0, 0}, PlanPoint{5000, 7000}, PlanPoint{-5000, 7000},
                                   PlanPoint{5000, -7000}, PlanPoint{-5000, -7000}}) {
        std::vector<PlanPoint> line;
        const Element coil = laid(ElementType::Arc, start, 0.5, 1e9, 2.0, 2.0, true);
        EXPECT_NEAR(appendElementLine(coil, kLineTolerance, line), std::hypot(4.0, 4.0), 1e-6);
    }
}

TEST(Element, APlaceThatIsNoneIsItsStart) {
    const Element arc = laid(ElementType::Arc, {10, 20}, 0.5, 80, 100, 100, true);
    Element none = arc;
    none.length = std::numeric_limits<double>::quiet_NaN();
    for (const auto& [element, along] :
         {std::pair(arc, std::numeric_limits<double>::infinity()),
          std::pair(arc, std::numeric_limits<double>::quiet_NaN()), std::pair(none, 1.0)}) {
        const Pose pose = poseOnElement(element, along);
        EXPECT_EQ(pose.point, arc.start);
        EXPECT_EQ(pose.direction, arc.direction);
    }
}

// Turns 28,648 times, which 10,000 points do not draw.
Element windingClothoid() {
    return laid(ElementType::Clothoid, {0, 0}, 0.0, 5.4e7, kInfiniteRadius, 150, false);
}

TEST(Element, TheLineOfAnAlignmentIsBoundedAlsoForManyElements) {
    std::vector<PlanPoint> line;
    LinePoints points;
    double error = 0.0;
    constexpr std::size_t kElements = 110;
    for (std::size_t i = 0; i < kElements; ++i) {
        error = points.append(windingClothoid(), kLineTolerance, line);
    }
    EXPECT_LE(line.size(), kMostAlignmentPoints + kElements * kFewestElementPoints);
    EXPECT_GT(line.size(), kMostAlignmentPoints * 9 / 10);
    EXPECT_GT(error, 1.0) << "and tells how coarse the last is";
    // What needs few points has them at the end too.
    const Element arc = laid(ElementType::Arc, {0, 0}, 0.0, 20, 100, 100, true);
    std::vector<PlanPoint> alone;
    std::vector<PlanPoint> last;
    EXPECT_EQ(appendElementLine(arc, kLineTolerance, alone), kLineTolerance);
    EXPECT_EQ(points.append(arc, kLineTolerance, last), kLineTolerance);
    EXPECT_EQ(alone, last);
}

TEST(Element, TheLinesOfADrawingAreBoundedAlsoForManyAlignments) {
    std::vector<PlanPoint> lines;
    LinePoints points;
    constexpr std::size_t kAlignments = 500;
    for (std::size_t i = 0; i < kAlignments; ++i) {
        points.beginAlignment();
        points.append(windingClothoid(), kLineTolerance, lines);
    }
    EXPECT_LE(lines.size(), kMostDrawingPoints + kAlignments * kUsualElementPoints);
    EXPECT_GT(lines.size(), kMostDrawingPoints);
    // A curve of a survey is drawn as before, and takes nothing from the others.
    const Element arc = laid(ElementType::Arc, {0, 0}, 0.0, 800, 500, 500, true);
    std::vector<PlanPoint> alone;
    std::vector<PlanPoint> last;
    appendElementLine(arc, kLineTolerance, alone);
    points.beginAlignment();
    EXPECT_EQ(points.append(arc, kLineTolerance, last), kLineTolerance);
    EXPECT_EQ(alone, last);
    EXPECT_EQ(points.left(), kUsualElementPoints);
}

// --- stations ---

class Chain : public ::testing::Test {
  protected:
    // East 100 m, a quarter turn to the left of radius 50, north 100 m.
    static std::vector<Element> elements() {
        std::vector<Element> chain;
        chain.push_back(laid(ElementType::Straight, {0, 0}, 0, 100, kInfiniteRadius, kInfiniteRadius, false));
        chain.push_back(laid(ElementType::Arc, {100, 0}, 0, 25 * std::acos(-1.0), 50, 50, false));
        chain.push_back(
            laid(ElementType::Straight, {150, 50}, std::acos(-1.0) / 2, 100, kInfiniteRadius, kInfiniteRadius, false));
        return chain;
    }
    AlignmentGeometry geometry_{elements(), 1000.0};
};

TEST_F(Chain, APositiveOffsetLiesRightOfTravel) {
    const PlanPoint right = geometry_.pointAt(1050, 3).value();
    EXPECT_NEAR(right.x, 50, kPointTolerance);
    EXPECT_NEAR(right.y, -3, kPointTolerance);
    const PlanPoint left = geometry_.pointAt(geometry_.endStation(), -3).value();
    EXPECT_NEAR(left.x, 147, kPointTolerance);
    EXPECT_NEAR(left.y, 150, kPointTolerance);
}

TEST_F(Chain, AStationBeyondEitherEndIsRefused) {
    const double end = geometry_.endStation();
    EXPECT_TRUE(geometry_.pointAt(1000.0 - 0.9e-6));
    EXPECT_FALSE(geometry_.pointAt(1000.0 - 1.1e-6));
    EXPECT_TRUE(geometry_.pointAt(end + 0.9e-6));
    EXPECT_FALSE(geometry_.pointAt(end + 1.1e-6));
    EXPECT_FALSE(geometry_.pointAt(std::nan("")));
    EXPECT_FALSE(geometry_.pointAt(1050, std::nan("")));
    EXPECT_FALSE(geometry_.pointAt(1e300));
}

TEST_F(Chain, AStationOnAJointBelongsToTheElementThatBeginsThere) {
    EXPECT_EQ(geometry_.elementAt(1100), 1U);
    EXPECT_EQ(geometry_.elementAt(1100 - 1e-5), 0U);
    EXPECT_EQ(geometry_.elementAt(1000), 0U);
    EXPECT_EQ(geometry_.elementAt(1000 + 100 + 25 * std::acos(-1.0)), 2U);
    EXPECT_EQ(geometry_.elementAt(geometry_.endStation()), 2U);

    std::vector<Element> broken = {
        laid(ElementType::Straight, {0, 0}, 0, 100, kInfiniteRadius, kInfiniteRadius, false),
        laid(ElementType::Straight, {100, 0}, std::acos(-1.0) / 2, 100, kInfiniteRadius, kInfiniteRadius, false)};
    const AlignmentGeometry corner(broken, 0.1);
    const PlanPoint point = corner.pointAt(100.1, 10).value();
    EXPECT_NEAR(point.x, 110, kPointTolerance) << "the offset is that of the second leg";
    EXPECT_NEAR(point.y, 0, kPointTolerance);
}

TEST_F(Chain, NoElementsMeansNoStations) {
    const AlignmentGeometry empty(std::span<const Element>(), 5.0);
    EXPECT_TRUE(empty.empty());
    EXPECT_FALSE(empty.pointAt(5.0));
    EXPECT_FALSE(empty.locate({0, 0}));
    EXPECT_FALSE(empty.elementAt(5.0));
}

TEST_F(Chain, AnElementOfNoLengthIsOneStation) {
    const Element point = laid(ElementType::Straight, {3, 4}, 0, 0, kInfiniteRadius, kInfiniteRadius, false);
    const AlignmentGeometry geometry(std::span(&point, 1), 10.0);
    EXPECT_EQ(geometry.pointAt(10.0), (PlanPoint{3, 4}));
    EXPECT_FALSE(geometry.pointAt(10.1));
    EXPECT_EQ(geometry.locate({3, 9})->station, 10.0);
}

TEST_F(Chain, AnElementThatIsNotFiniteIsLeftOutAndAnyOtherIsKept) {
    std::vector<Element> chain = elements();
    const double arc = chain[1].length;
    chain[0].length = std::nan("");
    chain[1].startRadius = chain[1].endRadius = 1e-9;
    const AlignmentGeometry rest(chain, 0.0);
    EXPECT_NEAR(rest.length(), arc + 100.0, kPointTolerance);
    EXPECT_EQ(rest.elementAt(50.0), 1U);
    EXPECT_NEAR(rest.pointAt(50.0)->x, 100.0, kPointTolerance) << "a circle of a nanometre stays where it begins";
    EXPECT_EQ(rest.elementAt(arc + 50.0), 2U);
}

TEST_F(Chain, ThePointBesideTheChainComesBack) {
    for (const double station : {1000.0, 1020.0, 1100.0, 1110.0, 1150.0, 1200.0, 1270.0}) {
        for (const double offset : {-20.0, -0.001, 0.0, 0.001, 20.0}) {
            const StationOffset found = geometry_.locate(geometry_.pointAt(station, offset).value()).value();
            EXPECT_NEAR(found.station, station, kFootTolerance);
            EXPECT_NEAR(found.offset, offset, kOffsetTolerance);
            EXPECT_TRUE(found.perpendicular);
        }
    }
}

TEST_F(Chain, APointBeyondAnEndIsToldToLieBesideNoStation) {
    const StationOffset before = geometry_.locate({-3, -4}).value();
    EXPECT_EQ(before.station, 1000.0);
    EXPECT_NEAR(before.offset, 5.0, kOffsetTolerance);
    EXPECT_FALSE(before.perpendicular);
    EXPECT_FALSE(geometry_.locate({std::nan(""), 0}));
}

TEST(AlignmentGeometry, StationsOfALongChainAreFoundByTheIndexAsByAWalk) {
    constexpr unsigned kSeed = 3;
    std::mt19937 random(kSeed);
    std::vector<Element> chain = randomChain(random, 3000);
    // Elements a thousand times shorter than the others crowd one place of the index.
    for (std::size_t i = 1000; i < 1500; ++i) {
        chain[i].length *= 1e-4;
        chain[i].end = poseOnElement(chain[i], chain[i].length).point;
    }
    const AlignmentGeometry geometry(chain, -500.0);
    double from = 0.0;
    for (std::size_t i = 0; i < chain.size(); ++i) {
        const double middle = from + 0.5 * chain[i].length;
        ASSERT_EQ(geometry.elementAt(-500.0 + middle), i);
        const Exact expected = exactPose(chain[i], 0.5 * chain[i].length);
        const PlanPoint point = geometry.pointAt(-500.0 + middle).value();
        // The sum of thousands of lengths is itself good to some 1e-10 m only.
        constexpr double kSummed = 5e-9;
        ASSERT_LT(std::hypot(point.x - expected.x, point.y - expected.y), kSummed) << "seed " << kSeed;
        from += chain[i].length;
    }
}

// --- the way back ---

// The nearest point by brute force: thousands of places, then a golden section around the best of them.
double bruteDistance(const Element& element, const PlanPoint& point) {
    const AlignmentGeometry geometry(std::span(&element, 1), 0.0);
    const auto distance = [&](double along) {
        const PlanPoint on = geometry.pointAt(std::clamp(along, 0.0, element.length)).value();
        return std::hypot(on.x - point.x, on.y - point.y);
    };
    constexpr int kPlaces = 400;
    double best = 0.0;
    for (int i = 1; i <= kPlaces; ++i) {
        if (distance(element.length * i / kPlaces) < distance(best)) {
            best = element.length * i / kPlaces;
        }
    }
    double low = std::max(best - element.length / kPlaces, 0.0);
    double high = std::min(best + element.length / kPlaces, element.length);
    for (int i = 0; i < 100; ++i) {
        const double third = (high - low) / 3;
        if (distance(low + third) < distance(high - third)) {
            high -= third;
        } else {
            low += third;
        }
    }
    return std::min({distance(0.5 * (low + high)), distance(0.0), distance(element.length)});
}

TEST(AlignmentGeometry, TheNearestPointOfOneElementIsTheNearestOfAll) {
    constexpr unsigned kSeed = 99;
    std::mt19937 random(kSeed);
    const auto uniform = [&](double low, double high) { return std::uniform_real_distribution(low, high)(random); };
    for (int round = 0; round < 5000; ++round) {
        const Element element = randomChain(random, 1)[0];
        // Anywhere around it, also beyond the centres of curvature, where two feet compete.
        const double reach = 3.0 * std::min({element.startRadius, element.endRadius, element.length});
        const PlanPoint point{element.start.x + uniform(-reach, reach), element.start.y + uniform(-reach, reach)};
        const AlignmentGeometry geometry(std::span(&element, 1), 0.0);
        const StationOffset found = geometry.locate(point).value();
        const PlanPoint foot = geometry.pointAt(found.station).value();
        const double distance = std::hypot(foot.x - point.x, foot.y - point.y);
        constexpr double kNearest = 1e-7; // metres, of the brute force
        ASSERT_NEAR(std::abs(found.offset), bruteDistance(element, point), kNearest)
            << "seed " << kSeed << " round " << round;
        ASSERT_NEAR(distance, std::abs(found.offset), kOffsetTolerance * (1 + distance));
    }
}

// The right foot in every one of a hundred thousand cases: a point set off from a clothoid by less than its radius of
// curvature there, to either side, must come back to where it was set off, or to a place that is nearer still.
TEST(AlignmentGeometry, TheFootOnAClothoidIsFoundInAHundredThousandOfAHundredThousand) {
    constexpr unsigned kSeed = 20211031;
    std::mt19937 random(kSeed);
    const auto uniform = [&](double low, double high) { return std::uniform_real_distribution(low, high)(random); };
    int wrong = 0;
    for (int round = 0; round < 1000; ++round) {
        const double radius = std::exp(uniform(std::log(20.0), std::log(3000.0)));
        const double other = random() % 2 == 0 ? kInfiniteRadius : radius * uniform(1.05, 10.0);
        const bool growing = random() % 2 == 0;
        const Element element =
            laid(ElementType::Clothoid, {uniform(-1e5, 1e5), uniform(-1e5, 1e5)}, uniform(-3, 3),
                 radius * uniform(0.02, 2.0), growing ? other : radius, growing ? radius : other, random() % 2 == 0);
        const AlignmentGeometry geometry(std::span(&element, 1), 0.0);
        for (int i = 0; i < 100; ++i) {
            const double station = uniform(0.0, element.length);
            const double growth = (element.endCurvature() - element.startCurvature()) / element.length;
            const double curvature = std::abs(element.startCurvature() + growth * station);
            const double reach = std::min(0.95 / std::max(curvature, 1e-9), 500.0);
            const double offset = uniform(-reach, reach);
            const PlanPoint point = geometry.pointAt(station, offset).value();
            const StationOffset found = geometry.locate(point).value();
            const PlanPoint back = geometry.pointAt(found.station).value();
            const double distance = std::hypot(back.x - point.x, back.y - point.y);
            const bool same = std::abs(found.station - station) < 1e-6 && std::abs(found.offset - offset) < 1e-8;
            const bool nearer = distance < std::abs(offset) - 1e-9;
            const bool honest = std::abs(distance - std::abs(found.offset)) < 1e-8;
            wrong += (same || nearer) && honest ? 0 : 1;
        }
    }
    EXPECT_EQ(wrong, 0) << "seed " << kSeed;
}

TEST(AlignmentGeometry, TheNearestPointOfAChainIsThatOfItsNearestElement) {
    constexpr unsigned kSeed = 5;
    std::mt19937 random(kSeed);
    const auto uniform = [&](double low, double high) { return std::uniform_real_distribution(low, high)(random); };
    const std::vector<Element> chain = randomChain(random, 200);
    const AlignmentGeometry geometry(chain, 0.0);
    for (int round = 0; round < 300; ++round) {
        const PlanPoint around = geometry.pointAt(uniform(0, geometry.length())).value();
        const PlanPoint point{around.x + uniform(-2000, 2000), around.y + uniform(-2000, 2000)};
        double nearest = kInfiniteRadius;
        for (const Element& element : chain) {
            const AlignmentGeometry one(std::span(&element, 1), 0.0);
            nearest = std::min(nearest, std::abs(one.locate(point)->offset));
        }
        const StationOffset found = geometry.locate(point).value();
        ASSERT_NEAR(std::abs(found.offset), nearest, 1e-7) << "seed " << kSeed;
        const PlanPoint foot = geometry.pointAt(found.station).value();
        ASSERT_NEAR(std::hypot(foot.x - point.x, foot.y - point.y), nearest, 1e-7);
    }
}

} // namespace
} // namespace fenmark::drawing
