// Three clothoids through two poses with curvatures.
//
// The first and the last take the same share of the whole length L. Their curvatures at the joints, ka and kb, have a sum
// that follows from the turn, so that L and ka - kb are left for the two coordinates of the end: Newton's method from the
// single clothoid between the poses. The smaller the share, the nearer the three come to that single one, so that a share
// is found for any values; the largest of a list is taken, since it bends least suddenly.
// Source: [Bertolazzi 2018].
#include "curve/curve.h"
#include "curve/unit_chord.h"

#include <algorithm>
#include <cmath>

namespace fenmark::curve {

namespace {

constexpr int kMostG2Steps = 30;
constexpr double kDifference = 1e-7; // for the derivatives, as a share of the values
constexpr double kGoodG2 = 1e-13;    // of the length: how far off the end may lie. Seen in 2,600 cases: 1.1e-14
constexpr double kLongest = 4.0;     // times the single clothoid's length, and 1 / kLongest of it
constexpr std::array<double, 14> kShares = {0.3,  0.25, 0.2,  0.15, 0.1,  0.07, 0.05,
                                            0.03, 0.02, 0.01, 3e-3, 1e-3, 1e-4, 1e-5};

struct Task {
    Pose from; // the start lies in the origin
    Point to;
    double k0 = 0.0;
    double k1 = 0.0;
    double turn = 0.0;
    double share = 0.0;

    [[nodiscard]] std::array<Curve, 3> lay(double length, double difference) const {
        const double sum = (2.0 * turn / length - share * (k0 + k1)) / (1.0 - share);
        const double ka = 0.5 * (sum + difference);
        const double kb = 0.5 * (sum - difference);
        const double side = share * length;
        std::array<Curve, 3> curves;
        curves[0] = {from, side, k0, ka};
        curves[1] = {endPose(curves[0]), length - 2.0 * side, ka, kb};
        curves[2] = {endPose(curves[1]), side, kb, k1};
        return curves;
    }
    [[nodiscard]] Point miss(double length, double difference) const {
        const Point end = endPose(lay(length, difference)[2]).point;
        return {end.x - to.x, end.y - to.y};
    }
};

std::optional<std::array<Curve, 3>> solve(const Task& task, const Curve& single) {
    const double chord = std::hypot(task.to.x, task.to.y);
    double length = single.length;
    double difference = (single.startCurvature - single.endCurvature) * (1.0 - 2.0 * task.share);
    Point off = task.miss(length, difference);
    for (int step = 0; step < kMostG2Steps; ++step) {
        const double size = std::hypot(off.x, off.y);
        if (!std::isfinite(size)) {
            return std::nullopt;
        }
        const double dl = kDifference * length;
        const double dd = kDifference / chord;
        const Point byLength = task.miss(length + dl, difference);
        const Point byDifference = task.miss(length, difference + dd);
        const double a = (byLength.x - off.x) / dl;
        const double b = (byDifference.x - off.x) / dd;
        const double c = (byLength.y - off.y) / dl;
        const double d = (byDifference.y - off.y) / dd;
        const double determinant = a * d - b * c;
        const double moveL = (b * off.y - d * off.x) / determinant;
        const double moveD = (c * off.x - a * off.y) / determinant;
        if (!std::isfinite(moveL) || !std::isfinite(moveD)) {
            break;
        }
        // Shorter steps where a whole one leads away.
        bool nearer = false;
        for (double damping = 1.0; damping > 1e-3 && !nearer; damping *= 0.5) {
            const double nextL = length + damping * moveL;
            const double nextD = difference + damping * moveD;
            if (!(nextL > single.length / kLongest && nextL < single.length * kLongest)) {
                continue;
            }
            const Point there = task.miss(nextL, nextD);
            if (std::hypot(there.x, there.y) < size) {
                length = nextL;
                difference = nextD;
                off = there;
                nearer = true;
            }
        }
        if (!nearer) {
            break;
        }
    }
    if (!(std::hypot(off.x, off.y) <= kGoodG2 * length)) {
        return std::nullopt;
    }
    return task.lay(length, difference);
}

} // namespace

std::optional<std::array<Curve, 3>> fitG2(const Pose& from, double fromCurvature, const Pose& to, double toCurvature) {
    const std::optional<Curve> single = fitG1(from, to);
    if (!single) {
        return std::nullopt;
    }
    Task task;
    task.from.azimuth = from.azimuth;
    task.to = {to.point.x - from.point.x, to.point.y - from.point.y};
    task.k0 = fromCurvature;
    task.k1 = toCurvature;
    task.turn = turnAt(*single, single->length);
    for (const double share : kShares) {
        task.share = share;
        if (auto curves = solve(task, *single)) {
            for (Curve& curve : *curves) {
                curve.start.point.x += from.point.x;
                curve.start.point.y += from.point.y;
                if (!isUsable(curve)) {
                    return std::nullopt;
                }
            }
            return curves;
        }
    }
    return std::nullopt;
}

} // namespace fenmark::curve
