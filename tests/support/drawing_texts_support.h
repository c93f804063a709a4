// Texts of a drawing as another program puts them in the place of those that are there.
#pragma once

#include "drawing/geopackage/drawing_texts.h"

#include <string>

namespace fenmark::drawing {

[[nodiscard]] inline Outcome writeTexts(const std::string& path, const DrawingTexts& texts) {
    return changeTexts(path, {readTexts(path), texts});
}

} // namespace fenmark::drawing
