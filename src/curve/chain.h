// A chain of exact curves, one after the other: an alignment prepared for many questions.
//
// Plane: the survey plane (x north, y east, metres). Azimuths are radians from +x towards +y, clockwise on the map,
// those of its curves, never wrapped; curvatures are 1/m and positive where the chain turns right; offsets are metres, positive to the right of travel.
// A distance runs along the chain from 0 at its start to its length; a station is what station equations make of it
// (station_equations.h). A distance exactly on a joint belongs to the curve that begins there, the last one to the last
// curve, unless Side::Before asks for the curve that ends there.
//
// A chain is made once and only read afterwards, so any number of threads may ask it. Curves need not meet: gaps and
// broken tangents are kept as they are and reported by joints(). Points are good to 1e-13 of a curve's length plus the
// rounding of the coordinates themselves.
#pragma once

#include "curve/chain_status.h"
#include "curve/curve.h"
#include "curve/station_equations.h"
#include "curve/winding.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <span>
#include <vector>

namespace fenmark::curve {

// A place on the chain.
struct ChainPlace {
    Point point;
    double azimuth = 0.0;
    double curvature = 0.0;
    std::size_t curve = 0; // index of the curve that holds it
};

// What a point finds on a chain.
struct ChainFoot {
    double distance = 0.0;
    double offset = 0.0; // the distance of the point, negative where it lies to the left
    std::size_t curve = 0;
    // False where the way to the point leaves the normal: at an end of the chain or a broken joint. At a broken joint
    // the offset's side is the outer one of the kink.
    bool perpendicular = true;
    bool atJoint = false; // on the joint before or behind the curve, within 1e-9 m
};

// The joint between two curves of the chain.
struct ChainJoint {
    double distance = 0.0;
    std::size_t curve = 0;      // the one that begins there
    double gap = 0.0;           // metres from the end before to the start behind
    double turn = 0.0;          // azimuth behind less the azimuth before, in (-pi, pi]; 0 in a tangent joint
    double curvatureStep = 0.0; // curvature behind less the curvature before
};

// Where two chains, or two parts of one chain, meet.
struct ChainCrossing {
    double distance = 0.0; // along the first
    double otherDistance = 0.0;
    Point point;
    double angle = 0.0;   // azimuth of the other less that of the first, in (-pi, pi]
    bool tangent = false; // they touch
};

// The chain as a line. Gaps are bridged.
struct ChainLine {
    std::vector<Point> points;
    double tolerance = 0.0; // metres, how far the line may lie from the chain: the wanted one, or what the bound left
};

class Chain {
  public:
    Chain() = default;

    // Curves of no length are kept and hold no distance. Refused (and the chain unchanged): values that are not finite,
    // equations that do not rise.
    [[nodiscard]] ChainStatus set(std::span<const Curve> curves, double startStation = 0.0,
                                  std::span<const StationEquation> equations = {});
    // The same with curves that are given away: the chain of a long route is not held twice.
    [[nodiscard]] ChainStatus take(std::vector<Curve> curves, double startStation = 0.0,
                                   std::span<const StationEquation> equations = {});

    [[nodiscard]] bool empty() const { return pieces_.empty(); }
    [[nodiscard]] double length() const { return length_; }
    [[nodiscard]] std::span<const Curve> curves() const { return curves_; }
    // Of a curve's start.
    [[nodiscard]] double distanceOf(std::size_t curve) const { return distances_[curve]; }
    [[nodiscard]] const StationEquations& stations() const { return stations_; }
    [[nodiscard]] ZonedStation stationAt(double distance, Side side = Side::After) const {
        return stations_.stationAt(distance, side);
    }
    // The first distance that has the station; NaN where there is none.
    [[nodiscard]] double distanceAt(double station) const { return stations_.firstDistanceAt(station, length_); }

    // Nothing beyond kStationTolerance from either end, or where a value is not finite.
    [[nodiscard]] std::optional<Point> pointAt(double distance, double offset = 0.0, Side side = Side::After) const;
    [[nodiscard]] std::optional<ChainPlace> placeAt(double distance, double offset = 0.0,
                                                    Side side = Side::After) const;
    [[nodiscard]] std::optional<std::size_t> curveAt(double distance, Side side = Side::After) const;

    // Points of many distances; fastest where they rise, right in any order. Offsets: none, one for all, or one each.
    // What has no point becomes NaN. Returns how many have one.
    std::size_t points(std::span<const double> distances, std::span<const double> offsets,
                       std::span<Point> points) const;
    // The same with azimuth and curvature; a place without a point has NaN in all its values.
    std::size_t places(std::span<const double> distances, std::span<const double> offsets,
                       std::span<ChainPlace> places) const;

