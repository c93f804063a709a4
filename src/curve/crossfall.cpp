// The crossfall of a carriageway by station.
#include "curve/crossfall.h"

#include <algorithm>
#include <cmath>

namespace fenmark::curve {

ChainStatus Crossfall::set(std::span<const CrossfallStation> stations) {
    if (stations.empty()) {
        return ChainStatus::Empty;
    }
    for (std::size_t i = 0; i < stations.size(); ++i) {
        const CrossfallStation& here = stations[i];
        if (!std::isfinite(here.station) || !std::isfinite(here.left) || !std::isfinite(here.right)) {
            return ChainStatus::NotFinite;
        }
        if (i > 0 && !(here.station >= stations[i - 1].station)) {
            return ChainStatus::OutOfOrder;
        }
    }
    stations_.assign(stations.begin(), stations.end());
    return ChainStatus::Ok;
}

std::optional<Slopes> Crossfall::at(double station) const {
    if (stations_.empty() || !(station >= stations_.front().station - kStationTolerance) ||
        !(station <= stations_.back().station + kStationTolerance)) {
        return std::nullopt;
    }
    const auto begins = [](double value, const CrossfallStation& entry) { return value < entry.station; };
    const auto after = std::upper_bound(stations_.begin(), stations_.end(), station, begins);
    if (after == stations_.begin()) {
        return Slopes{after->left, after->right};
    }
    const CrossfallStation& before = *(after - 1);
    if (after == stations_.end()) {
        return Slopes{before.left, before.right};
    }
    // Half values, so that no difference of finite stations overflows.
    const double share = (0.5 * station - 0.5 * before.station) / (0.5 * after->station - 0.5 * before.station);
    return Slopes{std::lerp(before.left, after->left, share), std::lerp(before.right, after->right, share)};
}

std::vector<double> Crossfall::levelStations(bool right) const {
    std::vector<double> all;
    const auto slope = [&](std::size_t i) { return right ? stations_[i].right : stations_[i].left; };
    double before = 0.0; // the last slope that was not level
    std::size_t from = 0;
    for (std::size_t i = 0; i < stations_.size(); ++i) {
        const double here = slope(i);
        if (here == 0.0) {
            continue;
        }
        if (before != 0.0 && (before > 0.0) != (here > 0.0)) {
            // Level from the first entry without a slope on, or where the straight between two entries passes 0.
            if (from + 1 < i) {
                all.push_back(stations_[from + 1].station);
            } else {
                const double share = before / (before - here);
                all.push_back(std::lerp(stations_[from].station, stations_[i].station, share));
            }
        }
        before = here;
        from = i;
    }
    return all;
}

} // namespace fenmark::curve
