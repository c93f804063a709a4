// The PI of a clothoid, and how far it can be trusted.
#include "output/alignment_passes.h"
#include "support/exact_chain.h"
#include "support/route_elements.h"

#include <gtest/gtest.h>

#include <string>

namespace fenmark {
namespace {

using host::MdGePoint3d;

// The construction's series and angle steps move the PI of an ordinary clothoid by less than this, metres.
constexpr double kPiTolerance = 2e-3;

// The chain's record as an element of the file. The drawing's x and y carry the record's numbers as they are.
sima::EntityData elementOf(const Calelm& record) {
    const std::string direction = record.dir == 1.0 ? "L" : "R";
    return test::clothoid(record.sx, record.sy, record.ex, record.ey, sima::formatReal(record.par),
                          sima::formatReal(record.r1), sima::formatReal(record.r2), direction);
}

// Where the exact tangents meet.
MdGePoint3d exactPi(const Calelm& record) {
    const double ux = std::cos(record.sang);
    const double uy = std::sin(record.sang);
    const double vx = std::cos(record.eang);
    const double vy = std::sin(record.eang);
    const double t = ((record.ex - record.sx) * vy - (record.ey - record.sy) * vx) / (ux * vy - uy * vx);
    return {record.sx + t * ux, record.sy + t * uy, 0.0};
}

TEST(SpiralPi, IsWhereTheTangentsMeetForBothTurnsAndBothGrowths) {
    for (const double turn : {1.0, -1.0}) {
        for (const bool growing : {true, false}) {
            for (int octant = 0; octant < 16; ++octant) {
                exact::Pose pose{60295.494L, -39525.623L, 0.1L + octant * exact::kPi / 8};
                const Calelm record = exact::lay(pose, growing ? exact::clothoid(turn, 150.0, 0.0, 300.0)
                                                               : exact::clothoid(turn, 150.0, 300.0, 0.0));
                sima::EntityData element = elementOf(record);
                output::computeSpiralPi(element);
                const MdGePoint3d expected = exactPi(record);
                EXPECT_NEAR(element.curve().sparePoint2.x, expected.x, kPiTolerance)
                    << "turn " << turn << " octant " << octant;
                EXPECT_NEAR(element.curve().sparePoint2.y, expected.y, kPiTolerance)
                    << "turn " << turn << " octant " << octant;
                EXPECT_EQ(element.curve().sparePoint2.z, 0.0);
            }
        }
    }
}

TEST(SpiralPi, OfAnEggShapedClothoid) {
    exact::Pose pose{1000.0L, 2000.0L, 0.7L};
    const Calelm record = exact::lay(pose, exact::clothoid(-1.0, 200.0, 400.0, 250.0));
    sima::EntityData element = elementOf(record);
    output::computeSpiralPi(element);
    EXPECT_NEAR(element.curve().sparePoint2.x, exactPi(record).x, kPiTolerance);
    EXPECT_NEAR(element.curve().sparePoint2.y, exactPi(record).y, kPiTolerance);
}

TEST(SpiralPi, OfATangentBesideDueEastMovesByMillimetres) {
    // A tangent less than 1e-5 rad from +x, on one side of it or for a growing left curve on both, falls onto +x.
    constexpr double beside = 5e-6; // radians
    constexpr double leastMove = 2e-3;
    constexpr double mostMove = 6e-3;
    constexpr double unmoved = 1e-6;
    const struct {
        double turn;
        bool growing;
        double azimuth;
        bool moved;
    } cases[] = {{1.0, true, beside, true},       {1.0, true, -beside, true},   {1.0, false, beside, false},
                 {1.0, false, -beside, true},     {-1.0, true, beside, false},  {-1.0, true, -beside, true},
                 {-1.0, false, beside, false},    {-1.0, false, -beside, true}, {1.0, true, 3 * beside, false},
                 {-1.0, true, -3 * beside, false}};
    for (const auto& expected : cases) {
        exact::Pose pose{1000.0L, 2000.0L, expected.azimuth};
        const Calelm record = exact::lay(pose, expected.growing ? exact::clothoid(expected.turn, 600.0, 0.0, 700.0)
                                                                : exact::clothoid(expected.turn, 600.0, 700.0, 0.0));
        sima::EntityData element = elementOf(record);
        output::computeSpiralPi(element);
        const MdGePoint3d pi = exactPi(record);
        const double move = std::hypot(element.curve().sparePoint2.x - pi.x, element.curve().sparePoint2.y - pi.y);
        SCOPED_TRACE(testing::Message() << "turn " << expected.turn << " azimuth " << expected.azimuth);
        if (expected.moved) {
            EXPECT_GT(move, leastMove);
            EXPECT_LT(move, mostMove);
        } else {
            EXPECT_LT(move, unmoved);
        }
    }
}

TEST(SpiralPi, TakesTheSignsOfTheFileFromTheDirectionAlone) {
    exact::Pose pose{1000.0L, 2000.0L, 0.7L};
    const Calelm record = exact::lay(pose, exact::clothoid(1.0, 150.0, 0.0, 300.0));
    sima::EntityData plain = elementOf(record);
    sima::EntityData negative = plain;
    negative.editCurve().endRadius = "-300";
    output::computeSpiralPi(plain);
    output::computeSpiralPi(negative);
    EXPECT_EQ(plain.curve().sparePoint2, negative.curve().sparePoint2);
}

TEST(SpiralPi, IsTheOriginWhereTheRaysHaveUnequalHeights) {
    exact::Pose pose{1000.0L, 2000.0L, 0.7L};
    const Calelm record = exact::lay(pose, exact::clothoid(1.0, 150.0, 0.0, 300.0));
    sima::EntityData element = elementOf(record);
    element.startZ = 10.0;
    element.endZ = 10.5;
    element.editCurve().sparePoint2 = {1.0, 2.0, 3.0};
    output::computeSpiralPi(element);
    EXPECT_EQ(element.curve().sparePoint2, MdGePoint3d());
}

TEST(SpiralPi, LiesAtTheCommonHeightOfItsEnds) {
    exact::Pose pose{1000.0L, 2000.0L, 0.7L};
    const Calelm record = exact::lay(pose, exact::clothoid(1.0, 150.0, 0.0, 300.0));
    sima::EntityData element = elementOf(record);
    element.startZ = element.endZ = 10.25;
    output::computeSpiralPi(element);
    EXPECT_NEAR(element.curve().sparePoint2.x, exactPi(record).x, kPiTolerance);
    EXPECT_NEAR(element.curve().sparePoint2.z, 10.25, 1e-9);
}

TEST(SpiralPi, OfARefusedClothoidComesFromTheAnglesThatARefusalLeaves) {
    // Refused, both tangents are pi: the rays leave start and end in opposite directions and never meet, ...
    sima::EntityData noParameter = test::clothoid(0.0, 0.0, 50.0, 5.0, "0", "0", "300", "L");
    output::computeSpiralPi(noParameter);
    EXPECT_EQ(noParameter.curve().sparePoint2, MdGePoint3d());
    // ... whatever the reason.
    for (const char* const radius : {"0", "abc", "10"}) {
        sima::EntityData element = test::clothoid(5.0, 5.0, 50.0, 9.0, "100", "0", radius, "R");
        output::computeSpiralPi(element);
        EXPECT_EQ(element.curve().sparePoint2, MdGePoint3d()) << radius;
    }
}

TEST(SpiralPi, PassTakesClothoidsAlone) {
    exact::Pose pose{1000.0L, 2000.0L, 0.7L};
    const Calelm record = exact::lay(pose, exact::clothoid(1.0, 150.0, 0.0, 300.0));
    sima::Array<sima::EntityData> elements{test::straight(0.0, 0.0, 1.0, 1.0), elementOf(record),
                                           test::arc(0.0, 0.0, 1.0, 1.0, "10", "R")};
    const MdGePoint3d untouched{7.0, 8.0, 9.0};
    elements[0].editCurve().sparePoint2 = elements[2].editCurve().sparePoint2 = untouched;
    output::resolveSpiralPis(elements);
    EXPECT_EQ(elements[0].curve().sparePoint2, untouched);
    EXPECT_EQ(elements[2].curve().sparePoint2, untouched);
    EXPECT_NEAR(elements[1].curve().sparePoint2.x, exactPi(record).x, kPiTolerance);
}

} // namespace
} // namespace fenmark
