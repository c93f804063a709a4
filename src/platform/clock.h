// The time of day.
#pragma once

#include <string>

namespace fenmark::platform {

// Now in UTC, "2026-01-31T09:15:00Z".
[[nodiscard]] std::string utcNow();

} // namespace fenmark::platform
