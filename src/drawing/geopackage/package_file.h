// What a file is by its first bytes: a drawing must not be replaced by what is made of it.
#pragma once

#include <string>

namespace fenmark::drawing {

// Whether the file, behind links, is an SQLite database, as every drawing and every other GeoPackage is. False where there
// is no ordinary file, or one that cannot be read.
[[nodiscard]] bool isPackageFile(const std::string& path);

} // namespace fenmark::drawing
