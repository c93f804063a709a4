// Every function that makes a chain behind one shape, with good input: the tangent solvers, and the builders that refit a
// chain, lay one, or lead one through a point.
#pragma once

#include "alignment_solvers/all_solvers.h"

#include <fenmark/alignment.h>

#include <functional>
#include <string>
#include <vector>

namespace fenmark::absurd {

using namespace exact;

/// A function that makes a chain, with good input that can be spoilt: `run` takes records and a point, leaves the chain
/// among the records, and returns the status.
struct Maker {
    std::string name;
    std::vector<Calelm> records;
    std::function<int(std::vector<Calelm>&, const double*)> run;
    double p[2];
    /// Whether a success must leave a tangent chain; the refits of a chain with a gap do not.
    bool makes_chain = true;
    /// The chain among the records as indexes in the order of travel; empty where that is their own order.
    std::vector<int> order = {};
    /// Whether it answers with 0 or -1 alone.
    bool one_failure = false;
    /// Whether the point matters.
    bool takes_point = false;
    /// Other records of the same kinds; empty where `records` are the only ones.
    std::function<std::vector<Calelm>(Random&)> others = {};
};

inline std::vector<Maker> builders() {
    const auto egg = lay_chain({10, 20, 1}, {arc(1, 200, 120), clothoid(1, 80, 200, 100), arc(1, 100, 60)});
    const auto s =
        lay_chain({10, 20, 2}, {arc(1, 200, 120), clothoid(1, 90, 200, 0), clothoid(-1, 80, 0, 150), arc(-1, 150, 60)});
    const auto eased = lay_chain({10, 20, 3}, {straight(70), clothoid(-1, 80, 0, 150), arc(-1, 150, 60)});
    const auto pair = lay_chain({10, 20, 4}, {arc(1, 100, 60), arc(-1, 120, 60)});
    const auto tangent = lay_chain({10, 20, 5}, {arc(1, 100, 60), straight(40)});
    const auto tangent_arc = lay_chain({10, 20, 5}, {straight(40), arc(1, 100, 60)});
    const auto long_s =
        lay_chain({10, 20, 0.5}, {arc(1, 100, 60), clothoid(1, 60, 100, 0), clothoid(-1, 60, 0, 120), arc(-1, 120, 80),
                                  clothoid(-1, 60, 120, 0), clothoid(1, 60, 0, 100), arc(1, 100, 60)});
    const auto origin = lay_chain({10, 20, 1}, {arc(1, 200, 120), clothoid(1, 80, 0, 100), arc(1, 100, 60)});
    const auto end_of_last = [](const std::vector<Calelm>& chain, Maker b) {
        b.records = chain;
        b.p[0] = chain.back().ex;
        b.p[1] = chain.back().ey;
        b.takes_point = b.name.find("_P") != std::string::npos;
        return b;
    };
    std::vector<Maker> all;
    const auto add = [&](const char* name, const std::vector<Calelm>& chain,
                         std::function<int(std::vector<Calelm>&, const double*)> run, bool makes_chain = true) {
        all.push_back(end_of_last(chain, {name, {}, std::move(run), {0, 0}, makes_chain}));
    };
    // A value that the function gives beside the chain.
    static double out1;
    static double out2;
    add(
        "ali_makRAR", egg, [](auto& r, const double*) { return ali_makRAR(&r[0], &r[1], &r[2], &out1, &out2); }, false);
    add(
        "ali_makRAAR", s, [](auto& r, const double*) { return ali_makRAAR(&r[0], &r[1], &r[2], &r[3], &out1); }, false);
    add(
        "ali_makSAR", eased, [](auto& r, const double*) { return ali_makSAR(1, &r[0], &r[1], &r[2], &out1); }, false);
    add("ali_mak3R4A", long_s,
        [](auto& r, const double*) { return ali_mak3R4A(&out1, &r[0], &r[1], &r[2], &r[3], &r[4], &r[5], &r[6]); });
    add("ali_makAOR_P", origin, [](auto& r, const double* p) { return ali_makAOR_P(p, 1, &r[0], &r[1], &r[2]); });
    add("ali_makrS_P", tangent, [](auto& r, const double* p) { return ali_makrS_P(p, 1, &r[0], &r[1]); });
    add("ali_makrR_P", pair, [](auto& r, const double* p) { return ali_makrR_P(p, 1, &r[0], &r[1]); });
    add("ali_makrR_P_S", pair, [](auto& r, const double* p) { return ali_makrR_P_S(p, 1, &r[1], &r[0]); });
    add("ali_makrAR_P", egg,
        [](auto& r, const double* p) { return ali_makrAR_P(p, 1, &r[0], &r[1], &r[2], &out1, &out2); });
    add("ali_makrAAR_P", s,
        [](auto& r, const double* p) { return ali_makrAAR_P(p, 1, &r[0], &r[1], &r[2], &r[3], &out1); });
    add("ali_maksR_P", tangent_arc, [](auto& r, const double* p) { return ali_maksR_P(p, 1, &r[0], &r[1]); });
    add("ali_maksAR_P", eased, [](auto& r, const double* p) { return ali_maksAR_P(p, 1, &r[0], &r[1], &r[2]); });
    add(
        "alimake_rfAArf", s, [](auto& r, const double*) { return alimake_rfAArf(r.data(), &out1); }, false);
    add(
        "alimake_rfArf", egg,
        [](auto& r, const double*) {
            out1 = 0.0;
            return alimake_rfArf(r.data(), &out1);
        },
        false);
    add(
        "alimake_rfAsf", eased, [](auto& r, const double*) { return alimake_rfAsf(r.data(), 0.0, 1); }, false);
    add(
        "moveR_dl0_rfAArf", s,
        [](auto& r, const double*) {
            out1 = 0.1;
            return moveR_dl0_rfAArf(1, &out1, r.data());
        },
        false);
    add(
        "moveR_dl0_rfArf", egg,
        [](auto& r, const double*) {
            out1 = 0.1;
            return moveR_dl0_rfArf(1, &out1, r.data());
        },
        false);
    add(
        "moveR_dl0_rfAsf", eased,
        [](auto& r, const double*) {
            out1 = 0.1;
            return moveR_dl0_rfAsf(1, 1, &out1, r.data());
        },
        false);
    // The straight of makrAS_P lies before the arc, the point at its start.
    all.push_back({"ali_makrAS_P",
                   eased,
                   [](auto& r, const double* p) { return ali_makrAS_P(p, 1, &r[2], &r[1], &r[0]); },
                   {eased[0].sx, eased[0].sy}});
    all.back().takes_point = true;
    return all;
}

// The tangent solvers, each with the first random records that it can join.
inline std::vector<Maker> solvers() {
    constexpr int kAttempts = 20000;
    std::vector<Maker> all;
    for (const way_back::Solver& solver : way_back::all_solvers()) {
        Random random(20260502);
        std::vector<Calelm> good;
        for (int attempt = 0; attempt < kAttempts && good.empty(); ++attempt) {
            const auto records = way_back::random_records(random, solver);
            auto joined = records;
            if (solver.call(joined) == 0) {
                good = records;
            }
        }
        EXPECT_FALSE(good.empty()) << solver.name;
        all.push_back({.name = solver.name,
                       .records = good,
                       .run = [call = solver.call](auto& r, const double*) { return call(r); },
                       .p = {0, 0},
                       .order = solver.order,
                       .one_failure = true,
                       .others = [solver](Random& any) { return way_back::random_records(any, solver); }});
    }
    return all;
}

inline std::vector<Maker> all_makers() {
    std::vector<Maker> all = builders();
    for (Maker& solver : solvers()) {
        all.push_back(std::move(solver));
    }
    return all;
}

} // namespace fenmark::absurd
