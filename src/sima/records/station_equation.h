// A record of the host's family that the import neither reads nor fills; the module holds one empty list of them.
#pragma once

#include "values/array.h"

#include <cstdint>
#include <string>

namespace fenmark::sima {

struct QmrStationEquation {
    double back = 0.0;
    double ahead = 0.0;
};

struct StationEquationHolder {
    Array<QmrStationEquation> equations;
    std::int32_t precision = 12; // digits
    double tolerance = 1e-11;
    std::string text1;
    std::string text2;
};

} // namespace fenmark::sima
