// The drawing in memory: what it keeps, how it comes back to a mark, how small it is.
#include "support/drawing_support.h"

#include <functional>
#include <utility>

#include <malloc.h>

namespace fenmark::drawing {
namespace {

TEST(Drawing, ANewDrawingHasOneLayerWhichIsCurrentAndNoSite) {
    const Drawing drawing;
    ASSERT_EQ(drawing.layers().size(), 1U);
    EXPECT_EQ(drawing.layers()[0].name, "0");
    EXPECT_EQ(drawing.currentLayer(), 0U);
    EXPECT_TRUE(drawing.sites().empty());
    EXPECT_EQ(drawing.entityCount(), 0U);
    EXPECT_TRUE(drawing.extent().empty());
}

TEST(Drawing, EveryObjectHasAnIdentifierOfItsOwn) {
    Drawing drawing;
    for (int i = 0; i < 20; ++i) {
        addSmallImport(drawing, i);
    }
    std::vector<MdDbObjectId> ids;
    for (std::size_t i = 0; i < drawing.entityCount(); ++i) {
        ids.push_back(drawing.entity(i).id);
        EXPECT_EQ(drawing.findEntity(ids.back()), i);
    }
    for (std::size_t i = 0; i < drawing.alignmentCount(); ++i) {
        ids.push_back(drawing.alignment(i).id);
        EXPECT_EQ(drawing.findAlignment(ids.back()), i);
        EXPECT_FALSE(drawing.findEntity(ids.back()));
    }
    std::sort(ids.begin(), ids.end());
    EXPECT_EQ(std::unique(ids.begin(), ids.end()), ids.end());
    EXPECT_FALSE(drawing.findEntity(MdDbObjectId()));
    EXPECT_FALSE(drawing.findEntity(MdDbObjectId(~std::uint64_t{0})));
}

TEST(Drawing, ComesBackToAMark) {
    Drawing drawing;
    addSmallImport(drawing, 1);
    const std::string before = describe(drawing);
    const Extent extent = drawing.extent();
    const Drawing::Mark mark = drawing.mark();
    addSmallImport(drawing, 2);
    drawing.setCurrentLayer(*drawing.findLayer(drawing.addLayer("新")));
    drawing.setZone(7);
    drawing.rollback(mark);
    EXPECT_EQ(describe(drawing), before);
    EXPECT_EQ(drawing.extent().maxX, extent.maxX);
    EXPECT_FALSE(drawing.findLayer("新"));
    // And goes on from there as if nothing had been, but for the identifiers.
    Drawing straight;
    addSmallImport(straight, 1);
    addSmallImport(straight, 3);
    addSmallImport(drawing, 3);
    ASSERT_EQ(drawing.entityCount(), straight.entityCount());
    for (std::size_t i = 0; i < drawing.entityCount(); ++i) {
        EXPECT_EQ(drawing.entity(i).row.has_value(), straight.entity(i).row.has_value());
        if (drawing.entity(i).row) {
            EXPECT_EQ(drawing.entity(i).row->name, straight.entity(i).row->name);
        }
        EXPECT_TRUE(std::equal(drawing.entity(i).vertices.begin(), drawing.entity(i).vertices.end(),
                               straight.entity(i).vertices.begin(), straight.entity(i).vertices.end()));
    }
}

TEST(Drawing, TakesBackWhatARollbackRemoved) {
    for (const int more : {1, 5000}) { // within the blocks that it is kept in, and over several of them
        Drawing drawing;
        addSmallImport(drawing, 1);
        const std::string before = describe(drawing);
        const Drawing::Mark mark = drawing.mark();
        for (int i = 0; i < more; ++i) {
            addSmallImport(drawing, i);
        }
        drawing.setCurrentLayer(*drawing.findLayer(drawing.addLayer("新")));
        drawing.setZone(7);
        const std::string after = describe(drawing);
        const Drawing::Mark full = drawing.mark();
        for (int round = 0; round < 2; ++round) {
            Drawing::Removed removed = drawing.takeBack(mark);
            EXPECT_EQ(describe(drawing), before);
            ASSERT_TRUE(drawing.putBack(std::move(removed)));
            EXPECT_EQ(describe(drawing), after);
            EXPECT_EQ(drawing.mark(), full);
        }
        EXPECT_EQ(drawing.geometry(0).endStation(), drawing.alignment(0).length() + drawing.alignment(0).startStation);
        EXPECT_EQ(drawing.addPoint({}, 0).asUint64(), full.lastId + 1);
        drawing.setRow(drawing.entityCount() - 1, 0, 99, "別の点", "座標", "別.sim");
        EXPECT_EQ(drawing.entity(drawing.entityCount() - 1).row->name, "別の点");
        drawing.takeBack(full);
        EXPECT_EQ(describe(drawing), after) << "what comes later takes no place of what came back";
    }
}

TEST(Drawing, TakesNothingBackIntoAnotherState) {
    Drawing drawing;
    addSmallImport(drawing, 1);
    const Drawing::Mark mark = drawing.mark();
    addSmallImport(drawing, 2);
    Drawing::Removed removed = drawing.takeBack(mark);
    drawing.addPoint({1, 2, 3}, 0);
    const std::string changed = describe(drawing);
    EXPECT_FALSE(drawing.putBack(std::move(removed)));
    EXPECT_EQ(describe(drawing), changed);
    // Not even if the change was undone: its identifiers were given out.
    Drawing other;
    addSmallImport(other, 1);
    Drawing::Removed gone = other.takeBack(other.mark());
    const Drawing::Mark empty = other.mark();
    other.addPoint({1, 2, 3}, 0);
    other.rollback(empty);
    EXPECT_FALSE(other.putBack(std::move(gone)));
}

// Whatever changed meanwhile, also where no identifier was given for it.
TEST(Drawing, TakesNothingBackAfterAnyChange) {
    const auto reach = [](Drawing& drawing, const PlanPoint& end) {
        Element line;
        line.end = end;
        line.length = std::hypot(end.x, end.y);
        line.direction = std::atan2(end.y, end.x);
        drawing.addElement(0, line);
    };
    const std::pair<const char*, std::function<void(Drawing&)>> changes[] = {
        {"a layer", [](Drawing& drawing) { drawing.addLayer("新"); }},
        {"a site", [](Drawing& drawing) { drawing.addSite("新"); }},
        {"a table", [](Drawing& drawing) { drawing.addTable("新"); }},
        {"an import", [](Drawing& drawing) { drawing.addImport({}); }},
        {"an alignment",
         [](Drawing& drawing) { drawing.addAlignment(drawing.sites().front().id, "新", "0", "Standard", "Standard"); }},
        {"a point",
         [](Drawing& drawing) {
             drawing.addPoint({1, 2, 3}, 0);
         }},
        {"a row", [](Drawing& drawing) { drawing.setRow(drawing.entityCount() - 1, 0, 1, "", "", ""); }},
        {"another row", [](Drawing& drawing) { drawing.setRow(0, 0, 1, "新しい名前", "", ""); }},
        {"an element to the east",
         [&](Drawing& drawing) {
             reach(drawing, {1e6, 0});
         }},
        {"an element to the north",
         [&](Drawing& drawing) {
             reach(drawing, {0, 1e6});
         }},
        {"an element to the west",
         [&](Drawing& drawing) {
             reach(drawing, {-1e6, 0});
         }},
        {"an element to the south",
         [&](Drawing& drawing) {
             reach(drawing, {0, -1e6});
         }},
        {"the current layer", [](Drawing& drawing) { drawing.setCurrentLayer(1); }},
        {"the zone", [](Drawing& drawing) { drawing.setZone(9); }},
        {"a point that went again",
         [](Drawing& drawing) {
             const Drawing::Mark mark = drawing.mark();
             drawing.addPoint({}, 0);
             drawing.rollback(mark);
         }},
    };
    for (const auto& [what, change] : changes) {
        Drawing drawing;
        drawing.addLayer("別");
        addSmallImport(drawing, 1);
        const Drawing::Mark mark = drawing.mark();
        addSmallImport(drawing, 2);
        Drawing::Removed removed = drawing.takeBack(mark);
        change(drawing);
        EXPECT_NE(drawing.mark(), mark) << what;
        const std::string changed = describe(drawing);
        EXPECT_FALSE(drawing.putBack(std::move(removed))) << what;
        EXPECT_EQ(describe(drawing), changed) << what;
    }
}

TEST(Drawing, ALightweightPolylineLiesInThePlane) {
    Drawing drawing;
    const std::vector<MdGePoint3d> vertices = {{1, 2, 3}, {4, 5, 6}};
    const MdDbObjectId id = drawing.addPolyline(vertices, 0, EntityKind::Polyline2d, false);
    EXPECT_EQ(drawing.entity(0).vertices[1].z, 6.0);
    drawing.makeLightweight(*drawing.findEntity(id));
    EXPECT_EQ(drawing.entity(0).id, id);
    EXPECT_EQ(drawing.entity(0).kind, EntityKind::Polyline);
    EXPECT_EQ(drawing.entity(0).vertices[1], (MdGePoint3d{4, 5, 0}));
}

TEST(Drawing, APolylineIsClosedAndOpenedAndMovedToAnotherLayer) {
    Drawing drawing;
    drawing.addLayer("境界");
    const std::vector<MdGePoint3d> vertices = {{1, 2, 3}, {4, 5, 6}, {7, 9, 6}};
    drawing.addPolyline(vertices, 0, EntityKind::Polyline2d, false);
    for (const bool closed : {true, false, true}) {
        drawing.setEntityClosed(0, closed);
        EXPECT_EQ(drawing.entity(0).closed, closed);
        drawing.setEntityLayer(0, closed ? 1 : 0);
        EXPECT_EQ(drawing.entity(0).layer, closed ? "境界" : "0");
        EXPECT_EQ(drawing.entity(0).kind, EntityKind::Polyline2d);
    }
}

TEST(Drawing, TheGeometryOfAnAlignmentFollowsItsElements) {
    Drawing drawing;
    addSmallImport(drawing);
    const double before = drawing.geometry(0).endStation();
    drawing.setStartStation(0, drawing.alignment(0).startStation + 1000.0);
    EXPECT_DOUBLE_EQ(drawing.geometry(0).endStation(), before + 1000.0);
    Element further = drawing.alignment(0).elements.front();
    further.length = 25.0;
    drawing.addElement(0, further);
    EXPECT_DOUBLE_EQ(drawing.geometry(0).endStation(), before + 1025.0);
    drawing.removeElement(0, 3);
    EXPECT_DOUBLE_EQ(drawing.geometry(0).endStation(), before + 1000.0);
}

TEST(Drawing, ASecondRowReplacesTheFirst) {
    Drawing drawing;
    drawing.addTable("T");
    EXPECT_TRUE(drawing.addTable("T").isNull());
    drawing.addPoint({}, 0);
    EXPECT_FALSE(drawing.entity(0).row);
    drawing.setRow(0, 0, 1, "a", "b", "c");
    drawing.setRow(0, 0, 2, "", "e", "f");
    EXPECT_EQ(drawing.entity(0).row->no, 2);
    EXPECT_EQ(drawing.entity(0).row->name, "");
    EXPECT_EQ(drawing.entity(0).row->type, "e");
}

TEST(Drawing, LongPolylinesAndLongNamesAreKept) {
    Drawing drawing;
    drawing.addTable("T");
    std::vector<MdGePoint3d> vertices;
    for (int i = 0; i < 100000; ++i) {
        vertices.push_back({1.0 * i, 2.0 * i, 0});
    }
    const std::string name(1 << 20, 'n');
    for (int i = 0; i < 3; ++i) {
        drawing.addPolyline(vertices, 0, EntityKind::Polyline, i == 1);
        drawing.setRow(drawing.entityCount() - 1, 0, i, name + std::to_string(i), "", "");
        drawing.addPoint({5, 6, 7}, 0);
    }
    ASSERT_EQ(drawing.entity(4).vertices.size(), vertices.size());
    EXPECT_EQ(drawing.entity(4).vertices[99999].y, 199998.0);
    EXPECT_EQ(drawing.entity(4).row->name, name + "2");
    EXPECT_EQ(drawing.entity(5).position(), (MdGePoint3d{5, 6, 7}));
    EXPECT_EQ(drawing.entityExtent(4).maxX, 99999.0);
}

TEST(Drawing, APointWithItsRowTakesLessThan120Bytes) {
    constexpr std::size_t kPoints = 200000;
    constexpr std::size_t kMostBytes = 120;
    const auto used = [] {
        const struct mallinfo2 info = mallinfo2();
        return info.uordblks + info.hblkhd;
    };
    const std::size_t before = used();
    Drawing drawing;
    drawing.addTable("JSIMA_V3_Point");
    for (std::size_t i = 0; i < kPoints; ++i) {
        drawing.addPoint({1.0, 2.0, 3.0}, 0);
        drawing.setRow(i, 0, static_cast<std::int32_t>(i), "K" + std::to_string(1000000 + i), "座標", "測量.sim");
    }
    const std::size_t after = used();
    if (after == before) {
        GTEST_SKIP() << "this allocator does not tell what is in use";
    }
    EXPECT_LT((after - before) / kPoints, kMostBytes);
}

} // namespace
} // namespace fenmark::drawing
