// One route of the file, one F00 to F99 section, whatever its type.
#pragma once

#include "sima/records/entity_data.h"
#include "sima/records/point_table.h"
#include "values/array.h"
#include "values/drawing_values.h"

#include <cstdint>
#include <string>

namespace fenmark::sima {

struct SimaAlignment {
    Array<EntityData> entities; // file order; the last one is open
    PointTable points;          // the reader's points as they stood at F00
    std::string routeName;      // field 3 of F00
    std::string alignmentName;  // base name of the file + "-" + routeName
    std::int32_t routeType = 0; // 1 to 7
    std::int32_t routeNumber = 0;
    double startStation = 0.0; // metres, field 1 of F03
    host::MdDbObjectId objectId;
};

} // namespace fenmark::sima
