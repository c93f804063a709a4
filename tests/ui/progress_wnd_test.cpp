// The progress window: percentages, title, modality, its remembered place.
#include "ui/dialogs/progress_wnd.h"

#include <QApplication>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QPushButton>
#include <QScreen>
#include <QSettings>
#include <QTest>

#include <gtest/gtest.h>

#include <limits>

namespace fenmark::ui {
namespace {

// How long a test waits in ms for what comes at once on a machine that has nothing else to do.
constexpr int kPatience = 60000;

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
    for (int position = 0; position <= 100000; position += 10) {
        window.setPosition(position);
    }
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
    EXPECT_EQ(window.setPosition(60), 5);
    EXPECT_EQ(window.position(), 5);
    EXPECT_EQ(window.pumpCount(), 0);
    EXPECT_FALSE(window.isVisible());
}

TEST_F(ProgressWindow, TheModalPhaseMakesAMissingWindowAnew) {
    CProgressWnd window(&owner, QStringLiteral("first"), false);
    window.setPosition(5);
    window.move(33, 44);
    window.DestroyWindow();
    EXPECT_EQ(window.goModal(QStringLiteral("Progress"), false), 1);
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(window.pos(), QPoint(33, 44)) << "at the place that was kept";
    EXPECT_EQ(window.windowTitle(), QStringLiteral("Progress"));
    EXPECT_FALSE(owner.isEnabled());
    EXPECT_EQ(window.setPosition(5), 5);
    EXPECT_EQ(window.windowTitle(), QStringLiteral("Progress [5%]"));
    window.DestroyWindow();
    EXPECT_TRUE(owner.isEnabled());
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

TEST_F(ProgressWindow, ThePumpTakesTheFocusFromItsOwnerInTheModalPhase) {
    CProgressWnd window(&owner, QStringLiteral("t"), false);
    owner.show();
    owner.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&owner, kPatience));
    window.goModal(QString(), false);
    window.pump();
    EXPECT_TRUE(QTest::qWaitFor([&] { return QApplication::activeWindow() == &window; }, kPatience));
}

TEST_F(ProgressWindow, IsLaidOutInPixelsAroundFourLinesOfText) {
    CProgressWnd window(&owner, QStringLiteral("t"), false);
    const auto* label = window.findChild<QLabel*>(QStringLiteral("id11"));
    const auto* bar = window.findChild<QProgressBar*>(QStringLiteral("id12"));
    const auto* button = window.findChild<QPushButton*>(QStringLiteral("id10"));
    const QFontMetrics metrics(window.font());
    EXPECT_EQ(label->geometry().topLeft(), QPoint(10, 10));
    EXPECT_EQ(label->width(), 390);
    EXPECT_GE(label->height(), 4 * metrics.height());
    EXPECT_EQ(button->y(), label->y() + label->height() + 10);
    EXPECT_EQ(button->x() + button->width(), 400) << "at the right end";
    EXPECT_EQ(bar->x(), 10);
    EXPECT_EQ(bar->height(), button->height() - 2 * 2);
    EXPECT_EQ(window.width(), 390 + 20);
    EXPECT_EQ(window.height(), button->y() + button->height() - 10 + 30);
    EXPECT_FALSE(label->wordWrap());
    EXPECT_EQ(label->textFormat(), Qt::PlainText);
    EXPECT_EQ(window.cursor().shape(), Qt::BusyCursor);
    EXPECT_TRUE(window.windowFlags() & Qt::WindowStaysOnTopHint);
}

