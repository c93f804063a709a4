// Whole records mirrored, moved, turned, reversed and taken to the other plane.
#include "support/exact_chain.h"

#include <fenmark/alignment.h>

namespace {

using namespace fenmark;
constexpr double kPi = std::numbers::pi;
// Results of plain plane geometry near the origin, metres and radians.
constexpr double kPointTolerance = 1e-9;
constexpr double kAngleTolerance = 1e-12;

Calelm some(int type) {
    exact::Pose pose{30.0, -40.0, 1.1};
    return exact::lay(pose, type == 1   ? exact::straight(25.0)
                            : type == 2 ? exact::arc(-1.0, 80.0, 60.0)
                                        : exact::clothoid(1.0, 60.0, 0.0, 90.0));
}

void expect_equation(const Calelm& line) {
    EXPECT_NEAR(0.0, line.k1 * line.sx + line.k2 * line.sy + line.k3, kPointTolerance);
    EXPECT_NEAR(0.0, line.k1 * line.ex + line.k2 * line.ey + line.k3, kPointTolerance);
}

TEST(CDchgSpace, NegatesYAndTurnsTheAnglesAndComesBack) {
    for (const int type : {1, 2, 3}) {
        const Calelm survey = some(type);
        Calelm calculation{}, back{};
        EXPECT_EQ(0, CDchgSpace(&survey, &calculation));
        EXPECT_EQ(survey.sx, calculation.sx);
        EXPECT_EQ(-survey.sy, calculation.sy);
        EXPECT_EQ(-survey.ey, calculation.ey);
        EXPECT_NEAR(2 * kPi - survey.sang, calculation.sang, kAngleTolerance);
        EXPECT_EQ(survey.dir, calculation.dir);
        EXPECT_EQ(survey.len, calculation.len);
        EXPECT_EQ(0, CDchgSpace(&calculation, &back));
        if (type != 1) {
            EXPECT_EQ(survey.k1, back.k1);
            EXPECT_EQ(survey.k2, back.k2);
            EXPECT_EQ(survey.k3, back.k3);
        }
        EXPECT_NEAR(survey.sang, back.sang, kAngleTolerance);
        EXPECT_NEAR(survey.eang, back.eang, kAngleTolerance);
        EXPECT_EQ(survey.sy, back.sy);
    }
}

TEST(CDchgSpace, WritesNormalisedCoefficientsOfAStraight) {
    const Calelm survey = some(1);
    Calelm calculation{};
    CDchgSpace(&survey, &calculation);
    expect_equation(calculation);
    EXPECT_NEAR(1.0, std::hypot(calculation.k1, calculation.k2), kAngleTolerance);
    EXPECT_NEAR((calculation.ey - calculation.sy) / 25.0, calculation.k1, kAngleTolerance);
}

TEST(CDchgSpace, NegatesTheCentreOfAnArcAndCopiesTheValuesOfAClothoid) {
    Calelm arc = some(2), clothoid = some(3);
    const Calelm arcBefore = arc, clothoidBefore = clothoid;
    CDchgSpace(&arc, &arc);
    CDchgSpace(&clothoid, &clothoid);
    EXPECT_EQ(arcBefore.k1, arc.k1);
    EXPECT_EQ(-arcBefore.k2, arc.k2);
    EXPECT_EQ(arcBefore.k3, arc.k3);
    EXPECT_EQ(clothoidBefore.k1, clothoid.k1);
    EXPECT_EQ(clothoidBefore.k2, clothoid.k2);
    EXPECT_EQ(clothoidBefore.k3, clothoid.k3);
}

TEST(CDmirA, TwiceReturnsTheRecordButForTheFormOfALinesCoefficients) {
    for (const int type : {1, 2, 3}) {
        const Calelm before = some(type);
        Calelm once{}, twice{};
        EXPECT_EQ(0, CDmirA(&before, &once));
        EXPECT_EQ(-before.sx, once.sx);
        EXPECT_EQ(before.sy, once.sy);
        EXPECT_EQ(-before.dir, once.dir);
        CDmirA(&once, &twice);
        EXPECT_EQ(before.sx, twice.sx);
        EXPECT_EQ(before.ex, twice.ex);
        EXPECT_EQ(before.dir, twice.dir);
        EXPECT_NEAR(before.sang, twice.sang, kAngleTolerance);
        EXPECT_NEAR(before.eang, twice.eang, kAngleTolerance);
        if (type == 1) {
            EXPECT_EQ(before.ey - before.sy, twice.k1) << "without division by the length";
            EXPECT_EQ(-(before.ex - before.sx), twice.k2);
            expect_equation(twice);
        } else {
            EXPECT_EQ(before.k1, twice.k1);
            EXPECT_EQ(before.k2, twice.k2);
            EXPECT_EQ(before.k3, twice.k3);
        }
    }
}

TEST(CDmirA, UnknownTypeLeavesTheCoefficientsOfTheOutput) {
    Calelm in = some(2), out{};
    in.type = 7;
    out.k1 = 1.5;
    out.k2 = 2.5;
    out.k3 = 3.5;
    CDmirA(&in, &out);
    EXPECT_EQ(-in.sx, out.sx);
    EXPECT_EQ(1.5, out.k1);
    EXPECT_EQ(2.5, out.k2);
    EXPECT_EQ(3.5, out.k3);
}

TEST(CDmoveA, MovesEndsCentreAndLine) {
    for (const int type : {1, 2, 3}) {
        const Calelm before = some(type);
        Calelm moved = before;
        EXPECT_EQ(0, CDmoveA(&moved, &moved, 3.0, -5.0));
        EXPECT_EQ(before.sx + 3.0, moved.sx);
        EXPECT_EQ(before.ey - 5.0, moved.ey);
        EXPECT_EQ(before.sang, moved.sang);
        if (type == 1) {
            expect_equation(moved);
        } else if (type == 2) {
            EXPECT_EQ(before.k1 + 3.0, moved.k1);
            EXPECT_EQ(before.k2 - 5.0, moved.k2);
        } else {
            EXPECT_EQ(before.k1, moved.k1);
        }
    }
}

TEST(CDrot, TurnsEndsTangentsCentreAndLine) {
    const double pivot[2] = {7.0, 9.0};
    for (const int type : {1, 2, 3}) {
        const Calelm before = some(type);
        Calelm turned{};
        EXPECT_EQ(0, CDrot(&before, &turned, pivot, 0.7));
        const double distance = std::hypot(before.sx - 7.0, before.sy - 9.0);
        EXPECT_NEAR(distance, std::hypot(turned.sx - 7.0, turned.sy - 9.0), kPointTolerance);
        EXPECT_NEAR(before.sang + 0.7, turned.sang, kAngleTolerance);
        if (type == 1) {
            expect_equation(turned);
        } else if (type == 2) {
            EXPECT_NEAR(80.0, std::hypot(turned.k1 - turned.ex, turned.k2 - turned.ey), kPointTolerance);
        } else {
            EXPECT_EQ(before.k2, turned.k2);
        }
    }
}

TEST(CDrot, TangentWithinTheLengthStepOfAFullTurnBecomesZero) {
    Calelm line = some(1);
    const double pivot[2] = {0, 0};
    line.sang = line.eang = 1.0;
    Calelm turned{};
    CDrot(&line, &turned, pivot, 2 * kPi - 1.0 - 0.9e-5);
    EXPECT_EQ(0.0, turned.sang);
    EXPECT_EQ(0.0, turned.eang);
    CDrot(&line, &turned, pivot, 2 * kPi - 1.0 - 1.1e-5);
    EXPECT_NEAR(2 * kPi - 1.1e-5, turned.sang, kAngleTolerance);
    CDrot(&line, &turned, pivot, -1.5);
    EXPECT_NEAR(2 * kPi - 0.5, turned.sang, kAngleTolerance);
}

TEST(CDturnA, TurnsAboutTheStart) {
    const Calelm before = some(3);
    Calelm turned{};
    EXPECT_EQ(0, CDturnA(&before, &turned, 1.0));
    EXPECT_EQ(before.sx, turned.sx);
    EXPECT_EQ(before.sy, turned.sy);
}

TEST(CDturnAe, TurnsAboutTheEndAndLeavesTheCoefficientsOfALineAndTheCentreOfAnArc) {
    for (const int type : {1, 2, 3}) {
        const Calelm before = some(type);
        Calelm turned{};
        EXPECT_EQ(0, CDturnAe(&before, &turned, 1.0));
        EXPECT_EQ(before.ex, turned.ex);
        EXPECT_EQ(before.ey, turned.ey);
        EXPECT_NE(before.sx, turned.sx);
        EXPECT_EQ(before.k1, turned.k1);
        EXPECT_EQ(before.k2, turned.k2);
        EXPECT_EQ(before.k3, turned.k3);
    }
}

TEST(CDreverA, FlatToSharpStaysWithoutForceAndTurnsBackAfterForce) {
    Calelm rec = some(3);
    rec.r1 = 0.0;
    rec.r2 = 100.0;
    const Calelm before = rec;
    EXPECT_EQ(0, CDreverA(&rec, 0));
    EXPECT_TRUE(exact::identical(before, rec));
    EXPECT_EQ(1, CDreverA(&rec, 1));
    EXPECT_EQ(100.0, rec.r1);
    EXPECT_EQ(0.0, rec.r2);
    EXPECT_EQ(-before.dir, rec.dir);
    EXPECT_EQ(before.ex, rec.sx);
    EXPECT_EQ(before.k1, rec.k1) << "the k fields stay";
    EXPECT_EQ(1, CDreverA(&rec, 0));
    EXPECT_EQ(before.r1, rec.r1);
    EXPECT_EQ(before.r2, rec.r2);
    EXPECT_EQ(before.dir, rec.dir);
    EXPECT_EQ(before.sx, rec.sx);
    EXPECT_NEAR(before.sang, rec.sang, kAngleTolerance);
    EXPECT_NEAR(before.eang, rec.eang, kAngleTolerance);
}

TEST(CDreverA, SharpFirstReversesAndFlatFirstDoesNot) {
    Calelm rec = some(3);
    rec.r1 = 150.0;
    rec.r2 = 300.0;
    EXPECT_EQ(1, CDreverA(&rec, 0));
    EXPECT_EQ(300.0, rec.r1);
    EXPECT_EQ(0, CDreverA(&rec, 0));
}

TEST(CDreverA, StraightsAndArcsAreReversedWithoutForceToo) {
    for (const int type : {1, 2}) {
        Calelm rec = some(type);
        const Calelm before = rec;
        EXPECT_EQ(1, CDreverA(&rec, 0));
        EXPECT_EQ(before.ex, rec.sx);
        EXPECT_EQ(before.sy, rec.ey);
        EXPECT_EQ(-before.dir, rec.dir);
    }
}

TEST(CDreverA, TangentsTurnByHalfATurnAndStayBelowAFullOne) {
    Calelm rec = some(3);
    rec.sang = kPi;
    rec.eang = 0.5;
    CDreverA(&rec, 1);
    EXPECT_NEAR(0.5 + kPi, rec.sang, kAngleTolerance);
    EXPECT_EQ(0.0, rec.eang);
}

Calelm arc_from_to(double dir, double from, double to) {
    Calelm arc{};
    arc.type = 2;
    arc.dir = dir;
    arc.par = 100.0;
    arc.sx = 100.0 * std::cos(from);
    arc.sy = 100.0 * std::sin(from);
    arc.ex = 100.0 * std::cos(to);
    arc.ey = 100.0 * std::sin(to);
    return arc;
}

TEST(CDvalidArc, AnArcTurnsInItsOwnSenseByLessThanHalfACircleAndNotByNothing) {
    const auto valid = [](double dir, double from, double to) {
        const Calelm arc = arc_from_to(dir, from, to);
        return CDvalidArc(&arc);
    };
    EXPECT_EQ(0, valid(1.0, 0.5, 2.0));
    EXPECT_EQ(-1, valid(1.0, 2.0, 0.5)) << "the long way round";
    EXPECT_EQ(0, valid(-1.0, 2.0, 0.5));
    EXPECT_EQ(-1, valid(-1.0, 0.5, 2.0));
    EXPECT_EQ(-1, valid(1.0, 1.0, 1.0)) << "empty";
    EXPECT_EQ(-1, valid(-1.0, 1.0, 1.0));
    EXPECT_EQ(-1, valid(1.0, 1.0, 1.0 + 1.3e-6));
    EXPECT_EQ(0, valid(1.0, 1.0, 1.0 + 1.5e-6));
    EXPECT_EQ(-1, valid(1.0, 1.0, 1.0 + kPi)) << "half a circle";
    EXPECT_EQ(-1, valid(-1.0, 1.0 + kPi, 1.0));
    EXPECT_EQ(-1, valid(1.0, 1.0, 1.0 + kPi - 1.3e-6));
    EXPECT_EQ(0, valid(1.0, 1.0, 1.0 + kPi - 1.5e-6));
}

} // namespace
