// The box around everything in a drawing, after objects are removed or replaced.
#include "support/drawing_support.h"

#include <limits>
#include <numbers>
#include <utility>

namespace fenmark::drawing {
namespace {

Element straight(double fromX, double toX, double y) {
    Element element;
    element.start = {fromX, y};
    element.end = {toX, y};
    element.length = toX - fromX;
    return element;
}

Extent boxOf(double minX, double minY, double maxX, double maxY) {
    return {minX, minY, maxX, maxY};
}

TEST(DrawingExtent, IsLessWhenAnImportGoes) {
    Drawing drawing;
    drawing.addPoint({10, 20, 0}, 0);
    Import import;
    import.firstId = drawing.lastId() + 1;
    drawing.addPoint({-500, 700, 0}, 0);
    import.lastId = drawing.lastId();
    const MdDbObjectId id = drawing.addImport(import);
    drawing.addPoint({30, 5, 0}, 0);
    EXPECT_EQ(drawing.extent(), boxOf(-500, 5, 30, 700));
    ASSERT_TRUE(drawing.removeImport(id));
    EXPECT_EQ(drawing.extent(), boxOf(10, 5, 30, 20));
}

// Of its curve where there is one; of its two ends where it has no length that can be laid.
TEST(DrawingExtent, OfAnElementHoldsBothEnds) {
    Element element = straight(10, 70, 5);
    element.end.y = 9; // the end that is kept need not be the curve's
    EXPECT_EQ(extentOf(element), boxOf(10, 5, 70, 9));
    element.length = std::numeric_limits<double>::infinity();
    EXPECT_EQ(extentOf(element), boxOf(10, 5, 70, 9));
    std::swap(element.start, element.end);
    EXPECT_EQ(extentOf(element), boxOf(10, 5, 70, 9));
    Element half;
    half.type = ElementType::Arc;
    half.length = 10.0 * std::numbers::pi;
    half.startRadius = half.endRadius = 10.0;
    half.end = {0, 20};
    const Extent bulge = extentOf(half);
    EXPECT_EQ(bulge.minX, 0);
    EXPECT_NEAR(bulge.maxX, 10, 1e-12);
    EXPECT_EQ(bulge.minY, 0);
    EXPECT_NEAR(bulge.maxY, 20, 1e-12);
    half.clockwise = true;
    half.direction = std::numbers::pi;
    EXPECT_NEAR(extentOf(half).minX, -10, 1e-12) << "to the other side";
}

TEST(DrawingExtent, FollowsElementsThatAreLaidAnewOrGo) {
    Drawing drawing;
    const std::size_t line = drawing.addAlignment(drawing.addSite("s"), "", "0", "", "");
    drawing.addElement(line, straight(0, 100, 0));
    drawing.addElement(line, straight(100, 200, 90));
    EXPECT_EQ(drawing.extent(), boxOf(0, 0, 200, 90));
    const Element anew = straight(100, 180, -10);
    drawing.relayLastElements(line, std::span(&anew, 1));
    EXPECT_EQ(drawing.extent(), boxOf(0, -10, 180, 0));
    drawing.removeElement(line, 1);
    EXPECT_EQ(drawing.extent(), boxOf(0, 0, 100, 0));
}

TEST(DrawingExtent, ComesBackWithAMark) {
    Drawing drawing;
    const std::size_t line = drawing.addAlignment(drawing.addSite("s"), "", "0", "", "");
    drawing.addElement(line, straight(0, 100, 0));
    drawing.addElement(line, straight(100, 200, 90));
    drawing.removeElement(line, 1);
    const Drawing::Mark mark = drawing.mark();
    drawing.addPoint({-1, -1, 0}, 0);
    Drawing::Removed gone = drawing.takeBack(mark);
    EXPECT_EQ(drawing.extent(), boxOf(0, 0, 100, 0));
    ASSERT_TRUE(drawing.putBack(std::move(gone)));
    EXPECT_EQ(drawing.extent(), boxOf(-1, -1, 100, 0));
}

TEST(DrawingExtent, IsThatOfTheFileWhereItsEntitiesStayThere) {
    const TemporaryFolder folder;
    const std::string path = folder.at("a.gpkg");
    Drawing drawing;
    DrawingStore store;
    ASSERT_TRUE(store.save(path, drawing));
    Drawing lean;
    ASSERT_TRUE(DrawingStore().open(path, lean, Load::WithoutEntities));
    EXPECT_TRUE(lean.extent().empty());
    const std::size_t line = drawing.addAlignment(drawing.addSite("s"), "", "0", "", "");
    drawing.addElement(line, straight(0, 100, 0));
    drawing.addPoint({-10, 20, 0}, 0);
    const std::vector<MdGePoint3d> lot = {{0, -30, 0}, {90, -30, 0}, {90, 40, 0}};
    drawing.addPolyline(lot, 0, EntityKind::Polyline, true);
    ASSERT_TRUE(store.save(path, drawing));
    ASSERT_TRUE(DrawingStore().open(path, lean, Load::WithoutEntities));
    EXPECT_EQ(lean.extent(), boxOf(-10, -30, 100, 40));
    EXPECT_EQ(lean.extent(), drawing.extent());
    lean.removeElement(line, 0);
    EXPECT_EQ(lean.extent(), boxOf(-10, -30, 100, 40)) << "of what was not read, nobody knows how much less it is";
}

} // namespace
} // namespace fenmark::drawing
