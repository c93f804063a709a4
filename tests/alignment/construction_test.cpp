// Construction of elements, held against an independent integration of their curvature.
#include "alignment/clothoid/series.h"
#include "support/exact_chain.h"
#include "support_alignment.h"

using namespace fenmark::alignment_test;
namespace exact = fenmark::exact;

namespace {

Calelm withEnds(Calelm rec, double sx, double sy, double ex, double ey) {
    rec.sx = sx;
    rec.sy = sy;
    rec.ex = ex;
    rec.ey = ey;
    return rec;
}

// A tangent within 1e-5 of a full turn becomes exactly 0 on its way between the planes.
double tangentAllowance(double expected) {
    return angleBetween(expected, 0.0) < 1e-5 ? 1e-5 : 1e-6;
}

} // namespace

// Tangents are azimuths in one turn, whichever way and from whichever direction a clothoid or an arc turns.
TEST(Construction, TangentsLieInOneTurn) {
    constexpr int kDirections = 48;
    for (int i = 0; i < kDirections; ++i) {
        const double azimuth = kTwoPi * i / kDirections + 0.01;
        for (const double sense : {-1.0, 1.0}) {
            Calelm clothoid = clothoidFrom(10.0, 20.0, azimuth, sense, 120.0, 0.0, 150.0);
            Calelm arc = arcFrom(10.0, 20.0, azimuth, sense, 150.0, 60.0);
            ASSERT_GE(ali_makA(&clothoid), 0);
            ASSERT_GE(ali_makR(&arc), 0);
            for (const Calelm& rec : {clothoid, arc}) {
                for (const double tangent_of : {rec.sang, rec.eang}) {
                    EXPECT_GE(tangent_of, 0.0) << azimuth << " " << sense << " type " << rec.type;
                    EXPECT_LT(tangent_of, kTwoPi) << azimuth << " " << sense << " type " << rec.type;
                }
                EXPECT_LT(angleBetween(rec.sang, azimuth), 1e-4) << azimuth << " " << sense;
            }
        }
    }
}

TEST(MakeStraight, NorthIsZeroAndEastIsRoundedToTheAngleStep) {
    const Calelm north = straightRecord(0.0, 0.0, 100.0, 0.0);
    EXPECT_EQ(north.type, ALI_STRAIGHT);
    EXPECT_EQ(north.sang, 0.0);
    EXPECT_NEAR(north.len, 100.0, kLengthBits);
    EXPECT_EQ(north.dir, 1.0);
    const Calelm east = straightRecord(0.0, 0.0, 0.0, 100.0);
    // The direction is rounded in the calculation plane, where it is 3 pi / 2.
    EXPECT_EQ(east.sang, kTwoPi - ali_CAroundAng(1.5 * kPi));
    EXPECT_NEAR(east.sang, kPi / 2.0, kAngleRounding);
    EXPECT_EQ(east.eang, east.sang);
}

TEST(MakeStraight, RefusesEqualEndsAndLeavesTheRecord) {
    Calelm rec{};
    rec.sx = 1.0;
    rec.ex = 1.0 + 0.9e-5;
    rec.ey = -0.9e-5;
    rec.k1 = 7.0;
    const Calelm before = rec;
    EXPECT_EQ(ali_makS(&rec), -1);
    EXPECT_TRUE(sameBits(rec, before));
    rec.ex = 1.0 + 1.1e-5;
    EXPECT_EQ(ali_makS(&rec), 0);
}

