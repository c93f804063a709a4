// A drawing as KML.
#pragma once

#include "drawing/drawing.h"
#include "exchange/export_options.h"
#include "exchange/notes.h"

namespace fenmark::exchange {

// KML 2.2: a folder with a style for each kind of object that is there, in it a placemark for each object with its row
// as extended data. Longitude and latitude in degrees with nine decimals, of the options' zone or the drawing's, one of
// which must be known. Points have their height above the sea where it is known. What has no place is left out.
Notes writeKml(const drawing::Drawing& drawing, const ExportOptions& options, std::ostream& out);

} // namespace fenmark::exchange
