// What the colours mean, and the light on the object under the pointer.
#include "desk_test_support.h"

#include <QHelpEvent>
#include <QImage>
#include <QToolTip>

namespace fenmark::desk::test {
namespace {

TEST_F(DeskWindow, TheLegendShowsTheKindsThatTheDrawingHoldsWithTheirNumbers) {
    EXPECT_EQ(window->legend().count(), 0);
    import(folder.example(QStringLiteral("cadastral.sim")));
    ASSERT_EQ(window->legend().count(), 2);
    EXPECT_EQ(window->legend().item(0)->text(), QStringLiteral("座標点 (90)"));
    EXPECT_EQ(window->legend().item(1)->text(), QStringLiteral("画地 (48)"));
    window->setLanguage(Language::English);
    EXPECT_EQ(window->legend().item(1)->text(), QStringLiteral("Lot (48)"));
    import(folder.example(QStringLiteral("road.sim")));
    std::size_t elements = 0;
    for (std::size_t i = 0; i < drawing().alignmentCount(); ++i) {
        elements += drawing().alignment(i).elements.size();
    }
    std::size_t reported = 0;
    for (int i = 0; i < 3; ++i) {
        reported += window->legend().item(i)->text().section(QLatin1Char('('), 1).chopped(1).toULongLong();
    }
    EXPECT_EQ(reported, elements);
    window->undo();
    window->undo();
    EXPECT_EQ(window->legend().count(), 0);
}

TEST_F(DeskWindow, TheSamplesHaveTheColoursOfThePlan) {
    import(folder.example(QStringLiteral("road.sim")));
    const std::pair<int, QColor> samples[] = {{0, kStraight}, {1, kArc}, {2, kClothoid}};
    for (const auto& [row, colour] : samples) {
        const QImage image = window->legend().item(row)->icon().pixmap(32, 16).toImage();
        EXPECT_EQ(image.pixelColor(image.rect().center()), colour) << row;
    }
}

struct Hover : DeskWindow {
    // The next event of a pointer at the pixel; no button is pressed.
    void pointAt(const QPoint& pixel) {
        QMouseEvent event(QEvent::MouseMove, pixel, plan().mapToGlobal(QPointF(pixel)), Qt::NoButton, Qt::NoButton, {});
        QApplication::sendEvent(&plan(), &event);
    }
    QImage picture() { return plan().grab().toImage(); }
};

TEST_F(Hover, LightsTheObjectUnderThePointerAndTellsItsName) {
    import(folder.example(QStringLiteral("road.sim")));
    QApplication::processEvents();
    const std::size_t point = entityNamed("金属標6");
    const QImage before = picture();
    pointAt(pixelOf(point));
    ASSERT_TRUE(plan().hovered());
    EXPECT_EQ(*plan().hovered(), (PlanObject{PlanObject::Kind::Entity, point, {}}));
    EXPECT_NE(picture(), before);
    EXPECT_FALSE(plan().selected()) << "looking selects nothing";
    QHelpEvent help(QEvent::ToolTip, pixelOf(point), plan().mapToGlobal(pixelOf(point)));
    QApplication::sendEvent(&plan(), &help);
    EXPECT_EQ(QToolTip::text(), QStringLiteral("金属標6 (座標)"));
    pointAt({3, 3});
    EXPECT_FALSE(plan().hovered());
    EXPECT_EQ(picture(), before);
    pointAt(pixelOf(point));
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(&plan(), &leave);
    EXPECT_FALSE(plan().hovered());
}

TEST_F(Hover, PaintsNoMoreThanTheMarkCovers) {
    import(folder.example(QStringLiteral("road.sim")));
    QApplication::processEvents();
    struct Paints : QObject {
        bool eventFilter(QObject*, QEvent* event) override {
            if (event->type() == QEvent::Paint) {
                area += static_cast<QPaintEvent*>(event)->region().boundingRect();
            }
            return false;
        }
        QRegion area;
    } paints;
    plan().installEventFilter(&paints);
    const std::size_t point = entityNamed("金属標6");
    pointAt(pixelOf(point));
    QApplication::processEvents();
    ASSERT_TRUE(plan().hovered());
    EXPECT_FALSE(paints.area.isEmpty());
    EXPECT_LE(paints.area.boundingRect().width(), 40);
    EXPECT_LE(paints.area.boundingRect().height(), 40);
    EXPECT_TRUE(paints.area.contains(pixelOf(point)));
}

TEST_F(Hover, EndsWhenTheObjectGoesOrTheViewMoves) {
    import(folder.example(QStringLiteral("road.sim")));
    QApplication::processEvents();
    const QPoint pixel = pixelOf(entityNamed("金属標6"));
    pointAt(pixel);
    ASSERT_TRUE(plan().hovered());
    plan().zoomIn();
    EXPECT_FALSE(plan().hovered());
    plan().fitAll();
    pointAt(pixel);
    ASSERT_TRUE(plan().hovered());
    window->undo();
    EXPECT_FALSE(plan().hovered());
    picture();
}

} // namespace
} // namespace fenmark::desk::test
