// Geometry as a GeoPackage keeps it.
#include "drawing/geopackage/geometry_blob.h"

#include "drawing/drawing.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <limits>

namespace fenmark::drawing {

namespace {

static_assert(std::endian::native == std::endian::little, "blobs are written as the machine keeps numbers");

constexpr unsigned kLittleEndian = 1;
constexpr unsigned kNoBox = 0;
constexpr unsigned kBoxXy = 1U << 1U; // of the header's flags: a box of four reals follows
constexpr std::uint32_t kPoint = 1;
constexpr std::uint32_t kLine = 2;
constexpr std::uint32_t kPolygon = 3;
constexpr std::uint32_t kPointZ = 1001;
constexpr std::size_t kFixedHeader = 8;
constexpr std::size_t kPointZSize = kFixedHeader + 5 + 24;

} // namespace

void BlobWriter::integer(std::uint32_t value) {
    const std::size_t at = bytes_.size();
    bytes_.resize(at + sizeof value);
    std::memcpy(bytes_.data() + at, &value, sizeof value);
}

void BlobWriter::real(double value) {
    const std::size_t at = bytes_.size();
    bytes_.resize(at + sizeof value);
    std::memcpy(bytes_.data() + at, &value, sizeof value);
}

template <typename Vertex>
void BlobWriter::header(std::span<const Vertex> vertices) {
    bytes_.clear();
    byte('G');
    byte('P');
    byte(0);
    Extent box; // of no finite vertex: the header bears none
    for (const Vertex& vertex : vertices) {
        box.add(vertex.x, vertex.y);
    }
    byte(kLittleEndian | (box.empty() ? kNoBox : kBoxXy));
    integer(static_cast<std::uint32_t>(srsId_));
    if (box.empty()) {
        return;
    }
    real(box.minX);
    real(box.maxX);
    real(box.minY);
    real(box.maxY);
}

template <typename Vertex>
void BlobWriter::vertices(std::span<const Vertex> vertices, bool repeatFirst) {
    integer(static_cast<std::uint32_t>(vertices.size() + (repeatFirst ? 1 : 0)));
    const std::size_t count = vertices.size() + (repeatFirst ? 1 : 0);
    std::size_t at = bytes_.size();
    bytes_.resize(at + count * 16);
    for (std::size_t i = 0; i < count; ++i) {
        const Vertex& vertex = vertices[i < vertices.size() ? i : 0];
        std::memcpy(bytes_.data() + at, &vertex.x, 8);
        std::memcpy(bytes_.data() + at + 8, &vertex.y, 8);
        at += 16;
    }
}

std::span<const std::byte> BlobWriter::point(const MdGePoint3d& position) {
    bytes_.resize(kPointZSize);
    std::byte* at = bytes_.data();
    const auto put = [&](const auto& value) {
        std::memcpy(at, &value, sizeof value);
        at += sizeof value;
    };
    put(std::uint8_t{'G'});
    put(std::uint8_t{'P'});
    put(std::uint8_t{0});
    put(static_cast<std::uint8_t>(kLittleEndian));
    put(srsId_);
    put(static_cast<std::uint8_t>(kLittleEndian));
    put(kPointZ);
    put(position.x);
    put(position.y);
    put(position.z);
    return bytes_;
}

std::span<const std::byte> BlobWriter::line(std::span<const MdGePoint3d> line, bool closed) {
    if (line.empty()) {
        return {};
    }
    header(line);
    byte(kLittleEndian);
    integer(kLine);
    // A line string has two points at least: a single vertex stands twice.
    vertices(line, line.size() == 1 || closed);
    return bytes_;
}

std::span<const std::byte> BlobWriter::line(std::span<const PlanPoint> line) {
    if (line.empty()) {
        return {};
    }
    header(line);
    byte(kLittleEndian);
    integer(kLine);
    vertices(line, line.size() == 1);
    return bytes_;
}

std::span<const std::byte> BlobWriter::polygon(std::span<const MdGePoint3d> ring) {
    header(ring);
    byte(kLittleEndian);
    integer(kPolygon);
    integer(1);
    vertices(ring, true);
    return bytes_;
}

namespace {

// Walks over a blob and stops at its end.
class BlobReader {
  public:
    explicit BlobReader(std::span<const std::byte> bytes) : bytes_(bytes) {}

