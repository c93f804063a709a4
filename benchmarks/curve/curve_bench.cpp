// Exact curves beside bare floors: a six-term series of the clothoid, and a bare Newton iteration for the nearest point.
//
// Floor and function take turns in every round, on the processor's clock; the ratio is the median of the rounds' ratios, so
// that other programs on the machine matter little.
#include "curve/chain_bench.h"
#include "curve/curve.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <functional>
#include <random>
#include <string_view>
#include <vector>

namespace {

using namespace fenmark::curve;

constexpr std::size_t kCases = 4096;
constexpr int kRounds = 21;
constexpr unsigned kSeed = 4242;

template <typename Call>
double nanoseconds(int repeats, const Call& call) {
    const std::clock_t start = std::clock();
    for (int repeat = 0; repeat < repeats; ++repeat) {
        for (std::size_t i = 0; i < kCases; ++i) {
            call(i);
        }
    }
    return 1e9 * static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC / (static_cast<double>(repeats) * kCases);
}

double median(std::vector<double> values) {
    std::nth_element(values.begin(), values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2), values.end());
    return values[values.size() / 2];
}

// The words that name the lines to run once; all lines run, timed, where there are none.
std::vector<std::string_view> wordsGiven;

// One line of the table; the floor may be the function itself where only the time is asked for.
template <typename Floor, typename Call>
void compare(const char* name, int repeats, const Floor& floor, const Call& call, const char* wanted) {
    if (!wordsGiven.empty()) {
        const auto named = [&](std::string_view word) { return std::string_view(name).starts_with(word); };
        if (std::any_of(wordsGiven.begin(), wordsGiven.end(), named)) {
            (void)nanoseconds(1, call);
        }
        return;
    }
    std::vector<double> ratios;
    std::vector<double> times;
    for (int round = 0; round < kRounds; ++round) {
        const double bare = nanoseconds(repeats, floor);
        const double own = nanoseconds(repeats, call);
        ratios.push_back(own / bare);
        times.push_back(own);
    }
    std::printf("%-52s %9.1f ns %8.2f   %s\n", name, median(times), median(ratios), wanted);
}

// Six terms of each coordinate from the inflection point, with the growth of the curvature given.
inline Point bareSeries(double growth, double along) {
    const double tau = 0.5 * growth * along * along;
    const double t = tau * tau;
    const double x =
        along * (1.0 - t * (1.0 / 10 - t * (1.0 / 216 - t * (1.0 / 9360 - t * (1.0 / 685440 - t / 76204800)))));
    const double y =
        along * tau *
        (1.0 / 3 - t * (1.0 / 42 - t * (1.0 / 1320 - t * (1.0 / 75600 - t * (1.0 / 6894720 - t / 918086400)))));
    return {x, y};
}

// The same, placed on the map.
struct Placed {
    Point origin;
    double cosine = 1.0;
    double sine = 0.0;
    double growth = 0.0;

    [[nodiscard]] Point at(double along) const {
        const Point local = bareSeries(growth, along);
        return {origin.x + local.x * cosine - local.y * sine, origin.y + local.x * sine + local.y * cosine};
    }
};

// From the middle, until a step is below 1e-7 m.
double bareNewton(double growth, double length, const Point& point) {
    constexpr double kStop = 1e-7;
    constexpr int kMostSteps = 20;
    double along = 0.5 * length;
    for (int step = 0; step < kMostSteps; ++step) {
        const Point on = bareSeries(growth, along);
        const double tau = 0.5 * growth * along * along;
        const double cosine = std::cos(tau);
        const double sine = std::sin(tau);
        const double ahead = (point.x - on.x) * cosine + (point.y - on.y) * sine;
        const double beside = (point.y - on.y) * cosine - (point.x - on.x) * sine;
        const double move = ahead / (1.0 - growth * along * beside);
        along += move;
        if (std::abs(move) < kStop) {
            break;
        }
    }
    return along;
}

void use(const Point& point) {
    Point copy = point;
    benchmark::DoNotOptimize(copy);
}

} // namespace

