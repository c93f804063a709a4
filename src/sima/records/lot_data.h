// One lot: a parcel given by references to coordinate points.
#pragma once

#include "sima/records/lot_points.h"

#include <cstdint>
#include <string>

namespace fenmark::sima {

struct LotData {
    LotPoints points; // the outline, in B01 order
    std::string name;
    std::int32_t number = 0;
    bool isType1 = false; // D00 field 3, trimmed, is "1": the outline is closed
};

} // namespace fenmark::sima
