// Parallel movement, turning, and movement square to an element.
#include "support/exact_chain.h"
#include "support_alignment.h"

using namespace fenmark::alignment_test;
namespace exact = fenmark::exact;

TEST(ParallelMovement, ADistanceOfZeroStillRoundsAndRewritesTheCoefficients) {
    Calelm line = straightRecord(0.0, 0.0, 100.0, 50.0);
    line.sx = 0.123456789;
    line.k1 = 7.0;
    Calelm out{};
    EXPECT_EQ(ali_pmovS(&line, 0.0, 1.0, &out), 0);
    EXPECT_EQ(out.sx, ali_CAroundNum(0.123456789));
    EXPECT_NE(out.k1, 7.0);
    EXPECT_NEAR(out.k1 * line.sx + out.k2 * line.sy, out.k3, 1e-5);
}

TEST(ParallelMovement, AClothoidKeepsItsLocalValuesAndTangents) {
    const Calelm rec = clothoidFrom(0.0, 0.0, 1.0, 1.0, 100.0, 0.0, 150.0);
    Calelm out{};
    EXPECT_EQ(ali_pmovA(&rec, 10.0, 0.5, &out), 0);
    EXPECT_EQ(out.k1, rec.k1);
    EXPECT_EQ(out.k2, rec.k2);
    EXPECT_EQ(out.k3, rec.k3);
    EXPECT_EQ(out.sang, rec.sang);
    EXPECT_EQ(out.eang, rec.eang);
    EXPECT_EQ(out.len, rec.len);
    EXPECT_NEAR(out.sx, 10.0 * std::cos(0.5), kLengthRounding);
    EXPECT_NEAR(out.sy, 10.0 * std::sin(0.5), kLengthRounding);
}

TEST(ParallelMovement, ASmallAngleCountsAsNone) {
    const Calelm line = straightRecord(0.0, 0.0, 100.0, 50.0);
    Calelm none{};
    Calelm tiny{};
    ali_pmovS(&line, 1e6, 0.0, &none);
    ali_pmovS(&line, 1e6, 0.9e-5, &tiny);
    EXPECT_TRUE(sameBits(none, tiny));
    ali_pmovS(&line, 1e6, 1.1e-5, &tiny);
    EXPECT_NEAR(tiny.sy - none.sy, 11.0, 1e-3);
}

TEST(ParallelMovement, ThereAndBackIsTheSame) {
    Random random(57001);
    SCOPED_TRACE(random.trace());
    for (const Place place : kPlaces) {
        for (int i = 0; i < 1000; ++i) {
            const Calelm rec = i % 3 == 0   ? randomStraight(random, place)
                               : i % 3 == 1 ? randomArc(random, place, 3.0)
                                            : randomClothoid(random, place);
            const double d = random.uniform(-300.0, 300.0);
            const double angle = random.uniform(0.01, 6.27);
            Calelm there{};
            Calelm back{};
            ASSERT_EQ(ali_pmov(&rec, d, angle, &there), 0);
            ASSERT_EQ(ali_pmov(&there, -d, angle, &back), 0);
            EXPECT_TRUE(exact::same_element(rec, back, 1.6e-5, kAngleBits));
            EXPECT_NEAR(there.sx - rec.sx, d * std::cos(angle), kLengthRounding);
            EXPECT_NEAR(there.sy - rec.sy, d * std::sin(angle), kLengthRounding);
            if (rec.type == ALI_ARC) {
                EXPECT_NEAR(back.k1, rec.k1, 1.1e-5);
                EXPECT_NEAR(back.k2, rec.k2, 1.1e-5);
                EXPECT_EQ(back.k3, rec.k3);
            }
        }
    }
}

TEST(Turning, ThereAndBackIsTheSame) {
    Random random(57002);
    SCOPED_TRACE(random.trace());
    for (const Place place : kPlaces) {
        for (int i = 0; i < 1000; ++i) {
            const Calelm rec = i % 3 == 0   ? randomStraight(random, place)
                               : i % 3 == 1 ? randomArc(random, place, 3.0)
                                            : randomClothoid(random, place);
            const double pivot[2] = {place.x + random.uniform(-300.0, 300.0), place.y + random.uniform(-300.0, 300.0)};
            const double angle = random.uniform(-3.0, 3.0);
            Calelm there{};
            Calelm back{};
            ASSERT_EQ(ali_tmov(&rec, pivot, angle, &there), 0);
            EXPECT_TRUE(exact::true_to_itself(there)) << exact::describe(there);
            ASSERT_EQ(ali_tmov(&there, pivot, -angle, &back), 0);
            EXPECT_TRUE(exact::same_element(rec, back, 3e-5, 3e-6));
            EXPECT_LT(angleBetween(there.sang, rec.sang + angle), kAngleRounding + 1e-9);
        }
    }
}

TEST(Turning, AnAzimuthTurnIsClockwiseOnTheMap) {
    const Calelm north = straightRecord(0.0, 0.0, 100.0, 0.0);
    const double pivot[2] = {0.0, 0.0};
    Calelm out{};
    ASSERT_EQ(ali_tmovS(&north, pivot, kPi / 2.0, &out), 0);
    EXPECT_NEAR(out.ex, 0.0, kLengthRounding);
    EXPECT_NEAR(out.ey, 100.0, kLengthRounding); // north turned to east
}

TEST(Turning, AnAngleOfZeroStillRoundsTheTangents) {
    Calelm rec = clothoidFrom(0.0, 0.0, 1.0, 1.0, 100.0, 0.0, 150.0);
    const double pivot[2] = {5.0, 5.0};
    Calelm out{};
    EXPECT_EQ(ali_tmovA(&rec, pivot, 0.0, &out), 0);
    EXPECT_EQ(out.sang, ali_CAroundAng(rec.sang));
    EXPECT_EQ(out.eang, ali_CAroundAng(rec.eang));
    EXPECT_EQ(out.k1, rec.k1);
    EXPECT_NEAR(out.ex, rec.ex, kLengthRounding);
}

