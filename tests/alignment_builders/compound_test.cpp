// The compound builders: the clothoids between fixed arcs or a fixed straight and arc, and whole chains.
#include <fenmark/alignment/compound.h>
#include <fenmark/alignment/primitives.h>

#include "support/sweep.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <vector>

namespace {

using namespace fenmark::exact;

// A gap that should not be there, metres: the exact layer and the library differ by the stop test of the series.
constexpr double kNoGap = 1e-5;
constexpr double kLongestSweep = 2.9;
constexpr double kShortestSweep = 0.1;

double some_sweep(Random& random, double radius) {
    return radius * random.uniform(kShortestSweep, kLongestSweep);
}

struct Egg {
    std::vector<Calelm> chain;
    Calelm r1, a, r2;
};

Egg egg(Random& random) {
    const double dir = random.sign();
    const double small = random.radius();
    const double large = small * random.uniform(1.2, 4.0);
    const bool sharpens = random.coin();
    const double first = sharpens ? large : small;
    const double second = sharpens ? small : large;
    const double a = random.parameter(small);
    Egg e;
    e.chain = lay_chain(random.pose(), {arc(dir, first, some_sweep(random, first)), clothoid(dir, a, first, second),
                                        arc(dir, second, some_sweep(random, second))});
    e.r1 = e.chain[0];
    e.a = sizes_only(e.chain[1]);
    e.r2 = e.chain[2];
    return e;
}

TEST(MakRAR, FindsTheEggShapedClothoidOfAnExactChain) {
    sweep(5120, [](Random& random) {
        const Egg e = egg(random);
        Calelm a = e.a;
        double gap = -1.0;
        double angle = -1.0;
        const int status = ali_makRAR(&e.r1, &a, &e.r2, &gap, &angle);
        const std::vector<Calelm> made{e.r1, a, e.r2};
        if (status == 0 && !(gap >= 0.0 && gap < kNoGap)) {
            return Outcome{Found::failed, "gap " + std::to_string(gap)};
        }
        return judge(status, made, e.chain, kJointTolerance);
    });
}

TEST(MakRAR, TellsTheCommonTangentOfTheOffsetCircles) {
    sweep(5121, [](Random& random) {
        const Egg e = egg(random);
        Calelm a = e.a;
        double gap = -1.0;
        double angle = -1.0;
        if (ali_makRAR(&e.r1, &a, &e.r2, &gap, &angle) != 0) {
            return Outcome{Found::failed, "status"};
        }
        // The tangent at the origin: tau before the arc of the larger radius, or after it when the curve flattens.
        const bool sharpens = e.r1.par > e.r2.par;
        const double tau = static_cast<double>(clothoid_values(e.chain[1].par, std::max(e.r1.par, e.r2.par))[0]);
        const double expected =
            sharpens ? e.chain[1].sang + e.chain[1].dir * tau : e.chain[1].eang - e.chain[1].dir * tau;
        const bool agrees = std::abs(angle_difference(angle, expected)) < kTangentTolerance;
        return Outcome{agrees ? Found::expected : Found::failed, "angle " + std::to_string(angle)};
    });
}

TEST(MakRAR, TellsByHowMuchTheSmallerArcWasMovedAlongTheTangent) {
    sweep(5122, [](Random& random) {
        const Egg e = egg(random);
        Calelm a = e.a;
        double gap = 0.0;
        double angle = 0.0;
        if (ali_makRAR(&e.r1, &a, &e.r2, &gap, &angle) != 0) {
            return Outcome{Found::failed, "status"};
        }
        Calelm r1 = e.r1;
        Calelm r2 = e.r2;
        Calelm& smaller = r1.par < r2.par ? r1 : r2;
        // Within what the tangent's length between the centres allows.
        const double apart = static_cast<double>(clothoid_values(e.a.par, std::min(r1.par, r2.par))[2] -
                                                 clothoid_values(e.a.par, std::max(r1.par, r2.par))[2]);
        const double shift = random.uniform(-0.4, 0.4) * apart;
        for (double* const x : {&smaller.sx, &smaller.ex, &smaller.k1}) {
            *x += shift * std::cos(angle);
        }
        for (double* const y : {&smaller.sy, &smaller.ey, &smaller.k2}) {
            *y += shift * std::sin(angle);
        }
        Calelm again = e.a;
        double moved = 0.0;
        if (ali_makRAR(&r1, &again, &r2, &moved, &angle) != 0) {
            return Outcome{Found::failed, "status"};
        }
        // Laid on the arc that stayed, the clothoid is where it was, and the gap is the shift.
        const bool agrees =
            std::abs(moved - std::abs(shift)) < kRoundedJointTolerance && same_element(again, e.chain[1]);
        return Outcome{agrees ? Found::expected : Found::failed,
                       "shift " + std::to_string(shift) + " gap " + std::to_string(moved)};
    });
}

TEST(MakRAR, RefusesEqualRadiiHoweverFarApartTheCentresAre) {
    Random random(5123);
    for (const double apart : {0.5, 10.0, 1000.0}) {
        Pose pose = random.pose();
        const Calelm r1 = lay(pose, arc(1.0, 100.0, 50.0));
        pose.x += apart;
        const Calelm r2 = lay(pose, arc(1.0, 100.0, 50.0));
        Calelm a = sizes_only(lay(pose, clothoid(1.0, 50.0, 0.0, 100.0)));
        const Calelm before = a;
        double gap = 7.0;
        double angle = 7.0;
        EXPECT_EQ(ali_makRAR(&r1, &a, &r2, &gap, &angle), -1);
        EXPECT_TRUE(identical(a, before));
        EXPECT_EQ(gap, 7.0);
        EXPECT_EQ(angle, 7.0);
    }
}

TEST(MakRAR, RefusesUnlikeTurnsEqualCentresAndNestedOffsetCircles) {
    Random random(5124);
    const Egg e = egg(random);
    double gap = 0.0;
    double angle = 0.0;
    Calelm a = e.a;
    Calelm other = e.r2;
    other.dir = -other.dir;
    EXPECT_EQ(ali_makRAR(&e.r1, &a, &other, &gap, &angle), -1);
    other = e.r2;
    other.k1 = e.r1.k1;
    other.k2 = e.r1.k2;
    EXPECT_EQ(ali_makRAR(&e.r1, &a, &other, &gap, &angle), -1);
    // A clothoid so weak that it demands a greater distance of the circles than they have still has a tangent; circles
    // deep inside one another have none.
    other.k1 += 0.001 * std::abs(e.r1.par - e.r2.par);
    EXPECT_EQ(ali_makRAR(&e.r1, &a, &other, &gap, &angle), -1);
    EXPECT_TRUE(identical(a, e.a));
}

TEST(MakRAR, RefusesARadiusAtTheLimitOfTheParameter) {
    const Calelm r1 = lay_chain({0, 0, 1}, {arc(1.0, 200.0, 50.0)})[0];
    Pose pose = end_of(r1);
    pose.x += 5.0;
    const Calelm r2 = lay_chain(pose, {arc(1.0, 56.0, 30.0)})[0];
    Calelm a{};
    a.par = 100.0;
    const Calelm before = a;
    double gap = 0.0;
    double angle = 0.0;
    EXPECT_EQ(ali_makRAR(&r1, &a, &r2, &gap, &angle), -1);
    EXPECT_TRUE(identical(a, before));
}

struct SCurve {
    std::vector<Calelm> chain;
    Calelm r1, a1, a2, r2;
};

SCurve s_curve(Random& random) {
    const double dir = random.sign();
    const double first = random.radius();
    const double second = first * random.uniform(0.3, 3.0);
    const double a1 = random.parameter(first);
    const double a2 = random.parameter(second);
    SCurve s;
    s.chain =
        lay_chain(random.pose(), {arc(dir, first, some_sweep(random, first)), clothoid(dir, a1, first, 0.0),
                                  clothoid(-dir, a2, 0.0, second), arc(-dir, second, some_sweep(random, second))});
    s.r1 = s.chain[0];
    s.a1 = sizes_only(s.chain[1]);
    s.a2 = sizes_only(s.chain[2]);
    s.r2 = s.chain[3];
    return s;
}

TEST(MakRAAR, FindsTheTwoClothoidsOfAnExactSCurve) {
    sweep(5125, [](Random& random) {
        SCurve s = s_curve(random);
        double gap = -1.0;
        const int status = ali_makRAAR(&s.r1, &s.a1, &s.a2, &s.r2, &gap);
        const std::vector<Calelm> made{s.r1, s.a1, s.a2, s.r2};
        if (status == 0 && !(gap >= 0.0 && gap < kNoGap)) {
            return Outcome{Found::failed, "gap " + std::to_string(gap)};
        }
        return judge(status, made, s.chain, kJointTolerance);
    });
}

TEST(MakRAAR, TellsTheLengthOfAStraightThatLiesBetweenTheClothoids) {
    sweep(5126, [](Random& random) {
        const SCurve s = s_curve(random);
        const double between = random.uniform(0.0, 30.0);
        const auto chain = lay_chain(start_of(s.r1), {shape_of(s.chain[0]), shape_of(s.chain[1]), straight(between),
                                                      shape_of(s.chain[2]), shape_of(s.chain[3])});
        Calelm a1 = s.a1;
        Calelm a2 = s.a2;
        double gap = -1.0;
        const int status = ali_makRAAR(&chain[0], &a1, &a2, &chain[4], &gap);
        const std::vector<Calelm> made{chain[0], a1, chain[2], a2, chain[4]};
        if (std::abs(gap - between) > kNoGap) {
            return Outcome{Found::failed, "gap " + std::to_string(gap)};
        }
        return judge(status, made, chain, kJointTolerance);
    });
}

TEST(MakRAAR, RefusesArcsOfOneTurnAndCirclesThatDoNotLieApart) {
    Random random(5127);
    const SCurve s = s_curve(random);
    Calelm a1 = s.a1;
    Calelm a2 = s.a2;
    double gap = 7.0;
    Calelm other = s.r2;
    other.dir = s.r1.dir;
    EXPECT_EQ(ali_makRAAR(&s.r1, &a1, &a2, &other, &gap), -1);
    other = s.r2;
    other.k1 = s.r1.k1 + s.r1.par + s.r2.par;
    other.k2 = s.r1.k2;
    EXPECT_EQ(ali_makRAAR(&s.r1, &a1, &a2, &other, &gap), -1);
    EXPECT_TRUE(identical(a1, s.a1));
    EXPECT_TRUE(identical(a2, s.a2));
    EXPECT_EQ(gap, 7.0);
}

struct Eased {
    std::vector<Calelm> chain;
    int side = 1;
    Calelm s, a, r;
};

Eased eased(Random& random) {
    const double dir = random.sign();
    const double radius = random.radius();
    const double a = random.parameter(radius);
    const bool straight_first = random.coin();
    const Shape line = straight(random.uniform(5.0, 300.0));
    const Shape curve = arc(dir, radius, some_sweep(random, radius));
    Eased e;
    e.side = straight_first ? 1 : -1;
    e.chain = straight_first ? lay_chain(random.pose(), {line, clothoid(dir, a, 0.0, radius), curve})
                             : lay_chain(random.pose(), {curve, clothoid(dir, a, radius, 0.0), line});
    e.s = e.chain[straight_first ? 0 : 2];
    e.r = e.chain[straight_first ? 2 : 0];
    e.a = sizes_only(e.chain[1]);
    return e;
}

TEST(MakSAR, FindsTheClothoidOfAnExactChainOnEitherSide) {
    sweep(5128, [](Random& random) {
        Eased e = eased(random);
        double gap = -1.0;
        const int status = ali_makSAR(e.side, &e.s, &e.a, &e.r, &gap);
        if (status == 0 && !(gap >= 0.0 && gap < kNoGap)) {
            return Outcome{Found::failed, "gap " + std::to_string(gap)};
        }
        const std::vector<Calelm> made = e.side == 1 ? std::vector{e.s, e.a, e.r} : std::vector{e.r, e.a, e.s};
        return judge(status, made, e.chain, kJointTolerance);
    });
}

TEST(MakSAR, LaysTheClothoidOnTheArcAndTellsTheGapToAParallelStraight) {
    sweep(5129, [](Random& random) {
        const Eased e = eased(random);
        const double shift = random.uniform(-0.3, 0.3);
        Calelm s = e.s;
        for (double* const x : {&s.sx, &s.ex}) {
            *x += shift * std::sin(s.sang);
        }
        for (double* const y : {&s.sy, &s.ey}) {
            *y -= shift * std::cos(s.sang);
        }
        Calelm a = e.a;
        double gap = -1.0;
        const int status = ali_makSAR(e.side, &s, &a, &e.r, &gap);
        const bool agrees =
            status == 0 && std::abs(gap - std::abs(shift)) < kNoGap && same_element(a, e.chain[1], kJointTolerance);
        return Outcome{agrees ? Found::expected : Found::failed, "gap " + std::to_string(gap)};
    });
}

TEST(MakSAR, RefusesAnArcOnTheWrongSideOfTheLine) {
    Random random(5130);
    for (int i = 0; i < 100; ++i) {
        const Eased e = eased(random);
        Calelm r = e.r;
        r.dir = -r.dir;
        Calelm a = e.a;
        double gap = 7.0;
        EXPECT_EQ(ali_makSAR(e.side, &e.s, &a, &r, &gap), -1);
        EXPECT_TRUE(identical(a, e.a));
        EXPECT_EQ(gap, 7.0);
    }
}

TEST(MakSAR, RefusesRecordsOfOtherTypes) {
    Random random(5131);
    const Eased e = eased(random);
    Calelm a = e.a;
    double gap = 0.0;
    EXPECT_EQ(ali_makSAR(e.side, &e.r, &a, &e.r, &gap), -1);
    EXPECT_EQ(ali_makSAR(e.side, &e.s, &a, &e.s, &gap), -1);
    Calelm no_parameter = e.a;
    no_parameter.par = 0.0;
    EXPECT_EQ(ali_makSAR(e.side, &e.s, &no_parameter, &e.r, &gap), -1);
}

TEST(Mak3R4A, FindsTheMiddleArcAndTheFourClothoidsOfAnExactChain) {
    // Where both places of the middle arc give a tangent chain, the outer one is taken: 1 of these cases.
    constexpr int kBothPlaces = 5;
    const auto run = [](Random& random) {
        const double dir = random.sign();
        const double radius1 = random.radius();
        const double radius2 = radius1 * random.uniform(0.4, 2.5);
        const double radius3 = radius1 * random.uniform(0.4, 2.5);
        const double a1 = random.parameter(radius1);
        const double a2 = random.parameter(radius2);
        const double a3 = random.parameter(radius2);
        const double a4 = random.parameter(radius3);
        const auto chain = lay_chain(random.pose(), {arc(dir, radius1, some_sweep(random, radius1)),
                                                     clothoid(dir, a1, radius1, 0.0), clothoid(-dir, a2, 0.0, radius2),
                                                     arc(-dir, radius2, random.arc_length(radius2, 0.1, 1.5)),
                                                     clothoid(-dir, a3, radius2, 0.0), clothoid(dir, a4, 0.0, radius3),
                                                     arc(dir, radius3, some_sweep(random, radius3))});
        // The outer arcs run too far, and nothing is known of the middle one but its size.
        Calelm r1 = extended(chain[0], 0.0, random.uniform(-0.05, 0.05) * radius1);
        Calelm r3 = extended(chain[6], random.uniform(-0.05, 0.05) * radius3, 0.0);
        Calelm r2 = sizes_only(chain[3]);
        if (random.coin()) {
            r2.dir = 0.0; // follows from the outer arcs
        }
        Calelm m1 = sizes_only(chain[1]);
        Calelm m2 = sizes_only(chain[2]);
        Calelm m3 = sizes_only(chain[4]);
        Calelm m4 = sizes_only(chain[5]);
        double gap = -1.0;
        const int status = ali_mak3R4A(&gap, &r1, &m1, &m2, &r2, &m3, &m4, &r3);
        if (status == 0 && !(gap >= 0.0 && gap < kNoGap)) {
            return Outcome{Found::failed, "gap " + std::to_string(gap)};
        }
        return judge(status, std::vector{r1, m1, m2, r2, m3, m4, r3}, chain, kJointTolerance);
    };
    sweep(5132, run, kBothPlaces);
}

TEST(Mak3R4A, TheMiddleArcTurnsAgainstTheOuterOnesUnlessItSaysHow) {
    for (const double dir : {1.0, -1.0}) {
        const auto chain = lay_chain({0, 0, 0.5}, {arc(dir, 100.0, 60.0), clothoid(dir, 60.0, 100.0, 0.0),
                                                   clothoid(-dir, 60.0, 0.0, 120.0), arc(-dir, 120.0, 80.0),
                                                   clothoid(-dir, 60.0, 120.0, 0.0), clothoid(dir, 60.0, 0.0, 100.0),
                                                   arc(dir, 100.0, 60.0)});
        for (const double said : {0.0, -dir}) {
            auto made = chain;
            for (const std::size_t i : {1U, 2U, 3U, 4U, 5U}) {
                made[i] = sizes_only(chain[i]);
            }
            made[3].dir = said;
            double gap = -1.0;
            ASSERT_EQ(ali_mak3R4A(&gap, &made[0], &made[1], &made[2], &made[3], &made[4], &made[5], &made[6]), 0);
            EXPECT_EQ(made[3].dir, -dir);
            EXPECT_TRUE(same_chain(std::vector(made.begin(), made.end()), chain)) << dir << ' ' << said;
        }
    }
}

TEST(Mak3R4A, RefusesOuterArcsOfUnlikeTurnAndAMiddleArcThatTurnsLikeThem) {
    const auto chain = lay_chain({0, 0, 0.5}, {arc(1.0, 100.0, 60.0), clothoid(1.0, 60.0, 100.0, 0.0),
                                               clothoid(-1.0, 60.0, 0.0, 120.0), arc(-1.0, 120.0, 80.0),
                                               clothoid(-1.0, 60.0, 120.0, 0.0), clothoid(1.0, 60.0, 0.0, 100.0),
                                               arc(1.0, 100.0, 60.0)});
    for (const int flipped : {0, 3, 6}) {
        auto given = chain;
        given[static_cast<std::size_t>(flipped)].dir *= -1.0;
        const auto before = given;
        double gap = 7.0;
        EXPECT_EQ(ali_mak3R4A(&gap, &given[0], &given[1], &given[2], &given[3], &given[4], &given[5], &given[6]), -1);
        for (std::size_t i = 0; i < given.size(); ++i) {
            EXPECT_TRUE(identical(given[i], before[i]));
        }
        EXPECT_EQ(gap, 7.0);
    }
}

// Arc, clothoid from infinite radius, arc; `like` says whether the arcs turn alike, `growing` whether the second is the
// sharper. In mode -1 the given arc is the last.
Outcome arc_origin_arc(Random& random, bool given_first, bool like, bool second_sharper) {
    const double dir1 = random.sign();
    const double dir2 = like ? dir1 : -dir1;
    const double sharp = random.radius();
    const double flat = sharp * random.uniform(1.2, 4.0);
    const double radius1 = second_sharper ? flat : sharp;
    const double radius2 = second_sharper ? sharp : flat;
    const double a = random.parameter(sharp);
    const double len1 = some_sweep(random, radius1);
    const double len2 = some_sweep(random, radius2);
    const auto chain =
        lay_chain(random.pose(), {arc(dir1, radius1, len1),
                                  second_sharper ? clothoid(dir2, a, 0.0, radius2) : clothoid(dir1, a, radius1, 0.0),
                                  arc(dir2, radius2, len2)});
    Calelm given = chain[given_first ? 0 : 2];
    Calelm made = sizes_only(chain[given_first ? 2 : 0]);
    made.len = chain[given_first ? 2 : 0].len;
    Calelm m = sizes_only(chain[1]);
    const Calelm& target = chain[given_first ? 2 : 0];
    const Pose on = pose_at(start_of(target), shape_of(target), random.uniform(0.1, 0.9) * target.len);
    const double p[2] = {static_cast<double>(on.x), static_cast<double>(on.y)};
    const int status = ali_makAOR_P(p, given_first ? 1 : 65535, &given, &m, &made);
    const std::vector<Calelm> result = given_first ? std::vector{given, m, made} : std::vector{made, m, given};
    Outcome outcome = judge(status, result, chain, kJointTolerance);
    if (outcome.found == Found::other_valid &&
        std::abs(distance(made.k1, made.k2, p[0], p[1]) - made.par) > kRoundedJointTolerance) {
        outcome.found = Found::failed;
    }
    return outcome;
}

TEST(MakAORP, FindsAnExactChainThroughThePointForLikeAndUnlikeTurnsAndBothModes) {
    // For arcs of one turn both places may give a tangent chain that passes the point: up to 22 of a thousand.
    constexpr int kBothPlaces = 30;
    std::uint64_t seed = 5140;
    for (const bool given_first : {true, false}) {
        for (const bool like : {true, false}) {
            for (const bool second_sharper : {true, false}) {
                SCOPED_TRACE(::testing::Message()
                             << "given first " << given_first << " like " << like << " sharper " << second_sharper);
                sweep(
                    seed++, [&](Random& random) { return arc_origin_arc(random, given_first, like, second_sharper); },
                    like ? kBothPlaces : 0);
            }
        }
    }
}

TEST(MakAORP, WithALengthOf0TheNewArcReachesThePoint) {
    // Both places may give a tangent chain: the one on the side of the given arc is taken.
    constexpr int kBothPlaces = 40;
    const auto run = [](Random& random) {
        const bool given_first = random.coin();
        const double dir = random.sign();
        const double radius2 = random.radius();
        const double radius1 = radius2 * random.uniform(1.2, 4.0);
        const double a = random.parameter(radius2);
        const auto forward =
            lay_chain(random.pose(), {arc(dir, radius1, some_sweep(random, radius1)), clothoid(-dir, a, 0.0, radius2),
                                      arc(-dir, radius2, some_sweep(random, radius2))});
        const auto chain = given_first ? forward : reversed_chain(forward);
        Calelm given = chain[given_first ? 0 : 2];
        Calelm made = sizes_only(chain[given_first ? 2 : 0]);
        Calelm m = sizes_only(chain[1]);
        const double p[2] = {forward[2].ex, forward[2].ey};
        const int status = ali_makAOR_P(p, given_first ? 1 : -1, &given, &m, &made);
        return judge(status, given_first ? std::vector{given, m, made} : std::vector{made, m, given}, chain,
                     kJointTolerance);
    };
    sweep(5150, run, kBothPlaces);
}

// An arc, a clothoid and an arc of a chain in the plane of calculation: the sizes of what is laid behind the first arc.
struct Compound {
    explicit Compound(const std::vector<Calelm>& chain)
        : r1(chain[0]), a(sizes_only(chain[1])), r2(sizes_only(chain[2])) {
        r2.len = chain[2].len;
        for (Calelm* const e : {&r1, &a, &r2}) {
            CDchgSpace(e, e);
        }
    }
    Calelm r1;
    Calelm a;
    Calelm r2;
};

TEST(SetAORP, LaysTheSameChainInTheCalculationPlane) {
    const auto chain =
        lay_chain({0, 0, 0.7}, {arc(1.0, 200.0, 120.0), clothoid(1.0, 80.0, 0.0, 100.0), arc(1.0, 100.0, 60.0)});
    auto [r1, a, r2] = Compound(chain);
    const Pose on = pose_at(start_of(chain[2]), shape_of(chain[2]), 30.0);
    const double p[2] = {static_cast<double>(on.x), -static_cast<double>(on.y)};
    ASSERT_EQ(setAOR_P(p, &r1, &a, &r2), 0);
    EXPECT_NEAR(distance(r1.ex, -r1.ey, chain[1].sx, chain[1].sy), 0.0, kJointTolerance);
    EXPECT_NEAR(distance(a.sx, -a.sy, chain[1].sx, chain[1].sy), 0.0, kJointTolerance);
    EXPECT_NEAR(distance(a.ex, -a.ey, chain[1].ex, chain[1].ey), 0.0, kJointTolerance);
    EXPECT_NEAR(distance(r2.sx, -r2.sy, chain[2].sx, chain[2].sy), 0.0, kJointTolerance);
    EXPECT_NEAR(distance(r2.ex, -r2.ey, chain[2].ex, chain[2].ey), 0.0, kJointTolerance);
    EXPECT_NEAR(distance(r2.k1, -r2.k2, chain[2].k1, chain[2].k2), 0.0, kJointTolerance);
    EXPECT_EQ(a.r1, 0.0);
    EXPECT_EQ(a.r2, 100.0);
}

TEST(SetAORP, RefusesArcsWithoutATurnOrARadius) {
    const auto chain =
        lay_chain({0, 0, 0.7}, {arc(1.0, 200.0, 120.0), clothoid(1.0, 80.0, 0.0, 100.0), arc(1.0, 100.0, 60.0)});
    const double p[2] = {chain[2].ex, -chain[2].ey};
    for (const bool first : {true, false}) {
        for (const bool turn : {true, false}) {
            for (const double none : {0.0, turn ? 0.5 : -100.0, std::nan("")}) {
                auto [r1, a, r2] = Compound(chain);
                Calelm& spoilt = first ? r1 : r2;
                (turn ? spoilt.dir : spoilt.par) = none;
                const Calelm before1 = r1;
                const Calelm before_a = a;
                const Calelm before2 = r2;
                EXPECT_EQ(setAOR_P(p, &r1, &a, &r2), -1) << first << turn << none;
                EXPECT_TRUE(identical(r1, before1) && identical(a, before_a) && identical(r2, before2));
            }
        }
    }
}

TEST(MakAORP, RefusesAPointOutOfReachWithEverythingUnchanged) {
    const auto chain =
        lay_chain({0, 0, 0.7}, {arc(1.0, 200.0, 120.0), clothoid(1.0, 80.0, 0.0, 100.0), arc(1.0, 100.0, 60.0)});
    Calelm r2 = sizes_only(chain[2]);
    r2.len = chain[2].len;
    const double far_off[2] = {chain[0].k1 + 1000.0, chain[0].k2};
    for (const int mode : {1, -1, 65535}) {
        Calelm r1 = chain[0];
        Calelm a = sizes_only(chain[1]);
        Calelm made = r2;
        EXPECT_EQ(static_cast<std::int16_t>(ali_makAOR_P(far_off, mode, &r1, &a, &made)), -1);
        EXPECT_TRUE(identical(r1, chain[0]) && identical(a, sizes_only(chain[1])) && identical(made, r2));
        EXPECT_EQ(setAOR_P(far_off, &r1, &a, &made), -1);
        EXPECT_TRUE(identical(r1, chain[0]) && identical(a, sizes_only(chain[1])) && identical(made, r2));
    }
}

TEST(MakAORP, RefusesArcsWithoutATurnOrALength) {
    const auto chain =
        lay_chain({0, 0, 0.7}, {arc(1.0, 200.0, 120.0), clothoid(1.0, 80.0, 0.0, 100.0), arc(1.0, 100.0, 60.0)});
    const double p[2] = {chain[2].ex, chain[2].ey};
    for (const int mode : {1, -1}) {
        for (const auto& spoil : std::vector<std::function<void(Calelm&, Calelm&)>>{
                 [](Calelm&r1, Calelm&) { r1.dir = 0.0; }, [](Calelm&r1, Calelm&) { r1.dir = 0.5; },
                 [](Calelm&, Calelm&r2) { r2.dir = 0.0; }, [](Calelm&, Calelm&r2) { r2.dir = 2.0; },
                 [](Calelm&, Calelm&r2) { r2.len = -1.0; }, [](Calelm&, Calelm&r2) { r2.len = std::nan(""); }}) {
            Calelm r1 = chain[0];
            Calelm a = sizes_only(chain[1]);
            Calelm r2 = sizes_only(chain[2]);
            r2.len = chain[2].len;
            spoil(r1, r2);
            const Calelm before[3] = {r1, a, r2};
            EXPECT_EQ(ali_makAOR_P(p, mode, &r1, &a, &r2), -1) << mode;
            EXPECT_TRUE(identical(r1, before[0]) && identical(a, before[1]) && identical(r2, before[2])) << mode;
        }
    }
}

// Most points have no chain, and a few only one that the roundings of its elements break.
TEST(MakAORP, OfAnyPointTheAnswerIsAChainOrMinusOne) {
    Random random(5160);
    int done = 0;
    for (int i = 0; i < 3000; ++i) {
        const double dir1 = random.sign();
        const double dir2 = random.sign();
        const double radius1 = random.radius();
        const double radius2 = random.radius();
        const auto chain = lay_chain(random.pose(), {arc(dir1, radius1, some_sweep(random, radius1))});
        Calelm r1 = chain[0];
        Calelm a = sizes_only(lay_chain(random.pose(), {clothoid(dir1, random.parameter(std::min(radius1, radius2)),
                                                                 0.0, std::min(radius1, radius2))})[0]);
        Calelm r2 =
            sizes_only(lay_chain(random.pose(), {arc(dir2, radius2, random.arc_length(radius2, 0.01, 2.9))})[0]);
        r2.len = random.pick(3) == 0 ? 0.0 : random.arc_length(radius2, 0.01, 2.9);
        const double reach = radius1 + 2.0 * radius2;
        const double p[2] = {r1.k1 + random.uniform(-reach, reach), r1.k2 + random.uniform(-reach, reach)};
        const Calelm before[3] = {r1, a, r2};
        const bool given_first = random.coin();
        const int status = ali_makAOR_P(p, given_first ? 1 : -1, &r1, &a, &r2);
        done += status == 0 ? 1 : 0;
        ASSERT_TRUE(status == 0 || status == -1) << i << ' ' << status;
        ASSERT_TRUE(status != 0 || tangent_chain(given_first ? std::vector{r1, a, r2} : std::vector{r2, a, r1})) << i;
        ASSERT_TRUE(status == 0 || (identical(r1, before[0]) && identical(a, before[1]) && identical(r2, before[2])));
    }
    EXPECT_GT(done, 100);
}

} // namespace
