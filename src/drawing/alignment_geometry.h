// Exact plan geometry of an alignment: straights, arcs and clothoids, by station and back.
//
// Plane: the drawing's (x east, y north, metres). Directions are radians anticlockwise from +x, curvatures 1/m and
// positive where the curve turns left. Every element is the curve of linear curvature; positions are good to 1e-9 m for
// elements of survey size. Literature: the series of the clothoid's coordinates in powers of the tangent angle, as in
// every handbook of road surveying; Gauss-Legendre quadrature where the inflection point is far away.
#pragma once

#include "drawing/values.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <span>
#include <vector>

namespace fenmark::drawing {

// A station this close to either end of the chain (metres) is taken for the end.
inline constexpr double kStationTolerance = 1e-6;
// How far the line drawn for an alignment may lie from the true curve, metres.
inline constexpr double kLineTolerance = 1e-3;
inline constexpr double kInfiniteRadius = std::numeric_limits<double>::infinity();

enum class ElementType : char { Straight = 'S', Arc = 'R', Clothoid = 'A' };

// One element as it was laid.
struct Element {
    std::int32_t id = 0; // of its own within the alignment, counted from 1
    ElementType type = ElementType::Straight;
    bool clockwise = false; // turns right, seen along the travel
    PlanPoint start;
    PlanPoint end;
    double direction = 0.0;               // of travel, at the start
    double length = 0.0;                  // metres
    double startRadius = kInfiniteRadius; // positive; infinite where straight
    double endRadius = kInfiniteRadius;
    // How it was laid, as the elements behind it want to know; not kept with the drawing.
    bool continuing = false; // a spiral along the element before, since its PI did not tell its start
    bool otherSense = false; // turns the other way than it was given

    double startCurvature() const { return (clockwise ? -1.0 : 1.0) / startRadius; }
    double endCurvature() const { return (clockwise ? -1.0 : 1.0) / endRadius; }
    double turn() const { return 0.5 * (startCurvature() + endCurvature()) * length; }
    double endDirection() const { return direction + turn(); }
    // The middle of an arc's circle.
    PlanPoint centre() const;
    // Where the tangents at both ends meet; nothing if they are parallel.
    std::optional<PlanPoint> pi() const;
};

struct Pose {
    PlanPoint point;
    double direction = 0.0;
};

// The pose after `along` metres of a curve that starts at `from` with the curvature `curvature`, which changes by
// `growth` each metre. Any turn, any sign, any growth.
Pose advance(const Pose& from, double curvature, double growth, double along);

// The pose at a length along one element.
Pose poseOnElement(const Element& element, double along);

// The element as a line whose points lie on the curve and whose chords lie within the tolerance (metres) of it. First
// and last point are the element's ends.
void appendElementLine(const Element& element, double tolerance, std::vector<PlanPoint>& line);

struct CurvePoint;

struct StationOffset {
    double station = 0.0;
    double offset = 0.0;       // metres, positive to the right of travel
    bool perpendicular = true; // false where the nearest point is an end of the chain or a broken joint
};

// An alignment prepared for many questions. A copy of the elements is kept in the form that is evaluated; elements that
// are not finite, or wind up thousands of times, are left out.
class AlignmentGeometry {
  public:
    AlignmentGeometry() = default;
    AlignmentGeometry(std::span<const Element> elements, double startStation);

    bool empty() const { return pieces_.empty(); }
    double startStation() const { return startStation_; }
    double endStation() const { return startStation_ + length_; }
    double length() const { return length_; }

    // Nothing beyond kStationTolerance from either end. A station on a joint belongs to the element that begins there.
    std::optional<PlanPoint> pointAt(double station, double offset = 0.0) const;
    std::optional<Pose> poseAt(double station) const;
    // Index of the element that holds the station.
    std::optional<std::size_t> elementAt(double station) const;
    // The nearest point of the whole chain; nothing if the chain is empty or the point is not finite.
    std::optional<StationOffset> locate(const PlanPoint& point) const;

  private:
    // How a piece is evaluated.
    enum class Form : std::uint32_t { Arc, Series, Quadrature };
    // One element, or one part of an element that turns far. One cache line each. Its frame has the origin at (x, y)
    // and its x axis along the direction there.
    struct alignas(64) Piece {
        double from; // length of the chain before the piece
        double x;    // origin: the start, or the inflection point where the series is used
        double y;
        double cosine; // direction at the origin
        double sine;
        double a; // Arc: curvature. Series: length from the inflection to the start. Quadrature: curvature at the start
        double b; // Series, Quadrature: change of the curvature for each metre. A straight is a series without it
        std::uint32_t form;
        std::uint32_t element;
    };
    struct Box {
        double minX, minY, maxX, maxY;
    };
    struct Foot;

    void addElement(const Element& element, std::uint32_t index);
    void addPiece(Form form, const Pose& origin, double from, double a, double b, std::uint32_t element);
    static PlanPoint localPoint(const Piece& piece, double along);
    static CurvePoint localPose(const Piece& piece, double along);
    static double localDirection(const Piece& piece, double along);
    static double curvatureAt(const Piece& piece, double along);
    static PlanPoint pointOn(const Piece& piece, double along);
    void buildBuckets();
    void buildBoxes();
    std::size_t pieceAt(double along) const;
    double lengthOf(std::size_t piece) const;
    void searchBoxes(std::size_t level, std::size_t box, const PlanPoint& point, Foot& best) const;
    void searchPiece(std::size_t piece, const PlanPoint& point, Foot& best) const;

    double startStation_ = 0.0;
    double length_ = 0.0;
    double bucketsPerMetre_ = 0.0;
    std::vector<Piece> pieces_;
    std::vector<double> starts_;          // of the pieces; closer together than in them
    std::vector<std::uint32_t> buckets_;  // the last piece that begins at or before the bucket's start
    std::vector<std::vector<Box>> boxes_; // around the pieces, around eight of these, and so on up to one
};

} // namespace fenmark::drawing
