// The way back: a thousand seeded chains are laid exactly, taken apart, and asked for again.
#pragma once

#include "support/exact_chain.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <iostream>
#include <span>
#include <string>
#include <vector>

namespace fenmark::exact {

inline constexpr int kCasesPerSweep = 1000;

enum class Found { expected, other_valid, failed };

struct Outcome {
    Found found = Found::failed;
    std::string why;
    std::vector<double> azimuths = {}; ///< in which the elements of the chain that was taken apart begin
};

/// What a builder gave against the chain that was taken apart: the same, another tangent chain, or a failure.
inline Outcome judge(int status, std::span<const Calelm> made, std::span<const Calelm> expected,
                     double joint = kRoundedJointTolerance) {
    Outcome outcome;
    for (const Calelm& e : expected) {
        outcome.azimuths.push_back(e.sang);
    }
    if (status != 0) {
        outcome.why = "status " + std::to_string(status);
    } else if (const auto tangent = tangent_chain(made, joint); !tangent) {
        outcome.why = std::string("not tangent: ") + tangent.message();
    } else if (const auto same = same_chain(made, expected); !same) {
        outcome.found = Found::other_valid;
        outcome.why = same.message();
    } else {
        outcome.found = Found::expected;
    }
    return outcome;
}

/// Runs the cases, half of them again with the same sizes in another place, such that one joint of the chain heads
/// along an axis or just beside it, and requires the expected chain in all but `other_allowed` of a thousand, where
/// another tangent chain will do.
template <class Case>
void sweep(std::uint64_t seed, Case run, int other_allowed = 0) {
    Random random(seed);
    Random axes(seed + 1);
    int other = 0;
    int failed = 0;
    std::string first_other;
    std::string first_failed;
    int cases = 0;
    const auto count = [&](int i, const Outcome& outcome) {
        ++cases;
        const std::string text = "seed " + std::to_string(seed) + " case " + std::to_string(i) + ": " + outcome.why;
        if (outcome.found == Found::failed && failed++ == 0) {
            first_failed = text;
        }
        if (outcome.found == Found::other_valid && other++ == 0) {
            first_other = text;
        }
    };
    for (int i = 0; i < kCasesPerSweep; ++i) {
        random.head_along_axes(i % 4 == 3);
        Random again = random;
        const Outcome outcome = run(random);
        count(i, outcome);
        if (i % 4 < 2 && !outcome.azimuths.empty()) {
            const auto joint = static_cast<std::size_t>(axes.pick(static_cast<int>(outcome.azimuths.size())));
            again.turn_poses(axes.beside_axis() - outcome.azimuths[joint]);
            count(i, run(again));
        }
    }
    EXPECT_EQ(failed, 0) << first_failed;
    EXPECT_LE(other * kCasesPerSweep, other_allowed * cases) << first_other;
    if (other > 0) {
        std::cout << "  seed " << seed << ": " << other << " of " << cases << " cases gave another tangent chain\n";
    }
    ::testing::Test::RecordProperty("seed", static_cast<int>(seed));
}

} // namespace fenmark::exact
