// Parallel and turned copies.
#include "alignment/median.h"

using namespace fenmark::alignment_benchmark;

namespace {

void pmovA(benchmark::State& state) {
    Elements elements(31);
    const auto all = Elements::many([&] { return elements.clothoid(false); });
    reportMedian(state, all.size(), [&](std::size_t i) {
        Calelm out;
        ali_pmov(&all[i], 12.5, 1.0, &out);
        benchmark::DoNotOptimize(out);
    });
}
BENCHMARK(pmovA)->Name("ali_pmovA")->UseManualTime()->Iterations(5);

void tmovR(benchmark::State& state) {
    Elements elements(32);
    const auto all = Elements::many([&] { return elements.arc(); });
    const double pivot[2] = {10.0, 20.0};
    reportMedian(state, all.size(), [&](std::size_t i) {
        Calelm out;
        ali_tmov(&all[i], pivot, 1.0, &out);
        benchmark::DoNotOptimize(out);
    });
}
BENCHMARK(tmovR)->Name("ali_tmovR")->UseManualTime()->Iterations(5);

} // namespace
