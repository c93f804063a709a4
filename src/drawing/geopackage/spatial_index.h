// The spatial index of one layer of the drawing, kept true while the layer's rows are written.
#pragma once

#include "drawing/geopackage/packed_tree.h"
#include "drawing/geopackage/sqlite_handles.h"
#include "drawing/geopackage/write_progress.h"

#include <cstdint>
#include <functional>
#include <future>
#include <span>
#include <string>
#include <vector>

namespace fenmark::drawing {

class SpatialIndex {
  public:
    SpatialIndex(Connection& connection, const char* layer, RowCounter& counter);
    SpatialIndex(const SpatialIndex&) = delete;
    SpatialIndex& operator=(const SpatialIndex&) = delete;

    // Before rows are written: so many come; those beyond an identifier go, and those of removed imports.
    void beginNew(std::uint64_t coming);
    void beginChange(std::uint64_t keptTo, std::uint64_t coming, std::span<const IdRange> removed);
    // A feature gets another identifier, before anything else changes.
    void move(std::int64_t from, std::int64_t to);
    // Removes the identifiers that a query gives, before anything else changes.
    void removeAll(const char* query);
    // A feature that is being written; nothing is kept if the layer has no index.
    void add(std::int64_t id, const Extent& extent);
    // All features that are being written, in place of adding each: their boxes come from `gather`, which for many features
    // may run beside the caller until `finish`, so that a large layer's are sorted while its rows are written.
    using Gather = std::function<void(const std::function<void(std::int64_t id, const Extent& extent)>& add)>;
    void gather(const Gather& gather, std::uint64_t features);
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
    void pack(std::vector<std::uint64_t> order);

    Connection& connection_;
    const char* layer_;
    RowCounter& counter_;
    Way way_ = Way::None;
    bool isNew_ = false;
    std::int64_t keptTo_ = 0;
    std::vector<TreeEntry> entries_;
    std::vector<std::int64_t> removed_;                // identifiers in rising order
    std::future<std::vector<std::uint64_t>> gathered_; // entries_ are its own until it is asked for the leaf order
};

} // namespace fenmark::drawing
