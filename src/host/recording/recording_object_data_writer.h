// The recording double of the object-data tables: rows as (table, identifier, four values), kept column by column.
#pragma once

#include "host/boundary/object_data_writer.h"
#include "host/recording/call_log.h"
#include "host/recording/column.h"
#include "host/recording/text_pool.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace fenmark::host {

struct RecordedRow {
    std::string_view table;
    MdDbObjectId id;
    std::int32_t no = 0;
    std::string_view name;
    std::string_view type;
    std::string_view fileName;
};

class RecordingObjectDataWriter : public ObjectDataWriter {
  public:
    explicit RecordingObjectDataWriter(CallLog& calls) : calls_(calls) {}
    RecordingObjectDataWriter(const RecordingObjectDataWriter&) = delete;
    RecordingObjectDataWriter& operator=(const RecordingObjectDataWriter&) = delete;

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

    std::size_t rowCount() const { return ids_.size(); }
    // The views hold until the next row is written.
    RecordedRow row(std::size_t index) const;
    // The tables in the order of their first definition.
    const std::vector<std::string>& tables() const { return tables_; }

  private:
    void define(std::string_view table);
    void add(std::string_view table, MdDbObjectId id, const ObjectDataRow& row);

    CallLog& calls_;
    std::vector<std::string> tables_;
    TextPool fileNames_;
    SequenceColumn<1> ids_;
    Column<std::int32_t> numbers_;
    SpanColumn<char> names_; // names seldom repeat
    // Rows that share table, type and file name come in long runs. Tables and types are texts of the program, so that
    // they are kept as they come and are the same if they lie at the same place.
    struct Run {
        std::size_t firstRow = 0;
        std::string_view table;
        std::string_view type;
        std::string_view fileName; // in the pool
    };
    std::vector<Run> runs_;
};

} // namespace fenmark::host
