// A drawing as GeoJSON.
#pragma once

#include "drawing/drawing.h"
#include "exchange/text.h"

namespace fenmark::exchange {

// One feature each for points, polylines (closed lots as polygons) and alignments (a line within 1 mm of the true
// curve). Coordinates are those of the drawing, x east and y north in metres; a known zone is named in the member
// "crs", which GIS programs read although the format's later text speaks of degrees alone; it is null without a zone.
Notes writeGeoJson(const drawing::Drawing& drawing, std::ostream& out);

} // namespace fenmark::exchange
