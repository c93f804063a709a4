// From a point to a curve: the nearest point, and all feet of perpendiculars.
//
// Symbols: v the way from the curve to the point, g its component along the tangent, e to the right, k curvature, c its
// growth; g' = k e - 1, e' = -k g, g'' = c e - k^2 g. A foot has g = 0; it is a nearest point where g' < 0.
//
// Three facts make the search sure and its work bounded:
//  - A curve that turns by no more than a quarter of a circle has no second nearest point within its reach (reach.h).
//  - p = k v^2 - 2 e, the power of the point to the osculating circle times k, has p' = c v^2: it changes its sign at
//    most once on the whole curve, also across the inflection (the osculating circles lie one inside the other). Going
//    either way from there, the first nearest point is nearer than all behind it, and comes within a full turn.
//  - On a piece without an inflection that turns by less than half a circle there are at most two feet, since these are
//    the tangents from the point to the evolute, a convex curve of the same turn.
#include "curve/curve.h"
#include "curve/reach.h"
#include "curve/unit_chord.h"
#include "curve/wings.h"

#include <algorithm>
#include <cmath>

namespace fenmark::curve {

namespace {

// "Seen" below: the largest in 20,000 seeded cases of every test of curves.
// A foot is known to this share of the length, but not better than coordinates allow. Seen: 3.5e-14.
constexpr double kFootShare = 1e-13;
constexpr int kMostFootSteps = 100; // Seen: 70, for the change of the power's sign
// Pieces for the thorough search turn by this at most.
constexpr double kPieceTurn = 0.125 * kPi;
// How far round the place where the power changes sign the nearest points are looked for: two turns, and some more.
constexpr double kSearchTurn = 4.25 * kPi;

struct Seen {
    double along = 0.0;
    double g = 0.0;
    double e = 0.0;
    double k = 0.0;
    Point point;
    Point tangent;

