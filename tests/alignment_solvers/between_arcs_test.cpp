// Arcs, straights and clothoids between two arcs.
#include "way_back.h"

namespace {

using namespace fenmark;
using exact::arc;
using exact::clothoid;
using exact::straight;
using way_back::Answer;
using way_back::Case;
using way_back::more_arc;
using way_back::Random;
using way_back::to_make;

// The outer arcs are handed over longer towards the middle.
Case given_arcs(Random& random, std::vector<Calelm> chain) {
    const Calelm& first = chain.front();
    const Calelm& last = chain.back();
    const Calelm longer1 = way_back::handed(first, 0.0, more_arc(random, first.par, first.k3));
    const Calelm longer2 = way_back::handed(last, more_arc(random, last.par, last.k3), 0.0);
    return Case{std::move(chain), longer1, longer2};
}

double outer_sweep(Random& random) {
    return random.uniform(0.1, 1.7);
}

TEST(RmakRR, FindsTheArcAgainInAllSenses) {
    for (const double sense1 : {1.0, -1.0}) {
        for (const double sense2 : {1.0, -1.0}) {
            way_back::run(
                "R between R and R, senses " + std::to_string(static_cast<int>(sense1)) + " " +
                    std::to_string(static_cast<int>(sense2)),
                20260301,
                [&](Random& random) -> std::optional<Case> {
                    const double R1 = random.radius(), R2 = random.radius(), R3 = random.radius();
                    if (std::abs(R1 - R3) < 0.5 || std::abs(R2 - R3) < 0.5) {
                        return std::nullopt;
                    }
                    const double dir = random.sign();
                    return given_arcs(
                        random, exact::lay_chain(random.pose(), {arc(dir * sense1, R1, R1 * outer_sweep(random)),
                                                                 arc(dir, R3, R3 * random.uniform(0.1, 2.8)),
                                                                 arc(dir * sense2, R2, R2 * outer_sweep(random))}));
                },
                [](const Case& given) {
                    Calelm r1 = given.first, r2 = given.last, r3 = to_make(given.chain[1]);
                    r3.dir = given.chain[1].dir;
                    const int status = ali_RmakRR(&r1, &r2, &r3);
                    return Answer{status, {r1, r3, r2}};
                },
                exact::kCasesPerSweep);
        }
    }
}

TEST(SmakRR, FindsTheStraightAgainInAllSenses) {
    for (const double relation : {1.0, -1.0}) {
        way_back::run(
            std::string("S between R and R, ") + (relation > 0 ? "same sense" : "other sense"), 20260302,
            [&](Random& random) {
                const double R1 = random.radius(), R2 = random.radius();
                const double dir = random.sign();
                return std::optional(given_arcs(
                    random, exact::lay_chain(random.pose(), {arc(dir, R1, R1 * outer_sweep(random)),
                                                             straight(random.uniform(1.0, 400.0)),
                                                             arc(dir * relation, R2, R2 * outer_sweep(random))})));
            },
            [](const Case& given) {
                Calelm r1 = given.first, r2 = given.last, s = to_make(given.chain[1]);
                const int status = ali_SmakRR(&r1, &r2, &s);
                return Answer{status, {r1, s, r2}};
            });
    }
}

TEST(ARmakRR, FindsTheEasedArcAgainOnBothSides) {
    for (const int side : {-1, 1}) {
        way_back::run(
            "R, A between R and R, side " + std::to_string(side), 20260303,
            [&](Random& random) -> std::optional<Case> {
                const double R1 = random.radius(), R2 = random.radius(), R3 = random.radius();
                const double A = random.parameter(std::min(R1, R3));
                const double dir = random.sign();
                if (std::abs(R1 - R3) < 0.5 || std::abs(R2 - R3) < 0.5) {
                    return std::nullopt;
                }
                auto chain =
                    exact::lay_chain(random.pose(), {arc(dir, R1, R1 * outer_sweep(random)), clothoid(dir, A, R1, R3),
                                                     arc(dir, R3, R3 * random.uniform(0.1, 2.0)),
                                                     arc(dir, R2, R2 * outer_sweep(random))});
                if (side == 1) {
                    chain = exact::reversed_chain(chain);
                }
                return given_arcs(random, std::move(chain));
            },
            [&](const Case& given) {
                Calelm r1 = given.first, r2 = given.last;
                Calelm r3 = to_make(given.chain[side == -1 ? 2 : 1]), a = to_make(given.chain[side == -1 ? 1 : 2]);
                const int status = ali_ARmakRR(side, -1, &r1, &r2, &r3, &a);
                return side == -1 ? Answer{status, {r1, a, r3, r2}} : Answer{status, {r1, r3, a, r2}};
            },
            exact::kCasesPerSweep);
    }
}

// The clothoid of mode 0 or -1 between two arcs of travel.
exact::Shape easing(int mode, double A, double dir1, double r1, double dir2, double r2) {
    if (mode == -1) {
        return clothoid(dir1, A, r1, r2);
    }
    return r1 < r2 ? clothoid(dir1, A, r1, 0.0) : clothoid(dir2, A, 0.0, r2);
}

TEST(ARAmakRR, FindsTheChainAgainInAllModesAndSenses) {
    for (const int mode1 : {0, -1}) {
        for (const int mode2 : {0, -1}) {
            for (const double sense1 : {1.0, -1.0}) {
                for (const double sense2 : {1.0, -1.0}) {
                    if ((mode1 == -1 && sense1 < 0.0) || (mode2 == -1 && sense2 < 0.0)) {
                        continue;
                    }
                    way_back::run(
                        "A, R, A between R and R, modes " + std::to_string(mode1) + " " + std::to_string(mode2) +
                            ", senses " + std::to_string(static_cast<int>(sense1)) + " " +
                            std::to_string(static_cast<int>(sense2)),
                        20260304,
                        [&](Random& random) -> std::optional<Case> {
                            const double R1 = random.radius(), R2 = random.radius(), R3 = random.radius();
                            const double A1 = random.parameter(std::min(R1, R3));
                            const double A2 = random.parameter(std::min(R2, R3));
                            const double dir = random.sign();
                            if (std::abs(R1 - R3) < 0.5 || std::abs(R2 - R3) < 0.5) {
                                return std::nullopt;
                            }
                            return given_arcs(
                                random,
                                exact::lay_chain(random.pose(), {arc(dir * sense1, R1, R1 * outer_sweep(random)),
                                                                 easing(mode1, A1, dir * sense1, R1, dir, R3),
                                                                 arc(dir, R3, R3 * random.uniform(0.1, 2.0)),
                                                                 easing(mode2, A2, dir, R3, dir * sense2, R2),
                                                                 arc(dir * sense2, R2, R2 * outer_sweep(random))}));
                        },
                        [&](const Case& given) {
                            Calelm r1 = given.first, r2 = given.last;
                            Calelm a1 = to_make(given.chain[1]), r3 = to_make(given.chain[2]),
                                   a2 = to_make(given.chain[3]);
                            r3.dir = given.chain[2].dir;
                            const int status = ali_ARAmakRR(mode1, mode2, &r1, &r2, &a1, &r3, &a2);
                            return Answer{status, {r1, a1, r3, a2, r2}};
                        },
                        940);
                }
            }
        }
    }
}

TEST(SAmakRR, FindsTheEasedStraightAgainOnBothSidesAndInBothSenses) {
    for (const int side : {1, -1}) {
        for (const double relation : {1.0, -1.0}) {
            way_back::run(
                "S, A between R and R, side " + std::to_string(side) +
                    (relation > 0 ? ", same sense" : ", other sense"),
                20260305,
                [&](Random& random) {
                    const double R1 = random.radius(), R2 = random.radius();
                    const double dir = random.sign();
                    const double A = random.parameter(R2);
                    auto chain = exact::lay_chain(random.pose(), {arc(dir, R1, R1 * outer_sweep(random)),
                                                                  straight(random.uniform(1.0, 400.0)),
                                                                  clothoid(dir * relation, A, 0, R2),
                                                                  arc(dir * relation, R2, R2 * outer_sweep(random))});
                    if (side != 1) {
                        chain = exact::reversed_chain(chain);
                    }
                    return std::optional(given_arcs(random, std::move(chain)));
                },
                [&](const Case& given) {
                    // On the other side the chain begins with the second arc.
                    Calelm r1 = side == 1 ? given.first : given.last, r2 = side == 1 ? given.last : given.first;
                    Calelm s = to_make(given.chain[side == 1 ? 1 : 2]), a = to_make(given.chain[side == 1 ? 2 : 1]);
                    const int status = ali_SAmakRR(side, &r1, &r2, &s, &a);
                    return side == 1 ? Answer{status, {r1, s, a, r2}} : Answer{status, {r2, a, s, r1}};
                });
        }
    }
}

TEST(ASAmakRR, FindsTheStraightEasedAtBothEndsAgainInBothSenses) {
    for (const double relation : {1.0, -1.0}) {
        way_back::run(
            std::string("A, S, A between R and R, ") + (relation > 0 ? "same sense" : "other sense"), 20260306,
            [&](Random& random) {
                const double R1 = random.radius(), R2 = random.radius();
                const double dir = random.sign();
                const double A1 = random.parameter(R1), A2 = random.parameter(R2);
                return std::optional(given_arcs(
                    random, exact::lay_chain(random.pose(),
                                             {arc(dir, R1, R1 * outer_sweep(random)), clothoid(dir, A1, R1, 0),
                                              straight(random.uniform(1.0, 400.0)), clothoid(dir * relation, A2, 0, R2),
                                              arc(dir * relation, R2, R2 * outer_sweep(random))})));
            },
            [](const Case& given) {
                Calelm r1 = given.first, r2 = given.last;
                Calelm a1 = to_make(given.chain[1]), s = to_make(given.chain[2]), a2 = to_make(given.chain[3]);
                const int status = ali_ASAmakRR(&r1, &r2, &a1, &s, &a2);
                return Answer{status, {r1, a1, s, a2, r2}};
            });
    }
}

} // namespace