int main(int count, char** words) {
    wordsGiven.assign(words + 1, words + count);
    std::mt19937 random(kSeed);
    const auto between = [&](double low, double high) {
        return std::uniform_real_distribution<double>(low, high)(random);
    };

    // Clothoids of survey size: from an inflection point into 150 to 600 m, egg-shaped ones between such radii.
    std::vector<Curve> clothoids(kCases);
    std::vector<Curve> eggs(kCases);
    std::vector<Curve> arcs(kCases);
    std::vector<Curve> straights(kCases);
    std::vector<Curve> others(kCases);
    std::vector<PreparedCurve> preparedClothoids;
    std::vector<PreparedCurve> preparedEggs;
    std::vector<Placed> placed(kCases);
    std::vector<double> along(kCases);
    std::vector<Point> besideClothoid(kCases);
    std::vector<Point> besideEgg(kCases);
    std::vector<Point> besideLocal(kCases);
    std::vector<Pose> from(kCases);
    std::vector<Pose> to(kCases);
    std::vector<Pose> toAny(kCases);
    std::vector<double> lengths(kCases);
    for (std::size_t i = 0; i < kCases; ++i) {
        const Pose start{{between(-1e4, 1e4), between(-1e4, 1e4)}, between(-3.0, 3.0)};
        const double side = i % 2 == 0 ? 1.0 : -1.0;
        clothoids[i] = {start, between(40.0, 100.0), 0.0, side / between(150.0, 600.0)};
        eggs[i] = {start, between(40.0, 100.0), side / between(350.0, 600.0), side / between(150.0, 300.0)};
        preparedClothoids.emplace_back(clothoids[i]);
        preparedEggs.emplace_back(eggs[i]);
        placed[i] = {start.point, std::cos(start.azimuth), std::sin(start.azimuth),
                     clothoids[i].endCurvature / clothoids[i].length};
        along[i] = between(2.0, 38.0);
        const double offset = between(-20.0, 20.0);
        besideClothoid[i] = parallelPose(clothoids[i], along[i], offset).point;
        besideEgg[i] = parallelPose(eggs[i], along[i], offset).point;
        Curve local = clothoids[i];
        local.start = {};
        besideLocal[i] = parallelPose(local, along[i], offset).point;
        from[i] = start;
        lengths[i] = between(30.0, 300.0);
        to[i] = endPose({start, lengths[i], between(-2.0, 2.0) / lengths[i], between(-2.0, 2.0) / lengths[i]});
        toAny[i] = {{between(-1e4, 1e4), between(-1e4, 1e4)}, between(-3.14, 3.14)};
        // Curves that cross the clothoid somewhere, at 20 to 90 degrees.
        Pose there = poseAt(clothoids[i], between(5.0, 35.0));
        there.azimuth += between(0.35, 1.57) * side;
        const auto through = [&](Curve shape) {
            const Pose inside = poseAt(shape, between(5.0, 35.0));
            const Curve turned = moved(shape, inside.point, there.azimuth - inside.azimuth, {0.0, 0.0});
            return moved(turned, {0.0, 0.0}, 0.0, {there.point.x - inside.point.x, there.point.y - inside.point.y});
        };
        straights[i] = through(straight({}, 80.0));
        arcs[i] = through(arc({}, 80.0, side / between(150.0, 600.0)));
        others[i] = through({{}, 80.0, 0.0, -side / between(150.0, 600.0)});
    }

    std::printf("%-52s %12s %8s   wanted\n", "", "", "ratio");
    const auto nothing = [](std::size_t) {};
    compare("nothing", 1, nothing, nothing, "");
    const auto series = [&](std::size_t i) { use(bareSeries(placed[i].growth, along[i])); };
    const auto onMap = [&](std::size_t i) { use(placed[i].at(along[i])); };
    compare("six-term series placed on the map / bare", 100, series, onMap, "");
    compare(
        "point of a prepared clothoid / series on the map", 100, onMap,
        [&](std::size_t i) { use(preparedClothoids[i].pointAt(along[i])); }, "at most 4");
    compare(
        "point of a prepared egg-shaped / series on the map", 100, onMap,
        [&](std::size_t i) { use(preparedEggs[i].pointAt(along[i])); }, "");
    compare(
        "point of a clothoid / series on the map", 50, onMap,
        [&](std::size_t i) { use(pointAt(clothoids[i], along[i])); }, "at most 50 ns");
    compare(
        "point of an egg-shaped / series on the map", 50, onMap,
        [&](std::size_t i) { use(pointAt(eggs[i], along[i])); }, "at most 300 ns");
    const auto newton = [&](std::size_t i) {
        double s = bareNewton(placed[i].growth, clothoids[i].length, besideLocal[i]);
        benchmark::DoNotOptimize(s);
    };
    compare("floor of the nearest points: a bare Newton", 20, newton, newton, "");
    compare(
        "nearest point of a prepared clothoid / bare Newton", 20, newton,
        [&](std::size_t i) { use(nearestFoot(preparedClothoids[i], besideClothoid[i]).point); }, "at most 1.5");
    compare(
        "nearest point of a clothoid / bare Newton", 20, newton,
        [&](std::size_t i) { use(nearestFoot(clothoids[i], besideClothoid[i]).point); }, "at most 350 ns");
    compare(
        "nearest point of an egg-shaped / bare Newton", 20, newton,
        [&](std::size_t i) { use(nearestFoot(eggs[i], besideEgg[i]).point); }, "at most 600 ns");
    const auto fit = [&](const Pose& a, const Pose& b) {
        double length = fitG1(a, b).value_or(Curve{}).length;
        benchmark::DoNotOptimize(length);
    };
    compare(
        "clothoid through two poses of a road / series", 10, onMap, [&](std::size_t i) { fit(from[i], to[i]); },
        "at most 400 ns");
    compare(
        "clothoid through any two poses / series", 10, onMap, [&](std::size_t i) { fit(from[i], toAny[i]); },
        "at most 400 ns");
    const auto cross = [&](const Curve& a, const Curve& b) {
        std::size_t count = crossings(a, b).found.size();
        benchmark::DoNotOptimize(count);
    };
    compare(
        "crossings of two clothoids / series", 5, onMap, [&](std::size_t i) { cross(clothoids[i], others[i]); },
        "at most 1,100 ns");
    compare(
        "crossings of a clothoid and an arc / series", 5, onMap, [&](std::size_t i) { cross(clothoids[i], arcs[i]); },
        "at most 7,500 ns");
    compare(
        "crossings of a clothoid and a straight / series", 5, onMap,
        [&](std::size_t i) { cross(clothoids[i], straights[i]); }, "at most 1,600 ns");
    compare(
        "line within 1 mm / series", 2, onMap, [&](std::size_t i) { use(lineOf(clothoids[i], 1e-3).points.back()); },
        "");
    compare(
        "box / series", 5, onMap,
        [&](std::size_t i) {
            const Box box = boxOf(clothoids[i]);
            use({box.minX, box.maxY});
        },
        "");
    fenmark::bench::compareChains(wordsGiven);
    return 0;
}
