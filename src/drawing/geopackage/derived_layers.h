// What another program changed in the layers that are made of a drawing's objects: the areas of lots and the lines of
// alignments. The objects count, and what differs is told.
#pragma once

#include "drawing/drawing.h"
#include "drawing/geopackage/drawing_shape.h"
#include "drawing/geopackage/sqlite_handles.h"
#include "drawing/geopackage/store_notes.h"

#include <vector>

namespace fenmark::drawing {

// Areas without a polyline, and those that differ from theirs. Of the first format nothing is said: its areas outlived
// their polylines.
void noteLots(Connection& connection, const DrawingShape& shape, std::vector<StoreNote>& notes);

// Lines that do not run along the elements of their alignment, from 10 mm on. Nothing is said of alignments without
// elements that can be drawn, or with one that turns by a full circle or more, nor of the middle of a chord.
void noteLines(Connection& connection, const DrawingShape& shape, const Drawing& drawing,
               std::vector<StoreNote>& notes);

} // namespace fenmark::drawing
