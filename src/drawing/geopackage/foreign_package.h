// A GeoPackage that another program made, as a drawing: its points and its polygons.
//
// Nothing in the file is run: tables are read by name, views and computed columns are passed over.
#pragma once

#include "drawing/drawing.h"
#include "drawing/geopackage/drawing_store.h"

#include <string>
#include <vector>

namespace fenmark::drawing {

struct ForeignPackage {
    Drawing drawing;              // a layer for each table; points are 座標, polygons are 画地
    std::vector<StoreNote> notes; // what was left out, and which columns gave numbers and names
};

// Reads the tables whose coordinates are metres of one plane rectangular zone (JGD2011, JGD2000 or the Tokyo datum), or of
// an undefined plane. Where tables say nothing of their reference system, `zone` (1 to 19) says that they are metres of
// that zone; 0 refuses them. A name comes from a column as surveys call it (Name, 点名, 地番, ...), or is the number; a
// number comes from such a column (No, 点番号, ...), or is the feature's.
//
// Refuses what is in degrees or in another plane, what is in several planes, and a package without points and polygons,
// each with a remedy. Lines, curves, and polygons with holes are left out, and reported.
Outcome readForeignPackage(const std::string& path, int zone, ForeignPackage& package);

} // namespace fenmark::drawing
