// The frame of a clothoid, its crossing with a line, and a clothoid between two arcs.
#include "support/exact_chain.h"

#include <fenmark/alignment.h>

namespace {

using namespace fenmark;
using exact::Random;

constexpr int kCaseCount = 1000;
constexpr std::uint64_t kSeed = 20260401;
// The series behind the standard points stops at a change of 1e-4 m and is good to a few 1e-6 m; over a short chord
// that turns the frame.
constexpr double kSeriesTolerance = 2e-5;
constexpr double kFrameAngle = 2e-5;
// There and back again in the same frame, metres, at coordinates around 36 km.
constexpr double kRoundTrip = 1e-7;
constexpr double kUnwritten = -777.0;

struct Laid {
    Calelm element;   // calculation plane, from the flat to the sharp end
    double origin[2]; // of the standard clothoid, calculation plane
    double origin_tangent;
};

// A clothoid of the calculation plane, in part with a finite flat end.
Laid laid_clothoid(Random& random) {
    const double r2 = random.radius();
    const double A = random.parameter(r2);
    const double r1 = random.coin() ? 0.0 : r2 * random.uniform(1.3, 5.0);
    const double dir = random.sign();
    const exact::Pose origin = random.pose();
    exact::Pose pose = exact::pose_at(origin, exact::clothoid(dir, A, 0.0, r2), exact::station_of(A, r1));
    const Calelm survey = exact::lay(pose, exact::clothoid(dir, A, r1, r2));
    Laid laid{};
    CDchgSpace(&survey, &laid.element);
    laid.origin[0] = static_cast<double>(origin.x);
    laid.origin[1] = static_cast<double>(-origin.y);
    laid.origin_tangent = static_cast<double>(exact::wrap_2pi(-origin.azimuth));
    return laid;
}

TEST(ClothoidFrame, ElementLiesThereAsTheStandardClothoid) {
    Random random(kSeed);
    SCOPED_TRACE(random.seed());
    for (int i = 0; i < kCaseCount; ++i) {
        const Calelm a = laid_clothoid(random).element;
        Calelm in{};
        EXPECT_EQ(0, CDAinAbs(&a, &in));
        double x = 0, y = 0, tau1 = 0, tau2 = 0;
        CDRcalxy(a.par, a.r1, &x, &y);
        CDRang(a.par, a.r1, &tau1);
        CDRang(a.par, a.r2, &tau2);
        ASSERT_NEAR(x, in.sx, kRoundTrip);
        ASSERT_NEAR(y, in.sy, kRoundTrip);
        CDRcalxy(a.par, a.r2, &x, &y);
        ASSERT_NEAR(x, in.ex, kSeriesTolerance);
        ASSERT_NEAR(y, in.ey, kSeriesTolerance);
        ASSERT_EQ(1.0, in.dir);
        ASSERT_NEAR(0.0, exact::angle_difference(in.sang, tau1), kFrameAngle);
        ASSERT_NEAR(0.0, exact::angle_difference(in.eang, tau2), kFrameAngle);
    }
}

TEST(ClothoidFrame, PointsGoInAndComeBack) {
    Random random(kSeed + 1);
    SCOPED_TRACE(random.seed());
    for (int i = 0; i < kCaseCount; ++i) {
        const Calelm a = laid_clothoid(random).element;
        const double p[2] = {a.sx + random.uniform(-300, 300), a.sy + random.uniform(-300, 300)};
        double inside[2], back[2];
        EXPECT_EQ(0, CDPinAbs(&a, p, inside));
        EXPECT_EQ(0, CDP2Cal(&a, inside, back));
        ASSERT_NEAR(p[0], back[0], kRoundTrip);
        ASSERT_NEAR(p[1], back[1], kRoundTrip);
    }
}

TEST(ClothoidFrame, StraightsAndArcsGoInAsTheirPointsDo) {
    Random random(kSeed + 2);
    SCOPED_TRACE(random.seed());
    for (int i = 0; i < kCaseCount; ++i) {
        const Calelm a = laid_clothoid(random).element;
        exact::Pose pose{a.sx, a.sy, random.uniform(0, 6.28)};
        const double R = random.radius();
        for (const auto& shape : {exact::straight(50.0), exact::arc(random.sign(), R, R * 0.7)}) {
            const Calelm survey = exact::lay(pose, shape);
            Calelm e{}, in{};
            CDchgSpace(&survey, &e);
            const double start[2] = {e.sx, e.sy}, end[2] = {e.ex, e.ey};
            double p[2];
            EXPECT_EQ(0, e.type == 1 ? CDSinAbs(&a, &e, &in) : CDRinAbs(&a, &e, &in));
            CDPinAbs(&a, start, p);
            ASSERT_NEAR(p[0], in.sx, kRoundTrip);
            ASSERT_NEAR(p[1], in.sy, kRoundTrip);
            CDPinAbs(&a, end, p);
            ASSERT_NEAR(p[0], in.ex, kRoundTrip);
            ASSERT_NEAR(p[1], in.ey, kRoundTrip);
            if (e.type == 1) {
                ASSERT_NEAR(1.0, std::hypot(in.k1, in.k2), kRoundTrip);
                ASSERT_NEAR(0.0, in.k1 * p[0] + in.k2 * p[1] + in.k3, kRoundTrip);
            } else {
                const double centre[2] = {e.k1, e.k2};
                CDPinAbs(&a, centre, p);
                ASSERT_NEAR(p[0], in.k1, kRoundTrip);
                ASSERT_NEAR(p[1], in.k2, kRoundTrip);
            }
        }
    }
}

// A turn of less than the step of angles counts as none.
TEST(ClothoidFrame, OfAClothoidThatLiesAsTheStandardOneIsOnlyMoved) {
    double x = 0, y = 0;
    CDRcalxy(80.0, 100.0, &x, &y);
    for (const double turn : {0.0, 1e-6, -1e-6}) {
        Calelm a{};
        a.type = exact::kClothoidType;
        a.dir = 1.0;
        a.par = 80.0;
        a.r2 = 100.0;
        a.sx = 30.0;
        a.sy = -20.0;
        a.ex = 30.0 + x * std::cos(turn) - y * std::sin(turn);
        a.ey = -20.0 + x * std::sin(turn) + y * std::cos(turn);
        const double p[2] = {150.0, 90.0};
        double inside[2], back[2];
        ASSERT_EQ(0, CDPinAbs(&a, p, inside));
        EXPECT_NEAR(120.0, inside[0], kRoundTrip) << turn;
        EXPECT_NEAR(110.0, inside[1], kRoundTrip) << turn;
        ASSERT_EQ(0, CDP2Cal(&a, inside, back));
        EXPECT_NEAR(150.0, back[0], kRoundTrip) << turn;
        EXPECT_NEAR(90.0, back[1], kRoundTrip) << turn;
    }
}

// Between equal radii the standard chord is a point, whose direction counts as that of +x.
TEST(ClothoidFrame, OfAClothoidWithoutALengthHasTheDirectionOfItsAxis) {
    double x = 0, y = 0;
    CDRcalxy(80.0, 100.0, &x, &y);
    Calelm a{};
    a.type = exact::kClothoidType;
    a.dir = 1.0;
    a.par = 80.0;
    a.r1 = a.r2 = 100.0;
    a.sx = 30.0;
    a.sy = -20.0;
    a.ex = 30.0;
    a.ey = -10.0; // north of +x by a right angle
    const double p[2] = {33.0, -16.0};
    double inside[2];
    ASSERT_EQ(0, CDPinAbs(&a, p, inside));
    EXPECT_NEAR(x + 4.0, inside[0], kRoundTrip);
    EXPECT_NEAR(y - 3.0, inside[1], kRoundTrip);
}

TEST(ClothoidFrame, OutputMayBeTheInputRecord) {
    Random random(kSeed + 3);
    const Calelm a = laid_clothoid(random).element;
    Calelm other{}, same = a;
    CDAinAbs(&a, &other);
    CDAinAbs(&same, &same);
    EXPECT_TRUE(exact::identical(other, same));
}

TEST(CDgetOrgA, FindsTheOriginAndItsTangent) {
    Random random(kSeed + 4);
    SCOPED_TRACE(random.seed());
    for (int i = 0; i < kCaseCount; ++i) {
        const Laid laid = laid_clothoid(random);
        double p[2], angle = kUnwritten;
        ASSERT_EQ(0, CDgetOrgA(&laid.element, p, &angle));
        // The chord's error turns the origin about the start, however far away it is.
        const double lever = laid.element.r1 == 0.0
                                 ? 1.0
                                 : 1.0 + exact::station_of(laid.element.par, laid.element.r1) / laid.element.len;
        ASSERT_NEAR(laid.origin[0], p[0], kSeriesTolerance * lever);
        ASSERT_NEAR(laid.origin[1], p[1], kSeriesTolerance * lever);
        ASSERT_NEAR(0.0, exact::angle_difference(laid.origin_tangent, angle), kFrameAngle);
    }
}

Calelm standard(double A, double r1, double r2) {
    Calelm a{};
    a.type = 3;
    a.dir = 1.0;
    a.par = A;
    a.r1 = r1;
    a.r2 = r2;
    CDRcalxy(A, r1, &a.sx, &a.sy);
    CDRcalxy(A, r2, &a.ex, &a.ey);
    return a;
}

TEST(CDAcrosS, WalksToTheCrossingFromEitherEnd) {
    const Calelm a = standard(100.0, 0.0, 80.0);
    const double line[4] = {50.0, 0.0, 0.0, 1.0};
    for (const int side : {1, -1}) {
        double p[2], L = kUnwritten;
        ASSERT_EQ(0, CDAcrosS(&a, side, line, p, &L));
        EXPECT_NEAR(50.0, p[0], 1e-4);
        double x = 0, y = 0;
        CDLcalxy(100.0, L, &x, &y);
        EXPECT_EQ(x, p[0]);
        EXPECT_EQ(y, p[1]);
    }
}

TEST(CDAcrosS, MovingAwayGivesMinusOneAndRunningPastTheOtherEndMinusTwo) {
    const Calelm a = standard(100.0, 400.0, 80.0);
    double p[2] = {kUnwritten, kUnwritten}, L = kUnwritten;
    const double before[4] = {10.0, 0.0, 0.0, 1.0};
    EXPECT_EQ(-1, CDAcrosS(&a, 1, before, p, &L)) << "the line lies before the start";
    EXPECT_EQ(-2, CDAcrosS(&a, -1, before, p, &L));
    const double after[4] = {200.0, 0.0, 0.0, 1.0};
    EXPECT_EQ(-2, CDAcrosS(&a, 1, after, p, &L));
    EXPECT_EQ(kUnwritten, p[0]);
    EXPECT_EQ(kUnwritten, L);
}

TEST(CDAcrosS, ValuesThatAreNoNumbersEndInAStatus) {
    Calelm a = standard(100.0, 0.0, 80.0);
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double line[4] = {nan, 0.0, 0.0, 1.0};
    double p[2], L = 0;
    EXPECT_GT(0, CDAcrosS(&a, 1, line, p, &L));
    a.par = 1e200;
    const double far[4] = {1e290, 0.0, 0.0, 1.0};
    EXPECT_GT(0, CDAcrosS(&a, 1, far, p, &L));
}

// ---- a clothoid between two arcs ----

struct Joined {
    Calelm first, clothoid, second; // calculation plane
    int mode;
};

Joined joined(Random& random, int mode, double relation) {
    for (;;) {
        const double r1 = random.radius(), r2 = random.radius();
        const double A = random.parameter(std::min(r1, r2));
        const double dir = random.sign();
        if (std::abs(r1 - r2) < 1.0 || std::abs(exact::station_of(A, r1) - exact::station_of(A, r2)) < 1.0) {
            continue;
        }
        const auto shape = mode == -1 ? exact::clothoid(dir, A, r1, r2)
                           : r1 < r2  ? exact::clothoid(dir, A, r1, 0.0)
                                      : exact::clothoid(dir * relation, A, 0.0, r2);
        const auto chain = exact::lay_chain(
            random.pose(), {exact::arc(dir, r1, r1 * 0.8), shape, exact::arc(dir * relation, r2, r2 * 0.8)});
        Joined result{};
        CDchgSpace(&chain[0], &result.first);
        CDchgSpace(&chain[1], &result.clothoid);
        CDchgSpace(&chain[2], &result.second);
        result.mode = mode;
        return result;
    }
}

TEST(CDOODistForRAR, IsTheDistanceOfTheCentresOfAnExactChain) {
    Random random(kSeed + 5);
    SCOPED_TRACE(random.seed());
    for (int i = 0; i < kCaseCount; ++i) {
        const int mode = random.coin() ? 0 : -1;
        const Joined j = joined(random, mode, mode == 0 ? random.sign() : 1.0);
        double d = kUnwritten;
        ASSERT_EQ(0, CDOODistForRAR(&j.first, &j.clothoid, mode, &j.second, &d));
        ASSERT_NEAR(std::hypot(j.first.k1 - j.second.k1, j.first.k2 - j.second.k2), d, kSeriesTolerance);
    }
}

TEST(CDOODistForRAR, ClothoidThatBendsAwayFromTheSharperArcIsLaidOnTheOtherSide) {
    // The clothoid's own circle at its sharp end and the arc touch from outside: centres 2 rs apart.
    Calelm sharp{}, flat{}, a{};
    sharp.par = 80.0;
    sharp.dir = -1.0;
    flat.par = 300.0;
    flat.dir = 1.0;
    a.par = 100.0;
    a.dir = 1.0;
    double tau = 0, dR = 0, Xm = 0;
    AelmAtri(100.0, 80.0, &tau, &dR, &Xm);
    const double x = Xm + 2 * 80.0 * std::sin(tau);
    const double y = 80.0 + dR - 2 * 80.0 * std::cos(tau);
    double d = kUnwritten;
    ASSERT_EQ(0, CDOODistForRAR(&flat, &a, 0, &sharp, &d));
    EXPECT_NEAR(std::hypot(x, 300.0 - y), d, kSeriesTolerance);
    flat.dir = -1.0;
    ASSERT_EQ(0, CDOODistForRAR(&flat, &a, 0, &sharp, &d));
    EXPECT_NEAR(std::hypot(x, 300.0 + y), d, kSeriesTolerance);
}

TEST(CDOODistForRAR, OppositeArcsWithAClothoidBetweenTwoRadiiGiveMinusOneAndWriteNothing) {
    Random random(kSeed + 6);
    Joined j = joined(random, -1, 1.0);
    j.second.dir = -j.first.dir;
    double d = kUnwritten;
    EXPECT_EQ(-1, CDOODistForRAR(&j.first, &j.clothoid, -1, &j.second, &d));
    EXPECT_EQ(-1, CDOODistForRAR(&j.first, &j.clothoid, 65535, &j.second, &d));
    EXPECT_EQ(kUnwritten, d);
}

TEST(CDOODistForRAR, AnyOtherModeWritesNothing) {
    Random random(kSeed + 7);
    const Joined j = joined(random, -1, 1.0);
    double d = kUnwritten;
    EXPECT_EQ(0, CDOODistForRAR(&j.first, &j.clothoid, 1, &j.second, &d));
    EXPECT_EQ(0, CDOODistForRAR(&j.first, &j.clothoid, -2, &j.second, &d));
    EXPECT_EQ(kUnwritten, d);
}

TEST(CDOODistForRAR, ModeIsReadAsASigned16BitValue) {
    Random random(kSeed + 8);
    const Joined j = joined(random, -1, 1.0);
    double d = kUnwritten, again = kUnwritten;
    ASSERT_EQ(0, CDOODistForRAR(&j.first, &j.clothoid, -1, &j.second, &d));
    ASSERT_EQ(0, CDOODistForRAR(&j.first, &j.clothoid, 65535, &j.second, &again));
    EXPECT_EQ(d, again);
}

TEST(CDsetAToRAR, LaysTheClothoidOfAnExactChainAgain) {
    Random random(kSeed + 9);
    SCOPED_TRACE(random.seed());
    int tight = 0;
    for (int i = 0; i < kCaseCount; ++i) {
        const int mode = random.coin() ? 0 : -1;
        const Joined j = joined(random, mode, mode == 0 ? random.sign() : 1.0);
        Calelm first = j.first, second = j.second, a{};
        a.type = 3;
        a.par = j.clothoid.par;
        ASSERT_EQ(0, CDsetAToRAR(mode, &first, &second, &a)) << i;
        ASSERT_EQ(j.clothoid.dir, a.dir);
        ASSERT_EQ(j.clothoid.r1, a.r1);
        ASSERT_EQ(j.clothoid.r2, a.r2);
        ASSERT_EQ(a.sx, first.ex);
        ASSERT_EQ(a.sy, first.ey);
        ASSERT_EQ(a.ex, second.sx);
        ASSERT_EQ(a.ey, second.sy);
        // Where the centres are hardly further apart than the offsets differ, the direction of the common tangent
        // hangs on the square root of the small rest.
        const double gap = std::hypot(j.clothoid.sx - a.sx, j.clothoid.sy - a.sy) +
                           std::hypot(j.clothoid.ex - a.ex, j.clothoid.ey - a.ey);
        tight += gap < 1e-3 ? 1 : 0;
        ASSERT_LT(gap, 0.1) << i;
    }
    EXPECT_GE(tight, kCaseCount * 99 / 100);
}

TEST(CDsetAToRAR, CentresTooNearForACommonTangentGiveOne) {
    Calelm r1{}, r2{}, a{};
    r1.type = r2.type = 2;
    r1.par = 300.0;
    r2.par = 80.0;
    r1.dir = r2.dir = 1.0;
    a.par = 100.0;
    r2.k1 = 100.0; // 100 apart, the offsets differ by about 215
    EXPECT_EQ(1, CDsetAToRAR(0, &r1, &r2, &a));
    r2.k1 = 0.0;
    EXPECT_EQ(1, CDsetAToRAR(-1, &r1, &r2, &a)) << "concentric";
}

// Of equal arcs the second is laid as the sharper one: an S-curve whose clothoid runs out of the first.
TEST(CDsetAToRAR, BetweenEqualRadiiTheClothoidSharpensTowardsTheSecond) {
    for (const double dir : {1.0, -1.0}) {
        const auto chain =
            exact::lay_chain({10, 20, 0.4}, {exact::arc(-dir, 100.0, 30.0), exact::clothoid(dir, 70.0, 0.0, 100.0),
                                             exact::arc(dir, 100.0, 40.0)});
        Calelm first{}, second{}, a{};
        CDchgSpace(&chain[0], &first);
        CDchgSpace(&chain[2], &second);
        a.type = exact::kClothoidType;
        a.par = 70.0;
        ASSERT_EQ(0, CDsetAToRAR(0, &first, &second, &a)) << dir;
        double apart = kUnwritten;
        ASSERT_EQ(0, CDOODistForRAR(&first, &a, 0, &second, &apart)) << dir;
        EXPECT_NEAR(std::hypot(first.k1 - second.k1, first.k2 - second.k2), apart, kSeriesTolerance) << dir;
        Calelm laid{};
        CDchgSpace(&a, &laid);
        EXPECT_EQ(0.0, laid.r1);
        EXPECT_EQ(100.0, laid.r2);
        EXPECT_EQ(dir, laid.dir);
        EXPECT_NEAR(chain[1].sx, laid.sx, 1e-3) << dir;
        EXPECT_NEAR(chain[1].sy, laid.sy, 1e-3) << dir;
        EXPECT_NEAR(chain[1].ex, laid.ex, 1e-3) << dir;
        EXPECT_NEAR(chain[1].ey, laid.ey, 1e-3) << dir;
    }
}

} // namespace
