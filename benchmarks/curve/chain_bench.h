// Chains beside bare floors: called by the program of this folder.
#pragma once

namespace fenmark::curve_benchmark {

// Prints the comparison.
void compareChains();

} // namespace fenmark::curve_benchmark
