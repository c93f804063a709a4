// An arc, an eased arc and a long chain between a straight and an arc.
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

// Chains are laid with the straight first; the other side is the same chain travelled the other way.
Case from_the_side(int side, std::vector<Calelm> chain, Calelm first, Calelm last) {
    Case given{std::move(chain), first, last};
    if (side == 1) {
        given.chain = exact::reversed_chain(given.chain);
        given.first = exact::reversed(last);
        given.last = exact::reversed(first);
    }
    return given;
}

std::optional<Case> arc_chain(Random& random, int side, double relation) {
    const double r = random.radius();
    const double R = random.radius();
    const double dir = random.sign();
    if (std::abs(R - r) < 0.5) {
        return std::nullopt;
    }
    const double sweep = random.uniform(0.1, 1.7);
    auto chain =
        exact::lay_chain(random.pose(), {straight(random.uniform(5.0, 200.0)),
                                         arc(dir, r, r * random.uniform(0.1, 2.6)), arc(dir * relation, R, R * sweep)});
    const Calelm first = way_back::handed(chain[0], 0.0, random.uniform(0.0, 50.0));
    const Calelm last = way_back::handed(chain[2], more_arc(random, R, sweep), 0.0);
    return from_the_side(side, std::move(chain), first, last);
}

Answer solve_arc(const Case& given, int side) {
    Calelm s = side == -1 ? given.first : given.last;
    Calelm r1 = side == -1 ? given.last : given.first;
    Calelm r2 = to_make(given.chain[1]);
    const int status = ali_RmakSR(side, &s, &r1, &r2);
    return side == -1 ? Answer{status, {s, r2, r1}} : Answer{status, {r1, r2, s}};
}

TEST(RmakSR, FindsTheArcAgainOnBothSidesAndInBothSenses) {
    for (const int side : {-1, 1}) {
        for (const double relation : {1.0, -1.0}) {
            way_back::run(
                "R between S and R, side " + std::to_string(side) + (relation > 0 ? ", same sense" : ", other sense"),
                20260201, [&](Random& random) { return arc_chain(random, side, relation); },
                [&](const Case& given) { return solve_arc(given, side); }, 980);
        }
    }
}

std::optional<Case> eased_chain(Random& random, int side, int mode, double relation) {
    const double r = random.radius();
    const double R = random.radius();
    const double dir = random.sign();
    const double A = random.parameter(std::min(r, R));
    if (std::abs(R - r) < 1.0 || std::abs(exact::station_of(A, R) - exact::station_of(A, r)) < 1.0) {
        return std::nullopt;
    }
    const double sweep = random.uniform(0.1, 1.7);
    // Mode 0: from infinite radius at the flatter arc to the sharper one, which gives the clothoid its sense.
    const bool new_is_sharper = r < R;
    const double flat = mode == 0 ? 0.0 : -1.0;
    const double r1 = new_is_sharper ? r : (flat == 0.0 ? 0.0 : r);
    const double r2 = new_is_sharper ? (flat == 0.0 ? 0.0 : R) : R;
    const double sense = new_is_sharper ? dir : dir * relation;
    auto chain = exact::lay_chain(random.pose(),
                                  {straight(random.uniform(5.0, 200.0)), arc(dir, r, r * random.uniform(0.1, 2.0)),
                                   clothoid(sense, A, r1, r2), arc(dir * relation, R, R * sweep)});
    const Calelm first = way_back::handed(chain[0], 0.0, random.uniform(0.0, 50.0));
    const Calelm last = way_back::handed(chain[3], more_arc(random, R, sweep), 0.0);
    return from_the_side(side, std::move(chain), first, last);
}

Answer solve_eased(const Case& given, int side, int mode) {
    Calelm s = side == -1 ? given.first : given.last;
    Calelm r = side == -1 ? given.last : given.first;
    Calelm r1 = to_make(given.chain[side == -1 ? 1 : 2]);
    Calelm a = to_make(given.chain[side == -1 ? 2 : 1]);
    const int status = ali_RAmakSR(side, mode, &s, &r, &r1, &a);
    return side == -1 ? Answer{status, {s, r1, a, r}} : Answer{status, {r, a, r1, s}};
}

