// Exact plan geometry of an alignment, by station and back: a chain of src/curve in the drawing's plane.
//
// Plane: the drawing's (x east, y north, metres). Directions are radians anticlockwise from +x.
#pragma once

#include "curve/chain.h"
#include "drawing/element.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace fenmark::drawing {

// A station this close to either end of the chain (metres) is taken for the end.
inline constexpr double kStationTolerance = curve::kStationTolerance;

struct StationOffset {
    double station = 0.0;
    double offset = 0.0;       // metres, positive to the right of travel
    bool perpendicular = true; // false where the nearest point is an end of the chain or a broken joint
};

// An alignment prepared for many questions. A copy of the elements is kept in the form that is evaluated; elements that
// are not usable (isUsable) are left out, and so are those that would make the chain longer than a real holds.
class AlignmentGeometry {
  public:
    AlignmentGeometry() = default;
    AlignmentGeometry(std::span<const Element> elements, double startStation);

    bool empty() const { return chain_.empty(); }
    // False where elements are left out: the stations behind them are not those of the alignment.
    bool isWhole() const { return whole_; }
    double startStation() const { return startStation_; }
    double endStation() const { return startStation_ + chain_.length(); }
    double length() const { return chain_.length(); }
    const curve::Chain& chain() const { return chain_; }

    // Nothing beyond kStationTolerance from either end. A station on a joint belongs to the element that begins there.
    std::optional<PlanPoint> pointAt(double station, double offset = 0.0) const;
    std::optional<Pose> poseAt(double station) const;
    // Index of the element that holds the station.
    std::optional<std::size_t> elementAt(double station) const;
    // The nearest point of the whole chain; nothing if the chain is empty or the point is not finite.
    std::optional<StationOffset> locate(const PlanPoint& point) const;
    // The same, at less cost, where the point lies within a distance of the chain (metres); nothing where it lies farther.
    std::optional<StationOffset> locateWithin(const PlanPoint& point, double away) const;

  private:
    double startStation_ = 0.0;
    bool whole_ = true;
    curve::Chain chain_;
    std::vector<std::uint32_t> leftOut_; // for each curve, how many elements before it are left out; empty if none
};

} // namespace fenmark::drawing
