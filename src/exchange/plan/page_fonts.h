// Whether the fonts of this machine have the letters of a plot.
#pragma once

#include "exchange/notes.h"

#include <string>
#include <vector>

namespace fenmark::exchange {

// A note where no font has a letter of the pages' texts: a PDF or picture of them shows a box in its place.
[[nodiscard]] Notes notesOfFonts(const std::vector<std::string>& pages);

} // namespace fenmark::exchange
