// The object of one import: owner of the model, the options, the counters and the log.
#pragma once

#include "sima/log/sima_log.h"
#include "sima/reader/read_context.h"
#include "sima/records/cross_section.h"
#include "sima/records/doubts.h"
#include "sima/records/entity_data.h"
#include "sima/records/import_options.h"
#include "sima/records/large_allocator.h"
#include "sima/records/longitudinal.h"
#include "sima/records/lot_data.h"
#include "sima/records/number_index.h"
#include "sima/records/point_table.h"
#include "sima/records/shared_array.h"
#include "sima/records/sima_alignment.h"
#include "values/array.h"
#include "values/drawing_values.h"

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

namespace fenmark::sima {

// Lines that the rules pass over in silence, by kind (for instance "unknown code at top level: X01"), so that a
// program can report them.
using PassedOver = std::map<std::string, std::int64_t>;

// What the command and the dialogs set. It survives a pass.
struct ImportSettings {
    std::string siteName;
    std::string pointLayer;
    std::string ipLayer; // of routes of type 1
    std::string lotLayer;
    std::string wideStakeLayer;  // of routes of type 4 and 5
    std::string continuousLayer; // of routes of type 6
    double shiftDistance = 0.0;  // metres
    SimaImportOptions options;
    host::MdDbObjectId alignmentId;    // that the user chose; null if none
    bool forceChosenAlignment = false; // for every H and I section, whatever route they name
};

// What the file holds, in its order.
struct FileModel {
    PointTable points;
    SharedArray<SimaAlignment> alignments;
    SharedArray<LotData, LargeAllocator<LotData>> lots;
    SharedArray<VerticalData> verticals; // every H01, across H sections
    SharedArray<IntersectionData> intersections;
    SharedArray<HSeriesData> hSeries;
};

// The route that is being read: its opening record and what follows it.
struct OpenRoute {
    std::string routeNumberText;
    std::string routeGroupText;
    std::string routeNameText;
    std::int32_t routeType = 0;
    double startStation = 0.0; // metres
    Array<EntityData> entities;
};

// How far a pass has come, and what it had to say.
struct PassState {
    std::string baseName;
    std::string filePath;
    std::int32_t lineNumber = 0; // of the last line read, from 1
    std::int32_t errorCount = 0;
    std::error_code openError; // of the last pass
    SimaLog log;
    PassedOver passedOver;
    Doubts doubts;
    // What the H and I sections refer to.
    std::string alignmentName;
    bool usedRouteType2 = false;
    bool usedRouteType3 = false;
    bool usedRouteType7 = false;
};

// What the output made of the file.
struct CreatedObjects {
    std::int32_t alignmentsCreated = 0;
    std::int32_t polylinesCreated = 0;
    std::int32_t longitudinalPointsCreated = 0;
    std::int32_t crossSectionPointsCreated = 0;
    std::int32_t coordinatePointsCreated = 0;
    SharedArray<std::string> createdAlignmentNames;
};

// A value. The dialogs and the command pass copies of it around; points, lots, routes, results and log share their
// elements between copies, so that a copy costs the same for a file of any size (see SharedArray, PointTable,
// TextList).
class SimaReader : public ImportSettings, public FileModel, public OpenRoute, public PassState, public CreatedObjects {
  public:
    // 0 when the file was read to its end, -1 when it could not be opened, for the reason in openError.
    // std::invalid_argument leaves a pass when a record is too short for the field that a reader takes, LineTooLong
    // when a line is longer than the context allows (lineNumber then has the line), ReadFailure when the file cannot be
    // read to its end.
    std::int32_t fullRead(std::string_view path, const ReadContext& context);
    std::int32_t previewScan(std::string_view path, const ReadContext& context);

    std::int32_t routesRead(std::int32_t type) const;
    std::int32_t routesCreated(std::int32_t type) const;
    // Do nothing for a type outside 1 to 7.
    void countRouteRead(std::int32_t type);
    void countRouteCreated(std::int32_t type);
    std::int32_t lotCount() const;
    std::int32_t longitudinalPointCount() const;
    std::int32_t crossSectionCount() const;
    // No point, lot, route or result.
    bool nothingFound() const;
    bool allLongitudinalRoutesFound() const;
    bool allCrossSectionRoutesFound() const;
    host::MdDbObjectId alignmentIdOfRoute(std::int32_t number) const;
    // Raises a host::MirdanException with the message of the missing point; the caller deletes it.
    SimaPoint findPoint(std::int32_t number) const;
    // Whether a route of that number was read. If so, notes its type, and during a pass with a host takes over the name
    // of its alignment, unless forceChosenAlignment is set. The first route of a number is the one.
    bool bindRoute(std::int32_t number);
    // Whether results of that number and route name go on a route of another name though several routes have the number.
    bool bindsOtherName(std::int32_t number, std::string_view routeName) const;
    // Empties the model, the log's lists and the counters; what the command has set survives.
    void reset();

  private:
    // The places of the first and last routes of that number.
    std::optional<NumberIndex::Places> placesOfRoute(std::int32_t number) const;
    const SimaAlignment* findRoute(std::int32_t number) const;
    std::int32_t runPass(std::string_view path, const ReadContext& context, bool full);

    // Route numbers of the first elements of `alignments`, brought up to date at each look-up.
    struct RouteIndex {
        NumberIndex places;
        std::size_t indexed = 0;
    };
    mutable RouteIndex routeIndex_;
    // The host during a pass. A copy of the reader is in no pass.
    struct PassHost {
        host::HostBoundary* host = nullptr;
        PassHost() = default;
        PassHost(const PassHost&) {}
        PassHost& operator=(const PassHost& other) {
            if (this != &other) {
                host = nullptr;
            }
            return *this;
        }
    };
    PassHost passHost_;
    std::array<std::int32_t, 7> routesRead_{};
    std::array<std::int32_t, 7> routesCreated_{};
};

} // namespace fenmark::sima
