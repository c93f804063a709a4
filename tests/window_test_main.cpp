// Runs the window tests of an area in one application, offscreen unless the caller names a platform. What the desktop of
// the caller would change, as its scale, its style, its own file dialogs and its stored settings, is left out.
#include <QApplication>
#include <QSettings>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <gtest/gtest.h>

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    for (const char* ofTheDesktop : {"QT_QPA_PLATFORMTHEME", "QT_STYLE_OVERRIDE", "QT_SCREEN_SCALE_FACTORS",
                                     "XDG_CURRENT_DESKTOP", "DESKTOP_SESSION", "KDE_FULL_SESSION"}) {
        qunsetenv(ofTheDesktop);
    }
    // The tests count in pixels at 96 dots an inch.
    qputenv("QT_SCALE_FACTOR", "1");
    qputenv("QT_FONT_DPI", "96");
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QStandardPaths::setTestModeEnabled(true);
    // What the windows remember goes with the tests, also for programs that the tests start.
    const QTemporaryDir settings;
    qputenv("XDG_CONFIG_HOME", settings.path().toLocal8Bit());
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, settings.path());
    QApplication application(argc, argv);
    QCoreApplication::setOrganizationName(QStringLiteral("fenmark-tests"));
    QCoreApplication::setApplicationName(QStringLiteral("window-tests"));
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
