// Shows a log file.
#include "ui/dialogs/log_opener.h"

#include "ui/dialogs/message_boxes.h"

#include <QApplication>
#include <QDesktopServices>
#include <QFileInfo>
#include <QUrl>

namespace fenmark::ui {

void openWithDesktop(const QString& path) {
    const QString whole = QFileInfo(path).absoluteFilePath();
    if (!QDesktopServices::openUrl(QUrl::fromLocalFile(whole))) {
        showPlain(QApplication::activeWindow(), QString(), QStringLiteral("ログを開けませんでした。\n%1").arg(whole));
    }
}

} // namespace fenmark::ui
