// Routes as alignments: cleaning the chain, and what a made or half-made alignment leaves.
#include "host/boundary/geometry.h"
#include "output/chain_cleaning.h"
#include "output_fixture.h"

#include <cmath>

namespace fenmark {
namespace {

using host::Call;
using host::MdDbObjectId;
using Elements = sima::Array<sima::EntityData>;

constexpr double kPointTolerance = 1e-9; // metres

class RouteAlignments : public test::Output {};

TEST_F(RouteAlignments, IsMadeBetweenConnectAndDisconnect) {
    const auto id = output.createRouteAlignment(reader, routeOf(3, {test::straight(0.0, 0.0, 10.0, 0.0)}));
    EXPECT_TRUE(id.isValid());
    EXPECT_EQ(host.calls.text(), "connect createAlignment disconnect");
}

TEST_F(RouteAlignments, CarriesNameSiteDescriptionAndStartStation) {
    sima::SimaAlignment route = routeOf(3, {test::straight(0.0, 0.0, 10.0, 0.0)});
    route.startStation = 120.5;
    host.drawing.currentLayer = "現況";
    const auto id = output.createRouteAlignment(reader, route);
    ASSERT_EQ(host.civil.alignments.size(), 1U);
    const host::RecordedAlignment& made = host.civil.alignments[0];
    EXPECT_EQ(made.id, id);
    EXPECT_EQ(made.name, "県道");
    EXPECT_EQ(made.site, "サイト");
    EXPECT_EQ(made.description, "road-県道");
    EXPECT_EQ(made.layer, "現況");
    EXPECT_EQ(made.startStation, 120.5);
    EXPECT_TRUE(made.complete);
}

TEST_F(RouteAlignments, CountsUnderItsTypeAndKeepsTheName) {
    for (const std::int32_t type : {2, 3, 7, 3}) {
        output.createRouteAlignment(reader, routeOf(type, {test::straight(0.0, 0.0, 10.0, 0.0)}));
    }
    EXPECT_EQ(reader.alignmentsCreated, 4);
    EXPECT_EQ(reader.routesCreated(2), 1);
    EXPECT_EQ(reader.routesCreated(3), 2);
    EXPECT_EQ(reader.routesCreated(7), 1);
    EXPECT_EQ(reader.createdAlignmentNames.all(), (sima::Array<std::string>{"県道", "県道", "県道", "県道"}));
}

TEST_F(RouteAlignments, IsHandedToWhoeverWantsToHearOfIt) {
    std::vector<std::pair<MdDbObjectId, std::string>> heard;
    output::DrawingOutput telling{host, {.alignmentMade = [&heard](MdDbObjectId id, const sima::SimaAlignment& route) {
                                      heard.emplace_back(id, route.routeName);
                                  }}};
    const auto id = telling.createRouteAlignment(reader, routeOf(3, {test::straight(0.0, 0.0, 10.0, 0.0)}));
    EXPECT_EQ(heard, (std::vector<std::pair<MdDbObjectId, std::string>>{{id, "県道"}}));
    host.civil.sites.clear();
    EXPECT_FALSE(telling.createRouteAlignment(reader, routeOf(3, {})).isValid());
    EXPECT_EQ(heard.size(), 1U) << "what was not made";
}

TEST_F(RouteAlignments, TwoPointsGiveOneElement) {
    output.createRouteAlignment(reader, routeOf(3, {test::straight(0.0, 0.0, 10.0, 0.0)}));
    EXPECT_EQ(chain().size(), 1U);
}

TEST_F(RouteAlignments, OnePointGivesAnAlignmentWithoutElements) {
    EXPECT_TRUE(output.createRouteAlignment(reader, routeOf(3, {})).isValid());
    EXPECT_TRUE(chain().empty());
}

TEST_F(RouteAlignments, NoPointGivesAnAlignmentWithoutElements) {
    sima::SimaAlignment route;
    route.routeType = 3;
    EXPECT_TRUE(output.createRouteAlignment(reader, route).isValid());
    EXPECT_TRUE(chain().empty());
}

TEST_F(RouteAlignments, TheRouteItselfStaysAsItWasRead) {
    const sima::SimaAlignment route =
        routeOf(3, {test::straight(0.0, 0.0, 10.0, 0.0), test::straight(10.0, 0.0, 20.0, 0.0)});
    output.createRouteAlignment(reader, route);
    EXPECT_EQ(chain().size(), 1U);
    EXPECT_EQ(route.entities.size(), 3U);
    EXPECT_EQ(route.entities[0].endX, "10.000000000000");
    EXPECT_EQ(route.entities[0].spareInt, 0);
}

TEST_F(RouteAlignments, StraightArcStraightRestartsAtTheArcsReportedEnd) {
    host.civil.reportedShift = {0.25, -0.5};
    output.createRouteAlignment(
        reader, routeOf(3, {test::straight(0.0, 0.0, 100.0, 0.0), test::arc(100.0, 0.0, 150.0, 20.0, "200", "R"),
                            test::straight(150.0, 20.0, 200.0, 90.0)}));
    ASSERT_EQ(chain().size(), 3U);
    EXPECT_EQ(chain()[2].start.x, 150.25);
    EXPECT_EQ(chain()[2].start.y, 19.5);
    EXPECT_EQ(chain()[2].start.z, 0.0);
}

TEST_F(RouteAlignments, RefusedElementLeavesAHalfMadeAlignmentThatNobodyCounts) {
    host.civil.failingAdd = 1;
    sima::SimaAlignment route = routeOf(3, {test::straight(0.0, 0.0, 10.0, 0.0), test::straight(10.0, 0.0, 10.0, 9.0)});
    route.startStation = 50.0;
    EXPECT_TRUE(output.createRouteAlignment(reader, route).isNull());
    ASSERT_EQ(host.civil.alignments.size(), 1U);
    EXPECT_EQ(host.civil.alignments[0].description, "road-県道");
    EXPECT_EQ(host.civil.alignments[0].startStation, 0.0);
    EXPECT_EQ(chain().size(), 1U);
    EXPECT_EQ(reader.alignmentsCreated, 0);
    EXPECT_EQ(reader.routesCreated(3), 0);
    EXPECT_TRUE(reader.createdAlignmentNames.empty());
    EXPECT_EQ(host.calls.all().back(), Call::Disconnect);
}

TEST_F(RouteAlignments, ImpossibleArcLeavesAHalfMadeAlignment) {
    const auto id = output.createRouteAlignment(
        reader, routeOf(3, {test::straight(0.0, 0.0, 10.0, 0.0), test::arc(10.0, 0.0, 100.0, 0.0, "20", "R")}));
    EXPECT_TRUE(id.isNull());
    EXPECT_EQ(chain().size(), 1U);
}

TEST_F(RouteAlignments, UnknownSiteMakesNothing) {
    reader.siteName = "サイト2";
    EXPECT_TRUE(output.createRouteAlignment(reader, routeOf(3, {test::straight(0.0, 0.0, 10.0, 0.0)})).isNull());
    EXPECT_TRUE(host.civil.alignments.empty());
    EXPECT_EQ(reader.alignmentsCreated, 0);
}

TEST_F(RouteAlignments, LeadingClothoidEndsTheImportAndLeavesTheAlignmentWithItsAuxiliaryLine) {
    EXPECT_THROW(
        output.createRouteAlignment(reader, routeOf(3, {test::clothoid(0.0, 0.0, 49.92, 2.08, "100", "0", "200", "R"),
                                                        test::straight(49.92, 2.08, 100.0, 20.0)})),
        std::invalid_argument);
    ASSERT_EQ(host.civil.alignments.size(), 1U);
    EXPECT_EQ(chain().size(), 1U);
    EXPECT_EQ(chain()[0].type, 'S');
    EXPECT_EQ(reader.alignmentsCreated, 0);
}

TEST_F(RouteAlignments, ClothoidBehindAStraightOfNoLengthIsALeadingOne) {
    EXPECT_THROW(output.createRouteAlignment(
                     reader, routeOf(3, {test::straight(0.0, 0.0, 0.0, 0.0),
                                         test::clothoid(0.0, 0.0, 49.92, 2.08, "100", "0", "200", "R")})),
                 std::invalid_argument);
}

class ChainCleaning : public testing::Test {
  protected:
    // A straight of the given length at the end of the elements, in a direction of radians anticlockwise from +x.
    void add(double angle, double length) {
        const double x = elements.empty() ? 0.0 : elements.back().endPoint().x;
        const double y = elements.empty() ? 0.0 : elements.back().endPoint().y;
        elements.push_back(test::straight(x, y, x + length * std::cos(angle), y + length * std::sin(angle)));
    }
    void addDegrees(double degrees, double length) { add(host::degreesToRadians(degrees), length); }

