// Names of many objects: placed when the view rests, and kept where they stand while it is panned.
#include "desk_test_support.h"

namespace fenmark::desk::test {
namespace {

constexpr int kAcross = 60; // points: more than get their names in every frame

struct ManyNames : ::testing::Test {
    drawing::Drawing drawing;
    PlanView view;

    void SetUp() override {
        drawing.addTable("JSIMA_V3_Point");
        for (int i = 0; i < kAcross * kAcross; ++i) {
            drawing.addPoint({10.0 * (i % kAcross), 10.0 * (i / kAcross), 0.0}, 0);
            drawing.setRow(drawing.entityCount() - 1, 0, i, "P" + std::to_string(i), "座標", "a.sim");
        }
        view.resize(1600, 1200);
        view.setDrawing(&drawing);
        PlanLook look = view.look();
        look.grid = false;
        view.setLook(look);
        view.show();
        QApplication::processEvents();
        view.fitAll();
    }
    QImage picture() { return view.grab().toImage(); }
    // The middle of the picture, without the furniture at its edges and what a pan brings in.
    static QImage middle(const QImage& picture, const QPoint& moved) {
        return picture.copy(QRect(400 + moved.x(), 300 + moved.y(), 800, 600));
    }
};

TEST_F(ManyNames, ArePlacedWhenTheViewRests) {
    const QImage moving = picture();
    EXPECT_EQ(view.namesLeftOut(), 0U) << "none is counted before they were placed";
    view.placeNames();
    const QImage resting = picture();
    EXPECT_NE(middle(resting, {}), middle(moving, {}));
    EXPECT_LT(view.namesLeftOut(), drawing.entityCount());
    // By itself, whenever that is.
    view.setLook(view.look());
    const QImage bare = picture();
    EXPECT_TRUE(QTest::qWaitFor([&] { return picture() != bare; }, kPatience));
}

TEST_F(ManyNames, StayWithTheirPointsWhileTheViewIsPanned) {
    view.placeNames();
    const QImage before = picture();
    const QPoint way(40, -24);
    view.panPixels(way.x(), way.y());
    EXPECT_EQ(middle(picture(), way), middle(before, {}));
    view.zoomIn();
    const QImage zoomed = picture();
    view.placeNames();
    EXPECT_NE(picture(), zoomed) << "a zoom takes them away until it rests";
}

TEST_F(ManyNames, AreGoneWithTheLabels) {
    const QImage bare = picture();
    view.placeNames();
    PlanLook look = view.look();
    look.labels = false;
    view.setLook(look);
    view.placeNames();
    EXPECT_EQ(middle(picture(), {}), middle(bare, {}));
}

} // namespace
} // namespace fenmark::desk::test
