// A drawing as GeoJSON.
#pragma once

#include "drawing/drawing.h"
#include "exchange/export_options.h"
#include "exchange/notes.h"

namespace fenmark::exchange {

// One FeatureCollection after RFC 7946: longitude and latitude in degrees with nine decimals, of the options' zone or
// the drawing's, one of which must be known. In the plane, metres in the drawing's axes with the zone as "crs", as the
// format had it before. Points have their height where it is known, lots are closed polygons that run anticlockwise,
// alignments lines within 1 mm of the true curve. What has no place is a feature without geometry.
Notes writeGeoJson(const drawing::Drawing& drawing, const ExportOptions& options, std::ostream& out);

} // namespace fenmark::exchange
