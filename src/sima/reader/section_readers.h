// The readers of the sections. Each is called with the section's opening record as the line read last, and consumes
// lines up to and including the section's end record, or to the end of the file.
#pragma once

#include "sima/reader/file_pass.h"

namespace fenmark::sima {

// A00 to A99.
void readCoordinateSection(FilePass& file);
void previewCoordinateSection(FilePass& file);
// The one rule by which a record becomes a point: stores nothing if it has no number.
// False if nothing was stored.
bool storePoint(PointTable& points, const Fields& fields);

// D00 to D99. std::invalid_argument if the opening record has fewer than 4 fields.
void readLotSection(FilePass& file);
void previewLotSection(FilePass& file);

// F00 to F99.
void readRoute(FilePass& file);
void previewRoute(FilePass& file);

// H00 to H99. Reading raises std::invalid_argument if the opening record has fewer than 3 fields.
void readLongitudinalSection(FilePass& file);
void previewLongitudinalSection(FilePass& file);

// I00 to I99. Reading raises std::invalid_argument if the opening record has fewer than 3 fields.
void readCrossSection(FilePass& file);
void previewCrossSection(FilePass& file);

} // namespace fenmark::sima
