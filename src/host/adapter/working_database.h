// The database of the drawing that is current now.
#pragma once

#include "host/surface/database.h"

namespace fenmark::host {

// Null if no drawing is open.
inline mirdane::MdDbDatabase* workingDatabase() {
    mirdane::MdDbHostApplicationServices* const services = mirdane::mddbHostApplicationServices();
    return services != nullptr ? services->workingDatabase() : nullptr;
}

} // namespace fenmark::host
