// Tables and rows of the map module. None of its statuses is looked at: what cannot be attached leaves an object
// without data, and the import goes on.
#include "host/adapter/mirdane_object_data_writer.h"

#include <memory>
#include <string>
#include <utility>

namespace fenmark::host {

void MirdaneObjectDataWriter::bindProject() {
    project_ = nullptr;
    session_ = mirdane::MdMapGetSession();
    mirdane::MdApDocManager* const documents = mirdane::mdDocManagerPtr();
    if (session_ != nullptr && documents != nullptr) {
        session_->getProjectOfDocument(project_, documents->curDocument());
    }
}

void MirdaneObjectDataWriter::definePointTable() {
    defineTable(kPointTable);
}

void MirdaneObjectDataWriter::definePolylineTable() {
    defineTable(kPolylineTable);
}

void MirdaneObjectDataWriter::writeCoordinateRow(MdDbObjectId id, std::string_view fileName,
                                                 const sima::SimaPoint& point) {
    attachRow(kPointTable, id, {point.number, point.name, kCoordinateType, fileName});
}

void MirdaneObjectDataWriter::writeLotRow(MdDbObjectId id, std::string_view fileName, const sima::LotData& lot) {
    attachRow(kPolylineTable, id, {lot.number, lot.name, kLotType, fileName});
}

void MirdaneObjectDataWriter::writeRouteRow(MdDbObjectId id, std::string_view fileName,
                                            const sima::SimaAlignment& route) {
    attachRow(kPolylineTable, id, {route.routeNumber, route.routeName, routeTypeLabel(route.routeType), fileName});
}

void MirdaneObjectDataWriter::writeLongitudinalRow(MdDbObjectId id, std::string_view fileName, std::int32_t routeNumber,
                                                   const sima::VerticalData& vertical) {
    attachRow(kPointTable, id, {routeNumber, vertical.stationName, kLongitudinalType, fileName});
}

void MirdaneObjectDataWriter::writeResultRow(MdDbObjectId id, std::string_view fileName, std::int32_t routeNumber,
                                             std::string_view name, bool crossSection) {
    attachRow(kPointTable, id, {routeNumber, name, crossSection ? kCrossSectionType : kLongitudinalType, fileName});
}

void MirdaneObjectDataWriter::defineTable(std::string_view table) {
    using Type = mirdane::MdMap::EDataType;
    const sima::Array<std::string_view> columnNames = {"No", "Name", "Type", "FileName"};
    const sima::Array<Type> columnTypes = {Type::Integer, Type::Character, Type::Character, Type::Character};
    bindProject();
    mirdane::MdMapODTables* const collection = tables();
    const auto definition = std::make_unique<mirdane::MdMapODTableDefinition>();
    for (std::size_t i = 0; i < columnNames.size(); ++i) {
        mirdane::MdMapODColumnDefinition column;
        column.SetName(columnNames[i]);
        column.SetType(columnTypes[i]);
        definition->addColumn(column, -1);
    }
    if (collection != nullptr) { // a table of an earlier import stays as it is
        collection->addTable(table, definition.get(), nullptr, false);
    }
}

void MirdaneObjectDataWriter::attachRow(std::string_view table, MdDbObjectId id, const ObjectDataRow& row) {
    values_.clear();
    values_.emplace_back(row.no);
    values_.emplace_back(std::string(row.name));
    values_.emplace_back(std::string(row.type));
    values_.emplace_back(std::string(row.fileName));
    mirdane::MdMapODTableRecord record;
    bindProject(); // anew for each row: the current document may have changed
    mirdane::MdMapODTables* const collection = tables();
    mirdane::MdMapODTable* found = nullptr;
    if (collection != nullptr) {
        collection->getTable(found, table);
    }
    if (found == nullptr) {
        return;
    }
    found->initRecord(record);
    if (record.values().size() < values_.size()) {
        return; // a table of the same name with fewer columns takes no row
    }
    for (std::size_t i = 0; i < values_.size(); ++i) {
        record.Value(static_cast<int>(i)) = std::move(values_[i]);
    }
    found->addRecord(record, id);
}

mirdane::MdMapODTables* MirdaneObjectDataWriter::tables() const {
    mirdane::MdMapODTables* collection = nullptr;
    if (project_ != nullptr) {
        project_->getTables(collection);
    }
    return collection;
}

} // namespace fenmark::host
