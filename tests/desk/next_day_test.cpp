// What a window takes along from one day to the next, and what it says of files that are there no more or hold nothing.
#include "desk_test_support.h"

#include <QDropEvent>
#include <QGuiApplication>
#include <QMimeData>
#include <QScreen>
#include <QSettings>

namespace fenmark::desk::test {
namespace {

// Two windows one after the other that keep their settings.
struct NextDay : DeskWindow {
    void SetUp() override {
        QSettings().clear();
        DeskWindow::SetUp();
    }
    void TearDown() override { QSettings().clear(); }
    void open() {
        window.reset();
        window = std::make_unique<MainWindow>(WindowOptions{Language::Japanese, true});
        window->recovery().setFolder(folder.path(QStringLiteral("recovery")));
        window->show();
        QApplication::processEvents();
    }
};

TEST_F(NextDay, TheWindowAndItsPanelsComeBackAsTheyWereLeft) {
    open();
    const QRect screen = window->screen()->availableGeometry();
    const QRect place(screen.topLeft() + QPoint(40, 50), screen.size() - QSize(160, 170));
    window->setGeometry(place);
    QDockWidget& source = window->dock(QStringLiteral("dock0"));
    const bool shown = source.isVisible();
    source.setVisible(!shown);
    QApplication::processEvents();
    const QRect left = window->geometry();
    ASSERT_TRUE(window->close());
    open();
    EXPECT_EQ(window->geometry(), left);
    EXPECT_EQ(window->dock(QStringLiteral("dock0")).isVisible(), !shown);
}

TEST_F(NextDay, AWindowThatWasLeftOnAScreenThatIsGoneOpensOnOneThatIsThere) {
    open();
    window->move(window->screen()->geometry().bottomRight() + QPoint(4000, 3000));
    QApplication::processEvents();
    ASSERT_TRUE(window->close());
    open();
    EXPECT_TRUE(window->screen()->geometry().contains(window->geometry().center()))
        << window->geometry().x() << " " << window->geometry().y();
}

TEST_F(NextDay, DialogsForFilesStartWhereTheLastFileWas) {
    open();
    const QString drawing = folder.path(QStringLiteral("a.gpkg"));
    ASSERT_TRUE(window->session().save(drawing.toStdString()));
    ASSERT_TRUE(window->openFile(drawing));
    ASSERT_TRUE(window->close());
    open();
    QString start;
    window->questions().open = [&](QWidget*, const QString&, const QString& from, const QString&) {
        start = from;
        return QString();
    };
    window->chooseDrawing();
    EXPECT_EQ(start, QFileInfo(drawing).absolutePath());
    EXPECT_EQ(window->recentFiles(), QStringList{QFileInfo(drawing).absoluteFilePath()});
}

TEST_F(NextDay, DamagedSettingsLeaveAWindowThatWorks) {
    QStringList many;
    for (int i = 0; i < 3000; ++i) {
        many.append(QStringLiteral("/no/such/%1.gpkg").arg(i));
    }
    const QByteArray garbage(300, '\xff');
    QSettings settings;
    settings.setValue(QStringLiteral("recentFiles"), many);
    for (const char* name : {"geometry", "panels", "encoding", "language", "folder"}) {
        settings.setValue(QLatin1String(name), garbage);
    }
    open();
    EXPECT_EQ(window->recentFiles(), many.mid(0, 10));
    EXPECT_EQ(window->session().encoding(), "auto");
    EXPECT_TRUE(window->plan().isVisible());
    EXPECT_TRUE(window->screen()->geometry().contains(window->geometry().center()));
}

TEST_F(DeskWindow, ADrawingAndSeveralFilesThatAreDroppedComeInOneAfterAnother) {
    import(folder.example(QStringLiteral("cadastral.sim")));
    const QString drawn = folder.path(QStringLiteral("first.gpkg"));
    ASSERT_TRUE(window->session().save(drawn.toStdString()));
    const std::size_t before = drawing().entityCount();
    window->newDrawing();
    const QString one = folder.write(QStringLiteral("one.sim"), "A00,\r\nA01,1,p1,0,0,,\r\nA99,\r\n");
    const QString two = folder.write(QStringLiteral("two.sim"), "A00,\r\nA01,1,p2,5,5,,\r\nA99,\r\n");
    QMimeData mime;
    mime.setUrls({QUrl::fromLocalFile(one), QUrl::fromLocalFile(drawn), QUrl::fromLocalFile(two)});
    QDragEnterEvent enter({100, 100}, Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(window.get(), &enter);
    Answers answers;
    answers.accept().accept().accept().accept();
    QDropEvent drop(QPointF(100, 100), Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(window.get(), &drop);
    EXPECT_TRUE(QTest::qWaitFor([&] { return drawing().entityCount() == before + 2 && !window->session().isRunning(); },
                                kPatience));
    entityNamed("p1");
    entityNamed("p2");
}

TEST_F(DeskWindow, TheFirstNamesAreSeenBeforeAFileIsImported) {
    window->preview().showFile(folder.example(QStringLiteral("cadastral.sim")).toStdString(), "auto");
    const QStringList lines = window->preview().toPlainText().split(QLatin1Char('\n'));
    ASSERT_GT(lines.size(), 4);
    EXPECT_EQ(lines[0], QStringLiteral("cadastral.sim"));
    EXPECT_TRUE(lines[1].startsWith(QStringLiteral("文字コード: "))) << lines[1].toStdString();
    EXPECT_FALSE(lines[3].isEmpty());
}

TEST_F(DeskWindow, AFileWithNothingInItSaysWhy) {
    const auto shown = [this](const QString& path) {
        window->preview().showFile(path.toStdString(), "auto");
        return window->preview().toPlainText();
    };
    EXPECT_TRUE(shown(folder.path(QStringLiteral("gone.sim"))).endsWith(QStringLiteral("ファイルを読めません。")));
    EXPECT_TRUE(shown(folder.write(QStringLiteral("empty.sim"), "")).endsWith(QStringLiteral("ファイルは空です。")));
    EXPECT_TRUE(shown(folder.write(QStringLiteral("letter.sim"), "Dear Sir,\r\nplease find\r\n"))
                    .endsWith(QStringLiteral("がありません。")));
    EXPECT_FALSE(
        shown(folder.write(QStringLiteral("point.sim"), "A01,1,p1,0,0,,\r\n")).contains(QStringLiteral("ありません")));
}

} // namespace
} // namespace fenmark::desk::test
