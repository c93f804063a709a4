// A chain of exact curves: its pieces, the search by distance, the point at a distance.
#include "curve/chain.h"

#include "curve/chain_limits.h"
#include "curve/unit_chord.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace fenmark::curve {

namespace {

// Radians that a curve may turn over the joint tolerance: sines of such angles are still good to 1e-10.
constexpr double kMostTurnBeyond = 1e6;

} // namespace

ChainStatus Chain::set(std::span<const Curve> curves, double startStation, std::span<const StationEquation> equations) {
    return take({curves.begin(), curves.end()}, startStation, equations);
}

ChainStatus Chain::take(std::vector<Curve> curves, double startStation, std::span<const StationEquation> equations) {
    Chain made;
    made.distances_.reserve(curves.size());
    for (const Curve& curve : curves) {
        if (!isUsable(curve)) {
            return ChainStatus::NotFinite;
        }
        made.distances_.push_back(made.length_);
        made.length_ += curve.length;
    }
    if (!std::isfinite(made.length_) || !std::isfinite(startStation + made.length_)) {
        return ChainStatus::NotFinite;
    }
    if (const ChainStatus status = made.stations_.set(startStation, equations); status != ChainStatus::Ok) {
        return status;
    }
    made.curves_ = std::move(curves);
    made.pieces_.reserve(made.curves_.size());
    made.starts_.reserve(made.curves_.size());
    for (std::size_t i = 0; i < made.curves_.size(); ++i) {
        if (made.curves_[i].length > 0.0) {
            made.addPiece(static_cast<std::uint32_t>(i));
        }
    }
    if (made.pieces_.empty() && !made.curves_.empty()) {
        made.addPiece(0); // a chain of one point
    }
    made.buildBuckets();
    made.buildBoxes();
    made.buildWindings();
    *this = std::move(made);
    return ChainStatus::Ok;
}

void Chain::addPiece(std::uint32_t index) {
    const Curve& curve = curves_[index];
    const double change = curve.endCurvature - curve.startCurvature;
    const double growth = curve.length > 0.0 ? change / curve.length : 0.0;
    Piece piece{};
    piece.x = curve.start.point.x;
    piece.y = curve.start.point.y;
    piece.a = curve.startCurvature;
    piece.growth = growth;
    double azimuth = curve.start.azimuth;
    Form form = Form::Any;
    // A distance a joint tolerance off belongs to this piece too. Where a curve shorter than that would turn endlessly so
    // far beyond its ends, it is followed along its tangent, which stays within the tolerance.
    const double sharpest = std::max(std::abs(curve.startCurvature), std::abs(curve.endCurvature));
    const double turnBeyond = kJointTolerance * (sharpest + kJointTolerance * std::abs(growth));
    const bool isSpeck = curve.length < kJointTolerance && !(turnBeyond <= kMostTurnBeyond);
    if (curve.length == 0.0 || isSpeck || (change == 0.0 && curve.startCurvature == 0.0)) {
        form = Form::Line;
        piece.a = 0.0;
        piece.growth = 0.0;
    } else if (change == 0.0) {
        form = Form::Arc;
    } else if (std::isfinite(growth)) {
        // The same limits as for a single curve, see unit_chord.h.
        const double first = curve.startCurvature * curve.length;
        const double last = curve.endCurvature * curve.length;
        const double limit = 2.0 * kSeriesTurn * std::abs(last - first);
        const double toStart = curve.startCurvature / change * curve.length;
        if (first * first <= limit && last * last <= limit && std::abs(toStart) <= kFarInflection * curve.length) {
            form = Form::Series;
            const double theta = 0.5 * growth * toStart * toStart;
            const Complex start = inflectionSeries(toStart, theta);
            piece.a = toStart;
            piece.shiftX = start.re;
            piece.shiftY = start.im;
            azimuth -= theta;
        } else if (std::abs(first) + 0.5 * std::abs(last - first) <= kQuadratureTurn) {
            form = Form::Quadrature;
        }
    }
    const Complex direction = onUnitCircle(azimuth);
    piece.cosine = direction.re;
    piece.sine = direction.im;
    pieces_.push_back(piece);
    starts_.push_back({distances_[index], index, form});
    const double reach = std::max({std::abs(piece.x), std::abs(piece.y), curve.length});
    vast_ = vast_ || reach > kVast;
}

void Chain::buildBuckets() {
    if (pieces_.size() < 2) {
        return;
    }
    const std::size_t count = kBucketsPerPiece * pieces_.size() + 1;
    const double perMetre = static_cast<double>(count) / length_;
    if (!std::isfinite(perMetre)) {
        return;
    }
    bucketsPerMetre_ = perMetre;
    buckets_.resize(count + 1);
    std::size_t piece = 0;
    for (std::size_t bucket = 0; bucket <= count; ++bucket) {
        const double begin = static_cast<double>(bucket) / bucketsPerMetre_;
        while (piece + 1 < starts_.size() && starts_[piece + 1].distance <= begin) {
            ++piece;
        }
        buckets_[bucket] = static_cast<std::uint32_t>(piece);
    }
}

// The last piece that begins at or before the distance. The bucket leaves a few pieces to look at, and where many short
// pieces share one bucket the search is by halves.
std::size_t Chain::pieceAt(double distance) const {
    distance += kJointTolerance;
    std::size_t low = 0;
    std::size_t high = pieces_.size() - 1;
    if (!buckets_.empty()) {
        const auto last = static_cast<double>(buckets_.size() - 2);
        const auto bucket = static_cast<std::size_t>(std::clamp(distance * bucketsPerMetre_, 0.0, last));
        low = buckets_[bucket];
        high = buckets_[bucket + 1];
    }
    while (low < high) {
        const std::size_t middle = (low + high + 1) / 2;
        if (starts_[middle].distance <= distance) {
            low = middle;
        } else {
            high = middle - 1;
        }
    }
    // The limits of the buckets are rounded.
    while (low + 1 < starts_.size() && starts_[low + 1].distance <= distance) {
        ++low;
    }
    while (low > 0 && starts_[low].distance > distance) {
        --low;
    }
    return low;
}

