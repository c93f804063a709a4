// A plan of a drawing as SVG: a sheet to scale with frame, grid, north arrow, scale bar and legend.
#pragma once

#include "drawing/drawing.h"
#include "exchange/notes.h"

namespace fenmark::exchange {

// North is up, one unit is one millimetre of paper. Alignments show straights, arcs and clothoids apart, their element
// ends and their stations; points and lots show their names as far as there is room. A plan of very many points draws
// one dot for all points that fall together, without names, and says so.
Notes writePlanSvg(const drawing::Drawing& drawing, std::ostream& out);

} // namespace fenmark::exchange
