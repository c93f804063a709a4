// Layer names.
#include "host/adapter/mirdane_drawing_writer.h"
#include "host/adapter/opened.h"
#include "host/adapter/working_database.h"

#include <memory>
#include <optional>

namespace fenmark::host {

namespace {

using mirdane::MdDbLayerTable;
using mirdane::MdDbLayerTableIterator;
using mirdane::MdDbLayerTableRecord;
using mirdane::OpenMode;

// Nothing if the name cannot be read.
std::optional<std::string> nameOf(const MdDbLayerTableRecord& record) {
    mirdane::MdString name;
    char* copy = nullptr;
    if (record.getName(name) == 0) {
        mirdane::mdutNewString(name.c_str(), copy);
    }
    if (copy == nullptr) {
        return std::nullopt;
    }
    std::string text = copy;
    mirdane::mdHeapFree(nullptr, copy);
    return text;
}

} // namespace

std::vector<std::string> MirdaneDrawingWriter::listLayers() {
    std::vector<std::string> names;
    mirdane::MdDbDatabase* const database = workingDatabase();
    if (database == nullptr) {
        return names;
    }
    Opened<MdDbLayerTable> table;
    database->getSymbolTable(table.receive(), OpenMode::Read);
    if (!table) {
        return names;
    }
    MdDbLayerTableIterator* created = nullptr;
    table->newIterator(created, true, true);
    const std::unique_ptr<MdDbLayerTableIterator> iterator(created); // gone before the table is closed
    if (iterator == nullptr) {
        return names;
    }
    for (iterator->start(true, true); !iterator->done(); iterator->step(true, true)) {
        MdDbObjectId id;
        Opened<MdDbLayerTableRecord> record;
        // For write, although only the name is read: the listing has always opened layers so.
        if (iterator->getRecordId(id) == 0) {
            mirdane::mddbOpenObject(record.receive(), id, OpenMode::Write, false);
        }
        if (!record) {
            continue;
        }
        if (std::optional<std::string> name = nameOf(*record.get())) {
            names.push_back(std::move(*name));
        }
    }
    return names;
}

std::string MirdaneDrawingWriter::getCurrentLayerName() {
    mirdane::MdDbDatabase* const database = workingDatabase();
    if (database == nullptr) {
        return {};
    }
    Opened<MdDbLayerTable> table; // closed after the record
    database->getSymbolTable(table.receive(), OpenMode::Read);
    Opened<MdDbLayerTableRecord> record;
    mirdane::mddbOpenObject(record.receive(), database->clayer(), OpenMode::Read, false);
    return record ? nameOf(*record.get()).value_or(std::string()) : std::string();
}

} // namespace fenmark::host
