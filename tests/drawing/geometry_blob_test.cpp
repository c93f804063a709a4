// Geometry as other programs write it: either order of bytes, heights and measures, boxes, and whatever is cut off.
#include "drawing/geopackage/geometry_blob.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <limits>
#include <span>
#include <vector>

namespace fenmark::drawing {
namespace {

constexpr std::uint32_t kPoint = 1;
constexpr std::uint32_t kLine = 2;
constexpr std::uint32_t kPolygon = 3;
constexpr std::uint32_t kMultiPoint = 4;
constexpr std::uint32_t kMultiPolygon = 6;
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

class Blob {
  public:
    // `box` is the kind of envelope, 0 to 4.
    explicit Blob(bool bigEndian, unsigned box = 0, unsigned flags = 0) : big_(bigEndian) {
        constexpr std::size_t kBoxSizes[] = {0, 32, 48, 48, 64};
        bytes = {std::byte{'G'}, std::byte{'P'}, std::byte{0}, static_cast<std::byte>((box << 1U) | flags | 1U)};
        bytes.resize(8 + kBoxSizes[std::min(box, 4U)]);
    }
    Blob& type(std::uint32_t value) {
        bytes.push_back(static_cast<std::byte>(big_ ? 0 : 1));
        return whole(value);
    }
    Blob& whole(std::uint32_t value) { return number(value); }
    Blob& reals(std::initializer_list<double> values) {
        for (const double value : values) {
            number(value);
        }
        return *this;
    }

    Bytes bytes;

  private:
    template <typename T>
    Blob& number(T value) {
        std::byte raw[sizeof value];
        std::memcpy(raw, &value, sizeof value);
        if (big_) {
            std::reverse(std::begin(raw), std::end(raw));
        }
        bytes.insert(bytes.end(), std::begin(raw), std::end(raw));
        return *this;
    }

