// Limits, refusals and single figures of the tangent solvers.
#include "support/exact_chain.h"

#include "alignment/tangent/chain_check.h"
#include "alignment/tangent/fallen_azimuth.h"

#include <fenmark/alignment.h>

namespace {

using namespace fenmark;
using exact::arc;
using exact::clothoid;
using exact::straight;

constexpr double kPi = std::numbers::pi;
// Points, lengths and radii that the edge cases compare, metres; directions, radians.
constexpr double kSizeTolerance = 2e-5;

Calelm built(Calelm e) {
    EXPECT_EQ(0, ali_mak(&e, 0)) << exact::describe(e);
    return e;
}

Calelm straight_from_to(double x0, double y0, double x1, double y1) {
    Calelm s{};
    s.type = 1;
    s.sx = x0;
    s.sy = y0;
    s.ex = x1;
    s.ey = y1;
    return built(s);
}

// An arc about (cx, cy) from one direction of the calculation plane to another.
Calelm arc_about(double cx, double cy, double radius, double dir, double from, double to) {
    Calelm a{};
    a.type = 2;
    a.par = radius;
    a.dir = dir;
    a.sx = cx + radius * std::cos(from);
    a.sy = -(-cy + radius * std::sin(from));
    a.ex = cx + radius * std::cos(to);
    a.ey = -(-cy + radius * std::sin(to));
    return built(a);
}

Calelm sized(double par, double dir = 0.0) {
    Calelm e{};
    e.par = par;
    e.dir = dir;
    return e;
}

TEST(RmakSR, AnySideButTheTwoFails) {
    const auto chain = exact::lay_chain({0, 0, 0.3}, {straight(50), arc(1, 40, 50), arc(1, 120, 90)});
    for (const int side : {0, 2, -2, 65534}) {
        Calelm s = chain[0], r1 = chain[2], r2 = sized(40);
        EXPECT_EQ(-1, ali_RmakSR(side, &s, &r1, &r2)) << side;
        EXPECT_TRUE(exact::identical(chain[0], s));
        EXPECT_TRUE(exact::identical(chain[2], r1));
    }
    Calelm s = chain[0], r1 = chain[2], r2 = sized(40);
    EXPECT_EQ(0, ali_RmakSR(65535, &s, &r1, &r2)) << "65535 is -1 in 16 bits";
}

TEST(RmakSR, NoCutOfOffsetLineAndCircleAnswersMinusOne) {
    Calelm s = straight_from_to(0, 0, 10, 0);
    Calelm r1 = arc_about(5000, 5000, 50, 1.0, 0.0, 1.0);
    Calelm r2 = sized(10);
    EXPECT_EQ(-1, ali_RmakSR(-1, &s, &r1, &r2));
}

TEST(RmakSR, FootBeyondTheStraightsEndIsRefusedButForWhatRoundedEndsLeave) {
    const auto chain = exact::lay_chain({0, 0, 0.3}, {straight(50), arc(1, 40, 50), arc(1, 120, 90)});
    const auto with_end_at = [&](double past_the_tangent_point) {
        Calelm s = built(exact::extended(chain[0], 0.0, past_the_tangent_point)), r1 = chain[2], r2 = sized(40);
        const Calelm before[3] = {s, r1, r2};
        const int status = ali_RmakSR(-1, &s, &r1, &r2);
        if (status == 0) {
            EXPECT_TRUE(exact::same_chain(chain, std::vector{s, r2, r1}));
        } else {
            EXPECT_TRUE(exact::identical(before[0], s) && exact::identical(before[1], r1) &&
                        exact::identical(before[2], r2));
        }
        return status;
    };
    EXPECT_EQ(0, with_end_at(10.0));
    EXPECT_EQ(0, with_end_at(0.0));
    EXPECT_EQ(0, with_end_at(-0.9e-4)) << "a tenth of a millimetre is what two rounded elements leave";
    EXPECT_EQ(-1, with_end_at(-1.1e-4));
    EXPECT_EQ(-1, with_end_at(-5.0));
}

TEST(RAmakSR, AnySideOrModeButTheirOwnFails) {
    const auto chain =
        exact::lay_chain({0, 0, 0.3}, {straight(50), arc(1, 40, 50), clothoid(1, 35, 40, 120), arc(1, 120, 90)});
    const auto call = [&](int side, int mode) {
        Calelm s = chain[0], r = chain[3], r1 = sized(40), a = sized(35);
        return ali_RAmakSR(side, mode, &s, &r, &r1, &a);
    };
    EXPECT_EQ(0, call(-1, -1));
    EXPECT_EQ(0, call(65535, 65535));
    EXPECT_EQ(-1, call(0, -1));
    EXPECT_EQ(-1, call(2, -1));
    EXPECT_EQ(-1, call(-1, 1));
    EXPECT_EQ(-1, call(-1, -2));
}

TEST(RAmakSR, GivenElementsAreOnlyCutAndOnesThatAreTooShortFailUnchanged) {
    struct Form {
        int mode;
        double r1_radius;
        double sense; // of the given arc against the new one
        exact::Shape clothoid;
    };
    const Form forms[] = {{-1, 40.0, 1.0, clothoid(1, 35, 40, 120)},
                          {0, 40.0, 1.0, clothoid(1, 35, 40, 0)},
                          {0, 40.0, -1.0, clothoid(1, 35, 40, 0)}};
    for (const Form& form : forms) {
        const auto chain = exact::lay_chain(
            {-36000, 12000, 0.3}, {straight(50), arc(1, form.r1_radius, 50), form.clothoid, arc(form.sense, 120, 90)});
        const auto status_with = [&](int side, double past_the_straight, double before_the_arc) {
            Calelm s = built(exact::extended(chain[0], 0.0, past_the_straight));
            Calelm r = built(exact::extended(chain[3], before_the_arc, 0.0));
            if (side == 1) {
                s = built(exact::reversed(s));
                r = built(exact::reversed(r));
            }
            Calelm r1 = sized(form.r1_radius), a = sized(35);
            const Calelm before[4] = {s, r, r1, a};
            const int status = ali_RAmakSR(side, form.mode, &s, &r, &r1, &a);
            if (status == 0) {
                EXPECT_TRUE(exact::same_chain(side == 1 ? exact::reversed_chain(chain) : chain,
                                              side == 1 ? std::vector{r, a, r1, s} : std::vector{s, r1, a, r}));
            } else {
                EXPECT_TRUE(exact::identical(before[0], s) && exact::identical(before[1], r) &&
                            exact::identical(before[2], r1) && exact::identical(before[3], a));
            }
            return status;
        };
        for (const int side : {-1, 1}) {
            SCOPED_TRACE(::testing::Message() << "side " << side << " mode " << form.mode << " sense " << form.sense);
            EXPECT_EQ(0, status_with(side, 10.0, 10.0));
            EXPECT_EQ(0, status_with(side, 0.0, 0.0));
            EXPECT_EQ(-1, status_with(side, -5.0, 10.0)) << "the straight ends before the new arc begins";
            EXPECT_EQ(-1, status_with(side, 10.0, -5.0)) << "the given arc begins behind the clothoid";
            EXPECT_EQ(-1, status_with(side, -0.01, -0.01));
        }
    }
}

TEST(SmakRR, OppositeArcsThatTouchFailAlthoughATangentExistsInTheLimit) {
    // Centres 100 apart, radii 60 and 40, left and right.
    const auto between = [](double r1, double r2) {
        Calelm a = arc_about(0, 0, r1, 1.0, -2.0, -0.5);
        Calelm b = arc_about(100, 0, r2, -1.0, 3.0, 1.0);
        Calelm s{};
        return ali_SmakRR(&a, &b, &s);
    };
    EXPECT_EQ(-1, between(60, 40));
    EXPECT_EQ(-1, between(60, 41));
    EXPECT_EQ(0, between(60, 39));
}

TEST(SmakRR, EqualSensesFailWhenTheRadiiDifferByTheDistanceOfTheCentres) {
    const auto between = [](double r1, double r2) {
        Calelm a = arc_about(0, 0, r1, 1.0, -2.5, -2.0);
        Calelm b = arc_about(100, 0, r2, 1.0, 0.0, 1.0);
        Calelm s{};
        const int status = ali_SmakRR(&a, &b, &s);
        if (status == 0) {
            EXPECT_TRUE(exact::tangent_chain(std::vector{a, s, b}));
        }
        return status;
    };
    EXPECT_EQ(-1, between(150, 50));
    EXPECT_EQ(-1, between(150, 40));
    EXPECT_EQ(0, between(150, 140)) << "overlapping circles still have an outer tangent";
}

TEST(SmakRR, EndsOfTheStraightLieOnTheLengthStep) {
    const auto chain = exact::lay_chain({100.123456789, 200.2, 0.3}, {arc(1, 40, 50), straight(70), arc(-1, 120, 90)});
    Calelm a = chain[0], b = chain[2], s{};
    ASSERT_EQ(0, ali_SmakRR(&a, &b, &s));
    EXPECT_EQ(ali_CAroundNum(s.sx), s.sx);
    EXPECT_EQ(ali_CAroundNum(-s.sy), -s.sy);
    EXPECT_EQ(ali_CAroundNum(s.len), s.len);
    EXPECT_EQ(s.sx, a.ex);
    EXPECT_EQ(s.ey, b.sy);
}

TEST(RmakRR, HalfTheSumOfDistanceAndRadiiIsTheLimitAndAHairLessFails) {
    // All left: the new arc is the half circle around both, from the far point of one to the far point of the other.
    const auto around = [](double r3) {
        Calelm a = arc_about(0, 0, 30, 1.0, 2.0, 3.0);
        Calelm b = arc_about(100, 0, 20, 1.0, 0.1, 1.0);
        Calelm r = sized(r3, 1.0);
        const Calelm before[3] = {a, b, r};
        const int status = ali_RmakRR(&a, &b, &r);
        if (status == 0) {
            EXPECT_TRUE(exact::tangent_chain(std::vector{a, r, b}));
            EXPECT_NEAR(kPi, r.k3, 1e-3);
        } else {
            EXPECT_TRUE(exact::identical(before[0], a) && exact::identical(before[1], b) &&
                        exact::identical(before[2], r));
        }
        return status;
    };
    EXPECT_EQ(0, around((100.0 + 30.0 + 20.0) / 2));
    EXPECT_EQ(-1, around((100.0 + 30.0 + 20.0) / 2 - 1e-6));
}

TEST(RmakRR, TooFarApartTooCloseOrConcentricFails) {
    Calelm a = arc_about(0, 0, 30, 1.0, 2.0, 3.0);
    Calelm b = arc_about(1000, 0, 20, -1.0, 0.1, -1.0);
    Calelm r = sized(40, 1.0);
    EXPECT_EQ(-1, ali_RmakRR(&a, &b, &r));
    b = arc_about(0, 0, 20, 1.0, 0.1, 1.0);
    EXPECT_EQ(-1, ali_RmakRR(&a, &b, &r));
    r = sized(40, 0.0);
    EXPECT_EQ(-1, ali_RmakRR(&a, &b, &r)) << "no turning sense";
}

TEST(RmakRR, ArcSharperThanBothNeighboursOfItsSenseIsFound) {
    // A compound curve that is tightest in the middle.
    const auto chain = exact::lay_chain({0, 0, 1.0}, {arc(1, 300, 100), arc(1, 80, 60), arc(1, 200, 90)});
    Calelm a = chain[0], b = chain[2], r = sized(80, 1.0);
    ASSERT_EQ(0, ali_RmakRR(&a, &b, &r));
    EXPECT_TRUE(exact::same_chain(chain, std::vector{a, r, b}));
}

TEST(ARmakRR, ModeZeroAndUnequalSensesFailEachAlone) {
    const auto chain =
        exact::lay_chain({0, 0, 1.0}, {arc(1, 300, 100), clothoid(1, 70, 300, 80), arc(1, 80, 60), arc(1, 200, 90)});
    const auto call = [&](int side, int mode, double sense2) {
        Calelm a = chain[0], b = chain[3], r = sized(80), c = sized(70);
        b.dir = sense2;
        const Calelm before[4] = {a, b, r, c};
        const int status = ali_ARmakRR(side, mode, &a, &b, &r, &c);
        if (status != 0) {
            EXPECT_TRUE(exact::identical(before[0], a) && exact::identical(before[1], b) &&
                        exact::identical(before[2], r) && exact::identical(before[3], c));
        }
        return status;
    };
    EXPECT_EQ(0, call(-1, -1, 1.0));
    EXPECT_EQ(0, call(-1, 65535, 1.0));
    EXPECT_EQ(-1, call(-1, 0, 1.0));
    EXPECT_EQ(-1, call(-1, -1, -1.0));
    EXPECT_EQ(-1, call(-1, 1, 1.0));
    EXPECT_EQ(-1, call(0, -1, 1.0));
}

TEST(ARAmakRR, RadiusEqualToAGivenOneFails) {
    Calelm a = arc_about(0, 0, 30, 1.0, 2.0, 3.0);
    Calelm b = arc_about(100, 0, 20, 1.0, 0.1, 1.0);
    for (const double radius : {30.0, 30.000009, 20.0, 19.999991}) {
        Calelm a1 = sized(20), r = sized(radius, 1.0), a2 = sized(20);
        EXPECT_EQ(-1, ali_ARAmakRR(0, 0, &a, &b, &a1, &r, &a2)) << radius;
    }
}

TEST(ARAmakRR, NewArcTakesTheSenseOfTheNeighbourThatItsModeTells) {
    const auto chain = exact::lay_chain({0, 0, 1.0}, {arc(-1, 300, 100), clothoid(-1, 70, 300, 80), arc(-1, 80, 60),
                                                      clothoid(-1, 60, 80, 200), arc(-1, 200, 90)});
    for (const double given : {0.0, 1.0, -1.0}) {
        Calelm a = chain[0], b = chain[4], a1 = sized(70), r = sized(80, given), a2 = sized(60);
        ASSERT_EQ(0, ali_ARAmakRR(-1, 65535, &a, &b, &a1, &r, &a2));
        EXPECT_EQ(-1.0, r.dir) << "what the caller wrote does not count in mode -1";
        EXPECT_TRUE(exact::same_chain(chain, std::vector{a, a1, r, a2, b}));
    }
}

TEST(ARAmakRR, UnknownModeFails) {
    const auto chain = exact::lay_chain({0, 0, 1.0}, {arc(-1, 300, 100), clothoid(-1, 70, 300, 80), arc(-1, 80, 60),
                                                      clothoid(-1, 60, 80, 200), arc(-1, 200, 90)});
    for (const auto& [mode1, mode2] : {std::pair{1, -1}, std::pair{-1, 1}, std::pair{-2, -2}}) {
        Calelm a = chain[0], b = chain[4], a1 = sized(70), r = sized(80, -1.0), a2 = sized(60);
        EXPECT_EQ(-1, ali_ARAmakRR(mode1, mode2, &a, &b, &a1, &r, &a2));
    }
}

TEST(ARmakRR, FiniteRadiusThatTheSeriesTakesForInfiniteIsRefusedAndNotLaidShort) {
    // R/A above 600: the series puts the end 17 mm away, on the clothoid's origin.
    const auto chain =
        exact::lay_chain({0, 0, 1.0}, {arc(1, 9868, 900), clothoid(1, 13, 9868, 45), arc(1, 45, 60), arc(1, 200, 90)});
    Calelm a = chain[0], b = chain[3], r = sized(45), c = sized(13);
    EXPECT_EQ(-1, ali_ARmakRR(-1, -1, &a, &b, &r, &c));
    EXPECT_TRUE(exact::identical(chain[0], a));
    EXPECT_TRUE(exact::identical(chain[3], b));
}

TEST(ASAmakRR, StraightTooShortForBothClothoidsFails) {
    const auto chain = exact::lay_chain({0, 0, 1.0}, {arc(1, 60, 50), straight(40), arc(-1, 80, 60)});
    Calelm a = chain[0], b = chain[2], a1 = sized(50), s{}, a2 = sized(60);
    EXPECT_EQ(-1, ali_ASAmakRR(&a, &b, &a1, &s, &a2));
    EXPECT_TRUE(exact::identical(chain[0], a));
    EXPECT_TRUE(exact::identical(chain[2], b));
}

TEST(SAmakRR, OverlappingOffsetCirclesOfOppositeArcsFail) {
    Calelm a = arc_about(0, 0, 60, 1.0, -2.0, -0.5);
    Calelm b = arc_about(100, 0, 39.99, -1.0, 3.0, 1.0);
    Calelm s{}, c = sized(30);
    EXPECT_EQ(-1, ali_SAmakRR(1, &a, &b, &s, &c)) << "the shift closes the gap of a centimetre";
}

// ---- the long chain ----

struct LongChain {
    std::vector<Calelm> chain;
    Calelm s, r, a1, r1, a2, a3;
};

LongChain long_chain(double dir, double relation) {
    LongChain c;
    c.chain = exact::lay_chain({0, 0, 0.4},
                               {straight(60), clothoid(dir, 50, 0, 80), arc(dir, 80, 70), clothoid(dir, 55, 80, 0),
                                clothoid(dir * relation, 60, 0, 120), arc(dir * relation, 120, 90)});
    c.s = c.chain[0];
    c.r = c.chain[5];
    c.a1 = sized(50);
    c.r1 = sized(80);
    c.a2 = sized(55);
    c.a3 = sized(60);
    return c;
}

TEST(ChainWorker, StraightWhoseNormalPassesAwayFromTheArcTurnsRight) {
    for (const double dir : {1.0, -1.0}) {
        LongChain c = long_chain(dir, -1.0);
        ASSERT_EQ(0, chainWorker(&c.s, &c.r, &c.a1, &c.r1, &c.a2, &c.a3));
        EXPECT_EQ(dir, c.a1.dir);
        EXPECT_EQ(dir, c.r1.dir);
        EXPECT_EQ(dir, c.a2.dir);
        EXPECT_EQ(-dir, c.a3.dir);
        EXPECT_TRUE(exact::same_chain(c.chain, std::vector{c.s, c.a1, c.r1, c.a2, c.a3, c.r}));
    }
}

TEST(ChainWorker, RadiusOfZeroForTheMiddleArcIsRefused) {
    LongChain c = long_chain(1.0, -1.0);
    c.r1.par = 0.0;
    const Calelm s = c.s, r = c.r;
    EXPECT_EQ(-1, chainWorker(&c.s, &c.r, &c.a1, &c.r1, &c.a2, &c.a3));
    EXPECT_TRUE(exact::identical(s, c.s));
    EXPECT_TRUE(exact::identical(r, c.r));
}

TEST(ChainWorker, StraightOutOfReachOfTheArcIsRefused) {
    // The straight runs past so far away that no circle beside it reaches the distance that the clothoids demand.
    LongChain c = long_chain(1.0, -1.0);
    c.s = straight_from_to(0, 4000, 10, 4000);
    EXPECT_EQ(-1, chainWorker(&c.s, &c.r, &c.a1, &c.r1, &c.a2, &c.a3));
}

TEST(ARAAmakSR, OtherSideIsTheSameChainTravelledBack) {
    for (const double relation : {1.0, -1.0}) {
        LongChain c = long_chain(1.0, relation);
        const auto back = exact::reversed_chain(c.chain);
        Calelm s = back[5], r = back[0];
        for (const int side : {0, -1, 65535}) {
            Calelm line = s, last = r, a1 = c.a1, r1 = c.r1, a2 = c.a2, a3 = c.a3;
            ASSERT_EQ(0, ali_ARAAmakSR(side, &line, &last, &a1, &r1, &a2, &a3)) << side;
            EXPECT_TRUE(exact::same_chain(back, std::vector{last, a3, a2, r1, a1, line}));
        }
    }
}

// ---- cross lines ----

TEST(Smak, RecordOfTypeZeroGivesMinusOne) {
    Calelm e{}, s{};
    const Calelm before = s;
    EXPECT_EQ(-1, ali_Smak(&e, 0.0, kPi / 2, 10.0, &s));
    EXPECT_TRUE(exact::identical(before, s));
}

TEST(Smak, LineCrossesTheElementAtItsStationAndAngleWithTwiceTheHalfLength) {
    for (const auto& shape : {straight(80), arc(1, 90, 80), arc(-1, 90, 80), clothoid(1, 90, 0, 100),
                              clothoid(-1, 90, 100, 0), clothoid(-1, 90, 300, 100)}) {
        exact::Pose pose{-36000, 12000, 2.0};
        const exact::Pose start = pose;
        const Calelm e = built(exact::lay(pose, shape));
        for (const double angle : {kPi / 2, -kPi / 2, 0.3}) {
            const double station = 0.4 * e.len;
            const exact::Pose at = exact::pose_at(start, shape, station);
            Calelm s{};
            ASSERT_EQ(0, ali_Smak(&e, station, angle, 12.5, &s));
            EXPECT_EQ(1, s.type);
            EXPECT_NEAR(25.0, s.len, kSizeTolerance);
            EXPECT_NEAR(static_cast<double>(at.x), (s.sx + s.ex) / 2, exact::kCurveTolerance);
            EXPECT_NEAR(static_cast<double>(at.y), (s.sy + s.ey) / 2, exact::kCurveTolerance);
            EXPECT_NEAR(0.0, exact::angle_difference(s.sang, at.azimuth - angle), exact::kTangentTolerance);
        }
    }
}

TEST(Smak, StationOffTheElementAndALineWithoutLengthFail) {
    exact::Pose pose{0, 0, 0};
    const Calelm e = built(exact::lay(pose, arc(1, 90, 80)));
    Calelm s{};
    const Calelm before = s;
    EXPECT_GT(0, ali_Smak(&e, 81.0, kPi / 2, 10.0, &s));
    exact::Pose start{0, 0, 0};
    const Calelm line = built(exact::lay(start, straight(80)));
    EXPECT_GT(0, ali_Smak(&line, -1.0, kPi / 2, 10.0, &s));
    EXPECT_EQ(-1, ali_Smak(&e, 40.0, kPi / 2, 0.0, &s));
    EXPECT_TRUE(exact::identical(before, s));
}

// ---- the check that stands behind every success ----

TEST(ChainCheck, RefusesEveryKindOfBrokenChain) {
    const auto chain = exact::lay_chain({0, 0, 0.4}, {straight(60), clothoid(1, 50, 0, 80), arc(1, 80, 70)});
    using alignment::isTangentChain;
    const Calelm first = chain.front(), last = chain.back();
    EXPECT_TRUE(isTangentChain(chain, first, last));
    const auto broken = [&](std::size_t i, double Calelm::*field, double by) {
        auto bad = chain;
        bad[i].*field += by;
        return !isTangentChain(bad, first, last);
    };
    EXPECT_TRUE(broken(1, &Calelm::sx, 2e-5)) << "a gap";
    EXPECT_TRUE(broken(1, &Calelm::sang, 2e-5)) << "a kink";
    EXPECT_TRUE(broken(1, &Calelm::eang, 2e-5)) << "a kink at the end";
    EXPECT_TRUE(broken(1, &Calelm::dir, -2.0)) << "turning the other way";
    EXPECT_TRUE(broken(2, &Calelm::k3, 2e-5)) << "another sweep";
    EXPECT_TRUE(broken(2, &Calelm::par, 1.0)) << "a given arc of another radius";
    EXPECT_TRUE(broken(2, &Calelm::k1, 1e-3)) << "an arc off its own circle";
    EXPECT_TRUE(broken(0, &Calelm::sx, 2e-5)) << "a given far end that moved";
    EXPECT_TRUE(broken(2, &Calelm::ey, 2e-5)) << "a given far end that moved";
    EXPECT_TRUE(broken(0, &Calelm::len, -60.0)) << "an empty element";
    EXPECT_TRUE(broken(2, &Calelm::k1, std::numeric_limits<double>::quiet_NaN())) << "no number";
    EXPECT_FALSE(broken(1, &Calelm::sx, 0.5e-5)) << "within the tolerance";
    Calelm turned = first;
    turned.sang += kPi;
    EXPECT_FALSE(isTangentChain(chain, turned, last)) << "a given line turned round";
}

// A straight and an arc that run on from it, in a direction this much beside an axis, as the library builds them.
std::vector<Calelm> beside_axis(double azimuth) {
    auto chain = exact::lay_chain({0, 0, azimuth}, {straight(100.0), arc(1.0, 80.0, 70.0)});
    for (Calelm& e : chain) {
        EXPECT_EQ(0, ali_mak(&e, 0));
    }
    return chain;
}

TEST(FallenAzimuth, StraightThatFellToNorthIsRaisedWhereItsNeighbourDidNotFall) {
    auto chain = beside_axis(-1.02e-5);
    ASSERT_EQ(0.0, chain[0].eang) << "its rounded azimuth lies below 1e-5";
    ASSERT_NE(0.0, chain[1].sang);
    EXPECT_FALSE(exact::joined(chain[0], chain[1]));
    alignment::levelJoint(chain[0], chain[1]);
    EXPECT_TRUE(exact::joined(chain[0], chain[1]));
    EXPECT_EQ(chain[0].sang, chain[0].eang);
    EXPECT_NEAR(0.0, exact::angle_difference(chain[0].sang, 0.0), exact::kFallenAzimuth);
}

TEST(FallenAzimuth, TangentsThatFellTogetherOrNotAtAllStay) {
    for (const double azimuth : {0.0, -5e-6, -2e-5, 5e-6, 0.4}) {
        const auto chain = beside_axis(azimuth);
        auto levelled = chain;
        alignment::levelJoint(levelled[0], levelled[1]);
        EXPECT_TRUE(exact::identical(chain[0], levelled[0])) << azimuth;
        EXPECT_TRUE(exact::identical(chain[1], levelled[1])) << azimuth;
    }
}

TEST(FallenAzimuth, StraightThatReallyHeadsNorthIsNotTurnedTowardsAKink) {
    auto chain = beside_axis(0.0);
    chain[1].sang = 1.1e-5;
    alignment::levelJoint(chain[0], chain[1]);
    EXPECT_EQ(0.0, chain[0].eang);
    EXPECT_FALSE(exact::joined(chain[0], chain[1]));
}

TEST(FallenAzimuth, ArcTakesItsNeighboursTangentAgain) {
    auto chain = beside_axis(-1.005e-5);
    chain[0].sang = chain[0].eang = 2.0 * kPi - 1.005e-5;
    chain[1].sang = 0.0;
    alignment::levelJoint(chain[0], chain[1]);
    EXPECT_EQ(chain[0].eang, chain[1].sang);
}

TEST(FallenAzimuth, ClothoidKeepsThePointsItWasLaidWithBesideAnAxis) {
    // Turned by less than 1.389e-6 the chord counts as not turned, and ali_makA carries the sharp end away.
    const auto chain = exact::lay_chain({0, 0, -1.2e-6}, {clothoid(1, 150, 0, 100)});
    Calelm carried = chain[0];
    EXPECT_EQ(2, ali_makA(&carried));
    Calelm kept = chain[0];
    EXPECT_EQ(0, alignment::completeClothoid(kept));
    EXPECT_EQ(chain[0].ex, kept.ex);
    EXPECT_EQ(chain[0].ey, kept.ey);
    EXPECT_TRUE(exact::true_to_itself(kept));
    // Points that the sizes do not fit are no such case.
    Calelm wrong = chain[0];
    wrong.ex += 0.01;
    const Calelm before = wrong;
    EXPECT_EQ(-1, alignment::completeClothoid(wrong));
    EXPECT_TRUE(exact::identical(before, wrong));
}

TEST(ARAmakRR, TakesArcsOfLessThanAMetre) {
    for (const double size : {100.0, 1.0, 0.4}) {
        for (const double dir : {1.0, -1.0}) {
            const auto chain = exact::lay_chain(
                {0, 0, 1.0}, {arc(dir, 3.0 * size, 1.5 * size), clothoid(dir, 1.5 * size, 3.0 * size, size),
                              arc(dir, size, 0.8 * size), clothoid(dir, 1.4 * size, size, 2.5 * size),
                              arc(dir, 2.5 * size, 1.2 * size)});
            Calelm a = chain[0], b = chain[4], a1 = sized(1.5 * size), r = sized(size, dir), a2 = sized(1.4 * size);
            ASSERT_EQ(0, ali_ARAmakRR(-1, -1, &a, &b, &a1, &r, &a2)) << size << ' ' << dir;
            EXPECT_TRUE(exact::same_chain(chain, std::vector{a, a1, r, a2, b})) << size << ' ' << dir;
        }
    }
}

TEST(SmakRR, ARecordThatIsNoArcIsRefusedInEitherPlace) {
    const auto chain = exact::lay_chain({0, 0, 0.3}, {arc(1, 40, 50), straight(70), arc(-1, 120, 90)});
    for (const bool first : {true, false}) {
        for (const std::int16_t type : {std::int16_t{0}, std::int16_t{1}, std::int16_t{3}}) {
            Calelm a = chain[0], b = chain[2], s{};
            (first ? a : b).type = type;
            const Calelm before[2] = {a, b};
            EXPECT_EQ(-1, ali_SmakRR(&a, &b, &s)) << first << type;
            EXPECT_TRUE(exact::identical(before[0], a) && exact::identical(before[1], b)) << first << type;
        }
    }
}

} // namespace
