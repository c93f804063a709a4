// Opening, saving and exporting from the main window.
#include "desk/window/main_window.h"

#include "desk/paper/ask_target.h"
#include "desk/window/workbench.h"

#include "exchange/formats.h"
#include "exchange/output_file.h"
#include "platform/files.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDir>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileInfo>
#include <QMessageBox>
#include <QMimeData>
#include <QPushButton>
#include <QSettings>
#include <QTimer>

#include <optional>
#include <string>

namespace fenmark::desk {

namespace {

bool endsIn(const QString& path, const char* extension) {
    return path.endsWith(QLatin1String(extension), Qt::CaseInsensitive);
}

// By its name a drawing is known when it is opened again.
QString asDrawing(const QString& path) {
    return endsIn(path, ".gpkg") ? path : path + QStringLiteral(".gpkg");
}

QString asExport(const QString& path) {
    return withExtension(path, ".svg");
}

bool isOurs(const QString& path) {
    return endsIn(path, ".sim") || endsIn(path, ".gpkg");
}

} // namespace

QString MainWindow::fileName() const {
    const QString path = QString::fromStdString(session_.path());
    return path.isEmpty() ? texts_(Text::Untitled) : QFileInfo(path).fileName();
}

void MainWindow::tell(const QString& message) {
    QMessageBox box(QMessageBox::Information, QStringLiteral("Fenmark Desk"), message, QMessageBox::NoButton, this);
    box.setTextFormat(Qt::PlainText); // names in it are no mark-up
    box.setTextInteractionFlags(Qt::TextSelectableByMouse);
    box.addButton(texts_(Text::OkButton), QMessageBox::AcceptRole);
    box.exec();
}

bool MainWindow::hasChanges() const {
    return session_.hasChanges() || workbench_->hasChanges();
}

bool MainWindow::mayLoseDrawing() {
    if (closingAtOnce_ || !hasChanges()) {
        return true;
    }
    QMessageBox box(QMessageBox::Question, QStringLiteral("Fenmark Desk"), texts_(Text::SaveChanges).arg(fileName()),
                    QMessageBox::NoButton, this);
    box.setTextFormat(Qt::PlainText);
    QPushButton* save = box.addButton(texts_(Text::SaveButton), QMessageBox::AcceptRole);
    QPushButton* discard = box.addButton(texts_(Text::DiscardButton), QMessageBox::DestructiveRole);
    QPushButton* cancel = box.addButton(texts_(Text::CancelButton), QMessageBox::RejectRole);
    save->setObjectName(QStringLiteral("save"));
    discard->setObjectName(QStringLiteral("discard"));
    cancel->setObjectName(QStringLiteral("cancel"));
    box.setDefaultButton(save);
    box.setEscapeButton(cancel);
    box.exec();
    if (box.clickedButton() == static_cast<QAbstractButton*>(save)) {
        return saveDrawing();
    }
    return box.clickedButton() == static_cast<QAbstractButton*>(discard);
}

void MainWindow::newDrawing() {
    if (session_.isRunning() || !mayLoseDrawing()) {
        return;
    }
    releaseDrawing();
    session_.newDrawing();
    recovery_.forget();
    drawingReplaced();
}

void MainWindow::chooseDrawing() {
    if (session_.isRunning()) {
        return;
    }
    const QString path = questions_.open(this, texts_(Text::OpenTitle), lastFolder_, texts_(Text::DrawingFilter));
    if (!path.isEmpty()) {
        openDrawing(path);
    }
}

bool MainWindow::openDrawing(const QString& path) {
    if (!mayLoseDrawing()) {
        return false;
    }
    const Outcome result = showDrawing(path.toStdString());
    if (!result) {
        command_->say(QString::fromStdString(result.in(texts_.language())));
        tell(QString::fromStdString(result.in(texts_.language())));
        return false;
    }
    recovery_.forget();
    rememberFile(path);
    command_->say(texts_(Text::Opened).arg(QDir::toNativeSeparators(path)));
    sayDrawingNotes();
    return true;
}

void MainWindow::sayDrawingNotes() {
    for (const drawing::StoreNote& note : session_.notes()) {
        command_->say(QString::fromStdString(drawing::noteText(note, texts_.language())));
    }
}

Outcome MainWindow::showDrawing(const std::string& path) {
    releaseDrawing();
    Outcome result = session_.open(path);
    result ? drawingReplaced() : drawingStays();
    return result;
}

bool MainWindow::openFile(const QString& path) {
    if (session_.isRunning()) {
        return false;
    }
    if (endsIn(path, ".gpkg")) {
        return openDrawing(path);
    }
    if (endsIn(path, ".sim") && platform::lookUp(path.toStdString()).kind != platform::PathKind::Other) {
        startImport(QFileInfo(path).absoluteFilePath());
        return true;
    }
    tell(texts_(Text::UnknownFile).arg(path));
    return false;
}

bool MainWindow::mayReplace(const QString& path) {
    const std::optional<Text> refused = targetRefusal(session_.drawing(), path);
    if (!refused) {
        return true;
    }
    const QString message = texts_(*refused).arg(QDir::toNativeSeparators(path));
    command_->say(message);
    tell(message);
    return false;
}

bool MainWindow::saveTo(const QString& chosen) {
    // By another name the open drawing is the same file: it is added to, not replaced.
    const QString path = platform::leadToOneFile(chosen.toStdString(), session_.path())
                             ? QString::fromStdString(session_.path())
                             : chosen;
    if (!mayReplace(path)) {
        return false;
    }
    const Outcome result = session_.save(path.toStdString(), workbench_->textChanges());
    if (result) {
        workbench_->noteSaved();
    }
    updateTitle();
    if (!result) {
        command_->say(QString::fromStdString(result.in(texts_.language())));
        tell(QString::fromStdString(result.in(texts_.language())));
        return false;
    }
    rememberFile(path);
    command_->say(texts_(Text::Saved).arg(QDir::toNativeSeparators(path)));
    recovery_.forget();
    return true;
}

QString MainWindow::askTarget(const QString& title, const QString& proposal, const QString& filter,
                              const std::function<QString(const QString& path)>& completed) {
    return desk::askTarget([&](const QString& path) { return questions_.save(this, title, path, filter); }, proposal,
                           completed);
}

bool MainWindow::saveDrawing() {
    if (session_.isRunning()) {
        return false;
    }
    return session_.path().empty() ? saveDrawingAs() : saveTo(QString::fromStdString(session_.path()));
}

bool MainWindow::saveDrawingAs() {
    if (session_.isRunning()) {
        return false;
    }
    QString proposal = QString::fromStdString(session_.path());
    if (proposal.isEmpty()) {
        proposal = QDir(lastFolder_).filePath(texts_(Text::Untitled) + QStringLiteral(".gpkg"));
    }
    const QString path = askTarget(texts_(Text::SaveTitle), proposal, texts_(Text::DrawingFilter), asDrawing);
    return !path.isEmpty() && saveTo(path);
}

void MainWindow::exportDrawing() {
    if (session_.isRunning()) {
        return;
    }
    QStringList filters;
    QStringList extensions;
    for (const exchange::Format& format : exchange::formats()) {
        const std::string_view name = texts_.language() == Language::Japanese ? format.japanese : format.name;
        const QString extension = QString::fromUtf8(format.extension.data(), qsizetype(format.extension.size()));
        filters.append(
            QStringLiteral("%1 (*%2)").arg(QString::fromUtf8(name.data(), qsizetype(name.size())), extension));
        extensions.append(extension);
    }
    const QString stem = session_.path().empty()
                             ? QDir(lastFolder_).filePath(texts_(Text::Untitled))
                             : QDir(QFileInfo(QString::fromStdString(session_.path())).absolutePath())
                                   .filePath(QFileInfo(fileName()).completeBaseName());
    const QString path = askTarget(texts_(Text::ExportTitle), stem + QStringLiteral(".svg"),
                                   filters.join(QStringLiteral(";;")), asExport);
    if (path.isEmpty()) {
        return;
    }
    const exchange::Format* const format = exchange::formatOf(path.toStdString());
    if (format == nullptr) {
        tell(texts_(Text::UnknownExport).arg(path, extensions.join(QLatin1Char(' '))));
        return;
    }
    exchange::ExportOptions options;
    options.title = QFileInfo(path).completeBaseName().toStdString();
    if (!exchange::canWrite(*format, session_.drawing(), options)) {
        const QString message = texts_(Text::ExportNeedsZone).arg(path);
        command_->say(message);
        tell(message);
        return;
    }
    if (!mayReplace(path)) {
        return;
    }
    exchange::Notes notes;
    const Outcome written = exchange::writeFile(path.toStdString(), [&](std::ostream& out) {
        notes = exchange::writeAs(*format, session_.drawing(), options, out);
    });
    if (!written) {
        command_->say(QString::fromStdString(written.in(texts_.language())));
        tell(QString::fromStdString(written.in(texts_.language())));
        return;
    }
    command_->say(texts_(Text::Exported).arg(QDir::toNativeSeparators(path)));
    for (const exchange::Note& note : notes) {
        command_->say(QString::fromStdString(exchange::wording(note, texts_.language())));
    }
}

void MainWindow::offerRecovery() {
    for (const LeftDrawing& left : recovery_.left()) {
        if (!left.oddLock.isEmpty()) {
            command_->say(texts_(Text::RecoverLockOdd)
                              .arg(QDir::toNativeSeparators(left.path), QDir::toNativeSeparators(left.oddLock)));
            continue;
        }
        const QString name = left.name.isEmpty() ? texts_(Text::Untitled) : QFileInfo(left.name).fileName();
        QMessageBox box(QMessageBox::Question, QStringLiteral("Fenmark Desk"),
                        texts_(Text::RecoverQuestion).arg(name, left.time.toString(QStringLiteral("yyyy-MM-dd HH:mm"))),
                        QMessageBox::NoButton, this);
        box.setTextFormat(Qt::PlainText);
        box.setInformativeText(texts_(Text::RecoverInfo));
        QPushButton* recover = box.addButton(texts_(Text::RecoverButton), QMessageBox::AcceptRole);
        QPushButton* later = box.addButton(texts_(Text::RecoverLater), QMessageBox::RejectRole);
        QPushButton* discard = box.addButton(texts_(Text::RecoverDiscard), QMessageBox::DestructiveRole);
        recover->setObjectName(QStringLiteral("recover"));
        later->setObjectName(QStringLiteral("later"));
        discard->setObjectName(QStringLiteral("discard"));
        box.setDefaultButton(recover);
        box.setEscapeButton(later);
        box.exec();
        if (box.clickedButton() == static_cast<QAbstractButton*>(discard)) {
            recovery_.remove(left);
        }
        if (box.clickedButton() != static_cast<QAbstractButton*>(recover)) {
            continue;
        }
        if (session_.isRunning() || !mayLoseDrawing()) {
            return; // the copy stays for the next time
        }
        releaseDrawing();
        const Outcome result = session_.openCopy(left.path.toStdString());
        result ? drawingReplaced() : drawingStays();
        if (!result) {
            tell(QString::fromStdString(result.in(texts_.language())));
            continue;
        }
        workbench_->recoverTexts(left.path.toStdString());
        // The copy goes when this run has one of its own.
        if (recovery_.keepNow()) {
            recovery_.remove(left);
        }
        command_->say(texts_(Text::Recovered).arg(name));
        return; // one drawing at a time; the others are asked about next time
    }
}

void MainWindow::begin(const QString& file) {
    QTimer::singleShot(0, this, [this, file] {
        guarded([this, &file] {
            offerRecovery();
            if (!file.isEmpty() && !closingAtOnce_) {
                openFile(file);
            }
        });
    });
}

void MainWindow::closeAtOnce() {
    closingAtOnce_ = true;
    recovery_.keepNow();
    close();
}

void MainWindow::rememberFile(const QString& path) {
    const QString whole = QFileInfo(path).absoluteFilePath();
    lastFolder_ = QFileInfo(path).absolutePath();
    recentFiles_.removeAll(whole);
    recentFiles_.prepend(whole);
    while (recentFiles_.size() > kRecentFiles) {
        recentFiles_.removeLast();
    }
    if (options_.keepSettings) {
        QSettings settings;
        settings.setValue(QStringLiteral("recentFiles"), recentFiles_);
        settings.setValue(QStringLiteral("folder"), lastFolder_);
    }
    fillRecentMenu();
}

void MainWindow::fillRecentMenu() {
    recentMenu_->clear();
    recentMenu_->setEnabled(!recentFiles_.isEmpty());
    for (qsizetype i = 0; i < recentFiles_.size(); ++i) {
        const QString path = recentFiles_[i];
        QString shown = QDir::toNativeSeparators(path);
        shown.replace(QLatin1Char('&'), QStringLiteral("&&"));
        recentMenu_->addAction(QStringLiteral("&%1  %2").arg((i + 1) % 10).arg(shown), this,
                               [this, path] { guarded([this, path] { openFile(path); }); });
    }
    if (recentFiles_.isEmpty()) {
        return;
    }
    recentMenu_->addSeparator();
    recentMenu_->addAction(texts_(Text::ClearRecent), this, [this] {
        recentFiles_.clear();
        if (options_.keepSettings) {
            QSettings().remove(QStringLiteral("recentFiles"));
        }
        // The menu must not lose the entry that is at work.
        QTimer::singleShot(0, this, &MainWindow::fillRecentMenu);
    });
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
    if (session_.isRunning() || !event->mimeData()->hasUrls()) {
        return;
    }
    for (const QUrl& url : event->mimeData()->urls()) {
        if (url.isLocalFile() && isOurs(url.toLocalFile())) {
            // The file stays where it is, whatever the other program proposes.
            event->setDropAction(Qt::CopyAction);
            event->accept();
        }
    }
}

void MainWindow::dropEvent(QDropEvent* event) {
    if (session_.isRunning()) {
        return;
    }
    QStringList paths;
    for (const QUrl& url : event->mimeData()->urls()) {
        if (url.isLocalFile()) {
            paths.append(url.toLocalFile());
        }
    }
    if (paths.isEmpty()) {
        return;
    }
    event->setDropAction(Qt::CopyAction);
    event->accept();
    // The program that the files come from waits until this returns, so that dialogs come later.
    QTimer::singleShot(0, this, [this, paths] { guarded([this, paths] { openDropped(paths); }); });
}

// A drawing opens first, and SIMA files go into it one by one. A dialog that came in between counts on the drawing that
// it was opened for.
void MainWindow::openDropped(const QStringList& paths) {
    if (QApplication::activeModalWidget() != nullptr) {
        return;
    }
    activateWindow();
    for (const QString& path : paths) {
        if (endsIn(path, ".gpkg") && !openFile(path)) {
            return;
        }
    }
    for (const QString& path : paths) {
        if (!endsIn(path, ".gpkg")) {
            openFile(path);
        }
    }
}

void MainWindow::closeEvent(QCloseEvent* event) {
    bool close = false;
    guarded([&] { close = !session_.isRunning() && mayLoseDrawing(); });
    if (!close) {
        event->ignore();
        return;
    }
    writeSettings();
    if (!closingAtOnce_) {
        recovery_.forget();
    }
    event->accept();
}

} // namespace fenmark::desk
