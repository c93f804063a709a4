// Points of many distances. Rising distances need no search, and those on one piece are evaluated side by side.
#include "curve/chain.h"

#include "curve/chain_limits.h"
#include "curve/unit_chord.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace fenmark::curve {

namespace {

constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
// So many at a time; a constant, so that the compiler lays them side by side.
constexpr std::size_t kLanes = 8;

using Lanes = std::array<double, kLanes>;

inline void shortSeries(const Lanes& w, const Lanes& theta, Lanes& x, Lanes& y) {
    for (std::size_t i = 0; i < kLanes; ++i) {
        const Complex local = shortInflectionSeries(w[i], theta[i]);
        x[i] = local.re;
        y[i] = local.im;
    }
}

inline void fullSeries(const Lanes& w, const Lanes& theta, Lanes& x, Lanes& y) {
    for (std::size_t i = 0; i < kLanes; ++i) {
        const Complex local = longInflectionSeries(w[i], theta[i]);
        x[i] = local.re;
        y[i] = local.im;
    }
}

// On an arc: the chord leaves the tangent by half the turn. `turned` gives the unit circle for every half there is.
template <typename Turned>
inline void arcs(const Lanes& along, double curvature, Lanes& x, Lanes& y, const Turned& turned) {
    for (std::size_t i = 0; i < kLanes; ++i) {
        const double half = 0.5 * curvature * along[i];
        const Complex at = turned(half);
        const double chord = half == 0.0 ? along[i] : along[i] * (at.im / half);
        x[i] = chord * at.re;
        y[i] = chord * at.im;
    }
}

double offsetOf(std::span<const double> offsets, std::size_t i) {
    if (offsets.empty()) {
        return 0.0;
    }
    return offsets.size() == 1 ? offsets[0] : (i < offsets.size() ? offsets[i] : kNone);
}

} // namespace

std::size_t Chain::points(std::span<const double> distances, std::span<const double> offsets,
                          std::span<Point> points) const {
    const std::size_t count = std::min(distances.size(), points.size());
    const bool onAxis = offsets.empty() || (offsets.size() == 1 && offsets[0] == 0.0);
    std::size_t found = 0;
    std::size_t piece = 0;
    std::size_t i = 0;
    // The distances that the current piece holds.
    double from = std::numeric_limits<double>::infinity();
    double to = -std::numeric_limits<double>::infinity();
    while (i < count) {
        double distance = distances[i];
        if (!holds(distance)) {
            points[i++] = {kNone, kNone};
            continue;
        }
        if (!(distance >= from && distance < to)) {
            const bool next = distance >= to && piece + 1 < pieces_.size() &&
                              distance + kJointTolerance >= starts_[piece + 1].distance &&
                              (piece + 2 >= pieces_.size() || distance + kJointTolerance < starts_[piece + 2].distance);
            piece = next ? piece + 1 : pieceAt(distance);
            from = piece == 0 ? 0.0 : starts_[piece].distance - kJointTolerance;
            to = piece + 1 < pieces_.size() ? starts_[piece + 1].distance - kJointTolerance
                                            : std::numeric_limits<double>::infinity();
        }
        const double start = starts_[piece].distance;
        const Form form = starts_[piece].form;
        const bool slightArc = form == Form::Arc && std::abs(pieces_[piece].a) * lengthOf(piece) <= 2.0 * kSeriesTurn;
        if (!onAxis || (form != Form::Line && form != Form::Series && !slightArc)) {
            const Point point = pointOn(piece, distance - start, offsetOf(offsets, i));
            const bool good = isFinite(point);
            points[i++] = good ? point : Point{kNone, kNone};
            found += good ? 1 : 0;
            continue;
        }
        // All that follow on the same piece.
        std::size_t behind = i + 1;
        const double first = std::max(from, 0.0);
        const double last = std::min(to, length_);
        while (behind < count && distances[behind] >= first && distances[behind] < last) {
            ++behind;
        }
        const Piece& on = pieces_[piece];
        if (form == Form::Line) {
            points[i] = {on.x + (distance - start) * on.cosine, on.y + (distance - start) * on.sine};
            for (std::size_t j = i + 1; j < behind; ++j) {
                const double along = distances[j] - start;
                points[j] = {on.x + along * on.cosine, on.y + along * on.sine};
            }
        } else {
            const Curve& curve = curves_[starts_[piece].curve];
            // Little turn on the whole piece, a little past the ends too: fewer terms serve.
            const bool gentle =
                slightArc ? std::abs(on.a) * curve.length <= 2.0 * kShortSeriesTurn
                          : std::max(std::abs(curve.startCurvature * on.a),
                                     std::abs(curve.endCurvature * (on.a + curve.length))) <= 2.0 * kShortSeriesTurn;
            const double fromOrigin = slightArc ? 0.0 : on.a;
            for (std::size_t begin = i; begin < behind; begin += kLanes) {
                const std::size_t lanes = std::min(kLanes, behind - begin);
                Lanes w;
                Lanes theta;
                Lanes x;
                Lanes y;
                if (lanes == kLanes) {
                    for (std::size_t lane = 0; lane < kLanes; ++lane) {
                        w[lane] = distances[begin + lane];
                    }
                } else {
                    w.fill(distance);
                    std::copy_n(distances.begin() + static_cast<std::ptrdiff_t>(begin), lanes, w.begin());
                }
                if (begin == i) {
                    w[0] = distance; // brought onto the chain
                }
                for (std::size_t lane = 0; lane < kLanes; ++lane) {
                    w[lane] = fromOrigin + (w[lane] - start);
                    theta[lane] = 0.5 * on.growth * w[lane] * w[lane];
                }
                if (slightArc && gentle) {
                    arcs(w, on.a, x, y, onUnitCircleAhead);
                } else if (slightArc) {
                    arcs(w, on.a, x, y, onUnitCircleNear);
                } else if (gentle) {
                    shortSeries(w, theta, x, y);
                } else {
                    fullSeries(w, theta, x, y);
                }
                for (std::size_t lane = 0; lane < kLanes; ++lane) {
                    const double localX = x[lane] - on.shiftX;
                    const double localY = y[lane] - on.shiftY;
                    x[lane] = on.x + (localX * on.cosine - localY * on.sine);
                    y[lane] = on.y + (localX * on.sine + localY * on.cosine);
                }
                for (std::size_t lane = 0; lane < lanes; ++lane) {
                    points[begin + lane] = {x[lane], y[lane]};
                }
            }
        }
        found += behind - i;
        i = behind;
    }
    return found;
}

std::size_t Chain::places(std::span<const double> distances, std::span<const double> offsets,
                          std::span<ChainPlace> places) const {
    std::size_t found = 0;
    for (std::size_t i = 0; i < std::min(distances.size(), places.size()); ++i) {
        const std::optional<ChainPlace> place = placeAt(distances[i], offsetOf(offsets, i));
        places[i] = place.value_or(ChainPlace{{kNone, kNone}, kNone, kNone, 0});
        found += place ? 1 : 0;
    }
    return found;
}

} // namespace fenmark::curve
