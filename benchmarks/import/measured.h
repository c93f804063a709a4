// Time and peak memory of a piece of work, measured in a child process of its own.
#pragma once

#include <cstdint>
#include <functional>
#include <limits>

namespace fenmark::bench {

struct Measured {
    double seconds = std::numeric_limits<double>::infinity(); // processor time of the best run
    double peakBytes = 0.0;                                   // resident memory of the process, the highest of all runs
    std::uint64_t result = 0;                                 // what the work returned, so that nothing is left out
};

// Runs the work once in a child process; keeps the best time and the highest peak. Ends the program if the child fails.
void measureOnce(Measured& measured, const std::function<std::uint64_t()>& work);

} // namespace fenmark::bench
