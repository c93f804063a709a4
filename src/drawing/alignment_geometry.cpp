// An alignment by station: the pieces that are evaluated, the index over them, point and direction at a station.
#include "drawing/alignment_geometry.h"

#include "drawing/clothoid_series.h"

#include <algorithm>
#include <cmath>

namespace fenmark::drawing {

namespace {

// A station that differs from a joint by rounding alone (metres) is on it.
constexpr double kJointTolerance = 1e-9;
constexpr double kMostArcTurn = 3.2; // of one piece; half of it is within what the series takes
// Curvatures that differ by less than this share are those of an arc: over any length of a survey the difference stays
// far below a nanometre.
constexpr double kSameCurvature = 1e-16;
constexpr double kMostTurn = 1e4;   // radians; an element that winds up further is none of a survey, and left out
constexpr double kMostPieces = 1e5; // of one element
constexpr double kBucketsPerPiece = 4.0;

bool usable(const Element& element) {
    const double sharpest = std::max(std::abs(element.startCurvature()), std::abs(element.endCurvature()));
    return element.length >= 0.0 && sharpest * element.length <= kMostTurn && std::isfinite(element.start.x) &&
           std::isfinite(element.start.y) && std::isfinite(element.direction) && std::isfinite(element.length) &&
           std::isfinite(element.startCurvature()) && std::isfinite(element.endCurvature());
}

} // namespace

AlignmentGeometry::AlignmentGeometry(std::span<const Element> elements, double startStation)
    : startStation_(startStation) {
    pieces_.reserve(elements.size());
    for (std::size_t i = 0; i < elements.size(); ++i) {
        if (!usable(elements[i])) {
            continue;
        }
        addElement(elements[i], static_cast<std::uint32_t>(i));
        length_ += elements[i].length;
    }
    buildBuckets();
    buildBoxes();
}

void AlignmentGeometry::addPiece(Form form, const Pose& origin, double from, double a, double b,
                                 std::uint32_t element) {
    pieces_.push_back({from, origin.point.x, origin.point.y, std::cos(origin.direction), std::sin(origin.direction), a,
                       b, static_cast<std::uint32_t>(form), element});
}

void AlignmentGeometry::addElement(const Element& element, std::uint32_t index) {
    const Pose start{element.start, element.direction};
    const double first = element.startCurvature();
    const double last = element.endCurvature();
    if (element.type == ElementType::Straight || element.length == 0.0 || (first == 0.0 && last == 0.0)) {
        addPiece(Form::Series, start, length_, 0.0, 0.0, index);
        return;
    }
    if (std::abs(last - first) <= kSameCurvature * std::abs(first)) {
        const double parts = std::clamp(std::ceil(std::abs(first) * element.length / kMostArcTurn), 1.0, kMostPieces);
        const double step = element.length / parts;
        for (double part = 0.0; part < parts; part += 1.0) {
            addPiece(Form::Arc, advance(start, first, 0.0, part * step), length_ + part * step, first, 0.0, index);
        }
        return;
    }
    const double growth = (last - first) / element.length;
    const double sharpest = std::max(std::abs(first), std::abs(last));
    if (sharpest * sharpest <= 2.0 * kSeriesTurn * std::abs(growth)) {
        const double along = first / growth; // from the inflection to the start; negative if it is passed on the way
        const Pose inflection = advance(start, first, growth, -along);
        addPiece(Form::Series, inflection, length_, along, growth, index);
        return;
    }
    const double parts = std::clamp(std::ceil(sharpest * element.length / kQuadratureTurn), 1.0, kMostPieces);
    const double step = element.length / parts;
    Pose origin = start;
    for (double part = 0.0; part < parts; part += 1.0) {
        const double along = part * step;
        addPiece(Form::Quadrature, origin, length_ + along, first + growth * along, growth, index);
        origin = advance(origin, first + growth * along, growth, step);
    }
}

void AlignmentGeometry::buildBuckets() {
    for (const Piece& piece : pieces_) {
        starts_.push_back(piece.from);
    }
    if (pieces_.empty() || !(length_ > 0.0)) {
        return;
    }
    const auto count = static_cast<std::size_t>(kBucketsPerPiece * static_cast<double>(pieces_.size())) + 1;
    bucketsPerMetre_ = static_cast<double>(count) / length_;
    buckets_.resize(count + 1);
    std::size_t piece = 0;
    for (std::size_t bucket = 0; bucket <= count; ++bucket) {
        const double begin = static_cast<double>(bucket) / bucketsPerMetre_;
        while (piece + 1 < starts_.size() && starts_[piece + 1] <= begin) {
            ++piece;
        }
        buckets_[bucket] = static_cast<std::uint32_t>(piece);
    }
}

// The last piece that begins at or before the length. The bucket leaves a few pieces to look at, and where many short
// pieces share one bucket the search is by halves.
std::size_t AlignmentGeometry::pieceAt(double along) const {
    if (buckets_.empty()) {
        return pieces_.size() - 1;
    }
    along += kJointTolerance;
    const auto last = static_cast<double>(buckets_.size() - 2);
    const auto bucket = static_cast<std::size_t>(std::clamp(along * bucketsPerMetre_, 0.0, last));
    std::size_t low = buckets_[bucket];
    std::size_t high = buckets_[bucket + 1];
    while (low < high) {
        const std::size_t middle = (low + high + 1) / 2;
        if (starts_[middle] <= along) {
            low = middle;
        } else {
            high = middle - 1;
        }
    }
    // The limits of the buckets are rounded.
    while (low + 1 < starts_.size() && starts_[low + 1] <= along) {
        ++low;
    }
    while (low > 0 && starts_[low] > along) {
        --low;
    }
    return low;
}

double AlignmentGeometry::lengthOf(std::size_t piece) const {
    return (piece + 1 < pieces_.size() ? pieces_[piece + 1].from : length_) - pieces_[piece].from;
}

PlanPoint AlignmentGeometry::localPoint(const Piece& piece, double along) {
    if (static_cast<Form>(piece.form) == Form::Series) {
        return seriesFromInflection(piece.b, piece.a + along);
    }
    if (static_cast<Form>(piece.form) == Form::Arc) {
        return arcFromStart(piece.a, along).point;
    }
    return quadratureFromStart(piece.a, piece.b, along);
}

CurvePoint AlignmentGeometry::localPose(const Piece& piece, double along) {
    if (static_cast<Form>(piece.form) == Form::Arc) {
        return arcFromStart(piece.a, along);
    }
    return {localPoint(piece, along), sineCosine(localDirection(piece, along))};
}

double AlignmentGeometry::localDirection(const Piece& piece, double along) {
    switch (static_cast<Form>(piece.form)) {
    case Form::Arc:
        return piece.a * along;
    case Form::Series:
        return 0.5 * piece.b * (piece.a + along) * (piece.a + along);
    case Form::Quadrature:
        break;
    }
    return along * (piece.a + 0.5 * piece.b * along);
}

double AlignmentGeometry::curvatureAt(const Piece& piece, double along) {
    switch (static_cast<Form>(piece.form)) {
    case Form::Arc:
        return piece.a;
    case Form::Series:
        return piece.b * (piece.a + along);
    case Form::Quadrature:
        break;
    }
    return piece.a + piece.b * along;
}

PlanPoint AlignmentGeometry::pointOn(const Piece& piece, double along) {
    // Straights and most clothoids, without a call.
    const PlanPoint local = static_cast<Form>(piece.form) == Form::Series
                                ? seriesFromInflection(piece.b, piece.a + along)
                                : localPoint(piece, along);
    return {piece.x + (local.x * piece.cosine - local.y * piece.sine),
            piece.y + (local.x * piece.sine + local.y * piece.cosine)};
}

std::optional<PlanPoint> AlignmentGeometry::pointAt(double station, double offset) const {
    double along = station - startStation_;
    if (pieces_.empty() || !(along >= -kStationTolerance && along <= length_ + kStationTolerance) ||
        !std::isfinite(offset)) {
        return std::nullopt;
    }
    along = std::clamp(along, 0.0, length_);
    const Piece& piece = pieces_[pieceAt(along)];
    const double on = along - piece.from;
    if (offset == 0.0) {
        return pointOn(piece, on);
    }
    const CurvePoint pose = localPose(piece, on);
    const PlanPoint local{pose.point.x + offset * pose.direction.sine, pose.point.y - offset * pose.direction.cosine};
    return PlanPoint{piece.x + (local.x * piece.cosine - local.y * piece.sine),
                     piece.y + (local.x * piece.sine + local.y * piece.cosine)};
}

std::optional<Pose> AlignmentGeometry::poseAt(double station) const {
    const std::optional<PlanPoint> point = pointAt(station);
    if (!point) {
        return std::nullopt;
    }
    const double along = std::clamp(station - startStation_, 0.0, length_);
    const Piece& piece = pieces_[pieceAt(along)];
    const double turned = localDirection(piece, along - piece.from);
    return Pose{*point, std::atan2(piece.sine, piece.cosine) + turned};
}

std::optional<std::size_t> AlignmentGeometry::elementAt(double station) const {
    const double along = station - startStation_;
    if (pieces_.empty() || !(along >= -kStationTolerance && along <= length_ + kStationTolerance)) {
        return std::nullopt;
    }
    return pieces_[pieceAt(std::clamp(along, 0.0, length_))].element;
}

} // namespace fenmark::drawing
