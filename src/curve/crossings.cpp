// Where two curves meet.
//
// Straights and circles meet in closed form. With a clothoid, pieces of both curves are compared: pieces that turn by a
// quarter at most lie in a rectangle along their chord (as wide as the chord's error), longer ones in the circle about
// their middle and in the osculating circle of their flat end, and outside that of their sharp end. Pieces that may meet
// fall into three kinds:
//  - their directions differ throughout: they meet once at most, and Newton's method finds where;
//  - they may be parallel, and one is bent more throughout: the gap between them has one extreme, so that they meet twice
//    at most. The extreme is found first: there they touch, or the crossings lie on both sides of it at a distance that
//    the gap and the curvatures give. So crossings of nearly parallel curves come out as exactly as the curves are;
//  - otherwise the wider one is halved.
#include "curve/crossing_search.h"
#include "curve/wings.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace fenmark::curve::crossing {

namespace {

constexpr double kQuarter = 0.5 * kPi;
constexpr std::size_t kMostPairs = 20'000; // of pieces, against curves that wind thousands of times; else seen: 5,244
// Halvings of both pieces together. Lengths of 1e15 m come down to the last bit with fewer; values beyond that would go
// on without an end.
constexpr int kDeepest = 200;
constexpr int kMostDepth = 120; // from here on chords stand for the pieces; seen: 36

} // namespace

Piece Search::piece(const PreparedCurve& curve, double from, double to) {
    const Curve& plain = curve.curve();
    Piece piece;
    piece.from = from;
    piece.to = to;
    piece.a = curve.frameAt(from);
    piece.b = curve.frameAt(to);
    piece.azimuthA = azimuthAt(plain, from);
    piece.azimuthB = azimuthAt(plain, to);
    piece.kA = curve.curvatureAt(from);
    piece.kB = curve.curvatureAt(to);
    return piece;
}

std::vector<Piece> Search::wings(const PreparedCurve& curve) {
    const Wings wings = wingsOf(curve.curve());
    std::vector<Piece> pieces;
    pieces.reserve(wings.count);
    for (std::size_t i = 0; i < wings.count; ++i) {
        const Wing& wing = wings.wing[i];
        pieces.push_back(piece(curve, std::min(wing.flat, wing.sharp), std::max(wing.flat, wing.sharp)));
    }
    return pieces;
}

void Search::record(double s, double t, bool touch) {
    record({s, t, first_.frameAt(s), second_.frameAt(t), true}, touch);
}

void Search::record(const Meeting& m, bool touch) {
    if (result_.found.size() >= 4 * most_) {
        result_.complete = false;
        return;
    }
    const Point a = m.first.point;
    const Point b = m.second.point;
    const double angle = std::atan2(cross(m.first.tangent, m.second.tangent), dot(m.first.tangent, m.second.tangent));
    result_.found.push_back({m.s, m.t, {a.x + 0.5 * (b.x - a.x), a.y + 0.5 * (b.y - a.y)}, angle, touch});
}

void Search::halve(const Piece& p, const Piece& q, int depth, bool firstOne) {
    const Piece& wide = firstOne ? p : q;
    const double middle = wide.from + 0.5 * wide.length();
    const PreparedCurve& curve = firstOne ? first_ : second_;
    Piece low = piece(curve, wide.from, middle);
    Piece high = low;
    high.from = middle;
    high.to = wide.to;
    high.a = low.b;
    high.b = wide.b;
    high.azimuthA = low.azimuthB;
    high.azimuthB = wide.azimuthB;
    high.kA = low.kB;
    high.kB = wide.kB;
    for (const Piece& half : {low, high}) {
        if (firstOne) {
            compare(half, q, depth + 1);
        } else {
            compare(p, half, depth + 1);
        }
    }
}

void Search::compare(const Piece& p, const Piece& q, int depth) {
    if (++pairs_ > kMostPairs || depth > kDeepest || result_.found.size() >= 4 * most_) {
        result_.complete = false;
        return;
    }
    const double turnP = p.turn();
    const double turnQ = q.turn();
    if (turnP > kQuarter || turnQ > kQuarter) {
        if (!apartByDiscs(first_, p, second_, q)) {
            halve(p, q, depth, turnP >= turnQ);
        }
        return;
    }
    if (apartByBands(p, q)) {
        return;
    }
    const auto [lowP, highP] = std::minmax({p.azimuthA, p.azimuthB});
    const auto [lowQ, highQ] = std::minmax({q.azimuthA, q.azimuthB});
    const double low = lowQ - highP;
    const double high = highQ - lowP;
    if (!holdsMultiple(low, high)) {
        if (oneAtMost(p, q)) {
            return;
        }
    } else {
        const double multiple = std::round(0.5 * (low + high) / kPi);
        const double sense = std::fmod(multiple, 2.0) == 0.0 ? 1.0 : -1.0;
        const auto [lowK, highK] = std::minmax({p.kA, p.kB});
        const auto [lowL, highL] = std::minmax({sense * q.kA, sense * q.kB});
        if (high - low < kQuarter && (highK < lowL || highL < lowK) && twoAtMost(p, q, multiple)) {
            return;
        }
    }
    const bool thin = p.width() <= 0.25 * tolerance_ && q.width() <= 0.25 * tolerance_;
    if (thin || depth > kMostDepth) {
        meetAsChords(p, q);
        return;
    }
    const double widthP = p.width();
    const double widthQ = q.width();
    halve(p, q, depth, widthP == widthQ ? p.length() >= q.length() : widthP > widthQ);
}

