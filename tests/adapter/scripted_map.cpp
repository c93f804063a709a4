// The scripted map module.
#include "scripted_host.h"

#include <stdexcept>

namespace mirdane {

namespace {

using fenmark::scripted::current;
using fenmark::scripted::Host;

class ScriptedTable : public MdMapODTable {
  public:
    explicit ScriptedTable(std::string name) : name_(std::move(name)) {}
    Status initRecord(MdMapODTableRecord& record) override {
        if (current().fails("initRecord")) {
            return 1;
        }
        record.valuesForHost().resize(current().tables[name_].columns.size());
        return 0;
    }
    Status addRecord(MdMapODTableRecord& record, MdDbObjectId id) override {
        if (current().fails("addRecord")) {
            return 1;
        }
        current().rows.push_back({name_, id, record.values()});
        return 0;
    }

  private:
    std::string name_;
};

class ScriptedTables : public MdMapODTables {
  public:
    Status addTable(std::string_view name, const MdMapODTableDefinition* definition, const char* description,
                    bool flag) override {
        Host& host = current();
        if (description != nullptr || flag) {
            host.faults.push_back("a table with a description or with the flag");
        }
        if (host.fails("addTable " + std::string(name)) || host.tables.contains(std::string(name))) {
            return 1;
        }
        fenmark::scripted::Table& table = host.tables[std::string(name)];
        for (const MdMapODColumnDefinition& column : definition->columns()) {
            table.columns.push_back(column.name());
            table.types.push_back(column.type());
        }
        return 0;
    }
    Status getTable(MdMapODTable*& table, std::string_view name) override {
        Host& host = current();
        if (host.fails("getTable " + std::string(name)) || !host.tables.contains(std::string(name))) {
            return 1;
        }
        static std::map<std::string, ScriptedTable, std::less<>> made;
        table = &made.try_emplace(std::string(name), std::string(name)).first->second;
        return 0;
    }
};

class ScriptedProject : public MdMapProject {
  public:
    Status getTables(MdMapODTables*& tables) override {
        if (current().fails("getTables")) {
            return 1;
        }
        static ScriptedTables made;
        tables = &made;
        return 0;
    }
};

class ScriptedSession : public MdMapSession {
  public:
    Status getProjectOfDocument(MdMapProject*& project, MdApDocument* document) override {
        if (current().fails("getProjectOfDocument") || document == nullptr) {
            return 1;
        }
        static ScriptedProject made;
        project = &made;
        return 0;
    }
};

} // namespace

MdMapValue& MdMapODTableRecord::Value(int column) {
    if (column < 0 || static_cast<std::size_t>(column) >= values_.size()) {
        throw std::invalid_argument("no such column");
    }
    return values_[static_cast<std::size_t>(column)];
}

MdMapSession* MdMapGetSession() {
    static ScriptedSession session;
    current().note("MdMapGetSession");
    return &session;
}

} // namespace mirdane
