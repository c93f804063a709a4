// A drawing as DXF, release 12, which every CAD program reads.
#pragma once

#include "drawing/drawing.h"
#include "exchange/text.h"

namespace fenmark::exchange {

// Layers as in the drawing, and beside each a layer "...-NAME" for texts. Points are POINT with their height,
// polylines POLYLINE; straights are LINE (white), arcs ARC (red), clothoids POLYLINE (green) within 1 mm of the true
// curve. Texts are code page 932, told in the header; what that cannot hold is written as "\U+XXXX".
Notes writeDxf(const drawing::Drawing& drawing, std::ostream& out);

} // namespace fenmark::exchange
