// Routes of a file become alignments in the embedded host: tangent where the file is, whatever the habit of its signs.
#include "embedded/route_chains.h"
#include "host/adapter/host_adapter.h"
#include "host/embedded/embedded_host.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <memory>
#include <random>
#include <string>
#include <tuple>
#include <vector>

namespace fenmark::host::embedded {
namespace {

// Where an alignment may lie off the exact chain: what tangents rounded to 1e-5 rad carry over its length, metres.
constexpr double kLaidTolerance = 0.02;
constexpr double kMillimetres = 0.002;      // what coordinates in millimetres leave, metres
constexpr double kTwelveDecimals = 1.1e-11; // metres, with the rounding of coordinates of 1e5 m
constexpr double kTangentTolerance = 1e-3;  // radians

double angleBetween(double a, double b) {
    return std::abs(std::remainder(a - b, 2 * kPi));
}

class TurningSense : public ::testing::Test {
  protected:
    EmbeddedHost host_;
    HostAdapter adapter_;

    void SetUp() override { host_.drawing().addSite("サイト"); }
    void TearDown() override {
        EXPECT_EQ(EmbeddedHost::liveAutomationReferences(), 0);
        EXPECT_EQ(EmbeddedHost::liveDatabaseObjects(), 0);
    }

    MdDbObjectId import(sima::Array<sima::EntityData> route, double startStation = 0.0) {
        const std::unique_ptr<CorridorUtility> utility = adapter_.makeCorridorUtility();
        utility->connect();
        const MdDbObjectId id = utility->createAlignment("路線", "サイト", "file-路線", startStation, route);
        utility->disconnect();
        return id;
    }

    const Alignment& laid() { return host_.drawing().alignment(host_.drawing().alignmentCount() - 1); }

    // The alignment is the chain: kinds, senses, places, and a tangent at every joint.
    void expectChain(const std::vector<Element>& chain, double tolerance = kLaidTolerance) {
        const Alignment& alignment = laid();
        ASSERT_EQ(alignment.elements.size(), chain.size());
        for (std::size_t i = 0; i < chain.size(); ++i) {
            const Element& element = alignment.elements[i];
            EXPECT_EQ(element.type, chain[i].type) << i;
            EXPECT_EQ(element.clockwise, chain[i].clockwise) << i;
            EXPECT_NEAR(element.start.x, chain[i].start.x, tolerance) << i;
            EXPECT_NEAR(element.start.y, chain[i].start.y, tolerance) << i;
            EXPECT_NEAR(element.end.x, chain[i].end.x, tolerance) << i;
            EXPECT_NEAR(element.end.y, chain[i].end.y, tolerance) << i;
            EXPECT_NEAR(element.length, chain[i].length, tolerance) << i;
            if (i > 0) {
                EXPECT_LT(angleBetween(element.direction, alignment.elements[i - 1].endDirection()), kTangentTolerance)
                    << i;
                // The end goes on as text with twelve decimals.
                EXPECT_NEAR(element.start.x, alignment.elements[i - 1].end.x, kTwelveDecimals) << i;
                EXPECT_NEAR(element.start.y, alignment.elements[i - 1].end.y, kTwelveDecimals) << i;
            }
        }
        EXPECT_TRUE(host_.layoutNotes().brokenJoints.empty());
    }

