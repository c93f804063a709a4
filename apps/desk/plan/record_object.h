// Which object of the drawing an import made of a record.
#pragma once

#include "desk/plan/plan_object.h"
#include "desk/session/source_record.h"
#include "drawing/drawing.h"

#include <cstddef>
#include <optional>

namespace fenmark::desk {

// Objects that came of one import, by their places in the drawing.
struct MadeObjects {
    static constexpr std::size_t kAll = ~std::size_t{0};
    std::size_t firstEntity = 0;
    std::size_t endEntity = kAll;
    std::size_t firstAlignment = 0;
    std::size_t endAlignment = kAll;
};
MadeObjects madeSince(const drawing::Drawing::Mark& mark);
MadeObjects madeBy(const drawing::Drawing& drawing, const drawing::Import& import);

// Objects know their source by number, name and kind, not by line: the first of the objects made that a record of these
// could have made. Records within a lot or a route belong to its line, records of results to their points. The
// ends of a section of results belong to its first point. Nothing if there is none, as for a record that was refused.
std::optional<PlanObject> objectOfRecord(const drawing::Drawing& drawing, const MadeObjects& made,
                                         const SourceRecord& record);

} // namespace fenmark::desk
