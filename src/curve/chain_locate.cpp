// From a point to distance and offset: the nearest place of the whole chain, and all that are locally nearest.
//
// Boxes around the pieces, eight by eight, leave a few pieces to look at. On a piece without an inflection that turns
// by less than half a circle the derivative of the squared distance has at most two zeros, since these are the tangents
// from the point to the evolute, a convex curve of the same turn. So there is at most one nearest point inside, it can
// be enclosed, and Newton's method cannot leave the enclosure. Pieces that turn further, the winding ones, are left to
// nearestFoot, and first to their bound (winding.h), since many of them may share one box.
//
// Symbols: g component along the tangent of the way from the curve to the point, e component to its right, k curvature;
// g' = k e - 1. A nearest point has g = 0, coming from above.
#include "curve/chain.h"

#include "curve/chain_limits.h"
#include "curve/reach.h"
#include "curve/unit_chord.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace fenmark::curve {

namespace {

// The foot is known to this, metres of distance. Seen in 20,000 seeded cases, as below: 1.0e-10.
constexpr double kFootTolerance = 2e-10;
// The offset is carried over the last step by its Taylor series to second order, good to 1e-11 m over this length
// (metres). Seen: 2.9e-11.
constexpr double kLastStep = 1e-3;
// How near the two feet of a point close to the evolute may lie before they are taken for one, metres. Seen: one
// foot found twice 2.0e-8 apart, two feet 2.0e-5 apart.
constexpr double kOneFoot = 1e-7;
constexpr int kMostSteps = 60; // Seen: 8
// A nearest point whose way to the given point leaves the normal by more than this (metres) is an end. Seen: 4.0e-7
// of feet, 1.1e-6 of ends.
constexpr double kPerpendicular = 1e-6;
// On a piece that turns further the derivative of g may change its sign twice between two feet, so that the ends do not
// tell of them. Then the nearest is never one of these, but all of them are wanted. Seen in 2,400,000 seeded cases: 1.9.
constexpr double kMostSureTurn = 0.5 * kPi;
// The most that a piece may turn on one side of its inflection to be searched here, radians.
constexpr double kMostTurn = 3.0;
// In how many parts a curve that winds up is seen before it is followed: the more, the more of them there are, up to where
// the parts of all take a few megabytes.
constexpr std::size_t kFewestParts = 4;
constexpr std::size_t kMostParts = 32;
constexpr std::size_t kPartsOfAll = 131'072;
// Of a curve that winds up; those around the nearest.
constexpr std::size_t kMostFeetOfACurve = 64;
// Pieces that turn by this at most, a quarter of a circle, have a reach.
constexpr double kMostReachTurn = 0.5 * kPi;
// A piece that turns less is boxed by its ends and its length alone.
constexpr double kSmallTurn = 1.0;

double squaredTo(double low, double high, double value) {
    const double out = std::max({low - value, value - high, 0.0});
    return out * out;
}

} // namespace

// What is wanted of a curve that winds up; of any other both are one.
enum class Chain::Which { Nearest, All };

// From the curve to the point, in the frame of the curve there.
struct Chain::Way {
    double g = 0.0;
    double e = 0.0;
    double k = 0.0;

    [[nodiscard]] double slope() const { return k * e - 1.0; } // g'
    [[nodiscard]] double squared() const { return g * g + e * e; }
};

struct Chain::Nearest {
    double squared = std::numeric_limits<double>::infinity();
    std::size_t piece = 0;
    double along = 0.0; // of the piece
    Way way;
};