TEST_F(ProgressWindow, BeginsWithItsDefaultsAndIsShownWithoutTakingTheFocus) {
    owner.show();
    QApplication::setActiveWindow(&owner);
    CProgressWnd window(&owner, QStringLiteral("title"), false);
    EXPECT_TRUE(window.isVisible());
    EXPECT_TRUE(window.testAttribute(Qt::WA_ShowWithoutActivating));
    EXPECT_EQ(window.windowTitle(), QStringLiteral("title"));
    EXPECT_EQ(window.percent(), std::nullopt);
    EXPECT_EQ(window.position(), 0);
    EXPECT_FALSE(window.modal());
    EXPECT_FALSE(window.cancelled());
    const auto* bar = window.findChild<QProgressBar*>(QStringLiteral("id12"));
    EXPECT_EQ(bar->minimum(), 0);
    EXPECT_EQ(bar->maximum(), 100);
}

TEST_F(ProgressWindow, TheLowerBoundIsNotTakenOffThePosition) {
    CProgressWnd window(&owner, QStringLiteral("t"), false);
    window.setRange(50, 150, 1);
    EXPECT_EQ(window.setPosition(50), 50);
    EXPECT_EQ(window.percent(), 50);
}

TEST_F(ProgressWindow, AHiddenWindowIsShownByThePosition) {
    CProgressWnd window(&owner, QStringLiteral("t"), false);
    window.hide();
    window.setPosition(1);
    EXPECT_TRUE(window.isVisible());
}

TEST_F(ProgressWindow, AFileOfThirtyMillionBytesIsReadToItsEndWithNegativePercents) {
    ProgressWindows windows(&owner);
    const auto progress = windows.create("t", false);
    EXPECT_EQ(progress->goModal("Progress", false), 1);
    progress->setRange(0, 30000000, 1);
    bool negative = false;
    for (std::int64_t position = 0; position <= 30000000; position += 100000) {
        progress->setPosition(position);
        for (const CProgressWnd* each : owner.findChildren<CProgressWnd*>()) {
            negative = negative || each->percent().value_or(0) < 0;
        }
        progress->pump();
    }
    EXPECT_TRUE(negative);
}

TEST_F(ProgressWindow, FilesBeyondThirtyOneBitsDoNoHarm) {
    ProgressWindows windows(&owner);
    const auto progress = windows.create("t", false);
    const std::int64_t length = std::int64_t{3} * 1024 * 1024 * 1024;
    progress->setRange(0, length, 1);
    for (std::int64_t position = 0; position <= length; position += length / 7) {
        progress->setPosition(position);
    }
    CProgressWnd window(&owner, QStringLiteral("t"), false);
    window.setRange(std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max(), 1);
    window.setPosition(std::numeric_limits<std::int32_t>::min() / 50);
    EXPECT_TRUE(window.percent().has_value());
}

TEST_F(ProgressWindow, GivesTheKeyboardBackToWhereItWas) {
    QLineEdit edit(&owner);
    owner.show();
    QApplication::setActiveWindow(&owner);
    edit.setFocus();
    {
        CProgressWnd window(&owner, QStringLiteral("t"), false);
        window.goModal(QString(), false);
        EXPECT_NE(owner.focusWidget(), &edit);
    }
    EXPECT_EQ(owner.focusWidget(), &edit);
}

TEST_F(ProgressWindow, ItsOwnerCannotBeClosedInTheMiddleOfARead) {
    owner.show();
    {
        CProgressWnd window(&owner, QStringLiteral("t"), false);
        window.goModal(QString(), false);
        EXPECT_FALSE(owner.close());
        EXPECT_FALSE(window.close());
        EXPECT_TRUE(owner.isVisible());
    }
    EXPECT_TRUE(owner.close());
}

TEST_F(ProgressWindow, WithoutAParentTheWindowInUseIsDisabled) {
    owner.show();
    QApplication::setActiveWindow(&owner);
    ASSERT_TRUE(QTest::qWaitFor([&] { return QApplication::activeWindow() == &owner; }, kPatience));
    {
        CProgressWnd window(nullptr, QStringLiteral("t"), false);
        EXPECT_EQ(window.goModal(QString(), false), 1);
        EXPECT_FALSE(owner.isEnabled());
    }
    EXPECT_TRUE(owner.isEnabled());
    owner.hide();
    CProgressWnd window(nullptr, QStringLiteral("t"), false);
    EXPECT_EQ(window.goModal(QString(), false), 1) << "nothing to disable";
}

