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
#include "curve/curve.h"
#include "curve/unit_chord.h"
#include "curve/wings.h"

#include <algorithm>
#include <cmath>

namespace fenmark::curve {

namespace {

constexpr double kQuarter = 0.5 * kPi;
constexpr double kUneven = 1.03;           // chord error over that of the mean curvature, at most
constexpr std::size_t kMostPairs = 20'000; // of pieces, against curves that wind thousands of times
// Halvings of both pieces together. Lengths of 1e15 m come down to the last bit with fewer; values beyond that would go
// on without an end.
constexpr int kDeepest = 200;
constexpr int kMostSteps = 16;
constexpr int kMostDepth = 120;
constexpr double kTouchSine = 1e-6;          // of the angle below which chords that meet are taken to touch
constexpr double kLargestClosedRadius = 1e5; // metres; the closed forms with circles keep 1e-11 of the radius

Point operator-(const Point& a, const Point& b) {
    return {a.x - b.x, a.y - b.y};
}
double dot(const Point& a, const Point& b) {
    return a.x * b.x + a.y * b.y;
}
// Positive where b points to the right of a.
double cross(const Point& a, const Point& b) {
    return a.x * b.y - a.y * b.x;
}
Point rightOf(const Point& tangent) {
    return {-tangent.y, tangent.x};
}
double norm(const Point& a) {
    return std::sqrt(dot(a, a));
}

// A part of a curve without an inflection inside.
struct Piece {
    double from = 0.0;
    double to = 0.0;
    Frame a;
    Frame b;
    double azimuthA = 0.0;
    double azimuthB = 0.0;
    double kA = 0.0;
    double kB = 0.0;

    [[nodiscard]] double length() const { return to - from; }
    [[nodiscard]] double turn() const { return std::abs(azimuthB - azimuthA); }
    // How far it leaves its chord, where it turns by a quarter at most.
    [[nodiscard]] double width() const {
        return kUneven * 0.0625 * (std::abs(kA) + std::abs(kB)) * length() * length();
    }
};

struct Disc {
    Point centre;
    double radius = 0.0;
};

struct Meeting {
    double s = 0.0;
    double t = 0.0;
    Frame first;
    Frame second;
    bool done = false;
};

class Search {
  public:
    Search(const Curve& first, const Curve& second, double tolerance, std::size_t most)
        : first_(first), second_(second), tolerance_(tolerance), most_(most) {
        const auto size = [](const Curve& c) {
            return std::max({c.length, std::abs(c.start.point.x), std::abs(c.start.point.y)});
        };
        // Places that cannot be distinguished by their coordinates.
        noise_ = std::max(1e-12, 4e-16 * std::max(size(first), size(second)));
        same_ = std::max(tolerance, 8.0 * noise_);
    }

    Crossings run();

  private:
    const Curve& first() const { return first_.curve(); }
    const Curve& second() const { return second_.curve(); }
    static double growthOf(const Curve& c) {
        return c.length > 0.0 ? (c.endCurvature - c.startCurvature) / c.length : 0.0;
    }

    bool overlaps();
    bool closedForms();
    void lineAndLine();
    void lineAndCircle(bool lineFirst);
    void circleAndCircle();
    std::vector<double> alongCircle(const PreparedCurve& circle, const Point& point) const;
    void meetAt(const Point& point, bool touch);

    static Piece piece(const PreparedCurve& curve, double from, double to);
    static std::vector<Piece> wings(const PreparedCurve& curve);
    void compare(const Piece& p, const Piece& q, int depth);
    void halve(const Piece& p, const Piece& q, int depth, bool firstOne);
    bool apartByDiscs(const PreparedCurve& pc, const Piece& p, const PreparedCurve& qc, const Piece& q) const;
    bool apartByBands(const Piece& p, const Piece& q) const;
    Meeting newton(double s, double t, const Piece& p, const Piece& q) const;
    bool oneAtMost(const Piece& p, const Piece& q);
    bool twoAtMost(const Piece& p, const Piece& q, double multiple);
    void meetAsChords(const Piece& p, const Piece& q);
    bool inside(const Meeting& m, const Piece& p, const Piece& q) const;
    void record(double s, double t, bool touch);
    void record(const Meeting& m, bool touch);
    void tidy();

