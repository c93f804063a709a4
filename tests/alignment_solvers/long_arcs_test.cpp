// Given arcs of which more than a half circle stays, as in the loops of an interchange. The library builds no such arc
// from its ends, so it is completed about its centre.
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

// The longest arc that is handed over, radians.
constexpr double kLongestGiven = 6.1;

double loop_sweep(Random& random) {
    return random.uniform(std::numbers::pi + 0.02, 5.8);
}

double some_sweep(Random& random) {
    return random.coin() ? loop_sweep(random) : random.uniform(0.1, 1.7);
}

double more(Random& random, const Calelm& given) {
    return given.par * random.uniform(0.0, kLongestGiven - given.k3);
}

// Two outer arcs, at least one of them a loop, longer towards the middle than the chain keeps of them.
Case given_arcs(Random& random, std::vector<Calelm> chain) {
    const Calelm first = way_back::handed(chain.front(), 0.0, more(random, chain.front()));
    const Calelm last = way_back::handed(chain.back(), more(random, chain.back()), 0.0);
    return Case{std::move(chain), first, last};
}

TEST(LongArcs, AStraightJoinsLoops) {
    for (const double relation : {1.0, -1.0}) {
        way_back::run(
            std::string("S between loops, ") + (relation > 0 ? "same sense" : "other sense"), 20260401,
            [&](Random& random) {
                const double R1 = random.radius(), R2 = random.radius();
                const double dir = random.sign();
                return std::optional(given_arcs(
                    random, exact::lay_chain(random.pose(), {arc(dir, R1, R1 * loop_sweep(random)),
                                                             straight(random.uniform(1.0, 400.0)),
                                                             arc(dir * relation, R2, R2 * some_sweep(random))})));
            },
            [](const Case& given) {
                Calelm r1 = given.first, r2 = given.last, s = to_make(given.chain[1]);
                const int status = ali_SmakRR(&r1, &r2, &s);
                return Answer{status, {r1, s, r2}};
            });
    }
}

TEST(LongArcs, AnEasedStraightJoinsLoopsOnBothSides) {
    for (const int side : {1, -1}) {
        for (const double relation : {1.0, -1.0}) {
            way_back::run(
                "S, A between loops, side " + std::to_string(side) + (relation > 0 ? ", same sense" : ", other sense"),
                20260402,
                [&](Random& random) {
                    const double R1 = random.radius(), R2 = random.radius();
                    const double dir = random.sign();
                    auto chain = exact::lay_chain(random.pose(), {arc(dir, R1, R1 * some_sweep(random)),
                                                                  straight(random.uniform(1.0, 400.0)),
                                                                  clothoid(dir * relation, random.parameter(R2), 0, R2),
                                                                  arc(dir * relation, R2, R2 * loop_sweep(random))});
                    if (side != 1) {
                        chain = exact::reversed_chain(chain);
                    }
                    return std::optional(given_arcs(random, std::move(chain)));
                },
                [&](const Case& given) {
                    Calelm r1 = side == 1 ? given.first : given.last, r2 = side == 1 ? given.last : given.first;
                    Calelm s = to_make(given.chain[side == 1 ? 1 : 2]), a = to_make(given.chain[side == 1 ? 2 : 1]);
                    const int status = ali_SAmakRR(side, &r1, &r2, &s, &a);
                    return side == 1 ? Answer{status, {r1, s, a, r2}} : Answer{status, {r2, a, s, r1}};
                });
        }
    }
}

TEST(LongArcs, AStraightEasedAtBothEndsJoinsLoops) {
    for (const double relation : {1.0, -1.0}) {
        way_back::run(
            std::string("A, S, A between loops, ") + (relation > 0 ? "same sense" : "other sense"), 20260403,
            [&](Random& random) {
                const double R1 = random.radius(), R2 = random.radius();
                const double dir = random.sign();
                return std::optional(given_arcs(
                    random, exact::lay_chain(random.pose(), {arc(dir, R1, R1 * loop_sweep(random)),
                                                             clothoid(dir, random.parameter(R1), R1, 0),
                                                             straight(random.uniform(1.0, 400.0)),
                                                             clothoid(dir * relation, random.parameter(R2), 0, R2),
                                                             arc(dir * relation, R2, R2 * some_sweep(random))})));
            },
            [](const Case& given) {
                Calelm r1 = given.first, r2 = given.last;
                Calelm a1 = to_make(given.chain[1]), s = to_make(given.chain[2]), a2 = to_make(given.chain[3]);
                const int status = ali_ASAmakRR(&r1, &r2, &a1, &s, &a2);
                return Answer{status, {r1, a1, s, a2, r2}};
            });
    }
}

