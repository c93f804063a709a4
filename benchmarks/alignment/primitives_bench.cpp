// Plane primitives: nanoseconds a call over a thousand random values; the loop over the values alone is the floor.
#include <fenmark/alignment.h>

#include <benchmark/benchmark.h>

#include <cstdint>
#include <random>
#include <vector>

namespace {

constexpr int kCaseCount = 1000;
constexpr std::uint64_t kSeed = 20260602;

struct Values {
    double v[8];
};

std::vector<Values> randomValues() {
    std::mt19937_64 engine(kSeed);
    std::uniform_real_distribution<> uniform(-500.0, 500.0);
    std::vector<Values> all(kCaseCount);
    for (Values& values : all) {
        for (double& v : values.v) {
            v = uniform(engine);
        }
    }
    return all;
}

// Clothoids of the calculation plane from infinite radius, and an arc and a straight near each.
struct Elements {
    Calelm clothoid, arc, straight;
};

std::vector<Elements> randomElements() {
    std::mt19937_64 engine(kSeed);
    std::uniform_real_distribution<> place(-500.0, 500.0), radius(40.0, 600.0), ratio(1.0, 2.5), turn(0.1, 6.2);
    std::vector<Elements> all;
    while (all.size() < kCaseCount) {
        const double R = radius(engine);
        const double dir = place(engine) < 0.0 ? -1.0 : 1.0;
        Calelm a{}, r{}, s{};
        a.type = 3;
        r.type = 2;
        s.type = 1;
        a.sx = r.sx = s.sx = place(engine);
        a.sy = r.sy = s.sy = place(engine);
        a.sang = turn(engine);
        r.sang = turn(engine);
        s.sang = turn(engine);
        a.dir = r.dir = dir;
        a.par = R / ratio(engine);
        a.r2 = r.par = R;
        r.len = 0.7 * R;
        s.len = 100.0;
        if (ali_makangA(&a, 1) != 0 || ali_makangR(&r, 1) != 0 || ali_makangS(&s, 1) != 0) {
            continue;
        }
        Elements e{};
        CDchgSpace(&a, &e.clothoid);
        CDchgSpace(&r, &e.arc);
        CDchgSpace(&s, &e.straight);
        all.push_back(e);
    }
    return all;
}

template <typename Items, typename Call>
void run(benchmark::State& state, const Items& items, Call call) {
    // A batch is one pass over the cases, so that the times reported are those of one call.
    while (state.KeepRunningBatch(kCaseCount)) {
        for (const auto& item : items) {
            call(item);
        }
    }
}

void floorLoop(benchmark::State& state) {
    run(state, randomValues(), [](const Values& x) { benchmark::DoNotOptimize(x.v[0] + x.v[7]); });
}
BENCHMARK(floorLoop);

void btwang(benchmark::State& state) {
    run(state, randomValues(), [](const Values& x) {
        const auto& v = x.v;
        benchmark::DoNotOptimize(CDbtwang(v[0], v[1], v[2], v[3], v[4], v[5], v[6], v[7]));
    });
}
BENCHMARK(btwang);

void segcros(benchmark::State& state) {
    run(state, randomValues(), [](const Values& x) {
        double out[2];
        benchmark::DoNotOptimize(CDsegcros(&x.v[0], &x.v[2], &x.v[4], &x.v[6], out));
    });
}
BENCHMARK(segcros);

void chgSpace(benchmark::State& state) {
    run(state, randomElements(), [](const Elements& e) {
        Calelm out;
        CDchgSpace(&e.clothoid, &out);
        benchmark::DoNotOptimize(out);
    });
}
BENCHMARK(chgSpace);

void turnA(benchmark::State& state) {
    run(state, randomElements(), [](const Elements& e) {
        Calelm out;
        CDturnA(&e.arc, &out, 0.3);
        benchmark::DoNotOptimize(out);
    });
}
BENCHMARK(turnA);

void pointIntoFrame(benchmark::State& state) {
    run(state, randomElements(), [](const Elements& e) {
        const double p[2] = {e.arc.ex, e.arc.ey};
        double out[2];
        CDPinAbs(&e.clothoid, p, out);
        benchmark::DoNotOptimize(out);
    });
}
BENCHMARK(pointIntoFrame);

void straightIntoFrame(benchmark::State& state) {
    run(state, randomElements(), [](const Elements& e) {
        Calelm out;
        CDSinAbs(&e.clothoid, &e.straight, &out);
        benchmark::DoNotOptimize(out);
    });
}
BENCHMARK(straightIntoFrame);

} // namespace