    bool big_;
};

TEST(GeometryBlob, PointsOfEveryOrderDimensionAndBox) {
    for (const bool big : {false, true}) {
        for (unsigned box = 0; box <= 4; ++box) {
            std::vector<MdGePoint3d> vertices;
            ASSERT_EQ(readBlob(Blob(big, box).type(kPoint).reals({1.5, -2.5}).bytes, vertices).kind, BlobKind::Point);
            EXPECT_EQ(vertices[0], (MdGePoint3d{1.5, -2.5, 0.0}));
            readBlob(Blob(big, box).type(1000 + kPoint).reals({1.5, -2.5, 7.0}).bytes, vertices);
            EXPECT_EQ(vertices[0], (MdGePoint3d{1.5, -2.5, 7.0}));
            readBlob(Blob(big, box).type(2000 + kPoint).reals({1.5, -2.5, 99.0}).bytes, vertices);
            EXPECT_EQ(vertices[0], (MdGePoint3d{1.5, -2.5, 0.0})) << "a measure is no height";
            readBlob(Blob(big, box).type(3000 + kPoint).reals({1.5, -2.5, 7.0, 99.0}).bytes, vertices);
            EXPECT_EQ(vertices[0], (MdGePoint3d{1.5, -2.5, 7.0}));
        }
    }
}

TEST(GeometryBlob, LinesOfEitherOrder) {
    for (const bool big : {false, true}) {
        std::vector<MdGePoint3d> vertices;
        const Blob line = Blob(big).type(3000 + kLine).whole(2).reals({0, 1, 2, 3, 4, 5, 6, 7});
        ASSERT_EQ(readBlob(line.bytes, vertices).kind, BlobKind::Line);
        EXPECT_EQ(vertices, (std::vector<MdGePoint3d>{{0, 1, 2}, {4, 5, 6}}));
        ASSERT_EQ(readBlob(Blob(big).type(2000 + kLine).whole(2).reals({0, 1, 2, 3, 4, 5}).bytes, vertices).kind,
                  BlobKind::Line);
        EXPECT_EQ(vertices, (std::vector<MdGePoint3d>{{0, 1, 0}, {3, 4, 0}})) << "a measure stands between them";
    }
}

TEST(GeometryBlob, WithoutAPlaceOrOfAnotherType) {
    std::vector<MdGePoint3d> vertices;
    EXPECT_EQ(readBlob(Blob(false).type(kPoint).reals({kNan, kNan}).bytes, vertices).kind, BlobKind::Empty);
    EXPECT_EQ(readBlob(Blob(false).type(kLine).whole(0).bytes, vertices).kind, BlobKind::Empty);
    EXPECT_TRUE(vertices.empty());
    const BlobRead polygon = readBlob(Blob(false).type(1000 + kPolygon).whole(0).bytes, vertices);
    EXPECT_EQ(polygon.kind, BlobKind::Other);
    EXPECT_EQ(nameOfGeometry(polygon.type), "POLYGON");
    EXPECT_EQ(readBlob(Blob(false).type(4000 + kPoint).reals({1, 2}).bytes, vertices).kind, BlobKind::Other);
    for (const std::uint32_t beyond : {4000 + kPoint, 4999U, 5000 + kPoint, 1000000 + kPoint}) {
        EXPECT_EQ(readParts(Blob(false).type(beyond).reals({1, 2, 3, 4}).bytes).kind, BlobKind::Other) << beyond;
    }
    for (const std::uint32_t known : {kPoint, 1000 + kPoint, 2000 + kPoint, 3000 + kPoint}) {
        EXPECT_EQ(readParts(Blob(false).type(known).reals({1, 2, 3, 4}).bytes).kind, BlobKind::Point) << known;
    }
    EXPECT_EQ(readBlob(Blob(false, 5).type(kPoint).reals({1, 2}).bytes, vertices).kind, BlobKind::Malformed)
        << "no envelope has the kind 5";
    Bytes stranger = Blob(false).type(kPoint).reals({1, 2}).bytes;
    stranger[1] = std::byte{'X'};
    EXPECT_EQ(readBlob(stranger, vertices).kind, BlobKind::Malformed);
    EXPECT_EQ(readParts(stranger).kind, BlobKind::Malformed);
}

TEST(GeometryBlob, CutOffAnywhereIsMalformed) {
    const Bytes point = Blob(true, 1).type(1000 + kPoint).reals({1, 2, 3}).bytes;
    const Bytes line = Blob(false, 1).type(kLine).whole(2).reals({0, 0, 1, 1}).bytes;
    std::vector<MdGePoint3d> vertices;
    for (const Bytes& whole : {point, line}) {
        for (std::size_t size = 0; size < whole.size(); ++size) {
            EXPECT_EQ(readBlob(std::span(whole).first(size), vertices).kind, BlobKind::Malformed) << size;
        }
    }
    // With a height, a measure, or both a vertex has more bytes.
    for (const std::uint32_t dimensions : {1000U, 2000U, 3000U}) {
        const auto reals = {1.0, 2.0, 3.0, 4.0};
        Blob single = Blob(true).type(dimensions + kPoint);
        Blob row = Blob(true).type(dimensions + kLine).whole(1);
        for (const double value : std::span(reals).first(dimensions == 3000 ? 4 : 3)) {
            single.reals({value});
            row.reals({value});
        }
        for (const Bytes& whole : {single.bytes, row.bytes}) {
            ASSERT_NE(readBlob(whole, vertices).kind, BlobKind::Malformed);
            EXPECT_EQ(readBlob(std::span(whole).first(whole.size() - 1), vertices).kind, BlobKind::Malformed);
        }
    }
    const Bytes areas =
        Blob(true).type(kMultiPolygon).whole(1).type(kPolygon).whole(1).whole(4).reals({0, 0, 4, 0, 4, 3, 0, 0}).bytes;
    const Bytes points =
        Blob(false).type(kMultiPoint).whole(2).type(kPoint).reals({1, 2}).type(kPoint).reals({3, 4}).bytes;
    for (const Bytes& whole : {areas, points, point}) {
        ASSERT_NE(readParts(whole).kind, BlobKind::Malformed);
        for (std::size_t size = 0; size < whole.size(); ++size) {
            EXPECT_EQ(readParts(std::span(whole).first(size)).kind, BlobKind::Malformed) << size;
        }
    }
    const Bytes lying = Blob(false).type(kLine).whole(0xffffffffU).reals({0, 0}).bytes;
    EXPECT_EQ(readBlob(lying, vertices).kind, BlobKind::Malformed) << "a count beyond the bytes takes no memory";
}

TEST(GeometryBlob, PartsOfSeveral) {
    for (const bool big : {false, true}) {
        const BlobParts points = readParts(Blob(big)
                                               .type(1000 + kMultiPoint)
                                               .whole(3)
                                               .type(1000 + kPoint)
                                               .reals({1, 2, 3})
                                               .type(kPoint)
                                               .reals({kNan, kNan})
                                               .type(2000 + kPoint)
                                               .reals({4, 5, 6})
                                               .bytes);
        EXPECT_EQ(points.kind, BlobKind::Point);
        EXPECT_EQ(points.points, (std::vector<MdGePoint3d>{{1, 2, 3}, {4, 5, 0}}));
        const BlobParts areas = readParts(Blob(big)
                                              .type(kMultiPolygon)
                                              .whole(2)
                                              .type(kPolygon)
                                              .whole(2)
                                              .whole(4)
                                              .reals({0, 0, 9, 0, 9, 9, 0, 0})
                                              .whole(4)
                                              .reals({5, 1, 6, 1, 6, 2, 5, 1})
                                              .type(kPolygon)
                                              .whole(1)
                                              .whole(3)
                                              .reals({20, 0, 29, 0, 29, 9})
                                              .bytes);
        EXPECT_EQ(areas.kind, BlobKind::Line);
        ASSERT_EQ(areas.rings.size(), 2U);
        EXPECT_EQ(areas.rings[0].size(), 3U) << "the first vertex is not there again";
        EXPECT_EQ(areas.rings[1].size(), 3U);
        EXPECT_EQ(areas.holes, 1U);
    }
    for (const std::uint32_t vertices :
         {1U, 2U, 3U}) { // that are all one place, as the last one may stand for the first
        Blob ring = Blob(false).type(kPolygon).whole(1).whole(vertices);
        for (std::uint32_t i = 0; i < vertices; ++i) {
            ring.reals({7, 8});
        }
        const BlobParts flat = readParts(ring.bytes);
        ASSERT_EQ(flat.rings.size(), 1U) << vertices;
        EXPECT_EQ(flat.rings[0].size(), std::max(vertices - 1, 1U));
    }
    EXPECT_EQ(readParts(Blob(false).type(kMultiPolygon).whole(0).bytes).kind, BlobKind::Empty);
    EXPECT_EQ(readParts(Blob(false).type(kPolygon).whole(1).whole(0).bytes).kind, BlobKind::Empty);
    EXPECT_EQ(readParts(Blob(false).type(kLine).whole(0).bytes).kind, BlobKind::Other);
    EXPECT_EQ(readParts(Blob(false).type(kMultiPoint).whole(1).type(kLine).whole(0).bytes).kind, BlobKind::Malformed)
        << "a line among points";
    EXPECT_EQ(readParts(Blob(false, 0, 0x20).bytes).kind, BlobKind::Other) << "an extension of the format";
}

// Header, box and well-known binary, to the byte.
TEST(GeometryBlob, EveryByteIsAsTheFormatWantsIt) {
    const auto head = [](unsigned flags) {
        Bytes bytes = {std::byte{'G'}, std::byte{'P'}, std::byte{0}, static_cast<std::byte>(flags)};
        const std::uint32_t srs = 6677;
        bytes.resize(8);
        std::memcpy(bytes.data() + 4, &srs, sizeof srs);
        return bytes;
    };
    const auto expected = [&](unsigned flags, std::initializer_list<double> box, const Blob& geometry) {
        Bytes bytes = head(flags);
        for (const double value : box) {
            const auto* const raw = reinterpret_cast<const std::byte*>(&value);
            bytes.insert(bytes.end(), raw, raw + sizeof value);
        }
        bytes.insert(bytes.end(), geometry.bytes.begin() + 8, geometry.bytes.end());
        return bytes;
    };
    BlobWriter writer(6677);
    const auto copy = [](std::span<const std::byte> bytes) { return Bytes(bytes.begin(), bytes.end()); };
    const std::vector<MdGePoint3d> ring = {{5, -7, 1}, {9, -7, 2}, {9, 3, 3}};
    const std::vector<PlanPoint> plan = {{5, -7}, {9, 3}};
    // A buffer that held more before holds no more than the next blob.
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(copy(writer.polygon(ring)),
                  expected(3, {5, 9, -7, 3},
                           Blob(false).type(kPolygon).whole(1).whole(4).reals({5, -7, 9, -7, 9, 3, 5, -7})));
        EXPECT_EQ(copy(writer.point({1.5, -2.5, 7})),
                  expected(1, {}, Blob(false).type(1000 + kPoint).reals({1.5, -2.5, 7})));
        EXPECT_EQ(copy(writer.line(ring, false)),
                  expected(3, {5, 9, -7, 3}, Blob(false).type(kLine).whole(3).reals({5, -7, 9, -7, 9, 3})));
        EXPECT_EQ(copy(writer.line(ring, true)),
                  expected(3, {5, 9, -7, 3}, Blob(false).type(kLine).whole(4).reals({5, -7, 9, -7, 9, 3, 5, -7})));
        EXPECT_EQ(copy(writer.line(std::span(ring).first(1), false)),
                  expected(3, {5, 5, -7, -7}, Blob(false).type(kLine).whole(2).reals({5, -7, 5, -7})));
        EXPECT_EQ(copy(writer.line(plan)),
                  expected(3, {5, 9, -7, 3}, Blob(false).type(kLine).whole(2).reals({5, -7, 9, 3})));
        EXPECT_EQ(copy(writer.line(std::span(plan).first(1))),
                  expected(3, {5, 5, -7, -7}, Blob(false).type(kLine).whole(2).reals({5, -7, 5, -7})));
        const double infinite = std::numeric_limits<double>::infinity();
        const std::vector<PlanPoint> nowhere = {{infinite, infinite}, {infinite, -infinite}};
        EXPECT_EQ(copy(writer.line(nowhere)),
                  expected(1, {}, Blob(false).type(kLine).whole(2).reals({infinite, infinite, infinite, -infinite})));
        EXPECT_TRUE(writer.line(std::span<const PlanPoint>()).empty());
    }
}

TEST(GeometryBlob, WhatIsWrittenIsRead) {
    BlobWriter writer(6677);
    std::vector<MdGePoint3d> vertices;
    const auto copy = [](std::span<const std::byte> bytes) { return Bytes(bytes.begin(), bytes.end()); };
    ASSERT_EQ(readBlob(copy(writer.point({1, 2, 3})), vertices).kind, BlobKind::Point);
    EXPECT_EQ(vertices[0], (MdGePoint3d{1, 2, 3}));
    const std::vector<MdGePoint3d> ring = {{0, 0, 1}, {4, 0, 1}, {4, 3, 1}};
    ASSERT_EQ(readBlob(copy(writer.line(ring, true)), vertices).kind, BlobKind::Line);
    EXPECT_EQ(vertices.size(), 4U) << "closed by its first vertex";
    EXPECT_TRUE(writer.line(std::span<const MdGePoint3d>(), false).empty());
    const BlobParts area = readParts(copy(writer.polygon(ring)));
    ASSERT_EQ(area.rings.size(), 1U);
    EXPECT_EQ(area.rings[0].size(), 3U);
    EXPECT_EQ(ringArea(area.rings[0]), 6.0);
}

TEST(GeometryBlob, AreasAreThoseOfTheSurveyorsFormula) {
    EXPECT_EQ(ringArea({}), 0.0);
    std::vector<MdGePoint3d> ring = {{100, 50, 1}, {104, 51, 2}, {105, 57, 3}, {101, 55, 4}, {98, 53, 5}};
    for (std::size_t turn = 0; turn < ring.size(); ++turn) {
        EXPECT_EQ(ringArea(ring), 27.0);
        std::rotate(ring.begin(), ring.begin() + 1, ring.end());
    }
    std::reverse(ring.begin(), ring.end());
    EXPECT_EQ(ringArea(ring), 27.0);
    EXPECT_EQ(ringArea(std::span(ring).first(2)), 0.0);
}

} // namespace
} // namespace fenmark::drawing
