// The embedded host: the drawing written to disk, and the geometry of its alignments.
#pragma once

#include <string>

namespace fenmark::bench {

// Prints the comparisons of the embedded host, with files made in the given folder.
void compareEmbedded(const std::string& folder);

} // namespace fenmark::bench
