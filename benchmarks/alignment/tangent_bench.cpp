// Tangent solvers: nanoseconds a call, over a thousand random chains of survey size. Each call copies its records,
// since a solver changes them; the copy alone is measured as the floor.
#include "support/random.h"

#include <fenmark/alignment.h>

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <vector>

namespace {

constexpr int kCaseCount = 1000;
constexpr std::uint64_t kSeed = 20260601;

using Chain = std::vector<Calelm>;

// Lays elements one after the other from a pose of the survey plane.
class Layer {
  public:
    Layer(double x, double y, double azimuth) : x_(x), y_(y), azimuth_(azimuth) {}

    Calelm straight(double len) { return lay(1, 1.0, 0.0, 0.0, 0.0, len, ali_makangS); }
    Calelm arc(double dir, double radius, double len) { return lay(2, dir, radius, 0.0, 0.0, len, ali_makangR); }
    Calelm clothoid(double dir, double a, double r1, double r2) { return lay(3, dir, a, r1, r2, 0.0, ali_makangA); }

  private:
    Calelm lay(std::int16_t type, double dir, double par, double r1, double r2, double len, int (*make)(Calelm*, int)) {
        Calelm e{};
        e.type = type;
        e.dir = dir;
        e.par = par;
        e.r1 = r1;
        e.r2 = r2;
        e.len = len;
        e.sx = x_;
        e.sy = y_;
        e.sang = azimuth_;
        if (make(&e, 1) != 0 || ali_mak(&e, 0) < 0) {
            std::cerr << "a benchmark chain could not be laid\n";
            std::abort();
        }
        x_ = e.ex;
        y_ = e.ey;
        azimuth_ = e.eang;
        return e;
    }

    double x_;
    double y_;
    double azimuth_;
};

struct Sizes : fenmark::test::Random {
    Sizes() : Random(kSeed) {}

