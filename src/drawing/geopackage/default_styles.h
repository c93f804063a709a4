// How a GIS shows the drawing's layers unless its user says otherwise: styles in the package itself.
#pragma once

#include "drawing/geopackage/drawing_shape.h"

namespace fenmark::drawing {

// Writes a default style, with Japanese column titles, for each feature layer that has no style yet. The shape is that of
// a file that is there, null for a new one. A table of styles that another program made is used as it is, and let alone
// where it lacks a column. Throws a StoreFailure.
void writeDefaultStyles(Connection& connection, const DrawingShape* shape);

} // namespace fenmark::drawing
