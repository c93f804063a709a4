// Chains laid out exactly come through the output tangent at every joint, in both turning senses.
#include "output_fixture.h"
#include "support/exact_chain.h"

#include <cmath>
#include <cstdio>

namespace fenmark {
namespace {

constexpr double kJointTolerance = 1e-4;   // metres
constexpr double kTangentTolerance = 2e-5; // radians
constexpr double kStationTolerance = 1e-3; // metres: the stations run along the chain as laid

// Exact text of a real.
std::string exactly(double value) {
    char text[40];
    std::snprintf(text, sizeof text, "%.17g", value);
    return text;
}

// The chain as a route of the file: "L" is the sense that the construction calls left, and the drawing's x and y carry
// the record's numbers as they are.
sima::Array<sima::EntityData> elementsOf(const std::vector<Calelm>& chain) {
    sima::Array<sima::EntityData> elements;
    for (const Calelm& record : chain) {
        const std::string direction = record.dir == 1.0 ? "L" : "R";
        if (record.type == ALI_STRAIGHT) {
            elements.push_back(test::straight(record.sx, record.sy, record.ex, record.ey));
        } else if (record.type == ALI_ARC) {
            elements.push_back(test::arc(record.sx, record.sy, record.ex, record.ey,
                                         (record.dir == 1.0 ? "-" : "") + exactly(record.par), direction));
        } else {
            elements.push_back(test::clothoid(record.sx, record.sy, record.ex, record.ey, exactly(record.par),
                                              exactly(record.r1), exactly(record.r2), direction));
        }
    }
    return elements;
}

class ExactChains : public test::Output {
  protected:
    void expectTangentChain(const std::vector<Calelm>& exactChain, const std::string& what) {
        ASSERT_TRUE(output.createRouteAlignment(reader, routeOf(3, elementsOf(exactChain))).isValid()) << what;
        const auto& laid = chain();
        ASSERT_EQ(laid.size(), exactChain.size()) << what;
        double length = 0.0;
        for (std::size_t i = 0; i < laid.size(); ++i) {
            const std::string where = what + ", element " + std::to_string(i);
            EXPECT_NEAR(laid[i].laidEnd.x, exactChain[i].ex, kJointTolerance) << where;
            EXPECT_NEAR(laid[i].laidEnd.y, exactChain[i].ey, kJointTolerance) << where;
            EXPECT_NEAR(exact::angle_difference(laid[i].startAngle, exactChain[i].sang), 0.0, kTangentTolerance)
                << where;
            EXPECT_NEAR(exact::angle_difference(laid[i].endAngle, exactChain[i].eang), 0.0, kTangentTolerance) << where;
            if (i > 0) {
                EXPECT_NEAR(laid[i].start.x, laid[i - 1].laidEnd.x, kJointTolerance) << where;
                EXPECT_NEAR(laid[i].start.y, laid[i - 1].laidEnd.y, kJointTolerance) << where;
                EXPECT_NEAR(exact::angle_difference(laid[i].startAngle, laid[i - 1].endAngle), 0.0, kTangentTolerance)
                    << where;
            }
            length += exactChain[i].len;
        }
        EXPECT_NEAR(host.civil.alignments.back().chain.length(), length, kStationTolerance) << what;
    }
};

TEST_F(ExactChains, StraightClothoidArcClothoidStraightInBothSensesAndAllDirections) {
    for (const double turn : {1.0, -1.0}) {
        for (int i = 0; i < 12; ++i) {
            const exact::Pose start{60295.494L, -39525.623L, 0.05L + i * exact::kPi / 6};
            const auto records =
                exact::lay_chain(start, {exact::straight(120.0), exact::clothoid(turn, 120.0, 0.0, 250.0),
                                         exact::arc(turn, 250.0, 140.0), exact::clothoid(turn, 150.0, 250.0, 0.0),
                                         exact::straight(80.0)});
            expectTangentChain(records, "turn " + std::to_string(turn) + " direction " + std::to_string(i));
        }
    }
}

TEST_F(ExactChains, TurningSenseIsClockwiseInTheDrawingForLeft) {
    const auto records = exact::lay_chain(exact::Pose{0.0L, 0.0L, 0.3L},
                                          {exact::straight(50.0), exact::clothoid(1.0, 100.0, 0.0, 200.0)});
    ASSERT_EQ(elementsOf(records)[1].direction, "L");
    output.createRouteAlignment(reader, routeOf(3, elementsOf(records)));
    EXPECT_LT(chain()[1].endCurvature, 0.0);
    EXPECT_LT(exact::angle_difference(chain()[1].endAngle, chain()[1].startAngle), 0.0);
}

TEST_F(ExactChains, ReverseCurveChangesItsSenseInTheMiddle) {
    for (const double turn : {1.0, -1.0}) {
        expectTangentChain(exact::lay_chain(exact::Pose{1000.0L, 500.0L, 2.0L},
                                            {exact::straight(60.0), exact::clothoid(turn, 100.0, 0.0, 180.0),
                                             exact::arc(turn, 180.0, 70.0), exact::clothoid(turn, 100.0, 180.0, 0.0),
                                             exact::clothoid(-turn, 110.0, 0.0, 220.0), exact::arc(-turn, 220.0, 60.0),
                                             exact::clothoid(-turn, 110.0, 220.0, 0.0), exact::straight(40.0)}),
                           "turn " + std::to_string(turn));
    }
}

TEST_F(ExactChains, EggShapedClothoidBetweenTwoArcs) {
    for (const double turn : {1.0, -1.0}) {
        expectTangentChain(
            exact::lay_chain(exact::Pose{1000.0L, 500.0L, 4.0L},
                             {exact::straight(60.0), exact::arc(turn, 400.0, 90.0),
                              exact::clothoid(turn, 200.0, 400.0, 200.0), exact::arc(turn, 200.0, 50.0),
                              exact::clothoid(turn, 200.0, 200.0, 400.0), exact::arc(turn, 400.0, 50.0)}),
            "turn " + std::to_string(turn));
    }
}

TEST_F(ExactChains, PointsOfUnequalHeightsContinueTheElementBefore) {
    // The rays never meet, so the PI is the origin, which lies nowhere near the clothoid's tangents.
    const auto records = exact::lay_chain(exact::Pose{1000.0L, 500.0L, 1.0L},
                                          {exact::straight(60.0), exact::clothoid(1.0, 100.0, 0.0, 180.0),
                                           exact::arc(1.0, 180.0, 70.0), exact::clothoid(1.0, 100.0, 180.0, 0.0)});
    auto elements = elementsOf(records);
    for (std::size_t i = 0; i < elements.size(); ++i) {
        elements[i].startZ = static_cast<double>(i);
        elements[i].endZ = static_cast<double>(i) + 1.0;
    }
    ASSERT_TRUE(output.createRouteAlignment(reader, routeOf(3, elements)).isValid());
    EXPECT_EQ(chain()[1].pi, host::MdGePoint3d());
    EXPECT_NEAR(chain()[3].laidEnd.x, records[3].ex, kJointTolerance);
    EXPECT_NEAR(chain()[3].laidEnd.y, records[3].ey, kJointTolerance);
}

TEST_F(ExactChains, HeightsDoNotCountWhereTheTangentsAreTakenInPlan) {
    const auto records = exact::lay_chain(exact::Pose{1000.0L, 500.0L, 1.0L},
                                          {exact::straight(60.0), exact::clothoid(1.0, 100.0, 0.0, 180.0)});
    auto elements = elementsOf(records);
    for (std::size_t i = 0; i < elements.size(); ++i) {
        elements[i].startZ = 5.0 + static_cast<double>(i);
        elements[i].endZ = 6.0 + static_cast<double>(i);
    }
    output::DrawingOutput inPlan{host, {.planTangents = true, .alignmentMade = {}}};
    ASSERT_TRUE(inPlan.createRouteAlignment(reader, routeOf(3, elements)).isValid());
    const host::MdGePoint3d pi = chain()[1].pi;
    const double along = std::hypot(pi.x - records[1].sx, pi.y - records[1].sy);
    EXPECT_GT(along, 20.0);
    EXPECT_NEAR(pi.x, records[1].sx + along * std::cos(records[1].sang), kJointTolerance);
    EXPECT_NEAR(pi.y, records[1].sy + along * std::sin(records[1].sang), kJointTolerance);
    EXPECT_EQ(pi.z, 0.0);
}

TEST_F(ExactChains, ResultsLieOnTheChainAtTheirStationsAndOffsets) {
    const auto records = exact::lay_chain(exact::Pose{1000.0L, 500.0L, 1.0L},
                                          {exact::straight(60.0), exact::clothoid(1.0, 100.0, 0.0, 180.0),
                                           exact::arc(1.0, 180.0, 70.0), exact::straight(20.0)});
    sima::SimaAlignment route = routeOf(3, elementsOf(records));
    route.startStation = 1000.0;
    route.objectId = output.createRouteAlignment(reader, route);
    reader.alignments.push_back(route);

    sima::IntersectionData section;
    section.routeNumber = 7;
    section.routeFound = true;
    auto& cross = section.subEntities.emplace_back();
    cross.sectionName = "No.4";
    cross.station = 1000.0 + 60.0 + records[1].len + 35.0; // half way along the arc
    cross.pointNames = {"L", "R"};
    cross.distances = {-4.0, 4.0};
    cross.heights = {1.0, 2.0};
    cross.groundHeight = 3.0;
    output.createCrossSectionPoints(reader, section);

    ASSERT_EQ(host.drawing.pointCount(), 3U);
    const exact::Pose middle =
        exact::pose_at(exact::start_of(records[2]), exact::shape_of(records[2]), static_cast<exact::Real>(35.0));
    const auto x = static_cast<double>(middle.x);
    const auto y = static_cast<double>(middle.y);
    const auto angle = static_cast<double>(middle.azimuth); // anticlockwise from +x in the drawing's numbers
    EXPECT_NEAR(host.drawing.point(2).position.x, x, kJointTolerance);
    EXPECT_NEAR(host.drawing.point(2).position.y, y, kJointTolerance);
    // A positive offset lies to the right of travel.
    EXPECT_NEAR(host.drawing.point(1).position.x, x + 4.0 * std::sin(angle), kStationTolerance);
    EXPECT_NEAR(host.drawing.point(1).position.y, y - 4.0 * std::cos(angle), kStationTolerance);
    EXPECT_NEAR(host.drawing.point(0).position.x, x - 4.0 * std::sin(angle), kStationTolerance);
}

TEST_F(ExactChains, LastStationOfAMergedBendMayFallOutside) {
    // The merged chord is shorter than the two straights, so the file's last station lies behind its end.
    sima::SimaAlignment route = routeOf(
        3, {test::straight(0.0, 0.0, 100.0, 0.0), test::straight(100.0, 0.0, 199.9847695156391, 1.7452406437283512)});
    route.objectId = output.createRouteAlignment(reader, route);
    reader.alignments.push_back(route);
    ASSERT_EQ(chain().size(), 1U);
    sima::HSeriesData section;
    section.routeNumber = 7;
    section.routeFound = true;
    section.verticals.resize(2);
    section.verticals[0].station = 199.99;
    section.verticals[1].station = 200.0;
    output.createLongitudinalPoints(reader, section);
    EXPECT_EQ(reader.longitudinalPointsCreated, 1);
    EXPECT_EQ(reader.log.errorCount(), 1);
}

} // namespace
} // namespace fenmark
