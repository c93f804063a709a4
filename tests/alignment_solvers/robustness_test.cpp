// What a solver may never do: report a chain that is not tangent, or change records on a failure.
#include "all_solvers.h"

#include <iostream>

namespace {

using namespace fenmark;
using exact::all_identical;
using exact::Random;
using way_back::random_records;
using way_back::Solver;

constexpr int kRandomCases = 4000;

::testing::AssertionResult right_chain(const Solver& solver, const std::vector<Calelm>& before,
                                       const std::vector<Calelm>& after) {
    const auto given = way_back::travelled(solver, before);
    const auto chain = way_back::travelled(solver, after);
    if (auto result = exact::tangent_chain(chain); !result) {
        return result;
    }
    for (std::size_t i = 0; i < chain.size(); ++i) {
        if (chain[i].type != exact::kStraightType && chain[i].par != given[i].par) {
            return ::testing::AssertionFailure() << "another size: " << exact::describe(chain[i]);
        }
    }
    const Calelm &first = chain.front(), &last = chain.back();
    if (exact::distance(first.sx, first.sy, given.front().sx, given.front().sy) > exact::kJointTolerance ||
        std::abs(exact::angle_difference(first.sang, given.front().sang)) > exact::kTangentTolerance ||
        exact::distance(last.ex, last.ey, given.back().ex, given.back().ey) > exact::kJointTolerance ||
        std::abs(exact::angle_difference(last.eang, given.back().eang)) > exact::kTangentTolerance) {
        return ::testing::AssertionFailure() << "a given far end moved";
    }
    return ::testing::AssertionSuccess();
}

TEST(TangentSolvers, EverySuccessOnRandomElementsIsATangentChainAndEveryFailureLeavesAllRecords) {
    constexpr std::uint64_t kSeed = 20260501;
    SCOPED_TRACE(kSeed);
    for (const Solver& solver : way_back::all_solvers()) {
        Random random(kSeed);
        int found = 0;
        for (int i = 0; i < kRandomCases; ++i) {
            const auto before = random_records(random, solver);
            auto after = before;
            const int status = solver.call(after);
            if (status == 0) {
                ++found;
                ASSERT_TRUE(right_chain(solver, before, after)) << solver.name << ", case " << i;
            } else {
                ASSERT_EQ(-1, status) << solver.name << ", case " << i;
                ASSERT_TRUE(all_identical(before, after)) << solver.name << ", case " << i;
            }
        }
        std::cout << solver.name << ", seed " << kSeed << ": " << found << " chains in " << kRandomCases << " cases\n";
        EXPECT_GT(found, 0) << solver.name;
    }
}

TEST(TangentSolvers, GivenRecordsOfAnotherTypeFail) {
    for (const Solver& solver : way_back::all_solvers()) {
        Random random(7);
        auto records = random_records(random, solver);
        for (const int type : {0, 3, 4, -1}) {
            auto wrong = records;
            wrong[0].type = static_cast<std::int16_t>(type);
            const auto before = wrong;
            EXPECT_EQ(-1, solver.call(wrong)) << solver.name;
            EXPECT_TRUE(all_identical(before, wrong)) << solver.name;
        }
    }
}

TEST(TangentSolvers, RadiusOfZeroInAGivenArcFails) {
    for (const Solver& solver : way_back::all_solvers()) {
        if (solver.second_type != exact::kArcType) {
            continue;
        }
        Random random(8);
        for (int i = 0; i < 200; ++i) {
            auto records = random_records(random, solver);
            records[1].par = 0.0;
            EXPECT_EQ(-1, solver.call(records)) << solver.name;
        }
    }
}

TEST(TangentSolvers, SizesOfZeroFail) {
    for (const Solver& solver : way_back::all_solvers()) {
        Random random(9);
        for (int i = 0; i < 200; ++i) {
            auto records = random_records(random, solver);
            bool sized = false;
            for (std::size_t j = 2; j < records.size(); ++j) {
                sized = sized || records[j].type != exact::kStraightType;
                records[j].par = 0.0;
            }
            if (sized) {
                EXPECT_EQ(-1, solver.call(records)) << solver.name;
            }
        }
    }
}

} // namespace
