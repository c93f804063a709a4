// Chains between fixed elements: refitted after a change of the clothoid, and closed by moving an element.
#include <fenmark/alignment/chains.h>

#include <fenmark/alignment/compound.h>
#include <fenmark/alignment/construction.h>
#include <fenmark/alignment/primitives.h>

#include "alignment/primitives/tools.h"
#include "support/sweep.h"

#include <cstdint>
#include <limits>

namespace {

using namespace fenmark::exact;

// A chain one of whose elements was moved: ends rounded to 1e-5 m turn the tangents of a short element, radians.
constexpr double kMovedTangentTolerance = 3e-5;
// The moved centre is rounded to 1e-5 m; across the tangent that counts as often as the offset radii are longer than
// the tangent between them.
constexpr double kMovedGapTolerance = 2e-4;

double some_sweep(Random& random, double radius) {
    return radius * random.uniform(0.1, 2.9);
}

std::vector<Calelm> egg_chain(Random& random) {
    const double dir = random.sign();
    const double small = random.radius();
    const double large = small * random.uniform(1.2, 4.0);
    const bool sharpens = random.coin();
    const double first = sharpens ? large : small;
    const double second = sharpens ? small : large;
    return lay_chain(random.pose(),
                     {arc(dir, first, some_sweep(random, first)), clothoid(dir, random.parameter(small), first, second),
                      arc(dir, second, some_sweep(random, second))});
}

std::vector<Calelm> s_chain(Random& random) {
    const double dir = random.sign();
    const double first = random.radius();
    const double second = first * random.uniform(0.3, 3.0);
    return lay_chain(random.pose(),
                     {arc(dir, first, some_sweep(random, first)), clothoid(dir, random.parameter(first), first, 0.0),
                      clothoid(-dir, random.parameter(second), 0.0, second),
                      arc(-dir, second, some_sweep(random, second))});
}

// Straight, clothoid, arc at side 1, the other way round at any other side.
std::vector<Calelm> eased_chain(Random& random, int side) {
    const double dir = random.sign();
    const double radius = random.radius();
    const auto chain = lay_chain(random.pose(), {straight(random.uniform(50.0, 300.0)),
                                                 clothoid(dir, random.parameter(radius), 0.0, radius),
                                                 arc(dir, radius, some_sweep(random, radius))});
    return side == 1 ? chain : reversed_chain(chain);
}

// The clothoids stand for another parameter than before: as a user changes the chain.
void change_parameter(Random& random, Calelm& a) {
    a.par *= random.uniform(0.9, 1.1);
}

Outcome outcome_of(int status, std::span<const Calelm> chain, double joint, double tangent) {
    if (status != 0) {
        return {Found::failed, "status " + std::to_string(status)};
    }
    const auto result = tangent_chain(chain, joint, tangent);
    return {result ? Found::expected : Found::failed, result.message()};
}

// ---- arc, clothoid, clothoid, arc ----

TEST(AlimakeRfAArf, CutsBothArcsOfAnExactChainAtTheClothoids) {
    sweep(5410, [](Random& random) {
        const auto chain = s_chain(random);
        auto given = chain;
        given[0] = extended(chain[0], 0.0, random.uniform(-0.5, 0.05) * chain[0].len);
        given[3] = extended(chain[3], random.uniform(-0.5, 0.05) * chain[3].len, 0.0);
        given[1] = sizes_only(chain[1]);
        given[2] = sizes_only(chain[2]);
        double dl = 7.0;
        const int status = alimake_rfAArf(given.data(), &dl);
        if (std::abs(dl) > kJointTolerance) {
            return Outcome{Found::failed, "dl " + std::to_string(dl)};
        }
        return judge(status, given, chain, kJointTolerance);
    });
}

TEST(AlimakeRfAArf, TellsTheGapPositiveAlongTheTangentAndNegativeForAnOverlap) {
    sweep(5411, [](Random& random) {
        const auto chain = s_chain(random);
        auto given = chain;
        // The second half moved along the tangent at the inflection.
        const double shift = random.uniform(-0.5, 1.0);
        const double azimuth = chain[1].eang;
        Pose pose = start_of(chain[2]);
        pose.x += shift * std::cos(azimuth);
        pose.y += shift * std::sin(azimuth);
        given[2] = lay(pose, shape_of(chain[2]));
        given[3] = lay(pose, shape_of(chain[3]));
        double dl = 7.0;
        const int status = alimake_rfAArf(given.data(), &dl);
        const bool right = status == 0 && std::abs(dl - shift) < kJointTolerance && joined(given[0], given[1]) &&
                           joined(given[2], given[3]);
        return Outcome{right ? Found::expected : Found::failed,
                       "shift " + std::to_string(shift) + " dl " + std::to_string(dl)};
    });
}

TEST(AlimakeRfAArf, PassesOnTheStatusOfTheClothoidsAndChangesNothing) {
    Random random(5412);
    const auto chain = s_chain(random);
    auto given = chain;
    given[3].dir = given[0].dir;
    const auto before = given;
    double dl = 7.0;
    EXPECT_EQ(alimake_rfAArf(given.data(), &dl), -1);
    EXPECT_EQ(dl, 7.0);
    for (std::size_t i = 0; i < given.size(); ++i) {
        EXPECT_TRUE(identical(given[i], before[i]));
    }
}

TEST(MoveRDl0RfAArf, ClosesTheChainAfterTheParametersHaveChangedWhicheverArcMoves) {
    for (const int side : {1, 2, 0}) {
        SCOPED_TRACE(side);
        sweep(
            5413,
            [side](Random& random) {
                auto chain = s_chain(random);
                const auto original = chain;
                change_parameter(random, chain[1]);
                change_parameter(random, chain[2]);
                double dl = 7.0;
                int status = alimake_rfAArf(chain.data(), &dl);
                if (status != 0) {
                    // A parameter so strong that the offset circles overlap.
                    return Outcome{Found::other_valid, "does not fit"};
                }
                status = moveR_dl0_rfAArf(side, &dl, chain.data());
                if (status != 0 || dl != 0.0) {
                    return Outcome{Found::failed, "not moved"};
                }
                status = alimake_rfAArf(chain.data(), &dl);
                if (std::abs(dl) > kMovedGapTolerance) {
                    return Outcome{Found::failed, "gap left: " + std::to_string(dl)};
                }
                return outcome_of(status, chain, kMovedGapTolerance, kMovedTangentTolerance);
            },
            150);
    }
}

TEST(MoveRDl0RfAArf, EndsWithNoGapOnSuccessAndLeavesItOnFailure) {
    Random random(5414);
    auto chain = s_chain(random);
    double dl = 0.25;
    EXPECT_EQ(moveR_dl0_rfAArf(1, &dl, chain.data()), 0);
    EXPECT_EQ(dl, 0.0);
    dl = 0.25;
    chain[0].type = 1;
    const Calelm before = chain[0];
    EXPECT_EQ(moveR_dl0_rfAArf(2, &dl, chain.data()), -1);
    EXPECT_EQ(dl, 0.25);
    EXPECT_TRUE(identical(chain[0], before));
}

// ---- arc, clothoid, arc ----

TEST(AlimakeRfArf, WithNoGapRefitsBothArcsAndWithAGapOnlyTheFirst) {
    sweep(5420, [](Random& random) {
        const auto chain = egg_chain(random);
        auto given = chain;
        given[0] = extended(chain[0], 0.0, random.uniform(-0.5, 0.05) * chain[0].len);
        given[2] = extended(chain[2], random.uniform(-0.5, 0.05) * chain[2].len, 0.0);
        auto with_gap = given;
        double dl = 0.5;
        const int status_gap = alimake_rfArf(with_gap.data(), &dl);
        if (status_gap != 0 || !identical(with_gap[2], given[2]) || !same_element(with_gap[0], chain[0])) {
            return Outcome{Found::failed, "with a gap"};
        }
        dl = 0.0;
        const int status = alimake_rfArf(given.data(), &dl);
        return judge(status, given, chain, kJointTolerance);
    });
}

TEST(AlimakeRfArf, LaysAnArcFromTheClothoidOnWhenItsOuterEndDoesNotFit) {
    // Laid along a tangent that fell to 0, a long arc is turned by up to 1e-5 and ends some millimetres aside.
    constexpr int kTurnedByAFallenTangent = 5;
    sweep(
        5421,
        [](Random& random) {
            const auto chain = egg_chain(random);
            auto given = chain;
            // The last arc lies elsewhere, turned and moved.
            Pose pose = start_of(chain[2]);
            pose.x += random.uniform(-0.05, 0.05) * chain[2].par;
            pose.azimuth += random.uniform(-0.2, 0.2);
            given[2] = lay(pose, shape_of(chain[2]));
            const auto before = given;
            double dl = 0.0;
            const int status = alimake_rfArf(given.data(), &dl);
            if (distance(chain[1].ex, chain[1].ey, before[2].ex, before[2].ey) > 2.0 * chain[2].par) {
                // No arc of this radius spans from the clothoid to its end.
                return Outcome{status == -1 && all_identical(given, before) ? Found::expected : Found::failed, "span"};
            }
            return judge(status, given, chain, kJointTolerance);
        },
        kTurnedByAFallenTangent);
}

TEST(AlimakeRfArf, AnArcThatCannotSpanFromItsOuterEndToTheClothoidIsLeftAndRefused) {
    const auto chain = lay_chain({-36000, 12000, 0.4},
                                 {arc(1.0, 300.0, 90.0), clothoid(1.0, 110.0, 300.0, 120.0), arc(1.0, 120.0, 80.0)});
    double dl = 0.0;
    for (const std::size_t arc_at : {std::size_t{0}, std::size_t{2}}) {
        for (const bool consumed : {true, false}) {
            auto given = chain;
            Calelm& moved = given[arc_at];
            // The clothoid begins at the arc's very outer end, or further off than the diameter.
            const double off = consumed ? 0.0 : 2.01 * moved.par;
            if (arc_at == 0) {
                moved.sx = chain[1].sx - off;
                moved.sy = chain[1].sy;
            } else {
                moved.ex = chain[1].ex + off;
                moved.ey = chain[1].ey;
            }
            const auto before = given;
            EXPECT_EQ(alimake_rfArf(given.data(), &dl), -1) << arc_at << consumed;
            EXPECT_TRUE(all_identical(given, before)) << arc_at << consumed;
        }
    }
}

TEST(AlimakeRfAArf, AnArcThatCannotSpanFromItsOuterEndToTheClothoidIsLeftAndRefused) {
    const auto chain = lay_chain({-36000, 12000, 0.4}, {arc(1.0, 300.0, 90.0), clothoid(1.0, 150.0, 300.0, 0.0),
                                                        clothoid(-1.0, 90.0, 0.0, 120.0), arc(-1.0, 120.0, 80.0)});
    auto given = chain;
    given[3].ex = chain[2].ex + 2.01 * chain[3].par;
    given[3].ey = chain[2].ey;
    const auto before = given;
    double dl = 0.25;
    EXPECT_EQ(alimake_rfAArf(given.data(), &dl), -1);
    EXPECT_TRUE(all_identical(given, before));
    EXPECT_EQ(dl, 0.25);
}

TEST(MoveRDl0RfArf, LaysTheArcAtTheClothoidWithTheLengthOfTheClothoid) {
    for (const int side : {1, 2, 0}) {
        SCOPED_TRACE(side);
        sweep(5422, [side](Random& random) {
            auto chain = egg_chain(random);
            const auto original = chain;
            change_parameter(random, chain[1]);
            if (ali_makA(&chain[1]) < 0) {
                return Outcome{Found::failed, "no clothoid"};
            }
            double dl = 0.3;
            const int status = moveR_dl0_rfArf(side, &dl, chain.data());
            if (status != 0 || dl != 0.0) {
                return Outcome{Found::failed, "status"};
            }
            const Calelm& laid = chain[side == 1 ? 2 : 0];
            const Calelm& kept = chain[side == 1 ? 0 : 2];
            if (!identical(kept, original[side == 1 ? 0 : 2]) || std::abs(laid.len - chain[1].len) > kJointTolerance) {
                return Outcome{Found::failed, "length"};
            }
            // The clothoid is joined to the arc laid anew, and in the second form to the one that stayed, too.
            const std::vector<Calelm> joined_part =
                side == 1 ? std::vector{chain[1], chain[2]} : std::vector{chain[0], chain[1], chain[2]};
            return outcome_of(0, joined_part, kJointTolerance, kTangentTolerance);
        });
    }
}

TEST(MoveRDl0RfArf, LeavesEverythingWhenAnElementCannotBeBuilt) {
    Random random(5423);
    const auto chain = egg_chain(random);
    for (const int side : {1, 2}) {
        auto given = chain;
        given[side == 1 ? 2 : 0].dir = 0.5;
        const auto before = given;
        double dl = 0.3;
        EXPECT_EQ(moveR_dl0_rfArf(side, &dl, given.data()), -1);
        EXPECT_EQ(dl, 0.3);
        for (std::size_t i = 0; i < given.size(); ++i) {
            EXPECT_TRUE(identical(given[i], before[i]));
        }
    }
}

TEST(AlimakeRfArf, CutsArcsOfAHalfCircleAndMore) {
    sweep(5424, [](Random& random) {
        const double dir = random.sign();
        const double radius1 = random.radius();
        const double radius2 = radius1 * random.uniform(1.2, 3.0);
        const auto loop = [&](double radius) {
            return radius * (random.coin() ? std::numbers::pi : random.uniform(3.2, 5.5));
        };
        const auto chain = lay_chain(random.pose(), {arc(dir, radius1, loop(radius1)),
                                                     clothoid(dir, random.parameter(radius1), radius1, radius2),
                                                     arc(dir, radius2, loop(radius2))});
        auto given = chain;
        given[0] = extended(chain[0], 0.0, random.uniform(0.0, 0.1) * chain[0].len);
        given[2] = extended(chain[2], random.uniform(0.0, 0.1) * chain[2].len, 0.0);
        const double dl = 0.0;
        const int status = alimake_rfArf(given.data(), &dl);
        return judge(status, given, chain, kJointTolerance);
    });
}

// ---- straight, clothoid, arc ----

TEST(AlimakeRfAsf, CutsTheStraightAndTheArcOfAnExactChain) {
    for (const int side : {1, 2, 0}) {
        SCOPED_TRACE(side);
        sweep(5430, [side](Random& random) {
            const auto chain = eased_chain(random, side);
            auto given = chain;
            given[0] = extended(chain[0], 0.0, random.uniform(-0.5, 0.05) * chain[0].len);
            given[2] = extended(chain[2], random.uniform(-0.5, 0.05) * chain[2].len, 0.0);
            const int status = alimake_rfAsf(given.data(), 0.0, side);
            return judge(status, given, chain, kJointTolerance);
        });
    }
}

TEST(AlimakeRfAsf, TellsMinus3WhenTheStraightAndMinus2WhenTheArcHadToTurn) {
    for (const int side : {1, 2}) {
        Random random(5431);
        const auto chain = eased_chain(random, side);
        const std::size_t line = side == 1 ? 0 : 2;
        for (const std::size_t turned : {line, 2 - line}) {
            auto given = chain;
            // Turned about the far end, so that the joint no longer fits.
            Pose pose = turned == 0 ? start_of(chain[0]) : start_of(chain[2]);
            pose.azimuth += 0.01;
            given[turned] = lay(pose, shape_of(chain[turned]));
            EXPECT_EQ(static_cast<int16_t>(alimake_rfAsf(given.data(), 0.0, side)), turned == line ? -3 : -2);
            EXPECT_TRUE(tangent_chain(given, kRoundedJointTolerance));
        }
    }
}

TEST(AlimakeRfAsf, LeavesTheStraightWhereItIsWhenThereIsAGap) {
    Random random(5432);
    const auto chain = eased_chain(random, 1);
    auto given = chain;
    given[0] = extended(chain[0], 0.0, -10.0);
    const Calelm before = given[0];
    EXPECT_EQ(alimake_rfAsf(given.data(), 0.5, 1), 0);
    EXPECT_EQ(given[0].ex, before.ex);
    EXPECT_EQ(given[0].ey, before.ey);
}

TEST(AlimakeRfAsf, FailsWithEverythingUnchangedWhenTheArcCannotBeBuilt) {
    Random random(5433);
    auto given = eased_chain(random, 1);
    given[2].ex = given[2].sx + 3.0 * given[2].par;
    given[0] = extended(given[0], 0.0, -10.0);
    const auto before = given;
    EXPECT_EQ(static_cast<int16_t>(alimake_rfAsf(given.data(), 0.0, 1)), -1);
    for (std::size_t i = 0; i < given.size(); ++i) {
        EXPECT_TRUE(identical(given[i], before[i]));
    }
}

TEST(MoveRDl0RfAsf, ClosesTheChainAfterTheParameterHasChangedWhicheverElementMoves) {
    for (const int element_side : {1, 2}) {
        for (const int mover_side : {1, 2}) {
            SCOPED_TRACE(::testing::Message() << "element " << element_side << " mover " << mover_side);
            sweep(5434, [=](Random& random) {
                auto chain = eased_chain(random, element_side);
                change_parameter(random, chain[1]);
                const std::size_t line = element_side == 1 ? 0 : 2;
                double dl = 0.0;
                if (ali_makSAR(element_side, &chain[line], &chain[1], &chain[2 - line], &dl) != 0) {
                    return Outcome{Found::failed, "no clothoid"};
                }
                // A gap of less than 1e-5 m has no direction.
                if (dl < 1e-4) {
                    return Outcome{Found::expected, {}};
                }
                const int status = moveR_dl0_rfAsf(mover_side, element_side, &dl, chain.data());
                if (dl != 0.0) {
                    return Outcome{Found::failed, "dl " + std::to_string(dl)};
                }
                // -3 and -2 say that an element was laid anew: the chain is as tangent.
                const bool reported =
                    status == 0 || static_cast<int16_t>(status) == -2 || static_cast<int16_t>(status) == -3;
                return outcome_of(reported ? 0 : status, chain, kRoundedJointTolerance, kMovedTangentTolerance);
            });
        }
    }
}

TEST(MoveRDl0RfAsf, ClosesFlatChainsWhoseArcBeginsFarFromAShortStraight) {
    // The rounded ends of a moved straight turn it, and a large clothoid puts the foot of the arc's centre
    // hundreds of metres beyond them.
    Random random(5437);
    int solvable = 0;
    for (int i = 0; i < 3000; ++i) {
        const int element_side = random.coin() ? 1 : 2;
        const int mover_side = random.coin() ? 1 : 2;
        const double dir = random.sign();
        const double radius = random.uniform(1000.0, 5000.0);
        const auto laid = lay_chain(random.pose(), {straight(random.uniform(10.0, 300.0)),
                                                    clothoid(dir, radius / random.uniform(0.6, 3.0), 0.0, radius),
                                                    arc(dir, radius, some_sweep(random, radius))});
        auto chain = element_side == 1 ? laid : reversed_chain(laid);
        chain[1].par *= random.uniform(0.98, 1.02);
        const std::size_t line = element_side == 1 ? 0 : 2;
        double dl = 0.0;
        if (ali_makSAR(element_side, &chain[line], &chain[1], &chain[2 - line], &dl) != 0 || dl < 1e-4) {
            continue;
        }
        ++solvable;
        const double gap = dl;
        const auto before = chain;
        const int status = static_cast<int16_t>(moveR_dl0_rfAsf(mover_side, element_side, &dl, chain.data()));
        EXPECT_NE(status, -1) << "case " << i << ": R " << radius << ", A " << before[1].par << ", straight "
                              << before[line].len << " m, gap " << gap << " m, sides " << mover_side << " "
                              << element_side;
    }
    EXPECT_GT(solvable, 2900);
}

TEST(MoveRDl0RfAsf, FailsWithNothingChangedForAGapThatIsNotThatOfTheChain) {
    Random random(5435);
    auto chain = eased_chain(random, 1);
    chain[1].par *= 1.05;
    double gap = 0.0;
    ASSERT_EQ(ali_makSAR(1, &chain[0], &chain[1], &chain[2], &gap), 0);
    const auto before = chain;
    for (const double dl : {0.0, 10.0 * gap, std::numeric_limits<double>::quiet_NaN()}) {
        double given = dl;
        EXPECT_EQ(static_cast<int16_t>(moveR_dl0_rfAsf(1, 1, &given, chain.data())), -1);
        for (std::size_t i = 0; i < chain.size(); ++i) {
            EXPECT_TRUE(identical(chain[i], before[i]));
        }
    }
}

// ---- ARmakRR ----

TEST(CircleCross, TouchingCirclesGiveOnePointTwice) {
    double p[2] = {0.0, 0.0};
    double q[2] = {0.0, 0.0};
    EXPECT_EQ(fenmark::alignment::circleCross(0.0, 0.0, 100.0, 150.0, 0.0, 50.0, p, q), 1);
    EXPECT_NEAR(p[0], 100.0, kJointTolerance);
    EXPECT_NEAR(p[1], 0.0, kJointTolerance);
    EXPECT_EQ(p[0], q[0]);
    EXPECT_EQ(p[1], q[1]);
}

Calelm in_calculation_plane(const Calelm& e) {
    Calelm out{};
    CDchgSpace(&e, &out);
    return out;
}

Outcome arc_inside_arc(Random& random, int mode, bool like) {
    // arc 1, clothoid, arc 2, arc 3; arc 2 lies inside arc 3. Mode -1 joins arcs of one turn alone.
    const double dir2 = random.sign();
    const double dir1 = like ? dir2 : -dir2;
    const double radius2 = random.radius();
    const bool second_sharper = random.coin();
    const double radius1 = second_sharper ? radius2 * random.uniform(1.2, 4.0) : radius2 * random.uniform(0.3, 0.85);
    const double radius3 = radius2 * random.uniform(1.2, 4.0);
    const double sharp = std::min(radius1, radius2);
    const double a = random.parameter(sharp);
    const double dir_a = second_sharper ? dir2 : dir1;
    const Shape ease = mode != 0        ? clothoid(dir_a, a, radius1, radius2)
                       : second_sharper ? clothoid(dir_a, a, 0.0, radius2)
                                        : clothoid(dir_a, a, radius1, 0.0);
    const auto chain = lay_chain(random.pose(), {arc(dir1, radius1, some_sweep(random, radius1)), ease,
                                                 arc(dir2, radius2, random.arc_length(radius2, 0.1, 1.5)),
                                                 arc(dir2, radius3, some_sweep(random, radius3))});
    Calelm arc1 = in_calculation_plane(chain[0]);
    Calelm arc3 = in_calculation_plane(chain[3]);
    Calelm arc2 = sizes_only(chain[2]);
    if (random.coin()) {
        arc2.dir = 0.0; // follows from arc 3
    }
    Calelm m = sizes_only(chain[1]);
    const int status = ARmakRR(mode, &arc1, &arc3, &arc2, &m);
    if (status != 0) {
        return {Found::failed, "status " + std::to_string(status)};
    }
    std::vector<Calelm> made{in_calculation_plane(arc1), in_calculation_plane(m), in_calculation_plane(arc2),
                             in_calculation_plane(arc3)};
    for (Calelm& e : made) {
        e.type = &e == &made[1] ? std::int16_t{3} : std::int16_t{2};
        const Calelm laid = e;
        const int built = ali_mak(&e, 0);
        // A chord turned by less than 1.389e-6 counts as not turned, which carries the sharp end of the clothoid along.
        if (built != 0 && !(built == 2 && distance(laid.ex, laid.ey, e.ex, e.ey) < kJointTolerance + 1.4e-6 * e.len &&
                            distance(laid.sx, laid.sy, e.sx, e.sy) < kJointTolerance + 1.4e-6 * e.len)) {
            return {Found::failed, "cannot be built: " + describe(laid)};
        }
        e.sx = laid.sx;
        e.sy = laid.sy;
        e.ex = laid.ex;
        e.ey = laid.ey;
    }
    return judge(0, made, chain, kJointTolerance);
}

TEST(ARmakRR, FindsTheArcInsideAnotherThatAClothoidJoinsToAThird) {
    // Where both places give a tangent chain, either is right.
    constexpr int kBothPlaces = 20;
    std::uint64_t seed = 5440;
    for (const int mode : {0, -1, 65535}) {
        SCOPED_TRACE(mode);
        sweep(
            seed++, [mode](Random& random) { return arc_inside_arc(random, mode, true); }, kBothPlaces);
    }
    sweep(
        seed, [](Random& random) { return arc_inside_arc(random, 0, false); }, kBothPlaces);
}

TEST(ARmakRR, RefusesUnlikeTurnsBetweenFiniteRadiiAndAThirdArcInsideTheSecond) {
    const auto chain = lay_chain({0, 0, 1}, {arc(1.0, 200.0, 80.0), clothoid(1.0, 60.0, 200.0, 80.0),
                                             arc(1.0, 80.0, 60.0), arc(1.0, 150.0, 90.0)});
    const Calelm given1 = in_calculation_plane(chain[0]);
    const Calelm given3 = in_calculation_plane(chain[3]);
    struct Given {
        double dir1 = 1.0;
        double dir2 = 1.0;
        double dir3 = 1.0;
        double radius1 = 200.0;
        double radius2 = 80.0;
    };
    const auto refused = [&](const Given& given) {
        Calelm arc1 = given1;
        arc1.dir = given.dir1;
        arc1.par = given.radius1;
        Calelm arc3 = given3;
        arc3.dir = given.dir3;
        const Calelm before3 = arc3;
        Calelm arc2 = sizes_only(chain[2]);
        arc2.dir = given.dir2;
        arc2.par = given.radius2;
        Calelm a = sizes_only(chain[1]);
        const Calelm before1 = arc1;
        const Calelm before2 = arc2;
        const Calelm before_a = a;
        const int status = ARmakRR(-1, &arc1, &arc3, &arc2, &a);
        return static_cast<std::int16_t>(status) == -1 && identical(arc1, before1) && identical(arc2, before2) &&
               identical(arc3, before3) && identical(a, before_a);
    };
    const Given bad[] = {{.dir1 = -1.0},
                         {.dir1 = 0.0},
                         {.dir2 = -1.0},
                         {.dir3 = -1.0},
                         {.dir3 = 0.0},
                         {.radius1 = 0.0},
                         {.radius1 = -20.0},
                         {.radius2 = 0.0},
                         {.radius2 = -8.0},
                         {.radius2 = 300.0},
                         {.dir2 = 0.0, .dir3 = 0.0}};
    for (const Given& given : bad) {
        EXPECT_TRUE(refused(given)) << given.dir1 << ' ' << given.dir2 << ' ' << given.dir3 << ' ' << given.radius1
                                    << ' ' << given.radius2;
    }
    EXPECT_FALSE(refused({}));
    EXPECT_FALSE(refused({.dir2 = 0.0})) << "it follows from arc 3";
}

// Radii above 600 times the parameter: the series puts that end 17 mm away, on the clothoid's origin.
TEST(ARmakRR, AnEndThatTheSeriesTakesForTheOriginIsRefused) {
    for (const bool flat_first : {true, false}) {
        const double flat = 9868.0;
        const auto chain =
            lay_chain({0, 0, 1}, {arc(1.0, flat_first ? flat : 45.0, 60.0),
                                  clothoid(1.0, 13.0, flat_first ? flat : 45.0, flat_first ? 45.0 : flat),
                                  arc(1.0, flat_first ? 45.0 : flat, 60.0), arc(1.0, 2.0 * flat, 90.0)});
        Calelm arc1 = in_calculation_plane(chain[0]);
        Calelm arc3 = in_calculation_plane(chain[3]);
        Calelm arc2 = sizes_only(chain[2]);
        Calelm a = sizes_only(chain[1]);
        const Calelm before[4] = {arc1, a, arc2, arc3};
        EXPECT_EQ(static_cast<std::int16_t>(ARmakRR(-1, &arc1, &arc3, &arc2, &a)), -1) << flat_first;
        EXPECT_TRUE(identical(arc1, before[0]) && identical(a, before[1]) && identical(arc2, before[2]) &&
                    identical(arc3, before[3]));
    }
}

TEST(ARmakRR, TakesRadiiOfLessThanACentimetre) {
    for (const double size : {1.0, 1e-2, 1e-4}) {
        const auto chain = lay_chain(
            {0, 0, 1}, {arc(1.0, 80.0 * size, 80.0 * size), clothoid(1.0, 60.0 * size, 80.0 * size, 200.0 * size),
                        arc(1.0, 200.0 * size, 60.0 * size), arc(1.0, 450.0 * size, 90.0 * size)});
        Calelm arc1 = in_calculation_plane(chain[0]);
        Calelm arc3 = in_calculation_plane(chain[3]);
        Calelm arc2 = sizes_only(chain[2]);
        Calelm a = sizes_only(chain[1]);
        EXPECT_EQ(static_cast<std::int16_t>(ARmakRR(-1, &arc1, &arc3, &arc2, &a)), 0) << size;
    }
}

} // namespace
