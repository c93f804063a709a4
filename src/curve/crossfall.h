// The crossfall of a carriageway by station: the superelevation diagram.
//
// A slope is the rise for each metre outwards from the axis on that side, so a crowned road has -0.02 on both sides,
// and a road that leans to the right throughout has +0.02 on its left and -0.02 on its right. Stations are distances
// along the chain counted from its start station without equations, metres. Between two stations of the diagram the
// slopes run straight. Two entries at one station are a step; the one behind holds there.
#pragma once

#include "curve/chain_status.h"

#include <optional>
#include <span>
#include <vector>

namespace fenmark::curve {

struct CrossfallStation {
    double station = 0.0;
    double left = 0.0;
    double right = 0.0;
};

struct Slopes {
    double left = 0.0;
    double right = 0.0;

    // Rise over the axis at an offset, positive to the right, metres.
    [[nodiscard]] double riseAt(double offset) const { return offset >= 0.0 ? right * offset : left * -offset; }
};

class Crossfall {
  public:
    // Refused (and unchanged): nothing, values that are not finite, stations that fall.
    [[nodiscard]] ChainStatus set(std::span<const CrossfallStation> stations);

    [[nodiscard]] bool empty() const { return stations_.empty(); }
    [[nodiscard]] std::span<const CrossfallStation> stations() const { return stations_; }
    // Nothing beyond kStationTolerance from either end.
    [[nodiscard]] std::optional<Slopes> at(double station) const;
    // The stations where a side lies level on its way from falling to rising or back, rising: there water stands.
    [[nodiscard]] std::vector<double> levelStations(bool right) const;

  private:
    std::vector<CrossfallStation> stations_;
};

} // namespace fenmark::curve
