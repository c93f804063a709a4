// The progress window: percentages, title, modality, its remembered place.
#include "ui/dialogs/progress_wnd.h"

#include <QGuiApplication>
#include <QMainWindow>
#include <QPushButton>
#include <QScreen>
#include <QSettings>
#include <QTest>

#include <gtest/gtest.h>

namespace fenmark::ui {
namespace {

struct ProgressWindow : ::testing::Test {
    void SetUp() override { QSettings().clear(); }
    QMainWindow owner;
};

TEST_F(ProgressWindow, AnEmptyFileShowsZeroPercent) {
    CProgressWnd window(&owner, QStringLiteral("t"), false);
    window.setRange(0, 0, 1);
    window.setPosition(0);
    EXPECT_EQ(window.percent(), 0);
    EXPECT_EQ(window.windowTitle(), QStringLiteral("t [0%]"));
}

TEST_F(ProgressWindow, WritesTheTitleOnlyWhenTheWholePercentChanges) {
    CProgressWnd window(&owner, QStringLiteral("SIMAファイル読み込み中"), false);
    window.setRange(0, 100000, 1);
    for (int position = 0; position <= 100000; position += 10)
        window.setPosition(position);
    EXPECT_EQ(window.titleChanges(), 101);
    EXPECT_EQ(window.windowTitle(), QStringLiteral("SIMAファイル読み込み中 [100%]"));
}

// The product of position and 100 wraps in 32 bits, which is meant.
TEST_F(ProgressWindow, PercentWrapsToNegativeValuesInLargeFiles) {
    CProgressWnd window(&owner, QStringLiteral("t"), false);
    window.setRange(0, 30000000, 1);
    window.setPosition(21474836);
    EXPECT_EQ(window.percent(), 71);
    window.setPosition(21474837);
    EXPECT_EQ(window.percent(), -71);
}

TEST_F(ProgressWindow, DisablesItsOwnerForTheModalPhaseOnly) {
    {
        CProgressWnd window(&owner, QStringLiteral("t"), false);
        EXPECT_TRUE(owner.isEnabled());
        EXPECT_EQ(window.goModal(QStringLiteral("Progress"), false), 1);
        EXPECT_FALSE(owner.isEnabled());
        EXPECT_TRUE(window.isEnabled());
        EXPECT_EQ(window.windowTitle(), QStringLiteral("t"));
    }
    EXPECT_TRUE(owner.isEnabled());
}

TEST_F(ProgressWindow, AMissingWindowDoesNothingButReturn) {
    CProgressWnd window(&owner, QStringLiteral("t"), false);
    window.setPosition(5);
    window.DestroyWindow();
    window.setPosition(50);
    window.setText(QStringLiteral("x"));
    window.pump();
    EXPECT_EQ(window.position(), 5);
    EXPECT_EQ(window.pumpCount(), 0);
    EXPECT_EQ(window.goModal(QString(), false), 0);
}

TEST_F(ProgressWindow, KeepsItsPlaceBetweenUses) {
    {
        CProgressWnd window(&owner, QStringLiteral("t"), false);
        window.move(33, 44);
    }
    CProgressWnd window(&owner, QStringLiteral("t"), false);
    EXPECT_EQ(window.pos(), QPoint(33, 44));
}

TEST_F(ProgressWindow, APlaceBeyondTheScreenIsCentredInstead) {
    QSettings().setValue(QStringLiteral("Settings/X"), 100000);
    QSettings().setValue(QStringLiteral("Settings/Y"), 10);
    CProgressWnd window(&owner, QStringLiteral("t"), false);
    const QRect screen = QGuiApplication::primaryScreen()->geometry();
    EXPECT_LT(window.x(), screen.width());
    EXPECT_NEAR(window.geometry().center().x(), screen.center().x(), 2);
}

TEST_F(ProgressWindow, TheCancelButtonExistsHiddenAndDisabled) {
    CProgressWnd window(&owner, QStringLiteral("t"), false);
    auto* button = window.findChild<QPushButton*>(QStringLiteral("id10"));
    ASSERT_NE(button, nullptr);
    EXPECT_FALSE(button->isVisible());
    EXPECT_FALSE(button->isEnabled());
    EXPECT_EQ(button->text(), QStringLiteral(" Cancel "));
    auto* bar = window.findChild<QProgressBar*>(QStringLiteral("id12"));
    EXPECT_EQ(bar->x() + bar->width(), button->x() + 50);
}

TEST_F(ProgressWindow, ThePumpLetsWaitingEventsThrough) {
    CProgressWnd window(&owner, QStringLiteral("t"), false);
    bool reached = false;
    QMetaObject::invokeMethod(
        &window, [&] { reached = true; }, Qt::QueuedConnection);
    window.pump();
    EXPECT_TRUE(reached);
    EXPECT_EQ(window.pumpCount(), 1);
}

} // namespace
} // namespace fenmark::ui
