// A log that the desktop cannot open.
#include "ui/dialogs/log_opener.h"

#include <QApplication>
#include <QMessageBox>
#include <QTimer>

#include <gtest/gtest.h>

namespace fenmark::ui {
namespace {

TEST(LogOpener, SaysThatALogCouldNotBeOpened) {
    if (QGuiApplication::platformName() != QStringLiteral("offscreen")) {
        GTEST_SKIP() << "a desktop may open it";
    }
    QString text;
    QTimer answer;
    QObject::connect(&answer, &QTimer::timeout, [&] {
        if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
            text = box->text();
            box->accept();
        }
    });
    answer.start(2);
    openWithDesktop(QStringLiteral("/somewhere/road.log"));
    EXPECT_TRUE(text.startsWith(QStringLiteral("ログを開けませんでした。"))) << text.toStdString();
    EXPECT_TRUE(text.endsWith(QStringLiteral("/somewhere/road.log"))) << text.toStdString();
}

} // namespace
} // namespace fenmark::ui