TEST(MakeStraight, AndMakeArcLeaveNothingOfWhatStoodInTheRecord) {
    for (const bool isArc : {false, true}) {
        Calelm clean{};
        clean.type = ALI_ARC; // which a straight does not keep
        clean.sx = 10.0;
        clean.sy = 20.0;
        clean.ex = 110.0;
        clean.ey = 95.0;
        if (isArc) {
            clean.dir = -1.0;
            clean.par = 80.0;
        }
        Calelm used = clean;
        for (double Calelm::*const field : {&Calelm::len, &Calelm::sang, &Calelm::eang, &Calelm::k1, &Calelm::k2,
                                            &Calelm::k3, &Calelm::r1, &Calelm::r2}) {
            used.*field = 7.0;
        }
        if (!isArc) {
            used.dir = used.par = 7.0;
        }
        ASSERT_EQ((isArc ? ali_makR : ali_makS)(&clean), 0);
        ASSERT_EQ((isArc ? ali_makR : ali_makS)(&used), 0);
        EXPECT_TRUE(sameBits(clean, used)) << isArc;
        EXPECT_EQ(clean.type, isArc ? ALI_ARC : ALI_STRAIGHT);
        EXPECT_EQ(clean.r1, 0.0);
        EXPECT_EQ(clean.r2, 0.0);
    }
}

TEST(MakeStraight, CoefficientsHoldInTheSurveyPlane) {
    const Calelm rec = straightRecord(10.0, 20.0, 110.0, 95.0);
    EXPECT_NEAR(rec.k1 * rec.sx + rec.k2 * rec.sy, rec.k3, 1e-5);
    EXPECT_NEAR(rec.k1 * rec.ex + rec.k2 * rec.ey, rec.k3, 1e-5);
}

TEST(MakeArc, TellsTheTruthAboutItself) {
    Random random(54001);
    SCOPED_TRACE(random.trace());
    for (const Place place : kPlaces) {
        for (int i = 0; i < 1000; ++i) {
            const double R = random.uniform(15.0, 800.0);
            const double sweep = random.uniform(0.02, 3.1);
            const double chord = 2.0 * R * std::sin(sweep / 2.0);
            const double azimuth = random.uniform(0.0, kTwoPi);
            const double sx = place.x + random.uniform(-500.0, 500.0);
            const double sy = place.y + random.uniform(-500.0, 500.0);
            const double dir = random.sign();
            const Calelm rec =
                arcRecord(sx, sy, sx + chord * std::cos(azimuth), sy + chord * std::sin(azimuth), dir, R);
            EXPECT_NEAR(rec.len, R * sweep, 2e-5);
            EXPECT_TRUE(exact::true_to_itself(rec));
            // The centre lies left of the chord for +1. In the survey plane left has the negative cross product.
            const double cross = (rec.ex - sx) * (rec.k2 - sy) - (rec.ey - sy) * (rec.k1 - sx);
            EXPECT_LT(dir * cross, 0.0);
        }
    }
}

TEST(MakeArc, RefusesAndLeavesTheRecord) {
    Calelm rec{};
    rec.type = ALI_ARC;
    rec.ex = 100.0;
    rec.par = 80.0;
    rec.dir = 1.0;
    rec.k1 = 7.0;
    const auto refuses = [&](Calelm changed) {
        const Calelm before = changed;
        return ali_makR(&changed) == -1 && sameBits(changed, before);
    };
    Calelm bad = rec;
    bad.dir = 0.5;
    EXPECT_TRUE(refuses(bad));
    bad = rec;
    bad.par = 0.0;
    EXPECT_TRUE(refuses(bad));
    bad = rec;
    bad.par = -80.0;
    EXPECT_TRUE(refuses(bad));
    for (const double par : {std::numeric_limits<double>::infinity(), 49.9999}) {
        bad = rec;
        bad.par = par;
        EXPECT_TRUE(refuses(bad)) << par;
    }
    bad = rec;
    bad.par = kNotANumber;
    EXPECT_EQ(ali_makR(&bad), -1);
    bad = rec;
    bad.ex = 0.9e-5;
    EXPECT_TRUE(refuses(bad));
    EXPECT_EQ(ali_makR(&rec), 0);
}

TEST(MakeArc, AChordOfExactlyTheDiameterIsAHalfCircle) {
    const Calelm rec = arcRecord(0.0, 0.0, 100.0, 0.0, 1.0, 50.0);
    EXPECT_NEAR(rec.k3, kPi, kAngleBits);
    EXPECT_NEAR(rec.k1, 50.0, kLengthBits);
    EXPECT_NEAR(rec.k2, 0.0, kLengthBits);
    EXPECT_NEAR(rec.len, 50.0 * kPi, kLengthRounding);
}

