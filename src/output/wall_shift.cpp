// The two shift passes: i is the first record of a run, k counts the records that it has so far.
#include "output/wall_shift.h"

#include <algorithm>
#include <cstddef>

namespace fenmark::output {

namespace {

// A run on the left is turned over in place on purpose: for four and more heights the second half reads what the first
// half wrote.
void turnOver(std::span<double> heights) {
    const std::size_t k = heights.size();
    const double held = heights[0];
    for (std::size_t m = 0; m + 1 < k; ++m) {
        heights[m] = heights[k - 1 - m];
    }
    heights[k - 1] = held;
}

// Equal offsets that no shift moved are runs again from their second record on, from their third, and so on. All these
// turns, each one record shorter than the one before, come to this: a, b, c, d, e become e, a, d, d, d.
void turnOverEachSuffix(std::span<double> heights) {
    if (heights.size() < 2) {
        return;
    }
    const double first = heights.front();
    const double last = heights.back();
    if (heights.size() > 2) {
        std::fill(heights.begin() + 2, heights.end(), heights[heights.size() - 2]);
    }
    heights[0] = last;
    heights[1] = first;
}

} // namespace

void shiftStations(std::span<double> stations, double shiftDistance) {
    const std::size_t n = stations.size();
    std::size_t i = 0;
    std::size_t k = 1;
    std::size_t unmoved = 1; // records at the head of the run that keep its station, their shift being lost in rounding
    while (i + k < n) {
        if (stations[i] == stations[i + k]) {
            stations[i + k] += static_cast<double>(k) * shiftDistance;
            ++k;
            if (stations[i + k - 1] == stations[i]) {
                unmoved = k;
            }
            continue;
        }
        // Each of the unmoved records would start a run of its own, whose smaller shifts are lost as well.
        i += unmoved;
        k = 1;
        unmoved = 1;
    }
}

void shiftCrossSectionWalls(std::span<double> distances, std::span<double> heights, double shiftDistance) {
    const std::size_t n = distances.size();
    std::size_t i = 0;
    std::size_t k = 1;
    std::size_t unmoved = 1; // as above
    bool negativeRun = false;
    // Once i + k passes the end, i only runs out: a run that reaches the end of the list keeps its heights.
    while (i + k < n) {
        if (distances[i] == distances[i + k]) {
            const double shift = static_cast<double>(k) * shiftDistance;
            negativeRun = distances[i] < 0.0;
            distances[i + k] += negativeRun ? -shift : shift;
            ++k;
            if (distances[i + k - 1] == distances[i]) {
                unmoved = k;
            }
            continue;
        }
        if (k != 1 && negativeRun) {
            turnOver(heights.subspan(i, k));
            turnOverEachSuffix(heights.subspan(i + 1, unmoved - 1));
        }
        i += unmoved;
        k = 1;
        unmoved = 1;
    }
}

} // namespace fenmark::output
