// Writes a drawing into an open GeoPackage, inside the caller's transaction.
#pragma once

#include "host/embedded/geopackage/geometry_blob.h"
#include "host/embedded/geopackage/sqlite_handles.h"

#include <cstdint>

namespace fenmark::host::embedded {

class DrawingWriter {
  public:
    // All of it, or what the file does not hold yet.
    enum class From { Nothing, Saved };

    DrawingWriter(Connection& connection, const Drawing& drawing, From from);
    // Throws a StoreFailure.
    void write();

    static bool hasChanges(const Drawing& drawing);
    static void markSaved(Drawing& drawing);

  private:
    void removeStale();
    void writeZone();
    void writeNamed();
    void writeAlignments();
    void writeEntities();
    void writeDrawing();
    void growContents(const char* table, const Extent& extent);

    Connection& connection_;
    const Drawing& drawing_;
    bool fromNothing_;
    std::uint64_t entitiesFrom_; // identifiers beyond these are written
    std::uint64_t othersFrom_;
    BlobWriter blob_;
};

} // namespace fenmark::host::embedded
