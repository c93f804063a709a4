// Geometry as a GeoPackage keeps it: a header with the reference system and the box, and well-known binary behind it.
//
// All numbers are little-endian; x is east, y north, metres.
#pragma once

#include "drawing/values.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
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

enum class BlobKind {
    Point,
    Line,
    Empty,    // a point or a line string without a place
    Other,    // of another type: see nameOfGeometry
    Malformed // no geometry at all
};

struct BlobRead {
    BlobKind kind = BlobKind::Malformed;
    std::uint32_t type = 0; // as well-known binary has it, without the dimensions
    std::int32_t srs = 0;   // the reference system that the header names
};

// The vertices of a point or a line string, in two or three dimensions; none of anything else.
BlobRead readBlob(std::span<const std::byte> blob, std::vector<MdGePoint3d>& vertices);

// What a feature of any program consists of.
struct BlobParts {
    BlobKind kind = BlobKind::Malformed; // Point, Empty, Other, Malformed; Line stands for areas here
    std::uint32_t type = 0;
    std::vector<MdGePoint3d> points; // of a point or a multipoint; z is 0 where there is none
    std::vector<std::vector<MdGePoint3d>>
        rings;             // the outer ring of each polygon, its last vertex is not the first again
    std::size_t holes = 0; // inner rings, which are not among them
    std::int32_t srs = 0;  // the reference system that the header names
};

// The parts of a POINT, MULTIPOINT, POLYGON or MULTIPOLYGON; Other for the rest.
BlobParts readParts(std::span<const std::byte> blob);

// "MULTILINESTRING"
std::string nameOfGeometry(std::uint32_t type);

// Area within a ring, square metres, never negative; by the trapezium rule from the first vertex, so that large
// coordinates cost no digits. A ring that crosses itself counts parts against each other.
double ringArea(std::span<const MdGePoint3d> ring);

} // namespace fenmark::drawing