std::size_t Chain::pieceAt(double distance, Side side) const {
    std::size_t piece = pieceAt(distance);
    if (side == Side::Before) {
        while (piece > 0 && starts_[piece].distance >= distance - kJointTolerance) {
            --piece;
        }
    }
    return piece;
}

// Brings a distance onto the chain; false where it lies beyond the tolerance, or is not finite.
bool Chain::holds(double& distance) const {
    if (pieces_.empty() || !(distance >= -kStationTolerance && distance <= length_ + kStationTolerance)) {
        return false;
    }
    distance = std::clamp(distance, 0.0, length_);
    return true;
}

Point Chain::localPoint(std::size_t index, double along) const {
    const Piece& piece = pieces_[index];
    Complex chord;
    switch (starts_[index].form) {
    case Form::Line:
        return {along, 0.0};
    case Form::Series: {
        const double w = piece.a + along;
        chord = inflectionSeries(w, 0.5 * piece.growth * w * w);
        return {chord.re - piece.shiftX, chord.im - piece.shiftY};
    }
    case Form::Arc:
        chord = arcChord(piece.a * along);
        break;
    case Form::Quadrature:
        chord = quadratureChord(piece.a * along, 0.5 * piece.growth * along * along);
        break;
    case Form::Any: {
        const Curve& curve = curves_[starts_[index].curve];
        const double change = curve.endCurvature - curve.startCurvature;
        chord = unitChord(piece.a * along, 0.5 * change * along * (along / curve.length));
        break;
    }
    }
    return {along * chord.re, along * chord.im};
}

// Point and unit tangent; the point as localPoint.
Frame Chain::localFrame(std::size_t index, double along) const {
    const Piece& piece = pieces_[index];
    Complex tangent{1.0, 0.0};
    switch (starts_[index].form) {
    case Form::Line:
        return {{along, 0.0}, {1.0, 0.0}};
    case Form::Series: {
        const double w = piece.a + along;
        tangent = onUnitCircle(0.5 * piece.growth * w * w);
        break;
    }
    case Form::Arc: {
        // The chord leaves the tangent by half the turn: one sine and one cosine serve both.
        const double half = 0.5 * piece.a * along;
        if (half == 0.0) {
            return {{along, along * half}, {1.0, 0.0}};
        }
        const Complex turned = onUnitCircle(half);
        const double chord = along * (turned.im / half);
        return {{chord * turned.re, chord * turned.im},
                {1.0 - 2.0 * turned.im * turned.im, 2.0 * turned.im * turned.re}};
    }
    case Form::Quadrature:
        tangent = onUnitCircle(along * (piece.a + 0.5 * piece.growth * along));
        break;
    case Form::Any:
        tangent = onUnitCircle(turnAt(curves_[starts_[index].curve], along));
        break;
    }
    return {localPoint(index, along), {tangent.re, tangent.im}};
}

Point Chain::pointOn(std::size_t index, double along) const {
    const Piece& piece = pieces_[index];
    const Point local = localPoint(index, along);
    return {piece.x + (local.x * piece.cosine - local.y * piece.sine),
            piece.y + (local.x * piece.sine + local.y * piece.cosine)};
}

Point Chain::pointOn(std::size_t index, double along, double offset) const {
    if (offset == 0.0) {
        return pointOn(index, along);
    }
    const Piece& piece = pieces_[index];
    const Frame frame = localFrame(index, along);
    const Point local{frame.point.x - offset * frame.tangent.y, frame.point.y + offset * frame.tangent.x};
    return {piece.x + (local.x * piece.cosine - local.y * piece.sine),
            piece.y + (local.x * piece.sine + local.y * piece.cosine)};
}

double Chain::curvatureOn(std::size_t index, double along) const {
    const Piece& piece = pieces_[index];
    switch (starts_[index].form) {
    case Form::Line:
    case Form::Arc:
        return piece.a;
    case Form::Series:
        return piece.growth * (piece.a + along);
    case Form::Quadrature:
    case Form::Any:
        break;
    }
    return curvatureAt(curves_[starts_[index].curve], along);
}

std::optional<Point> Chain::pointAt(double distance, double offset, Side side) const {
    if (!holds(distance)) {
        return std::nullopt;
    }
    const std::size_t piece = side == Side::After ? pieceAt(distance) : pieceAt(distance, side);
    const Point point = pointOn(piece, distance - starts_[piece].distance, offset);
    return isFinite(point) ? std::optional(point) : std::nullopt;
}

std::optional<ChainPlace> Chain::placeAt(double distance, double offset, Side side) const {
    if (!holds(distance)) {
        return std::nullopt;
    }
    const std::size_t piece = pieceAt(distance, side);
    const double along = distance - starts_[piece].distance;
    const Curve& curve = curves_[starts_[piece].curve];
    // A curve shorter than the joint tolerance is not to be followed beyond its ends.
    const double within = std::clamp(along, 0.0, curve.length);
    const ChainPlace place{pointOn(piece, along, offset), azimuthAt(curve, within),
                           fenmark::curve::curvatureAt(curve, within), starts_[piece].curve};
    return isFinite(place.point) ? std::optional(place) : std::nullopt;
}

std::optional<std::size_t> Chain::curveAt(double distance, Side side) const {
    if (!holds(distance)) {
        return std::nullopt;
    }
    return starts_[pieceAt(distance, side)].curve;
}

} // namespace fenmark::curve
