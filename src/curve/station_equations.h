// Stations along a chain whose counting jumps: station equations, also called broken chainage.
//
// A distance runs from 0 at the chain's start and never jumps. A station is what stands on the pegs: it begins at the
// start station, counts up by one each metre, and at an equation goes on from another value. So a station may occur
// several times (a long chainage) or not at all (a short one). A zone is the part between two equations; zones are
// numbered from 0. All values are metres. Stations always rise within a zone.
#pragma once

#include "curve/chain_status.h"

#include <cstddef>
#include <limits>
#include <span>
#include <vector>

namespace fenmark::curve {

// At a distance from the chain's start the station goes on from `ahead`.
struct StationEquation {
    double distance = 0.0;
    double ahead = 0.0;
};

// The same as it stands on the pegs: the station `back` that is reached, and the station `ahead` that takes its place.
struct BackAhead {
    double back = 0.0;
    double ahead = 0.0;
};

// A result of a longitudinal section: the station that its name gives, and its additional distance from the start.
struct NamedStation {
    double station = 0.0;
    double distance = 0.0;
};

struct ZonedStation {
    double station = 0.0;
    std::size_t zone = 0;
};

// Which side of an equation or a broken joint a distance exactly on it belongs to.
enum class Side { Before, After };

class StationEquations {
  public:
    // Stations from 0 without equations.
    StationEquations() : StationEquations(0.0) {}
    explicit StationEquations(double startStation);

    // Refused (and unchanged): values that are not finite, distances below 0 or that do not rise.
    [[nodiscard]] ChainStatus set(double startStation, std::span<const StationEquation> equations);

    [[nodiscard]] double startStation() const { return zones_.front().station; }
    [[nodiscard]] std::size_t zoneCount() const { return zones_.size(); }
    // The equations as given.
    [[nodiscard]] std::vector<StationEquation> equations() const;
    // The station that is reached at the end of a zone that has an equation behind it.
    [[nodiscard]] double stationBack(std::size_t zone) const;

    [[nodiscard]] ZonedStation stationAt(double distance, Side side = Side::After) const;
    // Every distance that has the station, rising, on a chain of that length; empty where the station does not occur.
    // A station at an equation belongs to both sides. The work grows with the number of results.
    [[nodiscard]] std::vector<double> distancesAt(double station, double length) const;
    // The first of them; NaN where there is none.
    [[nodiscard]] double firstDistanceAt(double station, double length) const;
    // In one zone, also beyond its ends; NaN for a zone that there is not.
    [[nodiscard]] double distanceIn(std::size_t zone, double station) const;

  private:
    struct Zone {
        double distance = 0.0; // of its start
        double station = 0.0;  // at its start
    };
    [[nodiscard]] double endOf(std::size_t zone, double length) const;

    std::vector<Zone> zones_;
    std::vector<std::size_t> byStation_; // zones by their first station, where there is more than one
    std::vector<double> highest_;        // the highest station of these and all before them; the last zone never ends
};

// The distances of equations given as back and ahead, in the order of travel. Refused: a station back that lies before
// the station ahead of the equation before it.
[[nodiscard]] ChainStatus equationsFromBackAhead(double startStation, std::span<const BackAhead> pairs,
                                                 std::vector<StationEquation>& equations);

// The equations that the results of a longitudinal section prove: where the named station and the additional distance
// part by more than the tolerance (metres), the counting jumped. The jump is put at the first result that counts anew,
// since the pegs between are not known. Results have to rise in distance.
[[nodiscard]] ChainStatus equationsFromResults(double startStation, std::span<const NamedStation> results,
                                               double tolerance, std::vector<StationEquation>& equations);

} // namespace fenmark::curve
