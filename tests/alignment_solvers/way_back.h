// The way back: a chain is laid exactly, its outer elements are handed over with the sizes of the rest, and the solver
// must return a tangent chain, in nearly all cases that very chain.
#pragma once

#include "support/sweep.h"

#include <fenmark/alignment.h>

#include <optional>
#include <string>
#include <vector>

namespace fenmark::way_back {

using exact::Pose;
using exact::Random;
using exact::Shape;

using exact::kCasesPerSweep;
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

/// The solver's answer against the chain that was laid: a refusal, a chain that is not tangent, a given far end that
/// moved and another size are failures.
inline exact::Outcome judge(const Case& given, const Answer& answer) {
    exact::Outcome outcome;
    for (const Calelm& e : given.chain) {
        outcome.azimuths.push_back(e.sang);
    }
    if (status16(answer.status) != 0) {
        outcome.why = "refused:";
        for (const Calelm& e : given.chain) {
            outcome.why += "\n  " + exact::describe(e);
        }
        return outcome;
    }
    if (const auto tangent = exact::tangent_chain(answer.chain); !tangent) {
        outcome.why = tangent.message();
    } else if (!given_ends_kept(given, answer.chain)) {
        outcome.why = "a given far end moved\n  " + exact::describe(given.first) + "\n  " +
                      exact::describe(answer.chain.front()) + "\n  " + exact::describe(given.last) + "\n  " +
                      exact::describe(answer.chain.back());
    }
    bool same = true;
    for (std::size_t i = 0; i < given.chain.size(); ++i) {
        const Calelm& laid = given.chain[i];
        const Calelm& found = answer.chain[i];
        if (found.type != laid.type || (found.type != exact::kStraightType && found.par != laid.par)) {
            outcome.why += "another size\n  " + exact::describe(found);
        }
        same = same && in_place(laid, found);
    }
    if (outcome.why.empty()) {
        outcome.found = same ? exact::Found::expected : exact::Found::other_valid;
    }
    return outcome;
}

/// Sweeps a solver. `make` lays a case, or nothing where the random sizes leave no chain; `solve` passes it to the solver.
/// At least `least_expected` of each thousand must be the chain that was laid, and no case may fail.
template <typename Make, typename Solve>
void run(const std::string& name, std::uint64_t seed, Make make, Solve solve, int least_expected = kCasesPerSweep) {
    constexpr int kAttempts = 100;
    SCOPED_TRACE(name);
    exact::sweep(
        seed,
        [&](Random& random) {
            for (int attempt = 0; attempt < kAttempts; ++attempt) {
                if (const std::optional<Case> given = make(random)) {
                    return judge(*given, solve(*given));
                }
            }
            return exact::Outcome{exact::Found::failed, "the generator leaves too few chains"};
        },
        kCasesPerSweep - least_expected);
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
