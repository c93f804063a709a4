// Point at station against a bare series of a clothoid, nearest point against a bare iteration of Newton's method.
#include "import/embedded_geometry_bench.h"

#include "bare_series.h"
#include "drawing/alignment_geometry.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <random>
#include <vector>

namespace fenmark::bench {

namespace {

using drawing::AlignmentGeometry;
using drawing::Element;
using drawing::ElementType;
using drawing::kInfiniteRadius;
using host::PlanPoint;

constexpr int kElements = 10'000;
constexpr int kQuestions = 1 << 20;
constexpr int kRounds = 7;
constexpr unsigned kSeed = 4242;

// Nanoseconds of the processor for each question, of the best round.
template <typename Ask>
double nanoseconds(int count, Ask ask) {
    double best = kInfiniteRadius;
    for (int round = 0; round < kRounds; ++round) {
        const std::clock_t start = std::clock();
        for (int i = 0; i < count; ++i) {
            ask(static_cast<std::size_t>(i));
        }
        const double seconds = static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
        best = std::min(best, 1e9 * seconds / count);
    }
    return best;
}

// A clothoid that is known, with the sine and cosine of its start.
struct Placed {
    double x, y, cosine, sine, a;
};

// The series placed on the map. A call, as the question to an alignment is one.
[[gnu::noinline]] PlanPoint barePoint(const Placed& spiral, double length) {
    const BarePoint local = bareSeries(spiral.a, length);
    return {spiral.x + local.x * spiral.cosine - local.y * spiral.sine,
            spiral.y + local.x * spiral.sine + local.y * spiral.cosine};
}

// From the middle until a step is below a tenth of a micrometre: point, tangent, derivative. It asks neither whether it
// converges nor whether the foot is the right one.
double bareNewton(double a, double length, const PlanPoint& point) {
    constexpr double kStop = 1e-7;
    constexpr int kMostSteps = 20;
    double along = 0.5 * length;
    for (int step = 0; step < kMostSteps; ++step) {
        const BarePoint on = bareSeries(a, along);
        const double tau = along * along / (2.0 * a * a);
        const double cosine = std::cos(tau);
        const double sine = std::sin(tau);
        const double ahead = (point.x - on.x) * cosine + (point.y - on.y) * sine;
        const double beside = (point.y - on.y) * cosine - (point.x - on.x) * sine;
        const double move = ahead / (1.0 - along / (a * a) * beside);
        along += move;
        if (std::abs(move) < kStop) {
            break;
        }
    }
    return along;
}

Element clothoid(PlanPoint start, double direction, double startRadius, double endRadius, double length, bool right) {
    Element element;
    element.type = ElementType::Clothoid;
    element.start = start;
    element.direction = direction;
    element.startRadius = startRadius;
    element.endRadius = endRadius;
    element.length = length;
    element.clockwise = right;
    element.end = poseOnElement(element, length).point;
    return element;
}

// Straight, clothoid, arc, clothoid, again and again, in both senses.
std::vector<Element> road(std::mt19937& random) {
    std::vector<Element> chain;
    drawing::Pose pose;
    for (int i = 0; i < kElements; ++i) {
        const bool right = (i / 4) % 2 == 0;
        const double radius = 150.0 + static_cast<double>(random() % 500);
        Element element;
        element.start = pose.point;
        element.direction = pose.direction;
        element.length = 40.0 + static_cast<double>(random() % 60);
        element.clockwise = right;
        if (i % 4 == 1 || i % 4 == 3) {
            element = clothoid(pose.point, pose.direction, i % 4 == 1 ? kInfiniteRadius : radius,
                               i % 4 == 1 ? radius : kInfiniteRadius, element.length, right);
        } else if (i % 4 == 2) {
            element.type = ElementType::Arc;
            element.startRadius = element.endRadius = radius;
        }
        const drawing::Pose end = poseOnElement(element, element.length);
        element.end = end.point;
        pose = end;
        chain.push_back(element);
    }
    return chain;
}

} // namespace

void compareGeometry() {
    std::mt19937 random(kSeed);
    const auto uniform = [&](double low, double high) { return std::uniform_real_distribution(low, high)(random); };
    const AlignmentGeometry geometry(road(random), 0.0);
    std::vector<double> stations(kQuestions);
    std::vector<double> lengths(kQuestions);
    std::vector<Placed> spirals(kQuestions);
    for (int i = 0; i < kQuestions; ++i) {
        stations[static_cast<std::size_t>(i)] = uniform(0.0, geometry.length());
        lengths[static_cast<std::size_t>(i)] = uniform(1.0, 100.0);
        spirals[static_cast<std::size_t>(i)] = {uniform(-1e4, 1e4), uniform(-1e4, 1e4), 0.6, 0.8, uniform(80.0, 200.0)};
    }
    const double series =
        nanoseconds(kQuestions, [&](std::size_t i) { benchmark::DoNotOptimize(barePoint(spirals[i], lengths[i])); });
    const double station =
        nanoseconds(kQuestions, [&](std::size_t i) { benchmark::DoNotOptimize(geometry.pointAt(stations[i])); });
    const double offset =
        nanoseconds(kQuestions, [&](std::size_t i) { benchmark::DoNotOptimize(geometry.pointAt(stations[i], 3.0)); });
    std::sort(stations.begin(), stations.end());
    const double rising =
        nanoseconds(kQuestions, [&](std::size_t i) { benchmark::DoNotOptimize(geometry.pointAt(stations[i])); });

    const Element spiral = clothoid({0, 0}, 0.0, kInfiniteRadius, 200.0, 100.0, false);
    const AlignmentGeometry one(std::span(&spiral, 1), 0.0);
    std::vector<PlanPoint> points(kQuestions);
    for (PlanPoint& point : points) {
        point = one.pointAt(uniform(0.0, 100.0), uniform(-100.0, 100.0)).value();
    }
    const double a = std::sqrt(100.0 * 200.0);
    const double newton =
        nanoseconds(kQuestions, [&](std::size_t i) { benchmark::DoNotOptimize(bareNewton(a, 100.0, points[i])); });
    const double nearest =
        nanoseconds(kQuestions, [&](std::size_t i) { benchmark::DoNotOptimize(one.locate(points[i])); });
    for (PlanPoint& point : points) {
        point = geometry.pointAt(uniform(0.0, geometry.length()), uniform(-50.0, 50.0)).value();
    }
    const double nearestOfAll =
        nanoseconds(kQuestions / 16, [&](std::size_t i) { benchmark::DoNotOptimize(geometry.locate(points[i])); });

    std::printf("geometry of alignments, nanoseconds for each:\n");
    std::printf("  bare series of six terms, placed                  %8.1f\n", series);
    std::printf("  point at a random station of %d elements       %8.1f\n", kElements, station);
    std::printf("  the same with an offset                           %8.1f\n", offset);
    std::printf("  the same by rising stations, without              %8.1f\n", rising);
    std::printf("  bare Newton iteration on one clothoid             %8.1f\n", newton);
    std::printf("  nearest point of one clothoid                     %8.1f\n", nearest);
    std::printf("  nearest point of %d elements                   %8.1f\n", kElements, nearestOfAll);
    std::printf("  point at station / series                         %8.2f   (at most 8)\n", station / series);
    std::printf("  nearest point / Newton iteration                  %8.2f   (at most 6)\n", nearest / newton);
}

} // namespace fenmark::bench
