// Time of one call as the median over many elements, in ns and as a multiple of a bare six-term Taylor evaluation that
// is measured in the same run.
#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <random>
#include <vector>

#include "fenmark/alignment.h"
#include "support/random.h"

namespace fenmark::bench {

inline constexpr std::size_t kElementCount = 1000;
inline constexpr int kCallsPerElement = 50;

// ns per call of call(i), median over i in [0, n).
template <typename Call>
double medianNs(std::size_t n, Call&& call) {
    using Clock = std::chrono::steady_clock;
    std::vector<double> ns;
    ns.reserve(n);
    for (std::size_t i = 0; i < n; ++i) {
        call(i);
        const auto begin = Clock::now();
        for (int k = 0; k < kCallsPerElement; ++k) {
            call(i);
        }
        const std::chrono::duration<double, std::nano> spent = Clock::now() - begin;
        ns.push_back(spent.count() / kCallsPerElement);
    }
    std::nth_element(ns.begin(), ns.begin() + static_cast<std::ptrdiff_t>(n / 2), ns.end());
    return ns[n / 2];
}

// The floor: a clothoid's point near its middle by six terms of the Taylor series of both coordinates, no library call.
inline double taylorFloorNs() {
    static const double floor = [] {
        std::mt19937_64 engine(7);
        std::uniform_real_distribution<double> length(10.0, 200.0);
        std::uniform_real_distribution<double> rate(1e-6, 1e-4);
        std::vector<double> s(kElementCount);
        std::vector<double> k(kElementCount);
        for (std::size_t i = 0; i < kElementCount; ++i) {
            s[i] = length(engine);
            k[i] = rate(engine);
        }
        return medianNs(kElementCount, [&](std::size_t i) {
            double L = s[i];
            benchmark::DoNotOptimize(L);
            const double tau = L * L * k[i] / 2.0;
            const double t2 = tau * tau;
            const double x =
                L *
                (1.0 - t2 * (1.0 / 10 - t2 * (1.0 / 216 - t2 * (1.0 / 9360 - t2 * (1.0 / 685440 - t2 / 76204800)))));
            const double y =
                L * tau *
                (1.0 / 3 -
                 t2 * (1.0 / 42 - t2 * (1.0 / 1320 - t2 * (1.0 / 75600 - t2 * (1.0 / 6894720 - t2 / 918086400)))));
            benchmark::DoNotOptimize(x);
            benchmark::DoNotOptimize(y);
        });
    }();
    return floor;
}

// ns per call when the elements follow one another, as in a program: no branch and no value is known from the call
// before.
template <typename Call>
double inTurnNs(std::size_t n, Call&& call) {
    using Clock = std::chrono::steady_clock;
    constexpr int kRounds = 5;
    const auto begin = Clock::now();
    for (int k = 0; k < kRounds; ++k) {
        for (std::size_t i = 0; i < n; ++i) {
            call(i);
        }
    }
    const std::chrono::duration<double, std::nano> spent = Clock::now() - begin;
    return spent.count() / (kRounds * static_cast<double>(n));
}

// Reports the median of one call repeated, how many bare evaluations it is worth, and the mean with elements in turn.
template <typename Call>
void reportMedian(benchmark::State& state, std::size_t n, Call&& call) {
    const double floor = taylorFloorNs();
    double best = 0.0;
    double in_turn = 0.0;
    for (auto _ : state) {
        const double median = medianNs(n, call);
        best = best == 0.0 ? median : std::min(best, median);
        const double turn = inTurnNs(n, call);
        in_turn = in_turn == 0.0 ? turn : std::min(in_turn, turn);
        state.SetIterationTime(median * 1e-9);
    }
    state.counters["ns"] = best;
    state.counters["x_taylor"] = best / floor;
    state.counters["ns_in_turn"] = in_turn;
}

// Elements of survey size from one seeded source, near the origin so that pairs of them often meet.
class Elements : public test::Random {
  public:
    using test::Random::Random;

    Calelm straight() {
        Calelm rec{};
        rec.sx = uniform(-150.0, 150.0);
        rec.sy = uniform(-150.0, 150.0);
        rec.ex = rec.sx + uniform(-250.0, 250.0);
        rec.ey = rec.sy + uniform(-250.0, 250.0);
        ali_makS(&rec);
        return rec;
    }

    Calelm arc() {
        Calelm rec{};
        rec.type = ALI_ARC;
        rec.sx = uniform(-150.0, 150.0);
        rec.sy = uniform(-150.0, 150.0);
        rec.sang = uniform(0.01, 6.27);
        rec.dir = sign();
        rec.par = uniform(40.0, 400.0);
        rec.len = rec.par * uniform(0.2, 2.5);
        ali_makangR(&rec, 1);
        return rec;
    }

    // egg: both radii finite.
    Calelm clothoid(bool egg) {
        Calelm rec{};
        rec.type = ALI_CLOTHOID;
        rec.sx = uniform(-150.0, 150.0);
        rec.sy = uniform(-150.0, 150.0);
        rec.sang = uniform(0.01, 6.27);
        rec.dir = sign();
        rec.par = uniform(60.0, 300.0);
        const double sharp = rec.par * uniform(0.7, 2.5);
        const double flat = egg ? sharp * uniform(1.5, 6.0) : 0.0;
        const bool grows = uniform(0.0, 1.0) < 0.5;
        rec.r1 = grows ? flat : sharp;
        rec.r2 = grows ? sharp : flat;
        ali_makangA(&rec, 1);
        return rec;
    }

    template <typename Make>
    static std::vector<Calelm> many(Make&& make) {
        std::vector<Calelm> all;
        for (std::size_t i = 0; i < kElementCount; ++i) {
            all.push_back(make());
        }
        return all;
    }
};

} // namespace fenmark::bench
