// Station to point and point to station.
#include "alignment/median.h"

using namespace fenmark::bench;

namespace {

void onElement(benchmark::State& state, Elements& elements, const std::vector<Calelm>& all) {
    std::vector<double> stations;
    for (const Calelm& rec : all) {
        stations.push_back(rec.len * elements.uniform(0.05, 0.95));
    }
    reportMedian(state, all.size(), [&](std::size_t i) {
        double p[2];
        double t = 0.0;
        ali_onl(&all[i], stations[i], p, &t);
        benchmark::DoNotOptimize(p);
        benchmark::DoNotOptimize(t);
    });
}

void onlS(benchmark::State& state) {
    Elements elements(21);
    onElement(state, elements, Elements::many([&] { return elements.straight(); }));
}
BENCHMARK(onlS)->Name("ali_onlS")->UseManualTime()->Iterations(5);

void onlR(benchmark::State& state) {
    Elements elements(22);
    onElement(state, elements, Elements::many([&] { return elements.arc(); }));
}
BENCHMARK(onlR)->Name("ali_onlR")->UseManualTime()->Iterations(5);

void onlA(benchmark::State& state) {
    Elements elements(23);
    onElement(state, elements, Elements::many([&] { return elements.clothoid(false); }));
}
BENCHMARK(onlA)->Name("ali_onlA")->UseManualTime()->Iterations(5);

void onlAEgg(benchmark::State& state) {
    Elements elements(24);
    onElement(state, elements, Elements::many([&] { return elements.clothoid(true); }));
}
BENCHMARK(onlAEgg)->Name("ali_onlA/egg")->UseManualTime()->Iterations(5);

// Points up to 20 m off the element, between its ends.
void project(benchmark::State& state, Elements& elements, const std::vector<Calelm>& all) {
    struct P {
        double p[2];
    };
    std::vector<P> points;
    for (const Calelm& rec : all) {
        double on[2];
        double t = 0.0;
        ali_onl(&rec, rec.len * elements.uniform(0.05, 0.95), on, &t);
        const double offset = elements.uniform(-20.0, 20.0);
        points.push_back({{on[0] + offset * std::sin(t), on[1] - offset * std::cos(t)}});
    }
    reportMedian(state, all.size(), [&](std::size_t i) {
        double s = 0.0;
        double foot[2];
        ali_proj(&all[i], points[i].p, &s, foot);
        benchmark::DoNotOptimize(s);
        benchmark::DoNotOptimize(foot);
    });
}

void projR(benchmark::State& state) {
    Elements elements(25);
    project(state, elements, Elements::many([&] { return elements.arc(); }));
}
BENCHMARK(projR)->Name("ali_projR")->UseManualTime()->Iterations(5);

void projA(benchmark::State& state) {
    Elements elements(26);
    project(state, elements, Elements::many([&] { return elements.clothoid(false); }));
}
BENCHMARK(projA)->Name("ali_projA")->UseManualTime()->Iterations(5);

void projAEgg(benchmark::State& state) {
    Elements elements(27);
    project(state, elements, Elements::many([&] { return elements.clothoid(true); }));
}
BENCHMARK(projAEgg)->Name("ali_projA/egg")->UseManualTime()->Iterations(5);

} // namespace