TEST(RAmakSR, FindsTheEasedArcAgainOnBothSidesInBothModesAndSenses) {
    for (const int side : {-1, 1}) {
        for (const int mode : {0, -1}) {
            for (const double relation : {1.0, -1.0}) {
                if (mode == -1 && relation < 0.0) {
                    continue;
                }
                way_back::run(
                    "R, A between S and R, side " + std::to_string(side) + ", mode " + std::to_string(mode) +
                        (relation > 0 ? ", same sense" : ", other sense"),
                    20260202, [&](Random& random) { return eased_chain(random, side, mode, relation); },
                    [&](const Case& given) { return solve_eased(given, side, mode); }, 960);
            }
        }
    }
}

std::optional<Case> long_chain(Random& random, int side, double relation) {
    const double r = random.radius(15.0, 500.0);
    const double R = random.radius(15.0, 500.0);
    const double dir = random.sign();
    const double A1 = random.parameter(r), A2 = random.parameter(r), A3 = random.parameter(R);
    const double sweep = random.uniform(0.1, 1.7);
    auto chain =
        exact::lay_chain(random.pose(), {straight(random.uniform(5.0, 200.0)), clothoid(dir, A1, 0, r),
                                         arc(dir, r, r * random.uniform(0.1, 2.0)), clothoid(dir, A2, r, 0),
                                         clothoid(dir * relation, A3, 0, R), arc(dir * relation, R, R * sweep)});
    const Calelm first = way_back::handed(chain[0], 0.0, random.uniform(0.0, 50.0));
    const Calelm last = way_back::handed(chain[5], more_arc(random, R, sweep), 0.0);
    return from_the_side(side == 1 ? -1 : 1, std::move(chain), first, last);
}

Answer solve_long(const Case& given, int side) {
    const bool forward = side == 1;
    const auto& c = given.chain;
    Calelm s = forward ? given.first : given.last;
    Calelm r = forward ? given.last : given.first;
    Calelm a1 = to_make(c[forward ? 1 : 4]), r1 = to_make(c[forward ? 2 : 3]);
    Calelm a2 = to_make(c[forward ? 3 : 2]), a3 = to_make(c[forward ? 4 : 1]);
    const int status = ali_ARAAmakSR(side, &s, &r, &a1, &r1, &a2, &a3);
    return forward ? Answer{status, {s, a1, r1, a2, a3, r}} : Answer{status, {r, a3, a2, r1, a1, s}};
}

TEST(ARAAmakSR, FindsTheLongChainAgainOnBothSidesAndInBothSenses) {
    for (const int side : {1, -1}) {
        for (const double relation : {1.0, -1.0}) {
            way_back::run(
                "A, R, A, A between S and R, side " + std::to_string(side) +
                    (relation > 0 ? ", same sense" : ", other sense"),
                20260203, [&](Random& random) { return long_chain(random, side, relation); },
                [&](const Case& given) { return solve_long(given, side); }, 930);
        }
    }
}

// Where curves to both sides would do, the first arc turns to the side of S on which R begins; on its line to the left.
TEST(ARAAmakSR, TurnsFirstToTheSideOnWhichTheArcBegins) {
    Random random(20260204);
    SCOPED_TRACE(random.trace());
    int asked_for = 0;
    for (int i = 0; i < 2000; ++i) {
        const std::optional<Case> given = long_chain(random, 1, random.sign());
        if (!given) {
            continue;
        }
        const Calelm& s = given->first;
        const Calelm& r = given->last;
        // y grows to the right.
        const double right = (s.ex - s.sx) * (r.sy - s.sy) - (s.ey - s.sy) * (r.sx - s.sx);
        const double asked = right > 0.0 ? -1.0 : 1.0;
        if (given->chain[2].dir != asked || std::abs(right) < 1.0) {
            continue;
        }
        const Answer answer = solve_long(*given, 1);
        if (answer.status == 0) {
            ++asked_for;
            EXPECT_EQ(asked, answer.chain[2].dir) << i;
        }
    }
    EXPECT_GT(asked_for, 300);
}

} // namespace