    PreparedCurve first_;
    PreparedCurve second_;
    double tolerance_;
    std::size_t most_;
    double noise_ = 0.0;
    double same_ = 0.0;
    std::size_t pairs_ = 0;
    Crossings result_;
};

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

bool Search::inside(const Meeting& m, const Piece& p, const Piece& q) const {
    return m.s >= p.from - same_ && m.s <= p.to + same_ && m.t >= q.from - same_ && m.t <= q.to + same_;
}

// Newton's method for a common point; stays within a tenth of the pieces' lengths about them.
Meeting Search::newton(double s, double t, const Piece& p, const Piece& q) const {
    const double marginP = 0.1 * p.length();
    const double marginQ = 0.1 * q.length();
    Meeting m;
    m.s = std::clamp(s, p.from - marginP, p.to + marginP);
    m.t = std::clamp(t, q.from - marginQ, q.to + marginQ);
    double before = std::numeric_limits<double>::infinity();
    for (int step = 0; step < kMostSteps; ++step) {
        m.first = first_.frameAt(m.s);
        m.second = second_.frameAt(m.t);
        const Point way = m.second.point - m.first.point;
        const double sine = cross(m.first.tangent, m.second.tangent);
        if (sine == 0.0) {
            return m;
        }
        const double ds = cross(way, m.second.tangent) / sine;
        const double dt = cross(way, m.first.tangent) / sine;
        const double move = std::max(std::abs(ds), std::abs(dt));
        const double gap = norm(way);
        // The last step is as good as the coordinates.
        if (gap <= noise_ || (move >= before && gap <= tolerance_)) {
            m.done = true;
            return m;
        }
        const double nextS = std::clamp(m.s + ds, p.from - marginP, p.to + marginP);
        const double nextT = std::clamp(m.t + dt, q.from - marginQ, q.to + marginQ);
        if (nextS == m.s && nextT == m.t) {
            return m;
        }
        m.s = nextS;
        m.t = nextT;
        before = move;
    }
    m.first = first_.frameAt(m.s);
    m.second = second_.frameAt(m.t);
    m.done = norm(m.second.point - m.first.point) <= tolerance_;
    return m;
}

// Is there a multiple of half a turn between two angles?
bool holdsMultiple(double low, double high) {
    constexpr double kMargin = 1e-12;
    return std::floor((high + kMargin) / kPi) != std::floor((low - kMargin) / kPi);
}

bool Search::apartByDiscs(const PreparedCurve& pc, const Piece& p, const PreparedCurve& qc, const Piece& q) const {
    struct Shape {
        std::array<Disc, 2> discs;
        std::size_t count = 0;
        Disc hole;
        bool hasHole = false;
    };
    const auto shapeOf = [](const PreparedCurve& curve, const Piece& part) {
        Shape shape;
        const double middle = part.from + 0.5 * part.length();
        shape.discs[shape.count++] = {curve.pointAt(middle), 0.5 * part.length()};
        const bool flatFirst = std::abs(part.kA) <= std::abs(part.kB);
        const auto osculating = [](const Frame& frame, double k) {
            const Point right = rightOf(frame.tangent);
            return Disc{{frame.point.x + right.x / k, frame.point.y + right.y / k}, 1.0 / std::abs(k)};
        };
        const double kFlat = flatFirst ? part.kA : part.kB;
        if (std::abs(kFlat) * part.length() > 1.0) {
            shape.discs[shape.count++] = osculating(flatFirst ? part.a : part.b, kFlat);
        }
        const double kSharp = flatFirst ? part.kB : part.kA;
        if (kSharp != 0.0) {
            shape.hole = osculating(flatFirst ? part.b : part.a, kSharp);
            shape.hasHole = std::isfinite(shape.hole.centre.x) && std::isfinite(shape.hole.centre.y);
        }
        return shape;
    };
    const Shape sp = shapeOf(pc, p);
    const Shape sq = shapeOf(qc, q);
    // Large circles are known to the last bits of their radii.
    const auto slack = [&](double radii) { return same_ + 1e-14 * radii; };
    for (std::size_t i = 0; i < sp.count; ++i) {
        for (std::size_t j = 0; j < sq.count; ++j) {
            const double radii = sp.discs[i].radius + sq.discs[j].radius;
            if (norm(sp.discs[i].centre - sq.discs[j].centre) > radii + slack(radii)) {
                return true;
            }
        }
    }
    const auto swallowed = [&](const Shape& inner, const Shape& outer) {
        for (std::size_t i = 0; i < inner.count && outer.hasHole; ++i) {
            const double reach = norm(inner.discs[i].centre - outer.hole.centre) + inner.discs[i].radius;
            if (reach + slack(reach) < outer.hole.radius) {
                return true;
            }
        }
        return false;
    };
    return swallowed(sp, sq) || swallowed(sq, sp);
}

// Two rectangles along the chords, by their sides' directions.
bool Search::apartByBands(const Piece& p, const Piece& q) const {
    const auto apart = [&](const Piece& own, const Piece& other) {
        const Point chord = own.b.point - own.a.point;
        const double length = norm(chord);
        if (!(length > 0.0)) {
            return false;
        }
        const Point along{chord.x / length, chord.y / length};
        const double slack = own.width() + other.width() + same_;
        const Point a = other.a.point - own.a.point;
        const Point b = other.b.point - own.a.point;
        const double sideA = cross(along, a);
        const double sideB = cross(along, b);
        if (std::min(sideA, sideB) > slack || std::max(sideA, sideB) < -slack) {
            return true;
        }
        const double aheadA = dot(along, a);
        const double aheadB = dot(along, b);
        const double end = other.width() + same_;
        return std::min(aheadA, aheadB) > length + end || std::max(aheadA, aheadB) < -end;
    };
    return apart(p, q) || apart(q, p);
}

// Pieces whose directions differ. True where the matter is settled.
bool Search::oneAtMost(const Piece& p, const Piece& q) {
    const Point chordP = p.b.point - p.a.point;
    const Point chordQ = q.b.point - q.a.point;
    const double sine = cross(chordP, chordQ);
    double s = 0.5;
    double t = 0.5;
    if (sine != 0.0) {
        const Point way = q.a.point - p.a.point;
        s = std::clamp(cross(way, chordQ) / sine, 0.0, 1.0);
        t = std::clamp(cross(way, chordP) / sine, 0.0, 1.0);
    }
    const Meeting m = newton(p.from + s * p.length(), q.from + t * q.length(), p, q);
    if (!m.done) {
        return false;
    }
    if (inside(m, p, q)) {
        record(m, false);
        return true;
    }
    // The only meeting of the pieces, made longer up to it, is outside: then there is none inside.
    const double azimuthS = azimuthAt(first(), m.s);
    const double azimuthT = azimuthAt(second(), m.t);
    const auto [lowP, highP] = std::minmax({p.azimuthA, p.azimuthB, azimuthS});
    const auto [lowQ, highQ] = std::minmax({q.azimuthA, q.azimuthB, azimuthT});
    const bool sameWing =
        first_.curvatureAt(m.s) * (p.kA + p.kB) >= 0.0 && second_.curvatureAt(m.t) * (q.kA + q.kB) >= 0.0;
    return sameWing && !holdsMultiple(lowQ - highP, highQ - lowP);
}

// Pieces that may be parallel, of which one is bent more throughout. True where the matter is settled.
bool Search::twoAtMost(const Piece& p, const Piece& q, double multiple) {
    const double sense = std::fmod(multiple, 2.0) == 0.0 ? 1.0 : -1.0;
    double s = p.from + 0.5 * p.length();
    double t = q.from + 0.5 * q.length();
    const double marginP = 0.5 * p.length();
    const double marginQ = 0.5 * q.length();
    Meeting m;
    double e = 0.0;
    bool found = false;
    for (int step = 0; step < kMostSteps; ++step) {
        m = {s, t, first_.frameAt(s), second_.frameAt(t), true};
        const Point way = m.second.point - m.first.point;
        const double f1 = azimuthAt(second(), t) - azimuthAt(first(), s) - multiple * kPi;
        const double f2 = dot(way, m.first.tangent);
        e = cross(m.first.tangent, way);
        const double k1 = first_.curvatureAt(s);
        const double k2 = second_.curvatureAt(t);
        // -k1 ds + k2 dt = -f1 and (k1 e - 1) ds + sense dt = -f2.
        const double determinant = -k1 * sense - k2 * (k1 * e - 1.0);
        if (determinant == 0.0) {
            return false;
        }
        const double ds = (-f1 * sense + k2 * f2) / determinant;
        const double dt = (k1 * f2 + (k1 * e - 1.0) * f1) / determinant;
        s += ds;
        t += dt;
        if (!(s > p.from - marginP && s < p.to + marginP && t > q.from - marginQ && t < q.to + marginQ)) {
            return false;
        }
        if (std::max(std::abs(ds), std::abs(dt)) <= std::max(noise_, 1e-9 * std::min(p.length(), q.length()))) {
            found = true;
            break;
        }
    }
    if (!found || !(std::abs(e * m.first.tangent.x) < 1e300)) {
        return false;
    }
    const double k1 = first_.curvatureAt(s);
    const double k2 = sense * second_.curvatureAt(t);
    if (std::abs(e) * std::max(std::abs(k1), std::abs(k2)) > 0.5) {
        return false; // too far apart to be compared along normals
    }
    if (std::abs(e) <= tolerance_) {
        m.s = s;
        m.t = t;
        if (inside(m, p, q)) {
            record(std::clamp(s, p.from, p.to), std::clamp(t, q.from, q.to), true);
            return true;
        }
        return false;
    }
    const double squared = -2.0 * e / (k2 - k1);
    if (!(squared > 0.0)) {
        return true; // they bend away from each other
    }
    const double away = std::sqrt(squared);
    // No crossing comes sooner than with the largest difference of the curvatures, but for what the normals slant: the
    // parabolas' estimate is at most 1 / 0.7 of the way for circles that meet at up to a right angle.
    const auto [lowK, highK] = std::minmax({p.kA, p.kB});
    const auto [lowL, highL] = std::minmax({sense * q.kA, sense * q.kB});
    const double soonest = 0.6 * std::sqrt(2.0 * std::abs(e) / std::max(highL - lowK, highK - lowL));
    Meeting sides[2];
    for (int i = 0; i < 2; ++i) {
        const double x = i == 0 ? -away : away;
        const double least = x < 0.0 ? s - soonest : s + soonest;
        if (x < 0.0 ? least < p.from - same_ : least > p.to + same_) {
            sides[i].done = true;
            sides[i].s = std::numeric_limits<double>::infinity();
            continue;
        }
        sides[i] = newton(s + x, t + sense * x, p, q);
        if (!sides[i].done || (sides[i].s < s) != (x < 0.0)) {
            return false;
        }
    }
    for (const Meeting& side : sides) {
        if (std::isfinite(side.s) && inside(side, p, q)) {
            record(side, false);
        }
    }
    return true;
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

// Pieces as thin as the tolerance: their chords stand for them.
void Search::meetAsChords(const Piece& p, const Piece& q) {
    const Point u = p.b.point - p.a.point;
    const Point v = q.b.point - q.a.point;
    double best = std::numeric_limits<double>::infinity();
    double s = 0.0;
    double t = 0.0;
    const auto look = [&](double shareP, double shareQ) {
        const double atP = p.from + shareP * p.length();
        const double atQ = q.from + shareQ * q.length();
        const double gap = norm(second_.pointAt(atQ) - first_.pointAt(atP));
        if (gap < best) {
            best = gap;
            s = atP;
            t = atQ;
        }
    };
    const auto ahead = [](const Point& way, const Point& chord) {
        const double squared = dot(chord, chord);
        return squared > 0.0 ? std::clamp(dot(way, chord) / squared, 0.0, 1.0) : 0.0;
    };
    look(0.0, ahead(p.a.point - q.a.point, v));
    look(1.0, ahead(p.b.point - q.a.point, v));
    look(ahead(q.a.point - p.a.point, u), 0.0);
    look(ahead(q.b.point - p.a.point, u), 1.0);
    const double sine = cross(u, v);
    if (sine != 0.0) {
        const Point way = q.a.point - p.a.point;
        const double shareP = cross(way, v) / sine;
        const double shareQ = cross(way, u) / sine;
        if (shareP >= 0.0 && shareP <= 1.0 && shareQ >= 0.0 && shareQ <= 1.0) {
            look(shareP, shareQ);
        }
    }
    if (best <= same_) {
        const Frame a = first_.frameAt(s);
        const Frame b = second_.frameAt(t);
        record({s, t, a, b, true}, std::abs(cross(a.tangent, b.tangent)) < kTouchSine);
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
    if (!(to - from > 4.0 * same_)) {
        return false;
    }
    for (const double share : {0.25, 0.5, 0.75}) {
        if (std::abs(nearestFoot(second_, first_.pointAt(from + share * (to - from))).offset) > same_) {
            return false;
        }
    }
    record(from, atFrom, true);
    record(to, atTo, true);
    result_.overlap = true;
    return true;
}

void Search::lineAndLine() {
    const Frame a = first_.frameAt(0.0);
    const Frame b = second_.frameAt(0.0);
    const double sine = cross(a.tangent, b.tangent);
    const Point way = b.point - a.point;
    if (std::abs(sine) * (first().length + second().length) <= tolerance_) {
        if (std::abs(cross(a.tangent, way)) > same_) {
            return;
        }
        const double sense = dot(a.tangent, b.tangent) < 0.0 ? -1.0 : 1.0;
        const double start = dot(a.tangent, way);
        const double end = start + sense * second().length;
        const double from = std::max(0.0, std::min(start, end));
        const double to = std::min(first().length, std::max(start, end));
        if (to < from - same_) {
            return;
        }
        record(std::min(from, first().length), std::clamp(sense * (from - start), 0.0, second().length), true);
        if (to - from > same_) {
            record(to, std::clamp(sense * (to - start), 0.0, second().length), true);
            result_.overlap = true;
        }
        return;
    }
    const double s = cross(way, b.tangent) / sine;
    const double t = cross(way, a.tangent) / sine;
    if (s >= -same_ && s <= first().length + same_ && t >= -same_ && t <= second().length + same_) {
        record(std::clamp(s, 0.0, first().length), std::clamp(t, 0.0, second().length), false);
    }
}

// Where an arc passes a point of its circle, each time round.
std::vector<double> Search::alongCircle(const PreparedCurve& circle, const Point& point) const {
    const Curve& plain = circle.curve();
    const double bend = std::abs(plain.startCurvature);
    const Frame start = circle.frameAt(0.0);
    const Point way = point - start.point;
    const double ahead = dot(start.tangent, way);
    const double aside = cross(start.tangent, way) * (plain.startCurvature < 0.0 ? -1.0 : 1.0);
    double angle = std::atan2(bend * ahead, 1.0 - bend * aside);
    if (angle < -same_ * bend) {
        angle += kTwoPi;
    }
    std::vector<double> found;
    for (double along = angle / bend; along <= plain.length + same_ && found.size() <= most_; along += kTwoPi / bend) {
        found.push_back(std::clamp(along, 0.0, plain.length));
    }
    return found;
}

void Search::meetAt(const Point& point, bool touch) {
    const auto along = [&](const PreparedCurve& curve) {
        if (curve.curve().startCurvature != 0.0) {
            return alongCircle(curve, point);
        }
        const Frame start = curve.frameAt(0.0);
        const double ahead = dot(start.tangent, point - start.point);
        std::vector<double> found;
        if (ahead >= -same_ && ahead <= curve.curve().length + same_) {
            found.push_back(std::clamp(ahead, 0.0, curve.curve().length));
        }
        return found;
    };
    const std::vector<double> onSecond = along(second_);
    for (const double s : along(first_)) {
        for (const double t : onSecond) {
            record(s, t, touch);
        }
    }
}

Point centreOf(const PreparedCurve& circle) {
    const Frame start = circle.frameAt(0.0);
    const Point right = rightOf(start.tangent);
    const double radius = 1.0 / circle.curve().startCurvature;
    return {start.point.x + radius * right.x, start.point.y + radius * right.y};
}

void Search::lineAndCircle(bool lineFirst) {
    const PreparedCurve& line = lineFirst ? first_ : second_;
    const PreparedCurve& circle = lineFirst ? second_ : first_;
    const double radius = 1.0 / std::abs(circle.curve().startCurvature);
    const Frame start = line.frameAt(0.0);
    const Point way = centreOf(circle) - start.point;
    const double ahead = dot(start.tangent, way);
    const double aside = std::abs(cross(start.tangent, way));
    const auto at = [&](double s) {
        return Point{start.point.x + s * start.tangent.x, start.point.y + s * start.tangent.y};
    };
    if (std::abs(aside - radius) <= tolerance_) {
        meetAt(at(ahead), true);
    } else if (aside < radius) {
        const double half = std::sqrt((radius - aside) * (radius + aside));
        meetAt(at(ahead - half), false);
        meetAt(at(ahead + half), false);
    }
}

void Search::circleAndCircle() {
    const Point a = centreOf(first_);
    const Point b = centreOf(second_);
    const double r1 = 1.0 / std::abs(first().startCurvature);
    const double r2 = 1.0 / std::abs(second().startCurvature);
    const Point way = b - a;
    const double apart = norm(way);
    if (apart <= same_ && std::abs(r1 - r2) <= same_) {
        // One circle: the ends of each that lie on the other.
        const double before = static_cast<double>(result_.found.size());
        for (const double s : {0.0, first().length}) {
            for (const double t : alongCircle(second_, first_.pointAt(s))) {
                record(s, t, true);
            }
        }
        for (const double t : {0.0, second().length}) {
            for (const double s : alongCircle(first_, second_.pointAt(t))) {
                record(s, t, true);
            }
        }
        double low = first().length;
        double high = 0.0;
        for (const Crossing& found : result_.found) {
            low = std::min(low, found.alongFirst);
            high = std::max(high, found.alongFirst);
        }
        result_.overlap = static_cast<double>(result_.found.size()) > before && high - low > same_;
        return;
    }
    if (apart == 0.0) {
        return;
    }
    const Point along{way.x / apart, way.y / apart};
    const double outer = apart - (r1 + r2);
    const double inner = apart - std::abs(r1 - r2);
    if (std::abs(outer) <= tolerance_ || std::abs(inner) <= tolerance_) {
        const double side = std::abs(outer) <= tolerance_ || r1 >= r2 ? r1 : -r1;
        meetAt({a.x + side * along.x, a.y + side * along.y}, true);
    } else if (outer < 0.0 && inner > 0.0) {
        const double ahead = 0.5 * (apart + (r1 - r2) * ((r1 + r2) / apart));
        const double half = std::sqrt(std::max((r1 - ahead) * (r1 + ahead), 0.0));
        for (const double side : {-half, half}) {
            meetAt({a.x + ahead * along.x - side * along.y, a.y + ahead * along.y + side * along.x}, false);
        }
    }
}

bool Search::closedForms() {
    const auto even = [](const Curve& c) { return c.startCurvature == c.endCurvature; };
    if (!even(first()) || !even(second())) {
        return false;
    }
    const double k1 = std::abs(first().startCurvature);
    const double k2 = std::abs(second().startCurvature);
    const auto fits = [](double k) { return k * kLargestClosedRadius >= 1.0; };
    if (k1 == 0.0 && k2 == 0.0) {
        lineAndLine();
    } else if (k1 == 0.0 && fits(k2)) {
        lineAndCircle(true);
    } else if (k2 == 0.0 && fits(k1)) {
        lineAndCircle(false);
    } else if (k1 != 0.0 && k2 != 0.0 && fits(k1) && fits(k2)) {
        circleAndCircle();
    } else {
        return false;
    }
    return true;
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

} // namespace

Crossings crossings(const Curve& first, const Curve& second, double tolerance, std::size_t most) {
    return Search(first, second, tolerance, most).run();
}

} // namespace fenmark::curve
