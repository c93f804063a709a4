// Geometry as a GeoPackage keeps it: a header with the reference system and the box, and well-known binary behind it.
//
// All numbers are little-endian; x is east, y north, metres.
#pragma once

#include "drawing/values.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace fenmark::drawing {

using Bytes = std::vector<std::byte>;

// A buffer that is filled again and again: a blob stays good until the next is made.
class BlobWriter {
  public:
    explicit BlobWriter(std::int32_t srsId) : srsId_(srsId) {}

    std::span<const std::byte> point(const MdGePoint3d& position); // with z
    // Empty, to be written as NULL, if there is no vertex.
    std::span<const std::byte> line(std::span<const MdGePoint3d> vertices, bool closed);
    std::span<const std::byte> line(std::span<const PlanPoint> vertices);
    std::span<const std::byte> polygon(std::span<const MdGePoint3d> ring); // not closed by a vertex

  private:
    template <typename Vertex>
    void vertices(std::span<const Vertex> vertices, bool repeatFirst);
    template <typename Vertex>
    void header(std::span<const Vertex> vertices);
    void byte(unsigned value) { bytes_.push_back(static_cast<std::byte>(value)); }
    void integer(std::uint32_t value);
    void real(double value);

    std::int32_t srsId_;
    Bytes bytes_;
};

// The vertices of a point or a line string, in two or three dimensions; nothing if the blob is malformed or holds
// something else. An empty geometry has no vertices.
bool readBlob(std::span<const std::byte> blob, std::vector<MdGePoint3d>& vertices);

} // namespace fenmark::drawing