    static std::vector<Element> sCurve(double direction = 0.3) {
        return layChain({{-36012.345, 60295.494}, direction},
                        {straight(80), clothoid(0, 200, 60), arc(200, 90), clothoid(200, 0, 60), straight(50),
                         clothoid(0, -150, 50), arc(-150, 70), clothoid(-150, 0, 50), straight(40)});
    }
};

TEST_F(TurningSense, ATangentChainStaysTangentInEveryDirection) {
    for (int step = 0; step < 36; ++step) {
        const std::vector<Element> chain = sCurve(step * 10 * kDegree + 0.01);
        ASSERT_TRUE(import(routeOf(chain)).isValid());
        expectChain(chain);
        EXPECT_EQ(host_.layoutNotes().otherSense, 0);
    }
}

TEST_F(TurningSense, PositiveRadiiTurnLeftOnTheMap) {
    const std::vector<Element> chain = layChain({{0, 0}, 0}, {straight(50), arc(100, 100)});
    const sima::Array<sima::EntityData> route = routeOf(chain);
    EXPECT_EQ(route[1].curve().radius, "100.000000");
    ASSERT_TRUE(import(route).isValid());
    EXPECT_GT(laid().elements[1].end.y, 0.0);
    EXPECT_FALSE(laid().elements[1].clockwise);
}

TEST_F(TurningSense, CoordinatesRoundedToMillimetresAreNoKink) {
    const std::vector<Element> chain = sCurve();
    ASSERT_TRUE(import(routeOf(chain, {.decimals = 3})).isValid());
    expectChain(chain);
    EXPECT_EQ(host_.layoutNotes().otherSense, 0);
}

TEST_F(TurningSense, EggShapedClothoidsOfBothGrowthsJoinTwoArcs) {
    const std::vector<Element> chain = layChain(
        {{100, 200}, 1.0}, {straight(30), clothoid(0, 300, 40), arc(300, 60), clothoid(300, 120, 45), arc(120, 50),
                            clothoid(120, 400, 60), arc(400, 80), clothoid(400, 0, 30), straight(20)});
    ASSERT_TRUE(import(routeOf(chain)).isValid());
    expectChain(chain);
}

TEST_F(TurningSense, AFileOfTheOtherHabitIsUnderstoodAndToldOf) {
    const std::vector<Element> chain = sCurve();
    ASSERT_TRUE(import(routeOf(chain, {.positiveIsLeft = false})).isValid());
    expectChain(chain);
    EXPECT_EQ(host_.layoutNotes().otherSense, 6);
    const std::vector<NoteLine> lines = noteLines(host_.layoutNotes());
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_EQ(lines[0].code, "other-sense");
    EXPECT_EQ(lines[0].text, "6 elements were taken with the other turning sense");
    EXPECT_EQ(noteLines(host_.layoutNotes(), Language::Japanese)[0].text, "6個の要素を逆の曲がりとして配置しました");
}

TEST_F(TurningSense, RandomChainsOfBothHabitsStayTangent) {
    constexpr unsigned kSeed = 64;
    std::mt19937 random(kSeed);
    const auto uniform = [&](double low, double high) { return std::uniform_real_distribution(low, high)(random); };
    for (int round = 0; round < 200; ++round) {
        std::vector<Shape> shapes{straight(uniform(20, 200))};
        for (int curve = 0; curve < 3; ++curve) {
            const double sign = random() % 2 == 0 ? 1 : -1;
            const double radius = sign * uniform(60, 400);
            // Long enough that the two senses differ by more than a degree at every joint.
            const double spiral = std::abs(radius) * uniform(0.15, 0.4);
            shapes.push_back(clothoid(0, radius, spiral));
            shapes.push_back(arc(radius, std::abs(radius) * uniform(0.1, 1.0)));
            shapes.push_back(clothoid(radius, 0, spiral));
            shapes.push_back(straight(uniform(20, 200)));
        }
        const std::vector<Element> chain = layChain({{uniform(-5e4, 5e4), uniform(-5e4, 5e4)}, uniform(-3, 3)}, shapes);
        for (const double rise : {0.0, 0.1}) {
            for (const bool positiveIsLeft : {true, false}) {
                host_.clearNotes();
                const FileHabit habit{.positiveIsLeft = positiveIsLeft, .decimals = 4, .heightOfEach = rise};
                ASSERT_TRUE(import(routeOf(chain, habit)).isValid());
                expectChain(chain, 0.05);
                EXPECT_EQ(host_.layoutNotes().otherSense, positiveIsLeft ? 0 : 9) << "seed " << kSeed;
                ASSERT_FALSE(HasFailure()) << "seed " << kSeed << " round " << round << " rise " << rise;
            }
        }
    }
}

TEST_F(TurningSense, TheSettingRightTakesEveryCurveTheOtherWay) {
    host_.setPositiveRadius(PositiveRadius::Right);
    const std::vector<Element> chain = sCurve();
    ASSERT_TRUE(import(routeOf(chain, {.positiveIsLeft = false})).isValid());
    expectChain(chain);
    EXPECT_EQ(host_.layoutNotes().otherSense, 0) << "nothing was guessed";
}

TEST_F(TurningSense, TheSettingLeftKeepsTheSenseAndTellsTheBrokenJoints) {
    host_.setPositiveRadius(PositiveRadius::Left);
    const std::vector<Element> chain = layChain({{0, 0}, 0}, {straight(100), arc(100, 100), straight(50)});
    ASSERT_TRUE(import(routeOf(chain, {.positiveIsLeft = false}), 1000.0).isValid());
    const LayoutNotes notes = host_.layoutNotes();
    ASSERT_EQ(notes.brokenJoints.size(), 2U);
    EXPECT_EQ(notes.brokenJoints[0].alignment, "路線");
    constexpr double kStation = 1e-9;
    EXPECT_NEAR(notes.brokenJoints[0].station, 1100.0, kStation);
    EXPECT_NEAR(notes.brokenJoints[0].angle, 1.0, kStation) << "the arc turns by one radian";
    EXPECT_NEAR(notes.brokenJoints[1].station, 1200.0, kStation);
    EXPECT_EQ(noteLines(notes)[0].text, "alignment 路線: the joint at station 1100.000 is broken by 57.30 degrees; "
                                        "--positive-radius auto may mend it");
}

TEST_F(TurningSense, ABrokenJointNamesTheOptionThatMayMendIt) {
    const auto remedyOf = [&](const sima::Array<sima::EntityData>& route) {
        host_.clearNotes();
        EXPECT_TRUE(import(route).isValid());
        const LayoutNotes notes = host_.layoutNotes();
        EXPECT_FALSE(notes.brokenJoints.empty());
        return notes.brokenJoints.empty() ? Remedy::None : notes.brokenJoints[0].remedy;
    };
    const auto lineOf = [](Remedy remedy) {
        LayoutNotes notes;
        notes.brokenJoints.push_back({"a", 1.0, 0.1, remedy});
        return noteLines(notes)[0].text;
    };
    const std::vector<Element> corner = layChain({{0, 0}, 0}, {straight(100), arc(100, 100)});
    sima::Array<sima::EntityData> right = routeOf(corner);
    host_.setPositiveRadius(PositiveRadius::Right);
    EXPECT_EQ(remedyOf(right), Remedy::PositiveRadiusAuto);
    host_.setPositiveRadius(PositiveRadius::Auto);
    // Two arcs that a straight joins with kinks of more than their turn: nothing helps.
    sima::Array<sima::EntityData> kinked = routeOf(corner);
    kinked[0].startY = "70";
    EXPECT_EQ(remedyOf(kinked), Remedy::None);
    // A spiral without a PI that the arc behind it does not continue.
    sima::Array<sima::EntityData> heights =
        routeOf(layChain({{0, 0}, 0}, {straight(100), clothoid(0, 100, 60), arc(100, 60)}), {.heightOfEach = 1.0});
    heights[0].startY = "70";
    EXPECT_EQ(remedyOf(heights), Remedy::PlanTangents);
    host_.setPlanTangents(true);
    EXPECT_EQ(remedyOf(heights), Remedy::None);
    EXPECT_EQ(lineOf(Remedy::PlanTangents),
              "alignment a: the joint at station 1.000 is broken by 5.73 degrees; --plan-tangents may mend it");
    EXPECT_EQ(lineOf(Remedy::PositiveRadiusLeft),
              "alignment a: the joint at station 1.000 is broken by 5.73 degrees; --positive-radius left may mend it");
    EXPECT_EQ(lineOf(Remedy::PositiveRadiusRight),
              "alignment a: the joint at station 1.000 is broken by 5.73 degrees; --positive-radius right may mend it");
}

TEST_F(TurningSense, AnAlignmentOffTheRoutesPointsIsToldOfWithItsLargestDistance) {
    const std::vector<Element> chain = sCurve();
    std::vector<MdGePoint3d> points;
    for (const Element& element : chain) {
        points.push_back({element.start.x, element.start.y, 0.0});
    }
    points.push_back({chain.back().end.x, chain.back().end.y, 0.0});
    const MdDbObjectId id = import(routeOf(chain));
    host_.noteRoute(id, points);
    EXPECT_TRUE(host_.layoutNotes().misfits.empty());
    const auto aside = [&](std::size_t i, double distance) {
        points[i].x -= distance * std::sin(chain[i].direction);
        points[i].y += distance * std::cos(chain[i].direction);
    };
    aside(3, 0.0095);
    host_.noteRoute(id, points);
    EXPECT_TRUE(host_.layoutNotes().misfits.empty()) << "less than 10 mm";
    aside(5, 0.025);
    host_.noteRoute(id, points);
    ASSERT_EQ(host_.layoutNotes().misfits.size(), 1U);
    EXPECT_NEAR(host_.layoutNotes().misfits[0].distance, 0.025, 1e-4);
    EXPECT_FALSE(host_.layoutNotes().misfits[0].heightsDiffer);
    EXPECT_EQ(noteLines(host_.layoutNotes()).back().text, "alignment 路線 lies up to 0.025 m off the route's points");

    // Laid without PIs, since the heights differ.
    host_.clearNotes();
    EXPECT_TRUE(host_.layoutNotes().misfits.empty());
    points[4].z = 1.0;
    host_.noteRoute(import(routeOf(chain, {.heightOfEach = 0.5})), points);
    ASSERT_EQ(host_.layoutNotes().misfits.size(), 1U);
    EXPECT_TRUE(host_.layoutNotes().misfits[0].heightsDiffer);
    EXPECT_EQ(noteLines(host_.layoutNotes()).back().text,
              "alignment 路線 lies up to 0.025 m off the route's points, which "
              "differ in height; --plan-tangents may mend it");
}

TEST_F(TurningSense, AClothoidThatLeadsPastTheLastPointIsToldOf) {
    const std::vector<Element> chain = layChain({{0, 0}, 0}, {straight(100), clothoid(0, 300, 60)});
    const MdDbObjectId id = import(routeOf(chain));
    for (const double past : {0.005, 12.0, -12.0}) { // the last point, along the clothoid; or short of it, straight on
        PlanPoint last = poseOnElement(chain[1], chain[1].length - std::max(past, 0.0)).point;
        last.x -= std::min(past, 0.0) * std::cos(chain[1].endDirection());
        last.y -= std::min(past, 0.0) * std::sin(chain[1].endDirection());
        host_.clearNotes();
        host_.noteRoute(id, std::vector<MdGePoint3d>{{0, 0, 0}, {100, 0, 0}, {last.x, last.y, 0}});
        const std::vector<Misfit> misfits = host_.layoutNotes().misfits;
        ASSERT_EQ(misfits.size(), std::abs(past) > 1.0 ? 1U : 0U);
        if (!misfits.empty()) {
            EXPECT_NEAR(misfits[0].distance, 12.0, 0.01);
        }
    }
}

TEST_F(TurningSense, AStraightOffAPointThatWasMergedAwayIsToldOf) {
    const MdDbObjectId id = import(routeOf(layChain({{0, 0}, 0}, {straight(100)})));
    const std::vector<MdGePoint3d> points{{0, 0, 0}, {50, 0.5, 0}, {100, 0, 0}};
    host_.noteRoute(id, points);
    ASSERT_EQ(host_.layoutNotes().misfits.size(), 1U);
    EXPECT_NEAR(host_.layoutNotes().misfits[0].distance, 0.5, 1e-9);
}

TEST_F(TurningSense, AnElementOfMillimetresHasJointsOfItsOwn) {
    Alignment alignment;
    alignment.elements = layChain({{0, 0}, 0}, {straight(100)});
    for (const auto& [from, direction, length] :
         {std::tuple(PlanPoint{100, 0}, 20 * kDegree, 0.005), std::tuple(PlanPoint{100.005, 0.002}, 0.0, 50.0)}) {
        alignment.elements.push_back(layChain({from, direction}, {straight(length)})[0]);
    }
    const std::vector<BrokenJoint> joints = brokenJoints(alignment, {});
    ASSERT_EQ(joints.size(), 2U);
    EXPECT_NEAR(joints[0].angle, 20 * kDegree, 1e-12);
    EXPECT_NEAR(joints[1].angle, -20 * kDegree, 1e-12);
    EXPECT_NEAR(joints[1].station, 100.005, 1e-9);
    alignment.elements[1].length = 0.0;
    EXPECT_TRUE(brokenJoints(alignment, {}).empty()) << "one of no length has no direction";
}

TEST_F(TurningSense, ACornerOfStraightsIsToldOf) {
    sima::Array<sima::EntityData> route = routeOf(layChain({{0, 0}, 0}, {straight(100)}));
    for (const sima::EntityData& leg : routeOf(layChain({{100, 0}, 2 * kDegree}, {straight(100)}))) {
        route.push_back(leg);
    }
    ASSERT_TRUE(import(route).isValid());
    const LayoutNotes notes = host_.layoutNotes();
    ASSERT_EQ(notes.brokenJoints.size(), 1U);
    EXPECT_NEAR(notes.brokenJoints[0].angle, 2 * kDegree, 1e-9);
}

TEST_F(TurningSense, AFirstArcIsTurnedOverWhereTheJointBehindItProvesThat) {
    const std::vector<Element> chain = layChain({{0, 0}, 0}, {arc(100, 100), straight(50)});
    ASSERT_TRUE(import(routeOf(chain, {.positiveIsLeft = false})).isValid());
    expectChain(chain);
    EXPECT_EQ(host_.layoutNotes().otherSense, 1);
}

TEST_F(TurningSense, AShallowArcTakesTheSenseThatItsJointsProve) {
    // Turns by less than a degree: either way joins within one.
    const std::vector<Element> chain =
        layChain({{3456.789, -1234.567}, 0.7}, {straight(120), arc(10000, 170), straight(90)});
    for (const bool positiveIsLeft : {true, false}) {
        ASSERT_TRUE(import(routeOf(chain, {.positiveIsLeft = positiveIsLeft, .decimals = 3})).isValid());
        expectChain(chain, kMillimetres);
    }
}

TEST_F(TurningSense, AnArcBetweenKinksIsNotTurnedOverForOneEndThatMeetsByChance) {
    // The image of the arc meets the straight before it, and breaks the joint behind it as much as the arc does.
    const double turn = 170.0 / 10000.0;
    const std::vector<Element> bend = layChain({{0, 0}, 0}, {arc(10000, 170)});
    std::vector<Element> chain = layChain({{-100 * std::cos(turn), -100 * std::sin(turn)}, turn}, {straight(100)});
    chain.push_back(bend[0]);
    const std::vector<Element> behind = layChain({bend[0].end, bend[0].endDirection() + 3 * kDegree},
                                                 {straight(50), clothoid(0, -200, 60), arc(-200, 40)});
    chain.insert(chain.end(), behind.begin(), behind.end());
    ASSERT_TRUE(import(routeOf(chain)).isValid());
    EXPECT_EQ(host_.layoutNotes().otherSense, 0);
}

TEST_F(TurningSense, ASlipInOneSignIsMendedAndNothingElseTouched) {
    const std::vector<Element> chain = sCurve();
    for (std::size_t slip = 0; slip < chain.size(); ++slip) {
        if (chain[slip].type == ElementType::Straight) {
            continue;
        }
        sima::Array<sima::EntityData> route = routeOf(chain, {.decimals = 3});
        route[slip].direction = route[slip].direction == "R" ? "L" : "R";
        ASSERT_TRUE(import(route).isValid());
        expectChain(chain, kMillimetres);
        host_.clearNotes();
    }
}

TEST_F(TurningSense, AFileOfTheOtherHabitLiesAsTrueAsOneOfTheOwn) {
    const std::vector<Element> chain = sCurve();
    for (const PositiveRadius sense : {PositiveRadius::Auto, PositiveRadius::Right}) {
        host_.setPositiveRadius(sense);
        ASSERT_TRUE(import(routeOf(chain, {.positiveIsLeft = false, .decimals = 3})).isValid());
        expectChain(chain, kMillimetres);
    }
}

TEST_F(TurningSense, RoutesWithHeightsContinueTheElementBefore) {
    const std::vector<Element> chain = sCurve();
    sima::Array<sima::EntityData> route = routeOf(chain, {.heightOfEach = 0.25});
    ASSERT_TRUE(import(route).isValid());
    expectChain(chain);
}

TEST_F(TurningSense, AFileOfTheOtherHabitIsUnderstoodWithoutPisToo) {
    const std::vector<Element> chain = sCurve();
    ASSERT_TRUE(import(routeOf(chain, {.positiveIsLeft = false, .heightOfEach = 0.25})).isValid());
    expectChain(chain);
    EXPECT_EQ(host_.layoutNotes().otherSense, 6);
    for (std::size_t i = 0; i < chain.size(); ++i) {
        EXPECT_EQ(laid().elements[i].id, static_cast<std::int32_t>(i + 1)) << "identifiers stay";
    }
}

TEST_F(TurningSense, SpiralsWithoutAPiAreLaidAnewWhereTheStraightBehindThemNeedsIt) {
    // Two spirals that meet at their common radius, and an arc, between straights.
    const std::vector<Element> chain = layChain({{-36012.345, 60295.494}, 0.3},
                                                {straight(80), clothoid(0, 200, 60), clothoid(200, 0, 60), straight(50),
                                                 arc(-150, 70), straight(50), clothoid(0, -90, 30), arc(-90, 40)});
    ASSERT_TRUE(import(routeOf(chain, {.positiveIsLeft = false, .heightOfEach = -0.5})).isValid());
    expectChain(chain);
    EXPECT_EQ(host_.layoutNotes().otherSense, 5);
}

TEST_F(TurningSense, ALastSpiralWithoutAPiTurnsAsTheCurveBeforeIt) {
    const std::vector<Element> chain = layChain({{0, 0}, 0.3}, {straight(80), arc(200, 60), clothoid(200, 0, 60)});
    for (const bool positiveIsLeft : {true, false}) {
        ASSERT_TRUE(import(routeOf(chain, {.positiveIsLeft = positiveIsLeft, .heightOfEach = 1.0})).isValid());
        expectChain(chain);
    }
}

TEST_F(TurningSense, TheSettingLeftLaysNothingAnew) {
    host_.setPositiveRadius(PositiveRadius::Left);
    const std::vector<Element> chain = sCurve();
    import(routeOf(chain, {.positiveIsLeft = false, .heightOfEach = 0.25}));
    EXPECT_EQ(laid().elements[1].clockwise, !chain[1].clockwise);
    EXPECT_EQ(host_.layoutNotes().otherSense, 0);
    EXPECT_FALSE(host_.layoutNotes().brokenJoints.empty());
}

TEST_F(TurningSense, ARouteThatStartsWithAClothoidLeavesItsAuxiliaryLine) {
    const std::vector<Element> chain = layChain({{0, 0}, 0}, {clothoid(0, 200, 60), arc(200, 50)});
    EXPECT_THROW(import(routeOf(chain)), std::invalid_argument);
    ASSERT_EQ(host_.drawing().alignmentCount(), 1U);
    ASSERT_EQ(laid().elements.size(), 1U);
    EXPECT_EQ(laid().elements[0].type, ElementType::Straight);
    EXPECT_NEAR(laid().elements[0].length, 100.0, 1e-9);
}

TEST_F(TurningSense, ARefusedArcLeavesAHalfMadeAlignment) {
    sima::Array<sima::EntityData> route = routeOf(layChain({{0, 0}, 0}, {straight(100), arc(100, 100), straight(50)}));
    route[1].editCurve().radius = "10";
    EXPECT_FALSE(import(route, 55.0).isValid());
    ASSERT_EQ(host_.drawing().alignmentCount(), 1U);
    EXPECT_EQ(laid().elements.size(), 1U);
    EXPECT_EQ(laid().description, "file-路線");
    EXPECT_EQ(laid().startStation, 0.0);
}

TEST_F(TurningSense, WhatWasLaidBeforeARefusalIsSettled) {
    const std::vector<Element> chain = sCurve();
    sima::Array<sima::EntityData> route = routeOf(chain, {.positiveIsLeft = false});
    route[6].editCurve().radius = "x";
    EXPECT_FALSE(import(route).isValid());
    ASSERT_EQ(laid().elements.size(), 6U);
    for (std::size_t i = 0; i < 6; ++i) {
        EXPECT_EQ(laid().elements[i].clockwise, chain[i].clockwise) << i;
    }
}

TEST_F(TurningSense, ASettingCountsForWhatIsLaidAfterIt) {
    host_.setPositiveRadius(PositiveRadius::Left);
    const std::vector<Element> chain = sCurve();
    const MdDbObjectId id = import(routeOf(chain, {.positiveIsLeft = false}));
    ASSERT_TRUE(id.isValid());
    host_.setPositiveRadius(PositiveRadius::Auto);
    const std::unique_ptr<CorridorUtility> utility = adapter_.makeCorridorUtility();
    utility->connect();
    PlanPoint point;
    EXPECT_EQ(utility->pointAtStation(id, 1.0, point), 0);
    utility->disconnect();
    for (std::size_t i = 1; i < chain.size(); ++i) {
        const Element& element = laid().elements[i];
        EXPECT_EQ(element.clockwise, element.type != ElementType::Straight && !chain[i].clockwise) << i;
    }
}

TEST_F(TurningSense, ARefusedElementIsToldOfWithItsReason) {
    const auto reported = [&](const std::vector<Shape>& shapes, auto&& spoil) {
        host_.clearNotes();
        sima::Array<sima::EntityData> route = routeOf(layChain({{0, 0}, 0}, shapes));
        spoil(route.back());
        EXPECT_FALSE(import(route).isValid());
        const std::vector<NoteLine> lines = noteLines(host_.layoutNotes());
        return lines.size() == 1 ? lines[0].text : "not one line";
    };
    const std::vector<Shape> curve{straight(100), arc(100, 100)};
    EXPECT_EQ(reported(curve, [](sima::EntityData& element) { element.editCurve().radius = "10"; }),
              "alignment 路線 breaks off after 100.000 m: "
              "an arc of radius 10.000 m does not reach over its chord of 95.885 m");
    EXPECT_EQ(reported(curve, [](sima::EntityData& element) { element.editCurve().radius = "x"; }),
              "alignment 路線 breaks off after 100.000 m: an arc has no radius");
    const std::vector<Shape> spiral{straight(80), clothoid(0, 200, 60)};
    EXPECT_EQ(reported(spiral, [](sima::EntityData& element) { element.editCurve().endRadius = "0"; }),
              "alignment 路線 breaks off after 80.000 m: a clothoid has no radius");
    EXPECT_EQ(reported(spiral,
                       [](sima::EntityData& element) { element.editCurve().startRadius = element.curve().endRadius; }),
              "alignment 路線 breaks off after 80.000 m: a clothoid has no length");
}

TEST_F(TurningSense, ARefusalIsToldOnceAndNotOfAnAlignmentThatIsGone) {
    const Drawing::Mark mark = host_.drawing().mark();
    sima::Array<sima::EntityData> route = routeOf(layChain({{0, 0}, 0}, {straight(100), arc(100, 100)}));
    route[1].editCurve().radius = "10";
    import(route);
    ASSERT_EQ(host_.layoutNotes().refused.size(), 1U);
    host_.drawing().rollback(mark);
    EXPECT_TRUE(host_.layoutNotes().refused.empty());
    import(route);
    host_.clearNotes();
    EXPECT_TRUE(host_.layoutNotes().refused.empty());
}

} // namespace
} // namespace fenmark::host::embedded
