// The chain as a whole: joints, box, the line drawn for it, the chain turned round, crossings with another.
#include "curve/chain.h"

#include "curve/chain_limits.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace fenmark::curve {

std::vector<ChainJoint> Chain::joints() const {
    std::vector<ChainJoint> all;
    for (std::size_t i = 1; i < pieces_.size(); ++i) {
        const Curve& before = curves_[starts_[i - 1].curve];
        const Curve& behind = curves_[starts_[i].curve];
        const Pose end = endPose(before);
        ChainJoint joint;
        joint.distance = starts_[i].distance;
        joint.curve = starts_[i].curve;
        joint.gap = std::hypot(behind.start.point.x - end.point.x, behind.start.point.y - end.point.y);
        joint.turn = wrappedTurn(behind.start.azimuth - end.azimuth);
        joint.curvatureStep = behind.startCurvature - before.endCurvature;
        all.push_back(joint);
    }
    return all;
}

std::optional<Box> Chain::box() const {
    std::optional<Box> all;
    for (const Start& start : starts_) {
        const Box box = boxOf(curves_[start.curve]);
        if (!all) {
            all = box;
            continue;
        }
        all->minX = std::min(all->minX, box.minX);
        all->minY = std::min(all->minY, box.minY);
        all->maxX = std::max(all->maxX, box.maxX);
        all->maxY = std::max(all->maxY, box.maxY);
    }
    return all;
}

namespace {

// About how many chords a curve needs: a chord of the length c leaves a curvature k by k c^2 / 8, so their number is the
// integral of sqrt(|k| / (8 tolerance)), which is known in closed form for an evenly changing curvature.
double chordsOf(const Curve& curve, double tolerance) {
    const double first = std::abs(curve.startCurvature);
    const double last = std::abs(curve.endCurvature);
    const double change = std::abs(curve.endCurvature - curve.startCurvature);
    double mean; // of sqrt(|k|)
    if (change <= 1e-3 * std::max(first, last)) {
        mean = std::sqrt(0.5 * first + 0.5 * last);
    } else {
        const double a = first * (std::sqrt(first) / change);
        const double b = last * (std::sqrt(last) / change);
        const bool inflected = (curve.startCurvature > 0.0) != (curve.endCurvature > 0.0);
        mean = 2.0 / 3.0 * (inflected ? a + b : std::abs(b - a));
    }
    // No chord turns by more than a quarter circle, see lineOf.
    const double byTurn = std::sqrt(std::max(first, last)) / (0.5 * kPi);
    return 1.0 + mean * curve.length * std::max(1.0 / std::sqrt(8.0 * tolerance), byTurn);
}

} // namespace

ChainLine Chain::line(double tolerance, std::size_t mostPoints) const {
    ChainLine line;
    if (pieces_.empty() || !(tolerance > 0.0)) {
        return line;
    }
    std::vector<double> chords;
    chords.reserve(pieces_.size());
    for (const Start& start : starts_) {
        chords.push_back(std::min(chordsOf(curves_[start.curve], tolerance), 1e18));
    }
    const double needed = std::accumulate(chords.begin(), chords.end(), 0.0);
    const double room = std::max(static_cast<double>(mostPoints) - 2.0 * static_cast<double>(pieces_.size()), 0.0);
    // The estimate may be short of what a curve takes by a few points.
    const bool bounded = 1.25 * needed > room;
    line.tolerance = tolerance;
    for (std::size_t i = 0; i < pieces_.size(); ++i) {
        const double share = bounded ? room * (chords[i] / needed) : 1.25 * chords[i] + 8.0;
        const auto most = static_cast<std::size_t>(std::min(share, static_cast<double>(mostPoints))) + 2;
        const Line part = lineOf(curves_[starts_[i].curve], tolerance, most);
        line.tolerance = std::max(line.tolerance, part.withinTolerance ? 0.0 : part.error);
        const bool joins = !line.points.empty() && !part.points.empty() && line.points.back() == part.points.front();
        line.points.insert(line.points.end(), part.points.begin() + (joins ? 1 : 0), part.points.end());
    }
    return line;
}

Chain Chain::reversed(double startStation) const {
    std::vector<Curve> curves;
    curves.reserve(curves_.size());
    for (std::size_t i = curves_.size(); i-- > 0;) {
        curves.push_back(fenmark::curve::reversed(curves_[i]));
    }
    Chain chain;
    if (chain.set(curves, startStation) != ChainStatus::Ok) {
        return {};
    }
    return chain;
}

std::vector<ChainCrossing> Chain::crossings(const Chain& other) const {
    std::vector<ChainCrossing> all;
    if (empty() || other.empty()) {
        return all;
    }
    const auto apart = [](const Box& a, const Box& b) {
        return a.maxX < b.minX || b.maxX < a.minX || a.maxY < b.minY || b.maxY < a.minY;
    };
    // Both trees are walked down together: the larger box is opened, until two pieces are left.
    struct Pair {
        std::size_t level, box, otherLevel, otherBox;
    };
    std::vector<Pair> open{{boxes_.size() - 1, 0, other.boxes_.size() - 1, 0}};
    while (!open.empty()) {
        const Pair pair = open.back();
        open.pop_back();
        if (apart(boxes_[pair.level][pair.box], other.boxes_[pair.otherLevel][pair.otherBox])) {
            continue;
        }
        if (pair.level == 0 && pair.otherLevel == 0) {
            const Start& mine = starts_[pair.box];
            const Start& theirs = other.starts_[pair.otherBox];
            const Crossings found = fenmark::curve::crossings(curves_[mine.curve], other.curves_[theirs.curve]);
            for (const Crossing& one : found.found) {
                all.push_back({mine.distance + one.alongFirst, theirs.distance + one.alongSecond, one.point, one.angle,
                               one.tangent});
            }
            continue;
        }
        if (pair.level >= pair.otherLevel) {
            const std::size_t first = pair.box * kFanOut;
            for (std::size_t i = first; i < std::min(first + kFanOut, boxes_[pair.level - 1].size()); ++i) {
                open.push_back({pair.level - 1, i, pair.otherLevel, pair.otherBox});
            }
        } else {
            const std::size_t first = pair.otherBox * kFanOut;
            for (std::size_t i = first; i < std::min(first + kFanOut, other.boxes_[pair.otherLevel - 1].size()); ++i) {
                open.push_back({pair.level, pair.box, pair.otherLevel - 1, i});
            }
        }
    }
    std::sort(all.begin(), all.end(), [](const ChainCrossing& a, const ChainCrossing& b) {
        return a.distance != b.distance ? a.distance < b.distance : a.otherDistance < b.otherDistance;
    });
    // A crossing on a joint is found by the curves on both sides of it.
    std::vector<ChainCrossing> once;
    for (const ChainCrossing& crossing : all) {
        bool known = false;
        for (std::size_t i = once.size(); i-- > 0 && crossing.distance - once[i].distance <= kSamePlace && !known;) {
            known = std::abs(crossing.otherDistance - once[i].otherDistance) <= kSamePlace;
        }
        if (!known) {
            once.push_back(crossing);
        }
    }
    return once;
}

} // namespace fenmark::curve
