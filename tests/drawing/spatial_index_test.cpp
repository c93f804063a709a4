// The spatial index: right in the eyes of SQLite and of a walk through all features, whatever was written in which order.
#include "drawing/geopackage/packed_tree.h"
#include "drawing/index_check.h"
#include "support/drawing_support.h"

#include <limits>
#include <random>
#include <set>

namespace fenmark::drawing {
namespace {

constexpr unsigned kSeed = 20111103;
constexpr double kSize = 20000.0; // metres, of the country in which the points lie

// Points and lots in no order.
void addScattered(Drawing& drawing, int count, unsigned seed = kSeed) {
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> place(-kSize, kSize);
    for (int i = 0; i < count; ++i) {
        const double x = place(random);
        const double y = place(random);
        drawing.addPoint({x, y, 0.0}, 0);
        if (i % 4 == 0) {
            const std::vector<MdGePoint3d> lot = {{x, y, 0}, {x + 21.7, y + 1, 0}, {x + 20, y + 33.3, 0}};
            drawing.addPolyline(lot, 0, EntityKind::Polyline, i % 8 == 0);
        }
    }
}

class SpatialIndexTest : public ::testing::Test {
  protected:
    TemporaryFolder folder_;
    std::string path_ = folder_.at("図面.gpkg");
    Drawing drawing_;
    DrawingStore store_;

