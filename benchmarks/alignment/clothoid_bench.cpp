// The clothoid series and relations, with the bare floor.
#include "alignment/median.h"

using namespace fenmark::alignment_benchmark;

namespace {

void bareTaylor(benchmark::State& state) {
    for (auto _ : state) {
        state.SetIterationTime(taylorFloorNs() * 1e-9);
    }
    state.counters["ns"] = taylorFloorNs();
}
BENCHMARK(bareTaylor)->UseManualTime()->Iterations(1);

void series(benchmark::State& state) {
    Elements elements(1);
    const auto all = Elements::many([&] { return elements.clothoid(false); });
    reportMedian(state, all.size(), [&](std::size_t i) {
        const double R = all[i].r1 == 0.0 ? all[i].r2 : all[i].r1;
        double X = 0.0;
        double Y = 0.0;
        CDRcalxy(all[i].par, R, &X, &Y);
        benchmark::DoNotOptimize(X);
        benchmark::DoNotOptimize(Y);
    });
}
BENCHMARK(series)->Name("CDRcalxy")->UseManualTime()->Iterations(5);

void precise(benchmark::State& state) {
    Elements elements(2);
    const auto all = Elements::many([&] { return elements.clothoid(false); });
    reportMedian(state, all.size(), [&](std::size_t i) {
        double v[13];
        clothoidElements(all[i].par, all[i].k1, v);
        benchmark::DoNotOptimize(v);
    });
}
BENCHMARK(precise)->Name("clothoidElements")->UseManualTime()->Iterations(5);

} // namespace

BENCHMARK_MAIN();
