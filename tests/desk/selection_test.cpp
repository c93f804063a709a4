// Several objects selected, their table, ticks of kinds and layers, and the menus at the pointer.
#include "desk_test_support.h"

#include <QClipboard>
#include <QMenu>

#include <algorithm>

namespace fenmark::desk::test {
namespace {

struct Selecting : DeskWindow {
    void SetUp() override {
        DeskWindow::SetUp();
        import(folder.example(QStringLiteral("cadastral.sim")));
        QApplication::processEvents();
        plan().fitAll();
    }
    std::size_t countOf(FigureStyle style) {
        std::size_t count = 0;
        for (std::size_t i = 0; i < drawing().entityCount(); ++i) {
            count += styleOf(drawing().entity(i)) == style ? 1 : 0;
        }
        return count;
    }
    void drag(const QPoint& from, const QPoint& to) {
        QTest::mousePress(&plan(), Qt::LeftButton, Qt::ControlModifier, from);
        const QPointF at(to);
        QMouseEvent move(QEvent::MouseMove, at, plan().mapToGlobal(at), Qt::NoButton, Qt::LeftButton,
                         Qt::ControlModifier);
        QApplication::sendEvent(&plan(), &move);
        QTest::mouseRelease(&plan(), Qt::LeftButton, Qt::ControlModifier, to);
    }
    // Triggers an entry of a menu that stands open.
    void choose(const char* menuName, Text text) {
        auto* menu = window->findChild<QMenu*>(QLatin1String(menuName));
        ASSERT_NE(menu, nullptr);
        for (QAction* entry : menu->actions()) {
            if (entry->text() == window->texts()(text)) {
                entry->trigger();
                menu->close();
                return;
            }
        }
        ADD_FAILURE() << "no entry";
    }
};

TEST_F(Selecting, CtrlClickAddsAndTakesOut) {
    const std::size_t first = entityNamed("金属標1");
    const std::size_t second = entityNamed("木杭4");
    QTest::mouseClick(&plan(), Qt::LeftButton, {}, pixelOf(first));
    QTest::mouseClick(&plan(), Qt::LeftButton, Qt::ControlModifier, pixelOf(second));
    ASSERT_EQ(plan().selection().size(), 2U);
    EXPECT_EQ(window->properties().topLevelItem(0)->text(0), QStringLiteral("2個の図形を選択"));
    EXPECT_EQ(property(QStringLiteral("座標点")), QStringLiteral("2"));
    EXPECT_TRUE(window->table().isVisible());
    QTest::mouseClick(&plan(), Qt::LeftButton, Qt::ControlModifier, pixelOf(first));
    ASSERT_EQ(plan().selection().size(), 1U);
    EXPECT_EQ(plan().selected()->index, second);
}

TEST_F(Selecting, ABoxToTheRightTakesWhatLiesInsideOneToTheLeftAlsoWhatReachesIn) {
    const drawing::Extent all = drawing().extent();
    const QPoint topLeft = plan().view().toPixel(all.minX, all.maxY).toPoint() - QPoint(5, 5);
    const QPoint bottomRight = plan().view().toPixel(all.maxX, all.minY).toPoint() + QPoint(5, 5);
    drag(topLeft, bottomRight);
    EXPECT_EQ(plan().selection().size(), drawing().entityCount());
    plan().select(std::nullopt);
    // Half of it.
    const QPoint middle((topLeft.x() + bottomRight.x()) / 2, bottomRight.y());
    drag(topLeft, middle);
    const std::size_t inside = plan().selection().size();
    plan().select(std::nullopt);
    drag(middle, topLeft);
    const std::size_t touched = plan().selection().size();
    EXPECT_GT(inside, 0U);
    EXPECT_GT(touched, inside);
    EXPECT_LT(touched, drawing().entityCount());
}

TEST_F(Selecting, TheTableSortsFiltersAndCopies) {
    plan().setFocus();
    QTest::keyClick(&plan(), Qt::Key_A, Qt::ControlModifier);
    ASSERT_EQ(plan().selection().size(), drawing().entityCount());
    QAbstractItemModel* rows = window->table().view().model();
    EXPECT_FALSE(rows->data({}).isValid()) << "no row is current";
    EXPECT_EQ(static_cast<std::size_t>(rows->rowCount()), drawing().entityCount());
    window->table().filter().setText(QStringLiteral("画地"));
    EXPECT_EQ(static_cast<std::size_t>(rows->rowCount()), countOf(FigureStyle::Lot));
    window->table().view().sortByColumn(SelectionModel::Size, Qt::DescendingOrder);
    for (int row = 1; row < rows->rowCount(); ++row) {
        EXPECT_GE(rows->index(row - 1, SelectionModel::Size).data().toDouble(),
                  rows->index(row, SelectionModel::Size).data().toDouble());
    }
    QTest::keyClick(&window->table().view(), Qt::Key_C, Qt::ControlModifier);
    const QStringList lines = QGuiApplication::clipboard()->text().split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    ASSERT_EQ(static_cast<std::size_t>(lines.size()), countOf(FigureStyle::Lot) + 1);
    EXPECT_EQ(lines[0].count(QLatin1Char('\t')), 8);
    EXPECT_TRUE(lines[1].startsWith(QStringLiteral("画地\t")));
}

TEST_F(Selecting, ManyRowsAreFilteredAtOnce) {
    QByteArray points = "A00,\n";
    for (int i = 0; i < 3000; ++i) {
        points += "A01," + QByteArray::number(i) + (i % 2 == 0 ? ",even," : ",odd,") + QByteArray::number(i) + ",0,,\n";
    }
    import(folder.write(QStringLiteral("many.sim"), points + "A99,\n"));
    plan().setFocus();
    QTest::keyClick(&plan(), Qt::Key_A, Qt::ControlModifier);
    const QAbstractItemModel* rows = window->table().view().model();
    ASSERT_GE(rows->rowCount(), 3000);
    int pieces = 0;
    QObject::connect(rows, &QAbstractItemModel::rowsRemoved, window.get(), [&] { ++pieces; });
    QObject::connect(rows, &QAbstractItemModel::rowsInserted, window.get(), [&] { ++pieces; });
    window->table().filter().setText(QStringLiteral("even"));
    EXPECT_EQ(rows->rowCount(), 1500);
    window->table().filter().clear();
    EXPECT_GE(rows->rowCount(), 3000);
    EXPECT_EQ(pieces, 0);
}

TEST_F(Selecting, AKindWithoutItsTickIsNeitherDrawnNorTaken) {
    const std::size_t point = entityNamed("金属標1");
    const QPoint pixel = pixelOf(point);
    plan().select(PlanObject{PlanObject::Kind::Entity, point, {}});
    const std::size_t all = plan().render();
    QListWidgetItem* points = window->legend().item(0);
    points->setCheckState(Qt::Unchecked);
    EXPECT_FALSE(plan().selected()) << "what is hidden is not selected";
    EXPECT_EQ(plan().render(), all - countOf(FigureStyle::Coordinate));
    QTest::mouseClick(&plan(), Qt::LeftButton, {}, pixel);
    EXPECT_TRUE(!plan().selected() || plan().selected()->index != point);
    // It stays so over an import and an undo, until it is looked for.
    import(folder.example(QStringLiteral("road.sim")));
    window->undo();
    EXPECT_EQ(window->legend().item(0)->checkState(), Qt::Unchecked);
    window->legend().showOnly(1);
    EXPECT_EQ(plan().render(), countOf(FigureStyle::Lot));
    window->legend().showAll();
    EXPECT_EQ(plan().render(), all);
}

TEST_F(Selecting, TheMenuOfAnObjectSelectsItsKindAndShowsOnlyIt) {
    const std::size_t point = entityNamed("金属標1");
    emit plan().customContextMenuRequested(pixelOf(point));
    ASSERT_TRUE(plan().selected());
    EXPECT_EQ(plan().selected()->index, point);
    choose("planMenu", Text::SelectKind);
    EXPECT_EQ(plan().selection().size(), countOf(FigureStyle::Coordinate));
    QApplication::processEvents();
    emit plan().customContextMenuRequested(pixelOf(point));
    choose("planMenu", Text::ShowOnlyKind);
    EXPECT_EQ(plan().render(), countOf(FigureStyle::Coordinate));
}

TEST_F(Selecting, ALayerAloneIsShownFromItsMenu) {
    ASSERT_TRUE(window->session().addLayer("別"));
    window->questions().name = [](QWidget*, const QString&, const QString&) { return QStringLiteral("三つ目"); };
    window->addLayer();
    ASSERT_EQ(window->layers().count(), 3);
    emit window->layers().customContextMenuRequested(
        window->layers().visualItemRect(window->layers().item(1)).center());
    choose("layersMenu", Text::ShowOnlyLayer);
    EXPECT_EQ(window->layers().hidden(), (std::vector<bool>{true, false, true}));
    EXPECT_EQ(plan().render(), 0U);
}

TEST_F(Selecting, AScreenReaderHearsWhatIsSelected) {
    EXPECT_TRUE(plan().accessibleDescription().contains(QStringLiteral("F6")));
    const std::size_t point = entityNamed("金属標1");
    plan().select(PlanObject{PlanObject::Kind::Entity, point, {}});
    const QString spoken = plan().accessibleDescription();
    EXPECT_TRUE(spoken.contains(QStringLiteral("金属標1 (座標)"))) << spoken.toStdString();
    EXPECT_TRUE(spoken.contains(QString::number(drawing().entity(point).position().y, 'f', 3)));
}

TEST_F(DeskWindow, CoordinatesWithoutEndStayOutOfThePlanAndAreTold) {
    const std::string digits(400, '9');
    const std::string wide(60, '8');
    const std::string tiny = "0." + std::string(319, '0') + "1"; // metres, below what a normal number holds
    const std::string text =
        "A00,\r\nA01,1,P,1.0,2.0,,\r\nA01,2,Q," + digits + ",2.0,,\r\nA01,3,R," + wide + "," + tiny + ",,\r\nA99,\r\n";
    import(folder.write(QStringLiteral("a.sim"), QByteArray::fromStdString(text)));
    ASSERT_EQ(drawing().entityCount(), 3U);
    EXPECT_TRUE(said(QStringLiteral("2個の図形は座標が表示できない値")));
    plan().fitAll();
    EXPECT_EQ(plan().render(), 1U);
    plan().selectAllShown();
    EXPECT_EQ(plan().selection().size(), 1U);
    plan().grab();
}

} // namespace
} // namespace fenmark::desk::test
