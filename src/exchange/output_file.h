// A file written beside its target and renamed over it, so that the target is never half written.
#pragma once

#include "values/outcome.h"

#include <functional>
#include <iosfwd>
#include <string>

namespace fenmark::exchange {

// Fails with one line that names the file and the reason; the target is then as it was. A target that
// is no ordinary file (a device, a pipe) is written directly. A drawing, or another GeoPackage, is never replaced: most
// likely it is what the file is made of.
Outcome writeFile(const std::string& path, const std::function<void(std::ostream&)>& write);

} // namespace fenmark::exchange
