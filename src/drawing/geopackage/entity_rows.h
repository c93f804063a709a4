// The points, polylines or lots of a drawing as rows to write.
#pragma once

#include "drawing/geopackage/geometry_blob.h"
#include "drawing/geopackage/row_source.h"
#include "drawing/geopackage/spatial_index.h"

#include <cstddef>

namespace fenmark::drawing {

enum class EntityLayer { Points, Polylines, Lots };

inline constexpr std::size_t kLeastRing = 3; // vertices of an area

// True for an entity that has a row in the layer. Lots are the closed polylines that have an area,
// and those of the file's lots that are not closed.
bool belongsTo(const Drawing& drawing, std::size_t entity, EntityLayer layer);

// The box of each entity of the layer from an index on, for the layer's index. Only reads the drawing.
SpatialIndex::Gather boxesOf(const Drawing& drawing, std::size_t first, EntityLayer layer);

// Rows of the columns sql::kEntityColumns.
class EntityRows : public RowSource {
  public:
    // The entities from an index on.
    EntityRows(const Drawing& drawing, std::size_t first, EntityLayer layer, std::int32_t srsId, RowCounter& counter);

    bool next() override;
    void column(int index, const ColumnSink& sink) override;
    const Extent& extent() const { return extent_; }

  private:
    std::span<const std::byte> geometry();

    const Drawing& drawing_;
    std::size_t next_;
    std::size_t import_ = 0; // the first that ends at the entity or behind it
    EntityLayer layer_;
    BlobWriter blob_;
    RowCounter& counter_;
    EntityView entity_;
    Extent extent_; // of all rows
};

} // namespace fenmark::drawing
