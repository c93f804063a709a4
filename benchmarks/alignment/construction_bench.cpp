// Construction of elements.
#include "alignment/median.h"

using namespace fenmark::alignment_benchmark;

namespace {

void make(benchmark::State& state, const std::vector<Calelm>& all, int mode) {
    reportMedian(state, all.size(), [&](std::size_t i) {
        Calelm rec = all[i];
        ali_mak(&rec, mode);
        benchmark::DoNotOptimize(rec);
    });
}

void makS(benchmark::State& state) {
    Elements elements(11);
    make(state, Elements::many([&] { return elements.straight(); }), 0);
}
BENCHMARK(makS)->Name("ali_makS")->UseManualTime()->Iterations(5);

void makR(benchmark::State& state) {
    Elements elements(12);
    make(state, Elements::many([&] { return elements.arc(); }), 0);
}
BENCHMARK(makR)->Name("ali_makR")->UseManualTime()->Iterations(5);

void makA(benchmark::State& state) {
    Elements elements(13);
    make(state, Elements::many([&] { return elements.clothoid(false); }), 0);
}
BENCHMARK(makA)->Name("ali_makA")->UseManualTime()->Iterations(5);

void makAEgg(benchmark::State& state) {
    Elements elements(14);
    make(state, Elements::many([&] { return elements.clothoid(true); }), 0);
}
BENCHMARK(makAEgg)->Name("ali_makA/egg")->UseManualTime()->Iterations(5);

void makangA(benchmark::State& state) {
    Elements elements(15);
    make(state, Elements::many([&] { return elements.clothoid(true); }), 1);
}
BENCHMARK(makangA)->Name("ali_makangA/egg")->UseManualTime()->Iterations(5);

} // namespace