TEST(MakeClothoid, FromTheOriginToRadius200) {
    Calelm rec = clothoidSizes(1.0, 100.0, 0.0, 200.0);
    double X = 0.0;
    double Y = 0.0;
    CDRcalxy(100.0, 200.0, &X, &Y);
    rec = withEnds(rec, 0.0, 0.0, X, -Y);
    EXPECT_EQ(ali_makA(&rec), 0);
    EXPECT_EQ(rec.k1, 0.125);
    EXPECT_EQ(rec.len, 50.0);
    EXPECT_EQ(rec.sang, 0.0);
    EXPECT_NEAR(rec.eang, kTwoPi - 0.125, kAngleBits);
    EXPECT_EQ(rec.r2, 200.0);
}

TEST(MakeClothoid, RefusalsLeaveTheStartingValues) {
    const auto refused = [](Calelm rec) {
        rec = withEnds(rec, 0.0, 0.0, 100.0, 10.0);
        Calelm expected = rec;
        expected.len = expected.k1 = expected.k2 = expected.k3 = 1.0;
        expected.sang = expected.eang = kPi;
        return ali_makA(&rec) == -1 && sameBits(rec, expected);
    };
    EXPECT_TRUE(refused(clothoidSizes(1.0, 100.0, 0.0, 0.0)));
    EXPECT_TRUE(refused(clothoidSizes(1.0, 100.0, 100.0, 100.0)));
    EXPECT_TRUE(refused(clothoidSizes(1.0, 0.0, 0.0, 100.0)));
    EXPECT_TRUE(refused(clothoidSizes(1.0, 100.0, 0.0, 56.0)));
    EXPECT_TRUE(refused(clothoidSizes(1.0, 100.0, 56.0, 200.0)));
    EXPECT_FALSE(refused(clothoidSizes(1.0, 100.0, 56.1, 200.0)));
    // Stations 1e-5 apart: R = A^2 / L.
    EXPECT_TRUE(refused(clothoidSizes(1.0, 100.0, 10000.0 / 50.0, 10000.0 / 50.000009)));
    EXPECT_FALSE(refused(clothoidSizes(1.0, 100.0, 10000.0 / 50.0, 10000.0 / 50.000011)));
}

TEST(MakeClothoid, AMovedEndIsToldByTheStatus) {
    Calelm exact_end = clothoidFrom(0.0, 0.0, 1.0, 1.0, 100.0, 0.0, 200.0);
    Calelm rec = exact_end;
    // Along the chord, so that its direction stays: the sharper end goes back to where it belongs.
    rec.ex += 0.5 * std::cos(std::atan2(rec.ey, rec.ex));
    rec.ey += 0.5 * std::sin(std::atan2(rec.ey, exact_end.ex));
    EXPECT_EQ(ali_makA(&rec), 2);
    EXPECT_EQ(rec.sx, 0.0);
    EXPECT_NEAR(rec.ex, exact_end.ex, 1e-3);
    EXPECT_NEAR(rec.ey, exact_end.ey, 1e-3);
    // Within the step the given point is honoured.
    rec = exact_end;
    rec.ex += 0.9e-5;
    const double given = rec.ex;
    EXPECT_EQ(ali_makA(&rec), 0);
    EXPECT_EQ(rec.ex, given);
}

TEST(MakeClothoid, AFlatEndAtTheEndIsTheAnchorAndTheStartMoves) {
    Calelm rec = clothoidFrom(0.0, 0.0, 1.0, -1.0, 100.0, 200.0, 0.0);
    const Calelm whole = rec;
    rec.sx -= 0.3;
    rec.sy -= 0.3;
    EXPECT_EQ(ali_makA(&rec), 2);
    EXPECT_EQ(rec.ex, whole.ex);
    EXPECT_EQ(rec.ey, whole.ey);
    EXPECT_NE(rec.sx, whole.sx - 0.3);
    EXPECT_TRUE(exact::true_to_itself(rec));
    EXPECT_EQ(rec.r1, 200.0);
    EXPECT_EQ(rec.dir, -1.0);
}

