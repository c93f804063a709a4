// The two shift passes: i is the first record of a run, k counts the records that it has so far.
#include "output/wall_shift.h"

#include <cstddef>

namespace fenmark::output {

void shiftStations(std::span<double> stations, double shiftDistance) {
    const std::size_t n = stations.size();
    std::size_t i = 0;
    std::size_t k = 1;
    while (i + k < n) {
        if (stations[i] == stations[i + k]) {
            stations[i + k] += static_cast<double>(k) * shiftDistance;
            ++k;
            continue;
        }
        // Where even the last shift was lost in rounding, the run is as it was, and none of its records starts another.
        const bool unchanged = stations[i + k - 1] == stations[i];
        i += unchanged ? k : 1;
        k = 1;
    }
}

void shiftCrossSectionWalls(sima::Array<double>& distances, sima::Array<double>& heights, double shiftDistance) {
    const std::size_t n = distances.size();
    std::size_t i = 0;
    std::size_t k = 1;
    bool negativeRun = false;
    // Once i + k passes the end, i only runs out: a run that reaches the end of the list keeps its heights.
    while (i + k < n) {
        if (distances[i] == distances[i + k]) {
            const double shift = static_cast<double>(k) * shiftDistance;
            negativeRun = distances[i] < 0.0;
            distances[i + k] += negativeRun ? -shift : shift;
            ++k;
            continue;
        }
        if (k != 1 && negativeRun) {
            // In place on purpose: for runs of four and more the second half reads what the first half wrote.
            const double held = heights[i];
            for (std::size_t m = 0; m + 1 < k; ++m)
                heights[i + m] = heights[i + k - 1 - m];
            heights[i + k - 1] = held;
        }
        k = 1;
        ++i;
    }
}

} // namespace fenmark::output
