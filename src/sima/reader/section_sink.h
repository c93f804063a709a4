// What the reader gives its finished sections to. The drawing output implements it.
#pragma once

#include "sima/records/cross_section.h"
#include "sima/records/longitudinal.h"
#include "sima/records/lot_data.h"
#include "sima/records/sima_alignment.h"
#include "values/drawing_values.h"

#include <span>

namespace fenmark::sima {

class SimaReader;

// Called at the close of each section, whatever the options say: the sink looks at the flags itself (but for routes,
// whose flag the reader looks at). The reader is given for its options, layers, counters and log.
class SectionSink {
  public:
    virtual ~SectionSink() = default;
    virtual void createCoordinatePoints(SimaReader& reader, std::span<const SimaPoint> points) = 0;
    virtual void createLotPolyline(SimaReader& reader, const LotData& lot) = 0;
    // Null if it failed.
    virtual host::MdDbObjectId createRouteAlignment(SimaReader& reader, const SimaAlignment& route) = 0;
    virtual void createRoutePolyline(SimaReader& reader, const SimaAlignment& route) = 0;
    // These two work on their own copies: their shift passes change stations, offsets and heights.
    virtual void createLongitudinalPoints(SimaReader& reader, const HSeriesData& section) = 0;
    virtual void createCrossSectionPoints(SimaReader& reader, const IntersectionData& section) = 0;
};

} // namespace fenmark::sima
