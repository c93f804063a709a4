// The declared surface, map module, answered by the embedded host.
#include "host/embedded/map_objects.h"

#include <stdexcept>

namespace fenmark::host::embedded {

namespace {

using mirdane::MdMap;
using mirdane::Status;

constexpr Status kMapOk = 0;
constexpr Status kRefused = 1;

struct Column {
    std::string_view name;
    MdMap::EDataType type;
};

// The only columns that the drawing keeps.
constexpr Column kColumns[] = {{"No", MdMap::EDataType::Integer},
                               {"Name", MdMap::EDataType::Character},
                               {"Type", MdMap::EDataType::Character},
                               {"FileName", MdMap::EDataType::Character}};
constexpr std::size_t kColumnCount = std::size(kColumns);

bool hasOurColumns(const mirdane::MdMapODTableDefinition& definition) {
    if (definition.columns().size() != kColumnCount) {
        return false;
    }
    for (std::size_t i = 0; i < kColumnCount; ++i) {
        if (definition.columns()[i].name() != kColumns[i].name || definition.columns()[i].type() != kColumns[i].type) {
            return false;
        }
    }
    return true;
}

} // namespace

Status Document::MapObjects::getTables(mirdane::MdMapODTables*& tables) {
    tables = this;
    return kMapOk;
}

Status Document::MapObjects::addTable(std::string_view name, const mirdane::MdMapODTableDefinition* definition,
                                      const char*, bool) {
    if (definition == nullptr || !hasOurColumns(*definition)) {
        return kRefused;
    }
    return document_.drawing().addTable(name).isNull() ? kRefused : kMapOk;
}

Status Document::MapObjects::getTable(mirdane::MdMapODTable*& table, std::string_view name) {
    table = nullptr;
    const std::optional<std::size_t> index = document_.drawing().findTable(name);
    if (!index) {
        return kRefused;
    }
    while (tables_.size() <= *index) {
        tables_.emplace_back(document_.drawing(), tables_.size());
    }
    table = &tables_[*index];
    return kMapOk;
}

Status Document::MapObjects::Table::initRecord(mirdane::MdMapODTableRecord& record) {
    record.valuesForHost().assign(kColumnCount, mirdane::MdMapValue());
    return kMapOk;
}

Status Document::MapObjects::Table::addRecord(mirdane::MdMapODTableRecord& record, MdDbObjectId id) {
    const std::optional<std::size_t> entity = drawing_.findEntity(id);
    const std::vector<mirdane::MdMapValue>& values = record.values();
    if (!entity || values.size() != kColumnCount || index_ >= drawing_.tables().size()) {
        return kRefused;
    }
    drawing_.setRow(*entity, index_, values[0].integer(), values[1].text(), values[2].text(), values[3].text());
    return kMapOk;
}

} // namespace fenmark::host::embedded

namespace mirdane {

MdMapValue& MdMapODTableRecord::Value(int column) {
    if (column < 0 || static_cast<std::size_t>(column) >= values_.size()) {
        throw std::invalid_argument("no such column in the record");
    }
    return values_[static_cast<std::size_t>(column)];
}

namespace {

using fenmark::host::embedded::Document;
using fenmark::host::embedded::EmbeddedHost;

class Session : public MdMapSession {
  public:
    Status getProjectOfDocument(MdMapProject*& project, MdApDocument* document) override {
        project = nullptr;
        EmbeddedHost* host = EmbeddedHost::current();
        auto* ours = static_cast<Document*>(document); // every document of this host is one
        if (host == nullptr || !host->owns(ours)) {
            return 1;
        }
        project = &ours->mapObjects();
        return 0;
    }
};

} // namespace

MdMapSession* MdMapGetSession() {
    static Session session;
    return EmbeddedHost::current() == nullptr ? nullptr : &session;
}

} // namespace mirdane