    template <typename T>
    bool read(T& value) {
        if (bytes_.size() < sizeof value) {
            return false;
        }
        std::byte raw[sizeof value];
        std::memcpy(raw, bytes_.data(), sizeof value);
        if (swapped_) {
            std::reverse(std::begin(raw), std::end(raw));
        }
        std::memcpy(&value, raw, sizeof value);
        bytes_ = bytes_.subspan(sizeof value);
        return true;
    }
    bool skip(std::size_t count) {
        if (bytes_.size() < count) {
            return false;
        }
        bytes_ = bytes_.subspan(count);
        return true;
    }
    void setBigEndian(bool big) { swapped_ = big; }
    std::size_t left() const { return bytes_.size(); }

  private:
    std::span<const std::byte> bytes_;
    bool swapped_ = false;
};

// Reads up to the geometry itself. False if the blob does not begin as one.
bool readHeader(BlobReader& reader, std::uint8_t& flags, std::int32_t& srs) {
    std::uint8_t magic1 = 0;
    std::uint8_t magic2 = 0;
    std::uint8_t version = 0;
    if (!reader.read(magic1) || !reader.read(magic2) || !reader.read(version) || !reader.read(flags) || magic1 != 'G' ||
        magic2 != 'P') {
        return false;
    }
    constexpr std::size_t kBoxSizes[] = {0, 32, 48, 48, 64};
    const unsigned box = (flags >> 1U) & 7U;
    reader.setBigEndian((flags & kLittleEndian) == 0);
    return box <= 4 && reader.read(srs) && reader.skip(kBoxSizes[box]);
}

bool readType(BlobReader& reader, std::uint32_t& type) {
    std::uint8_t order = 0;
    if (!reader.read(order)) {
        return false;
    }
    reader.setBigEndian(order == 0);
    return reader.read(type);
}

// Bytes of a vertex of well-known binary: xy, z, m, z and m.
std::size_t vertexSize(std::uint32_t dimensions) {
    return 16 + (dimensions == 0 ? 0U : dimensions == 3 ? 16U : 8U);
}

// The caller has looked at the bytes that are left.
MdGePoint3d readVertex(BlobReader& reader, std::uint32_t dimensions) {
    MdGePoint3d vertex;
    double further = 0.0;
    reader.read(vertex.x);
    reader.read(vertex.y);
    if (dimensions == 1 || dimensions == 3) {
        reader.read(vertex.z);
    }
    if (dimensions >= 2) {
        reader.read(further);
    }
    return vertex;
}

} // namespace

BlobRead readBlob(std::span<const std::byte> blob, std::vector<MdGePoint3d>& vertices) {
    vertices.clear();
    BlobReader reader(blob);
    std::uint8_t flags = 0;
    std::int32_t srs = 0;
    std::uint32_t type = 0;
    if (!readHeader(reader, flags, srs) || !readType(reader, type)) {
        return {};
    }
    const std::uint32_t shape = type % 1000;
    const std::uint32_t dimensions = type / 1000; // 0 xy, 1 z, 2 m, 3 z and m
    if (dimensions > 3 || (shape != kPoint && shape != kLine)) {
        return {BlobKind::Other, shape, srs};
    }
    std::uint32_t count = 1;
    if (shape == kLine && !reader.read(count)) {
        return {};
    }
    if (reader.left() / vertexSize(dimensions) < count) {
        return {};
    }
    vertices.reserve(count);
    for (std::uint32_t i = 0; i < count; ++i) {
        vertices.push_back(readVertex(reader, dimensions));
    }
    if (shape == kPoint && std::isnan(vertices[0].x) && std::isnan(vertices[0].y)) {
        vertices.clear();
    }
    if (vertices.empty()) {
        return {BlobKind::Empty, shape, srs};
    }
    return {shape == kPoint ? BlobKind::Point : BlobKind::Line, shape, srs};
}

namespace {

// One point or polygon behind its type. False if the bytes end before it does.
bool readPart(BlobReader& reader, std::uint32_t type, BlobParts& parts) {
    const std::uint32_t dimensions = type / 1000;
    const std::size_t size = vertexSize(dimensions);
    if (type % 1000 == kPoint) {
        if (reader.left() < size) {
            return false;
        }
        const MdGePoint3d point = readVertex(reader, dimensions);
        if (!std::isnan(point.x) || !std::isnan(point.y)) { // an empty point
            parts.points.push_back(point);
        }
        return true;
    }
    std::uint32_t rings = 0;
    if (!reader.read(rings)) {
        return false;
    }
    for (std::uint32_t ring = 0; ring < rings; ++ring) {
        std::uint32_t count = 0;
        if (!reader.read(count) || reader.left() / size < count) {
            return false;
        }
        std::vector<MdGePoint3d> vertices;
        vertices.reserve(count);
        for (std::uint32_t i = 0; i < count; ++i) {
            vertices.push_back(readVertex(reader, dimensions));
        }
        if (vertices.size() > 1 && vertices.front().x == vertices.back().x && vertices.front().y == vertices.back().y) {
            vertices.pop_back();
        }
        if (ring > 0) {
            ++parts.holes;
        } else if (!vertices.empty()) {
            parts.rings.push_back(std::move(vertices));
        }
    }
    return true;
}

} // namespace

BlobParts readParts(std::span<const std::byte> blob) {
    constexpr std::uint32_t kMultiPoint = 4;
    constexpr std::uint32_t kMultiPolygon = 6;
    constexpr unsigned kExtended = 0x20; // of the header's flags: no well-known binary follows
    BlobReader reader(blob);
    std::uint8_t flags = 0;
    std::int32_t srs = 0;
    std::uint32_t type = 0;
    if (!readHeader(reader, flags, srs)) {
        return {};
    }
    BlobParts parts;
    parts.kind = BlobKind::Other;
    parts.srs = srs;
    if ((flags & kExtended) != 0) {
        return parts;
    }
    if (!readType(reader, type)) {
        return {};
    }
    parts.type = type % 1000;
    const bool several = parts.type == kMultiPoint || parts.type == kMultiPolygon;
    if (type / 1000 > 3 || (parts.type != kPoint && parts.type != kPolygon && !several)) {
        return parts;
    }
    std::uint32_t count = 1;
    if (several && !reader.read(count)) {
        return {};
    }
    const std::uint32_t single = parts.type == kMultiPoint     ? kPoint
                                 : parts.type == kMultiPolygon ? kPolygon
                                                               : parts.type;
    for (std::uint32_t i = 0; i < count; ++i) {
        if (several && (!readType(reader, type) || type % 1000 != single || type / 1000 > 3)) {
            return {};
        }
        if (!readPart(reader, type, parts)) {
            return {};
        }
    }
    parts.kind = !parts.points.empty() ? BlobKind::Point : !parts.rings.empty() ? BlobKind::Line : BlobKind::Empty;
    return parts;
}

std::string nameOfGeometry(std::uint32_t type) {
    constexpr const char* kNames[] = {"GEOMETRY",       "POINT",           "LINESTRING",   "POLYGON",
                                      "MULTIPOINT",     "MULTILINESTRING", "MULTIPOLYGON", "GEOMETRYCOLLECTION",
                                      "CIRCULARSTRING", "COMPOUNDCURVE",   "CURVEPOLYGON", "MULTICURVE",
                                      "MULTISURFACE"};
    return type < std::size(kNames) ? kNames[type] : "geometry of type " + std::to_string(type);
}

double ringArea(std::span<const MdGePoint3d> ring) {
    double twice = 0.0;
    for (std::size_t i = 0; i < ring.size(); ++i) {
        const MdGePoint3d& from = ring[i];
        const MdGePoint3d& to = ring[i + 1 < ring.size() ? i + 1 : 0];
        const MdGePoint3d& origin = ring[0];
        twice += (from.x - origin.x) * (to.y - origin.y) - (to.x - origin.x) * (from.y - origin.y);
    }
    return std::fabs(twice) / 2.0;
}

} // namespace fenmark::drawing
