// The files of imports: what a drawing keeps of one, and whether a path leads to one or to its log.
#pragma once

#include "drawing/drawing.h"
#include "drawing/file_digest.h"

#include <optional>
#include <string>

namespace fenmark::drawing {

// The name by which rows and imports know a file.
[[nodiscard]] std::string nameInRows(const std::string& file);

// What a drawing keeps of an import of the file that is made now, but for the identifiers of its objects and the counts.
[[nodiscard]] Import importOf(const std::string& file, const std::optional<FileDigest>& known);

// True for a path that leads to a file from which the drawing was imported, if the file is as it was then: nothing else
// may hold what the import passed over or refused, and nothing may be written over it.
[[nodiscard]] bool isImportedFile(const Drawing& drawing, const std::string& path);

// The log that an import of a SIMA file writes beside it; empty where the path is too short for one.
[[nodiscard]] std::string logOf(const std::string& file);
// True for a path that leads to the log of one of the drawing's imports: it tells what is in no other file either.
[[nodiscard]] bool isImportLog(const Drawing& drawing, const std::string& path);

} // namespace fenmark::drawing
