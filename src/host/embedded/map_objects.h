// The map module of one document: its object-data tables, as the declared surface shows them.
#pragma once

#include "host/embedded/embedded_host.h"

#include <deque>

namespace fenmark::host::embedded {

class Document::MapObjects : public mirdane::MdMapProject, public mirdane::MdMapODTables {
  public:
    explicit MapObjects(Document& document) : document_(document) {}

    mirdane::Status getTables(mirdane::MdMapODTables*& tables) override;
    mirdane::Status addTable(std::string_view name, const mirdane::MdMapODTableDefinition* definition,
                             const char* description, bool flag) override;
    mirdane::Status getTable(mirdane::MdMapODTable*& table, std::string_view name) override;

  private:
    class Table : public mirdane::MdMapODTable {
      public:
        Table(Drawing& drawing, std::size_t index) : drawing_(drawing), index_(index) {}
        mirdane::Status initRecord(mirdane::MdMapODTableRecord& record) override;
        mirdane::Status addRecord(mirdane::MdMapODTableRecord& record, MdDbObjectId id) override;

      private:
        Drawing& drawing_;
        std::size_t index_; // of the table in the drawing
    };

    Document& document_;
    std::deque<Table> tables_;
};

} // namespace fenmark::host::embedded