void Chain::buildBoxes() {
    if (pieces_.empty()) {
        return;
    }
    std::vector<Box> level;
    level.reserve(pieces_.size());
    for (std::size_t i = 0; i < pieces_.size(); ++i) {
        const Curve& curve = curves_[starts_[i].curve];
        const double sharpest = std::max(std::abs(curve.startCurvature), std::abs(curve.endCurvature));
        Box box;
        if (sharpest * curve.length < kSmallTurn && curve.length < kVast) {
            // The curve lies in the ellipse around its ends that its length describes.
            const Point start = pointOn(i, 0.0);
            const Point end = pointOn(i, curve.length);
            const double dx = 0.5 * (end.x - start.x);
            const double dy = 0.5 * (end.y - start.y);
            const double minor = std::max(0.25 * curve.length * curve.length - dx * dx - dy * dy, 0.0);
            const double halfX = std::sqrt(dx * dx + minor);
            const double halfY = std::sqrt(dy * dy + minor);
            box = {start.x + dx - halfX, start.y + dy - halfY, start.x + dx + halfX, start.y + dy + halfY};
        } else {
            box = boxOf(curve);
        }
        const double reach = std::max({std::abs(box.minX), std::abs(box.minY), std::abs(box.maxX), std::abs(box.maxY)});
        const double margin = kOneFoot + 8.0 * std::numeric_limits<double>::epsilon() * reach;
        level.push_back({box.minX - margin, box.minY - margin, box.maxX + margin, box.maxY + margin});
    }
    boxes_.push_back(std::move(level));
    while (boxes_.back().size() > 1) {
        const std::vector<Box>& below = boxes_.back();
        std::vector<Box> above;
        above.reserve(below.size() / kFanOut + 1);
        for (std::size_t i = 0; i < below.size(); i += kFanOut) {
            Box box = below[i];
            for (std::size_t j = i + 1; j < std::min(i + kFanOut, below.size()); ++j) {
                box.minX = std::min(box.minX, below[j].minX);
                box.minY = std::min(box.minY, below[j].minY);
                box.maxX = std::max(box.maxX, below[j].maxX);
                box.maxY = std::max(box.maxY, below[j].maxY);
            }
            above.push_back(box);
        }
        boxes_.push_back(std::move(above));
    }
}

void Chain::buildWindings() {
    std::vector<std::size_t> winding;
    for (std::size_t i = 0; i < pieces_.size(); ++i) {
        if (starts_[i].form != Form::Any) {
            continue;
        }
        const Curve& curve = curves_[starts_[i].curve];
        const double growth = pieces_[i].growth;
        const double inflection = -curve.startCurvature / growth;
        const double turn = inflection > 0.0 && inflection < curve.length
                                ? 0.5 * std::max(std::abs(curve.startCurvature) * inflection,
                                                 std::abs(curve.endCurvature) * (curve.length - inflection))
                                : std::abs(turnAt(curve, curve.length));
        if (!(turn < kMostTurn) || !std::isfinite(growth)) {
            winding.push_back(i);
        }
    }
    if (winding.empty()) {
        return;
    }
    const std::size_t most = std::min(kMostParts, kPartsOfAll / winding.size());
    const std::size_t parts = std::max(kFewestParts, std::min(most, winding.size()));
    windingOf_.resize(pieces_.size());
    windings_.reserve(winding.size());
    for (const std::size_t i : winding) {
        windings_.emplace_back(curves_[starts_[i].curve], parts);
        windingOf_[i] = static_cast<std::uint32_t>(windings_.size());
    }
}

// Nothing for a piece that turns little.
const WindingBound* Chain::windingOf(std::size_t piece) const {
    return windingOf_.empty() || windingOf_[piece] == 0 ? nullptr : &windings_[windingOf_[piece] - 1];
}

