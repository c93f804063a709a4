// Refits of chains between fixed elements, and the tests of points against a polygon.
#include "alignment/builder_cases.h"

#include <array>

namespace {

using namespace fenmark::bench;

template <std::size_t N>
using Records = std::vector<std::array<Calelm, N>>;

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

void make_rfAArf(benchmark::State& state) {
    double dl = 0.0;
    run_builder(state, s_curves(), [&](auto& r) { return alimake_rfAArf(r.data(), &dl); });
}
BENCHMARK(make_rfAArf);

void make_rfAsf(benchmark::State& state) {
    run_builder(state, eased(), [](auto& r) { return alimake_rfAsf(r.data(), 0.0, 1); });
}
BENCHMARK(make_rfAsf);

// A changed parameter leaves a gap, which moving the arc closes: two builds of the clothoid and one refit.
void close_straight_and_arc(benchmark::State& state) {
    run_builder(state, eased(), [](auto& r) {
        r[1].par *= 0.95;
        double dl = 0.0;
        if (ali_makSAR(1, &r[0], &r[1], &r[2], &dl) != 0) {
            return -1;
        }
        return moveR_dl0_rfAsf(1, 1, &dl, r.data()) == -1 ? -1 : 0;
    });
}
BENCHMARK(close_straight_and_arc);

// Per point, over polygons of growing size: the time grows with the size and no faster.
void point_on_polygon(benchmark::State& state) {
    Cases c;
    std::vector<AliIpEntry> list(static_cast<std::size_t>(state.range(0)));
    for (AliIpEntry& entry : list) {
        entry.x = c.uniform(-500.0, 500.0);
        entry.y = c.uniform(-500.0, 500.0);
    }
    const double p[2] = {5000.0, 5001.0};
    int index = 0;
    for (auto _ : state) {
        int result = chk_tangent(static_cast<int>(list.size()), list.data(), p, &index, 1e-9);
        benchmark::DoNotOptimize(result);
    }
}
BENCHMARK(point_on_polygon)->RangeMultiplier(10)->Range(10, 1000);

} // namespace
