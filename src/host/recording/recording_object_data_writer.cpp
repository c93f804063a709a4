// Rows of a recorded drawing.
#include "host/recording/recording_object_data_writer.h"

#include <algorithm>

namespace fenmark::host {

void RecordingObjectDataWriter::bindProject() {
    calls_.add(Call::BindProject);
}

void RecordingObjectDataWriter::definePointTable() {
    calls_.add(Call::DefinePointTable);
    define(kPointTable);
}

void RecordingObjectDataWriter::definePolylineTable() {
    calls_.add(Call::DefinePolylineTable);
    define(kPolylineTable);
}

void RecordingObjectDataWriter::writeCoordinateRow(MdDbObjectId id, std::string_view fileName,
                                                   const sima::SimaPoint& point) {
    calls_.add(Call::WriteCoordinateRow);
    add(kPointTable, id, {point.number, point.name, kCoordinateType, fileName});
}

void RecordingObjectDataWriter::writeLotRow(MdDbObjectId id, std::string_view fileName, const sima::LotData& lot) {
    calls_.add(Call::WriteLotRow);
    add(kPolylineTable, id, {lot.number, lot.name, kLotType, fileName});
}

void RecordingObjectDataWriter::writeRouteRow(MdDbObjectId id, std::string_view fileName,
                                              const sima::SimaAlignment& route) {
    calls_.add(Call::WriteRouteRow);
    add(kPolylineTable, id, {route.routeNumber, route.routeName, routeTypeLabel(route.routeType), fileName});
}

void RecordingObjectDataWriter::writeLongitudinalRow(MdDbObjectId id, std::string_view fileName,
                                                     std::int32_t routeNumber, const sima::VerticalData& vertical) {
    calls_.add(Call::WriteLongitudinalRow);
    add(kPointTable, id, {routeNumber, vertical.stationName, kLongitudinalType, fileName});
}

void RecordingObjectDataWriter::writeResultRow(MdDbObjectId id, std::string_view fileName, std::int32_t routeNumber,
                                               std::string_view name, bool crossSection) {
    calls_.add(Call::WriteResultRow);
    add(kPointTable, id, {routeNumber, name, crossSection ? kCrossSectionType : kLongitudinalType, fileName});
}

void RecordingObjectDataWriter::define(std::string_view table) {
    if (std::find(tables_.begin(), tables_.end(), table) == tables_.end()) {
        tables_.emplace_back(table);
    }
}

void RecordingObjectDataWriter::add(std::string_view table, MdDbObjectId id, const ObjectDataRow& row) {
    const bool sameRun = !runs_.empty() && runs_.back().table.data() == table.data() &&
                         runs_.back().type.data() == row.type.data() && runs_.back().fileName == row.fileName;
    if (!sameRun) {
        runs_.push_back({ids_.size(), table, row.type, fileNames_[fileNames_.intern(row.fileName)]});
    }
    ids_.push_back(id.asUint64());
    numbers_.push_back(row.no);
    names_.push_back(row.name);
}

RecordedRow RecordingObjectDataWriter::row(std::size_t index) const {
    const std::uint64_t id = ids_.at(index);
    const auto behind = std::upper_bound(runs_.begin(), runs_.end(), index,
                                         [](std::size_t wanted, const Run& run) { return wanted < run.firstRow; });
    const Run& run = *(behind - 1);
    const std::span<const char> name = names_[index];
    return {run.table, MdDbObjectId(id), numbers_[index], std::string_view(name.data(), name.size()),
            run.type,  run.fileName};
}

} // namespace fenmark::host
