// Chains: point at distance, sorted arrays and nearest point beside bare floors measured in the same run.
#include "curve/chain_bench.h"

#include "bare_series.h"
#include "curve/chain.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <random>
#include <vector>

namespace fenmark::bench {

namespace {

using namespace fenmark::curve;

constexpr int kCurves = 10'000;
constexpr std::size_t kQuestions = 1 << 16;
constexpr std::size_t kSorted = 1 << 18;
constexpr int kWindings = 2'300;
constexpr std::size_t kOnWinding = 64;
constexpr unsigned kSeed = 4242;

// Nanoseconds of the processor a question, of the best of some rounds; one round, where words are given, of what they name.
template <typename Ask>
double nanoseconds(const Words& words, std::string_view name, std::size_t count, const Ask& ask) {
    if (!words.empty()) {
        if (std::find(words.begin(), words.end(), name) != words.end()) {
            ask();
        }
        return 0.0;
    }
    double best = 1e300;
    for (int round = 0; round < 9; ++round) {
        const std::clock_t start = std::clock();
        ask();
        const double spent = 1e9 * static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
        best = std::min(best, spent / static_cast<double>(count));
    }
    return best;
}

// From the middle until a step is below a tenth of a micrometre. It asks neither whether it converges nor whether the
// foot is the right one.
double bareNewton(double a, double length, const Point& point) {
    double along = 0.5 * length;
    for (int step = 0; step < 20; ++step) {
        const BarePoint on = bareSeries(a, along);
        const double tau = along * along / (2.0 * a * a);
        const double cosine = std::cos(tau);
        const double sine = std::sin(tau);
        const double ahead = (point.x - on.x) * cosine + (point.y - on.y) * sine;
        const double beside = (point.y - on.y) * cosine - (point.x - on.x) * sine;
        const double move = ahead / (1.0 - along / (a * a) * beside);
        along += move;
        if (std::abs(move) < 1e-7) {
            break;
        }
    }
    return along;
}

// Straight, clothoid, arc, clothoid, again and again, in both senses.
std::vector<Curve> road(std::mt19937& random) {
    std::vector<Curve> curves;
    Pose pose;
    for (int i = 0; i < kCurves; ++i) {
        const double sense = (i / 4) % 2 == 0 ? 1.0 : -1.0;
        const double k = sense / (150.0 + static_cast<double>(random() % 500));
        const double length = 40.0 + static_cast<double>(random() % 60);
        curves.push_back({pose, length, i % 4 == 2 || i % 4 == 3 ? k : 0.0, i % 4 == 1 || i % 4 == 2 ? k : 0.0});
        pose = endPose(curves.back());
    }
    return curves;
}

// Clothoids of one and a quarter turns, each along the end of the one before, so that all lie in one place.
std::vector<Curve> windings() {
    std::vector<Curve> curves;
    Pose pose;
    for (int i = 0; i < kWindings; ++i) {
        curves.push_back({pose, 80.0, 0.0, 1.0 / 5.0});
        pose = endPose(curves.back());
    }
    return curves;
}

struct Questions {
    Chain chain;
    Chain one;
    Chain winding;
    std::vector<Point> onWinding;
    std::vector<double> distances;
    std::vector<double> sorted;
    std::vector<double> lengths;
    std::vector<Point> beside;    // the chain
    std::vector<Point> besideOne; // a single clothoid

