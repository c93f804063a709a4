// Layers at the window: colours, names, deletion, each a step that can be taken back.
#include "desk_test_support.h"

#include "desk/window/legend_panel.h"
#include "drawing/geopackage/drawing_store.h"

#include <QMenu>

#include <algorithm>

namespace fenmark::desk::test {
namespace {

const QColor kChosen(0xd0, 0x10, 0x90);

struct Layers : DeskWindow {
    // The layer "0" with the lots of the example, and "杭" with nothing.
    void SetUp() override {
        DeskWindow::SetUp();
        window->questions().name = [](QWidget*, const QString&, const QString&) { return QStringLiteral("杭"); };
        window->addLayer();
        import(folder.example("cadastral.sim"));
        plan().fitAll();
    }
    // Chooses from the menu of that row.
    void choose(int row, Text entry) {
        LayersPanel& layers = window->layers();
        emit layers.customContextMenuRequested(layers.visualItemRect(layers.item(row)).center());
        auto* menu = window->findChild<QMenu*>("layersMenu");
        ASSERT_NE(menu, nullptr);
        for (QAction* action : menu->actions()) {
            if (action->data() == static_cast<int>(entry)) {
                EXPECT_TRUE(action->isEnabled());
                action->trigger();
            }
        }
        menu->close();
        delete menu;
    }
    bool offers(int row, Text entry) {
        LayersPanel& layers = window->layers();
        emit layers.customContextMenuRequested(layers.visualItemRect(layers.item(row)).center());
        auto* menu = window->findChild<QMenu*>("layersMenu");
        bool enabled = false;
        for (const QAction* action : menu->actions()) {
            enabled = enabled || (action->data() == static_cast<int>(entry) && action->isEnabled());
        }
        menu->close();
        delete menu;
        return enabled;
    }
    void answerColour(const QColor& colour) {
        window->questions().colour = [colour](QWidget*, const QString&, const QColor&) { return colour; };
    }
    void answerName(const QString& name) {
        window->questions().newName = [name](QWidget*, const QString&, const QString&, const QString&) { return name; };
    }
    std::size_t pixelsOf(const QColor& colour) {
        plan().render();
        const QImage picture = plan().grab().toImage();
        std::size_t count = 0;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                count += picture.pixelColor(x, y) == colour ? 1U : 0U;
            }
        }
        return count;
    }
};

TEST_F(Layers, AColourIsSeenInThePlanAndCanBeTakenBack) {
    const QColor lots = colourOf(FigureStyle::Lot);
    ASSERT_GT(pixelsOf(lots), 0U);
    answerColour(kChosen);
    choose(0, Text::LayerColour);
    EXPECT_EQ(drawing().layers()[0].colour, (drawing::Colour{0xd0, 0x10, 0x90}));
    EXPECT_GT(pixelsOf(kChosen), 0U);
    EXPECT_EQ(pixelsOf(lots), 0U);
    EXPECT_TRUE(window->isWindowModified());
    window->undo();
    EXPECT_FALSE(drawing().layers()[0].colour);
    EXPECT_EQ(pixelsOf(kChosen), 0U);
    window->redo();
    EXPECT_GT(pixelsOf(kChosen), 0U);
    choose(0, Text::NoLayerColour);
    EXPECT_EQ(pixelsOf(kChosen), 0U);
    EXPECT_FALSE(offers(0, Text::NoLayerColour));
}

TEST_F(Layers, NoColourChosenChangesNothing) {
    answerColour(QColor());
    const std::size_t steps = window->session().steps().size();
    choose(0, Text::LayerColour);
    EXPECT_EQ(window->session().steps().size(), steps);
}

TEST_F(Layers, ColoursNamesAndDeletionComeBackWithTheFile) {
    answerColour(kChosen);
    choose(0, Text::LayerColour);
    answerName(QStringLiteral("境界杭"));
    choose(1, Text::RenameLayer);
    const QString path = folder.path("図面.gpkg");
    window->questions().save = [&](QWidget*, const QString&, const QString&, const QString&) { return path; };
    ASSERT_TRUE(window->saveDrawing());
    const auto layersInFile = [&] {
        drawing::Drawing read;
        drawing::DrawingStore store;
        EXPECT_TRUE(store.open(path.toStdString(), read));
        return read.layers();
    };
    EXPECT_EQ(layersInFile(), drawing().layers());
    choose(1, Text::RemoveLayer);
    ASSERT_EQ(drawing().layers().size(), 1U);
    EXPECT_EQ(window->layers().count(), 1);
    ASSERT_TRUE(window->saveDrawing());
    EXPECT_EQ(layersInFile(), drawing().layers());
    window->undo();
    ASSERT_EQ(drawing().layers().size(), 2U);
    EXPECT_EQ(drawing().layers()[1].name, "境界杭");
    EXPECT_TRUE(window->isWindowModified());
    ASSERT_TRUE(window->saveDrawing());
    EXPECT_EQ(layersInFile(), drawing().layers());
}

