// The drawing database: what is opened, how, in which order it is closed, and what stays on the host's heap.
#include "scripted_host.h"

#include "host/adapter/mirdane_drawing_writer.h"

#include <gtest/gtest.h>

namespace fenmark {
namespace {

using host::MdDbObjectId;
using host::MdGePoint3d;
using host::MirdaneDrawingWriter;

class DrawingWriterAdapter : public testing::Test {
  protected:
    void TearDown() override {
        EXPECT_TRUE(host.open.empty());
        EXPECT_TRUE(host.faults.empty()) << host.faults.front();
        EXPECT_EQ(host.strayBlocks(), 0U);
    }
    std::string callsOf(auto&& operation) {
        host.calls.clear();
        operation();
        return host.callText();
    }

    scripted::Host host;
    MirdaneDrawingWriter writer;
};

TEST_F(DrawingWriterAdapter, PointGetsItsLayerBeforeItIsAppendedToTheModelSpace) {
    MdDbObjectId id;
    const std::string calls = callsOf([&] { id = writer.appendPoint({1.0, 2.0, 3.0}, "測点"); });
    EXPECT_EQ(calls, "setLayer 測点 true false, ask for block table for read, open block table for read, "
                     "getIdAt *Model_Space, ask for block record for write, open block record for write, "
                     "close block table, append point, close block record, close point");
    ASSERT_TRUE(id.isValid());
    ASSERT_EQ(host.drawing().size(), 1U);
    EXPECT_EQ(host.drawing()[0].kind, "point");
    EXPECT_EQ(host.drawing()[0].layer, "測点");
    EXPECT_EQ(host.drawing()[0].vertices[0], (MdGePoint3d{1.0, 2.0, 3.0}));
}

TEST_F(DrawingWriterAdapter, PointsThatDifferInZAloneAreMadeInTheSameWay) {
    const std::string flat = callsOf([&] { writer.appendPointXyz(1.0, 2.0, 0.0, "0"); });
    const std::string high = callsOf([&] { writer.appendPointXyz(1.0, 2.0, 12.5, "0"); });
    EXPECT_EQ(flat, high);
    EXPECT_EQ(host.drawing()[0].vertices[0].z, 0.0);
    EXPECT_EQ(host.drawing()[1].vertices[0].z, 12.5);
    EXPECT_EQ(host.drawing()[0].layer, host.drawing()[1].layer);
}

TEST_F(DrawingWriterAdapter, TwoPointsAtOnePlaceAreTwoEntities) {
    const MdDbObjectId first = writer.appendPoint({1.0, 2.0, 3.0}, "0");
    const MdDbObjectId second = writer.appendPoint({1.0, 2.0, 3.0}, "0");
    EXPECT_NE(first, second);
    EXPECT_EQ(host.drawing().size(), 2U);
}

TEST_F(DrawingWriterAdapter, PolylineIsSimpleOpenAndFlatInElevationWithItsVerticesUnchanged) {
    std::vector<MdGePoint3d> vertices{{0.0, 0.0, 1.0}, {10.0, 0.0, 2.0}};
    const MdDbObjectId id = writer.appendPolyline(vertices);
    EXPECT_TRUE(vertices.empty());
    const auto* const polyline = dynamic_cast<const mirdane::MdDb2dPolyline*>(host.entities.at(id.asUint64()));
    ASSERT_NE(polyline, nullptr);
    EXPECT_EQ(polyline->type(), mirdane::Poly2dType::Simple);
    EXPECT_EQ(polyline->vertices(), (std::vector<MdGePoint3d>{{0.0, 0.0, 1.0}, {10.0, 0.0, 2.0}}));
    EXPECT_EQ(polyline->elevation(), 0.0);
    EXPECT_FALSE(polyline->closed());
    EXPECT_EQ(polyline->startWidth(), 0.0);
    EXPECT_EQ(polyline->endWidth(), 0.0);
    EXPECT_FALSE(polyline->hasBulges());
    EXPECT_FALSE(polyline->hasVertexIds());
}

TEST_F(DrawingWriterAdapter, ConversionKeepsTheIdentifierAndTheVertices) {
    std::vector<MdGePoint3d> vertices{{0.0, 0.0, 0.0}, {10.0, 0.0, 0.0}};
    const MdDbObjectId id = writer.appendPolyline(vertices);
    const std::string calls = callsOf([&] { writer.convertToLightweight(id); });
    EXPECT_EQ(calls, "ask for entity, open 2d polyline for write, convert true, close polyline");
    ASSERT_EQ(host.entities.size(), 1U);
    EXPECT_EQ(host.entities.begin()->first, id.asUint64());
    EXPECT_EQ(host.drawing()[0].kind, "polyline");
    EXPECT_EQ(host.drawing()[0].vertices.size(), 2U);
}

TEST_F(DrawingWriterAdapter, LotPolylineTakesLayerAndClosedFlagOnlyAsALightweightPolyline) {
    std::vector<MdGePoint3d> vertices{{0.0, 0.0, 0.0}, {10.0, 0.0, 0.0}, {10.0, 10.0, 0.0}};
    const MdDbObjectId id = writer.appendPolyline(vertices);
    EXPECT_FALSE(writer.setLotPolyline(id, "画地", true)) << "still a 2D polyline";
    writer.convertToLightweight(id);
    bool done = false;
    const std::string calls = callsOf([&] { done = writer.setLotPolyline(id, "画地", true); });
    EXPECT_TRUE(done);
    EXPECT_EQ(calls, "ask for entity, open polyline for write, setLayer 画地 true false, setClosedFlag true, "
                     "close polyline");
    EXPECT_EQ(host.drawing()[0].layer, "画地");
    EXPECT_TRUE(host.drawing()[0].closed);
    EXPECT_EQ(host.drawing()[0].vertices.size(), 3U) << "closure is the flag, not a further vertex";
}

TEST_F(DrawingWriterAdapter, LotPolylineOfANullIdentifierDoesNothing) {
    EXPECT_FALSE(writer.setLotPolyline({}, "画地", true));
    EXPECT_EQ(host.callText(), "ask for entity");
}

TEST_F(DrawingWriterAdapter, RoutePolylineIsOpenedForWriteToSetItsLayer) {
    std::vector<MdGePoint3d> vertices{{0.0, 0.0, 0.0}};
    const MdDbObjectId id = writer.appendPolyline(vertices);
    writer.convertToLightweight(id);
    const std::string calls = callsOf([&] { writer.setPolylineLayer(id, "測点"); });
    EXPECT_EQ(calls, "ask for entity, open polyline for write, setLayer 測点 true false, close polyline");
}

TEST_F(DrawingWriterAdapter, LayersAreListedInTableOrderEachOpenedForWrite) {
    host.layers = {"0", "測点"};
    std::vector<std::string> layers;
    const std::string calls = callsOf([&] { layers = writer.listLayers(); });
    EXPECT_EQ(layers, (std::vector<std::string>{"0", "測点"}));
    EXPECT_EQ(calls, "ask for layer table for read, open layer table for read, newIterator true true, start true true, "
                     "getRecordId, ask for layer record for write, open layer record for write, getName, "
                     "mdutNewString, close layer record, step true true, "
                     "getRecordId, ask for layer record for write, open layer record for write, getName, "
                     "mdutNewString, close layer record, step true true, "
                     "delete iterator, close layer table");
}

TEST_F(DrawingWriterAdapter, LayerThatCannotBeReadIsLeftOutOfTheList) {
    host.layers = {"0", "測点", "画地"};
    host.failAt = 4; // the first record's opening
    EXPECT_EQ(writer.listLayers(), (std::vector<std::string>{"測点", "画地"}));
}

TEST_F(DrawingWriterAdapter, CurrentLayerIsOpenedForReadAndClosedBeforeItsTable) {
    host.currentLayer = 2;
    std::string layer;
    const std::string calls = callsOf([&] { layer = writer.getCurrentLayerName(); });
    EXPECT_EQ(layer, "画地");
    EXPECT_EQ(calls, "ask for layer table for read, open layer table for read, ask for layer record for read, "
                     "open layer record for read, getName, mdutNewString, close layer record, close layer table");
}

TEST_F(DrawingWriterAdapter, CurrentLayerWhoseNameCannotBeReadIsEmpty) {
    host.failCall = "getName";
    EXPECT_EQ(writer.getCurrentLayerName(), "");
}

TEST_F(DrawingWriterAdapter, WithoutADrawingNothingIsMadeAndNothingIsRaised) {
    host.noDrawing = true;
    std::vector<MdGePoint3d> vertices{{0.0, 0.0, 0.0}};
    EXPECT_FALSE(writer.appendPoint({}, "0").isValid());
    EXPECT_FALSE(writer.appendPolyline(vertices).isValid());
    EXPECT_TRUE(vertices.empty());
    EXPECT_TRUE(writer.listLayers().empty());
    EXPECT_EQ(writer.getCurrentLayerName(), "");
}

TEST_F(DrawingWriterAdapter, FullHeapEndsTheImport) {
    host.noHeap = true;
    std::vector<MdGePoint3d> vertices{{0.0, 0.0, 0.0}};
    EXPECT_THROW((void)writer.appendPoint({}, "0"), std::bad_alloc) << "an object must not be missing without a word";
    EXPECT_THROW((void)writer.appendPolyline(vertices), std::bad_alloc);
    EXPECT_THROW(writer.convertToLightweight(MdDbObjectId(1)), std::bad_alloc);
    EXPECT_EQ(writer.getCurrentLayerName(), "");
    EXPECT_TRUE(writer.listLayers().empty());
}

// Runs an operation with its first, second, ... step failing, until none fails any more. Each time what was opened is
// closed and the heap holds only what is in the drawing.
void forEveryFailure(auto&& operation) {
    for (int k = 1;; ++k) {
        scripted::Host host;
        MirdaneDrawingWriter writer;
        host.failAt = k;
        EXPECT_NO_THROW(operation(host, writer)) << "step " << k;
        EXPECT_TRUE(host.open.empty()) << "step " << k << ": " << host.callText();
        EXPECT_TRUE(host.faults.empty()) << "step " << k << ": " << host.faults.front();
        EXPECT_EQ(host.strayBlocks(), 0U) << "step " << k << ": " << host.callText();
        if (host.steps < k) {
            EXPECT_GT(k, 3);
            return;
        }
    }
}

TEST(DrawingWriterFailures, PointIsInTheDrawingExactlyIfItsIdentifierIsValid) {
    forEveryFailure([](scripted::Host& host, MirdaneDrawingWriter& writer) {
        const MdDbObjectId id = writer.appendPoint({1.0, 2.0, 3.0}, "測点");
        EXPECT_EQ(id.isValid(), host.entities.size() == 1U);
    });
}

TEST(DrawingWriterFailures, EveryStepOfALotMayFail) {
    forEveryFailure([](scripted::Host& host, MirdaneDrawingWriter& writer) {
        std::vector<MdGePoint3d> vertices{{0.0, 0.0, 0.0}, {1.0, 0.0, 0.0}};
        const MdDbObjectId id = writer.appendPolyline(vertices);
        EXPECT_EQ(id.isValid(), host.entities.size() == 1U);
        writer.convertToLightweight(id);
        if (writer.setLotPolyline(id, "画地", true)) {
            EXPECT_EQ(host.drawing()[0].kind, "polyline");
        }
        writer.setPolylineLayer(id, "0");
    });
}

TEST(DrawingWriterFailures, EveryStepOfTheLayerListingsMayFail) {
    forEveryFailure([](scripted::Host& host, MirdaneDrawingWriter& writer) {
        EXPECT_LE(writer.listLayers().size(), host.layers.size());
        const std::string current = writer.getCurrentLayerName();
        EXPECT_TRUE(current.empty() || current == "0") << current;
    });
}

} // namespace
} // namespace fenmark
