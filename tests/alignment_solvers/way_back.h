// The way back: a chain is laid exactly, its outer elements are handed over with the sizes of the rest, and the solver
// must return a tangent chain, in nearly all cases that very chain.
#pragma once

#include "support/exact_chain.h"

#include <fenmark/alignment.h>

#include <iostream>
#include <optional>
#include <string>
#include <vector>

namespace fenmark::way_back {

using exact::Pose;
using exact::Random;
using exact::Shape;

inline constexpr int kCaseCount = 1000;
// A chain found again: ends agree to a millimetre where the geometry is well conditioned. Nearly parallel lines and
// nearly concentric arcs carry the last digits of the series further along the elements.
inline constexpr double kSamePlace = 1e-3;
inline constexpr double kSameTangent = 1e-4;

/// One exact chain and what is handed over in place of its first and last element.
struct Case {
    std::vector<Calelm> chain;
    Calelm first;
    Calelm last;
};

/// What the solver made of a case: its status, and the whole chain in the order of travel.
struct Answer {
    int status = 0;
    std::vector<Calelm> chain;
};

inline int status16(int status) {
    return static_cast<std::int16_t>(status);
}

/// As a caller has a record: built by the library from its ends.
inline Calelm built(Calelm e) {
    EXPECT_EQ(0, status16(ali_mak(&e, 0))) << exact::describe(e);
    return e;
}

/// What a solver is to make: type and size alone.
inline Calelm to_make(const Calelm& e) {
    Calelm out{};
    out.type = e.type;
    out.par = e.par;
    return out;
}

inline bool in_place(const Calelm& a, const Calelm& b) {
    return static_cast<bool>(exact::same_element(a, b, kSamePlace, kSameTangent));
}

inline bool given_ends_kept(const Case& given, const std::vector<Calelm>& chain) {
    const Calelm& first = chain.front();
    const Calelm& last = chain.back();
    return exact::distance(first.sx, first.sy, given.first.sx, given.first.sy) <= exact::kJointTolerance &&
           std::abs(exact::angle_difference(first.sang, given.first.sang)) <= exact::kTangentTolerance &&
           exact::distance(last.ex, last.ey, given.last.ex, given.last.ey) <= exact::kJointTolerance &&
           std::abs(exact::angle_difference(last.eang, given.last.eang)) <= exact::kTangentTolerance;
}

/// What a run found.
struct Tally {
    int cases = 0;
    int expected = 0;
    int refused = 0;
    int broken = 0;
};

/// Runs one case and counts it; the first two of each kind that must not be are told.
template <typename Solve>
void judge(const Case& given, Solve solve, Tally& tally) {
    ++tally.cases;
    const Answer answer = solve(given);
    if (status16(answer.status) != 0) {
        if (++tally.refused <= 2) {
            std::string text;
            for (const Calelm& e : given.chain) {
                text += "\n  " + exact::describe(e);
            }
            ADD_FAILURE() << "case " << tally.cases << " refused: " << text;
        }
        return;
    }
    std::string wrong;
    if (auto tangent = exact::tangent_chain(answer.chain); !tangent) {
        wrong = tangent.message();
    } else if (!given_ends_kept(given, answer.chain)) {
        wrong = "a given far end moved\n  " + exact::describe(given.first) + "\n  " +
                exact::describe(answer.chain.front()) + "\n  " + exact::describe(given.last) + "\n  " +
                exact::describe(answer.chain.back());
    }
    bool same = true;
    for (std::size_t i = 0; i < given.chain.size(); ++i) {
        const Calelm& laid = given.chain[i];
        const Calelm& found = answer.chain[i];
        if (found.type != laid.type || (found.type != exact::kStraightType && found.par != laid.par)) {
            wrong += "another size\n  " + exact::describe(found);
        }
        same = same && in_place(laid, found);
    }
    if (!wrong.empty()) {
        if (++tally.broken <= 2) {
            ADD_FAILURE() << "case " << tally.cases << ": " << wrong;
        }
        return;
    }
    tally.expected += same ? 1 : 0;
}

/// Runs a thousand seeded cases, then half as many of the same sizes in other places, such that one joint of each chain heads
/// along an axis or just beside it. `make` lays a case, or nothing where the random sizes leave no chain; `solve` hands
/// it to the solver. Every success must be a tangent chain of the given sizes with the given far ends; at least
/// `least_expected` of each thousand must be the chain that was laid, and no case may fail.
template <typename Make, typename Solve>
void run(const std::string& name, std::uint64_t seed, Make make, Solve solve, int least_expected = kCaseCount) {
    SCOPED_TRACE(name + ", seed " + std::to_string(seed));
    for (const bool along_axes : {false, true}) {
        const int count = along_axes ? kCaseCount / 2 : kCaseCount;
        Random random(seed);
        Random axes(seed + 1);
        Tally tally;
        for (int attempt = 0; tally.cases < count && attempt < 100 * count; ++attempt) {
            Random again = random;
            std::optional<Case> given = make(random);
            if (given && along_axes) {
                const auto joint = static_cast<std::size_t>(axes.pick(static_cast<int>(given->chain.size())));
                again.turn_poses(axes.beside_axis() - given->chain[joint].sang);
                given = make(again);
            }
            if (given) {
                judge(*given, solve, tally);
            }
        }
        std::cout << name << (along_axes ? ", along the axes" : "") << ", seed " << seed << ": " << tally.cases
                  << " cases, " << tally.expected << " as laid, "
                  << tally.cases - tally.expected - tally.refused - tally.broken << " another valid chain, "
                  << tally.refused << " refused, " << tally.broken << " broken\n";
        EXPECT_EQ(count, tally.cases) << "the generator leaves too few chains";
        EXPECT_EQ(0, tally.refused);
        EXPECT_EQ(0, tally.broken);
        EXPECT_GE(tally.expected * kCaseCount, least_expected * count);
    }
}

/// Every arc of a chain that the library builds from its ends stays below half a circle.
inline constexpr double kMostSweep = 3.0;
/// Given arcs may be handed over longer than that, as long as what is left of them is not.
inline constexpr double kMostGivenSweep = 5.5;

/// How much longer an arc of a chain is handed over than the chain keeps of it, metres.
inline double more_arc(Random& random, double radius, double sweep) {
    const bool beyond_half_a_circle = random.pick(4) == 0;
    const double most = beyond_half_a_circle ? kMostGivenSweep - sweep : std::min(1.2, kMostSweep - sweep);
    return radius * random.uniform(0.0, std::max(0.0, most));
}

/// A given element, longer by so many metres before its start and after its end: as the library builds it, or exactly
/// where it is more than half a circle.
inline Calelm handed(const Calelm& e, double before, double after) {
    const Calelm longer = exact::extended(e, before, after);
    return longer.type == exact::kArcType && longer.k3 > kMostSweep ? longer : built(longer);
}

} // namespace fenmark::way_back
