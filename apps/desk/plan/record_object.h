// Which object of the drawing an import made of a record.
#pragma once

#include "desk/plan/plan_object.h"
#include "desk/session/source_record.h"
#include "drawing/drawing.h"

#include <optional>

namespace fenmark::desk {

// Objects know their source by number, name and kind, not by line: the first object made since the mark that a record
// of these could have made. Records within a lot or a route belong to its line, records of results to their points. The
// ends of a section of results belong to its first point. Nothing if there is none, as for a record that was refused.
std::optional<PlanObject> objectOfRecord(const drawing::Drawing& drawing, const drawing::Drawing::Mark& since,
                                         const SourceRecord& record);

} // namespace fenmark::desk
