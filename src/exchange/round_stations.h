// How far stations can be counted in multiples of a distance: a start station may be any number that a file holds.
#pragma once

#include <algorithm>
#include <cmath>

namespace fenmark::exchange {

// Metres; beyond, neighbouring reals are 0.1 mm and more apart, and stations have no marks.
inline constexpr double kLargestStation = 1e12;

// Intermediate points of one alignment, and of all in one file or report. An alignment of more is written without them: it
// is none of a road.
inline constexpr double kMostIntermediatePoints = 1e5;
inline constexpr double kMostIntermediateOfFile = 2e5;

// Whether doubles can be counted up by one from the first to the last of two whole numbers; beyond 2^53 a sum of 1 is lost,
// and counting would not end.
[[nodiscard]] inline bool canBeCounted(double first, double last) {
    constexpr double kMostCounted = 0x1p53;
    return std::max(std::abs(first), std::abs(last)) < kMostCounted;
}

} // namespace fenmark::exchange
