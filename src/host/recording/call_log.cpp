// Names and counts of recorded calls.
#include "host/recording/call_log.h"

#include <algorithm>
#include <iterator>

namespace fenmark::host {

namespace {

// In the order of the enumeration.
constexpr std::string_view kNames[] = {"appendPoint",
                                       "appendPointXyz",
                                       "appendPolyline",
                                       "convertToLightweight",
                                       "setPolylineLayer",
                                       "setLotPolyline",
                                       "listLayers",
                                       "getCurrentLayerName",
                                       "bindProject",
                                       "definePointTable",
                                       "definePolylineTable",
                                       "writeCoordinateRow",
                                       "writeLotRow",
                                       "writeRouteRow",
                                       "writeLongitudinalRow",
                                       "writeResultRow",
                                       "connect",
                                       "disconnect",
                                       "listSites",
                                       "createSite",
                                       "findSite",
                                       "collectAlignments",
                                       "createAlignment",
                                       "getAlignmentName",
                                       "pointAtStation",
                                       "pointAtStationOffset"};
static_assert(std::size(kNames) == static_cast<std::size_t>(Call::PointAtStationOffset) + 1);

} // namespace

std::string_view nameOf(Call call) {
    return kNames[static_cast<std::size_t>(call)];
}

std::size_t CallLog::count(Call call) const {
    return static_cast<std::size_t>(std::count(calls_.begin(), calls_.end(), call));
}

std::string CallLog::text() const {
    std::string text;
    for (const Call call : calls_) {
        if (!text.empty()) {
            text += ' ';
        }
        text += nameOf(call);
    }
    return text;
}

} // namespace fenmark::host
