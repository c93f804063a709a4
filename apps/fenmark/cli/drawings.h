// Opening drawings to read them.
#pragma once

#include "cli/cli.h"
#include "drawing/drawing.h"
#include "drawing/geopackage/drawing_store.h"

#include <memory>
#include <string>
#include <string_view>

namespace fenmark::cli {

// Raises Stop with a message that names file and reason.
std::unique_ptr<drawing::Drawing> readDrawing(const std::string& path, drawing::Load load);

// The same, and says on standard error what was left out or is odd.
std::unique_ptr<drawing::Drawing> readDrawing(const std::string& path, drawing::Load load, const Streams& streams,
                                              bool quiet);

// The index of the alignment of that name, the last one if several bear it. Raises Stop with the names that there are.
std::size_t alignmentNamed(const drawing::Drawing& drawing, const std::string& path, const std::string& name);

// Whether the path ends in the extension, which is given in small letters, in any case.
bool endsIn(std::string_view path, std::string_view extension);

} // namespace fenmark::cli
