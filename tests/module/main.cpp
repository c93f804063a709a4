// Runs the window tests in one application, offscreen unless the caller names a platform.
#include <QApplication>
#include <QStandardPaths>

#include <gtest/gtest.h>

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QStandardPaths::setTestModeEnabled(true);
    QApplication application(argc, argv);
    QCoreApplication::setOrganizationName(QStringLiteral("fenmark-tests"));
    QCoreApplication::setApplicationName(QStringLiteral("window-tests"));
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
