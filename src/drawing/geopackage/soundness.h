// Whether a file's pages are sound enough to be written to.
//
// Reading goes round a damaged page that it does not need. Writing would put new rows over what the page says to be
// free, so that a file which could be read until then could not any more.
#pragma once

#include "drawing/geopackage/sqlite_handles.h"

namespace fenmark::drawing {

// Looks at every page: 2 ms for each megabyte. StoreFailure with Failure::Damaged for a file that must not be written.
void requireSoundPages(Connection& connection);

} // namespace fenmark::drawing
