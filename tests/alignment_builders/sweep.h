// A thousand seeded cases of one builder: each chain is laid exactly, taken apart, and asked for again.
#pragma once

#include "support/exact_chain.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <iostream>
#include <span>
#include <string>

namespace fenmark::exact {

inline constexpr int cases_per_sweep = 1000;

enum class Found { expected, other_valid, failed };

struct Outcome {
    Found found = Found::failed;
    std::string why;
};

/// What a builder gave against the chain that was taken apart: the same, another tangent chain, or a failure.
inline Outcome judge(int status, std::span<const Calelm> made, std::span<const Calelm> expected,
                     double joint = rounded_joint_tolerance) {
    if (status != 0) {
        return {Found::failed, "status " + std::to_string(status)};
    }
    if (const auto tangent = tangent_chain(made, joint); !tangent) {
        return {Found::failed, std::string("not tangent: ") + tangent.message()};
    }
    if (const auto same = same_chain(made, expected); !same) {
        return {Found::other_valid, same.message()};
    }
    return {Found::expected, {}};
}

/// Runs the cases, a quarter of them heading along the axes, and requires the expected chain in all but `other_allowed`
/// of them, where another tangent chain will do.
template <class Case>
void sweep(std::uint64_t seed, Case run, int other_allowed = 0) {
    Random random(seed);
    int other = 0;
    int failed = 0;
    std::string first_other;
    std::string first_failed;
    for (int i = 0; i < cases_per_sweep; ++i) {
        random.head_along_axes(i % 4 == 3);
        const Outcome outcome = run(random);
        const std::string text = "seed " + std::to_string(seed) + " case " + std::to_string(i) + ": " + outcome.why;
        if (outcome.found == Found::failed && failed++ == 0) {
            first_failed = text;
        }
        if (outcome.found == Found::other_valid && other++ == 0) {
            first_other = text;
        }
    }
    EXPECT_EQ(failed, 0) << first_failed;
    EXPECT_LE(other, other_allowed) << first_other;
    if (other > 0) {
        std::cout << "  seed " << seed << ": " << other << " of " << cases_per_sweep
                  << " cases gave another tangent chain\n";
    }
    ::testing::Test::RecordProperty("seed", static_cast<int>(seed));
}

/// A record that is not a number in one of its fields, in turn: for tests that bad input ends in a status.
inline constexpr int field_count = 14;
inline void spoil(Calelm& e, int field, double value) {
    double* const fields[field_count] = {&e.sx, &e.sy,  &e.ex,   &e.ey,   &e.dir, &e.par, &e.r1,
                                         &e.r2, &e.len, &e.sang, &e.eang, &e.k1,  &e.k2,  &e.k3};
    *fields[field] = value;
}

} // namespace fenmark::exact
