// The values that cross to automation objects: strings, indexes and points.
#pragma once

#include "host/surface/automation.h"
#include "values/drawing_values.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace fenmark::host {

// Raises AutomationError (out of memory) if the string cannot be allocated.
std::string automationString(std::string_view text);

mirdane::Variant stringVariant(std::string_view text);

// A point as a safe array of three reals with lower bound 0. Raises AutomationError (failure) if the array cannot be
// made; nothing on the way up catches that.
mirdane::Variant pointVariant(const MdGePoint3d& point);

} // namespace fenmark::host