// Curves that are one over some length.
bool Search::overlaps() {
    // Growths that would part them by more than the tolerance over the shorter length exclude it at little cost.
    const double shorter = std::min(first().length, second().length);
    if (std::abs(growthOf(first()) - growthOf(second())) * shorter * shorter * shorter > 64.0 * same_) {
        return false;
    }
    double from = std::numeric_limits<double>::infinity();
    double to = -from;
    double atFrom = 0.0;
    double atTo = 0.0;
    const auto take = [&](double s, double t, double offset) {
        if (std::abs(offset) > same_) {
            return;
        }
        if (s < from) {
            from = s;
            atFrom = t;
        }
        if (s > to) {
            to = s;
            atTo = t;
        }
    };
    for (const double t : {0.0, second().length}) {
        const Foot foot = nearestFoot(first_, second_.pointAt(t));
        take(foot.along, t, foot.offset);
    }
    for (const double s : {0.0, first().length}) {
        const Foot foot = nearestFoot(second_, first_.pointAt(s));
        take(s, foot.along, foot.offset);
    }
    if (!(from <= to)) {
        return false; // no end of one lies on the other
    }
    if (runsOnSecond(from, to)) {
        record(from, atFrom, true);
        record(to, atTo, true);
        result_.overlap = true;
        return true;
    }
    const auto winds = [](const Curve& c) {
        return std::max(std::abs(c.startCurvature), std::abs(c.endCurvature)) * c.length > 2.0 * kPi;
    };
    return (winds(first()) || winds(second())) && overlapsInTurns();
}

// Whether the first lies on the second from one length to another.
bool Search::runsOnSecond(double from, double to) const {
    if (!(to - from > 4.0 * same_)) {
        return false;
    }
    constexpr double kShares[] = {0.25, 0.5, 0.75};
    return std::all_of(std::begin(kShares), std::end(kShares), [&](double share) {
        return std::abs(nearestFoot(second_, first_.pointAt(from + share * (to - from))).offset) <= same_;
    });
}

// A curve that winds on nearly one circle lies on itself, so that the nearest foot of an end may be one turn off the
// place where the other curve really ends. All feet of the ends cut the first into parts that are on the second or off.
bool Search::overlapsInTurns() {
    std::vector<double> cuts{0.0, first().length};
    for (const double t : {0.0, second().length}) {
        for (const Foot& foot : feetOf(first(), second_.pointAt(t)).found) {
            if (std::abs(foot.offset) <= same_) {
                cuts.push_back(foot.along);
            }
        }
    }
    std::sort(cuts.begin(), cuts.end());
    for (std::size_t i = 0; i + 1 < cuts.size(); ++i) {
        if (runsOnSecond(cuts[i], cuts[i + 1])) {
            for (const double s : {cuts[i], cuts[i + 1]}) {
                record(s, nearestFoot(second_, first_.pointAt(s)).along, true);
            }
            result_.overlap = true;
        }
    }
    return result_.overlap;
}

// By length along the first, each place once.
void Search::tidy() {
    std::vector<Crossing>& found = result_.found;
    for (Crossing& crossing : found) {
        crossing.alongFirst = std::clamp(crossing.alongFirst, 0.0, first().length);
        crossing.alongSecond = std::clamp(crossing.alongSecond, 0.0, second().length);
    }
    std::sort(found.begin(), found.end(), [](const Crossing& a, const Crossing& b) {
        return a.alongFirst != b.alongFirst ? a.alongFirst < b.alongFirst : a.alongSecond < b.alongSecond;
    });
    std::vector<Crossing> once;
    for (const Crossing& crossing : found) {
        bool known = false;
        for (std::size_t back = once.size(); back > 0 && !known; --back) {
            Crossing& other = once[back - 1];
            const double ds = crossing.alongFirst - other.alongFirst;
            const double dt = std::abs(crossing.alongSecond - other.alongSecond);
            // A touch is as wide as the curves run within the tolerance of each other.
            const bool touches = crossing.tangent || other.tangent;
            const double reach = touches && !result_.overlap
                                     ? std::max(1e6 * tolerance_, same_)
                                     : 8.0 * same_ / std::max(std::abs(std::sin(other.angle)), 1e-6);
            if (ds > reach) {
                break;
            }
            if (dt <= reach && (touches || norm(crossing.point - other.point) <= 4.0 * same_)) {
                known = true;
                other.tangent = other.tangent || crossing.tangent;
            }
        }
        if (!known) {
            once.push_back(crossing);
        }
    }
    found = std::move(once);
    if (found.size() > most_) {
        found.resize(most_);
        result_.complete = false;
    }
}

Crossings Search::run() {
    if (!closedForms() && !overlaps()) {
        for (const Piece& p : wings(first_)) {
            for (const Piece& q : wings(second_)) {
                compare(p, q, 0);
            }
        }
    }
    tidy();
    return std::move(result_);
}

} // namespace fenmark::curve::crossing

namespace fenmark::curve {

Crossings crossings(const Curve& first, const Curve& second, double tolerance, std::size_t most) {
    return crossing::Search(first, second, tolerance, most).run();
}

} // namespace fenmark::curve