TEST(MakeClothoid, TheLargerOfTwoFiniteRadiiIsTheFlatterEndAndTheAnchor) {
    const Calelm whole = clothoidFrom(10.0, 20.0, 1.0, 1.0, 120.0, 150.0, 300.0);
    Calelm rec = whole;
    rec.sx += 0.2;
    rec.sy -= 0.1;
    EXPECT_EQ(ali_makA(&rec), 2);
    EXPECT_EQ(rec.ex, whole.ex);
    EXPECT_EQ(rec.ey, whole.ey);
    EXPECT_NE(rec.sx, whole.sx + 0.2);
    EXPECT_EQ(rec.k1, 120.0 * 120.0 / (2.0 * 150.0 * 150.0)); // tau of the sharper end, the start
    EXPECT_EQ(rec.r1, 150.0);
    EXPECT_EQ(rec.r2, 300.0);
    EXPECT_TRUE(exact::true_to_itself(rec));
}

TEST(MakeClothoid, EndsThatAreOnePointGiveAChordAlongX) {
    // Two equal points have no direction; the element then lies with its chord along +x, its sharper end moved.
    Calelm rec = clothoidSizes(1.0, 100.0, 0.0, 200.0);
    rec = withEnds(rec, 5.0, 6.0, 5.0, 6.0);
    EXPECT_EQ(ali_makA(&rec), 2);
    EXPECT_EQ(rec.sx, 5.0);
    EXPECT_EQ(rec.sy, 6.0);
    EXPECT_NEAR(rec.ey, 6.0, kLengthBits);
    EXPECT_GT(rec.ex, 5.0);
    EXPECT_TRUE(exact::true_to_itself(rec));
}

TEST(MakeClothoid, TellsTheTruthAboutItselfForEveryGrowthTurnAndQuadrant) {
    Random random(54002);
    SCOPED_TRACE(random.trace());
    for (const Place place : kPlaces) {
        for (int i = 0; i < 2000; ++i) {
            const Calelm sizes = randomClothoidSizes(random);
            const exact::Pose start{place.x + random.uniform(-500.0, 500.0), place.y + random.uniform(-500.0, 500.0),
                                    random.uniform(0.01, 6.27)};
            exact::Pose pose = start;
            const Calelm expected = exact::lay(pose, exact::clothoid(sizes.dir, sizes.par, sizes.r1, sizes.r2));
            Calelm rec = withEnds(sizes, expected.sx, expected.sy, expected.ex, expected.ey);
            const int status = ali_makA(&rec);
            EXPECT_TRUE(status == 0 || status == 2);
            EXPECT_NEAR(rec.len, expected.len, kLengthBits);
            EXPECT_LT(angleBetween(rec.sang, expected.sang), tangentAllowance(expected.sang));
            EXPECT_LT(angleBetween(rec.eang, expected.eang), tangentAllowance(expected.eang));
            EXPECT_NEAR(rec.k1, expected.k1, kAngleBits);
            EXPECT_NEAR(rec.k2, expected.k2, kClothoidPoint);
            EXPECT_NEAR(rec.k3, expected.k3, kClothoidPoint);
            EXPECT_TRUE(exact::true_to_itself(rec)) << exact::describe(rec);
        }
    }
}

TEST(MakeClothoid, MirroredInputGivesTheMirroredElement) {
    Random random(54003);
    SCOPED_TRACE(random.trace());
    for (int i = 0; i < 500; ++i) {
        const Calelm rec = randomClothoid(random, kPlaces[0]);
        Calelm mirror = withEnds(clothoidSizes(-rec.dir, rec.par, rec.r1, rec.r2), rec.sx, -rec.sy, rec.ex, -rec.ey);
        ali_makA(&mirror);
        EXPECT_LT(angleBetween(mirror.sang, -rec.sang), tangentAllowance(rec.sang));
        EXPECT_LT(angleBetween(mirror.eang, -rec.eang), tangentAllowance(rec.eang));
    }
}