TEST(LongArcs, AnArcJoinsLoops) {
    // Both places of the new arc may do; the one that leaves less than a half circle of the given arcs comes first.
    for (const double sense : {1.0, -1.0}) {
        way_back::run(
            "R between loops, sense " + std::to_string(static_cast<int>(sense)), 20260404,
            [&](Random& random) -> std::optional<Case> {
                const double R1 = random.radius(), R2 = random.radius(), R3 = random.radius();
                if (std::abs(R1 - R3) < 0.5 || std::abs(R2 - R3) < 0.5) {
                    return std::nullopt;
                }
                const double dir = random.sign();
                return given_arcs(random,
                                  exact::lay_chain(random.pose(), {arc(dir * sense, R1, R1 * loop_sweep(random)),
                                                                   arc(dir, R3, R3 * random.uniform(0.1, 2.8)),
                                                                   arc(dir, R2, R2 * some_sweep(random))}));
            },
            [](const Case& given) {
                Calelm r1 = given.first, r2 = given.last, r3 = to_make(given.chain[1]);
                r3.dir = given.chain[1].dir;
                const int status = ali_RmakRR(&r1, &r2, &r3);
                return Answer{status, {r1, r3, r2}};
            },
            900);
    }
}

TEST(LongArcs, ALongChainEndsInALoopOnBothSides) {
    for (const int side : {1, -1}) {
        way_back::run(
            "A, R, A, A between S and a loop, side " + std::to_string(side), 20260405,
            [&](Random& random) {
                const double r = random.radius(15.0, 500.0);
                const double R = random.radius(15.0, 500.0);
                const double dir = random.sign();
                const double relation = random.sign();
                auto chain = exact::lay_chain(
                    random.pose(), {straight(random.uniform(5.0, 200.0)), clothoid(dir, random.parameter(r), 0, r),
                                    arc(dir, r, r * random.uniform(0.1, 2.0)), clothoid(dir, random.parameter(r), r, 0),
                                    clothoid(dir * relation, random.parameter(R), 0, R),
                                    arc(dir * relation, R, R * loop_sweep(random))});
                const Calelm first = way_back::handed(chain[0], 0.0, random.uniform(0.0, 50.0));
                const Calelm last = way_back::handed(chain[5], more(random, chain[5]), 0.0);
                Case given{std::move(chain), first, last};
                if (side != 1) {
                    given.chain = exact::reversed_chain(given.chain);
                    given.first = exact::reversed(last);
                    given.last = exact::reversed(first);
                }
                return std::optional(std::move(given));
            },
            [&](const Case& given) {
                const bool forward = side == 1;
                const auto& c = given.chain;
                Calelm s = forward ? given.first : given.last;
                Calelm r = forward ? given.last : given.first;
                Calelm a1 = to_make(c[forward ? 1 : 4]), r1 = to_make(c[forward ? 2 : 3]);
                Calelm a2 = to_make(c[forward ? 3 : 2]), a3 = to_make(c[forward ? 4 : 1]);
                const int status = ali_ARAAmakSR(side, &s, &r, &a1, &r1, &a2, &a3);
                return forward ? Answer{status, {s, a1, r1, a2, a3, r}} : Answer{status, {r, a3, a2, r1, a1, s}};
            },
            850); // a chain that leaves less than a half circle comes first
    }
}

TEST(LongArcs, AShortArcIsNotLengthenedToALoop) {
    // The tangent point lies a little before the start of the first arc: only a loop would reach it.
    const std::vector<Calelm> chain =
        exact::lay_chain({0, 0, 1}, {arc(1.0, 100.0, 80.0), straight(150.0), arc(1.0, 200.0, 120.0)});
    const Calelm first = exact::extended(chain[0], -90.0, 30.0);
    Calelm r1 = first, r2 = chain[2], s{};
    EXPECT_EQ(-1, ali_SmakRR(&r1, &r2, &s));
    EXPECT_TRUE(exact::identical(first, r1));
    EXPECT_TRUE(exact::identical(chain[2], r2));
}

} // namespace
