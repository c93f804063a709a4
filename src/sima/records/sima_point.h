// One coordinate point of a SIMA file, in drawing axes.
#pragma once

#include <cstdint>
#include <string>

namespace fenmark::sima {

// x is the file's Y (easting) and y the file's X (northing): the axes cross once, when the record is stored.
struct SimaPoint {
    std::string name;        // field 2 of A01, as split
    double x = 0.0;          // drawing x, metres
    double y = 0.0;          // drawing y, metres
    double z = 0.0;          // height, metres; 0 if the record has none
    std::int32_t number = 0; // field 1 of A01
    bool hasZ = false;       // whether field 5 of A01 was not empty

    friend bool operator==(const SimaPoint&, const SimaPoint&) = default;
};

} // namespace fenmark::sima