    Questions() {
        std::mt19937 random(kSeed);
        const auto uniform = [&](double low, double high) { return std::uniform_real_distribution(low, high)(random); };
        (void)chain.set(road(random));
        const std::vector<Curve> spiral{{{{0, 0}, 0}, 100.0, 0.0, 1.0 / 200.0}};
        (void)one.set(spiral);
        for (std::size_t i = 0; i < kQuestions; ++i) {
            distances.push_back(uniform(0.0, chain.length()));
            lengths.push_back(uniform(1.0, 100.0));
            beside.push_back(chain.pointAt(uniform(0.0, chain.length()), uniform(-50.0, 50.0)).value_or(Point{}));
            besideOne.push_back(one.pointAt(uniform(0.0, 100.0), uniform(-100.0, 100.0)).value_or(Point{}));
        }
        (void)winding.set(windings());
        for (std::size_t i = 0; i < kOnWinding; ++i) {
            onWinding.push_back(winding.pointAt(uniform(0.0, winding.length())).value_or(Point{}));
        }
        for (std::size_t i = 0; i < kSorted; ++i) {
            sorted.push_back(uniform(0.0, chain.length()));
        }
        std::sort(sorted.begin(), sorted.end());
    }
};

} // namespace

void compareChains(const Words& words) {
    const bool wanted = std::any_of(words.begin(), words.end(), [](auto word) { return word.starts_with("chain"); });
    if (!words.empty() && !wanted) {
        return;
    }
    const Questions q;
    std::vector<Point> points(kSorted);
    double a = std::sqrt(100.0 * 200.0);
    const double series = nanoseconds(words, "chain series", kQuestions, [&] {
        for (const double length : q.lengths) {
            benchmark::DoNotOptimize(a);
            benchmark::DoNotOptimize(bareSeries(a, length));
        }
    });
    const double point = nanoseconds(words, "chain point", kQuestions, [&] {
        for (const double distance : q.distances) {
            benchmark::DoNotOptimize(q.chain.pointAt(distance));
        }
    });
    const double offset = nanoseconds(words, "chain offset", kQuestions, [&] {
        for (const double distance : q.distances) {
            benchmark::DoNotOptimize(q.chain.pointAt(distance, 3.0));
        }
    });
    const double array = nanoseconds(words, "chain sorted", kSorted,
                                     [&] { benchmark::DoNotOptimize(q.chain.points(q.sorted, {}, points)); });
    const double newton = nanoseconds(words, "chain Newton", kQuestions, [&] {
        for (const Point& at : q.besideOne) {
            benchmark::DoNotOptimize(bareNewton(a, 100.0, at));
        }
    });
    const double nearest = nanoseconds(words, "chain of one nearest", kQuestions, [&] {
        for (const Point& at : q.besideOne) {
            benchmark::DoNotOptimize(q.one.locate(at));
        }
    });
    const double located = nanoseconds(words, "chain nearest", kQuestions, [&] {
        for (const Point& at : q.beside) {
            benchmark::DoNotOptimize(q.chain.locate(at));
        }
    });
    const double wound = nanoseconds(words, "chain winding nearest", kOnWinding, [&] {
        for (const Point& at : q.onWinding) {
            benchmark::DoNotOptimize(q.winding.locate(at));
        }
    });
    const double each = nanoseconds(words, "chain winding each", kOnWinding, [&] {
        for (const Point& at : q.onWinding) {
            for (const Curve& curve : q.winding.curves()) {
                benchmark::DoNotOptimize(nearestFoot(curve, at));
            }
        }
    });
    if (!words.empty()) {
        return;
    }
    std::printf("chains of %d curves, nanoseconds for each:\n", kCurves);
    std::printf("  bare series of six terms                %8.1f\n", series);
    std::printf("  point at a random distance              %8.1f   %5.2f of the series\n", point, point / series);
    std::printf("  the same with an offset                 %8.1f\n", offset);
    std::printf("  sorted array of distances               %8.1f   (at most 10)\n", array);
    std::printf("  bare Newton iteration on one clothoid   %8.1f\n", newton);
    std::printf("  nearest point of one clothoid           %8.1f   %5.2f of it (at most 1.5)\n", nearest,
                nearest / newton);
    std::printf("  nearest point of the chain              %8.1f\n", located);
    std::printf("  nearest of %d that wind up in one place %8.1f   %5.3f of looking at each\n", kWindings, wound,
                wound / each);
}

} // namespace fenmark::bench
