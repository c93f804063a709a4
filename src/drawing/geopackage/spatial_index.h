// The spatial index of one layer of the drawing, kept true while the layer's rows are written.
#pragma once

#include "drawing/geopackage/packed_tree.h"
#include "drawing/geopackage/sqlite_handles.h"
#include "drawing/geopackage/write_progress.h"

#include <cstdint>
#include <string>
#include <vector>

namespace fenmark::drawing {

class SpatialIndex {
  public:
    SpatialIndex(Connection& connection, const char* layer, RowCounter& counter);

    // Before rows are written: so many come, and those beyond an identifier go. If rows change at all, the layer's
    // triggers rest from here on.
    void beginNew(std::uint64_t coming);
    void beginChange(std::uint64_t keptTo, std::uint64_t coming, bool everyRow);
    // A feature that is being written; nothing is kept if the layer has no index.
    void add(std::int64_t id, const Extent& extent);
    // Brings the index up to date and makes the triggers again.
    void finish();

  private:
    enum class Way { None, Insert, Pack };
    struct Trigger {
        std::string name;
        std::string sql;
    };

    std::string named(const char* sql) const; // for this layer
    std::int64_t ask(const char* sql) const;
    void execute(const char* sql) const { connection_.execute(named(sql).c_str()); }
    std::int64_t countStale() const;
    void expect(std::uint64_t coming);
    void restTriggers();
    void readKept();
    void pack();

    Connection& connection_;
    const char* layer_;
    RowCounter& counter_;
    Way way_ = Way::None;
    bool isNew_ = false;
    std::int64_t keptTo_ = 0;
    std::vector<TreeEntry> entries_;
    std::vector<Trigger> triggers_;
};

} // namespace fenmark::drawing