    // The nearest place of the whole chain; nothing if the chain is empty or the point is not finite. Of places equally
    // near, the one found first.
    [[nodiscard]] std::optional<ChainFoot> locate(const Point& point) const;
    // The same, at less cost, where the point lies within a distance of the chain (metres); nothing where it lies farther.
    [[nodiscard]] std::optional<ChainFoot> locateWithin(const Point& point, double away) const;
    // Many points; fastest where neighbours follow one another. What has no foot becomes NaN.
    std::size_t locate(std::span<const Point> points, std::span<ChainFoot> feet) const;
    // Every place from which the point is locally nearest, by distance along the chain: perpendicular feet, ends and
    // broken joints. A circle that is run through several times has its foot once, and of a curve that winds up often
    // the 64 feet around the nearest count.
    [[nodiscard]] std::vector<ChainFoot> feet(const Point& point) const;

    // Of all neighbouring curves that have a length.
    [[nodiscard]] std::vector<ChainJoint> joints() const;
    // The smallest box around all curves; nothing for an empty chain.
    [[nodiscard]] std::optional<Box> box() const;
    // Points on the chain whose chords lie within the tolerance (metres, above 0). Where that needs more than
    // `mostPoints` (at least two a curve are taken), the points are spread as evenly as the curvature allows.
    [[nodiscard]] ChainLine line(double tolerance, std::size_t mostPoints) const;
    // The chain from its end to its start, its curves turned round. Stations begin at the given one, without equations.
    [[nodiscard]] Chain reversed(double startStation = 0.0) const;

    // All crossings, by distance along this chain. Where both run on each other, the ends of the common part.
    [[nodiscard]] std::vector<ChainCrossing> crossings(const Chain& other) const;

  private:
    // How a piece is evaluated.
    enum class Form : std::uint32_t { Line, Series, Arc, Quadrature, Any };
    // One curve that has a length; one cache line each. Its frame has its x axis along the azimuth at the frame's
    // origin. The point at a length u is anchor + R (local(u) - shift), so that a chain far from the origin of the
    // plane is rounded once.
    struct alignas(64) Piece {
        double x; // anchor: the start of the curve
        double y;
        double cosine; // azimuth at the frame's origin
        double sine;
        double a;      // Series: length from the inflection to the start. Otherwise: curvature at the start
        double growth; // change of the curvature for each metre
        double shiftX; // local coordinates of the anchor
        double shiftY;
    };
    struct Start {
        double distance;
        std::uint32_t curve;
        Form form;
    };
    struct Nearest;
    enum class Which;
    struct Way;

    void addPiece(std::uint32_t index);
    void buildBuckets();
    void buildBoxes();
    void buildWindings();
    [[nodiscard]] const WindingBound* windingOf(std::size_t piece) const;
    [[nodiscard]] std::size_t pieceAt(double distance) const;
    [[nodiscard]] std::size_t pieceAt(double distance, Side side) const;
    [[nodiscard]] double lengthOf(std::size_t piece) const { return curves_[starts_[piece].curve].length; }
    [[nodiscard]] bool holds(double& distance) const;
    [[nodiscard]] Point localPoint(std::size_t piece, double along) const;
    [[nodiscard]] Frame localFrame(std::size_t piece, double along) const;
    [[nodiscard]] Point pointOn(std::size_t piece, double along) const;
    [[nodiscard]] Point pointOn(std::size_t piece, double along, double offset) const;
    [[nodiscard]] double curvatureOn(std::size_t piece, double along) const;
    void searchBoxes(std::size_t level, std::size_t box, const Point& point, Nearest& best) const;
    template <typename Take>
    void searchPiece(std::size_t piece, const Point& point, Which which, const Take& take) const;
    void lookAtPiece(std::size_t piece, const Point& point, Nearest& best) const;
    [[nodiscard]] std::optional<ChainFoot> locateFrom(const Point& point, std::size_t& piece, double away) const;
    [[nodiscard]] ChainFoot footOf(const Nearest& nearest) const;
    [[nodiscard]] double turnBehind(std::size_t piece) const;

    std::vector<Curve> curves_;
    std::vector<double> distances_; // of the curves' starts
    StationEquations stations_;
    double length_ = 0.0;
    double bucketsPerMetre_ = 0.0;
    bool vast_ = false; // squares of its coordinates would overflow
    std::vector<Piece> pieces_;
    std::vector<Start> starts_;           // of the pieces; closer together than in them
    std::vector<std::uint32_t> buckets_;  // the last piece that begins at or before the bucket's start
    std::vector<std::vector<Box>> boxes_; // round the pieces, round eight of these, and so on up to one
    std::vector<WindingBound> windings_;  // of the pieces that wind up
    // Of each piece its place among them and one more, or 0; empty if there are none.
    std::vector<std::uint32_t> windingOf_;
};

} // namespace fenmark::curve