TEST_F(Layers, AnImportBeforeCanStillBeTakenBack) {
    answerName(QStringLiteral("境界"));
    choose(1, Text::RenameLayer);
    choose(1, Text::RemoveLayer);
    const std::size_t entities = drawing().entityCount();
    window->undo(); // deleted
    window->undo(); // renamed
    EXPECT_EQ(drawing().layers()[1].name, "杭");
    window->undo(); // imported
    EXPECT_EQ(drawing().entityCount(), 0U);
    window->redo();
    EXPECT_EQ(drawing().entityCount(), entities);
    window->redo();
    window->redo();
    EXPECT_EQ(drawing().layers().size(), 1U);
    EXPECT_TRUE(window->session().undoneSteps().empty());
}

TEST_F(Layers, KeysRenameAndDelete) {
    answerName(QStringLiteral("引照点"));
    window->layers().setCurrentRow(1);
    QTest::keyClick(&window->layers(), Qt::Key_F2);
    EXPECT_EQ(window->layers().item(1)->text(), QStringLiteral("引照点"));
    QTest::keyClick(&window->layers(), Qt::Key_Delete);
    EXPECT_EQ(window->layers().count(), 1);
}

TEST_F(Layers, TheFirstOneAndOnesInUseStay) {
    EXPECT_FALSE(offers(0, Text::RemoveLayer));
    EXPECT_FALSE(offers(0, Text::RenameLayer));
    window->layers().setCurrentRow(0);
    {
        Answers answers;
        answers.ok();
        QTest::keyClick(&window->layers(), Qt::Key_Delete);
        EXPECT_TRUE(answers.said.contains(QString::number(drawing().entityCount()))) << answers.said.toStdString();
    }
    answerName(QStringLiteral("0"));
    Answers answers;
    answers.ok();
    choose(1, Text::RenameLayer);
    EXPECT_TRUE(answers.said.contains(QStringLiteral("「0」")));
    EXPECT_EQ(drawing().layers()[1].name, "杭");
}

TEST_F(Layers, TicksStayWithTheirLayers) {
    window->questions().name = [](QWidget*, const QString&, const QString&) { return QStringLiteral("隠す"); };
    window->addLayer();
    window->layers().hideLayer(2);
    choose(1, Text::RemoveLayer);
    EXPECT_EQ(window->layers().hidden(), (std::vector<bool>{false, true}));
}

TEST_F(Layers, AnEmptyDrawingWithAColourIsNotLostWithoutAQuestion) {
    window->closeAtOnce();
    make(Language::Japanese);
    EXPECT_FALSE(window->session().hasChanges());
    ASSERT_TRUE(window->session().setLayerColour(0, drawing::Colour{1, 2, 3}));
    EXPECT_TRUE(window->session().hasChanges());
}

TEST(LayerInk, IsReadOnThePaperWhateverTheColour) {
    for (const ThemeSide side : {ThemeSide::Light, ThemeSide::Dark}) {
        useTheme(side);
        for (const drawing::Colour& colour :
             {drawing::Colour{255, 255, 0}, {255, 255, 255}, {0, 0, 0}, {0, 0, 255}, {128, 128, 128}, {20, 200, 20}}) {
            EXPECT_GE(contrastOf(inkOf(colour), kPaper), 4.5) << textOf(colour);
        }
        EXPECT_EQ(contrastOf(kPaper, kPaper), 1.0);
    }
    useTheme(ThemeSide::Light);
    EXPECT_EQ(inkOf({0xd0, 0x10, 0x90}), kChosen) << "kept where it reads";
    EXPECT_NEAR(contrastOf(Qt::black, Qt::white), 21.0, 1e-9);
}

} // namespace
} // namespace fenmark::desk::test
