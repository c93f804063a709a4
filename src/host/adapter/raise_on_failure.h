// The one failure of automation steps that callers see.
#pragma once

#include "host/boundary/mirdan_exception.h"

#include <cstdint>

namespace fenmark::host {

inline constexpr const char* kCorridorError = "Corridor Utility Error.";

inline void raiseOnFailure(std::int32_t status) {
    if (status != 0) {
        throw new MirdanException(kCorridorError);
    }
}

} // namespace fenmark::host
