// Names and counts of recorded calls.
#include "host/recording/call_log.h"

#include <algorithm>

namespace fenmark::host {

std::string_view nameOf(Call call) {
    switch (call) {
    case Call::AppendPoint:
        return "appendPoint";
    case Call::AppendPointXyz:
        return "appendPointXyz";
    case Call::AppendPolyline:
        return "appendPolyline";
    case Call::ConvertToLightweight:
        return "convertToLightweight";
    case Call::SetPolylineLayer:
        return "setPolylineLayer";
    case Call::SetLotPolyline:
        return "setLotPolyline";
    case Call::ListLayers:
        return "listLayers";
    case Call::GetCurrentLayerName:
        return "getCurrentLayerName";
    case Call::BindProject:
        return "bindProject";
    case Call::DefinePointTable:
        return "definePointTable";
    case Call::DefinePolylineTable:
        return "definePolylineTable";
    case Call::WriteCoordinateRow:
        return "writeCoordinateRow";
    case Call::WriteLotRow:
        return "writeLotRow";
    case Call::WriteRouteRow:
        return "writeRouteRow";
    case Call::WriteLongitudinalRow:
        return "writeLongitudinalRow";
    case Call::WriteResultRow:
        return "writeResultRow";
    case Call::Connect:
        return "connect";
    case Call::Disconnect:
        return "disconnect";
    case Call::ListSites:
        return "listSites";
    case Call::CreateSite:
        return "createSite";
    case Call::FindSite:
        return "findSite";
    case Call::CollectAlignments:
        return "collectAlignments";
    case Call::CreateAlignment:
        return "createAlignment";
    case Call::GetAlignmentName:
        return "getAlignmentName";
    case Call::PointAtStation:
        return "pointAtStation";
    case Call::PointAtStationOffset:
        return "pointAtStationOffset";
    }
    return "";
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
