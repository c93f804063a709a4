// Texts that people keep with a drawing: its title block, the backgrounds under it. A table of names and values in the
// file, beside what the drawing itself is made of.
#pragma once

#include "drawing/geopackage/drawing_store.h"

#include <string>

namespace fenmark::drawing {

class Connection;

// The texts of the file; none where it has none, or cannot be read.
[[nodiscard]] DrawingTexts readTexts(const std::string& path);

// Brings the file from what was read to what is wanted, in one transaction: texts that are the same in both stay as
// the file has them, whatever another program wrote there meanwhile. What was changed here and by another program too
// is ChangedOutside, with nothing changed. A file without the table gets it with the first text.
[[nodiscard]] Outcome changeTexts(const std::string& path, const TextChanges& changes);
// The same in the caller's transaction; throws a StoreFailure.
void changeTextsIn(Connection& connection, const TextChanges& changes);

} // namespace fenmark::drawing
