// The desk under a window manager with a real pointer and a real keyboard: events come from the X server, not from the
// test. Nothing here counts on how long something takes: each step waits for what it brings about.
#include "desk/desk_test_support.h"

#include <QMenu>
#include <QProcess>
#include <QScreen>
#include <QTreeWidget>

#include <algorithm>

namespace fenmark::desk::test {
namespace {

constexpr const char* kLeft = "1";
constexpr const char* kRight = "3";
constexpr const char* kWheelUp = "4";

// One call of the program that moves the pointer and presses keys.
void input(const QStringList& what) {
    QProcess process;
    process.start(QStringLiteral("xdotool"), what);
    ASSERT_TRUE(process.waitForFinished(kPatience));
    ASSERT_EQ(process.exitCode(), 0) << what.join(QLatin1Char(' ')).toStdString();
}

void key(const char* name) {
    input({QStringLiteral("key"), QLatin1String(name)});
}

QStringList moveTo(const QPoint& at) {
    return {QStringLiteral("mousemove"), QString::number(at.x()), QString::number(at.y())};
}

void click(const QPoint& at, const char* button = kLeft) {
    input(moveTo(at) + QStringList{QStringLiteral("click"), QLatin1String(button)});
}

void drag(const QPoint& from, const QPoint& to) {
    input(moveTo(from) + QStringList{QStringLiteral("mousedown"), QLatin1String(kLeft)});
    for (const int part : {1, 2, 3, 4}) {
        input(moveTo(from + (to - from) * part / 4));
    }
    input({QStringLiteral("mouseup"), QLatin1String(kLeft)});
}

bool comes(const std::function<bool()>& what) {
    return QTest::qWaitFor(what, kPatience);
}

struct RealInput : DeskWindow {
    void SetUp() override {
        DeskWindow::SetUp();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get(), kPatience));
    }
    // Imports a file by the Enter key in each of the three dialogs.
    void importByKeys(const QString& path) {
        QTimer watchDialogs;
        QWidget* answered = nullptr;
        int dialogs = 0;
        QObject::connect(&watchDialogs, &QTimer::timeout, [&] {
            QWidget* dialog = QApplication::activeModalWidget();
            if (dialog != nullptr && dialog != answered && dialog->isActiveWindow() &&
                QApplication::focusWidget() != nullptr) {
                answered = dialog;
                ++dialogs;
                key("Return");
            }
        });
        watchDialogs.start(20);
        EXPECT_TRUE(window->openFile(path));
        EXPECT_EQ(dialogs, 2) << "the import and its result";
        EXPECT_GT(drawing().entityCount(), 0U);
        ASSERT_TRUE(comes([&] { return window->isActiveWindow(); }));
    }
    QPoint inPlan(std::size_t entity) { return plan().mapToGlobal(pixelOf(entity)); }
};

TEST_F(RealInput, TheWindowFitsTheScreen) {
    EXPECT_EQ(window->screen()->size(), QSize(1024, 768));
    EXPECT_TRUE(comes([&] { return window->screen()->geometry().contains(window->frameGeometry()); }));
    for (const QDockWidget* dock : window->findChildren<QDockWidget*>()) {
        if (dock->isVisible()) {
            const QRect place(dock->mapToGlobal(QPoint(0, 0)), dock->size());
            EXPECT_TRUE(window->screen()->geometry().contains(place)) << dock->objectName().toStdString();
        }
    }
}

TEST_F(RealInput, EnterImportsAndUndoTakesItBack) {
    importByKeys(folder.example(QStringLiteral("road.sim")));
    const std::size_t entities = drawing().entityCount();
    window->plan().setFocus();
    key("ctrl+z");
    EXPECT_TRUE(comes([&] { return drawing().entityCount() == 0; }));
    key("ctrl+y");
    EXPECT_TRUE(comes([&] { return drawing().entityCount() == entities; }));
}