// Calls take(along, way, inside) for every local minimum inside the piece and for its two ends. A nearest point that
// falls on an end may come as either.
template <typename Take>
void Chain::searchPiece(std::size_t index, const Point& point, Which which, const Take& take) const {
    const Piece& piece = pieces_[index];
    const Form form = starts_[index].form;
    const double length = lengthOf(index);
    const double dx = point.x - piece.x;
    const double dy = point.y - piece.y;
    const Point p{dx * piece.cosine + dy * piece.sine, dy * piece.cosine - dx * piece.sine};

    if (form == Form::Line) {
        take(0.0, Way{p.x, p.y, 0.0}, false);
        take(length, Way{p.x - length, p.y, 0.0}, false);
        if (p.x > 0.0 && p.x < length) {
            take(p.x, Way{0.0, p.y, 0.0}, true);
        }
        return;
    }

    const auto at = [&](double along) {
        Frame frame;
        double curvature;
        if (form == Form::Series) { // most clothoids, without a call
            const double w = piece.a + along;
            curvature = piece.growth * w;
            const double theta = 0.5 * curvature * w;
            const Complex local = inflectionSeries(w, theta);
            const Complex tangent = onUnitCircle(theta);
            frame = {{local.re - piece.shiftX, local.im - piece.shiftY}, {tangent.re, tangent.im}};
        } else {
            frame = localFrame(index, along);
            curvature = curvatureOn(index, along);
        }
        const double x = p.x - frame.point.x;
        const double y = p.y - frame.point.y;
        return Way{x * frame.tangent.x + y * frame.tangent.y, y * frame.tangent.x - x * frame.tangent.y, curvature};
    };

    if (form == Form::Arc) {
        const double curvature = piece.a;
        double angle = std::atan2(std::abs(curvature) * p.x, 1.0 - curvature * p.y);
        if (angle < 0.0) {
            angle += kTwoPi;
        }
        const double along = angle / std::abs(curvature);
        if (along < length) {
            take(along, at(along), true);
        }
        take(0.0, at(0.0), false);
        take(length, at(length), false);
        return;
    }

    const double growth = piece.growth;
    if (which == Which::Nearest && form == Form::Series) {
        const double first = std::abs(growth * piece.a);
        const double last = std::abs(growth * (piece.a + length));
        const double sharpest = std::max(first, last);
        if (sharpest * length <= kMostReachTurn) { // it turns by less, back and forth
            if (const auto found = nearestWithinReach(length, growth, sharpest, at)) {
                const double g = found->move == 0.0 ? found->seen.g : 0.0;
                const bool inside = found->along > 0.0 && found->along < length;
                take(found->along, Way{g, found->e, found->seen.k + growth * found->move}, inside);
                return;
            }
        }
    }
    const double inflection = form == Form::Series ? -piece.a : -piece.a / growth;
    const bool inflected = inflection > 0.0 && inflection < length;
    const Curve& curve = curves_[starts_[index].curve];
    const double sharpestEnd = std::max(std::abs(curve.startCurvature), std::abs(curve.endCurvature));
    if (windingOf(index) != nullptr || (which == Which::All && sharpestEnd * length > kMostSureTurn)) {
        take(0.0, at(0.0), false);
        take(length, at(length), false);
        const std::vector<fenmark::curve::Foot> feet =
            which == Which::All ? feetOf(curve, point, kMostFeetOfACurve).found
                                : std::vector<fenmark::curve::Foot>{nearestFoot(curve, point)};
        for (const fenmark::curve::Foot& foot : feet) {
            const double k = fenmark::curve::curvatureAt(curve, foot.along);
            if (foot.perpendicular && k * foot.offset < 1.0) {
                take(foot.along, Way{0.0, foot.offset, k}, true);
            }
        }
        return;
    }

    // Between low and high without an inflection.
    const auto search = [&](double low, const Way& atLow, double high, const Way& atHigh) {
        double gLow = atLow.g;
        double gHigh = atHigh.g;
        if (gLow <= 0.0 && gHigh >= 0.0) {
            return; // only a farthest point inside
        }
        if ((gLow > 0.0) == (gHigh > 0.0)) {
            // Two zeros or none: they enclose the extreme of g, which lies where g' changes its sign.
            const bool rising = gLow > 0.0;
            if (rising ? !(atLow.slope() < 0.0 && atHigh.slope() > 0.0)
                       : !(atLow.slope() > 0.0 && atHigh.slope() < 0.0)) {
                return;
            }
            double from = low;
            double to = high;
            bool found = false;
            for (int step = 0; step < kMostSteps && to - from > kOneFoot && !found; ++step) {
                const double middle = 0.5 * (from + to);
                const Way there = at(middle);
                if (there.g == 0.0 || (there.g > 0.0) != rising) {
                    found = true;
                    (rising ? high : low) = middle;
                    (rising ? gHigh : gLow) = there.g;
                } else if ((there.slope() < 0.0) == rising) {
                    from = middle;
                } else {
                    to = middle;
                }
            }
            if (!found) {
                return;
            }
        }
        // g falls from gLow > 0 to gHigh < 0: one zero.
        double along = low + (high - low) * (gLow / (gLow - gHigh));
        for (int step = 0; step < kMostSteps; ++step) {
            const Way there = at(along);
            if (there.g >= 0.0) {
                low = along;
            } else {
                high = along;
            }
            const double slope = there.slope();
            const double next = along - there.g / slope;
            if (!(slope < 0.0 && next >= low && next <= high)) {
                along = 0.5 * (low + high);
                continue;
            }
            // Newton's error is the square of the step times g'' / 2 g', where g'' = k' e - k^2 g.
            const double last = next - along;
            const double bend = growth * there.e - there.k * there.k * there.g;
            if (std::abs(last) < kLastStep && std::abs(bend / slope) * last * last < kFootTolerance) {
                // e' = -k g and e'' = -k' g - k g'.
                const double e =
                    there.e - there.k * there.g * last - 0.5 * (growth * there.g + there.k * slope) * last * last;
                take(next, Way{0.0, e, there.k + growth * last}, true);
                return;
            }
            along = next;
        }
        take(along, at(along), true);
    };

    const Way atStart = at(0.0);
    const Way atEnd = at(length);
    take(0.0, atStart, false);
    take(length, atEnd, false);
    if (inflected) {
        const Way there = at(inflection);
        search(0.0, atStart, inflection, there);
        if (there.g == 0.0) {
            take(inflection, there, true);
        }
        search(inflection, there, length, atEnd);
    } else {
        search(0.0, atStart, length, atEnd);
    }
}

