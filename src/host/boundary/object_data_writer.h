// The boundary towards the host's object-data tables: one row for each point and polyline, with its source.
#pragma once

#include "sima/records/longitudinal.h"
#include "sima/records/lot_data.h"
#include "sima/records/sima_alignment.h"
#include "sima/records/sima_point.h"
#include "values/drawing_values.h"
#include "values/kinds.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace fenmark::host {

inline constexpr std::string_view kPointTable = "JSIMA_V3_Point";
inline constexpr std::string_view kPolylineTable = "JSIMA_V3_Pline";

// What stands in "Type" for each source but a route polyline.
inline constexpr std::string_view kCoordinateType = typeOf(Kind::Points);
inline constexpr std::string_view kLotType = typeOf(Kind::Lots);
inline constexpr std::string_view kLongitudinalType = typeOf(Kind::Longitudinal);
inline constexpr std::string_view kCrossSectionType = typeOf(Kind::CrossSections);

// One row, in column order "No", "Name", "Type", "FileName".
struct ObjectDataRow {
    std::int32_t no = 0;
    std::string_view name;
    std::string_view type;
    std::string_view fileName;
};

// What stands in "Type" for a route polyline; empty for a type outside 1 to 7.
std::string_view routeTypeLabel(std::int32_t routeType);

// The text behind the last separator of the path; the whole path if it has none. The backslash separates, and
// outside Windows the slash too.
std::string_view fileNameOfPath(std::string_view path);

// Failures of the map module are not reported: the object then stays without data.
class ObjectDataWriter {
  public:
    virtual ~ObjectDataWriter() = default;

    virtual void bindProject() = 0;
    virtual void definePointTable() = 0;
    virtual void definePolylineTable() = 0;
    virtual void writeCoordinateRow(MdDbObjectId id, std::string_view fileName, const sima::SimaPoint& point) = 0;
    virtual void writeLotRow(MdDbObjectId id, std::string_view fileName, const sima::LotData& lot) = 0;
    virtual void writeRouteRow(MdDbObjectId id, std::string_view fileName, const sima::SimaAlignment& route) = 0;
    virtual void writeLongitudinalRow(MdDbObjectId id, std::string_view fileName, std::int32_t routeNumber,
                                      const sima::VerticalData& vertical) = 0;
    // "Type" is "横断成果" if the flag is true and "縦断成果" if it is false.
    virtual void writeResultRow(MdDbObjectId id, std::string_view fileName, std::int32_t routeNumber,
                                std::string_view name, bool crossSection) = 0;
};

} // namespace fenmark::host
