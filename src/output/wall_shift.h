// Vertical walls: results at one station or one offset are moved apart, so that their points do not share x and y.
#pragma once

#include <span>

namespace fenmark::output {

// Stations s, s, s of adjacent records become s, s + d, s + 2d; d is the shift distance. All in metres. Only exactly
// equal stations form a run.
void shiftStations(std::span<double> stations, double shiftDistance);

// Offsets of one cross section, metres, with their heights. Runs of exactly equal offsets move outwards: right of the
// centre line (0 or more) s, s + d, s + 2d, left of it s, s - d, s - 2d. A run on the left that a differing offset
// ends has its heights turned over too, in place, so that of four heights a, b, c, d come d, c, c, a; a run at the end
// of the list keeps its heights.
void shiftCrossSectionWalls(std::span<double> distances, std::span<double> heights, double shiftDistance);

} // namespace fenmark::output
