// The styles of the drawing's layers in QGIS's language for them (QML).
#pragma once

#include <string>
#include <string_view>

namespace fenmark::drawing {

// Of points, polylines, lots or alignments.
std::string styleOf(std::string_view layer);

} // namespace fenmark::drawing
