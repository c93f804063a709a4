// Object data over the host's map module.
#pragma once

#include "host/boundary/object_data_writer.h"
#include "host/surface/map.h"
#include "values/array.h"

namespace fenmark::host {

class MirdaneObjectDataWriter : public ObjectDataWriter {
  public:
    void bindProject() override;
    void definePointTable() override;
    void definePolylineTable() override;
    void writeCoordinateRow(MdDbObjectId id, std::string_view fileName, const sima::SimaPoint& point) override;
    void writeLotRow(MdDbObjectId id, std::string_view fileName, const sima::LotData& lot) override;
    void writeRouteRow(MdDbObjectId id, std::string_view fileName, const sima::SimaAlignment& route) override;
    void writeLongitudinalRow(MdDbObjectId id, std::string_view fileName, std::int32_t routeNumber,
                              const sima::VerticalData& vertical) override;
    void writeResultRow(MdDbObjectId id, std::string_view fileName, std::int32_t routeNumber, std::string_view name,
                        bool crossSection) override;

  private:
    void defineTable(std::string_view table);
    void attachRow(std::string_view table, MdDbObjectId id, const ObjectDataRow& row);
    mirdane::MdMapODTables* tables() const;

    // Both are the host's.
    mirdane::MdMapSession* session_ = nullptr;
    mirdane::MdMapProject* project_ = nullptr;
    sima::Array<mirdane::MdMapValue> values_; // of the row in work
};

} // namespace fenmark::host
