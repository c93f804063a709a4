// Longitudinal results: one H01 record and one H00 to H99 section.
#pragma once

#include "values/array.h"

#include <cstdint>
#include <string>

namespace fenmark::sima {

struct VerticalData {
    std::string stationName;
    double station = 0.0;        // additional distance along the route, metres
    double groundHeight = 0.0;   // metres
    double pileHeadHeight = 0.0; // metres
    std::string sourceText;      // the trimmed line
    std::int32_t spareInt = 0;
};

struct HSeriesData {
    std::int32_t routeNumber = 0;
    std::string routeName;
    Array<VerticalData> verticals;
    std::int32_t firstLine = 0;
    std::int32_t lastLine = 0;
    std::string label;
    bool opened = false;
    bool closed = false;
    bool routeFound = false;
};

} // namespace fenmark::sima
