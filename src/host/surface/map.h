// The declared host surface, map module: object-data tables and the records attached to objects.
#pragma once

#include "host/surface/database.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

// The module meets these symbols at run time in the host that loads it.
#pragma GCC visibility push(default)

namespace mirdane {

struct MdMap {
    enum class EDataType : int { Integer = 1, Character = 3 };
};

// A typed value: nothing, a signed integer, or a text.
class MdMapValue {
  public:
    MdMapValue() = default;
    explicit MdMapValue(std::int32_t value) : value_(value) {}
    explicit MdMapValue(std::string text) : value_(std::move(text)) {}

    bool isInteger() const { return std::holds_alternative<std::int32_t>(value_); }
    bool isText() const { return std::holds_alternative<std::string>(value_); }
    std::int32_t integer() const { return isInteger() ? std::get<std::int32_t>(value_) : 0; }
    std::string_view text() const { return isText() ? std::string_view(std::get<std::string>(value_)) : ""; }

  private:
    std::variant<std::monostate, std::int32_t, std::string> value_;
};

class MdMapODColumnDefinition {
  public:
    void SetName(std::string_view name) { name_.assign(name); }
    void SetType(MdMap::EDataType type) { type_ = type; }
    const std::string& name() const { return name_; }
    MdMap::EDataType type() const { return type_; }

  private:
    std::string name_;
    MdMap::EDataType type_ = MdMap::EDataType::Integer;
};

class MdMapODTableDefinition {
  public:
    // Position -1 appends.
    Status addColumn(const MdMapODColumnDefinition& column, int position) {
        if (position != -1) {
            return 1;
        }
        columns_.push_back(column);
        return 0;
    }
    const std::vector<MdMapODColumnDefinition>& columns() const { return columns_; }

  private:
    std::vector<MdMapODColumnDefinition> columns_;
};

class MdMapODTableRecord {
  public:
    // The value slot of a column; std::invalid_argument beyond the columns that initRecord gave.
    MdMapValue& Value(int column);
    const std::vector<MdMapValue>& values() const { return values_; }
    std::vector<MdMapValue>& valuesForHost() { return values_; }

  private:
    std::vector<MdMapValue> values_;
};

class MdMapODTable {
  public:
    virtual ~MdMapODTable() = default;
    virtual Status initRecord(MdMapODTableRecord& record) = 0;
    virtual Status addRecord(MdMapODTableRecord& record, MdDbObjectId id) = 0;
};

class MdMapODTables {
  public:
    virtual ~MdMapODTables() = default;
    // Fails if the name exists.
    virtual Status addTable(std::string_view name, const MdMapODTableDefinition* definition, const char* description,
                            bool flag) = 0;
    // The table stays the host's.
    virtual Status getTable(MdMapODTable*& table, std::string_view name) = 0;
};

class MdMapProject {
  public:
    virtual ~MdMapProject() = default;
    virtual Status getTables(MdMapODTables*& tables) = 0; // stays the host's
};

class MdMapSession {
  public:
    virtual ~MdMapSession() = default;
    virtual Status getProjectOfDocument(MdMapProject*& project, MdApDocument* document) = 0; // stays the host's
};

MdMapSession* MdMapGetSession();

} // namespace mirdane

#pragma GCC visibility pop
