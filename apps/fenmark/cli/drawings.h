// Opening drawings to read them.
#pragma once

#include "cli/cli.h"
#include "drawing/drawing.h"
#include "drawing/geopackage/drawing_store.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace fenmark::cli {

// Notes what is odd about the file, unless quiet. Raises Stop with a message that names file and reason.
std::unique_ptr<drawing::Drawing> readDrawing(const std::string& path, drawing::Load load, const Streams& streams,
                                              bool quiet = false);

// The same, but takes a GeoPackage of another program too, its points and polygons; `zone` (0: none given) is for one that
// does not name its reference system.
std::unique_ptr<drawing::Drawing> readDrawingOrPackage(const std::string& path, int zone, const Streams& streams,
                                                       bool quiet);

// The name without blanks at its ends, U+3000 too: names are equal for the command line when they are equal so.
std::string_view withoutEndBlanks(std::string_view name);

// The names of the drawing's alignments, each once, in order of first appearance.
std::vector<std::string> alignmentNames(const drawing::Drawing& drawing);

// The index of the alignment of that name, or of the identifier that "#12" gives. Raises Stop with the names that there
// are, or with the identifiers where several alignments bear the name.
std::size_t alignmentNamed(const drawing::Drawing& drawing, const std::string& path, const std::string& name,
                           Language language);

// Raises Stop if the target is a file from which the drawing was imported, as it was then, or the log of that: nothing else
// may hold what the import passed over or refused.
void requireNoSource(const drawing::Drawing& drawing, const std::string& target, Language language);

// Whether the path ends in the extension, which is given in small letters, in any case.
bool endsIn(std::string_view path, std::string_view extension);

} // namespace fenmark::cli
