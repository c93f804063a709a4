// Writes a drawing into an open GeoPackage, inside the caller's transaction.
#pragma once

#include "drawing/geopackage/drawing_reader.h"
#include "drawing/geopackage/drawing_shape.h"
#include "drawing/geopackage/entity_rows.h"
#include "drawing/geopackage/spatial_index.h"
#include "drawing/geopackage/sqlite_handles.h"
#include "drawing/geopackage/write_progress.h"

#include <array>
#include <cstdint>

namespace fenmark::drawing {

class DrawingWriter {
  public:
    // All of it, or what the file does not hold yet.
    enum class From { Nothing, Saved };

    // Throws a StoreFailure, as write does.
    DrawingWriter(Connection& connection, const Drawing& drawing, From from, const WriteProgress& progress);
    // First gives features of other programs the identifiers that they were read under. The file bears the stamp after.
    void write(std::span<const NewIdentifier> newIdentifiers, const std::string& stamp);

    static bool hasChanges(const Drawing& drawing);
    static void markSaved(Drawing& drawing);

  private:
    static constexpr std::size_t kEntityLayers = 3;

    std::size_t firstEntity() const;
    void countComing();
    void beginIndexes();
    void bringToFormat();
    void makeFollowTriggers();
    void moveIdentifiers(std::span<const NewIdentifier> newIdentifiers);
    void removeStale();
    void removeImports();
    void writeImports();
    void writeZone();
    void writeNamed();
    void changeLayers();
    void writeAlignments();
    void writeEntities(EntityLayer layer, const char* table, const char* insert);
    void writeDrawing(const std::string& stamp);
    bool hasLots() const;
    void define(const char* function, int arguments, void (*body)(sqlite3_context*, int, sqlite3_value**),
                void* data = nullptr);
    void growContents(const char* table, const Extent& extent);

    Connection& connection_;
    const Drawing& drawing_;
    bool fromNothing_;
    std::optional<DrawingShape> shape_; // of a file that is there
    std::uint64_t entitiesFrom_;        // identifiers beyond these are written
    std::uint64_t othersFrom_;
    int zoneBefore_;
    std::int32_t srsId_;
    std::array<std::uint64_t, kEntityLayers> entitiesComing_{}; // in the order of EntityLayer
    std::uint64_t alignmentsComing_ = 0;
    RowCounter counter_;
    std::array<SpatialIndex, kEntityLayers> entityIndexes_;
    SpatialIndex alignmentIndex_;
};

} // namespace fenmark::drawing
