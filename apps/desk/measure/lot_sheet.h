// The area table of a lot for a panel: boundary points with names, coordinates and sides, as the report has it.
#pragma once

#include "desk/measure/measurement.h"
#include "desk/plan/plan_index.h"

#include <optional>

namespace fenmark::desk {

// Nothing for what is no lot.
std::optional<Sheet> lotSheet(const drawing::Drawing& drawing, const PlanIndex& index, std::size_t entity);

} // namespace fenmark::desk
