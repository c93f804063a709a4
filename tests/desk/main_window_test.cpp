// The main window in use: import, undo, keeping, selection, panels, by simulated mouse and keys.
#include "desk/window/workbench.h"
#include "desk_test_support.h"
#include "exchange/formats.h"
#include "support/pointer.h"

#include <QComboBox>
#include <QCompleter>
#include <QDropEvent>
#include <QLineEdit>
#include <QMenuBar>
#include <QMimeData>
#include <QSettings>
#include <QSignalSpy>

#include <sqlite3.h>

#include <cmath>
#include <set>

namespace fenmark::desk::test {
namespace {

TEST_F(DeskWindow, TypingTheCommandOpensItsDialog) {
    Answers answers;
    answers.click(QStringLiteral("id2"));
    type(QStringLiteral("fenmark"));
    EXPECT_EQ(drawing().entityCount(), 0U);
    EXPECT_EQ(drawing().sites().size(), 1U); // the default site is made whatever the user answers
}

TEST_F(DeskWindow, AFileOnTheCommandLineIsImportedIntoTheDrawing) {
    import(folder.example(QStringLiteral("road.sim")));
    EXPECT_EQ(drawing().alignmentCount(), 3U);
    EXPECT_EQ(plan().index().size(), drawing().entityCount());
    EXPECT_EQ(window->sites().topLevelItemCount(), 1);
    EXPECT_EQ(window->sites().topLevelItem(0)->childCount(), 3);
    EXPECT_TRUE(window->isWindowModified());
    EXPECT_TRUE(window->log().toPlainText().contains(QStringLiteral("座標データの読み込み")));
    // All of it is in view.
    const drawing::Extent seen = plan().view().visible();
    EXPECT_LE(seen.minX, drawing().extent().minX);
    EXPECT_GE(seen.maxY, drawing().extent().maxY);
    EXPECT_EQ(host::embedded::EmbeddedHost::liveAutomationReferences(), 0);
    EXPECT_EQ(host::embedded::EmbeddedHost::liveDatabaseObjects(), 0);
}

TEST_F(DeskWindow, UntickedKindsAreNotImported) {
    const QString file = folder.example(QStringLiteral("cadastral.sim"));
    Answers answers;
    answers
        .then([](QWidget& dialog) {
            auto* tree = dialog.findChild<QWidget*>(QStringLiteral("id208"));
            ASSERT_NE(tree, nullptr);
            tree->setFocus();
            // From the root down to the first kind, and its box with the space bar.
            QTest::keyClick(tree, Qt::Key_Home);
            QTest::keyClick(tree, Qt::Key_Down);
            QTest::keyClick(tree, Qt::Key_Space);
            dialog.findChild<QPushButton*>(QStringLiteral("id1"))->click();
        })
        .accept();
    EXPECT_TRUE(window->openFile(file));
    for (std::size_t i = 0; i < drawing().entityCount(); ++i) {
        EXPECT_FALSE(drawing().entity(i).isPoint());
    }
    EXPECT_GT(drawing().entityCount(), 0U);
}

TEST_F(DeskWindow, CancellingTheDialogLeavesOneStepThatTakesTheSiteBack) {
    Answers answers;
    answers.click(QStringLiteral("id2"));
    window->action(Text::Import)->trigger();
    ASSERT_EQ(drawing().sites().size(), 1U);
    window->action(Text::Undo)->trigger();
    EXPECT_TRUE(drawing().sites().empty());
    EXPECT_FALSE(window->action(Text::Undo)->isEnabled());
}

TEST_F(DeskWindow, AnImportIsUndoneAsOneStep) {
    import(folder.example(QStringLiteral("cadastral.sim")));
    const std::size_t before = drawing().entityCount();
    import(folder.example(QStringLiteral("road.sim")));
    ASSERT_GT(drawing().entityCount(), before);
    plan().select(PlanObject{PlanObject::Kind::Alignment, 0, 1});
    EXPECT_TRUE(plan().selected());
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(drawing().entityCount(), before);
    EXPECT_EQ(drawing().alignmentCount(), 0U);
    EXPECT_FALSE(plan().selected()); // the object is gone
    EXPECT_EQ(plan().index().size(), before);
    EXPECT_EQ(window->sites().topLevelItem(0)->childCount(), 0);
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(drawing().entityCount(), 0U);
    EXPECT_TRUE(drawing().sites().empty());
    EXPECT_FALSE(window->isWindowModified());
}

TEST_F(DeskWindow, WhatIsSavedIsThereWhenItIsOpenedAgain) {
    import(folder.example(QStringLiteral("road.sim")));
    const std::size_t entities = drawing().entityCount();
    const QString path = folder.path(QStringLiteral("道路"));
    window->questions().save = [&](QWidget*, const QString&, const QString&, const QString&) { return path; };
    press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_FALSE(window->isWindowModified());
    EXPECT_TRUE(window->windowTitle().startsWith(QStringLiteral("道路.gpkg")));
    window->newDrawing();
    EXPECT_EQ(drawing().entityCount(), 0U);
    EXPECT_FALSE(window->action(Text::Undo)->isEnabled());
    window->questions().open = [&](QWidget*, const QString&, const QString&, const QString&) {
        return path + QStringLiteral(".gpkg");
    };
    type(QStringLiteral("open"));
    EXPECT_EQ(drawing().entityCount(), entities);
    EXPECT_EQ(drawing().alignmentCount(), 3U);
    EXPECT_EQ(window->recentFiles(),
              (QStringList{path + QStringLiteral(".gpkg"), folder.path(QStringLiteral("road.sim"))}));
    // An import can be undone after saving, and the drawing then differs from the file.
    import(folder.example(QStringLiteral("cadastral.sim")));
    EXPECT_TRUE(window->saveDrawing());
    window->undo();
    EXPECT_TRUE(window->isWindowModified());
    EXPECT_TRUE(window->saveDrawing());
    EXPECT_TRUE(window->openFile(path + QStringLiteral(".gpkg")));
    EXPECT_EQ(drawing().entityCount(), entities);
}

TEST_F(DeskWindow, ChangesAreNotLostWithoutAQuestion) {
    import(folder.example(QStringLiteral("cadastral.sim")));
    const std::size_t entities = drawing().entityCount();
    {
        Answers answers;
        answers.click(QStringLiteral("cancel"));
        window->newDrawing();
    }
    EXPECT_EQ(drawing().entityCount(), entities);
    {
        Answers answers;
        answers.click(QStringLiteral("cancel"));
        EXPECT_FALSE(window->close());
    }
    EXPECT_TRUE(window->isVisible());
    {
        // Saving that is cancelled keeps the drawing too.
        window->questions().save = [](QWidget*, const QString&, const QString&, const QString&) { return QString(); };
        Answers answers;
        answers.click(QStringLiteral("save"));
        window->newDrawing();
    }
    EXPECT_EQ(drawing().entityCount(), entities);
    {
        Answers answers;
        answers.click(QStringLiteral("discard"));
        EXPECT_TRUE(window->close());
    }
}

TEST_F(DeskWindow, ClickingAPointShowsWhereItCameFrom) {
    import(folder.example(QStringLiteral("cadastral.sim")));
    const std::size_t entity = entityNamed("木杭4");
    QTest::mouseClick(&plan(), Qt::LeftButton, {}, pixelOf(entity));
    ASSERT_TRUE(plan().selected());
    EXPECT_EQ(plan().selected()->index, entity);
    EXPECT_EQ(property(QStringLiteral("Name")).trimmed(), QStringLiteral("木杭4"));
    EXPECT_EQ(property(QStringLiteral("Type")), QStringLiteral("座標"));
    EXPECT_EQ(property(QStringLiteral("FileName")), QStringLiteral("cadastral.sim"));
    EXPECT_EQ(property(QStringLiteral("X (北)")), QString::number(drawing().entity(entity).position().y, 'f', 3));
    // Clicks at the same place go through what lies there: the corner is one of several lots as well.
    QTest::mouseClick(&plan(), Qt::LeftButton, {}, pixelOf(entity));
    ASSERT_TRUE(plan().selected());
    EXPECT_NE(plan().selected()->index, entity);
    EXPECT_EQ(property(QStringLiteral("Type")), QStringLiteral("画地"));
    QTest::mouseClick(&plan(), Qt::LeftButton, {}, QPoint(3, 3));
    EXPECT_FALSE(plan().selected());
    EXPECT_EQ(property(QStringLiteral("点の数")), QStringLiteral("90"));
}

TEST_F(DeskWindow, TheTreeAndThePlanSelectTheSame) {
    import(folder.example(QStringLiteral("road.sim")));
    QTreeWidgetItem* road = window->sites().topLevelItem(0)->child(0);
    window->sites().setCurrentItem(road->child(2));
    EXPECT_EQ(plan().selected(), (PlanObject{PlanObject::Kind::Alignment, 0, 2}));
    EXPECT_EQ(property(QStringLiteral("半径")), QStringLiteral("150.000 m"));
    plan().select(PlanObject{PlanObject::Kind::Alignment, 0, 0});
    EXPECT_EQ(window->sites().currentItem(), road->child(0));
    window->sites().setCurrentItem(road);
    EXPECT_EQ(plan().selected(), (PlanObject{PlanObject::Kind::Alignment, 0, {}}));
    EXPECT_EQ(property(QStringLiteral("名称")), QStringLiteral("中心線"));
    plan().select(std::nullopt);
    EXPECT_EQ(window->sites().currentItem(), nullptr);
}

TEST_F(DeskWindow, HiddenLayersLeaveThePlanAndTheSelection) {
    ASSERT_TRUE(window->session().addLayer("杭"));
    import(folder.example(QStringLiteral("cadastral.sim")));
    ASSERT_EQ(window->layers().count(), 2);
    const std::size_t all = plan().render();
    plan().select(PlanObject{PlanObject::Kind::Entity, 0, {}});
    window->layers().item(0)->setCheckState(Qt::Unchecked);
    EXPECT_FALSE(plan().selected());
    EXPECT_EQ(plan().render(), 0U);
    window->layers().item(0)->setCheckState(Qt::Checked);
    EXPECT_EQ(plan().render(), all);
    window->action(Text::HideAll)->trigger();
    EXPECT_EQ(plan().render(), 0U);
    window->action(Text::ShowAll)->trigger();
    EXPECT_EQ(plan().render(), all);
}

TEST_F(DeskWindow, ALayerThatTheUserAddsCanBeChosenInTheImport) {
    window->questions().name = [](QWidget*, const QString&, const QString&) { return QStringLiteral("杭"); };
    window->action(Text::AddLayer)->trigger();
    const QString file = folder.example(QStringLiteral("cadastral.sim"));
    Answers answers;
    answers
        .then([](QWidget& dialog) {
            QTimer::singleShot(0, dialog.findChild<QPushButton*>(QStringLiteral("id209")), &QPushButton::click);
        })
        .then([](QWidget& dialog) {
            for (QComboBox* list : dialog.findChildren<QComboBox*>()) {
                list->setCurrentText(QStringLiteral("杭"));
            }
            dialog.findChild<QPushButton*>(QStringLiteral("id1"))->click();
        })
        .accept()
        .accept();
    EXPECT_TRUE(window->openFile(file));
    EXPECT_EQ(drawing().entity(0).layer, "杭");
    answers.ok();
    window->addLayer();
    EXPECT_EQ(drawing().layers().size(), 2U);
    EXPECT_TRUE(answers.said.contains(QStringLiteral("杭")));
}

TEST_F(DeskWindow, TheStatusBarTellsPositionStationAndOffset) {
    import(folder.example(QStringLiteral("road.sim")));
    const std::optional<host::PlanPoint> at =
        drawing().geometry(0).pointAt(drawing().geometry(0).startStation() + 30.0, 12.0);
    ASSERT_TRUE(at);
    // Near enough that a pixel is a centimetre.
    plan().zoomAt(plan().view().toPixel(at->x, at->y),
                  0.01 * plan().view().metresPerPixel() == 0.0 ? 1.0 : plan().view().metresPerPixel() / 0.01);
    const QPointF pixel = plan().view().toPixel(at->x, at->y);
    fenmark::test::hover(&plan(), pixel.toPoint());
    const double x = plan().view().toX(pixel.toPoint().x());
    const double y = plan().view().toY(pixel.toPoint().y());
    EXPECT_EQ(window->positionText(), QStringLiteral("X %1   Y %2").arg(y, 0, 'f', 3).arg(x, 0, 'f', 3));
    const auto place = drawing().geometry(0).locate({x, y});
    ASSERT_TRUE(place);
    EXPECT_TRUE(window->stationText().startsWith(QStringLiteral("中心線")));
    EXPECT_TRUE(window->stationText().contains(QString::number(place->station, 'f', 3)))
        << window->stationText().toStdString();
    EXPECT_TRUE(window->stationText().endsWith(QStringLiteral("右 %1").arg(place->offset, 0, 'f', 3)));
    EXPECT_NEAR(place->station - drawing().geometry(0).startStation(), 30.0, 0.02);
    EXPECT_NEAR(place->offset, 12.0, 0.02);
}

TEST_F(DeskWindow, TheWheelZoomsAtTheCursorAndDraggingPans) {
    import(folder.example(QStringLiteral("cadastral.sim")));
    const QPointF cursor(200.0, 150.0);
    const double x = plan().view().toX(cursor.x());
    const double y = plan().view().toY(cursor.y());
    const double scale = plan().view().pixelsPerMetre();
    QWheelEvent wheel(cursor, plan().mapToGlobal(cursor), {}, {0, 240}, Qt::NoButton, {}, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&plan(), &wheel);
    EXPECT_GT(plan().view().pixelsPerMetre(), scale);
    EXPECT_NEAR(plan().view().toX(cursor.x()), x, 1e-6);
    EXPECT_NEAR(plan().view().toY(cursor.y()), y, 1e-6);
    for (const Qt::MouseButton button : {Qt::MiddleButton, Qt::LeftButton}) {
        const QPointF before = plan().view().toPixel(x, y);
        QTest::mousePress(&plan(), button, {}, QPoint(300, 300));
        QMouseEvent move(QEvent::MouseMove, QPointF(340, 330), plan().mapToGlobal(QPointF(340, 330)), Qt::NoButton,
                         button, Qt::NoModifier);
        QApplication::sendEvent(&plan(), &move);
        QTest::mouseRelease(&plan(), button, {}, QPoint(340, 330));
        EXPECT_NEAR(plan().view().toPixel(x, y).x(), before.x() + 40.0, 1e-6);
        EXPECT_NEAR(plan().view().toPixel(x, y).y(), before.y() + 30.0, 1e-6);
        EXPECT_FALSE(plan().selected()); // a drag is no click
    }
}

TEST_F(DeskWindow, AZoomWindowFillsThePlan) {
    import(folder.example(QStringLiteral("cadastral.sim")));
    const double left = plan().view().toX(100);
    const double top = plan().view().toY(100);
    window->action(Text::ZoomWindow)->trigger();
    QTest::mousePress(&plan(), Qt::LeftButton, {}, QPoint(100, 100));
    QTest::mouseMove(&plan(), QPoint(200, 180));
    QTest::mouseRelease(&plan(), Qt::LeftButton, {}, QPoint(200, 180));
    const QPointF corner = plan().view().toPixel(left, top);
    EXPECT_GE(corner.x(), 0.0);
    EXPECT_GE(corner.y(), 0.0);
    EXPECT_TRUE(corner.x() < plan().width() * 0.2 || corner.y() < plan().height() * 0.2);
}

TEST_F(DeskWindow, EverythingInThePlanCanBeDoneByKeys) {
    import(folder.example(QStringLiteral("road.sim")));
    plan().setFocus();
    const double scale = plan().view().pixelsPerMetre();
    QTest::keyClick(&plan(), Qt::Key_Plus);
    EXPECT_GT(plan().view().pixelsPerMetre(), scale);
    QTest::keyClick(&plan(), Qt::Key_Minus);
    EXPECT_NEAR(plan().view().pixelsPerMetre(), scale, 1e-9);
    const double x = plan().view().toX(0);
    QTest::keyClick(&plan(), Qt::Key_Right);
    EXPECT_GT(plan().view().toX(0), x);
    const double y = plan().view().toY(0);
    QTest::keyClick(&plan(), Qt::Key_Up);
    EXPECT_GT(plan().view().toY(0), y);
    QTest::keyClick(&plan(), Qt::Key_F);
    EXPECT_NEAR(plan().view().toX(0), x, 1e-6);
    QTest::keyClick(&plan(), Qt::Key_Tab);
    EXPECT_EQ(plan().selected(), (PlanObject{PlanObject::Kind::Alignment, 0, 0}));
    QTest::keyClick(&plan(), Qt::Key_Tab);
    EXPECT_EQ(plan().selected(), (PlanObject{PlanObject::Kind::Alignment, 0, 1}));
    QTest::keyClick(&plan(), Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(plan().selected(), (PlanObject{PlanObject::Kind::Alignment, 0, 0}));
    QTest::keyClick(&plan(), Qt::Key_Return);
    QTest::keyClick(&plan(), Qt::Key_Escape);
    EXPECT_FALSE(plan().selected());
}

TEST_F(DeskWindow, F6GoesThroughThePanes) {
    plan().setFocus();
    std::set<QWidget*> seen;
    for (int i = 0; i < 7; ++i) {
        window->action(Text::NextPane)->trigger();
        seen.insert(window->focusWidget());
    }
    EXPECT_EQ(seen.size(), 7U);
    EXPECT_EQ(window->focusWidget(), &plan());
}

TEST_F(DeskWindow, TheIdleCommandsSayNothingAndUnknownOnesAreAnswered) {
    type(QStringLiteral("Fenmarks"));
    type(QStringLiteral("FENMARK2"));
    EXPECT_EQ(window->command().said(), QStringLiteral("> Fenmarks\n> FENMARK2"));
    type(QStringLiteral("Fenmark3"));
    EXPECT_TRUE(said(QStringLiteral("Fenmark3: コマンドがありません")));
    type(QStringLiteral("help"));
    EXPECT_TRUE(said(QStringLiteral("Fenmarks")));
}

TEST_F(DeskWindow, TheCommandLineRemembersAndCompletes) {
    QLineEdit* edit = window->command().edit();
    type(QStringLiteral("Fenmarks"));
    type(QStringLiteral("fit"));
    QTest::keyClicks(edit, QStringLiteral("un"));
    QTest::keyClick(edit, Qt::Key_Up);
    EXPECT_EQ(edit->text(), QStringLiteral("fit"));
    QTest::keyClick(edit, Qt::Key_Up);
    EXPECT_EQ(edit->text(), QStringLiteral("Fenmarks"));
    QTest::keyClick(edit, Qt::Key_Up);
    EXPECT_EQ(edit->text(), QStringLiteral("Fenmarks"));
    QTest::keyClick(edit, Qt::Key_Down);
    QTest::keyClick(edit, Qt::Key_Down);
    EXPECT_EQ(edit->text(), QStringLiteral("un"));
    QTest::keyClick(edit, Qt::Key_Escape);
    EXPECT_TRUE(edit->text().isEmpty());
    edit->completer()->setCompletionPrefix(QStringLiteral("fen"));
    EXPECT_EQ(edit->completer()->completionCount(), 3);
}

TEST_F(DeskWindow, AFileThatBreaksTheImportOffIsToldInOneLineAndTheWindowLivesOn) {
    const QString file =
        folder.write(QStringLiteral("broken.sim"), "A00,\r\nA01,1,P1,1.0,2.0,,\r\nA99,\r\nH00\r\nH01,1,\r\n");
    {
        Answers answers;
        answers.click(QStringLiteral("keep"));
        window->openFile(file);
    }
    EXPECT_TRUE(said(QStringLiteral("Fenmark: "))) << window->command().said().toStdString();
    EXPECT_TRUE(said(QStringLiteral("broken.sim")));
    EXPECT_FALSE(window->session().isRunning());
    import(folder.example(QStringLiteral("road.sim")));
    EXPECT_EQ(drawing().alignmentCount(), 3U);
}

TEST_F(DeskWindow, ADroppedSimaFileStartsTheCommand) {
    const QString file = folder.example(QStringLiteral("road.sim"));
    QMimeData mime;
    mime.setUrls({QUrl::fromLocalFile(file)});
    QDragEnterEvent enter({100, 100}, Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(window.get(), &enter);
    EXPECT_TRUE(enter.isAccepted());
    QString shown;
    Answers answers;
    answers
        .then([&](QWidget& dialog) {
            shown = dialog.findChild<QLineEdit*>(QStringLiteral("id210"))->text();
            dialog.findChild<QPushButton*>(QStringLiteral("id1"))->click();
        })
        .accept();
    QDropEvent drop(QPointF(100, 100), Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(window.get(), &drop);
    EXPECT_TRUE(drop.isAccepted());
    EXPECT_TRUE(
        QTest::qWaitFor([&] { return drawing().alignmentCount() == 3 && !window->session().isRunning(); }, kPatience));
    EXPECT_EQ(shown, file);
}

TEST_F(DeskWindow, FilesOfOtherKindsAreNotTakenWhenDropped) {
    QMimeData mime;
    mime.setUrls({QUrl::fromLocalFile(QStringLiteral("/some/picture.png"))});
    QDragEnterEvent enter({100, 100}, Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
    enter.ignore();
    QApplication::sendEvent(window.get(), &enter);
    EXPECT_FALSE(enter.isAccepted());
}

class DroppedDrawing : public DeskWindow {
  protected:
    // A drawing of three alignments, let fall on a window without one.
    void drop() {
        import(folder.example(QStringLiteral("road.sim")));
        const QString path = folder.path(QStringLiteral("a.gpkg"));
        ASSERT_TRUE(window->session().save(path.toStdString()));
        window->newDrawing();
        QMimeData mime;
        mime.setUrls({QUrl::fromLocalFile(path)});
        QDragEnterEvent enter({100, 100}, Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(window.get(), &enter);
        QDropEvent drop(QPointF(100, 100), Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(window.get(), &drop);
        EXPECT_TRUE(drop.isAccepted());
    }
};

TEST_F(DroppedDrawing, Opens) {
    ASSERT_NO_FATAL_FAILURE(drop());
    EXPECT_TRUE(QTest::qWaitFor([&] { return drawing().alignmentCount() == 3; }, kPatience))
        << window->command().said().toStdString();
}

// Keys that were pressed right behind the drop open their dialog before what was dropped is looked at.
TEST_F(DroppedDrawing, LeavesTheOneThatADialogWasOpenedFor) {
    ASSERT_NO_FATAL_FAILURE(drop());
    Answers answers;
    answers.then([&](QWidget& dialog) {
        QApplication::processEvents();
        EXPECT_EQ(window->session().path(), "");
        dialog.close();
    });
    window->workbench().showPaper(PaperKind::Plan);
    QApplication::processEvents();
    EXPECT_EQ(window->session().path(), "") << "what was dropped is not kept for later";
}

TEST_F(DeskWindow, WhatIsOddAboutADrawingIsSaidWhenItOpens) {
    import(folder.example(QStringLiteral("cadastral.sim")));
    const QString path = folder.path(QStringLiteral("a.gpkg"));
    ASSERT_TRUE(window->session().save(path.toStdString()));
    const QString note = QStringLiteral("「Name」");
    ASSERT_TRUE(window->openFile(path));
    EXPECT_FALSE(said(note));
    sqlite3* database = nullptr;
    ASSERT_EQ(sqlite3_open(path.toUtf8().constData(), &database), SQLITE_OK);
    EXPECT_EQ(sqlite3_exec(database, "ALTER TABLE points RENAME COLUMN \"Name\" TO title", nullptr, nullptr, nullptr),
              SQLITE_OK);
    sqlite3_close(database);
    ASSERT_TRUE(window->openFile(path));
    EXPECT_TRUE(said(note)) << window->command().said().toStdString();
}

TEST_F(DeskWindow, ADamagedDrawingIsRefusedAndTheOpenOneStays) {
    import(folder.example(QStringLiteral("cadastral.sim")));
    const QString kept = folder.path(QStringLiteral("kept.gpkg"));
    ASSERT_TRUE(window->session().save(kept.toStdString()));
    const std::size_t entities = drawing().entityCount();
    for (const QString& path :
         {folder.write(QStringLiteral("text.gpkg"), "no drawing"), folder.path(QStringLiteral("missing.gpkg"))}) {
        Answers answers;
        answers.ok();
        EXPECT_FALSE(window->openFile(path));
        EXPECT_TRUE(answers.said.contains(path)) << answers.said.toStdString();
        EXPECT_EQ(drawing().entityCount(), entities);
        EXPECT_EQ(window->session().path(), kept.toStdString());
        EXPECT_EQ(plan().index().size(), entities);
    }
    Answers answers;
    answers.ok();
    EXPECT_FALSE(window->openFile(folder.write(QStringLiteral("a.txt"), "x")));
    EXPECT_EQ(host::embedded::EmbeddedHost::current()->documents().size(), 1U);
}

TEST_F(DeskWindow, ADrawingThatCannotBeWrittenStaysChanged) {
    import(folder.example(QStringLiteral("cadastral.sim")));
    window->questions().save = [](QWidget*, const QString&, const QString&, const QString&) {
        return QStringLiteral("/no/such/folder/a.gpkg");
    };
    Answers answers;
    answers.ok();
    EXPECT_FALSE(window->saveDrawing());
    EXPECT_TRUE(window->isWindowModified());
    EXPECT_TRUE(answers.said.contains(QStringLiteral("/no/such/folder")));
}

TEST_F(DeskWindow, ExportsByTheExtensionOfTheFile) {
    import(folder.example(QStringLiteral("road.sim")));
    {
        const QString path = folder.path(QStringLiteral("zone.geojson"));
        window->questions().save = [&](QWidget*, const QString&, const QString&, const QString&) { return path; };
        Answers answers;
        answers.ok();
        window->exportDrawing();
        EXPECT_FALSE(QFile::exists(path)) << "without a zone there are no degrees";
        EXPECT_TRUE(answers.said.contains(path));
    }
    window->session().setZone(9);
    for (const exchange::Format& format : exchange::formats()) {
        const std::string name = "a" + std::string(format.extension);
        const QString path = folder.path(QString::fromStdString(name));
        window->questions().save = [&](QWidget*, const QString&, const QString&, const QString&) { return path; };
        window->exportDrawing();
        EXPECT_GT(QFile(path).size(), 1000) << name;
    }
    const QString path = folder.path(QStringLiteral("a.doc"));
    window->questions().save = [&](QWidget*, const QString&, const QString&, const QString&) { return path; };
    Answers answers;
    answers.ok();
    window->exportDrawing();
    EXPECT_FALSE(QFile::exists(path));
    window->questions().save = [](QWidget*, const QString&, const QString&, const QString&) {
        return QStringLiteral("/no/such/folder/a.csv");
    };
    answers.ok();
    window->exportDrawing();
    EXPECT_TRUE(answers.said.contains(QStringLiteral("/no/such/folder/a.csv")));
}

TEST_F(DeskWindow, TheLanguageChangesWhileItRuns) {
    auto menu = [&] { return window->menuBar()->actions().first()->text(); };
    EXPECT_EQ(menu(), QStringLiteral("ファイル(&F)"));
    window->setLanguage(Language::English);
    EXPECT_EQ(menu(), QStringLiteral("&File"));
    EXPECT_EQ(property(QStringLiteral("Points")), QStringLiteral("0"));
    EXPECT_EQ(window->action(Text::Open)->iconText(), QStringLiteral("Open"));
    window->setLanguage(Language::Japanese);
    EXPECT_EQ(window->action(Text::Open)->iconText(), QStringLiteral("開く"));
}

TEST_F(DeskWindow, EveryTextHasBothLanguages) {
    const Texts japanese(Language::Japanese);
    const Texts english(Language::English);
    for (int i = 0; i <= static_cast<int>(Text::HideAll); ++i) {
        EXPECT_FALSE(japanese(static_cast<Text>(i)).isEmpty()) << i;
        EXPECT_FALSE(english(static_cast<Text>(i)).isEmpty()) << i;
        // The same places for values in both.
        EXPECT_EQ(japanese(static_cast<Text>(i)).count(QLatin1Char('%')),
                  english(static_cast<Text>(i)).count(QLatin1Char('%')))
            << i;
    }
}

TEST_F(DeskWindow, TheZoneIsKeptWithTheDrawingAndIsOneStep) {
    window->session().setZone(9);
    EXPECT_EQ(drawing().zone(), 9);
    window->undo();
    EXPECT_EQ(drawing().zone(), 0);
}

TEST_F(DeskWindow, TheSettingOfThePositiveRadiusReachesTheHost) {
    window->action(Text::RadiusRight)->trigger();
    EXPECT_EQ(window->session().host().positiveRadius(), host::embedded::PositiveRadius::Right);
    window->action(Text::RadiusAuto)->trigger();
    EXPECT_EQ(window->session().host().positiveRadius(), host::embedded::PositiveRadius::Auto);
}

TEST_F(DeskWindow, AMessageOfTheHostIsShown) {
    Answers answers;
    answers.ok();
    window->session().host().showMessageBox("一覧を取得できません", "エラー");
    EXPECT_EQ(answers.said, QStringLiteral("一覧を取得できません"));
}

TEST_F(DeskWindow, WithoutItsModuleTheWindowSaysSoAndWorks) {
    window.reset(); // one host at a time
    window = std::make_unique<MainWindow>(WindowOptions{Language::English, false});
    EXPECT_FALSE(window->loadModule({"/no/such/Fenmark.mdm"}));
    EXPECT_TRUE(said(QStringLiteral("The module cannot be loaded")));
    EXPECT_FALSE(window->action(Text::Import)->isEnabled());
    type(QStringLiteral("Fenmark"));
    EXPECT_TRUE(said(QStringLiteral("Fenmark: no such command")));
}

// Nobody was asked whether the file may go that the added extension leads to.
TEST_F(DeskWindow, AnExtensionThatIsAddedAsksAgainWhereItMeetsAFile) {
    import(folder.example(QStringLiteral("cadastral.sim")));
    const QByteArray before = "somebody's";
    for (const char* extension : {".gpkg", ".svg"}) {
        const QString there = folder.write(QStringLiteral("there") + QLatin1String(extension), before);
        QStringList proposals;
        window->questions().save = [&](QWidget*, const QString&, const QString& proposal, const QString&) {
            proposals.append(proposal);
            return proposals.size() == 1 ? folder.path(QStringLiteral("there")) : QString();
        };
        if (QLatin1String(extension) == QLatin1String(".svg")) {
            window->exportDrawing();
        } else {
            EXPECT_FALSE(window->saveDrawingAs());
        }
        EXPECT_EQ(proposals.size(), 2) << extension;
        EXPECT_EQ(proposals.last(), there);
        QFile file(there);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        EXPECT_EQ(file.readAll(), before) << extension;
    }
    // A drawing bears its own extension, whatever else the name ends in.
    window->questions().save = [&](QWidget*, const QString&, const QString&, const QString&) {
        return folder.path(QStringLiteral("第2.1工区"));
    };
    ASSERT_TRUE(window->saveDrawingAs());
    EXPECT_TRUE(window->openFile(folder.path(QStringLiteral("第2.1工区.gpkg"))));
}

} // namespace
} // namespace fenmark::desk::test