void Chain::lookAtPiece(std::size_t piece, const Point& point, Nearest& best) const {
    if (const WindingBound* winding = windingOf(piece); winding != nullptr) {
        if (!winding->mayComeNearer(point, best.squared)) {
            return;
        }
    }
    searchPiece(piece, point, Which::Nearest, [&](double along, const Way& way, bool) {
        const double squared = way.squared();
        if (squared < best.squared) {
            best = {squared, piece, along, way};
        }
    });
}

void Chain::searchBoxes(std::size_t level, std::size_t box, const Point& point, Nearest& best) const {
    if (level == 0) {
        lookAtPiece(box, point, best);
        return;
    }
    const std::vector<Box>& below = boxes_[level - 1];
    const std::size_t first = box * kFanOut;
    const std::size_t count = std::min(kFanOut, below.size() - first);
    // Nearest box first, so that most of the others need no look.
    std::pair<double, std::size_t> order[kFanOut];
    for (std::size_t i = 0; i < count; ++i) {
        const Box& child = below[first + i];
        order[i] = {squaredTo(child.minX, child.maxX, point.x) + squaredTo(child.minY, child.maxY, point.y), first + i};
    }
    std::sort(order, order + count);
    for (std::size_t i = 0; i < count && order[i].first < best.squared; ++i) {
        searchBoxes(level - 1, order[i].second, point, best);
    }
}

// The turn of the tangents at the joint behind a piece; 0 at the chain's end.
double Chain::turnBehind(std::size_t piece) const {
    if (piece + 1 >= pieces_.size()) {
        return 0.0;
    }
    const Curve& before = curves_[starts_[piece].curve];
    return wrappedTurn(curves_[starts_[piece + 1].curve].start.azimuth - azimuthAt(before, before.length));
}

ChainFoot Chain::footOf(const Nearest& nearest) const {
    const double length = lengthOf(nearest.piece);
    const bool atStart = nearest.along < kJointTolerance;
    const bool atEnd = nearest.along > length - kJointTolerance;
    const double away = std::sqrt(nearest.squared);
    ChainFoot foot;
    foot.distance = std::min(starts_[nearest.piece].distance + nearest.along, length_);
    foot.curve = starts_[nearest.piece].curve;
    foot.offset = nearest.way.e < 0.0 ? -away : away;
    foot.perpendicular = std::abs(nearest.way.g) <= kPerpendicular;
    foot.atJoint = (atStart && nearest.piece > 0) || (atEnd && nearest.piece + 1 < pieces_.size());
    if (foot.atJoint && !foot.perpendicular) {
        // Seen along the tangent halfway between both, outside a kink of any angle is one side; and where the curves leave
        // a gap instead, the point keeps the side it has of both.
        const bool behind = atStart && nearest.piece > 0;
        const double half = 0.5 * turnBehind(behind ? nearest.piece - 1 : nearest.piece);
        const double toHalf = behind ? -half : half;
        const double right = nearest.way.e * std::cos(toHalf) - nearest.way.g * std::sin(toHalf);
        foot.offset = right < 0.0 ? -away : away;
    }
    return foot;
}

