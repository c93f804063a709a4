// The rules by which one element is laid, settled and judged at its joints, without a host.
#include "embedded/route_chains.h"
#include "host/embedded/alignment_layout.h"
#include "host/embedded/alignment_settling.h"
#include "host/embedded/element_spans.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>
#include <utility>
#include <vector>

namespace fenmark::host::embedded {
namespace {

std::vector<Element> lineBefore(double direction = 0.0) {
    std::vector<Element> before =
        layChain({{-std::cos(direction) * 10, -std::sin(direction) * 10}, direction}, {straight(10)});
    before[0].id = 1;
    return before;
}

TEST(LayCurve, IsTheShorterArc) {
    const std::optional<Element> laid = layCurve({}, {0, 0}, {100, 0}, 60, 0, PositiveRadius::Left);
    ASSERT_TRUE(laid);
    EXPECT_LT(laid->length, kPi * 60);
    EXPECT_NEAR(laid->length, 120 * std::asin(100.0 / 120.0), 1e-9);
    EXPECT_FALSE(laid->clockwise);
    EXPECT_LT(laid->direction, 0.0) << "a left turn starts to the right of its chord";
    EXPECT_EQ(laid->startRadius, 60);
    EXPECT_EQ(laid->endRadius, 60);
    const PlanPoint end = poseOnElement(*laid, laid->length).point;
    EXPECT_NEAR(end.x, 100, 1e-9);
    EXPECT_NEAR(end.y, 0, 1e-9);
}

TEST(LayCurve, MinusOneIsClockwise) {
    EXPECT_TRUE(layCurve({}, {0, 0}, {100, 0}, 60, -1, PositiveRadius::Left)->clockwise);
    EXPECT_FALSE(layCurve({}, {0, 0}, {100, 0}, 60, -1, PositiveRadius::Right)->clockwise);
    EXPECT_TRUE(layCurve({}, {0, 0}, {100, 0}, 60, -1, PositiveRadius::Auto)->clockwise);
}

TEST(LayCurve, RefusesNoRadiusAndAChordLongerThanTheDiameter) {
    const auto refused = [](double radius) {
        return !layCurve({}, {0, 0}, {100, 0}, radius, 0, PositiveRadius::Auto).has_value();
    };
    EXPECT_TRUE(refused(0.0));
    EXPECT_TRUE(refused(-60.0));
    EXPECT_TRUE(refused(std::nan("")));
    EXPECT_TRUE(refused(kInfiniteRadius));
    EXPECT_TRUE(refused(49.998995)) << "a chord 2.01 mm too long";
    EXPECT_FALSE(refused(49.999005)) << "1.99 mm too long";
    EXPECT_FALSE(refused(50.0)) << "a half circle";
}

// Spirals without a PI may be turned over yet; each number of them that is turned over ends elsewhere.
TEST(LayCurve, ReachesFromTheEndOfUpToFourSpiralsThatAreTurnedOver) {
    constexpr double kShort = 1.0; // radius, far less than what lies between those ends
    const std::vector<Shape> spirals(5, clothoid(200, 100, 60));
    const std::vector<Shape> others(5, clothoid(-200, -100, 60));
    const std::vector<Element> given = layChain({{0, 0}, 0.5}, spirals);
    for (std::size_t count = 1; count <= spirals.size(); ++count) {
        std::vector<Shape> shapes = spirals;
        std::copy(others.begin(), others.begin() + static_cast<std::ptrdiff_t>(count),
                  shapes.end() - static_cast<std::ptrdiff_t>(count));
        const PlanPoint from = layChain({{0, 0}, 0.5}, shapes).back().end;
        for (std::size_t continuing = 0; continuing <= spirals.size(); ++continuing) {
            std::vector<Element> before = given;
            std::for_each(before.end() - static_cast<std::ptrdiff_t>(continuing), before.end(),
                          [](Element& spiral) { spiral.continuing = true; });
            for (const PositiveRadius sense : {PositiveRadius::Auto, PositiveRadius::Left}) {
                const std::optional<Element> laid =
                    layCurve(before, given.back().end, {from.x + kShort, from.y}, kShort, 0, sense);
                ASSERT_EQ(laid.has_value(),
                          sense == PositiveRadius::Auto && count <= std::min<std::size_t>(continuing, 4))
                    << count << " of " << continuing;
                if (laid) {
                    EXPECT_NEAR(laid->start.x, from.x, 1e-9);
                    EXPECT_NEAR(laid->start.y, from.y, 1e-9);
                    EXPECT_NEAR(laid->length, kPi / 3 * kShort, 1e-9) << "a chord of one radius";
                }
            }
        }
    }
}

// Of radii and lengths nothing above zero is too small.
TEST(LaidElements, MayBeAsSmallAsAnyNumber) {
    const std::vector<Element> before = lineBefore();
    for (const double small : {1e-9, 1e-3, 0.05, 0.5}) {
        const auto spiral = [&](double startRadius, double endRadius, double length) {
            return laySpiral(before, 1, {0, 0}, {0, 0}, startRadius, endRadius, length, 0, PositiveRadius::Left);
        };
        const std::optional<Element> curve = layCurve({}, {0, 0}, {small, 0}, small, 0, PositiveRadius::Left);
        ASSERT_TRUE(curve) << small;
        EXPECT_NEAR(curve->length, kPi / 3 * small, 1e-12);
        for (const std::optional<Element>& laid :
             {spiral(small, 200, 60), spiral(200, small, 60), spiral(200, 100, small)}) {
            ASSERT_TRUE(laid) << small;
            EXPECT_EQ(std::min({laid->startRadius, laid->endRadius, laid->length}), small);
        }
        EXPECT_EQ(whyCurveRefused(small), Refusal::ChordBeyondDiameter);
        EXPECT_EQ(whySpiralRefused(small, small, small), Refusal::NothingBefore);
    }
}

TEST(LayCurve, TakesAHalfCircleWhoseChordRoundingMadeTooLong) {
    const PlanPoint start{60295.494, -39525.623};
    const PlanPoint end{60295.494, -39425.223};
    constexpr double radius = 50.2;
    ASSERT_GT(end.y - start.y, 2.0 * radius);
    const std::optional<Element> laid = layCurve({}, start, end, radius, 0, PositiveRadius::Auto);
    ASSERT_TRUE(laid);
    EXPECT_NEAR(laid->length, kPi * radius, 1e-9);
    EXPECT_NEAR(laid->direction, 0.0, 1e-9) << "a left turn from west to east of the chord";
}

TEST(LayCurve, TakesAChordOfTheLimitItself) {
    constexpr double kLongest = 2.0 * 10.0 + 0.002;
    for (const double chord : {kLongest, std::nextafter(kLongest, 21.0)}) {
        EXPECT_EQ(layCurve({}, {0, 0}, {chord, 0}, 10, 0, PositiveRadius::Left).has_value(), chord == kLongest);
    }
}

TEST(LayCurve, TakesEveryHalfCircleOfMillimetreCoordinates) {
    constexpr int kDirections = 52;
    constexpr double radius = 10.0;
    const auto millimetres = [](double value) { return std::round(value * 1000.0) / 1000.0; };
    int longer = 0;
    for (int i = 0; i < kDirections; ++i) {
        const double angle = 2 * kPi * i / kDirections;
        const PlanPoint start{millimetres(1234.5678), millimetres(-876.5432)};
        const PlanPoint end{millimetres(1234.5678 + 2 * radius * std::cos(angle)),
                            millimetres(-876.5432 + 2 * radius * std::sin(angle))};
        const double chord = std::hypot(end.x - start.x, end.y - start.y);
        const std::optional<Element> laid = layCurve({}, start, end, radius, 0, PositiveRadius::Auto);
        ASSERT_TRUE(laid) << i;
        if (chord > 2 * radius) {
            ++longer;
            EXPECT_NEAR(laid->length, kPi * chord / 2, 1e-9) << "the half circle over the chord";
        }
        const PlanPoint reached = poseOnElement(*laid, laid->length).point;
        EXPECT_NEAR(reached.x, end.x, 1e-9) << i;
        EXPECT_NEAR(reached.y, end.y, 1e-9) << i;
    }
    EXPECT_GT(longer, 10);
}

TEST(SettledElements, TurnsAnArcOverOnlyIfThatJoinsIt) {
    // A left arc that starts along the line before, given as a right one.
    const auto behind = [&](double lineDirection, double radius) {
        std::vector<Element> elements = lineBefore(lineDirection);
        const PlanPoint end = layChain({{0, 0}, 0}, {arc(radius, 50)})[0].end;
        elements.push_back(*layCurve(elements, {0, 0}, end, radius, -1, PositiveRadius::Auto));
        return settledElements(elements);
    };
    const std::vector<Element> turned = behind(0.0, 100);
    ASSERT_EQ(turned.size(), 1U) << "the line stays";
    EXPECT_TRUE(turned[0].otherSense);
    EXPECT_FALSE(turned[0].clockwise);
    EXPECT_NEAR(turned[0].direction, 0.0, 1e-9);
    EXPECT_TRUE(behind(1.0, 100).empty()) << "neither way joins a line that comes from elsewhere";
    EXPECT_EQ(behind(0.0, 5000).size(), 1U) << "a flat arc joins better this way";
}

// An arc that was given with the wrong sense, behind what proves the senses as given: whether it is turned over.
struct Doubt {
    double turn;           // of the arc, which is how much the joint before it breaks
    double behind;         // how much the joint behind it breaks if it is turned over; otherwise by the turn more
    double gap = 0.0;      // how much the joint before it breaks if it is turned over
    double others = 0.0;   // how much all other joints break
    bool afterArc = false; // whether it follows an arc and not a straight
    double length = 200.0; // of the arc
    double curves = 100.0; // length of each other curve
    double aside = 0.0;    // how far the straight before it begins beside the end before that
    bool points = false;   // whether an element of no length stands at each end
};

bool turnsOver(const Doubt& doubt) {
    std::vector<Element> elements;
    Pose pose{{1000, -2000}, 0.3};
    const auto lay = [&](const Shape& shape, double bend, bool wrong = false) {
        pose.direction += bend;
        Element element = layChain(pose, {shape})[0];
        pose = poseOnElement(element, shape.length);
        if (wrong) {
            element = mirrored(element);
            element.otherSense = false;
        }
        elements.push_back(element);
        if (doubt.points) {
            elements.push_back(layLine(elements, element.end, element.end));
        }
    };
    const double length = doubt.curves;
    for (const Shape& shape : {straight(100), arc(2 * length, length), straight(100), arc(-2 * length, length),
                               straight(100), arc(1.5 * length, length)}) {
        lay(shape, doubt.others);
    }
    pose.point.x -= doubt.aside * std::sin(pose.direction);
    pose.point.y += doubt.aside * std::cos(pose.direction);
    lay(straight(50), doubt.others);
    if (doubt.afterArc) {
        lay(arc(100, 50), doubt.others);
    }
    lay(arc(doubt.length / doubt.turn, doubt.length), doubt.gap, true);
    lay(straight(100), doubt.behind);
    const std::vector<Element> settled = settledElements(elements);
    EXPECT_TRUE(settled.empty() || settled.size() == (doubt.points ? 4U : 2U)) << "the others stay";
    EXPECT_TRUE(settled.empty() || settled[0].otherSense);
    return !settled.empty();
}

TEST(SettledElements, TurnsAnArcOverForOneJointThatBreaksByMoreThanAKink) {
    constexpr double kAside = 60 * kDegree;
    constexpr double kLittle = 0.0005 * kDegree;
    // Two changes and a curve against the sense cost 1.151 broken joints, and a broken joint 1 more for each 20 degrees
    // beyond 5, up to a half.
    for (const double less : {-kLittle, kLittle}) {
        EXPECT_EQ(turnsOver({.turn = 8.02 * kDegree + less, .behind = kAside}), less > 0);
        for (const bool points : {false, true}) {
            EXPECT_EQ(turnsOver({.turn = 6.02 * kDegree + less, .behind = kAside, .afterArc = true, .points = points}),
                      less > 0);
        }
        const double turn = 15.98 * kDegree + less;
        EXPECT_EQ(turnsOver({.turn = turn, .behind = 4 * kDegree - turn}), less < 0) << "which breaks the joint behind";
    }
}

// Both joints of an arc break by little more than a kink; each alone would not be worth it.
TEST(SettledElements, TurnsAnArcOverForTwoJointsHoweverShortItIs) {
    for (const double length : {200.0, 0.5, 0.05, 0.005}) {
        for (const double aside : {0.0, 5.0}) {
            for (const bool points : {false, true}) {
                const Doubt doubt{
                    .turn = 6 * kDegree, .behind = 0.0, .length = length, .aside = aside, .points = points};
                EXPECT_TRUE(turnsOver(doubt)) << length << ' ' << aside << ' ' << points;
            }
        }
    }
}

TEST(SettledElements, TurnsAnArcOverForOneJointOnlyIfThatMeetsAsTheOthersDo) {
    const double limits[][2] = {
        {0.0, 2e-5 + 0.002 / 50 + 0.002 / 200}, // what rounding leaves
        {1e-4, 4e-4},                           // four times what the others leave
        {1e-2, 0.25 * kDegree},                 // at most
    };
    for (const auto& [others, limit] : limits) {
        for (const double share : {-1.0001, -0.9999, 0.9999, 1.0001}) {
            for (const bool points : {false, true}) {
                const Doubt doubt{.turn = 12 * kDegree,
                                  .behind = 60 * kDegree,
                                  .gap = share * limit,
                                  .others = others,
                                  .points = points};
                EXPECT_EQ(turnsOver(doubt), std::abs(share) < 1) << others << " " << share;
            }
        }
    }
    // However short the others are.
    for (const double curves : {100.0, 0.5, 0.05, 0.005}) {
        for (const double gap : {0.00399, 0.00401}) {
            const Doubt doubt{
                .turn = 12 * kDegree, .behind = 60 * kDegree, .gap = gap, .others = 1e-3, .curves = curves};
            EXPECT_EQ(turnsOver(doubt), gap < 0.004) << curves;
        }
    }
}

TEST(SettledElements, WhatIsSettledStays) {
    std::vector<Element> elements = lineBefore(0.0);
    const PlanPoint end = layChain({{0, 0}, 0}, {arc(100, 50)})[0].end;
    elements.push_back(*layCurve(elements, {0, 0}, end, 100, -1, PositiveRadius::Auto));
    elements[1] = settledElements(elements).at(0);
    EXPECT_TRUE(settledElements(elements).empty());
    EXPECT_TRUE(settledElements({}).empty());
}

// An element of no length takes the place of the end before it, and has no say.
TEST(SettledElements, OneOfNoLengthChangesNothing) {
    const PlanPoint end = layChain({{0, 0}, 0}, {arc(100, 50)})[0].end;
    for (const bool between : {false, true}) {
        std::vector<Element> elements = lineBefore(0.0);
        if (between) {
            elements.push_back(layLine(elements, {0, 0}, {0, 0}));
        }
        elements.push_back(*layCurve(elements, {0, 0}, end, 100, -1, PositiveRadius::Auto));
        const std::vector<Element> settled = settledElements(elements);
        ASSERT_EQ(settled.size(), 1U);
        EXPECT_TRUE(settled[0].otherSense);
    }
    // Before any other element there is no direction that it could have.
    std::vector<Element> first = {layLine({}, {0, 0}, {0, 0})};
    first.push_back(*layCurve(first, {0, 0}, end, 100, 0, PositiveRadius::Auto));
    EXPECT_TRUE(settledElements(first).empty());
    first[1] = *layCurve({}, {0, 0}, end, 100, -1, PositiveRadius::Auto); // whose image begins in the direction of x
    EXPECT_TRUE(settledElements(first).empty());
}

// A first arc behind an element of no length turns over for the joint behind it as any first arc does, however short it is.
TEST(SettledElements, AFirstArcTurnsOverForTheJointBehindIt) {
    for (const auto& [point, length] :
         {std::pair(false, 100.0), std::pair(true, 100.0), std::pair(false, 0.008), std::pair(false, 0.1)}) {
        std::vector<Element> elements = layChain({{0, 0}, 0}, {arc(10 * length, length), straight(50), arc(200, 100),
                                                               straight(50), arc(-200, 100), straight(50)});
        elements[0] = mirrored(elements[0]);
        elements[0].otherSense = false;
        if (point) {
            elements.insert(elements.begin(), layLine({}, {0, 0}, {0, 0}));
        }
        const std::vector<Element> settled = settledElements(elements);
        ASSERT_EQ(settled.size(), 6U) << point;
        EXPECT_TRUE(settled[0].otherSense);
        EXPECT_FALSE(settled[2].otherSense);
    }
}

// Where one arc has proved to be of the other sense, every joint that meets is worth it to turn another one over.
TEST(SettledElements, AFirstArcThatTurnsOverProvesThatTheSensesAreMixed) {
    for (const bool mixed : {false, true}) {
        std::vector<Element> elements = layChain(
            {{0, 0}, 0}, {arc(1000, 100), straight(50), arc(200, 100), straight(50), arc(-200, 100), straight(50)});
        elements.push_back(
            layChain({elements.back().end, elements.back().endDirection()}, {arc(100 / (7 * kDegree), 100)})[0]);
        elements.push_back(
            layChain({elements.back().end, elements.back().endDirection() + 60 * kDegree}, {straight(100)})[0]);
        for (const std::size_t wrong : {std::size_t{0}, std::size_t{6}}) {
            if (wrong != 0 || mixed) {
                elements[wrong] = mirrored(elements[wrong]);
                elements[wrong].otherSense = false;
            }
        }
        const std::vector<Element> settled = settledElements(elements);
        EXPECT_EQ(!settled.empty() && settled[settled.size() - 2].otherSense, mixed);
    }
}

// A spiral without a PI that turns over ends elsewhere. What follows begins there; a straight or an arc ends where it did,
// a clothoid turns with its ends.
TEST(SettledElements, WhatFollowsASpiralThatTurnsOverBeginsAtItsEnd) {
    for (const Shape& shape : {straight(80), arc(200, 80), clothoid(200, 300, 80)}) {
        const std::vector<Element> chain =
            layChain({{0, 0}, 0}, {straight(100), clothoid(0, 200, 60), shape, straight(90)});
        std::vector<Element> given = chain;
        given[1] = turnedOver(chain[1]);
        given[1].otherSense = false;
        given[1].continuing = true;
        given[1].end = poseOnElement(given[1], 60).point;
        ASSERT_EQ(given[1].end.x, chain[1].end.x) << "both ways, as it begins along x";
        given[2].start = given[1].end;
        if (shape.type == ElementType::Straight) {
            spanLine(given[2], 0.0);
        } else if (shape.type == ElementType::Arc) {
            ASSERT_TRUE(spanArc(given[2], 0.0));
        } else {
            given[2].direction += directionTo(given[2].start, chain[2].end) - directionTo(chain[2].start, chain[2].end);
            given[2].end = poseOnElement(given[2], given[2].length).point;
            given[3].start = given[2].end;
            spanLine(given[3], 0.0);
        }
        const std::vector<Element> settled = settledElements(given);
        ASSERT_EQ(settled.size(), 3U);
        EXPECT_TRUE(settled[0].otherSense);
        EXPECT_FALSE(settled[1].otherSense);
        const double near = shape.type == ElementType::Clothoid ? 0.2 : 1e-9; // it aims at where it was laid first
        for (std::size_t i = 0; i < settled.size(); ++i) {
            const Element& element = settled[i];
            const Element& wanted = chain[i + 1];
            EXPECT_EQ(element.start.x, i == 0 ? wanted.start.x : settled[i - 1].end.x) << i;
            EXPECT_EQ(element.start.y, i == 0 ? wanted.start.y : settled[i - 1].end.y) << i;
            const PlanPoint end = poseOnElement(element, element.length).point;
            EXPECT_NEAR(element.end.x, end.x, 1e-9) << i;
            EXPECT_NEAR(element.end.y, end.y, 1e-9) << i;
            EXPECT_NEAR(element.end.x, wanted.end.x, near) << i;
            EXPECT_NEAR(element.end.y, wanted.end.y, near) << i;
            EXPECT_NEAR(element.direction, wanted.direction, near) << i;
            EXPECT_NEAR(element.length, wanted.length, near) << i;
        }
    }
}

// Where Auto was given its way and a joint stays broken, the setting that would join it is named.
TEST(BrokenJoints, AnImageThatJoinsNamesItsSense) {
    const PlanPoint end = layChain({{0, 0}, 0}, {arc(100, 50)})[0].end;
    const auto remedies = [&](bool otherSense) {
        Alignment alignment;
        alignment.elements = lineBefore(0.0);
        Element wrong = *layCurve({}, {0, 0}, end, 100, -1, PositiveRadius::Auto);
        wrong.otherSense = otherSense;
        alignment.elements.push_back(wrong);
        std::vector<Remedy> found;
        for (const BrokenJoint& joint : brokenJoints(alignment, {PositiveRadius::Auto, false})) {
            found.push_back(joint.remedy);
        }
        return found;
    };
    EXPECT_EQ(remedies(false), std::vector<Remedy>{Remedy::PositiveRadiusRight});
    EXPECT_EQ(remedies(true), std::vector<Remedy>{Remedy::PositiveRadiusLeft});
    Alignment empty;
    empty.elements = {layLine({}, {0, 0}, {0, 0})};
    EXPECT_TRUE(brokenJoints(empty, {PositiveRadius::Auto, false}).empty());
}

// All ways of turning over two arcs, and what was done to them before.
TEST(BrokenJoints, NameTheSettingThatJoinsBothImages) {
    // An arc over its chord, which turns left; it begins to the right of its chord by half its turn.
    const auto arcOver = [](double chordDirection, double halfTurn, const PlanPoint& start) {
        return layChain({start, chordDirection - halfTurn}, {arc(50 / halfTurn, 100)})[0];
    };
    Element before = arcOver(0.0, 0.3, {});
    const double own = 0.3;    // where it ends
    const double image = -0.3; // where its image ends
    struct Case {
        double chord; // of the arc behind, which begins with 0.2 less, and its image with 0.2 more
        bool turnedBefore;
        bool turnedBehind;
        Remedy remedy;
    };
    const auto left = Remedy::PositiveRadiusLeft;
    const auto right = Remedy::PositiveRadiusRight;
    const Case cases[] = {
        {image - 0.2, false, false, right},
        {image - 0.2, true, true, left},
        {image - 0.2, false, true, Remedy::None},
        {image - 0.2, true, false, Remedy::None},
        {image + 0.2, false, false, Remedy::None},
        {image + 0.2, true, true, Remedy::None},
        {image + 0.2, false, true, right},
        {image + 0.2, true, false, left},
        {own - 0.2, false, false, Remedy::None},
        {own - 0.2, true, true, Remedy::None},
        {own - 0.2, false, true, left},
        {own - 0.2, true, false, right},
        {1.5, false, false, Remedy::None},
        {1.5, true, true, Remedy::None},
    };
    for (const Case& tried : cases) {
        Alignment alignment;
        alignment.startStation = 20;
        before.otherSense = tried.turnedBefore;
        Element behind = arcOver(tried.chord, 0.2, before.end);
        behind.otherSense = tried.turnedBehind;
        alignment.elements = {before, behind};
        for (const PositiveRadius sense : {PositiveRadius::Auto, PositiveRadius::Left, PositiveRadius::Right}) {
            const std::vector<BrokenJoint> joints = brokenJoints(alignment, {sense, false});
            ASSERT_EQ(joints.size(), 1U) << tried.chord;
            EXPECT_EQ(joints[0].station, 120);
            EXPECT_NEAR(joints[0].angle, tried.chord - 0.2 - own, 1e-9);
            const Remedy images = tried.chord < 1 ? Remedy::PositiveRadiusAuto : Remedy::None;
            EXPECT_EQ(joints[0].remedy, sense == PositiveRadius::Auto ? tried.remedy : images) << tried.chord;
        }
        // What only continues would know its direction with a PI, and has no image.
        for (const bool first : {true, false}) {
            alignment.elements = {before, behind};
            alignment.elements[first ? 0 : 1].continuing = true;
            EXPECT_EQ(brokenJoints(alignment, {PositiveRadius::Left, false})[0].remedy, Remedy::PlanTangents);
            const bool joins = std::abs(tried.chord - (first ? own - 0.2 : image + 0.2)) < 1e-9;
            EXPECT_EQ(brokenJoints(alignment, {PositiveRadius::Left, true})[0].remedy,
                      joins ? Remedy::PositiveRadiusAuto : Remedy::None);
        }
    }
    // A straight behind the arc.
    for (const bool turned : {false, true}) {
        Alignment alignment;
        before.otherSense = turned;
        alignment.elements = {before, layChain({before.end, image}, {straight(10)})[0]};
        EXPECT_EQ(brokenJoints(alignment, {PositiveRadius::Auto, false})[0].remedy, turned ? left : right);
    }
}

TEST(BrokenJoints, AreThoseOfMoreThanADegree) {
    for (const double angle : {-1.001, -0.999, 0.0, 0.999, 1.001}) {
        Alignment alignment;
        alignment.elements = layChain({{0, 0}, 3.1}, {straight(10)});
        alignment.elements.push_back(
            layChain({alignment.elements[0].end, wrapped(3.1 + angle * kDegree)}, {straight(10)})[0]);
        EXPECT_EQ(brokenJoints(alignment, {}).size(), std::abs(angle) > 1 ? 1U : 0U) << angle;
    }
}

TEST(BrokenJoints, AreNoneAtTheLimitItself) {
    for (const double angle : {kBrokenJoint, std::nextafter(kBrokenJoint, 1.0)}) {
        for (const double side : {1.0, -1.0}) {
            Alignment alignment;
            alignment.elements = layChain({{0, 0}, 0}, {straight(10)});
            alignment.elements.push_back(layChain({{10, 0}, side * angle}, {straight(10)})[0]);
            EXPECT_EQ(brokenJoints(alignment, {}).size(), angle > kBrokenJoint ? 1U : 0U) << angle * side;
        }
    }
}

// The tangent is that of the last element before that has one; before the first it is the direction of x.
TEST(LayLine, TakesTheTangentBeforeOnlyWithoutALength) {
    Element wound = lineBefore()[0]; // turns infinitely often
    wound.type = ElementType::Arc;
    wound.length = 1e300;
    wound.startRadius = wound.endRadius = 1e-300;
    wound.id = 2;
    std::vector<Element> woundBehindLine = lineBefore(0.5);
    woundBehindLine.push_back(wound);
    const std::pair<std::vector<Element>, double> befores[] = {
        {{}, 0.0}, {lineBefore(0.5), 0.5}, {{wound}, 0.0}, {woundBehindLine, 0.5}};
    for (const auto& [before, tangent] : befores) {
        for (const double length : {0.0, 1e-6, 0.05, 0.5, 2.0}) {
            const Element line = layLine(before, {3, 4}, {3 + length * std::cos(2), 4 + length * std::sin(2)});
            EXPECT_EQ(line.type, ElementType::Straight);
            EXPECT_NEAR(line.length, length, 1e-12);
            EXPECT_NEAR(line.direction, length > 0 ? 2.0 : tangent, 1e-8);
        }
        const std::optional<Element> point = layCurve(before, {3, 4}, {3, 4}, 10, 0, PositiveRadius::Left);
        ASSERT_TRUE(point);
        EXPECT_EQ(point->length, 0.0);
        EXPECT_EQ(point->direction, tangent);
        if (!before.empty()) {
            for (const double length : {60.0, 0.001}) { // of which the second has its PI within the tolerance
                const std::optional<Element> spiral = laySpiral(before, before.back().id, {3, 4}, {3, 4},
                                                                kInfiniteRadius, 200, length, 0, PositiveRadius::Left);
                ASSERT_TRUE(spiral);
                EXPECT_TRUE(spiral->continuing) << length;
                EXPECT_EQ(spiral->direction, tangent) << length;
            }
        }
    }
}

TEST(LaySpiral, RefusesWhatIsNoSpiral) {
    const std::vector<Element> before = lineBefore();
    const auto refused = [&](std::int32_t id, double startRadius, double endRadius, double length) {
        return !laySpiral(before, id, {0, 0}, {40, 0}, startRadius, endRadius, length, 0, PositiveRadius::Auto);
    };
    EXPECT_FALSE(refused(1, kInfiniteRadius, 200, 60));
    EXPECT_TRUE(refused(2, kInfiniteRadius, 200, 60)) << "an unknown element before";
    EXPECT_TRUE(refused(0, kInfiniteRadius, 200, 60));
    EXPECT_TRUE(refused(1, kInfiniteRadius, kInfiniteRadius, 60));
    EXPECT_TRUE(refused(1, kInfiniteRadius, 200, kInfiniteRadius)) << "a length without end";
    for (const double none : {0.0, -0.0, -60.0, -1e-300, -kInfiniteRadius, std::nan("")}) {
        for (const double other : {200.0, kInfiniteRadius}) {
            EXPECT_TRUE(refused(1, none, other, 60)) << none << ' ' << other;
            EXPECT_TRUE(refused(1, other, none, 60)) << other << ' ' << none;
        }
        EXPECT_TRUE(refused(1, none, none, 60)) << none;
        EXPECT_TRUE(refused(1, kInfiniteRadius, 200, none)) << none;
    }
}

TEST(LaySpiral, StartsTowardsThePiIfItsDistanceIsRight) {
    const std::vector<Element> before = lineBefore(0.5);
    const Element exact = layChain({{0, 0}, 0.5}, {clothoid(0, 200, 60)})[0];
    const double toPi = std::hypot(exact.pi()->x, exact.pi()->y);
    const auto directionFor = [&](double share) {
        const PlanPoint pi{toPi * share * std::cos(0.505), toPi * share * std::sin(0.505)};
        return laySpiral(before, 1, {0, 0}, pi, kInfiniteRadius, 200, 60, 0, PositiveRadius::Auto)->direction;
    };
    constexpr double kDirection = 1e-12;
    EXPECT_NEAR(directionFor(1.0), 0.505, kDirection);
    EXPECT_NEAR(directionFor(1.0099), 0.505, kDirection);
    EXPECT_NEAR(directionFor(0.9901), 0.505, kDirection);
    EXPECT_NEAR(directionFor(1.0101), 0.5, kDirection) << "then it continues the element before";
    EXPECT_NEAR(directionFor(0.9899), 0.5, kDirection);
}

// Only the origin stands for a PI that was not found, and not what lies on an axis.
TEST(LaySpiral, StartsTowardsAPiOnAnAxis) {
    const std::vector<Element> before = lineBefore();
    const Element exact = layChain({{0, 0}, 2.0}, {clothoid(0, 200, 60)})[0];
    for (const PlanPoint& pi : {PlanPoint{0, 70}, PlanPoint{70, 0}}) {
        const PlanPoint start{pi.x - exact.pi()->x, pi.y - exact.pi()->y};
        const std::optional<Element> laid =
            laySpiral(before, 1, start, pi, kInfiniteRadius, 200, 60, 0, PositiveRadius::Auto);
        ASSERT_TRUE(laid);
        EXPECT_FALSE(laid->continuing) << pi.x;
        EXPECT_NEAR(laid->direction, 2.0, 1e-9) << pi.x;
    }
}

// Where the turn is less than a half circle the PI lies ahead, however near it is.
TEST(LaySpiral, StartsTowardsAPiThatIsNear) {
    const std::vector<Element> before = lineBefore();
    for (const double length : {0.01, 0.1, 1.0}) {
        const Element exact = layChain({{3, 4}, 2.0}, {clothoid(0, 10, length)})[0];
        const std::optional<Element> laid =
            laySpiral(before, 1, {3, 4}, *exact.pi(), kInfiniteRadius, 10, length, 0, PositiveRadius::Auto);
        ASSERT_TRUE(laid);
        EXPECT_FALSE(laid->continuing) << length;
        EXPECT_NEAR(laid->direction, 2.0, 1e-6) << length;
    }
}

TEST(LaySpiral, ATinySpiralGetsTenMillimetres) {
    const std::vector<Element> before = lineBefore();
    const Element exact = layChain({{0, 0}, 0.001}, {clothoid(0, 10, 0.3)})[0];
    const double toPi = std::hypot(exact.pi()->x, exact.pi()->y);
    const auto directionFor = [&](double more) {
        const PlanPoint pi{(toPi + more) * std::cos(0.001), (toPi + more) * std::sin(0.001)};
        return laySpiral(before, 1, {0, 0}, pi, kInfiniteRadius, 10, 0.3, 0, PositiveRadius::Auto)->direction;
    };
    EXPECT_NEAR(directionFor(0.0099), 0.001, 1e-12);
    EXPECT_NEAR(directionFor(0.0101), 0.0, 1e-12);
}

TEST(LaySpiral, APiThatWasNotFoundIsIgnoredThoughItLieInTheRightDistance) {
    const Element exact = layChain({{0, 0}, 0}, {clothoid(0, 200, 60)})[0];
    const double toPi = std::hypot(exact.pi()->x, exact.pi()->y);
    std::vector<Element> before = layChain({{toPi, -50}, kPi / 2}, {straight(50)}); // ends at that distance from (0, 0)
    before[0].id = 1;
    for (const PositiveRadius sense : {PositiveRadius::Auto, PositiveRadius::Left, PositiveRadius::Right}) {
        const std::optional<Element> laid =
            laySpiral(before, 1, before[0].end, {0, 0}, kInfiniteRadius, 200, 60, 0, sense);
        EXPECT_NEAR(laid->direction, kPi / 2, 1e-12);
        EXPECT_EQ(laid->clockwise, sense == PositiveRadius::Right);
        const PlanPoint end = poseOnElement(*laid, 60).point;
        EXPECT_EQ(laid->end.x, end.x);
        EXPECT_EQ(laid->end.y, end.y);
    }
}

} // namespace
} // namespace fenmark::host::embedded
