// Chains beside bare floors: called by the program of this folder.
#pragma once

namespace fenmark::bench {

// Prints the comparison.
void compareChains();

} // namespace fenmark::bench
