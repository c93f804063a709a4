// A drawing as DXF: release 2000, or 12 for old programs, or 2018 with texts in UTF-8.
#pragma once

#include "drawing/drawing.h"
#include "exchange/export_options.h"
#include "exchange/notes.h"

namespace fenmark::exchange {

// Each kind of object lies on a layer of its own with a colour, its names on another; or on the drawing's layers, with
// names on "...-NAME". Points are POINT with their height where it is known, lots and lines LWPOLYLINE (POLYLINE in
// release 12). An alignment is one polyline, its arcs as bulges and its clothoids as chords within 1 mm of the true
// curve; by elements, straights are LINE (white), arcs ARC (red), clothoids polylines (green). Names are TEXT, 2.5 mm
// high on paper of the options' scale. Rows are extended data of the application FENMARK; an alignment's are its name,
// description, site, start station and length. Texts are code page 932 up to release 2000; what that cannot hold is
// written as "\U+XXXX". The first view shows all that was written.
Notes writeDxf(const drawing::Drawing& drawing, const ExportOptions& options, std::ostream& out);

} // namespace fenmark::exchange
