// Curves between two straights.
#include "way_back.h"

namespace {

using namespace fenmark;
using exact::arc;
using exact::clothoid;
using exact::straight;
using way_back::Answer;
using way_back::Case;
using way_back::Random;
using way_back::to_make;

// Sizes that the edge cases compare, metres and radians.
constexpr double kSizeTolerance = 1e-5;

// The straights are handed over as they meet: both run through the IP, some metres beyond it or just to it.
std::optional<Case> lengthened_to_ip(Random& random, std::vector<Calelm> chain) {
    const Calelm& first = chain.front();
    const Calelm& last = chain.back();
    const double dx = std::cos(first.sang), dy = std::sin(first.sang);
    const double ex = std::cos(last.sang), ey = std::sin(last.sang);
    const double det = dx * ey - dy * ex;
    const double gx = last.sx - first.ex, gy = last.sy - first.ey;
    const double t1 = (gx * ey - gy * ex) / det; // from the end of the first on to the IP
    const double t2 = (gx * dy - gy * dx) / det; // from the start of the last, negative: back to the IP
    if (!(t1 > 0.0) || !(t2 < 0.0)) {
        return std::nullopt;
    }
    const double beyond1 = random.coin() ? 0.0 : random.uniform(-0.9 * t1, 30.0);
    const double beyond2 = random.coin() ? 0.0 : random.uniform(0.0, 30.0);
    Case given;
    given.first = way_back::handed(first, 0.0, t1 + beyond1);
    given.last = way_back::handed(last, -t2 + beyond2, 0.0);
    given.chain = std::move(chain);
    return given;
}

TEST(RmakSS, FindsTheArcAgain) {
    way_back::run(
        "R between straights", 20260101,
        [](Random& random) {
            const double R = random.radius();
            return lengthened_to_ip(
                random, exact::lay_chain(random.pose(), {straight(random.uniform(5.0, 200.0)),
                                                         arc(random.sign(), R, R * random.uniform(0.02, 2.9)),
                                                         straight(random.uniform(5.0, 200.0))}));
        },
        [](const Case& given) {
            Calelm s1 = given.first, s2 = given.last, r = to_make(given.chain[1]);
            const int status = ali_RmakSS(&s1, &s2, &r);
            return Answer{status, {s1, r, s2}};
        });
}

TEST(AAmakSS, FindsTheTwoClothoidsAgain) {
    way_back::run(
        "A, A between straights", 20260102,
        [](Random& random) {
            const double R = random.radius();
            const double dir = random.sign();
            const double A1 = random.parameter(R);
            const double A2 = random.coin() ? A1 : random.parameter(R);
            return lengthened_to_ip(
                random,
                exact::lay_chain(random.pose(), {straight(random.uniform(5.0, 200.0)), clothoid(dir, A1, 0, R),
                                                 clothoid(dir, A2, R, 0), straight(random.uniform(5.0, 200.0))}));
        },
        [](const Case& given) {
            Calelm s1 = given.first, s2 = given.last, a1 = to_make(given.chain[1]), a2 = to_make(given.chain[2]);
            const int status = ali_AAmakSS(&s1, &s2, &a1, &a2);
            return Answer{status, {s1, a1, a2, s2}};
        });
}

TEST(ARAmakSS, FindsTheEasedArcAgain) {
    way_back::run(
        "A, R, A between straights", 20260103,
        [](Random& random) -> std::optional<Case> {
            const double R = random.radius();
            const double dir = random.sign();
            const double A1 = random.parameter(R);
            const double A2 = random.coin() ? A1 : random.parameter(R);
            const double sweep = random.uniform(0.02, 2.0);
            if (sweep + (A1 * A1 + A2 * A2) / (2 * R * R) > way_back::kMostSweep) {
                return std::nullopt;
            }
            return lengthened_to_ip(
                random, exact::lay_chain(random.pose(), {straight(random.uniform(5.0, 200.0)), clothoid(dir, A1, 0, R),
                                                         arc(dir, R, R * sweep), clothoid(dir, A2, R, 0),
                                                         straight(random.uniform(5.0, 200.0))}));
        },
        [](const Case& given) {
            Calelm s1 = given.first, s2 = given.last;
            Calelm a1 = to_make(given.chain[1]), r = to_make(given.chain[2]), a2 = to_make(given.chain[3]);
            const int status = ali_ARAmakSS(&s1, &s2, &a1, &r, &a2);
            return Answer{status, {s1, a1, r, a2, s2}};
        });
}

Calelm straight_from_to(double x0, double y0, double x1, double y1) {
    Calelm s{};
    s.type = 1;
    s.sx = x0;
    s.sy = y0;
    s.ex = x1;
    s.ey = y1;
    return way_back::built(s);
}

TEST(RmakSS, SquareCornerIsCutBackByTheRadius) {
    // North to the corner at (100, 0), then east.
    Calelm s1 = straight_from_to(0, 0, 100, 0);
    Calelm s2 = straight_from_to(100, 0, 100, 80);
    Calelm r{};
    r.par = 10.0;
    ASSERT_EQ(0, ali_RmakSS(&s1, &s2, &r));
    EXPECT_NEAR(90.0, s1.ex, kSizeTolerance);
    EXPECT_NEAR(0.0, s1.ey, kSizeTolerance);
    EXPECT_NEAR(100.0, s2.sx, kSizeTolerance);
    EXPECT_NEAR(10.0, s2.sy, kSizeTolerance);
    EXPECT_NEAR(90.0, s1.len, kSizeTolerance);
    EXPECT_NEAR(70.0, s2.len, kSizeTolerance);
    EXPECT_EQ(2, r.type);
    EXPECT_EQ(-1.0, r.dir) << "from north to east is a right turn";
    EXPECT_NEAR(10.0 * std::numbers::pi / 2, r.len, kSizeTolerance);
    EXPECT_TRUE(exact::tangent_chain(std::vector{s1, r, s2}));
}

TEST(RmakSS, TangentLengthBeyondALineFailsAndLeavesAllRecords) {
    for (const double radius : {80.5, 100.5, 1e6}) {
        const Calelm s1 = straight_from_to(0, 0, 100, 0);
        const Calelm s2 = straight_from_to(100, 0, 100, 80);
        Calelm r{};
        r.par = radius;
        const Calelm made = r;
        Calelm first = s1, second = s2;
        EXPECT_EQ(-1, ali_RmakSS(&first, &second, &r)) << radius;
        EXPECT_TRUE(exact::identical(s1, first));
        EXPECT_TRUE(exact::identical(s2, second));
        EXPECT_TRUE(exact::identical(made, r));
    }
}

TEST(RmakSS, ParallelLinesFail) {
    Calelm s1 = straight_from_to(0, 0, 100, 0);
    Calelm s2 = straight_from_to(100, 10, 300, 10);
    Calelm r{};
    r.par = 10.0;
    EXPECT_EQ(-1, ali_RmakSS(&s1, &s2, &r));
}

TEST(RmakSS, CornerBeforeEitherLineFails) {
    Calelm r{};
    r.par = 2.0;
    {
        Calelm s1 = straight_from_to(110, 0, 200, 0);
        Calelm s2 = straight_from_to(100, 0, 100, 80);
        EXPECT_EQ(-1, ali_RmakSS(&s1, &s2, &r)) << "before the first line";
    }
    {
        Calelm s1 = straight_from_to(0, 0, 100, 0);
        Calelm s2 = straight_from_to(100, 5, 100, 80);
        EXPECT_EQ(-1, ali_RmakSS(&s1, &s2, &r)) << "before the second line";
    }
}

TEST(RmakSS, FirstLineMayEndBetweenTangentPointAndCorner) {
    Calelm s1 = straight_from_to(0, 0, 95, 0);
    Calelm s2 = straight_from_to(100, 0, 100, 80);
    Calelm r{};
    r.par = 10.0;
    ASSERT_EQ(0, ali_RmakSS(&s1, &s2, &r));
    EXPECT_NEAR(90.0, s1.ex, kSizeTolerance);
    // A line that ends before the tangent point is not lengthened.
    s1 = straight_from_to(0, 0, 85, 0);
    s2 = straight_from_to(100, 0, 100, 80);
    EXPECT_EQ(-1, ali_RmakSS(&s1, &s2, &r));
}

TEST(AAmakSS, EqualParametersMeetAtTheRadiusOfHalfTheDeflectionEach) {
    Calelm s1 = straight_from_to(0, 0, 300, 0);
    Calelm s2 = straight_from_to(300, 0, 300 + 300 * std::cos(0.8), 300 * std::sin(0.8));
    Calelm a1{}, a2{};
    a1.par = a2.par = 90.0;
    ASSERT_EQ(0, ali_AAmakSS(&s1, &s2, &a1, &a2));
    EXPECT_NEAR(90.0 / std::sqrt(0.8), a1.r2, kSizeTolerance);
    EXPECT_EQ(a1.r2, a2.r1);
    EXPECT_EQ(0.0, a1.r1);
    EXPECT_EQ(0.0, a2.r2);
    EXPECT_NEAR(0.4, a1.k1, exact::kTangentTolerance);
    EXPECT_NEAR(0.4, a2.k1, exact::kTangentTolerance);
    EXPECT_TRUE(exact::tangent_chain(std::vector{s1, a1, a2, s2}));
}

TEST(ARAmakSS, NoRoomForTheArcFailsAndLeavesAllRecords) {
    // The clothoids alone turn through more than the corner.
    const Calelm s1 = straight_from_to(0, 0, 300, 0);
    const Calelm s2 = straight_from_to(300, 0, 300 + 300 * std::cos(0.3), 300 * std::sin(0.3));
    Calelm a1{}, r{}, a2{};
    a1.par = a2.par = 60.0;
    r.par = 80.0;
    const Calelm sizes[3] = {a1, r, a2};
    Calelm first = s1, second = s2;
    EXPECT_EQ(-1, ali_ARAmakSS(&first, &second, &a1, &r, &a2));
    EXPECT_TRUE(exact::identical(s1, first));
    EXPECT_TRUE(exact::identical(s2, second));
    EXPECT_TRUE(exact::identical(sizes[0], a1));
    EXPECT_TRUE(exact::identical(sizes[1], r));
    EXPECT_TRUE(exact::identical(sizes[2], a2));
}

TEST(ARAmakSS, RadiusAtTheLimitOfItsParameterFails) {
    Calelm s1 = straight_from_to(0, 0, 300, 0);
    Calelm s2 = straight_from_to(300, 0, 300, 300);
    Calelm a1{}, r{}, a2{};
    a1.par = 100.0;
    a2.par = 10.0;
    r.par = 56.0;
    EXPECT_EQ(-1, ali_ARAmakSS(&s1, &s2, &a1, &r, &a2));
}

} // namespace
