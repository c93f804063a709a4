// Stations along a chain whose counting jumps.
#include "curve/station_equations.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace fenmark::curve {

namespace {

constexpr double kNoDistance = std::numeric_limits<double>::quiet_NaN();

} // namespace

StationEquations::StationEquations(double startStation) : zones_{{0.0, startStation}} {}

ChainStatus StationEquations::set(double startStation, std::span<const StationEquation> equations) {
    if (!std::isfinite(startStation)) {
        return ChainStatus::NotFinite;
    }
    std::vector<Zone> zones{{0.0, startStation}};
    for (const StationEquation& equation : equations) {
        if (!std::isfinite(equation.distance) || !std::isfinite(equation.ahead)) {
            return ChainStatus::NotFinite;
        }
        if (!(equation.distance >= zones.back().distance) ||
            (zones.size() > 1 && equation.distance == zones.back().distance)) {
            return ChainStatus::OutOfOrder;
        }
        zones.push_back({equation.distance, equation.ahead});
    }
    zones_ = std::move(zones);
    byStation_.clear();
    highest_.clear();
    if (zones_.size() > 1) {
        byStation_.resize(zones_.size());
        std::iota(byStation_.begin(), byStation_.end(), std::size_t{0});
        std::sort(byStation_.begin(), byStation_.end(), [&](std::size_t a, std::size_t b) {
            return zones_[a].station != zones_[b].station ? zones_[a].station < zones_[b].station : a < b;
        });
        double highest = -std::numeric_limits<double>::infinity();
        for (const std::size_t zone : byStation_) {
            highest = std::max(highest, endOf(zone, std::numeric_limits<double>::infinity()));
            highest_.push_back(highest);
        }
    }
    return ChainStatus::Ok;
}

std::vector<StationEquation> StationEquations::equations() const {
    std::vector<StationEquation> all;
    for (std::size_t zone = 1; zone < zones_.size(); ++zone) {
        all.push_back({zones_[zone].distance, zones_[zone].station});
    }
    return all;
}

double StationEquations::stationBack(std::size_t zone) const {
    return zone + 1 < zones_.size() ? endOf(zone, 0.0) : kNoDistance;
}

// The station at which a zone ends; for the last one on a chain of that length.
double StationEquations::endOf(std::size_t zone, double length) const {
    const double end = zone + 1 < zones_.size() ? zones_[zone + 1].distance : length;
    return zones_[zone].station + (end - zones_[zone].distance);
}

ZonedStation StationEquations::stationAt(double distance, Side side) const {
    std::size_t zone = 0;
    if (zones_.size() > 1) {
        const auto begins = [](double value, const Zone& one) { return value < one.distance; };
        const auto after = std::upper_bound(zones_.begin() + 1, zones_.end(), distance, begins);
        zone = static_cast<std::size_t>(after - zones_.begin()) - 1;
        if (side == Side::Before && zone > 0 && zones_[zone].distance == distance) {
            --zone;
        }
    }
    return {zones_[zone].station + (distance - zones_[zone].distance), zone};
}

double StationEquations::distanceIn(std::size_t zone, double station) const {
    return zone < zones_.size() ? zones_[zone].distance + (station - zones_[zone].station) : kNoDistance;
}

std::vector<double> StationEquations::distancesAt(double station, double length) const {
    std::vector<double> distances;
    const auto look = [&](std::size_t zone) {
        const double end = zone + 1 < zones_.size() ? std::min(zones_[zone + 1].distance, length) : length;
        const double distance = distanceIn(zone, station);
        // The chain's own ends are met within the tolerance; equations up to rounding, metres (1e7 m have 1.9e-9).
        const double before = zone == 0 ? kStationTolerance : 1e-9;
        const double behind = zone + 1 == zones_.size() ? kStationTolerance : 1e-9;
        if (distance >= zones_[zone].distance - before && distance <= end + behind) {
            distances.push_back(std::clamp(distance, zones_[zone].distance, std::max(end, zones_[zone].distance)));
        }
    };
    if (zones_.size() == 1) {
        look(0);
        return distances;
    }
    // Zones by their first station; behind the first one whose followers all begin later, back until none can reach.
    const auto later = [&](double value, std::size_t zone) { return value < zones_[zone].station; };
    auto at = static_cast<std::size_t>(
        std::upper_bound(byStation_.begin(), byStation_.end(), station + kStationTolerance, later) -
        byStation_.begin());
    while (at > 0 && highest_[at - 1] >= station - kStationTolerance) {
        look(byStation_[--at]);
    }
    std::sort(distances.begin(), distances.end());
    distances.erase(std::unique(distances.begin(), distances.end()), distances.end());
    return distances;
}

double StationEquations::firstDistanceAt(double station, double length) const {
    if (zones_.size() == 1) {
        const double distance = distanceIn(0, station);
        const bool on = distance >= -kStationTolerance && distance <= length + kStationTolerance;
        return on ? std::clamp(distance, 0.0, length) : kNoDistance;
    }
    const std::vector<double> all = distancesAt(station, length);
    return all.empty() ? kNoDistance : all.front();
}

ChainStatus equationsFromBackAhead(double startStation, std::span<const BackAhead> pairs,
                                   std::vector<StationEquation>& equations) {
    equations.clear();
    double distance = 0.0;
    double station = startStation;
    for (const BackAhead& pair : pairs) {
        if (!std::isfinite(pair.back) || !std::isfinite(pair.ahead) || !std::isfinite(station)) {
            return ChainStatus::NotFinite;
        }
        if (!(pair.back >= station)) {
            return ChainStatus::OutOfOrder;
        }
        distance += pair.back - station;
        station = pair.ahead;
        equations.push_back({distance, station});
    }
    return ChainStatus::Ok;
}

ChainStatus equationsFromResults(double startStation, std::span<const NamedStation> results, double tolerance,
                                 std::vector<StationEquation>& equations) {
    equations.clear();
    if (!std::isfinite(startStation) || !std::isfinite(tolerance)) {
        return ChainStatus::NotFinite;
    }
    double counted = startStation; // the station that a distance of 0 has in the current zone
    double before = 0.0;
    for (const NamedStation& result : results) {
        if (!std::isfinite(result.station) || !std::isfinite(result.distance)) {
            return ChainStatus::NotFinite;
        }
        if (!(result.distance >= before)) {
            return ChainStatus::OutOfOrder;
        }
        before = result.distance;
        if (std::abs(result.station - result.distance - counted) > tolerance) {
            // Several results at one distance: the last one counts.
            if (!equations.empty() && equations.back().distance == result.distance) {
                equations.pop_back();
            }
            equations.push_back({result.distance, result.station});
            counted = result.station - result.distance;
        }
    }
    return ChainStatus::Ok;
}

} // namespace fenmark::curve
