// Station equations of a road, from the names that its longitudinal results have.
//
// A longitudinal section gives each peg twice: by its name ("No.17+5.3") and by its additional distance. Where the two part
// from one peg to the next, the counting jumped.
#pragma once

#include "curve/station_equations.h"
#include "exchange/results.h"

#include <vector>

namespace fenmark::exchange {

// Distances in metres from the alignment's start, whose station is `startStation`. Each equation stands at the first result
// that counts anew, as the pegs between are not known. A single name that counts for itself proves nothing, nor do
// names where less than half of them agree; the pitch of the pegs is the one with which most of them do.
[[nodiscard]] std::vector<curve::StationEquation> stationEquationsOf(const AlignmentResults& results,
                                                                     double startStation);

} // namespace fenmark::exchange
