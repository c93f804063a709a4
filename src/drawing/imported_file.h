// Whether a file is one from which a drawing was imported, or the log of that.
#pragma once

#include "drawing/drawing.h"

#include <string>

namespace fenmark::drawing {

// True for a path that leads to a file from which the drawing was imported, if the file is as it was then: nothing else
// may hold what the import passed over or refused, and nothing may be written over it.
[[nodiscard]] bool isImportedFile(const Drawing& drawing, const std::string& path);

// The log that an import of a SIMA file writes beside it; empty where the path is too short for one.
[[nodiscard]] std::string logOf(const std::string& file);
// True for a path that leads to the log of one of the drawing's imports: it tells what is in no other file either.
[[nodiscard]] bool isImportLog(const Drawing& drawing, const std::string& path);

} // namespace fenmark::drawing