TEST(Dispatcher, RefusesUnknownTypesAndModes) {
    Calelm rec = straightRecord(0.0, 0.0, 10.0, 0.0);
    const Calelm before = rec;
    EXPECT_EQ(ali_mak(&rec, 3), -1);
    EXPECT_EQ(ali_mak(&rec, -1), -1);
    rec.type = 4;
    EXPECT_EQ(ali_mak(&rec, 0), -1);
    rec.type = -1;
    EXPECT_EQ(ali_mak(&rec, 0), -1);
    rec.type = ALI_STRAIGHT;
    EXPECT_TRUE(sameBits(rec, before));
    EXPECT_EQ(ali_mak(&rec, 0), 0);
}

TEST(Dispatcher, ModeIsTheEnd) {
    Calelm rec{};
    rec.type = ALI_STRAIGHT;
    rec.ex = 50.0;
    rec.ey = 30.0;
    rec.eang = 0.4;
    rec.len = 20.0;
    EXPECT_EQ(ali_mak(&rec, 2), 0);
    EXPECT_NEAR(rec.sx, 50.0 - 20.0 * std::cos(0.4), kLengthRounding);
    EXPECT_NEAR(rec.sy, 30.0 - 20.0 * std::sin(0.4), kLengthRounding);
    EXPECT_EQ(rec.sang, 0.4);
}

TEST(StraightFromAnEnd, RefusesNoLengthAndOtherEnds) {
    Calelm rec{};
    rec.sang = 1.0;
    for (const double len : {0.0, -1.0, kNotANumber, 1e-9}) {
        rec.len = len;
        Calelm changed = rec;
        EXPECT_EQ(ali_makangS(&changed, 1), -1) << len;
        EXPECT_EQ(changed.ex, 0.0);
        EXPECT_EQ(changed.k1, 0.0);
    }
    rec.len = 10.0;
    EXPECT_EQ(ali_makangS(&rec, 0), -1);
    EXPECT_EQ(ali_makangS(&rec, 3), -1);
    EXPECT_EQ(ali_makangS(&rec, 1), 0);
}

TEST(StraightFromAnEnd, CoefficientsComeFromTheRoundedPoint) {
    Calelm rec{};
    rec.sx = 1.0;
    rec.sy = 2.0;
    rec.sang = 0.7;
    rec.len = 33.333333;
    ASSERT_EQ(ali_makangS(&rec, 1), 0);
    Calelm both = rec;
    ASSERT_EQ(ali_makS(&both), 0);
    EXPECT_EQ(rec.k1, both.k1);
    EXPECT_EQ(rec.k2, both.k2);
    EXPECT_EQ(rec.k3, both.k3);
    EXPECT_EQ(rec.len, 33.333333); // stays as given
}

TEST(FromAnEnd, ElementsOfMillimetresAreMade) {
    for (const double size : {0.001, 0.05, 0.1, 0.5, 1.0}) {
        for (const int end : {1, 2}) {
            Calelm straight{};
            straight.type = ALI_STRAIGHT;
            straight.len = size;
            ASSERT_EQ(ali_makangS(&straight, end), 0) << size;
            EXPECT_NEAR(end == 1 ? straight.ex : straight.sx, end == 1 ? size : -size, kLengthRounding);
            for (const double radius : {size, 100.0}) {
                Calelm arc{};
                arc.type = ALI_ARC;
                arc.dir = 1.0;
                arc.par = radius;
                arc.len = size;
                ASSERT_EQ(ali_makangR(&arc, end), 0) << size << ' ' << radius;
                EXPECT_EQ(arc.k3, size / radius);
                // The chord of the arc.
                EXPECT_NEAR(std::hypot(arc.ex - arc.sx, arc.ey - arc.sy), 2.0 * radius * std::sin(0.5 * size / radius),
                            2.0 * kLengthRounding);
            }
            Calelm clothoid = clothoidSizes(1.0, size, 0.0, 2.0 * size);
            ASSERT_EQ(ali_makangA(&clothoid, end), 0) << size;
            EXPECT_NEAR(clothoid.len, 0.5 * size, kLengthRounding);
        }
        Calelm between{};
        between.type = ALI_ARC;
        between.dir = 1.0;
        between.par = size;
        between.ex = size;
        ASSERT_EQ(ali_makR(&between), 0) << size;
        EXPECT_NEAR(between.k3, kPi / 3.0, 1e-9);
    }
}