std::optional<ChainFoot> Chain::locateFrom(const Point& point, std::size_t& piece, double away) const {
    if (pieces_.empty() || !isFinite(point)) {
        return std::nullopt;
    }
    Nearest best;
    best.squared = away * away;
    best.piece = pieces_.size();
    if (!vast_ && std::abs(point.x) <= kVast && std::abs(point.y) <= kVast) {
        if (pieces_.size() > 1 && piece < pieces_.size()) {
            lookAtPiece(piece, point, best);
        }
        searchBoxes(boxes_.size() - 1, 0, point, best);
        if (best.piece == pieces_.size()) {
            return std::nullopt;
        }
        piece = best.piece;
        return footOf(best);
    }
    // Squares would overflow: curve by curve, by distances that do not.
    double nearest = std::numeric_limits<double>::infinity();
    ChainFoot result;
    for (std::size_t i = 0; i < pieces_.size(); ++i) {
        const fenmark::curve::Foot foot = nearestFoot(curves_[starts_[i].curve], point);
        if (std::abs(foot.offset) < nearest) {
            nearest = std::abs(foot.offset);
            result = {starts_[i].distance + foot.along, foot.offset, starts_[i].curve, foot.perpendicular, false};
        }
    }
    return std::isfinite(nearest) ? std::optional(result) : std::nullopt;
}

std::optional<ChainFoot> Chain::locate(const Point& point) const {
    std::size_t none = pieces_.size();
    return locateFrom(point, none, std::numeric_limits<double>::infinity());
}

std::optional<ChainFoot> Chain::locateWithin(const Point& point, double away) const {
    std::size_t none = pieces_.size();
    const std::optional<ChainFoot> foot = locateFrom(point, none, away + kOneFoot); // one just that far away is found
    return foot && std::abs(foot->offset) <= away ? foot : std::nullopt;
}

std::size_t Chain::locate(std::span<const Point> points, std::span<ChainFoot> feet) const {
    constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
    std::size_t found = 0;
    std::size_t piece = pieces_.size();
    for (std::size_t i = 0; i < std::min(points.size(), feet.size()); ++i) {
        const std::optional<ChainFoot> foot = locateFrom(points[i], piece, std::numeric_limits<double>::infinity());
        feet[i] = foot.value_or(ChainFoot{kNone, kNone, 0, false, false});
        found += foot ? 1 : 0;
    }
    return found;
}

std::vector<ChainFoot> Chain::feet(const Point& point) const {
    std::vector<ChainFoot> all;
    if (pieces_.empty() || !isFinite(point)) {
        return all;
    }
    const auto add = [&](const Nearest& nearest) {
        const ChainFoot foot = footOf(nearest);
        // A foot beside a joint is found from both sides of it.
        if (all.empty() || foot.distance - all.back().distance > kOneFoot) {
            all.push_back(foot);
        }
    };
    std::optional<Nearest> endBefore; // of the piece before, where the point lies ahead of it
    bool aheadOfBefore = false;
    for (std::size_t i = 0; i < pieces_.size(); ++i) {
        Nearest atStart;
        Nearest atEnd;
        std::vector<Nearest> inside;
        searchPiece(i, point, Which::All, [&](double along, const Way& way, bool within) {
            const Nearest here{way.squared(), i, along, way};
            if (within) {
                inside.push_back(here);
            } else if (along == 0.0) {
                atStart = here;
            } else {
                atEnd = here;
            }
        });
        std::sort(inside.begin(), inside.end(), [](const Nearest& a, const Nearest& b) { return a.along < b.along; });
        // At the joint the distance falls towards it from both sides. Over a gap each end stands for itself.
        const bool joined = i > 0 && endBefore &&
                            std::abs(std::sqrt(endBefore->squared) - std::sqrt(atStart.squared)) <= kPerpendicular;
        const bool behindStart = atStart.way.g <= 0.0;
        if (i == 0 ? behindStart : joined && aheadOfBefore && behindStart) {
            add(atStart);
        } else if (i > 0 && !joined) {
            if (aheadOfBefore) {
                add(*endBefore);
            }
            if (behindStart) {
                add(atStart);
            }
        }
        for (const Nearest& foot : inside) {
            add(foot);
        }
        endBefore = lengthOf(i) > 0.0 ? atEnd : atStart;
        aheadOfBefore = endBefore->way.g >= 0.0;
    }
    if (aheadOfBefore) {
        add(*endBefore);
    }
    return all;
}

} // namespace fenmark::curve