    double radius() { return uniform(40.0, 600.0); }
    double parameter(double radius) { return radius / uniform(1.0, 2.5); }
    double sweep(double radius) { return radius * uniform(0.3, 1.2); }
    Layer layer() { return {uniform(-500.0, 500.0), uniform(-500.0, 500.0), uniform(0.1, 6.2)}; }
};

// A straight that runs on by so many metres at its end or its start.
Calelm lengthened(Calelm s, double before, double after) {
    const double c = std::cos(s.sang), n = std::sin(s.sang);
    s.sx -= before * c;
    s.sy -= before * n;
    s.ex += after * c;
    s.ey += after * n;
    ali_makS(&s);
    return s;
}

// Straights that run to their IP.
void lengthenToIp(Calelm& s1, Calelm& s2) {
    const double c1 = std::cos(s1.sang), n1 = std::sin(s1.sang), c2 = std::cos(s2.sang), n2 = std::sin(s2.sang);
    const double det = c1 * n2 - n1 * c2;
    const double gx = s2.sx - s1.ex, gy = s2.sy - s1.ey;
    s1 = lengthened(s1, 0.0, (gx * n2 - gy * c2) / det);
    s2 = lengthened(s2, -(gx * n1 - gy * c1) / det, 0.0);
}

// Lays the chains with `make` and times `solve` on copies of them.
template <typename Make, typename Solve>
void run(benchmark::State& state, Make make, Solve solve) {
    Sizes sizes;
    std::vector<Chain> chains;
    for (int i = 0; i < kCaseCount; ++i) {
        chains.push_back(make(sizes));
    }
    int solved = 0;
    for (Chain records : chains) {
        solved += solve(records) == 0 ? 1 : 0;
    }
    Chain records(chains.front().size());
    // A batch is one pass over the cases, so that the times reported are those of one call.
    while (state.KeepRunningBatch(kCaseCount)) {
        for (const Chain& chain : chains) {
            std::copy(chain.begin(), chain.end(), records.begin());
            benchmark::DoNotOptimize(solve(records));
        }
    }
    state.counters["solved"] = solved;
}

Chain betweenStraights(Sizes& z) {
    Layer layer = z.layer();
    const double R = z.radius(), dir = z.sign(), A1 = z.parameter(R), A2 = z.parameter(R);
    Chain c = {layer.straight(200), layer.clothoid(dir, A1, 0, R), layer.arc(dir, R, z.sweep(R)),
               layer.clothoid(dir, A2, R, 0), layer.straight(200)};
    lengthenToIp(c[0], c[4]);
    return c;
}

void floorCopy(benchmark::State& state) {
    run(state, betweenStraights, [](Chain& c) { return c[0].type - 1; });
}
BENCHMARK(floorCopy);

void RmakSS(benchmark::State& state) {
    run(
        state,
        [](Sizes& z) {
            Layer layer = z.layer();
            const double R = z.radius();
            Chain c = {layer.straight(200), layer.arc(z.sign(), R, z.sweep(R)), layer.straight(200)};
            lengthenToIp(c[0], c[2]);
            return c;
        },
        [](Chain& c) { return ali_RmakSS(&c[0], &c[2], &c[1]); });
}
BENCHMARK(RmakSS);

void AAmakSS(benchmark::State& state) {
    run(
        state,
        [](Sizes& z) {
            Layer layer = z.layer();
            const double R = z.radius(), dir = z.sign();
            Chain c = {layer.straight(200), layer.clothoid(dir, z.parameter(R), 0, R),
                       layer.clothoid(dir, z.parameter(R), R, 0), layer.straight(200)};
            lengthenToIp(c[0], c[3]);
            return c;
        },
        [](Chain& c) { return ali_AAmakSS(&c[0], &c[3], &c[1], &c[2]); });
}
BENCHMARK(AAmakSS);

void ARAmakSS(benchmark::State& state) {
    run(state, betweenStraights, [](Chain& c) { return ali_ARAmakSS(&c[0], &c[4], &c[1], &c[2], &c[3]); });
}
BENCHMARK(ARAmakSS);

void RmakSR(benchmark::State& state) {
    run(
        state,
        [](Sizes& z) {
            Layer layer = z.layer();
            const double r = z.radius(), R = z.radius() + 700.0, dir = z.sign();
            Chain c = {layer.straight(100), layer.arc(dir, r, z.sweep(r)), layer.arc(dir, R, z.sweep(R))};
            c[0] = lengthened(c[0], 0.0, 10.0);
            return c;
        },
        [](Chain& c) { return ali_RmakSR(-1, &c[0], &c[2], &c[1]); });
}
BENCHMARK(RmakSR);

void RAmakSR(benchmark::State& state) {
    run(
        state,
        [](Sizes& z) {
            Layer layer = z.layer();
            const double r = z.radius(), R = z.radius() + 700.0, dir = z.sign(), A = z.parameter(r);
            return Chain{layer.straight(100), layer.arc(dir, r, z.sweep(r)), layer.clothoid(dir, A, r, R),
                         layer.arc(dir, R, z.sweep(R))};
        },
        [](Chain& c) { return ali_RAmakSR(-1, -1, &c[0], &c[3], &c[1], &c[2]); });
}
BENCHMARK(RAmakSR);

void ARAAmakSR(benchmark::State& state) {
    run(
        state,
        [](Sizes& z) {
            Layer layer = z.layer();
            const double r = z.radius(), R = z.radius(), dir = z.sign();
            return Chain{layer.straight(100),
                         layer.clothoid(dir, z.parameter(r), 0, r),
                         layer.arc(dir, r, z.sweep(r)),
                         layer.clothoid(dir, z.parameter(r), r, 0),
                         layer.clothoid(-dir, z.parameter(R), 0, R),
                         layer.arc(-dir, R, z.sweep(R))};
        },
        [](Chain& c) { return ali_ARAAmakSR(1, &c[0], &c[5], &c[1], &c[2], &c[3], &c[4]); });
}
BENCHMARK(ARAAmakSR);

void RmakRR(benchmark::State& state) {
    run(
        state,
        [](Sizes& z) {
            Layer layer = z.layer();
            const double r = z.radius(), R = z.radius(), r3 = z.radius() + 700.0, dir = z.sign();
            return Chain{layer.arc(dir, r, z.sweep(r)), layer.arc(dir, r3, z.sweep(r3)), layer.arc(dir, R, z.sweep(R))};
        },
        [](Chain& c) { return ali_RmakRR(&c[0], &c[2], &c[1]); });
}
BENCHMARK(RmakRR);

void SmakRR(benchmark::State& state) {
    run(
        state,
        [](Sizes& z) {
            Layer layer = z.layer();
            const double r = z.radius(), R = z.radius(), dir = z.sign();
            return Chain{layer.arc(dir, r, z.sweep(r)), layer.straight(80), layer.arc(-dir, R, z.sweep(R))};
        },
        [](Chain& c) { return ali_SmakRR(&c[0], &c[2], &c[1]); });
}
BENCHMARK(SmakRR);

void ARmakRR(benchmark::State& state) {
    run(
        state,
        [](Sizes& z) {
            Layer layer = z.layer();
            const double r = z.radius(), R = z.radius(), r3 = z.radius() + 700.0, dir = z.sign(), A = z.parameter(r);
            return Chain{layer.arc(dir, r, z.sweep(r)), layer.clothoid(dir, A, r, r3), layer.arc(dir, r3, z.sweep(r3)),
                         layer.arc(dir, R, z.sweep(R))};
        },
        [](Chain& c) { return ali_ARmakRR(-1, -1, &c[0], &c[3], &c[2], &c[1]); });
}
BENCHMARK(ARmakRR);

void ARAmakRR(benchmark::State& state) {
    run(
        state,
        [](Sizes& z) {
            Layer layer = z.layer();
            const double r = z.radius(), R = z.radius(), r3 = z.radius() + 700.0, dir = z.sign();
            return Chain{layer.arc(dir, r, z.sweep(r)), layer.clothoid(dir, z.parameter(r), r, r3),
                         layer.arc(dir, r3, z.sweep(r3)), layer.clothoid(dir, z.parameter(R), r3, R),
                         layer.arc(dir, R, z.sweep(R))};
        },
        [](Chain& c) { return ali_ARAmakRR(-1, -1, &c[0], &c[4], &c[1], &c[2], &c[3]); });
}
BENCHMARK(ARAmakRR);

void SAmakRR(benchmark::State& state) {
    run(
        state,
        [](Sizes& z) {
            Layer layer = z.layer();
            const double r = z.radius(), R = z.radius(), dir = z.sign();
            return Chain{layer.arc(dir, r, z.sweep(r)), layer.straight(80), layer.clothoid(-dir, z.parameter(R), 0, R),
                         layer.arc(-dir, R, z.sweep(R))};
        },
        [](Chain& c) { return ali_SAmakRR(1, &c[0], &c[3], &c[1], &c[2]); });
}
BENCHMARK(SAmakRR);

void ASAmakRR(benchmark::State& state) {
    run(
        state,
        [](Sizes& z) {
            Layer layer = z.layer();
            const double r = z.radius(), R = z.radius(), dir = z.sign();
            return Chain{layer.arc(dir, r, z.sweep(r)), layer.clothoid(dir, z.parameter(r), r, 0), layer.straight(80),
                         layer.clothoid(-dir, z.parameter(R), 0, R), layer.arc(-dir, R, z.sweep(R))};
        },
        [](Chain& c) { return ali_ASAmakRR(&c[0], &c[4], &c[1], &c[2], &c[3]); });
}
BENCHMARK(ASAmakRR);

void SmakA(benchmark::State& state) {
    run(
        state,
        [](Sizes& z) {
            Layer layer = z.layer();
            const double R = z.radius();
            return Chain{layer.clothoid(z.sign(), z.parameter(R), 0, R), Calelm{}};
        },
        [](Chain& c) { return ali_SmakA(&c[0], 0.4 * c[0].len, 1.5, 12.0, &c[1]); });
}
BENCHMARK(SmakA);

} // namespace