    Elements elements;
};

TEST_F(ChainCleaning, ThreeStraightsOfOneDirectionBecomeOneWithTheThirdsEnd) {
    for (int i = 0; i < 3; ++i) {
        addDegrees(30.0, 10.0);
        elements.back().startZ = i;
        elements.back().endZ = i + 1.0;
    }
    const sima::SharedText endX = elements[2].endX;
    const sima::SharedText startX = elements[0].startX;
    output::mergeStraights(elements);
    ASSERT_EQ(elements.size(), 1U);
    EXPECT_EQ(elements[0].startX, startX);
    EXPECT_EQ(elements[0].startZ, 0.0);
    EXPECT_EQ(elements[0].endX, endX);
    EXPECT_EQ(elements[0].endZ, 3.0);
}

TEST_F(ChainCleaning, ExactlyOneDegreeStillMerges) {
    // The second straight's direction is one degree to the last bit, and then the next larger number.
    const double oneDegree = host::degreesToRadians(1.0);
    double x = 0.0;
    double y = 0.0;
    for (int i = 1; i < 100000 && std::atan2(y, x) != oneDegree; ++i) {
        x = 1000.0 + i;
        y = std::round(x * std::tan(oneDegree) * 1e12) / 1e12;
        while (std::atan2(y, x) < oneDegree) {
            y = std::nextafter(y, 1e9);
        }
    }
    ASSERT_EQ(std::atan2(y, x), oneDegree);
    // One straight is along x, before or behind the other; they meet at the origin.
    const auto pair = [](double dx, double dy, bool turnsLeft) {
        const auto text = [](double value) {
            char digits[64];
            std::snprintf(digits, sizeof digits, "%.17g", value);
            return sima::SharedText(digits);
        };
        sima::EntityData other = test::straight(0.0, 0.0, 0.0, 0.0);
        (turnsLeft ? other.endX : other.startX) = text(turnsLeft ? dx : -dx);
        (turnsLeft ? other.endY : other.startY) = text(turnsLeft ? dy : -dy);
        return turnsLeft ? Elements{test::straight(-10.0, 0.0, 0.0, 0.0), other}
                         : Elements{other, test::straight(0.0, 0.0, 10.0, 0.0)};
    };
    double above = y;
    while (std::atan2(above, x) == oneDegree) {
        above = std::nextafter(above, 1e9);
    }
    for (const bool turnsLeft : {true, false}) {
        elements = pair(x, y, turnsLeft);
        const sima::EntityData& other = elements[turnsLeft ? 1 : 0];
        ASSERT_EQ(host::mdutAngle(other.startPoint(), other.endPoint()), oneDegree);
        output::mergeStraights(elements);
        EXPECT_EQ(elements.size(), 1U) << turnsLeft;

        elements = pair(x, above, turnsLeft);
        output::mergeStraights(elements);
        EXPECT_EQ(elements.size(), 2U) << "the next direction above one degree " << turnsLeft;
    }
}

TEST_F(ChainCleaning, MoreThanOneDegreeEitherWayStays) {
    addDegrees(30.0, 10.0);
    addDegrees(31.001, 10.0);
    addDegrees(30.0, 10.0);
    output::mergeStraights(elements);
    EXPECT_EQ(elements.size(), 3U);
}

TEST_F(ChainCleaning, SlowBendIsMergedStepByStepAlongTheLengthenedChord) {
    // Each step turns by 0.9 degrees; the chord lags behind by half of what was merged, so the third still fits
    // and the fourth does not.
    addDegrees(30.0, 10.0);
    addDegrees(30.9, 10.0);
    output::mergeStraights(elements);
    ASSERT_EQ(elements.size(), 1U);
    addDegrees(31.4, 10.0); // 0.95 degrees from the chord at 30.45
    output::mergeStraights(elements);
    ASSERT_EQ(elements.size(), 1U);
    addDegrees(32.0, 10.0); // more than 1 degree from the chord at about 30.77
    output::mergeStraights(elements);
    EXPECT_EQ(elements.size(), 2U);
}

TEST_F(ChainCleaning, SeamOfTheAngleRangeSeparatesAlmostEqualDirections) {
    addDegrees(0.2, 10.0);
    addDegrees(-0.2, 10.0);
    output::mergeStraights(elements);
    EXPECT_EQ(elements.size(), 2U);
}

TEST_F(ChainCleaning, OnlyPairsOfStraightsMerge) {
    elements = {test::straight(0.0, 0.0, 10.0, 0.0), test::arc(10.0, 0.0, 20.0, 0.0, "100", "R"),
                test::straight(20.0, 0.0, 30.0, 0.0), test::straight(30.0, 0.0, 40.0, 0.0)};
    output::mergeStraights(elements);
    ASSERT_EQ(elements.size(), 3U);
    EXPECT_EQ(elements[1].type, "R");
    EXPECT_EQ(elements[2].endX, "40.000000000000");
}

TEST_F(ChainCleaning, MergesInSeveralPlacesAndKeepsTheOrder) {
    addDegrees(0.0, 10.0);
    addDegrees(0.0, 10.0);
    addDegrees(90.0, 10.0);
    addDegrees(90.0, 10.0);
    addDegrees(45.0, 10.0);
    output::mergeStraights(elements);
    ASSERT_EQ(elements.size(), 3U);
    EXPECT_NEAR(elements[1].startPoint().x, 20.0, kPointTolerance);
    EXPECT_NEAR(elements[1].endPoint().y, 20.0, kPointTolerance);
    EXPECT_NEAR(elements[2].startPoint().y, 20.0, kPointTolerance);
}

TEST_F(ChainCleaning, ElementsOfNoLengthAreRemovedOfAnyType) {
    elements = {test::straight(0.0, 0.0, 10.0, 0.0), test::straight(10.0, 0.0, 10.0, 0.0),
                test::arc(10.0, 0.0, 10.0, 0.0, "5", "R"), test::straight(10.0, 0.0, 20.0, 5.0)};
    output::removeZeroLengthElements(elements);
    ASSERT_EQ(elements.size(), 2U);
    EXPECT_EQ(elements[1].endX, "20.000000000000");
}

TEST_F(ChainCleaning, UnequalHeightsKeepAnElementOfNoPlanLength) {
    elements = {test::straight(10.0, 0.0, 10.0, 0.0)};
    elements[0].endZ = 1.0;
    output::removeZeroLengthElements(elements);
    EXPECT_EQ(elements.size(), 1U);
}

TEST_F(ChainCleaning, ElementOfNoLengthBetweenStraightsLetsThemMerge) {
    elements = {test::straight(0.0, 0.0, 10.0, 0.0), test::straight(10.0, 0.0, 10.0, 0.0),
                test::straight(10.0, 0.0, 20.0, 0.0)};
    output::removeZeroLengthElements(elements);
    output::mergeStraights(elements);
    EXPECT_EQ(elements.size(), 1U);
}

TEST_F(ChainCleaning, TakesEmptyChains) {
    output::removeZeroLengthElements(elements);
    output::mergeStraights(elements);
    EXPECT_TRUE(elements.empty());
}

} // namespace
} // namespace fenmark