TEST(FromAnEnd, ValuesThatAreNotFiniteAreRefused) {
    for (const double wrong : {kNotANumber, std::numeric_limits<double>::infinity()}) {
        for (const int end : {1, 2}) {
            Calelm arc{};
            arc.type = ALI_ARC;
            arc.dir = 1.0;
            arc.par = 100.0;
            arc.len = 10.0;
            for (const Calelm& good : {arc, clothoidSizes(1.0, 100.0, 0.0, 200.0)}) {
                const bool isArc = good.type == ALI_ARC;
                const bool atStart = end == 1;
                for (double Calelm::*const field :
                     {atStart ? &Calelm::sx : &Calelm::ex, atStart ? &Calelm::sy : &Calelm::ey,
                      atStart ? &Calelm::sang : &Calelm::eang}) {
                    Calelm bad = good;
                    bad.*field = wrong;
                    const Calelm before = bad;
                    EXPECT_EQ((isArc ? ali_makangR : ali_makangA)(&bad, end), -1) << isArc << end;
                    EXPECT_TRUE(std::isnan(wrong) || sameBits(bad, before)) << isArc << end;
                }
                Calelm made = good;
                EXPECT_EQ((isArc ? ali_makangR : ali_makangA)(&made, end), 0) << isArc << end;
            }
        }
    }
}

TEST(ArcFromAnEnd, BothEndsGiveTheSameArcAlsoAboveAHalfCircle) {
    Random random(54004);
    SCOPED_TRACE(random.trace());
    for (const Place place : kPlaces) {
        for (int i = 0; i < 1000; ++i) {
            const Calelm from_start = randomArc(random, place, 6.0);
            EXPECT_TRUE(exact::true_to_itself(from_start)) << exact::describe(from_start);
            Calelm from_end = from_start;
            from_end.sx = from_end.sy = from_end.sang = 0.0;
            ASSERT_EQ(ali_makangR(&from_end, 2), 0);
            // The tangent at the other end was rounded to 1.389e-6 and swings a chord of at most 2 R.
            EXPECT_NEAR(from_end.sx, from_start.sx, 2e-5 + 2.0 * from_start.par * kAngleRounding);
            EXPECT_NEAR(from_end.sy, from_start.sy, 2e-5 + 2.0 * from_start.par * kAngleRounding);
            EXPECT_LT(angleBetween(from_end.sang, from_start.sang), 3e-6);
        }
    }
}

TEST(ArcFromAnEnd, TheRadiusIsRoundedToTheAngleStep) {
    const Calelm rec = arcFrom(0.0, 0.0, 0.5, 1.0, 100.0, 50.0);
    EXPECT_NE(rec.par, 100.0);
    EXPECT_EQ(rec.par, ali_CAroundAng(100.0));
    EXPECT_NEAR(rec.par, 100.0, 7e-7);
    EXPECT_EQ(rec.k3, 0.5);
}

