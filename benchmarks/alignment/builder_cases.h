// Chains of survey size for the benchmarks of the builders: seeded, laid by the library's own construction functions.
#pragma once

#include "support/random.h"

#include <fenmark/alignment.h>

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <vector>

namespace fenmark::bench {

inline constexpr int kCaseCount = 1000;
inline constexpr std::uint64_t kCaseSeed = 20260512;

/// Random sizes, and a pose that moves on with each element laid.
class Cases : public test::Random {
  public:
    Cases() : Random(kCaseSeed) {}

    double radius() { return uniform(40.0, 600.0); }
    double parameter(double radius) { return radius / uniform(1.0, 2.5); }
    double arc_length(double radius) { return radius * uniform(0.3, 1.2); }

    void begin() {
        x_ = -36000.0 + uniform(-500.0, 500.0);
        y_ = 12000.0 + uniform(-500.0, 500.0);
        azimuth_ = uniform(0.1, 6.2);
    }
    Calelm straight(double len) { return lay(1, 1.0, 0.0, 0.0, 0.0, len); }
    Calelm arc(double dir, double radius, double len) { return lay(2, dir, radius, 0.0, 0.0, len); }
    Calelm clothoid(double dir, double a, double r1, double r2) { return lay(3, dir, a, r1, r2, 0.0); }

  private:
    Calelm lay(int type, double dir, double par, double r1, double r2, double len) {
        Calelm e{};
        e.type = static_cast<std::int16_t>(type);
        e.dir = dir;
        e.par = par;
        e.r1 = r1;
        e.r2 = r2;
        e.len = len;
        e.sx = x_;
        e.sy = y_;
        e.sang = e.eang = azimuth_;
        if (ali_mak(&e, 1) != 0) {
            std::cerr << "a benchmark chain could not be laid\n";
            std::abort();
        }
        x_ = e.ex;
        y_ = e.ey;
        azimuth_ = e.eang;
        return e;
    }

    double x_ = 0.0;
    double y_ = 0.0;
    double azimuth_ = 0.0;
};

/// Runs one builder over its cases, a fresh copy for each call; the share that it solved is printed with the time.
template <class Case, class Run>
void run_builder(benchmark::State& state, const std::vector<Case>& cases, Run run) {
    std::size_t next = 0;
    std::size_t calls = 0;
    std::size_t solved = 0;
    for (auto _ : state) {
        Case c = cases[next];
        next = next + 1 < cases.size() ? next + 1 : 0;
        ++calls;
        solved += run(c) == 0 ? 1U : 0U;
        benchmark::DoNotOptimize(c);
    }
    state.counters["solved"] = static_cast<double>(solved) / static_cast<double>(calls);
}

} // namespace fenmark::bench