TEST_F(ProgressWindow, HelpRequestsAreSwallowed) {
    struct Parent : QWidget {
        int heard = 0;
        void keyPressEvent(QKeyEvent*) override { ++heard; }
    } parent;
    CProgressWnd window(&parent, QStringLiteral("t"), false);
    QTest::keyClick(&window, Qt::Key_F1);
    EXPECT_EQ(parent.heard, 0);
}

// The button is hidden, so that this comes from elsewhere. The reader does not ask, and goes on without a window.
TEST_F(ProgressWindow, ACancelOfTheModalPhaseEndsTheWindowAndGivesTheOwnerBack) {
    owner.show();
    CProgressWnd window(&owner, QStringLiteral("t"), false);
    window.move(33, 44);
    window.goModal(QString(), false);
    window.setPosition(40);
    QMetaObject::invokeMethod(&window, "cancel");
    EXPECT_TRUE(window.cancelled());
    EXPECT_FALSE(window.isVisible());
    EXPECT_FALSE(window.modal());
    EXPECT_TRUE(owner.isEnabled());
    EXPECT_EQ(QSettings().value(QStringLiteral("Settings/X")).toInt(), 33);
    bool reached = false;
    QMetaObject::invokeMethod(
        &owner, [&] { reached = true; }, Qt::QueuedConnection);
    EXPECT_EQ(window.setPosition(50), 40);
    window.pump();
    EXPECT_FALSE(reached) << "its owner cannot be used in the middle of the read";
    EXPECT_FALSE(window.isVisible());
}

TEST_F(ProgressWindow, WithoutAModalPhaseACancelHidesTheWindowUntilTheNextPosition) {
    CProgressWnd window(&owner, QStringLiteral("t"), false);
    QMetaObject::invokeMethod(&window, "cancel");
    EXPECT_FALSE(window.isVisible());
    bool reached = false;
    QMetaObject::invokeMethod(
        &window, [&] { reached = true; }, Qt::QueuedConnection);
    window.pump();
    EXPECT_EQ(window.pumpCount(), 1);
    EXPECT_FALSE(reached) << "a window that was cancelled lets nothing through";
    EXPECT_EQ(window.setPosition(50), 50);
    EXPECT_TRUE(window.isVisible());
    EXPECT_TRUE(window.cancelled());
}

TEST_F(ProgressWindow, PumpsAreCountedOneByOne) {
    CProgressWnd window(&owner, QStringLiteral("t"), false);
    for (int i = 0; i < 25; ++i) {
        window.pump();
    }
    EXPECT_EQ(window.pumpCount(), 25);
}

TEST_F(ProgressWindow, ThePlaceIsKeptInTheSectionSettings) {
    {
        CProgressWnd window(&owner, QStringLiteral("t"), false);
        window.move(12, 34);
    }
    EXPECT_EQ(QSettings().value(QStringLiteral("Settings/X")).toInt(), 12);
    EXPECT_EQ(QSettings().value(QStringLiteral("Settings/Y")).toInt(), 34);
}

TEST_F(ProgressWindow, AProgramWithoutANameKeepsThePlaceUnderThatOfTheModule) {
    const QString organization = QCoreApplication::organizationName();
    QCoreApplication::setOrganizationName(QString());
    {
        CProgressWnd window(&owner, QStringLiteral("t"), false);
        window.move(21, 22);
    }
    CProgressWnd again(&owner, QStringLiteral("t"), false);
    EXPECT_EQ(again.pos(), QPoint(21, 22));
    QCoreApplication::setOrganizationName(organization);
    EXPECT_FALSE(QSettings().contains(QStringLiteral("Settings/X")));
    QSettings(QStringLiteral("Fenmark"), QStringLiteral("Fenmark")).clear();
}

} // namespace
} // namespace fenmark::ui