TEST(ArcFromAnEnd, Refusals) {
    Calelm rec{};
    rec.type = ALI_ARC;
    rec.dir = 1.0;
    rec.par = 100.0;
    rec.len = 10.0;
    const auto refuses = [](Calelm changed, int end) {
        const Calelm before = changed;
        return ali_makangR(&changed, end) == -1 && sameBits(changed, before);
    };
    EXPECT_TRUE(refuses(rec, 0));
    EXPECT_TRUE(refuses(rec, 3));
    Calelm bad = rec;
    bad.dir = 0.0;
    EXPECT_TRUE(refuses(bad, 1));
    bad = rec;
    bad.par = 0.0;
    EXPECT_TRUE(refuses(bad, 1));
    bad = rec;
    bad.len = 0.0;
    EXPECT_TRUE(refuses(bad, 1));
    for (const double dir : {0.5, -0.5, 2.0, -2.0}) {
        bad = rec;
        bad.dir = dir;
        EXPECT_TRUE(refuses(bad, 1)) << dir;
    }
    for (const double negative : {-1e-300, -1e-5, -100.0, -1e300}) {
        for (const int end : {1, 2}) {
            bad = rec;
            bad.par = negative;
            EXPECT_TRUE(refuses(bad, end)) << negative;
            bad = rec;
            bad.len = negative;
            EXPECT_TRUE(refuses(bad, end)) << negative;
        }
    }
}

TEST(ClothoidFromAnEnd, AgreesWithIntegrationAndWithTwoPoints) {
    Random random(54005);
    SCOPED_TRACE(random.trace());
    for (const Place place : kPlaces) {
        for (int i = 0; i < 2000; ++i) {
            const Calelm sizes = randomClothoidSizes(random);
            exact::Pose pose{place.x + random.uniform(-500.0, 500.0), place.y + random.uniform(-500.0, 500.0),
                             random.uniform(0.01, 6.27)};
            const Calelm expected = exact::lay(pose, exact::clothoid(sizes.dir, sizes.par, sizes.r1, sizes.r2));
            Calelm from_start = sizes;
            from_start.sx = expected.sx;
            from_start.sy = expected.sy;
            from_start.sang = expected.sang;
            ASSERT_EQ(ali_makangA(&from_start, 1), 0);
            EXPECT_TRUE(exact::same_element(from_start, expected, kClothoidPoint, tangentAllowance(expected.eang)));
            Calelm from_end = sizes;
            from_end.ex = expected.ex;
            from_end.ey = expected.ey;
            from_end.eang = expected.eang;
            ASSERT_EQ(ali_makangA(&from_end, 2), 0);
            EXPECT_TRUE(exact::same_element(from_end, expected, kClothoidPoint, tangentAllowance(expected.sang)));
            EXPECT_EQ(from_end.r1, sizes.r1);
            EXPECT_EQ(from_end.dir, sizes.dir);
            Calelm two_points = from_start;
            EXPECT_EQ(ali_makA(&two_points), 0);
            EXPECT_LT(angleBetween(two_points.sang, from_start.sang), tangentAllowance(from_start.sang));
            EXPECT_EQ(two_points.k1, from_start.k1);
            EXPECT_EQ(two_points.k2, from_start.k2);
            EXPECT_EQ(two_points.k3, from_start.k3);
        }
    }
}

TEST(ClothoidFromAnEnd, TheGivenEndStaysToTheLastBit) {
    Random random(54006);
    SCOPED_TRACE(random.trace());
    for (const Place place : kPlaces) {
        for (int i = 0; i < 500; ++i) {
            Calelm given = randomClothoidSizes(random);
            given.sx = place.x + random.uniform(-500.0, 500.0);
            given.sy = place.y + random.uniform(-500.0, 500.0);
            given.ex = place.x + random.uniform(-500.0, 500.0);
            given.ey = place.y + random.uniform(-500.0, 500.0);
            given.sang = given.eang = random.uniform(0.01, 6.27);
            Calelm from_start = given;
            ASSERT_EQ(ali_makangA(&from_start, 1), 0);
            EXPECT_EQ(from_start.sx, given.sx);
            EXPECT_EQ(from_start.sy, given.sy);
            Calelm from_end = given;
            ASSERT_EQ(ali_makangA(&from_end, 2), 0);
            EXPECT_EQ(from_end.ex, given.ex);
            EXPECT_EQ(from_end.ey, given.ey);
        }
    }
}

