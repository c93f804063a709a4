// Judges what the exporters make of a drawing, each by the rules of its own format.
#pragma once

#include "drawing/drawing.h"

namespace fenmark::fuzz {

// Every exporter with every version, report, table of stakes and plan. What breaks a rule ends the process.
void judgeExports(const drawing::Drawing& drawing);

} // namespace fenmark::fuzz