    [[nodiscard]] double slope() const { return k * e - 1.0; }
    [[nodiscard]] double squared() const { return g * g + e * e; }
    [[nodiscard]] double power() const { return k * squared() - 2.0 * e; }
};

Seen look(const PreparedCurve& curve, const Point& point, double along) {
    const Frame frame = curve.frameAt(along);
    const double x = point.x - frame.point.x;
    const double y = point.y - frame.point.y;
    return {along,
            x * frame.tangent.x + y * frame.tangent.y,
            y * frame.tangent.x - x * frame.tangent.y,
            curve.curvatureAt(along),
            frame.point,
            frame.tangent};
}

Foot footOf(const Seen& seen, double tolerance) {
    const bool perpendicular = std::abs(seen.g) <= tolerance;
    const double distance = perpendicular ? std::abs(seen.e) : std::hypot(seen.g, seen.e);
    return {seen.along, seen.point, seen.e < 0.0 ? -distance : distance, perpendicular};
}

double footTolerance(const Curve& curve, const Point& point) {
    const double size = std::max({std::abs(point.x), std::abs(point.y), std::abs(curve.start.point.x),
                                  std::abs(curve.start.point.y), curve.length});
    // Metres along the tangent by which a foot may leave the perpendicular through rounding. Seen: 0.07 of it.
    return std::max(1e-12, 1e-14 * size);
}

// The zero of g between two places where it has different signs.
Seen zeroBetween(const PreparedCurve& curve, const Point& point, Seen low, Seen high, double tolerance) {
    const bool falling = low.g > 0.0;
    double from = low.along;
    double to = high.along;
    Seen seen = look(curve, point, from + (to - from) * (low.g / (low.g - high.g)));
    for (int step = 0; step < kMostFootSteps; ++step) {
        ((seen.g > 0.0) == falling ? from : to) = seen.along;
        double next = seen.along - seen.g / seen.slope();
        if (!(next > from && next < to)) {
            next = from + 0.5 * (to - from);
        }
        const double move = std::abs(next - seen.along);
        seen = look(curve, point, next);
        if (move <= tolerance || to - from <= tolerance) {
            break;
        }
    }
    return seen;
}

// A place between two where g has the sign `positive` at both (or is 0) at which it has the other one; nothing if there
// is none. It is sought where g' changes its sign.
std::optional<Seen> otherSign(const PreparedCurve& curve, const Point& point, Seen from, Seen to, bool positive,
                              double tolerance) {
    if (positive ? !(from.slope() < 0.0 && to.slope() > 0.0) : !(from.slope() > 0.0 && to.slope() < 0.0)) {
        // g' may still change its sign twice; then the middle shows it.
        const Seen middle = look(curve, point, 0.5 * (from.along + to.along));
        return middle.g != 0.0 && (middle.g > 0.0) != positive ? std::optional(middle) : std::nullopt;
    }
    for (int step = 0; step < kMostFootSteps && to.along - from.along > tolerance; ++step) {
        // g' is nearly linear: the false position, kept off the ends.
        const double share = std::clamp(from.slope() / (from.slope() - to.slope()), 0.1, 0.9);
        const Seen middle = look(curve, point, from.along + share * (to.along - from.along));
        if (middle.g != 0.0 && (middle.g > 0.0) != positive) {
            return middle;
        }
        ((middle.slope() < 0.0) == positive ? from : to) = middle;
    }
    return std::nullopt;
}

// The zeros of g on a piece that turns little and has no inflection inside: two at most, by length from low to high.
std::size_t zerosOnPiece(const PreparedCurve& curve, const Point& point, const Seen& low, const Seen& high,
                         double tolerance, std::array<Seen, 2>& zeros) {
    const bool positive = low.g > 0.0;
    if (positive != (high.g > 0.0)) {
        zeros[0] = zeroBetween(curve, point, low, high, tolerance);
        if ((zeros[0].slope() < 0.0) == positive) {
            return 1;
        }
        // An end is a zero but for the rounding, and was found instead of the one inside.
        const Seen atEnd = zeros[0];
        if (atEnd.along - low.along > high.along - atEnd.along) {
            if (const auto other = otherSign(curve, point, low, atEnd, positive, tolerance)) {
                zeros[0] = zeroBetween(curve, point, low, *other, tolerance);
                zeros[1] = atEnd;
                return 2;
            }
        } else if (const auto other = otherSign(curve, point, atEnd, high, !positive, tolerance)) {
            zeros[1] = zeroBetween(curve, point, *other, high, tolerance);
            return 2;
        }
        return 1;
    }
    if (const auto other = otherSign(curve, point, low, high, positive, tolerance)) {
        zeros[0] = zeroBetween(curve, point, low, *other, tolerance);
        zeros[1] = zeroBetween(curve, point, *other, high, tolerance);
        return 2;
    }
    return 0;
}

// Where the power changes its sign; the end it leans to where it does not.
Seen powerChange(const PreparedCurve& curve, const Point& point) {
    const double length = curve.curve().length;
    const bool rising = curve.curve().endCurvature > curve.curve().startCurvature;
    Seen low = look(curve, point, 0.0);
    Seen high = look(curve, point, length);
    if ((low.power() < 0.0) != rising) {
        return low;
    }
    if ((high.power() < 0.0) == rising) {
        return high;
    }
    const double growth = (curve.curve().endCurvature - curve.curve().startCurvature) / length;
    Seen seen = look(curve, point, 0.5 * length);
    for (int step = 0; step < kMostFootSteps; ++step) {
        ((seen.power() < 0.0) == rising ? low : high) = seen;
        const double width = high.along - low.along;
        if (width <= kFootShare * length) {
            break;
        }
        double next = seen.along - seen.power() / (growth * seen.squared());
        if (!(next > low.along && next < high.along) || step % 4 == 3) {
            next = low.along + 0.5 * width; // at least every fourth step halves
        }
        if (std::abs(next - seen.along) <= kFootShare * length) {
            break;
        }
        seen = look(curve, point, next);
    }
    return seen;
}

// How far to go from a place so that the curve turns by an angle; up to the inflection or the end at most.
double stepByTurn(const Curve& curve, double along, bool forwards, double angle) {
    const double k = curvatureAt(curve, along);
    const double growth = (curve.endCurvature - curve.startCurvature) / curve.length * (forwards ? 1.0 : -1.0);
    const double rest = forwards ? curve.length - along : along;
    // Seen in the direction of the search, with the curvature taken as positive.
    const double sharpening = k < 0.0 || (k == 0.0 && growth < 0.0) ? -growth : growth;
    const double bend = std::abs(k);
    const double root = bend * bend + 2.0 * sharpening * angle;
    double step = rest;
    if (root >= 0.0) {
        const double sum = bend + std::sqrt(root);
        step = sum > 0.0 ? 2.0 * angle / sum : rest;
    } else {
        step = -bend / sharpening; // flattens to the inflection before it has turned so far
    }
    if (sharpening < 0.0 && bend > 0.0) {
        step = std::min(step, -bend / sharpening);
    }
    // An inflection that is reached but for the rounding is stepped over.
    return std::min(std::max(step, 1e-12 * curve.length), rest);
}

// Calls take(seen) for the feet from a place on, one way, until it returns false or the curve has turned by `turn`.
template <typename Take>
void feetFrom(const PreparedCurve& curve, const Point& point, const Seen& from, bool forwards, double turn,
              double tolerance, const Take& take) {
    const Curve& plain = curve.curve();
    Seen here = from;
    double turned = 0.0;
    while (turned < turn && (forwards ? here.along < plain.length : here.along > 0.0)) {
        const double step = stepByTurn(plain, here.along, forwards, kPieceTurn);
        double along = forwards ? here.along + step : here.along - step;
        if (along == here.along) {
            along = forwards ? plain.length : 0.0;
        }
        if (plain.length - along <= 1e-12 * plain.length && forwards) {
            along = plain.length;
        } else if (along <= 1e-12 * plain.length && !forwards) {
            along = 0.0;
        }
        const Seen there = look(curve, point, along);
        turned += std::max(0.5 * std::abs(there.k + here.k) * std::abs(along - here.along), 1e-3);
        std::array<Seen, 2> zeros;
        const std::size_t count = forwards ? zerosOnPiece(curve, point, here, there, tolerance, zeros)
                                           : zerosOnPiece(curve, point, there, here, tolerance, zeros);
        for (std::size_t i = 0; i < count; ++i) {
            if (!take(zeros[forwards ? i : count - 1 - i])) {
                return;
            }
        }
        here = there;
    }
}

double firstOf(double along, double length, double period) {
    // On a full circle and more, the first of the places that are one.
    const double rounded = along - std::floor(along / period) * period;
    return rounded <= length ? rounded : along;
}

// On an arc or a straight.
Foot nearestOnEven(const PreparedCurve& curve, const Point& point) {
    const Curve& plain = curve.curve();
    const double tolerance = footTolerance(plain, point);
    const Seen start = look(curve, point, 0.0);
    double along = start.g;
    if (plain.startCurvature != 0.0) {
        // The angle at the centre, from the start on in the direction of travel.
        const double bend = std::abs(plain.startCurvature);
        const double aside = plain.startCurvature < 0.0 ? -start.e : start.e;
        along = std::atan2(bend * start.g, 1.0 - bend * aside) / bend;
        along = along < 0.0 && along + kTwoPi / bend <= plain.length ? along + kTwoPi / bend : along;
        along = firstOf(along, plain.length, kTwoPi / bend);
    }
    if (along >= 0.0 && along <= plain.length) {
        const Seen seen = look(curve, point, along);
        Foot foot = footOf(seen, tolerance);
        // A foot by the angle at the centre, of the way and the length. Seen: 8.3e-15; 0.3 near the centre of a circle.
        if (std::abs(seen.g) <= 1e-9 * (std::abs(seen.e) + plain.length)) {
            foot.perpendicular = true;
            foot.offset = seen.e;
        }
        return foot;
    }
    const Seen end = look(curve, point, plain.length);
    return footOf(start.squared() <= end.squared() ? start : end, tolerance);
}

// The whole turn back and forth, whatever its sides.
double wholeTurn(const Curve& curve) {
    const double k0 = std::abs(curve.startCurvature);
    const double k1 = std::abs(curve.endCurvature);
    if ((curve.startCurvature < 0.0) == (curve.endCurvature < 0.0) || k0 == 0.0 || k1 == 0.0) {
        return 0.5 * (k0 + k1) * curve.length;
    }
    return 0.5 * (k0 * (k0 / (k0 + k1)) + k1 * (k1 / (k0 + k1))) * curve.length;
}

// Of feet by length a run about the nearest.
void keepAboutNearest(std::vector<Foot>& feet, std::size_t most) {
    if (feet.size() <= most) {
        return;
    }
    const auto nearer = [](const Foot& a, const Foot& b) { return std::abs(a.offset) < std::abs(b.offset); };
    const auto nearest = static_cast<std::size_t>(std::min_element(feet.begin(), feet.end(), nearer) - feet.begin());
    const std::size_t first = std::min(nearest - std::min(nearest, most / 2), feet.size() - most);
    feet.erase(feet.begin(), feet.begin() + static_cast<std::ptrdiff_t>(first));
    feet.resize(most);
}

} // namespace

Foot nearestFoot(const Curve& curve, const Point& point) {
    return nearestFoot(PreparedCurve(curve), point);
}

Foot nearestFoot(const PreparedCurve& curve, const Point& point) {
    const Curve& plain = curve.curve();
    if (plain.startCurvature == plain.endCurvature || plain.length == 0.0) {
        return nearestOnEven(curve, point);
    }
    const double tolerance = footTolerance(plain, point);
    const double sharpest = std::max(std::abs(plain.startCurvature), std::abs(plain.endCurvature));

    if (wholeTurn(plain) <= 0.5 * kPi) {
        const double growth = (plain.endCurvature - plain.startCurvature) / plain.length;
        const auto at = [&](double along) { return look(curve, point, along); };
        if (const auto found = nearestWithinReach(plain.length, growth, sharpest, at)) {
            const Seen& seen = found->seen;
            const double move = found->move;
            if (move == 0.0) {
                return footOf(seen, tolerance); // an end that the point lies beyond, or the foot itself
            }
            const double offTangent = move - seen.k * seen.k * move * move * move / 6.0;
            const double offNormal = 0.5 * move * move * (seen.k + growth * move / 3.0);
            return {found->along,
                    {seen.point.x + offTangent * seen.tangent.x - offNormal * seen.tangent.y,
                     seen.point.y + offTangent * seen.tangent.y + offNormal * seen.tangent.x},
                    found->e,
                    true};
        }
    }

    // The first nearest point either way from where the power of the point changes its sign, and both ends.
    const Seen start = look(curve, point, 0.0);
    const Seen end = look(curve, point, plain.length);
    Seen best = start.squared() <= end.squared() ? start : end;
    const Seen middle = powerChange(curve, point);
    for (const bool forwards : {true, false}) {
        // For a point on the curve the power is flat about its zero; so one nearest point more than the first is seen.
        int seenNearest = 0;
        const auto take = [&](const Seen& seen) {
            if (seen.e * seen.e < best.squared()) { // g is 0 but for the end of the search
                best = seen;
                best.g = 0.0;
            }
            seenNearest += seen.slope() < 0.0 ? 1 : 0;
            return seenNearest < 2;
        };
        feetFrom(curve, point, middle, forwards, kSearchTurn, kFootShare * plain.length, take);
    }
    Foot foot = footOf(best, tolerance);
    if (best.along > 0.0 && best.along < plain.length) {
        foot.perpendicular = true;
    }
    return foot;
}

Feet feetOf(const Curve& curve, const Point& point, std::size_t most) {
    Feet result;
    std::vector<Foot>& feet = result.found;
    const auto finished = [&](bool searched) {
        result.complete = searched && feet.size() <= most;
        keepAboutNearest(feet, most);
        return std::move(result);
    };
    const PreparedCurve prepared(curve);
    const double tolerance = footTolerance(curve, point);
    const auto add = [&](const Seen& seen) { feet.push_back({seen.along, seen.point, seen.e, true}); };
    if (curve.startCurvature == curve.endCurvature || curve.length == 0.0) {
        const Seen start = look(prepared, point, 0.0);
        if (curve.startCurvature == 0.0) {
            if (start.g >= -tolerance && start.g <= curve.length + tolerance) {
                add(look(prepared, point, std::clamp(start.g, 0.0, curve.length)));
            }
            return finished(true);
        }
        const double bend = std::abs(curve.startCurvature);
        const double aside = curve.startCurvature < 0.0 ? -start.e : start.e;
        const double half = kPi / bend;
        double along = std::atan2(bend * start.g, 1.0 - bend * aside) / bend;
        along -= std::floor((along + tolerance) / half) * half; // the first of them
        // Near and far ones take turns: one more than wanted holds a near one, and shows that there are more.
        for (double i = 0.0; along + i * half <= curve.length + tolerance && feet.size() <= most; i += 1.0) {
            add(look(prepared, point, std::clamp(along + i * half, 0.0, curve.length)));
        }
        return finished(true);
    }
    // Two feet a turn, also where the middle is an end, and some more about it.
    const double turn = kPi * (static_cast<double>(most) + 4.0);
    const auto take = [&](const Seen& seen) {
        add(seen);
        return true;
    };
    const Seen start = look(prepared, point, 0.0);
    const Seen end = look(prepared, point, curve.length);
    const bool throughout = wholeTurn(curve) <= turn;
    if (throughout) {
        if (start.g <= 0.0 && start.g >= -tolerance) {
            add(start); // perpendicular at the very start, but for the rounding
        }
        feetFrom(prepared, point, start, true, 2.0 * turn + kTwoPi, kFootShare * curve.length, take);
        if (end.g >= 0.0 && end.g <= tolerance) {
            add(end);
        }
    } else {
        const Seen middle = powerChange(prepared, point);
        feetFrom(prepared, point, middle, false, turn, kFootShare * curve.length, take);
        feetFrom(prepared, point, middle, true, turn, kFootShare * curve.length, take);
    }
    std::sort(feet.begin(), feet.end(), [](const Foot& a, const Foot& b) { return a.along < b.along; });
    const auto same = [&](const Foot& a, const Foot& b) { return b.along - a.along <= kFootShare * curve.length; };
    feet.erase(std::unique(feet.begin(), feet.end(), same), feet.end());
    return finished(throughout);
}

} // namespace fenmark::curve
