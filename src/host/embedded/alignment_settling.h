// The turning sense of each curve of a finished alignment, from all its joints.
#pragma once

#include "host/embedded/drawing_names.h"

#include <span>
#include <vector>

namespace fenmark::host::embedded {

// Takes the sense that the joints of the whole alignment prove, for its shallow curves and its first one too, and a
// curve against it only where that joins what would be broken. A curve that is turned over is mirrored about its chord;
// a spiral that continues the element before it ends elsewhere then, and what is behind it begins there. Gives the
// elements from the first that changes to the last, under their identifiers; empty if all stay. Takes time in
// proportion to the number of elements.
std::vector<Element> settledElements(std::span<const Element> elements);

} // namespace fenmark::host::embedded