TEST(ClothoidFromAnEnd, TheRadiusLimitIsRefused) {
    Calelm rec = clothoidSizes(1.0, 100.0, 0.0, 56.0);
    const Calelm before = rec;
    EXPECT_EQ(ali_makangA(&rec, 1), -1);
    EXPECT_TRUE(sameBits(rec, before));
    rec.r1 = 56.0; // at either end
    rec.r2 = 200.0;
    EXPECT_EQ(ali_makangA(&rec, 1), -1);
    EXPECT_EQ(ali_makangA(&rec, 2), -1);
    rec.r1 = 56.0000001;
    EXPECT_EQ(ali_makangA(&rec, 1), 0);
    rec = before;
    rec.r2 = 100.0;
    EXPECT_EQ(ali_makangA(&rec, 0), -1);
    EXPECT_EQ(ali_makangA(&rec, 1), 0);
}

TEST(ClothoidFromAnEnd, NegativeSizesAndOtherSensesAreRefused) {
    const Calelm good = clothoidSizes(1.0, 100.0, 0.0, 200.0);
    const auto refuses = [](Calelm changed, int end) {
        const Calelm before = changed;
        return ali_makangA(&changed, end) == -1 && sameBits(changed, before);
    };
    for (const int end : {1, 2}) {
        for (const double dir : {0.0, 0.5, -0.5, 2.0}) {
            Calelm bad = good;
            bad.dir = dir;
            EXPECT_TRUE(refuses(bad, end)) << dir;
        }
        for (const double negative : {-1e-300, -1e-5, -100.0, -1e300}) {
            Calelm bad = good;
            bad.par = negative;
            EXPECT_TRUE(refuses(bad, end)) << negative;
            bad = good;
            bad.r1 = negative;
            EXPECT_TRUE(refuses(bad, end)) << negative;
            bad = good;
            bad.r2 = negative;
            EXPECT_TRUE(refuses(bad, end)) << negative;
        }
    }
}

TEST(ClothoidFromAnEnd, NoChangeOfCurvatureComesOutEmpty) {
    for (const double r : {0.0, 150.0}) {
        Calelm rec = clothoidSizes(1.0, 100.0, r, r);
        rec.sx = 5.0;
        rec.sy = 6.0;
        rec.sang = 0.7;
        rec.k1 = 3.0;
        EXPECT_EQ(ali_makangA(&rec, 1), 0);
        EXPECT_EQ(rec.ex, 5.0);
        EXPECT_EQ(rec.ey, 6.0);
        EXPECT_EQ(rec.eang, 0.7);
        EXPECT_EQ(rec.len, 0.0);
        EXPECT_EQ(rec.k1, 0.0);
        EXPECT_EQ(rec.k3, 0.0);
    }
}

TEST(Joints, AChainLaidElementByElementIsTangent) {
    Random random(54006);
    SCOPED_TRACE(random.trace());
    for (const Place place : kPlaces) {
        for (int i = 0; i < 300; ++i) {
            const double A = random.uniform(60.0, 300.0);
            const double R = A * random.uniform(0.7, 2.5);
            const double dir = random.sign();
            std::vector<Calelm> chain;
            Calelm straight{};
            straight.type = ALI_STRAIGHT;
            straight.sx = place.x;
            straight.sy = place.y;
            straight.sang = random.uniform(0.01, 6.27);
            straight.len = random.uniform(20.0, 200.0);
            straight.dir = 1.0;
            ASSERT_EQ(ali_makangS(&straight, 1), 0);
            chain.push_back(straight);
            chain.push_back(clothoidFrom(straight.ex, straight.ey, straight.eang, dir, A, 0.0, R));
            chain.push_back(
                arcFrom(chain.back().ex, chain.back().ey, chain.back().eang, dir, R, R * random.uniform(0.1, 4.0)));
            chain.push_back(clothoidFrom(chain.back().ex, chain.back().ey, chain.back().eang, dir, A, R, 2.0 * R));
            EXPECT_TRUE(exact::tangent_chain(chain));
            for (std::size_t k = 1; k < chain.size(); ++k) {
                EXPECT_EQ(jointCheck(&chain[k - 1], &chain[k]), 0);
            }
        }
    }
}
