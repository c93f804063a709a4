// Whether a file is one from which a drawing was imported.
#pragma once

#include "drawing/drawing.h"

#include <string>

namespace fenmark::drawing {

// True for a path that leads to a file from which the drawing was imported, if the file is as it was then: nothing else
// may hold what the import passed over or refused, and nothing may be written over it.
[[nodiscard]] bool isImportedFile(const Drawing& drawing, const std::string& path);

} // namespace fenmark::drawing
