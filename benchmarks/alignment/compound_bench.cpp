// Compound builders: nanoseconds a call over a thousand chains of survey size, with the copy of the records as the
// floor.
#include "alignment/builder_cases.h"

#include <array>

namespace {

using namespace fenmark::bench;

template <std::size_t N>
using Records = std::vector<std::array<Calelm, N>>;

const Records<3>& eggs() {
    static const Records<3> cases = [] {
        Cases c;
        Records<3> all;
        for (int i = 0; i < kCaseCount; ++i) {
            c.begin();
            const double dir = c.sign();
            const double small = c.radius();
            const double large = small * c.uniform(1.3, 3.0);
            const double a = c.parameter(small);
            const Calelm r1 = c.arc(dir, large, c.arc_length(large));
            const Calelm ease = c.clothoid(dir, a, large, small);
            all.push_back({r1, ease, c.arc(dir, small, c.arc_length(small))});
        }
        return all;
    }();
    return cases;
}

const Records<4>& s_curves() {
    static const Records<4> cases = [] {
        Cases c;
        Records<4> all;
        for (int i = 0; i < kCaseCount; ++i) {
            c.begin();
            const double dir = c.sign();
            const double first = c.radius();
            const double second = c.radius();
            const Calelm r1 = c.arc(dir, first, c.arc_length(first));
            const Calelm a1 = c.clothoid(dir, c.parameter(first), first, 0.0);
            const Calelm a2 = c.clothoid(-dir, c.parameter(second), 0.0, second);
            all.push_back({r1, a1, a2, c.arc(-dir, second, c.arc_length(second))});
        }
        return all;
    }();
    return cases;
}

const Records<3>& eased() {
    static const Records<3> cases = [] {
        Cases c;
        Records<3> all;
        for (int i = 0; i < kCaseCount; ++i) {
            c.begin();
            const double dir = c.sign();
            const double radius = c.radius();
            const Calelm s = c.straight(c.uniform(20.0, 200.0));
            const Calelm a = c.clothoid(dir, c.parameter(radius), 0.0, radius);
            all.push_back({s, a, c.arc(dir, radius, c.arc_length(radius))});
        }
        return all;
    }();
    return cases;
}

const Records<7>& three_arcs() {
    static const Records<7> cases = [] {
        Cases c;
        Records<7> all;
        for (int i = 0; i < kCaseCount; ++i) {
            c.begin();
            const double dir = c.sign();
            const double r1 = c.radius();
            const double r2 = c.radius();
            const double r3 = c.radius();
            std::array<Calelm, 7> chain{};
            chain[0] = c.arc(dir, r1, c.arc_length(r1));
            chain[1] = c.clothoid(dir, c.parameter(r1), r1, 0.0);
            chain[2] = c.clothoid(-dir, c.parameter(r2), 0.0, r2);
            chain[3] = c.arc(-dir, r2, c.arc_length(r2));
            chain[4] = c.clothoid(-dir, c.parameter(r2), r2, 0.0);
            chain[5] = c.clothoid(dir, c.parameter(r3), 0.0, r3);
            chain[6] = c.arc(dir, r3, c.arc_length(r3));
            all.push_back(chain);
        }
        return all;
    }();
    return cases;
}

const Records<3>& from_origin() {
    static const Records<3> cases = [] {
        Cases c;
        Records<3> all;
        for (int i = 0; i < kCaseCount; ++i) {
            c.begin();
            const double dir = c.sign();
            const double small = c.radius();
            const double large = small * c.uniform(1.3, 3.0);
            const Calelm r1 = c.arc(dir, large, c.arc_length(large));
            const Calelm a = c.clothoid(dir, c.parameter(small), 0.0, small);
            all.push_back({r1, a, c.arc(dir, small, c.arc_length(small))});
        }
        return all;
    }();
    return cases;
}

void copy_of_three_records(benchmark::State& state) {
    run_builder(state, eggs(), [](auto&) { return 0; });
}
BENCHMARK(copy_of_three_records);

void makRAR(benchmark::State& state) {
    double gap = 0.0;
    double angle = 0.0;
    run_builder(state, eggs(), [&](auto& r) { return ali_makRAR(&r[0], &r[1], &r[2], &gap, &angle); });
}
BENCHMARK(makRAR);

void makRAAR(benchmark::State& state) {
    double gap = 0.0;
    run_builder(state, s_curves(), [&](auto& r) { return ali_makRAAR(&r[0], &r[1], &r[2], &r[3], &gap); });
}
BENCHMARK(makRAAR);

void makSAR(benchmark::State& state) {
    double gap = 0.0;
    run_builder(state, eased(), [&](auto& r) { return ali_makSAR(1, &r[0], &r[1], &r[2], &gap); });
}
BENCHMARK(makSAR);

void mak3R4A(benchmark::State& state) {
    double gap = 0.0;
    run_builder(state, three_arcs(),
                [&](auto& r) { return ali_mak3R4A(&gap, &r[0], &r[1], &r[2], &r[3], &r[4], &r[5], &r[6]); });
}
BENCHMARK(mak3R4A);

void makAOR_P(benchmark::State& state) {
    run_builder(state, from_origin(), [&](auto& r) {
        const double p[2] = {r[2].ex, r[2].ey};
        return ali_makAOR_P(p, 1, &r[0], &r[1], &r[2]);
    });
}
BENCHMARK(makAOR_P);

} // namespace
