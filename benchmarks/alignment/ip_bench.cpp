// Curves at an intersection point: nanoseconds a call over a thousand corners.
#include "alignment/builder_cases.h"

#include <array>

namespace {

using namespace fenmark::bench;

struct Corner {
    double previous[2];
    double next[2];
    AliIpCurve ip;
    std::array<Calelm, 5> made;
};

// Corners that turn far enough for clothoids on both sides of an arc.
const std::vector<Corner>& corners() {
    static const std::vector<Corner> cases = [] {
        Cases c;
        std::vector<Corner> all;
        for (int i = 0; i < kCaseCount; ++i) {
            Corner corner{};
            corner.ip.x = -36000.0 + c.uniform(-500.0, 500.0);
            corner.ip.y = 12000.0 + c.uniform(-500.0, 500.0);
            const double in = c.uniform(0.0, 6.28);
            const double out = in + c.sign() * c.uniform(1.2, 2.2);
            const double leg = 1500.0;
            corner.previous[0] = corner.ip.x - leg * std::cos(in);
            corner.previous[1] = corner.ip.y - leg * std::sin(in);
            corner.next[0] = corner.ip.x + leg * std::cos(out);
            corner.next[1] = corner.ip.y + leg * std::sin(out);
            all.push_back(corner);
        }
        return all;
    }();
    return cases;
}

void IPsetR(benchmark::State& state) {
    run_builder(state, corners(), [](Corner& c) {
        c.ip.size1 = 200.0;
        return ali_IPsetR(c.previous, &c.ip, c.next, &c.made[0]);
    });
}
BENCHMARK(IPsetR);

void IPsetAA(benchmark::State& state) {
    run_builder(state, corners(), [](Corner& c) {
        c.ip.size1 = 150.0;
        c.ip.size2 = 170.0;
        return ali_IPsetAA(c.previous, &c.ip, c.next, &c.made[0], &c.made[1]);
    });
}
BENCHMARK(IPsetAA);

void IPsetARA(benchmark::State& state) {
    run_builder(state, corners(), [](Corner& c) {
        c.ip.size1 = 100.0;
        c.ip.size2 = 200.0;
        c.ip.size3 = 120.0;
        return ali_IPsetARA(c.previous, &c.ip, c.next, &c.made[0], &c.made[1], &c.made[2]);
    });
}
BENCHMARK(IPsetARA);

int two_arcs(Corner& c) {
    c.ip.size1 = 100.0;
    c.ip.size2 = 200.0;
    c.ip.size3 = 90.0;
    c.ip.size4 = 120.0;
    c.ip.size5 = 80.0;
    c.ip.tangent1 = 240.0;
    return ali_IPsetARARA(c.previous, &c.ip, c.next, &c.made[0], &c.made[1], &c.made[2], &c.made[3], &c.made[4]);
}

void IPsetARARA(benchmark::State& state) {
    // The tangent length suits some of the corners only; the others end early and would flatter the time.
    static const std::vector<Corner> suited = [] {
        std::vector<Corner> some;
        for (Corner c : corners()) {
            if (two_arcs(c) == 0) {
                some.push_back(c);
            }
        }
        return some;
    }();
    run_builder(state, suited, [](Corner& c) { return two_arcs(c); });
}
BENCHMARK(IPsetARARA);

} // namespace
