// The spatial index of one layer of the drawing, kept true while the layer's rows are written.
#pragma once

#include "drawing/geopackage/packed_tree.h"
#include "drawing/geopackage/sqlite_handles.h"
#include "drawing/geopackage/write_progress.h"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace fenmark::drawing {

class SpatialIndex {
  public:
    SpatialIndex(Connection& connection, const char* layer, RowCounter& counter);

    // Before rows are written: so many come; those beyond an identifier go, and those of removed imports.
    void beginNew(std::uint64_t coming);
    void beginChange(std::uint64_t keptTo, std::uint64_t coming, std::span<const IdRange> removed);
    // A feature gets another identifier, before anything else changes.
    void move(std::int64_t from, std::int64_t to);
    // Removes the identifiers that a query gives, before anything else changes.
    void removeAll(const char* query);
    // A feature that is being written; nothing is kept if the layer has no index.
    void add(std::int64_t id, const Extent& extent);
    // Brings the index up to date.
    void finish();

  private:
    enum class Way { None, Insert, Pack };
    std::string named(const char* sql) const; // for this layer
    std::int64_t ask(const char* sql) const;
    void execute(const char* sql) const { connection_.execute(named(sql).c_str()); }
    bool hasIndex() const;
    std::int64_t countStale() const;
    void readRemoved(std::span<const IdRange> removed);
    void expect(std::uint64_t coming);
    void readKept();
    void pack();

    Connection& connection_;
    const char* layer_;
    RowCounter& counter_;
    Way way_ = Way::None;
    bool isNew_ = false;
    std::int64_t keptTo_ = 0;
    std::vector<TreeEntry> entries_;
    std::vector<std::int64_t> removed_; // identifiers in rising order
};

} // namespace fenmark::drawing