TEST(Turning, ASmallAngleTurnsTheTangentsAndNotThePoints) {
    const Calelm rec = straightRecord(0.0, 0.0, 100000.0, 0.0);
    const double pivot[2] = {0.0, 0.0};
    Calelm out{};
    EXPECT_EQ(ali_tmovS(&rec, pivot, 0.9e-5, &out), 0);
    EXPECT_EQ(out.ey, 0.0);
    EXPECT_EQ(out.sang, ali_CAroundAng(0.9e-5));
}

TEST(SquareMovement, AStraightToItsLeftIsWestOfNorth) {
    const Calelm north = straightRecord(0.0, 0.0, 100.0, 0.0);
    Calelm out{};
    EXPECT_EQ(ali_paraS(&north, 7.5, &out), 0);
    EXPECT_NEAR(out.sx, 0.0, kLengthRounding);
    EXPECT_NEAR(out.sy, -7.5, kLengthRounding);
    EXPECT_NEAR(out.ey, -7.5, kLengthRounding);
}

TEST(SquareMovement, AStraightStaysParallelAtItsDistance) {
    Random random(57003);
    SCOPED_TRACE(random.trace());
    for (const Place place : kPlaces) {
        for (int i = 0; i < 500; ++i) {
            const Calelm rec = randomStraight(random, place);
            const double d = random.uniform(-80.0, 80.0);
            Calelm out{};
            ali_paraS(&rec, d, &out);
            const double length = std::hypot(rec.ex - rec.sx, rec.ey - rec.sy);
            const auto left = [&](double x, double y) {
                return -((rec.ex - rec.sx) * (y - rec.sy) - (rec.ey - rec.sy) * (x - rec.sx)) / length;
            };
            EXPECT_NEAR(left(out.sx, out.sy), d, 1e-5);
            EXPECT_NEAR(left(out.ex, out.ey), d, 1e-5);
        }
    }
}

TEST(SquareMovement, BothEndsOfAnArcMoveAwayFromItsCentre) {
    for (const double dir : {-1.0, 1.0}) {
        const Calelm rec = arcFrom(10.0, 20.0, 0.5, dir, 80.0, 60.0);
        Calelm out{};
        EXPECT_EQ(para_pmovr(&rec, 5.0, &out), 0);
        EXPECT_NEAR(std::hypot(out.sx - rec.k1, out.sy - rec.k2), 85.0, 1e-4);
        EXPECT_NEAR(std::hypot(out.ex - rec.k1, out.ey - rec.k2), 85.0, 1e-4);
        EXPECT_EQ(out.par, rec.par);
        EXPECT_EQ(out.k3, rec.k3);
        EXPECT_EQ(out.sang, rec.sang);
    }
}

TEST(ManyElements, AnUnknownTypeIsLeftAloneAndTheRestGoesOn) {
    Calelm recs[3] = {straightRecord(0.0, 0.0, 100.0, 0.0), Calelm{}, arcFrom(100.0, 0.0, 0.01, 1.0, 80.0, 60.0)};
    recs[1].sx = 5.0;
    const Calelm before[3] = {recs[0], recs[1], recs[2]};
    EXPECT_EQ(many_ali_pmov(3, recs, 10.0, kPi / 2.0), 1);
    EXPECT_TRUE(sameBits(recs[1], before[1]));
    Calelm moved{};
    ali_pmov(&before[0], 10.0, kPi / 2.0, &moved);
    EXPECT_TRUE(sameBits(recs[0], moved));
    ali_pmov(&before[2], 10.0, kPi / 2.0, &moved);
    EXPECT_TRUE(sameBits(recs[2], moved));
    const Calelm second[3] = {recs[0], recs[1], recs[2]};
    const double pivot[2] = {1.0, 2.0};
    EXPECT_EQ(many_ali_tmov(3, recs, pivot, 0.3), 1);
    EXPECT_TRUE(sameBits(recs[1], before[1]));
    ali_tmov(&second[2], pivot, 0.3, &moved);
    EXPECT_TRUE(sameBits(recs[2], moved));
    EXPECT_EQ(many_ali_pmov(0, nullptr, 1.0, 0.0), 1);
    EXPECT_EQ(many_ali_tmov(-1, nullptr, pivot, 0.0), 1);
}

TEST(ParallelMovement, TheCentreOfAnArcMovesAndIsRoundedLikeAPoint) {
    const Calelm rec = arcFrom(10.0, 20.0, 0.5, -1.0, 80.0, 60.0);
    Calelm out{};
    ASSERT_EQ(ali_pmovR(&rec, 3.3, 2.0, &out), 0);
    EXPECT_NEAR(out.k1, rec.k1 + 3.3 * std::cos(2.0), kLengthRounding);
    EXPECT_NEAR(out.k2, rec.k2 + 3.3 * std::sin(2.0), kLengthRounding);
    EXPECT_NEAR(out.k1, ali_CAroundNum(out.k1), kLengthBits);
    EXPECT_NEAR(out.k2, ali_CAroundNum(out.k2), kLengthBits);
    const double pivot[2] = {1.0, 2.0};
    ASSERT_EQ(ali_tmovR(&rec, pivot, 0.7, &out), 0);
    EXPECT_NEAR(out.k1, ali_CAroundNum(out.k1), kLengthBits);
    EXPECT_NEAR(out.k2, ali_CAroundNum(out.k2), kLengthBits);
}
