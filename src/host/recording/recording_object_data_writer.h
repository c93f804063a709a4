// The recording double of the object-data tables: rows as (table, identifier, four values).
#pragma once

#include "host/boundary/object_data_writer.h"
#include "host/recording/call_log.h"
#include "host/recording/record_list.h"
#include "sima/records/large_allocator.h"

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

    std::size_t rowCount() const { return rows_.size(); }
    // The views hold until the next row is written. std::out_of_range beyond the end.
    RecordedRow row(std::size_t index) const;
    // The tables in the order of their first definition.
    const std::vector<std::string>& tables() const { return tables_; }

  private:
    void define(std::string_view table);
    void add(std::string_view table, MdDbObjectId id, const ObjectDataRow& row);

    CallLog& calls_;
    std::vector<std::string> tables_;
    // What many rows share. Tables and types are texts of the program, so that the same text has the same address.
    struct Source {
        std::string_view table;
        std::string_view type;
        std::string fileName;
    };
    struct Row {
        MdDbObjectId id;
        std::int32_t no = 0;
        std::uint32_t source = 0;
        std::size_t nameEnd = 0; // in the names, where that of the row before ends, this one begins
    };
    std::uint32_t sourceOf(std::string_view table, std::string_view type, std::string_view fileName);

    std::vector<Source> sources_;
    RecordList<Row> rows_;
    std::basic_string<char, std::char_traits<char>, sima::LargeAllocator<char>> names_; // one behind the other
};

} // namespace fenmark::host
