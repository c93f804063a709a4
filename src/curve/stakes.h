// Stakes along a chain: every so many metres, at given stations, at its main points, with offsets to both sides.
#pragma once

#include "curve/chain.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace fenmark::curve {

// What a stake stands for. The names of main points in Japan: BP and EP, BC and EC of an arc, KA where a clothoid
// leaves a straight or reaches one, KE where it meets an arc.
enum class StakeKind : std::int32_t {
    Interval = 0, // a round station
    Given,        // a station that was asked for
    Start,        // BP
    End,          // EP
    ArcStart,     // BC: straight to arc
    ArcEnd,       // EC: arc to straight
    ClothoidFlat, // KA: between straight and clothoid
    ClothoidArc,  // KE: between clothoid and arc
    Joint,        // any other joint of two curves
};

struct Stake {
    double distance = 0.0;
    double station = 0.0;
    std::size_t zone = 0; // of the station equations
    double offset = 0.0;
    Point point;
    double azimuth = 0.0; // of travel
    double curvature = 0.0;
    StakeKind kind = StakeKind::Interval;
};

struct StakeOptions {
    double every = 0.0;               // metres; round stations that are multiples of it; 0 for none
    std::span<const double> stations; // given ones; each at every distance that has it
    bool mainPoints = false;          // start, end and all joints
    std::span<const double> offsets;  // of each stake; none means the axis alone
    std::size_t most = 1'000'000;     // more than that is refused
};

// By distance, then in the order of the offsets. Where two kinds fall on one place (within 1e-6 m), the main point
// stands, then the given station. Refused: values that are not finite, an interval below 0, more than `most`, a given
// station that the chain does not have (Outside).
[[nodiscard]] ChainStatus stakesOf(const Chain& chain, const StakeOptions& options, std::vector<Stake>& stakes);

} // namespace fenmark::curve
