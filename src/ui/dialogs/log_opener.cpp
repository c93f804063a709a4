// Shows a log file.
#include "ui/dialogs/log_opener.h"

#include <QDesktopServices>
#include <QFileInfo>
#include <QUrl>

namespace fenmark::ui {

void openWithDesktop(const QString& path) {
    QDesktopServices::openUrl(QUrl::fromLocalFile(QFileInfo(path).absoluteFilePath()));
}

} // namespace fenmark::ui
