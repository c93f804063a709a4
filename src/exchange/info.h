// What a drawing holds: a summary for people, and the whole of it as JSON.
#pragma once

#include "drawing/drawing.h"

#include <iosfwd>

namespace fenmark::exchange {

// Layers, sites with their alignments and elements, points and polylines with their rows, in creation order, on one
// line. Infinite radii are null; reals read back to the same 64-bit value.
void writeInfoJson(const drawing::Drawing& drawing, std::ostream& out);

void writeSummary(const drawing::Drawing& drawing, std::ostream& out);

} // namespace fenmark::exchange
