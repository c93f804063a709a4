// Elements fitted from a given element to a given point, by the way back: an exact chain is taken apart and asked for
// again.
#include <fenmark/alignment/point.h>

#include "support/sweep.h"

#include <limits>

namespace {

using namespace fenmark::exact;

constexpr int kEnds[] = {1, 2, 0, 65535};
constexpr double kNoGap = 1e-5;
constexpr double kLongestSweep = 2.9;
constexpr double kShortestSweep = 0.1;

double some_sweep(Random& random, double radius) {
    return radius * random.uniform(kShortestSweep, kLongestSweep);
}

struct Point {
    double p[2];
};

Point point_of(const Pose& pose) {
    return {{static_cast<double>(pose.x), static_cast<double>(pose.y)}};
}
Point start_point(const Calelm& e) {
    return {{e.sx, e.sy}};
}
Point end_point(const Calelm& e) {
    return {{e.ex, e.ey}};
}
Point point_on(const Calelm& e, Real s) {
    return point_of(pose_at(start_of(e), shape_of(e), s));
}

// The shapes in the order of travel, or, with `given_last`, as many shapes of the opposite order and turn: a chain
// whose given element comes last is the chain with the given element first, run the other way.
std::vector<Calelm> chain_of(Random& random, bool given_first, std::initializer_list<Shape> shapes) {
    auto chain = lay_chain(random.pose(), shapes);
    return given_first ? chain : reversed_chain(chain);
}

// The given arc as a user has it: too long or too short at the end that joins.
Calelm uncut(Random& random, const Calelm& e, bool given_first) {
    const double change = random.uniform(-0.5, 0.5) * e.len;
    return given_first ? extended(e, 0.0, change) : extended(e, change, 0.0);
}

// ---- ali_makrS_P ----

TEST(MakrSP, LeavesOrReachesTheArcOnTheTangentThroughThePoint) {
    for (const int end : kEnds) {
        SCOPED_TRACE(end);
        sweep(5200 + static_cast<std::uint64_t>(end & 0xff), [&](Random& random) {
            const bool first = end == 1;
            const double dir = random.sign();
            const double radius = random.radius();
            const double len = random.uniform(5.0, 300.0);
            const auto chain = chain_of(random, first, {arc(dir, radius, some_sweep(random, radius)), straight(len)});
            Calelm r = uncut(random, chain[first ? 0 : 1], first);
            const Calelm& line = chain[first ? 1 : 0];
            Calelm s{};
            s.len = len;
            // The point lies somewhere on the line, before or beyond what the length reaches.
            const double away = random.uniform(0.2, 2.0) * len;
            const Point p = point_on(line, first ? away : len - away);
            const int status = ali_makrS_P(p.p, end, &r, &s);
            return judge(status, first ? std::vector{r, s} : std::vector{s, r}, chain, kJointTolerance);
        });
    }
}

TEST(MakrSP, WithThePointOnTheCircleTheLineLeavesAlongTheTangentThere) {
    sweep(5210, [](Random& random) {
        const double dir = random.sign();
        const double radius = random.radius();
        const double len = random.uniform(5.0, 300.0);
        const auto chain = lay_chain(random.pose(), {arc(dir, radius, some_sweep(random, radius)), straight(len)});
        Calelm r = uncut(random, chain[0], true);
        Calelm s{};
        s.len = len;
        const Point p = end_point(chain[0]);
        const int status = ali_makrS_P(p.p, 1, &r, &s);
        // The contact is found through acos(R / D) near 1: noise of 1e-10 m in D moves it by sqrt(2 R 1e-10).
        constexpr double kContactNoise = 1e-3;
        Outcome outcome = judge(status, std::vector{r, s}, chain, kJointTolerance);
        if (outcome.found == Found::other_valid && distance(s.sx, s.sy, p.p[0], p.p[1]) < kContactNoise) {
            outcome.found = Found::expected;
        }
        return outcome;
    });
}

TEST(MakrSP, RefusesAPointInsideTheCircle) {
    const Calelm r0 = lay_chain({-36000, 12000, 1}, {arc(1.0, 100.0, 80.0)})[0];
    Calelm s0{};
    s0.len = 50.0;
    for (const double share : {0.0, 0.5, 0.99}) {
        Calelm r = r0;
        Calelm s = s0;
        const double p[2] = {r.k1 + share * 100.0, r.k2};
        EXPECT_EQ(static_cast<int16_t>(ali_makrS_P(p, 1, &r, &s)), -1);
        EXPECT_TRUE(identical(r, r0));
        EXPECT_TRUE(identical(s, s0));
    }
}

TEST(MakrSP, IsNotLedToThePointButKeepsTheLengthThatWasGiven) {
    Calelm r = lay_chain({0, 0, 0.3}, {arc(-1.0, 100.0, 80.0)})[0];
    const Point p = point_of(advance(end_of(r), 0, 0, 200));
    Calelm s{};
    s.len = 50.0;
    ASSERT_EQ(ali_makrS_P(p.p, 1, &r, &s), 0);
    EXPECT_NEAR(s.len, 50.0, kSizeTolerance);
    EXPECT_NEAR(distance(s.sx, s.sy, s.ex, s.ey), 50.0, kJointTolerance);
    EXPECT_NEAR(distance(s.ex, s.ey, p.p[0], p.p[1]), 150.0, kRoundedJointTolerance);
}

TEST(MakrSP, RoundsItsPointsAndLengthTo1e5) {
    const auto on_step = [](double v) { return std::abs(v * 1e5 - std::round(v * 1e5)) < 1e-4; };
    Calelm r = lay_chain({1.0 / 3.0, 2.0 / 7.0, 0.3}, {arc(-1.0, 100.0, 80.123456789)})[0];
    const Point p = point_of(advance(end_of(r), 0, 0, 33.3333333));
    Calelm s{};
    s.len = 50.0 / 3.0;
    ASSERT_EQ(ali_makrS_P(p.p, 1, &r, &s), 0);
    for (const double v : {r.sx, r.sy, r.ex, r.ey, r.len, s.sx, s.sy, s.ex, s.ey, s.len}) {
        EXPECT_TRUE(on_step(v)) << v;
    }
}

// ---- ali_makrR_P, ali_makrR_P_S ----

Outcome arc_pair(Random& random, int end, bool like, bool larger) {
    const bool first = end == 1;
    const double dir = random.sign();
    const double radius1 = random.radius();
    // A given radius of twice the new one or more is refused on purpose.
    const double radius2 = radius1 * (larger ? random.uniform(1.1, 4.0) : random.uniform(0.55, 0.9));
    const double dir2 = like ? dir : -dir;
    const auto chain =
        chain_of(random, first,
                 {arc(dir, radius1, some_sweep(random, radius1)), arc(dir2, radius2, some_sweep(random, radius2))});
    Calelm r1 = uncut(random, chain[first ? 0 : 1], first);
    Calelm r2 = sizes_only(chain[first ? 1 : 0]);
    const Point p = first ? end_point(chain[1]) : start_point(chain[0]);
    const int status = ali_makrR_P(p.p, end, &r1, &r2);
    return judge(status, first ? std::vector{r1, r2} : std::vector{r2, r1}, chain, kJointTolerance);
}

TEST(MakrRP, FindsTheTangentArcThroughThePointForEveryTurnAndSize) {
    std::uint64_t seed = 5220;
    for (const int end : kEnds) {
        for (const bool like : {true, false}) {
            for (const bool larger : {true, false}) {
                SCOPED_TRACE(::testing::Message() << "end " << end << " like " << like << " larger " << larger);
                sweep(seed++, [&](Random& random) { return arc_pair(random, end, like, larger); });
            }
        }
    }
}

TEST(MakrRP, RefusesThePointAtTheCentreAZeroRadiusAndARadiusOfTwiceTheNewOne) {
    const Calelm given = lay_chain({-36000, 12000, 1}, {arc(1.0, 100.0, 80.0)})[0];
    const auto refused = [&](double px, double py, double par1, double par2, double dir2) {
        Calelm r1 = given;
        r1.par = par1;
        Calelm r2{};
        r2.par = par2;
        r2.dir = dir2;
        const Calelm before1 = r1;
        const Calelm before2 = r2;
        const double p[2] = {px, py};
        const int status = static_cast<int16_t>(ali_makrR_P(p, 1, &r1, &r2));
        return status == -1 && identical(r1, before1) && identical(r2, before2);
    };
    for (const double dir2 : {1.0, -1.0}) {
        for (const double radius : {60.0, 100.0, 150.0, 200.0, 300.0}) {
            EXPECT_TRUE(refused(given.k1, given.k2, 100.0, radius, dir2)) << radius;
        }
        EXPECT_TRUE(refused(given.ex, given.ey + 20.0, 100.0, 0.0, dir2));
        EXPECT_TRUE(refused(given.ex, given.ey + 20.0, 0.0, 100.0, dir2));
        // Twice the new radius exactly, and more.
        EXPECT_TRUE(refused(given.ex, given.ey, 100.0, 50.0, dir2));
        EXPECT_TRUE(refused(given.ex, given.ey, 100.0, 40.0, dir2));
        // Out of reach.
        EXPECT_TRUE(refused(given.k1 + 1000.0, given.k2, 100.0, 120.0, dir2));
    }
    // Inside the given circle an arc of opposite turn cannot pass.
    EXPECT_TRUE(refused(given.k1 + 50.0, given.k2, 100.0, 120.0, -1.0));
}

TEST(MakrRPS, MakesTheArcOfOppositeTurnBetweenThePointAndTheGivenArc) {
    for (const int end : kEnds) {
        SCOPED_TRACE(end);
        sweep(5240 + static_cast<std::uint64_t>(end & 0xff), [&](Random& random) {
            const bool first = end == 1;
            const double dir = random.sign();
            const double given_radius = random.radius();
            const double made_radius = given_radius * random.uniform(0.2, 4.0);
            const auto chain = chain_of(random, first,
                                        {arc(dir, given_radius, some_sweep(random, given_radius)),
                                         arc(-dir, made_radius, some_sweep(random, made_radius))});
            Calelm given = uncut(random, chain[first ? 0 : 1], first);
            Calelm made{};
            made.par = made_radius;
            const Point p = first ? end_point(chain[1]) : start_point(chain[0]);
            const int status = ali_makrR_P_S(p.p, end, &made, &given);
            return judge(status, first ? std::vector{given, made} : std::vector{made, given}, chain, kJointTolerance);
        });
    }
}

TEST(MakrRPS, TheNewArcTurnsAgainstTheGivenOneWhateverItsRecordSays) {
    for (const double dir : {1.0, -1.0}) {
        const auto chain = lay_chain({5, 7, 0.4}, {arc(dir, 100.0, 50.0), arc(-dir, 60.0, 40.0)});
        for (const double said : {0.0, 1.0, -1.0, 0.5}) {
            Calelm given = extended(chain[0], 0.0, 20.0);
            Calelm made{};
            made.par = 60.0;
            made.dir = said;
            const Point p = end_point(chain[1]);
            ASSERT_EQ(ali_makrR_P_S(p.p, 1, &made, &given), 0) << dir << ' ' << said;
            EXPECT_EQ(made.dir, -dir);
            EXPECT_TRUE(same_chain(std::vector{given, made}, chain)) << dir << ' ' << said;
        }
    }
}

TEST(MakrRPS, RefusesAPointOutOfReach) {
    Calelm given = lay_chain({0, 0, 1}, {arc(1.0, 100.0, 80.0)})[0];
    Calelm made{};
    made.par = 50.0;
    const Calelm before_given = given;
    const Calelm before_made = made;
    const double p[2] = {given.k1 + 500.0, given.k2};
    EXPECT_EQ(static_cast<int16_t>(ali_makrR_P_S(p, 1, &made, &given)), -1);
    EXPECT_TRUE(identical(given, before_given));
    EXPECT_TRUE(identical(made, before_made));
}

// ---- ali_makrAS_P ----

TEST(MakrASP, FindsTheStraightFromThePointAndTheClothoid) {
    for (const int end : kEnds) {
        SCOPED_TRACE(end);
        sweep(5250 + static_cast<std::uint64_t>(end & 0xff), [&](Random& random) {
            // Here end 1 puts the straight first.
            const bool straight_first = end == 1;
            const double dir = random.sign();
            const double radius = random.radius();
            const double a = random.parameter(radius);
            const double len = random.uniform(5.0, 300.0);
            const auto chain =
                chain_of(random, straight_first,
                         {straight(len), clothoid(dir, a, 0.0, radius), arc(dir, radius, some_sweep(random, radius))});
            Calelm r = uncut(random, chain[straight_first ? 2 : 0], !straight_first);
            Calelm m = sizes_only(chain[1]);
            Calelm s{};
            s.len = len;
            const Point p = straight_first ? start_point(chain[0]) : end_point(chain[2]);
            const int status = ali_makrAS_P(p.p, end, &r, &m, &s);
            return judge(status, straight_first ? std::vector{s, m, r} : std::vector{r, m, s}, chain);
        });
    }
}

TEST(MakrASP, RefusesAPointWithinTheOffsetCircleAndChangesNothing) {
    const Calelm given = lay_chain({0, 0, 1}, {arc(1.0, 100.0, 80.0)})[0];
    const double rho = 100.0 + static_cast<double>(clothoid_values(80.0, 100.0)[1]);
    for (const double distance_from_centre : {0.0, 50.0, 100.0, rho - 1e-3}) {
        Calelm r = given;
        Calelm a{};
        a.par = 80.0;
        Calelm s{};
        s.len = 40.0;
        const Calelm before_a = a;
        const Calelm before_s = s;
        const double p[2] = {r.k1 + distance_from_centre, r.k2};
        EXPECT_EQ(static_cast<int16_t>(ali_makrAS_P(p, 1, &r, &a, &s)), -1);
        EXPECT_TRUE(identical(r, given) && identical(a, before_a) && identical(s, before_s));
    }
}

TEST(MakrASP, RefusesALengthThatDoesNotLeadFromThePointToTheClothoid) {
    const auto chain = lay_chain({0, 0, 1}, {straight(60.0), clothoid(1.0, 80.0, 0.0, 100.0), arc(1.0, 100.0, 80.0)});
    for (const double len : {-1.0, 1e-3, 50.0, 70.0}) {
        Calelm r = chain[2];
        Calelm a = sizes_only(chain[1]);
        Calelm s{};
        s.len = len;
        const Point p = start_point(chain[0]);
        EXPECT_EQ(static_cast<int16_t>(ali_makrAS_P(p.p, 1, &r, &a, &s)), -1);
        EXPECT_TRUE(identical(r, chain[2]));
    }
}

TEST(MakrASP, TakesALengthOfZeroForAsLongAsNeeded) {
    for (const int end : {1, 2}) {
        const std::vector<Shape> shapes = {straight(60.0), clothoid(1.0, 80.0, 0.0, 100.0), arc(1.0, 100.0, 80.0)};
        const auto laid = lay_chain({0, 0, 1}, shapes);
        const auto chain = end == 1 ? laid : reversed_chain(laid);
        Calelm r = chain[end == 1 ? 2 : 0];
        Calelm a = sizes_only(chain[1]);
        Calelm s{};
        const Point p = end == 1 ? start_point(chain[0]) : end_point(chain[2]);
        ASSERT_EQ(ali_makrAS_P(p.p, end, &r, &a, &s), 0);
        EXPECT_NEAR(s.len, 60.0, kRoundedJointTolerance);
        const auto made = end == 1 ? std::vector{s, a, r} : std::vector{r, a, s};
        EXPECT_TRUE(tangent_chain(made, kRoundedJointTolerance));
    }
}

// ---- ali_makrAR_P, ali_makrAAR_P ----

TEST(MakrARP, FindsTheEggShapedCurveToThePoint) {
    std::uint64_t seed = 5260;
    for (const int end : kEnds) {
        for (const bool sharpens : {true, false}) {
            SCOPED_TRACE(::testing::Message() << "end " << end << " sharpens " << sharpens);
            // Of two mirrored curves that both reach the point the one on the usual side is taken.
            constexpr int kBothMirrored = 5;
            const auto run = [&](Random& random) {
                const bool first = end == 1;
                const double dir = random.sign();
                const double small = random.radius();
                const double large = small * random.uniform(1.2, 4.0);
                const double radius1 = sharpens ? large : small;
                const double radius2 = sharpens ? small : large;
                const double a = random.parameter(small);
                const auto chain =
                    chain_of(random, first,
                             {arc(dir, radius1, some_sweep(random, radius1)), clothoid(dir, a, radius1, radius2),
                              arc(dir, radius2, some_sweep(random, radius2))});
                Calelm r1 = uncut(random, chain[first ? 0 : 2], first);
                Calelm m = sizes_only(chain[1]);
                Calelm r2{};
                r2.par = radius2;
                const Point p = first ? end_point(chain[2]) : start_point(chain[0]);
                double gap = -1.0;
                double angle = -1.0;
                const int status = ali_makrAR_P(p.p, end, &r1, &m, &r2, &gap, &angle);
                if (status == 0 && !(gap >= 0.0 && gap < kNoGap)) {
                    return Outcome{Found::failed, "gap " + std::to_string(gap)};
                }
                return judge(status, first ? std::vector{r1, m, r2} : std::vector{r2, m, r1}, chain, kJointTolerance);
            };
            sweep(seed++, run, kBothMirrored);
        }
    }
}

TEST(MakrARP, RefusesADirOfTheNewArcThatTurnsTheOtherWay) {
    const auto chain =
        lay_chain({0, 0, 1}, {arc(1.0, 200.0, 80.0), clothoid(1.0, 80.0, 200.0, 100.0), arc(1.0, 100.0, 80.0)});
    Calelm r1 = chain[0];
    Calelm a = sizes_only(chain[1]);
    Calelm r2 = sizes_only(chain[2]);
    r2.dir = -1.0;
    const Point p = end_point(chain[2]);
    double gap = 7.0;
    double angle = 7.0;
    EXPECT_EQ(static_cast<int16_t>(ali_makrAR_P(p.p, 1, &r1, &a, &r2, &gap, &angle)), -1);
    EXPECT_TRUE(identical(r1, chain[0]));
    EXPECT_EQ(gap, 7.0);
    EXPECT_EQ(angle, 7.0);
}

// The curve with a new arc of up to the given sweep.
void s_curves_to_a_point(std::uint64_t seed, double most, int other_allowed) {
    for (const int end : kEnds) {
        SCOPED_TRACE(end);
        const auto run = [&](Random& random) {
            const bool first = end == 1;
            const double dir = random.sign();
            const double radius1 = random.radius();
            const double radius2 = radius1 * random.uniform(0.3, 3.0);
            const double a1 = random.parameter(radius1);
            const double a2 = random.parameter(radius2);
            const auto chain = chain_of(random, first,
                                        {arc(dir, radius1, some_sweep(random, radius1)),
                                         clothoid(dir, a1, radius1, 0.0), clothoid(-dir, a2, 0.0, radius2),
                                         arc(-dir, radius2, random.arc_length(radius2, kShortestSweep, most))});
            Calelm r1 = uncut(random, chain[first ? 0 : 3], first);
            Calelm m1 = sizes_only(chain[first ? 1 : 2]);
            Calelm m2 = sizes_only(chain[first ? 2 : 1]);
            Calelm r2{};
            r2.par = radius2;
            const Point p = first ? end_point(chain[3]) : start_point(chain[0]);
            double gap = -1.0;
            const int status = ali_makrAAR_P(p.p, end, &r1, &m1, &m2, &r2, &gap);
            if (status == 0 && !(gap >= 0.0 && gap < kNoGap)) {
                return Outcome{Found::failed, "gap " + std::to_string(gap)};
            }
            return judge(status, first ? std::vector{r1, m1, m2, r2} : std::vector{r2, m2, m1, r1}, chain,
                         kJointTolerance);
        };
        sweep(seed + static_cast<std::uint64_t>(end & 0xff), run, other_allowed);
    }
}

TEST(MakrAARP, FindsTheSCurveToThePoint) {
    s_curves_to_a_point(5280, 1.5, 0);
}

TEST(MakrAARP, FindsATangentSCurveToAPointBehindToo) {
    // With long arcs both mirrored curves may reach the point, some 6 of a hundred cases: the usual side is taken.
    s_curves_to_a_point(5284, kLongestSweep, 80);
}

// ---- ali_maksR_P, ali_maksAR_P ----

TEST(MaksRP, FindsTheTangentArcWhoseCirclePassesThePoint) {
    for (const int end : kEnds) {
        SCOPED_TRACE(end);
        sweep(5290 + static_cast<std::uint64_t>(end & 0xff), [&](Random& random) {
            const bool first = end == 1;
            const double dir = random.sign();
            const double radius = random.radius();
            const double len = random.uniform(5.0, 300.0);
            const auto chain = chain_of(random, first, {straight(len), arc(dir, radius, some_sweep(random, radius))});
            Calelm s = uncut(random, chain[first ? 0 : 1], first);
            const Calelm& curve = chain[first ? 1 : 0];
            Calelm r = sizes_only(curve);
            r.len = curve.len;
            const Point p = point_on(curve, random.uniform(0.05, 1.0) * curve.len);
            const int status = ali_maksR_P(p.p, end, &s, &r);
            return judge(status, first ? std::vector{s, r} : std::vector{r, s}, chain, kJointTolerance);
        });
    }
}

TEST(MaksRP, WithALengthOf0ReachesThePoint) {
    sweep(5298, [](Random& random) {
        const bool first = random.coin();
        const double radius = random.radius();
        const auto chain =
            chain_of(random, first,
                     {straight(random.uniform(5.0, 300.0)), arc(random.sign(), radius, some_sweep(random, radius))});
        Calelm s = uncut(random, chain[first ? 0 : 1], first);
        Calelm r = sizes_only(chain[first ? 1 : 0]);
        const Point p = first ? end_point(chain[1]) : start_point(chain[0]);
        const int status = ali_maksR_P(p.p, first ? 1 : 2, &s, &r);
        return judge(status, first ? std::vector{s, r} : std::vector{r, s}, chain, kJointTolerance);
    });
}

TEST(MaksRP, LaysArcsOfMoreThanAHalfCircleToo) {
    const auto chain = lay_chain({0, 0, 1}, {straight(60.0), arc(1.0, 100.0, 400.0)});
    Calelm s = chain[0];
    Calelm r = sizes_only(chain[1]);
    r.len = 400.0;
    const Point p = point_on(chain[1], 100.0);
    ASSERT_EQ(ali_maksR_P(p.p, 1, &s, &r), 0);
    EXPECT_TRUE(tangent_chain(std::vector{s, r}));
    EXPECT_TRUE(same_chain(std::vector{s, r}, chain));
}

TEST(MaksRP, RefusesAPointFurtherFromTheLineThanTwiceTheRadiusOrOnTheOtherSide) {
    const Calelm given = lay_chain({0, 0, 0}, {straight(100.0)})[0]; // due north, so left is west, -y
    Calelm r0{};
    r0.dir = 1.0;
    r0.par = 50.0;
    r0.len = 30.0;
    const auto status_at = [&](double x, double y) {
        Calelm s = given;
        Calelm r = r0;
        const double p[2] = {x, y};
        const int status = static_cast<int16_t>(ali_maksR_P(p, 1, &s, &r));
        if (status != 0) {
            EXPECT_TRUE(identical(s, given) && identical(r, r0));
        }
        return status;
    };
    EXPECT_EQ(status_at(80.0, -100.001), -1);
    EXPECT_EQ(status_at(80.0, -99.999), 0);
    EXPECT_EQ(status_at(80.0, 100.001), -1);
    EXPECT_EQ(status_at(80.0, 20.0), -1);
    EXPECT_EQ(status_at(80.0, 0.0), 0);
    // The contact would lie before the start of the straight.
    EXPECT_EQ(status_at(-10.0, -20.0), -1);
}

TEST(MaksARP, FindsTheClothoidAndTheArcWhoseCirclePassesThePoint) {
    std::uint64_t seed = 5300;
    for (const int end : kEnds) {
        for (const bool length_given : {true, false}) {
            SCOPED_TRACE(::testing::Message() << "end " << end << " length " << length_given);
            sweep(seed++, [&](Random& random) {
                const bool first = end == 1;
                const double dir = random.sign();
                const double radius = random.radius();
                const double a = random.parameter(radius);
                const double tau = static_cast<double>(clothoid_values(a, radius)[0]);
                // Up to a quarter turn from the line the centre lies behind the point.
                const double sweep_of_arc = random.uniform(0.05, 1.5 - tau);
                const double len = random.uniform(5.0, 300.0);
                const auto chain =
                    chain_of(random, first,
                             {straight(len), clothoid(dir, a, 0.0, radius), arc(dir, radius, radius * sweep_of_arc)});
                Calelm s = uncut(random, chain[first ? 0 : 2], first);
                Calelm m = sizes_only(chain[1]);
                const Calelm& curve = chain[first ? 2 : 0];
                Calelm r = sizes_only(curve);
                Point p = first ? end_point(curve) : start_point(curve);
                if (length_given) {
                    r.len = curve.len;
                    p = point_on(curve, random.uniform(0.05, 0.95) * curve.len);
                }
                const int status = ali_maksAR_P(p.p, end, &s, &m, &r);
                return judge(status, first ? std::vector{s, m, r} : std::vector{r, m, s}, chain, kJointTolerance);
            });
        }
    }
}

TEST(MaksARP, RefusesAPointOutOfReachOfTheOffsetLine) {
    const Calelm given = lay_chain({0, 0, 0}, {straight(100.0)})[0];
    Calelm a0{};
    a0.par = 40.0;
    Calelm r0{};
    r0.dir = 1.0;
    r0.par = 50.0;
    for (const double y : {-150.0, 30.0}) {
        Calelm s = given;
        Calelm a = a0;
        Calelm r = r0;
        const double p[2] = {90.0, y};
        EXPECT_EQ(static_cast<int16_t>(ali_maksAR_P(p, 1, &s, &a, &r)), -1);
        EXPECT_TRUE(identical(s, given) && identical(a, a0) && identical(r, r0));
    }
}

// ---- given arcs of a half circle and more, as the loops of an interchange have them ----

// Every sixth case a half circle, to the last bits.
double loop_sweep(Random& random) {
    const double kBeside[] = {0.0, 1e-9, -1e-9, 1e-7, -1e-7, 3e-6};
    return random.pick(3) == 0 ? std::numbers::pi + kBeside[random.pick(6)] : random.uniform(3.0, 5.8);
}

// The given arc as a user has it, before it is cut: so much longer that it still is no whole circle.
Calelm longer(Random& random, const Calelm& e, bool given_first) {
    const double more = random.uniform(0.0, 0.9) * (2.0 * std::numbers::pi * e.par - e.len);
    return given_first ? extended(e, 0.0, more) : extended(e, more, 0.0);
}

TEST(LongArcs, AreCutByATangentStraight) {
    sweep(5310, [](Random& random) {
        const bool first = random.coin();
        const double radius = random.radius();
        const double len = random.uniform(5.0, 300.0);
        const auto chain =
            chain_of(random, first, {arc(random.sign(), radius, radius * loop_sweep(random)), straight(len)});
        Calelm r = longer(random, chain[first ? 0 : 1], first);
        Calelm s{};
        s.len = len;
        const Point p = first ? end_point(chain[1]) : start_point(chain[0]);
        const int status = ali_makrS_P(p.p, first ? 1 : 2, &r, &s);
        return judge(status, first ? std::vector{r, s} : std::vector{s, r}, chain, kJointTolerance);
    });
}

TEST(LongArcs, AreCutByAClothoidToAPoint) {
    sweep(5311, [](Random& random) {
        const bool straight_first = random.coin();
        const double dir = random.sign();
        const double radius = random.radius();
        const double len = random.uniform(5.0, 300.0);
        const auto chain = chain_of(random, straight_first,
                                    {straight(len), clothoid(dir, random.parameter(radius), 0.0, radius),
                                     arc(dir, radius, radius * loop_sweep(random))});
        Calelm r = longer(random, chain[straight_first ? 2 : 0], !straight_first);
        Calelm m = sizes_only(chain[1]);
        Calelm s{};
        s.len = len;
        const Point p = straight_first ? start_point(chain[0]) : end_point(chain[2]);
        const int status = ali_makrAS_P(p.p, straight_first ? 1 : 2, &r, &m, &s);
        return judge(status, straight_first ? std::vector{s, m, r} : std::vector{r, m, s}, chain);
    });
}

TEST(LongArcs, AreCutByAnEggShapedCurve) {
    sweep(5312, [](Random& random) {
        const bool first = random.coin();
        const double dir = random.sign();
        const double radius2 = random.radius();
        const double radius1 = radius2 * random.uniform(0.3, 0.8);
        const auto chain = chain_of(random, first,
                                    {arc(dir, radius1, radius1 * loop_sweep(random)),
                                     clothoid(dir, random.parameter(radius1), radius1, radius2),
                                     arc(dir, radius2, radius2 * random.uniform(0.1, 1.5))});
        Calelm r1 = longer(random, chain[first ? 0 : 2], first);
        Calelm m = sizes_only(chain[1]);
        Calelm r2{};
        r2.par = radius2;
        const Point p = first ? end_point(chain[2]) : start_point(chain[0]);
        double gap = 0.0;
        double angle = 0.0;
        const int status = ali_makrAR_P(p.p, first ? 1 : 2, &r1, &m, &r2, &gap, &angle);
        return judge(status, first ? std::vector{r1, m, r2} : std::vector{r2, m, r1}, chain, kJointTolerance);
    });
}

TEST(LongArcs, AreCutByATangentArc) {
    sweep(5313, [](Random& random) {
        const bool first = random.coin();
        const double dir = random.sign();
        const double radius1 = random.radius();
        const double radius2 = radius1 * random.uniform(1.1, 3.0);
        const double dir2 = random.coin() ? dir : -dir;
        const auto chain = chain_of(
            random, first,
            {arc(dir, radius1, radius1 * loop_sweep(random)), arc(dir2, radius2, radius2 * random.uniform(0.1, 1.5))});
        Calelm r1 = longer(random, chain[first ? 0 : 1], first);
        Calelm r2 = sizes_only(chain[first ? 1 : 0]);
        const Point p = first ? end_point(chain[1]) : start_point(chain[0]);
        const int status = ali_makrR_P(p.p, first ? 1 : 2, &r1, &r2);
        return judge(status, first ? std::vector{r1, r2} : std::vector{r2, r1}, chain, kJointTolerance);
    });
}

TEST(LongArcs, AShortArcIsNotLengthenedToALoop) {
    // The tangent point lies a little before the start of the arc: only a loop of nearly a whole circle would reach it.
    const Calelm given = lay_chain({0, 0, 1}, {arc(1.0, 100.0, 80.0)})[0];
    const Calelm before = extended(given, 10.0, -75.0);
    Calelm r = given;
    Calelm s{};
    s.len = 50.0;
    const Point p = point_of(advance(start_of(before), 0, 0, 60));
    EXPECT_EQ(static_cast<int16_t>(ali_makrS_P(p.p, 1, &r, &s)), -1);
    EXPECT_TRUE(identical(r, given));
}

} // namespace
