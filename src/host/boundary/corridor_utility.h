// The boundary towards the host's civil automation: sites, alignments, stations.
#pragma once

#include "sima/records/entity_data.h"
#include "values/array.h"
#include "values/drawing_values.h"

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace fenmark::host {

// Made for one listing, one route or one result section; used between connect and disconnect.
class CorridorUtility {
  public:
    virtual ~CorridorUtility() = default;

    virtual void connect() = 0;
    // Raises AutomationError (pointer) if not connected.
    virtual void disconnect() = 0;

    // 0, or -1 if it failed. The list is emptied first.
    virtual std::int32_t listSites(std::vector<std::string>& names) = 0;
    // Status of the add, or -1 if the sites cannot be had.
    virtual std::int32_t createSite(std::string_view name) = 0;
    // 0 if there is a site of exactly that name, or -1.
    virtual std::int32_t findSite(std::string_view name) = 0;
    // 0, or -1 if it failed; the map keeps what was put into it. A later alignment of one name replaces the earlier.
    virtual std::int32_t collectAlignments(std::map<std::string, MdDbObjectId>& alignments) = 0;
    // Null on failure. Changes the elements in place: PIs, starts after curves, element identifiers.
    virtual MdDbObjectId createAlignment(std::string_view name, std::string_view siteName, std::string_view description,
                                         double startStation, sima::Array<sima::EntityData>& elements) = 0;
    // Empty on failure.
    virtual std::string getAlignmentName(MdDbObjectId id) = 0;
    // 0, or -1 if there is no such point. Stations and offsets in metres; positive offsets lie right of travel.
    virtual std::int32_t pointAtStation(MdDbObjectId id, double station, PlanPoint& point) = 0;
    virtual std::int32_t pointAtStationOffset(MdDbObjectId id, double station, double offset, PlanPoint& point) = 0;
};

} // namespace fenmark::host
