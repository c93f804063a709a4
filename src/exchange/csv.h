// The points of a drawing with their rows as comma-separated text.
#pragma once

#include "drawing/drawing.h"
#include "exchange/notes.h"
#include "exchange/selection.h"

namespace fenmark::exchange {

// Columns id, layer, x_east, y_north, z, table, no, name, type, file. UTF-8 with a byte-order mark, since spreadsheets
// take the text for code page 932 without one; lines end in CR LF. Heights that nobody gave are empty. Polylines and alignments are left out, with a note.
Notes writeCsv(const drawing::Drawing& drawing, std::ostream& out);
// The same of the selected points.
Notes writeSelectedCsv(const drawing::Drawing& drawing, const Selection& selection, std::ostream& out);

} // namespace fenmark::exchange
