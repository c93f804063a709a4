// Elements fitted from a given element to a point: nanoseconds a call over a thousand chains of survey size.
#include "alignment/builder_cases.h"

#include <array>

namespace {

using namespace fenmark::bench;

template <std::size_t N>
using Records = std::vector<std::array<Calelm, N>>;

// `shape` lays one chain.
template <std::size_t N, class Shape>
Records<N> chains(Shape shape) {
    Cases c;
    Records<N> all;
    for (int i = 0; i < kCaseCount; ++i) {
        c.begin();
        all.push_back(shape(c, c.sign(), c.radius()));
    }
    return all;
}

void makrS_P(benchmark::State& state) {
    static const auto cases = chains<2>([](Cases& c, double dir, double radius) {
        const Calelm r = c.arc(dir, radius, c.arc_length(radius));
        return std::array{r, c.straight(c.uniform(20.0, 200.0))};
    });
    run_builder(state, cases, [](auto& r) {
        const double p[2] = {r[1].ex, r[1].ey};
        return ali_makrS_P(p, 1, &r[0], &r[1]);
    });
}
BENCHMARK(makrS_P);

void makrR_P(benchmark::State& state) {
    static const auto cases = chains<2>([](Cases& c, double dir, double radius) {
        const Calelm r = c.arc(dir, radius, c.arc_length(radius));
        const double second = radius * c.uniform(1.2, 2.0);
        return std::array{r, c.arc(dir, second, c.arc_length(second))};
    });
    run_builder(state, cases, [](auto& r) {
        const double p[2] = {r[1].ex, r[1].ey};
        return ali_makrR_P(p, 1, &r[0], &r[1]);
    });
}
BENCHMARK(makrR_P);

void makrR_P_S(benchmark::State& state) {
    static const auto cases = chains<2>([](Cases& c, double dir, double radius) {
        const Calelm r = c.arc(dir, radius, c.arc_length(radius));
        const double second = c.radius();
        return std::array{r, c.arc(-dir, second, c.arc_length(second))};
    });
    run_builder(state, cases, [](auto& r) {
        const double p[2] = {r[1].ex, r[1].ey};
        return ali_makrR_P_S(p, 1, &r[1], &r[0]);
    });
}
BENCHMARK(makrR_P_S);

void makrAS_P(benchmark::State& state) {
    static const auto cases = chains<3>([](Cases& c, double dir, double radius) {
        const Calelm s = c.straight(c.uniform(20.0, 200.0));
        const Calelm a = c.clothoid(dir, c.parameter(radius), 0.0, radius);
        return std::array{s, a, c.arc(dir, radius, c.arc_length(radius))};
    });
    run_builder(state, cases, [](auto& r) {
        const double p[2] = {r[0].sx, r[0].sy};
        return ali_makrAS_P(p, 1, &r[2], &r[1], &r[0]);
    });
}
BENCHMARK(makrAS_P);

void makrAR_P(benchmark::State& state) {
    static const auto cases = chains<3>([](Cases& c, double dir, double radius) {
        const double second = radius / c.uniform(1.3, 3.0);
        const Calelm r = c.arc(dir, radius, c.arc_length(radius));
        const Calelm a = c.clothoid(dir, c.parameter(second), radius, second);
        return std::array{r, a, c.arc(dir, second, c.arc_length(second))};
    });
    double gap = 0.0;
    double angle = 0.0;
    run_builder(state, cases, [&](auto& r) {
        const double p[2] = {r[2].ex, r[2].ey};
        return ali_makrAR_P(p, 1, &r[0], &r[1], &r[2], &gap, &angle);
    });
}
BENCHMARK(makrAR_P);

void makrAAR_P(benchmark::State& state) {
    static const auto cases = chains<4>([](Cases& c, double dir, double radius) {
        const double second = c.radius();
        const Calelm r = c.arc(dir, radius, c.arc_length(radius));
        const Calelm a1 = c.clothoid(dir, c.parameter(radius), radius, 0.0);
        const Calelm a2 = c.clothoid(-dir, c.parameter(second), 0.0, second);
        return std::array{r, a1, a2, c.arc(-dir, second, c.arc_length(second))};
    });
    double gap = 0.0;
    run_builder(state, cases, [&](auto& r) {
        const double p[2] = {r[3].ex, r[3].ey};
        return ali_makrAAR_P(p, 1, &r[0], &r[1], &r[2], &r[3], &gap);
    });
}
BENCHMARK(makrAAR_P);

void maksR_P(benchmark::State& state) {
    static const auto cases = chains<2>([](Cases& c, double dir, double radius) {
        const Calelm s = c.straight(c.uniform(20.0, 200.0));
        return std::array{s, c.arc(dir, radius, c.arc_length(radius))};
    });
    run_builder(state, cases, [](auto& r) {
        const double p[2] = {r[1].ex, r[1].ey};
        return ali_maksR_P(p, 1, &r[0], &r[1]);
    });
}
BENCHMARK(maksR_P);

void maksAR_P(benchmark::State& state) {
    static const auto cases = chains<3>([](Cases& c, double dir, double radius) {
        const Calelm s = c.straight(c.uniform(20.0, 200.0));
        const Calelm a = c.clothoid(dir, c.parameter(radius), 0.0, radius);
        return std::array{s, a, c.arc(dir, radius, radius * c.uniform(0.2, 0.8))};
    });
    run_builder(state, cases, [](auto& r) {
        const double p[2] = {r[2].ex, r[2].ey};
        return ali_maksAR_P(p, 1, &r[0], &r[1], &r[2]);
    });
}
BENCHMARK(maksAR_P);

} // namespace
