// The order in which a recording host was called, one byte a call.
#pragma once

#include "sima/records/large_allocator.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace fenmark::host {

enum class Call : std::uint8_t {
    AppendPoint,
    AppendPointXyz,
    AppendPolyline,
    ConvertToLightweight,
    SetPolylineLayer,
    SetLotPolyline,
    ListLayers,
    GetCurrentLayerName,
    BindProject,
    DefinePointTable,
    DefinePolylineTable,
    WriteCoordinateRow,
    WriteLotRow,
    WriteRouteRow,
    WriteLongitudinalRow,
    WriteResultRow,
    Connect,
    Disconnect,
    ListSites,
    CreateSite,
    FindSite,
    CollectAlignments,
    CreateAlignment,
    GetAlignmentName,
    PointAtStation,
    PointAtStationOffset,
};

// The operation's name, as "appendPoint".
std::string_view nameOf(Call call);

class CallLog {
  public:
    using Calls = std::vector<Call, sima::LargeAllocator<Call>>;

    void add(Call call) { calls_.push_back(call); }
    void replaceLast(Call call) { calls_.back() = call; }
    const Calls& all() const { return calls_; }
    std::size_t count(Call call) const;
    // The names of all calls in order, each followed by a blank but the last.
    std::string text() const;
    void clear() { calls_.clear(); }

  private:
    Calls calls_;
};

} // namespace fenmark::host
