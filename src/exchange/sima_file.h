// A drawing as a SIMA common-format file.
#pragma once

#include "drawing/drawing.h"
#include "exchange/export_options.h"
#include "exchange/notes.h"

namespace fenmark::exchange {

// Coordinate points, lots and other polylines, alignments as routes of type 3 with arcs and clothoids (a positive radius
// turns left on the map), longitudinal and cross-section results by station and offset. Code page 932, lines end in CR
// LF. An import of the file makes the same objects with the same rows, within 1e-6 m and in the same order; what cannot
// be the same is in the notes. Coordinates have three decimals, and more where those would not be exact. Points that
// selected lots and routes refer to are written too.
Notes writeSima(const drawing::Drawing& drawing, const ExportOptions& options, std::ostream& out);

} // namespace fenmark::exchange
