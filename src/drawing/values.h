// The plain values that a drawing shares with the host boundary: identifiers and points.
#pragma once

#include "values/drawing_values.h"

namespace fenmark::drawing {

using host::MdDbObjectId;
using host::MdGePoint3d;
using host::PlanPoint;

} // namespace fenmark::drawing
