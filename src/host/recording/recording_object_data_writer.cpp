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
    names_ += row.name;
    rows_.push_back({id, row.no, sourceOf(table, row.type, row.fileName), names_.size()});
}

// Rows that share a source come in long runs, and sources are few.
std::uint32_t RecordingObjectDataWriter::sourceOf(std::string_view table, std::string_view type,
                                                  std::string_view fileName) {
    const auto same = [&](const Source& source) {
        return source.table.data() == table.data() && source.type.data() == type.data() && source.fileName == fileName;
    };
    const std::size_t last = rows_.empty() ? 0 : rows_.back().source;
    if (!rows_.empty() && same(sources_[last])) {
        return static_cast<std::uint32_t>(last);
    }
    const auto found = std::find_if(sources_.begin(), sources_.end(), same);
    const auto index = static_cast<std::uint32_t>(found - sources_.begin());
    if (found == sources_.end()) {
        sources_.push_back({table, type, std::string(fileName)});
    }
    return index;
}

RecordedRow RecordingObjectDataWriter::row(std::size_t index) const {
    const Row& row = rows_.at(index);
    const Source& source = sources_[row.source];
    const std::size_t start = index == 0 ? 0 : rows_.at(index - 1).nameEnd;
    const std::string_view name = std::string_view(names_).substr(start, row.nameEnd - start);
    return {source.table, row.id, row.no, name, source.type, source.fileName};
}

} // namespace fenmark::host
