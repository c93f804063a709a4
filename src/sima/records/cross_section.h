// Cross-section results: one I00 to I99 section, and its cross sections.
#pragma once

#include "values/array.h"

#include <cstdint>
#include <string>

namespace fenmark::sima {

struct IntersectionData {
    // One cross section: an I01 record with the I02 records behind it. The three arrays run in parallel.
    struct SubEntity {
        std::string sectionName;
        double station = 0.0;        // metres
        double groundHeight = 0.0;   // metres
        double pileHeadHeight = 0.0; // metres
        std::int32_t sourceLine = 0;
        std::string sourceText;
        Array<std::string> pointNames;
        Array<double> distances; // offsets from the centre line, metres
        Array<double> heights;   // metres

        // Whether any offset is exactly 0.0.
        bool hasCentrePoint() const;
    };

    Array<SubEntity> subEntities;
    std::int32_t routeNumber = 0;
    std::string routeName;
    bool routeFound = false;
};

// The points that a cross section gives: one for each offset, and one on the centre line if none is there.
std::int32_t pointsOfCrossSection(const IntersectionData::SubEntity& subEntity);

} // namespace fenmark::sima
