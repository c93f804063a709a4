// One lot: a parcel given by references to coordinate points.
#pragma once

#include "sima/records/array.h"
#include "sima/records/sima_point.h"

#include <cstdint>
#include <string>

namespace fenmark::sima {

struct LotData {
    Array<SimaPoint> points; // the outline, in B01 order
    bool isType1 = false;    // D00 field 3, trimmed, is "1": the outline is closed
    std::string name;
    std::int32_t number = 0;
};

} // namespace fenmark::sima
