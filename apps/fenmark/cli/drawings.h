// Opening drawings to read them.
#pragma once

#include "host/embedded/drawing.h"
#include "host/embedded/geopackage/drawing_store.h"

#include <memory>
#include <string>

namespace fenmark::cli {

// Raises Stop with a message that names file and reason.
std::unique_ptr<host::embedded::Drawing> readDrawing(const std::string& path, host::embedded::Load load);

// The index of the alignment of that name, the last one if several bear it. Raises Stop with the names that there are.
std::size_t alignmentNamed(const host::embedded::Drawing& drawing, const std::string& path, const std::string& name);

} // namespace fenmark::cli