TEST_F(RealInput, ThePointerSelectsMovesAndZooms) {
    importByKeys(folder.example(QStringLiteral("cadastral.sim")));
    plan().fitAll();
    const std::size_t first = entityNamed("金属標1");
    click(inPlan(first));
    ASSERT_TRUE(comes([&] { return plan().selected().has_value(); }));
    EXPECT_EQ(*plan().selected(), (PlanObject{PlanObject::Kind::Entity, first, {}}));

    const std::size_t second = entityNamed("金属標16");
    input({QStringLiteral("keydown"), QStringLiteral("ctrl")});
    click(inPlan(second));
    EXPECT_TRUE(comes([&] { return plan().selection().size() == 2; }));
    input({QStringLiteral("keyup"), QStringLiteral("ctrl")});

    const double scale = plan().view().pixelsPerMetre();
    const QPoint under = inPlan(first);
    click(under, kWheelUp);
    EXPECT_TRUE(comes([&] { return plan().view().pixelsPerMetre() > scale; }));
    EXPECT_LE((inPlan(first) - under).manhattanLength(), 2) << "what lies under the pointer stays there";

    const QPoint before = pixelOf(first);
    const QPoint middle = plan().mapToGlobal(plan().rect().center());
    drag(middle, middle + QPoint(80, -40));
    EXPECT_TRUE(comes([&] { return (pixelOf(first) - before - QPoint(80, -40)).manhattanLength() <= 4; }))
        << pixelOf(first).x() - before.x() << ' ' << pixelOf(first).y() - before.y();
    EXPECT_EQ(plan().selection().size(), 2U) << "a drag selects nothing";
}

TEST_F(RealInput, KeysReachCommandLineHelpAndPanes) {
    key("ctrl+k");
    ASSERT_TRUE(comes([&] { return window->command().edit()->hasFocus(); }));
    input({QStringLiteral("type"), QStringLiteral("help")});
    ASSERT_TRUE(comes([&] { return window->command().edit()->text() == QStringLiteral("help"); }));
    key("Return");
    EXPECT_TRUE(comes([&] { return said(QStringLiteral("SaveAs")); }));

    bool closed = false;
    QTimer watchHelp;
    bool escaped = false;
    QObject::connect(&watchHelp, &QTimer::timeout, [&] {
        QWidget* dialog = QApplication::activeModalWidget();
        if (dialog != nullptr && dialog->isActiveWindow() && !escaped) {
            escaped = true;
            EXPECT_NE(dialog->findChild<QTreeWidget*>(), nullptr);
            key("Escape");
        }
        closed = escaped && dialog == nullptr;
    });
    watchHelp.start(20);
    key("F1");
    EXPECT_TRUE(comes([&] { return closed; }));

    ASSERT_TRUE(comes([&] { return window->isActiveWindow(); }));
    plan().setFocus();
    key("F6");
    EXPECT_TRUE(comes([&] { return window->focusWidget() != &plan() && window->focusWidget() != nullptr; }));
    key("shift+F6");
    EXPECT_TRUE(comes([&] { return plan().hasFocus(); }));
}

TEST_F(RealInput, ALayerHasItsMenuUnderTheRightButton) {
    window->questions().name = [](QWidget*, const QString&, const QString&) { return QStringLiteral("杭"); };
    window->addLayer();
    LayersPanel& layers = window->layers();
    const QPoint row = layers.viewport()->mapToGlobal(layers.visualItemRect(layers.item(1)).center());
    click(row, kRight);
    ASSERT_TRUE(comes([&] { return QApplication::activePopupWidget() != nullptr; }));
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    EXPECT_TRUE(window->screen()->geometry().contains(menu->frameGeometry()));
    const QList<QAction*> entries = menu->actions();
    const auto remove = std::find_if(entries.begin(), entries.end(), [](const QAction* entry) {
        return entry->data() == static_cast<int>(Text::RemoveLayer);
    });
    ASSERT_NE(remove, entries.end());
    click(menu->mapToGlobal(menu->actionGeometry(*remove).center()));
    EXPECT_TRUE(comes([&] { return drawing().layers().size() == 1; }));
}

} // namespace
} // namespace fenmark::desk::test