    void save() {
        const Outcome result = store_.save(path_, drawing_);
        ASSERT_TRUE(result) << result.message.english;
        expectTrue();
    }
    void expectTrue() const {
        for (const char* layer : kIndexedLayers) {
            EXPECT_EQ(indexFault(path_, layer), "") << layer;
        }
        EXPECT_EQ(OtherProgram(path_).one("PRAGMA integrity_check"), "ok");
    }
    // Leaves and what stands above them, for a layer.
    int nodes(const std::string& layer) const {
        return std::stoi(OtherProgram(path_).one("SELECT count(*) FROM rtree_" + layer + "_geom_node"));
    }
};

TEST_F(SpatialIndexTest, ANewDrawingHasAnEmptyOneForEachLayer) {
    save();
    EXPECT_EQ(OtherProgram(path_)
                  .ask("SELECT table_name, column_name, scope FROM gpkg_extensions"
                       " WHERE extension_name = 'gpkg_rtree_index'")
                  .size(),
              std::size(kIndexedLayers));
    EXPECT_EQ(
        OtherProgram(path_).one("SELECT count(*) FROM sqlite_master WHERE type = 'trigger' AND name LIKE 'rtree%'"),
        "24");
}

TEST_F(SpatialIndexTest, EveryKindOfObjectIsInItAndThoseWithoutAPlaceAreNot) {
    addSmallImport(drawing_);
    save();
    EXPECT_EQ(OtherProgram(path_).one("SELECT count(*) FROM polylines"), "5");
    EXPECT_EQ(OtherProgram(path_).one("SELECT count(*) FROM rtree_polylines_geom"), "4");
}

TEST_F(SpatialIndexTest, AWindowFindsWhatAWalkThroughAllFinds) {
    addScattered(drawing_, 12000);
    save();
    const OtherProgram other(path_);
    std::mt19937 random(kSeed + 1);
    std::uniform_real_distribution<double> place(-kSize, kSize);
    for (int round = 0; round < 50; ++round) {
        const double x = place(random);
        const double y = place(random);
        const double size = round % 2 == 0 ? 50.0 : 3000.0;
        std::set<std::uint64_t> expected;
        for (std::size_t i = 0; i < drawing_.entityCount(); ++i) {
            const Extent extent = drawing_.entityExtent(i);
            if (drawing_.isPoint(i) && extent.minX >= x && extent.minX <= x + size && extent.minY >= y &&
                extent.minY <= y + size) {
                expected.insert(drawing_.entity(i).id.asUint64());
            }
        }
        // A tree of single precision may find a neighbour too, and never loses one.
        char sql[256];
        std::snprintf(sql, sizeof sql,
                      "SELECT id FROM rtree_points_geom WHERE maxx >= %.17g AND minx <= %.17g AND maxy >= %.17g AND"
                      " miny <= %.17g",
                      x, x + size, y, y + size);
        std::set<std::uint64_t> found;
        for (const std::string& row : other.ask(sql)) {
            found.insert(std::stoull(row));
        }
        EXPECT_TRUE(std::includes(found.begin(), found.end(), expected.begin(), expected.end())) << "seed " << kSeed;
        EXPECT_LE(found.size(), expected.size() + 2);
    }
}

TEST_F(SpatialIndexTest, ItIsPacked) {
    addScattered(drawing_, 12000);
    save();
    EXPECT_EQ(nodes("points"), 236 + 5 + 1); // 51 boxes in each node but the last of a level
}

TEST_F(SpatialIndexTest, AFewRowsMoreGoInOneByOne) {
    addScattered(drawing_, 12000);
    save();
    addScattered(drawing_, 40, kSeed + 2);
    save();
    EXPECT_GT(nodes("points"), 236 + 5 + 1) << "full nodes that got another box were split";
}

TEST_F(SpatialIndexTest, WhatIsTooFarForSinglePrecisionHasABoxWithoutEnd) {
    addScattered(drawing_, 1000);
    drawing_.addPoint({1e300, -1e300, 0.0}, 0);
    ASSERT_TRUE(store_.save(path_, drawing_)) << "packed";
    drawing_.addPoint({-1e300, 1e300, 0.0}, 0);
    const Outcome result = store_.save(path_, drawing_);
    ASSERT_TRUE(result) << result.message.english; // one by one
    const OtherProgram other(path_);
    EXPECT_EQ(other.one("SELECT rtreecheck('rtree_points_geom')"), "ok");
    EXPECT_EQ(other.one("SELECT count(*) FROM rtree_points_geom WHERE minx <= 2e300 AND maxx >= 1e299"
                        " AND miny <= -1e299 AND maxy >= -2e300"),
              "1");
    EXPECT_EQ(other.one("SELECT count(*) FROM rtree_points_geom WHERE minx <= -1e299 AND maxx >= -2e300"
                        " AND miny <= 2e300 AND maxy >= 1e299"),
              "1");
}

TEST_F(SpatialIndexTest, ManyRowsMorePackItAnew) {
    addScattered(drawing_, 3000);
    save();
    addScattered(drawing_, 9000, kSeed + 2);
    save();
    EXPECT_EQ(nodes("points"), 236 + 5 + 1);
}

// Large layers are sorted by a thread of their own.
TEST_F(SpatialIndexTest, ALargeLayerIsRightFromTheFirstSaveOn) {
    addScattered(drawing_, 21'000);
    save();
    EXPECT_EQ(nodes("points"), 412 + 9 + 1);
    addScattered(drawing_, 21'000, kSeed + 1);
    save();
    EXPECT_EQ(nodes("points"), 824 + 17 + 1) << "packed anew";
}

TEST_F(SpatialIndexTest, SmallerPagesHaveSmallerNodes) {
    addScattered(drawing_, 400);
    save();
    EXPECT_TRUE(OtherProgram(path_).ask("PRAGMA page_size = 1024; VACUUM").empty());
    Drawing drawing;
    DrawingStore store;
    ASSERT_TRUE(store.open(path_, drawing));
    addScattered(drawing, 21'000, kSeed + 1);
    const Outcome result = store.save(path_, drawing);
    ASSERT_TRUE(result) << result.message.english;
    expectTrue();
    EXPECT_EQ(nodes("points"), 549 + 15 + 1) << "39 boxes in each node";
}

TEST_F(SpatialIndexTest, ADrawingWhosePointsWereNotReadIsAppendedTo) {
    addScattered(drawing_, 2000);
    save();
    for (const int count : {3, 4000}) {
        Drawing lean;
        DrawingStore store;
        ASSERT_TRUE(store.open(path_, lean, Load::WithoutEntities));
        addScattered(lean, count, kSeed + 3);
        const Outcome result = store.save(path_, lean);
        ASSERT_TRUE(result) << result.message.english;
        expectTrue();
    }
}

TEST_F(SpatialIndexTest, WhatWasUndoneLeavesIt) {
    addScattered(drawing_, 5000);
    save();
    for (const int count : {5, 4000}) {
        const Drawing::Mark mark = drawing_.mark();
        addScattered(drawing_, count, kSeed + 4);
        addSmallImport(drawing_, 2);
        save();
        drawing_.rollback(mark);
        save();
    }
    EXPECT_EQ(OtherProgram(path_).one("SELECT count(*) FROM rtree_points_geom"), "5000");
}

TEST_F(SpatialIndexTest, ChangedObjectsAndAZoneKeepItTrue) {
    addScattered(drawing_, 100);
    addSmallImport(drawing_);
    save();
    drawing_.setZone(9);
    save();
    drawing_.setEntityClosed(drawing_.entityCount() - 4, true);
    drawing_.setEntityLayer(3, 0);
    drawing_.setDescription(0, "changed");
    save();
}

TEST_F(SpatialIndexTest, TheTriggersStandAfterASaveAsBeforeIt) {
    addSmallImport(drawing_);
    save();
    const std::string all = "SELECT name, sql FROM sqlite_master WHERE type = 'trigger' ORDER BY name";
    OtherProgram(path_).ask("DROP TRIGGER rtree_lots_geom_update3; CREATE TABLE seen (fid);"
                            "CREATE TRIGGER \"rtree_lots_geom_other one\" AFTER UPDATE ON lots BEGIN SELECT 7; END;"
                            "CREATE TRIGGER count_points AFTER INSERT ON points BEGIN"
                            " INSERT INTO seen VALUES (NEW.fid); END");
    const std::vector<std::string> before = OtherProgram(path_).ask(all);
    addSmallImport(drawing_, 1);
    save();
    EXPECT_EQ(OtherProgram(path_).ask(all), before) << "also those that another program made";
    EXPECT_EQ(OtherProgram(path_).one("SELECT count(*) FROM seen"), "0") << "what a file brings is never run";
}

TEST_F(SpatialIndexTest, ALayerWithoutOneStaysWithout) {
    addSmallImport(drawing_);
    save();
    {
        // As a GIS drops it. A drawing of an earlier version has no table of extensions either.
        const OtherProgram gis(path_);
        for (const char* name : {"insert", "update1", "update2", "update3", "update4", "delete"}) {
            gis.ask(std::string("DROP TRIGGER rtree_points_geom_") + name);
        }
        gis.ask("DROP TABLE rtree_points_geom");
        gis.ask("DROP TABLE gpkg_extensions");
    }
    addSmallImport(drawing_, 1);
    ASSERT_TRUE(store_.save(path_, drawing_));
    EXPECT_EQ(OtherProgram(path_).one("SELECT count(*) FROM sqlite_master WHERE name LIKE 'rtree_points%'"), "0");
    EXPECT_EQ(OtherProgram(path_).one("SELECT count(*) FROM points"), "10");
    for (const char* layer : {"polylines", "lots", "alignments"}) {
        EXPECT_EQ(indexFault(path_, layer), "") << layer;
    }
}

TEST_F(SpatialIndexTest, AnotherProgramChangesAPackedTree) {
    addScattered(drawing_, 12000);
    save();
    const OtherProgram other(path_);
    EXPECT_TRUE(other
                    .ask("WITH RECURSIVE n(i) AS (SELECT 100001 UNION ALL SELECT i + 1 FROM n WHERE i < 103000)"
                         " INSERT INTO rtree_points_geom SELECT i, i % 77, i % 77 + 1, i % 91, i % 91 + 1 FROM n")
                    .empty());
    EXPECT_TRUE(other.ask("DELETE FROM rtree_points_geom WHERE id % 3 = 0").empty());
    EXPECT_TRUE(other.ask("UPDATE rtree_points_geom SET minx = minx - 1, maxx = maxx + 1 WHERE id % 5 = 0").empty());
    EXPECT_EQ(other.one("SELECT rtreecheck('rtree_points_geom')"), "ok");
    EXPECT_TRUE(other.ask("DELETE FROM rtree_points_geom").empty());
    EXPECT_EQ(other.one("SELECT rtreecheck('rtree_points_geom')"), "ok");
}

// --- the tree alone ---

struct Packed {
    std::size_t nodes = 0;
    std::size_t parents = 0;
    std::vector<NodeNumber> leaves;
    std::vector<std::byte> root;
};

Packed packed(std::size_t count, std::size_t nodeSize = kNodeHead + 4 * kCellSize) {
    std::vector<TreeEntry> entries;
    for (std::size_t i = 0; i < count; ++i) {
        const auto at = static_cast<float>(i * 37 % 101);
        entries.push_back({static_cast<std::int64_t>(i + 1), {at, at, -at, -at}});
    }
    Packed result;
    TreeSink sink;
    sink.node = [&](NodeNumber, std::span<const std::byte> bytes) {
        ++result.nodes;
        EXPECT_EQ(bytes.size(), nodeSize);
        result.root.assign(bytes.begin(), bytes.end());
    };
    sink.parent = [&](NodeNumber node, NodeNumber parent) {
        ++result.parents;
        EXPECT_NE(node, parent);
    };
    result.leaves = packTree(entries, leafOrder(entries, cellsOf(nodeSize)), nodeSize, sink);
    return result;
}

TEST(PackedTree, GrowsALevelWhereANodeIsFull) {
    EXPECT_EQ(packed(0).nodes, 1U);
    EXPECT_EQ(packed(1).nodes, 1U);
    EXPECT_EQ(packed(4).nodes, 1U);
    EXPECT_EQ(packed(4).leaves, std::vector<NodeNumber>(4, kRootNode));
    EXPECT_EQ(packed(5).nodes, 3U); // two leaves and the root
    EXPECT_EQ(packed(16).nodes, 5U);
    EXPECT_EQ(packed(17).nodes, 8U); // 5 leaves, 2 above them, the root
    EXPECT_EQ(packed(17).parents, 7U);
    EXPECT_EQ(packed(17).root[1], std::byte{2}); // depth
    EXPECT_EQ(packed(17).root[3], std::byte{2}); // cells
}

TEST(PackedTree, RoundsBoxesOutwards) {
    const auto boxOf = [](double x, double y) {
        Extent extent;
        extent.add(x, y);
        return roundedOut(extent);
    };
    const TreeBox box = boxOf(60295.494, -36012.345);
    EXPECT_LT(double{box.minX}, 60295.494);
    EXPECT_GT(double{box.maxX}, 60295.494);
    EXPECT_LT(double{box.minY}, -36012.345);
    EXPECT_GT(double{box.maxY}, -36012.345);
    EXPECT_EQ(std::nextafter(box.minX, box.maxX), box.maxX) << "neighbours";
    const TreeBox exact = boxOf(0.5, -3.0);
    EXPECT_EQ(exact.minX, 0.5F);
    EXPECT_EQ(exact.maxX, 0.5F);
    const TreeBox far = boxOf(1e300, -1e300);
    EXPECT_EQ(far.minX, std::numeric_limits<float>::max());
    EXPECT_EQ(far.maxY, -std::numeric_limits<float>::max());
    EXPECT_TRUE(std::isinf(far.maxX) && std::isinf(far.minY));
}

} // namespace
} // namespace fenmark::drawing
