// Point at station and nearest point of the embedded host's alignments.
#pragma once

namespace fenmark::bench {

// Prints the comparisons of the geometry with the bare formulas.
void compareGeometry();

} // namespace fenmark::bench
