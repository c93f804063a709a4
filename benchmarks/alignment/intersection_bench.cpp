// Where two elements meet: random pairs of which the second is moved so that they cross.
#include "alignment/median.h"

using namespace fenmark::bench;

namespace {

struct Pair {
    Calelm e1;
    Calelm e2;
};

// Moves e2 so that a point of it falls on a point of e1.
Pair crossing(Elements& elements, Calelm e1, Calelm e2) {
    double p[2];
    double q[2];
    double t = 0.0;
    ali_onl(&e1, e1.len * elements.uniform(0.05, 0.95), p, &t);
    ali_onl(&e2, e2.len * elements.uniform(0.05, 0.95), q, &t);
    const double d = std::hypot(p[0] - q[0], p[1] - q[1]);
    Calelm moved{};
    ali_pmov(&e2, d, std::atan2(p[1] - q[1], p[0] - q[0]), &moved);
    return {e1, moved};
}

template <typename First, typename Second>
void intersect(benchmark::State& state, Elements& elements, First&& first, Second&& second) {
    std::vector<Pair> pairs;
    for (std::size_t i = 0; i < kElementCount; ++i) {
        pairs.push_back(crossing(elements, first(), second()));
    }
    std::size_t met = 0;
    const auto call = [&](std::size_t i) {
        double p1[2];
        double p2[2];
        double a = 0.0;
        double b = 0.0;
        double c = 0.0;
        double d = 0.0;
        const int status = ali_intp(&pairs[i].e1, &pairs[i].e2, p1, &a, &b, p2, &c, &d);
        benchmark::DoNotOptimize(p1);
        benchmark::DoNotOptimize(p2);
        return status;
    };
    for (std::size_t i = 0; i < pairs.size(); ++i) {
        met += call(i) >= 0 ? 1u : 0u;
    }
    reportMedian(state, pairs.size(), call);
    state.counters["met"] = static_cast<double>(met);
}

void intpSS(benchmark::State& state) {
    Elements e(41);
    intersect(
        state, e, [&] { return e.straight(); }, [&] { return e.straight(); });
}
BENCHMARK(intpSS)->Name("ali_intpSS")->UseManualTime()->Iterations(5);

void intpSR(benchmark::State& state) {
    Elements e(42);
    intersect(
        state, e, [&] { return e.straight(); }, [&] { return e.arc(); });
}
BENCHMARK(intpSR)->Name("ali_intpSR")->UseManualTime()->Iterations(5);

void intpRR(benchmark::State& state) {
    Elements e(43);
    intersect(
        state, e, [&] { return e.arc(); }, [&] { return e.arc(); });
}
BENCHMARK(intpRR)->Name("ali_intpRR")->UseManualTime()->Iterations(5);

void intpSA(benchmark::State& state) {
    Elements e(44);
    intersect(
        state, e, [&] { return e.straight(); }, [&] { return e.clothoid(e.sign() > 0.0); });
}
BENCHMARK(intpSA)->Name("ali_intpSA")->UseManualTime()->Iterations(5);

void intpRA(benchmark::State& state) {
    Elements e(45);
    intersect(
        state, e, [&] { return e.arc(); }, [&] { return e.clothoid(e.sign() > 0.0); });
}
BENCHMARK(intpRA)->Name("ali_intpRA")->UseManualTime()->Iterations(5);

void intpAA(benchmark::State& state) {
    Elements e(46);
    intersect(
        state, e, [&] { return e.clothoid(e.sign() > 0.0); }, [&] { return e.clothoid(e.sign() > 0.0); });
}
BENCHMARK(intpAA)->Name("ali_intpAA")->UseManualTime()->Iterations(5);

} // namespace
